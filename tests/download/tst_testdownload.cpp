// SPDX-License-Identifier: MIT
#include "download/settingsfile.h"
#include "download/testengine.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QTest>

using Server = HttpTestServer;

namespace {

QString line(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray bytes(int size)
{
    return Server::generatedBytes(1, 0, size);
}

} // namespace

/** Test downloads: they ask whether a server answers, and keep nothing. */
class TestDownloadTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void endsAtItsFirstProgress_data();
    void endsAtItsFirstProgress();
    void endsAsFinishedWhateverTheServerSays_data();
    void endsAsFinishedWhateverTheServerSays();
    void logsThatItIsATest();
    void leavesAFileThatWasThereAsItWas();
    void isCancelledWhenNothingComes();
    void isAskedForByTheInterface();
    void doesNotDisturbTheDownloadBehindIt();
    void comesAgainAfterASuspension();

private:
    std::unique_ptr<TemporaryHome> m_home;
};

void TestDownloadTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void TestDownloadTest::cleanup()
{
    m_home.reset();
}

void TestDownloadTest::endsAtItsFirstProgress_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("stallAfter");

    QTest::newRow("an empty file") << 0 << -1;
    QTest::newRow("a small file") << 10 << -1;
    QTest::newRow("a file that goes on and on") << 5000 << 100;
    QTest::newRow("a large file") << 50000000 << -1;
}

void TestDownloadTest::endsAtItsFirstProgress()
{
    QFETCH(int, size);
    QFETCH(int, stallAfter);
    Server server;
    server.add("/a", Server::Content::generated(1, size), Server::StallAfter(stallAfter));
    TestEngine engine;
    engine.start();

    const QString url = server.url("/a");
    const QString file = engine.download(url, QString(), TestDownloadRequest);

    EVENTUALLY(engine.finished.count() == 1);
    EVENTUALLY(engine.isIdle());
    QCOMPARE(engine.finished.at(0), QList<QVariant>({1, url, QString()}));
    QCOMPARE(server.requestCount(), 1);
    QCOMPARE(server.request(0).header("Range"), QByteArray("bytes=0-"));
    EVENTUALLY(!QFile::exists(file));
    EVENTUALLY(server.openConnections() == 0 || size < 100);
    engine.stop();
    QCOMPARE(engine.finished.count(), 1);
    QCOMPARE(engine.error.count(), 0);
    QCOMPARE(SettingsFile(*m_home).value(line("download/fileName")).toString(), QString());
}

void TestDownloadTest::endsAsFinishedWhateverTheServerSays_data()
{
    QTest::addColumn<int>("status");

    QTest::newRow("not found") << 404;
    QTest::newRow("broken") << 500;
    QTest::newRow("refused connection") << 0;
}

// Deliberate: the end of a test's reply has always been reported as finished.
void TestDownloadTest::endsAsFinishedWhateverTheServerSays()
{
    QFETCH(int, status);
    Server server;
    server.add("/a", QByteArray(), Server::Status(status));
    if (status == 0)
        server.stop();
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"), QString(), TestDownloadRequest);

    EVENTUALLY(engine.isIdle());
    EVENTUALLY(engine.finished.count() == 1);
    engine.stop();
    QCOMPARE(engine.finished.count(), 1);
    QCOMPARE(engine.error.count(), 0);
    QVERIFY(!QFile::exists(file));
    if (status == 0)
        QCOMPARE(log.count(line("[TRACE] Test request at void DownloadManager::doDownloadError("
                                "QNetworkReply::NetworkError)")),
                 1);
}

