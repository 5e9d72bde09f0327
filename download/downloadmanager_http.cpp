// SPDX-License-Identifier: MIT
// The HTTP transfer: one GET for the rest of a file, written as it arrives.
#include "download/downloadmanager.h"

#include "download/downloadmanager_p.h"
#include "download/httpanswer_p.h"
#include "download/pace_p.h"
#include "download/worker.h"
#include "plugin/vexaconstants.h"
#include "plugin/vexasettings.h"
#include <climits>
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>
#include <QNetworkRequest>

namespace {

constexpr int WaitStep = Pace::Step; // ms between two looks at the flags while a reply is awaited
constexpr int SuspendedStep = 1000; // ms between two looks while suspended
constexpr int ChunkInterval = 40; // ms between two resume points, each of which costs two syncs
// Bytes that Qt may hold for us, and as many again in its own thread. They keep the network busy
// while the disk is waited for, and are what a download costs of memory. With more the pieces are
// so large that the C library gives each back to the system, which clears it for the next.
constexpr qint64 ReplyBuffer = 3 * 1024 * 1024;

// What QFileInfo makes of an address may still be no name for a file, and a save file that can
// never be opened would hold up the queue for good.
bool isFileName(const QString &name)
{
    return !name.isEmpty() && name != QLatin1String(".") && name != QLatin1String("..")
        && !name.contains(QChar(0)) && QFile::encodeName(name).size() <= NAME_MAX;
}

} // namespace

QString DownloadManager::fileNameFromUrl(const QUrl &url)
{
    QString name = QFileInfo(url.path()).fileName();
    if (!isFileName(name))
        name = QStringLiteral("download");
    QString dir = QDir::homePath() + TMP_DIR_PATH;
    if (!QDir(dir).exists()) {
        L::og()->info(QLatin1String("Creating directory: ") + dir);
        if (!QDir().mkpath(dir)) {
            L::og()->warning(QLatin1String("Couldn't create directory: ") + dir);
            L::og()->warning(QStringLiteral("Current directory will be used for temporary files"));
            dir = QStringLiteral("./");
        }
    }
    L::og()->info(QLatin1String("temporary file directory: ") + dir);
    return dir + name;
}

qint64 DownloadManager::bytesTotalFromContentRange(const QString &value) const
{
    const QStringList parts = value.split(HTTP_CONTENT_RANGE_SEPARATOR_TOKEN);
    return parts.size() == 2 ? parts.at(1).toLongLong() : 0;
}

int DownloadManager::doDownload()
{
    d->trace(QStringLiteral("int DownloadManager::doDownload()"));
    d->progressSeen = false;
    d->requestDone = false;
    updateWifiState();
    waitWhileSuspended();
    if (d->exiting)
        return 0; // stays queued for the next run

    prepareRecord();
    if (!openSaveFile())
        return 1;
    if (d->cancelled) {
        discardTransfer();
        return 0;
    }
    if (d->current.type == DownloadRequest && !fitSaveFile()) {
        d->saveFile.close();
        pauseBeforeRetry();
        return 1;
    }
    transfer();
    concludeTransfer();
    return 0;
}

void DownloadManager::waitWhileSuspended()
{
    while (d->suspended && !d->exiting) {
        {
            const QMutexLocker lock(&d->suspensionMutex);
            // Tested again under the lock: a resume in between would otherwise cost a second.
            if (d->suspended && !d->exiting)
                d->wakeUp.wait(&d->suspensionMutex, SuspendedStep);
        }
        QCoreApplication::processEvents();
    }
    d->trace(QStringLiteral("Woke up..."));
}

// What is left of an earlier attempt counts only for the same file of the same address.
void DownloadManager::prepareRecord()
{
    const QUrl url = addressOf(d->current);
    const QString fileName = d->current.payload.toString();
    const bool savedTransfer = d->queue->hasSavedTransfer.exchange(false);
    if (d->download.url.toString() != url.toString() || d->download.fileName != fileName) {
        d->clearRecord();
    } else if (savedTransfer) {
        d->unfinished = true;
    }
    d->download.url = url;
    d->download.fileName = fileName;
    d->urlText = url.toString();
}

