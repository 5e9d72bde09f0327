// SPDX-License-Identifier: MIT
#include "download/testengine.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <arpa/inet.h>
#include <atomic>
#include <netinet/in.h>
#include <QAbstractSocket>
#include <QCoreApplication>
#include <QNetworkReply>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

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

/** Sees every event of every thread, and so gets at what Qt keeps to itself. */
class WatchfulApplication : public QCoreApplication
{
public:
    using QCoreApplication::QCoreApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        static const auto look = QEvent::Type(QEvent::registerEventType());
        const QPointer<QObject> alive(receiver);
        const QEvent::Type type = event->type();
        auto *socket = qobject_cast<QAbstractSocket *>(receiver);
        if (socket && type == QEvent::ChildAdded)
            postEvent(socket, new QEvent(look)); // the child is not complete yet
        if (socket && type == look)
            beImpatient(*socket);
        const bool result = QCoreApplication::notify(receiver, event);
        if (alive && qobject_cast<QNetworkReply *>(receiver) && abortOnce.exchange(false))
            static_cast<QNetworkReply *>(receiver)->abort();
        return result;
    }

    std::atomic<bool> abortOnce {false}; ///< aborts the next reply that gets an event

private:
    // Qt waits for a connection for half a minute.
    static void beImpatient(const QAbstractSocket &socket)
    {
        const auto timers = socket.findChildren<QTimer *>();
        for (QTimer *timer : timers) {
            if (timer->interval() > 10000)
                timer->setInterval(20);
        }
    }
};

/** A port that listens and whose queue is full, so that the kernel leaves new calls unanswered. */
class BusyPort
{
public:
    BusyPort()
    {
        m_sockets.push_back(socket(AF_INET, SOCK_STREAM, 0));
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof m_address;
        auto *address = reinterpret_cast<sockaddr *>(&m_address);
        if (bind(m_sockets[0], address, size) != 0 || listen(m_sockets[0], 0) != 0
            || getsockname(m_sockets[0], address, &size) != 0)
            qFatal("no port on loopback");
        for (int i = 0; i < 4; ++i) {
            m_sockets.push_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
            connect(m_sockets.back(), address, size);
        }
    }
    ~BusyPort()
    {
        for (const int socket : m_sockets)
            close(socket);
    }
    BusyPort(const BusyPort &) = delete;
    BusyPort &operator=(const BusyPort &) = delete;

    QString url() const
    {
        return QStringLiteral("http://127.0.0.1:%1/a").arg(ntohs(m_address.sin_port));
    }

private:
    sockaddr_in m_address {};
    std::vector<int> m_sockets;
};

} // namespace

/** Failures that are none to the user: the request is sent again. */
class HttpTimeoutTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void sendsAgainWhatTimedOut();
    void sendsAgainWhatWasAborted();
};

void HttpTimeoutTest::sendsAgainWhatTimedOut()
{
    const TemporaryHome home;
    const BusyPort port;
    const QString file = TestEngine::saveFile(port.url());
    writeFile(file, bytes(1000));
    saveEarlierRun(port.url(), file, 1000, 5000);
    const LogCatcher log(L::Trace);
    TestEngine engine;

    engine.start();

    EVENTUALLY(log.count(line("[ERROR] ERROR: Response Timeout")) >= 2);
    engine.stop();
    QVERIFY(log.count(line("[TRACE] network error code: 4")) >= 2);
    QVERIFY(!log.contains(line("Failed: ")));
    QVERIFY(!log.contains(line("Download error")));
    QCOMPARE(engine.error.count(), 0);
    QCOMPARE(engine.finished.count(), 0);
    QCOMPARE(engine.worker->getRequestQueue()->snapshot().size(), 1);
    QCOMPARE(contentOf(file), bytes(1000));
    QCOMPARE(savedRecord().bytesReceived, 1000);
    QCOMPARE(savedRequestCount(), 1);
}

void HttpTimeoutTest::sendsAgainWhatWasAborted()
{
    const TemporaryHome home;
    Server server;
    server.add("/a", bytes(5000), {Server::Drip(10, 5), Server::Whole()});
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    const QString file = engine.download(server.url("/a"));
    EVENTUALLY(savedRecord().bytesReceived > 0);

    static_cast<WatchfulApplication *>(qApp)->abortOnce = true;

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(5000));
    QCOMPARE(engine.error.count(), 0);
    const QStringList lines = log.texts();
    const int seen = int(lines.indexOf(line("[TRACE] Aborted, disconnecting signals")));
    QVERIFY(seen > 0);
    QCOMPARE(lines.at(seen - 1), line("[TRACE] void DownloadManager::doDownloadFinished()"));
    QCOMPARE(lines.at(seen + 1), line("[TRACE] Download aborted"));
    QCOMPARE(server.requestCount(), 2);
}

int main(int argc, char **argv)
{
    WatchfulApplication app(argc, argv);
    HttpTimeoutTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_httptimeout.moc"
