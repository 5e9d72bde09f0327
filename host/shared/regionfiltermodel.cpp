// SPDX-License-Identifier: MIT
#include "host/shared/regionfiltermodel.h"

#include "host/shared/collationkeys.h"
#include "host/shared/searchtext.h"
#include <limits>

namespace {

bool isFailed(const RegionRow &row)
{
    return row.status.state == RegionState::Failed || row.status.state == RegionState::Cancelled;
}

// Of the pending ones along the queue, all others behind.
int placeInQueue(const RegionRow &row)
{
    return row.queueOrder >= 0 ? row.queueOrder : std::numeric_limits<int>::max();
}

} // namespace

RegionFilterModel::RegionFilterModel(QObject *parent)
    : QSortFilterProxyModel(parent)
    , m_filterName(QStringLiteral("all"))
{
    connect(this, &QAbstractItemModel::rowsInserted, this, &RegionFilterModel::noteCount);
    connect(this, &QAbstractItemModel::rowsRemoved, this, &RegionFilterModel::noteCount);
    connect(this, &QAbstractItemModel::modelReset, this, &RegionFilterModel::noteCount);
    connect(this, &QAbstractItemModel::layoutChanged, this, &RegionFilterModel::noteCount);
    setSortRole(RegionModel::NameRole);
    sort(0);
}

RegionFilterModel::~RegionFilterModel() = default;

RegionModel *RegionFilterModel::regions() const
{
    return m_regions;
}

void RegionFilterModel::setRegions(RegionModel *regions)
{
    if (regions == m_regions && regions == sourceModel())
        return;
    m_regions = regions;
    QSortFilterProxyModel::setSourceModel(regions);
    Q_EMIT regionsChanged();
}

void RegionFilterModel::setSourceModel(QAbstractItemModel *model)
{
    if (auto *regions = qobject_cast<RegionModel *>(model))
        setRegions(regions);
    else if (!model)
        setRegions(nullptr);
}

QString RegionFilterModel::search() const
{
    return m_search;
}

void RegionFilterModel::setSearch(const QString &search)
{
    if (search == m_search)
        return;
    m_search = search;
    const QStringList words = SearchText::words(search);
    if (words != m_words) {
        m_words = words;
        invalidateFilter();
    }
    Q_EMIT searchChanged();
}

QString RegionFilterModel::parentId() const
{
    return m_parentId;
}

void RegionFilterModel::setParentId(const QString &id)
{
    if (id == m_parentId)
        return;
    m_parentId = id;
    if (m_treeMode)
        invalidateFilter();
    Q_EMIT parentIdChanged();
}

bool RegionFilterModel::treeMode() const
{
    return m_treeMode;
}

void RegionFilterModel::setTreeMode(bool treeMode)
{
    if (treeMode == m_treeMode)
        return;
    m_treeMode = treeMode;
    invalidateFilter();
    Q_EMIT treeModeChanged();
}

QString RegionFilterModel::filter() const
{
    return m_filterName;
}

void RegionFilterModel::setFilter(const QString &filter)
{
    if (filter == m_filterName)
        return;
    m_filterName = filter;
    m_filter = filterNamed(filter);
    invalidateFilter();
    // Which role it is decides after which changes rows are sorted anew.
    const bool byQueue = m_filter == Filter::Pending || m_filter == Filter::Transfers;
    setSortRole(byQueue ? RegionModel::PendingRole : RegionModel::NameRole);
    Q_EMIT filterChanged();
}

RegionFilterModel::Filter RegionFilterModel::filterNamed(const QString &name)
{
    if (name == QLatin1String("installed"))
        return Filter::Installed;
    if (name == QLatin1String("downloadable"))
        return Filter::Downloadable;
    if (name == QLatin1String("pending"))
        return Filter::Pending;
    if (name == QLatin1String("failed"))
        return Filter::Failed;
    if (name == QLatin1String("transfers"))
        return Filter::Transfers;
    return Filter::All;
}

QString RegionFilterModel::locale() const
{
    return m_locale;
}

void RegionFilterModel::setLocale(const QString &name)
{
    if (name == m_locale)
        return;
    m_locale = name;
    m_keys = name.isEmpty() ? nullptr : CollationKeys::of(name);
    invalidate();
    Q_EMIT localeChanged();
}

int RegionFilterModel::count() const
{
    return rowCount();
}

// A search takes rows out one by one; whoever is bound to the count need not hear of each.
void RegionFilterModel::noteCount()
{
    if (m_countQueued)
        return;
    m_countQueued = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_countQueued = false;
            const int now = count();
            if (now == m_toldCount)
                return;
            m_toldCount = now;
            Q_EMIT countChanged();
        },
        Qt::QueuedConnection);
}

QVariantMap RegionFilterModel::get(int row) const
{
    const QModelIndex source = mapToSource(index(row, 0));
    if (!m_regions || !source.isValid())
        return QVariantMap();
    return m_regions->get(m_regions->row(source.row()).id);
}

int RegionFilterModel::rowOf(const QString &id) const
{
    if (!m_regions)
        return -1;
    return mapFromSource(m_regions->index(m_regions->rowOf(id))).row();
}

bool RegionFilterModel::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    Q_UNUSED(sourceParent);
    const RegionRow &row = m_regions->row(sourceRow);
    if (m_treeMode && row.parentId != m_parentId)
        return false;
    return passesFilter(row) && SearchText::matches(row.searchText, m_words);
}

bool RegionFilterModel::passesFilter(const RegionRow &row) const
{
    switch (m_filter) {
    case Filter::Installed:
        return row.installed;
    case Filter::Downloadable:
        return row.downloadable;
    case Filter::Pending:
        return row.queueOrder >= 0;
    case Filter::Failed:
        return isFailed(row);
    case Filter::Transfers:
        return row.queueOrder >= 0 || isFailed(row);
    case Filter::All:
        break;
    }
    return true;
}

bool RegionFilterModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    const RegionRow &a = m_regions->row(left.row());
    const RegionRow &b = m_regions->row(right.row());
    if (sortRole() == RegionModel::PendingRole && placeInQueue(a) != placeInQueue(b))
        return placeInQueue(a) < placeInQueue(b);
    const int order = compareNames(a, b);
    return order != 0 ? order < 0 : a.id < b.id;
}

int RegionFilterModel::compareNames(const RegionRow &a, const RegionRow &b) const
{
    if (!m_keys)
        return a.sortKey->compare(*b.sortKey);
    // A copy: the first key moves when the second one is new.
    const QCollatorSortKey key = m_keys->key(a.name());
    return key.compare(m_keys->key(b.name()));
}
