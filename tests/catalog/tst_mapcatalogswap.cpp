// SPDX-License-Identifier: MIT
// Swapping data sets, removing backups and all data: the commands, and what they leave.
#include "catalog/mapcatalog.h"

#include "catalog/datasets.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QSignalSpy>
#include <QTest>

class MapCatalogSwapTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<DataSets>(); }
    void cleanup() { m_data.reset(); }

    void swappingRunsItsCommandsInOrder();
    void swappingTakesTheVoicesAlong();
    void swappingWithoutVoicesMovesTheRest();
    void swappingLeavesLinkedVoicesWithTheBackup();
    void swappingOverOldBackupsMovesIntoThem();
    void swappingAMissingSetOnlyMakesTheBackup();
    void swappingWithAFailedMoveGoesOn();
    void swappingKeepsListsAndVersions();
    void swappingMakesMissingMainFolders();

    void removingBackupsRunsItsCommands_data();
    void removingBackupsRunsItsCommands();
    void removingBackupsConcernsTheCurrentFolders();
    void removingBackupsWithoutASuffixRemovesTheCurrentFolders();

    void removingAllRunsItsCommandsInOrder();
    void removingAllKeepsVoicesAndHiddenFiles();
    void removingAllWithoutVoices();
    void removingAllWithParkedVoicesOfBeforePutsBoth();
    void removingAllChangesNoFieldAndTellsNothing();
    void removingAllOfASuffixedInstanceLeavesTheMainSet();

    void withoutAShellNothingHappens();

private:
    std::unique_ptr<DataSets> m_data;
};

void MapCatalogSwapTest::swappingRunsItsCommandsInOrder()
{
    MapCatalog catalog(text("_new"));

    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    const Commands expected {
        "mv C/diskcache/voices/ C/diskcache_new/voices",
        "mv C/Tessarin C/Tessarin_",
        "mv C/Tessarin_new C/Tessarin",
        "mv C/diskcache C/diskcache_",
        "mv C/diskcache_new C/diskcache",
    };
    QCOMPARE(m_data->commands(), expected);
    QCOMPARE(catalog.tessarinDirectory(), m_data->path("Tessarin"));
}

void MapCatalogSwapTest::swappingTakesTheVoicesAlong()
{
    m_data->makeSet("", "old");
    m_data->makeSet("_new", "new");
    writeFile(m_data->path("diskcache/voices/en/1.ogg"), "voice");
    MapCatalog catalog;

    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(
        m_data->tree(),
        QStringList({text("Tessarin/catalog-1.2.xml=new"), text("Tessarin_/catalog-1.2.xml=old"),
                     text("diskcache/a/3/x.cdt=new"), text("diskcache/voices/en/1.ogg=voice"),
                     text("diskcache_/a/3/x.cdt=old")}));
}

void MapCatalogSwapTest::swappingWithoutVoicesMovesTheRest()
{
    m_data->makeSet("", "old");
    m_data->makeSet("_new", "new");
    MapCatalog catalog;

    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(
        m_data->tree(),
        QStringList({text("Tessarin/catalog-1.2.xml=new"), text("Tessarin_/catalog-1.2.xml=old"),
                     text("diskcache/a/3/x.cdt=new"), text("diskcache_/a/3/x.cdt=old")}));
}

// Deliberate: the slash in the command asks for a folder, and mv refuses a link to one.
void MapCatalogSwapTest::swappingLeavesLinkedVoicesWithTheBackup()
{
    m_data->makeSet("", "old");
    m_data->makeSet("_new", "new");
    writeFile(m_data->path("card/1.ogg"), "voice");
    QVERIFY(QFile::link(m_data->path("card"), m_data->path("diskcache/voices")));
    MapCatalog catalog;

    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    QVERIFY(!QFileInfo::exists(m_data->path("diskcache/voices")));
    QVERIFY(QFileInfo(m_data->path("diskcache_/voices")).isSymLink());
    QCOMPARE(readFile(m_data->path("card/1.ogg")), QByteArray("voice"));
}

