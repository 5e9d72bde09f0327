// SPDX-License-Identifier: MIT
#include "testutils/httptestserver.h"

#include "testutils/httptestconnection.h"
#include <condition_variable>
#include <map>
#include <mutex>
#include <QEvent>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QSocketNotifier>
#include <QSslCertificate>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <QTemporaryDir>
#include <sys/eventfd.h>
#include <thread>
#include <unistd.h>

namespace {

struct Path
{
    HttpTestServer::Content content;
    std::vector<HttpTestServer::Behaviour> behaviours;
    int asked = 0;
};

struct Identity
{
    QByteArray certificate;
    QByteArray key;
};

Identity makeIdentity()
{
    const QTemporaryDir folder;
    const QString key = folder.filePath(QStringLiteral("key.pem"));
    const QString certificate = folder.filePath(QStringLiteral("certificate.pem"));
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-newkey"),
                   QStringLiteral("rsa:2048"), QStringLiteral("-nodes"), QStringLiteral("-days"),
                   QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=127.0.0.1"),
                   QStringLiteral("-addext"), QStringLiteral("subjectAltName=IP:127.0.0.1"),
                   QStringLiteral("-keyout"), key, QStringLiteral("-out"), certificate});
    QFile keyFile(key);
    QFile certificateFile(certificate);
    if (!openssl.waitForFinished() || !keyFile.open(QIODevice::ReadOnly)
        || !certificateFile.open(QIODevice::ReadOnly))
        qFatal("openssl made no certificate: %s", openssl.readAllStandardError().constData());
    return {certificateFile.readAll(), keyFile.readAll()};
}

} // namespace

QByteArray HttpTestServer::Request::header(const QByteArray &name) const
{
    for (const auto &header : headers) {
        if (header.first.compare(name, Qt::CaseInsensitive) == 0)
            return header.second.isNull() ? QByteArray("") : header.second;
    }
    return QByteArray();
}

/**
 * The thread and what it shares with the test. Both sides only meet under the mutex, and the
 * thread is no QThread: so the thread checker, which does not see into Qt, sees every hand-over.
 */
class HttpTestServer::Private
{
public:
    explicit Private(Security security);
    ~Private();

    /** Runs a step in the server's thread and returns when it is done. */
    void run(const std::function<void()> &step);

    std::mutex mutex;
    std::map<QByteArray, Path> paths;
    QList<Request> requests;
    QList<qint64> sent;
    int open = 0;
    quint16 port = 0;
    Identity identity;
    bool isTls = false;

    // Of the server's thread.
    class Listener;
    Listener *listener = nullptr;
    QEventLoop *loop = nullptr;

private:
    friend class Listener;
    void serve();
    HttpTestPlan plan(const Request &request, int *number);

    void runSteps();

    /** Comes to life in the server's thread whenever somebody has written to m_wakeUp. */
    class Waker;
    int m_wakeUp = -1;
    std::condition_variable m_changed;
    std::vector<std::function<void()>> m_steps;
    quint64 m_given = 0;
    quint64 m_done = 0;
    bool m_isReady = false;
    std::thread m_thread;
};

class HttpTestServer::Private::Listener : public QTcpServer
{
public:
    explicit Listener(Private *d)
        : d(d)
    { }

    bool listenAgain() { return isListening() || listen(QHostAddress::LocalHost, d->port); }

    void dropAll()
    {
        close();
        const auto all = connections();
        for (HttpTestConnection *connection : all)
            delete connection;
    }

    QList<HttpTestConnection *> connections() const
    {
        QList<HttpTestConnection *> found;
        for (QObject *child : children()) {
            if (auto *connection = dynamic_cast<HttpTestConnection *>(child))
                found.append(connection);
        }
        return found;
    }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto *socket = d->isTls ? new QSslSocket : new QTcpSocket;
        socket->setSocketDescriptor(descriptor);
        if (auto *secure = qobject_cast<QSslSocket *>(socket)) {
            secure->setLocalCertificate(QSslCertificate(d->identity.certificate));
            secure->setPrivateKey(QSslKey(d->identity.key, QSsl::Rsa));
            secure->setPeerVerifyMode(QSslSocket::VerifyNone);
            secure->startServerEncryption();
        }
        HttpTestConnection::Hooks hooks;
        hooks.plan = [this](const Request &request, int *number) {
            return d->plan(request, number);
        };
        hooks.sent = [this](int number, qint64 bytes) {
            const std::lock_guard<std::mutex> lock(d->mutex);
            d->sent[number] += bytes;
        };
        hooks.stopListening = [this] { close(); };
        auto *connection = new HttpTestConnection(socket, hooks, this);
        count(1);
        connect(connection, &QObject::destroyed, connection, [this] { count(-1); });
    }

private:
    void count(int change)
    {
        const std::lock_guard<std::mutex> lock(d->mutex);
        d->open += change;
    }

    Private *d;
};

