// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarkdata.h"

#include "catalog/isocodes.h"
#include "catalog/mapdata.h"
#include <algorithm>
#include <numeric>
#include <QDir>
#include <QHash>

namespace {

constexpr int Branches = 20;

using Below = QHash<QByteArray, QList<CatalogRegion>>; // by the id of what they belong to

void nest(CatalogRegion *region, const Below &below)
{
    region->children = below.value(region->id);
    for (CatalogRegion &child : region->children)
        nest(&child, below);
}

// As long and as varied as real ones; the same for the same number.
QByteArray madeUpName(quint32 number)
{
    static const char *const Syllables[] = {"an", "ber", "cor", "dal",  "el", "fjor", "gra", "hol",
                                            "is", "kar", "lin", "mont", "ni", "os",   "pe",  "ria",
                                            "sa", "tor", "ulm", "vest", "wi", "yar",  "zeb", "å"};
    constexpr quint32 Count = sizeof(Syllables) / sizeof(Syllables[0]);
    QByteArray name;
    quint32 random = number * 2654435761U;
    const int length = 4 + int(random >> 30);
    for (int i = 0; i < length; ++i) {
        name += Syllables[(random >> 16) % Count];
        random = random * 1664525U + 1013904223U;
    }
    return name;
}

// Up to "count" regions of this depth's kind, their children before the next of them.
QList<CatalogRegion> madeUpRegions(int depth, const QByteArray &prefix, int *count)
{
    QList<CatalogRegion> regions;
    for (int i = 0; *count > 0 && (depth == 0 || i < Branches); ++i) {
        CatalogRegion region;
        region.id = prefix + QByteArray::number(i + 1);
        region.name = madeUpName(quint32(--*count));
        if (depth < 2)
            region.children = madeUpRegions(depth + 1, region.id + '-', count);
        regions.append(region);
    }
    return regions;
}

QByteArray escaped(const QByteArray &value)
{
    return QString::fromUtf8(value).toHtmlEscaped().toUtf8();
}

// Of a realistic length; qHash() differs between the versions of Qt.
quint32 archiveBytes(const QByteArray &id)
{
    return std::accumulate(id.cbegin(), id.cend(), 1000000U,
                           [](quint32 sum, char c) { return (sum * 31 + uchar(c)) % 90000000U; });
}

void appendElements(const QList<CatalogRegion> &regions, int level, QByteArray *xml)
{
    const QByteArray indent(level, ' ');
    for (const CatalogRegion &region : regions) {
        const QByteArray bytes = QByteArray::number(archiveBytes(region.id));
        *xml += indent + "<File Id=\"" + region.id + "\" Description=\"" + escaped(region.name)
            + "\" ZipFileSize=\"" + bytes + "\" Link=\"archives/26.11.21.00/" + region.id
            + ".zip\"";
        if (region.children.isEmpty()) {
            *xml += " />\n";
            continue;
        }
        *xml += ">\n";
        appendElements(region.children, level + 1, xml);
        *xml += indent + "</File>\n";
    }
}

void appendNames(const QList<CatalogRegion> &regions, int *count, QByteArray *xml)
{
    for (const CatalogRegion &region : regions) {
        // Of real names half are the same in the user's language.
        const QByteArray name = ++*count % 2 ? region.name : madeUpName(quint32(*count));
        *xml += " <region id=\"" + region.id + "\" name=\"" + escaped(name) + "\" />\n";
        appendNames(region.children, count, xml);
    }
}

} // namespace

QList<CatalogRegion> BenchmarkData::realRegions()
{
    Below below;
    const QJsonArray parts = IsoCodes::entries("3166-2");
    for (const QJsonValue &entry : parts) {
        const QByteArray id = IsoCodes::field(entry, "code");
        const QByteArray country = id.left(2);
        QByteArray parent = IsoCodes::field(entry, "parent");
        if (parent.isEmpty())
            parent = country;
        else if (!parent.contains('-'))
            parent.prepend(country + '-'); // most entries name only the second half
        below[parent].append({id, IsoCodes::field(entry, "name")});
    }
    QList<CatalogRegion> countries;
    const QJsonArray names = IsoCodes::entries("3166-1");
    for (const QJsonValue &entry : names) {
        countries.append({IsoCodes::field(entry, "alpha_2"), IsoCodes::field(entry, "name")});
        nest(&countries.last(), below);
    }
    return countries;
}

QList<CatalogRegion> BenchmarkData::syntheticRegions(int count)
{
    return madeUpRegions(0, "R", &count);
}

