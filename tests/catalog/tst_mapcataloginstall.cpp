// SPDX-License-Identifier: MIT
#include "catalog/mapcatalog.h"

#include "catalog/mapdata.h"
#include "testutils/logcatcher.h"
#include <algorithm>
#include <memory>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

class MapCatalogInstallTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aNewRegionIsRecorded();
    void aNewRegionTellsByItsOwnSignals();
    void aNewRegionLogsOneLine();
    void anUnknownRegionIsIgnored();
    void anUpdateDeletesOldFilesThatTheNewListLacks();
    void anUpdateDeletesFilesThatOthersUse();
    void anUpdateMovesTheRegionToTheEnd();
    void anUpdateLogsItsDecisions();
    void anUpdateInTheSameSessionFindsTheOldFiles();
    void anUpdateKeepsFilesInAnySpelling_data();
    void anUpdateKeepsFilesInAnySpelling();
    void caseCountsInAnUpdate();
    void deletingRemovesFilesAndRecord();
    void deletingKeepsWhatOthersList();
    void deletingKeepsWhatOthersListInAnySpelling();
    void caseCountsInADeletion();
    void deletingLogsItsDecisions();
    void deletingFilesThatAreGoneLogsNothing();
    void deletingTellsByTheRegionsOwnSignal();
    void deletingARegionThatIsNotInstalledDoesNothing();
    void deletingAnUnknownRegionDoesNothing();
    void deletingLeavesTheFileListAsItWas();
    void aFileListedTwiceIsDeletedOnce();
    void aFileThatCannotBeRemovedIsNotReported();
    void checkingAFileComparesExactly_data();
    void checkingAFileComparesExactly();
    void nothingOutsideOfTheTileCacheIsDeleted_data();
    void nothingOutsideOfTheTileCacheIsDeleted();
    void linksToTheOutsideAreNotFollowed();
    void aTileCacheThatIsALinkIsFine();
    void aLinkInsideIsUnlinked();
    void fileListsSurviveARestart();
    void everySpellingSurvivesARestart();
    void anInstallationThatCannotBeWrittenIsStillShown();
    void theContentFileIsRewrittenOnRequest();
    void theContentFileCarriesTheVersionThatWasSet();
    void regionsWithTheSameFilesGoOneAfterTheOther();
    void deletingManyFilesTakesLinearTime();

private:
    QString content() const { return QString::fromUtf8(readFile(m_data->contentFile())); }
    QString installed()
    {
        auto list = m_catalog->installedRegions();
        QStringList ids;
        for (int i = 0; i < int(list.count(&list)); ++i)
            ids.append(list.at(&list, i)->id());
        return ids.join(QLatin1Char(' '));
    }
    MapRegion *region(const char *id) { return m_catalog->region(text(id)); }
    void restart()
    {
        m_catalog = std::make_unique<MapCatalog>();
        m_catalog->updateCatalog();
    }
    void load(const QList<ContentRegion> &regions)
    {
        m_data->setContent(regions);
        restart();
    }

    std::unique_ptr<MapData> m_data;
    std::unique_ptr<MapCatalog> m_catalog;
};

// Regions 1 to 4 are available; 1 and 2 are installed and share a tile.
void MapCatalogInstallTest::init()
{
    m_data = std::make_unique<MapData>();
    m_data->setCatalog(fileElement("1") + fileElement("2") + fileElement("3") + fileElement("4"));
    for (const char *tile : {"a/3/one.cdt", "a/3/both.cdt", "b/4/two.cdt"})
        m_data->makeTile(tile);
    load({{"1", {"a/3/one.cdt", "a/3/both.cdt"}}, {"2", {"a/3/both.cdt", "b/4/two.cdt"}}});
}

void MapCatalogInstallTest::cleanup()
{
    m_catalog.reset();
    m_data.reset();
}