class HttpTestServer::Private::Waker : public QSocketNotifier
{
public:
    explicit Waker(Private *d)
        : QSocketNotifier(d->m_wakeUp, QSocketNotifier::Read)
        , d(d)
    { }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::SockAct)
            return QSocketNotifier::event(event);
        d->runSteps();
        return true;
    }

private:
    Private *d;
};

HttpTestServer::Private::Private(Security security)
    : isTls(security == Security::Tls)
{
    if (isTls) {
        if (!QSslSocket::supportsSsl())
            qFatal("this Qt has no TLS");
        identity = makeIdentity();
    }
    // Not an event of Qt's, whose way to the other thread the checker cannot follow.
    m_wakeUp = eventfd(0, EFD_CLOEXEC);
    m_thread = std::thread([this] { serve(); });
    std::unique_lock<std::mutex> lock(mutex);
    m_changed.wait(lock, [this] { return m_isReady; });
}

HttpTestServer::Private::~Private()
{
    run([this] {
        listener->dropAll();
        loop->quit();
    });
    m_thread.join();
    close(m_wakeUp);
}

void HttpTestServer::Private::serve()
{
    Listener ownListener(this);
    QEventLoop ownLoop;
    const Waker waker(this);
    if (!ownListener.listen(QHostAddress::LocalHost))
        qFatal("no port on loopback: %s", qPrintable(ownListener.errorString()));
    {
        const std::lock_guard<std::mutex> lock(mutex);
        listener = &ownListener;
        loop = &ownLoop;
        port = ownListener.serverPort();
        m_isReady = true;
        m_changed.notify_all();
    }
    ownLoop.exec();
}

void HttpTestServer::Private::run(const std::function<void()> &step)
{
    std::unique_lock<std::mutex> lock(mutex);
    m_steps.push_back(step);
    const quint64 mine = ++m_given;
    eventfd_write(m_wakeUp, 1);
    m_changed.wait(lock, [this, mine] { return m_done >= mine; });
}

void HttpTestServer::Private::runSteps()
{
    eventfd_t count = 0;
    eventfd_read(m_wakeUp, &count);
    std::unique_lock<std::mutex> lock(mutex);
    while (!m_steps.empty()) {
        const std::function<void()> step = m_steps.front();
        m_steps.erase(m_steps.begin());
        lock.unlock();
        step();
        lock.lock();
        ++m_done;
        m_changed.notify_all();
    }
}

HttpTestPlan HttpTestServer::Private::plan(const Request &request, int *number)
{
    const std::lock_guard<std::mutex> lock(mutex);
    *number = int(requests.size());
    requests.append(request);
    sent.append(0);
    HttpTestPlan plan;
    const auto found = paths.find(request.path);
    if (found == paths.end()) {
        HttpTestServer::Status(404).apply(plan);
        return plan;
    }
    Path &path = found->second;
    plan.content = path.content;
    if (!path.behaviours.empty())
        path.behaviours[qMin(size_t(path.asked), path.behaviours.size() - 1)].apply(plan);
    ++path.asked;
    return plan;
}

HttpTestServer::HttpTestServer(Security security)
    : d(std::make_unique<Private>(security))
{ }

HttpTestServer::~HttpTestServer() = default;

void HttpTestServer::add(const QByteArray &path, const Content &content, const Behaviour &behaviour)
{
    add(path, content, std::vector<Behaviour> {behaviour});
}

void HttpTestServer::add(const QByteArray &path, const Content &content,
                         const std::vector<Behaviour> &behaviours)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    d->paths[path] = Path {content, behaviours, 0};
}

void HttpTestServer::remove(const QByteArray &path)
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    d->paths.erase(path);
}

QString HttpTestServer::url(const QByteArray &path) const
{
    return QStringLiteral("%1://127.0.0.1:%2%3")
        .arg(d->isTls ? QStringLiteral("https") : QStringLiteral("http"))
        .arg(d->port)
        .arg(QString::fromUtf8(path));
}

quint16 HttpTestServer::port() const
{
    return d->port;
}

QByteArray HttpTestServer::certificate() const
{
    return d->identity.certificate;
}

int HttpTestServer::requestCount() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return int(d->requests.size());
}

int HttpTestServer::requestCount(const QByteArray &path) const
{
    int count = 0;
    for (const Request &request : requests())
        count += request.path == path ? 1 : 0;
    return count;
}

HttpTestServer::Request HttpTestServer::request(int i) const
{
    return requests().value(i);
}

QList<HttpTestServer::Request> HttpTestServer::requests() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->requests;
}

qint64 HttpTestServer::bodyBytesSent(int i) const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->sent.value(i);
}

int HttpTestServer::openConnections() const
{
    const std::lock_guard<std::mutex> lock(d->mutex);
    return d->open;
}

void HttpTestServer::resumeStalled()
{
    d->run([this] {
        for (HttpTestConnection *connection : d->listener->connections())
            connection->resume();
    });
}

void HttpTestServer::stop()
{
    d->run([this] { d->listener->dropAll(); });
}

void HttpTestServer::start()
{
    d->run([this] {
        if (!d->listener->listenAgain())
            qFatal("port %d was taken meanwhile", d->port);
    });
}
