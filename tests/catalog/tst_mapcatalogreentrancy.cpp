// SPDX-License-Identifier: MIT
// Loading, installing, deleting and writing run the event loop. What happens if something calls
// in from there, at every single pass.
#include "catalog/mapcatalog.h"

#include "catalog/everypass.h"
#include "catalog/mapdata.h"
#include "testutils/logcatcher.h"
#include <algorithm>
#include <memory>
#include <QDirIterator>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

class MapCatalogReentrancyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void anUpdateDuringAnUpdateIsSkipped();
    void listsAreEmptyWhenTheirRegionsDie();
    void scriptsSeeConsistentListsAllTheTime();
    void aChangeDuringALoadWaits_data();
    void aChangeDuringALoadWaits();
    void changesDuringALoadKeepTheirOrder();
    void filesOfAWaitingInstallationAreKept();
    void aLoadDuringAChangeWaits_data();
    void aLoadDuringAChangeWaits();
    void manyLoadsDuringAChangeAreOne();
    void aLoadDuringALoadWaits_data();
    void aLoadDuringALoadWaits();
    void aHandlerOfTheBusyFlagMayChange();
    void aDeletionInsideADeletionLeavesNoFiles();
    void anInstallationInsideADeletionKeepsItsFiles();
    void aDeletionInsideAnInstallationKeepsItsFiles();
    void installingInsideTheDeletionOfTheSameRegionWins();
    void deletingInsideTheUpdateOfTheSameRegionWins();
    void updatingInsideTheUpdateOfTheSameRegionWins();
    void theContentFileNeverLosesARegion_data();
    void theContentFileNeverLosesARegion();
    void newFoldersDuringADeletionGetNoForeignContentFile();
    void theCatalogueMayDieInItsEventLoop_data();
    void theCatalogueMayDieInItsEventLoop();
    void theCatalogueMayDieInAHandler_data();
    void theCatalogueMayDieInAHandler();
    void anyMixtureEndsInAConsistentState_data();
    void anyMixtureEndsInAConsistentState();

private:
    void reset();
    MapRegion *region(const char *id) { return m_catalog->region(text(id)); }
    QString installed();
    QStringList contentIds() const
    {
        return MapCatalogProcessor().readLocalContent(m_data->contentFile());
    }
    QString onDisk() const;
    QString listedTiles();
    void verifyConsistent();

    std::unique_ptr<MapData> m_data;
    std::unique_ptr<MapCatalog> m_catalog;
};

namespace {

QStringList idsOf(QQmlListProperty<MapRegion> list)
{
    QStringList ids;
    for (int i = 0; i < int(list.count(&list)); ++i)
        ids.append(list.at(&list, i)->id());
    return ids;
}

void update(MapCatalog *catalog)
{
    catalog->updateCatalog();
}
void loadAvailable(MapCatalog *catalog)
{
    catalog->loadAvailableRegions();
}
void loadInstalled(MapCatalog *catalog)
{
    catalog->loadInstalledRegions();
}
void loadBoth(MapCatalog *catalog)
{
    catalog->loadAvailableRegions();
    catalog->loadInstalledRegions();
}
void write(MapCatalog *catalog)
{
    catalog->updateLocalContentFile();
}
void remove1(MapCatalog *catalog)
{
    catalog->deleteInstalledRegion(text("1"));
}
void install3(MapCatalog *catalog)
{
    catalog->addInstalledRegion(text("3"), {text("c/5/three.cdt")});
}
void update1(MapCatalog *catalog)
{
    catalog->addInstalledRegion(text("1"), {text("a/3/both.cdt")});
}

} // namespace

// Regions 1 to 4 are available; 1 and 2 are installed and share a tile.
void MapCatalogReentrancyTest::init()
{
    m_data = std::make_unique<MapData>();
    m_data->setCatalog(fileElement("1", fileElement("11")) + fileElement("2") + fileElement("3")
                       + fileElement("4"));
    writeFile(m_data->namesFile(),
              "<n><region id=\"1\" name=\"One\"/><region id=\"2\" name=\"Two\"/></n>");
    reset();
}

