// SPDX-License-Identifier: MIT
// What a removal says beforehand, compared with what it does to the disk.
#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"
#include "disksize.h"
#include "host/shared/regionfiles.h"
#include "host/shared/tilelist.h"
#include <memory>
#include <QSet>
#include <QtTest>
#include <unistd.h>

class RegionPreviewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void thePlanIsWhatTheDiskLoses_data();
    void thePlanIsWhatTheDiskLoses();
    void aPlanChangesNothing();
    void theLastOfSeveralFreesTheSharedTiles();
    void theRegionsThatNeedAKeptTileAreNamed();
    void twoSpellingsNameOneTile();
    void bytesOfAHardLinkComeFreeWithTheLastName();
    void aHardLinkOutsideKeepsTheBytes();
    void aLinkedTileCountsAsTheLinkItself();
    void entriesThatLeadOutOfTheCacheAreNotCounted();
    void whatIsNotInstalledIsLeftOutOfThePlan();

private:
    void addTile(const QByteArray &path, int size);
    MapCatalog &open(const QList<ContentRegion> &regions);
    RemovalPlan plan(const QStringList &ids);
    void removeAndCompare(const QStringList &ids);

    std::unique_ptr<MapData> data;
    std::unique_ptr<MapCatalog> catalog;
};

void RegionPreviewTest::init()
{
    data = std::make_unique<MapData>();
}

void RegionPreviewTest::cleanup()
{
    catalog.reset();
    data.reset();
}

void RegionPreviewTest::addTile(const QByteArray &path, int size)
{
    writeFile(data->tileFolder() + QLatin1Char('/') + QString::fromUtf8(path),
              QByteArray(size, 't'));
}

MapCatalog &RegionPreviewTest::open(const QList<ContentRegion> &regions)
{
    QByteArray elements;
    for (const char *id : {"A", "B", "C", "D"})
        elements += fileElement(id);
    data->setCatalog(elements);
    data->setContent(regions);
    catalog = std::make_unique<MapCatalog>();
    catalog->updateCatalog();
    return *catalog;
}

RemovalPlan RegionPreviewTest::plan(const QStringList &ids)
{
    return RegionFiles::planRemoval(catalog.get(), ids, data->tileFolder());
}

// Removes them for real: the plan, the figures before each removal, and the disk must agree.
void RegionPreviewTest::removeAndCompare(const QStringList &ids)
{
    const RemovalPlan planned = plan(ids);
    QCOMPARE(planned.regions.size(), ids.size());
    const DiskSize atFirst = DiskSize::of(data->tileFolder());
    QSet<QString> removedTiles;
    for (int i = 0; i < int(ids.size()); ++i) {
        const QStringList tiles = catalog->region(ids.at(i))->fileList();
        for (const QString &tile : tiles)
            removedTiles.insert(TileList::plain(tile));
        const RemovalFigures &expected = planned.regions.at(i);
        const RemovalFigures now =
            RegionFiles::removalFigures(catalog.get(), ids.at(i), data->tileFolder());
        const DiskSize before = DiskSize::of(data->tileFolder());

        catalog->deleteInstalledRegion(ids.at(i));
        catalog->updateCatalog();

        const DiskSize after = DiskSize::of(data->tileFolder());
        QCOMPARE(expected.id, ids.at(i));
        QCOMPARE(before.files - after.files, expected.freedFiles);
        QCOMPARE(before.bytes - after.bytes, expected.freedBytes);
        QCOMPARE(now.freedFiles, expected.freedFiles);
        QCOMPARE(now.freedBytes, expected.freedBytes);
        QCOMPARE(now.keptFiles, expected.keptFiles);
        QCOMPARE(now.keptBytes, expected.keptBytes);
        QVERIFY(!catalog->region(ids.at(i))->installed());
    }
    const DiskSize atLast = DiskSize::of(data->tileFolder());
    QCOMPARE(atFirst.files - atLast.files, planned.total.freedFiles);
    QCOMPARE(atFirst.bytes - atLast.bytes, planned.total.freedBytes);
    int kept = 0;
    for (const QString &tile : std::as_const(removedTiles))
        kept += QFileInfo(data->tileFolder() + QLatin1Char('/') + tile).isFile() ? 1 : 0;
    QCOMPARE(kept, planned.total.keptFiles);
}

void RegionPreviewTest::thePlanIsWhatTheDiskLoses_data()
{
    QTest::addColumn<QStringList>("ids");
    QTest::newRow("one region") << QStringList {QStringLiteral("A")};
    QTest::newRow("two that share a tile")
        << QStringList {QStringLiteral("A"), QStringLiteral("B")};
    QTest::newRow("the same in the other order")
        << QStringList {QStringLiteral("B"), QStringLiteral("A")};
    QTest::newRow("all") << QStringList {QStringLiteral("C"), QStringLiteral("A"),
                                         QStringLiteral("B")};
    QTest::newRow("one without tiles") << QStringList {QStringLiteral("D")};
}

