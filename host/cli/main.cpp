// SPDX-License-Identifier: MIT
#include "host/cli/commandline.h"
#include "host/cli/signalwatcher.h"
#include "host/shared/loglines.h"
#include <QCoreApplication>
#include <QLatin1String>

int main(int argc, char *argv[])
{
    // Before any thread, so that all have the signals blocked.
    QCoreApplication application(argc, argv);
    SignalWatcher signalWatcher;
    LogLines::install();
    QCoreApplication::setApplicationName(QStringLiteral("vexa-maps"));
    QCoreApplication::setApplicationVersion(QLatin1String(VEXA_VERSION));
    return CommandLine(&signalWatcher).run(QCoreApplication::arguments());
}