void MapCatalogInstallTest::aNewRegionIsRecorded()
{
    m_data->makeTile("c/5/three.cdt");

    m_catalog->addInstalledRegion(text("3"), {text("c/5/three.cdt"), text("c/5/readme.txt")});

    QCOMPARE(installed(), text("1 2 3"));
    QVERIFY(region("3")->installed());
    QCOMPARE(region("3")->fileList(), QStringList {text("c/5/three.cdt")});
    QVERIFY(content().contains(text("  <region id=\"13\" name=\"Region 3\">\n"
                                    "   <TI name=\"e\" path=\"\\c\\5\\three.cdt\"/>\n")));
    QVERIFY(content().contains(text("  <TI name=\"three\" path=\"\\c\\5\\three.cdt\"/>\n"
                                    " </diskcache>\n")));
    QVERIFY(content().contains(text("map-version=\"1.2\"")));
}

void MapCatalogInstallTest::aNewRegionTellsByItsOwnSignals()
{
    QSignalSpy list(m_catalog.get(), &MapCatalog::installedRegionsChanged);
    QSignalSpy busy(m_catalog.get(), &MapCatalog::bussyChanged);
    QSignalSpy changed(region("3"), &MapRegion::installedChanged);
    QSignalSpy fileList(region("3"), &MapRegion::fileListChanged);

    m_catalog->addInstalledRegion(text("3"), {});

    QCOMPARE(changed.count(), 1);
    QCOMPARE(fileList.count(), 1);
    QCOMPARE(list.count(), 0);
    QCOMPARE(busy.count(), 0);
}

void MapCatalogInstallTest::aNewRegionLogsOneLine()
{
    const LogCatcher log(4);

    m_catalog->addInstalledRegion(text("3"), {text("c/5/three.cdt")});

    QCOMPARE(
        log.texts(),
        QStringList {text("[INFO] It seems that the region 3 is not installed, it will be...")});
}

void MapCatalogInstallTest::anUnknownRegionIsIgnored()
{
    const QString before = content();
    const LogCatcher log(4);

    m_catalog->addInstalledRegion(text("99"), {text("a/3/x.cdt")});

    QCOMPARE(installed(), text("1 2"));
    QCOMPARE(content(), before);
    QCOMPARE(log.lines().size(), 0);
}

void MapCatalogInstallTest::anUpdateDeletesOldFilesThatTheNewListLacks()
{
    m_data->makeTile("a/3/new.cdt");

    m_catalog->addInstalledRegion(text("1"), {text("a/3/both.cdt"), text("a/3/new.cdt")});

    QVERIFY(!m_data->hasTile("a/3/one.cdt"));
    QVERIFY(m_data->hasTile("a/3/both.cdt"));
    QVERIFY(m_data->hasTile("a/3/new.cdt"));
    QVERIFY(region("1")->installed());
    QCOMPARE(region("1")->fileList(), QStringList({text("a/3/both.cdt"), text("a/3/new.cdt")}));
    QVERIFY(content().contains(text("path=\"\\a\\3\\new.cdt\"")));
    QVERIFY(!content().contains(text("one.cdt")));
}

// On purpose: the update brought the newer tiles, and the other region's are from the old ones.
void MapCatalogInstallTest::anUpdateDeletesFilesThatOthersUse()
{
    m_catalog->addInstalledRegion(text("1"), {text("a/3/one.cdt")});

    QVERIFY(m_data->hasTile("a/3/one.cdt"));
    QVERIFY(!m_data->hasTile("a/3/both.cdt"));
}

void MapCatalogInstallTest::anUpdateMovesTheRegionToTheEnd()
{
    QList<bool> states;
    connect(region("1"), &MapRegion::installedChanged, this,
            [&] { states.append(region("1")->installed()); });

    m_catalog->addInstalledRegion(text("1"), {text("a/3/one.cdt"), text("a/3/both.cdt")});

    QCOMPARE(installed(), text("2 1"));
    QCOMPARE(states, QList<bool>({false, true}));
    QVERIFY(content().indexOf(text("id=\"12\"")) < content().indexOf(text("id=\"11\"")));
}

