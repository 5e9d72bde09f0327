// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

class MapCatalog;
class MapRegion;

/** What a removal frees and keeps. Of files that are gone already neither is counted. */
struct RemovalFigures
{
    int freedFiles = 0;
    qint64 freedBytes = 0;
    int keptFiles = 0; ///< other installed regions list them
    qint64 keptBytes = 0;
};

/** Questions about installed regions and their tiles. GUI thread, while no load is under way. */
namespace RegionFiles {

/** The installed regions, in the catalogue's order. */
QList<MapRegion *> installed(MapCatalog *catalog);

/** The tiles that installed regions other than this one list, as archives name them. */
QStringList ofOthers(MapCatalog *catalog, const QString &id);

/** What a removal of the region would free and keep now. */
RemovalFigures removalFigures(MapCatalog *catalog, const QString &id,
                              const QString &tileCacheFolder);

/** Bytes of the region's tiles that are on disk. */
qint64 sizeOnDisk(const MapRegion &region, const QString &tileCacheFolder);

} // namespace RegionFiles
