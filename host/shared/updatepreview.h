// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/remotearchive.h"
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/**
 * What an update of all installed regions would come to, worked out before anything is downloaded.
 * Values only: whoever asks has looked at the disk and listed the new archives.
 *
 * Bytes are the files' contents, not the blocks that a file system gives them. Tiles are paths as
 * archives name them, "a/3/3fa9.cdt".
 */
namespace UpdatePreview {

/** A region that is installed. */
struct InstalledRegion
{
    QString id;
    QStringList tiles; ///< its list, each tile once
};

/** A region's archive in the new version. */
struct NewArchive
{
    qint64 bytes = 0;
    QList<ArchiveFile> files;
    QString problem; ///< why its files are not known, in words; empty if they are
};

struct Input
{
    QList<InstalledRegion> installed; ///< in the content file's order, in which they are updated
    QHash<QString, qint64> sizesOnDisk; ///< of the tiles that are there
    QHash<QString, NewArchive> archives; ///< by id; a region without one is lacking
};

/** A tile that an update of one region, done in place, would take from others. */
struct EndangeredTile
{
    QString tile;
    QStringList neededBy; ///< ids, in the content file's order
};

/** How the tiles of a new version compare with those on the disk. */
struct TileChanges
{
    int added = 0; ///< not on the disk now
    int resized = 0;
    int sameSize = 0; ///< whether their bytes differ shows only when they are there
    int gone = 0; ///< on the disk now, and not listed any more
};

struct Region
{
    QString id;
    bool isLacking = false; ///< the new version has no such region; all below is empty
    QString problem; ///< if not empty, only what is above is known
    qint64 downloadBytes = 0;
    qint64 installedBytes = 0; ///< of all its files once they are in place
    TileChanges tiles;
    /**
     * What an update of this region alone would remove although others need it, if it was done in
     * place: MapCatalog::addInstalledRegion() does not ask. An update in a second data set removes
     * nothing of the old one.
     */
    QList<EndangeredTile> endangered;
};

struct Preview
{
    QList<Region> regions;
    /** Whether all archives are known; else the sums leave some regions out. */
    bool isWhole = true;
    qint64 downloadBytes = 0;
    TileChanges tiles; ///< each tile once, though several regions may have it
    qint64 newSetBytes = 0; ///< the files of all regions, in the new data set
    /** Most that is needed beside the old set at any moment: new set, archive, unpacked files. */
    qint64 peakBytes = 0;
};

Preview of(const Input &input);

} // namespace UpdatePreview