void MapCatalogInstallTest::anUpdateLogsItsDecisions()
{
    load({{"1", {"a/3/one.cdt", "a/3/gone.cdt", "a/3/both.cdt"}}});
    const LogCatcher log(4);

    m_catalog->addInstalledRegion(text("1"), {text("a/3/both.cdt")});

    QCOMPARE(
        log.texts(),
        QStringList({text("[INFO] It seems that the region 1 is installed, old NOT USED files "
                          "fill be removed first, then update..."),
                     text("[INFO] (addInstalledRegion) will DELETE the file ")
                         + m_data->tile("a/3/one.cdt") + text(" as it's not used after update"),
                     text("[INFO] (addInstalledRegion) will KEEP the file ")
                         + m_data->tile("a/3/both.cdt") + text(" as it's used after update")}));
}

void MapCatalogInstallTest::anUpdateInTheSameSessionFindsTheOldFiles()
{
    m_data->makeTile("c/5/old.cdt");
    m_data->makeTile("c/5/kept.cdt");
    m_catalog->addInstalledRegion(text("3"), {text("c/5/old.cdt"), text("c/5/kept.cdt")});

    m_catalog->addInstalledRegion(text("3"), {text("c/5/kept.cdt")});

    QVERIFY(!m_data->hasTile("c/5/old.cdt"));
    QVERIFY(m_data->hasTile("c/5/kept.cdt"));
}

void MapCatalogInstallTest::anUpdateKeepsFilesInAnySpelling_data()
{
    QTest::addColumn<QString>("old");
    QTest::addColumn<QString>("now");
    const QStringList spellings {text("\\a\\3\\one.cdt"), text("a/3/one.cdt"),
                                 text("/a/3/one.cdt")};
    for (const QString &old : spellings) {
        for (const QString &now : spellings)
            QTest::addRow("%s then %s", qPrintable(old), qPrintable(now)) << old << now;
    }
}

void MapCatalogInstallTest::anUpdateKeepsFilesInAnySpelling()
{
    QFETCH(QString, old);
    QFETCH(QString, now);
    m_data->makeTile("c/5/old.cdt");
    m_catalog->addInstalledRegion(text("3"), {old, text("c/5/old.cdt")});

    m_catalog->addInstalledRegion(text("3"), {now});

    QVERIFY(m_data->hasTile("a/3/one.cdt"));
    QVERIFY(!m_data->hasTile("c/5/old.cdt"));
}

void MapCatalogInstallTest::caseCountsInAnUpdate()
{
    m_catalog->addInstalledRegion(text("1"), {text("A/3/one.cdt"), text("a/3/both.cdt")});

    QVERIFY(!m_data->hasTile("a/3/one.cdt"));
    QVERIFY(m_data->hasTile("a/3/both.cdt"));
}

void MapCatalogInstallTest::deletingRemovesFilesAndRecord()
{
    m_catalog->deleteInstalledRegion(text("1"));
    m_catalog->deleteInstalledRegion(text("2"));

    QVERIFY(!m_data->hasTile("a/3/one.cdt"));
    QVERIFY(!m_data->hasTile("a/3/both.cdt"));
    QVERIFY(!m_data->hasTile("b/4/two.cdt"));
    QCOMPARE(installed(), QString());
    QVERIFY(!region("1")->installed());
    QVERIFY(content().contains(text(" <diskcache/>\n <regions/>\n")));
}

void MapCatalogInstallTest::deletingKeepsWhatOthersList()
{
    m_catalog->deleteInstalledRegion(text("1"));

    QVERIFY(!m_data->hasTile("a/3/one.cdt"));
    QVERIFY(m_data->hasTile("a/3/both.cdt"));
    QVERIFY(m_data->hasTile("b/4/two.cdt"));
    QCOMPARE(installed(), text("2"));
    QVERIFY(!content().contains(text("id=\"11\"")));
    QVERIFY(content().contains(text("id=\"12\"")));
}

