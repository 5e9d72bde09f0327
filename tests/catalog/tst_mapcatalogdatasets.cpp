// SPDX-License-Identifier: MIT
// Seeding a data set and going over to it: the commands, and what they leave.
#include "catalog/mapcatalog.h"

#include "catalog/datasets.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QTest>

class MapCatalogDataSetsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<DataSets>(); }
    void cleanup() { m_data.reset(); }

    void seedingRunsItsCommandsInOrder();
    void seedingMakesNoFolderThatIsThere();
    void seedingCopiesCatalogueNamesAndConfig();
    void seedingLeavesOtherFilesBehind();
    void seedingWritesAnEmptyContentFile_data();
    void seedingWritesAnEmptyContentFile();
    void seedingReplacesAnOldContentFile();
    void seedingBesideMissingFilesIsSilent();
    void seedingASuffixedInstanceAddsASecondSuffix();
    void withoutTheFlagNothingIsSeeded();
    void anEmptySuffixGoesBackToTheMainFolders_data();
    void anEmptySuffixGoesBackToTheMainFolders();
    void resettingTellsAndRereadsVersionsButNotLists();
    void scriptsResetWithDefaultArguments();
    void scriptsCannotSwap();

private:
    std::unique_ptr<DataSets> m_data;
};

void MapCatalogDataSetsTest::seedingRunsItsCommandsInOrder()
{
    MapCatalog catalog;

    catalog.resetInstanceWithPathSuffix(text("_new"), true);

    const Commands expected {
        "mkdir C/Tessarin_new/",
        "cp C/Tessarin/catalog* C/Tessarin_new/",
        "touch C/Tessarin_new/content.xml",
        "cp C/Tessarin/regionname* C/Tessarin_new/",
        "mkdir C/diskcache_new/",
        "cp C/diskcache/config.cfg C/diskcache_new/",
    };
    QCOMPARE(m_data->commands(), expected);
}

void MapCatalogDataSetsTest::seedingMakesNoFolderThatIsThere()
{
    QDir().mkpath(m_data->path("Tessarin_new"));
    QDir().mkpath(m_data->path("diskcache_new"));
    MapCatalog catalog;

    catalog.resetInstanceWithPathSuffix(text("_new"), true);

    const Commands expected {
        "cp C/Tessarin/catalog* C/Tessarin_new/",
        "touch C/Tessarin_new/content.xml",
        "cp C/Tessarin/regionname* C/Tessarin_new/",
        "cp C/diskcache/config.cfg C/diskcache_new/",
    };
    QCOMPARE(m_data->commands(), expected);
}

void MapCatalogDataSetsTest::seedingCopiesCatalogueNamesAndConfig()
{
    writeFile(m_data->path("Tessarin/catalog-1.2.xml"), "one");
    writeFile(m_data->path("Tessarin/catalog-2.0.xml"), "two");
    writeFile(m_data->path("Tessarin/catalogue.txt"), "any");
    writeFile(m_data->path("Tessarin/regionname-lang-001.xml"), "English");
    writeFile(m_data->path("Tessarin/regionname-lang-003.xml"), "Deutsch");
    writeFile(m_data->configFile(), mosHeader(7) + "rest");
    MapCatalog catalog;
    catalog.setInstalledMapsVersion(text("1.2"));

    catalog.resetInstanceWithPathSuffix(text("_new"), true);

    QCOMPARE(
        treeOf(m_data->path("Tessarin_new")),
        QStringList(
            {text("catalog-1.2.xml=one"), text("catalog-2.0.xml=two"), text("catalogue.txt=any"),
             text("content.xml=")
                 + QString::fromUtf8(readFile(m_data->path("Tessarin_new/content.xml"))),
             text("regionname-lang-001.xml=English"), text("regionname-lang-003.xml=Deutsch")}));
    QCOMPARE(QDir(m_data->path("diskcache_new")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList {text("config.cfg")});
    QCOMPARE(readFile(m_data->path("diskcache_new/config.cfg")), mosHeader(7) + "rest");
    QCOMPARE(catalog.installedMOSVersion(), text("7.0.0.0"));
    QCOMPARE(catalog.installedMapsVersion(), text("1.2"));
}

void MapCatalogDataSetsTest::seedingLeavesOtherFilesBehind()
{
    writeFile(m_data->path("Tessarin/other.xml"), "other");
    writeFile(m_data->path("Tessarin/.catalog"), "hidden");
    writeFile(m_data->path("diskcache/a/3/x.cdt"), "tile");
    writeFile(m_data->path("diskcache/voices/en.zip"), "voice");
    const QStringList before = m_data->tree();
    MapCatalog catalog;

    catalog.resetInstanceWithPathSuffix(text("_new"), true);

    QCOMPARE(QDir(m_data->path("Tessarin_new"))
                 .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList {text("content.xml")});
    QVERIFY(treeOf(m_data->path("diskcache_new")).isEmpty());
    for (const QString &file : before)
        QVERIFY2(m_data->tree().contains(file),
                 qPrintable(file)); // of the main set nothing is changed
}

void MapCatalogDataSetsTest::seedingWritesAnEmptyContentFile_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QByteArray>("written");

    QTest::newRow("a version") << text("5.1") << QByteArray("5.1");
    QTest::newRow("no version") << QString() << QByteArray();
    QTest::newRow("beyond ASCII") << text("Ä日") << QByteArray("Ä日");
    // As it stands it would make a file that no reader takes.
    QTest::newRow("a version of marks") << text("a\"b<c&d") << QByteArray("a&quot;b&lt;c&amp;d");
}

