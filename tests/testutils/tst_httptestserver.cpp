// SPDX-License-Identifier: MIT
#include "testutils/httptestserver.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QTcpSocket>
#include <QtTest>

using Server = HttpTestServer;

namespace {

constexpr qint64 MiB = 1024 * 1024;

QByteArray someBytes(int count)
{
    return Server::generatedBytes(7, 0, count);
}

/** A client that shows every byte that came. */
class RawClient
{
public:
    explicit RawClient(const Server &server)
    {
        m_socket.connectToHost(QStringLiteral("127.0.0.1"), server.port());
        m_connected = m_socket.waitForConnected();
    }

    bool isConnected() const { return m_connected; }
    bool isOpen() const { return m_socket.state() == QAbstractSocket::ConnectedState; }
    QAbstractSocket::SocketError error() const { return m_socket.error(); }

    void get(const QByteArray &path, const QByteArray &headers = QByteArray(),
             const QByteArray &method = "GET")
    {
        m_socket.write(method + ' ' + path + " HTTP/1.1\r\nHost: x\r\n" + headers + "\r\n");
    }

    /** Waits until the body has this many bytes (or the head is whole, for 0). */
    bool waitForBody(int size)
    {
        return QTest::qWaitFor(
            [&] {
                m_bytes += m_socket.readAll();
                return bodyStart() >= 0 && body().size() >= size;
            },
            20000);
    }

    bool waitForClose()
    {
        return QTest::qWaitFor(
            [&] {
                m_bytes += m_socket.readAll();
                return !isOpen();
            },
            20000);
    }

    /** Bytes so far, with what has come meanwhile. */
    int received()
    {
        m_bytes += m_socket.readAll();
        return int(m_bytes.size());
    }

    QByteArray all() const { return m_bytes; }
    int bodyStart() const { return int(m_bytes.indexOf("\r\n\r\n")); }
    QByteArray head() const { return m_bytes.left(bodyStart() + 2); }
    QByteArray body() const { return m_bytes.mid(bodyStart() + 4); }
    int status() const { return m_bytes.mid(9, 3).toInt(); }
    bool has(const QByteArray &line) const { return head().contains("\r\n" + line + "\r\n"); }
    void forget() { m_bytes.clear(); }

private:
    QTcpSocket m_socket;
    QByteArray m_bytes;
    bool m_connected = false;
};

} // namespace

class HttpTestServerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void servesTheWholeContentAndRemembersTheRequest();
    void keepsTheConnectionForTheNextRequest();
    void honoursRanges_data();
    void honoursRanges();
    void canIgnoreRanges();
    void cutsTheBodyWhereItIsTold();
    void resetsTheConnectionAfterTheBytesHaveGone();
    void stallsUntilItIsToldToGoOn();
    void dripsInPieces();
    void sendsLessAndMoreThanItPromises();
    void leavesTheLengthOut();
    void sendsChunksWholeAndCut();
    void liesAboutTheRange_data();
    void liesAboutTheRange();
    void answersWithAnyStatus();
    void separatesErrorAndEnd();
    void redirects();
    void compressesOnlyForThoseWhoAcceptIt();
    void staysSilent();
    void answersGarbageOrNothing();
    void endsOrStopsInsideTheHead();
    void sendsAHeadThatHasNoEnd();
    void takesTheBehavioursInTurnAndRepeatsTheLast();
    void delaysHeadAndBody();
    void refusesAfterTheAnswerAndComesBackOnTheSamePort();
    void dropsConnectionsWhenItIsStopped();
    void makesLargeContentWhileSending();
    void speaksTls();
};

void HttpTestServerTest::servesTheWholeContentAndRemembersTheRequest()
{
    Server server;
    const QByteArray content = someBytes(300000);
    server.add("/a", content);
    QNetworkAccessManager manager;

    QNetworkRequest request {QUrl(server.url("/a"))};
    request.setRawHeader("X-Mine", "yes");
    const std::unique_ptr<QNetworkReply> reply(manager.get(request));
    QTRY_VERIFY(reply->isFinished());

    QCOMPARE(reply->error(), QNetworkReply::NoError);
    QCOMPARE(reply->readAll(), content);
    QCOMPARE(server.requestCount(), 1);
    QCOMPARE(server.requestCount("/a"), 1);
    QCOMPARE(server.request(0).method, QByteArray("GET"));
    QCOMPARE(server.request(0).path, QByteArray("/a"));
    QCOMPARE(server.request(0).header("x-mine"), QByteArray("yes"));
    QVERIFY(!server.request(0).hasHeader("Range"));
    QCOMPARE(server.bodyBytesSent(0), qint64(300000));
    QVERIFY(server.request(1).path.isEmpty());
}

