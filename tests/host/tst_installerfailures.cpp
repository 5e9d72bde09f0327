// SPDX-License-Identifier: MIT
// What goes wrong, and what is left then.
#include "download/downloadmanageriface.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include <QtTest>

namespace {

constexpr int MiB = 1024 * 1024;
const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");

} // namespace

class InstallerFailuresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { rig = std::make_unique<InstallerRig>(); }
    void cleanup() { rig.reset(); }

    void whatTheServerLacksFailsAndIsNeverRecorded();
    void aRefusalFailsInOtherWords();
    void anUnreachableServerFails();
    void aBadArchiveFailsAndLeavesNothing_data();
    void aBadArchiveFailsAndLeavesNothing();
    void anArchiveWithoutTilesFails();
    void anEndThatIsMissingIsNoticedByTheCataloguesSize();
    void aCatalogueWithoutASizeAllowsAny();
    void aFailedUpdateLeavesTheOldVersionInstalled();
    void aContentFileThatCannotBeWrittenIsAFailure();
    void aMoveThatFailsTakesItsFilesAwayAgain();
    void whatTheGuardRefusesIsNeverMoved();
    void aRegionThatLeftTheCatalogueIsNotRecorded();
    void tilesThatVanishAreFetchedAgain();
    void tilesThatVanishTwiceAreAFailure();
    void afterAFailureTheNextRegionIsInstalled();
    void afterAFailureTheSameRegionCanBeInstalled();
    void aFailureIsDismissed();
    void allThatEndedBadlyIsDismissedAtOnce();
    void onlyWhatHasFailedIsDismissed();
    void whatWasDismissedDoesNotBeginAgainWhenTheNetworkGoes();

private:
    bool installAndWait(const QString &id, const QString &state = QStringLiteral("installed"));

    std::unique_ptr<InstallerRig> rig;
};

bool InstallerFailuresTest::installAndWait(const QString &id, const QString &state)
{
    if (!rig->installer().install(id))
        return false;
    return QTest::qWaitFor([&] { return !rig->installer().busy() && rig->state(id) == state; },
                           30000);
}

void InstallerFailuresTest::whatTheServerLacksFailsAndIsNeverRecorded()
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

void InstallerFailuresTest::aRefusalFailsInOtherWords()
{
    HttpTestServer server;
    server.add("/FI.zip", QByteArray("x"), HttpTestServer::Status(429));
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    rig->openSession();

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("refused")));
}

void InstallerFailuresTest::anUnreachableServerFails()
{
    HttpTestServer server;
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    server.stop();
    rig->openSession();

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().status(Fi).failure == FailureKind::Network);
}

void InstallerFailuresTest::aBadArchiveFailsAndLeavesNothing_data()
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

void InstallerFailuresTest::aBadArchiveFailsAndLeavesNothing()
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

void InstallerFailuresTest::anArchiveWithoutTilesFails()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"),
                           {{QStringLiteral("README"), QByteArray("no tiles here")}});
    rig->openSession();

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("no map tiles")));
    QVERIFY(InstallerRig::recordedIds().isEmpty());
}

// Nothing else tells: the server gives no length, and this archive is a whole one without it.
void InstallerFailuresTest::anEndThatIsMissingIsNoticedByTheCataloguesSize()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt", "a/3/z.cdt"}),
                           QStringLiteral("FI.tar"));
    const QByteArray archive = TestFile::read(rig->content.archivePath(Fi));
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}),
                           QStringLiteral("SE.tar"));
    const QByteArray half = TestFile::read(rig->content.archivePath(Se));
    HttpTestServer server;
    server.add("/archives/FI.tar", half, HttpTestServer::NoRange() | HttpTestServer::Chunked());
    rig->openSession();
    rig->installer().setBaseUri(server.url("/"));

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().status(Fi).failure == FailureKind::Network);
    QCOMPARE(rig->installer().reason(Fi),
             QStringLiteral("The server sent %1 bytes for FI, but the catalogue says %2; nothing "
                            "was changed. Is there a log-in page in between, or is the catalogue "
                            "old?")
                 .arg(QLocale().toString(half.size()), QLocale().toString(archive.size())));
    QVERIFY(!rig->states.value(Fi).contains(QStringLiteral("moving")));
    QVERIFY(InstallerRig::recordedIds().isEmpty());
    QTRY_VERIFY(rig->session->downloads()->getRequests().isEmpty());
    QCOMPARE(rig->tileDifference({}), QString());

    server.add("/archives/FI.tar", archive);
    QVERIFY(installAndWait(Fi));
    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
}

void InstallerFailuresTest::aCatalogueWithoutASizeAllowsAny()
{
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}));
    HttpTestServer server;
    server.add("/FI.zip", TestFile::read(rig->content.archivePath(Se)));
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip")); // of size 0
    rig->openSession();

    QVERIFY(installAndWait(Fi));

    QCOMPARE(rig->tileDifference(rig->content.tiles(Se)), QString());
}

void InstallerFailuresTest::aFailedUpdateLeavesTheOldVersionInstalled()
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

