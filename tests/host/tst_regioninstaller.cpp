// SPDX-License-Identifier: MIT
#include "download/downloadmanageriface.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int MiB = 1024 * 1024;
const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");

Tiles tilesOf(std::initializer_list<const char *> names, const char *version = "")
{
    Tiles tiles;
    for (const char *name : names) {
        const QString path = QLatin1String(name);
        tiles.insert(path, TestContent::tile(path + QLatin1String(version)));
    }
    return tiles;
}

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

    void whatTheServerLacksFailsAndIsNeverRecorded();
    void aRefusalFailsInOtherWords();
    void anUnreachableServerFails();
    void aBadArchiveFailsAndLeavesNothing_data();
    void aBadArchiveFailsAndLeavesNothing();
    void anArchiveWithoutTilesFails();
    void aFailedUpdateLeavesTheOldVersionInstalled();
    void aContentFileThatCannotBeWrittenIsAFailure();
    void aMoveThatFailsTakesItsFilesAwayAgain();
    void whatTheGuardRefusesIsNeverMoved();
    void aRegionThatLeftTheCatalogueIsNotRecorded();
    void tilesThatVanishAreFetchedAgain();
    void tilesThatVanishTwiceAreAFailure();
    void afterAFailureTheNextRegionIsInstalled();
    void afterAFailureTheSameRegionCanBeInstalled();

    void refusesWhatCannotBe();
    void refusesASecondInstallWhileOneIsUnderWay();
    void refusesWhatDoesNotFitOnTheDisk();

    void cancelsInTheQueue();
    void cancelsADownload();
    void cancelsAnUnpack();
    void doesNotCancelAMove();
    void signalsOfACancelledAttemptDoNotTouchTheNext();
    void cancelAllGivesUpEverything();
    void whatIsCancelledAtTheEngineIsCancelled();
    void cancellingKeepsTheUsersPause();

    void anUpdateReplacesTheTiles();
    void anUpdateKeepsTilesThatAnotherRegionNeeds();
    void aRemovalKeepsSharedTiles();
    void aRemovalWaitsForTheMove();
    void aRemovalDoesNotWaitForADownload();
    void refusesToRemoveWhatIsBeingUpdated();

    void waitsUntilTheNetworkMayBeUsed();
    void waitsForWifiUnlessTheMobileNetworkIsAllowed();
    void waitsWhilePausedByTheUser();
    void aPauseWithoutNetworkHoldsWhenItReturns();
    void aResumeWithoutNetworkTakesEffectWhenItReturns();
    void aPauseSurvivesARestart();

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

void RegionInstallerTest::whatTheServerLacksFailsAndIsNeverRecorded()
{
    rig->content.addLink(Fi, QStringLiteral("Finland"), QStringLiteral("archives/FI.zip"));
    rig->openSession();

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(!rig->states.value(Fi).contains(QStringLiteral("unpacking")));
    QVERIFY(!rig->states.value(Fi).contains(QStringLiteral("installed")));
    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("could not be downloaded")));
    QVERIFY(rig->installer().status(Fi).failure == FailureKind::Network);
    QVERIFY(InstallerRig::recordedIds().isEmpty());
    QVERIFY(rig->session->downloads()->getRequests().isEmpty());
    QCOMPARE(rig->tileDifference({}), QString());
}

void RegionInstallerTest::aRefusalFailsInOtherWords()
{
    HttpTestServer server;
    server.add("/FI.zip", QByteArray("x"), HttpTestServer::Status(429));
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    rig->openSession();

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("refused")));
}

void RegionInstallerTest::anUnreachableServerFails()
{
    HttpTestServer server;
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    server.stop();
    rig->openSession();

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().status(Fi).failure == FailureKind::Network);
}

