// SPDX-License-Identifier: MIT
#include "download/settingsfile.h"
#include "download/testengine.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <ctime>
#include <memory>
#include <QElapsedTimer>
#include <QMutex>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTest>

using Server = HttpTestServer;

namespace {

constexpr int KiB = 1024;

QString line(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray bytes(int size, quint32 seed = 1)
{
    return Server::generatedBytes(seed, 0, size);
}

void trust(const Server &server)
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.addCaCertificate(QSslCertificate(server.certificate(), QSsl::Pem));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace

/** One transfer after the other, from its first byte. */
class HttpTransferTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void asksForAllBytesAndStoresThem();
    void goesThroughATransferInOrder();
    void storesAnEmptyFile();
    void storesWhatIsSentInChunks();
    void asksForNoCompression();
    void unpacksNothingOnItsWay();
    void followsRedirections_data();
    void followsRedirections();
    void fetchesOverHttps();
    void neverFollowsFromHttpsToHttp();
    void keepsTheTotalOfAContentRange_data();
    void keepsTheTotalOfAContentRange();
    void knowsNoTotalFromAContentLengthAlone();
    void warnsIfTheServerTellsNoSize();
    void tellsOfProgressAtMostOnceASecond();
    void tellsOfTheFirstProgressAtOnceAfterAQuietSecond();
    void writesEachChunkAndItsCountToTheDisk();
    void neverMixesTwoTransfers();
    void closesTheConnectionWhenItIsPreparedToDestroy();
    void waitsForTheServerWithoutWork();

private:
    std::unique_ptr<TemporaryHome> m_home;
};

void HttpTransferTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void HttpTransferTest::cleanup()
{
    m_home.reset();
}

void HttpTransferTest::asksForAllBytesAndStoresThem()
{
    Server server;
    server.add("/FI.zip", bytes(300 * KiB));
    TestEngine engine;
    engine.start();

    const QString url = server.url("/FI.zip?a=b");
    server.add("/FI.zip?a=b", bytes(300 * KiB));
    const QString file = engine.download(url, line("finland"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(engine.finished.at(0), QList<QVariant>({2, url, line("finland")}));
    QCOMPARE(contentOf(file), bytes(300 * KiB));
    QCOMPARE(server.requestCount(), 1);
    QCOMPARE(server.request(0).method, QByteArray("GET"));
    QCOMPARE(server.request(0).header("Range"), QByteArray("bytes=0-"));
    EVENTUALLY(isForgotten(engine, *m_home));
    QCOMPARE(engine.error.count(), 0);
}

void HttpTransferTest::goesThroughATransferInOrder()
{
    Server server;
    server.add("/a", bytes(10));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    engine.download(server.url("/a"));

    EVENTUALLY(engine.isIdle());
    engine.stop();

    const QStringList lines = log.textsWithout(line("DownloadManagerIface"));
    const int start = int(lines.indexOf(line("[TRACE] int DownloadManager::doDownload()")));
    QVERIFY(start > 0);
    QCOMPARE(lines.mid(start, 7),
             QStringList({line("[TRACE] int DownloadManager::doDownload()"),
                          line("[TRACE] void DownloadManager::updateWifiState()"),
                          line("[TRACE] m_hasWifiConnection: 1"),
                          line("[TRACE] m_allowGprsConnection: 0"),
                          line("[INFO] Application is allowed to go online. Will resume download "
                               "manager"),
                          line("[INFO] void DownloadManager::resume(SuspensionCause)"),
                          line("[TRACE] Woke up...")}));
    QCOMPARE(lines.mid(start + 7, 6),
             QStringList({line("[TRACE] void DownloadManager::doDownloadFinished()"),
                          line("[TRACE] Item downloaded. Exiting waiting loop..."),
                          line("[TRACE] Checking download state..."),
                          line("[TRACE] Download is sucessful"),
                          line("[TRACE] T RequestQueue<T>::dequeue() [with T = Request]"),
                          line("[TRACE] Dequeing an Item ...")}));
}

void HttpTransferTest::storesAnEmptyFile()
{
    Server server;
    server.add("/200", QByteArray(), Server::NoRange());
    server.add("/416", QByteArray());
    server.add("/204", QByteArray(), Server::Status(204, QByteArray()));
    TestEngine engine;
    engine.start();

    for (const char *path : {"/200", "/416", "/204"}) {
        const QString file = engine.download(server.url(path));
        EVENTUALLY(engine.isIdle());
        QCOMPARE(contentOf(file), QByteArray());
    }

    EVENTUALLY(engine.finished.count() == 3);
    QCOMPARE(engine.error.count(), 0);
}

void HttpTransferTest::storesWhatIsSentInChunks()
{
    Server server;
    server.add("/a", bytes(200 * KiB), Server::Chunked() | Server::NoRange());
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(200 * KiB));
}

void HttpTransferTest::asksForNoCompression()
{
    const QByteArray text(100 * KiB, 'a');
    Server server;
    server.add("/a", text, Server::Gzip());
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(server.request(0).header("Accept-Encoding"), QByteArray("identity"));
    QCOMPARE(contentOf(file), text);
}

void HttpTransferTest::unpacksNothingOnItsWay()
{
    // What follows the head of a gzip stream does not matter: nobody shall look at it.
    const QByteArray packed = QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10) + bytes(1000);
    Server server;
    server.add("/a", packed, Server::Header("Content-Encoding", "gzip"));
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), packed);
}

