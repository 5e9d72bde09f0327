// SPDX-License-Identifier: MIT
// The rows as views read them, and what changes one of them.
#include "host/shared/regionmodel.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/shared/collationkeys.h"
#include "host/shared/regioninstaller.h"
#include "plugin/dataroot.h"
#include <algorithm>

namespace {

const QVector<int> ProgressRoles = {RegionModel::SentenceRole, RegionModel::ProgressRole,
                                    RegionModel::BytesReceivedRole, RegionModel::BytesTotalRole,
                                    RegionModel::RemainingTimeRole};
const QVector<int> StateRoles = ProgressRoles
    + QVector<int> {RegionModel::StateRole, RegionModel::WaitReasonRole, RegionModel::ReasonRole};

bool sameState(const RegionStatus &a, const RegionStatus &b)
{
    return a.state == b.state && a.wait == b.wait && a.reason == b.reason;
}

QVariant statusValue(const RegionStatus &status, int role)
{
    switch (role) {
    case RegionModel::StateRole:
        return RegionWords::name(status.state);
    case RegionModel::WaitReasonRole:
        return RegionWords::name(status.wait);
    case RegionModel::SentenceRole:
        return RegionWords::sentence(status);
    case RegionModel::ReasonRole:
        return status.state == RegionState::Waiting ? RegionWords::reason(status.wait)
                                                    : status.reason;
    case RegionModel::ProgressRole:
        return status.fraction();
    case RegionModel::BytesReceivedRole:
        return status.bytes;
    case RegionModel::BytesTotalRole:
        return status.total;
    case RegionModel::RemainingTimeRole:
        return status.remainingMs;
    default:
        return QVariant();
    }
}

} // namespace

RegionModel::RegionModel(MapCatalog *catalog, RegionInstaller *installer, QObject *parent)
    : QAbstractListModel(parent)
    , m_catalog(catalog)
    , m_installer(installer)
    , m_snapshot(catalog)
    , m_sizes(std::make_unique<RegionSizes>())
    , m_keys(CollationKeys::of(QString()))
{
    connectSources();
}

RegionModel::~RegionModel() = default;

int RegionModel::count() const
{
    return int(m_rows.size());
}

int RegionModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QHash<int, QByteArray> RegionModel::roleNames() const
{
    static const QHash<int, QByteArray> names = {
        {RegionIdRole, "regionId"},
        {NameRole, "name"},
        {CatalogNameRole, "catalogName"},
        {ParentIdRole, "parentId"},
        {DepthRole, "depth"},
        {PathRole, "path"},
        {HasChildrenRole, "hasChildren"},
        {ChildCountRole, "childCount"},
        {DownloadSizeRole, "downloadSize"},
        {InstallationSizeRole, "installationSize"},
        {DownloadableRole, "downloadable"},
        {InstalledRole, "installed"},
        {SizeOnDiskRole, "sizeOnDisk"},
        {StateRole, "state"},
        {WaitReasonRole, "waitReason"},
        {SentenceRole, "sentence"},
        {ReasonRole, "reason"},
        {ProgressRole, "progress"},
        {BytesReceivedRole, "bytesReceived"},
        {BytesTotalRole, "bytesTotal"},
        {RemainingTimeRole, "remainingTime"},
        {PendingRole, "pending"},
    };
    return names;
}

QVariant RegionModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= count())
        return QVariant();
    return value(row(index.row()), role);
}

QVariant RegionModel::value(const RegionRow &row, int role) const
{
    switch (role) {
    case RegionIdRole:
        return row.id;
    case Qt::DisplayRole:
    case NameRole:
        return row.name();
    case CatalogNameRole:
        return row.catalogName;
    case ParentIdRole:
        return row.parentId;
    case DepthRole:
        return row.depth;
    case PathRole:
        return path(row);
    case HasChildrenRole:
        return row.childCount > 0;
    case ChildCountRole:
        return row.childCount;
    case DownloadSizeRole:
        return row.downloadSize;
    case InstallationSizeRole:
        return row.installationSize;
    case DownloadableRole:
        return row.downloadable;
    case InstalledRole:
        return row.installed;
    case SizeOnDiskRole:
        return sizeOnDisk(row);
    case PendingRole:
        return row.queueOrder >= 0;
    default:
        return statusValue(row.status, role);
    }
}

const RegionRow &RegionModel::row(int number) const
{
    return *m_rows[size_t(number)];
}

// Rows are counted anew only when one of those looked for has moved.
int RegionModel::numberOf(const RegionRow &row) const
{
    const auto isThere = [this, &row](int number) {
        return number < count() && m_rows[size_t(number)].get() == &row;
    };
    if (!isThere(row.number)) {
        for (size_t i = 0; i < m_rows.size(); ++i)
            m_rows[i]->number = int(i);
    }
    return row.number;
}

int RegionModel::rowOf(const QString &id) const
{
    const RegionRow *row = m_byId.value(id);
    return row ? numberOf(*row) : -1;
}

QVariantMap RegionModel::get(const QString &id) const
{
    QVariantMap values;
    const RegionRow *row = m_byId.value(id);
    if (!row)
        return values;
    const QHash<int, QByteArray> names = roleNames();
    for (auto name = names.cbegin(); name != names.cend(); ++name)
        values.insert(QString::fromLatin1(*name), value(*row, name.key()));
    return values;
}