void RegionInstallerTest::aBadArchiveFailsAndLeavesNothing_data()
{
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("harm");
    QTest::newRow("cut zip") << QStringLiteral("FI.zip") << QStringLiteral("cut");
    QTest::newRow("cut tar") << QStringLiteral("FI.tar") << QStringLiteral("cut");
    QTest::newRow("cut tar.gz") << QStringLiteral("FI.tar.gz") << QStringLiteral("cut");
    QTest::newRow("cut 7z") << QStringLiteral("FI.7z") << QStringLiteral("cut");
    QTest::newRow("zip with wrong bytes in its second file")
        << QStringLiteral("FI.zip") << QStringLiteral("patch");
    QTest::newRow("no archive at all") << QStringLiteral("FI.zip") << QStringLiteral("html");
}

void RegionInstallerTest::aBadArchiveFailsAndLeavesNothing()
{
    QFETCH(QString, archive);
    QFETCH(QString, harm);
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt", "a/3/z.cdt"}),
                           archive);
    const QString path = rig->content.archivePath(Fi);
    const qint64 size = QFileInfo(path).size();
    if (harm == QLatin1String("cut"))
        TestFile::cut(path, size * 3 / 4);
    else if (harm == QLatin1String("patch"))
        TestFile::patch(path, size * 3 / 4, QByteArray(64, 'x'));
    else
        TestFile::write(path, "<html>Log in first</html>\n");
    rig->openSession();

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().status(Fi).failure == FailureKind::Archive);
    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("damaged")));
    QVERIFY(!rig->states.value(Fi).contains(QStringLiteral("moving")));
    QVERIFY(InstallerRig::recordedIds().isEmpty());
    QTRY_VERIFY(rig->session->downloads()->getRequests().isEmpty());
    QCOMPARE(rig->tileDifference({}), QString());
}

void RegionInstallerTest::anArchiveWithoutTilesFails()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"),
                           {{QStringLiteral("README"), QByteArray("no tiles here")}});
    rig->openSession();

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("no map tiles")));
    QVERIFY(InstallerRig::recordedIds().isEmpty());
}

void RegionInstallerTest::aFailedUpdateLeavesTheOldVersionInstalled()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    const Tiles old = rig->content.tiles(Fi);
    TestFile::write(rig->content.archivePath(Fi), "no archive");

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->isInstalled(Fi));
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Fi});
    QCOMPARE(rig->tileDifference(old), QString());
}

void RegionInstallerTest::aContentFileThatCannotBeWrittenIsAFailure()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    const QString path = DataRoot::catalogFolder() + QLatin1String("/content.xml");
    // Root may write everything, but not replace a folder by a file.
    QVERIFY(QFile::remove(path) && QDir().mkpath(path + QLatin1String("/x")));

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("could not be recorded")));
}

void RegionInstallerTest::aMoveThatFailsTakesItsFilesAwayAgain()
{
    const Tiles shared = tilesOf({"5/5/border.cdt"});
    rig->content.addRegion(Se, QStringLiteral("Sweden"), shared);
    rig->content.addRegion(Fi, QStringLiteral("Finland"),
                           tilesOf({"0/1/a.cdt", "0/2/b.cdt"}) + shared);
    rig->openSession();
    QVERIFY(installAndWait(Se));
    // Root may write everything, but not a file in place of a folder.
    QVERIFY(QDir().mkpath(rig->tileFolder() + QLatin1String("/0/1/a.cdt")));

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().status(Fi).failure == FailureKind::Disk);
    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("put into place")));
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Se});
    QCOMPARE(rig->tileDifference(shared), QString());
}

void RegionInstallerTest::whatTheGuardRefusesIsNeverMoved()
{
    Tiles large;
    large.insert(QStringLiteral("0/0/large.cdt"), ArchiveBuilder::noise(8 * MiB));
    rig->content.addRegion(Fi, QStringLiteral("Finland"), large);
    rig->openSession(false).worker()->setUnpackPause(50);
    rig->session->start();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("unpacking"), 30000);

    // As a cancel that the engine hears of only when its move is due.
    QVERIFY(rig->installer().moveGuard()->refuse(Fi, 1));

    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("failed"), 30000);
    QTRY_VERIFY(!rig->installer().busy());
    QCOMPARE(rig->tileDifference({}), QString());
    QVERIFY(InstallerRig::recordedIds().isEmpty());
}

