// SPDX-License-Identifier: MIT
// One user's whole way through the app, in a window on a display, against a real web server.
#include "uirig.h"

class UiEndToEndTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMapIsFoundInstalledInSpiteOfAServerThatDiesAndRemoved();
    void aTransferWhoseServerDiedSaysSoAndIsTriedAgain();
};

namespace {

constexpr int ArchiveSize = 400000; // bytes, of noise: it cannot be compressed
constexpr int SlowRate = 50000; // bytes a second
constexpr int EnoughBytes = 60000;

} // namespace

void UiEndToEndTest::aMapIsFoundInstalledInSpiteOfAServerThatDiesAndRemoved()
{
    UiRig rig;
    const Tiles tiles {
        {QStringLiteral("0/1/fi.cdt"), TestContent::tile(QStringLiteral("fi"), ArchiveSize)}};
    rig.content.addRegion(QStringLiteral("FI"), QStringLiteral("Finland"), tiles);
    rig.content.addRegion(QStringLiteral("SE"), QStringLiteral("Sweden"), tiles);
    rig.content.publish(QStringLiteral("1.0"));

    // A device without maps fetches the list.
    QVERIFY(rig.open());
    QVERIFY(rig.press("Fetch the list"));
    QVERIFY(rig.waitFor("Sweden in 001"));
    rig.server.stop();
    rig.server.setRateLimit(SlowRate);
    rig.server.start();

    // Search and install.
    rig.key(Qt::Key_F, Qt::ControlModifier);
    rig.type(QStringLiteral("fin"));
    QTRY_VERIFY_WITH_TIMEOUT(!rig.shows(QStringLiteral("Sweden in 001")), UiRig::Long);
    QVERIFY(rig.press("Install Finland in 001"));
    QVERIFY(rig.press("Transfers (1)"));

    // Watch, and pause.
    QVERIFY(rig.waitFor("Downloading"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.installer().bytesReceived(QStringLiteral("FI")) > EnoughBytes,
                             UiRig::Long);
    QVERIFY(rig.press("Pause"));
    QVERIFY(rig.waitFor("Paused by you"));
    QVERIFY(rig.waitForHangUp("/map5/archives/FI.zip"));

    // The server dies and comes back meanwhile.
    rig.server.stop();
    rig.server.setRateLimit(0);
    rig.server.start();
    QVERIFY(rig.press("Resume"));

    // It goes on where it was.
    QVERIFY(rig.waitFor("Nothing is being transferred"));
    const QList<NginxServer::Entry> log = rig.server.accessLog();
    QCOMPARE(log.last().path, QByteArray("/map5/archives/FI.zip"));
    QCOMPARE(log.last().status, 206);
    QVERIFY(log.last().range.startsWith("bytes="));
    QCOMPARE(differenceOf(DataRoot::tileCacheFolder(), tiles), QString());

    // And away with it.
    QVERIFY(rig.press("Installed"));
    QVERIFY(rig.press("Remove Finland in 001"));
    QVERIFY(rig.press("Remove"));
    QVERIFY(rig.waitFor("No map is installed"));
    QCOMPARE(differenceOf(DataRoot::tileCacheFolder(), Tiles()), QString());
}

void UiEndToEndTest::aTransferWhoseServerDiedSaysSoAndIsTriedAgain()
{
    UiRig rig;
    const Tiles tiles {
        {QStringLiteral("0/1/fi.cdt"), TestContent::tile(QStringLiteral("fi"), ArchiveSize)}};
    rig.content.addRegion(QStringLiteral("FI"), QStringLiteral("Finland"), tiles);
    rig.server.stop();
    rig.server.setRateLimit(SlowRate);
    rig.server.start();
    QVERIFY(rig.openWithCatalog());

    QVERIFY(rig.press("Install Finland in 001"));
    QVERIFY(rig.press("Transfers (1)"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.installer().bytesReceived(QStringLiteral("FI")) > EnoughBytes,
                             UiRig::Long);
    rig.server.stop(); // as kill -9 does

    QVERIFY(rig.waitFor("could not be downloaded: the server cannot be reached"));
    QVERIFY(rig.press("Transfers")); // The badge is gone: nothing is pending.
    QVERIFY(!rig.session->catalog()->region(QStringLiteral("FI"))->installed());
    rig.server.setRateLimit(0);
    rig.server.start();
    QVERIFY(rig.press("Try Finland in 001 again"));

    QVERIFY(rig.waitFor("Nothing is being transferred"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->catalog()->region(QStringLiteral("FI"))->installed(),
                             UiRig::Long);
    QCOMPARE(differenceOf(DataRoot::tileCacheFolder(), tiles), QString());
    // The engine drops what it has of a file whose server is gone.
    const NginxServer::Entry last = rig.server.accessLog().last();
    QCOMPARE(last.path, QByteArray("/map5/archives/FI.zip"));
    QCOMPARE(last.range, QByteArray("bytes=0-"));
    QCOMPARE(last.bodyBytesSent,
             qint64(QFileInfo(rig.content.archivePath(QStringLiteral("FI"))).size()));
}

UI_TEST_MAIN(UiEndToEndTest)
#include "tst_uiendtoend.moc"