QString RegionModel::path(const RegionRow &row) const
{
    QStringList names;
    for (const RegionRow *above = current(row.parentId); above; above = current(above->parentId))
        names.prepend(above->name());
    return names.join(QStringLiteral(" › "));
}

// While rows are merged the snapshot knows better: a child comes before its parent.
const RegionRow *RegionModel::current(const QString &id) const
{
    if (id.isEmpty())
        return nullptr;
    const bool merging = m_phase == Phase::Removing || m_phase == Phase::Merging;
    const RegionRow *fresh = merging ? m_snapshot.find(id) : nullptr;
    return fresh ? fresh : m_byId.value(id);
}

qint64 RegionModel::sizeOnDisk(const RegionRow &row) const
{
    if (!row.installed)
        return 0;
    if (!row.sizeWanted) {
        row.sizeWanted = true;
        measure(row);
    }
    return row.sizeOnDisk;
}

// During a load the region cannot be asked for its files; its end measures what is wanted.
void RegionModel::measure(const RegionRow &row) const
{
    const MapRegion *region = catalogIsLoading() ? nullptr : m_catalog->region(row.id);
    if (region && region->installed())
        m_sizes->ask(row.id, region->fileList(), tileFolder());
}

void RegionModel::onMeasured(const QString &id, qint64 bytes)
{
    RegionRow *row = m_byId.value(id);
    if (!row || row->sizeOnDisk == bytes)
        return;
    row->sizeOnDisk = bytes;
    changed(*row, {SizeOnDiskRole});
}

// The catalogue tells only its other folder, which has the same suffix.
QString RegionModel::tileFolder() const
{
    return DataRoot::tileCacheFolder(
        m_catalog->tessarinDirectory().mid(DataRoot::catalogFolder().size()));
}

QList<InstalledTiles> RegionModel::installedTiles() const
{
    return catalogIsLoading() ? QList<InstalledTiles>() : RegionFiles::installedTiles(m_catalog);
}

bool RegionModel::catalogIsLoading() const
{
    return !m_catalog || m_catalog->bussy();
}

// The installer answers for its requests; whether a region is installed it asks the catalogue,
// which does not know while it loads.
RegionStatus RegionModel::statusOf(const QString &id, bool installed) const
{
    RegionStatus status;
    if (m_installer)
        status = m_installer->status(id);
    if (status.state == RegionState::NotInstalled || status.state == RegionState::Installed)
        status.state = installed ? RegionState::Installed : RegionState::NotInstalled;
    return status;
}

void RegionModel::onRegionChanged()
{
    if (const auto *region = qobject_cast<MapRegion *>(sender()))
        refresh(region->id());
}

void RegionModel::onFilesChanged()
{
    const auto *region = qobject_cast<MapRegion *>(sender());
    const RegionRow *row = region ? m_byId.value(region->id()) : nullptr;
    if (row && row->sizeWanted)
        measure(*row);
}

void RegionModel::refresh(const QString &id)
{
    RegionRow *row = m_byId.value(id);
    RegionRow *fresh = m_snapshot.find(id);
    const RegionRow *known = fresh ? fresh : row;
    if (!known)
        return;
    bool installed = known->installed;
    const MapRegion *region = catalogIsLoading() ? nullptr : m_catalog->region(id);
    if (region)
        installed = region->installed();
    const RegionStatus status = statusOf(id, installed);
    if (fresh)
        changeStatus(fresh, installed, status, false);
    if (row && row != fresh)
        changeStatus(row, installed, status, true);
}

void RegionModel::changeStatus(RegionRow *row, bool installed, const RegionStatus &status,
                               bool shown)
{
    QVector<int> roles;
    if (!(row->status == status))
        roles = sameState(row->status, status) ? ProgressRoles : StateRoles;
    row->status = status;
    if (row->installed != installed) {
        roles += {InstalledRole, SizeOnDiskRole};
        row->installed = installed;
        row->sizeOnDisk = -1;
        row->sizeWanted = false;
        m_sizes->forget(row->id);
    }
    if (shown && !roles.isEmpty())
        changed(*row, roles);
}

void RegionModel::changed(const RegionRow &row, const QVector<int> &roles)
{
    const QModelIndex at = index(numberOf(row));
    Q_EMIT dataChanged(at, at, roles);
}

// Only the order counts, so that the end of the first install does not touch all that follow.
void RegionModel::onPendingChanged()
{
    const QStringList ids = m_installer->pending();
    const QHash<QString, int> before = m_queue;
    m_queue.clear();
    int previous = 0;
    for (const QString &id : ids) {
        const int known = before.value(id);
        previous = known > previous ? known : ++m_lastOrder;
        m_queue.insert(id, previous);
        if (previous != known)
            m_requeued.append(id);
    }
    for (auto gone = before.cbegin(); gone != before.cend(); ++gone) {
        if (!m_queue.contains(gone.key()))
            m_requeued.append(gone.key());
    }
    if (!m_requeued.isEmpty())
        m_turns.start();
}

void RegionModel::requeueSome()
{
    for (int i = 0; i < SliceSize && !m_requeued.isEmpty(); ++i) {
        const QString id = m_requeued.takeFirst();
        RegionRow *row = m_byId.value(id);
        const int order = m_queue.value(id, -1);
        if (!row || row->queueOrder == order)
            continue;
        row->queueOrder = order;
        changed(*row, {PendingRole});
    }
}
