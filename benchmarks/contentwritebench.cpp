// SPDX-License-Identifier: MIT
/*
 * Writing the content file, the look at all tiles included, and deleting a region.
 *
 * The peer of the writing is a plain C program: it has find look for the tiles and prints the same
 * lines, into a file beside the old one that is on the disk before it takes its place, as ours. The
 * peer of a deletion removes the same files with rm and writes the same content file by our own
 * means, so that the figure is the price of finding out which files may go.
 *
 * Each run is a process of its own that loads the catalogue first and tells the time of the work
 * alone.
 */
#include "benchmarks/benchmarkdata.h"
#include "benchmarks/benchmarkrows.h"
#include "benchmarks/loopwatch.h"
#include "benchmarks/measure.h"
#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QProcess>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSet>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

struct Size
{
    int regions;
    int references; // of each region
    int tiles;
};

/** Data folders with a world of tiles, all regions installed. One of them is to be deleted. */
class World
{
public:
    explicit World(const Size &size)
        : m_tiles(size.tiles, size.regions, size.references)
        , m_victim(size.regions / 2)
        , m_ids(BenchmarkData::idsOf(BenchmarkData::syntheticRegions(size.regions)))
        , m_content(m_tiles.contentXml("1.2", m_ids))
    {
        writeFile(m_data.catalogFile(),
                  BenchmarkData::catalogXml(BenchmarkData::syntheticRegions(size.regions)));
        m_tiles.makeTree(m_data.tileFolder());
        findOwnTiles();
        restore();
    }

    QString victim() const { return QString::fromUtf8(m_ids.at(m_victim)); }
    QByteArray content() const { return readFile(m_data.contentFile()); }
    int tilesOnDisk() const
    {
        return int(MapCatalogProcessor().findInstalledTiles(QDir(m_data.tileFolder())).size());
    }
    // The paths of what only the victim lists, one a line.
    QString ownTilesFile() const { return m_data.citiesFolder() + QLatin1String("/own"); }

    // What a deletion takes away is there again.
    void restore() const
    {
        writeFile(m_data.contentFile(), m_content);
        for (const QString &tile : m_ownTiles)
            writeFile(tile, QByteArray());
    }

    // Its files are there, but it is not listed any more.
    void forgetVictim() const
    {
        const auto begin = m_content.indexOf("  <region id=\"1" + m_ids.at(m_victim) + '"');
        const QByteArray endTag("  </region>\n");
        const auto end = m_content.indexOf(endTag, begin) + endTag.size();
        writeFile(m_data.contentFile(), m_content.left(begin) + m_content.mid(end));
    }

private:
    void findOwnTiles()
    {
        const QStringList tiles = m_tiles.fileList(m_victim);
        QSet<QString> own(tiles.cbegin(), tiles.cend());
        for (int region = 0; region < m_tiles.regions(); ++region) {
            const QStringList others =
                region == m_victim ? QStringList() : m_tiles.fileList(region);
            for (const QString &tile : others)
                own.remove(tile);
        }
        for (const QString &tile : std::as_const(own))
            m_ownTiles.append(m_data.tileFolder() + QLatin1Char('/') + tile);
        writeFile(ownTilesFile(), m_ownTiles.join(QLatin1Char('\n')).toUtf8());
    }

    const MapData m_data;
    const TileWorld m_tiles;
    const int m_victim;
    const QList<QByteArray> m_ids;
    const QByteArray m_content;
    QStringList m_ownTiles;
};

/** The catalogue as an app has it once it has started. */
class LoadedCatalog : public MapCatalog
{
public:
    LoadedCatalog() { updateCatalog(); }

    QList<const MapRegion *> installed()
    {
        QList<const MapRegion *> regions;
        QQmlListProperty<MapRegion> list = installedRegions();
        for (int i = 0; i < int(list.count(&list)); ++i)
            regions.append(list.at(&list, i));
        return regions;
    }
    QString contentFile() const { return tessarinDirectory() + QLatin1String("/content.xml"); }
    QString tileFolder() const { return mapBaseDirectory() + QLatin1String("/diskcache"); }
};

// The time since the watch was made, with that of the programs that were started meanwhile.
QJsonObject withChildren(const Stopwatch &watch)
{
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    QJsonObject figures = watch.figures();
    const QString key = QStringLiteral("cpu");
    figures[key] = figures.value(key).toDouble()
        + double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec)
        + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
    return figures;
}

void write()
{
    LoadedCatalog catalog;
    const Stopwatch watch;
    catalog.updateLocalContentFile();
    tell(watch.figures());
}

/** What the peer prints of a region: texts as C has them, ready before the clock starts. */
struct PlainRegion
{
    QByteArray id;
    QByteArray name;
    std::vector<std::pair<QByteArray, QByteArray>> tiles; // name and path
};

