// SPDX-License-Identifier: MIT
#ifndef VEXA_DOWNLOADMANAGERIFACE_H
#define VEXA_DOWNLOADMANAGERIFACE_H

#include "download/irequestqueuelistener.h"
#include "download/suspensioncause.h"
#include "vexa_export.h"
#include <optional>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <vector>

class Worker;

/**
 * What QML drives downloads with. It turns calls into requests for the engine and tells, in the
 * GUI thread, what the engine reports.
 *
 * The Worker owns the one interface; it lives in the GUI thread, where the worker was made. It is
 * usable before the worker thread has started: requests are queued and kept, calls meant for the
 * engine do nothing, and isSuspended reads true.
 *
 * Operations in the signals: 1 test download, 2 download, 3 unpack, 4 move. Errors: 1 download
 * failed, 2 unpacking failed, 3 moving failed, 4 the server's content was refused. The engine does
 * not stop at a failed step: the steps behind it run too, and end in finished(). A page that
 * installs a region therefore calls cancel(url) when it hears error().
 *
 *     Connections {
 *         target: downloads
 *         function onFinished(operation, url, id) { if (operation === 4) page.done(id) }
 *         function onError(operation, id, error, url) { downloads.cancel(url) }
 *     }
 */
class VEXA_EXPORT DownloadManagerIface : public QObject, public IRequestQueueListener
{
    Q_OBJECT
    /** Bytes that may still be written where the map data lies; 0 if that cannot be told. */
    Q_PROPERTY(quint64 freeDiskSpace READ getFreeSpace)
    /** Whether the engine has ever reported work of an earlier run; never goes back to false. */
    Q_PROPERTY(bool inRecovery READ isInRecovery)
    /** Whether the engine is suspended, for whatever cause; true while there is no engine. */
    Q_PROPERTY(bool isSuspended READ suspended NOTIFY isSuspendedChanged)
    /** The queue, oldest first: maps with "url", "type" (the operation) and "id". */
    Q_PROPERTY(QVariantList requests READ getRequests NOTIFY requestsChanged)
    /** Whether there is Wi-Fi, as the host told it last. */
    Q_PROPERTY(bool hasWifiConnection READ hasWifiConnection NOTIFY hasWifiConnectionChanged)
    /** What the last unpack that finished has made: relative paths, folders among them. */
    Q_PROPERTY(QStringList unpackedFileList READ getUnpackedFileList NOTIFY unpackedFileListChanged)

public:
    /** Made by the worker, which must outlive it. */
    explicit DownloadManagerIface(Worker *worker);
    ~DownloadManagerIface() override;

    /**
     * Asks the server whether it answers; ends in finished() with operation 1 and an empty id,
     * whatever the answer. A server that is silent for the heartbeat's time ends it without one.
     */
    Q_INVOKABLE void testDownload(const QString &url);
    /**
     * Downloads a file and moves it to destDir; with unzip, unpacks it first and moves what came
     * out. A destDir that ends in "/" is made if it is missing and receives the file under its own
     * name; without the slash only its parent is made. Does not look whether the id is queued
     * already: see isInQueue().
     */
    Q_INVOKABLE void download(const QString &id, const QString &url, const QString &destDir,
                              bool unzip);
    /** Suspends at the user's request; survives a restart. */
    Q_INVOKABLE void suspend();
    /** Resumes at the user's request, if there is a network that may be used. */
    Q_INVOKABLE void resume();
    /**
     * Cancels what was asked for with this address; an empty one cancels everything. The partial
     * file goes. An unpack or a move that is under way is let run. Does nothing without an engine.
     */
    Q_INVOKABLE void cancel(const QString &url = QString());
    /** Cancels everything. */
    Q_INVOKABLE void cancelAll();
    /** Whether the mobile network may be used; false at first, and not kept over a restart. */
    Q_INVOKABLE void allowGprsConnection(bool allow);
    /** The same as the property requests. */
    Q_INVOKABLE QVariantList getRequests();
    /** Whether some step for this id is queued. */
    Q_INVOKABLE bool isInQueue(const QString &id);
    /** The id that the engine works on, or a null string if the queue is empty. */
    Q_INVOKABLE QString currentlyActiveId();
    /** Whether any network may be used; nothing is fetched before this was called with true. */
    Q_INVOKABLE void allowGoOnline(bool allow);

