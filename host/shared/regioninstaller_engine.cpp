// SPDX-License-Identifier: MIT
// What the engine says, and what the network allows it.
#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "download/downloadmanageriface.h"
#include "download/worker.h"
#include "host/shared/attempttag.h"
#include "host/shared/regioninstaller.h"
#include "host/shared/savedqueue.h"
#include <algorithm>
#include <QLocale>
#include <utility>

using Phase = PendingInstall::Phase;

namespace {

// The engine's error codes.
constexpr int DownloadFailed = 1;
constexpr int UnpackFailed = 2;
constexpr int MoveStepFailed = 3;
constexpr int Refused = 4;

} // namespace

void RegionInstaller::connectEngine()
{
    // Queued by the worker's thread; what it says while the main loop does not run waits there.
    connect(m_worker, &Worker::engineReady, this, &RegionInstaller::onEngineReady,
            Qt::QueuedConnection);
    connect(m_iface, &DownloadManagerIface::progress, this,
            [this](int operation, const QString &url, const QString &id, qint64 bytes,
                   qint64 total) { onProgress(operation, url, id, bytes, total); });
    connect(m_iface, &DownloadManagerIface::finished, this, &RegionInstaller::onFinished);
    connect(m_iface, &DownloadManagerIface::error, this, &RegionInstaller::onError);
    connect(&m_guard, &MoveGuard::otherSize, this, &RegionInstaller::onOtherSize,
            Qt::QueuedConnection);
    connect(m_iface, &DownloadManagerIface::requestsChanged, this,
            &RegionInstaller::queueLookForVanished, Qt::QueuedConnection);
    connect(m_iface, &DownloadManagerIface::isSuspendedChanged, this,
            &RegionInstaller::updateWaiting);
}

void RegionInstaller::onEngineReady()
{
    m_engineReady = true;
    if (m_paused)
        holdEngine();
    else
        applyNetwork();
    updateWaiting();
    schedulePump();
}

RegionInstaller::Run *RegionInstaller::findRun(const QString &id, const QString &url)
{
    for (Run &run : m_runs) {
        // A step that is taken up after a restart may come without its address.
        if (run.id == id && (url.isEmpty() || AttemptTag::of(url) == run.attempt))
            return &run;
    }
    return nullptr;
}

void RegionInstaller::onProgress(int operation, const QString &url, const QString &id, qint64 bytes,
                                 qint64 total)
{
    Run *run = findRun(id, url);
    if (!run || run->dead)
        return;
    RegionStatus next;
    next.bytes = bytes;
    next.total = std::max<qint64>(total, 0);
    switch (operation) {
    case DownloadRequest:
        next.state = RegionState::Downloading;
        // The engine learns the size only from an answer that names the range.
        if (const MapRegion *region = m_catalog->region(id); next.total == 0 && region)
            next.total = region->downloadSize();
        run->meter.add(bytes);
        next.bytesPerSecond = run->meter.bytesPerSecond();
        next.remainingMs = run->meter.remainingMs(next.total);
        break;
    case UncompressRequest:
        next.state = RegionState::Unpacking;
        break;
    case MoveRequest:
        next.state = RegionState::Moving;
        break;
    default:
        return;
    }
    setStatus(id, next);
    updateWaiting(); // A last piece of news may come from before a suspension.
}

void RegionInstaller::onFinished(int operation, const QString &url, const QString &id)
{
    Run *run = findRun(id, url);
    if (!run)
        return;
    if (operation == MoveRequest) {
        onMoveFinished(*run);
        return;
    }
    // That an unpack is finished says nothing: it comes twice, and after a failure too. The move
    // tells when it begins.
    if (operation == DownloadRequest && !run->dead)
        setState(id, RegionState::Unpacking);
}

