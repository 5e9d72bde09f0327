// SPDX-License-Identifier: MIT
// The end of an HTTP transfer: what its reply came to, and what becomes of file and request.
#include "download/downloadmanager.h"

#include "download/downloadmanager_p.h"
#include "download/httpanswer_p.h"
#include "plugin/disksync_p.h"
#include "plugin/vexaconstants.h"
#include "plugin/vexasettings.h"
#include <QCoreApplication>
#include <QFileInfo>
#include <QMutexLocker>

namespace {

constexpr int RetryStep = 100; // ms between two looks while a full disk is waited for

} // namespace

void DownloadManager::doDownloadFinished()
{
    d->trace(QStringLiteral("void DownloadManager::doDownloadFinished()"));
    d->finishedSeen = true;
    if (d->current.type == TestDownloadRequest) {
        // Whatever the reply came to: a test has always ended as finished.
        d->trace(QStringLiteral("Test request"));
        finishTransfer();
        d->requestDone = true;
        return;
    }
    takeChunk();
    d->requestDone = true;
    if (!d->reply)
        return;
    QNetworkReply &reply = *d->reply;
    reply.deleteLater();
    if (d->attemptOver || d->current.state != StateNew)
        return;
    switch (reply.error()) {
    case QNetworkReply::NoError:
        judgeWhole();
        break;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::ProxyTimeoutError:
        L::og()->error(QStringLiteral("ERROR: Response Timeout"));
        break;
    case QNetworkReply::UnknownContentError:
        if (isAllThere()) {
            finishDownload();
            break;
        }
        L::og()->error(QLatin1String("Failed: ") + reply.errorString());
        failTransfer(ContentRefused);
        break;
    case QNetworkReply::OperationCanceledError:
        d->trace(QStringLiteral("Aborted, disconnecting signals"));
        reply.disconnect(this);
        d->trace(QStringLiteral("Download aborted"));
        d->current.state = StateAborted;
        break;
    default:
        L::og()->error(QLatin1String("Failed: ") + reply.errorString());
        L::og()->error(QLatin1String("Error: ") + QString::number(reply.error()));
        failTransfer(DownloadFailed);
        break;
    }
}

void DownloadManager::doDownloadError(QNetworkReply::NetworkError code)
{
    d->trace(QLatin1String("network error code: ") + QString::number(code));
    if (d->current.type == TestDownloadRequest)
        L::og()->trace(
            QStringLiteral("Test request"),
            QStringLiteral("void DownloadManager::doDownloadError(QNetworkReply::NetworkError)"));
    d->errorSeen = true;
    d->requestDone = true;
}

// The reply ended without an error. Qt says so of a body that was cut where nothing told its
// length, and now and then where something did.
void DownloadManager::judgeWhole()
{
    checkBody();
    if (d->attemptOver)
        return;
    const Download &download = d->download;
    qint64 total = download.downloadType == 1 ? download.bytesTotal : 0;
    if (total <= 0 && d->rangeStart > 0)
        total = d->knownTotal; // this answer does not tell, an earlier one did
    if (d->bodyIgnored) {
        L::og()->error(QLatin1String("Failed: status ") + QString::number(httpStatus(*d->reply)));
        failTransfer(DownloadFailed);
    } else if (isCutShort() || (total > 0 && download.bytesReceived < total)) {
        if (hasGrown())
            d->trace(QStringLiteral("The reply was cut short. Asking for the rest..."));
        else
            failCutShort();
    } else if (total > 0 && download.bytesReceived > total) {
        L::og()->error(QStringLiteral("Failed: the file is longer than the server said"));
        failTransfer(ContentRefused);
    } else {
        finishDownload();
    }
}

bool DownloadManager::isCutShort() const
{
    bool isKnown = false;
    const qint64 length = httpHeader(*d->reply, HTTP_CONTENT_LENGTH_TOKEN).toLongLong(&isKnown);
    return isKnown && d->replyBytes < length;
}

// Whether another attempt would begin further on than this one did. A server that starts anew each
// time and never comes to the end would else be asked for ever.
bool DownloadManager::hasGrown() const
{
    return d->download.bytesReceived > d->rangeStart;
}

void DownloadManager::failCutShort()
{
    L::og()->error(QStringLiteral("Failed: the server ends the connection too early"));
    failTransfer(DownloadFailed);
}