void HttpTransferTest::followsRedirections_data()
{
    QTest::addColumn<int>("status");

    for (const int status : {301, 302, 303, 307, 308})
        QTest::addRow("%d", status) << status;
}

void HttpTransferTest::followsRedirections()
{
    QFETCH(int, status);
    Server mirror;
    mirror.add("/mirror/other.zip", bytes(5000));
    Server server;
    server.add("/a.zip", QByteArray(),
               Server::Status(status, bytes(333, 9))
                   | Server::Redirect(mirror.url("/mirror/other.zip"), status));
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a.zip"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(engine.finished.at(0).at(1).toString(), server.url("/a.zip"));
    QCOMPARE(contentOf(file), bytes(5000));
    QVERIFY(file.endsWith(line("/a.zip")));
    QCOMPARE(mirror.request(0).header("Range"), QByteArray("bytes=0-"));
    QCOMPARE(mirror.request(0).header("Accept-Encoding"), QByteArray("identity"));
}

void HttpTransferTest::fetchesOverHttps()
{
    Server server(Server::Security::Tls);
    trust(server);
    server.add("/a", bytes(300 * KiB));
    server.add("/b", QByteArray(), Server::Redirect(server.url("/a")));
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/b"));

    EVENTUALLY(engine.finished.count() == 1);
    QVERIFY(server.url().startsWith(line("https:")));
    QCOMPARE(contentOf(file), bytes(300 * KiB));
}

void HttpTransferTest::neverFollowsFromHttpsToHttp()
{
    Server open;
    open.add("/a", bytes(100));
    Server server(Server::Security::Tls);
    trust(server);
    server.add("/a", QByteArray(), Server::Redirect(open.url("/a")));
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.error.count() == 1);
    EVENTUALLY(isForgotten(engine, *m_home));
    QCOMPARE(engine.error.at(0).at(2).toInt(), 1);
    QCOMPARE(open.requestCount(), 0);
    QCOMPARE(server.requestCount(), 1);
    QVERIFY(!QFile::exists(file));
}

void HttpTransferTest::keepsTheTotalOfAContentRange_data()
{
    QTest::addColumn<QByteArray>("range");
    QTest::addColumn<qint64>("total");

    QTest::newRow("as it is") << QByteArray("bytes 0-19999/20000") << qint64(20000);
    QTest::newRow("not told") << QByteArray("bytes 0-19999/*") << qint64(0);
    QTest::newRow("no range at all") << QByteArray("rubbish") << qint64(0);
    QTest::newRow("two slashes") << QByteArray("bytes 0-19999/20000/1") << qint64(0);
}

void HttpTransferTest::keepsTheTotalOfAContentRange()
{
    QFETCH(QByteArray, range);
    QFETCH(qint64, total);
    Server server;
    server.add("/a", bytes(20000), Server::ContentRangeText(range) | Server::StallAfter(1000));
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(savedRecord().bytesReceived == 1000);
    QCOMPARE(savedRecord().bytesTotal, total);
    QCOMPARE(savedRecord().downloadType, 1);
    server.resumeStalled();
    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(20000));
}

// Deliberate: the size is only taken from a range.
void HttpTransferTest::knowsNoTotalFromAContentLengthAlone()
{
    Server server;
    server.add("/a", bytes(20000), Server::NoRange() | Server::StallAfter(1000));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(savedRecord().bytesReceived == 1000);
    QCOMPARE(savedRecord().bytesTotal, 0);
    QCOMPARE(savedRecord().downloadType, 1);
    QVERIFY(!log.contains(line("No partial download possible")));
    server.resumeStalled();
    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(20000));
}

void HttpTransferTest::warnsIfTheServerTellsNoSize()
{
    Server server;
    server.add("/a", bytes(20000),
               Server::NoRange() | Server::NoContentLength() | Server::StallAfter(1000));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(savedRecord().bytesReceived == 1000);
    QCOMPARE(savedRecord().bytesTotal, -1);
    QCOMPARE(savedRecord().downloadType, 0);
    QVERIFY(log.count(line("[WARNING] No partial download possible")) >= 1);
    server.resumeStalled();
    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(20000));
}

