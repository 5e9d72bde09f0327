// SPDX-License-Identifier: MIT
// A network that comes and goes under a running download: real bus, real servers, real engine.
#include "download/downloadmanageriface.h"
#include "fakenetworkmanager.h"
#include "host/shared/networkbinding.h"
#include "host/shared/networkmanagersource.h"
#include "host/shared/networkstate.h"
#include "host/shared/savedqueue.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include <QSignalSpy>
#include <QtTest>

using Fake = FakeNetworkManager;

namespace {

const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");

constexpr int ArchiveSize = 512 * 1024;
// What the server sends in a second while it sends slowly; the archive would take 8 s.
constexpr int DripBytes = 2 * 1024;
constexpr int DripMs = 32;
constexpr int BytesPerSecond = DripBytes * 1000 / DripMs;
constexpr int LimitMs = 60000;

} // namespace

class NetworkBindingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void fetchesNothingWithoutTheNetwork();
    void lostWifiStopsTheBytesAndTheTransferGoesOnByItself();
    void aRealServerSeesTheSame();
    void aNetworkThatBeginsToCostStopsTheTransfer();
    void withTheMobileNetworkAllowedNothingStops();
    void theMobileNetworkIsUsedFromWhenItIsAllowed();
    void aPermissionTakenBackStopsTheTransfer();
    void aPermissionGivenToTheInstallerIsKept();
    void aPlatformThatFallsSilentStopsTheTransfer();
    void theUsersPauseOutlivesTheNetworksReturn();
    void aPauseBeforeTheLossOutlivesTheNetworksReturn();
    void theUsersWordStopsAndStartsTransfers();
    void anUpdateOfTheNetworkThatChangesNothingDoesNotDisturb();
    void aFailureJustBeforeTheNetworkGoesIsNone();
    void aFailureLongBeforeTheNetworkGoesStaysOne();
    void aServerThatLacksTheFileFailsWhileThereIsANetwork();
    void whatFailedAndWasAskedForAgainIsNotTakenUpTwice();
    void theRegionsBehindABrokenOneWaitToo();

private:
    void open();
    void serveSlowlyAtFirst();
    void beginTransfer();
    void expectStopped();
    void expectGoesOn();
    QString state() { return rig->state(Fi); }
    QString wait() { return rig->installer().waitReason(Fi); }

    std::unique_ptr<PrivateBus> bus;
    std::unique_ptr<Fake> manager;
    std::unique_ptr<InstallerRig> rig;
    std::unique_ptr<HttpTestServer> server;
    std::unique_ptr<NetworkState> network;
    std::unique_ptr<NetworkBinding> binding;
    QByteArray archive;
    qint64 saved = 0; // bytes on disk when the transfer stopped
};

void NetworkBindingTest::init()
{
    bus = std::make_unique<PrivateBus>();
    manager = std::make_unique<Fake>(*bus);
    rig = std::make_unique<InstallerRig>();
    server = std::make_unique<HttpTestServer>();
}

void NetworkBindingTest::cleanup()
{
    binding.reset();
    network.reset();
    rig.reset();
    server.reset();
    manager.reset();
    bus.reset();
}

void NetworkBindingTest::open()
{
    manager->appear();
    rig->openSession(false);
    network =
        std::make_unique<NetworkState>(std::make_unique<NetworkManagerSource>(bus->address()));
    binding = std::make_unique<NetworkBinding>(network.get(), &rig->installer());
    rig->session->start();
    QTRY_VERIFY(network->available());
}

// The region's archive comes from a server that sends the first answer drop by drop.
void NetworkBindingTest::serveSlowlyAtFirst()
{
    const Tiles tiles {{QStringLiteral("0/1/a.cdt"), TestContent::tile(Fi, ArchiveSize)}};
    rig->content.addRegion(Se, QStringLiteral("Sweden"), tiles);
    archive = TestFile::read(rig->content.archivePath(Se));
    server->add("/FI.zip", archive,
                {HttpTestServer::Drip(DripBytes, DripMs), HttpTestServer::Whole()});
    rig->content.addLink(Fi, QStringLiteral("Finland"), server->url("/FI.zip"));
}

