// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/regionstatus.h"
#include <memory>
#include <optional>
#include <QCollatorSortKey>
#include <QString>
#include <vector>

/**
 * What a RegionModel knows of one region. A plain value that outlives the catalogue's region, which
 * dies at the next load.
 */
struct RegionRow
{
    QString id;
    QString catalogName;
    QString localizedName; ///< empty if the region-name file has none
    QString parentId; ///< empty at the top level
    int depth = 0; ///< 0 at the top level
    int childCount = 0;
    qint64 downloadSize = 0; ///< bytes of the archive; 0 while unknown
    qint64 installationSize = 0; ///< bytes once installed; 0 while unknown
    bool downloadable = false; ///< whether the catalogue has an address for it
    bool installed = false;
    RegionStatus status;
    QString searchText; ///< id and names, folded; see SearchText
    std::optional<QCollatorSortKey> sortKey; ///< of name(), by the user's locale

    qint64 sizeOnDisk = -1; ///< bytes of its tiles; -1 until measured
    mutable bool sizeWanted = false; ///< somebody asked for the size on disk
    int queueOrder = -1; ///< grows along the queue; -1 if nothing is pending

    int number = 0; ///< where the model last saw it among its rows
    bool pathChanged = false; ///< whether the names above it differ from the model's

    /** For the user: the name in the user's language, else the catalogue's, else the id. */
    const QString &name() const;
};

/** Rows whose addresses stay the same wherever they are moved. */
using RegionRows = std::vector<std::unique_ptr<RegionRow>>;

/** Whether the catalogue says the same of both. */
bool sameCatalogValues(const RegionRow &a, const RegionRow &b);

/** Takes over what the catalogue says, and leaves the rest. */
void takeCatalogValues(RegionRow *row, const RegionRow &from);
