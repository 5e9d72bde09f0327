// SPDX-License-Identifier: MIT
#include "host/shared/regionmodel.h"

#include "regionworld.h"
#include <memory>
#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <QSignalSpy>
#include <QtTest>

class RegionModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRowTellsWhatTheCatalogueSays();
    void theNameIsInTheUsersLanguageWhereThereIsOne();
    void aRegionKnowsItsPlaceInTheTree();
    void anUnknownRegionHasNoRow();
    void ofSeveralWithOneIdTheLastCounts();
    void aRegionInsideItsNamesakeIsNoLoop();
    void aThousandLevelsAreNoTrouble();

    void rowsStayAsTheyAreWhileTheCatalogueLoads();
    void aReloadOfTheSameChangesNothing();
    void aReloadChangesOnlyWhatIsDifferent();
    void aNewNameChangesThePathOfAllBelow();
    void aNewOrderTakesOutAsFewRowsAsCanBe();
    void anEmptyCatalogueLeavesNoRows();
    void thousandsAreTakenOverInSlices();
    void manyChangesAreMadeInSlices();
    void aLoadDuringTheTakingOverBeginsAnew();
    void halfLoadsAreFollowed();
    void aHandlerMayLoadInTheMiddleOfTheMerging();
    void theWorldIsTakenOverWhole();

    void installedMarksFollowTheCatalogue();
    void theSizeOnDiskIsMeasuredWhenAskedFor();
    void anUpdateIsMeasuredAgain();
    void theSizeOfAnotherDataSetIsLookedForThere();
    void theCatalogueMayGoFirst();
};

