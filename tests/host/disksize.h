// SPDX-License-Identifier: MIT
#pragma once

#include <QDirIterator>
#include <QFile>
#include <QPair>
#include <QSet>
#include <QString>
#include <sys/stat.h>

/** What a folder holds: names of files, and bytes of their contents, each content once. */
struct DiskSize
{
    int files = 0;
    qint64 bytes = 0;

    static DiskSize of(const QString &folder)
    {
        DiskSize size;
        QSet<QPair<quint64, quint64>> seen;
        QDirIterator entries(folder, QDir::Files | QDir::Hidden | QDir::System,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            struct stat status = {};
            if (lstat(QFile::encodeName(entries.next()).constData(), &status) != 0)
                continue;
            ++size.files;
            const auto id = qMakePair(quint64(status.st_dev), quint64(status.st_ino));
            if (!seen.contains(id))
                size.bytes += qint64(status.st_size);
            seen.insert(id);
        }
        return size;
    }
};
