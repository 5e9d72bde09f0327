// SPDX-License-Identifier: MIT
#include "download/worker.h"

#include "download/queuehelpers.h"
#include "download/runningworker.h"
#include "download/settingsfile.h"
#include "testutils/archivebuilder.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

using Server = HttpTestServer;

namespace {

QString trace(const char *text)
{
    return QLatin1String("[TRACE] ") + QLatin1String(text);
}

QString info(const char *text)
{
    return QLatin1String("[INFO] ") + QLatin1String(text);
}

// Those of Qt that transfer for a QNetworkAccessManager; each Qt has another name for them.
int networkThreads()
{
    int count = 0;
    const QDir threads(QStringLiteral("/proc/self/task"));
    const QStringList numbers = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &number : numbers) {
        const QByteArray name = TestFile::read(threads.filePath(number + QLatin1String("/comm")));
        count += name.startsWith("Qt HTTP") || name.startsWith("QNetworkAccess");
    }
    return count;
}

void callEverything(Worker &worker)
{
    worker.suspend();
    worker.resume();
    worker.cancel(QStringLiteral("http://h/a"));
    worker.cancel(QString());
    worker.allowGprsConnection(true);
    worker.allowGprsConnection(false);
    worker.setUnpackPause(0);
    worker.setContainedUnpack(true);
    DownloadManagerIface &iface = *worker.getDownloadManagerIface();
    iface.suspend();
    iface.resume();
    iface.cancel();
    iface.cancelAll();
    iface.allowGprsConnection(true);
    iface.allowGoOnline(true);
    iface.setHasWiFi(true);
    iface.getRequests();
    iface.prepareToDestroy();
    iface.onFinished(3, QString(), QString());
}

} // namespace

class WorkerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isBuiltAndTakenDownInOrder();
    void ownsInterfaceAndQueue();
    void hasNoManagerBeforeItStarts();
    void callsBeforeTheStartDoNothing();
    void requestsMayComeBeforeTheStart();
    void requestsOfAnEarlierRunKeepTheirPlaceInFront();
    void managerLivesInTheThread();
    void startIsLoggedAheadOfTheEngine();
    void callsReachTheEngineOnceItIsReady();
    void everySignalOfTheEngineIsPassedOnQueued();
    void callsAfterTheEndDoNothing();
    void unfinishedRequestsAreDoneByTheNextWorker();
    void threadSleepLetsTheCallerSleep();
    void heartbeatIntervalIsHandedOn();
    void unpackSettingsAreHandedOn_data();
    void unpackSettingsAreHandedOn();
    void emptyQueueCostsNothing();
    void emptyQueueNeedsNoNetworkThread();

private:
    SettingsFile file() const { return SettingsFile(*m_home); }
    std::unique_ptr<TemporaryHome> m_home;
};

void WorkerTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void WorkerTest::cleanup()
{
    m_home.reset();
}

void WorkerTest::isBuiltAndTakenDownInOrder()
{
    const LogCatcher log(L::Trace);

    std::make_unique<Worker>().reset();

    QCOMPARE(log.texts(),
             QStringList(
                 {trace("RequestQueue<T>::RequestQueue(IRequestQueueListener*) [with T = Request]"),
                  trace("Worker::Worker()"), trace("virtual Worker::~Worker()"),
                  trace("RequestQueue<T>::~RequestQueue() [with T = Request]")}));
}

void WorkerTest::ownsInterfaceAndQueue()
{
    Worker worker;

    QVERIFY(worker.getDownloadManagerIface());
    QVERIFY(worker.getRequestQueue());
    QCOMPARE(worker.getDownloadManagerIface()->parent(), nullptr);
    QCOMPARE(worker.getDownloadManagerIface()->thread(), QThread::currentThread());

    // The interface listens to the queue.
    QSignalSpy changed(worker.getDownloadManagerIface(), &DownloadManagerIface::requestsChanged);
    worker.getRequestQueue()->enqueue(someRequest(QStringLiteral("a")));
    QCOMPARE(changed.count(), 1);
}

