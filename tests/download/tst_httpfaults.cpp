// SPDX-License-Identifier: MIT
#include "download/testengine.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QTest>

using Server = HttpTestServer;
using Behaviour = HttpTestServer::Behaviour;
Q_DECLARE_METATYPE(HttpTestServer::Behaviour)

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

} // namespace

/** What servers, connections and disks can do to a transfer. */
class HttpFaultsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void reportsARefusalOnceAndForgetsTheTransfer_data();
    void reportsARefusalOnceAndForgetsTheTransfer();
    void reportsACutOnceAndForgetsTheTransfer_data();
    void reportsACutOnceAndForgetsTheTransfer();
    void neverStoresAPieceTwice_data();
    void neverStoresAPieceTwice();
    void reportsAFailureOnceIfErrorAndEndComeApart_data();
    void reportsAFailureOnceIfErrorAndEndComeApart();
    void reportsARefusedConnection();
    void goesOnToTheNextRequestAfterAFailure();
    void continuesABodyThatEndsTooEarlyWithoutAnError();
    void ignoresBytesBehindTheEnd();
    void refusesAPartThatWasNotAskedFor();
    void takesAPartWithoutItsRange();
    void sendsAStalledTransferAgainFromWhereItStopped();
    void sendsARequestWithoutAnswerAgain();
    void leavesATransferAloneThatGoesOn();
    void triesAgainUntilTheSaveFileCanBeOpened();
    void makesItsFolderAnew();
    void fetchesAFileAnewThatWasRemovedMeanwhile();
    void refusesARedirectionThatLeadsNowhere();

private:
    std::unique_ptr<TemporaryHome> m_home;
};
void HttpFaultsTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void HttpFaultsTest::cleanup()
{
    m_home.reset();
}

void HttpFaultsTest::refusesARedirectionThatLeadsNowhere()
{
    Server server;
    server.add("/a", QByteArray(), Server::Status(304, QByteArray()));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.error.count() == 1);
    EVENTUALLY(isForgotten(engine, *m_home));
    QCOMPARE(engine.error.at(0).at(2).toInt(), 1);
    QCOMPARE(log.count(line("[ERROR] Failed: status 304")), 1);
    QVERIFY(!QFile::exists(file));
    QCOMPARE(engine.finished.count(), 0);
}

void HttpFaultsTest::reportsARefusalOnceAndForgetsTheTransfer_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("networkError");
    QTest::addColumn<int>("code");
    const auto row = [](int status, int networkError, int code) {
        QTest::addRow("status %d", status) << status << networkError << code;
    };

    row(400, 302, 1);
    row(401, 204, 1);
    row(402, 299, 4);
    row(403, 201, 1);
    row(404, 203, 1);
    row(405, 202, 1);
    row(408, 299, 4);
    row(409, 206, 1);
    row(410, 207, 1);
    row(416, 299, 4);
    row(429, 299, 4);
    row(500, 401, 1);
    row(501, 402, 1);
    row(503, 403, 1);
    row(504, 499, 1);
}

void HttpFaultsTest::reportsARefusalOnceAndForgetsTheTransfer()
{
    QFETCH(int, status);
    QFETCH(int, networkError);
    QFETCH(int, code);
    Server server;
    server.add("/a", bytes(5000), Server::Status(status));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();

    const QString url = server.url("/a");
    const QString file = engine.download(url, line("finland"));

    EVENTUALLY(engine.error.count() == 1);
    EVENTUALLY(isForgotten(engine, *m_home));
    QCOMPARE(engine.error.at(0), QList<QVariant>({2, line("finland"), code, url}));
    QVERIFY(!QFile::exists(file));
    engine.stop();
    QCOMPARE(engine.error.count(), 1);
    QCOMPARE(engine.finished.count(), 0);
    QCOMPARE(server.requestCount(), 1);
    const QString number = QString::number(networkError);
    QCOMPARE(log.count(line("[TRACE] network error code: ") + number), 1);
    QCOMPARE(log.count(line("[ERROR] Error: ") + number), code == 1 ? 1 : 0);
    QCOMPARE(log.texts().filter(line("[ERROR] Failed: ")).size(), 1);
    QVERIFY(log.texts().filter(line("[ERROR] Failed: ")).at(0).size() > 20);
    const QStringList lines = log.textsWithout(line("DownloadManagerIface"));
    const int end = int(lines.indexOf(line("[TRACE] Checking download state...")));
    QCOMPARE(lines.mid(end + 1, 2),
             QStringList({line("[TRACE] Download error"), line("[TRACE] Removing the file")}));
}

