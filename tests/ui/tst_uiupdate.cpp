// SPDX-License-Identifier: MIT
// The update of all maps, from its page to the end and back, against a real server.
#include "host/shared/datasetswap.h"
#include "host/shared/preparedset.h"
#include "host/shared/updatestate.h"
#include "host/shared/words.h"
#include "uirig.h"

class UiUpdateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void allMapsAreUpdatedGoneBackFromAndUpdatedAgain();
    void theBackupIsKeptAndRemovedLater();
    void anUpdateThatWasStoppedGoesOnWhereItEnded();
    void anUpdateOfAnEarlierRunIsShownAndKeepsTheEngineResting();
    void anUpdateThatEndedWithItsProgramIsTold();
    void anUpdateIsGivenUp();
    void nothingElseIsInstalledMeanwhile();
    void anUpdateIsHeldWithoutANetworkAndGoesOnByItself();
    void regionsThatTheNewVersionLacksAreNamedAndLeftOut();
    void whatGoingBackWouldLoseIsNamed();
    void transfersStandAgainstAnUpdate();
};

namespace {

constexpr int TileSize = 400000; // bytes, of noise: it cannot be compressed
constexpr int SlowRate = 50000; // bytes a second: it cannot be there before it is stopped
constexpr int EnoughBytes = 60000;

struct UpdateRig : UiRig
{
    const QString fi = QStringLiteral("FI");
    const QString se = QStringLiteral("SE");
    const QString jp = QStringLiteral("JP");

    UpdateRig()
        : next(server.folder() + QLatin1String("/map5"))
    {
        content.addRegion(fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt", "5/5/border.cdt"}));
        content.addRegion(se, QStringLiteral("Sweden"), tilesOf({"0/2/b.cdt", "5/5/border.cdt"}));
        content.addRegion(jp, QStringLiteral("Japan"), tilesOf({"1/1/jp.cdt"}));
        addNext(fi, "Finland", "0/1/a.cdt");
        addNext(se, "Sweden", "0/2/b.cdt");
    }

    void addNext(const QString &id, const char *name, const char *tile)
    {
        const Tiles tiles {
            {QLatin1String(tile), TestContent::tile(id + QLatin1Char('2'), TileSize)}};
        next.addRegion(id, QLatin1String(name), tiles + tilesOf({"5/5/border.cdt"}, "2"),
                       QStringLiteral("2/%1.zip").arg(id));
    }

    /** A device with version 1 of these, opened, beside a server with version 2. */
    bool openWith(const QStringList &ids)
    {
        if (!openWithCatalog())
            return false;
        for (const QString &id : ids)
            installer().install(id);
        if (!QTest::qWaitFor([this] { return !installer().busy(); }, Long))
            return false;
        next.publish(QStringLiteral("2.0"));
        return true;
    }

    /** From the app's first page to the page of the update, as a user comes there. */
    bool goToUpdate()
    {
        return press("Look for new maps") && waitFor("The server has newer maps: version 2.0.")
            && press("Update all maps") && waitFor("There are newer maps");
    }

    void restartServer(int rate)
    {
        server.stop();
        server.setRateLimit(rate);
        server.start();
    }

    void close()
    {
        const QList<QObject *> windows = engine.rootObjects();
        qDeleteAll(windows);
        session.reset();
    }

    bool openAgain()
    {
        auto source = std::make_unique<TestNetwork>();
        network = source.get();
        network->set(true, true);
        session = std::make_unique<MapsSession>(server.url("/map5/"), std::move(source));
        session->open();
        if (!QTest::qWaitFor([this] { return session->isOpen(); }, Long))
            return false;
        UiEngine::prepareEngine(&secondEngine, session.get());
        if (!UiEngine::loadWindow(&secondEngine))
            return false;
        window = qobject_cast<QQuickWindow *>(secondEngine.rootObjects().first());
        window->resize(360, 640);
        return true;
    }

    Tiles oldTiles() const { return content.tiles(fi) + content.tiles(se); }
    Tiles newTiles() const { return next.tiles(fi) + next.tiles(se); }
    static QString differs(const Tiles &tiles)
    {
        return differenceOf(DataRoot::tileCacheFolder(), tiles);
    }
    QString version() const { return session->catalog()->installedMapsVersion(); }
    bool waitForRest()
    {
        return QTest::qWaitFor([this] { return !session->update()->running() && session->ready(); },
                               Long);
    }
    int answers(const char *part) const
    {
        int count = 0;
        const QList<NginxServer::Entry> log = server.accessLog();
        for (const NginxServer::Entry &entry : log)
            count += entry.path.contains(part) ? 1 : 0;
        return count;
    }

    TestContent next;
    QQmlApplicationEngine secondEngine;
};

} // namespace

void UiUpdateTest::allMapsAreUpdatedGoneBackFromAndUpdatedAgain()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));

    QVERIFY(rig.waitFor("All maps are updated"));
    QVERIFY(rig.shows(QStringLiteral("Version 2.0 has taken the place of version 1.0.")));
    QVERIFY(rig.waitForRest());
    QCOMPARE(rig.differs(rig.newTiles()), QString());
    QCOMPARE(rig.version(), QStringLiteral("2.0"));
    QCOMPARE(rig.session->newerVersion(), QString());
    QVERIFY(rig.session->catalog()->region(rig.fi)->installed());
    QVERIFY(rig.press("Keep old maps"));

    QVERIFY(rig.press("Go back to version 1.0"));
    QVERIFY(rig.press("Go back"));
    QVERIFY(rig.waitFor("Newer maps are ready"));
    QVERIFY(rig.waitForRest());
    QCOMPARE(rig.differs(rig.oldTiles()), QString());
    QCOMPARE(rig.version(), QStringLiteral("1.0"));
    QCOMPARE(rig.session->update()->backupVersion(), QString());

    const int before = rig.answers("/2/");
    QVERIFY(rig.press("Use version 2.0"));
    QVERIFY(rig.waitFor("All maps are updated"));
    QVERIFY(rig.waitForRest());
    QCOMPARE(rig.differs(rig.newTiles()), QString());
    QCOMPARE(rig.answers("/2/"), before);
}