void MapCatalogInstallTest::deletingKeepsWhatOthersListInAnySpelling()
{
    m_catalog->addInstalledRegion(text("3"), {text("a/3/one.cdt"), text("/b/4/two.cdt")});
    m_catalog->addInstalledRegion(text("4"), {text("/a/3/both.cdt")});

    m_catalog->deleteInstalledRegion(text("1"));
    m_catalog->deleteInstalledRegion(text("2"));

    QVERIFY(m_data->hasTile("a/3/one.cdt"));
    QVERIFY(m_data->hasTile("a/3/both.cdt"));
    QVERIFY(m_data->hasTile("b/4/two.cdt"));
    m_catalog->deleteInstalledRegion(text("3"));
    m_catalog->deleteInstalledRegion(text("4"));
    QVERIFY(!m_data->hasTile("a/3/one.cdt"));
    QVERIFY(!m_data->hasTile("a/3/both.cdt"));
    QVERIFY(!m_data->hasTile("b/4/two.cdt"));
}

void MapCatalogInstallTest::caseCountsInADeletion()
{
    m_catalog->addInstalledRegion(text("3"), {text("A/3/one.cdt")});

    m_catalog->deleteInstalledRegion(text("1"));

    QVERIFY(!m_data->hasTile("a/3/one.cdt"));
}

void MapCatalogInstallTest::deletingLogsItsDecisions()
{
    const LogCatcher log(4);

    m_catalog->deleteInstalledRegion(text("1"));

    // The entry as it stands in the one line, with slashes in the other.
    QCOMPARE(log.texts(),
             QStringList({text("[INFO] (deleteInstalledRegion) will DELETE the file ")
                              + m_data->tileFolder() + text("//a/3/one.cdt as it's not used"),
                          text("[TRACE] (deleteInstalledRegion) will KEEP the file ")
                              + m_data->tileFolder() + text("/\\a\\3\\both.cdt as it's used")}));
}

void MapCatalogInstallTest::deletingFilesThatAreGoneLogsNothing()
{
    QVERIFY(QFile::remove(m_data->tile("a/3/one.cdt")));
    QVERIFY(QFile::remove(m_data->tile("a/3/both.cdt")));
    load({{"1", {"a/3/one.cdt", "a/3/both.cdt"}}});
    const LogCatcher log(4);

    m_catalog->deleteInstalledRegion(text("1"));

    QCOMPARE(log.lines().size(), 0);
    QCOMPARE(installed(), QString());
}

void MapCatalogInstallTest::deletingTellsByTheRegionsOwnSignal()
{
    QSignalSpy list(m_catalog.get(), &MapCatalog::installedRegionsChanged);
    QSignalSpy changed(region("1"), &MapRegion::installedChanged);

    m_catalog->deleteInstalledRegion(text("1"));

    QCOMPARE(changed.count(), 1);
    QCOMPARE(list.count(), 0);
}

void MapCatalogInstallTest::deletingARegionThatIsNotInstalledDoesNothing()
{
    m_catalog->deleteInstalledRegion(text("1"));
    m_data->makeTile("a/3/one.cdt");
    writeFile(m_data->contentFile(), "untouched");
    QSignalSpy changed(region("1"), &MapRegion::installedChanged);
    const LogCatcher log(4);

    m_catalog->deleteInstalledRegion(text("1")); // still has its file list
    m_catalog->deleteInstalledRegion(text("3"));

    QVERIFY(m_data->hasTile("a/3/one.cdt"));
    QCOMPARE(content(), text("untouched"));
    QCOMPARE(changed.count(), 0);
    QCOMPARE(log.lines().size(), 0);
}

void MapCatalogInstallTest::deletingAnUnknownRegionDoesNothing()
{
    writeFile(m_data->contentFile(), "untouched");

    m_catalog->deleteInstalledRegion(text("99"));

    QCOMPARE(content(), text("untouched"));
}

