// SPDX-License-Identifier: MIT
// What the platform and the user say about the network, with a real message bus.
#include "fakenetworkmanager.h"
#include "host/shared/networkmanagersource.h"
#include "host/shared/networkstate.h"
#include "testutils/temporaryhome.h"
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSettings>
#include <QSignalSpy>
#include <QtTest>

using Fake = FakeNetworkManager;

namespace {

const QString Platform = QStringLiteral("platform");
const QString Manual = QStringLiteral("manual");
const QString None = QStringLiteral("none");
const QString Wireless = QStringLiteral("802-11-wireless");

} // namespace

Q_DECLARE_METATYPE(Fake::Network)

class NetworkStateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void isOfflineUntilThePlatformHasAnswered();
    void readsThePlatform_data();
    void readsThePlatform();
    void followsEveryChange();
    void asksAnewWhenOnlyToldThatSomethingChanged();
    void aChangeThatDoesNotMatterIsNotTold();
    void changesOfOtherInterfacesAreIgnored();
    void isOfflineWhileTheServiceIsGone();
    void takesUpAServiceThatComesLater();
    void aServiceThatCannotAnswerCountsAsAbsent();
    void asksAgainWhenAServiceThatCouldNotAnswerTellsSomething();
    void isOfflineWhenTheBusIsLost();
    void withoutABusTheUserDecides();
    void withoutABusNothingIsTakenForWifiAtFirst();
    void theManualSwitchOverrulesThePlatform();
    void theUsersChoicesSurviveARestart();
    void aChoiceIsToldOnce();
    void worksFromQml();

private:
    NetworkState &start(const QString &address);
    NetworkState &start() { return start(bus->address()); }

    std::unique_ptr<TemporaryHome> home;
    std::unique_ptr<PrivateBus> bus;
    std::unique_ptr<Fake> manager;
    std::unique_ptr<NetworkState> state;
};

void NetworkStateTest::init()
{
    home = std::make_unique<TemporaryHome>();
    bus = std::make_unique<PrivateBus>();
    manager = std::make_unique<Fake>(*bus);
}

void NetworkStateTest::cleanup()
{
    state.reset();
    manager.reset();
    bus.reset();
    home.reset();
}

NetworkState &NetworkStateTest::start(const QString &address)
{
    state = std::make_unique<NetworkState>(std::make_unique<NetworkManagerSource>(address));
    return *state;
}

void NetworkStateTest::isOfflineUntilThePlatformHasAnswered()
{
    manager->appear();

    start(); // The answer cannot be taken before the event loop runs.

    QCOMPARE(state->source(), None);
    QVERIFY(!state->available());
    QVERIFY(!state->online());
    QVERIFY(!state->wifi());
    QTRY_COMPARE(state->source(), Platform);
}

void NetworkStateTest::readsThePlatform_data()
{
    QTest::addColumn<Fake::Network>("network");
    QTest::addColumn<bool>("online");
    QTest::addColumn<bool>("wifi");
    using N = Fake::Network;
    const auto ofType = [](const char *type, uint metered) {
        return N {Fake::Global, Fake::Full, QLatin1String(type), metered};
    };

    QTest::newRow("Wi-Fi") << Fake::wifi() << true << true;
    QTest::newRow("Wi-Fi of which nothing is known")
        << ofType("802-11-wireless", 0) << true << true;
    QTest::newRow("Wi-Fi that the user calls metered")
        << ofType("802-11-wireless", Fake::Yes) << true << false;
    QTest::newRow("Wi-Fi of a phone") << ofType("802-11-wireless", Fake::GuessYes) << true << false;
    QTest::newRow("a cable") << ofType("802-3-ethernet", Fake::GuessNo) << true << true;
    QTest::newRow("a phone on a cable")
        << ofType("802-3-ethernet", Fake::GuessYes) << true << false;
    QTest::newRow("a bridge of cables") << ofType("bridge", 0) << true << true;
    QTest::newRow("the mobile network") << Fake::mobile() << true << false;
    QTest::newRow("a mobile network said to cost nothing")
        << ofType("gsm", Fake::No) << true << false;
    QTest::newRow("a phone behind Bluetooth") << ofType("bluetooth", Fake::No) << true << false;
    QTest::newRow("a tunnel of which nothing is known")
        << ofType("wireguard", Fake::MeteredUnknown) << true << false;
    QTest::newRow("a tunnel that costs nothing") << ofType("wireguard", Fake::No) << true << true;
    QTest::newRow("no type and no guess") << ofType("", Fake::MeteredUnknown) << true << false;
    QTest::newRow("disconnected") << Fake::nothing() << false << false;
    QTest::newRow("networking switched off")
        << N {Fake::Asleep, Fake::Unknown, QString(), Fake::MeteredUnknown} << false << false;
    QTest::newRow("on its way to Wi-Fi") << N {40, Fake::None, Wireless, 4} << false << false;
    QTest::newRow("this net only, without a way out")
        << N {Fake::ConnectedLocal, Fake::None, Wireless, Fake::GuessNo} << false << false;
    QTest::newRow("a way out, nothing tested")
        << N {Fake::Site, Fake::Unknown, Wireless, Fake::GuessNo} << true << true;
    QTest::newRow("a way out that the test does not pass")
        << N {Fake::Site, Fake::Limited, Wireless, Fake::GuessNo} << true << true;
    QTest::newRow("a login page") << N {Fake::Site, Fake::Portal, Wireless, Fake::GuessNo} << false
                                  << false;
}

