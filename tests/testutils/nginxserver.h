// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/**
 * A real nginx on loopback that serves a folder of its own, as the current user, on a port that
 * was free. Everything it writes lies in a temporary folder. It dies with the test program, also
 * when that is killed; make it in a thread that outlives it.
 *
 * What no honest server does is HttpTestServer's business.
 */
class NginxServer
{
public:
    /** One answered request, as the access log has it. */
    struct Entry
    {
        QByteArray method;
        QByteArray path;
        QByteArray range; ///< the Range header, "-" without one
        int status = 0;
        qint64 bodyBytesSent = 0;
    };

    /** Where servers live: another network of the kernel's than the program's own. */
    struct Place
    {
        QString address; ///< on which they listen
        QStringList command; ///< that runs them there, in front of their own command line
    };
    /** For all servers that are made from now on; before that it is loopback. */
    static void setPlace(const Place &place);

    /** Serves when it returns; ends the test program if that cannot be. */
    NginxServer();
    ~NginxServer();
    NginxServer(const NginxServer &) = delete;
    NginxServer &operator=(const NginxServer &) = delete;

    /** The folder whose files are served; no slash at the end. */
    QString folder() const;
    /** Writes a file below folder(), making the folders in between. */
    void add(const QString &path, const QByteArray &bytes);
    /** The address of a path, e.g. url("/map5/FI.zip"). */
    QString url(const QByteArray &path = QByteArray("/")) const;
    quint16 port() const { return m_port; }

    /** Bytes per second for each answer, 0 for no limit; counts from the next start(). */
    void setRateLimit(qint64 bytesPerSecond) { m_rateLimit = bytesPerSecond; }
    /** Serves again, on the same port. */
    void start();
    /** Ends at once, as kill -9 does: running answers are cut. */
    void stop();
    bool isRunning() const;

    /** The answers that are over so far, in the order of their ends. */
    QList<Entry> accessLog() const;

private:
    bool tryStart();
    void writeConfiguration() const;
    QString file(const char *name) const;

    QTemporaryDir m_prefix;
    QProcess m_process;
    quint16 m_port = 0;
    qint64 m_rateLimit = 0;
};
