// SPDX-License-Identifier: MIT
#include "download/downloadmanager.h"

#include "download/downloadmanager_p.h"
#include "download/worker.h"
#include "plugin/vexasettings.h"
#include <QCoreApplication>
#include <QMutexLocker>
#include <QThread>

namespace {

constexpr int LoopPause = 20; // ms between two requests

QString isSuspendedKey()
{
    return QStringLiteral("isSuspended");
}

QString zeroOrOne(bool value)
{
    return QString::number(value ? 1 : 0);
}

struct ResumeDecision
{
    bool resume;
    const char *logLine; // null: none
};

ResumeDecision decideResume(SuspensionCause asked, SuspensionCause current, bool networkUsable)
{
    if (asked == ForcedCause)
        return {true, "Will resume - forced resume"};
    if (asked == UserCause && current == UserCause) {
        if (!networkUsable)
            return {false, "Will not resume - 0"};
        return {true, "Will resume - 1"};
    }
    if (asked == UserCause && current == NetworkCause)
        return {false, "Will not resume - 2"};
    if (asked == NetworkCause && current == UserCause)
        return {false, "Will not resume - 3"};
    if (asked == NetworkCause && current == NetworkCause)
        return {true, "Will resume - 4"};
    return {true, nullptr};
}

void setIfOther(QSettings &settings, const QString &key, const QVariant &value)
{
    if (settings.value(key) != value)
        settings.setValue(key, value);
}

bool isStored(const Download &download, QSettings &settings)
{
    Download stored;
    stored.deSerialize(settings);
    return settings.contains(QStringLiteral("download/downloadType"))
        && stored.url.toString() == download.url.toString() && stored.fileName == download.fileName
        && stored.bytesReceived == download.bytesReceived
        && stored.bytesTotal == download.bytesTotal && stored.downloadType == download.downloadType;
}

} // namespace

DownloadManager::DownloadManager(RequestQueue<Request> *queue, QObject *parent)
    : QObject(parent)
    , d(std::make_unique<DownloadManagerPrivate>())
{
    d->trace(QStringLiteral("DownloadManager::DownloadManager(RequestQueue<Request>*, QObject*)"));
    qRegisterMetaType<VexaArchive::ArchiveError>("VexaArchive::ArchiveError");
    d->queue = queue;
    d->heartbeat.setInterval(d->heartbeatInterval);
    loadState();
}

DownloadManager::~DownloadManager()
{
    abortCurrentRequest();
}

int DownloadManager::run()
{
    const int result = mainLoop();
    if (QThread *thread = QThread::currentThread()) {
        d->info(QStringLiteral("Vexa thread exit"));
        thread->exit(0);
    }
    return result;
}

int DownloadManager::mainLoop()
{
    d->trace(QStringLiteral("int DownloadManager::mainLoop()"));
    d->heartbeat.setInterval(d->heartbeatInterval);
    connect(&d->heartbeat, &QTimer::timeout, this, &DownloadManager::doHeartBeat,
            Qt::UniqueConnection);
    d->loopClock.start();
    for (;;) {
        d->trace(QStringLiteral("Waiting for request from the queue..."));
        const bool isStillQueued = takeUp(d->queue->head());
        if (d->exiting) {
            putDown();
            break;
        }
        if (isStillQueued)
            execute();
        putDown();
        saveState();
        QCoreApplication::processEvents();
        if (d->queue->snapshot().isEmpty())
            d->network.reset();
        Worker::threadSleep(LoopPause);
    }
    d->trace(QStringLiteral("Exiting main vexa loop"));
    return 0;
}

// A cancel that came before this has removed the request, and found another one current.
bool DownloadManager::takeUp(const Request &head)
{
    const QMutexLocker lock(&d->requestMutex);
    d->current = head;
    d->currentUrl = head.url;
    d->executing = true;
    return d->queue->isHead(head);
}