// Deliberate: nothing is checked between the moves. The old set ends up inside of the old backup;
// its tiles and the voices are not lost.
void MapCatalogSwapTest::swappingOverOldBackupsMovesIntoThem()
{
    m_data->makeSet("", "old");
    m_data->makeSet("_new", "new");
    m_data->makeSet("_", "older");
    writeFile(m_data->path("diskcache/voices/1.ogg"), "voice");
    MapCatalog catalog;

    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(m_data->tree(),
             QStringList({text("Tessarin/catalog-1.2.xml=new"),
                          text("Tessarin_/Tessarin/catalog-1.2.xml=old"),
                          text("Tessarin_/catalog-1.2.xml=older"), text("diskcache/a/3/x.cdt=new"),
                          text("diskcache/voices/1.ogg=voice"), text("diskcache_/a/3/x.cdt=older"),
                          text("diskcache_/diskcache/a/3/x.cdt=old")}));
}

// Deliberate: the main folders are backups then, and nothing takes their place. The voices become
// the main folder's: with no prepared folder to go into, the move of the voices fails.
void MapCatalogSwapTest::swappingAMissingSetOnlyMakesTheBackup()
{
    m_data->makeSet("", "old");
    writeFile(m_data->path("diskcache/voices/1.ogg"), "voice");
    MapCatalog catalog;
    const LogCatcher log(4);

    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(m_data->tree(),
             QStringList({text("Tessarin_/catalog-1.2.xml=old"), text("diskcache_/a/3/x.cdt=old"),
                          text("diskcache_/voices/1.ogg=voice")}));
    QCOMPARE(log.texts(), QStringList());
}

void MapCatalogSwapTest::swappingWithAFailedMoveGoesOn()
{
    m_data->makeSet("", "old");
    m_data->makeSet("_new", "new");
    m_data->system.answer("mv " + m_data->path("Tessarin_new").toUtf8(), 256);
    MapCatalog catalog;
    const LogCatcher log(4);

    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(m_data->system.commands().size(), 5);
    QCOMPARE(m_data->tree(),
             QStringList({text("Tessarin_/catalog-1.2.xml=old"),
                          text("Tessarin_new/catalog-1.2.xml=new"), text("diskcache/a/3/x.cdt=new"),
                          text("diskcache_/a/3/x.cdt=old")}));
    QCOMPARE(log.texts(), QStringList());
}

void MapCatalogSwapTest::swappingKeepsListsAndVersions()
{
    m_data->setCatalog(fileElement("1"));
    m_data->setContent({{"1", {}}});
    writeFile(m_data->path("Tessarin_new/content.xml"), "<directory map-version=\"9.9\"/>");
    MapCatalog catalog;
    catalog.updateCatalog();
    QSignalSpy base(&catalog, &MapCatalog::mapBaseDirectoryChanged);
    QSignalSpy folder(&catalog, &MapCatalog::tessarinDirectoryChanged);
    QSignalSpy maps(&catalog, &MapCatalog::installedMapsVersionChanged);
    QSignalSpy mos(&catalog, &MapCatalog::installedMOSVersionChanged);
    QSignalSpy available(&catalog, &MapCatalog::availableRegionsChanged);
    QSignalSpy installed(&catalog, &MapCatalog::installedRegionsChanged);

    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(base.count(), 1);
    QCOMPARE(folder.count(), 1);
    QCOMPARE(maps.count() + mos.count() + available.count() + installed.count(), 0);
    QCOMPARE(catalog.installedMapsVersion(), text("1.2"));
    QCOMPARE(ids(catalog.installedRegions()), text("1"));
}

void MapCatalogSwapTest::swappingMakesMissingMainFolders()
{
    MapCatalog catalog(text("_new"));
    QVERIFY(QDir(m_data->path("Tessarin")).removeRecursively());
    QVERIFY(QDir(m_data->path("diskcache")).removeRecursively());
    m_data->makeSet("_new", "new");

    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(m_data->tree(),
             QStringList({text("Tessarin/catalog-1.2.xml=new"), text("Tessarin_/"),
                          text("diskcache/a/3/x.cdt=new"), text("diskcache_/")}));
}

