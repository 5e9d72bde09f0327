// SPDX-License-Identifier: MIT
#include "host/shared/updatespace.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/shared/regionstatus.h"
#include "host/shared/tilelist.h"
#include "host/shared/updatestate.h"
#include "plugin/dataroot.h"
#include "plugin/vexaconstants.h"
#include <algorithm>
#include <limits>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace {

constexpr qint64 BlockSize = 4096; // bytes; what file systems of phones and desktops share
constexpr qint64 Slack = 1024 * 1024; // catalogue, names, content file, the engine's lists
// What is unpacked may be no smaller than this share of the archive, whatever the old set tells.
constexpr double LeastGrowth = 1.0;

qint64 onDisk(const QFileInfo &file)
{
    return (file.size() + BlockSize - 1) / BlockSize * BlockSize;
}

qint64 sizeOf(const QSet<QString> &tiles, const QString &folder)
{
    qint64 size = 0;
    for (const QString &tile : tiles)
        size += onDisk(QFileInfo(folder + QLatin1Char('/') + tile));
    return size;
}

qint64 sizeBelow(const QString &folder)
{
    qint64 size = 0;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        size += onDisk(files.fileInfo());
    }
    return size;
}

QSet<QString> tilesOf(const MapRegion &region)
{
    QSet<QString> tiles;
    const QStringList entries = region.fileList();
    for (const QString &entry : entries)
        tiles.insert(TileList::plain(entry));
    return tiles;
}

// Catalogues may claim sizes that no number holds.
qint64 bytes(double value)
{
    constexpr auto Most = double(std::numeric_limits<qint64>::max()) / 8;
    return qint64(std::clamp(value, 0.0, Most));
}

double growth(qint64 tiles, qint64 archive)
{
    return archive > 0 ? std::max(double(tiles) / double(archive), LeastGrowth) : LeastGrowth;
}

struct Place
{
    qint64 free = 0;
    dev_t device = 0;
    bool isKnown = false;
};

// The folder may not be there yet; then its nearest parent tells.
Place placeOf(QString folder)
{
    while (!QFileInfo::exists(folder) && folder.size() > 1)
        folder = QFileInfo(folder).path();
    const QByteArray path = QFile::encodeName(folder);
    struct stat status = {};
    struct statvfs system = {};
    Place place;
    if (stat(path.constData(), &status) != 0 || statvfs(path.constData(), &system) != 0)
        return place;
    place.free = qint64(system.f_bavail) * qint64(system.f_frsize);
    place.device = status.st_dev;
    place.isKnown = true;
    return place;
}

} // namespace

UpdateSpace::Need UpdateSpace::need(MapCatalog *main, MapCatalog *prepared,
                                    const QStringList &wanted, const QStringList &toFetch)
{
    const QString folder = DataRoot::tileCacheFolder();
    QSet<QString> oldTiles;
    double oldArchives = 0;
    double newArchives = 0;
    Need need;
    for (const QString &id : wanted) {
        const MapRegion *before = main->region(id);
        const MapRegion *after = prepared->region(id);
        if (!after)
            continue;
        const double archive = double(after->downloadSize());
        newArchives += archive;
        double unpacked = archive * LeastGrowth;
        if (before) {
            const QSet<QString> tiles = tilesOf(*before);
            oldTiles += tiles;
            oldArchives += double(before->downloadSize());
            unpacked = archive * growth(sizeOf(tiles, folder), before->downloadSize());
        }
        if (toFetch.contains(id))
            need.scratch = std::max(need.scratch, bytes(archive + unpacked));
    }
    // Neighbours share tiles: the whole is less than its parts.
    need.tiles = bytes(newArchives * growth(sizeOf(oldTiles, folder), bytes(oldArchives)));
    return need;
}

QString UpdateSpace::shortage(const Need &need)
{
    const QString scratchFolder = QDir::homePath() + TMP_DIR_PATH;
    const Place maps = placeOf(DataRoot::cities());
    const Place home = placeOf(scratchFolder);
    if (!maps.isKnown || !home.isKnown)
        return QString(); // The disk itself will tell.
    // What earlier runs left is part of the need.
    const qint64 tiles = need.tiles + Slack - sizeBelow(DataRoot::tileCacheFolder(UpdateSuffix));
    const qint64 scratch = need.scratch + Slack - sizeBelow(scratchFolder);
    const auto sentence = [](const QString &folder, qint64 needed, qint64 free) {
        return tr("The update needs up to %1 below %2 beside the maps in use, but only %3 are "
                  "free.")
            .arg(RegionWords::size(needed), folder, RegionWords::size(free));
    };
    if (maps.device == home.device) {
        const qint64 together = std::max<qint64>(tiles, 0) + std::max<qint64>(scratch, 0);
        return together > maps.free ? sentence(DataRoot::cities(), together, maps.free) : QString();
    }
    if (tiles > maps.free)
        return sentence(DataRoot::cities(), tiles, maps.free);
    return scratch > home.free ? sentence(scratchFolder, scratch, home.free) : QString();
}
