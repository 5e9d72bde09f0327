// SPDX-License-Identifier: MIT
// The update as a program and its QML use it.
#include "host/shared/datasetswap.h"
#include "host/shared/datasetupdate.h"
#include "host/shared/mapsversion.h"
#include "host/shared/preparedset.h"
#include "host/shared/updatespace.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QtTest>

using State = DataSetUpdate::State;

class DataSetUpdateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void goesThroughItsStatesAndTellsHowFarItIs();
    void waitsForTheWordToSwap();
    void aReadySetFollowsTheMapsInUse();
    void stopsAndGoesOn();
    void stopsWhileNothingHasBeenDoneYet();
    void cancelGivesUpWhatIsUnderWay();
    void mayBeDestroyedWhileItRuns();
    void isStartedOnlyOnce();
    void qmlFollowsIt();
    void goesBack();
    void doesNotGoBackWhileItRuns();
    void aVersionWithoutEndIsNone();
    void aHalfSeededSetIsBegunAnew();
    void aPreparedRegionThatLostATileIsFetchedAgain();
    void leftoversOfKilledWritesDoNotComeAlong();
    void theStateSurvivesAndADamagedOneIsNone();
    void versionsAreSpelledAsTheContentFileDoes();
    void reckonsWhatTheNewMapsTake();
    void whatIsThereIsPartOfTheNeed();

private:
    bool installOnDevice(const QStringList &ids);
    void publishNext();
    State run(DataSetUpdate &update);
    QString prepared(const char *path) const
    {
        return DataRoot::tileCacheFolder(UpdateSuffix) + QLatin1Char('/') + QLatin1String(path);
    }
    int answers(const char *part) const;

    const QString fi = QStringLiteral("FI");
    const QString se = QStringLiteral("SE");
    std::unique_ptr<InstallerRig> rig;
    std::unique_ptr<TestContent> next;
    std::unique_ptr<MapCatalog> main;
};