void RegionInstallerTest::aRegionThatLeftTheCatalogueIsNotRecorded()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    connect(&rig->installer(), &RegionInstaller::stateChanged, this, [&] {
        if (rig->state(Fi) != QLatin1String("moving"))
            return;
        TestFile::write(DataRoot::catalogFolder() + QLatin1String("/catalog-1.0.xml"),
                        "<Catalog/>");
        rig->catalog().updateCatalog();
    });

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().status(Fi).failure == FailureKind::Catalogue);
    QCOMPARE(rig->tileDifference({}), QString());
}

void RegionInstallerTest::tilesThatVanishAreFetchedAgain()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt", "0/2/b.cdt"}));
    rig->openSession();
    bool once = false;
    connect(&rig->installer(), &RegionInstaller::stateChanged, this, [&] {
        if (!once && rig->state(Fi) == QLatin1String("recording"))
            once = QFile::remove(rig->tileFolder() + QLatin1String("/0/1/a.cdt"));
    });

    QVERIFY(installAndWait(Fi));

    QVERIFY(once);
    QCOMPARE(rig->states.value(Fi).count(QStringLiteral("downloading")), 2);
    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
}

void RegionInstallerTest::tilesThatVanishTwiceAreAFailure()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt", "0/2/b.cdt"}));
    rig->openSession();
    connect(&rig->installer(), &RegionInstaller::stateChanged, this, [&] {
        if (rig->state(Fi) == QLatin1String("recording"))
            QFile::remove(rig->tileFolder() + QLatin1String("/0/1/a.cdt"));
    });

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("missing")));
    QVERIFY(InstallerRig::recordedIds().isEmpty());
}

void RegionInstallerTest::afterAFailureTheNextRegionIsInstalled()
{
    rig->content.addLink(Fi, QStringLiteral("Finland"), QStringLiteral("archives/FI.zip"));
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));

    QVERIFY(installAndWait(Se));

    QCOMPARE(rig->state(Fi), QStringLiteral("failed"));
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Se});
}

void RegionInstallerTest::afterAFailureTheSameRegionCanBeInstalled()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    const QByteArray good = TestFile::read(rig->content.archivePath(Fi));
    TestFile::write(rig->content.archivePath(Fi), "no archive");
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("failed"), 30000);
    TestFile::write(rig->content.archivePath(Fi), good);

    QVERIFY(installAndWait(Fi)); // at once, while the engine still ends the first attempt

    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
}

void RegionInstallerTest::refusesWhatCannotBe()
{
    rig->content.addLink(QStringLiteral("GROUP"), QStringLiteral("Group"), QString());
    rig->content.addLink(QStringLiteral("FTP"), QStringLiteral("Ftp"),
                         QStringLiteral("ftp://127.0.0.1/x.zip"));
    rig->openSession();

    QVERIFY(!rig->installer().install(QStringLiteral("XX")));
    QVERIFY(rig->installer().refusal().contains(QLatin1String("no region")));
    QVERIFY(!rig->installer().install(QStringLiteral("GROUP")));
    QVERIFY(rig->installer().refusal().contains(QLatin1String("no usable address")));
    QVERIFY(!rig->installer().install(QStringLiteral("FTP")));
    QVERIFY(!rig->installer().remove(QStringLiteral("GROUP")));
    QVERIFY(rig->installer().refusal().contains(QLatin1String("not installed")));
    QVERIFY(!rig->installer().cancel(QStringLiteral("GROUP")));
    QVERIFY(!rig->installer().busy());
}

void RegionInstallerTest::refusesASecondInstallWhileOneIsUnderWay()
{
    HttpTestServer server;
    server.add("/FI.zip", QByteArray("x"), HttpTestServer::SilentAccept());
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));

    QVERIFY(!rig->installer().install(Fi));

    QVERIFY(rig->installer().refusal().contains(QLatin1String("already")));
    QCOMPARE(rig->installer().pending(), QStringList {Fi});
}

void RegionInstallerTest::refusesWhatDoesNotFitOnTheDisk()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->catalog().region(Fi)->setSize(qint64(1) << 60, 0);

    QVERIFY(!rig->installer().install(Fi));

    QVERIFY(rig->installer().refusal().contains(QLatin1String("needs")));
}