void HttpTransferTest::tellsOfProgressAtMostOnceASecond()
{
    struct Progress
    {
        qint64 atMs, received, total, estimate;
    };
    QMutex mutex;
    std::vector<Progress> all;
    QElapsedTimer clock;
    Server server;
    server.add("/a", bytes(250 * 100), Server::Drip(100, 10));
    TestEngine engine;
    engine.startOffline();
    QObject::connect(
        engine.manager(), &DownloadManager::progress, engine.manager(),
        [&](int, const QString &, const QString &, qint64 received, qint64 total, qint64 estimate) {
            const QMutexLocker lock(&mutex);
            all.push_back({clock.elapsed(), received, total, estimate});
        },
        Qt::DirectConnection);
    clock.start();
    engine.goOnline();

    engine.download(server.url("/a"), line("region"));
    EVENTUALLY(engine.finished.count() == 1);

    const QMutexLocker lock(&mutex);
    QVERIFY(all.size() >= 2); // The body takes 2.5 seconds.
    QCOMPARE(engine.progress.count(), int(all.size()));
    QCOMPARE(engine.progress.at(0).mid(0, 3),
             QList<QVariant>({2, server.url("/a"), line("region")}));
    for (size_t i = 0; i < all.size(); ++i) {
        const Progress &now = all[i];
        QCOMPARE(now.total, 25000);
        QVERIFY(now.received <= now.total);
        if (now.received == 0) {
            QCOMPARE(now.estimate, 0);
            continue;
        }
        const double ratio = double(now.total - now.received) / double(now.received);
        QVERIFY(now.estimate <= qint64(ratio * double(now.atMs)));
        if (i > 0) {
            // Measured in whole milliseconds by two clocks.
            QVERIFY2(now.atMs - all[i - 1].atMs >= 998, "two signals within a second");
            QVERIFY(now.estimate >= qint64(ratio * 998));
        }
    }
}

void HttpTransferTest::tellsOfTheFirstProgressAtOnceAfterAQuietSecond()
{
    Server server;
    server.add("/a", bytes(1000), Server::DelayBeforeAnswer(1100) | Server::StallAfter(10));
    TestEngine engine;
    engine.start();

    engine.download(server.url("/a"));

    // Ahead of the data it tells of.
    EVENTUALLY(engine.progress.count() == 1);
    QCOMPARE(engine.progress.at(0).mid(3), QList<QVariant>({0, 1000, 0}));
}

// How Qt reports a cut depends on the moment, and it may repeat the request by itself; the engine
// goes on as long as that brings it further. A server that never sends more ends in an error.
void HttpTransferTest::writesEachChunkAndItsCountToTheDisk()
{
    Server server;
    server.add("/a", bytes(5000), {Server::StallAfter(1234)});
    TestEngine engine;
    engine.start();
    const SettingsFile settings(*m_home);

    const QString url = server.url("/a");
    const QString file = engine.download(url);

    EVENTUALLY(settings.value(line("download/bytesReceived")).toLongLong() == 1234);
    QCOMPARE(contentOf(file), bytes(1234));
    QCOMPARE(settings.value(line("download/bytesTotal")).toLongLong(), 5000);
    QCOMPARE(settings.value(line("download/url")).toString(), url);
    QCOMPARE(settings.value(line("download/fileName")).toString(), file);
    QCOMPARE(settings.value(line("download/downloadType")).toInt(), 1);
    QCOMPARE(settings.requests().size(), 1);
}

void HttpTransferTest::neverMixesTwoTransfers()
{
    Server server;
    server.add("/1/a", bytes(5000, 1));
    server.add("/2/a", bytes(3000, 2));
    server.add("/b", bytes(4000, 3));
    TestEngine engine;
    engine.start();

    // The first two grow in the same file, one after the other.
    engine.download(server.url("/1/a"));
    const QString a = engine.download(server.url("/2/a"));
    const QString b = engine.download(server.url("/b"));

    EVENTUALLY(engine.finished.count() == 3);
    QCOMPARE(contentOf(a), bytes(3000, 2));
    QCOMPARE(contentOf(b), bytes(4000, 3));
    for (int i = 0; i < 3; ++i)
        QCOMPARE(server.request(i).header("Range"), QByteArray("bytes=0-"));
}

void HttpTransferTest::closesTheConnectionWhenItIsPreparedToDestroy()
{
    Server server;
    server.add("/a", bytes(5000), Server::StallAfter(1000));
    TestEngine engine;
    engine.start();
    const QString file = engine.download(server.url("/a"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);

    engine.manager()->prepareToDestroy();

    EVENTUALLY(server.openConnections() == 0);
    engine.stop();
    QCOMPARE(engine.error.count(), 0);
    QCOMPARE(savedRecord().bytesReceived, 1000);
    QCOMPARE(contentOf(file), bytes(1000));
}

void HttpTransferTest::waitsForTheServerWithoutWork()
{
    Server server;
    server.add("/a", bytes(50000), Server::StallAfter(1000));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    engine.download(server.url("/a"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);

    const std::clock_t before = std::clock();
    QTest::qWait(500);
    const double seconds = double(std::clock() - before) / CLOCKS_PER_SEC;

    QVERIFY2(seconds < 0.25, "the wait should sleep");
    QElapsedTimer clock;
    clock.start();
    engine.worker->suspend();
    EVENTUALLY(log.contains(line("Download is suspended")));
    QVERIFY2(clock.elapsed() < 2000, "the flag should be seen soon");
}

QTEST_GUILESS_MAIN(HttpTransferTest)
#include "tst_httptransfer.moc"