// What a log-in page or an end that is missing came to. Its archive is not worth unpacking.
void RegionInstaller::onOtherSize(const QString &id, int attempt, qint64 bytes)
{
    const auto run = std::find_if(m_runs.begin(), m_runs.end(), [&](const Run &candidate) {
        return candidate.id == id && candidate.attempt == attempt;
    });
    if (run == m_runs.end() || run->dead)
        return;
    const MapRegion *region = m_catalog->region(id);
    RegionStatus status;
    status.state = RegionState::Failed;
    status.failure = FailureKind::Network;
    status.reason = tr("The server sent %1 bytes for %2, but the catalogue says %3; nothing was "
                       "changed. Is there a log-in page in between, or is the catalogue old?")
                        .arg(QLocale().toString(bytes), id,
                             QLocale().toString(region ? region->downloadSize() : 0));
    giveUp(&*run, status);
}

// Before its files are moved.
void RegionInstaller::giveUp(Run *run, const RegionStatus &status)
{
    run->dead = true;
    const QString id = run->id;
    const QString url = run->url;
    m_journal.remove(id);
    m_guard.refuse(id, run->attempt);
    cancelInEngine(url); // What follows in its queue would only fail.
    setStatus(id, status);
    Q_EMIT pendingChanged();
    queueLookForVanished();
    noteBusy();
}

// The last that is heard of an attempt.
void RegionInstaller::onMoveFinished(const Run &run)
{
    const Run over = run;
    dropRun(over);
    auto entry = m_journal.find(over.id);
    const bool ours = entry && entry->attempt == over.attempt;
    if (over.dead) {
        // The journal still has it if it was the move that failed.
        if (ours) {
            discardMovedFiles(*entry);
            m_journal.remove(over.id);
            Q_EMIT pendingChanged();
        }
    } else if (ours) {
        setState(over.id, RegionState::Recording);
        entry->phase = Phase::Moved;
        m_journal.put(*entry); // If it cannot be written, the next start asks the engine's queue.
    }
    schedulePump();
    noteBusy();
}

void RegionInstaller::onError(int operation, const QString &id, int code, const QString &url)
{
    Run *run = findRun(id, url);
    if (!run || run->dead)
        return;
    run->dead = true;
    const QString requestUrl = run->url;
    const bool broke = operation == DownloadRequest && code == DownloadFailed;
    const bool waits = broke && !networkUsable();
    // After a failed move the journal keeps the list until the move is over, to clean up by it.
    if (operation != MoveRequest) {
        if (!waits)
            m_journal.remove(id);
        m_guard.refuse(id, AttemptTag::of(requestUrl));
        cancelInEngine(requestUrl); // Its unpack and move would only fail.
    }
    if (waits) {
        waitForNetwork(m_journal.find(id).value_or(PendingInstall()), id);
    } else {
        if (broke)
            noteBroken(id);
        setStatus(id, failureStatus(code, id));
    }
    Q_EMIT pendingChanged();
    queueLookForVanished();
    noteBusy();
}

RegionStatus RegionInstaller::failureStatus(int code, const QString &id)
{
    RegionStatus status;
    status.state = RegionState::Failed;
    switch (code) {
    case UnpackFailed:
        status.failure = FailureKind::Archive;
        status.reason =
            tr("The archive of %1 is damaged or could not be unpacked; nothing was changed.")
                .arg(id);
        break;
    case MoveStepFailed:
        status.failure = FailureKind::Disk;
        status.reason =
            tr("The files of %1 could not be put into place. Is the disk full?").arg(id);
        break;
    case Refused:
        status.failure = FailureKind::Network;
        status.reason = tr("The server refused to send the archive of %1.").arg(id);
        break;
    default:
        status.failure = FailureKind::Network;
        status.reason =
            tr("The archive of %1 could not be downloaded: the server cannot be reached "
               "or does not have it.")
                .arg(id);
        break;
    }
    return status;
}

// A connection often breaks before the platform says that the network is gone.
void RegionInstaller::noteBroken(const QString &id)
{
    QElapsedTimer since;
    since.start();
    m_broken.insert(id, since);
}

