// SPDX-License-Identifier: MIT
#include "catalog/mapcatalog.h"

#include "catalog/contentfile_p.h"
#include "catalog/localizationtools.h"
#include "catalog/regionnamefile_p.h"
#include "plugin/dataroot.h"
#include "plugin/logger.h"
#include <algorithm>
#include <QCoreApplication>
#include <QLocale>
#include <QQmlEngine>
#include <utility>

namespace {

const QLatin1String ContentFileName("content.xml");
const QLatin1String ConfigFileName("config.cfg");

QString catalogFileName(const QString &mapsVersion)
{
    return QLatin1String("catalog-") + mapsVersion + QLatin1String(".xml");
}

QString regionNameFileName(const QString &digitCode)
{
    return QLatin1String("regionname-lang-") + digitCode + QLatin1String(".xml");
}

// The first eight characters, in a number of the same order; nothing of what stands behind a
// character that does not fit into a byte.
quint64 startOf(const QString &id)
{
    quint64 start = 0;
    bool fits = true;
    for (int i = 0; i < 8; ++i) {
        const ushort character = fits && i < id.size() ? id.at(i).unicode() : 0;
        fits = fits && character < 0xff;
        start = start << 8 | qMin<ushort>(character, 0xff);
    }
    return start;
}

} // namespace

MapCatalog::MapCatalog(const QString &pathSuffix, QObject *parent)
    : QObject(parent)
{
    MapRegion::registerType();
    allCatalogs().append(this);
    setPathSuffix(pathSuffix);
    initialize();
}

MapCatalog::~MapCatalog()
{
    allCatalogs().removeOne(this);
}

QQmlListProperty<MapRegion> MapCatalog::installedRegions()
{
    return MapRegion::createDeclarativeList(this, &m_installedRegions);
}

QQmlListProperty<MapRegion> MapCatalog::availableRegions()
{
    return MapRegion::createDeclarativeList(this, &m_availableRegions);
}

QString MapCatalog::installedMapsVersion() const
{
    return m_installedMapsVersion;
}

QString MapCatalog::installedMOSVersion() const
{
    return m_installedMOSVersion;
}

QString MapCatalog::mapBaseDirectory() const
{
    return m_baseFolderPath;
}

QString MapCatalog::tessarinDirectory() const
{
    return m_catalogFolderPath;
}

bool MapCatalog::bussy() const
{
    return m_bussy;
}

bool MapCatalog::catalogFilesExist()
{
    return m_catalogFolder.exists(ContentFileName)
        && m_catalogFolder.exists(catalogFileName(m_installedMapsVersion))
        && m_catalogFolder.exists(regionNameFileName(getDigitCode()));
}

void MapCatalog::storeMapsVersion(QString installedMapsVersion)
{
    if (installedMapsVersion.isEmpty()) {
        installedMapsVersion =
            m_processor.readLocalMapVersion(m_catalogFolder.filePath(ContentFileName));
    }
    m_installedMapsVersion = installedMapsVersion;
    Q_EMIT installedMapsVersionChanged();
}

void MapCatalog::storeMosVersion(QString installedMOSVersion, const QString &differentPath)
{
    QString path = m_tileCacheFolderPath;
    if (!differentPath.isEmpty())
        path.replace(QLatin1String("diskcache"), differentPath); // anywhere in the path
    path += QLatin1Char('/') + ConfigFileName;

    if (installedMOSVersion.isEmpty())
        installedMOSVersion = m_processor.readLocalMOSVersion(path);
    else
        m_processor.updateLocalMOSVersion(path, installedMOSVersion);
    m_installedMOSVersion = installedMOSVersion;
    Q_EMIT installedMOSVersionChanged();
}

MapRegion *MapCatalog::region(QString id)
{
    MapRegion *region = m_regionIndex.value(id);
    // An object without a parent that a script gets as a result is the script's to delete.
    if (region)
        QQmlEngine::setObjectOwnership(region, QQmlEngine::CppOwnership);
    return region;
}

