// SPDX-License-Identifier: MIT
/*
 * Loading the catalogue: all regions are made and named. The peer reads the same bytes with Qt's
 * stream reader and does nothing with them.
 *
 * Each run is a process of its own and tells the time of the work alone; at 5,000 regions the start
 * of a program would hide it.
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

// The regions that were loaded, so that a run that loads none is not fast but wrong.
void load(int expected)
{
    MapCatalog catalog;
    const Stopwatch watch;
    catalog.updateCatalog();
    const QJsonObject figures = watch.figures();
    QQmlListProperty<MapRegion> regions = catalog.availableRegions();
    if (regions.count(&regions) != expected)
        qFatal("%d regions were loaded", int(regions.count(&regions)));
    tell(figures);
}

// The second time, too: then the regions of the first one die, and QML holds some of them.
void show(int expected)
{
    MapCatalog catalog;
    const RegionList list(&catalog);
    LoopWatch watch;
    catalog.updateCatalog();
    catalog.updateCatalog();
    const double longest = watch.longest();
    if (list.count() != expected)
        qFatal("%d regions are shown", list.count());
    tell({{QStringLiteral("longest"), longest}});
}

void work(const QStringList &arguments)
{
    if (arguments.value(0) == QLatin1String("load"))
        load(arguments.value(1).toInt());
    else if (arguments.value(0) == QLatin1String("show"))
        show(arguments.value(1).toInt());
    else
        passOver(arguments.mid(1));
}

Cost loading(int regions)
{
    return measureSelf({QStringLiteral("load"), QString::number(regions)});
}

void writeRegions(const MapData &data, const QList<CatalogRegion> &regions)
{
    data.setContent({});
    writeFile(data.catalogFile(), BenchmarkData::catalogXml(regions));
    writeFile(data.namesFile(), BenchmarkData::regionNamesXml(regions));
}

void compare(BenchmarkRows &rows, const QString &kind, const QList<CatalogRegion> &regions)
{
    const MapData data;
    const int count = BenchmarkData::countOf(regions);
    // All the code has run there, too, but for next to nothing.
    writeRegions(data, {{regions.first().id, regions.first().name}});
    const Cost without = loading(1);

    writeRegions(data, regions);
    const Ratios ratios = comparePairs(
        [&] { return loading(count); },
        [&] {
            return measureSelf({QStringLiteral("pass"), data.catalogFile(), data.namesFile()});
        },
        BenchmarkRows::pairs());

    const QString work =
        QStringLiteral("6: updateCatalog(), %1 %2 regions").arg(QLocale::c().toString(count), kind);
    const QString peer = QStringLiteral("bare pass over both files");
    rows.atMost(work, peer, QStringLiteral("wall"), ratios.wall, 3.0);
    rows.atMost(work, peer, QStringLiteral("CPU"), ratios.cpu, 3.0);
    rows.atMost(work, QStringLiteral("one region alone"), QStringLiteral("memory of a region"),
                double(ratios.ours.memory - without.memory) / (count - 1), 700,
                QStringLiteral("bytes"));
}

// The median of several runs: on a machine at work any of them can be held up for a frame.
void watchTheLoop(BenchmarkRows &rows)
{
    const MapData data;
    const int count = BenchmarkRows::quick() ? 2000 : 20000;
    writeRegions(data, BenchmarkData::syntheticRegions(count));
    QList<double> longest;
    for (int run = 0; run < BenchmarkRows::pairs(); ++run) {
        const Cost cost = measureSelf({QStringLiteral("show"), QString::number(count)});
        longest += cost.told.value(QStringLiteral("longest")).toDouble();
    }
    rows.atMost(QStringLiteral("7: updateCatalog() twice, %1 regions, shown in QML")
                    .arg(QLocale::c().toString(count)),
                QStringLiteral("a frame"), QStringLiteral("longest without the event loop"),
                median(longest), 16, QStringLiteral("ms"));
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
    BenchmarkRows rows(QStringLiteral("catalog"));
    compare(rows, QStringLiteral("real"), BenchmarkData::realRegions());
    const QString synthetic = QStringLiteral("synthetic");
    compare(rows, synthetic, BenchmarkData::syntheticRegions(20000));
    if (!BenchmarkRows::quick())
        compare(rows, synthetic, BenchmarkData::syntheticRegions(200000));
    watchTheLoop(rows);
    return rows.finish();
}
