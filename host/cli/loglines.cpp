// SPDX-License-Identifier: MIT
#include "host/cli/loglines.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <QString>
#include <QtGlobal>

namespace {

std::atomic<bool> shown {false};

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
    if (shown || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", withoutQuotes(message).toLocal8Bit().constData());
    if (type == QtFatalMsg)
        std::abort();
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