void RegionPreviewTest::thePlanIsWhatTheDiskLoses()
{
    QFETCH(QStringList, ids);
    addTile("a/3/one.cdt", 1000);
    addTile("a/3/ab.cdt", 200);
    addTile("0/0/all.cdt", 30);
    addTile("0/1/b.cdt", 4);
    addTile("0/1/nobody.cdt", 50000);
    open({{"A", {"a/3/one.cdt", "a/3/ab.cdt", "0/0/all.cdt", "0/0/missing.cdt", "a/3/one.cdt"}},
          {"B", {"0/1/b.cdt", "a/3/ab.cdt", "0/0/all.cdt", "0/0/missing.cdt"}},
          {"C", {"0/0/all.cdt"}},
          {"D", {}}});

    removeAndCompare(ids);
}

void RegionPreviewTest::aPlanChangesNothing()
{
    addTile("a/3/one.cdt", 1000);
    open({{"A", {"a/3/one.cdt"}}});
    const QByteArray content = readFile(data->contentFile());

    QCOMPARE(plan({QStringLiteral("A")}).total.freedBytes, qint64(1000));

    QCOMPARE(readFile(data->contentFile()), content);
    QCOMPARE(DiskSize::of(data->tileFolder()).files, 1);
    QVERIFY(catalog->region(QStringLiteral("A"))->installed());
}

void RegionPreviewTest::theLastOfSeveralFreesTheSharedTiles()
{
    addTile("a/3/ab.cdt", 200);
    open({{"A", {"a/3/ab.cdt"}}, {"B", {"a/3/ab.cdt"}}});

    const RemovalPlan result = plan({QStringLiteral("B"), QStringLiteral("A")});

    QCOMPARE(result.regions.at(0).freedFiles, 0);
    QCOMPARE(result.regions.at(0).keptBytes, qint64(200));
    QCOMPARE(result.regions.at(0).neededBy, QStringList {QStringLiteral("A")});
    QCOMPARE(result.regions.at(1).freedBytes, qint64(200));
    QCOMPARE(result.regions.at(1).keptFiles, 0);
    QVERIFY(result.regions.at(1).neededBy.isEmpty());
    QCOMPARE(result.total.freedBytes, qint64(200));
    QCOMPARE(result.total.keptFiles, 0); // what A kept for a moment does not stay
    QVERIFY(result.total.neededBy.isEmpty());
}

void RegionPreviewTest::theRegionsThatNeedAKeptTileAreNamed()
{
    addTile("a/3/abc.cdt", 200);
    addTile("a/3/ac.cdt", 10);
    open({{"C", {"a/3/abc.cdt", "a/3/ac.cdt", "0/0/gone.cdt"}},
          {"A", {"a/3/abc.cdt", "a/3/ac.cdt"}},
          {"B", {"a/3/abc.cdt"}},
          {"D", {"0/0/gone.cdt"}}});

    const RemovalPlan result = plan({QStringLiteral("A"), QStringLiteral("B")});

    QCOMPARE(result.regions.at(0).neededBy,
             QStringList({QStringLiteral("C"), QStringLiteral("B")}));
    QCOMPARE(result.total.keptFiles, 2);
    QCOMPARE(result.total.keptBytes, qint64(210));
    QCOMPARE(result.total.neededBy, QStringList {QStringLiteral("C")});
    // D needs one too, but that is not there and so it is not kept.
    QVERIFY(plan({QStringLiteral("C")}).total.neededBy.contains(QStringLiteral("A")));
    QVERIFY(!plan({QStringLiteral("C")}).total.neededBy.contains(QStringLiteral("D")));
}

void RegionPreviewTest::twoSpellingsNameOneTile()
{
    addTile("a/3/x.cdt", 100);
    addTile("a/3/y.cdt", 20);
    open({{"B", {"a/3/x.cdt"}}});
    // As QML hands them in; those of B came from the content file, as "\a\3\x.cdt".
    catalog->addInstalledRegion(QStringLiteral("A"),
                                {QStringLiteral("a/3/x.cdt"), QStringLiteral("/a/3/x.cdt"),
                                 QStringLiteral("./a//3/y.cdt"), QStringLiteral("\\a\\3\\y.cdt")});
    QCOMPARE(catalog->region(QStringLiteral("A"))->fileList().first(), QStringLiteral("a/3/x.cdt"));
    QCOMPARE(catalog->region(QStringLiteral("B"))->fileList().first(),
             QStringLiteral("\\a\\3\\x.cdt"));

    const RemovalFigures figures = plan({QStringLiteral("A")}).total;

    QCOMPARE(figures.freedFiles, 1);
    QCOMPARE(figures.freedBytes, qint64(20));
    QCOMPARE(figures.keptFiles, 1);
    QCOMPARE(figures.neededBy, QStringList {QStringLiteral("B")});
    removeAndCompare({QStringLiteral("A"), QStringLiteral("B")});
    QCOMPARE(DiskSize::of(data->tileFolder()).files, 0);
}