// It was not the server then: those downloads go on when there is a network again.
void RegionInstaller::takeUpBroken()
{
    const QHash<QString, QElapsedTimer> broken = std::exchange(m_broken, {});
    for (auto it = broken.begin(); it != broken.end(); ++it) {
        if (it->elapsed() >= m_networkPatience || status(it.key()).state != RegionState::Failed)
            continue; // or asked for again, or removed, since
        waitForNetwork(PendingInstall(), it.key());
        Q_EMIT pendingChanged();
    }
    noteBusy();
}

void RegionInstaller::waitForNetwork(PendingInstall entry, const QString &id)
{
    entry.id = id;
    entry.attempt = 0; // What is left of the last one in the engine is none of its business.
    beginAgain(entry);
    if (m_journal.ids().value(0) != id)
        return; // It waits for those ahead of it first.
    RegionStatus status;
    status.state = RegionState::Waiting;
    status.wait = m_online ? WaitReason::NoWifi : WaitReason::NetworkNotPermitted;
    setStatus(id, status);
}

// Cancelling always resumes the engine, also when the user had paused it or the network is gone.
// It is held again before anything follows in its queue.
void RegionInstaller::cancelInEngine(const QString &url)
{
    m_iface->cancel(url);
    if (m_paused)
        holdEngine();
    else if (!networkUsable())
        applyNetwork();
}

void RegionInstaller::dropRun(const Run &run)
{
    m_guard.forget(run.id, run.attempt);
    const int attempt = run.attempt;
    const QString id = run.id;
    m_runs.erase(std::remove_if(m_runs.begin(), m_runs.end(),
                                [&id, attempt](const Run &other) {
                                    return other.id == id && other.attempt == attempt;
                                }),
                 m_runs.end());
}

// The engine posts its signals before it takes a step out of the queue, so a signal that we have
// not heard yet lies in the event queue in front of what is posted now.
void RegionInstaller::queueLookForVanished()
{
    if (m_lookQueued || m_runs.isEmpty())
        return;
    m_lookQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_lookQueued = false;
            lookForVanished();
        },
        Qt::QueuedConnection);
}

void RegionInstaller::lookForVanished()
{
    QStringList queued;
    const QVariantList requests = m_iface->getRequests();
    for (const QVariant &request : requests)
        queued.append(request.toMap().value(QStringLiteral("url")).toString());
    bool again = false;
    const QList<Run> runs = m_runs;
    for (const Run &seen : runs) {
        if (queued.contains(seen.url))
            continue;
        if (seen.gone) {
            settleVanished(seen);
            continue;
        }
        if (Run *run = findRun(seen.id, seen.url)) {
            run->gone = true;
            again = true;
        }
    }
    if (again)
        queueLookForVanished();
    updateWaiting();
}

// Nothing of the attempt is queued, and no signal told of an end.
void RegionInstaller::settleVanished(const Run &run)
{
    const auto entry = m_journal.find(run.id);
    const bool ours = entry && entry->attempt == run.attempt;
    const bool dead = run.dead;
    // A move leaves the queue before its last command; it will say that it is finished. A dead run
    // that the journal still has is one whose move failed.
    if (ours && (dead || entry->phase == Phase::Moving))
        return;
    const QString id = run.id;
    const int attempt = run.attempt;
    if (!dead && !m_guard.refuse(id, attempt))
        return; // It began to move just now.
    // What is left of it in the engine can do no harm any more; its signals find no run. The guard
    // keeps refusing it: it is not forgotten here.
    m_runs.erase(std::remove_if(m_runs.begin(), m_runs.end(),
                                [&id, attempt](const Run &other) {
                                    return other.id == id && other.attempt == attempt;
                                }),
                 m_runs.end());
    if (!dead && ours) {
        m_journal.remove(id); // Somebody cancelled it at the engine.
        setState(id, RegionState::Cancelled);
        Q_EMIT pendingChanged();
    }
    schedulePump();
    noteBusy();
}

bool RegionInstaller::paused() const
{
    return currentWait() == WaitReason::PausedByUser;
}

bool RegionInstaller::online() const
{
    return m_online;
}

bool RegionInstaller::wifi() const
{
    return m_wifi;
}

bool RegionInstaller::mobileAllowed() const
{
    return m_mobileAllowed;
}

