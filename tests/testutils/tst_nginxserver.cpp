// SPDX-License-Identifier: MIT
#include "testutils/nginxserver.h"

#include "testutils/childprogram.h"
#include <QElapsedTimer>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpSocket>
#include <QtTest>
#include <signal.h>

class NginxServerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void servesFilesWithRangesAndLogsThem();
    void comesBackOnTheSamePort();
    void twoServersLiveSideBySide();
    void limitsTheRate();
    void diesWithAKilledTest();
};

namespace {

std::unique_ptr<QNetworkReply> get(QNetworkAccessManager &manager, const QString &url,
                                   const QByteArray &range = QByteArray())
{
    QNetworkRequest request {QUrl(url)};
    if (!range.isEmpty())
        request.setRawHeader("Range", range);
    std::unique_ptr<QNetworkReply> reply(manager.get(request));
    if (!QTest::qWaitFor([&] { return reply->isFinished(); }, 30000))
        qFatal("no answer for %s", qPrintable(url));
    return reply;
}

bool isServed(const NginxServer &server)
{
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), server.port());
    return socket.waitForConnected();
}

} // namespace

void NginxServerTest::servesFilesWithRangesAndLogsThem()
{
    NginxServer server;
    server.add(QStringLiteral("map5/FI.zip"), "0123456789");
    QNetworkAccessManager manager;

    const auto whole = get(manager, server.url("/map5/FI.zip"));
    const auto part = get(manager, server.url("/map5/FI.zip"), "bytes=4-");
    const auto none = get(manager, server.url("/none"));

    QCOMPARE(whole->readAll(), QByteArray("0123456789"));
    QCOMPARE(part->readAll(), QByteArray("456789"));
    QCOMPARE(none->error(), QNetworkReply::ContentNotFoundError);
    QTRY_COMPARE(int(server.accessLog().size()), 3);
    const NginxServer::Entry entry = server.accessLog().at(1);
    QCOMPARE(entry.method, QByteArray("GET"));
    QCOMPARE(entry.path, QByteArray("/map5/FI.zip"));
    QCOMPARE(entry.range, QByteArray("bytes=4-"));
    QCOMPARE(entry.status, 206);
    QCOMPARE(entry.bodyBytesSent, qint64(6));
    QCOMPARE(server.accessLog().at(2).status, 404);
}

void NginxServerTest::comesBackOnTheSamePort()
{
    NginxServer server;
    server.add(QStringLiteral("a"), "abc");
    const quint16 port = server.port();

    server.stop();
    QVERIFY(!server.isRunning());
    QVERIFY(!isServed(server));
    server.start();

    QCOMPARE(server.port(), port);
    QNetworkAccessManager manager;
    QCOMPARE(get(manager, server.url("/a"))->readAll(), QByteArray("abc"));
}

void NginxServerTest::twoServersLiveSideBySide()
{
    NginxServer one;
    NginxServer two;

    QVERIFY(one.port() != two.port());
    QVERIFY(isServed(one) && isServed(two));
}

void NginxServerTest::limitsTheRate()
{
    NginxServer server;
    server.add(QStringLiteral("a"), QByteArray(300000, 'a'));
    server.stop();
    server.setRateLimit(200000);
    server.start();
    QNetworkAccessManager manager;
    QElapsedTimer clock;
    clock.start();

    QCOMPARE(int(get(manager, server.url("/a"))->readAll().size()), 300000);

    QVERIFY(clock.elapsed() >= 400);
}

void NginxServerTest::diesWithAKilledTest()
{
    ChildProgram child(QCoreApplication::applicationFilePath(), {QStringLiteral("--serve")});
    QVERIFY(child.waitForLine("pid "));
    const pid_t nginx = pid_t(child.output().mid(4).trimmed().toInt());
    QVERIFY(nginx > 0);
    QCOMPARE(::kill(nginx, 0), 0);

    child.kill();

    // It is another's child now and may stay a zombie where nobody collects those.
    QTRY_VERIFY(::kill(nginx, 0) != 0 || [&] {
        QFile state(QStringLiteral("/proc/%1/stat").arg(nginx));
        return !state.open(QIODevice::ReadOnly) || state.readAll().contains(") Z ");
    }());
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(QStringLiteral("--serve"))) {
        NginxServer server;
        QFile pid(server.folder() + QStringLiteral("/../nginx.pid"));
        if (!pid.open(QIODevice::ReadOnly))
            return 1;
        printf("pid %s\n", pid.readAll().trimmed().constData());
        fflush(stdout);
        return QCoreApplication::exec();
    }
    NginxServerTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_nginxserver.moc"