void InstallerFailuresTest::aContentFileThatCannotBeWrittenIsAFailure()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    const QString path = DataRoot::catalogFolder() + QLatin1String("/content.xml");
    // Root may write everything, but not replace a folder by a file.
    QVERIFY(QFile::remove(path) && QDir().mkpath(path + QLatin1String("/x")));

    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().reason(Fi).contains(QLatin1String("could not be recorded")));
}

void InstallerFailuresTest::aMoveThatFailsTakesItsFilesAwayAgain()
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

void InstallerFailuresTest::whatTheGuardRefusesIsNeverMoved()
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

void InstallerFailuresTest::aRegionThatLeftTheCatalogueIsNotRecorded()
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

void InstallerFailuresTest::tilesThatVanishAreFetchedAgain()
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

void InstallerFailuresTest::tilesThatVanishTwiceAreAFailure()
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

void InstallerFailuresTest::afterAFailureTheNextRegionIsInstalled()
{
    rig->content.addLink(Fi, QStringLiteral("Finland"), QStringLiteral("archives/FI.zip"));
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));

    QVERIFY(installAndWait(Se));

    QCOMPARE(rig->state(Fi), QStringLiteral("failed"));
    QCOMPARE(InstallerRig::recordedIds(), QStringList {Se});
}

void InstallerFailuresTest::afterAFailureTheSameRegionCanBeInstalled()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    const QByteArray good = TestFile::read(rig->content.archivePath(Fi));
    TestFile::write(rig->content.archivePath(Fi), QByteArray(good.size(), 'x'));
    rig->openSession();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("failed"), 30000);
    TestFile::write(rig->content.archivePath(Fi), good);

    QVERIFY(installAndWait(Fi)); // at once, while the engine still ends the first attempt

    QCOMPARE(rig->tileDifference(rig->content.tiles(Fi)), QString());
}

void InstallerFailuresTest::aFailureIsDismissed()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    QVERIFY(installAndWait(Fi));
    QFile::remove(rig->content.archivePath(Fi));
    QSignalSpy changed(&rig->installer(), &RegionInstaller::failedChanged);
    QVERIFY(installAndWait(Fi, QStringLiteral("failed"))); // an update
    QCOMPARE(rig->installer().failed(), QStringList {Fi});
    QCOMPARE(changed.count(), 1);

    QVERIFY(rig->installer().dismiss(Fi));

    QCOMPARE(rig->state(Fi), QStringLiteral("installed"));
    QCOMPARE(rig->states.value(Fi).last(), QStringLiteral("installed"));
    QCOMPARE(rig->installer().reason(Fi), QString());
    QCOMPARE(rig->installer().failed(), QStringList());
    QCOMPARE(changed.count(), 2);
}

void InstallerFailuresTest::allThatEndedBadlyIsDismissedAtOnce()
{
    rig->content.addLink(Fi, QStringLiteral("Finland"), QStringLiteral("archives/FI.zip"));
    rig->content.addLink(Se, QStringLiteral("Sweden"), QStringLiteral("archives/SE.zip"));
    rig->openSession();
    QVERIFY(installAndWait(Se, QStringLiteral("failed")));
    rig->installer().pause();
    QVERIFY(rig->installer().install(Fi));
    QVERIFY(rig->installer().cancel(Fi));
    QTRY_COMPARE(rig->installer().failed(), QStringList({Fi, Se}));

    rig->installer().dismissAll();

    QCOMPARE(rig->installer().failed(), QStringList());
    QCOMPARE(rig->state(Fi), QStringLiteral("notInstalled"));
    QCOMPARE(rig->state(Se), QStringLiteral("notInstalled"));
}

void InstallerFailuresTest::onlyWhatHasFailedIsDismissed()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->installer().setOnline(false);
    QVERIFY(rig->installer().install(Fi));

    QVERIFY(!rig->installer().dismiss(Fi));
    QVERIFY(rig->installer().refusal().contains(QLatin1String("did not fail")));
    QVERIFY(!rig->installer().dismiss(QStringLiteral("XX")));
    rig->installer().dismissAll();

    QCOMPARE(rig->installer().pending(), QStringList {Fi});
    rig->installer().setOnline(true);
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
}

// A failure just before is taken for the network's, and would begin again.
void InstallerFailuresTest::whatWasDismissedDoesNotBeginAgainWhenTheNetworkGoes()
{
    rig->content.addLink(Fi, QStringLiteral("Finland"), QStringLiteral("archives/FI.zip"));
    rig->openSession();
    rig->installer().setNetworkPatience(60000);
    QVERIFY(installAndWait(Fi, QStringLiteral("failed")));

    QVERIFY(rig->installer().dismiss(Fi));
    rig->installer().setOnline(false);

    QCOMPARE(rig->state(Fi), QStringLiteral("notInstalled"));
    QCOMPARE(rig->installer().pending(), QStringList());
}

QTEST_GUILESS_MAIN(InstallerFailuresTest)
#include "tst_installerfailures.moc"