int MapCatalog::localeAwareCompare(QString strA, QString strB)
{
    return QString::localeAwareCompare(strA, strB);
}

void MapCatalog::takeFolders()
{
    const Self self(this);
    m_baseFolder = QDir(DataRoot::cities());
    m_catalogFolder = QDir(DataRoot::catalogFolder(m_pathSuffix));
    m_tileCacheFolder = QDir(DataRoot::tileCacheFolder(m_pathSuffix));
    m_baseFolderPath = m_baseFolder.path();
    m_catalogFolderPath = m_catalogFolder.path();
    m_tileCacheFolderPath = m_tileCacheFolder.path();

    // Failures show later, as files that are not there.
    if (!m_catalogFolder.exists())
        QDir().mkpath(m_catalogFolderPath);
    if (!m_tileCacheFolder.exists())
        QDir().mkdir(m_tileCacheFolderPath);
    Q_EMIT mapBaseDirectoryChanged();
    if (self)
        Q_EMIT tessarinDirectoryChanged();
}

void MapCatalog::processContentXml()
{
    const QString path = m_catalogFolder.filePath(ContentFileName);
    m_regionTilePaths = ContentFile::readTables(path).regionTilePaths;
}

QStringList MapCatalog::readRegionFileList(const QString &id) const
{
    return m_regionTilePaths.value(id);
}

QString MapCatalog::getDigitCode() const
{
    const QString name = QLocale(QLocale::system().name()).name();
    const QString code = LocalizationTools().charCodeToDigitCode(name);
    L::og()->trace(QLatin1String("We receive system name() as ") + name + QLatin1String(" :: ")
                   + code);
    return code;
}

void MapCatalog::loadAvailable()
{
    const Self self(this);
    const QDir folder = m_catalogFolder;
    L::og()->info(QLatin1String("Current installed maps version is ") + m_installedMapsVersion);

    for (int place = 0; place < m_installedRegions.size(); ++place) {
        const MapRegion *region = m_installedRegions.at(place);
        m_wasInstalled.insert(region->id(), {place, region->fileList()});
    }
    // All three, because the next line deletes what they show.
    m_regionIndex.clear();
    m_availableRegions.clear();
    m_installedRegions.clear();
    const QList<MapRegion *> regions =
        m_processor.readCatalog(folder.filePath(catalogFileName(m_installedMapsVersion)));
    if (!self)
        return;

    m_regionIndex.reserve(regions.size());
    m_availableRegions.reserve(regions.size());
    for (MapRegion *region : regions) {
        if (!region)
            continue;
        makeAvailable(region);
        if (self)
            QCoreApplication::processEvents();
        if (!self)
            return;
    }
    // They came in the catalogue's order.
    std::sort(m_installedRegions.begin(), m_installedRegions.end(),
              [this](const MapRegion *a, const MapRegion *b) {
                  return m_wasInstalled.value(a->id()).place < m_wasInstalled.value(b->id()).place;
              });
    m_wasInstalled.clear();

    applyRegionNames(folder);
    if (self)
        Q_EMIT availableRegionsChanged();
}

void MapCatalog::makeAvailable(MapRegion *region)
{
    MapRegion *sameId = std::exchange(m_regionIndex[region->id()], region);
    m_availableRegions.append(region);

    const auto was = m_wasInstalled.constFind(region->id());
    if (was == m_wasInstalled.cend())
        return;
    // A later region of the same id takes the place of the earlier one.
    if (sameId)
        m_installedRegions.removeOne(sameId);
    m_installedRegions.append(region);

    const Self self(this);
    const QStringList fileList = was->fileList;
    if (sameId)
        sameId->setInstalled(false);
    if (self)
        region->setInstalled(true);
    if (self)
        region->setFileList(fileList);
}

