// SPDX-License-Identifier: MIT
#include "host/ui/demodata.h"

#include "catalog/mapcatalog.h"
#include "plugin/dataroot.h"
#include <iterator>
#include <QDir>
#include <QFile>
#include <QXmlStreamWriter>

namespace {

constexpr qint64 MB = 1000 * 1000;

struct DemoRegion
{
    const char *id;
    const char *parent;
    const char *name;
    qint64 size;
};

const DemoRegion Regions[] = {
    {"EU", "", "Europe", 0},
    {"AX", "EU", "Åland Islands", 2 * MB},
    {"AT", "EU", "Austria", 143 * MB},
    {"DK", "EU", "Denmark", 61 * MB},
    {"EE", "EU", "Estonia", 38 * MB},
    {"FI", "EU", "Finland", 212 * MB},
    {"FR", "EU", "France", 684 * MB},
    {"DE", "EU", "Germany", 911 * MB},
    {"DE-BW", "DE", "Baden-Württemberg", 121 * MB},
    {"DE-BY", "DE", "Bavaria", 174 * MB},
    {"DE-BE", "DE", "Berlin", 19 * MB},
    {"DE-MV", "DE", "Mecklenburg-Western Pomerania", 52 * MB},
    {"NO", "EU", "Norway", 249 * MB},
    {"SE", "EU", "Sweden", 267 * MB},
    {"AM", "", "Americas", 0},
    {"BR", "AM", "Brazil", 522 * MB},
    {"VC", "AM", "Saint Vincent and the Grenadines", 1 * MB},
    {"GS", "AM", "South Georgia and the South Sandwich Islands", 640 * 1000},
    {"JP", "", "Japan", 498 * MB},
};

const char *const Installed[] = {"FI", "DK", "DE-BE"};

void writeRegion(QXmlStreamWriter &xml, const DemoRegion &region)
{
    xml.writeStartElement(QStringLiteral("File"));
    xml.writeAttribute(QStringLiteral("Id"), QLatin1String(region.id));
    xml.writeAttribute(QStringLiteral("Description"), QString::fromUtf8(region.name));
    // The readers want all four, also of a region that is only there for those inside it.
    const QString link = QStringLiteral("archives/%1.zip").arg(QLatin1String(region.id));
    xml.writeAttribute(QStringLiteral("ZipFileSize"), QString::number(region.size));
    xml.writeAttribute(QStringLiteral("Link"), region.size > 0 ? link : QString());
    for (const DemoRegion &child : Regions) {
        if (qstrcmp(child.parent, region.id) == 0)
            writeRegion(xml, child);
    }
    xml.writeEndElement();
}

bool writeCatalog(const QString &path, int extraRegions)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QXmlStreamWriter xml(&file);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("Catalog"));
    for (const DemoRegion &region : Regions) {
        if (*region.parent == '\0')
            writeRegion(xml, region);
    }
    for (int i = 0; i < extraRegions; ++i) {
        const QByteArray id = "X" + QByteArray::number(i);
        const QByteArray name = "Region " + QByteArray::number(i);
        writeRegion(xml, {id.constData(), "", name.constData(), (i % 300 + 1) * MB});
    }
    xml.writeEndDocument();
    return file.flush() && !xml.hasError();
}

bool writeNames(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write("<regions></regions>\n") > 0;
}

// Neighbours have one tile in common, so that a removal has something to keep.
bool install(MapCatalog &catalog, const QString &id)
{
    const QString folder = DataRoot::tileCacheFolder() + QLatin1Char('/');
    const QStringList tiles {QStringLiteral("a/%1/1.cdt").arg(id),
                             QStringLiteral("a/%1/2.cdt").arg(id), QStringLiteral("a/common.cdt")};
    for (const QString &tile : tiles) {
        QDir().mkpath(QFileInfo(folder + tile).path());
        QFile file(folder + tile);
        if (!file.open(QIODevice::WriteOnly) || !file.resize(2 * MB + id.size() * 100000))
            return false;
    }
    catalog.addInstalledRegion(id, tiles);
    return true;
}

} // namespace

int DemoData::regionCount()
{
    return int(std::size(Regions));
}

bool DemoData::create(int extraRegions)
{
    const QString folder = DataRoot::catalogFolder() + QLatin1Char('/');
    if (!QDir().mkpath(folder) || !QDir().mkpath(DataRoot::tileCacheFolder()))
        return false;
    MapCatalog catalog;
    const QString names =
        folder + QStringLiteral("regionname-lang-%1.xml").arg(catalog.getDigitCode());
    if (!writeNames(names)
        || !writeCatalog(folder + QStringLiteral("catalog-%1.xml").arg(QLatin1String(Version)),
                         extraRegions))
        return false;
    catalog.setInstalledMapsVersion(QLatin1String(Version));
    catalog.updateLocalContentFile();
    catalog.updateCatalog();
    for (const char *id : Installed) {
        if (!install(catalog, QLatin1String(id)))
            return false;
    }
    return true;
}