void MapCatalogSwapTest::removingBackupsRunsItsCommands_data()
{
    QTest::addColumn<QByteArrayList>("folders");
    QTest::addColumn<bool>("backups");
    QTest::addColumn<bool>("prepared");
    const QByteArrayList all {"Tessarin_", "diskcache_", "Tessarin_new", "diskcache_new"};
    for (int mask = 0; mask < 16; ++mask) {
        QByteArrayList folders;
        for (int bit = 0; bit < 4; ++bit) {
            if (mask & (1 << bit))
                folders.append(all.at(bit));
        }
        QTest::newRow(folders.isEmpty() ? "neither" : folders.join(" and ").constData())
            << folders << ((mask & 3) != 0) << ((mask & 12) != 0);
    }
}

void MapCatalogSwapTest::removingBackupsRunsItsCommands()
{
    QFETCH(QByteArrayList, folders);
    QFETCH(bool, backups);
    QFETCH(bool, prepared);
    m_data->makeSet("", "main");
    for (const QByteArray &folder : folders)
        writeFile(m_data->path(folder) + text("/sub/.file"), "gone");
    MapCatalog catalog;

    catalog.removeBackupOldFolders(text("_new"));

    Commands expected;
    if (backups)
        expected << "rm -rf C/Tessarin_"
                 << "rm -rf C/diskcache_";
    if (prepared)
        expected << "rm -rf C/Tessarin_new"
                 << "rm -rf C/diskcache_new";
    QCOMPARE(m_data->commands(), expected);
    QCOMPARE(
        m_data->tree(),
        QStringList({text("Tessarin/catalog-1.2.xml=main"), text("diskcache/a/3/x.cdt=main")}));
}

void MapCatalogSwapTest::removingBackupsConcernsTheCurrentFolders()
{
    m_data->makeSet("_", "main's backup");
    m_data->makeSet("_a_", "backup");
    m_data->makeSet("_a_b", "prepared");
    m_data->makeSet("_b", "another");
    MapCatalog catalog(text("_a"));
    const QStringList kept = treeOf(m_data->path("Tessarin_b")) + treeOf(m_data->path("Tessarin_"));

    catalog.removeBackupOldFolders(text("_b"));

    QVERIFY(!QFile::exists(m_data->path("Tessarin_a_"))
            && !QFile::exists(m_data->path("diskcache_a_")));
    QVERIFY(!QFile::exists(m_data->path("Tessarin_a_b"))
            && !QFile::exists(m_data->path("diskcache_a_b")));
    QCOMPARE(treeOf(m_data->path("Tessarin_b")) + treeOf(m_data->path("Tessarin_")), kept);
}

// Deliberate: it is the caller who passes the suffix of the update.
void MapCatalogSwapTest::removingBackupsWithoutASuffixRemovesTheCurrentFolders()
{
    m_data->makeSet("", "main");
    m_data->makeSet("_other", "other");
    MapCatalog catalog;

    catalog.removeBackupOldFolders(QString());

    QCOMPARE(m_data->commands(), Commands({"rm -rf C/Tessarin", "rm -rf C/diskcache"}));
    QCOMPARE(m_data->tree(),
             QStringList({text("Tessarin_other/catalog-1.2.xml=other"),
                          text("diskcache_other/a/3/x.cdt=other")}));
}

void MapCatalogSwapTest::removingAllRunsItsCommandsInOrder()
{
    const MapCatalog catalog;

    catalog.removeAllMapData();

    const Commands expected {
        "rm -rf C/Tessarin/*",
        "mv C/diskcache/voices C/voices",
        "rm -rf C/diskcache/*",
        "mv C/voices C/diskcache/voices",
    };
    QCOMPARE(m_data->commands(), expected);
}

// Deliberate: what is hidden stays, because the shell's "*" does not stand for it.
void MapCatalogSwapTest::removingAllKeepsVoicesAndHiddenFiles()
{
    m_data->makeSet("", "main");
    m_data->makeSet("_", "backup");
    for (const char *path :
         {"Tessarin/sub/file", "Tessarin/.hidden", "diskcache/.hidden/file", "diskcache/config.cfg",
          "diskcache/voices/en/1.ogg", "diskcache/voices/.index", "diskcache/two words"})
        writeFile(m_data->path(path), "x");
    const MapCatalog catalog;

    catalog.removeAllMapData();

    QCOMPARE(
        m_data->tree(),
        QStringList({text("Tessarin/.hidden=x"), text("Tessarin_/catalog-1.2.xml=backup"),
                     text("diskcache/.hidden/file=x"), text("diskcache/voices/.index=x"),
                     text("diskcache/voices/en/1.ogg=x"), text("diskcache_/a/3/x.cdt=backup")}));
}

