// SPDX-License-Identifier: MIT
// What the engine says.
#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "download/downloadmanageriface.h"
#include "download/worker.h"
#include "host/shared/attempttag.h"
#include "host/shared/regioninstaller.h"
#include <algorithm>
#include <QLocale>

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
