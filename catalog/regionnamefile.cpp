// SPDX-License-Identifier: MIT
#include "catalog/regionnamefile_p.h"

#include "catalog/xmlnames_p.h"
#include "plugin/xmlfilereader_p.h"

using namespace RegionNameXml;

namespace {

// The name of the one region whose name depends on the edition of the maps.
QString editionName(const QString &mapVersion)
{
    const QString edition = mapVersion.split(QLatin1Char('.')).constLast();
    return edition.size() == 2 ? QStringLiteral("qtn_maps_vexa_taiwan_china")
                               : QStringLiteral("qtn_maps_vexa_taiwan_international");
}

} // namespace

void RegionNameFile::read(const QString &path, const QString &mapVersion, const Visitor &visitor)
{
    XmlFileReader xml(path, XmlFileReader::Tolerant);
    if (!xml.open())
        return;
    const QString taiwan = editionName(mapVersion);
    for (auto step = xml.next(); step != XmlFileReader::Done; step = xml.next()) {
        const bool isNamed = step == XmlFileReader::Start && xml.depth() > 1
            && xml.is(RegionElement) && xml.has(Id) && xml.has(Name);
        if (!isNamed)
            continue;
        const QString id = xml.value(Id);
        // Deliberately never the file's own text; the user interface translates the identifier.
        if (!visitor(id, id == NamedByEdition ? taiwan : xml.value(Name)))
            return;
    }
}
