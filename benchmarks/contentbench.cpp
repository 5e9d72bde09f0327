// SPDX-License-Identifier: MIT
/*
 * Loading what is installed: the content file tells which regions, and each one's tiles. The peer
 * reads the same file with Qt's stream reader and does nothing with it.
 */
#include "benchmarks/benchmarkdata.h"
#include "benchmarks/benchmarkrows.h"
#include "benchmarks/loopwatch.h"
#include "benchmarks/measure.h"
#include "benchmarks/regionlist.h"
#include "benchmarks/xmlpass.h"
#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"

#include <memory>
#include <QLocale>

namespace {

struct Size
{
    int tiles;
    int regions;
    int references; // of each region
};

// A run that loads nothing, or something else, is not fast but wrong.
void loadInstalled(const Size &size)
{
    MapCatalog catalog;
    catalog.loadAvailableRegions();
    const Stopwatch watch;
    catalog.loadInstalledRegions();
    const QJsonObject figures = watch.figures();
    QQmlListProperty<MapRegion> regions = catalog.installedRegions();
    if (regions.count(&regions) != size.regions)
        qFatal("%d regions were loaded", int(regions.count(&regions)));
    for (int i = 0; i < size.regions; ++i) {
        if (regions.at(&regions, i)->fileList().size() != size.references)
            qFatal("region %d has other tiles", i);
    }
    tell(figures);
}

// The second time, too: then the tables of the first one go.
void show()
{
    MapCatalog catalog;
    const RegionList list(&catalog);
    LoopWatch watch;
    catalog.updateCatalog();
    catalog.updateCatalog();
    tell({{QStringLiteral("longest"), watch.longest()}});
}

void readVersion(const QString &path)
{
    const MapCatalogProcessor processor;
    const Stopwatch watch;
    const QString version = processor.readLocalMapVersion(path);
    const QJsonObject figures = watch.figures();
    if (version != QLatin1String("26.11.21.00"))
        qFatal("the version is %s", qPrintable(version));
    tell(figures);
}

void work(const QStringList &arguments)
{
    const QString name = arguments.value(0);
    if (name == QLatin1String("load"))
        loadInstalled({0, arguments.value(1).toInt(), arguments.value(2).toInt()});
    else if (name == QLatin1String("show"))
        show();
    else if (name == QLatin1String("version"))
        readVersion(arguments.value(1));
    else
        passOver(arguments.mid(1));
}

// The median of several runs: on a machine at work any of them can be held up for a frame.
void watchTheLoop(BenchmarkRows &rows, const QString &tiles)
{
    QList<double> longest;
    for (int run = 0; run < BenchmarkRows::pairs(); ++run) {
        const Cost cost = measureSelf({QStringLiteral("show")});
        longest += cost.told.value(QStringLiteral("longest")).toDouble();
    }
    rows.atMost(QStringLiteral("7: load content.xml twice, %1 tiles, shown in QML").arg(tiles),
                QStringLiteral("a frame"), QStringLiteral("longest without the event loop"),
                median(longest), 16, QStringLiteral("ms"));
}

void compare(BenchmarkRows &rows, const Size &size)
{
    const MapData data;
    const QList<CatalogRegion> regions = BenchmarkData::syntheticRegions(size.regions);
    const TileWorld world(size.tiles, size.regions, size.references);
    const QByteArray version("26.11.21.00");
    writeFile(data.catalogFile(version.constData()), BenchmarkData::catalogXml(regions));
    writeFile(data.contentFile(), world.contentXml(version, BenchmarkData::idsOf(regions)));

    const auto pass = [&] { return measureSelf({QStringLiteral("pass"), data.contentFile()}); };
    const Ratios loading = comparePairs(
        [&] {
            return measureSelf({QStringLiteral("load"), QString::number(size.regions),
                                QString::number(size.references)});
        },
        pass, BenchmarkRows::pairs());
    const QLocale c = QLocale::c();
    const QString work =
        QStringLiteral("8: load content.xml, %1 tiles, %2 regions of %3")
            .arg(c.toString(size.tiles), c.toString(size.regions), c.toString(size.references));
    const QString peer = QStringLiteral("bare pass over the file");
    rows.atMost(work, peer, QStringLiteral("wall"), loading.wall, 2.2);
    rows.atMost(work, peer, QStringLiteral("CPU"), loading.cpu, 2.2);
    rows.atMost(work, QStringLiteral("-"), QStringLiteral("memory of the whole program"),
                double(loading.ours.memory) / 1024 / 1024, 60, QStringLiteral("MiB"));

    const Ratios alone = comparePairs(
        [&] {
            return measureSelf({QStringLiteral("version"), data.contentFile()});
        },
        pass, BenchmarkRows::pairs());
    const QString versionAlone = QStringLiteral("8: the version of that file alone");
    rows.atMost(versionAlone, peer, QStringLiteral("wall"), alone.wall, 0.01);
    rows.atMost(versionAlone, peer, QStringLiteral("CPU"), alone.cpu, 0.01);
    watchTheLoop(rows, c.toString(size.tiles));
}

} // namespace

int main(int count, char *words[])
{
    const auto application = makeApplication(count, words);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--work")) {
        work(arguments.mid(2));
        return 0;
    }
    BenchmarkRows rows(QStringLiteral("content"));
    compare(rows, BenchmarkRows::quick() ? Size {2000, 20, 300} : Size {100000, 500, 1000});
    return rows.finish();
}