void NetworkBindingTest::beginTransfer()
{
    serveSlowlyAtFirst();
    open();
    QVERIFY(rig->installer().install(Fi));
    QTRY_VERIFY(SavedQueue::bytesReceived() > 2 * DripBytes);
    QCOMPARE(state(), QStringLiteral("downloading"));
}

// To be called right after the network was told to be gone, or somebody said that it may not be
// used.
void NetworkBindingTest::expectStopped()
{
    const qint64 before = server->bodyBytesSent(0);
    QTRY_COMPARE(server->openConnections(), 0);
    // Counted in bytes, so that a slow machine, which makes the server slow too, does not matter.
    QVERIFY(server->bodyBytesSent(0) - before <= BytesPerSecond);
    QTRY_COMPARE(state(), QStringLiteral("waiting"));
    QVERIFY(rig->session->downloads()->suspended());
    QCOMPARE(server->requestCount(), 1);
    saved = QFileInfo(rig->home.downloadFolder() + QLatin1String("FI.zip")).size();
    QVERIFY(saved > 0);
    QVERIFY(saved < archive.size());
}

void NetworkBindingTest::expectGoesOn()
{
    QTRY_COMPARE_WITH_TIMEOUT(state(), QStringLiteral("installed"), LimitMs);
    QCOMPARE(server->requestCount(), 2); // none while it was stopped
    QCOMPARE(server->request(1).header("Range"), "bytes=" + QByteArray::number(saved) + '-');
    QCOMPARE(server->bodyBytesSent(1), archive.size() - saved);
    QCOMPARE(rig->tileDifference(rig->content.tiles(Se)), QString());
}

void NetworkBindingTest::fetchesNothingWithoutTheNetwork()
{
    manager->set(Fake::nothing());
    serveSlowlyAtFirst();
    open();

    QVERIFY(rig->installer().install(Fi));

    QTRY_COMPARE(wait(), QStringLiteral("networkNotPermitted"));
    QVERIFY(rig->session->downloads()->suspended());
    QCOMPARE(server->requestCount(), 0);
    server->add("/FI.zip", archive);
    manager->set(Fake::wifi());
    QTRY_COMPARE_WITH_TIMEOUT(state(), QStringLiteral("installed"), LimitMs);
    QCOMPARE(server->requestCount(), 1);
}

void NetworkBindingTest::lostWifiStopsTheBytesAndTheTransferGoesOnByItself()
{
    beginTransfer();

    manager->set(Fake::nothing());

    expectStopped();
    manager->set(Fake::wifi());
    expectGoesOn();
}

void NetworkBindingTest::aRealServerSeesTheSame()
{
    const Tiles tiles {{QStringLiteral("0/1/a.cdt"), TestContent::tile(Fi, ArchiveSize)}};
    rig->content.addRegion(Fi, QStringLiteral("Finland"), tiles);
    const QString archivePath = rig->content.archivePath(Fi);
    rig->server.stop();
    rig->server.setRateLimit(BytesPerSecond);
    rig->server.start();
    open();
    QVERIFY(rig->installer().install(Fi));
    QTRY_VERIFY(SavedQueue::bytesReceived() > 0);

    manager->set(Fake::mobile());

    QTRY_COMPARE(wait(), QStringLiteral("noWifi"));
    QTRY_COMPARE(rig->server.accessLog().count(), 1);
    const qint64 received = SavedQueue::bytesReceived();
    QVERIFY(received < QFileInfo(archivePath).size());
    rig->server.stop(); // The rest may come at full speed.
    rig->server.setRateLimit(0);
    rig->server.start();
    manager->set(Fake::wifi());
    QTRY_COMPARE_WITH_TIMEOUT(state(), QStringLiteral("installed"), LimitMs);
    const QList<NginxServer::Entry> log = rig->server.accessLog();
    QCOMPARE(log.count(), 2);
    QCOMPARE(log.last().range, "bytes=" + QByteArray::number(received) + '-');
    QCOMPARE(log.last().status, 206);
    QCOMPARE(rig->tileDifference(tiles), QString());
}