namespace {

/** A model of a world; the tester stops at the first thing that a model must not do. */
struct Rig : RegionWorld
{
    RegionModel &open()
    {
        load();
        model = std::make_unique<RegionModel>(catalog.get(), nullptr);
        tester = std::make_unique<QAbstractItemModelTester>(
            model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        settle(*model);
        return *model;
    }
    void reload()
    {
        load();
        settle(*model);
    }

    std::unique_ptr<RegionModel> model;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

/** Counts what a model tells its views. */
struct Changes
{
    explicit Changes(const QAbstractItemModel &model)
        : reset(&model, &QAbstractItemModel::modelReset)
        , layout(&model, &QAbstractItemModel::layoutChanged)
        , moved(&model, &QAbstractItemModel::rowsMoved)
        , inserted(&model, &QAbstractItemModel::rowsInserted)
        , removed(&model, &QAbstractItemModel::rowsRemoved)
        , data(&model, &QAbstractItemModel::dataChanged)
    { }

    static int rows(const QSignalSpy &spy)
    {
        int rows = 0;
        for (const QList<QVariant> &signal : spy)
            rows += signal.at(2).toInt() - signal.at(1).toInt() + 1;
        return rows;
    }
    /** Changes of rows, but for the size on disk, which a thread of its own tells when it can. */
    int besidesSizes() const
    {
        int changes = 0;
        for (const QList<QVariant> &signal : data) {
            if (signal.at(2).value<QVector<int>>() != QVector<int> {RegionModel::SizeOnDiskRole})
                ++changes;
        }
        return changes;
    }
    bool isEmpty() const
    {
        return reset.isEmpty() && layout.isEmpty() && moved.isEmpty() && inserted.isEmpty()
            && removed.isEmpty() && data.isEmpty();
    }

    QSignalSpy reset;
    QSignalSpy layout;
    QSignalSpy moved;
    QSignalSpy inserted;
    QSignalSpy removed;
    QSignalSpy data;
};

const char *const Finland = "FI";

QList<WorldRegion> nordic()
{
    return {{"FI",
             "Finland",
             {{"FI-01", "Ahvenanmaa", {{"FI-01-1", "Mariehamn"}}}, {"FI-02", "Kainuu"}}},
            {"SE", "Sweden", {}, QByteArray(), 77}};
}

} // namespace

void RegionModelTest::aRowTellsWhatTheCatalogueSays()
{
    Rig rig;
    rig.regions = nordic();
    const RegionModel &model = rig.open();

    QCOMPARE(model.count(), 5);
    const QVariantMap finland = model.get(text(Finland));
    QCOMPARE(finland.size(), model.roleNames().size());
    QCOMPARE(finland.value(text("regionId")).toString(), text("FI"));
    QCOMPARE(finland.value(text("name")).toString(), text("Finland"));
    QCOMPARE(finland.value(text("catalogName")).toString(), text("Finland"));
    QCOMPARE(finland.value(text("downloadSize")).toLongLong(), 1000);
    QCOMPARE(finland.value(text("installationSize")).toLongLong(),
             rig.catalog->region(text("FI"))->installationSize());
    QCOMPARE(finland.value(text("installed")).toBool(), false);
    QCOMPARE(finland.value(text("sizeOnDisk")).toLongLong(), 0);
    QCOMPARE(finland.value(text("state")).toString(), text("notInstalled"));
    QCOMPARE(finland.value(text("waitReason")).toString(), QString());
    QCOMPARE(finland.value(text("sentence")).toString(), text("Not installed"));
    QCOMPARE(finland.value(text("reason")).toString(), QString());
    QCOMPARE(finland.value(text("progress")).toDouble(), -1.0);
    QCOMPARE(finland.value(text("bytesReceived")).toLongLong(), 0);
    QCOMPARE(finland.value(text("bytesTotal")).toLongLong(), 0);
    QCOMPARE(finland.value(text("remainingTime")).toLongLong(), -1);
    QCOMPARE(finland.value(text("pending")).toBool(), false);
    QVERIFY(finland.value(text("downloadable")).toBool());
    QVERIFY(!valueOf(model, "SE", "downloadable").toBool());
    QCOMPARE(valueOf(model, "SE", "downloadSize").toLongLong(), 77);
    const int row = model.rowOf(text("SE"));
    QCOMPARE(model.index(row).data().toString(), text("Sweden"));
    QCOMPARE(model.index(row).data(RegionModel::RegionIdRole).toString(), text("SE"));
}

void RegionModelTest::theNameIsInTheUsersLanguageWhereThereIsOne()
{
    Rig rig;
    rig.regions = {{"FI", "Finland"}, {"SE", "Sweden"}, {"XX", ""}};
    rig.localNames = {{"FI", "Suomi"}};
    const RegionModel &model = rig.open();

    QCOMPARE(valueOf(model, "FI", "name").toString(), text("Suomi"));
    QCOMPARE(valueOf(model, "FI", "catalogName").toString(), text("Finland"));
    QCOMPARE(valueOf(model, "SE", "name").toString(), text("Sweden"));
    QCOMPARE(valueOf(model, "XX", "name").toString(), text("XX"));
}

void RegionModelTest::aRegionKnowsItsPlaceInTheTree()
{
    Rig rig;
    rig.regions = nordic();
    rig.localNames = {{"FI", "Suomi"}};
    const RegionModel &model = rig.open();

    QCOMPARE(valueOf(model, "FI", "parentId").toString(), QString());
    QCOMPARE(valueOf(model, "FI", "depth").toInt(), 0);
    QCOMPARE(valueOf(model, "FI", "path").toString(), QString());
    QCOMPARE(valueOf(model, "FI", "childCount").toInt(), 2);
    QVERIFY(valueOf(model, "FI", "hasChildren").toBool());
    QCOMPARE(valueOf(model, "FI-01-1", "parentId").toString(), text("FI-01"));
    QCOMPARE(valueOf(model, "FI-01-1", "depth").toInt(), 2);
    QCOMPARE(valueOf(model, "FI-01-1", "path").toString(), text("Suomi › Ahvenanmaa"));
    QVERIFY(!valueOf(model, "FI-01-1", "hasChildren").toBool());
}

void RegionModelTest::anUnknownRegionHasNoRow()
{
    Rig rig;
    rig.regions = nordic();
    const RegionModel &model = rig.open();

    QCOMPARE(model.rowOf(text("XX")), -1);
    QVERIFY(model.get(text("XX")).isEmpty());
    QVERIFY(!model.data(QModelIndex(), RegionModel::NameRole).isValid());
}

void RegionModelTest::ofSeveralWithOneIdTheLastCounts()
{
    Rig rig;
    rig.regions = {
        {"A", "first", {{"A1", "its child"}}}, {"B", "other"}, {"A", "last", {}, "l.zip", 5}};
    const RegionModel &model = rig.open();

    QCOMPARE(model.count(), 3);
    QCOMPARE(valueOf(model, "A", "name").toString(), text("last"));
    QCOMPARE(valueOf(model, "A", "downloadSize").toInt(), 5);
    QCOMPARE(valueOf(model, "A1", "parentId").toString(), text("A"));
    QCOMPARE(ids(model), QStringList({text("A1"), text("B"), text("A")}));
}

void RegionModelTest::aRegionInsideItsNamesakeIsNoLoop()
{
    Rig rig;
    rig.regions = {
        {"A", "outer", {{"B", "middle", {{"A", "inner", {{"C", "core"}}}}}, {"A", "side"}}}};
    const RegionModel &model = rig.open();

    QCOMPARE(valueOf(model, "A", "name").toString(), text("outer"));
    QCOMPARE(valueOf(model, "A", "depth").toInt(), 0);
    QCOMPARE(valueOf(model, "B", "path").toString(), text("outer"));
    QCOMPARE(valueOf(model, "C", "parentId").toString(), text("A"));
}

void RegionModelTest::aThousandLevelsAreNoTrouble()
{
    Rig rig;
    WorldRegion inner {"L999", "Level 999"};
    for (int level = 998; level >= 0; --level) {
        const QByteArray number = QByteArray::number(level);
        inner = {"L" + number, "Level " + number, {inner}};
    }
    rig.regions = {inner};
    const RegionModel &model = rig.open();

    QCOMPARE(valueOf(model, "L999", "depth").toInt(), 999);
    QVERIFY(valueOf(model, "L999", "path").toString().startsWith(text("Level 0 › Level 1 › ")));
}

void RegionModelTest::rowsStayAsTheyAreWhileTheCatalogueLoads()
{
    Rig rig;
    rig.regions = nordic();
    RegionModel &model = rig.open();
    rig.regions.append(RegionWorld::many(200));
    rig.regions.removeFirst();
    Changes changes(model);
    int turns = 0;
    int changesDuringLoad = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        if (!rig.catalog->bussy())
            return;
        ++turns;
        changesDuringLoad += changes.isEmpty() && model.count() == 5 ? 0 : 1;
        QVERIFY(model.loading());
        QCOMPARE(valueOf(model, "FI-01-1", "path").toString(), text("Finland › Ahvenanmaa"));
    });
    timer.start(0);

