// SPDX-License-Identifier: MIT
#include "testutils/nginxserver.h"

#include "testutils/childprogram.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTcpServer>
#include <unistd.h>

namespace {

constexpr int PortTries = 20;
constexpr int StartLimitMs = 20000;

// Free at the moment: another program may take it before nginx does, then the next one is tried.
quint16 freePort()
{
    QTcpServer trial;
    if (!trial.listen(QHostAddress::LocalHost))
        qFatal("no port on loopback: %s", qPrintable(trial.errorString()));
    return trial.serverPort();
}

NginxServer::Place &place()
{
    static NginxServer::Place place {QStringLiteral("127.0.0.1"), {}};
    return place;
}

} // namespace

void NginxServer::setPlace(const Place &newPlace)
{
    place() = newPlace;
}

NginxServer::NginxServer()
{
    if (!m_prefix.isValid() || !QDir().mkpath(folder()))
        qFatal("no temporary folder: %s", qPrintable(m_prefix.errorString()));
    for (int i = 0; i < PortTries; ++i) {
        m_port = freePort();
        if (tryStart())
            return;
    }
    qFatal("nginx does not start: %s", m_process.readAllStandardError().constData());
}

NginxServer::~NginxServer()
{
    stop();
}

QString NginxServer::file(const char *name) const
{
    return m_prefix.filePath(QLatin1String(name));
}

QString NginxServer::folder() const
{
    return file("www");
}

void NginxServer::add(const QString &path, const QByteArray &bytes)
{
    QFile target(folder() + QLatin1Char('/') + path);
    if (!QDir().mkpath(QFileInfo(target).path()) || !target.open(QIODevice::WriteOnly)
        || target.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(target.fileName()));
}

QString NginxServer::url(const QByteArray &path) const
{
    return QStringLiteral("http://%1:%2%3")
        .arg(place().address)
        .arg(m_port)
        .arg(QString::fromUtf8(path));
}

void NginxServer::start()
{
    if (!isRunning() && !tryStart())
        qFatal("nginx does not start again: %s", m_process.readAllStandardError().constData());
}

void NginxServer::stop()
{
    m_process.kill();
    m_process.waitForFinished(-1);
}

bool NginxServer::isRunning() const
{
    return m_process.state() == QProcess::Running;
}

bool NginxServer::tryStart()
{
    writeConfiguration();
    QFile::remove(file("nginx.pid"));
    QStringList command = place().command
        + QStringList {QStringLiteral("/usr/sbin/nginx"),
                       QStringLiteral("-p"),
                       m_prefix.path(),
                       QStringLiteral("-c"),
                       file("nginx.conf"),
                       QStringLiteral("-e"),
                       file("error.log")};
    const QString program = command.takeFirst();
    startTiedToUs(m_process, program, command);
    QElapsedTimer clock;
    clock.start();
    // The pid file is written after the port was bound, so that the port is ours and not that of
    // somebody who was faster.
    while (clock.elapsed() < StartLimitMs && !m_process.waitForFinished(5)) {
        if (QFileInfo(file("nginx.pid")).size() > 0)
            return true;
        if (m_process.state() == QProcess::NotRunning)
            break;
    }
    stop();
    return false;
}

void NginxServer::writeConfiguration() const
{
    // One process, so that nothing is left when it is killed; files are sent as with the settings
    // that Debian ships.
    QByteArray text = R"(daemon off;
master_process off;
pid nginx.pid;
events { worker_connections 256; }
http {
    log_format entries '$request_method\t$request_uri\t$http_range\t$status\t$body_bytes_sent';
    access_log access.log entries;
    client_body_temp_path body;
    proxy_temp_path proxy;
    fastcgi_temp_path fastcgi;
    uwsgi_temp_path uwsgi;
    scgi_temp_path scgi;
    default_type application/octet-stream;
    sendfile on;
    tcp_nopush on;
    limit_rate @RATE@;
    server {
        listen @ADDRESS@:@PORT@;
        root www;
    }
}
)";
    // Else it gives its folders to "nobody", whom a user namespace need not know.
    if (geteuid() == 0)
        text.prepend("user root root;\n");
    text.replace("@RATE@", QByteArray::number(m_rateLimit));
    text.replace("@ADDRESS@", place().address.toLatin1());
    text.replace("@PORT@", QByteArray::number(m_port));
    QFile configuration(file("nginx.conf"));
    if (!configuration.open(QIODevice::WriteOnly) || configuration.write(text) != text.size())
        qFatal("%s cannot be written", qPrintable(configuration.fileName()));
}

QList<NginxServer::Entry> NginxServer::accessLog() const
{
    QFile log(file("access.log"));
    QList<Entry> entries;
    if (!log.open(QIODevice::ReadOnly))
        return entries;
    while (!log.atEnd()) {
        const QList<QByteArray> columns = log.readLine().trimmed().split('\t');
        if (columns.size() == 5)
            entries.append(
                {columns[0], columns[1], columns[2], columns[3].toInt(), columns[4].toLongLong()});
    }
    return entries;
}
