// SPDX-License-Identifier: MIT
// What happens if data sets are changed from the event loop of a load, an installation, a deletion
// or a write, at every single pass, and from the handlers of the catalogue's signals.
#include "catalog/mapcatalog.h"

#include "catalog/datasets.h"
#include "catalog/everypass.h"
#include <memory>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTest>

class MapCatalogDataSetReentrancyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aFolderChangeWaits_data();
    void aFolderChangeWaits();
    void anotherCataloguesSwapWaits_data() { aFolderChangeWaits_data(); }
    void anotherCataloguesSwapWaits();
    void whatIsMeantForTheNewDataSetStaysOutOfTheOld_data() { aFolderChangeWaits_data(); }
    void whatIsMeantForTheNewDataSetStaysOutOfTheOld();
    void suffixesKeepTheirOrder_data() { aFolderChangeWaits_data(); }
    void suffixesKeepTheirOrder();
    void aNewMapsVersionBehindAResetIsKept();
    void severalCataloguesWaitForOne();
    void aNewCatalogueDoesNotWaitForAnother();
    void aHandlerDuringASwapWaitsForItsMoves();
    void aDeathEndsWhatWaits_data() { aFolderChangeWaits_data(); }
    void aDeathEndsWhatWaits();
    void aDeathDoesNotHoldUpAnother_data() { aFolderChangeWaits_data(); }
    void aDeathDoesNotHoldUpAnother();
    void theCatalogueMayDieInAHandler_data();
    void theCatalogueMayDieInAHandler();

private:
    void reset();
    void verifyMain(const char *suffix = "");
    void verifyPrepared(const char *suffix);
    QString installedIn(const char *suffix) const;
    QString tilesIn(const char *suffix) const;

    std::unique_ptr<DataSets> m_data;
    std::unique_ptr<MapCatalog> m_catalog;
    // What the step leaves in the main data set.
    QString m_installed;
    QString m_tiles;
};

