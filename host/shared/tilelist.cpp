// SPDX-License-Identifier: MIT
#include "host/shared/tilelist.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>

QStringList TileList::tiles(const QStringList &entries)
{
    QStringList result;
    QSet<QString> seen;
    for (const QString &entry : entries) {
        if (entry.endsWith(QLatin1Char('/')) || !entry.contains(QLatin1String(".cdt")))
            continue;
        // Archives made of "." name their entries "./a/3/3fa9.cdt"; others share that tile.
        const QString tile = QDir::cleanPath(entry);
        if (seen.contains(tile))
            continue;
        seen.insert(tile);
        result.append(tile);
    }
    return result;
}

QString TileList::plain(const QString &entry)
{
    QString result = entry;
    result.replace(QLatin1Char('\\'), QLatin1Char('/'));
    while (result.startsWith(QLatin1Char('/')))
        result.remove(0, 1);
    // As the catalogue compares them when it asks who else needs a file.
    return QDir::cleanPath(result);
}

QStringList TileList::missing(const QStringList &tiles, const QString &folder)
{
    QStringList result;
    for (const QString &tile : tiles) {
        if (!QFileInfo(folder + QLatin1Char('/') + tile).isFile())
            result.append(tile);
    }
    return result;
}

QStringList TileList::filesBelow(const QString &folder)
{
    QStringList result;
    const QDir dir(folder);
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        result.append(dir.relativeFilePath(files.next()));
    result.sort();
    return result;
}

bool TileList::empty(const QString &folder)
{
    bool allGone = true;
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden
                                                             | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        const bool folderEntry = entry.isDir() && !entry.isSymLink();
        const bool gone = folderEntry ? QDir(entry.filePath()).removeRecursively()
                                      : QFile::remove(entry.filePath());
        allGone = allGone && gone;
    }
    return allGone;
}
