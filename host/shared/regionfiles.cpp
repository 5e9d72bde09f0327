// SPDX-License-Identifier: MIT
#include "host/shared/regionfiles.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/shared/tilelist.h"
#include <QFileInfo>
#include <QSet>

QList<MapRegion *> RegionFiles::installed(MapCatalog *catalog)
{
    QList<MapRegion *> regions;
    QQmlListProperty<MapRegion> list = catalog->installedRegions();
    for (int i = 0; i < int(list.count(&list)); ++i)
        regions.append(list.at(&list, i));
    return regions;
}

QStringList RegionFiles::ofOthers(MapCatalog *catalog, const QString &id)
{
    QStringList tiles;
    const QList<MapRegion *> regions = installed(catalog);
    for (const MapRegion *region : regions) {
        if (region->id() == id)
            continue;
        const QStringList files = region->fileList();
        for (const QString &file : files)
            tiles.append(TileList::plain(file));
    }
    return tiles;
}

RemovalFigures RegionFiles::removalFigures(MapCatalog *catalog, const QString &id,
                                           const QString &tileCacheFolder)
{
    RemovalFigures figures;
    const MapRegion *region = catalog->region(id);
    if (!region || !region->installed())
        return figures;
    const QStringList others = ofOthers(catalog, id);
    const QSet<QString> needed(others.begin(), others.end());
    QStringList tiles;
    const QStringList entries = region->fileList();
    for (const QString &entry : entries)
        tiles.append(TileList::plain(entry));
    tiles.removeDuplicates();
    for (const QString &tile : std::as_const(tiles)) {
        const QFileInfo file(tileCacheFolder + QLatin1Char('/') + tile);
        if (!file.isFile())
            continue;
        const bool kept = needed.contains(tile);
        ++(kept ? figures.keptFiles : figures.freedFiles);
        (kept ? figures.keptBytes : figures.freedBytes) += file.size();
    }
    return figures;
}

qint64 RegionFiles::sizeOnDisk(const MapRegion &region, const QString &tileCacheFolder)
{
    qint64 size = 0;
    const QStringList entries = region.fileList();
    for (const QString &entry : entries)
        size += QFileInfo(tileCacheFolder + QLatin1Char('/') + TileList::plain(entry)).size();
    return size;
}
