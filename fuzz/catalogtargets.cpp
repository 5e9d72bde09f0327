// SPDX-License-Identifier: MIT
#include "catalog/contentfile_p.h"
#include "catalog/mapcatalogprocessor.h"
#include "catalog/mapregion.h"
#include "cityindex/cityindex.h"
#include "cityindex/cityindexlistprocessor.h"
#include "fuzz/targets.h"
#include "fuzz/workspace.h"
#include <algorithm>
#include <QDir>
#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <QStringList>

namespace {

const QByteArray TaiwanContent("<directory map-version=\"1.2.TW\"/>");

QList<MapRegion *> childrenOf(const MapRegion &region)
{
    QQmlListProperty<MapRegion> property = region.children();
    QList<MapRegion *> children;
    for (VexaCompat::ListIndex i = 0; i < MapRegion::count(&property); ++i)
        children.append(MapRegion::at(&property, i));
    return children;
}

QStringList described(const QList<MapRegion *> &regions)
{
    QStringList lines;
    for (const MapRegion *region : regions) {
        lines.append(region ? QStringLiteral("%1 %2 %3 %4")
                                  .arg(region->id(), region->name(), region->downloadUrl())
                                  .arg(region->downloadSize())
                            : QString());
    }
    return lines;
}

/** All that the readers know of one content file. */
struct Content
{
    QStringList ids;
    QString version;
    ContentFile::Tables tables;
};

Content readContent(const QString &path)
{
    const MapCatalogProcessor processor;
    return {processor.readLocalContent(path), processor.readLocalMapVersion(path),
            ContentFile::readTables(path)};
}

// As the catalogue does it: a region keeps its tiles only.
QStringList tilesOf(const Content &content, const QString &id)
{
    return content.tables.regionTilePaths.value(id).filter(QStringLiteral(".cdt"));
}

QByteArray written(const Content &content)
{
    QStringList paths;
    for (const QStringList &listed : content.tables.regionTilePaths) {
        for (QString path : listed)
            paths.append(QDir::cleanPath(QLatin1Char('/')
                                         + path.replace(QLatin1Char('\\'), QLatin1Char('/'))));
    }
    paths.sort();
    QList<TileTree::Folder> folders;
    for (const QString &path : std::as_const(paths)) {
        const auto slash = path.lastIndexOf(QLatin1Char('/'));
        folders.append({path.left(slash), {path.mid(slash + 1)}});
    }
    QList<ContentFile::Region> regions;
    for (const QString &id : content.ids)
        regions.append({id, id, tilesOf(content, id)});
    return ContentFile::write(content.version, folders, regions);
}

QStringList describedEntries(const QMap<QString, CityIndex> &entries)
{
    QStringList lines;
    for (const CityIndex &entry : entries)
        lines << entry.id() << entry.name() << entry.version();
    return lines;
}

} // namespace

void fuzzCatalog(const QByteArray &input)
{
    const QString path = Workspace::file(QStringLiteral("catalog-1.xml"), input);
    MapCatalogProcessor processor;
    const QList<MapRegion *> regions = processor.readCatalog(path);

    QSet<const MapRegion *> seen;
    int children = 0;
    for (const MapRegion *region : regions) {
        if (!region)
            continue;
        const QList<MapRegion *> own = childrenOf(*region);
        for (const MapRegion *child : own)
            require(seen.contains(child) && child->hasParent(), "children come before parents");
        children += int(own.size());
        seen.insert(region);
    }
    const auto isChild = [](const MapRegion *region) { return region && region->hasParent(); };
    require(children == std::count_if(regions.begin(), regions.end(), isChild),
            "a child has one parent");

    const QStringList before = described(regions);
    require(described(processor.readCatalog(path)) == before, "a file reads the same twice");
}

void fuzzRegionNames(const QByteArray &input)
{
    static const QString content =
        Workspace::file(QStringLiteral("names-content.xml"), TaiwanContent);
    const QString path = Workspace::file(QStringLiteral("regionname-lang-001.xml"), input);
    const QMap<QString, QString> names = MapCatalogProcessor().readRegionNames(path, content);
    const QString taiwan = QStringLiteral("qtn_maps_vexa_taiwan_china");
    require(names.value(QStringLiteral("411"), taiwan) == taiwan, "411 has no name of the file's");
}

void fuzzContent(const QByteArray &input)
{
    const Content first = readContent(Workspace::file(QStringLiteral("content.xml"), input));
    const QByteArray firstBytes = written(first);
    const Content second = readContent(Workspace::file(QStringLiteral("content.xml"), firstBytes));

    require(second.ids == first.ids, "the regions survive being written");
    require(second.version == first.version, "the version survives being written");
    for (const QString &id : first.ids)
        require(tilesOf(second, id).size() == tilesOf(first, id).size(),
                "every tile of a region survives being written");

    // The first writing brings every path into its one spelling, and drops names that come twice.
    const QByteArray secondBytes = written(second);
    const Content third = readContent(Workspace::file(QStringLiteral("content.xml"), secondBytes));
    require(written(third) == secondBytes, "what was written reads and writes the same");
    for (const QString &id : first.ids)
        require(tilesOf(third, id) == tilesOf(second, id), "paths stay as they were written");
}

void fuzzConfig(const QByteArray &input)
{
    const QString path = Workspace::file(QStringLiteral("config.cfg"), input);
    const MapCatalogProcessor processor;
    const QString version = processor.readLocalMOSVersion(path);
    require(version.isEmpty() == input.isEmpty(), "any byte is a number");

    processor.updateLocalMOSVersion(path, version);
    const bool hasHeader = input.size() >= 16;
    require(!hasHeader || Workspace::readAll(path) == input, "the same version changes nothing");

    const QString other = QStringLiteral("1.-2147483648.2147483647.0");
    Workspace::file(QStringLiteral("config.cfg"), input);
    processor.updateLocalMOSVersion(path, other);
    require(processor.readLocalMOSVersion(path) == other, "what was written is read");
    require(Workspace::readAll(path).mid(16) == input.mid(16), "the rest of the file stays");
}

void fuzzCityIndex(const QByteArray &input)
{
    const CityIndexListProcessor processor;
    const QString path = Workspace::file(QStringLiteral("cityindex.xml"), input);
    QMap<QString, CityIndex> first;
    processor.readCityIndexList(path, first);

    processor.updateCityIndexListContent(path, first);
    QMap<QString, CityIndex> second;
    processor.readCityIndexList(path, second);
    require(describedEntries(second) == describedEntries(first), "the list survives being written");

    const QByteArray bytes = Workspace::readAll(path);
    processor.updateCityIndexListContent(path, second);
    require(Workspace::readAll(path) == bytes, "the same list is the same file");
}