    rig.load();

    QVERIFY(turns > 50);
    QCOMPARE(changesDuringLoad, 0);
    QVERIFY(changes.isEmpty());
    settle(model);
    QCOMPARE(model.count(), 201);
}

void RegionModelTest::aReloadOfTheSameChangesNothing()
{
    Rig rig;
    rig.regions = nordic();
    rig.localNames = {{"FI", "Suomi"}};
    rig.installed = {{"SE", {"0/1/a.cdt"}}};
    RegionModel &model = rig.open();
    QSignalSpy loading(&model, &RegionModel::loadingChanged);
    Changes changes(model);

    rig.reload();

    QVERIFY(changes.isEmpty());
    QCOMPARE(loading.count(), 2);
    QVERIFY(valueOf(model, "SE", "installed").toBool());
}

void RegionModelTest::aReloadChangesOnlyWhatIsDifferent()
{
    Rig rig;
    rig.regions = {{"A", "A"}, {"B", "B"}, {"C", "C", {{"C1", "C1"}}}, {"D", "D"}};
    RegionModel &model = rig.open();
    QCOMPARE(ids(model).join(QLatin1Char(' ')), text("A B C1 C D"));
    const QPersistentModelIndex c1(model.index(model.rowOf(text("C1"))));
    const QPersistentModelIndex b(model.index(model.rowOf(text("B"))));
    Changes changes(model);

    // B goes, E and F come, D gets another size.
    rig.regions = {
        {"A", "A"}, {"E", "E"}, {"F", "F"}, {"C", "C", {{"C1", "C1"}}}, {"D", "D", {}, "d.zip", 9}};
    rig.reload();

    QCOMPARE(ids(model).join(QLatin1Char(' ')), text("A E F C1 C D"));
    QVERIFY(changes.reset.isEmpty());
    QVERIFY(changes.layout.isEmpty());
    QCOMPARE(changes.removed.count(), 1);
    QCOMPARE(Changes::rows(changes.removed), 1);
    QCOMPARE(changes.inserted.count(), 1);
    QCOMPARE(Changes::rows(changes.inserted), 2);
    QCOMPARE(changes.data.count(), 1);
    QCOMPARE(changes.data.first().at(0).toModelIndex().row(), 5);
    QCOMPARE(changes.data.first().at(2).value<QVector<int>>(),
             QVector<int> {RegionModel::DownloadSizeRole});
    QVERIFY(!b.isValid());
    QCOMPARE(c1.data(RegionModel::RegionIdRole).toString(), text("C1"));
    QCOMPARE(model.rowOf(text("C1")), 3);
}

