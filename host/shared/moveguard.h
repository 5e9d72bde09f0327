// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QHash>
#include <QMutex>
#include <QObject>
#include <QSet>
#include <QString>

class InstallJournal;
class Worker;

/**
 * Stands between unpacking and moving, in the engine's own thread.
 *
 * The engine goes from one step to the next within milliseconds. When the GUI thread hears of a
 * failure, or the user gives an install up, the move that is queued behind may be about to begin.
 * The guard decides in the worker thread, before the first file is touched: for an attempt that
 * failed or was given up it empties the scratch folder, so that the move finds nothing; for a good
 * one it has the journal note what was unpacked, so that a crash during the move loses nothing.
 * It also measures each archive while it is still there: where a server tells no size, only the
 * catalogue's shows that an end is missing, and not every kind of archive misses its end.
 *
 * The installer makes it in the GUI thread before the worker starts. Its work happens in the
 * worker thread; stop the worker and wait for it before the guard goes.
 */
class MoveGuard : public QObject
{
    Q_OBJECT

public:
    /** Neither is owned. */
    MoveGuard(Worker *worker, InstallJournal *journal);

    /**
     * From now on nothing of this attempt is moved. Returns false if its move has begun already,
     * which cannot be stopped. Any thread.
     */
    bool refuse(const QString &id, int attempt);

    /**
     * The archive of this attempt has to have this many bytes, else nothing of it is moved; 0 for
     * any number. Any thread.
     */
    void expectSize(const QString &id, int attempt, qint64 bytes);

    /** Forgets an attempt that is over. Any thread. */
    void forget(const QString &id, int attempt);

    /**
     * For tests, which stop or kill the program there: called in the worker thread just before
     * files are moved. To be set before the worker starts.
     */
    std::function<void()> beforeMove;

Q_SIGNALS:
    /**
     * An archive has come that does not have the expected size; nothing of it will be moved. From
     * the worker's thread. It may reach the GUI thread behind the news that the download is
     * finished, but always ahead of the error of the unpack.
     */
    void otherSize(const QString &id, int attempt, qint64 bytes);

private:
    void watchEngine();
    void onError(int operation, const QString &id, const QString &url);
    void onProgress(int operation, const QString &id, const QString &url);
    void onDownloaded(const QString &id, int attempt);
    void onMoveBegins(const QString &id, int attempt);
    int attemptOf(const QString &id, const QString &url) const;

    Worker *const m_worker; // not owned
    InstallJournal *const m_journal; // not owned
    QMutex m_mutex; // guards all below
    QSet<QString> m_refused;
    QSet<QString> m_moving;
    QHash<QString, qint64> m_expected; // bytes of the archive
};