void WorkerTest::hasNoManagerBeforeItStarts()
{
    Worker worker;

    QCOMPARE(worker.getDownloadManager(), nullptr);
    QVERIFY(!worker.isRunning());
    QVERIFY(!worker.withManager([](DownloadManager &) { qFatal("there is none"); }));
}

void WorkerTest::callsBeforeTheStartDoNothing()
{
    Worker worker;
    worker.enqueueRequest(someRequest(QStringLiteral("a"), QStringLiteral("http://h/a")));
    const LogCatcher log(L::Trace);

    callEverything(worker);

    QVERIFY(!log.contains(QStringLiteral(" DownloadManager::")));
    QCOMPARE(file().ids(), QStringList {QStringLiteral("a")}); // a cancel needs the engine, too
}

void WorkerTest::requestsMayComeBeforeTheStart()
{
    Worker worker;

    worker.enqueueRequest(someRequest(QStringLiteral("a")));

    QCOMPARE(worker.getRequestQueue()->size(), 1);
    QCOMPARE(file().ids(), QStringList {QStringLiteral("a")});
    QVERIFY(!worker.getRequestQueue()->hasSavedTransfer);
}

void WorkerTest::requestsOfAnEarlierRunKeepTheirPlaceInFront()
{
    file().write("[requests]\n1\\id=old1\n1\\type=2\n2\\id=old2\n2\\type=2\nsize=2\n");
    const QStringList all {QStringLiteral("old1"), QStringLiteral("old2"), QStringLiteral("new1"),
                           QStringLiteral("new2")};
    Worker worker;

    worker.enqueueRequest(someRequest(QStringLiteral("new1")));
    worker.getDownloadManagerIface()->download(QStringLiteral("new2"), QStringLiteral("http://h/n"),
                                               QStringLiteral("/d"), false);

    QCOMPARE(file().ids().mid(0, 4), all);
    QVERIFY(worker.getRequestQueue()->hasSavedTransfer);
    worker.start();
    QSignalSpy(worker.getDownloadManagerIface(), &DownloadManagerIface::isSuspendedChanged).wait();
    worker.stop();
    QVERIFY(worker.wait(60000));
    QCOMPARE(file().ids().mid(0, 4), all); // the engine did not take them up again
    QCOMPARE(file().ids().size(), 5);
}

void WorkerTest::managerLivesInTheThread()
{
    RunningWorker worker;

    QCOMPARE(worker.manager().thread(), &worker.worker);
    QCOMPARE(worker.manager().parent(), nullptr);
    QVERIFY(worker.threadNumber() != int(syscall(SYS_gettid)));
}

void WorkerTest::startIsLoggedAheadOfTheEngine()
{
    const LogCatcher log(L::Trace);
    RunningWorker worker;
    QVERIFY(worker.stop());

    const QStringList texts = log.texts();
    const auto run = texts.indexOf(trace("virtual void Worker::run()"));
    const auto engine =
        texts.indexOf(trace("DownloadManager::DownloadManager(RequestQueue<Request>*, QObject*)"));
    const auto loop = texts.indexOf(trace("int DownloadManager::mainLoop()"));
    const auto end = texts.indexOf(info("Vexa thread exit"));
    QVERIFY(run >= 0);
    QCOMPARE(engine, run + 1);
    QVERIFY(loop > engine);
    QVERIFY(end > loop);
}

void WorkerTest::callsReachTheEngineOnceItIsReady()
{
    RunningWorker worker;
    worker.goOnline();
    worker->enqueueRequest(Request(QStringLiteral("a"), 9, QVariant(), QStringLiteral("u")));
    const LogCatcher log(L::Info);

    worker->suspend();
    QVERIFY(worker.manager().suspended());
    QVERIFY(log.texts().contains(info("Suspending... Cause: 1")));

    worker->resume();
    QVERIFY(!worker.manager().suspended());
    QVERIFY(log.texts().contains(info("Will resume - 1")));

    worker->allowGprsConnection(true);
    QVERIFY(log.texts().contains(info("Allow Gprs connection: 0")));

    worker->cancel(QStringLiteral("u"));
    QVERIFY(worker->getRequestQueue()->snapshot().isEmpty());
    worker->enqueueRequest(Request(QStringLiteral("a"), 9, QVariant(), QStringLiteral("u")));
    worker->cancel(QString());
    QVERIFY(worker->getRequestQueue()->snapshot().isEmpty());
}

