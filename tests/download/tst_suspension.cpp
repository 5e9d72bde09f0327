// SPDX-License-Identifier: MIT
#include "download/downloadmanager.h"
#include "download/requestqueue.h"
#include "download/testengine.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QSignalSpy>
#include <QTest>

namespace {

QString line(const char *text)
{
    return QString::fromLatin1(text);
}

bool savedSuspension()
{
    const VexaSettings::Locker settings;
    settings->sync();
    return settings->value(QStringLiteral("isSuspended"), false).toBool();
}

} // namespace

class SuspensionTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void suspendsWithTheGivenCause_data();
    void suspendsWithTheGivenCause();
    void suspendsForTheUserWithoutAnArgument();
    void doesNothingWhenItIsSuspendedAlready();
    void decidesByTheCausesWhetherToResume_data();
    void decidesByTheCausesWhetherToResume();
    void doesNotResumeWhatIsNotSuspended();
    void keepsOnlyTheUsersSuspensionForTheNextRun();
    void forgetsTheUsersSuspensionWhenItIsLifted();
    void startsSuspendedForTheUserIfThatWasSaved();
    void tellsOfWifiButDoesNotReactToIt();
    void decidesByWhatIsAllowedAndWhatThereIs_data();
    void decidesByWhatIsAllowedAndWhatThereIs();
    void logsThePreviousValueWhenTheMobileNetworkIsAllowed();
    void reevaluatesAtEveryCallOfAllowGoOnline();
    void cancelAlwaysResumes_data();
    void cancelAlwaysResumes();
    void cancelOfAnotherAddressDoesNotResume();

private:
    QStringList linesOf(const std::function<void()> &action);

    std::unique_ptr<TemporaryHome> m_home;
    std::unique_ptr<RequestQueue<Request>> m_queue;
    std::unique_ptr<DownloadManager> m_manager;
};

void SuspensionTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
    m_queue = std::make_unique<RequestQueue<Request>>(nullptr);
    m_manager = std::make_unique<DownloadManager>(m_queue.get(), nullptr);
}

void SuspensionTest::cleanup()
{
    m_manager.reset();
    m_queue.reset();
    m_home.reset();
}

QStringList SuspensionTest::linesOf(const std::function<void()> &action)
{
    const LogCatcher log(L::Trace);
    action();
    return log.texts();
}

void SuspensionTest::suspendsWithTheGivenCause_data()
{
    QTest::addColumn<int>("cause");
    QTest::addColumn<bool>("saved");

    QTest::newRow("none") << 0 << false;
    QTest::newRow("the user") << 1 << true;
    QTest::newRow("the network") << 2 << false;
    QTest::newRow("forced") << 3 << false;
}

void SuspensionTest::suspendsWithTheGivenCause()
{
    QFETCH(int, cause);
    QSignalSpy notified(m_manager.get(), &DownloadManager::notifySuspended);

    const QStringList lines = linesOf([&] { m_manager->suspend(SuspensionCause(cause)); });

    QVERIFY(m_manager->suspended());
    QCOMPARE(lines,
             QStringList({line("[INFO] void DownloadManager::suspend(SuspensionCause)"),
                          line("[INFO] Suspending... Cause: ") + QString::number(cause)}));
    QCOMPARE(notified.count(), 1);
    QCOMPARE(notified.at(0).at(0).toBool(), true);
    QTEST(savedSuspension(), "saved");
}

void SuspensionTest::suspendsForTheUserWithoutAnArgument()
{
    const QStringList lines = linesOf([&] { m_manager->suspend(); });

    QCOMPARE(lines.at(1), line("[INFO] Suspending... Cause: 1"));
    QVERIFY(savedSuspension());
}

void SuspensionTest::doesNothingWhenItIsSuspendedAlready()
{
    m_manager->suspend(NetworkCause);
    QSignalSpy notified(m_manager.get(), &DownloadManager::notifySuspended);

    const QStringList lines = linesOf([&] { m_manager->suspend(UserCause); });

    QCOMPARE(lines, QStringList(line("[INFO] void DownloadManager::suspend(SuspensionCause)")));
    QCOMPARE(notified.count(), 0);
    QVERIFY(!savedSuspension());
    // The cause is still the network: the user cannot lift it, the network can.
    QVERIFY(linesOf([&] {
                m_manager->resume(UserCause);
            }).contains(line("[INFO] Will not resume - 2")));
    QVERIFY(
        linesOf([&] { m_manager->resume(NetworkCause); }).contains(line("[INFO] Will resume - 4")));
}