void NetworkStateTest::readsThePlatform()
{
    QFETCH(Fake::Network, network);
    QFETCH(bool, online);
    QFETCH(bool, wifi);
    manager->set(network);
    manager->appear();

    start();

    QTRY_COMPARE(state->source(), Platform);
    QVERIFY(state->available());
    QCOMPARE(state->online(), online);
    QCOMPARE(state->wifi(), wifi);
    QCOMPARE(state->metered(), online && !wifi);
}

void NetworkStateTest::followsEveryChange()
{
    manager->appear();
    start();
    QTRY_VERIFY(state->wifi());
    QSignalSpy changed(state.get(), &NetworkState::changed);

    manager->set(Fake::mobile());
    QTRY_COMPARE(changed.count(), 1);
    QVERIFY(state->metered());

    manager->set(Fake::nothing());
    QTRY_COMPARE(changed.count(), 2);
    QVERIFY(!state->online());

    manager->set(Fake::wifi());
    QTRY_COMPARE(changed.count(), 3);
    QVERIFY(state->wifi());
}

void NetworkStateTest::asksAnewWhenOnlyToldThatSomethingChanged()
{
    manager->appear();
    start();
    QTRY_VERIFY(state->wifi());

    manager->setAndInvalidate(Fake::mobile());

    QTRY_VERIFY(state->metered());
}

void NetworkStateTest::aChangeThatDoesNotMatterIsNotTold()
{
    manager->appear();
    start();
    QTRY_VERIFY(state->wifi());
    QSignalSpy changed(state.get(), &NetworkState::changed);

    manager->setVersion(QStringLiteral("2"));
    manager->set({Fake::Site, Fake::Limited, Wireless, Fake::No}); // as good as before
    manager->set(Fake::nothing());

    QTRY_VERIFY(!state->online());
    QCOMPARE(changed.count(), 1);
}

void NetworkStateTest::changesOfOtherInterfacesAreIgnored()
{
    manager->appear();
    start();
    QTRY_VERIFY(state->wifi());

    manager->setOfOtherInterface(Fake::nothing());
    manager->setVersion(QStringLiteral("2"));
    QSignalSpy changed(state.get(), &NetworkState::changed);
    manager->set(Fake::mobile()); // comes behind those

    QTRY_COMPARE(changed.count(), 1);
    QVERIFY(state->metered());
}

void NetworkStateTest::isOfflineWhileTheServiceIsGone()
{
    manager->appear();
    start();
    QTRY_VERIFY(state->wifi());

    manager->vanish();

    QTRY_COMPARE(state->source(), None);
    QVERIFY(!state->available());
    QVERIFY(!state->online());
    QVERIFY(!state->wifi());

    manager->set(Fake::mobile());
    manager->appear();
    QTRY_COMPARE(state->source(), Platform);
    QVERIFY(state->metered());
    manager->set(Fake::wifi()); // The watch outlives the absence.
    QTRY_VERIFY(state->wifi());
}

void NetworkStateTest::takesUpAServiceThatComesLater()
{
    start();
    QTRY_COMPARE(state->source(), Manual);

    manager->appear();

    QTRY_COMPARE(state->source(), Platform);
    QVERIFY(state->wifi());
}