void RegionInstaller::setOnline(bool online)
{
    setNetwork(online, m_wifi, m_mobileAllowed);
}

void RegionInstaller::setWifi(bool wifi)
{
    setNetwork(m_online, wifi, m_mobileAllowed);
}

void RegionInstaller::setMobileAllowed(bool allowed)
{
    setNetwork(m_online, m_wifi, allowed);
}

void RegionInstaller::setNetwork(bool online, bool wifi, bool mobileAllowed)
{
    if (online == m_online && wifi == m_wifi && mobileAllowed == m_mobileAllowed)
        return;
    m_online = online;
    m_wifi = wifi;
    m_mobileAllowed = mobileAllowed;
    applyNetwork();
    if (!networkUsable())
        takeUpBroken();
    Q_EMIT networkChanged();
}

void RegionInstaller::setNetworkPatience(int ms)
{
    m_networkPatience = ms;
}

bool RegionInstaller::networkUsable() const
{
    return m_online && (m_wifi || m_mobileAllowed);
}

// The engine looks at the Wi-Fi only when it is asked whether it may go online. What forbids is
// said first and what permits last, so that no moment in between lets a request out.
void RegionInstaller::applyNetwork()
{
    if (!m_engineReady)
        return;
    // The network's return lifts a suspension that the network has caused. The user may have paused
    // since; then the engine must not hear of the return.
    const bool mayGoOnline = m_online && !m_paused;
    if (!mayGoOnline)
        m_iface->allowGoOnline(false);
    m_iface->setHasWiFi(m_wifi);
    m_iface->allowGprsConnection(m_mobileAllowed);
    if (mayGoOnline)
        m_iface->allowGoOnline(true);
    // A resume() that came while there was no network was refused; the wish still stands.
    if (!m_paused && networkUsable() && m_iface->suspended())
        m_iface->resume();
    updateWaiting();
}

void RegionInstaller::pause()
{
    if (m_paused)
        return;
    m_paused = true;
    if (m_engineReady)
        holdEngine();
    updateWaiting();
    Q_EMIT pausedChanged();
}

// An engine that the network has suspended takes no notice of the user's wish. To resume it for a
// moment would set its transfer going, so it is left as it is, and the wish is written for it.
void RegionInstaller::holdEngine()
{
    if (!m_iface->suspended())
        m_iface->suspend();
    SavedQueue::setPausedByUser(true);
    applyNetwork();
}

void RegionInstaller::resume()
{
    const bool before = paused();
    m_paused = false;
    if (m_engineReady) {
        SavedQueue::setPausedByUser(false);
        applyNetwork();
    }
    updateWaiting();
    if (before)
        Q_EMIT pausedChanged();
}

WaitReason RegionInstaller::currentWait() const
{
    if (m_paused)
        return WaitReason::PausedByUser;
    if (!m_engineReady || !m_iface->suspended())
        return WaitReason::None;
    if (!m_online)
        return WaitReason::NetworkNotPermitted;
    if (!networkUsable())
        return WaitReason::NoWifi;
    return WaitReason::PausedByUser; // at the engine's own interface
}

// Suspension stops downloads only; what is being unpacked or moved goes on.
void RegionInstaller::updateWaiting()
{
    const WaitReason wait = currentWait();
    const QString active = m_engineReady ? m_iface->currentlyActiveId() : QString();
    const QList<Run> runs = m_runs;
    for (const Run &run : runs) {
        RegionStatus next = status(run.id);
        const bool downloads = next.state == RegionState::Queued
            || next.state == RegionState::Waiting || next.state == RegionState::Downloading;
        if (run.dead || !downloads || run.id != active)
            continue;
        next.state = wait == WaitReason::None ? RegionState::Downloading : RegionState::Waiting;
        next.wait = wait;
        if (wait != WaitReason::None) {
            next.bytesPerSecond = 0;
            next.remainingMs = -1;
            if (Run *live = findRun(run.id, run.url))
                live->meter.restart();
        }
        setStatus(run.id, next);
    }
}
