// SPDX-License-Identifier: MIT
#include "testutils/logcatcher.h"

#include "plugin/logger.h"
#include <QMutex>
#include <QMutexLocker>
#include <utility>

namespace {

QMutex mutex;
QList<LogLine> caught;

void catchLine(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    const QMutexLocker lock(&mutex);
    caught.append({type, text});
}

} // namespace

LogCatcher::LogCatcher(int level)
    : m_previousHandler(qInstallMessageHandler(catchLine))
    , m_previousLevel(L::og()->getLogLevel())
{
    if (level >= 0)
        L::og()->setLogLevel(level);
    clear();
}

LogCatcher::~LogCatcher()
{
    L::og()->setLogLevel(m_previousLevel);
    qInstallMessageHandler(m_previousHandler);
}

QList<LogLine> LogCatcher::lines() const
{
    QList<LogLine> copy;
    const QMutexLocker lock(&mutex);
    // One by one: a list that is shared is read here and changed there without the lock.
    copy.reserve(caught.size());
    for (const LogLine &line : std::as_const(caught))
        copy.append(line);
    return copy;
}

QStringList LogCatcher::textsWithout(const QString &part) const
{
    QStringList texts;
    for (const QString &text : this->texts()) {
        if (!text.contains(part))
            texts.append(text);
    }
    return texts;
}

QStringList LogCatcher::texts() const
{
    QStringList texts;
    for (const LogLine &line : lines()) {
        QString text = line.text;
        if (text.startsWith(QLatin1Char('"')) && text.endsWith(QLatin1String("\" ")))
            text = text.mid(1, text.size() - 3);
        texts.append(text);
    }
    return texts;
}

int LogCatcher::count(const QString &text) const
{
    return int(texts().count(text));
}

bool LogCatcher::contains(const QString &part) const
{
    for (const LogLine &line : lines()) {
        if (line.text.contains(part))
            return true;
    }
    return false;
}

void LogCatcher::clear()
{
    const QMutexLocker lock(&mutex);
    caught.clear();
}
