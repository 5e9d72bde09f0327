// SPDX-License-Identifier: MIT
// How the worker thread ends, whatever it is doing.
#include "download/queuehelpers.h"
#include "download/runningworker.h"
#include "download/settingsfile.h"
#include "download/worker.h"
#include "testutils/archivebuilder.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
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

} // namespace

class WorkerEndTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void stopBeforeTheStartOnlyMarksTheQueue();
    void stopRightAfterTheStartEndsTheThread();
    void stopWhileTheQueueIsEmptyEndsTheThread();
    void stopWhileSuspendedEndsTheThread();
    void stopWhileTransferringEndsTheThread();
    void stopWhileUnpackingEndsTheThread();
    void stopWhileAnUnknownRequestComesAgainEndsTheThread();
    void stopMayComeTwiceAndFromAnyThread();
    void stopCutsTheEngineOff();
    void handlerMayStopTheWorkerAndWaitForIt();
    void settingsAreGoneAtTheEnd();

private:
    SettingsFile file() const { return SettingsFile(*m_home); }
    std::unique_ptr<TemporaryHome> m_home;
};

void WorkerEndTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void WorkerEndTest::cleanup()
{
    m_home.reset();
}

void WorkerEndTest::stopBeforeTheStartOnlyMarksTheQueue()
{
    const LogCatcher log(L::Trace);
    Worker worker;

    worker.stop();

    QVERIFY(worker.getRequestQueue()->stopped);
    QVERIFY(!log.contains(QStringLiteral("DownloadManager::exit")));
    worker.start(); // has nothing to do any more, and knows it
    QVERIFY(worker.wait(60000));
}

void WorkerEndTest::stopRightAfterTheStartEndsTheThread()
{
    for (int i = 0; i < 150; ++i) {
        Worker worker;
        worker.start();
        if (i % 3 == 1)
            QThread::yieldCurrentThread();
        else if (i % 3 == 2)
            QThread::usleep(ulong(i * 20)); // somewhere within the start

        worker.stop();

        QVERIFY2(worker.wait(60000), qPrintable(QString::number(i)));
    }
}

void WorkerEndTest::stopWhileTheQueueIsEmptyEndsTheThread()
{
    const LogCatcher log(L::Trace);
    RunningWorker worker;
    QTRY_COMPARE(log.count(trace("Queue empty. Sleeping ...")), 1);

    QVERIFY(worker.stop());

    QCOMPARE(log.count(info("Vexa thread exit")), 1);
    QVERIFY(worker->isFinished());
}

void WorkerEndTest::stopWhileSuspendedEndsTheThread()
{
    const LogCatcher log(L::Trace);
    RunningWorker worker;
    worker.iface().download(QStringLiteral("a"), QStringLiteral("http://127.0.0.1:9/a"),
                            QStringLiteral("/d/"), false);
    QTRY_VERIFY(log.contains(QStringLiteral("int DownloadManager::doDownload()")));
    QTRY_VERIFY(worker.manager().suspended()); // nobody has allowed it to go online

    QVERIFY(worker.stop());

    QCOMPARE(file().ids().size(), 2);
}

void WorkerEndTest::stopWhileTransferringEndsTheThread()
{
    Server server;
    server.add("/a", Server::Content::generated(1, 1000000), Server::StallAfter(500000));
    RunningWorker worker;
    worker.goOnline();
    worker.iface().download(QStringLiteral("a"), server.url("/a"), QStringLiteral("/d/"), false);
    QTRY_VERIFY(QFileInfo(m_home->downloadFolder() + QLatin1Char('a')).size() > 0);

    QVERIFY(worker.stop());

    QCOMPARE(file().ids().size(), 2);
    QCOMPARE(file().value(QStringLiteral("download/bytesReceived")).toLongLong(),
             QFileInfo(m_home->downloadFolder() + QLatin1Char('a')).size());
}

