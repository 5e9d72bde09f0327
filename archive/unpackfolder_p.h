// SPDX-License-Identifier: MIT
#ifndef VEXA_UNPACKFOLDER_P_H
#define VEXA_UNPACKFOLDER_P_H

#include <filesystem>
#include <optional>
#include <QString>
#include <string>
#include <vector>

class TemporaryFile;

/**
 * The folder that an archive is unpacked into: where its entries belong in there, and what one
 * unpack has made, so that it can be taken back.
 *
 * VexaArchive makes one for each unpack. Names of entries are used as they are, so they can lead
 * anywhere, unless the folder is contained: then "." and ".." are resolved in the text of the name
 * first ("a/../b" is "b") and holds() tells which names stay inside.
 *
 * Every path is UTF-8 on the disk, whatever the locale of the process. Nothing here throws.
 */
class UnpackFolder
{
public:
    /** Touches nothing yet. A relative path belongs to the working folder of this moment. */
    UnpackFolder(const QString &path, bool contained);

    /** Makes the folder with all its parents, unless it is there. */
    bool create();
    /** The absolute path, as it was given apart from slashes at its end. */
    QString path() const;
    /** The absolute path of an entry. */
    QString pathOf(const QString &name) const;
    /**
     * Whether the entry may be written: always, unless the folder is contained and the name is
     * absolute, climbs out by ".." or passes a link that leads out.
     */
    bool holds(const QString &name);

    /** Makes the folder that a file entry lies in. */
    bool makeParentOf(const QString &name);
    /** Makes a folder entry, with all its parents. */
    bool makeFolder(const QString &name);
    /** Gives the file its final path; the parent must be there and the path free. */
    bool keep(TemporaryFile &file, const QString &name);

    /**
     * Removes the files that were kept here, then the folders that were made here and are empty
     * now. A second call finds nothing to do. What cannot be removed stays.
     */
    void removeMade();

private:
    std::optional<QString> normalised(const QString &name) const;
    bool leadsInside(const std::filesystem::path &path);
    bool passesNoLink(const std::string &path);
    bool makePath(const QString &path);

    QString m_path;
    bool m_contained;
    std::string m_plain; // no link between the folder and this path in it, as far as it exists
    // Not as paths, which keep each of their parts as one more path: there can be many files.
    std::vector<std::string> m_files;
    std::vector<std::string> m_folders;
};

#endif