std::vector<PlainRegion> plainRegions(const QList<const MapRegion *> &regions)
{
    std::vector<PlainRegion> plain;
    for (const MapRegion *region : regions) {
        plain.push_back({region->id().toUtf8(), region->name().toUtf8(), {}});
        const QStringList entries = region->fileList();
        for (const QString &entry : entries)
            plain.back().tiles.push_back({entry.toUtf8().mid(entry.size() - 5, 1), entry.toUtf8()});
    }
    return plain;
}

void printTiles(FILE *file, const QByteArray &folder)
{
    const QByteArray command =
        "find '" + folder + "' -mindepth 3 -maxdepth 3 -type f -name '*.cdt'";
    FILE *found = popen(command.constData(), "r");
    char line[4096];
    while (found && std::fgets(line, sizeof line, found)) {
        line[std::strcspn(line, "\n")] = '\0';
        char *path = line + folder.size();
        for (char *c = path; *c != '\0'; ++c)
            *c = *c == '/' ? '\\' : *c;
        const char *name = std::strrchr(path, '\\') + 1;
        std::fprintf(file, "  <TI name=\"%.*s\" path=\"%s\"/>\n", int(std::strcspn(name, ".")),
                     name, path);
    }
    if (!found || pclose(found) != 0)
        qFatal("find has failed");
}

void print(FILE *file, const QByteArray &folder, const std::vector<PlainRegion> &regions)
{
    std::fprintf(file,
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<directory map-version=\"%s\">\n"
                 " <diskcache>\n",
                 "1.2");
    printTiles(file, folder);
    std::fprintf(file, " </diskcache>\n <regions>\n");
    for (const PlainRegion &region : regions) {
        std::fprintf(file, "  <region id=\"1%s\" name=\"%s\">\n", region.id.constData(),
                     region.name.constData());
        for (const auto &tile : region.tiles)
            std::fprintf(file, "   <TI name=\"%s\" path=\"%s\"/>\n", tile.first.constData(),
                         tile.second.constData());
        std::fprintf(file, "  </region>\n");
    }
    std::fprintf(file, " </regions>\n</directory>\n");
}

void findAndPrint()
{
    LoadedCatalog catalog;
    const std::vector<PlainRegion> regions = plainRegions(catalog.installed());
    const QByteArray folder = catalog.tileFolder().toUtf8();
    const QByteArray path = catalog.contentFile().toUtf8();
    const QByteArray beside = path + ".new";
    const Stopwatch watch;
    FILE *file = std::fopen(beside.constData(), "w");
    if (!file)
        qFatal("cannot write %s", beside.constData());
    print(file, folder, regions);
    if (std::fflush(file) != 0 || fdatasync(fileno(file)) != 0 || std::fclose(file) != 0
        || std::rename(beside.constData(), path.constData()) != 0)
        qFatal("cannot save %s", path.constData());
    tell(withChildren(watch));
}

// Also tells how much time it took until the region was not installed any more, which is when the
// writing begins.
void remove(const QString &id)
{
    LoadedCatalog catalog;
    const QByteArray file = catalog.contentFile().toUtf8();
    double search = 0;
    const Stopwatch watch;
    QObject::connect(catalog.region(id), &MapRegion::installedChanged, &catalog,
                     [&] { search = watch.figures().value(QStringLiteral("cpu")).toDouble(); });
    catalog.deleteInstalledRegion(id);
    QJsonObject figures = watch.figures();
    figures.insert(QStringLiteral("search"), search);
    tell(figures);
}

// The catalogue does not have the region any more; only its files are still there.
void removePlainly(const QString &listFile)
{
    LoadedCatalog catalog;
    const QStringList files = QString::fromUtf8(readFile(listFile)).split(QLatin1Char('\n'));
    const Stopwatch watch;
    if (QProcess::execute(QStringLiteral("rm"), files) != 0)
        qFatal("rm has failed");
    catalog.updateLocalContentFile();
    tell(withChildren(watch));
}

// A page that shows all regions and how many of them are installed.
const char Page[] = R"(
import QtQml 2.15
import QtQml.Models 2.15
Instantiator {
    model: catalog.availableRegions
    property int installed: catalog.installedRegions.length
    delegate: QtObject {
        property string line: modelData.name + (modelData.installed ? modelData.fileList.length : "")
    }
})";

// id: of the region to delete, or empty for writing alone.
void measureStretch(const QString &id)
{
    LoadedCatalog catalog;
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("catalog"), &catalog);
    QQmlComponent component(&engine);
    component.setData(Page, QUrl());
    const std::unique_ptr<QObject> page(component.create());
    if (!page || page->property("count").toInt() == 0)
        qFatal("no page: %s", qPrintable(component.errorString()));
    QCoreApplication::processEvents(); // what making the page has left behind
    LoopWatch watch;
    if (id.isEmpty())
        catalog.updateLocalContentFile();
    else
        catalog.deleteInstalledRegion(id);
    tell({{QStringLiteral("stretch"), watch.longest()}});
}

