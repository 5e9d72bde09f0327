// SPDX-License-Identifier: MIT
#ifndef VEXA_DOWNLOADMANAGER_P_H
#define VEXA_DOWNLOADMANAGER_P_H

#include "download/download.h"
#include "download/request.h"
#include "download/requestqueue.h"
#include "download/savefile_p.h"
#include "download/suspensioncause.h"
#include "plugin/logger.h"
#include "plugin/qtcompat.h"
#include <atomic>
#include <memory>
#include <QElapsedTimer>
#include <QMutex>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QTimer>
#include <QUrl>

class VexaArchive;

/** Codes of the engine's error signal. Sent to QML: never renumber. */
enum EngineError : int {
    DownloadFailed = 1,
    UncompressFailed = 2,
    MoveFailed = 3,
    ContentRefused = 4,
};

/** The address of a request, as the caller wrote it. */
inline QUrl addressOf(const QString &url)
{
    return QUrl::fromEncoded(url.toLocal8Bit());
}

inline QUrl addressOf(const Request &request)
{
    return addressOf(request.url);
}

/** What the engine keeps; DownloadManager's sources share it. */
class DownloadManagerPrivate
{
public:
    /** More ms than this lie between two progress signals. */
    static constexpr int ProgressInterval = 999;

    // Worker thread only, but see executing below.
    RequestQueue<Request> *queue = nullptr; // not owned
    QTimer heartbeat;
    // Only while something is queued: in Qt 5 a thread looks at all network interfaces every ten
    // seconds as long as there is one of these.
    std::unique_ptr<QNetworkAccessManager> network;
    QPointer<QNetworkReply> reply;
    SaveFile saveFile;
    QElapsedTimer transferClock; // since the request was sent
    QElapsedTimer loopClock; // since the last progress signal
    QElapsedTimer chunkClock; // since the last chunk was recorded
    Download download;
    Request current; // copy of the queue's head
    QString urlText; // the transfer's address, the url argument of every signal
    bool progressSeen = false;
    bool testAnswered = false; // a test download has heard from the server
    bool errorSeen = false; // the reply has failed
    bool finishedSeen = false; // the reply has been judged
    bool bodyChecked = false; // the reply's header has been judged
    bool bodyIgnored = false; // its body is not the file
    bool attemptOver = false; // nothing of the reply is wanted any more
    bool writeFailed = false; // the save file could not take the last chunk
    bool unrecorded = false; // bytes were written since the last chunk was recorded
    bool unfinished = false; // the record belongs to a request that stayed queued in this run
    qint64 replyBytes = 0; // bytes of this reply that were read
    qint64 knownTotal = 0; // the file's size as earlier attempts heard it, 0 if unknown
    qint64 rangeStart = 0; // first byte that was asked for
    int toldState = StateNew; // StateDone or StateFailed: signalled, but not yet put away

    // Set from any thread.
    std::atomic<bool> requestDone {false};
    std::atomic<bool> suspended {false};
    std::atomic<bool> interrupted {false}; // the attempt was suspended, if only for a moment
    std::atomic<bool> cancelled {false};
    std::atomic<bool> exiting {false};
    std::atomic<bool> hasWifiConnection {false};
    std::atomic<bool> allowGprsConnection {false};
    std::atomic<bool> allowGoOnline {false};
    std::atomic<int> unpackPause {30};
    std::atomic<bool> containedUnpack {false};
    std::atomic<int> heartbeatInterval {5000};

    // The cause and every change of the suspended flag; also what sleepers wait with. The
    // settings' lock is taken after it.
    mutable QMutex suspensionMutex;
    VexaCompat::WaitCondition wakeUp;
    SuspensionCause cause = NotSuspended;

    // What other threads ask about the current request. Taken after the suspension mutex, before
    // the queue's and the settings' locks; no signal is emitted under it.
    mutable QMutex requestMutex;
    QString currentUrl;
    // While a step runs, record and save file are the worker thread's alone. Between two steps
    // they are under the mutex, so that a cancel can clear them away by itself: the loop may then
    // sleep on an empty queue.
    bool executing = false;
    VexaArchive *archive = nullptr; // while one is unpacked; not owned
    QStringList unpackedFiles;

    /** Forgets the transfer; its file stays. */
    void clearRecord()
    {
        download.clear();
        unfinished = false;
        knownTotal = 0;
        toldState = StateNew;
    }

    static void trace(const QString &text) { L::og()->trace(text); }
    static void info(const QString &text) { L::og()->info(text); }

    /** Whether there is a network that may be used. */
    bool networkUsable() const
    {
        return allowGoOnline && (hasWifiConnection || allowGprsConnection);
    }

    /** A clock that was never started shows 0. */
    static qint64 elapsed(const QElapsedTimer &clock)
    {
        return clock.isValid() ? clock.elapsed() : 0;
    }
};

#endif
