// SPDX-License-Identifier: MIT
#include "benchmarks/pacedsender.h"

#include <algorithm>
#include <chrono>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr qint64 PieceSize = 256 * 1024; // more than is due each millisecond at any sane rate

bool sendAll(int client, const char *bytes, qint64 size)
{
    while (size > 0) {
        const ssize_t sent = ::send(client, bytes, size_t(size), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        bytes += sent;
        size -= sent;
    }
    return true;
}

QByteArray headOf(int client)
{
    QByteArray head;
    char buffer[4096];
    while (!head.contains("\r\n\r\n")) {
        const ssize_t read = ::recv(client, buffer, sizeof buffer, 0);
        if (read <= 0)
            return QByteArray();
        head.append(buffer, int(read));
    }
    return head;
}

// The N of "Range: bytes=N-"; -1 without one.
qint64 rangeStart(const QByteArray &head)
{
    const QByteArray key("\r\nrange: bytes=");
    const auto at = head.toLower().indexOf(key);
    if (at < 0)
        return -1;
    const auto begin = at + key.size();
    return head.mid(begin, head.indexOf('-', begin) - begin).toLongLong();
}

} // namespace

PacedSender::PacedSender(qint64 size, qint64 bytesPerSecond)
    : m_size(size)
    , m_bytesPerSecond(bytesPerSecond)
    , m_piece(int(PieceSize), 'x')
    , m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto *name = reinterpret_cast<sockaddr *>(&address);
    if (::bind(m_listener, name, length) != 0 || ::listen(m_listener, 1) != 0
        || ::getsockname(m_listener, name, &length) != 0)
        qFatal("no port on loopback");
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { serve(); });
}

PacedSender::~PacedSender()
{
    m_stopped = true;
    ::shutdown(m_listener, SHUT_RDWR); // wakes the accept
    m_thread.join();
    ::close(m_listener);
}

QString PacedSender::url() const
{
    return QStringLiteral("http://127.0.0.1:%1/FI.zip").arg(m_port);
}

void PacedSender::serve()
{
    while (!m_stopped) {
        const int client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            continue;
        const int on = 1;
        ::setsockopt(client, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        answer(client);
        ::close(client);
    }
}

void PacedSender::answer(int client) const
{
    const QByteArray head = headOf(client);
    if (head.isEmpty())
        return;
    const qint64 start = rangeStart(head);
    const qint64 first = std::max<qint64>(0, start);
    QByteArray answer =
        start < 0 ? QByteArray("HTTP/1.1 200 OK\r\n") : QByteArray("HTTP/1.1 206 Partial\r\n");
    if (start >= 0)
        answer += "Content-Range: bytes " + QByteArray::number(first) + '-'
            + QByteArray::number(m_size - 1) + '/' + QByteArray::number(m_size) + "\r\n";
    answer +=
        "Content-Length: " + QByteArray::number(m_size - first) + "\r\nConnection: close\r\n\r\n";
    if (sendAll(client, answer.constData(), answer.size()))
        sendBody(client, m_size - first);
}

void PacedSender::sendBody(int client, qint64 bytes) const
{
    const auto begin = std::chrono::steady_clock::now();
    qint64 sent = 0;
    for (auto next = begin + 1ms; sent < bytes && !m_stopped; next += 1ms) {
        std::this_thread::sleep_until(next);
        const double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
        const qint64 due = std::min(bytes, qint64(seconds * double(m_bytesPerSecond)));
        while (sent < due) {
            const qint64 piece = std::min(due - sent, PieceSize);
            if (!sendAll(client, m_piece.constData(), piece))
                return;
            sent += piece;
        }
    }
}
