// SPDX-License-Identifier: MIT
// The pages in their window, against a real server: what a user sees, presses and types.
#include "host/shared/loglines.h"
#include "uirig.h"

class UiPagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyDeviceIsLedToTheCatalogue();
    void aRegionIsFoundInstalledAndRemoved();
    void theTreeIsGoneDownAndUp();
    void arrowsAndEnterGoThroughTheList();
    void escapeLeavesTheSearch();
    void aTransferSaysThatItWaitsForWifi();
    void pauseHoldsATransferAndResumeLetsItGoOn();
    void aWaitingTransferIsCancelled();
    void aFailedInstallIsTriedAgain();
    void endedTransfersAreTakenOffTheList();
    void aTransferSaysWhatItWaitsFor();
    void theRemovalDialogTellsWhatStays();
    void aLockedDataSetIsExplainedAndTriedAgain();
    void aServerWithoutACatalogueIsExplained();
    void theFreeSpaceIsMeasuredWheneverAPageThatTellsOfTheDiskIsShown();
    void theServerIsChangedInTheSettings();
    void theStyleIsChosenInTheSettings();
    void aWideWindowHasItsBarAtTheSide();
    void aWideWindowShowsDetailsBesideTheList();
    void theDetailsBesideAListFollowIt();
};

namespace {

Tiles someTiles(const char *name)
{
    return tilesOf({name, "0/common.cdt"});
}

struct FilledRig : UiRig
{
    FilledRig()
    {
        content.addRegion(QStringLiteral("EU"), QStringLiteral("Europe"), someTiles("1/eu.cdt"));
        content.addRegion(QStringLiteral("FI"), QStringLiteral("Finland"), someTiles("1/fi.cdt"),
                          QString(), QStringLiteral("EU"));
        content.addRegion(QStringLiteral("SE"), QStringLiteral("Sweden"), someTiles("1/se.cdt"),
                          QString(), QStringLiteral("EU"));
        content.addRegion(QStringLiteral("JP"), QStringLiteral("Japan"), someTiles("1/jp.cdt"));
    }
};

} // namespace

// TestContent's names are "Finland in 001" and so on.

void UiPagesTest::anEmptyDeviceIsLedToTheCatalogue()
{
    FilledRig rig;
    rig.content.publish(QStringLiteral("1.0"));
    QVERIFY(rig.open());

    QVERIFY(rig.waitFor("No maps are known yet"));
    QVERIFY(rig.press("Fetch the list"));

    QVERIFY(rig.waitFor("Japan in 001"));
    QVERIFY(rig.waitFor("The list of maps is up to date (version 1.0)."));
    QVERIFY(!rig.shows(QStringLiteral("No maps are known yet")));
}