void MapCatalogInstallTest::deletingLeavesTheFileListAsItWas()
{
    const QStringList before = region("1")->fileList();

    m_catalog->deleteInstalledRegion(text("1"));

    QCOMPARE(region("1")->fileList(), before);
}

void MapCatalogInstallTest::aFileListedTwiceIsDeletedOnce()
{
    load({{"1", {"a/3/one.cdt", "a/3/one.cdt"}}});
    const LogCatcher log(4);

    m_catalog->deleteInstalledRegion(text("1"));

    QCOMPARE(log.lines().size(), 1);
    QVERIFY(!m_data->hasTile("a/3/one.cdt"));
}

void MapCatalogInstallTest::aFileThatCannotBeRemovedIsNotReported()
{
    // A folder in its place; it must survive, and so must what is inside.
    QVERIFY(QFile::remove(m_data->tile("a/3/one.cdt")));
    QVERIFY(QDir().mkpath(m_data->tile("a/3/one.cdt")));
    const LogCatcher log(2);

    m_catalog->deleteInstalledRegion(text("1"));

    QVERIFY(QFileInfo(m_data->tile("a/3/one.cdt")).isDir());
    QCOMPARE(installed(), text("2"));
    QVERIFY(!content().contains(text("id=\"11\"")));
    QCOMPARE(log.lines().size(), 0);
}

void MapCatalogInstallTest::checkingAFileComparesExactly_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("canBeDeleted");
    QTest::newRow("listed by another") << text("\\a\\3\\both.cdt") << text("1") << false;
    QTest::newRow("listed by itself") << text("\\a\\3\\one.cdt") << text("1") << true;
    QTest::newRow("listed by two others") << text("\\a\\3\\both.cdt") << text("3") << false;
    QTest::newRow("listed by none") << text("\\a\\3\\none.cdt") << text("1") << true;
    QTest::newRow("other separators") << text("/a/3/both.cdt") << text("1") << true;
    QTest::newRow("no separator in front") << text("a/3/both.cdt") << text("1") << true;
    QTest::newRow("other case") << text("\\A\\3\\both.cdt") << text("1") << true;
    QTest::newRow("a part of one") << text("\\a\\3\\both") << text("1") << true;
}

void MapCatalogInstallTest::checkingAFileComparesExactly()
{
    QFETCH(QString, file);
    QFETCH(QString, id);
    QFETCH(bool, canBeDeleted);

    QCOMPARE(m_catalog->checkIfFileCanBeDeleted(file, id), canBeDeleted);
    QVERIFY(MapCatalog().checkIfFileCanBeDeleted(file, id)); // nothing is installed there
}

void MapCatalogInstallTest::nothingOutsideOfTheTileCacheIsDeleted_data()
{
    QTest::addColumn<QString>("entry");
    QTest::newRow("one level up") << text("../victim.cdt");
    QTest::newRow("as in the content file") << text("\\..\\victim.cdt");
    QTest::newRow("mixed separators") << text("a\\../../victim.cdt");
    QTest::newRow("through a folder") << text("/a/3/../../../victim.cdt");
    QTest::newRow("through a folder that is not there") << text("x/y/../../../victim.cdt");
    QTest::newRow("an extension in the path") << text("x.cdt/../../Tessarin/content.xml");
    QTest::newRow("the upper folder itself") << text(".cdt/../..");
}

