// SPDX-License-Identifier: MIT
#include "download/downloadmanager.h"
#include "download/testengine.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QMetaMethod>
#include <QSettings>
#include <QTest>
#include <sys/resource.h>

namespace {

QString line(const char *text)
{
    return QString::fromLatin1(text);
}

Request unknownRequest(const char *id, int type = 5)
{
    return Request(line(id), type, QVariant(), line("http://h/") + line(id));
}

QString settingsFile()
{
    const VexaSettings::Locker settings;
    return settings->fileName();
}

QStringList methods(const QMetaObject &object, QMetaMethod::MethodType type,
                    QMetaMethod::Access access)
{
    QStringList methods;
    for (int i = object.methodOffset(); i < object.methodCount(); ++i) {
        const QMetaMethod method = object.method(i);
        if (method.methodType() != type || method.access() != access)
            continue;
        QString text = QString::fromLatin1(method.typeName()) + QLatin1Char(' ')
            + QString::fromLatin1(method.methodSignature());
        const auto names = method.parameterNames();
        for (const QByteArray &name : names)
            text += QLatin1Char(' ') + QString::fromLatin1(name);
        // Qt 6 writes the type behind the name.
        text.replace(QLatin1String("qulonglong"), QLatin1String("quint64"));
        methods.append(text.replace(QLatin1String("qlonglong"), QLatin1String("qint64")));
    }
    return methods;
}

qint64 cpuMilliseconds()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000
        + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
}

} // namespace

class MainLoopTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void signalsAndSlotsKeepTheirOrderAndNames();
    void triesAnUnknownTypeAgainAndAgain_data();
    void triesAnUnknownTypeAgainAndAgain();
    void goesThroughATurnInOrder();
    void endsWhileItWaitsForARequest();
    void endsBetweenTwoTurns();
    void endsWhileItIsSuspended();
    void turnsOnAStoppedQueueUntilItIsToldToExit();
    void leavesTheTransferAloneWhenItEnds();
    void fetchesNothingBeforeItMayGoOnline();
    void costsNothingWhileTheQueueIsEmpty();
    void writesItsStateOnlyWhenThatHasChanged();
    void savesTheTransfersRecord();
    void loadsQueueAndRecordOfTheLastRun();
    void loadsNothingFromEmptySettings();
    void makesItsSlotsKnownByNameToo();

private:
    std::unique_ptr<TemporaryHome> m_home;
};

void MainLoopTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void MainLoopTest::cleanup()
{
    m_home.reset();
}

void MainLoopTest::signalsAndSlotsKeepTheirOrderAndNames()
{
    const QMetaObject &object = DownloadManager::staticMetaObject;

    QCOMPARE(methods(object, QMetaMethod::Signal, QMetaMethod::Public),
             QStringList({line("void finished(int,QString,QString) operation url id"),
                          line("void progress(int,QString,QString,qint64,qint64,qint64) operation "
                               "url id bytesReceived bytesTotal estimatedTime"),
                          line("void error(int,QString,int,QString) operation id error url"),
                          line("void recovery(bool) isSuspended"),
                          line("void hasWifiConnectionChanged(bool) hasWifiConnection"),
                          line("void notifySuspended(bool) suspended")}));
    QCOMPARE(
        methods(object, QMetaMethod::Slot, QMetaMethod::Public),
        QStringList({line("int run()"), line("void suspend(SuspensionCause) suspensionCause"),
                     line("void suspend()"), line("void resume(SuspensionCause) suspensionCause"),
                     line("void cancel(QString) url"), line("void cancel()"), line("void exit()"),
                     line("void allowGprsConnection(bool) allow"),
                     line("void allowGoOnline(bool) allow")}));
    QCOMPARE(methods(object, QMetaMethod::Slot, QMetaMethod::Private),
             QStringList({line("void abortCurrentRequest()"),
                          line("void onUncompressProgress(quint64,quint64) bytes total"),
                          line("void onUncompressFinished(VexaArchive::ArchiveError) success"),
                          line("void doDownloadProgress(qint64,qint64) bytesReceived bytesTotal"),
                          line("void doDownloadFinished()"),
                          line("void doDownloadError(QNetworkReply::NetworkError) code"),
                          line("void doDownloadReadyRead()"), line("void doHeartBeat()")}));
    QCOMPARE(object.propertyCount(), QObject::staticMetaObject.propertyCount());
}

void MainLoopTest::triesAnUnknownTypeAgainAndAgain_data()
{
    QTest::addColumn<int>("type");

    QTest::newRow("0") << 0;
    QTest::newRow("5") << 5;
    QTest::newRow("-1") << -1;
}

