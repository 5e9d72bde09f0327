// SPDX-License-Identifier: MIT
#pragma once

#include "archive/vexaarchive.h"
#include <QDir>
#include <QDirIterator>
#include <QSignalSpy>
#include <QTemporaryDir>

/**
 * One archive on its way into a folder of its own, without pauses, with what it signals. Paths and
 * names are relative to that folder, folder(), which lies in the place that is given or in one that
 * goes with this object.
 */
class Unpacking
{
public:
    explicit Unpacking(const QString &archivePath, const QString &place = QString())
        : archive(archivePath)
        , progress(&archive, &VexaArchive::progress)
        , finished(&archive, &VexaArchive::finished)
        , m_place(place.isEmpty() ? m_dir.path() : place)
    {
        archive.setBlockPause(0);
    }

    bool run() { return archive.unpack(folder()); }

    QString folder() const { return m_place + QLatin1String("/out"); }
    QString path(const QString &name) const { return folder() + QLatin1Char('/') + name; }

    /** What the folder lies in. */
    QString place() const { return m_place; }
    /** Everything in the folder, hidden or not, sorted; folders with a slash at the end. */
    QStringList found() const { return found(folder()); }
    /** Everything beside the folder, where nothing should be. */
    QStringList foundOutside() const
    {
        QStringList names = found(m_place);
        names.erase(std::remove_if(
                        names.begin(), names.end(),
                        [](const QString &name) { return name.startsWith(QLatin1String("out/")); }),
                    names.end());
        return names;
    }

    /** The codes that finished() has brought, in order. */
    QList<int> results() const
    {
        QList<int> codes;
        for (const QList<QVariant> &call : finished)
            codes.append(call.at(0).value<VexaArchive::ArchiveError>());
        return codes;
    }
    /** The calls of progress(), as "bytes/total". */
    QStringList steps() const
    {
        QStringList steps;
        for (const QList<QVariant> &call : progress)
            steps.append(QStringLiteral("%1/%2")
                             .arg(call.at(0).toULongLong())
                             .arg(call.at(1).toULongLong()));
        return steps;
    }

    VexaArchive archive;
    QSignalSpy progress;
    QSignalSpy finished;

private:
    static QStringList found(const QString &folder)
    {
        QStringList names;
        QDirIterator it(folder,
                        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                        QDirIterator::Subdirectories);
        while (it.hasNext()) {
            it.next();
            const bool isFolder = it.fileInfo().isDir() && !it.fileInfo().isSymLink();
            names.append(it.filePath().mid(folder.size() + 1)
                         + (isFolder ? QStringLiteral("/") : QString()));
        }
        names.sort();
        return names;
    }

    QTemporaryDir m_dir;
    QString m_place;
};
