// SPDX-License-Identifier: MIT
#include "host/shared/regionsnapshot.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include <algorithm>

RegionSnapshot::RegionSnapshot(MapCatalog *catalog)
    : m_catalog(catalog)
{
    // Asked for once: each time it would run the event loop.
    if (catalog)
        m_regions = catalog->availableRegions();
}

void RegionSnapshot::start()
{
    clear();
    m_count = m_catalog ? int(m_regions.count(&m_regions)) : 0;
    m_first = m_count > 0 ? m_regions.at(&m_regions, 0) : nullptr;
}

void RegionSnapshot::clear()
{
    m_rows.clear();
    m_indexOf.clear();
    m_idOf.clear();
    m_regionOf.clear();
    m_first = nullptr;
    m_count = 0;
    m_copied = 0;
}

bool RegionSnapshot::isLost() const
{
    if (!m_catalog || int(m_regions.count(&m_regions)) != m_count)
        return true;
    return m_count > 0 && (!m_first || m_regions.at(&m_regions, 0) != m_first);
}

bool RegionSnapshot::isAtEnd() const
{
    return m_copied >= m_count;
}

int RegionSnapshot::copied() const
{
    return m_copied;
}

MapRegion *RegionSnapshot::next() const
{
    return m_regions.at(&m_regions, m_copied);
}

RegionRow *RegionSnapshot::copyNext()
{
    const MapRegion *region = next();
    ++m_copied;
    auto row = std::make_unique<RegionRow>();
    row->id = region->id();
    row->catalogName = region->name();
    row->localizedName = region->localizedName();
    row->downloadSize = region->downloadSize();
    row->installationSize = region->installationSize();
    row->downloadable = !region->downloadUrl().isEmpty();
    row->installed = region->installed();

    const auto earlier = m_indexOf.constFind(row->id);
    if (earlier != m_indexOf.cend()) {
        m_rows[size_t(*earlier)].reset();
        m_idOf.remove(m_regionOf.value(row->id));
    }
    m_indexOf.insert(row->id, int(m_rows.size()));
    m_idOf.insert(region, row->id);
    m_regionOf.insert(row->id, region);
    adopt(row->id, *region);
    m_rows.push_back(std::move(row));
    return m_rows.back().get();
}

// The children were copied before: that is the catalogue's order. So a parent always stands behind
// its child, and no region can be its own ancestor, whatever ids the catalogue repeats.
void RegionSnapshot::adopt(const QString &parentId, const MapRegion &parent)
{
    QQmlListProperty<MapRegion> children = parent.children();
    const int count = int(children.count(&children));
    for (int i = 0; i < count; ++i) {
        const auto id = m_idOf.constFind(children.at(&children, i));
        if (id != m_idOf.cend() && *id != parentId)
            find(*id)->parentId = parentId;
    }
}

void RegionSnapshot::finish()
{
    m_rows.erase(std::remove(m_rows.begin(), m_rows.end(), nullptr), m_rows.end());
    for (size_t i = 0; i < m_rows.size(); ++i)
        m_indexOf.insert(m_rows[i]->id, int(i));
    m_idOf.clear();
    m_regionOf.clear();
    // Backwards, so that a parent knows its depth before its children ask.
    for (auto row = m_rows.rbegin(); row != m_rows.rend(); ++row) {
        RegionRow *parent = find((*row)->parentId);
        if (!parent || (*row)->parentId.isEmpty())
            continue;
        (*row)->depth = parent->depth + 1;
        ++parent->childCount;
    }
}

RegionRow *RegionSnapshot::find(const QString &id) const
{
    const auto index = m_indexOf.constFind(id);
    return index == m_indexOf.cend() ? nullptr : m_rows[size_t(*index)].get();
}

RegionRows &RegionSnapshot::rows()
{
    return m_rows;
}
