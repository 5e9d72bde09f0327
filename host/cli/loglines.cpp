// SPDX-License-Identifier: MIT
#include "host/cli/loglines.h"

#include "plugin/logger.h"
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtGlobal>
#include <unistd.h>

namespace {

constexpr qint64 MaxFile = 128 * 1024; // bytes; then a new one is begun
constexpr int MaxLines = 2000; // of one run: a full disk can be told of for hours

std::atomic<bool> shown {false};
std::atomic<int> descriptor {-1}; // of the file; open until the end of the program
std::atomic<int> linesLeft {MaxLines};

// Beside the engine's lock, so with the data set's own home.
QString filePath()
{
    return QDir::homePath() + QLatin1String("/MyDocs/.vexa/vexa-maps.log");
}

QString olderPath()
{
    return filePath() + QLatin1String(".old");
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

void LogLines::show()
{
    shown = true;
}

void LogLines::keep(const QString &command)
{
    if (descriptor >= 0)
        return;
    const QByteArray path = QFile::encodeName(filePath());
    if (QFileInfo(filePath()).size() > MaxFile)
        std::rename(path.constData(), QFile::encodeName(olderPath()).constData());
    // Where it cannot be written there is none; that stops nobody's work.
    descriptor =
        ::open(path.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0)
        return;
    if (L::og()->getLogLevel() < L::Warning)
        L::og()->setLogLevel(int(L::Warning));
    note(QStringLiteral("vexa-maps %1, process %2: %3")
             .arg(QCoreApplication::applicationVersion(),
                  QString::number(QCoreApplication::applicationPid()), command));
}

void LogLines::note(const QString &line)
{
    if (descriptor < 0 || --linesLeft < 0)
        return;
    QString text = line;
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QByteArray bytes =
        QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toUtf8() + ' ' + text.toUtf8() + '\n';
    // In one call, so that lines of several threads do not mix. What does not fit is not kept.
    if (::write(descriptor, bytes.constData(), size_t(bytes.size())) < 0)
        return;
}

QStringList LogLines::kept(int count)
{
    const QList<QByteArray> lines = linesOf(olderPath()) + linesOf(filePath());
    QStringList result;
    for (const QByteArray &line : lines.mid(qMax(0, int(lines.size()) - count)))
        result.append(QString::fromUtf8(line.constData(), line.size()));
    return result;
}