// Deliberate: who put it there has to take it out.
void MainLoopTest::triesAnUnknownTypeAgainAndAgain()
{
    QFETCH(int, type);
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.worker->enqueueRequest(unknownRequest("a", type));
    engine.worker->enqueueRequest(unknownRequest("b"));

    engine.start();
    EVENTUALLY(log.count(line("[TRACE] int DownloadManager::saveState()")) >= 5);
    engine.stop();

    QCOMPARE(engine.worker->getRequestQueue()->snapshot().size(), 2);
    QCOMPARE(engine.worker->getRequestQueue()->snapshot().at(0).id, line("a"));
    QCOMPARE(savedRequestCount(), 2);
    QCOMPARE(engine.finished.count() + engine.error.count() + engine.progress.count(), 0);
    QVERIFY(!log.contains(line("::doDownload()")));
    QVERIFY(!log.contains(line("::doUncompress()")));
    QVERIFY(!log.contains(line("::doMove()")));
}

void MainLoopTest::goesThroughATurnInOrder()
{
    const QString file = settingsFile();
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.worker->enqueueRequest(unknownRequest("a"));

    engine.startOffline();
    const QString waiting = line("[TRACE] Waiting for request from the queue...");
    EVENTUALLY(log.count(waiting) >= 3);
    engine.stop();

    const QStringList lines = log.texts();
    const int start = int(lines.indexOf(line("[TRACE] int DownloadManager::mainLoop()")));
    const QStringList turn {waiting, line("[TRACE] T RequestQueue<T>::head() [with T = Request]"),
                            line("[TRACE] Dequeing an Item ..."),
                            line("[TRACE] int DownloadManager::saveState()"),
                            line("[INFO] Settings file: ") + file};
    QCOMPARE(lines.mid(start + 1, 10), turn + turn);
    const int built = int(lines.indexOf(
        line("[TRACE] DownloadManager::DownloadManager(RequestQueue<Request>*, QObject*)")));
    QCOMPARE(lines.mid(built + 1, 2),
             QStringList({line("[TRACE] int DownloadManager::loadState()"),
                          line("[INFO] Settings file: ") + file}));
    QCOMPARE(
        lines.mid(lines.size() - 2),
        QStringList({line("[TRACE] Exiting main vexa loop"), line("[INFO] Vexa thread exit")}));
    QCOMPARE(lines.count(line("[TRACE] void DownloadManager::exit()")), 1);
}

void MainLoopTest::endsWhileItWaitsForARequest()
{
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.startOffline();
    EVENTUALLY(log.count(line("[TRACE] Queue empty. Sleeping ...")) == 1);

    engine.stop();

    QVERIFY(engine.worker->isFinished());
    QCOMPARE(log.count(line("[TRACE] Exiting main vexa loop")), 1);
    QCOMPARE(log.count(line("[TRACE] int DownloadManager::saveState()")), 0);
}

void MainLoopTest::endsBetweenTwoTurns()
{
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.worker->enqueueRequest(unknownRequest("a"));
    engine.startOffline();
    EVENTUALLY(log.contains(line("DownloadManager::saveState()")));

    // Without stopping the queue: the loop has to see the flag by itself.
    engine.manager()->exit();

    QVERIFY(engine.worker->wait(60000));
    QCOMPARE(log.count(line("[INFO] Vexa thread exit")), 1);
}

void MainLoopTest::endsWhileItIsSuspended()
{
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.download(line("http://127.0.0.1:1/a.zip"));
    engine.startOffline();
    EVENTUALLY(log.contains(line("Suspending... Cause: 2")));

    engine.manager()->exit();

    QVERIFY(engine.worker->wait(60000));
    QCOMPARE(log.count(line("[TRACE] Woke up...")), 1);
    QVERIFY(!log.contains(line("Item downloaded.")));
    QCOMPARE(savedRequestCount(), 1);
}

void MainLoopTest::turnsOnAStoppedQueueUntilItIsToldToExit()
{
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.startOffline();
    engine.download(line("http://127.0.0.1:1/a.zip"));
    EVENTUALLY(log.contains(line("Suspending... Cause: 2")));

    engine.worker->getRequestQueue()->stop();
    engine.goOnline(); // The download fails at once, and then the queue answers with nothing.
    EVENTUALLY(engine.error.count() == 1);
    const int turns = log.count(line("[TRACE] int DownloadManager::saveState()"));
    EVENTUALLY(log.count(line("[TRACE] int DownloadManager::saveState()")) > turns + 3);
    QVERIFY(engine.worker->isRunning());
    engine.manager()->exit();

    QVERIFY(engine.worker->wait(60000));
}

