// SPDX-License-Identifier: MIT
// Waiting for the network or the user.
#include "download/downloadmanageriface.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include <functional>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QtTest>

namespace {

const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");

// Carried out when the engine's failure has come to the GUI thread, but the installer has not heard
// of it.
std::function<void()> loseTheNetwork;

void loseTheNetworkAtAnError(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (loseTheNetwork && text.contains(QLatin1String("DownloadManagerIface::onError")))
        std::exchange(loseTheNetwork, nullptr)(); // once
}

} // namespace

class InstallerNetworkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { rig = std::make_unique<InstallerRig>(); }
    void cleanup() { rig.reset(); }

    void waitsUntilTheNetworkMayBeUsed();
    void waitsForWifiUnlessTheMobileNetworkIsAllowed();
    void waitsWhilePausedByTheUser();
    void aPauseWithoutNetworkHoldsWhenItReturns();
    void aResumeWithoutNetworkTakesEffectWhenItReturns();
    void aPauseSurvivesARestart();
    void aPauseWithoutNetworkSurvivesARestart();
    void aPauseBeforeTheEngineIsReadySurvivesARestart();
    void aFailureThatIsHeardOfAfterTheNetworkWentIsNone();

private:
    std::unique_ptr<InstallerRig> rig;
};

void InstallerNetworkTest::waitsUntilTheNetworkMayBeUsed()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->installer().setOnline(false);
    QVERIFY(rig->installer().install(Fi));

    QTRY_COMPARE(rig->installer().waitReason(Fi), QStringLiteral("networkNotPermitted"));
    QCOMPARE(rig->state(Fi), QStringLiteral("waiting"));
    QCOMPARE(rig->installer().reason(Fi), QStringLiteral("Waiting for a network"));
    QCOMPARE(rig->installer().sentence(Fi), QStringLiteral("Waiting for a network"));

    rig->installer().setOnline(true);
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
    QVERIFY(rig->installer().waitReason(Fi).isEmpty());
}

void InstallerNetworkTest::waitsForWifiUnlessTheMobileNetworkIsAllowed()
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

void InstallerNetworkTest::waitsWhilePausedByTheUser()
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

void InstallerNetworkTest::aPauseWithoutNetworkHoldsWhenItReturns()
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

void InstallerNetworkTest::aResumeWithoutNetworkTakesEffectWhenItReturns()
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

void InstallerNetworkTest::aPauseSurvivesARestart()
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

void InstallerNetworkTest::aPauseWithoutNetworkSurvivesARestart()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/b.cdt"}));
    rig->openSession();
    rig->installer().setWifi(false);
    QVERIFY(rig->installer().install(Fi));
    QVERIFY(rig->installer().install(Se));
    QTRY_COMPARE(rig->state(Fi), QStringLiteral("waiting"));
    rig->installer().pause();
    QVERIFY(rig->installer().cancel(Fi)); // which wakes the engine
    QTRY_COMPARE(rig->state(Se), QStringLiteral("waiting"));

    rig->openSession();

    QVERIFY(rig->installer().paused());
    QTRY_COMPARE(rig->installer().waitReason(Se), QStringLiteral("pausedByUser"));
    QVERIFY(rig->server.accessLog().isEmpty());
    rig->installer().resume();
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Se), QStringLiteral("installed"), 30000);
}

void InstallerNetworkTest::aPauseBeforeTheEngineIsReadySurvivesARestart()
{
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}));
    rig->openSession();
    rig->installer().pause();
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE(rig->state(Fi), QStringLiteral("waiting"));

    rig->openSession();

    QVERIFY(rig->installer().paused());
    rig->installer().resume();
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
}

void InstallerNetworkTest::aFailureThatIsHeardOfAfterTheNetworkWentIsNone()
{
    HttpTestServer server;
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/1/a.cdt"}));
    const QByteArray archive = TestFile::read(rig->content.archivePath(Se));
    server.add("/FI.zip", archive, {HttpTestServer::CloseAtOnce()});
    rig->content.addLink(Fi, QStringLiteral("Finland"), server.url("/FI.zip"));
    rig->openSession();
    loseTheNetwork = [this] { rig->installer().setOnline(false); };
    const QtMessageHandler previous = qInstallMessageHandler(loseTheNetworkAtAnError);
    const auto restore = qScopeGuard([previous] { qInstallMessageHandler(previous); });
    QVERIFY(rig->installer().install(Fi));
    QTRY_VERIFY(!rig->installer().online());

    QTRY_COMPARE(rig->installer().waitReason(Fi), QStringLiteral("networkNotPermitted"));
    QCOMPARE(rig->installer().pending(), QStringList(Fi));
    QVERIFY(!rig->states.value(Fi).contains(QStringLiteral("failed")));
    server.add("/FI.zip", archive);
    rig->installer().setOnline(true);
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Fi), QStringLiteral("installed"), 30000);
}

QTEST_GUILESS_MAIN(InstallerNetworkTest)
#include "tst_installernetwork.moc"