void RegionInstallerTest::cancelsInTheQueue()
{
    HttpTestServer server;
    server.add("/FI.zip", QByteArray("x"), HttpTestServer::SilentAccept());
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));
    QVERIFY(rig->installer().install(Se));

    QVERIFY(rig->installer().cancel(Se));

    QCOMPARE(rig->state(Se), QStringLiteral("cancelled"));
    QCOMPARE(rig->installer().pending(), QStringList {Fi});
}

void RegionInstallerTest::cancelsADownload()
{
    HttpTestServer server;
    server.add("/FI.zip", ArchiveBuilder::noise(2 * MiB), HttpTestServer::StallAfter(1 * MiB));
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    const QString saveFile = rig->home.downloadFolder() + QLatin1String("FI.zip");
    QVERIFY(rig->installer().install(Fi));
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(saveFile).size() >= 1 * MiB, 30000);

    QVERIFY(rig->installer().cancel(Fi));

    QCOMPARE(rig->state(Fi), QStringLiteral("cancelled"));
    QVERIFY(installAndWait(Se));
    QVERIFY(!QFile::exists(saveFile));
    QCOMPARE(rig->state(Fi), QStringLiteral("cancelled"));
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Se});
}

void RegionInstallerTest::cancelsAnUnpack()
{
    Tiles large;
    large.insert(QStringLiteral("0/0/large.cdt"), ArchiveBuilder::noise(8 * MiB));
    rig->content.addRegion(Fi, QStringLiteral("Finland"), large);
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}));
    rig->openSession(false).worker()->setUnpackPause(50);
    rig->session->start();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("unpacking"), 30000);

    QVERIFY(rig->installer().cancel(Fi));

    QCOMPARE(rig->state(Fi), QStringLiteral("cancelled"));
    QVERIFY(installAndWait(Se));
    QCOMPARE(rig->state(Fi), QStringLiteral("cancelled"));
    QCOMPARE(rig->tileDifference(rig->content.tiles(Se)), QString());
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Se});
}

void RegionInstallerTest::doesNotCancelAMove()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession(false);
    HeldMove move(rig->installer().moveGuard());
    rig->session->start();
    QVERIFY(rig->installer().install(Fi));
    QTRY_VERIFY_WITH_TIMEOUT(move.isReached(), 30000);

    QVERIFY(!rig->installer().cancel(Fi));

    QVERIFY(rig->installer().refusal().contains(QLatin1String("put into place")));
    move.letGo();
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
}

void RegionInstallerTest::signalsOfACancelledAttemptDoNotTouchTheNext()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    DownloadManagerIface *iface = rig->session->downloads();
    rig->session->installer()->pause();
    QVERIFY(rig->installer().install(Fi));
    QTRY_VERIFY(iface->isInQueue(Fi));
    const QString oldUrl =
        iface->getRequests().first().toMap().value(QStringLiteral("url")).toString();
    QVERIFY(rig->installer().cancel(Fi));
    QVERIFY(rig->installer().install(Fi));
    QTRY_VERIFY(iface->isInQueue(Fi));
    QTRY_COMPARE(rig->state(Fi), QStringLiteral("waiting"));

    // As they come when they were posted just before the cancel.
    iface->onError(DownloadRequest, Fi, 1, oldUrl);
    iface->onFinished(UncompressRequest, oldUrl, Fi);
    iface->onFinished(MoveRequest, oldUrl, Fi);

    QCOMPARE(rig->state(Fi), QStringLiteral("waiting"));
    rig->installer().resume();
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
}

void RegionInstallerTest::cancelAllGivesUpEverything()
{
    HttpTestServer server;
    server.add("/FI.zip", QByteArray("x"), HttpTestServer::SilentAccept());
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));
    QVERIFY(rig->installer().install(Se));
    QTRY_COMPARE(server.requestCount(), 1);

    rig->installer().cancelAll();

    QTRY_VERIFY(!rig->installer().busy());
    QVERIFY(rig->session->downloads()->getRequests().isEmpty());
    QVERIFY(!rig->states.value(Se).contains(QStringLiteral("downloading")));
}

