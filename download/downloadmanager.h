// SPDX-License-Identifier: MIT
#ifndef VEXA_DOWNLOADMANAGER_H
#define VEXA_DOWNLOADMANAGER_H

#include "archive/vexaarchive.h"
#include "download/request.h"
#include "download/requestqueue.h"
#include "download/suspensioncause.h"
#include "vexa_export.h"
#include <memory>
#include <QNetworkReply>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

class DownloadManagerPrivate;

/**
 * The engine: takes requests from the queue one at a time and carries them out. It downloads over
 * HTTP, unpacks archives and moves what came out of them.
 *
 * The Worker makes one in its thread's run() and it ends with that. Everything runs in the worker
 * thread, in a loop that blocks: it waits for a request, carries it out and lets the thread's
 * events be processed in between. suspend(), resume(), cancel(), exit(), setHasWiFi(),
 * allowGprsConnection(), allowGoOnline(), suspended(), prepareToDestroy() and getUnpackedFileList()
 * may be called from any thread; they only set flags that the loop looks at, every 20 ms at least
 * while it waits for a server.
 *
 *     waiting -- head() --> executing -- over: finished() and/or error() --> waiting
 *                              |  ^
 *              suspend(cause)  v  |  resume(cause), cancel()
 *                            suspended
 *
 * A request stays queued, and so in the settings, until its step is over: a step that is cut short
 * is done again at the next start. Nothing is fetched before the owner has called
 * allowGoOnline(true) and has either said that there is Wi-Fi or allowed the mobile network.
 *
 * The codes of error(): 1 download failed, 2 unpacking failed, 3 moving failed, 4 the server
 * refused or sent something else than was asked for. A failed download leaves the requests that
 * were queued with it; whoever wants them gone cancels the address.
 */
class VEXA_EXPORT DownloadManager : public QObject
{
    Q_OBJECT

public:
    /** Takes up the state of an earlier run. The queue is not owned. */
    DownloadManager(RequestQueue<Request> *queue, QObject *parent);
    ~DownloadManager() override;

    /** Whether the engine is suspended, for whatever cause. */
    bool suspended() const;

    /**
     * What the last successful unpack made, as named in the archive; empty after a failed one. The
     * files lie in the scratch folder until they are moved.
     */
    QStringList getUnpackedFileList() const;

    /**
     * Tells whether there is Wi-Fi. Does not suspend or resume by itself: the next transfer and
     * the next allow...() call take it into account.
     */
    void setHasWiFi(bool hasWiFi);

    /** Aborts the running transfer, in the worker thread; to be called before exit(). */
    void prepareToDestroy();

    /** Writes the transfer's state, and a suspension by the user, to the settings. Returns 0. */
    int saveState();

    /** Takes up suspension, queue and transfer from the settings. Returns 0. */
    int loadState();

    /** Suspends or resumes for the network's sake, by what is allowed and what there is. */
    void updateWifiState();

    /**
     * Carries out the current request, a download or a test download. Returns 1 if the save file
     * could not be opened, else 0.
     */
    int doDownload();
    /** Carries out the current request, an unpack. Returns 0. */
    int doUncompress();
    /** Carries out the current request, a move. Returns 0. */
    int doMove();

    /**
     * Path of the save file for an address: the last part of its path, or "download" where that
     * names no file, in the folder TMP_DIR_PATH of the home folder. Makes the folder.
     */
    static QString fileNameFromUrl(const QUrl &url);

    /** Size of the whole file in the value of a Content-Range header, 0 if it does not tell. */
    qint64 bytesTotalFromContentRange(const QString &value) const;

    /** Pause after each block of an unpack, in ms; see VexaArchive. Any thread. */
    void setUnpackPause(int ms);
    /** Whether archives may not write outside the scratch folder; see VexaArchive. Any thread. */
    void setContainedUnpack(bool contained);
    /** Time without progress after which a transfer is sent again, in ms; 5000 by default. */
    void setHeartbeatInterval(int ms);

Q_SIGNALS:
    /** A step ended well; after a failed unpack or move it comes too, behind error(). */
    void finished(int operation, const QString &url, const QString &id);
    /** At most once a second; sizes in bytes, time in ms (0 if unknown). */
    void progress(int operation, const QString &url, const QString &id, qint64 bytesReceived,
                  qint64 bytesTotal, qint64 estimatedTime);
    /** A step failed; the codes are in the class comment. */
    void error(int operation, const QString &id, int error, const QString &url);
    /** Declared for the interface; the engine never emits it. */
    void recovery(bool isSuspended);
    /** Follows setHasWiFi(), in the thread that called it. */
    void hasWifiConnectionChanged(bool hasWifiConnection);
    /** Follows a change of suspended(), in the thread that caused it. */
    void notifySuspended(bool suspended);

public Q_SLOTS:
    /** Works until exit(), then ends the thread's event loop. Returns 0. */
    int run();
    /** Stops the work until resume(). A suspension by the user is not overwritten by another. */
    void suspend(SuspensionCause suspensionCause);
    /** Suspends at the user's request. */
    void suspend();
    /**
     * Goes on with the work, if this cause may lift the suspension: the user's resume does not
     * lift the network's suspension nor work without a network that may be used, and the network
     * does not lift the user's.
     */
    void resume(SuspensionCause suspensionCause);
    /**
     * Removes every request with this address, the running one too; its partial file goes. An
     * empty address means all. Resumes the work if it hit the running request.
     */
    void cancel(const QString &url);
    /** Cancels everything. */
    void cancel();
    /** Makes the loop end at its next turn; an unpack is stopped, to be done again. */
    void exit();
    /** Whether the mobile network may be used; re-evaluates suspension if the value changes. */
    void allowGprsConnection(bool allow);
    /** Whether any network may be used; re-evaluates suspension. */
    void allowGoOnline(bool allow);

private Q_SLOTS:
    void abortCurrentRequest();
    void onUncompressProgress(quint64 bytes, quint64 total);
    void onUncompressFinished(VexaArchive::ArchiveError success);
    void doDownloadProgress(qint64 bytesReceived, qint64 bytesTotal);
    void doDownloadFinished();
    void doDownloadError(QNetworkReply::NetworkError code);
    void doDownloadReadyRead();
    void doHeartBeat();

private:
    int mainLoop();
    bool takeUp(const Request &head);
    void execute();
    void putDown();
    bool cancelCurrent(const QString &url);
    bool recordIsOf(const QString &url) const;
    bool followNetwork();
    void waitWhileSuspended();

    void prepareRecord();
    bool openSaveFile();
    bool fitSaveFile();
    void transfer();
    void waitForEnd();
    void beginAttempt();
    bool endsWithoutRequest();
    void sendRequest();
    void guardAgainstRepeat();
    void checkBody();
    void takeChunk();
    void writeArrived();
    void endAttempt();
    void judgeWhole();
    bool isAllThere() const;
    bool isCutShort() const;
    bool hasGrown() const;
    void failCutShort();
    void finishDownload();
    void finishTransfer();
    void failTransfer(int errorCode);
    void failStep(int errorCode);
    void concludeTransfer();
    void endWell();
    void endBadly();
    void forgetTransfer();
    void discardTransfer();
    void removeSaveFile(const QString &fileName);
    void pauseBeforeRetry();

    void emptyScratchFolder(const QString &scratch);
    void moveFolder(const QString &source, const QString &destination);
    void moveFile(const QString &source, const QString &destination);

    const std::unique_ptr<DownloadManagerPrivate> d;
};

#endif
