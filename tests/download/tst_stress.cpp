// SPDX-License-Identifier: MIT
// Everything at once: what the GUI thread may call while transfers, unpacks and moves run. Meant
// for the thread checker, which reports what two threads touch without a lock; in other builds it
// shows that nothing hangs, crashes or gets lost.
#include "download/queuehelpers.h"
#include "download/runningworker.h"
#include "download/settingsfile.h"
#include "testutils/archivebuilder.h"
#include "testutils/httptestserver.h"
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

using Server = HttpTestServer;

namespace {

constexpr int Rounds = 400; // calls of the GUI thread in one run

QString number(int i)
{
    return QString::number(i);
}

} // namespace

class StressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void everyCallMayComeWhileTheEngineWorks_data();
    void everyCallMayComeWhileTheEngineWorks();
    void manyThreadsMayAskAndEnqueue();
    void stopMayComeInTheMiddleOfEverything();

private:
    void serve(Server &server);
    QString urlOf(const Server &server, int i) const;
    void callSomething(RunningWorker &worker, const Server &server, quint32 what);
    void checkSettingsFile() const;

    QByteArray m_archive;
    QByteArray m_file;
    std::unique_ptr<TemporaryHome> m_home;
};

void StressTest::initTestCase()
{
    // Thousands of syncs of a real disk would be all that this measures.
    if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
        qputenv("TMPDIR", "/dev/shm");
    // Byte by byte and by no tool: a thread that has started a program is let off by the thread
    // checker from then on.
    RawTar tar;
    for (int i = 0; i < 5; ++i)
        tar.add(QByteArray::number(i) + ".cdt", ArchiveBuilder::noise(100000, quint32(i)));
    m_archive = tar.bytes();
    m_file = ArchiveBuilder::noise(400000, 2);
}

void StressTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void StressTest::cleanup()
{
    m_home.reset();
}

void StressTest::serve(Server &server)
{
    server.add("/0", m_file);
    server.add("/1", m_archive);
    server.add("/2", m_file, Server::Drip(20000, 1));
    server.add("/3", m_archive, {Server::CutAfter(100000), Server::Whole()});
    server.add("/4", m_file, Server::StallAfter(200000));
    server.add("/5", m_file, Server::Status(404));
}

QString StressTest::urlOf(const Server &server, int i) const
{
    return server.url('/' + QByteArray::number(i));
}

void StressTest::callSomething(RunningWorker &worker, const Server &server, quint32 what)
{
    DownloadManagerIface &iface = worker.iface();
    const int which = int(what / 32 % 6);
    switch (what % 32) {
    case 0:
    case 1:
    case 2:
        iface.download(number(which), urlOf(server, which), m_home->myDocs() + QLatin1Char('/'),
                       which % 2 == 1);
        break;
    case 3:
        iface.testDownload(urlOf(server, which));
        break;
    case 4:
        iface.suspend();
        break;
    case 5:
        iface.suspend(NetworkCause);
        break;
    case 6:
    case 7:
        iface.resume();
        break;
    case 8:
        iface.resume(NetworkCause);
        break;
    case 9:
        iface.resume(ForcedCause);
        break;
    case 10:
        iface.cancel(urlOf(server, which));
        break;
    case 11:
        if (which == 0)
            iface.cancelAll();
        break;
    case 12:
        iface.allowGprsConnection(which % 2 == 0);
        break;
    case 13:
        iface.setHasWiFi(which > 0);
        break;
    case 14:
        iface.allowGoOnline(which > 0);
        break;
    case 15:
        iface.getRequests();
        break;
    case 16:
        iface.getUnpackedFileList();
        worker.manager().getUnpackedFileList();
        break;
    case 17:
        iface.isInQueue(number(which));
        iface.currentlyActiveId();
        break;
    case 18:
        iface.suspended();
        iface.getFreeSpace();
        break;
    case 19:
        worker->setUnpackPause(which);
        worker->setContainedUnpack(which % 2 == 0);
        break;
    case 20:
        if (which == 0)
            iface.prepareToDestroy();
        break;
    case 21:
        worker.manager().setHeartbeatInterval(50 + which);
        break;
    case 22:
        worker->suspend();
        worker->resume();
        break;
    case 23:
        worker->getRequestQueue()->removeRequests(urlOf(server, which));
        break;
    case 24:
        iface.onFinished(3, QString(), QString()); // asks the engine for its list
        break;
    default:
        worker.goOnline(); // most of the time the engine shall have something to do
        iface.resume();
        deliverEvents();
        break;
    }
}

