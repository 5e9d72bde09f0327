// SPDX-License-Identifier: MIT
// The steps of an update, in their order.
#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "download/downloadmanageriface.h"
#include "host/shared/datasetswap.h"
#include "host/shared/datasetupdate.h"
#include "host/shared/installjournal.h"
#include "host/shared/mapsversion.h"
#include "host/shared/preparedset.h"
#include "host/shared/regionfiles.h"
#include "host/shared/tilelist.h"
#include "host/shared/updatespace.h"
#include "plugin/dataroot.h"
#include "plugin/shell_p.h"
#include <algorithm>
#include <QFileInfo>

using Phase = UpdateState::Phase;

namespace {

constexpr int MaxRounds = 5; // of reconcile(); each that is needed leaves less to do

bool isAtWork(RegionState state)
{
    return state == RegionState::Waiting || state == RegionState::Downloading
        || state == RegionState::Unpacking || state == RegionState::Moving
        || state == RegionState::Recording;
}

bool anyBackupFolder()
{
    return QFileInfo::exists(DataRoot::catalogFolder(QStringLiteral("_")))
        || QFileInfo::exists(DataRoot::tileCacheFolder(QStringLiteral("_")));
}

} // namespace

void DataSetUpdate::check()
{
    if (wasSwapped()) {
        end(State::Done);
        return;
    }
    const QString why = hindrance();
    if (!why.isEmpty()) {
        fail(FailureKind::Catalogue, why);
        return;
    }
    m_probe = std::make_unique<VersionProbe>(m_baseUri);
    connect(m_probe.get(), &VersionProbe::finished, this,
            [this] { later(&DataSetUpdate::onVersion); });
    m_probe->start();
    noteNews();
}

// By a run that died behind the swap, or at this program's start, where it was finished.
bool DataSetUpdate::wasSwapped()
{
    const UpdateState state = UpdateState::read();
    if (state.phase != Phase::Swapping || PreparedSet::exists() || !DataSetSwap::backupExists()
        || m_fromVersion != state.version)
        return false;
    m_fromVersion = state.fromVersion;
    m_targetVersion = state.version;
    m_wanted = PreparedSet::installedIds(QString());
    PreparedSet().discard(); // Only its lists are left; the next update would remove them too.
    return true;
}

QString DataSetUpdate::hindrance() const
{
    if (DataSetSwap::journalExists())
        return tr("An earlier change of the maps was cut short and has to be repaired first.");
    // Its commands are not quoted; already the seed would go astray.
    if (Shell::quoted(DataRoot::cities()) != DataRoot::cities())
        return tr("The folder %1 has letters in its name that the commands of an update cannot "
                  "take.")
            .arg(DataRoot::cities());
    if (m_fromVersion.isEmpty())
        return tr("There is no catalogue yet.");
    const QStringList pending = InstallJournal(InstallJournal::defaultPath()).ids();
    if (!pending.isEmpty())
        return tr("Installs are pending (%1).").arg(pending.join(QLatin1String(", ")));
    if (anyBackupFolder())
        return tr("The backup of an earlier update is still there.");
    return QString();
}

void DataSetUpdate::onVersion()
{
    const FailureKind failure = m_probe->failure();
    const QString version = MapsVersion::asInstalled(m_probe->version());
    const QString error = m_probe->errorString();
    m_probe.reset();
    if (failure != FailureKind::None) {
        fail(failure, error);
        return;
    }
    m_targetVersion = version;
    if (version == m_fromVersion) {
        m_discard = true; // What was prepared for a version that the server took back.
        end(State::UpToDate);
    } else if (PreparedSet::isFor(version)) {
        openPrepared();
    } else {
        beginAnew();
    }
}

void DataSetUpdate::beginAnew()
{
    PreparedSet prepared;
    if (!prepared.discard() || !noteState(Phase::Fetching)) {
        fail(FailureKind::Disk,
             prepared.errorString().isEmpty() ? tr("The state of the update cannot be written.")
                                              : prepared.errorString());
        return;
    }
    if (!prepared.seed()) {
        fail(FailureKind::Disk, prepared.errorString());
        return;
    }
    // Before anything is downloaded: what stands against the swap now will stand against it then.
    DataSetSwap swap {QString(UpdateSuffix)};
    if (!swap.check()) {
        fail(FailureKind::Disk, swap.errorString());
        return;
    }
    fetchCatalogue();
}

