// SPDX-License-Identifier: MIT
#include "host/shared/hosttypes.h"

#include "catalog/mapcatalog.h"
#include "download/downloadmanageriface.h"
#include "host/shared/networkbinding.h"
#include "host/shared/networkstate.h"
#include "host/shared/regionfiltermodel.h"
#include "host/shared/regioninstaller.h"
#include "host/shared/regionmodel.h"
#include "host/shared/removalpreview.h"
#include "host/shared/words.h"
#include <QQmlEngine>

namespace {

constexpr int Major = 1;
constexpr int Minor = 0;

template <typename Type> void registerUncreatable(const char *uri, const char *name)
{
    qmlRegisterUncreatableType<Type>(uri, Major, Minor, name,
                                     QStringLiteral("The program makes it and hands it over."));
}

QObject *makeWords(QQmlEngine *, QJSEngine *)
{
    return new Words; // the engine's from now on
}

} // namespace

void registerHostTypes(const char *uri)
{
    registerUncreatable<MapCatalog>(uri, "MapCatalog");
    registerUncreatable<DownloadManagerIface>(uri, "DownloadManagerIface");
    registerUncreatable<RegionInstaller>(uri, "RegionInstaller");
    registerUncreatable<RegionModel>(uri, "RegionModel");
    registerUncreatable<NetworkState>(uri, "NetworkState");
    registerUncreatable<NetworkBinding>(uri, "NetworkBinding");
    qmlRegisterType<RegionFilterModel>(uri, Major, Minor, "RegionFilterModel");
    qmlRegisterType<RemovalPreview>(uri, Major, Minor, "RemovalPreview");
    qmlRegisterSingletonType<Words>(uri, Major, Minor, "Words", makeWords);
}