void WorkerTest::everySignalOfTheEngineIsPassedOnQueued()
{
    RunningWorker worker;
    DownloadManagerIface &iface = worker.iface();
    QSignalSpy progress(&iface, &DownloadManagerIface::progress);
    QSignalSpy finished(&iface, &DownloadManagerIface::finished);
    QSignalSpy error(&iface, &DownloadManagerIface::error);
    QSignalSpy recovery(&iface, &DownloadManagerIface::recovery);
    QSignalSpy wifi(&iface, &DownloadManagerIface::hasWifiConnectionChanged);
    QSignalSpy suspended(&iface, &DownloadManagerIface::isSuspendedChanged);
    DownloadManager &manager = worker.manager();
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");

    Q_EMIT manager.progress(2, a, b, 3, 4, 5);
    Q_EMIT manager.finished(4, a, b);
    Q_EMIT manager.error(2, a, 1, b);
    Q_EMIT manager.recovery(true);
    Q_EMIT manager.hasWifiConnectionChanged(true);
    Q_EMIT manager.notifySuspended(true);

    // Nothing runs in the middle of a call, though it came from the interface's own thread.
    QCOMPARE(progress.count() + finished.count() + error.count() + recovery.count() + wifi.count()
                 + suspended.count(),
             0);
    deliverEvents();
    QCOMPARE(progress, (QList<QVariantList> {{2, a, b, qint64(3), qint64(4), qint64(5)}}));
    QCOMPARE(finished, (QList<QVariantList> {{4, a, b}}));
    QCOMPARE(error, (QList<QVariantList> {{2, a, 1, b}}));
    QCOMPARE(recovery, (QList<QVariantList> {{true}}));
    QCOMPARE(wifi.count(), 1);
    QVERIFY(iface.hasWifiConnection());
    QCOMPARE(suspended.count(), 1);
}

void WorkerTest::callsAfterTheEndDoNothing()
{
    RunningWorker worker;
    QVERIFY(worker.stop());
    const LogCatcher log(L::Trace);

    callEverything(worker.worker);

    QVERIFY(!log.contains(QStringLiteral(" DownloadManager::")));
    QVERIFY(worker.iface().suspended());
    worker->enqueueRequest(someRequest(QStringLiteral("late"))); // kept for the next run
    QCOMPARE(file().ids(), QStringList {QStringLiteral("late")});
}

void WorkerTest::unfinishedRequestsAreDoneByTheNextWorker()
{
    const QByteArray content = Server::generatedBytes(3, 0, 300000);
    Server server;
    server.add("/a", content, {Server::StallAfter(100000), Server::Whole()});
    const QString target = m_home->myDocs() + QLatin1String("/a");
    {
        RunningWorker worker;
        worker.goOnline();
        worker.iface().download(QStringLiteral("a"), server.url("/a"),
                                m_home->myDocs() + QLatin1Char('/'), false);
        QTRY_VERIFY(QFileInfo(m_home->downloadFolder() + QLatin1Char('a')).size() > 0);
    }

    RunningWorker worker;
    worker.goOnline();

    QVERIFY(worker.waitForEmptyQueue());
    QTRY_COMPARE(TestFile::read(target), content);
}

void WorkerTest::threadSleepLetsTheCallerSleep()
{
    QElapsedTimer clock;
    clock.start();

    Worker::threadSleep(30);

    QVERIFY(clock.elapsed() >= 30);
}

void WorkerTest::heartbeatIntervalIsHandedOn()
{
    const QByteArray content = Server::generatedBytes(3, 0, 300000);
    Server server;
    server.add("/a", content, {Server::SilentAccept(), Server::Whole()});
    const LogCatcher log(L::Trace);
    Worker worker;
    worker.setHeartbeatInterval(100);
    worker.start();
    QTRY_VERIFY(!worker.getDownloadManagerIface()->suspended());
    worker.getDownloadManagerIface()->setHasWiFi(true);
    worker.getDownloadManagerIface()->allowGoOnline(true);

    worker.getDownloadManagerIface()->download(QStringLiteral("a"), server.url("/a"),
                                               m_home->myDocs() + QLatin1Char('/'), false);

    QTRY_COMPARE_WITH_TIMEOUT(server.requestCount("/a"), 2, 4000); // 5000 ms unless set
    worker.stop();
    QVERIFY(worker.wait(60000));
}