void SuspensionTest::decidesByTheCausesWhetherToResume_data()
{
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("current");
    QTest::addColumn<bool>("wifi");
    QTest::addColumn<bool>("gprs");
    QTest::addColumn<bool>("resumes");
    QTest::addColumn<QString>("decision");
    const auto row = [](int asked, int current, bool wifi, bool gprs, bool resumes,
                        const char *decision) {
        QTest::addRow("resume(%d) of %d, wifi %d, mobile network %d", asked, current, wifi, gprs)
            << asked << current << wifi << gprs << resumes << QString::fromLatin1(decision);
    };

    for (int current = 0; current <= 3; ++current) {
        row(3, current, false, false, true, "Will resume - forced resume");
        row(0, current, false, false, true, "");
    }
    row(1, 1, false, false, false, "Will not resume - 0");
    row(1, 1, true, false, true, "Will resume - 1");
    row(1, 1, false, true, true, "Will resume - 1");
    row(1, 2, true, true, false, "Will not resume - 2");
    row(2, 1, true, true, false, "Will not resume - 3");
    row(2, 2, false, false, true, "Will resume - 4");
    for (int asked = 1; asked <= 2; ++asked) {
        row(asked, 0, false, false, true, "");
        row(asked, 3, false, false, true, "");
    }
    row(4, 1, false, false, true, "");
}

void SuspensionTest::decidesByTheCausesWhetherToResume()
{
    QFETCH(int, asked);
    QFETCH(int, current);
    QFETCH(bool, wifi);
    QFETCH(bool, gprs);
    QFETCH(bool, resumes);
    QFETCH(QString, decision);
    m_manager->setHasWiFi(wifi);
    m_manager->allowGoOnline(true);
    m_manager->allowGprsConnection(gprs);
    m_manager->resume(ForcedCause);
    m_manager->suspend(SuspensionCause(current));
    QSignalSpy notified(m_manager.get(), &DownloadManager::notifySuspended);

    const QStringList lines = linesOf([&] { m_manager->resume(SuspensionCause(asked)); });

    QStringList expected {line("[INFO] void DownloadManager::resume(SuspensionCause)")};
    if (!decision.isEmpty())
        expected.append(line("[INFO] ") + decision);
    QCOMPARE(lines, expected);
    QCOMPARE(m_manager->suspended(), !resumes);
    QCOMPARE(notified.count(), resumes ? 1 : 0);
    if (resumes)
        QCOMPARE(notified.at(0).at(0).toBool(), false);
    QCOMPARE(savedSuspension(), !resumes && current == UserCause);
}

void SuspensionTest::doesNotResumeWhatIsNotSuspended()
{
    QSignalSpy notified(m_manager.get(), &DownloadManager::notifySuspended);

    const QStringList lines = linesOf([&] { m_manager->resume(ForcedCause); });

    QCOMPARE(lines, QStringList(line("[INFO] void DownloadManager::resume(SuspensionCause)")));
    QCOMPARE(notified.count(), 0);
}

void SuspensionTest::keepsOnlyTheUsersSuspensionForTheNextRun()
{
    m_manager->suspend(NetworkCause);
    m_manager->saveState();
    QVERIFY(!savedSuspension());

    m_manager->resume(NetworkCause);
    m_manager->suspend(UserCause);
    m_manager->saveState();

    QVERIFY(savedSuspension());
}

void SuspensionTest::forgetsTheUsersSuspensionWhenItIsLifted()
{
    m_manager->suspend(UserCause);

    m_manager->resume(ForcedCause);
    m_manager->saveState();

    QVERIFY(!savedSuspension());
}

void SuspensionTest::startsSuspendedForTheUserIfThatWasSaved()
{
    m_manager->suspend(UserCause);
    m_manager.reset();
    VexaSettings::destroy();

    m_manager = std::make_unique<DownloadManager>(m_queue.get(), nullptr);

    QVERIFY(m_manager->suspended());
    QVERIFY(linesOf([&] {
                m_manager->resume(NetworkCause);
            }).contains(line("[INFO] Will not resume - 3")));
}

void SuspensionTest::tellsOfWifiButDoesNotReactToIt()
{
    m_manager->suspend(NetworkCause);
    QSignalSpy changed(m_manager.get(), &DownloadManager::hasWifiConnectionChanged);

    const QStringList lines = linesOf([&] {
        m_manager->setHasWiFi(true);
        m_manager->setHasWiFi(true);
        m_manager->setHasWiFi(false);
    });

    QCOMPARE(
        lines,
        QStringList({line("[TRACE] m_hasWifiConnection: 1"), line("[TRACE] m_hasWifiConnection: 1"),
                     line("[TRACE] m_hasWifiConnection: 0")}));
    QCOMPARE(changed.count(), 3);
    QCOMPARE(changed.at(0).at(0).toBool(), true);
    QCOMPARE(changed.at(2).at(0).toBool(), false);
    QVERIFY(m_manager->suspended());
}

void SuspensionTest::decidesByWhatIsAllowedAndWhatThereIs_data()
{
    QTest::addColumn<bool>("online");
    QTest::addColumn<bool>("wifi");
    QTest::addColumn<bool>("gprs");
    QTest::addColumn<bool>("usable");
    QTest::addColumn<QStringList>("lines");
    const QString notOnline =
        line("[INFO] Application is not allowed to go online. Will suspend download manager");
    const QString noNetwork = line("[INFO] No wifi connection and its not allowed to use gprs. "
                                   "Will suspend download manager");
    const QString allowed =
        line("[INFO] Application is allowed to go online. Will resume download manager");

    for (const bool wifi : {false, true}) {
        for (const bool gprs : {false, true}) {
            QTest::addRow("not allowed online, wifi %d, mobile network %d", wifi, gprs)
                << false << wifi << gprs << false << QStringList(notOnline);
            QTest::addRow("allowed online, wifi %d, mobile network %d", wifi, gprs)
                << true << wifi << gprs << (wifi || gprs)
                << QStringList({line("[TRACE] m_hasWifiConnection: ") + QString::number(wifi),
                                line("[TRACE] m_allowGprsConnection: ") + QString::number(gprs),
                                wifi || gprs ? allowed : noNetwork});
        }
    }
}

