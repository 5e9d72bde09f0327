// SPDX-License-Identifier: MIT
// The reading half of contentfile_p.h.
#include "catalog/contentfile_p.h"

#include "plugin/xmlfilereader_p.h"
#include <QSet>

namespace {

const QLatin1String Directory("directory");
const QLatin1String MapVersion("map-version");
const QLatin1String DiskCache("diskcache");
const QLatin1String Regions("regions");
const QLatin1String RegionElement("region");
const QLatin1String Tile("TI");
const QLatin1String Id("id");
const QLatin1String Name("name");
const QLatin1String Path("path");

struct ListedTile
{
    QString name;
    QString path; // empty if the file has none
};
using ListedTiles = QHash<QString, QList<ListedTile>>; // by plain id

// Calls the function for every child element of the one that has just begun.
template <typename Function> void forEachChild(XmlFileReader &xml, Function function)
{
    const int level = xml.depth();
    for (auto step = xml.next(); step != XmlFileReader::Done; step = xml.next()) {
        if (xml.depth() < level)
            return; // the element itself has ended
        if (step == XmlFileReader::Start && xml.depth() == level + 1)
            function();
    }
}

void readTiles(XmlFileReader &xml, QHash<QString, QString> *paths)
{
    forEachChild(xml, [&] { paths->insert(xml.value(Name), xml.value(Path)); });
}

void readRegions(XmlFileReader &xml, ListedTiles *tiles)
{
    forEachChild(xml, [&] {
        QList<ListedTile> &list = (*tiles)[xml.value(Id).mid(1)];
        forEachChild(xml, [&] { list.append({xml.value(Name), xml.value(Path)}); });
    });
}

} // namespace

QStringList ContentFile::readIds(const QString &path)
{
    XmlFileReader xml(path, XmlFileReader::Strict);
    if (!xml.open())
        return QStringList();

    QStringList ids;
    QSet<QString> seen;
    if (xml.next() == XmlFileReader::Start && xml.is(Directory)) {
        forEachChild(xml, [&] {
            if (!xml.is(Regions))
                return;
            forEachChild(xml, [&] {
                if (!xml.is(RegionElement) || !xml.has(Id))
                    return;
                const QString id = xml.value(Id).mid(1);
                if (!seen.contains(id)) {
                    seen.insert(id);
                    ids.append(id);
                }
            });
        });
    }
    while (xml.next() != XmlFileReader::Done) { }
    return xml.wellFormed() ? ids : QStringList();
}

QString ContentFile::readMapVersion(const QString &path)
{
    XmlFileReader xml(path, XmlFileReader::Strict);
    if (!xml.open())
        return QString();

    QString version;
    if (xml.next() == XmlFileReader::Start && xml.is(Directory))
        version = xml.value(MapVersion);
    while (xml.next() != XmlFileReader::Done) { }
    return xml.wellFormed() ? version : QString();
}

ContentFile::Tables ContentFile::readTables(const QString &path)
{
    XmlFileReader xml(path, XmlFileReader::Strict);
    if (!xml.open() || xml.next() != XmlFileReader::Start)
        return Tables();

    Tables tables;
    ListedTiles listed;
    forEachChild(xml, [&] {
        if (xml.is(DiskCache))
            readTiles(xml, &tables.tilePaths);
        else if (xml.is(Regions))
            readRegions(xml, &listed);
    });
    while (xml.next() != XmlFileReader::Done) { }
    if (!xml.wellFormed())
        return Tables();

    for (auto region = listed.cbegin(); region != listed.cend(); ++region) {
        QStringList &names = tables.regionTileNames[region.key()];
        QStringList &paths = tables.regionTilePaths[region.key()];
        for (const ListedTile &tile : region.value()) {
            names.append(tile.name);
            // Files of older versions have no paths there; the name leads to one only by luck.
            paths.append(tile.path.isEmpty() ? tables.tilePaths.value(tile.name) : tile.path);
        }
    }
    return tables;
}