void NetworkBindingTest::aNetworkThatBeginsToCostStopsTheTransfer()
{
    beginTransfer();

    Fake::Network hotspot = Fake::wifi();
    hotspot.metered = Fake::GuessYes;
    manager->set(hotspot);

    expectStopped();
    QCOMPARE(wait(), QStringLiteral("noWifi"));
    manager->set(Fake::wifi());
    expectGoesOn();
}

void NetworkBindingTest::withTheMobileNetworkAllowedNothingStops()
{
    beginTransfer();
    network->setMobileAllowed(true);

    manager->set(Fake::mobile());
    QTRY_VERIFY(!rig->installer().wifi());
    const qint64 before = server->bodyBytesSent(0);
    QTRY_VERIFY(server->bodyBytesSent(0) > before + BytesPerSecond);
    QCOMPARE(state(), QStringLiteral("downloading"));
    manager->set(Fake::wifi());
    QTRY_VERIFY(rig->installer().wifi());

    QTRY_COMPARE_WITH_TIMEOUT(state(), QStringLiteral("installed"), LimitMs);
    QCOMPARE(server->requestCount(), 1);
}

void NetworkBindingTest::theMobileNetworkIsUsedFromWhenItIsAllowed()
{
    beginTransfer();
    manager->set(Fake::mobile());
    expectStopped();

    network->setMobileAllowed(true);

    expectGoesOn();
}

void NetworkBindingTest::aPermissionTakenBackStopsTheTransfer()
{
    manager->set(Fake::mobile());
    serveSlowlyAtFirst();
    open();
    network->setMobileAllowed(true);
    QVERIFY(rig->installer().install(Fi));
    QTRY_VERIFY(SavedQueue::bytesReceived() > 2 * DripBytes);

    network->setMobileAllowed(false);

    expectStopped();
    manager->set(Fake::wifi());
    expectGoesOn();
}

void NetworkBindingTest::aPermissionGivenToTheInstallerIsKept()
{
    open();

    rig->installer().setMobileAllowed(true);

    QVERIFY(network->mobileAllowed());
    manager->set(Fake::mobile());
    QTRY_VERIFY(network->metered());
    QVERIFY(rig->installer().mobileAllowed());
}

void NetworkBindingTest::aPlatformThatFallsSilentStopsTheTransfer()
{
    beginTransfer();

    manager->vanish();

    expectStopped();
    manager->appear();
    expectGoesOn();
}

void NetworkBindingTest::theUsersPauseOutlivesTheNetworksReturn()
{
    beginTransfer();
    manager->set(Fake::nothing());
    expectStopped();

    rig->installer().pause();
    manager->set(Fake::wifi());
    QTRY_VERIFY(rig->installer().wifi());

    QCOMPARE(wait(), QStringLiteral("pausedByUser"));
    QVERIFY(rig->session->downloads()->suspended());
    QVERIFY(SavedQueue::pausedByUser());
    rig->installer().resume();
    QVERIFY(!SavedQueue::pausedByUser());
    expectGoesOn(); // with the second request: the pause and the return have sent none
}

void NetworkBindingTest::aPauseBeforeTheLossOutlivesTheNetworksReturn()
{
    beginTransfer();
    rig->installer().pause();
    expectStopped();

    manager->set(Fake::nothing());
    QTRY_VERIFY(!rig->installer().online());
    manager->set(Fake::wifi());
    QTRY_VERIFY(rig->installer().wifi());

    QCOMPARE(wait(), QStringLiteral("pausedByUser"));
    QVERIFY(rig->session->downloads()->suspended());
    rig->installer().resume();
    expectGoesOn();
}

void NetworkBindingTest::theUsersWordStopsAndStartsTransfers()
{
    manager->set(Fake::nothing());
    serveSlowlyAtFirst();
    open();
    network->setManualWifi(true);
    QVERIFY(rig->installer().install(Fi));
    QTRY_COMPARE(wait(), QStringLiteral("networkNotPermitted"));

    network->setManual(true);
    QTRY_VERIFY(SavedQueue::bytesReceived() > 2 * DripBytes);

    network->setManualOnline(false);
    expectStopped();
    network->setManualOnline(true);
    expectGoesOn();
}

