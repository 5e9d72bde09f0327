// SPDX-License-Identifier: MIT
#ifndef VEXA_XMLNAMES_P_H
#define VEXA_XMLNAMES_P_H

#include <QLatin1String>

/** Elements and attributes of "catalog-VERSION.xml". */
namespace CatalogXml {

const QLatin1String FileElement("File"); // a region; those in it lie in it
const QLatin1String Description("Description");
const QLatin1String Id("Id");
const QLatin1String ZipFileSize("ZipFileSize");
const QLatin1String Link("Link");

} // namespace CatalogXml

/** Those of "regionname-lang-CODE.xml". */
namespace RegionNameXml {

const QLatin1String RegionElement("region");
const QLatin1String Id("id");
const QLatin1String Name("name");
/** The id of the region whose name depends on the maps' edition and never on the file. */
const QLatin1String NamedByEdition("411");

} // namespace RegionNameXml

/** Those of "content.xml"; a tile's element may have any name. */
namespace ContentXml {

const QLatin1String Directory("directory");
const QLatin1String MapVersion("map-version");
const QLatin1String DiskCache("diskcache");
const QLatin1String Regions("regions");
const QLatin1String RegionElement("region");
const QLatin1String Id("id");
const QLatin1String Name("name");
const QLatin1String Path("path");

} // namespace ContentXml

#endif