void RegionPreviewTest::bytesOfAHardLinkComeFreeWithTheLastName()
{
    addTile("a/3/first.cdt", 100);
    const QByteArray folder = QFile::encodeName(data->tileFolder());
    QCOMPARE(
        ::link((folder + "/a/3/first.cdt").constData(), (folder + "/a/3/second.cdt").constData()),
        0);
    open({{"A", {"a/3/first.cdt"}}, {"B", {"a/3/second.cdt"}}});

    const RemovalPlan result = plan({QStringLiteral("A"), QStringLiteral("B")});

    QCOMPARE(result.regions.at(0).freedFiles, 1);
    QCOMPARE(result.regions.at(0).freedBytes, qint64(0));
    QCOMPARE(result.regions.at(1).freedBytes, qint64(100));
    QCOMPARE(result.total.freedFiles, 2);
    removeAndCompare({QStringLiteral("A"), QStringLiteral("B")});
}

void RegionPreviewTest::aHardLinkOutsideKeepsTheBytes()
{
    addTile("a/3/tile.cdt", 100);
    const QByteArray folder = QFile::encodeName(data->citiesFolder());
    QCOMPARE(
        ::link((folder + "/diskcache/a/3/tile.cdt").constData(), (folder + "/copy").constData()),
        0);
    open({{"A", {"a/3/tile.cdt"}}});

    const RemovalFigures figures = plan({QStringLiteral("A")}).total;
    const qint64 before =
        DiskSize::of(data->citiesFolder()).bytes - DiskSize::of(data->catalogFolder()).bytes;
    catalog->deleteInstalledRegion(QStringLiteral("A"));
    const qint64 after =
        DiskSize::of(data->citiesFolder()).bytes - DiskSize::of(data->catalogFolder()).bytes;

    QCOMPARE(figures.freedFiles, 1);
    QCOMPARE(figures.freedBytes, qint64(0));
    QCOMPARE(before - after, figures.freedBytes);
}

void RegionPreviewTest::aLinkedTileCountsAsTheLinkItself()
{
    addTile("a/3/real.cdt", 100000);
    QVERIFY(QFile::link(QStringLiteral("real.cdt"),
                        data->tileFolder() + QStringLiteral("/a/3/link.cdt")));
    QVERIFY(QFile::link(QStringLiteral("nowhere.cdt"),
                        data->tileFolder() + QStringLiteral("/a/3/broken.cdt")));
    open({{"A", {"a/3/link.cdt", "a/3/broken.cdt"}}, {"B", {"a/3/real.cdt"}}});

    QCOMPARE(plan({QStringLiteral("A")}).total.freedFiles, 1);
    removeAndCompare({QStringLiteral("A")});
    QCOMPARE(readFile(data->tileFolder() + QStringLiteral("/a/3/real.cdt")).size(), 100000);
}

void RegionPreviewTest::entriesThatLeadOutOfTheCacheAreNotCounted()
{
    const QString outside = data->citiesFolder() + QStringLiteral("/outside");
    writeFile(outside + QStringLiteral("/x.cdt"), "precious");
    QVERIFY(QDir().mkpath(data->tileFolder() + QStringLiteral("/a")));
    QVERIFY(QFile::link(outside, data->tileFolder() + QStringLiteral("/a/out")));
    addTile("a/3/in.cdt", 100);
    open({{"A", {"../outside/x.cdt", "a/out/x.cdt", "a/3/in.cdt"}}});

    const RemovalFigures figures = plan({QStringLiteral("A")}).total;

    QCOMPARE(figures.freedFiles, 1);
    QCOMPARE(figures.freedBytes, qint64(100));
    QCOMPARE(figures.keptFiles, 0);
    catalog->deleteInstalledRegion(QStringLiteral("A"));
    QCOMPARE(readFile(outside + QStringLiteral("/x.cdt")), QByteArray("precious"));
    QVERIFY(!QFile::exists(data->tileFolder() + QStringLiteral("/a/3/in.cdt")));
}

void RegionPreviewTest::whatIsNotInstalledIsLeftOutOfThePlan()
{
    addTile("a/3/one.cdt", 1000);
    open({{"A", {"a/3/one.cdt"}}});

    const RemovalPlan result = plan(
        {QStringLiteral("B"), QStringLiteral("A"), QStringLiteral("A"), QStringLiteral("nowhere")});

    QCOMPARE(result.regions.size(), 1);
    QCOMPARE(result.total.freedFiles, 1);
    QVERIFY(RegionFiles::removalFigures(catalog.get(), QStringLiteral("B"), data->tileFolder())
                .id.isEmpty());
}

QTEST_GUILESS_MAIN(RegionPreviewTest)
#include "tst_regionpreview.moc"
