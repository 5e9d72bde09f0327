// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTemporaryDir>

/**
 * A file system of a few bytes at a folder of its own, which can be made larger, smaller and
 * read-only while files lie on it. Unmounted when it is destroyed.
 *
 * The mounts are the program's own: its main() calls allow() before anything else. No root needed.
 */
class SmallDisk
{
public:
    /**
     * Gives the program a view of the mounts of its own, in which it may mount; where it is not
     * root, it seems to be from now on. A kernel that forbids this ends the program with a message.
     * Only while there is a single thread.
     */
    static void allow();

    /**
     * All space in bytes; the kernel rounds it up to whole pages, and so it does each file. At the
     * folder, which must be there, or at one of its own.
     */
    explicit SmallDisk(qint64 bytes, const QString &folder = QString());
    ~SmallDisk();
    Q_DISABLE_COPY(SmallDisk)

    QString path() const { return m_path; }
    qint64 freeBytes() const;
    qint64 usedBytes() const;
    /** False if more than that is in use. */
    bool resize(qint64 bytes);
    /** Leaves just so much free; at least a page if the disk is empty. */
    bool setFree(qint64 bytes);
    /** False if a file is open for writing and the disk is to become read-only. */
    bool setReadOnly(bool readOnly);

private:
    bool remount();

    QTemporaryDir m_dir;
    QString m_path;
    qint64 m_bytes;
    bool m_readOnly = false;
};