void DownloadManager::execute()
{
    switch (d->current.type) {
    case TestDownloadRequest:
    case DownloadRequest:
        doDownload();
        break;
    case UncompressRequest:
        doUncompress();
        break;
    case MoveRequest:
        doMove();
        break;
    default:
        break; // A type that is not known stays queued and comes again and again, on purpose.
    }
}

// A cancel that came too late for the step, or that the step does not look for, must not hit the
// next one.
void DownloadManager::putDown()
{
    const QMutexLocker lock(&d->requestMutex);
    d->executing = false;
    if (d->cancelled.exchange(false) && recordIsOf(d->currentUrl))
        discardTransfer();
}

bool DownloadManager::recordIsOf(const QString &url) const
{
    return !d->download.fileName.isEmpty()
        && d->download.url.toString() == addressOf(url).toString();
}

bool DownloadManager::suspended() const
{
    return d->suspended;
}

QStringList DownloadManager::getUnpackedFileList() const
{
    const QMutexLocker lock(&d->requestMutex);
    return d->unpackedFiles;
}

void DownloadManager::suspend()
{
    suspend(UserCause);
}

void DownloadManager::suspend(SuspensionCause suspensionCause)
{
    d->info(QStringLiteral("void DownloadManager::suspend(SuspensionCause)"));
    {
        const QMutexLocker lock(&d->suspensionMutex);
        if (d->suspended)
            return;
        d->info(QStringLiteral("Suspending... Cause: ") + QString::number(suspensionCause));
        if (d->cause != UserCause)
            d->cause = suspensionCause;
        d->suspended = true;
        d->interrupted = true;
        if (d->cause == UserCause) {
            const VexaSettings::Locker settings;
            settings->setValue(isSuspendedKey(), true);
            settings->sync();
        }
    }
    Q_EMIT notifySuspended(true);
    d->requestDone = true;
}

void DownloadManager::resume(SuspensionCause suspensionCause)
{
    d->info(QStringLiteral("void DownloadManager::resume(SuspensionCause)"));
    {
        const QMutexLocker lock(&d->suspensionMutex);
        if (!d->suspended)
            return;
        const ResumeDecision decision =
            decideResume(suspensionCause, d->cause, d->hasWifiConnection || d->allowGprsConnection);
        if (decision.logLine)
            d->info(QLatin1String(decision.logLine));
        if (!decision.resume)
            return;
        d->suspended = false;
        d->cause = NotSuspended;
        d->wakeUp.wakeAll();
        const VexaSettings::Locker settings;
        settings->setValue(isSuspendedKey(), false);
        settings->sync();
    }
    Q_EMIT notifySuspended(false);
}

void DownloadManager::setHasWiFi(bool hasWiFi)
{
    d->hasWifiConnection = hasWiFi;
    Q_EMIT hasWifiConnectionChanged(hasWiFi);
    d->trace(QStringLiteral("m_hasWifiConnection: ") + zeroOrOne(hasWiFi));
}

void DownloadManager::allowGprsConnection(bool allow)
{
    const bool before = d->allowGprsConnection.exchange(allow);
    if (before == allow)
        return;
    // The previous value, on purpose: the line has always told what the change is away from.
    d->info(QStringLiteral("Allow Gprs connection: ") + zeroOrOne(before));
    updateWifiState();
}

void DownloadManager::allowGoOnline(bool allow)
{
    d->allowGoOnline = allow;
    updateWifiState();
}

void DownloadManager::updateWifiState()
{
    d->trace(QStringLiteral("void DownloadManager::updateWifiState()"));
    // Two threads come here, the engine's own before each transfer. Who looked before the other
    // changed something and acts behind it must look again, or it undoes what the other did.
    bool usable = false;
    do {
        usable = followNetwork();
    } while (usable != d->networkUsable());
}