bool DownloadManager::openSaveFile()
{
    const QString &fileName = d->download.fileName;
    if (d->saveFile.isOpen()) {
        d->trace(QLatin1String("INFO: Closing already opened file: ") + fileName);
        d->saveFile.close();
    }
    // Our own folder may have been cleared away since the request was made.
    const QString ownFolder = QDir::homePath() + TMP_DIR_PATH;
    if (fileName.startsWith(ownFolder))
        QDir().mkpath(ownFolder); // If it fails, the open tells.
    if (d->saveFile.open(fileName))
        return true;
    d->trace(QLatin1String("ERROR: Problem opening save file ") + fileName
             + QLatin1String(" for download ") + d->urlText + QLatin1String(": ")
             + d->saveFile.errorString());
    return false;
}

// The file decides how far a transfer has come, but never more than was recorded: what lies behind
// that was written just before a crash.
bool DownloadManager::fitSaveFile()
{
    Download &download = d->download;
    // Of type 0 the total is only what one answer brought.
    const bool tooMuch = download.downloadType == 1 && download.bytesTotal > 0
        && download.bytesReceived > download.bytesTotal;
    if (download.bytesReceived < 0 || tooMuch)
        download.bytesReceived = 0;
    if (!d->saveFile.cutTo(download.bytesReceived)) {
        L::og()->error(QLatin1String("Could not cut the save file ") + download.fileName
                       + QLatin1String(": ") + d->saveFile.errorString());
        return false;
    }
    download.bytesReceived = d->saveFile.size();
    return true;
}

void DownloadManager::transfer()
{
    beginAttempt();
    if (endsWithoutRequest()) {
        d->saveFile.close();
        return;
    }
    d->unfinished = true;

    d->transferClock.start();
    d->chunkClock.invalidate();
    sendRequest();

    // Cleared here and not before: a suspension that was lifted while this waited had set it. Who
    // sets it sets the reason first, so nothing is missed.
    d->requestDone = false;
    d->interrupted = false;
    if (d->suspended) // asked behind the line above, so that a suspension in between counts
        d->interrupted = true;
    if (d->suspended || d->cancelled)
        d->requestDone = true;
    waitForEnd();
    d->trace(QStringLiteral("Item downloaded. Exiting waiting loop..."));
    d->heartbeat.stop();
    // The error came, but the end of the reply did not yet: without its judgement the request
    // would be sent again and again.
    if (d->errorSeen && !d->finishedSeen && d->reply && !d->cancelled && !d->suspended)
        doDownloadFinished();
    takeChunk();
    abortCurrentRequest();
    d->saveFile.close();
}

