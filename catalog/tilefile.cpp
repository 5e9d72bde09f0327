// SPDX-License-Identifier: MIT
#include "catalog/tilefile_p.h"

#include <algorithm>
#include <QDir>
#include <QFileInfo>

namespace {

const QLatin1Char Slash('/');
const QLatin1Char Backslash('\\');

int leadingSeparators(const QString &entry)
{
    int count = 0;
    while (count < entry.size() && (entry.at(count) == Slash || entry.at(count) == Backslash))
        ++count;
    return count;
}

bool isWordCharacter(QChar character)
{
    const ushort c = character.unicode();
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// Whether cleanPath() could have something to do: there is an empty part, or one that begins with a
// dot, or a slash at the end.
bool mayBeUnclean(const QString &path)
{
    bool isAtBegin = true;
    for (const QChar c : path) {
        if (isAtBegin && (c == Slash || c == QLatin1Char('.')))
            return true;
        isAtBegin = c == Slash;
    }
    return isAtBegin;
}

} // namespace

QString TileFile::normalized(const QString &entry)
{
    QString path;
    normalize(entry, &path);
    return path;
}

void TileFile::normalize(const QString &entry, QString *path)
{
    const int start = leadingSeparators(entry);
    path->resize(entry.size() - start);
    std::transform(entry.cbegin() + start, entry.cend(), path->begin(),
                   [](QChar c) { return c == Backslash ? QChar(Slash) : c; });
    if (mayBeUnclean(*path))
        *path = QDir::cleanPath(*path);
}

QString TileFile::contentPath(const QString &entry)
{
    const int start = leadingSeparators(entry);
    // Nearly all come from the file, and have this form: they are shared and not copied.
    if (start == 1 && entry.at(0) == Backslash && !entry.contains(Slash))
        return entry;
    return Backslash + entry.mid(start).replace(Slash, Backslash);
}

QString TileFile::key(const QString &entry)
{
    // The greedy ".*([a-zA-Z0-9_]+)\.cdt" replaced by "\1", which leaves one character of the
    // name. By hand, because the expression takes quadratic time on long entries.
    const QLatin1String extension(".cdt");
    auto at = entry.size() - extension.size();
    if (at > 0 && entry.endsWith(extension) && isWordCharacter(entry.at(at - 1)))
        return entry.at(at - 1); // as nearly all are
    at = entry.lastIndexOf(extension);
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
