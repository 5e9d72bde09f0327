// SPDX-License-Identifier: MIT
// A host that shows a page: makes the library's objects and gives them to QML.
#include <cstdio>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QUrl>
#include <vexa/downloadmanageriface.h>
#include <vexa/mapcatalog.h>
#include <vexa/worker.h>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "Usage: show-page PAGE.qml\n");
        return 2;
    }

    MapCatalog catalog;
    Worker worker; // the thread in which downloads run
    DownloadManagerIface *downloads = worker.getDownloadManagerIface();
    QQmlApplicationEngine engine; // goes before the objects that its pages use
    engine.rootContext()->setContextProperty(QStringLiteral("catalog"), &catalog);
    engine.rootContext()->setContextProperty(QStringLiteral("downloads"), downloads);
    QObject::connect(&engine, &QQmlApplicationEngine::objectCreated, &application,
                     [](const QObject *page) {
                         if (!page) // why is on standard error
                             QCoreApplication::exit(1);
                     });
    QObject::connect(&worker, &Worker::engineReady, downloads, [&] {
        downloads->setHasWiFi(true); // what the platform says
        downloads->allowGoOnline(true); // nothing is fetched before both
        catalog.updateCatalog();
        engine.load(QUrl::fromLocalFile(QString::fromLocal8Bit(argv[1])));
    });
    worker.start();

    const int status = QGuiApplication::exec();
    downloads->prepareToDestroy();
    worker.stop();
    worker.wait();
    return status;
}
