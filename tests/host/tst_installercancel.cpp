// SPDX-License-Identifier: MIT
// What is refused, and what the user gives up.
#include "download/downloadmanageriface.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include <QtTest>

namespace {

constexpr int MiB = 1024 * 1024;
const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");

} // namespace

class InstallerCancelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { rig = std::make_unique<InstallerRig>(); }
    void cleanup() { rig.reset(); }

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

private:
    bool installAndWait(const QString &id, const QString &state = QStringLiteral("installed"));

    std::unique_ptr<InstallerRig> rig;
};

bool InstallerCancelTest::installAndWait(const QString &id, const QString &state)
{
    if (!rig->installer().install(id))
        return false;
    return QTest::qWaitFor([&] { return !rig->installer().busy() && rig->state(id) == state; },
                           30000);
}

void InstallerCancelTest::refusesWhatCannotBe()
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

void InstallerCancelTest::refusesASecondInstallWhileOneIsUnderWay()
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

void InstallerCancelTest::refusesWhatDoesNotFitOnTheDisk()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->catalog().region(Fi)->setSize(qint64(1) << 60, 0);

    QVERIFY(!rig->installer().install(Fi));

    QVERIFY(rig->installer().refusal().contains(QLatin1String("needs")));
}

void InstallerCancelTest::cancelsInTheQueue()
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

void InstallerCancelTest::cancelsADownload()
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

void InstallerCancelTest::cancelsAnUnpack()
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

void InstallerCancelTest::doesNotCancelAMove()
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

void InstallerCancelTest::signalsOfACancelledAttemptDoNotTouchTheNext()
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

void InstallerCancelTest::cancelAllGivesUpEverything()
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

void InstallerCancelTest::whatIsCancelledAtTheEngineIsCancelled()
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

void InstallerCancelTest::cancellingKeepsTheUsersPause()
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

QTEST_GUILESS_MAIN(InstallerCancelTest)
#include "tst_installercancel.moc"