void RegionInstallerTest::whatIsCancelledAtTheEngineIsCancelled()
{
    HttpTestServer server;
    server.add("/FI.zip", QByteArray("x"), HttpTestServer::SilentAccept());
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE(server.requestCount(), 1);

    rig->session->downloads()->cancelAll();

    QTRY_COMPARE(rig->state(Fi), QStringLiteral("cancelled"));
    QTRY_VERIFY(!rig->installer().busy());
}

void RegionInstallerTest::cancellingKeepsTheUsersPause()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->installer().pause();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE(rig->state(Fi), QStringLiteral("waiting"));

    QVERIFY(rig->installer().cancel(Fi));

    QVERIFY(rig->session->downloads()->suspended());
    QVERIFY(rig->installer().paused());
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

void RegionInstallerTest::waitsUntilTheNetworkMayBeUsed()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->installer().setOnline(false);
    QVERIFY(rig->installer().install(Fi));

    QTRY_COMPARE(rig->installer().waitReason(Fi), QStringLiteral("networkNotPermitted"));
    QCOMPARE(rig->state(Fi), QStringLiteral("waiting"));
    QVERIFY(!rig->installer().reason(Fi).isEmpty());

    rig->installer().setOnline(true);
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
    QVERIFY(rig->installer().waitReason(Fi).isEmpty());
}

void RegionInstallerTest::waitsForWifiUnlessTheMobileNetworkIsAllowed()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->installer().setWifi(false);
    QVERIFY(rig->installer().install(Fi));

    QTRY_COMPARE(rig->installer().waitReason(Fi), QStringLiteral("noWifi"));
    QCOMPARE(rig->installer().sentence(Fi), QStringLiteral("Waiting for Wi-Fi"));

    rig->installer().setMobileAllowed(true);
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
}

void RegionInstallerTest::waitsWhilePausedByTheUser()
{
    HttpTestServer server;
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}));
    const QByteArray archive = TestFile::read(rig->content.archivePath(Se));
    server.add("/FI.zip", archive,
               {HttpTestServer::StallAfter(archive.size() / 2), HttpTestServer::Whole()});
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE(server.requestCount(), 1);
    QSignalSpy paused(&rig->installer(), &RegionInstaller::pausedChanged);

    rig->installer().pause();

    QCOMPARE(rig->state(Fi), QStringLiteral("waiting"));
    QCOMPARE(rig->installer().waitReason(Fi), QStringLiteral("pausedByUser"));
    QCOMPARE(paused.count(), 1);
    rig->installer().resume();
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
    QCOMPARE(paused.count(), 2);
}

void RegionInstallerTest::aPauseWithoutNetworkHoldsWhenItReturns()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->installer().setWifi(false);
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE(rig->state(Fi), QStringLiteral("waiting"));

    rig->installer().pause();
    rig->installer().setWifi(true);

    QCOMPARE(rig->installer().waitReason(Fi), QStringLiteral("pausedByUser"));
    QVERIFY(rig->session->downloads()->suspended());
    rig->installer().resume();
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
}

void RegionInstallerTest::aResumeWithoutNetworkTakesEffectWhenItReturns()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QTRY_VERIFY(!rig->session->downloads()->suspended());
    rig->installer().pause();
    rig->installer().setWifi(false);
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE(rig->installer().waitReason(Fi), QStringLiteral("pausedByUser"));

    rig->installer().resume();
    QCOMPARE(rig->installer().waitReason(Fi), QStringLiteral("noWifi"));

    rig->installer().setWifi(true);
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
}

void RegionInstallerTest::aPauseSurvivesARestart()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QTRY_VERIFY(!rig->session->downloads()->suspended());
    rig->installer().pause();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE(rig->state(Fi), QStringLiteral("waiting"));

    rig->openSession();

    QTRY_COMPARE(rig->installer().waitReason(Fi), QStringLiteral("pausedByUser"));
    QVERIFY(rig->installer().paused());
    rig->installer().resume();
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
}

QTEST_GUILESS_MAIN(RegionInstallerTest)
#include "tst_regioninstaller.moc"