void SuspensionTest::decidesByWhatIsAllowedAndWhatThereIs()
{
    QFETCH(bool, online);
    QFETCH(bool, wifi);
    QFETCH(bool, gprs);
    QFETCH(bool, usable);
    QFETCH(QStringList, lines);
    m_manager->allowGoOnline(online);
    m_manager->allowGprsConnection(gprs);
    m_manager->setHasWiFi(wifi);

    m_manager->resume(ForcedCause);
    const QStringList whileRunning = linesOf([&] { m_manager->updateWifiState(); });
    QCOMPARE(m_manager->suspended(), !usable);

    m_manager->resume(ForcedCause);
    m_manager->suspend(NetworkCause);
    const QStringList whileSuspended = linesOf([&] { m_manager->updateWifiState(); });
    QCOMPARE(m_manager->suspended(), !usable);

    lines.prepend(line("[TRACE] void DownloadManager::updateWifiState()"));
    const QString call = usable ? line("[INFO] void DownloadManager::resume(SuspensionCause)")
                                : line("[INFO] void DownloadManager::suspend(SuspensionCause)");
    lines.append(call);
    QCOMPARE(whileRunning,
             usable ? lines : lines + QStringList(line("[INFO] Suspending... Cause: 2")));
    QCOMPARE(whileSuspended, usable ? lines + QStringList(line("[INFO] Will resume - 4")) : lines);
}

void SuspensionTest::logsThePreviousValueWhenTheMobileNetworkIsAllowed()
{
    m_manager->allowGoOnline(true);

    const QStringList allowed = linesOf([&] { m_manager->allowGprsConnection(true); });
    const QStringList again = linesOf([&] { m_manager->allowGprsConnection(true); });
    const QStringList forbidden = linesOf([&] { m_manager->allowGprsConnection(false); });

    QCOMPARE(allowed.at(0), line("[INFO] Allow Gprs connection: 0"));
    QCOMPARE(allowed.at(1), line("[TRACE] void DownloadManager::updateWifiState()"));
    QCOMPARE(again, QStringList());
    QCOMPARE(forbidden.at(0), line("[INFO] Allow Gprs connection: 1"));
    QCOMPARE(forbidden.at(1), line("[TRACE] void DownloadManager::updateWifiState()"));
    QVERIFY(m_manager->suspended());
}

void SuspensionTest::reevaluatesAtEveryCallOfAllowGoOnline()
{
    m_manager->setHasWiFi(true);

    m_manager->allowGoOnline(false);
    QVERIFY(m_manager->suspended());
    m_manager->allowGoOnline(true);
    QVERIFY(!m_manager->suspended());
    m_manager->setHasWiFi(false);
    m_manager->allowGoOnline(true);
    QVERIFY(m_manager->suspended());
}

void SuspensionTest::cancelAlwaysResumes_data()
{
    QTest::addColumn<int>("cause");

    QTest::newRow("the user") << 1;
    QTest::newRow("the network") << 2;
    QTest::newRow("forced") << 3;
}

void SuspensionTest::cancelAlwaysResumes()
{
    QFETCH(int, cause);
    m_queue->enqueue(Request(line("a"), 5, QVariant(), line("http://h/a")));
    m_manager->suspend(SuspensionCause(cause));

    const QStringList lines = linesOf([&] { m_manager->cancel(); });

    QVERIFY(!m_manager->suspended());
    QCOMPARE(lines.first(), line("[INFO] void DownloadManager::cancel(const QString&)"));
    QCOMPARE(lines.mid(lines.size() - 2),
             QStringList({line("[INFO] void DownloadManager::resume(SuspensionCause)"),
                          line("[INFO] Will resume - forced resume")}));
    QVERIFY(m_queue->snapshot().isEmpty());
    QVERIFY(!savedSuspension());
}

void SuspensionTest::cancelOfAnotherAddressDoesNotResume()
{
    m_queue->enqueue(Request(line("a"), 5, QVariant(), line("http://h/a")));
    m_queue->enqueue(Request(line("b"), 5, QVariant(), line("http://h/b")));
    m_manager->suspend(NetworkCause);

    m_manager->cancel(line("http://h/b"));

    QVERIFY(m_manager->suspended());
    QCOMPARE(m_queue->snapshot().size(), 1);
    QCOMPARE(m_queue->snapshot().at(0).id, line("a"));
}

QTEST_GUILESS_MAIN(SuspensionTest)
#include "tst_suspension.moc"