void TestDownloadTest::logsThatItIsATest()
{
    Server server;
    server.add("/a", bytes(10));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();

    engine.download(server.url("/a"), QString(), TestDownloadRequest);
    EVENTUALLY(engine.isIdle());
    engine.stop();

    const QStringList lines = log.textsWithout(line("DownloadManagerIface"));
    const QString progress =
        line("[TRACE] Test request at void DownloadManager::doDownloadProgress(qint64, qint64)");
    const int seen = int(lines.indexOf(progress));
    QVERIFY(seen > 0);
    QCOMPARE(lines.at(seen + 1),
             line("[TRACE] Test request at void DownloadManager::doDownloadReadyRead()"));
    QVERIFY(lines.contains(line("[TRACE] Download is sucessful")));
    // Where the whole reply comes at once, its end is seen as well.
    const int end = int(lines.indexOf(line("[TRACE] void DownloadManager::doDownloadFinished()")));
    QVERIFY(end < 0 || lines.at(end + 1) == line("[TRACE] Test request"));
}

void TestDownloadTest::leavesAFileThatWasThereAsItWas()
{
    Server server;
    server.add("/a", bytes(5000));
    TestEngine engine;
    const QString file = TestEngine::saveFile(server.url("/a"));
    writeFile(file, "somebody's");
    engine.start();

    engine.download(server.url("/a"), QString(), TestDownloadRequest);

    EVENTUALLY(engine.isIdle());
    EVENTUALLY(engine.finished.count() == 1);
    engine.stop();
    QCOMPARE(contentOf(file), QByteArray("somebody's"));
}

void TestDownloadTest::isCancelledWhenNothingComes()
{
    Server server;
    server.add("/a", bytes(5000), Server::SilentAccept());
    server.add("/b", bytes(100));
    const LogCatcher log(L::Trace);
    TestEngine engine(200);
    engine.start();

    const QString file = engine.download(server.url("/a"), QString(), TestDownloadRequest);
    EVENTUALLY(engine.isIdle());
    const QString other = engine.download(server.url("/b"));
    EVENTUALLY(engine.finished.count() == 1);
    engine.stop();

    QCOMPARE(contentOf(other), bytes(100));
    QVERIFY(!QFile::exists(file));
    QCOMPARE(engine.error.count(), 0);
    const QStringList lines = log.textsWithout(line("DownloadManagerIface"));
    const int seen =
        int(lines.indexOf(line("[TRACE] WARNING: No download progress detected within 5000 ms")));
    QCOMPARE(lines.mid(seen + 1, 3),
             QStringList({line("[TRACE] WARNING: Canceling current test download request ..."),
                          line("[INFO] void DownloadManager::cancel(const QString&)"),
                          line("[TRACE] void RequestQueue<T>::removeRequests(const QString&) "
                               "[with T = Request]")}));
    QCOMPARE(lines.count(line("[TRACE] Download is canceled")), 1);
}

void TestDownloadTest::isAskedForByTheInterface()
{
    Server server;
    server.add("/a", bytes(5000));
    TestEngine engine;
    engine.start();

    engine.worker->getDownloadManagerIface()->testDownload(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(engine.finished.at(0), QList<QVariant>({1, server.url("/a"), QString()}));
}

void TestDownloadTest::doesNotDisturbTheDownloadBehindIt()
{
    Server server;
    server.add("/a", bytes(5000));
    TestEngine engine;
    engine.download(server.url("/a"), QString(), TestDownloadRequest);
    const QString file = engine.download(server.url("/a"));

    engine.start();

    EVENTUALLY(engine.finished.count() == 2);
    QCOMPARE(contentOf(file), bytes(5000));
}

void TestDownloadTest::comesAgainAfterASuspension()
{
    Server server;
    server.add("/a", bytes(5000), {Server::SilentAccept(), Server::Whole()});
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    engine.download(server.url("/a"), QString(), TestDownloadRequest);
    EVENTUALLY(server.requestCount() == 1);

    engine.worker->suspend();
    EVENTUALLY(log.contains(line("Download is suspended")));
    QCOMPARE(engine.finished.count(), 0);
    engine.worker->resume();

    EVENTUALLY(engine.finished.count() == 1);
    QVERIFY(engine.isIdle() || server.requestCount() == 2);
}

QTEST_GUILESS_MAIN(TestDownloadTest)
#include "tst_testdownload.moc"
