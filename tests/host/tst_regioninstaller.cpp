// SPDX-License-Identifier: MIT
// Installs, updates and removals that go well.
#include "download/downloadmanageriface.h"
#include "host/shared/leftovers.h"
#include "host/shared/regionremoval.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int MiB = 1024 * 1024;
const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");

} // namespace

class RegionInstallerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { rig = std::make_unique<InstallerRig>(); }
    void cleanup() { rig.reset(); }

    void installsAndRecordsWithOneStateAfterTheOther();
    void everyFormatGivesTheSameTiles_data();
    void everyFormatGivesTheSameTiles();
    void namesWithADotInFrontAreTheSameTiles();
    void anAbsoluteLinkIsTakenAsItIs();
    void installsWaitForTheirTurn();
    void progressTellsBytesAndTotal();
    void anUpdateReplacesTheTiles();
    void anUpdateKeepsTilesThatAnotherRegionNeeds();
    void aRemovalKeepsSharedTiles();
    void aRemovalWaitsForTheMove();
    void aRemovalDoesNotWaitForADownload();
    void refusesToRemoveWhatIsBeingUpdated();
    void aRemovalThatWasCutShortIsFinishedAtTheNextStart();
    void whatIsInstalledAnewIsNotRemovedAtTheNextStart();
    void leftoversGoAndWhatTheQueueNeedsStays();

private:
    bool installAndWait(const QString &id, const QString &state = QStringLiteral("installed"));

    std::unique_ptr<InstallerRig> rig;
};

bool RegionInstallerTest::installAndWait(const QString &id, const QString &state)
{
    if (!rig->installer().install(id))
        return false;
    return QTest::qWaitFor([&] { return !rig->installer().busy() && rig->state(id) == state; },
                           30000);
}

void RegionInstallerTest::installsAndRecordsWithOneStateAfterTheOther()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"a/3/3fa9.cdt", "0/1/b.cdt"}));
    rig->openSession();
    QCOMPARE(rig->state(Fi), QStringLiteral("notInstalled"));

    QVERIFY(installAndWait(Fi));

    const QStringList expected {QStringLiteral("queued"),    QStringLiteral("downloading"),
                                QStringLiteral("unpacking"), QStringLiteral("moving"),
                                QStringLiteral("recording"), QStringLiteral("installed")};
    QCOMPARE(rig->states.value(Fi), expected);
    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Fi});
    QVERIFY(rig->installer().pending().isEmpty());
    // Read from the content file, as every later start will see it.
    QVERIFY(rig->catalog().region(Fi)->fileList().contains(QStringLiteral("\\a\\3\\3fa9.cdt")));
}

void RegionInstallerTest::everyFormatGivesTheSameTiles_data()
{
    QTest::addColumn<QString>("archive");
    for (const char *name : {"FI.zip", "FI.7z", "FI.tar.gz", "FI.tar.xz", "FI.tar.zst"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void RegionInstallerTest::everyFormatGivesTheSameTiles()
{
    QFETCH(QString, archive);
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"a/3/3fa9.cdt", "0/1/b.cdt"}),
                           archive);
    rig->openSession();

    QVERIFY(installAndWait(Fi));

    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
    QCOMPARE(rig->catalog().region(Fi)->fileList().size(), 2);
}

void RegionInstallerTest::namesWithADotInFrontAreTheSameTiles()
{
    const Tiles tiles = tilesOf({"a/3/x.cdt"});
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tiles);
    rig->content.addLink(Se, QStringLiteral("Sweden"), QStringLiteral("SE.tar"));
    RawTar tar;
    tar.add("./a/3/x.cdt", tiles.first());
    rig->content.write(QStringLiteral("SE.tar"), tar.bytes());
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    QVERIFY(installAndWait(Se));

    rig->installer().remove(Se);

    QTRY_VERIFY(!rig->isInstalled(Se));
    QCOMPARE(rig->tileDifference(tiles), QString());
}

void RegionInstallerTest::anAbsoluteLinkIsTakenAsItIs()
{
    const Tiles tiles = tilesOf({"a/3/x.cdt"});
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tiles);
    rig->content.addLink(Fi, QStringLiteral("Finland"), rig->server.url("/map5/archives/SE.zip"));
    rig->openSession();
    rig->installer().setBaseUri(QStringLiteral("http://127.0.0.1:1/elsewhere/"));

    QVERIFY(installAndWait(Fi));

    QCOMPARE(rig->tileDifference(tiles), QString());
}

