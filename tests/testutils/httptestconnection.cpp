// SPDX-License-Identifier: MIT
#include "testutils/httptestconnection.h"

#include <linux/sockios.h>
#include <QTimer>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <utility>

using Plan = HttpTestPlan;
using Request = HttpTestServer::Request;

namespace {

constexpr qint64 PieceSize = 256 * 1024;
constexpr qint64 UnsentLimit = 1024 * 1024; // what Qt may hold for us before we wait

Request parsed(const QByteArray &head)
{
    Request request;
    const QList<QByteArray> lines = head.split('\n');
    const QList<QByteArray> first = lines.first().trimmed().split(' ');
    request.method = first.value(0);
    request.path = first.value(1);
    for (int i = 1; i < int(lines.size()); ++i) {
        const int colon = int(lines[i].indexOf(':'));
        if (colon > 0)
            request.headers.append(
                HttpHeader {lines[i].left(colon).trimmed(), lines[i].mid(colon + 1).trimmed()});
    }
    return request;
}

// "bytes=N-" and "bytes=N-M"; nothing else is asked for by those we test.
bool parseRange(const QByteArray &value, qint64 *first, qint64 *last)
{
    const int dash = int(value.indexOf('-'));
    if (!value.startsWith("bytes=") || dash < 0)
        return false;
    bool isNumber = false;
    *first = value.mid(6, dash - 6).toLongLong(&isNumber);
    const QByteArray end = value.mid(dash + 1);
    *last = end.isEmpty() ? -1 : end.toLongLong();
    return isNumber;
}

quint32 crc32(const QByteArray &bytes)
{
    quint32 crc = 0xffffffffU;
    for (const char c : bytes) {
        crc ^= quint8(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xedb88320U : 0);
    }
    return ~crc;
}

QByteArray littleEndian(quint32 number)
{
    QByteArray bytes;
    for (int shift = 0; shift < 32; shift += 8)
        bytes.append(char(number >> shift));
    return bytes;
}

QByteArray gzipped(const QByteArray &bytes)
{
    const QByteArray zlib = qCompress(bytes);
    // Qt puts a size of 4 bytes in front; zlib a head of 2 and a check sum of 4 around the data.
    const QByteArray deflated = zlib.mid(6, zlib.size() - 10);
    return QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10) + deflated + littleEndian(crc32(bytes))
        + littleEndian(quint32(bytes.size()));
}

QByteArray contentRange(const Plan &plan, qint64 first, qint64 last)
{
    qint64 total = plan.content.size();
    switch (plan.contentRange) {
    case Plan::ContentRange::Missing:
        return QByteArray();
    case Plan::ContentRange::Text:
        return plan.contentRangeText;
    case Plan::ContentRange::WrongStart:
        first += plan.contentRangeNumber;
        break;
    case Plan::ContentRange::WrongTotal:
        total = plan.contentRangeNumber;
        break;
    case Plan::ContentRange::Right:
    case Plan::ContentRange::UnknownTotal:
        break;
    }
    const QByteArray whole = plan.contentRange == Plan::ContentRange::UnknownTotal
        ? QByteArray("*")
        : QByteArray::number(total);
    return "bytes " + QByteArray::number(first) + '-' + QByteArray::number(last) + '/' + whole;
}

} // namespace

