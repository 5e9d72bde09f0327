// SPDX-License-Identifier: MIT
#include "host/shared/regionremoval.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapcatalogprocessor.h"
#include "catalog/mapregion.h"
#include "host/shared/catalogfiles.h"
#include "host/shared/regionfiles.h"
#include "host/shared/tilelist.h"
#include "plugin/dataroot.h"
#include "plugin/logger.h"
#include <algorithm>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QSet>

namespace {

const QLatin1String Removals("removals");

bool writeNote(const QString &path, const QStringList &ids)
{
    const QJsonObject root {{QStringLiteral("version"), 1},
                            {Removals, QJsonArray::fromStringList(ids)}};
    const QByteArray text = QJsonDocument(root).toJson(QJsonDocument::Compact);
    QDir().mkpath(QFileInfo(path).path()); // If it fails, the open tells.
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit();
}

QStringList readNote(const QString &path)
{
    QStringList ids;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return ids;
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    const QJsonArray entries = root.value(Removals).toArray();
    for (const QJsonValue &entry : entries)
        ids.append(entry.toString());
    ids.removeAll(QString());
    return ids;
}

// The content file decides: without a catalogue no region is installed, and yet it is listed there.
bool isRecorded(const QString &id, const QString &pathSuffix)
{
    const QString content =
        DataRoot::catalogFolder(pathSuffix) + QLatin1Char('/') + CatalogFiles::contentName();
    return MapCatalogProcessor().readLocalContent(content).contains(id);
}

QStringList ownTiles(MapCatalog *catalog, const QString &id)
{
    QStringList tiles;
    const MapRegion *region = catalog->region(id);
    if (!region)
        return tiles;
    const QStringList others = RegionFiles::ofOthers(catalog, id);
    const QStringList entries = region->fileList();
    for (const QString &entry : entries)
        tiles.append(TileList::plain(entry));
    tiles.erase(std::remove_if(tiles.begin(), tiles.end(),
                               [others = QSet<QString>(others.begin(), others.end())](
                                   const QString &tile) { return others.contains(tile); }),
                tiles.end());
    return tiles;
}

// The catalogue passes over a tile that the disk does not let go, and forgets whose it was. Whether
// there was one that goes now.
bool removeLeft(const QStringList &tiles, const QString &folder)
{
    bool removed = false;
    for (const QString &tile : tiles) {
        const QString path = folder + QLatin1Char('/') + tile;
        if (!QFile::exists(path))
            continue;
        if (QFile::remove(path))
            removed = true;
        else
            L::og()->error(QLatin1String("Could not remove ") + path);
    }
    return removed;
}

} // namespace

QString RegionRemoval::notePath(const QString &pathSuffix)
{
    return QDir::homePath() + QLatin1String("/MyDocs/.vexa/removals") + pathSuffix
        + QLatin1String(".json");
}

bool RegionRemoval::remove(MapCatalog *catalog, const QString &id, const QString &pathSuffix)
{
    const QString path = notePath(pathSuffix);
    QStringList ids = readNote(path);
    if (!ids.contains(id))
        ids.append(id);
    // On a full disk there may be no room for it. A removal is what helps then; it is done unnoted.
    if (!writeNote(path, ids))
        L::og()->error(QLatin1String("Could not write the note of a removal ") + path);
    const QStringList tiles = ownTiles(catalog, id);
    catalog->deleteInstalledRegion(id);
    catalog->updateCatalog();
    if (isRecorded(id, pathSuffix))
        return false;
    if (removeLeft(tiles, DataRoot::tileCacheFolder(pathSuffix)))
        catalog->updateLocalContentFile(); // which lists the tiles on the disk
    forget(id, pathSuffix);
    return true;
}

void RegionRemoval::forget(const QString &id, const QString &pathSuffix)
{
    const QString path = notePath(pathSuffix);
    QStringList ids = readNote(path);
    if (ids.removeAll(id) == 0)
        return;
    if (!(ids.isEmpty() ? QFile::remove(path) : writeNote(path, ids)))
        L::og()->error(QLatin1String("Could not remove the note of a removal ") + path);
}

QStringList RegionRemoval::unfinished(const QString &pathSuffix)
{
    return readNote(notePath(pathSuffix));
}

QStringList RegionRemoval::finish(MapCatalog *catalog, const QString &pathSuffix)
{
    QStringList removed;
    const QStringList ids = unfinished(pathSuffix);
    for (const QString &id : ids) {
        const MapRegion *region = catalog->region(id);
        if (!region || !region->installed()) {
            // It was cut short behind its last step, or the catalogue is missing.
            if (!isRecorded(id, pathSuffix))
                forget(id, pathSuffix);
        } else if (remove(catalog, id, pathSuffix)) {
            removed.append(id);
        }
    }
    return removed;
}