void RegionInstallerTest::installsWaitForTheirTurn()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"a/3/x.cdt"}));
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"a/3/y.cdt"}),
                           QStringLiteral("SE.7z"));
    rig->openSession(false);
    QVERIFY(rig->installer().install(Fi));
    QVERIFY(rig->installer().install(Se));
    QCOMPARE(rig->installer().pending(), QStringList({Fi, Se}));
    QCOMPARE(rig->state(Se), QStringLiteral("queued"));
    QSignalSpy busy(&rig->installer(), &RegionInstaller::busyChanged);

    rig->session->start();

    QTRY_VERIFY_WITH_TIMEOUT(!rig->installer().busy(), 30000);
    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi) + rig->content.tiles(Se)), QString());
    QCOMPARE(InstallerRig::recordedIds(), QStringList({Fi, Se}));
    QVERIFY(rig->states.value(Se).indexOf(QStringLiteral("downloading")) > 0);
    QCOMPARE(busy.count(), 1);
}

void RegionInstallerTest::progressTellsBytesAndTotal()
{
    HttpTestServer slow;
    const QByteArray archive = ArchiveBuilder::noise(2 * MiB);
    slow.add("/FI.zip", archive, HttpTestServer::Drip(64 * 1024, 100));
    rig->content.addLink(Fi, QStringLiteral("Finland"), slow.url("/FI.zip"));
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));

    QTRY_VERIFY_WITH_TIMEOUT(rig->installer().remainingTime(Fi) >= 0, 30000);

    QCOMPARE(rig->installer().bytesTotal(Fi), qlonglong(archive.size()));
    QVERIFY(rig->installer().bytesReceived(Fi) > 0);
    QVERIFY(rig->installer().progress(Fi) > 0 && rig->installer().progress(Fi) <= 1);
    QVERIFY(rig->installer().sentence(Fi).startsWith(QLatin1String("Downloading ")));
    QVERIFY(rig->installer().cancel(Fi));
}

void RegionInstallerTest::anUpdateReplacesTheTiles()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt", "0/2/b.cdt"}));
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    rig->content.setTiles(Fi, tilesOf({"0/2/b.cdt", "0/3/c.cdt"}, "new"));

    QVERIFY(installAndWait(Fi));

    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
    QCOMPARE(rig->catalog().region(Fi)->fileList().size(), 2);
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Fi});
}

void RegionInstallerTest::anUpdateKeepsTilesThatAnotherRegionNeeds()
{
    const Tiles shared = tilesOf({"5/5/border.cdt"});
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}) + shared);
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/2/b.cdt"}) + shared);
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    QVERIFY(installAndWait(Se));
    rig->content.setTiles(Fi, tilesOf({"0/1/a.cdt"}, "new"));
    rig->refresh();

    QVERIFY(installAndWait(Fi));

    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi) + rig->content.tiles(Se)), QString());
}

void RegionInstallerTest::aRemovalKeepsSharedTiles()
{
    const Tiles shared = tilesOf({"5/5/border.cdt"});
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}) + shared);
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/2/b.cdt"}) + shared);
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    QVERIFY(installAndWait(Se));
    QSignalSpy removed(&rig->installer(), &RegionInstaller::removed);

    QVERIFY(rig->installer().remove(Fi));

    QTRY_COMPARE(removed.count(), 1);
    QCOMPARE(removed.first().at(1).toLongLong(), qlonglong(20000));
    QCOMPARE(removed.first().at(2).toInt(), 1);
    QCOMPARE(removed.first().at(3).toInt(), 1);
    QCOMPARE(rig->state(Fi), QStringLiteral("notInstalled"));
    QCOMPARE(rig->tileDifference(rig->content.tiles(Se)), QString());
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Se});
}