void MapCatalogInstallTest::nothingOutsideOfTheTileCacheIsDeleted()
{
    QFETCH(QString, entry);
    const QString victim = m_data->citiesFolder() + text("/victim.cdt");
    writeFile(victim, "x");
    m_data->makeTile("c/5/last.cdt");
    m_catalog->addInstalledRegion(text("3"), {entry, text("c/5/last.cdt")});
    m_catalog->addInstalledRegion(text("4"), {entry});
    const LogCatcher log(1);

    m_catalog->addInstalledRegion(text("4"), {});
    m_catalog->deleteInstalledRegion(text("3"));

    QVERIFY(QFile::exists(victim));
    QVERIFY(QFile::exists(m_data->contentFile()));
    QVERIFY(!m_data->hasTile("c/5/last.cdt")); // the rest is deleted as ever
    QCOMPARE(log.lines().size(), 2);
    QVERIFY(log.contains(text("[ERROR] (addInstalledRegion) will not DELETE the file ")));
    QVERIFY(log.contains(text("[ERROR] (deleteInstalledRegion) will not DELETE the file ")));
}

void MapCatalogInstallTest::linksToTheOutsideAreNotFollowed()
{
    const QString outside = m_data->citiesFolder() + text("/outside");
    writeFile(outside + text("/victim.cdt"), "x");
    writeFile(m_data->citiesFolder() + text("/sibling.cdt"), "x");
    QVERIFY(QFile::link(outside, m_data->tile("c")));
    m_catalog->addInstalledRegion(text("3"), {text("c/victim.cdt"), text("c/../sibling.cdt")});
    const LogCatcher log(3);

    m_catalog->deleteInstalledRegion(text("3"));

    QVERIFY(QFile::exists(outside + text("/victim.cdt")));
    QVERIFY(QFile::exists(m_data->citiesFolder() + text("/sibling.cdt")));
    QVERIFY(log.contains(text("[ERROR]")));
    QVERIFY(!log.contains(text("will DELETE")));
}

void MapCatalogInstallTest::aTileCacheThatIsALinkIsFine()
{
    const QString card = m_data->citiesFolder() + text("/card");
    QVERIFY(QDir().rename(m_data->tileFolder(), card));
    QVERIFY(QFile::link(card, m_data->tileFolder()));
    const LogCatcher log(2);

    m_catalog->deleteInstalledRegion(text("1"));

    QVERIFY(!QFile::exists(card + text("/a/3/one.cdt")));
    QVERIFY(QFile::exists(card + text("/a/3/both.cdt")));
    QCOMPARE(log.lines().size(), 0);
}

void MapCatalogInstallTest::aLinkInsideIsUnlinked()
{
    const QString outside = m_data->citiesFolder() + text("/victim.cdt");
    writeFile(outside, "x");
    QVERIFY(QFile::remove(m_data->tile("a/3/one.cdt")));
    QVERIFY(QFile::link(outside, m_data->tile("a/3/one.cdt")));

    m_catalog->deleteInstalledRegion(text("1"));

    QVERIFY(!QFileInfo(m_data->tile("a/3/one.cdt")).isSymLink());
    QVERIFY(QFile::exists(outside));
}

void MapCatalogInstallTest::fileListsSurviveARestart()
{
    for (const char *tile : {"c/5/3fa9.cdt", "d/6/3fa9.cdt", "d/6/9.cdt"})
        m_data->makeTile(tile);
    m_catalog->addInstalledRegion(
        text("3"), {text("c/5/3fa9.cdt"), text("d/6/3fa9.cdt"), text("b/4/two.cdt")});
    m_catalog->addInstalledRegion(text("4"), {text("d/6/9.cdt"), text("d/6/3fa9.cdt")});

    restart();

    QCOMPARE(installed(), text("1 2 3 4"));
    QCOMPARE(
        region("3")->fileList(),
        QStringList({text("\\c\\5\\3fa9.cdt"), text("\\d\\6\\3fa9.cdt"), text("\\b\\4\\two.cdt")}));
    m_catalog->deleteInstalledRegion(text("3"));
    QVERIFY(!m_data->hasTile("c/5/3fa9.cdt"));
    QVERIFY(m_data->hasTile("d/6/3fa9.cdt"));
    QVERIFY(m_data->hasTile("d/6/9.cdt"));
    QVERIFY(m_data->hasTile("b/4/two.cdt"));
    restart();
    m_catalog->deleteInstalledRegion(text("4"));
    QVERIFY(!m_data->hasTile("d/6/3fa9.cdt"));
    QVERIFY(!m_data->hasTile("d/6/9.cdt"));
    QVERIFY(m_data->hasTile("a/3/one.cdt"));
}