// A request behind the last byte is refused; that is no failure if the file ends just there, as an
// empty one does before its first byte.
bool DownloadManager::isAllThere() const
{
    constexpr int RangeNotSatisfiable = 416;
    if (httpStatus(*d->reply) != RangeNotSatisfiable)
        return false;
    // Another size than earlier answers told: what we have is a piece of another file.
    if (d->knownTotal > 0 && d->knownTotal != d->rangeStart)
        return false;
    return contentRangeOf(*d->reply).total == d->rangeStart;
}

void DownloadManager::finishDownload()
{
    // Somebody may have removed or changed the file under our open handle.
    if (QFileInfo(d->download.fileName).size() == d->download.bytesReceived)
        finishTransfer();
    else
        d->trace(QStringLiteral("The save file was changed meanwhile. Asking for the rest..."));
}

void DownloadManager::finishTransfer()
{
    d->current.state = StateDone;
    Q_EMIT finished(d->current.type, d->urlText, d->current.id);
}

// A suspension ends the attempt, whatever its reply comes to afterwards: a server or a network that
// goes then must not cost the partial file. The request stays queued, and its next attempt tells.
void DownloadManager::failTransfer(int errorCode)
{
    if (!d->interrupted)
        failStep(errorCode);
}

void DownloadManager::failStep(int errorCode)
{
    d->current.state = StateFailed;
    Q_EMIT error(d->current.type, d->current.id, errorCode, d->urlText);
}

void DownloadManager::concludeTransfer()
{
    d->trace(QStringLiteral("Checking download state..."));
    if (d->cancelled) {
        discardTransfer();
        return;
    }
    // A test is over with the first sign of an answer; its reply was aborted before its end.
    if (d->current.type == TestDownloadRequest && d->testAnswered && d->current.state == StateNew
        && !d->suspended)
        finishTransfer();
    if (d->suspended) {
        d->trace(QStringLiteral("Download is suspended"));
        // The suspension may have come just after the end was told; it is not told again then.
        d->toldState = d->current.state;
        return;
    }
    if (d->current.state == StateDone)
        endWell();
    else if (d->current.state == StateFailed)
        endBadly();
    else if (d->writeFailed)
        pauseBeforeRetry();
}

void DownloadManager::endWell()
{
    d->trace(QStringLiteral("Download is sucessful")); // The spelling is fixed.
    const QString fileName = d->download.fileName;
    const bool isTest = d->current.type == TestDownloadRequest;
    forgetTransfer();
    // Else the queue could say that it is there when a power cut has left half of it. What could
    // not be written is found out by unpacking it.
    if (!isTest)
        DiskSync::file(fileName);
    const bool wasQueued = d->queue->dequeueIfHead(d->current);
    // A test writes nothing; the empty file that opening made is not worth keeping. And a file
    // whose request was cancelled at the last moment has nobody left who wants it.
    if (isTest ? QFileInfo(fileName).size() == 0 : !wasQueued)
        SaveFile::remove(fileName); // only a leftover if it fails
}

void DownloadManager::endBadly()
{
    d->trace(QStringLiteral("Download error"));
    const QString fileName = d->download.fileName;
    forgetTransfer();
    removeSaveFile(fileName);
    d->queue->dequeueIfHead(d->current);
}

// Not synced: the dequeue that follows does it, so that record and queue change together on disk.
void DownloadManager::forgetTransfer()
{
    d->clearRecord();
    const VexaSettings::Locker settings;
    d->download.serialize(*settings);
}

void DownloadManager::discardTransfer()
{
    d->trace(QStringLiteral("Download is canceled"));
    const QString fileName = d->download.fileName;
    d->saveFile.close();
    d->clearRecord();
    removeSaveFile(fileName);
    d->cancelled = false;
    // At once: with an empty queue the loop may sleep for long before it saves its state.
    const VexaSettings::Locker settings;
    d->download.serialize(*settings);
    settings->sync();
}

void DownloadManager::removeSaveFile(const QString &fileName)
{
    d->trace(QStringLiteral("Removing the file"));
    if (!SaveFile::remove(fileName))
        d->trace(QLatin1String("Failed to remove file: ") + fileName);
}

// A full disk does not empty itself in 20 ms, and every attempt costs the user's traffic.
void DownloadManager::pauseBeforeRetry()
{
    QElapsedTimer pause;
    pause.start();
    while (pause.elapsed() < d->heartbeatInterval && !d->exiting && !d->cancelled
           && !d->suspended) {
        {
            const QMutexLocker lock(&d->suspensionMutex);
            if (!d->exiting)
                d->wakeUp.wait(&d->suspensionMutex, RetryStep);
        }
        QCoreApplication::processEvents();
    }
}
