// SPDX-License-Identifier: MIT
#include "catalog/tilefile_p.h"

#include <QDir>
#include <QFileInfo>

namespace {

const QLatin1Char Slash('/');
const QLatin1Char Backslash('\\');

QString withoutLeadingSeparators(const QString &entry)
{
    int start = 0;
    while (start < entry.size() && (entry.at(start) == Slash || entry.at(start) == Backslash))
        ++start;
    return entry.mid(start);
}

bool isWordCharacter(QChar character)
{
    const ushort c = character.unicode();
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

} // namespace

QString TileFile::normalized(const QString &entry)
{
    return QDir::cleanPath(withoutLeadingSeparators(entry).replace(Backslash, Slash));
}

QString TileFile::contentPath(const QString &entry)
{
    return Backslash + withoutLeadingSeparators(entry).replace(Slash, Backslash);
}

QString TileFile::key(const QString &entry)
{
    // The greedy ".*([a-zA-Z0-9_]+)\.cdt" replaced by "\1", which leaves one character of the
    // name. By hand, because the expression takes quadratic time on long entries.
    const QLatin1String extension(".cdt");
    auto at = entry.lastIndexOf(extension);
    while (at > 0) {
        if (isWordCharacter(entry.at(at - 1)))
            return entry.mid(at - 1, 1) + entry.mid(at + extension.size());
        at = entry.lastIndexOf(extension, at - 1);
    }
    return entry;
}

bool TileFile::isOutside(const QString &entry)
{
    const QString path = normalized(entry);
    return path == QLatin1String("..") || path.startsWith(QLatin1String("../"));
}

bool TileFile::isLinkedOutside(const QString &root, const QString &path)
{
    const QString realRoot = QFileInfo(root).canonicalFilePath();
    const QString realFolder = QFileInfo(path.left(path.lastIndexOf(Slash))).canonicalFilePath();
    return realFolder != realRoot && !realFolder.startsWith(realRoot + Slash);
}