void HttpFaultsTest::reportsACutOnceAndForgetsTheTransfer_data()
{
    QTest::addColumn<Behaviour>("fault");
    const auto row = [](const char *name, const Behaviour &fault) { QTest::newRow(name) << fault; };

    row("before the body", Server::CutAfter(0));
    row("inside the body", Server::CutAfter(1000));
    row("inside the body, with a reset", Server::ResetAfter(1000));
    row("inside the body of the whole file", Server::CutAfter(1000) | Server::NoRange());
    row("shortly before the end", Server::ShortBody(10));
    row("inside a chunk", Server::ChunkedCut(1000));
    row("without an answer", Server::CloseAtOnce());
    row("behind something that is no answer", Server::Garbage());
}

void HttpFaultsTest::reportsACutOnceAndForgetsTheTransfer()
{
    QFETCH(Behaviour, fault);
    Server server;
    server.add("/a", bytes(1500), fault);
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();

    const QString url = server.url("/a");
    const QString file = engine.download(url, line("finland"));

    EVENTUALLY(engine.error.count() + engine.finished.count() == 1);
    EVENTUALLY(isForgotten(engine, *m_home));
    if (engine.error.count() == 1) {
        QCOMPARE(engine.error.at(0), QList<QVariant>({2, line("finland"), 1, url}));
        QVERIFY(!QFile::exists(file));
        QVERIFY(log.contains(line("[ERROR] Failed: ")));
    } else {
        QCOMPARE(contentOf(file), bytes(1500)); // piece by piece it came all the same
    }
}

void HttpFaultsTest::neverStoresAPieceTwice_data()
{
    QTest::addColumn<Behaviour>("fault");

    QTest::newRow("cut") << Server::CutAfter(1000);
    QTest::newRow("cut later") << Server::CutAfter(100 * KiB);
    QTest::newRow("reset") << Server::ResetAfter(1000);
    QTest::newRow("cut, of unknown length") << (Server::CutAfter(1000) | Server::NoContentLength());
    QTest::newRow("whole and cut") << (Server::CutAfter(1000) | Server::NoRange());
}

void HttpFaultsTest::neverStoresAPieceTwice()
{
    QFETCH(Behaviour, fault);
    Server server;
    TestEngine engine;
    engine.start();
    constexpr int Times = 8;

    for (int i = 0; i < Times; ++i) {
        server.add("/a", bytes(200 * KiB), {fault, Server::Whole()});
        const QString file = engine.download(server.url("/a"));
        EVENTUALLY(engine.isIdle());
        if (QFile::exists(file))
            QCOMPARE(contentOf(file), bytes(200 * KiB));
        QFile::remove(file);
    }

    EVENTUALLY(engine.finished.count() + engine.error.count() == Times);
    for (const QList<QVariant> &error : engine.error)
        QCOMPARE(error.at(2).toInt(), 1);
}

void HttpFaultsTest::reportsAFailureOnceIfErrorAndEndComeApart_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("code");

    QTest::newRow("404") << 404 << 1;
    QTest::newRow("416") << 416 << 4;
    QTest::newRow("500") << 500 << 1;
}

void HttpFaultsTest::reportsAFailureOnceIfErrorAndEndComeApart()
{
    QFETCH(int, status);
    QFETCH(int, code);
    Server server;
    server.add("/a", bytes(5000), Server::ErrorThenClose(status, 100, 100));
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.error.count() == 1);
    EVENTUALLY(isForgotten(engine, *m_home));
    engine.stop();
    QCOMPARE(engine.error.count(), 1);
    QCOMPARE(engine.error.at(0).at(2).toInt(), code);
    QCOMPARE(server.requestCount(), 1);
    QVERIFY(!QFile::exists(file));
}

void HttpFaultsTest::reportsARefusedConnection()
{
    Server server;
    server.stop();
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();

    engine.download(server.url("/a"));
    engine.download(line("nonsense://host/b"));
    engine.download(QString());

    EVENTUALLY(engine.error.count() == 3);
    EVENTUALLY(isForgotten(engine, *m_home));
    for (const QList<QVariant> &error : engine.error)
        QCOMPARE(error.at(2).toInt(), 1);
    QCOMPARE(log.count(line("[ERROR] Error: 1")), 1);
    QCOMPARE(log.count(line("[ERROR] Error: 301")), 2);
}

void HttpFaultsTest::goesOnToTheNextRequestAfterAFailure()
{
    Server server;
    server.add("/b", bytes(5000));
    TestEngine engine;
    engine.start();

    engine.download(server.url("/missing"));
    const QString file = engine.download(server.url("/b"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(engine.error.count(), 1);
    QCOMPARE(contentOf(file), bytes(5000));
    QCOMPARE(server.request(1).header("Range"), QByteArray("bytes=0-"));
}

void HttpFaultsTest::continuesABodyThatEndsTooEarlyWithoutAnError()
{
    Server server;
    const auto cut = Server::NoContentLength() | Server::CutAfter(1000);
    server.add("/a", bytes(2500), {cut, cut, Server::Whole()});
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(2500));
    // Qt by itself may have repeated a request that was cut.
    const QByteArray last = server.request(server.requestCount() - 1).header("Range");
    QVERIFY(last == "bytes=1000-" || last == "bytes=2000-");
    QCOMPARE(engine.error.count(), 0);
}

void HttpFaultsTest::ignoresBytesBehindTheEnd()
{
    Server server;
    server.add("/a", bytes(5000), Server::ExtraBytes(100));
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(5000));
}

