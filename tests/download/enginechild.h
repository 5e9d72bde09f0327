// SPDX-License-Identifier: MIT
#pragma once

#include "download/downloadmanager.h"
#include "download/worker.h"
#include "testutils/childprogram.h"
#include "testutils/temporaryhome.h"
#include <cstdio>
#include <QCoreApplication>
#include <QFile>
#include <QSettings>
#include <QUrl>

/**
 * The download engine in a process of its own, which a test may kill. The test's own program is
 * started again; its main() hands over to runEngineChild() when isEngineChild().
 *
 * The child takes up what is queued and, if it is given an address, queues a download of it. It
 * ends with 0 when a download has finished or nothing is queued, with 3 when one has failed.
 */
inline bool isEngineChild(int argc, char **argv)
{
    return argc > 1 && qstrcmp(argv[1], "--engine") == 0;
}

inline QStringList engineChildArguments(const TemporaryHome &home, const QString &url = QString())
{
    QStringList arguments {QStringLiteral("--engine"), home.settingsFolder()};
    if (!url.isEmpty())
        arguments.append(url);
    return arguments;
}

inline int runEngineChild(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, arguments.at(2));
    Worker worker;
    const DownloadManagerIface *interface = worker.getDownloadManagerIface();
    QObject::connect(interface, &DownloadManagerIface::finished, &app, [&app] { app.exit(0); });
    QObject::connect(interface, &DownloadManagerIface::error, &app, [&app] { app.exit(3); });
    QObject::connect(&worker, &Worker::engineReady, &app, [&] {
        if (arguments.size() > 3) {
            const QString url = arguments.at(3);
            const QString file =
                DownloadManager::fileNameFromUrl(QUrl::fromEncoded(url.toLocal8Bit()));
            worker.enqueueRequest(Request(QStringLiteral("region"), DownloadRequest, file, url));
        }
        if (worker.getRequestQueue()->snapshot().isEmpty())
            app.exit(0);
        worker.getDownloadManager()->setHasWiFi(true);
        worker.getDownloadManager()->allowGoOnline(true);
    });
    worker.start();
    const int result = app.exec();
    worker.stop();
    worker.wait();

    QFile status(QStringLiteral("/proc/self/status"));
    if (status.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = status.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("VmHWM:"))
                std::printf("%s\n", line.constData());
        }
    }
    return result;
}

/** The child's peak of memory in KiB, once it has ended; 0 if it did not tell. */
inline qint64 peakMemoryOf(ChildProgram &child)
{
    const QByteArray output = child.output();
    const int at = int(output.indexOf("VmHWM:"));
    return at < 0 ? 0 : output.mid(at + 6).trimmed().split(' ').at(0).toLongLong();
}