namespace {

const char Prepared[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<directory map-version=\"1.2\">"
    "<diskcache/><regions><region id=\"14\" name=\"Region 4\"/></regions>"
    "</directory>";

void seed(MapCatalog *catalog)
{
    catalog->resetInstanceWithPathSuffix(text("_seeded"), true);
}

} // namespace

void MapCatalogDataSetReentrancyTest::init()
{
    m_data = std::make_unique<DataSets>();
    reset();
}

void MapCatalogDataSetReentrancyTest::cleanup()
{
    m_catalog.reset();
    m_data.reset();
}

// Main: regions 1 to 4 are available; 1 and 2 are installed and share a tile. "_new": 4 is
// installed.
void MapCatalogDataSetReentrancyTest::reset()
{
    m_catalog.reset();
    m_data.reset();
    m_data = std::make_unique<DataSets>();
    const QByteArray regions =
        fileElement("1") + fileElement("2") + fileElement("3") + fileElement("4");
    m_data->setCatalog(regions);
    m_data->setContent(
        {{"1", {"a/3/one.cdt", "a/3/both.cdt"}}, {"2", {"a/3/both.cdt", "b/4/two.cdt"}}});
    writeFile(m_data->namesFile(), "<n><region id=\"1\" name=\"One\"/></n>");
    writeFile(m_data->configFile(), mosHeader(1));
    for (const char *tile : {"a/3/one.cdt", "a/3/both.cdt", "b/4/two.cdt", "c/5/three.cdt"})
        m_data->makeTile(tile);

    writeFile(m_data->path("Tessarin_new/catalog-1.2.xml"), "<Catalog>" + regions + "</Catalog>");
    writeFile(m_data->path("Tessarin_new/content.xml"), Prepared);
    writeFile(m_data->path("diskcache_new/config.cfg"), mosHeader(2));
    // The same names as in the main set: a deletion there must not reach these.
    for (const char *tile : {"a/3/one.cdt", "a/3/both.cdt"})
        writeFile(m_data->path("diskcache_new/") + text(tile), "prepared");
    m_catalog = std::make_unique<MapCatalog>();
    m_catalog->updateCatalog();
}

QString MapCatalogDataSetReentrancyTest::installedIn(const char *suffix) const
{
    return MapCatalogProcessor()
        .readLocalContent(m_data->path("Tessarin%1/content.xml").arg(text(suffix)))
        .join(QLatin1Char(' '));
}

QString MapCatalogDataSetReentrancyTest::tilesIn(const char *suffix) const
{
    QStringList tiles;
    QDirIterator it(m_data->path("diskcache%1").arg(text(suffix)), {text("*.cdt")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        tiles.append(QFileInfo(it.next()).completeBaseName());
    tiles.sort();
    return tiles.join(QLatin1Char(' '));
}

// The main data set is in the folders with this suffix, as the step has left it.
void MapCatalogDataSetReentrancyTest::verifyMain(const char *suffix)
{
    QCOMPARE(installedIn(suffix), m_installed);
    QCOMPARE(tilesIn(suffix), m_tiles);
    QCOMPARE(readFile(m_data->path("diskcache%1/config.cfg").arg(text(suffix))), mosHeader(1));
}

// The prepared data set is in the folders with this suffix, and not a byte of it has changed.
void MapCatalogDataSetReentrancyTest::verifyPrepared(const char *suffix)
{
    QCOMPARE(readFile(m_data->path("Tessarin%1/content.xml").arg(text(suffix))),
             QByteArray(Prepared));
    QCOMPARE(treeOf(m_data->path("diskcache%1/a").arg(text(suffix))),
             QStringList({text("3/both.cdt=prepared"), text("3/one.cdt=prepared")}));
    QCOMPARE(tilesIn(suffix), text("both one"));
    QCOMPARE(readFile(m_data->path("diskcache%1/config.cfg").arg(text(suffix))), mosHeader(2));
}

void MapCatalogDataSetReentrancyTest::aFolderChangeWaits_data()
{
    QTest::addColumn<Step>("step");
    QTest::addColumn<QString>("installed");
    QTest::addColumn<QString>("tiles");

    const QString all = text("both one three two");
    QTest::newRow("for an update")
        << Step([](MapCatalog *catalog) { catalog->updateCatalog(); }) << text("1 2") << all;
    QTest::newRow("for loading the available regions")
        << Step([](MapCatalog *catalog) { catalog->loadAvailableRegions(); }) << text("1 2") << all;
    QTest::newRow("for loading the installed regions")
        << Step([](MapCatalog *catalog) { catalog->loadInstalledRegions(); }) << text("1 2") << all;
    QTest::newRow("for a deletion")
        << Step([](MapCatalog *catalog) { catalog->deleteInstalledRegion(text("1")); }) << text("2")
        << text("both three two");
    QTest::newRow("for an installation") << Step([](MapCatalog *catalog) {
        catalog->addInstalledRegion(text("3"), {text("c/5/three.cdt")});
    }) << text("1 2 3") << all;
    QTest::newRow("for an update of a region") << Step([](MapCatalog *catalog) {
        catalog->addInstalledRegion(text("1"), {text("a/3/both.cdt")});
    }) << text("2 1") << text("both three two");
    QTest::newRow("for writing") << Step([](MapCatalog *catalog) {
        catalog->updateLocalContentFile();
    }) << text("1 2") << all;
}

void MapCatalogDataSetReentrancyTest::aFolderChangeWaits()
{
    QFETCH(Step, step);
    QFETCH(QString, installed);
    QFETCH(QString, tiles);
    m_installed = installed;
    m_tiles = tiles;
    const auto verifyCalled = [&](const Step &inner, const Function &verify) {
        inEveryPass([this] { reset(); }, [&] { step(m_catalog.get()); },
                    [&] {
                        const QStringList before = m_data->tree();
                        inner(m_catalog.get());
                        QCOMPARE(m_data->tree(), before); // not yet
                        QCOMPARE(m_catalog->tessarinDirectory(), m_data->catalogFolder());
                        QCOMPARE(m_data->commands(), Commands());
                    },
                    verify);
    };

    verifyCalled([](MapCatalog *catalog) { catalog->resetInstanceWithPathSuffix(text("_new")); },
                 [&] {
                     QCOMPARE(m_catalog->tessarinDirectory(), m_data->path("Tessarin_new"));
                     QCOMPARE(m_catalog->installedMOSVersion(), text("2.0.0.0"));
                     verifyMain();
                     verifyPrepared("_new");
                 });
    verifyCalled(seed, [&] {
        QCOMPARE(m_catalog->tessarinDirectory(), m_data->path("Tessarin_seeded"));
        QVERIFY(readFile(m_data->path("Tessarin_seeded/content.xml")).contains("<regions/>"));
        QVERIFY(QFile::exists(m_data->path("Tessarin_seeded/catalog-1.2.xml")));
        QCOMPARE(tilesIn("_seeded"), QString());
        verifyMain();
    });
    verifyCalled(
        [](MapCatalog *catalog) { catalog->swapOriginalFoldersWithSuffixed(text("_new")); },
        [&] {
            QCOMPARE(m_data->commands().size(), 5);
            verifyMain("_");
            verifyPrepared("");
        });
    verifyCalled([](MapCatalog *catalog) { catalog->removeBackupOldFolders(text("_new")); },
                 [&] {
                     QVERIFY(!QFile::exists(m_data->path("Tessarin_new")));
                     QVERIFY(!QFile::exists(m_data->path("diskcache_new")));
                     verifyMain();
                 });
    verifyCalled([](MapCatalog *catalog) { std::as_const(*catalog).removeAllMapData(); },
                 [&] {
                     QVERIFY(treeOf(m_data->catalogFolder()).isEmpty());
                     QVERIFY(treeOf(m_data->tileFolder()).isEmpty());
                     verifyPrepared("_new");
                 });
}

// A deletion would go on in the new set's tiles otherwise, and the old set's content file would
// replace the new one's.
void MapCatalogDataSetReentrancyTest::anotherCataloguesSwapWaits()
{
    QFETCH(Step, step);
    QFETCH(QString, installed);
    QFETCH(QString, tiles);
    m_installed = installed;
    m_tiles = tiles;
    std::unique_ptr<MapCatalog> other;
    const auto verifyCalled = [&](const Step &inner, const Function &verify) {
        inEveryPass(
            [&] {
                other.reset();
                reset();
                other = std::make_unique<MapCatalog>(text("_new"));
            },
            [&] { step(m_catalog.get()); },
            [&] {
                inner(other.get());
                QCOMPARE(m_data->commands(), Commands()); // not yet
            },
            verify);
    };

    verifyCalled(
        [](MapCatalog *catalog) { catalog->swapOriginalFoldersWithSuffixed(text("_new")); },
        [&] {
            QCOMPARE(m_data->commands().size(), 5);
            verifyMain("_");
            verifyPrepared("");
        });
    verifyCalled([](MapCatalog *catalog) { catalog->removeAllMapData(); },
                 [&] {
                     QVERIFY(treeOf(m_data->path("Tessarin_new")).isEmpty());
                     verifyMain();
                 });
    verifyCalled([](MapCatalog *catalog) { catalog->removeBackupOldFolders(QString()); },
                 [&] {
                     QVERIFY(!QFile::exists(m_data->path("Tessarin_new")));
                     verifyMain();
                 });
    other.reset();
}

void MapCatalogDataSetReentrancyTest::whatIsMeantForTheNewDataSetStaysOutOfTheOld()
{
    QFETCH(Step, step);
    QFETCH(QString, installed);
    QFETCH(QString, tiles);
    m_installed = installed;
    m_tiles = tiles;
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.0\nQtObject { function prepare(catalog) {\n"
                      " catalog.resetInstanceWithPathSuffix('_seeded', true)\n"
                      " catalog.installedMOSVersion = '9.0.0.0'\n"
                      " catalog.updateCatalog()\n"
                      " catalog.addInstalledRegion('3', ['d/6/new.cdt']) } }",
                      QUrl());
    const std::unique_ptr<QObject> script(component.create());
    QVERIFY2(script, qPrintable(component.errorString()));

    inEveryPass([this] { reset(); }, [&] { step(m_catalog.get()); },
                [&] {
                    QQmlEngine::setObjectOwnership(m_catalog.get(), QQmlEngine::CppOwnership);
                    QVERIFY(QMetaObject::invokeMethod(
                        script.get(), "prepare",
                        Q_ARG(QVariant, QVariant::fromValue<QObject *>(m_catalog.get()))));
                },
                [&] {
                    QCOMPARE(m_catalog->tessarinDirectory(), m_data->path("Tessarin_seeded"));
                    QCOMPARE(installedIn("_seeded"), text("3"));
                    QCOMPARE(ids(m_catalog->installedRegions()), text("3"));
                    QCOMPARE(ids(m_catalog->availableRegions()), text("1 2 3 4"));
                    QCOMPARE(readFile(m_data->path("diskcache_seeded/config.cfg")), mosHeader(9));
                    QVERIFY(!m_catalog->bussy());
                    verifyMain();
                    verifyPrepared("_new");
                });
}

void MapCatalogDataSetReentrancyTest::suffixesKeepTheirOrder()
{
    QFETCH(Step, step);

    inEveryPass([this] { reset(); }, [&] { step(m_catalog.get()); },
                [&] {
                    m_catalog->setPathSuffix(text("_a"));
                    m_catalog->initFolderStructure();
                    m_catalog->resetInstanceWithPathSuffix(text("_b"), true);
                    m_catalog->setPathSuffix(text("_c"));
                    m_catalog->initialize();
                    m_catalog->setPathSuffix(text("_d"));
                    QCOMPARE(m_catalog->tessarinDirectory(), m_data->catalogFolder()); // not yet
                    QCOMPARE(m_data->commands(), Commands());
                },
                [&] {
                    QCOMPARE(m_catalog->tessarinDirectory(), m_data->path("Tessarin_c"));
                    QVERIFY(QFile::exists(m_data->path("Tessarin_a_b/content.xml")));
                    QVERIFY(QFile::exists(m_data->path("Tessarin_b")));
                    QVERIFY(!QFile::exists(m_data->path("Tessarin_d")));
                    m_catalog->initFolderStructure();
                    QCOMPARE(m_catalog->tessarinDirectory(), m_data->path("Tessarin_d"));
                });
}

void MapCatalogDataSetReentrancyTest::aNewMapsVersionBehindAResetIsKept()
{
    inEveryPass([this] { reset(); }, [&] { m_catalog->updateCatalog(); },
                [&] {
                    m_catalog->resetInstanceWithPathSuffix(text("_new"));
                    m_catalog->setInstalledMapsVersion(text("5.1"));
                },
                [&] { QCOMPARE(m_catalog->installedMapsVersion(), text("5.1")); });
}

void MapCatalogDataSetReentrancyTest::severalCataloguesWaitForOne()
{
    MapCatalog first(text("_new"));
    MapCatalog second(text("_new"));
    Commands during;
    {
        EveryPass poke(
            [&] {
                second.swapOriginalFoldersWithSuffixed(text("_new"));
                first.removeBackupOldFolders(text("_x"));
                second.updateCatalog(); // behind its own swap
                during = m_data->commands();
            },
            3);
        m_catalog->deleteInstalledRegion(text("1"));
        QVERIFY(poke.hasCalled());
    }

    m_installed = text("2");
    m_tiles = text("both three two");
    QCOMPARE(during, Commands());
    QCOMPARE(m_data->commands().size(), 5); // there are no backups of "_new"
    QCOMPARE(ids(second.installedRegions()), text("4"));
    verifyMain("_");
    verifyPrepared("");
}

void MapCatalogDataSetReentrancyTest::aNewCatalogueDoesNotWaitForAnother()
{
    int made = 0;
    {
        const EveryPass poke([&] {
            MapCatalog other(text("_new"));
            QCOMPARE(other.installedMOSVersion(), text("2.0.0.0"));
            other.resetInstanceWithPathSuffix(QString());
            QCOMPARE(other.installedMOSVersion(), text("1.0.0.0"));
            ++made;
        });
        m_catalog->updateCatalog();
    }

    QVERIFY(made > 5);
}

void MapCatalogDataSetReentrancyTest::aHandlerDuringASwapWaitsForItsMoves()
{
    m_installed = text("1 2");
    m_tiles = text("both one three two");
    connect(m_catalog.get(), &MapCatalog::tessarinDirectoryChanged, m_catalog.get(), [&] {
        if (!m_data->commands().isEmpty())
            return;
        m_catalog->updateCatalog();
        m_catalog->deleteInstalledRegion(text("1")); // of the main set, not of the new one
        m_catalog->addInstalledRegion(text("3"), {});
        QCOMPARE(m_data->commands(), Commands());
    });

    m_catalog->swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(m_data->commands().size(), 5);
    QCOMPARE(ids(m_catalog->installedRegions()), text("4 3"));
    QCOMPARE(installedIn(""), text("4 3"));
    QCOMPARE(tilesIn(""), text("both one"));
    verifyMain("_");
}

void MapCatalogDataSetReentrancyTest::aDeathEndsWhatWaits()
{
    QFETCH(Step, step);

    inEveryPass([this] { reset(); }, [&] { step(m_catalog.get()); },
                [&] {
                    m_catalog->swapOriginalFoldersWithSuffixed(text("_new"));
                    seed(m_catalog.get());
                    m_catalog->removeAllMapData();
                    m_catalog.reset();
                },
                [&] {
                    QCOMPARE(m_data->commands(), Commands());
                    QVERIFY(installedIn("").contains(text("2")));
                    verifyPrepared("_new");
                });
}

void MapCatalogDataSetReentrancyTest::aDeathDoesNotHoldUpAnother()
{
    QFETCH(Step, step);
    std::unique_ptr<MapCatalog> other;

    inEveryPass(
        [&] {
            other.reset();
            reset();
            other = std::make_unique<MapCatalog>(text("_new"));
        },
        [&] { step(m_catalog.get()); },
        [&] {
            other->swapOriginalFoldersWithSuffixed(text("_new"));
            m_catalog.reset();
        },
        [&] {
            QCOMPARE(m_data->commands().size(), 5);
            QVERIFY(installedIn("_").contains(text("2")));
            verifyPrepared("");
        });
    other.reset();
}

void MapCatalogDataSetReentrancyTest::theCatalogueMayDieInAHandler_data()
{
    QTest::addColumn<Step>("step");
    QTest::addColumn<int>("tellings");

    QTest::newRow("of a reset") << Step([](MapCatalog *catalog) {
        catalog->resetInstanceWithPathSuffix(text("_new"));
    }) << 4;
    QTest::newRow("of a seeding reset") << Step(seed) << 4;
    QTest::newRow("of initializing")
        << Step([](MapCatalog *catalog) { catalog->initialize(); }) << 4;
    QTest::newRow("of setting up the folders")
        << Step([](MapCatalog *catalog) { catalog->initFolderStructure(); }) << 2;
    QTest::newRow("of a swap") << Step([](MapCatalog *catalog) {
        catalog->swapOriginalFoldersWithSuffixed(text("_new"));
    }) << 2;
}

// That nothing is touched afterwards, the address sanitizer tells.
void MapCatalogDataSetReentrancyTest::theCatalogueMayDieInAHandler()
{
    QFETCH(Step, step);
    QFETCH(int, tellings);
    int deaths = 0;
    // In the first signal that it emits, in the second, and so on.
    for (int last = 1; deaths == last - 1; ++last) {
        reset();
        int signal = 0;
        const auto handler = [&] {
            if (++signal == last) {
                ++deaths;
                m_catalog.reset();
            }
        };
        for (const auto &told :
             {&MapCatalog::mapBaseDirectoryChanged, &MapCatalog::tessarinDirectoryChanged,
              &MapCatalog::installedMapsVersionChanged, &MapCatalog::installedMOSVersionChanged})
            connect(m_catalog.get(), told, this, handler);

        step(m_catalog.get());

        QCOMPARE(signal, qMin(last, tellings)); // nothing more is told
        QVERIFY(deaths < last || installedIn("") == text("1 2"));
    }

    QCOMPARE(deaths, tellings);
}

QTEST_GUILESS_MAIN(MapCatalogDataSetReentrancyTest)

#include "tst_mapcatalogdatasetreentrancy.moc"