    /** Suspends for this cause and emits isSuspended() and isSuspendedChanged(). */
    void suspend(SuspensionCause cause);
    /** Resumes if this cause may; emits the same signals. */
    void resume(SuspensionCause cause);
    /** Whether the engine is suspended; true while there is no engine. GUI thread. */
    bool suspended();
    /** Whether recovery() was ever emitted; false at first. */
    bool isInRecovery();
    /** What setHasWiFi() was given last; false at first. */
    bool hasWifiConnection() const;
    /** The last value given to allowGprsConnection(); false at first. */
    bool doAllowGprsConnection();
    /**
     * For the host's network code: tells the interface and the engine whether there is Wi-Fi. Does
     * not suspend or resume by itself: the next transfer and the next allow...() call take it into
     * account.
     */
    void setHasWiFi(bool hasWiFi);
    /**
     * What the last unpack that finished has made, for MapCatalog::addInstalledRegion(): paths in
     * the archive, folders among them. Empty at first and after an unpack that failed.
     */
    QStringList getUnpackedFileList() const;
    /** Replaces the list and emits unpackedFileListChanged(). */
    void setUnpackedFileList(const QStringList &list);
    /** Asks the file system of DataRoot::mountPoint(); 0 on failure. */
    quint64 getFreeSpace();

    /** Called by the queue, in whichever thread changed it. */
    void onChanged() override;

    /**
     * Keeps a list for the onFinished() with operation 3 and these two strings that comes next.
     * Called in the worker thread, ahead of the signal. A signal without a list of its own makes
     * the interface ask the manager, which may be an unpack further by then.
     */
    void expectUnpackedFileList(const QString &first, const QString &second,
                                const QStringList &list);

Q_SIGNALS:
    /**
     * A step ended: well, or for operations 3 and 4 also badly, behind error(). For operation 3 it
     * comes twice. The address is the one that was asked for, the id empty for a test.
     */
    void finished(int operation, const QString &url, const QString &id);
    /**
     * At most once a second: bytes so far and of the whole (0 or -1 if unknown), and the remaining
     * time in ms (0 if unknown, always for operations 3 and 4).
     */
    void progress(int operation, const QString &url, const QString &id, qint64 bytesReceived,
                  qint64 bytesTotal, qint64 estimatedTime);
    /**
     * A step failed; the codes are in the class comment. The steps behind it are queued still:
     * cancel(url) takes them out.
     */
    void error(int operation, const QString &id, int error, const QString &url);
    /** There is work of an earlier run. The engine does not emit it at present. */
    void recovery(bool isSuspended);
    /** The queue changed. May be emitted in the worker thread; QML is told in its own. */
    void requestsChanged();
    /** Follows each setHasWiFi(), and once more when the engine has been told. */
    void hasWifiConnectionChanged();
    /** Follows suspend() and resume(), with the state that the engine is in now. */
    void isSuspended(bool suspended);
    /** There is a new list, right behind finished() with operation 3. */
    void unpackedFileListChanged();
    /** The engine was suspended or resumed, by a call or by the network's state. */
    void isSuspendedChanged();

public Q_SLOTS:
    // The strings are named the other way round than in the signals: they are passed on by
    // position, and both declarations are relied on.
    /**
     * What the worker connects the engine's finished() to: emits finished() with the same values,
     * and for operation 3 takes over the list of files. The first text is the address.
     */
    void onFinished(int operation, const QString &id, const QString &url);
    /** Emits progress() with the engine's values; the first text is the address. */
    void onProgress(int operation, const QString &id, const QString &url, qint64 bytesReceived,
                    qint64 bytesTotal, qint64 estimatedTime);
    /** Logs a warning and emits error() with the engine's values. */
    void onError(int operation, const QString &id, int error, const QString &url);
    /** Makes isInRecovery() true for good and emits recovery(). */
    void onRecovery(bool isSuspended);
    /** Takes over the state that the engine was told and emits hasWifiConnectionChanged(). */
    void onWifiConnectionChanged(bool hasWifiConnection);
    /** Does nothing; a place to connect the state of a network session to. */
    void onSessionStateChanged(int state);
    /** Emits isSuspendedChanged(). What the property shows is asked of the engine itself. */
    void onNotifySuspended(bool suspended = false);
    /** Aborts the running transfer; to be called before Worker::stop(). */
    void prepareToDestroy();

private:
    struct ExpectedList
    {
        QString first;
        QString second;
        QStringList files;
    };

    void tellSuspended(bool suspended);
    std::optional<QStringList> takeExpectedList(const QString &first, const QString &second);

    Worker *const m_worker; // not owned
    bool m_inRecovery = false;
    bool m_hasWifi = false;
    bool m_suspended = false; // what the manager reported last; nothing reads it
    QStringList m_unpackedFileList;
    bool m_allowGprs = false;
    QMutex m_expectedMutex;
    std::vector<ExpectedList> m_expectedLists; // under m_expectedMutex, oldest first
};

#endif