int BenchmarkData::countOf(const QList<CatalogRegion> &regions)
{
    return std::accumulate(
        regions.cbegin(), regions.cend(), int(regions.size()),
        [](int sum, const CatalogRegion &region) { return sum + countOf(region.children); });
}

QList<QByteArray> BenchmarkData::idsOf(const QList<CatalogRegion> &regions)
{
    QList<QByteArray> ids;
    for (const CatalogRegion &region : regions)
        ids += QList<QByteArray> {region.id} + idsOf(region.children);
    return ids;
}

QByteArray BenchmarkData::catalogXml(const QList<CatalogRegion> &regions)
{
    QByteArray xml("<?xml version='1.0' encoding='utf-8'?>\n<Catalog Version=\"26.11.21.00\">\n");
    appendElements(regions, 1, &xml);
    return xml + "</Catalog>\n";
}

QByteArray BenchmarkData::regionNamesXml(const QList<CatalogRegion> &regions)
{
    QByteArray xml("<?xml version='1.0' encoding='utf-8'?>\n<regions language=\"en_GB\">\n");
    int count = 0;
    appendNames(regions, &count, &xml);
    return xml + "</regions>\n";
}

TileWorld::TileWorld(int tiles, int regions, int references, int sharedPercent)
    : m_regions(regions)
    , m_own(references - references * sharedPercent / 100)
    , m_shared(references - m_own)
{
    if (tiles < regions * m_own + m_shared)
        qFatal("There are not enough tiles for the regions' own ones.");
    QList<QPair<QString, int>> numbered;
    numbered.reserve(tiles);
    for (int number = 0; number < tiles; ++number) {
        // An odd factor gives each number another name, spread over all 256 folders.
        const QString name =
            QStringLiteral("%1").arg(quint32(number) * 2654435761U, 8, 16, QLatin1Char('0'));
        numbered.append({name.left(1) + QLatin1Char('/') + name.mid(1, 1) + QLatin1Char('/') + name
                             + QLatin1String(".cdt"),
                         number});
    }
    std::sort(numbered.begin(), numbered.end());
    for (int number = 0; number < tiles; ++number)
        m_places.append(0);
    for (const auto &tile : numbered) {
        m_places[tile.second] = int(m_tiles.size());
        m_tiles.append(tile.first);
    }
}

QStringList TileWorld::fileList(int region) const
{
    const int firstShared = m_regions * m_own;
    const int shared = int(m_tiles.size()) - firstShared;
    const int start = int(qint64(region) * shared / m_regions);
    QList<int> places;
    places.reserve(m_own + m_shared);
    for (int i = 0; i < m_own; ++i)
        places.append(m_places.at(region * m_own + i));
    for (int i = 0; i < m_shared; ++i)
        places.append(m_places.at(firstShared + (start + i) % shared));
    std::sort(places.begin(), places.end());
    QStringList files;
    files.reserve(places.size());
    for (const int place : places)
        files.append(m_tiles.at(place));
    return files;
}

QByteArray TileWorld::contentXml(const QByteArray &mapsVersion, const QList<QByteArray> &ids) const
{
    QByteArray xml("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<directory map-version=\""
                   + mapsVersion + "\">\n <diskcache>\n");
    const auto path = [](const QString &tile) { return '\\' + tile.toLatin1().replace('/', '\\'); };
    for (const QString &tile : m_tiles) {
        const QByteArray name = tile.mid(4, 8).toLatin1();
        xml += "  <TI name=\"" + name + "\" path=\"" + path(tile) + "\"/>\n";
    }
    xml += " </diskcache>\n <regions>\n";
    for (int region = 0; region < m_regions; ++region) {
        xml += "  <region id=\"1" + ids.at(region) + "\" name=\"Region " + ids.at(region) + "\">\n";
        const QStringList files = fileList(region);
        for (const QString &tile : files) {
            const char lastOfName = char(tile.at(11).unicode());
            xml += "   <TI name=\"";
            xml += lastOfName;
            xml += "\" path=\"" + path(tile) + "\"/>\n";
        }
        xml += "  </region>\n";
    }
    return xml + " </regions>\n</directory>\n";
}

void TileWorld::makeTree(const QString &folder, int bytesPerTile) const
{
    const QString digits = QStringLiteral("0123456789abcdef");
    for (const QChar first : digits) {
        for (const QChar second : digits)
            QDir(folder).mkpath(QString(first) + QLatin1Char('/') + second);
    }
    const QByteArray bytes(bytesPerTile, 't');
    for (const QString &tile : m_tiles) {
        QFile file(folder + QLatin1Char('/') + tile);
        if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
    }
}