void MainLoopTest::leavesTheTransferAloneWhenItEnds()
{
    const QString url = line("http://127.0.0.1:1/a.zip");
    const QString file = TestEngine::saveFile(url);
    writeFile(file, QByteArray(1000, 'x'));
    saveEarlierRun(url, file, 1000, 5000);
    {
        TestEngine engine;
        engine.startOffline();
        EVENTUALLY(engine.manager()->suspended());
    }

    QCOMPARE(savedRequestCount(), 1);
    QCOMPARE(savedRecord().bytesReceived, 1000);
    QCOMPARE(savedRecord().bytesTotal, 5000);
    QCOMPARE(contentOf(file).size(), 1000);
}

void MainLoopTest::fetchesNothingBeforeItMayGoOnline()
{
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.startOffline();

    engine.download(line("http://127.0.0.1:1/a.zip"));

    EVENTUALLY(engine.manager()->suspended());
    QCOMPARE(engine.error.count(), 0);
    engine.manager()->allowGoOnline(true);
    QVERIFY(engine.manager()->suspended());
    engine.manager()->allowGprsConnection(true);
    EVENTUALLY(engine.error.count() == 1);
    QCOMPARE(log.count(line("[INFO] Will resume - 4")), 1);
}

void MainLoopTest::costsNothingWhileTheQueueIsEmpty()
{
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.startOffline();
    EVENTUALLY(log.contains(line("Queue empty. Sleeping ...")));
    const qint64 lines = log.lines().size();
    const qint64 before = cpuMilliseconds();

    QTest::qWait(300);

    QCOMPARE(log.lines().size(), lines);
    QVERIFY2(cpuMilliseconds() - before < 150, "the process should sleep");
}

void MainLoopTest::writesItsStateOnlyWhenThatHasChanged()
{
    RequestQueue<Request> queue(nullptr);
    DownloadManager manager(&queue, nullptr);
    manager.suspend(UserCause);
    manager.saveState();
    const QString file = settingsFile();
    QVERIFY(QFile::remove(file));

    manager.saveState();

    QVERIFY(!QFile::exists(file));
}

void MainLoopTest::savesTheTransfersRecord()
{
    RequestQueue<Request> queue(nullptr);
    DownloadManager manager(&queue, nullptr);
    const LogCatcher log(L::Trace);

    QCOMPARE(manager.saveState(), 0);

    const QString file = settingsFile();
    QCOMPARE(log.texts(),
             QStringList({line("[TRACE] int DownloadManager::saveState()"),
                          line("[INFO] Settings file: ") + file}));
    VexaSettings::destroy();
    const VexaSettings::Locker settings;
    for (const char *key : {"url", "fileName", "bytesReceived", "bytesTotal", "downloadType"})
        QVERIFY2(settings->contains(line("download/") + line(key)), key);
}

void MainLoopTest::loadsQueueAndRecordOfTheLastRun()
{
    saveEarlierRun(line("http://h/a.zip"), line("/x/a.zip"), 5000000000, 6000000000);
    RequestQueue<Request> queue(nullptr);

    DownloadManager manager(&queue, nullptr);

    QVERIFY(queue.hasSavedTransfer);
    QCOMPARE(queue.snapshot().size(), 1);
    QCOMPARE(queue.snapshot().at(0).payload.toString(), line("/x/a.zip"));
    manager.saveState();
    VexaSettings::destroy();
    QCOMPARE(savedRecord().url.toString(), line("http://h/a.zip"));
    QCOMPARE(savedRecord().bytesReceived, 5000000000);
    QCOMPARE(savedRecord().bytesTotal, 6000000000);
    QCOMPARE(savedRecord().downloadType, 1);
    QVERIFY(!manager.suspended());
}

void MainLoopTest::loadsNothingFromEmptySettings()
{
    RequestQueue<Request> queue(nullptr);

    DownloadManager manager(&queue, nullptr);

    QVERIFY(!queue.hasSavedTransfer);
    QVERIFY(queue.snapshot().isEmpty());
    QVERIFY(!manager.suspended());
    QCOMPARE(manager.getUnpackedFileList(), QStringList());
    QCOMPARE(manager.loadState(), 0);
}

void MainLoopTest::makesItsSlotsKnownByNameToo()
{
    RequestQueue<Request> queue(nullptr);
    DownloadManager manager(&queue, nullptr);

    QVERIFY(QMetaObject::invokeMethod(&manager, "suspend", Qt::DirectConnection));
    QVERIFY(manager.suspended());
    QVERIFY(QMetaObject::invokeMethod(&manager, "cancel", Qt::DirectConnection));
    QVERIFY(!manager.suspended());
    QVERIFY(QMetaObject::invokeMethod(&manager, "allowGoOnline", Qt::DirectConnection,
                                      Q_ARG(bool, false)));
    QVERIFY(manager.suspended());
}

QTEST_GUILESS_MAIN(MainLoopTest)
#include "tst_mainloop.moc"
