// SPDX-License-Identifier: MIT
/*
 * The start of the app, until the frame that shows the list of the world's regions: the plugin is
 * loaded and its hook has run, the catalogue is made. Both programs paint without a graphics card
 * and end with their frame, so that taking things down again does not count.
 */
#include "benchmarks/benchmarkdata.h"
#include "benchmarks/benchmarkrows.h"
#include "benchmarks/measure.h"
#include "catalog/mapdata.h"
#include "host/shared/regionmodel.h"
#include "host/ui/mapssession.h"
#include "host/ui/uiengine.h"

#include <cstdlib>
#include <ctime>
#include <memory>
#include <QGuiApplication>
#include <QLocale>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQuickWindow>

namespace {

void loadPlugin(QQmlApplicationEngine *engine)
{
    engine->addImportPath(QStringLiteral(VEXA_QML_DIR));
    QQmlComponent component(engine);
    component.setData("import QtQml 2.15\nimport Vexa 1.0\nQtObject { }", QUrl());
    const std::unique_ptr<QObject> object(component.create());
    if (!object || !engine->rootContext()->contextProperty(QStringLiteral("vexaBaseURI")).isValid())
        qFatal("%s", qPrintable(component.errorString()));
}

// Seconds of processor time since the program was started.
double usedTime()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

[[noreturn]] void endHere(double firstFrame)
{
    tell({{QStringLiteral("firstFrame"), firstFrame}});
    std::_Exit(EXIT_SUCCESS);
}

int showRegions(int expected)
{
    UiEngine::prepareProcess();
    MapsSession session {QString()};
    QQmlApplicationEngine engine;
    loadPlugin(&engine);
    UiEngine::prepareEngine(&engine, &session);
    if (!UiEngine::loadWindow(&engine, QSize(1100, 760)))
        return EXIT_FAILURE;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    const auto isListed = [&session, expected] {
        return session.isOpen() && !session.regions()->loading()
            && session.regions()->count() == expected;
    };
    QObject::connect(&session, &MapsSession::openChanged, window, [&session, window] {
        if (session.isOpen())
            QObject::connect(session.regions(), &RegionModel::loadingChanged, window,
                             &QQuickWindow::update);
    });
    QObject::connect(window, &QQuickWindow::frameSwapped, window,
                     [isListed, first = 0.0]() mutable {
                         if (first <= 0)
                             first = usedTime();
                         if (isListed())
                             endHere(first);
                     });
    QMetaObject::invokeMethod(&session, &MapsSession::open, Qt::QueuedConnection);
    return QGuiApplication::exec();
}

} // namespace

int main(int count, char *words[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(count, words);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--work"))
        return showRegions(arguments.value(2).toInt());

    BenchmarkRows rows(QStringLiteral("start"));
    const MapData data;
    const QList<CatalogRegion> regions = BenchmarkData::realRegions();
    const int expected = BenchmarkData::countOf(regions);
    data.setContent({});
    writeFile(data.catalogFile(), BenchmarkData::catalogXml(regions));
    writeFile(data.namesFile(), BenchmarkData::regionNamesXml(regions));
    const Ratios ratios =
        comparePairs([expected] { return measureSelf({QString::number(expected)}); },
                     [] { return measureProgram(QStringLiteral(VEXA_HELLO_WINDOW), {}); },
                     BenchmarkRows::pairs());
    const QString work = QStringLiteral("13: start of the app, %1 real regions listed")
                             .arg(QLocale::c().toString(expected));
    const QString peer = QStringLiteral("QML \"hello\" window");
    rows.atMost(work, peer, QStringLiteral("wall"), ratios.wall, 2.0);
    rows.atMost(work, peer, QStringLiteral("CPU"), ratios.cpu, 2.0);
    rows.addNote(
        QStringLiteral("The app's first frame, which says that the maps are being opened, comes "
                       "after %1 s of its %2 s of processor time; a \"hello\" window takes %3 s.")
            .arg(ratios.ours.told.value(QStringLiteral("firstFrame")).toDouble(), 0, 'f', 2)
            .arg(ratios.ours.cpu, 0, 'f', 2)
            .arg(ratios.peers.cpu, 0, 'f', 2));
    return rows.finish();
}
