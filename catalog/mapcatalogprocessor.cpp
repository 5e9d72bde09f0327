// SPDX-License-Identifier: MIT
#include "catalog/mapcatalogprocessor.h"

#include "catalog/contentfile_p.h"
#include "catalog/mapregion.h"
#include "catalog/regionnamefile_p.h"
#include "catalog/xmlnames_p.h"
#include "plugin/xmlfilereader_p.h"
#include "plugin/xmlfilewriter_p.h"
#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <QtEndian>

using namespace CatalogXml;

namespace {

constexpr int MosVersionParts = 4;
constexpr int MosVersionBytes = MosVersionParts * int(sizeof(qint32));

// The region of the "File" element that has just begun; null if it lacks an attribute.
MapRegion *processCatalogFileNode(const XmlFileReader &xml)
{
    for (const QLatin1String attribute : {Description, Id, ZipFileSize, Link}) {
        if (!xml.has(attribute))
            return nullptr;
    }
    auto *region = new MapRegion(xml.value(Id));
    region->setName(xml.value(Description));
    region->setDownloadUrl(xml.value(Link));
    region->setSize(xml.value(ZipFileSize).toLongLong(), 0);
    return region;
}

// Ancestors first: at no moment is a deleted region the child of a living one.
void deleteRegions(QList<MapRegion *> *regions)
{
    while (!regions->isEmpty())
        delete regions->takeLast();
}

// The same for so many that the user interface would feel it. What happens meanwhile must not reach
// the list.
void deleteRegionsWithPauses(QList<MapRegion *> regions)
{
    constexpr int RegionsPerPass = 500;
    while (!regions.isEmpty()) {
        delete regions.takeLast();
        if (regions.size() % RegionsPerPass == 0)
            QCoreApplication::processEvents();
    }
}

/** The regions of one catalogue file while it is read. */
class CatalogPass
{
public:
    explicit CatalogPass(std::weak_ptr<char> lifetime)
        : m_lifetime(std::move(lifetime))
    { }

    // False if the processor has ended; then there are no regions left.
    bool run(XmlFileReader &xml)
    {
        if (xml.next() != XmlFileReader::Start)
            return true; // not even a root
        for (auto step = xml.next(); step != XmlFileReader::Done; step = xml.next()) {
            if (step == XmlFileReader::End)
                endRegion();
            else if (!xml.is(FileElement))
                xml.skip();
            else
                beginRegion(xml);
            if (m_lifetime.expired()) {
                abandon();
                return false;
            }
        }
        // The rest of a file that is cut: what is open there ends there.
        while (!m_open.isEmpty())
            endRegion();
        return true;
    }

    QList<MapRegion *> regions;

private:
    void beginRegion(XmlFileReader &xml)
    {
        if (MapRegion *region = processCatalogFileNode(xml)) {
            m_open.append(region);
            return;
        }
        if (m_open.isEmpty())
            regions.append(nullptr);
        xml.skip();
    }

    void endRegion()
    {
        if (m_open.isEmpty())
            return; // the root
        MapRegion *region = m_open.takeLast();
        regions.append(region);
        if (!m_open.isEmpty()) {
            m_open.last()->addChild(region);
            region->setHasParent(true);
        }
    }

    void abandon()
    {
        while (!m_open.isEmpty())
            delete m_open.takeFirst();
        deleteRegions(&regions);
    }

    const std::weak_ptr<char> m_lifetime;
    QList<MapRegion *> m_open; // the regions around the current element, outermost first
};

/** How often each content file was written by this process. */
class WriteCounts
{
public:
    quint64 of(const QString &path)
    {
        const QMutexLocker lock(&m_mutex);
        return m_counts.value(path);
    }
    quint64 add(const QString &path)
    {
        const QMutexLocker lock(&m_mutex);
        return ++m_counts[path];
    }

private:
    QMutex m_mutex;
    QHash<QString, quint64> m_counts;
};

WriteCounts *writeCounts()
{
    static WriteCounts counts;
    return &counts;
}

// Everything is copied: the event loop may end the regions, their catalogue and its processor.
QByteArray contentBytes(const QString &mapVersion, const QList<MapRegion *> &installedRegions,
                        const QString &tileCachePath)
{
    const QString version = mapVersion;
    QList<ContentFile::Region> regions;
    regions.reserve(installedRegions.size());
    for (const MapRegion *region : installedRegions)
        regions.append({region->id(), region->name(), region->fileList()});
    QList<TileTree::Folder> tiles = TileTree::scan(QDir(tileCachePath).absolutePath());
    return ContentFile::write(version, std::move(tiles), std::move(regions));
}

} // namespace

MapCatalogProcessor::MapCatalogProcessor()
    : m_lifetime(std::make_shared<char>())
{ }