void RegionModelTest::aNewNameChangesThePathOfAllBelow()
{
    Rig rig;
    rig.regions = nordic();
    RegionModel &model = rig.open();
    Changes changes(model);
    QHash<int, QString> toldPaths;
    connect(&model, &QAbstractItemModel::dataChanged, this,
            [&](const QModelIndex &at, const QModelIndex &, const QVector<int> &roles) {
                if (roles.contains(RegionModel::PathRole))
                    toldPaths.insert(at.row(), at.data(RegionModel::PathRole).toString());
            });

    rig.localNames = {{"FI", "Suomi"}};
    rig.reload();

    QCOMPARE(changes.data.count(), 4);
    QCOMPARE(toldPaths.size(), 3);
    QCOMPARE(toldPaths.value(model.rowOf(text("FI-01-1"))), text("Suomi › Ahvenanmaa"));
    QCOMPARE(toldPaths.value(model.rowOf(text("FI-02"))), text("Suomi"));
    QCOMPARE(valueOf(model, "FI", "name").toString(), text("Suomi"));
}

void RegionModelTest::aNewOrderTakesOutAsFewRowsAsCanBe()
{
    Rig rig;
    rig.regions = RegionWorld::many(300);
    RegionModel &model = rig.open();
    Changes changes(model);

    rig.regions.append(rig.regions.takeFirst());
    rig.regions.insert(7, rig.regions.takeAt(150));
    rig.reload();

    QCOMPARE(Changes::rows(changes.removed), 2);
    QCOMPARE(Changes::rows(changes.inserted), 2);
    QVERIFY(changes.data.isEmpty());
    QCOMPARE(ids(model).last(), text("R0"));
    QCOMPARE(ids(model).at(7), text("R151"));
}

void RegionModelTest::anEmptyCatalogueLeavesNoRows()
{
    Rig rig;
    rig.regions = RegionWorld::many(300);
    RegionModel &model = rig.open();
    Changes changes(model);

    rig.regions.clear();
    rig.reload();

    QCOMPARE(model.count(), 0);
    QVERIFY(changes.reset.isEmpty());
}

void RegionModelTest::thousandsAreTakenOverInSlices()
{
    RegionWorld world;
    world.regions = RegionWorld::many(5000);
    world.load();
    RegionModel model(world.catalog.get(), nullptr);
    Changes changes(model);

    int turns = 0;
    while (model.loading()) {
        const int lookedAt = model.lookedAt();
        const int rows = model.count();
        QCoreApplication::processEvents();
        ++turns;
        QVERIFY(model.lookedAt() - lookedAt <= RegionModel::SliceSize);
        QVERIFY(model.count() - rows <= RegionModel::SliceSize);
        QVERIFY(turns < 100000);
    }

    QCOMPARE(model.count(), 5000);
    QVERIFY(turns >= 2 * 5000 / RegionModel::SliceSize);
    QVERIFY(changes.reset.isEmpty());
}

void RegionModelTest::manyChangesAreMadeInSlices()
{
    Rig rig;
    rig.regions = RegionWorld::many(2000);
    RegionModel &model = rig.open();
    for (int i = 0; i < 2000; i += 2)
        rig.regions[i].id.prepend("N"); // every second one is another region
    for (WorldRegion &region : rig.regions)
        region.size = 5;
    rig.load();
    Changes changes(model);

    int most = 0;
    while (model.loading()) {
        const auto total = [&changes] {
            return Changes::rows(changes.inserted) + Changes::rows(changes.removed)
                + int(changes.data.count());
        };
        const int before = total();
        QCoreApplication::processEvents();
        most = qMax(most, total() - before);
    }

    QVERIFY2(most <= RegionModel::SliceSize, qPrintable(QString::number(most)));
    QCOMPARE(Changes::rows(changes.removed), 1000);
    QCOMPARE(Changes::rows(changes.inserted), 1000);
    QCOMPARE(changes.data.count(), 1000);
    QCOMPARE(ids(model).mid(0, 3), QStringList({text("NR0"), text("R1"), text("NR2")}));
}