void UiPagesTest::aRegionIsFoundInstalledAndRemoved()
{
    FilledRig rig;
    QVERIFY(rig.openWithCatalog());
    QVERIFY(rig.waitFor("Europe in 001"));

    rig.key(Qt::Key_F, Qt::ControlModifier);
    rig.type(QStringLiteral("finl"));
    QVERIFY(rig.waitFor("Finland in 001"));
    QVERIFY(!rig.shows(QStringLiteral("Japan in 001")));
    QVERIFY(rig.press("Install Finland in 001"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->catalog()->region(QStringLiteral("FI"))->installed(),
                             UiRig::Long);

    QVERIFY(rig.press("Installed"));
    QVERIFY(rig.waitFor("on this device"));
    QVERIFY(rig.press("Remove Finland in 001"));
    QVERIFY(rig.waitFor("Remove Finland in 001?"));
    QVERIFY(rig.waitFor("This frees"));
    QVERIFY(rig.press("Remove"));
    QVERIFY(rig.waitFor("No map is installed"));
    QVERIFY(rig.waitFor("Finland in 001 is removed"));
}

void UiPagesTest::theTreeIsGoneDownAndUp()
{
    FilledRig rig;
    QVERIFY(rig.openWithCatalog());
    QVERIFY(rig.waitFor("Europe in 001"));
    QVERIFY(!rig.shows(QStringLiteral("Finland in 001")));

    QVERIFY(rig.pressRow("Europe in 001"));
    QVERIFY(rig.waitFor("Finland in 001"));
    QVERIFY(rig.shows(QStringLiteral("All of Europe in 001")));
    QVERIFY(!rig.shows(QStringLiteral("Japan in 001")));

    QVERIFY(rig.press("Back"));
    QVERIFY(rig.waitFor("Japan in 001"));
    QVERIFY(!rig.shows(QStringLiteral("Finland in 001")));
}

void UiPagesTest::arrowsAndEnterGoThroughTheList()
{
    FilledRig rig;
    QVERIFY(rig.openWithCatalog());
    QVERIFY(rig.waitFor("Europe in 001"));

    rig.key(Qt::Key_F, Qt::ControlModifier);
    rig.key(Qt::Key_Down); // into the list, on Europe
    rig.key(Qt::Key_Return);
    QVERIFY(rig.waitFor("All of Europe in 001"));
    rig.key(Qt::Key_Down); // from Finland to Sweden
    rig.key(Qt::Key_Space);

    QVERIFY(rig.waitFor("Not installed"));
    QVERIFY(rig.named(QStringLiteral("Install")));
    rig.key(Qt::Key_Escape); // the details
    QTRY_VERIFY(!rig.shows(QStringLiteral("Not installed")));
    rig.key(Qt::Key_Escape); // the level
    QVERIFY(rig.waitFor("Japan in 001"));
}

void UiPagesTest::escapeLeavesTheSearch()
{
    FilledRig rig;
    QVERIFY(rig.openWithCatalog());
    QVERIFY(rig.waitFor("Japan in 001"));

    rig.key(Qt::Key_F, Qt::ControlModifier);
    rig.type(QStringLiteral("xyz"));
    QVERIFY(rig.waitFor("No map has this name"));
    rig.key(Qt::Key_Escape);

    QVERIFY(rig.waitFor("Japan in 001"));
}

void UiPagesTest::aTransferSaysThatItWaitsForWifi()
{
    FilledRig rig;
    QVERIFY(rig.openWithCatalog());
    rig.network->set(true, false);

    QVERIFY(rig.press("Install Japan in 001"));
    QVERIFY(rig.press("Transfers (1)"));
    QVERIFY(rig.waitFor("Waiting for Wi-Fi"));
    QVERIFY(rig.shows(QStringLiteral("Downloads wait for Wi-Fi.")));
    QVERIFY(rig.press("Use the mobile network"));

    QVERIFY(rig.waitFor("Nothing is being transferred"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->catalog()->region(QStringLiteral("JP"))->installed(),
                             UiRig::Long);
}

void UiPagesTest::pauseHoldsATransferAndResumeLetsItGoOn()
{
    FilledRig rig;
    rig.server.stop();
    rig.server.setRateLimit(1000); // bytes a second: it cannot end before it is paused
    rig.server.start();
    QVERIFY(rig.openWithCatalog());

    QVERIFY(rig.press("Install Japan in 001"));
    QVERIFY(rig.press("Transfers (1)"));
    QVERIFY(rig.waitFor("Downloading"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.installer().bytesReceived(QStringLiteral("JP")) > 0, UiRig::Long);
    QVERIFY(rig.press("Pause"));
    QVERIFY(rig.waitFor("Paused by you"));
    QVERIFY(rig.waitForHangUp("/map5/archives/JP.zip"));
    rig.server.stop();
    rig.server.setRateLimit(0);
    rig.server.start();
    QVERIFY(rig.press("Resume"));

    QVERIFY(rig.waitFor("Nothing is being transferred"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->catalog()->region(QStringLiteral("JP"))->installed(),
                             UiRig::Long);
}

void UiPagesTest::aWaitingTransferIsCancelled()
{
    FilledRig rig;
    QVERIFY(rig.openWithCatalog());
    rig.network->set(false, false);

    QVERIFY(rig.press("Install Japan in 001"));
    QVERIFY(rig.press("Transfers (1)"));
    QVERIFY(rig.waitFor("There is no network."));
    QVERIFY(rig.press("Cancel Japan in 001"));

    QVERIFY(rig.waitFor("Cancelled"));
    QCOMPARE(rig.installer().pending(), QStringList());
}

void UiPagesTest::aFailedInstallIsTriedAgain()
{
    FilledRig rig;
    const QString archive = rig.content.archivePath(QStringLiteral("JP"));
    QVERIFY(rig.openWithCatalog());
    QVERIFY(QFile::rename(archive, archive + QLatin1String(".away")));

    QVERIFY(rig.press("Install Japan in 001"));
    rig.window->setProperty("page", 2);
    QTRY_COMPARE_WITH_TIMEOUT(rig.installer().state(QStringLiteral("JP")), QStringLiteral("failed"),
                              UiRig::Long);
    const QString why = rig.installer().reason(QStringLiteral("JP"));
    QVERIFY(!why.isEmpty());
    QVERIFY(rig.waitFor(qPrintable(why)));
    QVERIFY(QFile::rename(archive + QLatin1String(".away"), archive));
    QVERIFY(rig.press("Try Japan in 001 again"));

    QVERIFY(rig.waitFor("Nothing is being transferred"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->catalog()->region(QStringLiteral("JP"))->installed(),
                             UiRig::Long);
}

void UiPagesTest::endedTransfersAreTakenOffTheList()
{
    FilledRig rig;
    QVERIFY(rig.openWithCatalog());
    rig.network->set(false, false);
    for (const char *id : {"FI", "SE", "JP"})
        QVERIFY(rig.installer().install(QLatin1String(id)));
    rig.installer().cancelAll();
    QVERIFY(rig.installer().install(QStringLiteral("EU")));
    QVERIFY(rig.press("Transfers (1)"));
    QVERIFY(rig.waitFor("Japan in 001"));

    QVERIFY(rig.press("Remove Japan in 001 from the list"));
    QTRY_VERIFY(!rig.shows(QStringLiteral("Japan in 001")));
    QVERIFY(rig.shows(QStringLiteral("Finland in 001")));
    QVERIFY(rig.press("Clear ended transfers"));

    QTRY_VERIFY(!rig.shows(QStringLiteral("Finland in 001")));
    QTRY_VERIFY(!rig.named(QStringLiteral("Clear ended transfers")));
    QVERIFY(rig.shows(QStringLiteral("Europe in 001"))); // It is not over.
    QVERIFY(rig.press("Cancel Europe in 001"));
    QVERIFY(rig.press("Clear ended transfers"));
    QVERIFY(rig.waitFor("Nothing is being transferred"));
}

void UiPagesTest::aTransferSaysWhatItWaitsFor()
{
    FilledRig rig;
    QVERIFY(rig.openWithCatalog());
    rig.network->set(false, false);
    QVERIFY(rig.installer().install(QStringLiteral("JP")));
    rig.window->setProperty("page", 2);

    QVERIFY(rig.waitFor("Waiting for a network"));
    rig.network->set(true, false);
    QVERIFY(rig.waitFor("Waiting for Wi-Fi"));
    QVERIFY(!rig.shows(QStringLiteral("Waiting for a network")));
    QVERIFY(rig.press("Pause"));
    QVERIFY(rig.waitFor("Paused by you"));
    QVERIFY(!rig.shows(QStringLiteral("Waiting for Wi-Fi")));
}

void UiPagesTest::theRemovalDialogTellsWhatStays()
{
    FilledRig rig;
    QVERIFY(rig.openWithCatalog());
    rig.installer().install(QStringLiteral("FI"));
    rig.installer().install(QStringLiteral("SE"));
    QTRY_VERIFY_WITH_TIMEOUT(!rig.installer().busy(), UiRig::Long);

    QVERIFY(rig.press("Installed"));
    QVERIFY(rig.press("Remove Sweden in 001"));

    QVERIFY(rig.waitFor("This frees 20 kB (1 file"));
    QVERIFY(rig.shows(QStringLiteral("20 kB (1 file")));
    QVERIFY(rig.shows(QStringLiteral("because other installed maps need them")));
    QVERIFY(rig.press("Cancel"));
    QVERIFY(rig.session->catalog()->region(QStringLiteral("SE"))->installed());
}

void UiPagesTest::aLockedDataSetIsExplainedAndTriedAgain()
{
    FilledRig rig;
    auto other = std::make_unique<DataSetLock>();
    QVERIFY(other->tryLock());

    rig.session->open();
    QVERIFY(rig.waitFor("The maps cannot be opened"));
    QVERIFY(rig.shows(rig.session->problem()));
    other.reset();
    QVERIFY(LogLines::kept(1).isEmpty()); // they are the other program's
    QVERIFY(rig.press("Try again"));

    QVERIFY(rig.waitFor("No maps are known yet"));
    QVERIFY(LogLines::kept(1).constFirst().endsWith(QLatin1String(": open")));
}

void UiPagesTest::aServerWithoutACatalogueIsExplained()
{
    UiRig rig;
    QVERIFY(rig.open());

    QVERIFY(rig.press("Fetch the list"));

    QVERIFY(rig.waitFor("cannot be reached, or it is no map server"));
    QVERIFY(rig.press("Close the message"));
    QTRY_VERIFY(!rig.shows(QStringLiteral("cannot be reached")));
}

// The first time, too, when the page is made.
void UiPagesTest::theFreeSpaceIsMeasuredWheneverAPageThatTellsOfTheDiskIsShown()
{
    UiRig rig;
    QVERIFY(rig.open());
    const QSignalSpy measured(rig.session.get(), &MapsSession::freeSpaceChanged);
    int times = 0;
    for (const int page : {3, 4}) {
        for (int i = 0; i < 2; ++i) {
            rig.window->setProperty("page", page);
            QCOMPARE(measured.count(), ++times);
            rig.window->setProperty("page", 0);
        }
    }
}

void UiPagesTest::theServerIsChangedInTheSettings()
{
    UiRig rig;
    QVERIFY(rig.open());
    rig.window->resize(800, 1400); // all settings at once
    QVERIFY(rig.press("Settings"));

    const QString row = QStringLiteral("Content server: ") + rig.server.url("/map5/");
    QVERIFY(rig.press(qPrintable(row)));
    rig.key(Qt::Key_A, Qt::ControlModifier);
    rig.type(QStringLiteral("nonsense"));
    QVERIFY(rig.press("Use this server"));
    QVERIFY(rig.waitFor("This is no http address."));
    rig.key(Qt::Key_A, Qt::ControlModifier);
    rig.type(QStringLiteral("http://maps.invalid/map5"));
    rig.key(Qt::Key_Return);

    QTRY_COMPARE(rig.session->baseUri(), QStringLiteral("http://maps.invalid/map5/"));
    QCOMPARE(rig.installer().baseUri(), QStringLiteral("http://maps.invalid/map5/"));
    QCOMPARE(EngineSession::configuredBaseUri(), QStringLiteral("http://maps.invalid/map5/"));
    QVERIFY(rig.waitFor("http://maps.invalid/map5/"));
}

void UiPagesTest::theStyleIsChosenInTheSettings()
{
    UiRig rig;
    QVERIFY(rig.open());
    rig.session->setStyle(QStringLiteral("light"));
    rig.window->resize(800, 1400);
    QVERIFY(rig.press("Settings"));

    QVERIFY(rig.press("Appearance: Light"));
    QVERIFY(rig.press("Dark"));

    QTRY_VERIFY(rig.session->dark());
    QVERIFY(rig.window->color().lightness() < 80);
    QVERIFY(rig.named(QStringLiteral("Appearance: Dark")));
    rig.session->setStyle(QString());
}

void UiPagesTest::aWideWindowHasItsBarAtTheSide()
{
    UiRig rig;
    QVERIFY(rig.open());
    const auto tab = [&rig] {
        rig.window->grabWindow();
        return rig.named(QStringLiteral("Settings"))->mapToScene(QPointF());
    };

    QVERIFY(tab().y() > 500);
    rig.window->resize(1100, 760);

    QTRY_VERIFY(tab().x() < 40);
    QVERIFY(tab().y() < 400);
}

void UiPagesTest::aWideWindowShowsDetailsBesideTheList()
{
    FilledRig rig;
    rig.window->resize(1100, 760);
    QVERIFY(rig.openWithCatalog());
    QVERIFY(rig.waitFor("Choose a map"));

    QVERIFY(rig.pressRow("Japan in 001"));
    QVERIFY(rig.waitFor("Not installed"));
    QVERIFY(rig.press("Install")); // nothing covers the list
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->catalog()->region(QStringLiteral("JP"))->installed(),
                             UiRig::Long);
    QTRY_VERIFY(rig.named(QStringLiteral("Remove")));

    QVERIFY(rig.pressRow("Europe in 001"));
    QVERIFY(rig.waitFor("Not installed")); // the level that is open
    QVERIFY(!rig.named(QStringLiteral("Remove")));
    rig.window->resize(360, 640);
    QTRY_VERIFY(!rig.shows(QStringLiteral("Not installed")));
    QVERIFY(rig.pressRow("Sweden in 001"));
    QVERIFY(rig.waitFor("Not installed")); // in a sheet
    QVERIFY(rig.press("Close"));
}

void UiPagesTest::theDetailsBesideAListFollowIt()
{
    FilledRig rig;
    rig.window->resize(1100, 760);
    QVERIFY(rig.openWithCatalog());
    for (const char *id : {"JP", "FI"}) {
        QVERIFY(rig.installer().install(QLatin1String(id)));
        QTRY_VERIFY_WITH_TIMEOUT(rig.session->catalog()->region(QLatin1String(id))->installed(),
                                 UiRig::Long);
    }
    const auto detail = [&rig] {
        const auto *const pane = rig.window->findChild<QObject *>(QStringLiteral("detailsPane"));
        return pane ? pane->property("regionId").toString() : QStringLiteral("no pane");
    };

    QVERIFY(rig.press("Installed"));
    QTRY_COMPARE(detail(), QStringLiteral("FI")); // nobody chose: the first
    QVERIFY(rig.pressRow("Japan in 001"));
    QTRY_COMPARE(detail(), QStringLiteral("JP"));
    QVERIFY(rig.installer().remove(QStringLiteral("JP")));
    QTRY_COMPARE(detail(), QStringLiteral("FI")); // the chosen one is gone
    QVERIFY(rig.installer().remove(QStringLiteral("FI")));

    QVERIFY(rig.waitFor("No map is installed"));
    QTRY_COMPARE(detail(), QStringLiteral("no pane"));
}

UI_TEST_MAIN(UiPagesTest)
#include "tst_uipages.moc"
