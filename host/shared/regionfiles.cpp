// SPDX-License-Identifier: MIT
#include "host/shared/regionfiles.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/shared/tilelist.h"
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QPair>
#include <QSet>
#include <sys/stat.h>

namespace {

/** Removes regions from a picture of the tile cache, by the same rules as the catalogue does. */
class RemovalPlanner
{
public:
    RemovalPlanner(const QList<InstalledTiles> &installed, const QString &folder)
        : m_folder(folder)
        , m_root(QFileInfo(folder).canonicalFilePath())
    {
        for (const InstalledTiles &region : installed) {
            const int place = int(m_ids.size());
            m_ids.append(region.id);
            m_tiles.append(tilesOf(region));
            for (const QString &tile : std::as_const(m_tiles.last()))
                m_users[tile].append(place);
        }
    }

    bool isInstalled(const QString &id) const
    {
        const int place = int(m_ids.indexOf(id));
        return place >= 0 && !m_removed.contains(place);
    }

    RemovalFigures remove(const QString &id)
    {
        const int place = int(m_ids.indexOf(id));
        m_removed.insert(place);
        RemovalFigures figures;
        figures.id = id;
        QStringList kept;
        for (const QString &tile : std::as_const(m_tiles[place])) {
            QList<int> &users = m_users[tile];
            users.removeAll(place);
            if (users.isEmpty())
                free(tile, &figures);
            else
                kept.append(tile);
        }
        count(kept, &figures);
        return figures;
    }

    /** Of the tiles of all that was removed, what is there still. */
    void addKept(RemovalFigures *total) const
    {
        QStringList kept;
        for (const int place : m_removed)
            kept += m_tiles.at(place);
        kept.removeDuplicates();
        count(kept, total);
    }

private:
    using FileId = QPair<quint64, quint64>; // device and inode

    struct File
    {
        QString path; // without links on the way to it
        FileId id;
        qint64 size = 0;
        quint64 names = 0; // hard links; 0 if there is no such file
    };

    static QStringList tilesOf(const InstalledTiles &region)
    {
        QStringList tiles;
        for (const QString &entry : region.fileList)
            tiles.append(TileList::plain(entry));
        tiles.removeDuplicates();
        return tiles;
    }

    File find(const QString &tile) const
    {
        const QFileInfo info(m_folder + QLatin1Char('/') + tile);
        const QString parent = info.path();
        auto real = m_realFolders.constFind(parent);
        if (real == m_realFolders.constEnd())
            real = m_realFolders.insert(parent, QFileInfo(parent).canonicalFilePath());
        const bool inside =
            !m_root.isEmpty() && (*real == m_root || real->startsWith(m_root + QLatin1Char('/')));
        File file;
        // A link to nowhere is no file to the catalogue, and stays.
        if (!inside || !info.isFile())
            return file;
        file.path = *real + QLatin1Char('/') + info.fileName();
        struct stat status = {};
        // The link itself is what goes, not the file that it leads to.
        if (m_freed.contains(file.path)
            || ::lstat(QFile::encodeName(file.path).constData(), &status) != 0)
            return file;
        file.id = {quint64(status.st_dev), quint64(status.st_ino)};
        file.size = qint64(status.st_size);
        file.names = quint64(status.st_nlink);
        return file;
    }

    void free(const QString &tile, RemovalFigures *figures)
    {
        const File file = find(tile);
        if (file.names == 0)
            return;
        m_freed.insert(file.path);
        ++figures->freedFiles;
        if (++m_freedNames[file.id] == file.names)
            figures->freedBytes += file.size;
    }

    void count(const QStringList &kept, RemovalFigures *figures) const
    {
        QSet<FileId> counted;
        QSet<int> users;
        for (const QString &tile : kept) {
            const File file = find(tile);
            if (file.names == 0)
                continue;
            ++figures->keptFiles;
            if (!counted.contains(file.id))
                figures->keptBytes += file.size;
            counted.insert(file.id);
            const QList<int> tileUsers = m_users.value(tile);
            users.unite(QSet<int>(tileUsers.begin(), tileUsers.end()));
        }
        for (int place = 0; place < int(m_ids.size()); ++place) {
            if (users.contains(place))
                figures->neededBy.append(m_ids.at(place));
        }
    }

    const QString m_folder;
    const QString m_root;
    QStringList m_ids; // of the installed regions; their places are the numbers below
    QList<QStringList> m_tiles;
    QHash<QString, QList<int>> m_users; // who of those still installed lists a tile
    QSet<int> m_removed;
    QSet<QString> m_freed; // paths
    QHash<FileId, quint64> m_freedNames;
    mutable QHash<QString, QString> m_realFolders;
};

} // namespace

QList<MapRegion *> RegionFiles::installed(MapCatalog *catalog)
{
    QList<MapRegion *> regions;
    QQmlListProperty<MapRegion> list = catalog->installedRegions();
    for (int i = 0; i < int(list.count(&list)); ++i)
        regions.append(list.at(&list, i));
    return regions;
}

QList<InstalledTiles> RegionFiles::installedTiles(MapCatalog *catalog)
{
    QList<InstalledTiles> tiles;
    const QList<MapRegion *> regions = installed(catalog);
    for (const MapRegion *region : regions)
        tiles.append({region->id(), region->fileList()});
    return tiles;
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
    return planRemoval(catalog, {id}, tileCacheFolder).regions.value(0);
}

RemovalPlan RegionFiles::planRemoval(MapCatalog *catalog, const QStringList &ids,
                                     const QString &tileCacheFolder)
{
    return planRemoval(installedTiles(catalog), ids, tileCacheFolder);
}

RemovalPlan RegionFiles::planRemoval(const QList<InstalledTiles> &installed, const QStringList &ids,
                                     const QString &tileCacheFolder)
{
    RemovalPlan plan;
    RemovalPlanner planner(installed, tileCacheFolder);
    for (const QString &id : ids) {
        if (!planner.isInstalled(id))
            continue;
        plan.regions.append(planner.remove(id));
        plan.total.freedFiles += plan.regions.last().freedFiles;
        plan.total.freedBytes += plan.regions.last().freedBytes;
    }
    planner.addKept(&plan.total);
    return plan;
}

qint64 RegionFiles::sizeOnDisk(const MapRegion &region, const QString &tileCacheFolder)
{
    qint64 size = 0;
    const QStringList entries = region.fileList();
    for (const QString &entry : entries)
        size += QFileInfo(tileCacheFolder + QLatin1Char('/') + TileList::plain(entry)).size();
    return size;
}