void WorkerEndTest::stopWhileUnpackingEndsTheThread()
{
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("a"), ArchiveBuilder::noise(8 * 1024 * 1024));
    const QString archive = builder.make(QStringLiteral("a.tar"));
    const LogCatcher log(L::Trace);
    RunningWorker worker;
    worker->setUnpackPause(100); // long enough to be hit in the middle
    worker->enqueueRequest(
        Request(QStringLiteral("a"), UncompressRequest, archive, QStringLiteral("u")));
    QTRY_VERIFY(log.contains(QStringLiteral("onUncompressProgress")));

    QVERIFY(worker.stop());

    QVERIFY(log.contains(QStringLiteral("Error: 6 at ")));
    QCOMPARE(file().ids(), QStringList {QStringLiteral("a")}); // to be done again
    QVERIFY(QFileInfo::exists(archive));
}

void WorkerEndTest::stopWhileAnUnknownRequestComesAgainEndsTheThread()
{
    const LogCatcher log(L::Trace);
    RunningWorker worker;
    worker->enqueueRequest(Request(QStringLiteral("a"), 9, QVariant(), QStringLiteral("u")));
    QTRY_VERIFY(log.count(trace("Waiting for request from the queue...")) > 3);

    QVERIFY(worker.stop());

    QCOMPARE(file().ids(), QStringList {QStringLiteral("a")});
}

void WorkerEndTest::stopMayComeTwiceAndFromAnyThread()
{
    RunningWorker worker;
    {
        Background one([&] { worker->stop(); });
        Background two([&] { worker->stop(); });
    }

    QVERIFY(worker.stop());

    worker->stop();
    QVERIFY(worker->isFinished());
}

void WorkerEndTest::stopCutsTheEngineOff()
{
    Server server;
    server.add("/a", Server::Content::generated(1, 1000000), Server::StallAfter(500000));
    const LogCatcher log(L::Trace);
    RunningWorker worker;
    worker.goOnline();
    worker.iface().download(QStringLiteral("a"), server.url("/a"), QStringLiteral("/d/"), false);
    QTRY_VERIFY(QFileInfo(m_home->downloadFolder() + QLatin1Char('a')).size() > 0);
    deliverEvents();
    QPointer<DownloadManager> manager(&worker.manager());
    std::atomic<int> heard {0};
    QObject::connect(
        manager.data(), &DownloadManager::notifySuspended, &worker.worker, [&] { ++heard; },
        Qt::DirectConnection);
    QSignalSpy changed(&worker.iface(), &DownloadManagerIface::isSuspendedChanged);

    QVERIFY(worker.stop());
    deliverEvents();

    // The transfer did suspend itself on its way out.
    QCOMPARE(log.count(trace("Exit received. Suspending...")), 1);
    QCOMPARE(log.count(info("Suspending... Cause: 2")), 1);
    QCOMPARE(heard.load(), 0);
    QCOMPARE(changed.count(), 0);
    QVERIFY(manager.isNull());
}

void WorkerEndTest::handlerMayStopTheWorkerAndWaitForIt()
{
    RunningWorker worker;
    bool ended = false;
    QObject::connect(&worker.iface(), &DownloadManagerIface::isSuspended, &worker.iface(),
                     [&] { ended = worker.stop(); });

    worker.iface().suspend();

    QVERIFY(ended);
}

void WorkerEndTest::settingsAreGoneAtTheEnd()
{
    RunningWorker worker;
    worker->enqueueRequest(Request(QStringLiteral("a"), 9, QVariant(), QStringLiteral("u")));
    QVERIFY(VexaSettings::settings);

    QVERIFY(worker.stop());

    QCOMPARE(VexaSettings::settings, nullptr);
    QCOMPARE(file().ids(), QStringList {QStringLiteral("a")});
}

QTEST_GUILESS_MAIN(WorkerEndTest)
#include "tst_workerend.moc"