void work(const QStringList &arguments)
{
    const QString name = arguments.value(0);
    if (name == QLatin1String("write"))
        write();
    else if (name == QLatin1String("find-and-print"))
        findAndPrint();
    else if (name == QLatin1String("delete"))
        remove(arguments.value(1));
    else if (name == QLatin1String("rm"))
        removePlainly(arguments.value(1));
    else
        measureStretch(arguments.value(1));
}

QByteArray sortedLines(const QByteArray &bytes)
{
    QList<QByteArray> lines = bytes.split('\n');
    std::sort(lines.begin(), lines.end());
    return lines.join('\n');
}

QString described(const char *what, const Size &size)
{
    const QLocale c = QLocale::c();
    return QStringLiteral("%1, %2 tiles and %3 regions of %4")
        .arg(QLatin1String(what), c.toString(size.tiles), c.toString(size.regions),
             c.toString(size.references));
}

void compareWriting(BenchmarkRows &rows, const World &world, const Size &size)
{
    measureSelf({QStringLiteral("write")});
    const QByteArray ours = world.content();
    measureSelf({QStringLiteral("find-and-print")});
    // find does not sort.
    if (sortedLines(ours) != sortedLines(world.content()))
        qFatal("The peer does not write the same.");

    const Ratios ratios = comparePairs(
        [] { return measureSelf({QStringLiteral("write")}); },
        [] { return measureSelf({QStringLiteral("find-and-print")}); }, BenchmarkRows::pairs());
    const QString work = described("9: scan and write", size);
    const QString peer = QStringLiteral("find + fprintf");
    rows.atMost(work, peer, QStringLiteral("wall"), ratios.wall, 2.0);
    rows.atMost(work, peer, QStringLiteral("CPU"), ratios.cpu, 2.0);
}

// Seconds until it is known which files may go, and these are gone.
double compareDeletion(BenchmarkRows &rows, const World &world, const Size &size)
{
    QList<double> searches;
    int left = 0;
    QByteArray written;
    const auto ours = [&] {
        world.restore();
        const Cost cost = measureSelf({QStringLiteral("delete"), world.victim()});
        searches += cost.told.value(QStringLiteral("search")).toDouble();
        left = world.tilesOnDisk();
        written = world.content();
        return cost;
    };
    const auto peers = [&] {
        world.restore();
        world.forgetVictim();
        return measureSelf({QStringLiteral("rm"), world.ownTilesFile()});
    };
    ours();
    const int leftByUs = left;
    const QByteArray writtenByUs = written;
    peers();
    if (leftByUs != world.tilesOnDisk() || writtenByUs != world.content())
        qFatal("The peer does not delete the same.");

    const Ratios ratios = comparePairs(ours, peers, BenchmarkRows::pairs());
    const QString work = described("10: delete a region", size);
    const QString peer = QStringLiteral("rm + row 9's writing");
    rows.atMost(work, peer, QStringLiteral("wall"), ratios.wall, 1.5);
    rows.atMost(work, peer, QStringLiteral("CPU"), ratios.cpu, 1.5);
    world.restore();
    return median(searches);
}

void measureStretches(BenchmarkRows &rows, const World &world, const Size &size)
{
    const auto longest = [&](const QString &id) {
        QList<double> stretches;
        for (int run = 0; run < BenchmarkRows::pairs(); ++run) {
            world.restore();
            const Cost cost = measureSelf({QStringLiteral("stretch"), id});
            stretches += cost.told.value(QStringLiteral("stretch")).toDouble();
        }
        return median(stretches);
    };
    const QString what = QStringLiteral("longest without the event loop");
    const QString ms = QStringLiteral("ms");
    rows.atMost(described("7: scan and write, QML attached", size), QStringLiteral("a frame"), what,
                longest(QString()), 16, ms);
    rows.atMost(described("7: delete a region, QML attached", size), QStringLiteral("a frame"),
                what, longest(world.victim()), 16, ms);
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
    const bool quick = BenchmarkRows::quick();
    BenchmarkRows rows(QStringLiteral("contentwrite"));
    const Size full = quick ? Size {20, 50, 1000} : Size {500, 1000, 100000};
    const Size half = quick ? Size {10, 50, 1000} : Size {250, 1000, 100000};
    const Size wide = quick ? Size {200, 10, 1000} : Size {20000, 25, 100000};
    double search = 0;
    {
        const World world(full);
        compareWriting(rows, world, full);
        search = compareDeletion(rows, world, full);
    }
    {
        const World world(half);
        const double halfSearch = compareDeletion(rows, world, half);
        rows.atMost(QStringLiteral("10: what a deletion takes ahead of the writing"),
                    QStringLiteral("half as many entries"), QStringLiteral("CPU"),
                    search / halfSearch, 2.2);
    }
    {
        const World world(wide);
        measureStretches(rows, world, wide);
    }
    return rows.finish();
}