void HttpFaultsTest::refusesAPartThatWasNotAskedFor()
{
    Server server;
    server.add("/a", bytes(5000), Server::WrongRangeStart(7));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.error.count() == 1);
    EVENTUALLY(isForgotten(engine, *m_home));
    QCOMPARE(engine.error.at(0).at(2).toInt(), 4);
    QVERIFY(!QFile::exists(file));
    QCOMPARE(server.requestCount(), 1);
    QCOMPARE(log.count(line("[ERROR] Failed: the server sent another part than was asked for")), 1);
}

void HttpFaultsTest::takesAPartWithoutItsRange()
{
    Server server;
    server.add("/a", bytes(5000), Server::MissingContentRange());
    TestEngine engine;
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(5000));
}

void HttpFaultsTest::sendsAStalledTransferAgainFromWhereItStopped()
{
    Server server;
    server.add("/a", bytes(5000),
               {Server::StallAfter(1000), Server::StallAfter(2000), Server::Whole()});
    const LogCatcher log(L::Trace);
    TestEngine engine(200);
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(5000));
    QCOMPARE(server.requestCount(), 3);
    QCOMPARE(server.request(1).header("Range"), QByteArray("bytes=1000-"));
    QCOMPARE(server.request(2).header("Range"), QByteArray("bytes=3000-"));
    QCOMPARE(engine.error.count(), 0);
    const QStringList lines = log.textsWithout(line("DownloadManagerIface"));
    const int seen =
        int(lines.indexOf(line("[TRACE] WARNING: No download progress detected within 5000 ms")));
    QCOMPARE(lines.at(seen - 1), line("[TRACE] void DownloadManager::doHeartBeat()"));
    QCOMPARE(lines.mid(seen + 1, 3),
             QStringList({line("[TRACE] WARNING: Aborting current request and resending ..."),
                          line("[TRACE] Item downloaded. Exiting waiting loop..."),
                          line("[TRACE] Checking download state...")}));
}

void HttpFaultsTest::sendsARequestWithoutAnswerAgain()
{
    Server server;
    server.add("/a", bytes(5000), {Server::SilentAccept(), Server::Whole()});
    TestEngine engine(200);
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(5000));
    QVERIFY(server.requestCount() >= 2);
    QCOMPARE(server.request(1).header("Range"), QByteArray("bytes=0-"));
}

void HttpFaultsTest::leavesATransferAloneThatGoesOn()
{
    Server server;
    server.add("/a", bytes(100 * 100), Server::Drip(100, 15));
    const LogCatcher log(L::Trace);
    TestEngine engine(700);
    engine.start();

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(10000));
    QVERIFY(log.count(line("[TRACE] void DownloadManager::doHeartBeat()")) >= 1);
    QCOMPARE(server.requestCount(), 1);
}

void HttpFaultsTest::triesAgainUntilTheSaveFileCanBeOpened()
{
    Server server;
    server.add("/a", bytes(5000));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    const QString url = server.url("/a");
    const QString file = TestEngine::saveFile(url);
    QVERIFY(QDir().mkpath(file));
    engine.start();

    engine.download(url);

    const QString problem = line("[TRACE] ERROR: Problem opening save file ") + file
        + line(" for download ") + url + line(": ");
    EVENTUALLY(log.texts().filter(problem).size() >= 3);
    QVERIFY(log.texts().filter(problem).at(0).size() > problem.size());
    QVERIFY(log.count(line("[TRACE] int DownloadManager::saveState()")) >= 2);
    QCOMPARE(engine.worker->getRequestQueue()->snapshot().size(), 1);
    QCOMPARE(server.requestCount(), 0);
    QVERIFY(QDir().rmdir(file));
    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(5000));
    QCOMPARE(engine.error.count(), 0);
}

void HttpFaultsTest::makesItsFolderAnew()
{
    Server server;
    server.add("/a", bytes(5000));
    TestEngine engine;
    const QString file = engine.download(server.url("/a"));
    QVERIFY(QDir(m_home->downloadFolder()).removeRecursively());

    engine.start();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(5000));
}

void HttpFaultsTest::fetchesAFileAnewThatWasRemovedMeanwhile()
{
    Server server;
    server.add("/a", bytes(5000), {Server::StallAfter(1000), Server::Whole()});
    TestEngine engine;
    engine.start();
    const QString file = engine.download(server.url("/a"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);

    QVERIFY(QFile::remove(file));
    server.resumeStalled();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(5000));
    QCOMPARE(server.request(1).header("Range"), QByteArray("bytes=0-"));
}

QTEST_GUILESS_MAIN(HttpFaultsTest)
#include "tst_httpfaults.moc"