void MapCatalogReentrancyTest::cleanup()
{
    m_catalog.reset();
    m_data.reset();
}

void MapCatalogReentrancyTest::reset()
{
    m_catalog.reset();
    QDir(m_data->tileFolder()).removeRecursively();
    for (const char *tile : {"a/3/one.cdt", "a/3/both.cdt", "b/4/two.cdt", "c/5/three.cdt"})
        m_data->makeTile(tile);
    m_data->setContent(
        {{"1", {"a/3/one.cdt", "a/3/both.cdt"}}, {"2", {"a/3/both.cdt", "b/4/two.cdt"}}});
    m_catalog = std::make_unique<MapCatalog>();
    m_catalog->updateCatalog();
}

QString MapCatalogReentrancyTest::installed()
{
    return idsOf(m_catalog->installedRegions()).join(QLatin1Char(' '));
}

QString MapCatalogReentrancyTest::onDisk() const
{
    QStringList tiles;
    QDirIterator it(m_data->tileFolder(), QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        tiles.append(QFileInfo(it.next()).completeBaseName());
    tiles.sort();
    return tiles.join(QLatin1Char(' '));
}

QString MapCatalogReentrancyTest::listedTiles()
{
    QSet<QString> tiles;
    auto list = m_catalog->installedRegions();
    for (int i = 0; i < int(list.count(&list)); ++i) {
        for (QString entry : list.at(&list, i)->fileList())
            tiles.insert(
                QFileInfo(entry.replace(QLatin1Char('\\'), QLatin1Char('/'))).completeBaseName());
    }
    QStringList sorted(tiles.cbegin(), tiles.cend());
    sorted.sort();
    return sorted.join(QLatin1Char(' '));
}

// What is shown, what is marked and what is written are the same.
void MapCatalogReentrancyTest::verifyConsistent()
{
    const QStringList shown = idsOf(m_catalog->installedRegions());
    QCOMPARE(contentIds(), shown);
    const QStringList available = idsOf(m_catalog->availableRegions());
    QCOMPARE(available.join(QLatin1Char(' ')), text("11 1 2 3 4"));
    for (const QString &id : available)
        QCOMPARE(m_catalog->region(id)->installed(), shown.contains(id));
    auto list = m_catalog->installedRegions();
    for (int i = 0; i < int(list.count(&list)); ++i)
        QCOMPARE(list.at(&list, i), m_catalog->region(shown.at(i)));
    QVERIFY(!m_catalog->bussy());
}

void MapCatalogReentrancyTest::anUpdateDuringAnUpdateIsSkipped()
{
    QSignalSpy busy(m_catalog.get(), &MapCatalog::bussyChanged);
    QSignalSpy available(m_catalog.get(), &MapCatalog::availableRegionsChanged);
    const LogCatcher log(3);
    int skipped = 0;
    {
        const EveryPass poke([&] {
            const QStringList before = idsOf(m_catalog->availableRegions());
            QVERIFY(m_catalog->bussy());
            m_catalog->updateCatalog();
            QVERIFY(m_catalog->bussy());
            QCOMPARE(idsOf(m_catalog->availableRegions()), before);
            ++skipped;
        });
        m_catalog->updateCatalog();
    }

    QVERIFY2(skipped >= 5 + 5 + 2 + 2, qPrintable(QString::number(skipped)));
    QCOMPARE(log.count(text("[INFO] Skipping action...")), skipped);
    QCOMPARE(busy.count(), 2);
    QCOMPARE(available.count(), 1);
    verifyConsistent();
}

void MapCatalogReentrancyTest::listsAreEmptyWhenTheirRegionsDie()
{
    auto available = m_catalog->availableRegions();
    auto installed = m_catalog->installedRegions();
    int died = 0;
    for (const Step &load : {Step(update), Step(loadAvailable)}) {
        for (const QString &id : idsOf(available)) {
            connect(m_catalog->region(id), &QObject::destroyed, this, [&, id] {
                ++died;
                QCOMPARE(int(available.count(&available)), 0);
                QCOMPARE(int(installed.count(&installed)), 0);
                QCOMPARE(m_catalog->region(id), nullptr);
            });
        }
        load(m_catalog.get());
    }

    QCOMPARE(died, 2 * 5);
}

void MapCatalogReentrancyTest::scriptsSeeConsistentListsAllTheTime()
{
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(text("catalog"), m_catalog.get());
    QQmlComponent component(&engine);
    component.setData(
        "import QtQml 2.0\nQtObject {\n"
        " property int reads: 0\n property string errors: ''\n property var kept: []\n"
        " property int bound: catalog.availableRegions.length + catalog.installedRegions.length\n"
        " function read(list) {\n"
        "  for (var i = 0; i < list.length; ++i) {\n"
        "   var region = list[i]\n"
        "   if (!region || region.id === '' || region.name.indexOf('Region') !== 0)\n"
        "    errors += i + ': ' + region + ' '\n"
        "   for (var k = 0; k < region.children.length; ++k)\n"
        "    if (!region.children[k].hasParent) errors += 'child ' + k\n"
        "   kept.push(region); reads += 1 } }\n"
        " function look() { try { read(catalog.availableRegions); read(catalog.installedRegions)\n"
        "   kept = kept.slice(-50)\n"
        "   catalog.region('1') } catch (e) { errors += e } } }",
        QUrl());
    std::unique_ptr<QObject> script(component.create());
    QVERIFY2(script, qPrintable(component.errorString()));
    const EveryPass look([&] { QMetaObject::invokeMethod(script.get(), "look"); });

    for (int round = 0; round < 5; ++round) {
        for (const Step &step : {Step(update), Step(loadAvailable), Step(loadInstalled),
                                 Step(remove1), Step(install3), Step(update1), Step(write)}) {
            step(m_catalog.get());
            if (round % 2 == 1)
                engine.collectGarbage();
        }
    }

    QCOMPARE(script->property("errors").toString(), QString());
    QVERIFY(script->property("reads").toInt() > 1000);
    QCOMPARE(script->property("bound").toInt(), 5 + 3);
    verifyConsistent();
}

void MapCatalogReentrancyTest::aChangeDuringALoadWaits_data()
{
    QTest::addColumn<Step>("load");
    QTest::newRow("an update") << Step(update);
    QTest::newRow("loading the available regions") << Step(loadAvailable);
    QTest::newRow("loading the installed regions") << Step(loadInstalled);
    QTest::newRow("loading both") << Step(loadBoth);
}

void MapCatalogReentrancyTest::aChangeDuringALoadWaits()
{
    QFETCH(Step, load);
    const QByteArray before = readFile(m_data->contentFile());
    const auto whenReset = [this] { reset(); };
    const auto loads = [&] { load(m_catalog.get()); };

    inEveryPass(
        whenReset, loads,
        [&] {
            m_catalog->deleteInstalledRegion(text("1"));
            QVERIFY(m_data->hasTile("a/3/one.cdt")); // not yet
            QCOMPARE(readFile(m_data->contentFile()), before);
        },
        [&] {
            QCOMPARE(installed(), text("2"));
            QCOMPARE(onDisk(), text("both three two"));
            verifyConsistent();
        });
    inEveryPass(
        whenReset, loads, [&] { install3(m_catalog.get()); },
        [&] {
            QCOMPARE(installed(), text("1 2 3"));
            QCOMPARE(listedTiles(), text("both one three two"));
            QCOMPARE(onDisk(), text("both one three two"));
            verifyConsistent();
        });
    inEveryPass(
        whenReset, loads, [&] { update1(m_catalog.get()); },
        [&] {
            QCOMPARE(installed(), text("2 1"));
            QCOMPARE(onDisk(), text("both three two"));
            verifyConsistent();
        });
    inEveryPass(
        whenReset, loads, [&] { m_catalog->updateLocalContentFile(); },
        [&] {
            QCOMPARE(installed(), text("1 2"));
            QVERIFY(readFile(m_data->contentFile()).contains("name=\"three\""));
            verifyConsistent();
        });
}

void MapCatalogReentrancyTest::changesDuringALoadKeepTheirOrder()
{
    inEveryPass([this] { reset(); }, [&] { m_catalog->updateCatalog(); },
                [&] {
                    m_catalog->deleteInstalledRegion(text("1"));
                    m_catalog->addInstalledRegion(text("1"), {text("a/3/both.cdt")});
                    m_catalog->deleteInstalledRegion(text("2"));
                    m_catalog->addInstalledRegion(text("4"), {});
                    m_catalog->loadInstalledRegions();
                    m_catalog->deleteInstalledRegion(text("4"));
                },
                [&] {
                    QCOMPARE(installed(), text("1"));
                    QCOMPARE(onDisk(), text("both three"));
                    verifyConsistent();
                });
}

void MapCatalogReentrancyTest::filesOfAWaitingInstallationAreKept()
{
    inEveryPass([this] { reset(); }, [&] { m_catalog->updateCatalog(); },
                [&] {
                    // Each brings files that the change before it would delete.
                    m_catalog->deleteInstalledRegion(text("1"));
                    m_data->makeTile("a/3/one.cdt");
                    m_catalog->addInstalledRegion(text("3"), {text("a/3/one.cdt")});
                    m_catalog->addInstalledRegion(text("2"), {text("a/3/both.cdt")});
                    m_data->makeTile("b/4/two.cdt");
                    m_catalog->addInstalledRegion(text("4"), {text("b/4/two.cdt")});
                },
                [&] {
                    QCOMPARE(installed(), text("3 2 4"));
                    QCOMPARE(onDisk(), text("both one three two"));
                    verifyConsistent();
                });
}

void MapCatalogReentrancyTest::aLoadDuringAChangeWaits_data()
{
    QTest::addColumn<Step>("change");
    QTest::addColumn<QString>("ids");
    QTest::addColumn<QString>("tiles");
    QTest::newRow("a deletion") << Step(remove1) << text("2") << text("both three two");
    QTest::newRow("an installation")
        << Step(install3) << text("1 2 3") << text("both one three two");
    QTest::newRow("an update") << Step(update1) << text("2 1") << text("both three two");
    QTest::newRow("writing") << Step(write) << text("1 2") << text("both one three two");
}

void MapCatalogReentrancyTest::aLoadDuringAChangeWaits()
{
    QFETCH(Step, change);
    QFETCH(QString, ids);
    QFETCH(QString, tiles);

    for (const Step &load :
         {Step(update), Step(loadAvailable), Step(loadInstalled), Step(loadBoth)}) {
        int loaded = 0;
        inEveryPass(
            [&] {
                reset();
                loaded = 0;
                connect(m_catalog.get(), &MapCatalog::availableRegionsChanged, this,
                        [&] { ++loaded; });
                connect(m_catalog.get(), &MapCatalog::installedRegionsChanged, this,
                        [&] { ++loaded; });
            },
            [&] { change(m_catalog.get()); },
            [&] {
                MapRegion *before = region("1");
                load(m_catalog.get());
                QCOMPARE(region("1"), before); // not yet
                QCOMPARE(loaded, 0);
            },
            [&] {
                QVERIFY(loaded > 0);
                QCOMPARE(installed(), ids);
                QCOMPARE(onDisk(), tiles);
                verifyConsistent();
            });
    }
}

void MapCatalogReentrancyTest::manyLoadsDuringAChangeAreOne()
{
    QSignalSpy busy(m_catalog.get(), &MapCatalog::bussyChanged);
    QSignalSpy available(m_catalog.get(), &MapCatalog::availableRegionsChanged);
    int calls = 0;
    {
        const EveryPass poke([&] {
            ++calls;
            m_catalog->updateCatalog();
        });
        m_catalog->deleteInstalledRegion(text("1"));
    }

    QVERIFY(calls > 256);
    QCOMPARE(busy.count(), 2);
    QCOMPARE(available.count(), 1);
    QCOMPARE(installed(), text("2"));
    verifyConsistent();
}

void MapCatalogReentrancyTest::aLoadDuringALoadWaits_data()
{
    aChangeDuringALoadWaits_data();
}

void MapCatalogReentrancyTest::aLoadDuringALoadWaits()
{
    QFETCH(Step, load);

    for (const Step &other : {Step(loadAvailable), Step(loadInstalled), Step(loadBoth)}) {
        inEveryPass([this] { reset(); }, [&] { load(m_catalog.get()); },
                    [&] { other(m_catalog.get()); },
                    [&] {
                        QCOMPARE(installed(), text("1 2"));
                        verifyConsistent();
                    });
    }
}

void MapCatalogReentrancyTest::aHandlerOfTheBusyFlagMayChange()
{
    connect(m_catalog.get(), &MapCatalog::bussyChanged, this, [&] {
        if (!m_catalog->bussy()) {
            m_catalog->deleteInstalledRegion(text("1"));
            QVERIFY(!region("1")->installed()); // nothing runs any more, so it is done at once
        }
    });

    m_catalog->updateCatalog();

    QCOMPARE(installed(), text("2"));
    QCOMPARE(onDisk(), text("both three two"));
    verifyConsistent();
}

void MapCatalogReentrancyTest::aDeletionInsideADeletionLeavesNoFiles()
{
    inEveryPass([this] { reset(); }, [&] { remove1(m_catalog.get()); },
                [&] {
                    m_catalog->deleteInstalledRegion(text("2"));
                    QVERIFY(!region("2")->installed()); // at once
                },
                [&] {
                    QCOMPARE(installed(), QString());
                    QCOMPARE(onDisk(), text("three"));
                    verifyConsistent();
                });
}

void MapCatalogReentrancyTest::anInstallationInsideADeletionKeepsItsFiles()
{
    inEveryPass([this] { reset(); }, [&] { remove1(m_catalog.get()); },
                [&] {
                    m_data->makeTile("a/3/one.cdt");
                    m_catalog->addInstalledRegion(text("3"), {text("a/3/one.cdt")});
                    QVERIFY(region("3")->installed());
                },
                [&] {
                    QCOMPARE(installed(), text("2 3"));
                    QCOMPARE(onDisk(), text("both one three two"));
                    verifyConsistent();
                });
}

void MapCatalogReentrancyTest::aDeletionInsideAnInstallationKeepsItsFiles()
{
    inEveryPass([this] { reset(); },
                [&] { m_catalog->addInstalledRegion(text("3"), {text("a/3/one.cdt")}); },
                [&] { remove1(m_catalog.get()); },
                [&] {
                    QCOMPARE(installed(), text("2 3"));
                    QCOMPARE(onDisk(), text("both one three two"));
                    verifyConsistent();
                });
}

void MapCatalogReentrancyTest::installingInsideTheDeletionOfTheSameRegionWins()
{
    inEveryPass([this] { reset(); }, [&] { remove1(m_catalog.get()); },
                [&] {
                    m_data->makeTile("a/3/one.cdt");
                    m_catalog->addInstalledRegion(text("1"), {text("a/3/one.cdt")});
                },
                [&] {
                    QVERIFY(region("1")->installed());
                    QCOMPARE(region("1")->fileList(), QStringList {text("a/3/one.cdt")});
                    QVERIFY(m_data->hasTile("a/3/one.cdt"));
                    verifyConsistent();
                });
}

void MapCatalogReentrancyTest::deletingInsideTheUpdateOfTheSameRegionWins()
{
    inEveryPass([this] { reset(); }, [&] { update1(m_catalog.get()); },
                [&] { remove1(m_catalog.get()); },
                [&] {
                    QCOMPARE(installed(), text("2"));
                    QCOMPARE(onDisk(), text("both three two"));
                    verifyConsistent();
                });
}

void MapCatalogReentrancyTest::updatingInsideTheUpdateOfTheSameRegionWins()
{
    inEveryPass(
        [this] { reset(); }, [&] { update1(m_catalog.get()); },
        [&] {
            m_data->makeTile("a/3/one.cdt");
            m_data->makeTile("d/6/new.cdt");
            m_catalog->addInstalledRegion(text("1"), {text("a/3/one.cdt"), text("d/6/new.cdt")});
        },
        [&] {
            QCOMPARE(installed(), text("2 1"));
            QCOMPARE(region("1")->fileList(),
                     QStringList({text("a/3/one.cdt"), text("d/6/new.cdt")}));
            QVERIFY(m_data->hasTile("a/3/one.cdt"));
            QVERIFY(m_data->hasTile("d/6/new.cdt"));
            verifyConsistent();
        });
}

void MapCatalogReentrancyTest::theContentFileNeverLosesARegion_data()
{
    QTest::addColumn<Step>("step");
    QTest::newRow("an update") << Step(update);
    QTest::newRow("loading both") << Step(loadBoth);
    QTest::newRow("a deletion") << Step(remove1);
    QTest::newRow("an installation") << Step(install3);
    QTest::newRow("an update of a region") << Step(update1);
    QTest::newRow("writing") << Step(write);
}

void MapCatalogReentrancyTest::theContentFileNeverLosesARegion()
{
    QFETCH(Step, step);
    // Everything that can be called, in every pass, one after the other; and a look at the file.
    const QList<Step> pokes {Step(update), Step(loadAvailable), Step(write), Step(loadInstalled),
                             Step(install3)};
    int calls = 0;
    const EveryPass poke([&] {
        if (++calls < 60)
            pokes.at(calls % pokes.size())(m_catalog.get());
    });
    int looks = 0;
    const EveryPass look([&] {
        ++looks;
        const QStringList ids = contentIds();
        QVERIFY2(ids.contains(text("2")), qPrintable(ids.join(QLatin1Char(' '))));
    });

    for (int round = 0; round < 2; ++round)
        step(m_catalog.get());

    QVERIFY(calls > 10);
    QVERIFY(looks > 10);
    QVERIFY(contentIds().contains(text("2")));
    verifyConsistent();
}

void MapCatalogReentrancyTest::newFoldersDuringADeletionGetNoForeignContentFile()
{
    inEveryPass(
        [&] {
            reset();
            QDir(m_data->catalogFolder() + text("_b")).removeRecursively();
        },
        [&] { remove1(m_catalog.get()); },
        [&] {
            m_catalog->setPathSuffix(text("_b"));
            m_catalog->initFolderStructure();
        },
        [&] {
            QVERIFY(!QFile::exists(m_data->catalogFolder() + text("_b/content.xml")));
            QCOMPARE(contentIds(), QStringList {text("2")});
        });
}

void MapCatalogReentrancyTest::theCatalogueMayDieInItsEventLoop_data()
{
    QTest::addColumn<Step>("step");
    QTest::newRow("of an update") << Step(update);
    QTest::newRow("of loading the available regions") << Step(loadAvailable);
    QTest::newRow("of loading the installed regions") << Step(loadInstalled);
    QTest::newRow("of a deletion") << Step(remove1);
    QTest::newRow("of an installation") << Step(install3);
    QTest::newRow("of an update of a region") << Step(update1);
    QTest::newRow("of writing") << Step(write);
}

// That nothing is touched afterwards, the address sanitizer tells.
void MapCatalogReentrancyTest::theCatalogueMayDieInItsEventLoop()
{
    QFETCH(Step, step);

    inEveryPass([this] { reset(); }, [&] { step(m_catalog.get()); }, [&] { m_catalog.reset(); },
                [&] {
                    QVERIFY(!m_catalog);
                    QVERIFY(contentIds().contains(text("2")));
                });
}

void MapCatalogReentrancyTest::theCatalogueMayDieInAHandler_data()
{
    QTest::addColumn<Step>("step");
    QTest::newRow("of an update") << Step(update);
    QTest::newRow("of loading the available regions") << Step(loadAvailable);
    QTest::newRow("of loading the installed regions") << Step(loadInstalled);
    QTest::newRow("of a deletion") << Step(remove1);
    QTest::newRow("of an installation") << Step(install3);
    QTest::newRow("of an update of a region") << Step(update1);
}

void MapCatalogReentrancyTest::theCatalogueMayDieInAHandler()
{
    QFETCH(Step, step);
    int deaths = 0;
    // In the first signal that anything of it emits, in the second, and so on.
    for (int last = 1; deaths == last - 1; ++last) {
        reset();
        int signal = 0;
        const auto handler = [&] {
            if (++signal == last) {
                ++deaths;
                m_catalog.reset();
            }
        };
        const auto follow = [&] {
            for (const QString &id : idsOf(m_catalog->availableRegions())) {
                MapRegion *region = m_catalog->region(id);
                connect(region, &MapRegion::installedChanged, this, handler);
                connect(region, &MapRegion::fileListChanged, this, handler);
                connect(region, &MapRegion::localizedNameChanged, this, handler);
            }
        };
        follow();
        connect(m_catalog.get(), &MapCatalog::availableRegionsChanged, this, follow);
        connect(m_catalog.get(), &MapCatalog::availableRegionsChanged, this, handler);
        connect(m_catalog.get(), &MapCatalog::installedRegionsChanged, this, handler);
        connect(m_catalog.get(), &MapCatalog::bussyChanged, this, handler);

        step(m_catalog.get());
    }

    QVERIFY(deaths > 0);
}

void MapCatalogReentrancyTest::anyMixtureEndsInAConsistentState_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %d", seed) << seed;
}