// Writes what arrives until the reply is over or nobody wants it any more.
//
// Each piece that arrives wakes Qt's HTTP thread and this one, and a slow server's come by the
// hundred. What the reply may not hold, Qt leaves in the kernel: so both sleep for a step, and then
// fetch at once what has come meanwhile.
void DownloadManager::waitForEnd()
{
    QTimer tick; // so that no wait for data is longer than a step
    tick.start(WaitStep);
    Pace pace;
    while (!d->requestDone) {
        if (d->exiting) {
            d->trace(QStringLiteral("Exit received. Suspending..."));
            suspend(NetworkCause);
            d->requestDone = true;
            break;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        writeArrived();
        const bool isSlow =
            pace.isSlow(d->replyBytes, d->transferClock.elapsed()) && d->reply && !d->requestDone;
        if (isSlow)
            d->reply->setReadBufferSize(Pace::HeldBack);
        if (!d->chunkClock.isValid() || d->chunkClock.elapsed() >= ChunkInterval)
            takeChunk();
        if (isSlow) {
            Worker::threadSleep(WaitStep);
            d->reply->setReadBufferSize(ReplyBuffer);
            tick.start(); // else it would be due at once
        }
    }
}

void DownloadManager::beginAttempt()
{
    d->current.state = StateNew;
    if (d->download.downloadType == 1 && d->download.bytesTotal > 0)
        d->knownTotal = d->download.bytesTotal;
    d->testAnswered = false;
    d->attemptOver = false;
    d->errorSeen = false;
    d->finishedSeen = false;
    d->bodyChecked = false;
    d->bodyIgnored = false;
    d->writeFailed = false;
    d->replyBytes = 0;
    d->unrecorded = false;
}

// Whether an earlier attempt has left nothing to do but to put the request away.
bool DownloadManager::endsWithoutRequest()
{
    if (d->toldState == StateDone || d->toldState == StateFailed) {
        d->current.state = d->toldState;
        return true;
    }
    const Download &download = d->download;
    if (!d->unfinished || d->current.type != DownloadRequest || download.bytesTotal <= 0
        || download.bytesReceived != download.bytesTotal)
        return false;
    finishTransfer(); // all is there: the last run ended before it could say so
    return true;
}

void DownloadManager::sendRequest()
{
    QNetworkRequest request(d->download.url);
    d->rangeStart = d->current.type == TestDownloadRequest ? 0 : d->download.bytesReceived;
    request.setRawHeader(HTTP_RANGE_TOKEN.toLatin1(),
                         HTTP_RANGE_VALUE_BYTES_TOKEN.toLatin1() + QByteArray::number(d->rangeStart)
                             + '-');
    // Else Qt would ask for a packed body and unpack it under our byte counts.
    request.setRawHeader("Accept-Encoding", "identity");
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    if (d->reply)
        d->reply->disconnect();
    d->heartbeat.start();
    if (!d->network)
        d->network = std::make_unique<QNetworkAccessManager>();
    QNetworkReply *reply = d->network->get(request);
    d->reply = reply;
    // Without a limit a fast server fills the memory while the disk is waited for. A test never
    // reads, so with one its reply would never end.
    if (d->current.type != TestDownloadRequest)
        reply->setReadBufferSize(ReplyBuffer);
    connect(reply, &QNetworkReply::downloadProgress, this, &DownloadManager::doDownloadProgress);
    connect(reply, &QNetworkReply::metaDataChanged, this, [this] { guardAgainstRepeat(); });
    connect(reply, &QNetworkReply::finished, this, &DownloadManager::doDownloadFinished);
    connect(reply, &QNetworkReply::readyRead, this, &DownloadManager::doDownloadReadyRead);
    connect(reply, &QNetworkReply::errorOccurred, this, &DownloadManager::doDownloadError);
}

void DownloadManager::doDownloadReadyRead()
{
    if (!d->reply)
        return;
    if (d->current.type == DownloadRequest) {
        // What was saved may be worth nothing to this answer: then the progress must not count it.
        checkBody();
        if (d->attemptOver)
            return;
    }
    // Qt tells of progress behind the data, and not at every piece; the heartbeat, the stored
    // total and a test download need to hear of it first.
    bool lengthKnown = false;
    const qint64 length = httpHeader(*d->reply, HTTP_CONTENT_LENGTH_TOKEN).toLongLong(&lengthKnown);
    doDownloadProgress(d->replyBytes + d->reply->bytesAvailable(), lengthKnown ? length : -1);
    if (d->current.type == TestDownloadRequest)
        L::og()->trace(QStringLiteral("Test request"),
                       QStringLiteral("void DownloadManager::doDownloadReadyRead()"));
}

// Qt repeats a request by itself when the connection ends at a certain moment, and hands the body
// of the second answer out behind what had come of the first.
void DownloadManager::guardAgainstRepeat()
{
    if (d->current.type == TestDownloadRequest || d->attemptOver || d->current.state != StateNew
        || (d->replyBytes == 0 && d->reply->bytesAvailable() == 0))
        return;
    d->trace(QStringLiteral("The request was repeated on the way. Asking for the rest..."));
    if (d->bodyChecked)
        takeChunk(); // still the first answer's
    if (!hasGrown())
        failCutShort();
    endAttempt();
}

// Judges the reply's header, once; what comes after it is the file's bytes or nothing.
void DownloadManager::checkBody()
{
    if (d->bodyChecked)
        return;
    d->bodyChecked = true;
    switch (
        judgeBody(httpStatus(*d->reply), contentRangeOf(*d->reply), d->rangeStart, d->knownTotal)) {
    case BodyUse::Append:
        break;
    case BodyUse::StartAnew:
        d->knownTotal = 0;
        d->download.bytesReceived = 0;
        if (!fitSaveFile()) {
            d->writeFailed = true;
            endAttempt();
        }
        break;
    case BodyUse::Restart:
        // The next attempt begins at the first byte.
        d->trace(QStringLiteral("The server's file has changed. Starting it anew..."));
        d->knownTotal = 0;
        d->download.bytesReceived = 0;
        d->download.bytesTotal = 0;
        endAttempt();
        break;
    case BodyUse::Refuse:
        L::og()->error(QStringLiteral("Failed: the server sent another part than was asked for"));
        failTransfer(ContentRefused);
        endAttempt();
        break;
    case BodyUse::Ignore:
        d->bodyIgnored = true;
        break;
    }
}

// Writes what the reply holds and puts the count of what is written on disk.
void DownloadManager::takeChunk()
{
    writeArrived();
    if (!d->unrecorded || d->cancelled)
        return;
    d->unrecorded = false;
    const VexaSettings::Locker settings;
    d->download.serialize(*settings);
    settings->sync();
    d->chunkClock.start(); // behind the sync: a slow disk, too, is left alone for a while
}

// Writes what the reply holds and counts it once it is written.
void DownloadManager::writeArrived()
{
    if (!d->reply || d->current.type == TestDownloadRequest || d->attemptOver || d->cancelled
        || d->current.state != StateNew || d->reply->bytesAvailable() == 0)
        return;
    checkBody();
    if (d->attemptOver)
        return;
    if (d->bodyIgnored) {
        d->replyBytes += d->reply->skip(d->reply->bytesAvailable());
        return;
    }
    const qint64 written = d->saveFile.append(*d->reply);
    if (written < 0) {
        L::og()->error(QLatin1String("Could not write to the save file ") + d->download.fileName
                       + QLatin1String(": ") + d->saveFile.errorString());
        d->writeFailed = true;
        endAttempt();
        return;
    }
    d->replyBytes += written;
    d->download.bytesReceived += written;
    d->unrecorded = true;
}

// What the reply still holds or says does not matter any more.
void DownloadManager::endAttempt()
{
    d->attemptOver = true;
    d->requestDone = true;
}

void DownloadManager::doDownloadProgress(qint64 bytesReceived, qint64 bytesTotal)
{
    Q_UNUSED(bytesReceived);
    d->progressSeen = true;
    Download &download = d->download;
    const bool partial = d->reply
        && (d->reply->hasRawHeader(HTTP_CONTENT_RANGE_TOKEN.toLatin1())
            || d->reply->hasRawHeader(HTTP_CONTENT_LENGTH_TOKEN.toLatin1()));
    if (partial) {
        download.downloadType = 1;
        // Without a range the size stays unknown, although the length would tell it.
        download.bytesTotal =
            bytesTotalFromContentRange(httpHeader(*d->reply, HTTP_CONTENT_RANGE_TOKEN));
    } else {
        L::og()->warning(QStringLiteral("No partial download possible"));
        download.downloadType = 0;
        download.bytesTotal = bytesTotal;
    }

    qint64 estimatedTime = 0;
    if (download.bytesReceived >= 1 && download.bytesTotal >= 0) {
        const double ms = double(download.bytesTotal - download.bytesReceived)
            / double(download.bytesReceived) * double(d->elapsed(d->transferClock));
        // A server may claim any size; a time that no qint64 holds would be undefined.
        estimatedTime = qint64(qMin(ms, 1e18));
    }
    if (d->elapsed(d->loopClock) > d->ProgressInterval) {
        Q_EMIT progress(d->current.type, d->urlText, d->current.id, download.bytesReceived,
                        download.bytesTotal, estimatedTime);
        d->loopClock.start();
    }
    if (d->current.type == TestDownloadRequest) {
        L::og()->trace(QStringLiteral("Test request"),
                       QStringLiteral("void DownloadManager::doDownloadProgress(qint64, qint64)"));
        d->testAnswered = true;
        d->requestDone = true;
    }
}

void DownloadManager::doHeartBeat()
{
    d->trace(QStringLiteral("void DownloadManager::doHeartBeat()"));
    if (d->progressSeen) {
        d->progressSeen = false;
        return;
    }
    d->trace(QStringLiteral("WARNING: No download progress detected within 5000 ms"));
    if (d->current.type == TestDownloadRequest) {
        d->trace(QStringLiteral("WARNING: Canceling current test download request ..."));
        cancel(d->current.url);
    } else {
        d->trace(QStringLiteral("WARNING: Aborting current request and resending ..."));
        d->requestDone = true;
    }
}

void DownloadManager::abortCurrentRequest()
{
    if (!d->reply)
        return;
    QNetworkReply *reply = d->reply;
    d->reply = nullptr;
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
    // Left to the event loop it would live as long as the main loop, which is that loop's caller.
    QCoreApplication::sendPostedEvents(reply, QEvent::DeferredDelete);
}
