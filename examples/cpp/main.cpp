// SPDX-License-Identifier: MIT
// A host without QML: lists the map regions, or installs one of them.
#include <cstdio>
#include <QCoreApplication>
#include <vexa/downloadmanageriface.h>
#include <vexa/mapcatalog.h>
#include <vexa/mapregion.h>
#include <vexa/request.h> // the engine's steps
#include <vexa/worker.h>

namespace {

void listRegions(MapCatalog &catalog)
{
    QQmlListProperty<MapRegion> regions = catalog.availableRegions();
    for (int i = 0; i < regions.count(&regions); ++i) {
        const MapRegion *region = regions.at(&regions, i);
        std::printf("%s %s (%s)\n", region->installed() ? "*" : "-", qPrintable(region->name()),
                    qPrintable(region->id()));
    }
}

/** Returns the program's status. */
int installRegion(MapCatalog &catalog, const MapRegion &region, const QString &baseUri)
{
    Worker worker; // the thread in which downloads run
    DownloadManagerIface *downloads = worker.getDownloadManagerIface();
    QObject::connect(&worker, &Worker::engineReady, downloads, [&] {
        downloads->setHasWiFi(true); // what the platform says
        downloads->allowGoOnline(true); // nothing is fetched before both
        downloads->download(region.id(), baseUri + region.downloadUrl(),
                            catalog.mapBaseDirectory() + QLatin1String("/diskcache/"), true);
    });
    QObject::connect(
        downloads, &DownloadManagerIface::progress, &catalog,
        [](int operation, const QString &, const QString &id, qint64 bytes, qint64 total) {
            if (operation == DownloadRequest)
                std::printf("%s: %lld of %lld bytes\n", qPrintable(id), qlonglong(bytes),
                            qlonglong(total));
        });
    QObject::connect(downloads, &DownloadManagerIface::finished, &catalog,
                     [&](int operation, const QString &, const QString &id) {
                         if (operation != MoveRequest)
                             return;
                         // Also a region that an earlier run left in the queue.
                         catalog.addInstalledRegion(id, downloads->getUnpackedFileList());
                         if (id == region.id())
                             QCoreApplication::quit();
                     });
    QObject::connect(downloads, &DownloadManagerIface::error, &catalog,
                     [&](int operation, const QString &id, int error, const QString &url) {
                         std::fprintf(stderr, "%s: step %d failed with code %d\n", qPrintable(id),
                                      operation, error);
                         downloads->cancel(url); // the steps behind it would run all the same
                         if (id == region.id())
                             QCoreApplication::exit(1);
                     });
    worker.start();

    const int status = QCoreApplication::exec();
    downloads->prepareToDestroy();
    worker.stop();
    worker.wait();
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 1 && arguments.size() != 3) {
        std::fprintf(stderr, "Usage: install-region [BASE_URI REGION]\n");
        return 2;
    }

    MapCatalog catalog;
    catalog.updateCatalog();
    if (arguments.size() == 3) {
        const MapRegion *region = catalog.region(arguments.at(2));
        if (!region) {
            std::fprintf(stderr, "There is no region %s.\n", qPrintable(arguments.at(2)));
            return 1;
        }
        const int status = installRegion(catalog, *region, arguments.at(1));
        if (status != 0)
            return status;
    }
    listRegions(catalog);
    return 0;
}