// Three callers at once, each in its own timer, so that calls nest three deep.
void MapCatalogReentrancyTest::anyMixtureEndsInAConsistentState()
{
    QFETCH(int, seed);
    quint32 random = quint32(seed);
    const auto next = [&random](int count) {
        random = random * 1664525U + 1013904223U;
        return int((random >> 16) % quint32(count));
    };
    const char *tiles[] = {"a/3/one.cdt", "a/3/both.cdt", "b/4/two.cdt", "c/5/three.cdt",
                           "d/6/four.cdt"};
    QFile::remove(m_data->tile("c/5/three.cdt")); // nobody's
    int calls = 0;
    const auto call = [&] {
        if (++calls > 120)
            return;
        const QString id = QString::number(1 + next(4));
        const int action = next(10);
        if (action < 4) {
            // As a download leaves it: the files are there, then the catalogue is told. Not over
            // an installed region, whose update deliberately takes files from the others.
            if (m_catalog->bussy() || !m_catalog->region(id) || m_catalog->region(id)->installed())
                return;
            QStringList files;
            for (int i = next(3); i >= 0; --i) {
                const char *tile = tiles[next(5)];
                m_data->makeTile(tile);
                files.append(text(tile));
            }
            m_catalog->addInstalledRegion(id, files);
        } else if (action < 7) {
            m_catalog->deleteInstalledRegion(id);
        } else if (action == 7) {
            m_catalog->updateCatalog();
        } else if (action == 8) {
            loadBoth(m_catalog.get());
        } else {
            m_catalog->updateLocalContentFile();
        }
    };
    const EveryPass first(call);
    const EveryPass second(call);
    const EveryPass third(call);

    while (calls <= 120)
        m_catalog->updateLocalContentFile();

    verifyConsistent();
    QCOMPARE(onDisk(), listedTiles());
}

QTEST_GUILESS_MAIN(MapCatalogReentrancyTest)

#include "tst_mapcatalogreentrancy.moc"
