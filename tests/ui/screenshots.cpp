// SPDX-License-Identifier: MIT
// Makes pictures of the main pages from a device and a server that tools/screenshots prepares:
// three installs are queued against a slow server, and the pages are taken while the first one
// runs.
#include "host/shared/datafolder.h"
#include "host/shared/networksource.h"
#include "host/ui/mapssession.h"
#include "host/ui/uiengine.h"
#include "host/ui/uioptions.h"
#include <chrono>
#include <cstdio>
#include <functional>
#include <QCursor>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

constexpr auto Patience = 120s;
constexpr double EnoughProgress = 0.3;
const char *const Queued[] = {"SE", "NO", "IS"};

class WifiEverywhere : public NetworkSource
{
public:
    NetworkReport report() const override
    {
        NetworkReport report;
        report.standing = NetworkReport::Standing::Told;
        report.online = true;
        report.unmetered = true;
        return report;
    }
};

void waitUntil(const char *what, const std::function<bool()> &condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > std::chrono::milliseconds(Patience).count())
            qFatal("waited in vain: %s", what);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
    }
}

class Photographer
{
public:
    Photographer(QQuickWindow *window, const QString &prefix)
        : m_window(window)
        , m_prefix(prefix)
    { }

    QObject *object(const char *name) const
    {
        QObject *const found = m_window->findChild<QObject *>(QLatin1String(name));
        if (!found)
            qFatal("the window has no %s", name);
        return found;
    }

    void call(const char *name, const char *function, const char *argument)
    {
        if (!QMetaObject::invokeMethod(object(name), function,
                                       Q_ARG(QVariant, QVariant(QLatin1String(argument)))))
            qFatal("%s has no function %s", name, function);
    }

    void showDetails(const char *id)
    {
        QMetaObject::invokeMethod(m_window, "showDetails",
                                  Q_ARG(QVariant, QVariant(QLatin1String(id))));
    }

    void showPage(int number) { m_window->setProperty("page", number); }

    void take(const char *name)
    {
        for (int i = 0; i < 3; ++i) { // layouts are settled after a frame
            QCoreApplication::processEvents();
            m_window->grabWindow();
        }
        const QString path = m_prefix + QLatin1String(name) + QLatin1String(".png");
        if (!m_window->grabWindow().save(path))
            qFatal("%s cannot be written", qPrintable(path));
        std::printf("%s\n", qPrintable(path));
    }

private:
    QQuickWindow *const m_window; // the engine's
    const QString m_prefix;
};

void takeAll(Photographer &photographer)
{
    photographer.call("regionsPage", "goDown", "UN150");
    photographer.call("regionsPage", "goDown", "UN154");
    photographer.take("regions");
    photographer.showDetails("FI");
    photographer.take("details");
    QMetaObject::invokeMethod(photographer.object("regionSheet"), "close");
    photographer.showPage(1);
    photographer.take("installed");
    photographer.call("removeDialog", "ask", "FI");
    waitUntil("what a removal frees", [&photographer] {
        return photographer.object("removeDialog")->property("counted").toBool();
    });
    photographer.take("removal");
    QMetaObject::invokeMethod(photographer.object("removeDialog"), "close");
    photographer.showPage(2);
    photographer.take("transfers");
    photographer.showPage(3);
    photographer.take("settings");
}

int run(const UiOptions &options)
{
    QTimer ticks; // The event loop must turn also where nothing happens.
    ticks.start(20ms);
    if (!DataFolder::use(options.dataFolder))
        qFatal("--data-dir is missing");
    UiEngine::prepareProcess();
    MapsSession session(options.baseUri, std::make_unique<WifiEverywhere>());
    session.showStyle(options.style);
    QQmlApplicationEngine engine;
    UiEngine::prepareEngine(&engine, &session);
    if (!UiEngine::loadWindow(&engine))
        return EXIT_FAILURE;
    auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().first());
    window->resize(options.size);
    QCursor::setPos(795, 795); // Outside of the window, where it hovers over nothing.
    session.open();
    waitUntil("the catalogue", [&session] {
        return session.ready() && session.regions()->count() > 0 && !session.regions()->loading();
    });
    for (const char *id : Queued)
        session.installer()->install(QLatin1String(id));
    const QString first = QLatin1String(Queued[0]);
    waitUntil("the first download", [&session, &first] {
        return session.installer()->state(first) == QLatin1String("downloading")
            && session.installer()->progress(first) >= EnoughProgress;
    });
    Photographer photographer(window, options.pictureFolder);
    takeAll(photographer);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const UiOptions options = UiOptions::parse(arguments);
    if (!options.errorString.isEmpty())
        qFatal("%s", qPrintable(options.errorString));
    options.applyLocale();
    QGuiApplication application(argc, argv);
    return run(options);
}