void StressTest::checkSettingsFile() const
{
    const QStringList keys = SettingsFile(*m_home).keys();
    for (const QString &key : keys) {
        const bool known = key.startsWith(QLatin1String("requests/"))
            || key.startsWith(QLatin1String("download/")) || key == QLatin1String("isSuspended");
        const bool misplaced = key.startsWith(QLatin1String("requests/"))
            && (key.contains(QLatin1String("download")) || key.contains(QLatin1String("isSusp"))
                || key.contains(QLatin1String("bytes")));
        QVERIFY2(known && !misplaced, qPrintable(key));
    }
}

void StressTest::everyCallMayComeWhileTheEngineWorks_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 4; ++seed)
        QTest::newRow(qPrintable(number(int(seed)))) << seed;
}

void StressTest::everyCallMayComeWhileTheEngineWorks()
{
    QFETCH(quint32, seed);
    Server server;
    serve(server);
    QRandomGenerator random(seed);
    {
        RunningWorker worker;
        worker.manager().setHeartbeatInterval(50);
        worker->setUnpackPause(0);
        QSignalSpy finished(&worker.iface(), &DownloadManagerIface::finished);
        worker.goOnline();
        for (int i = 0; i < Rounds; ++i) {
            callSomething(worker, server, random.generate());
            if (i % 8 == 0)
                QThread::usleep(random.bounded(3000)); // so that the engine gets somewhere
        }

        // Whatever came over it, it still works.
        worker.iface().cancelAll();
        worker.goOnline();
        worker.iface().resume(ForcedCause);
        worker.goOnline();
        const QString target = m_home->myDocs() + QLatin1String("/done/");
        worker.iface().download(QStringLiteral("done"), urlOf(server, 0), target, false);
        QTRY_COMPARE_WITH_TIMEOUT(TestFile::read(target + QLatin1Char('0')), m_file, 60000);
        QVERIFY(worker.stop());
    }
    checkSettingsFile();
}

void StressTest::manyThreadsMayAskAndEnqueue()
{
    Server server;
    serve(server);
    {
        RunningWorker worker;
        worker->setUnpackPause(0);
        worker.goOnline();
        std::atomic<bool> over {false};
        const auto ask = [&] {
            while (!over) {
                worker->getRequestQueue()->snapshot();
                worker.manager().getUnpackedFileList();
                worker.manager().suspended();
                QThread::usleep(200);
            }
        };
        Background asker(ask);
        const auto enqueue = [&](int from) {
            for (int i = 0; i < 20; ++i)
                worker->enqueueRequest(Request(number(from + i), DownloadRequest,
                                               m_home->downloadFolder() + number(from + i),
                                               urlOf(server, 0)));
        };
        QDir().mkpath(m_home->downloadFolder());
        {
            Background one([&] { enqueue(0); });
            Background two([&] { enqueue(100); });
            enqueue(200);
        }
        const bool done = worker.waitForEmptyQueue();
        over = true;
        QVERIFY(done);
        for (int from : {0, 100, 200}) {
            for (int i = 0; i < 20; ++i)
                QCOMPARE(TestFile::read(m_home->downloadFolder() + number(from + i)), m_file);
        }
    }
    checkSettingsFile();
}

void StressTest::stopMayComeInTheMiddleOfEverything()
{
    Server server;
    serve(server);
    QRandomGenerator random(5);
    for (int i = 0; i < 25; ++i) {
        RunningWorker worker;
        worker.goOnline();
        worker.iface().resume(ForcedCause);
        worker.iface().download(number(i), urlOf(server, i % 6),
                                m_home->myDocs() + QLatin1Char('/'), i % 2 == 1);
        QThread::usleep(random.bounded(20000));
        if (i % 2)
            worker.iface().prepareToDestroy();

        QVERIFY2(worker.stop(), qPrintable(number(i)));
        deliverEvents();
    }
    checkSettingsFile();
}

QTEST_GUILESS_MAIN(StressTest)
#include "tst_stress.moc"