void WorkerTest::unpackSettingsAreHandedOn_data()
{
    QTest::addColumn<bool>("beforeTheStart");
    QTest::newRow("before the start") << true;
    QTest::newRow("while it runs") << false;
}

void WorkerTest::unpackSettingsAreHandedOn()
{
    QFETCH(bool, beforeTheStart);
    ArchiveBuilder builder;
    const QString archive = builder.write(
        QStringLiteral("a.tar"),
        RawTar().add("../escaped", "x").add("inside", QByteArray(2000000, 'x')).bytes());
    Worker worker;
    const auto set = [&worker] {
        worker.setContainedUnpack(true);
        worker.setUnpackPause(0);
    };
    if (beforeTheStart)
        set();
    QSignalSpy error(worker.getDownloadManagerIface(), &DownloadManagerIface::error);
    worker.start();
    QTRY_VERIFY(worker.getDownloadManager());
    if (!beforeTheStart)
        set();

    worker.enqueueRequest(
        Request(QStringLiteral("a"), UncompressRequest, archive, QStringLiteral("u")));

    QTRY_COMPARE(error.count(), 1);
    QCOMPARE(error.at(0).at(2).toInt(), 2);
    QVERIFY(!QFileInfo::exists(m_home->downloadFolder() + QLatin1String("escaped")));
    worker.stop();
    QVERIFY(worker.wait(60000));
}

void WorkerTest::emptyQueueCostsNothing()
{
    const QByteArray content = Server::generatedBytes(3, 0, 300000);
    Server server;
    server.add("/a", content);
    const LogCatcher log(L::Trace);
    RunningWorker worker;
    worker.goOnline();
    // Once with a transfer behind it, which leaves timers and connections to forget.
    worker.iface().download(QStringLiteral("a"), server.url("/a"),
                            m_home->myDocs() + QLatin1Char('/'), false);
    QVERIFY(worker.waitForEmptyQueue());
    QTRY_VERIFY(log.texts().last().contains(QLatin1String("Queue empty. Sleeping ...")));
    QTest::qWait(200); // the way from the log line to the sleep, and what the others still do

    const int own = int(syscall(SYS_gettid));
    QHash<int, qint64> before;
    const QStringList threads =
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &thread : threads) {
        if (thread.toInt() != own)
            before[thread.toInt()] = sleepsOf(thread.toInt());
    }
    QTest::qWait(1500);

    QVERIFY(before.value(worker.threadNumber(), -1) > 0);
    QCOMPARE(sleepsOf(worker.threadNumber()), before.value(worker.threadNumber()));
    for (auto it = before.constBegin(); it != before.constEnd(); ++it)
        QCOMPARE(sleepsOf(it.key()), it.value());
}

// In Qt 5 one more thread looks at all network interfaces every ten seconds as long as there is a
// QNetworkAccessManager; it stays, as it may be the host's, but has nothing to do.
void WorkerTest::emptyQueueNeedsNoNetworkThread()
{
    Server server;
    server.add("/a", Server::generatedBytes(3, 0, 300000));
    RunningWorker worker;
    worker.goOnline();
    for (int round = 1; round <= 2; ++round) {
        std::atomic<int> most {0};
        const auto connection = connect(
            &worker.manager(), &DownloadManager::progress, this,
            [&] { most = qMax(most.load(), networkThreads()); }, Qt::DirectConnection);

        worker.iface().download(QString::number(round), server.url("/a"),
                                m_home->myDocs() + QLatin1Char('/'), false);

        QVERIFY(worker.waitForEmptyQueue());
        QTRY_COMPARE(networkThreads(), 0);
        disconnect(connection);
        QCOMPARE(most.load(), 1);
    }
}

QTEST_GUILESS_MAIN(WorkerTest)
#include "tst_worker.moc"