void RegionModelTest::aLoadDuringTheTakingOverBeginsAnew()
{
    Rig rig;
    rig.regions = RegionWorld::many(1000);
    RegionModel &model = rig.open();

    // One load after each number of turns, so that one falls into each phase.
    for (int turns = 1; turns < 28; turns += 3) {
        rig.regions = RegionWorld::many(1000 + turns, turns % 2 ? "Q" : "R");
        rig.load();
        for (int i = 0; i < turns; ++i)
            QCoreApplication::processEvents();
    }
    rig.regions = nordic();
    rig.reload();

    QCOMPARE(ids(model).join(QLatin1Char(' ')), text("FI-01-1 FI-01 FI-02 FI SE"));
    QCOMPARE(valueOf(model, "FI-01-1", "path").toString(), text("Finland › Ahvenanmaa"));
}

void RegionModelTest::halfLoadsAreFollowed()
{
    Rig rig;
    rig.regions = RegionWorld::many(300);
    RegionModel &model = rig.open();
    Changes changes(model);

    rig.regions = RegionWorld::many(290);
    rig.regions.append(WorldRegion {"new", "new"});
    rig.installed = {{"new", {"0/1/a.cdt"}}};
    rig.write();
    rig.catalog->loadInstalledRegions(); // whose taking-over is due when the next load begins
    rig.catalog->loadAvailableRegions();
    settle(model);
    QCOMPARE(model.count(), 291);
    QCOMPARE(Changes::rows(changes.removed), 10);
    QCOMPARE(Changes::rows(changes.inserted), 1);
    QVERIFY(!valueOf(model, "new", "installed").toBool());

    rig.catalog->loadInstalledRegions();
    settle(model);
    QVERIFY(valueOf(model, "new", "installed").toBool());
}

void RegionModelTest::aHandlerMayLoadInTheMiddleOfTheMerging()
{
    Rig rig;
    rig.regions = nordic();
    RegionModel &model = rig.open();
    int loads = 0;
    connect(&model, &RegionModel::countChanged, this, [&] {
        if (++loads <= 3)
            rig.catalog->updateCatalog();
    });

    rig.regions = RegionWorld::many(500);
    rig.regions.append(nordic());
    rig.reload();

    QVERIFY(loads > 3);
    QCOMPARE(model.count(), 505);
}

void RegionModelTest::theWorldIsTakenOverWhole()
{
    Rig rig;
    rig.regions = RegionWorld::countries();
    RegionModel &model = rig.open();

    QVERIFY2(model.count() > 5000, qPrintable(QString::number(model.count())));
    const QStringList rows = ids(model);
    QCOMPARE(QSet<QString>(rows.begin(), rows.end()).size(), rows.size());
    QCOMPARE(valueOf(model, "FI-01", "path").toString(), text("Finland"));
    QVERIFY(valueOf(model, "FI", "childCount").toInt() > 15);
    Changes changes(model);
    rig.reload();
    QVERIFY(changes.isEmpty());
}

void RegionModelTest::installedMarksFollowTheCatalogue()
{
    Rig rig;
    rig.regions = nordic();
    RegionModel &model = rig.open();
    Changes changes(model);

    writeFile(rig.data.tileFolder() + text("/0/1/a.cdt"), "tile");
    rig.catalog->addInstalledRegion(text("FI"), {text("0/1/a.cdt")});

    QVERIFY(valueOf(model, "FI", "installed").toBool());
    QCOMPARE(valueOf(model, "FI", "state").toString(), text("installed"));
    QCOMPARE(changes.besidesSizes(), 1);
    QCOMPARE(changes.data.first().at(0).toModelIndex().row(), model.rowOf(text("FI")));

    rig.catalog->deleteInstalledRegion(text("FI"));
    QVERIFY(!valueOf(model, "FI", "installed").toBool());
    QCOMPARE(valueOf(model, "FI", "state").toString(), text("notInstalled"));
    QCOMPARE(changes.besidesSizes(), 2);
    QVERIFY(changes.inserted.isEmpty() && changes.removed.isEmpty() && changes.reset.isEmpty());
}

