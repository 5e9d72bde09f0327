// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <QByteArray>
#include <QList>
#include <QNetworkReply>
#include <QObject>
#include <QString>
#include <QUrl>

class QNetworkAccessManager;
class QNetworkRequest;

/**
 * One file on a web server, read without storing it: in pieces from anywhere if the server knows
 * ranges, else once from its start to its end.
 *
 *     fetch()                          the whole file, if it is small
 *     open() --> Ranged   --> readAt()     any piece, asked for with a Range header
 *            --> Streamed --> readNext()   what comes next, from the first byte on
 *
 * Redirects are followed, and what is read later is asked of where they led. The file is taken as
 * it is (no compression on the way). An answer that does not fit what was asked, or what was told
 * before, is a failure: pieces of two files never mix.
 *
 * The calls wait in an event loop of their own, so that timers and signals go on; the object must
 * not be deleted meanwhile. They give up when nothing arrives for the time of patience, and when
 * abort() is called. After a failure every call fails.
 */
class HttpFile : public QObject
{
    Q_OBJECT

public:
    enum class Failure {
        None,
        Network, ///< it cannot be reached, is silent, breaks off, or answers nonsense
        Refused, ///< it answers well, but has no such file or does not give it
        Aborted,
    };
    enum class Access { Ranged, Streamed };

    /** The network is not owned and must live as long; patience in ms. */
    HttpFile(QNetworkAccessManager *network, const QUrl &url, int patience,
             QObject *parent = nullptr);
    ~HttpFile() override;

    /** The whole file, or nothing if it fails or is larger than that. Instead of open(). */
    std::optional<QByteArray> fetch(qint64 maxBytes);

    /** Asks for the first bytes; tells whether they came. */
    bool open();
    Access access() const;
    /** Bytes of the file; -1 if unknown. */
    qint64 size() const;

    /**
     * For Ranged: bytes from this place on, at least one and at most this many; none at the end.
     * Asks for more than is wanted, and keeps some of it for later.
     */
    std::optional<QByteArray> readAt(qint64 offset, qint64 maxBytes);
    /** For Streamed: the next bytes; none at the end. */
    std::optional<QByteArray> readNext();

    /** Ends the call that waits; it and all that follow fail. */
    void abort();

    Failure failure() const;
    /** What went wrong, for people. */
    QString errorString() const;
    /** Bytes of bodies that have arrived. */
    qint64 bytesReceived() const;

private:
    struct Range
    {
        qint64 first = 0;
        qint64 last = 0;
        qint64 total = 0;
    };
    struct Piece
    {
        qint64 offset = 0;
        QByteArray bytes;
    };

    static std::optional<Range> contentRange(const QNetworkReply &reply);
    QNetworkRequest request() const;
    void send(const QByteArray &range = QByteArray());
    void dropReply();
    int status() const;
    bool waitUntil(const std::function<bool()> &done);
    bool waitForHead();
    bool checkHead();
    bool checkEnd();
    bool takeBody(qint64 size, QByteArray *body);
    bool openStreamed();
    std::optional<QByteArray> kept(qint64 offset, qint64 maxBytes) const;
    bool fetchPiece(qint64 offset, qint64 size);
    void keep(const Piece &piece);
    bool fail(Failure failure, const QString &text);

    QNetworkAccessManager *const m_network; // not owned
    QUrl m_url;
    const int m_patience;
    std::unique_ptr<QNetworkReply> m_reply; // the one under way
    Access m_access = Access::Ranged;
    qint64 m_size = -1;
    QByteArray m_edition; // what the server says to tell one edition of the file from another
    bool m_editionKnown = false;
    QList<Piece> m_pieces; // the newest last
    qint64 m_nextOffset = -1; // behind the last piece that was asked for
    qint64 m_pieceSize = 0;
    qint64 m_bytesReceived = 0;
    Failure m_failure = Failure::None;
    QString m_errorString;
};