HttpTestConnection::HttpTestConnection(QTcpSocket *socket, const Hooks &hooks, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_hooks(hooks)
{
    socket->setParent(this);
    connect(socket, &QTcpSocket::readyRead, this, &HttpTestConnection::read);
    connect(socket, &QTcpSocket::bytesWritten, this, &HttpTestConnection::sendBody);
    connect(socket, &QTcpSocket::disconnected, this, [this] {
        m_state = State::Closed;
        deleteLater();
    });
    read();
}

void HttpTestConnection::read()
{
    m_input += m_socket->readAll();
    if (m_state != State::Reading)
        return;
    const int end = int(m_input.indexOf("\r\n\r\n"));
    if (end < 0)
        return;
    const QByteArray head = m_input.left(end);
    m_input.remove(0, end + 4);
    answer(parsed(head));
}

void HttpTestConnection::answer(const Request &request)
{
    m_state = State::Answering;
    m_plan = m_hooks.plan(request, &m_number);
    m_headOnly = request.method == "HEAD";
    m_sent = 0;
    m_start = 0;
    if (m_plan.stopListening)
        m_hooks.stopListening();
    if (m_plan.silent)
        return;
    if (m_plan.noAnswer || !m_plan.garbage.isEmpty()) {
        m_socket->write(m_plan.garbage);
        m_socket->disconnectFromHost();
        return;
    }

    if (m_plan.gzipAlways || (m_plan.gzip && request.header("Accept-Encoding").contains("gzip"))) {
        m_plan.content = gzipped(m_plan.content.mid(0, m_plan.content.size()));
        m_plan.headers.append(HttpHeader {"Content-Encoding", "gzip"});
        m_plan.ranges = false;
    }
    const qint64 total = m_plan.content.size();
    qint64 first = 0;
    qint64 last = -1;
    if (m_plan.status == 0) {
        m_plan.status = 200;
        if (m_plan.ranges && parseRange(request.header("Range"), &first, &last)) {
            m_plan.status = first < total ? 206 : 416;
            if (m_plan.status == 416) {
                m_plan.headers.append(
                    HttpHeader {"Content-Range", "bytes */" + QByteArray::number(total)});
                m_plan.content = QByteArray("<html>no such range</html>");
                first = 0;
            }
        }
    }
    last = last < 0 ? m_plan.content.size() - 1 : qMin(last, m_plan.content.size() - 1);
    m_start = first;
    m_length = last - first + 1;
    m_toSend = qMax<qint64>(0, m_length - m_plan.missing);
    if (m_plan.cutAfter >= 0)
        m_toSend = qMin(m_toSend, m_plan.cutAfter);

    m_head = "HTTP/1.1 " + QByteArray::number(m_plan.status) + " Answer\r\n";
    if (m_plan.status == 206) {
        const QByteArray range = contentRange(m_plan, first, last);
        if (!range.isEmpty())
            m_plan.headers.append(HttpHeader {"Content-Range", range});
    }
    if (m_plan.chunked)
        m_plan.headers.append(HttpHeader {"Transfer-Encoding", "chunked"});
    else if (m_plan.contentLength)
        m_plan.headers.append(HttpHeader {"Content-Length", QByteArray::number(m_length)});
    if (m_plan.ranges)
        m_plan.headers.append(HttpHeader {"Accept-Ranges", "bytes"});
    m_plan.headers.append(HttpHeader {
        "Connection", m_plan.ending == Plan::Ending::KeepAlive ? "keep-alive" : "close"});
    for (const auto &header : std::as_const(m_plan.headers))
        m_head += header.first + ": " + header.second + "\r\n";
    m_head += "\r\n";
    m_waiting = true;
    after(m_plan.answerDelayMs, &HttpTestConnection::sendHead);
}

void HttpTestConnection::sendHead()
{
    if (m_plan.endlessHead)
        return sendEndlessHead();
    if (m_plan.headLimit >= 0) {
        m_state = State::Stalled;
        m_socket->write(m_head.left(int(m_plan.headLimit)));
        if (m_plan.headCut)
            m_socket->disconnectFromHost();
        return;
    }
    m_socket->write(m_head);
    after(m_headOnly ? 0 : m_plan.bodyDelayMs, &HttpTestConnection::sendBody);
}

// Slowly: Qt 5 reads a head byte by byte, and hears of an abort only when there is nothing more to
// be read for the moment.
void HttpTestConnection::sendEndlessHead()
{
    constexpr int LineIntervalMs = 5;
    const QByteArray line = "X-More: " + QByteArray(100, 'x') + "\r\n";
    m_state = State::Stalled; // Nothing else is to be sent in between.
    if (m_sent++ == 0)
        m_socket->write("HTTP/1.1 200 Answer\r\n");
    if (m_socket->bytesToWrite() < UnsentLimit)
        m_socket->write(line);
    after(LineIntervalMs, &HttpTestConnection::sendEndlessHead);
}

void HttpTestConnection::sendBody()
{
    // Comes from the socket too, whenever some bytes have gone.
    if (m_state != State::Answering || m_waiting)
        return;
    if (m_headOnly)
        return bodySent();
    while (m_sent < m_toSend) {
        if (m_plan.stallAfter >= 0 && m_sent >= m_plan.stallAfter) {
            m_state = State::Stalled;
            return;
        }
        if (m_socket->bytesToWrite() > UnsentLimit)
            return;
        qint64 length = qMin(PieceSize, m_toSend - m_sent);
        if (m_plan.stallAfter >= 0)
            length = qMin(length, m_plan.stallAfter - m_sent);
        if (m_plan.dripBytes > 0)
            length = qMin(length, m_plan.dripBytes);
        sendPiece(length);
        if (m_plan.dripBytes > 0 && m_sent < m_toSend) {
            m_waiting = true;
            return after(m_plan.dripMs, &HttpTestConnection::sendBody);
        }
    }
    bodySent();
}

void HttpTestConnection::sendPiece(qint64 length)
{
    const QByteArray bytes = m_plan.content.mid(m_start + m_sent, length);
    m_sent += length;
    if (m_plan.chunked) {
        const bool isCut = m_plan.cutAfter >= 0 && m_sent == m_toSend;
        // A chunk that is cut promises more than follows.
        m_socket->write(QByteArray::number(isCut ? length + 100 : length, 16) + "\r\n");
        m_socket->write(bytes);
        if (!isCut)
            m_socket->write("\r\n");
    } else {
        m_socket->write(bytes);
    }
    m_hooks.sent(m_number, length);
}

void HttpTestConnection::bodySent()
{
    m_state = State::Ending;
    if (m_plan.chunked && m_plan.cutAfter < 0 && !m_headOnly)
        m_socket->write("0\r\n\r\n");
    if (m_plan.surplus > 0)
        m_socket->write(QByteArray(int(m_plan.surplus), 'x'));
    after(m_plan.closeDelayMs, &HttpTestConnection::end);
}

void HttpTestConnection::end()
{
    if (m_plan.ending == Plan::Ending::Reset)
        return resetWhenTaken();
    if (m_plan.ending == Plan::Ending::Close) {
        m_socket->disconnectFromHost();
        return;
    }
    m_state = State::Reading;
    // From the event loop: the next request may already be here, and its answer is not our
    // caller's.
    QTimer::singleShot(0, this, &HttpTestConnection::read);
}

void HttpTestConnection::resetWhenTaken()
{
    // A reset throws away what this side's kernel still holds, so wait until it holds nothing.
    int held = 0;
    const int socket = int(m_socket->socketDescriptor());
    if (m_socket->bytesToWrite() > 0 || (ioctl(socket, SIOCOUTQ, &held) == 0 && held > 0)) {
        QTimer::singleShot(5, this, &HttpTestConnection::resetWhenTaken);
        return;
    }
    const linger atOnce {1, 0};
    setsockopt(socket, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    m_socket->abort();
}

void HttpTestConnection::resume()
{
    if (m_state != State::Stalled)
        return;
    m_state = State::Answering;
    m_plan.stallAfter = -1;
    sendBody();
}

void HttpTestConnection::after(int ms, void (HttpTestConnection::*step)())
{
    const auto now = [this, step] {
        m_waiting = step == &HttpTestConnection::sendHead;
        if (m_state != State::Closed)
            (this->*step)();
    };
    if (ms > 0)
        QTimer::singleShot(ms, this, now);
    else
        now();
}