void DataSetUpdateTest::init()
{
    rig = std::make_unique<InstallerRig>();
    rig->content.addRegion(fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt", "5/5/border.cdt"}));
    rig->content.addRegion(se, QStringLiteral("Sweden"), tilesOf({"0/2/b.cdt", "5/5/border.cdt"}));
    next = std::make_unique<TestContent>(rig->server.folder() + QLatin1String("/map5"));
    next->addRegion(fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt", "5/5/border.cdt"}, "2"),
                    QStringLiteral("2/FI.zip"));
    next->addRegion(se, QStringLiteral("Sweden"), tilesOf({"0/2/b.cdt", "5/5/border.cdt"}, "2"),
                    QStringLiteral("2/SE.zip"));
}

void DataSetUpdateTest::cleanup()
{
    main.reset();
    next.reset();
    rig.reset();
}

bool DataSetUpdateTest::installOnDevice(const QStringList &ids)
{
    rig->openSession();
    for (const QString &id : ids)
        rig->installer().install(id);
    const bool done = QTest::qWaitFor([this] { return !rig->installer().busy(); }, 30000);
    rig->closeSession();
    main = std::make_unique<MapCatalog>();
    main->updateCatalog();
    return done && InstallerRig::recordedIds() == ids;
}

void DataSetUpdateTest::publishNext()
{
    next->publish(QStringLiteral("2.0"));
}

State DataSetUpdateTest::run(DataSetUpdate &update)
{
    QSignalSpy finished(&update, &DataSetUpdate::finished);
    update.start();
    if (finished.isEmpty())
        finished.wait(60000);
    return finished.count() == 1 ? update.state() : State::Idle;
}

int DataSetUpdateTest::answers(const char *part) const
{
    int count = 0;
    const QList<NginxServer::Entry> log = rig->server.accessLog();
    for (const NginxServer::Entry &entry : log)
        count += entry.path.contains(part) ? 1 : 0;
    return count;
}

void DataSetUpdateTest::goesThroughItsStatesAndTellsHowFarItIs()
{
    QVERIFY(installOnDevice({fi, se}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    QStringList states;
    connect(&update, &DataSetUpdate::stateChanged, this,
            [&] { states.append(update.stateName()); });
    double fraction = -1;
    bool wentBack = false;
    QStringList regions;
    connect(&update, &DataSetUpdate::progressChanged, this, [&] {
        wentBack = wentBack || update.fraction() < fraction;
        fraction = update.fraction();
        if (!update.region().isEmpty() && !regions.contains(update.region()))
            regions.append(update.region());
    });
    QCOMPARE(update.stateName(), QStringLiteral("idle"));

    QCOMPARE(run(update), State::Done);

    states.removeDuplicates();
    QCOMPARE(states,
             QStringList({QStringLiteral("checking"), QStringLiteral("fetching"),
                          QStringLiteral("installing"), QStringLiteral("ready"),
                          QStringLiteral("swapping"), QStringLiteral("done")}));
    QVERIFY(!wentBack);
    QCOMPARE(fraction, 1.0);
    QCOMPARE(regions, QStringList({fi, se}));
    QCOMPARE(update.regions(), QStringList({fi, se}));
    QCOMPARE(update.regionName(fi), QStringLiteral("Finland in 001"));
    QCOMPARE(update.fromVersion(), QStringLiteral("1.0"));
    QCOMPARE(update.targetVersion(), QStringLiteral("2.0"));
    QVERIFY(!update.isRunning());
    // The catalogue that was given works on the new maps.
    QCOMPARE(main->installedMapsVersion(), QStringLiteral("2.0"));
    QVERIFY(main->region(fi)->installed());
    QCOMPARE(differenceOf(DataRoot::tileCacheFolder(), next->tiles(fi) + next->tiles(se)),
             QString());
}

void DataSetUpdateTest::waitsForTheWordToSwap()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    update.setSwapWhenReady(false);

    QCOMPARE(run(update), State::Ready);

    QVERIFY(!update.isRunning());
    QCOMPARE(update.fraction(), 1.0);
    QCOMPARE(rig->tileDifference(rig->content.tiles(fi)), QString());
    QVERIFY(!UpdateState::read().isUnfinished());
    QSignalSpy finished(&update, &DataSetUpdate::finished);
    rig->server.stop();
    update.swap();
    QVERIFY(finished.wait(30000));
    QCOMPARE(update.state(), State::Done);
    QCOMPARE(rig->tileDifference(next->tiles(fi)), QString());
    update.swap(); // once more does nothing
    QVERIFY(!update.isRunning());
}

void DataSetUpdateTest::aReadySetFollowsTheMapsInUse()
{
    QVERIFY(installOnDevice({fi, se}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    update.setSwapWhenReady(false);
    QCOMPARE(run(update), State::Ready);
    main->deleteInstalledRegion(fi);
    QSignalSpy finished(&update, &DataSetUpdate::finished);

    update.swap();

    QVERIFY(finished.wait(30000));
    QCOMPARE(update.state(), State::Done);
    QCOMPARE(InstallerRig::recordedIds(), QStringList {se});
    QCOMPARE(rig->tileDifference(next->tiles(se)), QString());
}

void DataSetUpdateTest::stopsAndGoesOn()
{
    QVERIFY(installOnDevice({fi, se}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    QSignalSpy finished(&update, &DataSetUpdate::finished);
    const auto stopAtSweden = connect(&update, &DataSetUpdate::progressChanged, this, [&] {
        if (update.region() == se)
            update.stop();
    });
    update.start();
    QVERIFY(finished.wait(30000));
    QCOMPARE(update.state(), State::Stopped);
    QCOMPARE(rig->tileDifference(rig->content.tiles(fi) + rig->content.tiles(se)), QString());
    QVERIFY(UpdateState::read().isUnfinished());
    const int finlands = answers("/2/FI.zip");
    disconnect(stopAtSweden);

    QCOMPARE(run(update), State::Done);

    QCOMPARE(answers("/2/FI.zip"), finlands);
    QCOMPARE(rig->tileDifference(next->tiles(fi) + next->tiles(se)), QString());
}

void DataSetUpdateTest::stopsWhileNothingHasBeenDoneYet()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    QSignalSpy finished(&update, &DataSetUpdate::finished);

    update.start();
    update.stop();
    update.stop();

    QVERIFY(finished.wait(30000));
    QCOMPARE(update.state(), State::Stopped);
    QVERIFY(!PreparedSet::exists());
    QVERIFY(!finished.wait(50));
}

void DataSetUpdateTest::cancelGivesUpWhatIsUnderWay()
{
    QVERIFY(installOnDevice({fi, se}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    QSignalSpy finished(&update, &DataSetUpdate::finished);
    connect(&update, &DataSetUpdate::progressChanged, this, [&] {
        if (update.region() == se)
            update.cancel();
    });

    update.start();

    QVERIFY(finished.wait(30000));
    QCOMPARE(update.state(), State::Cancelled);
    QVERIFY(!PreparedSet::exists());
    QVERIFY(UpdateState::read().phase == UpdateState::Phase::None);
    QVERIFY(!QFile::exists(InstallJournal::defaultPath(UpdateSuffix)));
    QCOMPARE(rig->tileDifference(rig->content.tiles(fi) + rig->content.tiles(se)), QString());
}

void DataSetUpdateTest::mayBeDestroyedWhileItRuns()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    auto update = std::make_unique<DataSetUpdate>(main.get(), rig->server.url("/map5/"));
    update->start();
    QVERIFY(QTest::qWaitFor([&] { return update->state() == State::Installing; }, 30000));

    update.reset();

    QCOMPARE(rig->tileDifference(rig->content.tiles(fi)), QString());
    DataSetUpdate again(main.get(), rig->server.url("/map5/"));
    QCOMPARE(run(again), State::Done);
}

void DataSetUpdateTest::isStartedOnlyOnce()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    QSignalSpy finished(&update, &DataSetUpdate::finished);

    update.start();
    update.start();

    QVERIFY(finished.wait(30000));
    QCOMPARE(update.state(), State::Done);
    QVERIFY(!finished.wait(50));
}

void DataSetUpdateTest::qmlFollowsIt()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("update"), &update);
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.15\n"
                      "QtObject {\n"
                      "    property string text: update.state + ' ' + update.targetVersion\n"
                      "        + ' ' + update.errorString\n"
                      "    property bool working: update.running\n"
                      "    property double most: 0\n"
                      "    property double fraction: update.fraction\n"
                      "    onFractionChanged: most = Math.max(most, fraction)\n"
                      "    Component.onCompleted: { update.dropMissing = true; update.start() }\n"
                      "}\n",
                      QUrl());
    QSignalSpy finished(&update, &DataSetUpdate::finished);

    const std::unique_ptr<QObject> object(component.create());

    QVERIFY2(object != nullptr, qPrintable(component.errorString()));
    QVERIFY(update.dropMissing());
    QVERIFY(object->property("working").toBool());
    QVERIFY(finished.wait(30000));
    QCOMPARE(object->property("text").toString(), QStringLiteral("done 2.0 "));
    QVERIFY(!object->property("working").toBool());
    QCOMPARE(object->property("most").toDouble(), 1.0);
}

void DataSetUpdateTest::goesBack()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    QCOMPARE(run(update), State::Done);
    QVERIFY(update.regionsSinceBackup().isEmpty());

    QVERIFY2(update.undo(), qPrintable(update.errorString()));

    QCOMPARE(main->installedMapsVersion(), QStringLiteral("1.0"));
    QCOMPARE(rig->tileDifference(rig->content.tiles(fi)), QString());
    QVERIFY(!update.undo());
    QVERIFY(!update.errorString().isEmpty());
}

void DataSetUpdateTest::doesNotGoBackWhileItRuns()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    QSignalSpy finished(&update, &DataSetUpdate::finished);
    update.start();

    QVERIFY(!update.undo(true));
    QVERIFY(!update.clearBackup());

    QVERIFY(finished.wait(30000));
    QCOMPARE(update.state(), State::Done);
    QVERIFY(update.clearBackup());
    QVERIFY(!DataSetSwap::backupExists());
}