void NetworkStateTest::aServiceThatCannotAnswerCountsAsAbsent()
{
    manager->appear(false);

    start();

    QTRY_COMPARE(state->source(), Manual);
    QVERIFY(!state->available());
}

void NetworkStateTest::asksAgainWhenAServiceThatCouldNotAnswerTellsSomething()
{
    manager->appear(false);
    start();
    QTRY_COMPARE(state->source(), Manual);

    manager->appear(true);
    manager->setVersion(QStringLiteral("2"));

    QTRY_COMPARE(state->source(), Platform);
    QVERIFY(state->wifi());
}

void NetworkStateTest::isOfflineWhenTheBusIsLost()
{
    manager->appear();
    start();
    QTRY_VERIFY(state->wifi());

    bus->stop();

    QTRY_COMPARE(state->source(), None);
    QVERIFY(!state->online());
}

void NetworkStateTest::withoutABusTheUserDecides()
{
    start(QLatin1String("unix:path=") + home->path() + QLatin1String("/nobody"));
    QCOMPARE(state->source(), Manual);
    QVERIFY(!state->available());

    state->setManualWifi(true);
    QVERIFY(state->online());
    QVERIFY(state->wifi());

    state->setManualOnline(false);
    QVERIFY(!state->online());
    QVERIFY(!state->wifi());
}

void NetworkStateTest::withoutABusNothingIsTakenForWifiAtFirst()
{
    start(QLatin1String("unix:path=") + home->path() + QLatin1String("/nobody"));

    QVERIFY(state->online());
    QVERIFY(!state->wifi());
    QVERIFY(state->metered());
    QVERIFY(!state->mobileAllowed());
}

void NetworkStateTest::theManualSwitchOverrulesThePlatform()
{
    manager->set(Fake::nothing());
    manager->appear();
    start();
    QTRY_COMPARE(state->source(), Platform);
    QVERIFY(!state->manual());

    state->setManual(true);
    state->setManualWifi(true);

    QCOMPARE(state->source(), Manual);
    QVERIFY(state->available()); // It tells, but is not listened to.
    QVERIFY(state->wifi());
    state->setManual(false);
    QCOMPARE(state->source(), Platform);
    QVERIFY(!state->online());
}

void NetworkStateTest::theUsersChoicesSurviveARestart()
{
    start();
    state->setManual(true);
    state->setManualOnline(false);
    state->setManualWifi(true);
    state->setMobileAllowed(true);

    start();

    QVERIFY(state->manual());
    QVERIFY(!state->manualOnline());
    QVERIFY(state->manualWifi());
    QVERIFY(state->mobileAllowed());
    const QSettings settings(QStringLiteral("vexa"), QStringLiteral("maps"));
    QCOMPARE(settings.value(QStringLiteral("network/manual")).toBool(), true);
    QVERIFY(!settings.value(QStringLiteral("network/manualOnline"), true).toBool());
    QVERIFY(settings.value(QStringLiteral("network/manualWifi")).toBool());
    QVERIFY(settings.value(QStringLiteral("network/mobileAllowed")).toBool());
}

void NetworkStateTest::aChoiceIsToldOnce()
{
    start();
    QTRY_COMPARE(state->source(), Manual);
    QSignalSpy changed(state.get(), &NetworkState::changed);

    state->setMobileAllowed(true);
    state->setMobileAllowed(true);

    QCOMPARE(changed.count(), 1);
}

void NetworkStateTest::worksFromQml()
{
    manager->appear();
    start();
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("network"), state.get());
    QQmlComponent component(&engine);
    component.setData(R"(
        import QtQml 2.0
        QtObject {
            property string text: network.source + " " + network.available + " " + network.online
                + " " + network.wifi + " " + network.metered + " " + network.manual
                + " " + network.manualOnline + " " + network.manualWifi
                + " " + network.mobileAllowed
            function byHand() { network.manual = true; network.manualOnline = true
                                network.manualWifi = false; network.mobileAllowed = true }
        })",
                      QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    const auto text = [&object] { return object->property("text").toString(); };

    QTRY_COMPARE(text(), QStringLiteral("platform true true true false false true false false"));
    QVERIFY(QMetaObject::invokeMethod(object.get(), "byHand"));
    QCOMPARE(text(), QStringLiteral("manual true true false true true true false true"));
}

QTEST_GUILESS_MAIN(NetworkStateTest)
#include "tst_networkstate.moc"
