// SPDX-License-Identifier: MIT
#include "host/shared/loglines.h"

#include "plugin/logger.h"
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QtGlobal>
#include <unistd.h>

namespace {

constexpr qint64 MaxFile = 128 * 1024; // bytes; then a new one is begun
// A full disk can be told of for hours, and flash memory wears out.
constexpr int MaxLines = 2000; // in an hour
constexpr qint64 Hour = 60 * 60 * 1000; // ms

std::atomic<bool> shown {false};
std::atomic<bool> isKept {false};
QtMessageHandler qtsHandler = nullptr;

/** The file, open until the end of the program. Any thread. */
class LogFile
{
public:
    void open(const QString &path)
    {
        const QMutexLocker lock(&m_mutex);
        m_path = path;
        m_size = QFileInfo(path).size();
        m_hour.start();
        m_linesLeft = MaxLines;
        reopen();
    }

    void append(const QByteArray &line)
    {
        const QMutexLocker lock(&m_mutex);
        if (m_descriptor < 0)
            return;
        if (m_hour.hasExpired(Hour)) {
            m_hour.start();
            m_linesLeft = MaxLines;
        }
        if (m_linesLeft == 0)
            return;
        --m_linesLeft;
        if (m_size > MaxFile)
            reopen();
        // What does not fit is not kept.
        if (::write(m_descriptor, line.constData(), size_t(line.size())) > 0)
            m_size += line.size();
    }

    static QString olderPath(const QString &path) { return path + QLatin1String(".old"); }

private:
    void reopen()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        const QByteArray path = QFile::encodeName(m_path);
        if (m_size > MaxFile) {
            std::rename(path.constData(), QFile::encodeName(olderPath(m_path)).constData());
            m_size = 0;
        }
        // Where it cannot be written there is none; that stops nobody's work.
        m_descriptor =
            ::open(path.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    }

    QMutex m_mutex;
    QString m_path;
    int m_descriptor = -1;
    qint64 m_size = 0; // in bytes
    QElapsedTimer m_hour;
    int m_linesLeft = 0; // of this hour
};

LogFile &logFile()
{
    static auto *const file = new LogFile; // lines come until the very end
    return *file;
}

// Beside the engine's lock, so with the data set's own home.
QString filePath()
{
    return QDir::homePath() + QLatin1String("/MyDocs/.vexa/vexa-maps.log");
}

// The library's lines come in quotes with a blank behind.
QString withoutQuotes(const QString &message)
{
    if (message.startsWith(QLatin1String("\"[")) && message.endsWith(QLatin1String("\" ")))
        return message.mid(1, message.size() - 3);
    return message;
}

// Any thread.
void handle(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    LogLines::note(withoutQuotes(message));
    if (shown || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", withoutQuotes(message).toLocal8Bit().constData());
    if (type == QtFatalMsg)
        std::abort();
}

// Any thread.
void handleAsQtDoes(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    LogLines::note(withoutQuotes(message));
    qtsHandler(type, context, message);
}

QList<QByteArray> linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // Somebody else may have made it larger.
    file.seek(qMax<qint64>(0, file.size() - 2 * MaxFile));
    QList<QByteArray> lines = file.readAll().split('\n');
    if (lines.constLast().isEmpty())
        lines.removeLast();
    return lines;
}

} // namespace

void LogLines::install()
{
    qInstallMessageHandler(handle);
}

void LogLines::installShown()
{
    qtsHandler = qInstallMessageHandler(nullptr); // which is Qt's own, or a test's
    qInstallMessageHandler(handleAsQtDoes);
}

void LogLines::show()
{
    shown = true;
}

void LogLines::keep(const QString &deed)
{
    logFile().open(filePath());
    isKept = true;
    if (L::og()->getLogLevel() < L::Warning)
        L::og()->setLogLevel(int(L::Warning));
    note(QStringLiteral("%1 %2, process %3: %4")
             .arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion(),
                  QString::number(QCoreApplication::applicationPid()), deed));
}

void LogLines::note(const QString &line)
{
    if (!isKept)
        return;
    QString text = line;
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    logFile().append(QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toUtf8() + ' '
                     + text.toUtf8() + '\n');
}

QStringList LogLines::kept(int count)
{
    const QList<QByteArray> lines = linesOf(LogFile::olderPath(filePath())) + linesOf(filePath());
    QStringList result;
    for (const QByteArray &line : lines.mid(qMax(0, int(lines.size()) - count)))
        result.append(QString::fromUtf8(line.constData(), line.size()));
    return result;
}
