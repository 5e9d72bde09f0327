// SPDX-License-Identifier: MIT
// What is asked of the installer, and what it asks of the catalogue.
#include "host/shared/regioninstaller.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "download/downloadmanageriface.h"
#include "download/worker.h"
#include "host/shared/attempttag.h"
#include "host/shared/installrecovery.h"
#include "host/shared/regionfiles.h"
#include "host/shared/regionremoval.h"
#include "host/shared/savedqueue.h"
#include "host/shared/tilelist.h"
#include "plugin/dataroot.h"
#include <algorithm>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopedValueRollback>
#include <QSet>
#include <QUrl>

using Phase = PendingInstall::Phase;

RegionInstaller::RegionInstaller(MapCatalog *catalog, Worker *worker, const QString &pathSuffix,
                                 QObject *parent)
    : QObject(parent)
    , m_catalog(catalog)
    , m_worker(worker)
    , m_iface(worker->getDownloadManagerIface())
    , m_pathSuffix(pathSuffix)
    , m_tileFolder(DataRoot::tileCacheFolder(pathSuffix))
    , m_journal(InstallJournal::defaultPath(pathSuffix))
    , m_guard(worker, &m_journal)
{
    connectEngine();
    connect(&m_count, &RemovalCount::counted, this, &RegionInstaller::onRemovalCounted);
    // Somebody else's load must be over before the catalogue may be changed.
    connect(catalog, &MapCatalog::bussyChanged, this, &RegionInstaller::schedulePump);
}

RegionInstaller::~RegionInstaller() = default;

void RegionInstaller::restore()
{
    m_paused = SavedQueue::pausedByUser();
    const auto isRegion = [this](const QString &id) {
        return !id.isEmpty() && m_catalog->region(id) != nullptr;
    };
    const QList<PendingInstall> goingOn =
        InstallRecovery::recover(&m_journal, m_tileFolder, isRegion);
    for (const PendingInstall &entry : goingOn) {
        m_runs.append({entry.id, entry.url, entry.attempt, false, false, {}});
        expectSize(entry);
    }
    const QStringList ids = m_journal.ids();
    for (const QString &id : ids)
        setState(id, RegionState::Queued);
    const QStringList cutShort = RegionRemoval::unfinished(m_pathSuffix);
    for (const QString &id : cutShort) {
        if (!ids.contains(id)) // else it is installed anew
            m_removals.append(id);
    }
    if (!ids.isEmpty())
        Q_EMIT pendingChanged();
    if (m_paused)
        Q_EMIT pausedChanged();
    schedulePump();
    noteBusy();
}

QStringList RegionInstaller::pending() const
{
    return m_journal.ids();
}

bool RegionInstaller::busy() const
{
    return !m_runs.isEmpty() || !m_removals.isEmpty() || m_inCatalog || !m_journal.ids().isEmpty();
}

bool RegionInstaller::isInCatalog() const
{
    return m_inCatalog;
}

QString RegionInstaller::baseUri() const
{
    return m_baseUri;
}

void RegionInstaller::setBaseUri(const QString &baseUri)
{
    if (baseUri == m_baseUri)
        return;
    m_baseUri = baseUri;
    Q_EMIT baseUriChanged();
    schedulePump();
}

QString RegionInstaller::refusal() const
{
    return m_refusal;
}

MoveGuard *RegionInstaller::moveGuard()
{
    return &m_guard;
}

bool RegionInstaller::refuse(const QString &why)
{
    m_refusal = why;
    return false;
}

bool RegionInstaller::install(const QString &id)
{
    const MapRegion *region = m_catalog->region(id);
    if (!region)
        return refuse(tr("The catalogue has no region \"%1\".").arg(id));
    if (m_journal.find(id))
        return refuse(tr("%1 is being installed already.").arg(id));
    if (resolvedUrl(id).isEmpty())
        return refuse(tr("The catalogue gives no usable address for %1.").arg(id));
    const quint64 free = m_iface->getFreeSpace();
    // Free space that cannot be told reads as 0.
    if (free > 0 && region->downloadSize() > qint64(free))
        return refuse(tr("%1 needs %2, but only %3 are free.")
                          .arg(id, RegionWords::size(region->downloadSize()),
                               RegionWords::size(qint64(free))));
    PendingInstall entry;
    entry.id = id;
    if (!m_journal.put(entry)) {
        m_journal.remove(id);
        return refuse(tr("The list of pending installs could not be written."));
    }
    m_refusal.clear();
    setState(id, RegionState::Queued);
    Q_EMIT pendingChanged();
    schedulePump();
    noteBusy();
    return true;
}

