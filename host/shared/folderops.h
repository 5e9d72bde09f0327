// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/**
 * What is needed to move whole folders about safely: it looks behind every call, follows no link,
 * and never removes a file that it was not told to remove. Any thread; nothing is logged.
 *
 * Nothing here goes from one file system to another: a rename that would is refused by the kernel.
 */
namespace FolderOps {

/** What tells a folder from every other one on its file system, whatever it is called. */
struct Identity
{
    quint64 inode = 0; ///< 0: there is no folder
    qint64 born = 0; ///< nanoseconds since 1970; 0 where the file system does not know

    bool isNull() const { return inode == 0; }
    /** Null is like nothing, not even like null. */
    bool matches(const Identity &other) const
    {
        return !isNull() && inode == other.inode
            && (born == 0 || other.born == 0 || born == other.born);
    }
};

/** The identity of a folder; null if there is none, or something else, as a link to one. */
Identity identityOf(const QString &path);

/** Whether anything has this name, also a link that leads nowhere. */
bool exists(const QString &path);
/** Whether it is a folder, and no link to one. */
bool isFolder(const QString &path);
/** Whether another file system, or another part of this one, is shown in this folder. */
bool isMountPoint(const QString &path);
/** Whether both are on one file system. */
bool shareFileSystem(const QString &a, const QString &b);
/** Whether there is anything in or below the folder that is no folder. True if in doubt. */
bool hasFiles(const QString &folder);
/** The sizes of the files in and below the folder, in bytes. */
qint64 bytesBelow(const QString &folder);

/** Whether a clean relative path leads out of the folder that it begins in. */
bool leadsOut(const QString &path);

/** Renames; an empty folder that has the name is replaced, nothing else ever. */
bool rename(const QString &from, const QString &to, QString *errorString);
/** Removes a folder that has nothing but folders in it. */
bool removeEmptyTree(const QString &folder);
/** Removes a folder or file and all below it; not what other file systems show there. */
bool removeTree(const QString &path, QString *errorString);
/**
 * Gives something that is in the way the name path + ".aside", or with a number behind; the new
 * name, or an empty text if that failed.
 */
QString setAside(const QString &from, const QString &path);

/** Brings the names in the folder onto the disk. */
bool syncFolder(const QString &folder);
/** Brings all that was written to the folder's file system onto the disk. */
bool syncFileSystem(const QString &folder, QString *errorString);

} // namespace FolderOps