void MapCatalogInstallTest::everySpellingSurvivesARestart()
{
    m_catalog->addInstalledRegion(text("3"),
                                  {text("a/3/x.cdt"), text("/a/3/y.cdt"), text("\\a\\3\\z.cdt"),
                                   text("a/3/\xc3\xa4 &<.cdt")});

    restart();

    QCOMPARE(region("3")->fileList(),
             QStringList({text("\\a\\3\\x.cdt"), text("\\a\\3\\y.cdt"), text("\\a\\3\\z.cdt"),
                          text("\\a\\3\\\xc3\xa4 &<.cdt")}));
}

void MapCatalogInstallTest::anInstallationThatCannotBeWrittenIsStillShown()
{
    QVERIFY(QFile::remove(m_data->contentFile()));
    QVERIFY(QDir().mkpath(m_data->contentFile()));
    const LogCatcher log(2);

    m_catalog->addInstalledRegion(text("3"), {});

    QCOMPARE(installed(), text("1 2 3"));
    QCOMPARE(log.lines().size(), 0);
}

void MapCatalogInstallTest::theContentFileIsRewrittenOnRequest()
{
    m_data->makeTile("f/f/more.cdt");
    QVERIFY(QFile::remove(m_data->contentFile()));
    QSignalSpy list(m_catalog.get(), &MapCatalog::installedRegionsChanged);

    m_catalog->updateLocalContentFile();

    QVERIFY(content().contains(text("path=\"\\f\\f\\more.cdt\"")));
    QVERIFY(content().contains(text("id=\"11\"")));
    QVERIFY(content().contains(text("id=\"12\"")));
    QCOMPARE(list.count(), 0);
}

void MapCatalogInstallTest::theContentFileCarriesTheVersionThatWasSet()
{
    m_catalog->setInstalledMapsVersion(text("5.1"));

    m_catalog->updateLocalContentFile();

    QVERIFY(content().contains(text("<directory map-version=\"5.1\">")));
}

void MapCatalogInstallTest::regionsWithTheSameFilesGoOneAfterTheOther()
{
    const QList<QByteArray> tiles {"a/3/one.cdt", "a/3/both.cdt", "b/4/two.cdt"};
    load({{"1", tiles}, {"2", tiles}, {"3", tiles}});

    m_catalog->deleteInstalledRegion(text("2"));
    m_catalog->deleteInstalledRegion(text("1"));
    QVERIFY(m_data->hasTile("a/3/one.cdt"));
    m_catalog->deleteInstalledRegion(text("3"));

    for (const QByteArray &tile : tiles)
        QVERIFY(!m_data->hasTile(tile.constData()));
}

void MapCatalogInstallTest::deletingManyFilesTakesLinearTime()
{
    const auto remove = [this](int count) {
        QList<QByteArray> tiles;
        for (int i = 0; i < count; ++i)
            tiles.append("a/3/" + QByteArray::number(i) + ".cdt");
        load({{"1", tiles}, {"2", tiles}, {"3", tiles}});
        QElapsedTimer timer;
        timer.start();
        m_catalog->deleteInstalledRegion(text("1"));
        return timer.nsecsElapsed();
    };

    // As with the loading of many regions: relative to itself, and more than once if need be.
    bool isLinear = false;
    for (int attempt = 0; attempt < 5 && !isLinear; ++attempt) {
        const qint64 few = remove(1000);
        isLinear = remove(10000) < 40 * few;
    }
    QVERIFY(isLinear);
    QCOMPARE(installed(), text("2 3"));
}

QTEST_GUILESS_MAIN(MapCatalogInstallTest)

#include "tst_mapcataloginstall.moc"