bool RegionInstaller::cancel(const QString &id)
{
    const auto entry = m_journal.find(id);
    if (!entry)
        return refuse(tr("%1 is not being installed.").arg(id));
    Run *run = findRun(id, entry->url);
    if (entry->phase == Phase::Moved || (run && !m_guard.refuse(id, run->attempt)))
        return refuse(tr("The files of %1 are being put into place already.").arg(id));

    m_refusal.clear();
    m_journal.remove(id);
    setState(id, RegionState::Cancelled);
    if (run) {
        run->dead = true;
        const QString url = run->url;
        cancelInEngine(url);
    }
    Q_EMIT pendingChanged();
    queueLookForVanished();
    schedulePump();
    noteBusy();
    return true;
}

void RegionInstaller::cancelAll()
{
    // The last first: else the next in the queue would start in between.
    QStringList ids = m_journal.ids();
    while (!ids.isEmpty())
        cancel(ids.takeLast());
}

bool RegionInstaller::remove(const QString &id)
{
    const MapRegion *region = m_catalog->region(id);
    if (!region || !region->installed())
        return refuse(tr("%1 is not installed.").arg(id));
    if (m_journal.find(id))
        return refuse(tr("%1 is being installed; cancel that first.").arg(id));
    m_refusal.clear();
    if (!m_removals.contains(id))
        m_removals.append(id);
    schedulePump();
    noteBusy();
    return true;
}

// Relative links belong to the base address; the engine speaks HTTP only.
QString RegionInstaller::resolvedUrl(const QString &id) const
{
    const MapRegion *region = m_catalog->region(id);
    if (!region || region->downloadUrl().isEmpty())
        return QString();
    const QUrl url = QUrl(m_baseUri).resolved(QUrl(region->downloadUrl()));
    const bool usable = url.isValid() && !url.host().isEmpty()
        && (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
    return usable ? QString::fromLatin1(url.toEncoded()) : QString();
}

// Queued, because the catalogue's loops run the event loop: what we are called from may be one.
void RegionInstaller::schedulePump()
{
    if (m_pumpQueued)
        return;
    m_pumpQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_pumpQueued = false;
            pump();
        },
        Qt::QueuedConnection);
}

void RegionInstaller::pump()
{
    // Whoever keeps the catalogue busy calls again: bussyChanged(), or the end of our own use.
    if (m_inCatalog || m_catalog->bussy())
        return;
    if (!recordNext() && !removeNext())
        feedNext();
    noteBusy();
}

bool RegionInstaller::recordNext()
{
    const QList<PendingInstall> entries = m_journal.entries();
    for (const PendingInstall &entry : entries) {
        if (entry.phase != Phase::Moved)
            continue;
        m_count.cancel(); // Others may need other tiles now.
        record(entry);
        schedulePump();
        return true;
    }
    return false;
}

bool RegionInstaller::removeNext()
{
    if (m_removals.isEmpty() || !removalIsSafe())
        return false;
    if (!m_count.isRunning())
        m_count.start(RegionFiles::installedTiles(m_catalog), m_removals.first(), m_tileFolder);
    return true;
}

void RegionInstaller::onRemovalCounted(const RemovalFigures &figures)
{
    if (m_inCatalog || m_catalog->bussy() || !removalIsSafe()) {
        schedulePump(); // It is counted again when the removal may be.
        return;
    }
    const QString id = m_removals.first();
    {
        const QScopedValueRollback<bool> inCatalog(m_inCatalog, true);
        RegionRemoval::remove(m_catalog, id, m_pathSuffix);
    }
    m_removals.removeAll(id);
    if (!m_journal.find(id))
        clearStatus(id);
    Q_EMIT removed(id, figures.freedBytes, figures.freedFiles, figures.keptFiles);
    schedulePump();
    noteBusy();
}

// A region that only downloads does not disturb. Should its move begin while the removal runs, the
// look for missing files before it is recorded finds what the removal took.
bool RegionInstaller::removalIsSafe() const
{
    const QVariantList requests = m_iface->getRequests();
    const int type =
        requests.isEmpty() ? 0 : requests.first().toMap().value(QStringLiteral("type")).toInt();
    if (type == UncompressRequest || type == MoveRequest)
        return false;
    for (const Run &run : m_runs) {
        const RegionState state = status(run.id).state;
        if (!run.dead && state != RegionState::Queued && state != RegionState::Waiting
            && state != RegionState::Downloading)
            return false;
    }
    return true;
}

void RegionInstaller::feedNext()
{
    if (!m_engineReady || !m_runs.isEmpty())
        return;
    const QList<PendingInstall> entries = m_journal.entries();
    const auto waiting =
        std::find_if(entries.begin(), entries.end(),
                     [](const PendingInstall &entry) { return entry.phase == Phase::Waiting; });
    if (waiting == entries.end())
        return;
    PendingInstall entry = *waiting;
    const QString url = resolvedUrl(entry.id);
    if (url.isEmpty()) {
        fail(entry.id, FailureKind::Catalogue,
             tr("The catalogue gives no usable address for %1.").arg(entry.id));
        return;
    }
    entry.attempt = m_journal.nextAttempt();
    entry.url = AttemptTag::tagged(url, entry.attempt);
    entry.phase = Phase::Engine;
    entry.files.clear();
    if (!m_journal.put(entry)) {
        fail(entry.id, FailureKind::Disk, tr("The list of pending installs could not be written."));
        return;
    }
    m_runs.append({entry.id, entry.url, entry.attempt, false, false, {}});
    expectSize(entry);
    // With the slash: the move makes only the parent of its destination.
    m_iface->download(entry.id, entry.url, m_tileFolder + QLatin1Char('/'), true);
    updateWaiting();
}