void MapCatalogSwapTest::removingAllWithoutVoices()
{
    m_data->makeSet("", "main");
    const MapCatalog catalog;
    const LogCatcher log(4);

    catalog.removeAllMapData();

    QCOMPARE(m_data->tree(), QStringList({text("Tessarin/"), text("diskcache/")}));
    QCOMPARE(log.texts(), QStringList());
}

// Deliberate: voices that an interrupted removal has left parked are not overwritten.
void MapCatalogSwapTest::removingAllWithParkedVoicesOfBeforePutsBoth()
{
    writeFile(m_data->path("voices/old.ogg"), "parked");
    writeFile(m_data->path("diskcache/voices/1.ogg"), "voice");
    const MapCatalog catalog;

    catalog.removeAllMapData();

    QCOMPARE(m_data->tree(),
             QStringList({text("Tessarin/"), text("diskcache/voices/old.ogg=parked"),
                          text("diskcache/voices/voices/1.ogg=voice")}));
}

void MapCatalogSwapTest::removingAllChangesNoFieldAndTellsNothing()
{
    m_data->setCatalog(fileElement("1") + fileElement("2"));
    m_data->setContent({{"1", {"a/3/x.cdt"}}});
    writeFile(m_data->configFile(), mosHeader(3));
    MapCatalog catalog;
    catalog.updateCatalog();
    const SignalSpies spies(&catalog);

    catalog.removeAllMapData();

    QCOMPARE(spies.count(), 0);
    QCOMPARE(catalog.installedMapsVersion(), text("1.2"));
    QCOMPARE(catalog.installedMOSVersion(), text("3.0.0.0"));
    QCOMPARE(catalog.tessarinDirectory(), m_data->catalogFolder());
    QCOMPARE(ids(catalog.availableRegions()), text("1 2"));
    QCOMPARE(ids(catalog.installedRegions()), text("1"));
    QCOMPARE(catalog.readRegionFileList(text("1")), QStringList {text("\\a\\3\\x.cdt")});
    QVERIFY(!QFile::exists(m_data->contentFile())); // not rewritten

    catalog.updateCatalog();
    QCOMPARE(ids(catalog.availableRegions()), QString());
}

void MapCatalogSwapTest::removingAllOfASuffixedInstanceLeavesTheMainSet()
{
    m_data->makeSet("", "main");
    m_data->makeSet("_new", "new");
    writeFile(m_data->path("diskcache_new/voices/1.ogg"), "voice");
    const MapCatalog catalog(text("_new"));

    catalog.removeAllMapData();

    QCOMPARE(
        m_data->tree(),
        QStringList({text("Tessarin/catalog-1.2.xml=main"), text("Tessarin_new/"),
                     text("diskcache/a/3/x.cdt=main"), text("diskcache_new/voices/1.ogg=voice")}));
}

void MapCatalogSwapTest::withoutAShellNothingHappens()
{
    m_data->makeSet("", "old");
    m_data->makeSet("_new", "new");
    m_data->makeSet("_", "backup");
    const QStringList before = m_data->tree();
    MapCatalog catalog;
    m_data->system.takeShellAway();
    const LogCatcher log(4);

    catalog.removeAllMapData();
    catalog.removeBackupOldFolders(text("_new"));
    catalog.removeBackupOldFolders(QString());
    catalog.swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(m_data->tree(), before);
    catalog.resetInstanceWithPathSuffix(text("_seed"), true);
    // What needs no shell is done: the folders of the instance are there, but nothing is in them.
    QCOMPARE(m_data->tree().size(), before.size() + 2);
    QCOMPARE(catalog.tessarinDirectory(), m_data->path("Tessarin_seed"));
    QVERIFY(treeOf(m_data->path("Tessarin_seed")).isEmpty());
    QCOMPARE(m_data->commands(), Commands());
    QCOMPARE(log.texts(), QStringList());
}

QTEST_GUILESS_MAIN(MapCatalogSwapTest)

#include "tst_mapcatalogswap.moc"