// Returns what it went by: whether there is a network that may be used.
bool DownloadManager::followNetwork()
{
    if (!d->allowGoOnline) {
        d->info(QStringLiteral("Application is not allowed to go online. Will suspend download "
                               "manager"));
        suspend(NetworkCause);
        return false;
    }
    const bool hasWifi = d->hasWifiConnection;
    const bool gprsAllowed = d->allowGprsConnection;
    d->trace(QStringLiteral("m_hasWifiConnection: ") + zeroOrOne(hasWifi));
    d->trace(QStringLiteral("m_allowGprsConnection: ") + zeroOrOne(gprsAllowed));
    if (!hasWifi && !gprsAllowed) {
        d->info(QStringLiteral("No wifi connection and its not allowed to use gprs. Will suspend "
                               "download manager"));
        suspend(NetworkCause);
        return false;
    }
    d->info(QStringLiteral("Application is allowed to go online. Will resume download "
                           "manager"));
    resume(NetworkCause);
    return true;
}

void DownloadManager::cancel()
{
    cancel(QString());
}

void DownloadManager::cancel(const QString &url)
{
    d->info(QStringLiteral("void DownloadManager::cancel(const QString&)"));
    // Removed first and compared afterwards, so that the loop cannot take the request up in
    // between: either it finds it gone, or the comparison finds it current.
    if (url.isEmpty())
        d->queue->removeAllRequests();
    else
        d->queue->removeRequests(url);
    if (cancelCurrent(url))
        resume(ForcedCause);
}

// Returns whether the current request was hit.
bool DownloadManager::cancelCurrent(const QString &url)
{
    const QMutexLocker lock(&d->requestMutex);
    const bool isCurrent = url.isEmpty() || url == d->currentUrl;
    if (d->executing) {
        if (isCurrent) {
            d->cancelled = true;
            d->requestDone = true;
        }
    } else if (url.isEmpty() ? !d->download.fileName.isEmpty() : recordIsOf(url)) {
        discardTransfer(); // between two attempts, or left by an earlier run
    }
    return isCurrent;
}

void DownloadManager::exit()
{
    d->trace(QStringLiteral("void DownloadManager::exit()"));
    {
        const QMutexLocker lock(&d->suspensionMutex);
        d->exiting = true;
        d->wakeUp.wakeAll();
    }
    const QMutexLocker lock(&d->requestMutex);
    if (d->archive)
        d->archive->cancel();
}

void DownloadManager::prepareToDestroy()
{
    QMetaObject::invokeMethod(this, &DownloadManager::abortCurrentRequest, Qt::QueuedConnection);
}

int DownloadManager::saveState()
{
    d->trace(QStringLiteral("int DownloadManager::saveState()"));
    const QMutexLocker lock(&d->suspensionMutex);
    const QMutexLocker recordLock(&d->requestMutex);
    const VexaSettings::Locker settings;
    d->info(QStringLiteral("Settings file: ") + settings->fileName());
    if (d->cause == UserCause)
        setIfOther(*settings, isSuspendedKey(), bool(d->suspended));
    // A request that cannot begin comes here 50 times a second; the file must not be rewritten
    // each time, it lies on flash.
    if (!isStored(d->download, *settings))
        d->download.serialize(*settings);
    settings->sync();
    return 0;
}

int DownloadManager::loadState()
{
    d->trace(QStringLiteral("int DownloadManager::loadState()"));
    {
        const QMutexLocker lock(&d->suspensionMutex);
        const VexaSettings::Locker settings;
        d->info(QStringLiteral("Settings file: ") + settings->fileName());
        settings->sync();
        d->suspended = settings->value(isSuspendedKey(), false).toBool();
        if (d->suspended)
            d->cause = UserCause;
    }
    d->queue->restoreSaved();
    const VexaSettings::Locker settings;
    d->download.deSerialize(*settings);
    return 0;
}

void DownloadManager::setUnpackPause(int ms)
{
    d->unpackPause = ms;
}

void DownloadManager::setContainedUnpack(bool contained)
{
    d->containedUnpack = contained;
}

void DownloadManager::setHeartbeatInterval(int ms)
{
    d->heartbeatInterval = ms;
}