void DataSetUpdate::fetchCatalogue()
{
    setState(State::Fetching);
    m_session = std::make_unique<EngineSession>(m_baseUri, QString(UpdateSuffix));
    m_refresher =
        std::make_unique<CatalogRefresher>(m_session->catalog(), m_session->downloads(), m_baseUri);
    connect(m_refresher.get(), &CatalogRefresher::fetching, this, &DataSetUpdate::noteNews);
    connect(m_refresher.get(), &CatalogRefresher::progress, this, &DataSetUpdate::noteNews);
    connect(m_refresher.get(), &CatalogRefresher::finished, this,
            [this] { later(&DataSetUpdate::onCatalogue); });
    connect(m_session.get(), &EngineSession::started, this, [this] {
        m_session->installer()->resume();
        m_refresher->start();
    });
    m_session->start();
    noteNews();
}

void DataSetUpdate::onCatalogue()
{
    using Result = CatalogRefresher::Result;
    const Result result = m_refresher->result();
    const QString error = m_refresher->errorString();
    const QString version = m_session->catalog()->installedMapsVersion();
    closeSession();
    switch (result) {
    case Result::Adopted:
        break;
    case Result::Renewed: // The server went back to the old version just now.
        m_discard = true;
        end(State::UpToDate);
        return;
    case Result::NetworkFailed:
        fail(FailureKind::Network, error);
        return;
    case Result::CatalogueFailed:
        fail(FailureKind::Catalogue, error);
        return;
    default:
        fail(FailureKind::Disk, error);
        return;
    }
    m_targetVersion = version;
    if (noteState(Phase::Installing))
        openPrepared();
    else
        fail(FailureKind::Disk, tr("The state of the update cannot be written."));
}

// The prepared set has the new catalogue now, and none, some or all of the regions.
void DataSetUpdate::openPrepared()
{
    m_session = std::make_unique<EngineSession>(m_baseUri, QString(UpdateSuffix));
    MapCatalog *catalog = m_session->catalog();
    QStringList toFetch;
    m_missing.clear();
    m_wanted.clear();
    m_whole.clear();
    m_failures.clear();
    const QStringList ids = PreparedSet::installedIds(QString());
    for (const QString &id : ids) {
        const MapRegion *region = catalog->region(id);
        if (!region) {
            m_missing.append(id);
            continue;
        }
        m_wanted.append(id);
        m_sizes.insert(id, std::max<qint64>(region->downloadSize(), 0));
        m_names.insert(
            id, region->localizedName().isEmpty() ? region->name() : region->localizedName());
        if (isWhole(id))
            m_whole.insert(id);
        else
            toFetch.append(id);
    }
    if (!m_missing.isEmpty() && !m_dropMissing) {
        fail(FailureKind::Catalogue,
             tr("Version %1 lacks installed regions: %2.")
                 .arg(m_targetVersion, m_missing.join(QLatin1String(", "))));
        return;
    }
    if (toFetch.isEmpty() && isTidy()) {
        onReady();
        return;
    }
    const QString shortage =
        UpdateSpace::shortage(UpdateSpace::need(m_main, catalog, m_wanted, toFetch));
    if (!toFetch.isEmpty() && !shortage.isEmpty()) {
        fail(FailureKind::Disk, shortage);
        return;
    }
    if (!noteState(Phase::Installing)) {
        fail(FailureKind::Disk, tr("The state of the update cannot be written."));
        return;
    }
    setState(State::Installing);
    m_rounds = 0;
    connectInstaller();
    m_session->start();
    noteNews();
}

// Nothing is there that is not wanted, and nothing is on its way.
bool DataSetUpdate::isTidy() const
{
    const QStringList prepared = PreparedSet::installedIds(UpdateSuffix);
    return InstallJournal(InstallJournal::defaultPath(UpdateSuffix)).ids().isEmpty()
        && std::all_of(prepared.begin(), prepared.end(),
                       [this](const QString &id) { return m_wanted.contains(id); });
}

void DataSetUpdate::connectInstaller()
{
    const RegionInstaller *installer = m_session->installer();
    connect(installer, &RegionInstaller::stateChanged, this, &DataSetUpdate::onRegionChanged);
    connect(installer, &RegionInstaller::progressChanged, this, &DataSetUpdate::onRegionChanged);
    connect(installer, &RegionInstaller::busyChanged, this, [this] {
        if (!m_session->installer()->busy())
            later(&DataSetUpdate::reconcile);
    });
    connect(m_session->downloads(), &DownloadManagerIface::finished, this,
            &DataSetUpdate::noteNews);
    connect(m_session.get(), &EngineSession::started, this, [this] {
        m_session->installer()->resume(); // Whoever starts an update wants it done.
        later(&DataSetUpdate::reconcile);
    });
}

