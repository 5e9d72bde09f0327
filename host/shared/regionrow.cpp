// SPDX-License-Identifier: MIT
#include "host/shared/regionrow.h"

#include <tuple>

namespace {

template <typename Row> auto catalogValues(Row &row)
{
    return std::tie(row.catalogName, row.localizedName, row.parentId, row.depth, row.childCount,
                    row.downloadSize, row.installationSize, row.downloadable, row.searchText);
}

} // namespace

const QString &RegionRow::name() const
{
    if (!localizedName.isEmpty())
        return localizedName;
    return catalogName.isEmpty() ? id : catalogName;
}

bool sameCatalogValues(const RegionRow &a, const RegionRow &b)
{
    return catalogValues(a) == catalogValues(b);
}

void takeCatalogValues(RegionRow *row, const RegionRow &from)
{
    catalogValues(*row) = catalogValues(from);
    row->sortKey = from.sortKey;
}