void HttpTestServerTest::keepsTheConnectionForTheNextRequest()
{
    Server server;
    server.add("/a", someBytes(10));
    server.add("/b", someBytes(20));
    RawClient client(server);

    client.get("/a", QByteArray(), "HEAD");
    QVERIFY(client.waitForBody(0));
    QVERIFY(client.has("Content-Length: 10"));
    QVERIFY(client.body().isEmpty());
    client.forget();
    client.get("/b");
    client.get("/missing");
    QVERIFY(client.waitForBody(21));

    QVERIFY(client.body().startsWith(someBytes(20) + "HTTP/1.1 404"));
    QCOMPARE(server.requestCount(), 3);
    QCOMPARE(server.openConnections(), 1);
}

void HttpTestServerTest::honoursRanges_data()
{
    QTest::addColumn<QByteArray>("range");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("contentRange");
    QTest::addColumn<QByteArray>("body");
    const QByteArray content = someBytes(1000);

    QTest::newRow("open") << QByteArray("bytes=400-") << 206 << QByteArray("bytes 400-999/1000")
                          << content.mid(400);
    QTest::newRow("closed") << QByteArray("bytes=10-19") << 206 << QByteArray("bytes 10-19/1000")
                            << content.mid(10, 10);
    QTest::newRow("from the start")
        << QByteArray("bytes=0-") << 206 << QByteArray("bytes 0-999/1000") << content;
    QTest::newRow("last byte") << QByteArray("bytes=999-") << 206
                               << QByteArray("bytes 999-999/1000") << content.right(1);
    QTest::newRow("past the end") << QByteArray("bytes=1000-") << 416 << QByteArray("bytes */1000")
                                  << QByteArray("<html>no such range</html>");
}

void HttpTestServerTest::honoursRanges()
{
    QFETCH(QByteArray, range);
    QFETCH(int, status);
    QFETCH(QByteArray, contentRange);
    QFETCH(QByteArray, body);
    Server server;
    server.add("/a", someBytes(1000));
    RawClient client(server);

    client.get("/a", "Range: " + range + "\r\n");
    QVERIFY(client.waitForBody(int(body.size())));

    QCOMPARE(client.status(), status);
    QVERIFY(client.has("Content-Range: " + contentRange));
    QVERIFY(client.has("Content-Length: " + QByteArray::number(body.size())));
    QCOMPARE(client.body(), body);
}

void HttpTestServerTest::canIgnoreRanges()
{
    Server server;
    server.add("/a", someBytes(1000), Server::NoRange());
    RawClient client(server);

    client.get("/a", "Range: bytes=400-\r\n");
    QVERIFY(client.waitForBody(1000));

    QCOMPARE(client.status(), 200);
    QVERIFY(!client.head().contains("Range"));
    QCOMPARE(client.body(), someBytes(1000));
}

void HttpTestServerTest::cutsTheBodyWhereItIsTold()
{
    Server server;
    server.add("/a", someBytes(100000), Server::CutAfter(70000));
    RawClient client(server);

    client.get("/a");
    QVERIFY(client.waitForClose());

    QVERIFY(client.has("Content-Length: 100000"));
    QCOMPARE(client.body(), someBytes(70000));
    QCOMPARE(client.error(), QAbstractSocket::RemoteHostClosedError);
}

void HttpTestServerTest::resetsTheConnectionAfterTheBytesHaveGone()
{
    Server server;
    server.add("/a", someBytes(100000), Server::ResetAfter(70000));
    RawClient client(server);

    client.get("/a");
    QVERIFY(client.waitForClose());

    QCOMPARE(client.body(), someBytes(70000));
    QTRY_COMPARE(server.openConnections(), 0);
}

void HttpTestServerTest::stallsUntilItIsToldToGoOn()
{
    Server server;
    server.add("/a", someBytes(1000), Server::StallAfter(600));
    RawClient client(server);

    client.get("/a");
    QVERIFY(client.waitForBody(600));
    QVERIFY(
        !QTest::qWaitFor([&] { return client.waitForBody(0) && client.body().size() > 600; }, 100));
    QVERIFY(client.isOpen());
    QCOMPARE(server.bodyBytesSent(0), qint64(600));

    server.resumeStalled();
    QVERIFY(client.waitForBody(1000));
    QCOMPARE(client.body(), someBytes(1000));
}