void MapCatalogDataSetsTest::seedingWritesAnEmptyContentFile()
{
    QFETCH(QString, version);
    QFETCH(QByteArray, written);
    MapCatalog catalog;
    catalog.setInstalledMapsVersion(version);

    catalog.resetInstanceWithPathSuffix(text("_new"), true);

    QCOMPARE(readFile(m_data->path("Tessarin_new/content.xml")),
             "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<directory map-version=\"" + written
                 + "\">\n<diskcache/>\n<regions/>\n</directory>");
    QCOMPARE(catalog.installedMapsVersion(), version);
    QVERIFY(!QFile::exists(m_data->contentFile()));
}

void MapCatalogDataSetsTest::seedingReplacesAnOldContentFile()
{
    m_data->setContent({{"1", {"a/3/x.cdt"}}});
    const QByteArray main = readFile(m_data->contentFile());
    writeFile(m_data->path("Tessarin_new/content.xml"), QByteArray(10000, 'x'));
    writeFile(m_data->path("Tessarin_new/kept.txt"), "kept");
    MapCatalog catalog;

    catalog.resetInstanceWithPathSuffix(text("_new"), true);

    QVERIFY(
        readFile(m_data->path("Tessarin_new/content.xml")).endsWith("<regions/>\n</directory>"));
    QCOMPARE(readFile(m_data->path("Tessarin_new/kept.txt")), QByteArray("kept"));
    QCOMPARE(readFile(m_data->contentFile()), main);
    QCOMPARE(catalog.installedMapsVersion(), text("1.2"));
}

void MapCatalogDataSetsTest::seedingBesideMissingFilesIsSilent()
{
    MapCatalog catalog;
    QVERIFY(QDir(m_data->citiesFolder()).removeRecursively());
    const LogCatcher log(4);

    catalog.resetInstanceWithPathSuffix(text("_new"), true);

    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(m_data->tree(), QStringList({text("Tessarin_new/"), text("diskcache_new/")}));
}

void MapCatalogDataSetsTest::seedingASuffixedInstanceAddsASecondSuffix()
{
    MapCatalog catalog(text("_a"));

    catalog.resetInstanceWithPathSuffix(text("_b"), true);

    // Seeded is what stands behind the current suffix; gone over is to the suffix alone.
    QVERIFY(QFile::exists(m_data->path("Tessarin_a_b/content.xml")));
    QVERIFY(QDir(m_data->path("diskcache_a_b")).exists());
    QCOMPARE(catalog.tessarinDirectory(), m_data->path("Tessarin_b"));
    QVERIFY(!QFile::exists(m_data->path("Tessarin_b/content.xml")));
}

void MapCatalogDataSetsTest::withoutTheFlagNothingIsSeeded()
{
    writeFile(m_data->path("Tessarin/catalog-1.2.xml"), "one");
    writeFile(m_data->configFile(), mosHeader(7));
    MapCatalog catalog;

    catalog.resetInstanceWithPathSuffix(text("_new"), false);

    QCOMPARE(m_data->commands(), Commands());
    QCOMPARE(catalog.tessarinDirectory(), m_data->path("Tessarin_new"));
    QVERIFY(treeOf(m_data->path("Tessarin_new")).isEmpty());
    QVERIFY(treeOf(m_data->path("diskcache_new")).isEmpty());
    QVERIFY(QDir(m_data->path("diskcache_new")).exists());
}