void RegionInstaller::expectSize(const PendingInstall &entry)
{
    if (const MapRegion *region = m_catalog->region(entry.id))
        m_guard.expectSize(entry.id, entry.attempt, region->downloadSize());
}

void RegionInstaller::record(PendingInstall entry)
{
    const QString id = entry.id;
    const QStringList tiles = TileList::tiles(entry.files);
    if (tiles.isEmpty()) {
        fail(id, FailureKind::Archive, tr("The archive of %1 holds no map tiles.").arg(id));
        return;
    }
    if (!TileList::missing(tiles, m_tileFolder).isEmpty()) {
        if (entry.retries == 0) {
            ++entry.retries;
            beginAgain(entry);
        } else {
            fail(id, FailureKind::Disk, tr("Files of %1 are missing after the install.").arg(id));
        }
        return;
    }
    setState(id, RegionState::Recording);
    if (!m_catalog->region(id)) {
        discardMovedFiles(entry);
        fail(id, FailureKind::Catalogue,
             tr("The catalogue has no region \"%1\" any more.").arg(id));
        return;
    }
    if (!writeRecord(id, tiles)) {
        fail(id, FailureKind::Disk,
             tr("%1 could not be recorded: the content file cannot be written.").arg(id));
        return;
    }
    m_journal.remove(id);
    clearStatus(id);
    Q_EMIT pendingChanged();
}

// Returns whether the content file names the region now.
bool RegionInstaller::writeRecord(const QString &id, const QStringList &tiles)
{
    const QScopedValueRollback<bool> inCatalog(m_inCatalog, true);
    RegionRemoval::forget(id, m_pathSuffix);
    QStringList files = tiles;
    if (m_catalog->region(id)->installed()) {
        // The update removes what the new list lacks without asking who else needs it. Such a tile
        // stays listed here, so that it stays on disk.
        const QStringList others = RegionFiles::ofOthers(m_catalog, id);
        const QSet<QString> needed(others.begin(), others.end());
        const QSet<QString> fresh(tiles.begin(), tiles.end());
        const QStringList old = m_catalog->region(id)->fileList();
        for (const QString &file : old) {
            const QString tile = TileList::plain(file);
            if (needed.contains(tile) && !fresh.contains(tile))
                files.append(tile);
        }
    }
    m_catalog->addInstalledRegion(id, files);
    // What was just added has other paths than what the content file gives; read it all from there.
    m_catalog->updateCatalog();
    const MapRegion *region = m_catalog->region(id);
    return region && region->installed();
}

void RegionInstaller::beginAgain(PendingInstall entry)
{
    entry.phase = Phase::Waiting;
    entry.url.clear();
    entry.files.clear();
    m_journal.put(entry);
    setState(entry.id, RegionState::Queued);
    schedulePump();
}

void RegionInstaller::fail(const QString &id, FailureKind kind, const QString &why)
{
    m_journal.remove(id);
    RegionStatus status;
    status.state = RegionState::Failed;
    status.failure = kind;
    status.reason = why;
    setStatus(id, status);
    Q_EMIT pendingChanged();
    schedulePump();
    noteBusy();
}

// Of a move that failed or came to nothing: what no installed region lists goes.
void RegionInstaller::discardMovedFiles(const PendingInstall &entry)
{
    const QScopedValueRollback<bool> inCatalog(m_inCatalog, true);
    // An installed region's own tiles are among those kept: an empty id excludes none.
    const QStringList listed = RegionFiles::ofOthers(m_catalog, QString());
    const QSet<QString> needed(listed.begin(), listed.end());
    const QString root = QDir(m_tileFolder).canonicalPath() + QLatin1Char('/');
    const QStringList tiles = TileList::tiles(entry.files);
    for (const QString &tile : tiles) {
        const QFileInfo file(m_tileFolder + QLatin1Char('/') + tile);
        // Nothing outside the tile cache, whatever the archive called it.
        if (!needed.contains(tile)
            && file.canonicalPath().append(QLatin1Char('/')).startsWith(root))
            QFile::remove(file.filePath()); // Only a leftover if it fails.
    }
}

void RegionInstaller::noteBusy()
{
    const bool now = busy();
    if (now == m_wasBusy)
        return;
    m_wasBusy = now;
    Q_EMIT busyChanged();
}