void HttpTestServerTest::dripsInPieces()
{
    Server server;
    server.add("/a", someBytes(100), Server::Drip(10, 5));
    RawClient client(server);
    QElapsedTimer clock;
    clock.start();

    client.get("/a");
    QVERIFY(client.waitForBody(100));

    QCOMPARE(client.body(), someBytes(100));
    QVERIFY2(clock.elapsed() >= 40, "nine pauses");
}

void HttpTestServerTest::sendsLessAndMoreThanItPromises()
{
    Server server;
    server.add("/short", someBytes(100), Server::ShortBody(30));
    server.add("/long", someBytes(100), Server::ExtraBytes(5));
    RawClient shortClient(server);
    RawClient longClient(server);

    shortClient.get("/short");
    longClient.get("/long");
    QVERIFY(shortClient.waitForClose());
    QVERIFY(longClient.waitForClose());

    QVERIFY(shortClient.has("Content-Length: 100"));
    QCOMPARE(shortClient.body(), someBytes(70));
    QVERIFY(longClient.has("Content-Length: 100"));
    QCOMPARE(longClient.body(), someBytes(100) + "xxxxx");
}

void HttpTestServerTest::leavesTheLengthOut()
{
    Server server;
    server.add("/a", someBytes(100), Server::NoContentLength());
    RawClient client(server);

    client.get("/a");
    QVERIFY(client.waitForClose());

    QVERIFY(!client.head().contains("Content-Length"));
    QCOMPARE(client.body(), someBytes(100));
}

void HttpTestServerTest::sendsChunksWholeAndCut()
{
    Server server;
    server.add("/a", someBytes(100), Server::Chunked() | Server::Drip(60, 1));
    server.add("/cut", someBytes(100), Server::ChunkedCut(40));
    RawClient whole(server);
    RawClient cut(server);

    whole.get("/a");
    cut.get("/cut");
    QVERIFY(cut.waitForClose());
    QVERIFY(QTest::qWaitFor(
        [&] { return whole.waitForBody(0) && whole.body().endsWith("0\r\n\r\n"); }));

    QVERIFY(whole.has("Transfer-Encoding: chunked"));
    QCOMPARE(whole.body(),
             "3c\r\n" + someBytes(60) + "\r\n28\r\n" + someBytes(100).mid(60) + "\r\n0\r\n\r\n");
    QCOMPARE(cut.body(), "8c\r\n" + someBytes(40));
}

void HttpTestServerTest::liesAboutTheRange_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<QByteArray>("header");

    QTest::newRow("wrong start") << 0 << QByteArray("Content-Range: bytes 41-99/100");
    QTest::newRow("wrong total") << 1 << QByteArray("Content-Range: bytes 40-99/77");
    QTest::newRow("unknown total") << 2 << QByteArray("Content-Range: bytes 40-99/*");
    QTest::newRow("any text") << 3 << QByteArray("Content-Range: nonsense");
    QTest::newRow("none") << 4 << QByteArray();
}

void HttpTestServerTest::liesAboutTheRange()
{
    QFETCH(int, which);
    QFETCH(QByteArray, header);
    const std::vector<Server::Behaviour> lies {
        Server::WrongRangeStart(), Server::WrongRangeTotal(77), Server::UnknownRangeTotal(),
        Server::ContentRangeText("nonsense"), Server::MissingContentRange()};
    Server server;
    server.add("/a", someBytes(100), lies[size_t(which)]);
    RawClient client(server);

    client.get("/a", "Range: bytes=40-\r\n");
    QVERIFY(client.waitForBody(60));

    QCOMPARE(client.status(), 206);
    QCOMPARE(client.head().contains("Content-Range"), !header.isEmpty());
    QVERIFY(header.isEmpty() || client.has(header));
    QCOMPARE(client.body(), someBytes(100).mid(40));
}

void HttpTestServerTest::answersWithAnyStatus()
{
    Server server;
    server.add("/a", someBytes(100), Server::Status(503, "later"));
    RawClient client(server);

    client.get("/a", "Range: bytes=1-\r\n");
    QVERIFY(client.waitForBody(5));

    QCOMPARE(client.status(), 503);
    QCOMPARE(client.body(), QByteArray("later"));
}

void HttpTestServerTest::separatesErrorAndEnd()
{
    Server server;
    server.add("/a", someBytes(100), Server::ErrorThenClose(404, 30, 30));
    RawClient client(server);
    QElapsedTimer clock;
    clock.start();

    client.get("/a");
    QVERIFY(client.waitForBody(0));
    QVERIFY(client.isOpen());
    QVERIFY(client.waitForClose());

    QCOMPARE(client.status(), 404);
    QVERIFY(!client.head().contains("Content-Length"));
    QCOMPARE(client.body(), QByteArray("<html>no</html>"));
    QVERIFY(clock.elapsed() >= 55);
}

