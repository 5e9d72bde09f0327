// SPDX-License-Identifier: MIT
// How the rows follow the catalogue's loads.
#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/shared/collationkeys.h"
#include "host/shared/regioninstaller.h"
#include "host/shared/regionmodel.h"
#include "host/shared/searchtext.h"
#include <algorithm>
#include <utility>

namespace {

constexpr int Nowhere = -1;

/**
 * Marks the longest series of places that grows; Nowhere is never in it. Rows in it can stay where
 * they are while the others are taken out and put in again.
 */
std::vector<bool> longestGrowing(const std::vector<int> &places)
{
    std::vector<int> ends; // ends[n]: where the series of length n + 1 with the least end ends
    std::vector<int> before(places.size(), Nowhere);
    for (size_t i = 0; i < places.size(); ++i) {
        if (places[i] == Nowhere)
            continue;
        const auto end =
            std::lower_bound(ends.begin(), ends.end(), places[i],
                             [&places](int at, int place) { return places[size_t(at)] < place; });
        if (end != ends.begin())
            before[i] = *(end - 1);
        if (end == ends.end())
            ends.push_back(int(i));
        else
            *end = int(i);
    }
    std::vector<bool> marked(places.size(), false);
    for (int at = ends.empty() ? Nowhere : ends.back(); at != Nowhere; at = before[size_t(at)])
        marked[size_t(at)] = true;
    return marked;
}

} // namespace

void RegionModel::connectSources()
{
    // A timer and not a posted call: such calls are all carried out in one turn.
    m_turns.setInterval(0);
    connect(&m_turns, &QTimer::timeout, this, &RegionModel::onTurn);
    connect(m_sizes.get(), &RegionSizes::measured, this, &RegionModel::onMeasured);
    if (m_catalog) {
        connect(m_catalog, &MapCatalog::bussyChanged, this, &RegionModel::onBussyChanged);
        connect(m_catalog, &MapCatalog::availableRegionsChanged, this, &RegionModel::takeOver);
        connect(m_catalog, &MapCatalog::installedRegionsChanged, this, &RegionModel::takeOver);
    }
    if (m_installer) {
        connect(m_installer, &RegionInstaller::stateChanged, this, &RegionModel::refresh);
        connect(m_installer, &RegionInstaller::progressChanged, this, &RegionModel::refresh);
        connect(m_installer, &RegionInstaller::pendingChanged, this,
                &RegionModel::onPendingChanged);
        onPendingChanged();
    }
    takeOver();
    noteLoading();
}

void RegionModel::onBussyChanged()
{
    takeOver();
    noteLoading();
}

bool RegionModel::loading() const
{
    return m_phase != Phase::Idle || (m_catalog && m_catalog->bussy());
}

void RegionModel::noteLoading()
{
    if (m_wasLoading == loading())
        return;
    m_wasLoading = !m_wasLoading;
    Q_EMIT loadingChanged();
}

int RegionModel::lookedAt() const
{
    return m_lookedAt;
}

void RegionModel::setPhase(Phase phase)
{
    m_phase = phase;
    m_cursor = 0;
    if (phase != Phase::Idle)
        m_turns.start();
    noteLoading();
}

// What an earlier load has brought and is complete goes on being merged while the next one runs.
void RegionModel::takeOver()
{
    if (m_inTurn) {
        m_again = true; // A view's handler made it load; the turn still needs the snapshot.
        return;
    }
    if (catalogIsLoading()) {
        if (m_phase == Phase::Collecting) {
            m_snapshot.clear();
            setPhase(Phase::Idle);
        }
        return;
    }
    m_lookedAt = 0;
    m_snapshot.start();
    setPhase(Phase::Collecting);
}

void RegionModel::onTurn()
{
    m_inTurn = true;
    requeueSome();
    if (m_phase == Phase::Collecting)
        collectSome();
    else if (m_phase == Phase::Removing)
        removeSome();
    else if (m_phase == Phase::Merging)
        mergeSome();
    m_inTurn = false;
    if (std::exchange(m_again, false))
        takeOver();
    if (m_phase == Phase::Idle && m_requeued.isEmpty())
        m_turns.stop();
}

void RegionModel::collectSome()
{
    if (m_snapshot.isLost()) {
        // The end of the load that took them begins anew.
        m_snapshot.clear();
        setPhase(Phase::Idle);
        return;
    }
    for (int i = 0; i < SliceSize && !m_snapshot.isAtEnd(); ++i)
        collect(m_snapshot.next());
    m_lookedAt = m_snapshot.copied();
    if (m_snapshot.isAtEnd())
        prepareMerge();
}