void MapCatalog::applyRegionNames(const QDir &folder)
{
    const Self self(this);
    const NamedRegions names = readRegionNames(folder);
    if (!self)
        return;
    for (const NamedRegion &named : names) {
        MapRegion *region = named.region.value();
        // Half of the names are the same in many a language: those are kept once.
        const QString name = region->name();
        region->setLocalizedName(named.name == name ? name : named.name);
        if (self)
            QCoreApplication::processEvents();
        if (!self)
            return;
    }
}

// In the ascending order of their ids, each region once.
MapCatalog::NamedRegions MapCatalog::readRegionNames(const QDir &folder) const
{
    const Self self(const_cast<MapCatalog *>(this));
    const QString fileName = regionNameFileName(getDigitCode());
    L::og()->info(QLatin1String("Will try to open ") + fileName + QLatin1String(" language file"));
    const QString version = m_processor.readLocalMapVersion(folder.filePath(ContentFileName));
    NamedRegions names;
    names.reserve(size_t(m_regionIndex.size()));
    const auto pause = pauses();
    RegionNameFile::read(folder.filePath(fileName), version,
                         [&](const QString &id, const QString &name) {
                             const auto region = m_regionIndex.constFind(id);
                             if (region != m_regionIndex.cend())
                                 names.push_back({startOf(id), region, name, int(names.size())});
                             else
                                 QCoreApplication::processEvents();
                             return pause();
                         });
    if (!self)
        return NamedRegions();

    // Of an id's names the last one is the first of them then, and the one that stays.
    std::sort(names.begin(), names.end(), [](const NamedRegion &a, const NamedRegion &b) {
        if (a.start != b.start)
            return a.start < b.start;
        return a.region == b.region ? a.place > b.place : a.region.key() < b.region.key();
    });
    const auto end =
        std::unique(names.begin(), names.end(), [](const NamedRegion &a, const NamedRegion &b) {
            return a.region == b.region;
        });
    names.erase(end, names.end());
    return names;
}

// What a loop over a long file calls after each item, which is too small for a pass of the event
// loop of its own. False once that has deleted the catalogue.
std::function<bool()> MapCatalog::pauses() const
{
    constexpr int ItemsPerPass = 500;
    const Self self(const_cast<MapCatalog *>(this));
    return [self, items = 0]() mutable {
        if (++items % ItemsPerPass == 0)
            QCoreApplication::processEvents();
        return !self.isNull();
    };
}

void MapCatalog::loadInstalled()
{
    const Self self(this);
    const QString path = m_catalogFolder.filePath(ContentFileName);
    releaseTables();
    ContentFile::Tables tables;
    if (self)
        tables = ContentFile::readTables(path, pauses());
    if (!self)
        return;
    m_regionTilePaths.swap(tables.regionTilePaths);
    const QList<MapRegion *> before = m_installedRegions;
    m_installedRegions.clear();

    for (const QString &id : tables.ids) {
        if (MapRegion *region = m_regionIndex.value(id)) {
            region->setInstalled(true);
            if (self)
                region->setFileList(readRegionFileList(id));
            if (self)
                m_installedRegions.append(region);
        }
        if (self)
            QCoreApplication::processEvents();
        if (!self)
            return;
    }

    unmark(before);
    if (self)
        Q_EMIT installedRegionsChanged();
}

// One region's at a time: to free all of them at once takes longer than a frame.
void MapCatalog::releaseTables()
{
    const Self self(this);
    while (self && !m_regionTilePaths.isEmpty()) {
        m_regionTilePaths.erase(m_regionTilePaths.begin());
        QCoreApplication::processEvents();
    }
}

// Of these regions, those that the content file does not list any more.
void MapCatalog::unmark(const QList<MapRegion *> &regions)
{
    const Self self(this);
    const QSet<MapRegion *> installed(m_installedRegions.cbegin(), m_installedRegions.cend());
    for (MapRegion *region : regions) {
        if (self && !installed.contains(region))
            region->setInstalled(false);
    }
}