void HttpTestServerTest::redirects()
{
    Server server;
    server.add("/a", QByteArray(), Server::Redirect(server.url("/b"), 301));
    server.add("/b", someBytes(100));
    QNetworkAccessManager manager;
    QNetworkRequest request {QUrl(server.url("/a"))};
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);

    const std::unique_ptr<QNetworkReply> reply(manager.get(request));
    QTRY_VERIFY(reply->isFinished());

    QCOMPARE(reply->readAll(), someBytes(100));
    QCOMPARE(server.requestCount("/a"), 1);
    QCOMPARE(server.requestCount("/b"), 1);
}

void HttpTestServerTest::compressesOnlyForThoseWhoAcceptIt()
{
    Server server;
    const QByteArray content(5000, 'q');
    server.add("/a", content, Server::Gzip());
    QNetworkAccessManager manager;
    RawClient identity(server);

    const std::unique_ptr<QNetworkReply> reply(
        manager.get(QNetworkRequest {QUrl(server.url("/a"))}));
    QTRY_VERIFY(reply->isFinished());
    identity.get("/a", "Accept-Encoding: identity\r\nRange: bytes=4000-\r\n");
    QVERIFY(identity.waitForBody(1000));

    QCOMPARE(reply->error(), QNetworkReply::NoError);
    QCOMPARE(reply->readAll(), content);
    QVERIFY(server.bodyBytesSent(0) < 200);
    QCOMPARE(identity.status(), 206);
    QCOMPARE(identity.body(), content.left(1000));

    server.add("/a", content, Server::GzipUnasked());
    RawClient unasked(server);
    unasked.get("/a", "Accept-Encoding: identity\r\n");
    QVERIFY(unasked.waitForBody(20));
    QVERIFY(unasked.has("Content-Encoding: gzip"));
    QVERIFY(unasked.body().startsWith("\x1f\x8b"));
}

void HttpTestServerTest::staysSilent()
{
    Server server;
    server.add("/a", someBytes(100), Server::SilentAccept());
    RawClient client(server);

    client.get("/a");
    QTRY_COMPARE(server.requestCount(), 1);

    QVERIFY(!QTest::qWaitFor([&] { return !client.isOpen(); }, 100));
    QVERIFY(client.all().isEmpty());
}

void HttpTestServerTest::answersGarbageOrNothing()
{
    Server server;
    server.add("/garbage", someBytes(100), Server::Garbage());
    server.add("/nothing", someBytes(100), Server::CloseAtOnce());
    RawClient garbage(server);
    RawClient nothing(server);

    garbage.get("/garbage");
    nothing.get("/nothing");
    QVERIFY(garbage.waitForClose());
    QVERIFY(nothing.waitForClose());

    QVERIFY(!garbage.all().isEmpty());
    QVERIFY(!garbage.all().startsWith("HTTP"));
    QVERIFY(nothing.all().isEmpty());
}

void HttpTestServerTest::endsOrStopsInsideTheHead()
{
    Server server;
    server.add("/cut", someBytes(100), Server::CutInHead(20));
    server.add("/stall", someBytes(100), Server::StallInHead(20));
    RawClient cut(server);
    RawClient stalled(server);

    cut.get("/cut");
    stalled.get("/stall");
    QVERIFY(cut.waitForClose());

    QCOMPARE(cut.all(), QByteArray("HTTP/1.1 200 Answer\r\n").left(20));
    QTRY_COMPARE(stalled.received(), 20);
    QVERIFY(stalled.isOpen());
}

void HttpTestServerTest::sendsAHeadThatHasNoEnd()
{
    Server server;
    server.add("/a", someBytes(100), Server::EndlessHead());
    RawClient client(server);

    client.get("/a");

    QTRY_VERIFY_WITH_TIMEOUT(client.received() > 2000, 20000);
    QVERIFY(client.all().startsWith("HTTP/1.1 200 "));
    QVERIFY(client.bodyStart() < 0);
}

void HttpTestServerTest::takesTheBehavioursInTurnAndRepeatsTheLast()
{
    Server server;
    server.add("/a", someBytes(100),
               {Server::Status(500), Server::CutAfter(10), Server::ChangedFile(someBytes(50))});

    QList<int> statuses;
    QList<int> sizes;
    for (int i = 0; i < 4; ++i) {
        RawClient client(server);
        client.get("/a", "Connection: close\r\n");
        QVERIFY(i == 1 ? client.waitForClose() : client.waitForBody(i == 0 ? 15 : 50));
        statuses.append(client.status());
        sizes.append(int(client.body().size()));
    }

    QCOMPARE(statuses, (QList<int> {500, 200, 200, 200}));
    QCOMPARE(sizes, (QList<int> {15, 10, 50, 50}));
    server.add("/a", someBytes(5));
    RawClient again(server);
    again.get("/a");
    QVERIFY(again.waitForBody(5));
    server.remove("/a");
    again.forget();
    again.get("/a");
    QVERIFY(again.waitForBody(0));
    QCOMPARE(again.status(), 404);
}