void UiUpdateTest::theBackupIsKeptAndRemovedLater()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));
    QVERIFY(rig.waitFor("All maps are updated"));
    QVERIFY(rig.waitForRest());
    QVERIFY(rig.press("Keep old maps"));
    QVERIFY(DataSetSwap::backupExists());
    QVERIFY(rig.waitFor("No newer maps are known"));

    rig.window->resize(800, 1800); // all settings at once
    QVERIFY(rig.press("Settings"));
    QVERIFY(rig.named(QStringLiteral("Kept version: 1.0")));
    QTRY_VERIFY(rig.session->update()->backupSize() >= 0);
    const QString size = Words().size(qlonglong(DataSetSwap::backupBytes()));
    QVERIFY(rig.waitFor(qPrintable(size)));
    QVERIFY(rig.press("Remove the backup"));
    QVERIFY(rig.waitFor("Remove the old maps?"));
    QVERIFY(rig.shows(QStringLiteral("This frees %1.").arg(size)));
    const MapsUpdate *const update = rig.session->update();
    QList<bool> removing;
    QObject::connect(update, &MapsUpdate::changed, rig.window,
                     [&] { removing.append(update->removing()); });
    QVERIFY(rig.press("Remove"));

    QTRY_VERIFY(!DataSetSwap::backupExists());
    QTRY_VERIFY(removing.contains(false)); // at its end, which the event loop has awaited
    QVERIFY(removing.first());
    QVERIFY(!update->removing());
    QTRY_VERIFY(!rig.named(QStringLiteral("Remove the backup")));
    QCOMPARE(rig.differs(rig.newTiles()), QString());
}

