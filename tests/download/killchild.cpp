// SPDX-License-Identifier: MIT
// A host that installs a list of regions and ends when its queue is empty. tst_killchain kills it.
// Arguments: a marker file, then id, address, destination and "unzip" or "keep" for each region.
#include "download/downloadmanageriface.h"
#include "download/worker.h"
#include "plugin/logger.h"

#include <cstdio>
#include <QCoreApplication>
#include <QFile>
#include <QStringList>
#include <QThread>

namespace {

void say(const QString &text)
{
    std::fprintf(stdout, "%s\n", text.toUtf8().constData());
    std::fflush(stdout);
}

// Once, as a user does; an order that was itself cut short is given anew.
void orderRegions(Worker &worker, const QStringList &arguments)
{
    QFile marker(arguments.at(1));
    if (marker.exists())
        return;
    worker.getRequestQueue()->restoreSaved();
    worker.getRequestQueue()->removeAllRequests();
    for (int i = 2; i + 3 < arguments.size(); i += 4) {
        worker.getDownloadManagerIface()->download(arguments.at(i), arguments.at(i + 1),
                                                   arguments.at(i + 2),
                                                   arguments.at(i + 3) == QLatin1String("unzip"));
    }
    if (!marker.open(QIODevice::WriteOnly))
        qFatal("no marker");
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    L::og()->setLogLevel(L::Info);
    Worker worker;
    worker.setUnpackPause(0);
    DownloadManagerIface *iface = worker.getDownloadManagerIface();
    orderRegions(worker, QCoreApplication::arguments());

    const auto quitIfDone = [iface] {
        if (iface->getRequests().isEmpty())
            QCoreApplication::quit();
    };
    QObject::connect(iface, &DownloadManagerIface::requestsChanged, &app, quitIfDone,
                     Qt::QueuedConnection);
    QObject::connect(
        &worker, &Worker::engineReady, &app,
        [iface, quitIfDone] {
            iface->setHasWiFi(true);
            iface->allowGoOnline(true);
            quitIfDone();
        },
        Qt::QueuedConnection);
    QObject::connect(iface, &DownloadManagerIface::error, &app,
                     [](int operation, const QString &id, int code, const QString &) {
                         say(QStringLiteral("error %1 %2 %3").arg(operation).arg(id).arg(code));
                     });
    worker.start();
    app.exec();
    worker.stop();
    worker.wait();
    say(QStringLiteral("done"));
    return 0;
}
