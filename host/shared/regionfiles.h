// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

class MapCatalog;
class MapRegion;

/**
 * What a removal frees and keeps. Files that are gone already are not counted, nor are entries that
 * lead out of the tile cache, which a removal leaves alone. Bytes are the files' contents, not the
 * blocks that the file system gives them; of a tile with several names (hard links) they come free
 * with the last name.
 */
struct RemovalFigures
{
    QString id; ///< empty for a total
    int freedFiles = 0;
    qint64 freedBytes = 0;
    int keptFiles = 0; ///< other installed regions list them
    qint64 keptBytes = 0;
    QStringList neededBy; ///< ids of those regions, in the catalogue's order
};

/** What the removal of several regions, one after the other, comes to. */
struct RemovalPlan
{
    QList<RemovalFigures> regions; ///< each as it is when those before it are gone
    /** What is freed in all, and what still stays when the last one is gone. */
    RemovalFigures total;
};

/** An installed region and the entries of its file list, apart from the catalogue's object. */
struct InstalledTiles
{
    QString id;
    QStringList fileList;
};

/**
 * Questions about installed regions and their tiles. GUI thread, while no load is under way, unless
 * another is named.
 */
namespace RegionFiles {

/** The installed regions, in the catalogue's order. */
QList<MapRegion *> installed(MapCatalog *catalog);

/** The same as values, for another thread. */
QList<InstalledTiles> installedTiles(MapCatalog *catalog);

/** The tiles that installed regions other than this one list, as archives name them. */
QStringList ofOthers(MapCatalog *catalog, const QString &id);

/** What a removal of the region would free and keep now. */
RemovalFigures removalFigures(MapCatalog *catalog, const QString &id,
                              const QString &tileCacheFolder);

/**
 * What removing these regions in this order would free and keep; changes nothing. Ids that are not
 * installed, or come a second time, are left out.
 */
RemovalPlan planRemoval(MapCatalog *catalog, const QStringList &ids,
                        const QString &tileCacheFolder);
/** The same for these installed regions. Any thread. */
RemovalPlan planRemoval(const QList<InstalledTiles> &installed, const QStringList &ids,
                        const QString &tileCacheFolder);

/** Bytes of the region's tiles that are on disk. */
qint64 sizeOnDisk(const MapRegion &region, const QString &tileCacheFolder);

} // namespace RegionFiles