void DataSetUpdate::onRegionChanged(const QString &id)
{
    noteNews();
    const RegionStatus status = m_session->installer()->status(id);
    if (status.state == RegionState::Failed)
        m_failures.insert(id, status);
    else
        m_failures.remove(id);
    if (status.state == RegionState::Installed)
        m_whole.insert(id);
    // Others are queued meanwhile.
    if (id == m_region || isAtWork(status.state)) {
        m_region = id;
        m_regionStatus = status;
    }
    Q_EMIT progressChanged();
}

// The main set may have lost and gained regions since an earlier run chose what to prepare.
void DataSetUpdate::reconcile()
{
    if (m_session->installer()->busy() && m_rounds > 0)
        return; // It calls again.
    if (++m_rounds > MaxRounds) {
        fail(FailureKind::Disk, tr("The prepared maps cannot be written."));
        return;
    }
    const bool removes = removeUnwanted();
    const bool installs = installMissing();
    if (!removes && !installs && !m_session->installer()->busy())
        settle();
}

bool DataSetUpdate::removeUnwanted()
{
    RegionInstaller *installer = m_session->installer();
    const QStringList pending = installer->pending();
    for (const QString &id : pending) {
        if (!m_wanted.contains(id))
            installer->cancel(id); // Refused once its files are moved: then it is removed later.
    }
    bool any = false;
    const QList<MapRegion *> regions = RegionFiles::installed(m_session->catalog());
    for (const MapRegion *region : regions) {
        if (!m_wanted.contains(region->id()))
            any = installer->remove(region->id()) || any;
    }
    return any;
}

bool DataSetUpdate::installMissing()
{
    RegionInstaller *installer = m_session->installer();
    bool any = false;
    for (const QString &id : std::as_const(m_wanted)) {
        if (installer->pending().contains(id) || m_failures.contains(id))
            continue;
        if (isWhole(id)) {
            m_whole.insert(id);
            continue;
        }
        m_whole.remove(id);
        if (installer->install(id)) {
            any = true;
            continue;
        }
        RegionStatus status;
        status.state = RegionState::Failed;
        status.failure = FailureKind::Catalogue;
        status.reason = installer->refusal();
        m_failures.insert(id, status);
    }
    return any;
}

// Recorded, and every tile is there: what lies in the folder may be an older run's.
bool DataSetUpdate::isWhole(const QString &id) const
{
    const MapRegion *region = m_session->catalog()->region(id);
    if (!region || !region->installed() || region->fileList().isEmpty())
        return false;
    QStringList tiles;
    const QStringList entries = region->fileList();
    for (const QString &entry : entries)
        tiles.append(TileList::plain(entry));
    return TileList::missing(tiles, DataRoot::tileCacheFolder(UpdateSuffix)).isEmpty();
}

void DataSetUpdate::settle()
{
    if (m_failures.isEmpty()) {
        onReady();
        return;
    }
    QStringList reasons;
    FailureKind kind = FailureKind::Network;
    for (const QString &id : std::as_const(m_wanted)) {
        const auto failure = m_failures.constFind(id);
        if (failure == m_failures.constEnd())
            continue;
        reasons.append(failure->reason);
        if (failure->failure != FailureKind::Network && kind == FailureKind::Network)
            kind = failure->failure;
    }
    fail(kind, reasons.join(QLatin1Char(' ')));
}

void DataSetUpdate::onReady()
{
    closeSession();
    if (!noteState(Phase::Ready)) {
        fail(FailureKind::Disk, tr("The state of the update cannot be written."));
        return;
    }
    if (!m_swapWhenReady && !m_swapNow) {
        end(State::Ready);
        return;
    }
    setState(State::Ready);
    if (m_end == State::Idle)
        doSwap();
}

void DataSetUpdate::doSwap()
{
    setState(State::Swapping);
    PreparedSet prepared;
    DataSetSwap swap {QString(UpdateSuffix)};
    PreparedSet::tidy(m_targetVersion);
    if (!prepared.carryOver()) {
        fail(FailureKind::Disk, prepared.errorString());
        return;
    }
    if (!swap.check()) {
        fail(FailureKind::Disk, swap.errorString());
        return;
    }
    if (!noteState(Phase::Swapping)) {
        fail(FailureKind::Disk, tr("The state of the update cannot be written."));
        return;
    }
    if (!swap.swap(m_main)) {
        fail(FailureKind::Disk, swap.errorString());
        return;
    }
    m_main->updateCatalog();
    prepared.discard(); // Its folders are the main ones now; only its lists are left.
    end(State::Done);
}

bool DataSetUpdate::noteState(Phase phase)
{
    UpdateState state;
    state.phase = phase;
    state.version = m_targetVersion;
    state.fromVersion = m_fromVersion;
    return state.write();
}
