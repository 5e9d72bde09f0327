// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QList>
#include <QMutex>
#include <QString>
#include <QStringList>

/** One install that is not over: what the next run needs to go on with it. */
struct PendingInstall
{
    enum class Phase {
        Waiting, ///< not given to the engine
        Engine, ///< given to the engine; what was unpacked is not known
        Moving, ///< unpacked; its files are or will be moved into the tile cache
        Moved, ///< the engine is done; to be recorded
    };

    QString id; ///< the region's
    QString url; ///< the archive's full address with the attempt's tag; empty while Waiting
    int attempt = 0; ///< number of the last attempt, 0 before the first
    int retries = 0; ///< times that it was begun again because files were missing in the end
    Phase phase = Phase::Waiting;
    QStringList files; ///< what was unpacked, relative to the tile cache; from Moving on
};

/**
 * The list of installs that are not over, on disk. The engine's own queue forgets a region when
 * its last step is done; until the region is recorded in the content file, a crash would lose it.
 *
 * The installer owns it. Every change is on disk (written beside, synced, renamed) before the call
 * returns. The GUI thread and the worker thread use it; all members are thread-safe.
 */
class InstallJournal
{
public:
    /** Reads the file; one that is missing or damaged gives an empty list. */
    explicit InstallJournal(const QString &filePath);
    Q_DISABLE_COPY(InstallJournal)

    /** The journal's place for the data set with this path suffix: beside the engine's folders. */
    static QString defaultPath(const QString &pathSuffix = QString());

    /** All entries in the order in which they were asked for. */
    QList<PendingInstall> entries() const;
    QStringList ids() const;
    std::optional<PendingInstall> find(const QString &id) const;

    /** Appends an entry, or replaces the one of this id where it stands. False: not written. */
    bool put(const PendingInstall &entry);
    /** Removes the entry, if there is one. False: not written, the next start will find it. */
    bool remove(const QString &id);

    /**
     * Notes what was unpacked for this attempt, just before it is moved. Does nothing for another
     * attempt or if the list is known. False: not written.
     */
    bool noteUnpacked(const QString &id, int attempt, const QStringList &files);

    /** A number that no attempt has had while this file exists. */
    int nextAttempt();

private:
    void read();
    bool write();

    mutable QMutex m_mutex;
    const QString m_filePath;
    QList<PendingInstall> m_entries;
    int m_lastAttempt = 0;
};