void DataSetUpdateTest::aVersionWithoutEndIsNone()
{
    QVERIFY(installOnDevice({fi}));
    HttpTestServer server;
    server.add("/version.txt", HttpTestServer::Content::generated(7, 50 * 1000 * 1000));
    DataSetUpdate update(main.get(), server.url("/"));

    QCOMPARE(run(update), State::Failed);

    QVERIFY(update.failure() == FailureKind::Catalogue);
    QVERIFY(!PreparedSet::exists());
}

void DataSetUpdateTest::aHalfSeededSetIsBegunAnew()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    UpdateState state;
    state.phase = UpdateState::Phase::Fetching;
    state.version = QStringLiteral("2.0");
    QVERIFY(state.write());
    TestFile::write(prepared("0/0/stray.cdt"), "left");
    TestFile::write(DataRoot::catalogFolder(UpdateSuffix) + QLatin1String("/content.xml"),
                    "<directory map-version=\"2.0\"><diskcache/><regions/></directory>");
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));

    QCOMPARE(run(update), State::Done);

    QCOMPARE(rig->tileDifference(next->tiles(fi)), QString());
}

void DataSetUpdateTest::aPreparedRegionThatLostATileIsFetchedAgain()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    update.setSwapWhenReady(false);
    QCOMPARE(run(update), State::Ready);
    QVERIFY(QFile::remove(prepared("0/1/a.cdt")));
    update.setSwapWhenReady(true);

    QCOMPARE(run(update), State::Done);

    QCOMPARE(rig->tileDifference(next->tiles(fi)), QString());
}

