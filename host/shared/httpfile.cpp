// SPDX-License-Identifier: MIT
#include "host/shared/httpfile.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QRegularExpression>
#include <QTimer>

namespace {

constexpr qint64 FirstPiece = 64 * 1024;
// Who reads on and on is given ever larger pieces: each costs a round trip.
constexpr qint64 LargestPiece = 4 * 1024 * 1024;
constexpr qint64 MaxKept = 16 * 1024 * 1024;
// What may wait in memory until it is read; Qt has no limit of its own.
constexpr qint64 ReadBuffer = 1024 * 1024;

constexpr int StatusOk = 200;
constexpr int StatusPartial = 206;
constexpr int StatusNotSatisfiable = 416;

QByteArray rangeHeader(qint64 offset, qint64 size)
{
    return "bytes=" + QByteArray::number(offset) + '-' + QByteArray::number(offset + size - 1);
}

} // namespace

HttpFile::HttpFile(QNetworkAccessManager *network, const QUrl &url, int patience, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_url(url)
    , m_patience(patience)
{ }

HttpFile::~HttpFile()
{
    dropReply();
}

std::optional<QByteArray> HttpFile::fetch(qint64 maxBytes)
{
    send();
    if (!waitForHead())
        return std::nullopt;
    if (status() != StatusOk) {
        fail(Failure::Refused, tr("%1 gives status %2.").arg(m_url.toString()).arg(status()));
        return std::nullopt;
    }
    QByteArray bytes;
    while (const auto more = readNext()) {
        if (more->isEmpty())
            return bytes;
        bytes += *more;
        if (bytes.size() > maxBytes) {
            fail(Failure::Network, tr("%1 is far too large.").arg(m_url.toString()));
            break;
        }
    }
    return std::nullopt;
}

bool HttpFile::open()
{
    send(rangeHeader(0, FirstPiece));
    if (!waitForHead())
        return false;
    if (status() == StatusOk)
        return openStreamed();
    const auto range = contentRange(*m_reply);
    if (status() == StatusNotSatisfiable && range && range->total == 0) {
        m_size = 0; // No byte of an empty file can be given.
        dropReply();
        return true;
    }
    const bool fits = status() == StatusPartial && range && range->total > 0 && range->first == 0
        && range->last == qMin(FirstPiece, range->total) - 1;
    if (!fits) {
        // It tries to give a range but does not know how. Without one it may do.
        dropReply();
        m_editionKnown = false;
        send();
        return waitForHead() && openStreamed();
    }
    m_size = range->total;
    Piece piece;
    if (!takeBody(range->last + 1, &piece.bytes))
        return false;
    m_nextOffset = piece.bytes.size();
    m_pieceSize = FirstPiece;
    keep(piece);
    return true;
}

HttpFile::Access HttpFile::access() const
{
    return m_access;
}

qint64 HttpFile::size() const
{
    return m_size;
}

std::optional<QByteArray> HttpFile::readAt(qint64 offset, qint64 maxBytes)
{
    if (m_failure != Failure::None)
        return std::nullopt;
    if (offset < 0 || offset >= m_size || maxBytes <= 0)
        return QByteArray();
    if (auto bytes = kept(offset, maxBytes))
        return bytes;
    m_pieceSize = offset == m_nextOffset ? qMin(m_pieceSize * 2, LargestPiece) : FirstPiece;
    if (!fetchPiece(offset, qMin(qMax(m_pieceSize, maxBytes), m_size - offset)))
        return std::nullopt;
    return kept(offset, maxBytes);
}

std::optional<QByteArray> HttpFile::readNext()
{
    if (!m_reply || !waitUntil([this] { return m_reply->bytesAvailable() > 0; }))
        return std::nullopt;
    QByteArray bytes = m_reply->readAll();
    m_bytesReceived += bytes.size();
    if (bytes.isEmpty() && !checkEnd())
        return std::nullopt;
    return bytes;
}

void HttpFile::abort()
{
    if (m_failure != Failure::None)
        return;
    fail(Failure::Aborted, tr("Interrupted."));
    if (m_reply)
        m_reply->abort(); // Ends the wait; whoever waits drops the reply.
}

HttpFile::Failure HttpFile::failure() const
{
    return m_failure;
}

QString HttpFile::errorString() const
{
    return m_errorString;
}

qint64 HttpFile::bytesReceived() const
{
    return m_bytesReceived;
}

// "bytes 0-99/1000"; with status 416 "bytes */1000". A size that is not told is -1.
std::optional<HttpFile::Range> HttpFile::contentRange(const QNetworkReply &reply)
{
    static const QRegularExpression form(
        QStringLiteral("\\A\\s*bytes\\s+(?:(\\d{1,18})-(\\d{1,18})|\\*)/(\\d{1,18}|\\*)\\s*\\z"));
    const auto match =
        form.match(QString::fromLatin1(reply.rawHeader(QByteArrayLiteral("Content-Range"))));
    if (!match.hasMatch())
        return std::nullopt;
    Range range;
    range.first = match.captured(1).toLongLong();
    range.last = match.captured(2).toLongLong();
    const QString total = match.captured(3);
    range.total = total == QLatin1String("*") ? -1 : total.toLongLong();
    return range;
}

QNetworkRequest HttpFile::request() const
{
    QNetworkRequest request(m_url);
    // Also keeps Qt from unpacking what comes compressed, which would break every count.
    request.setRawHeader(QByteArrayLiteral("Accept-Encoding"), QByteArrayLiteral("identity"));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    return request;
}

void HttpFile::send(const QByteArray &range)
{
    QNetworkRequest request = this->request();
    if (!range.isEmpty())
        request.setRawHeader(QByteArrayLiteral("Range"), range);
    dropReply();
    m_reply.reset(m_network->get(request));
    m_reply->setReadBufferSize(ReadBuffer);
}

// Never called from one of the reply's own slots, so it may go at once.
void HttpFile::dropReply()
{
    if (!m_reply)
        return;
    m_reply->disconnect(this);
    m_reply->abort();
    m_reply.reset();
}

int HttpFile::status() const
{
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

// Returns once it is done or the reply is over; false if it was aborted or there was no news.
bool HttpFile::waitUntil(const std::function<bool()> &done)
{
    QTimer silence;
    silence.setSingleShot(true);
    while (m_failure == Failure::None && !done() && !m_reply->isFinished()) {
        QEventLoop loop;
        const auto news = [&loop] { loop.quit(); };
        connect(m_reply.get(), &QNetworkReply::metaDataChanged, &loop, news);
        connect(m_reply.get(), &QNetworkReply::readyRead, &loop, news);
        connect(m_reply.get(), &QNetworkReply::finished, &loop, news);
        bool silent = false;
        const auto timeout = connect(&silence, &QTimer::timeout, &loop, [&loop, &silent] {
            silent = true;
            loop.quit();
        });
        silence.start(m_patience);
        loop.exec();
        disconnect(timeout);
        if (silent && m_failure == Failure::None)
            return fail(Failure::Network,
                        tr("%1 has been silent for %2 s.")
                            .arg(m_url.host())
                            .arg(m_patience / 1000.0, 0, 'g', 3));
    }
    return m_failure == Failure::None;
}

// Until the answer's head is there. A redirect has a head too, but is not the answer.
bool HttpFile::waitForHead()
{
    const bool waited = waitUntil([this] { return status() != 0 && status() / 100 != 3; });
    return waited && checkHead();
}

bool HttpFile::checkHead()
{
    const int code = status();
    if (code == 0)
        return fail(Failure::Network,
                    tr("%1 cannot be reached: %2.").arg(m_url.host(), m_reply->errorString()));
    const QUrl url = m_reply->url();
    if (code != StatusOk && code != StatusPartial && code != StatusNotSatisfiable)
        return fail(Failure::Refused, tr("%1 gives status %2.").arg(url.toString()).arg(code));
    const QByteArray encoding = m_reply->rawHeader(QByteArrayLiteral("Content-Encoding"));
    if (!encoding.isEmpty() && encoding.compare("identity", Qt::CaseInsensitive) != 0)
        return fail(Failure::Network,
                    tr("%1 is compressed on the way, though it must not.").arg(url.toString()));
    const QByteArray edition = m_reply->rawHeader(QByteArrayLiteral("ETag")) + ' '
        + m_reply->rawHeader(QByteArrayLiteral("Last-Modified"));
    if (m_editionKnown && edition != m_edition)
        return fail(Failure::Network, tr("%1 has changed while it was read.").arg(url.toString()));
    m_edition = edition;
    m_editionKnown = true;
    m_url = url; // Mirrors may differ; stay with the one that has answered.
    return true;
}

bool HttpFile::checkEnd()
{
    if (m_reply->error() == QNetworkReply::NoError)
        return true;
    return fail(Failure::Network,
                tr("%1 breaks off: %2.").arg(m_url.toString(), m_reply->errorString()));
}

// Exactly so many bytes of the reply, which is over then.
bool HttpFile::takeBody(qint64 size, QByteArray *body)
{
    while (body->size() < size) {
        const auto more = readNext();
        if (!more)
            return false;
        if (more->isEmpty())
            return fail(Failure::Network,
                        tr("%1 gives fewer bytes than it says.").arg(m_url.toString()));
        *body += *more;
    }
    // A reply that reaches its end leaves the connection for the next request.
    const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
    if (length.toLongLong() == size && !waitUntil([] { return false; }))
        return false;
    dropReply();
    if (body->size() > size)
        return fail(Failure::Network,
                    tr("%1 gives more bytes than it says.").arg(m_url.toString()));
    return true;
}

bool HttpFile::openStreamed()
{
    if (status() != StatusOk)
        return fail(Failure::Refused,
                    tr("%1 gives status %2.").arg(m_url.toString()).arg(status()));
    m_access = Access::Streamed;
    const QVariant length = m_reply->header(QNetworkRequest::ContentLengthHeader);
    m_size = length.isValid() ? length.toLongLong() : -1;
    return true;
}

std::optional<QByteArray> HttpFile::kept(qint64 offset, qint64 maxBytes) const
{
    for (auto piece = m_pieces.crbegin(); piece != m_pieces.crend(); ++piece) {
        const qint64 start = offset - piece->offset;
        if (start >= 0 && start < piece->bytes.size())
            return piece->bytes.mid(int(start), int(qMin(maxBytes, piece->bytes.size() - start)));
    }
    return std::nullopt;
}

bool HttpFile::fetchPiece(qint64 offset, qint64 size)
{
    send(rangeHeader(offset, size));
    if (!waitForHead())
        return false;
    const auto range = contentRange(*m_reply);
    const bool fits = status() == StatusPartial && range && range->first == offset
        && range->last == offset + size - 1 && range->total == m_size;
    if (!fits)
        return fail(Failure::Network,
                    tr("%1 gives another part than was asked for.").arg(m_url.toString()));
    Piece piece;
    piece.offset = offset;
    if (!takeBody(size, &piece.bytes))
        return false;
    m_nextOffset = offset + size;
    keep(piece);
    return true;
}

void HttpFile::keep(const Piece &piece)
{
    m_pieces.append(piece);
    qint64 sum = 0;
    for (const Piece &each : std::as_const(m_pieces))
        sum += each.bytes.size();
    while (sum > MaxKept && m_pieces.size() > 1)
        sum -= m_pieces.takeFirst().bytes.size();
}

bool HttpFile::fail(Failure failure, const QString &text)
{
    if (m_failure == Failure::None) {
        m_failure = failure;
        m_errorString = text;
    }
    return false;
}
