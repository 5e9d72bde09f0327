// SPDX-License-Identifier: MIT
#pragma once

/**
 * Makes the shared classes known to QML, as the module with this name ("VexaHost"), version 1.0:
 * RegionFilterModel and RemovalPreview, which QML makes itself; the singleton Words; and
 * MapCatalog, DownloadManagerIface, RegionInstaller, RegionModel, NetworkState and NetworkBinding
 * as types of properties, which the program makes and hands over. Once for each name, before the
 * engine loads; not with the name "Vexa", which is the plugin's.
 */
void registerHostTypes(const char *uri);