void HttpTestServerTest::delaysHeadAndBody()
{
    Server server;
    server.add("/a", someBytes(100),
               Server::DelayBeforeAnswer(30) | Server::DelayBeforeBody(40)
                   | Server::Header("X-More", "1"));
    RawClient client(server);
    QElapsedTimer clock;
    clock.start();

    client.get("/a");
    QVERIFY(client.waitForBody(0));
    const qint64 headAfter = clock.elapsed();
    QVERIFY(client.waitForBody(100));

    QVERIFY(headAfter >= 28);
    QVERIFY(clock.elapsed() >= 65);
    QVERIFY(client.has("X-More: 1"));
}

void HttpTestServerTest::refusesAfterTheAnswerAndComesBackOnTheSamePort()
{
    Server server;
    server.add("/a", someBytes(100), Server::RefuseAfter());
    RawClient client(server);

    client.get("/a");
    QVERIFY(client.waitForClose());
    QCOMPARE(client.body(), someBytes(100));
    QVERIFY(!RawClient(server).isConnected());

    server.start();
    QVERIFY(RawClient(server).isConnected());
}

void HttpTestServerTest::dropsConnectionsWhenItIsStopped()
{
    Server server;
    server.add("/a", someBytes(100), Server::StallAfter(10));
    RawClient client(server);
    client.get("/a");
    QVERIFY(client.waitForBody(10));

    server.stop();

    QVERIFY(client.waitForClose());
    QCOMPARE(server.openConnections(), 0);
    QVERIFY(!RawClient(server).isConnected());
    server.start();
    RawClient next(server);
    next.get("/a");
    QVERIFY(next.waitForBody(10));
}

void HttpTestServerTest::makesLargeContentWhileSending()
{
    Server server;
    const qint64 size = 3000 * MiB + 5;
    server.add("/a", Server::Content::generated(3, size));
    RawClient client(server);
    RawClient fast(server);

    client.get("/a",
               "Range: bytes=" + QByteArray::number(2500 * MiB + 3) + "-"
                   + QByteArray::number(2500 * MiB + 999) + "\r\n");
    QVERIFY(client.waitForBody(997));
    fast.get("/a", "Range: bytes=" + QByteArray::number(size - 20 * MiB) + "-\r\n");
    QVERIFY(fast.waitForBody(int(20 * MiB)));

    QVERIFY(client.has("Content-Range: bytes 2621440003-2621440999/3145728005"));
    QCOMPARE(client.body(), Server::generatedBytes(3, 2500 * MiB + 3, 997));
    QVERIFY(fast.body() == Server::generatedBytes(3, size - 20 * MiB, 20 * MiB));
    QVERIFY(Server::generatedBytes(3, 0, 100) != Server::generatedBytes(4, 0, 100));
    QCOMPARE(Server::generatedBytes(3, 13, 40), Server::generatedBytes(3, 0, 100).mid(13, 40));
}

void HttpTestServerTest::speaksTls()
{
    Server server(Server::Security::Tls);
    server.add("/a", someBytes(500000));
    QNetworkAccessManager manager;
    QNetworkRequest request {QUrl(server.url("/a"))};
    QVERIFY(server.url("/a").startsWith(QLatin1String("https://127.0.0.1:")));

    const std::unique_ptr<QNetworkReply> strange(manager.get(request));
    QTRY_VERIFY(strange->isFinished());
    QSslConfiguration trusting = QSslConfiguration::defaultConfiguration();
    trusting.setCaCertificates({QSslCertificate(server.certificate())});
    request.setSslConfiguration(trusting);
    // A manager of its own: the first one keeps the connection's settings per address.
    QNetworkAccessManager trustingManager;
    const std::unique_ptr<QNetworkReply> trusted(trustingManager.get(request));
    QTRY_VERIFY(trusted->isFinished());

    QCOMPARE(strange->error(), QNetworkReply::SslHandshakeFailedError);
    QVERIFY2(trusted->error() == QNetworkReply::NoError, qPrintable(trusted->errorString()));
    QCOMPARE(trusted->readAll(), someBytes(500000));
}

QTEST_GUILESS_MAIN(HttpTestServerTest)
#include "tst_httptestserver.moc"
