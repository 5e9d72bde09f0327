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
#include "benchmarks/measure.h"
#include "benchmarks/xmlpass.h"
#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"

#include <QCoreApplication>
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

void work(const QStringList &arguments)
{
    if (arguments.value(0) == QLatin1String("load"))
        load(arguments.value(1).toInt());
    else
        passOver(arguments.mid(1));
}

Cost loading(int regions)
{
    return measureSelf({QStringLiteral("load"), QString::number(regions)});
}

void compare(BenchmarkRows &rows, const QString &kind, const QList<CatalogRegion> &regions)
{
    const MapData data;
    const int count = BenchmarkData::countOf(regions);
    data.setContent({});
    data.setCatalog({});
    const Cost without = loading(0);

    writeFile(data.catalogFile(), BenchmarkData::catalogXml(regions));
    writeFile(data.namesFile(), BenchmarkData::regionNamesXml(regions));
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
    rows.atMost(work, QStringLiteral("no region"), QStringLiteral("memory of a region"),
                double(ratios.ours.memory - without.memory) / count, 700, QStringLiteral("bytes"));
}

} // namespace

int main(int count, char *words[])
{
    const QCoreApplication application(count, words);
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
    return rows.finish();
}