void NetworkBindingTest::anUpdateOfTheNetworkThatChangesNothingDoesNotDisturb()
{
    beginTransfer();
    QSignalSpy suspended(rig->session->downloads(), &DownloadManagerIface::isSuspendedChanged);

    Fake::Network cable = Fake::wifi();
    cable.type = QStringLiteral("802-3-ethernet");
    manager->set(cable);
    manager->setVersion(QStringLiteral("2"));
    const qint64 before = server->bodyBytesSent(0);
    QTRY_VERIFY(server->bodyBytesSent(0) > before + BytesPerSecond);

    QCOMPARE(suspended.count(), 0);
    QCOMPARE(server->requestCount(), 1);
}

void NetworkBindingTest::aFailureJustBeforeTheNetworkGoesIsNone()
{
    beginTransfer();
    server->stop(); // as a radio that goes off: the platform has not noticed it yet
    QTRY_COMPARE(state(), QStringLiteral("failed"));

    manager->set(Fake::nothing());

    QTRY_COMPARE(wait(), QStringLiteral("networkNotPermitted"));
    QCOMPARE(state(), QStringLiteral("waiting"));
    QCOMPARE(rig->installer().pending(), QStringList(Fi));
    QVERIFY(rig->installer().busy());
    server->start();
    manager->set(Fake::wifi());
    QTRY_COMPARE_WITH_TIMEOUT(state(), QStringLiteral("installed"), LimitMs);
    QVERIFY(!rig->installer().busy());
    QCOMPARE(rig->tileDifference(rig->content.tiles(Se)), QString());
}

void NetworkBindingTest::aFailureLongBeforeTheNetworkGoesStaysOne()
{
    beginTransfer();
    rig->installer().setNetworkPatience(0);
    server->stop();
    QTRY_COMPARE(state(), QStringLiteral("failed"));

    manager->set(Fake::nothing());

    QTRY_VERIFY(!rig->installer().online());
    QCOMPARE(state(), QStringLiteral("failed"));
    QVERIFY(rig->installer().pending().isEmpty());
}

void NetworkBindingTest::aServerThatLacksTheFileFailsWhileThereIsANetwork()
{
    serveSlowlyAtFirst();
    server->remove("/FI.zip");
    open();

    QVERIFY(rig->installer().install(Fi));

    QTRY_COMPARE(state(), QStringLiteral("failed"));
    QTRY_VERIFY(!rig->installer().busy());
    QCOMPARE(server->requestCount(), 1);
    QVERIFY(rig->installer().wifi());
    QCOMPARE(state(), QStringLiteral("failed"));
}

void NetworkBindingTest::whatFailedAndWasAskedForAgainIsNotTakenUpTwice()
{
    beginTransfer();
    server->stop();
    QTRY_COMPARE(state(), QStringLiteral("failed"));
    QVERIFY(rig->installer().install(Fi));
    QVERIFY(rig->installer().cancel(Fi));

    manager->set(Fake::nothing());

    QTRY_VERIFY(!rig->installer().online());
    QCOMPARE(state(), QStringLiteral("cancelled"));
    QVERIFY(rig->installer().pending().isEmpty());
    QTRY_VERIFY(!rig->installer().busy());
}

void NetworkBindingTest::theRegionsBehindABrokenOneWaitToo()
{
    beginTransfer();
    rig->server.stop();
    QVERIFY(rig->installer().install(Se));
    server->stop();
    QTRY_COMPARE(state(), QStringLiteral("failed"));
    QTRY_COMPARE(rig->state(Se), QStringLiteral("failed"));

    manager->set(Fake::mobile());

    QTRY_COMPARE(rig->installer().pending().size(), 2);
    QTRY_COMPARE(rig->installer().waitReason(rig->installer().pending().first()),
                 QStringLiteral("noWifi"));
    QCOMPARE(rig->state(rig->installer().pending().last()), QStringLiteral("queued"));
    server->start();
    rig->server.start();
    manager->set(Fake::wifi());
    QTRY_COMPARE_WITH_TIMEOUT(state(), QStringLiteral("installed"), LimitMs);
    QTRY_COMPARE_WITH_TIMEOUT(rig->state(Se), QStringLiteral("installed"), LimitMs);
}

QTEST_GUILESS_MAIN(NetworkBindingTest)
#include "tst_networkbinding.moc"