void RegionModel::collect(MapRegion *region)
{
    for (auto change : {&MapRegion::nameChanged, &MapRegion::localizedNameChanged})
        connect(region, change, this, &RegionModel::takeOver, Qt::UniqueConnection);
    connect(region, &MapRegion::installedChanged, this, &RegionModel::onRegionChanged,
            Qt::UniqueConnection);
    connect(region, &MapRegion::fileListChanged, this, &RegionModel::onFilesChanged,
            Qt::UniqueConnection);
    RegionRow *fresh = m_snapshot.copyNext();
    fresh->status = statusOf(fresh->id, fresh->installed);
    const RegionRow *row = m_byId.value(fresh->id);
    const bool sameNames =
        row && row->catalogName == fresh->catalogName && row->localizedName == fresh->localizedName;
    if (sameNames) {
        fresh->searchText = row->searchText;
        fresh->sortKey = row->sortKey;
        return;
    }
    fresh->searchText = SearchText::folded(
        QStringList {fresh->id, fresh->localizedName, fresh->catalogName}.join(QLatin1Char(' ')));
    fresh->sortKey = m_keys->key(fresh->name());
}

// In one turn, although it looks at all rows: it only compares numbers.
void RegionModel::prepareMerge()
{
    m_snapshot.finish();
    RegionRows &fresh = m_snapshot.rows();
    for (size_t i = 0; i < fresh.size(); ++i)
        fresh[i]->number = int(i);
    // Backwards, because what is above a region stands behind it.
    for (auto at = fresh.rbegin(); at != fresh.rend(); ++at) {
        const RegionRow *above = m_snapshot.find((*at)->parentId);
        const RegionRow *aboveNow = above ? m_byId.value(above->id) : nullptr;
        (*at)->pathChanged =
            above && (above->pathChanged || !aboveNow || aboveNow->name() != above->name());
    }
    std::vector<int> places;
    places.reserve(m_rows.size());
    for (const auto &row : m_rows) {
        const RegionRow *stays = m_snapshot.find(row->id);
        places.push_back(stays ? stays->number : Nowhere);
    }
    m_keeps = longestGrowing(places);
    setPhase(Phase::Removing);
    m_cursor = m_rows.size();
}

// From the end, so that the places that are still to be looked at do not move.
void RegionModel::removeSome()
{
    const size_t until = m_cursor > SliceSize ? m_cursor - SliceSize : 0;
    while (m_cursor > until) {
        const size_t last = --m_cursor;
        if (m_keeps[last])
            continue;
        while (m_cursor > until && !m_keeps[m_cursor - 1])
            --m_cursor;
        dropRows(int(m_cursor), int(last));
    }
    if (m_cursor == 0)
        setPhase(Phase::Merging);
}

void RegionModel::dropRows(int first, int last)
{
    beginRemoveRows(QModelIndex(), first, last);
    for (int i = first; i <= last; ++i) {
        const QString id = row(i).id;
        m_sizes->forget(id);
        m_byId.remove(id);
    }
    m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
    endRemoveRows();
    Q_EMIT countChanged();
}

// Whatever row is there now stays, in this order; so at the cursor stands either the region's own
// row, or the next that stays, and the region is inserted before it.
void RegionModel::mergeSome()
{
    const RegionRows &fresh = m_snapshot.rows();
    const size_t until = std::min(m_cursor + SliceSize, fresh.size());
    while (m_cursor < until) {
        const int number = int(m_cursor);
        if (m_byId.contains(fresh[m_cursor]->id)) {
            changeRow(number, *fresh[m_cursor]);
            ++m_cursor;
        } else {
            m_cursor += size_t(putRows(number, until));
        }
    }
    if (m_cursor == fresh.size())
        endTakeOver();
}

int RegionModel::putRows(int first, size_t end)
{
    RegionRows &fresh = m_snapshot.rows();
    size_t next = size_t(first);
    while (next < end && !m_byId.contains(fresh[next]->id))
        ++next;
    beginInsertRows(QModelIndex(), first, int(next) - 1);
    for (size_t i = size_t(first); i < next; ++i) {
        fresh[i]->queueOrder = m_queue.value(fresh[i]->id, -1);
        m_byId.insert(fresh[i]->id, fresh[i].get());
    }
    m_rows.insert(m_rows.begin() + first, std::make_move_iterator(fresh.begin() + first),
                  std::make_move_iterator(fresh.begin() + int(next)));
    endInsertRows();
    Q_EMIT countChanged();
    return int(next) - first;
}

void RegionModel::changeRow(int number, const RegionRow &fresh)
{
    RegionRow *row = m_rows[size_t(number)].get();
    changeStatus(row, fresh.installed, fresh.status, true);
    if (row->sizeWanted)
        measure(*row); // An update may have brought other tiles, to this region or to a neighbour.
    if (!fresh.pathChanged && sameCatalogValues(*row, fresh))
        return;
    const RegionRow before = *row;
    takeCatalogValues(row, fresh);
    QVector<int> roles;
    if (fresh.pathChanged || before.parentId != fresh.parentId)
        roles.append(PathRole);
    for (int role : {NameRole, CatalogNameRole, ParentIdRole, DepthRole, HasChildrenRole,
                     ChildCountRole, DownloadSizeRole, InstallationSizeRole, DownloadableRole}) {
        if (value(before, role) != value(*row, role))
            roles.append(role);
    }
    if (!roles.isEmpty())
        changed(*row, roles);
}

void RegionModel::endTakeOver()
{
    m_snapshot.clear();
    m_keeps.clear();
    setPhase(Phase::Idle);
}