void UiUpdateTest::anUpdateThatWasStoppedGoesOnWhereItEnded()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    rig.restartServer(SlowRate);
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));
    QVERIFY(rig.waitFor("Preparing Finland in 001"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->update()->bytesReceived() > EnoughBytes, UiRig::Long);

    QVERIFY(rig.press("Stop"));
    QVERIFY(rig.waitFor("An update is not finished"));
    QVERIFY(!rig.session->update()->running());
    QVERIFY(!rig.session->ready());
    QCOMPARE(rig.differs(rig.oldTiles()), QString());

    QVERIFY(rig.waitForHangUp("/map5/archives/2/FI.zip"));
    rig.restartServer(0);
    QVERIFY(rig.press("Go on"));
    QVERIFY(rig.waitFor("All maps are updated"));
    QVERIFY(rig.waitForRest());
    QCOMPARE(rig.differs(rig.newTiles()), QString());
    const QList<NginxServer::Entry> log = rig.server.accessLog();
    QVERIFY(std::any_of(log.begin(), log.end(), [](const NginxServer::Entry &entry) {
        return entry.path == "/map5/archives/2/FI.zip" && entry.status == 206;
    }));
}

void UiUpdateTest::anUpdateOfAnEarlierRunIsShownAndKeepsTheEngineResting()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    rig.restartServer(SlowRate);
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));
    QVERIFY(rig.waitFor("Preparing Finland in 001"));
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->update()->bytesReceived() > EnoughBytes, UiRig::Long);
    rig.close();
    rig.restartServer(0);
    QVERIFY(rig.openAgain());

    QVERIFY(rig.waitFor("An update of all maps is not finished."));
    QCOMPARE(rig.session->update()->targetVersion(), QStringLiteral("2.0"));
    QVERIFY(!rig.session->ready());
    QVERIFY(rig.press("Show the update"));
    QVERIFY(rig.press("Go on"));
    QVERIFY(rig.waitFor("All maps are updated"));
    QVERIFY(rig.waitForRest());
    QCOMPARE(rig.differs(rig.newTiles()), QString());
}

void UiUpdateTest::anUpdateThatEndedWithItsProgramIsTold()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));
    QVERIFY(rig.waitFor("All maps are updated"));
    QVERIFY(rig.waitForRest());
    rig.close();
    UpdateState state; // as it is right behind the exchange
    state.phase = UpdateState::Phase::Swapping;
    state.fromVersion = QStringLiteral("1.0");
    state.version = QStringLiteral("2.0");
    QVERIFY(state.write());
    QVERIFY(rig.openAgain());

    QCOMPARE(rig.session->update()->state(), QStringLiteral("done"));
    QCOMPARE(rig.session->update()->backupVersion(), QStringLiteral("1.0"));
    QVERIFY(rig.waitForRest());
    QVERIFY(UpdateState::read().phase == UpdateState::Phase::None);
    QCOMPARE(rig.differs(rig.newTiles()), QString());
}

void UiUpdateTest::anUpdateIsGivenUp()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    rig.restartServer(SlowRate);
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));
    QVERIFY(rig.waitFor("Preparing Finland in 001"));

    QVERIFY(rig.press("Give up"));
    QVERIFY(rig.waitFor("Give the update up?"));
    rig.key(Qt::Key_Return); // the dialog's own button of that name

    QVERIFY(rig.waitFor("There are newer maps"));
    QVERIFY(rig.waitForRest());
    QVERIFY(!PreparedSet::exists());
    QCOMPARE(rig.session->update()->blockade(), QString());
    QCOMPARE(rig.differs(rig.oldTiles()), QString());
    rig.restartServer(0);
    rig.content.publish(QStringLiteral("1.0"));
    QVERIFY(rig.installer().install(rig.jp));
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->catalog()->region(rig.jp)->installed(), UiRig::Long);
}

