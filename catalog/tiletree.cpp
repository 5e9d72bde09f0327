// SPDX-License-Identifier: MIT
#include "catalog/tiletree_p.h"

#include <algorithm>
#include <dirent.h>
#include <memory>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace {

struct FolderCloser
{
    void operator()(DIR *folder) const { closedir(folder); }
};

bool isTileName(const QString &name)
{
    return name.endsWith(QLatin1String(".cdt"), Qt::CaseInsensitive)
        && !name.startsWith(QLatin1Char('.'));
}

// The folder's own word saves a look at each file, which would take longer than all the rest.
bool isFile(const dirent &entry, const QString &folder, const QString &name)
{
    if (entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN)
        return QFileInfo(folder + QLatin1Char('/') + name).isFile();
    return entry.d_type == DT_REG;
}

// Whether the name came through: one of wrong bytes could not be given back to the system.
bool isReadable(const dirent &entry, const QString &name)
{
    return !name.contains(QChar(QChar::ReplacementCharacter))
        || QFile::encodeName(name) == entry.d_name;
}

QStringList tilesIn(const QString &path)
{
    QStringList tiles;
    const std::unique_ptr<DIR, FolderCloser> folder(opendir(QFile::encodeName(path).constData()));
    if (!folder)
        return tiles;
    while (const dirent *entry = readdir(folder.get())) {
        const QString name = QFile::decodeName(entry->d_name);
        if (isTileName(name) && isReadable(*entry, name) && isFile(*entry, path, name))
            tiles.append(name);
    }
    std::sort(tiles.begin(), tiles.end());
    return tiles;
}

} // namespace

QList<TileTree::Folder> TileTree::scan(const QString &tileCache)
{
    const QString root = tileCache; // a copy: the event loop may end the caller's
    const QString digits = QStringLiteral("0123456789abcdef");
    QList<Folder> folders;
    for (const QChar first : digits) {
        for (const QChar second : digits) {
            const QString path = QString(first) + QLatin1Char('/') + second;
            const QStringList tiles = tilesIn(root + QLatin1Char('/') + path);
            if (!tiles.isEmpty())
                folders.append({path, tiles});
            QCoreApplication::processEvents();
        }
    }
    return folders;
}