void DataSetUpdateTest::leftoversOfKilledWritesDoNotComeAlong()
{
    QVERIFY(installOnDevice({fi}));
    publishNext();
    DataSetUpdate update(main.get(), rig->server.url("/map5/"));
    update.setSwapWhenReady(false);
    QCOMPARE(run(update), State::Ready);
    const QString folder = DataRoot::catalogFolder(UpdateSuffix);
    TestFile::write(folder + QLatin1String("/content.xml.a7BcDe"), "half");
    TestFile::write(folder + QLatin1String("/catalog-1.0.xml"), "old");
    update.setSwapWhenReady(true);

    QCOMPARE(run(update), State::Done);

    QCOMPARE(QDir(DataRoot::catalogFolder()).entryList(QDir::Files | QDir::Hidden, QDir::Name),
             QStringList({QStringLiteral("catalog-2.0.xml"), QStringLiteral("content.xml"),
                          QStringLiteral("regionname-lang-001.xml")}));
}

void DataSetUpdateTest::theStateSurvivesAndADamagedOneIsNone()
{
    UpdateState state;
    state.phase = UpdateState::Phase::Installing;
    state.version = QStringLiteral("2.0");
    state.fromVersion = QStringLiteral("1.0");

    QVERIFY(state.write());

    QVERIFY(UpdateState::read().phase == UpdateState::Phase::Installing);
    QCOMPARE(UpdateState::read().version, state.version);
    QCOMPARE(UpdateState::read().fromVersion, state.fromVersion);
    TestFile::write(QDir::homePath() + QLatin1String("/MyDocs/.vexa/update.json"), "{\"phase\":");
    QVERIFY(UpdateState::read().phase == UpdateState::Phase::None);
    QVERIFY(UpdateState::remove());
    QVERIFY(UpdateState::remove()); // it is gone, which is what was wanted
}

void DataSetUpdateTest::versionsAreSpelledAsTheContentFileDoes()
{
    QCOMPARE(MapsVersion::asInstalled(QStringLiteral("3.1.12.5")), QStringLiteral("03.01.12.05"));
    QCOMPARE(MapsVersion::asInstalled(QStringLiteral("2012.w14")), QStringLiteral("2012.w14"));
    QCOMPARE(MapsVersion::parse(" 1.2\n"), QStringLiteral("1.2"));
    QCOMPARE(MapsVersion::parse("../1"), QString());
    QCOMPARE(MapsVersion::parse(QByteArray(5000, '1')), QString());
}

void DataSetUpdateTest::reckonsWhatTheNewMapsTake()
{
    // Tiles that shrink to a tenth in the archive, one of them shared.
    const QByteArray plain(40960, 'x');
    rig->content.setTiles(
        fi, {{QStringLiteral("0/1/a.cdt"), plain}, {QStringLiteral("5/5/border.cdt"), plain}});
    rig->content.setTiles(se, {{QStringLiteral("5/5/border.cdt"), plain}});
    QVERIFY(installOnDevice({fi, se}));
    const qint64 fiArchive = main->region(fi)->downloadSize();
    QVERIFY(fiArchive < 5000);

    // The same catalogue once more: as large as what is there.
    const UpdateSpace::Need need = UpdateSpace::need(main.get(), main.get(), {fi, se}, {fi});

    QVERIFY(qAbs(need.tiles - 2 * 40960) <= 2);
    QVERIFY(qAbs(need.scratch - (fiArchive + 2 * 40960)) <= 2);
    QCOMPARE(UpdateSpace::need(main.get(), main.get(), {fi, se}, {}).scratch, qint64(0));
    QCOMPARE(UpdateSpace::shortage(need), QString());
}

void DataSetUpdateTest::whatIsThereIsPartOfTheNeed()
{
    QVERIFY(installOnDevice({fi}));
    UpdateSpace::Need need;
    need.tiles = std::numeric_limits<qint64>::max() / 8;
    QVERIFY(UpdateSpace::shortage(need).contains(QLatin1String("needs up to")));
    need.tiles = 0;
    need.scratch = std::numeric_limits<qint64>::max() / 8;
    QVERIFY(!UpdateSpace::shortage(need).isEmpty());

    // A file without content on the disk, as large as the need.
    QDir().mkpath(DataRoot::tileCacheFolder(UpdateSuffix));
    QFile sparse(prepared("0.cdt"));
    QVERIFY(sparse.open(QIODevice::WriteOnly) && sparse.resize(qint64(8) << 40));
    need.scratch = 0;
    need.tiles = qint64(8) << 40;

    QCOMPARE(UpdateSpace::shortage(need), QString());
}

QTEST_GUILESS_MAIN(DataSetUpdateTest)
#include "tst_datasetupdate.moc"