void UiUpdateTest::nothingElseIsInstalledMeanwhile()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    rig.restartServer(SlowRate);
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));
    QVERIFY(rig.waitFor("Preparing Finland in 001"));

    QVERIFY(rig.press("Maps"));
    QVERIFY(rig.waitFor("All maps are being updated."));
    QVERIFY(rig.waitFor("Japan in 001"));
    QVERIFY(!rig.named(QStringLiteral("Install Japan in 001"))->isEnabled());
    QVERIFY(rig.press("Installed"));
    QVERIFY(rig.waitFor("Finland in 001"));
    QVERIFY(!rig.named(QStringLiteral("Remove Finland in 001"))->isEnabled());
    rig.key(Qt::Key_F5);
    QVERIFY(rig.waitFor("No other map can be installed"));
    QVERIFY(!rig.session->refreshing());
    QCOMPARE(rig.installer().pending(), QStringList());
    rig.session->update()->giveUp();
    QVERIFY(rig.waitForRest());
    QTRY_VERIFY(rig.named(QStringLiteral("Remove Finland in 001"))->isEnabled());
}

void UiUpdateTest::anUpdateIsHeldWithoutANetworkAndGoesOnByItself()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    rig.restartServer(SlowRate);
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));
    QVERIFY(rig.waitFor("Preparing Finland in 001"));

    rig.network->set(true, false);
    QVERIFY(rig.waitFor("The update waits"));
    QVERIFY(rig.session->update()->running());
    rig.restartServer(0);
    QVERIFY(rig.press("Use the mobile network"));

    QVERIFY(rig.waitFor("All maps are updated"));
    QVERIFY(rig.waitForRest());
    QCOMPARE(rig.differs(rig.newTiles()), QString());
}

void UiUpdateTest::regionsThatTheNewVersionLacksAreNamedAndLeftOut()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se, rig.jp}));
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));

    QVERIFY(rig.waitFor("does not have these installed maps any more"));
    QVERIFY(rig.shows(QStringLiteral("Japan in 001")));
    QCOMPARE(rig.differs(rig.oldTiles() + rig.content.tiles(rig.jp)), QString());
    QVERIFY(rig.press("Go on without them"));

    QVERIFY(rig.waitFor("All maps are updated"));
    QVERIFY(rig.waitForRest());
    QCOMPARE(rig.differs(rig.newTiles()), QString());
}

void UiUpdateTest::whatGoingBackWouldLoseIsNamed()
{
    UpdateRig rig;
    rig.addNext(QStringLiteral("NO"), "Norway", "b/b/no.cdt");
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    QVERIFY(rig.goToUpdate());
    QVERIFY(rig.press("Update all maps"));
    QVERIFY(rig.waitFor("All maps are updated"));
    QVERIFY(rig.waitForRest());
    QVERIFY(rig.press("Keep old maps"));
    QVERIFY(rig.installer().install(QStringLiteral("NO")));
    QTRY_VERIFY_WITH_TIMEOUT(!rig.installer().busy(), UiRig::Long);

    rig.session->update()->look();
    QVERIFY(rig.press("Go back to version 1.0"));
    QVERIFY(rig.waitFor("not among the old ones: Norway in 001."));
    QVERIFY(rig.press("Cancel"));

    QCOMPARE(rig.version(), QStringLiteral("2.0"));
    QCOMPARE(rig.differs(rig.newTiles() + rig.next.tiles(QStringLiteral("NO"))), QString());
}

void UiUpdateTest::transfersStandAgainstAnUpdate()
{
    UpdateRig rig;
    QVERIFY(rig.openWith({rig.fi, rig.se}));
    QVERIFY(rig.goToUpdate());
    rig.network->set(false, false);
    QVERIFY(rig.waitFor("There is no network connection."));
    QVERIFY(!rig.named(QStringLiteral("Update all maps"))->isEnabled());
    QVERIFY(rig.installer().install(rig.jp));

    QVERIFY(rig.waitFor("Let the transfers end, or cancel them"));
    rig.session->update()->start();

    QVERIFY(!rig.session->update()->running());
    QVERIFY(rig.session->ready());
    rig.installer().cancelAll();
    rig.network->set(true, true);
    QTRY_VERIFY(rig.named(QStringLiteral("Update all maps"))->isEnabled());
}

UI_TEST_MAIN(UiUpdateTest)
#include "tst_uiupdate.moc"