void MapCatalogDataSetsTest::anEmptySuffixGoesBackToTheMainFolders_data()
{
    QTest::addColumn<bool>("flag");
    QTest::newRow("without the flag") << false;
    QTest::newRow("with the flag") << true;
}

void MapCatalogDataSetsTest::anEmptySuffixGoesBackToTheMainFolders()
{
    QFETCH(bool, flag);
    m_data->setContent({});
    MapCatalog catalog(text("_new"));
    const QStringList before = m_data->tree();

    catalog.resetInstanceWithPathSuffix(QString(), flag);

    QCOMPARE(m_data->commands(), Commands());
    QCOMPARE(catalog.tessarinDirectory(), m_data->catalogFolder());
    QCOMPARE(catalog.installedMapsVersion(), text("1.2"));
    QCOMPARE(m_data->tree(), before);
}

void MapCatalogDataSetsTest::resettingTellsAndRereadsVersionsButNotLists()
{
    m_data->setCatalog(fileElement("1") + fileElement("2"));
    m_data->setContent({{"1", {}}});
    writeFile(m_data->path("Tessarin_new/content.xml"), "<directory map-version=\"9.9\"/>");
    writeFile(m_data->path("diskcache_new/config.cfg"), mosHeader(5));
    MapCatalog catalog;
    catalog.updateCatalog();
    QStringList told;
    const SignalSpies spies(&catalog);
    connect(&catalog, &MapCatalog::mapBaseDirectoryChanged, this, [&] { told << text("base"); });
    connect(&catalog, &MapCatalog::tessarinDirectoryChanged, this, [&] { told << text("folder"); });
    connect(&catalog, &MapCatalog::installedMapsVersionChanged, this,
            [&] { told << text("maps ") + catalog.installedMapsVersion(); });
    connect(&catalog, &MapCatalog::installedMOSVersionChanged, this,
            [&] { told << text("MOS ") + catalog.installedMOSVersion(); });

    catalog.resetInstanceWithPathSuffix(text("_new"));

    QCOMPARE(told,
             QStringList({text("base"), text("folder"), text("maps 9.9"), text("MOS 5.0.0.0")}));
    QCOMPARE(spies.count(), 4);
    QCOMPARE(ids(catalog.availableRegions()), text("1 2"));
    QCOMPARE(ids(catalog.installedRegions()), text("1"));
}

void MapCatalogDataSetsTest::scriptsResetWithDefaultArguments()
{
    MapCatalog catalog(text("_old"));
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(text("catalog"), &catalog);
    QQmlComponent component(&engine);
    component.setData(
        "import QtQml 2.0\nQtObject { property string folder: catalog.tessarinDirectory\n"
        " function none() { catalog.resetInstanceWithPathSuffix() }\n"
        " function suffix() { catalog.resetInstanceWithPathSuffix('_new') }\n"
        " function seeded() { catalog.resetInstanceWithPathSuffix('_new', true) }\n"
        " function empty() { catalog.removeAllMapData() } }",
        QUrl());
    const std::unique_ptr<QObject> script(component.create());
    QVERIFY2(script, qPrintable(component.errorString()));
    const auto call = [&](const char *function) {
        QVERIFY(QMetaObject::invokeMethod(script.get(), function));
    };

    call("none");
    QCOMPARE(script->property("folder").toString(), m_data->path("Tessarin"));
    call("suffix");
    QCOMPARE(script->property("folder").toString(), m_data->path("Tessarin_new"));
    QCOMPARE(m_data->commands(), Commands());
    call("none");
    call("seeded");
    QCOMPARE(script->property("folder").toString(), m_data->path("Tessarin_new"));
    QVERIFY(QFile::exists(m_data->path("Tessarin_new/content.xml")));
    call("empty");
    QVERIFY(!QFile::exists(m_data->path("Tessarin_new/content.xml")));
}

void MapCatalogDataSetsTest::scriptsCannotSwap()
{
    const QMetaObject &meta = MapCatalog::staticMetaObject;

    for (const char *name :
         {"swapOriginalFoldersWithSuffixed(QString)", "removeBackupOldFolders(QString)",
          "execSystem(QString)", "touchSystem(QString)", "removeSystem(QString)",
          "mkDirSystem(QString)", "copySystem(QString,QString)", "moveSystem(QString,QString)"})
        QCOMPARE(meta.indexOfMethod(name), -1);
}

QTEST_GUILESS_MAIN(MapCatalogDataSetsTest)

#include "tst_mapcatalogdatasets.moc"