MapCatalogProcessor::~MapCatalogProcessor()
{
    m_lifetime.reset();
    deleteRegions(&m_regions);
}

QList<MapRegion *> MapCatalogProcessor::readCatalog(const QString &path)
{
    const std::weak_ptr<char> lifetime = m_lifetime;
    QList<MapRegion *> old;
    old.swap(m_regions);
    deleteRegionsWithPauses(std::move(old));
    if (lifetime.expired())
        return QList<MapRegion *>();

    XmlFileReader xml(path, XmlFileReader::Tolerant);
    CatalogPass pass(m_lifetime);
    if (!xml.open() || !pass.run(xml))
        return QList<MapRegion *>();
    // A call from the event loop may have made some of its own meanwhile; else the list is shared.
    if (m_regions.isEmpty())
        m_regions = pass.regions;
    else
        m_regions += pass.regions;
    return pass.regions;
}

QMap<QString, QString> MapCatalogProcessor::readRegionNames(const QString &regionNameFilePath,
                                                            const QString &contentFilePath) const
{
    QMap<QString, QString> names;
    RegionNameFile::read(regionNameFilePath, readLocalMapVersion(contentFilePath),
                         [&names](const QString &id, const QString &name) {
                             names[id] = name;
                             return true;
                         });
    return names;
}

QStringList MapCatalogProcessor::readRegionFileList(const QString &id,
                                                    const QString &contentFilePath) const
{
    Q_UNUSED(id);
    Q_UNUSED(contentFilePath);
    return QStringList();
}

QStringList MapCatalogProcessor::readLocalContent(const QString &contentFilePath) const
{
    return ContentFile::readIds(contentFilePath);
}

QString MapCatalogProcessor::readLocalMapVersion(const QString &contentFilePath) const
{
    QString version = ContentFile::readMapVersion(contentFilePath);
    version.remove(QLatin1Char('\n'));
    // A line feed that is not written as a character reference arrives as a blank.
    while (version.endsWith(QLatin1Char(' ')))
        version.chop(1);
    QStringList parts = version.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return version;
    for (QString &part : parts) {
        if (part.size() == 1)
            part.prepend(QLatin1Char('0'));
    }
    return parts.join(QLatin1Char('.'));
}

void MapCatalogProcessor::updateLocalContent(const QString &contentFilePath,
                                             const QString &mapVersion,
                                             const QList<MapRegion *> &installedRegions,
                                             const QString &tileCachePath) const
{
    const QString path = contentFilePath; // a copy: the event loop may end the caller's
    const quint64 writtenBefore = writeCounts()->of(path);
    const QByteArray bytes = contentBytes(mapVersion, installedRegions, tileCachePath);

    if (writeCounts()->of(path) != writtenBefore)
        return;
    const quint64 written = writeCounts()->add(path);
    XmlFileWriter::replace(path, bytes, [&] {
        QCoreApplication::processEvents();
        return writeCounts()->of(path) == written;
    });
}

QList<QFileInfo> MapCatalogProcessor::findInstalledTiles(const QDir &tileCacheFolder) const
{
    const QDir root(tileCacheFolder); // a copy, for the same reason
    QList<QFileInfo> tiles;
    const QList<TileTree::Folder> folders = TileTree::scan(root.absolutePath());
    for (const TileTree::Folder &folder : folders) {
        for (const QString &tile : folder.tiles)
            tiles.append(QFileInfo(root.absoluteFilePath(folder.path + QLatin1Char('/') + tile)));
    }
    return tiles;
}

QString MapCatalogProcessor::readLocalMOSVersion(const QString &configFilePath) const
{
    QFile file(configFilePath);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const QByteArray header = file.read(MosVersionBytes);
    QStringList numbers;
    for (int at = 0; at < header.size(); at += int(sizeof(qint32))) {
        // A number that is cut counts as 0.
        const bool isWhole = at + int(sizeof(qint32)) <= header.size();
        const qint32 number = isWhole ? qFromLittleEndian<qint32>(header.constData() + at) : 0;
        numbers.append(QString::number(number));
    }
    return numbers.join(QLatin1Char('.'));
}

void MapCatalogProcessor::updateLocalMOSVersion(const QString &configFilePath,
                                                const QString &version) const
{
    const QStringList parts = version.split(QLatin1Char('.'));
    QFile file(configFilePath);
    if (parts.size() != MosVersionParts || !file.exists() || !file.open(QIODevice::ReadWrite))
        return;
    char header[MosVersionBytes];
    for (int i = 0; i < MosVersionParts; ++i)
        qToLittleEndian<qint32>(parts.at(i).toInt(), header + i * int(sizeof(qint32)));
    // In one call, so that a crash leaves the old header or the new one. A failure is not reported.
    file.write(header, MosVersionBytes);
}