void RegionInstallerTest::aRemovalWaitsForTheMove()
{
    const Tiles shared = tilesOf({"5/5/border.cdt"});
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}) + shared);
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/2/b.cdt"}) + shared);
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    rig->openSession(false);
    HeldMove move(rig->installer().moveGuard());
    rig->session->start();
    QVERIFY(rig->installer().install(Se));
    QTRY_VERIFY_WITH_TIMEOUT(move.isReached(), 30000);
    QSignalSpy removed(&rig->installer(), &RegionInstaller::removed);

    QVERIFY(rig->installer().remove(Fi));
    QTest::qWait(0);

    QCOMPARE(removed.count(), 0);
    QVERIFY(rig->isInstalled(Fi));
    move.letGo();
    QTRY_VERIFY_WITH_TIMEOUT(!rig->installer().busy(), 30000);
    QCOMPARE(removed.count(), 1);
    QCOMPARE(rig->tileDifference(rig->content.tiles(Se)), QString());
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Se});
}

void RegionInstallerTest::aRemovalDoesNotWaitForADownload()
{
    HttpTestServer server;
    server.add("/SE.zip", QByteArray("x"), HttpTestServer::SilentAccept());
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->content.addLink(Se, QStringLiteral("Sweden"), server.url("/SE.zip"));
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    QVERIFY(rig->installer().install(Se));
    QTRY_COMPARE(server.requestCount(), 1);

    QVERIFY(rig->installer().remove(Fi));

    QTRY_COMPARE(rig->state(Fi), QStringLiteral("notInstalled"));
    QCOMPARE(rig->state(Se), QStringLiteral("downloading"));
}

void RegionInstallerTest::refusesToRemoveWhatIsBeingUpdated()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    rig->installer().pause();
    QVERIFY(rig->installer().install(Fi));

    QVERIFY(!rig->installer().remove(Fi));

    QVERIFY(rig->installer().refusal().contains(QLatin1String("cancel")));
}

// As a kill in the middle leaves it: noted, some tiles gone, still listed.
void RegionInstallerTest::aRemovalThatWasCutShortIsFinishedAtTheNextStart()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt", "5/5/b.cdt"}));
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/2/s.cdt", "5/5/b.cdt"}));
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    QVERIFY(installAndWait(Se));
    rig->closeSession();
    TestFile::write(RegionRemoval::notePath(), R"({"version":1,"removals":["FI","gone","AX"]})");
    QVERIFY(QFile::remove(rig->tileFolder() + QLatin1String("/0/1/a.cdt")));

    rig->openSession();

    QTRY_VERIFY(!rig->installer().busy());
    QVERIFY(!rig->isInstalled(Fi));
    QCOMPARE(rig->recordedIds(), QStringList {Se});
    QCOMPARE(rig->tileDifference(rig->content.tiles(Se)), QString());
    QVERIFY(!QFile::exists(RegionRemoval::notePath()));
}

// The note stayed because the content file could not be written; then the user wanted it again.
void RegionInstallerTest::whatIsInstalledAnewIsNotRemovedAtTheNextStart()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    TestFile::write(RegionRemoval::notePath(), R"({"version":1,"removals":["FI"]})");
    QVERIFY(installAndWait(Fi));
    rig->closeSession();

    rig->openSession();

    QTRY_VERIFY(!rig->installer().busy());
    QVERIFY(rig->isInstalled(Fi));
    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
}

void RegionInstallerTest::leftoversGoAndWhatTheQueueNeedsStays()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->installer().pause();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE(rig->session->downloads()->getRequests().size(), 3);
    rig->closeSession();
    const QString downloads = rig->home.downloadFolder();
    const QString vexa = QDir::homePath() + QLatin1String("/MyDocs/.vexa/");
    const QStringList stay {downloads + QLatin1String("FI.zip"), vexa + QLatin1String("notes.txt"),
                            DataRoot::catalogFolder() + QLatin1String("/content.xml.backup")};
    const QStringList go {downloads + QLatin1String("SE.zip"),
                          vexa + QLatin1String("installs.json.aBcDeF"),
                          DataRoot::catalogFolder() + QLatin1String("/content.xml.aBcDeF"),
                          DataRoot::catalogFolder() + QLatin1String("/cityindex.xml.aBcDeF")};
    for (const QString &file : stay + go)
        TestFile::write(file, "half");

    Leftovers::remove();

    for (const QString &file : stay)
        QVERIFY2(QFile::exists(file), qPrintable(file));
    for (const QString &file : go)
        QVERIFY2(!QFile::exists(file), qPrintable(file));
    QVERIFY(QFile::exists(vexa + QLatin1String("installs.json")));
}

QTEST_GUILESS_MAIN(RegionInstallerTest)
#include "tst_regioninstaller.moc"
