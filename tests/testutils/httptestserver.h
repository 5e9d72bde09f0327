// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <vector>

struct HttpTestPlan;

/** Name and value of one line of a head. */
using HttpHeader = QPair<QByteArray, QByteArray>;

/**
 * A web server on loopback that misbehaves on order: what a real one cannot be made to do at the
 * wished byte. For everything that an honest server does there is NginxServer.
 *
 *     HttpTestServer server;
 *     server.add("/FI.zip", archive, HttpTestServer::CutAfter(1 * MiB));
 *     startTransfer(server.url("/FI.zip"));
 *
 * A path has a content and a queue of behaviours: the n-th request of the path gets the n-th
 * behaviour, the last one repeats. Without a behaviour the server is honest: 200, or 206 for
 * "bytes=N-" and "bytes=N-M", 416 from the end of the content on; connections are kept alive.
 * A path that was not added gives 404.
 *
 * It serves in a thread of its own, so a test may block; all members may be called from any thread.
 */
class HttpTestServer
{
public:
    /** What is served: bytes, or a size and a seed from which they are made while they are sent. */
    class Content
    {
    public:
        Content(const QByteArray &bytes = QByteArray());
        /** Content too large to keep; generatedBytes() tells what it is. */
        static Content generated(quint32 seed, qint64 size);

        qint64 size() const { return m_size; }
        QByteArray mid(qint64 offset, qint64 length) const;

    private:
        QByteArray m_bytes;
        quint32 m_seed = 0;
        qint64 m_size = 0;
        bool m_generated = false;
    };

    /** Any piece of a generated content, to compare with what arrived. */
    static QByteArray generatedBytes(quint32 seed, qint64 offset, qint64 length);

    /** How one request is answered; two are put together with |, the right one wins. */
    class Behaviour
    {
    public:
        Behaviour() = default;
        explicit Behaviour(std::function<void(HttpTestPlan &)> step) { m_steps.push_back(step); }
        Behaviour operator|(const Behaviour &other) const;
        void apply(HttpTestPlan &plan) const;

    private:
        std::vector<std::function<void(HttpTestPlan &)>> m_steps;
    };

    /** Honest, with ranges. */
    static Behaviour Whole();
    /** 200 with the whole content, whatever range is asked for. */
    static Behaviour NoRange();
    /** Closes the connection after this many bytes of the body. */
    static Behaviour CutAfter(qint64 bytes);
    /** The same with a reset (RST), once those bytes have been taken by the other side's kernel. */
    static Behaviour ResetAfter(qint64 bytes);
    /** Sends this many bytes of the body and then nothing more, until resumeStalled(). */
    static Behaviour StallAfter(qint64 bytes);
    /** Sends the body in pieces of this size, one every so many milliseconds. */
    static Behaviour Drip(qint64 bytes, int intervalMs);
    /** Sends this many bytes fewer than Content-Length says and closes. */
    static Behaviour ShortBody(qint64 missing);
    /** Sends this many bytes more than Content-Length says and closes. */
    static Behaviour ExtraBytes(qint64 surplus);
    /** No Content-Length: the end of the connection is the end of the body. */
    static Behaviour NoContentLength();
    /** Chunked transfer encoding. */
    static Behaviour Chunked();
    /** The same, cut inside a chunk after this many bytes of the body. */
    static Behaviour ChunkedCut(qint64 bytes);
    /** 206 whose Content-Range names another first byte (off by this much); the body is right. */
    static Behaviour WrongRangeStart(qint64 offset = 1);
    /** 206 whose Content-Range names another size of the whole. */
    static Behaviour WrongRangeTotal(qint64 total);
    /** 206 whose Content-Range has "*" for the size of the whole. */
    static Behaviour UnknownRangeTotal();
    /** 206 with this text as Content-Range. */
    static Behaviour ContentRangeText(const QByteArray &value);
    /** 206 without Content-Range. */
    static Behaviour MissingContentRange();
    /** This status, with this body in place of the content. */
    static Behaviour Status(int code, const QByteArray &body = QByteArray("<html>no</html>"));
    /**
     * This status and head at once; after a delay the body, after another one the end of the
     * connection, which alone ends the reply. Error and end of the reply so come apart.
     */
    static Behaviour ErrorThenClose(int code, int bodyDelayMs = 50, int closeDelayMs = 50);
    /** Sends the client on to this address. */
    static Behaviour Redirect(const QString &url, int code = 302);
    /** Compresses the body if the request accepts gzip, else honest. Not for generated content. */
    static Behaviour Gzip();
    /** Compresses the body whatever the request accepts. Not for generated content. */
    static Behaviour GzipUnasked();
    /** Sends this many bytes of the head and then nothing more. */
    static Behaviour StallInHead(qint64 bytes);
    /** Sends this many bytes of the head and closes. */
    static Behaviour CutInHead(qint64 bytes);
    /** A head that goes on, some 20 kB a second, until the client has had enough. */
    static Behaviour EndlessHead();
    /** Takes the request and never answers. */
    static Behaviour SilentAccept();
    /** Answers with bytes that are not HTTP and closes. */
    static Behaviour Garbage();
    /** Closes the connection without a byte. */
    static Behaviour CloseAtOnce();
    /** The content is another one, at this request (at all following ones too if it is last). */
    static Behaviour ChangedFile(const Content &content);
    /** Waits before the status line. */
    static Behaviour DelayBeforeAnswer(int ms);
    /** Waits between the head and the body. */
    static Behaviour DelayBeforeBody(int ms);
    /** One more line in the head. */
    static Behaviour Header(const QByteArray &name, const QByteArray &value);
    /** Closes after the answer and accepts no connection any more, until start(). */
    static Behaviour RefuseAfter();