void RegionModelTest::theSizeOnDiskIsMeasuredWhenAskedFor()
{
    Rig rig;
    rig.regions = nordic();
    rig.installed = {{"FI", {"0/1/a.cdt", "0/1/b.cdt", "0/1/b.cdt", "0/1/gone.cdt"}}};
    writeFile(rig.data.tileFolder() + text("/0/1/a.cdt"), QByteArray(100, 'a'));
    writeFile(rig.data.tileFolder() + text("/0/1/b.cdt"), QByteArray(23, 'b'));
    RegionModel &model = rig.open();
    Changes changes(model);

    QCOMPARE(valueOf(model, "FI", "sizeOnDisk").toLongLong(), -1);
    QTRY_COMPARE(changes.data.count(), 1);

    QCOMPARE(valueOf(model, "FI", "sizeOnDisk").toLongLong(), 123);
    QCOMPARE(changes.data.first().at(2).value<QVector<int>>(),
             QVector<int> {RegionModel::SizeOnDiskRole});
    QCOMPARE(valueOf(model, "SE", "sizeOnDisk").toLongLong(), 0);
    rig.catalog->deleteInstalledRegion(text("FI"));
    QCOMPARE(valueOf(model, "FI", "sizeOnDisk").toLongLong(), 0);
}

void RegionModelTest::anUpdateIsMeasuredAgain()
{
    Rig rig;
    rig.regions = nordic();
    rig.installed = {{"FI", {"0/1/a.cdt"}}, {"SE", {"0/1/a.cdt"}}};
    writeFile(rig.data.tileFolder() + text("/0/1/a.cdt"), QByteArray(100, 'a'));
    RegionModel &model = rig.open();
    valueOf(model, "FI", "sizeOnDisk");
    valueOf(model, "SE", "sizeOnDisk");
    QTRY_COMPARE(valueOf(model, "FI", "sizeOnDisk").toLongLong(), 100);

    writeFile(rig.data.tileFolder() + text("/0/1/a.cdt"), QByteArray(50, 'a'));
    writeFile(rig.data.tileFolder() + text("/0/1/b.cdt"), QByteArray(7, 'b'));
    rig.catalog->addInstalledRegion(text("FI"), {text("0/1/a.cdt"), text("0/1/b.cdt")});
    QTRY_COMPARE(valueOf(model, "FI", "sizeOnDisk").toLongLong(), 57);

    // A load follows every install: the neighbour shares a tile that has become smaller.
    rig.catalog->updateCatalog();
    QTRY_COMPARE(valueOf(model, "SE", "sizeOnDisk").toLongLong(), 50);
    QCOMPARE(valueOf(model, "FI", "sizeOnDisk").toLongLong(), 57);
}

void RegionModelTest::theSizeOfAnotherDataSetIsLookedForThere()
{
    RegionWorld world;
    world.regions = nordic();
    world.write();
    const QString catalogFolder = world.data.catalogFolder() + text("_new");
    QDir().mkpath(catalogFolder);
    QFile::copy(world.data.catalogFile(), catalogFolder + text("/catalog-1.2.xml"));
    writeFile(catalogFolder + text("/content.xml"), contentXml({{"FI", {"0/1/a.cdt"}}}));
    writeFile(world.data.tileFolder() + text("_new/0/1/a.cdt"), "12345");
    MapCatalog catalog(text("_new"));
    catalog.updateCatalog();
    RegionModel model(&catalog, nullptr);
    settle(model);

    valueOf(model, "FI", "sizeOnDisk");
    QTRY_COMPARE(valueOf(model, "FI", "sizeOnDisk").toLongLong(), 5);
}

void RegionModelTest::theCatalogueMayGoFirst()
{
    Rig rig;
    rig.regions = nordic();
    rig.installed = {{"FI", {"0/1/a.cdt"}}};
    RegionModel &model = rig.open();
    rig.load(); // what is taken over has just begun

    rig.catalog.reset();
    QCoreApplication::processEvents();

    QCOMPARE(model.count(), 5);
    QCOMPARE(valueOf(model, "FI", "name").toString(), text("Finland"));
    QCOMPARE(valueOf(model, "FI", "sizeOnDisk").toLongLong(), -1);
    QVERIFY(model.installedTiles().isEmpty());
    QVERIFY(!model.loading());
}

QTEST_GUILESS_MAIN(RegionModelTest)
#include "tst_regionmodel.moc"
