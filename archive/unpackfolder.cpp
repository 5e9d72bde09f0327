// SPDX-License-Identifier: MIT
#include "archive/unpackfolder_p.h"

#include "archive/temporaryfile_p.h"
#include <algorithm>
#include <QDir>
#include <QStringList>
#include <system_error>

namespace fs = std::filesystem;

namespace {

fs::path toPath(const QString &text)
{
    return fs::path(text.toStdString());
}

// With the links followed in the part that exists; empty if they go in a circle.
fs::path resolved(const fs::path &path)
{
    std::error_code error;
    fs::path real = fs::weakly_canonical(path, error);
    return error ? fs::path() : real;
}

// Not QDir's idea of it, for which ":/name" is absolute too.
bool isAbsolute(const QString &path)
{
    return path.startsWith(QLatin1Char('/'));
}

QString absolute(const QString &folder)
{
    const QString path = QDir(folder).path();
    return isAbsolute(path) ? path : QDir::currentPath() + QLatin1Char('/') + path;
}

} // namespace

UnpackFolder::UnpackFolder(const QString &path, bool contained)
    : m_path(absolute(path))
    , m_contained(contained)
    , m_plain(m_path.toStdString())
{ }

bool UnpackFolder::create()
{
    std::error_code error;
    const fs::path path = toPath(m_path);
    fs::create_directories(path, error);
    return fs::is_directory(path, error);
}

QString UnpackFolder::path() const
{
    return m_path;
}

QString UnpackFolder::pathOf(const QString &name) const
{
    const QString inside = normalised(name).value_or(name);
    return isAbsolute(inside) ? inside : m_path + QLatin1Char('/') + inside;
}

bool UnpackFolder::holds(const QString &name)
{
    return !m_contained || (normalised(name) && leadsInside(toPath(pathOf(name))));
}

bool UnpackFolder::makeParentOf(const QString &name)
{
    // Cleaned, because "file/.." itself would make a folder in the place of the file.
    return makePath(pathOf(QDir::cleanPath(name + QLatin1String("/.."))));
}

bool UnpackFolder::makeFolder(const QString &name)
{
    const QString path = pathOf(QDir::cleanPath(name));
    if (!makePath(path))
        return false;
    // Also when it was there before: what the archive lists is taken back if it is empty.
    m_folders.push_back(path.toStdString());
    return true;
}

bool UnpackFolder::keep(TemporaryFile &file, const QString &name)
{
    const QString path = pathOf(name);
    if (!file.renameTo(path))
        return false;
    m_files.push_back(path.toStdString());
    return true;
}

void UnpackFolder::removeMade()
{
    m_plain = m_path.toStdString(); // links may have come since
    std::error_code ignored; // what cannot be removed stays, as promised
    for (const fs::path file : m_files) {
        if (leadsInside(file.parent_path()) && !fs::is_directory(file, ignored))
            fs::remove(file, ignored);
    }

    // The longer path first: a folder goes after those in it, wherever the archive listed them.
    std::sort(m_folders.begin(), m_folders.end(),
              [](const std::string &a, const std::string &b) { return a.size() > b.size(); });
    const fs::path destination = toPath(m_path);
    for (const fs::path folder : m_folders) {
        // The destination itself ("./" in many archives) is the caller's. A link is not ours.
        const bool ours = leadsInside(folder.parent_path()) && !fs::is_symlink(folder, ignored)
            && fs::is_directory(folder, ignored) && !fs::equivalent(folder, destination, ignored);
        if (ours)
            fs::remove(folder, ignored);
    }
    m_files.clear();
    m_folders.clear();
}

// The name without ".", ".." and doubled slashes; nothing if it leaves the folder. Not done for a
// folder that is not contained: there a name is used as it is.
std::optional<QString> UnpackFolder::normalised(const QString &name) const
{
    if (!m_contained)
        return name;
    if (isAbsolute(name))
        return std::nullopt;

    QStringList parts;
    const QStringList given = name.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString &part : given) {
        if (part == QLatin1String("..")) {
            if (parts.isEmpty())
                return std::nullopt;
            parts.removeLast();
        } else if (part != QLatin1String(".")) {
            parts.append(part);
        }
    }
    return parts.join(QLatin1Char('/'));
}

// A link to nowhere counts as a missing folder here; making that folder fails later, so nothing is
// written through the link.
bool UnpackFolder::leadsInside(const fs::path &path)
{
    if (!m_contained || passesNoLink(path.native()))
        return true;
    const fs::path folder = resolved(toPath(m_path));
    const fs::path target = resolved(path);
    const auto end = std::mismatch(folder.begin(), folder.end(), target.begin(), target.end());
    return !folder.empty() && end.first == folder.end();
}

// Looks only at what the path has beyond the one before. From the top each time, an archive of
// folders a thousand deep would take minutes.
bool UnpackFolder::passesNoLink(const std::string &path)
{
    const auto differ = std::mismatch(path.begin(), path.end(), m_plain.begin(), m_plain.end());
    size_t known = size_t(differ.first - path.begin());
    const bool whole = known == path.size() || path[known] == '/';
    if (!whole || (known < m_plain.size() && m_plain[known] != '/'))
        known = path.rfind('/', known - 1); // a name that is not the same to its end

    std::error_code ignored; // what is not there is no link
    while (known < path.size()) {
        known = std::min(path.find('/', known + 1), path.size());
        if (fs::is_symlink(path.substr(0, known), ignored))
            return false;
    }
    m_plain = path;
    return true;
}

bool UnpackFolder::makePath(const QString &path)
{
    std::error_code error;
    const fs::path whole = toPath(path);
    if (fs::is_directory(whole, error)) // of nearly every file of an archive
        return true;
    for (fs::path part = whole; !fs::exists(part, error) && part.has_relative_path();
         part = part.parent_path())
        m_folders.push_back(part.native());
    fs::create_directories(whole, error);
    return fs::is_directory(whole, error);
}