    /** One request as it arrived. */
    class Request
    {
    public:
        QByteArray method;
        QByteArray path;
        QList<HttpHeader> headers;

        /** The value of a header, its name in any case; null if it was not sent. */
        QByteArray header(const QByteArray &name) const;
        bool hasHeader(const QByteArray &name) const { return !header(name).isNull(); }
    };

    enum class Security {
        Plain,
        Tls, ///< with a certificate of its own for 127.0.0.1, which certificate() gives
    };

    /** Listens when it returns; ends the test program if that cannot be. */
    explicit HttpTestServer(Security security = Security::Plain);
    ~HttpTestServer();
    HttpTestServer(const HttpTestServer &) = delete;
    HttpTestServer &operator=(const HttpTestServer &) = delete;

    /** Adds or replaces a path; its count of requests starts anew. */
    void add(const QByteArray &path, const Content &content,
             const Behaviour &behaviour = Behaviour());
    /** The same with one behaviour a request. */
    void add(const QByteArray &path, const Content &content,
             const std::vector<Behaviour> &behaviours);
    /** From now on the path gives 404. */
    void remove(const QByteArray &path);

    /** The address of a path, with the server's number address and port. */
    QString url(const QByteArray &path = QByteArray("/")) const;
    quint16 port() const;
    /** The certificate of a TLS server, PEM; whoever trusts it can connect without an error. */
    QByteArray certificate() const;

    /** All requests so far, of all paths. */
    int requestCount() const;
    /** How often this path was asked for. */
    int requestCount(const QByteArray &path) const;
    /** The i-th request, from 0; an empty one if there is none. */
    Request request(int i) const;
    QList<Request> requests() const;
    /** Bytes of body handed to the kernel so far for the i-th request. */
    qint64 bodyBytesSent(int i) const;
    /** Connections that are open now. */
    int openConnections() const;

    /** Goes on with the bodies that StallAfter holds. */
    void resumeStalled();
    /** Drops all connections and refuses new ones, as a server that was stopped. */
    void stop();
    /** Accepts again, on the same port. */
    void start();

private:
    class Private;
    std::unique_ptr<Private> d;
};
