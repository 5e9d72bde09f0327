// SPDX-License-Identifier: MIT
#include "host/ui/selftest.h"

#include "host/shared/datafolder.h"
#include "host/shared/networksource.h"
#include "host/ui/demodata.h"
#include "host/ui/mapssession.h"
#include "host/ui/pageinspector.h"
#include "host/ui/uiengine.h"
#include "host/ui/updateviews.h"
#include "plugin/logger.h"
#include <chrono>
#include <cstdio>
#include <functional>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QTimer>

using namespace std::chrono_literals;

namespace {

constexpr auto Patience = 30s;
constexpr QSize Phone(360, 640);
constexpr QSize Desktop(1100, 760);
constexpr int PageCount = 4;

// No network, so that the installs that are shown stay where they are.
class NoNetwork : public NetworkSource
{
public:
    NetworkReport report() const override
    {
        NetworkReport report;
        report.standing = NetworkReport::Standing::Told;
        return report;
    }
};

QStringList *warnings()
{
    static QStringList list; // GUI thread only
    return &list;
}

void noteWarning(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    // Qt tells a loader of pictures, which runs in a thread, nothing that concerns the pages.
    if (type != QtDebugMsg && type != QtInfoMsg)
        QMetaObject::invokeMethod(qApp, [message] { warnings()->append(message); });
    std::fprintf(stderr, "%s\n", qPrintable(message));
}

bool waitUntil(const std::function<bool()> &condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > std::chrono::milliseconds(Patience).count())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
    }
    return true;
}

// Layouts are settled when a frame has been painted after the events that were pending.
void paint(QQuickWindow *window)
{
    for (int i = 0; i < 2; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        window->grabWindow();
    }
}

} // namespace

SelfTest::SelfTest(const QString &pictureFolder)
    : m_pictureFolder(pictureFolder)
{ }

SelfTest::~SelfTest()
{
    m_engine.reset();
    m_session.reset();
    qInstallMessageHandler(nullptr);
}

int SelfTest::run()
{
    qInstallMessageHandler(noteWarning);
    if (!prepare()) {
        std::fprintf(stderr, "The self-test cannot begin.\n");
        return EXIT_FAILURE;
    }
    for (const QSize size : {Phone, Desktop}) {
        for (const char *style : {"light", "dark"})
            walk(size, QLatin1String(style));
    }
    QCoreApplication::processEvents();
    m_faults += *warnings();
    for (const QString &fault : qAsConst(m_faults))
        std::fprintf(stderr, "%s\n", qPrintable(fault));
    std::printf("%d views, %d faults\n", m_views, int(m_faults.size()));
    return m_faults.isEmpty() && m_views > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

bool SelfTest::prepare()
{
    // The event loop must turn now and then, also where nothing happens.
    auto *const ticks = new QTimer(qApp);
    ticks->start(20ms);
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path())); // Qt would warn.
    if (!m_folder.isValid() || !DataFolder::use(m_folder.path()) || !DemoData::create())
        return false;
    UiEngine::prepareProcess();
    L::og()->setLogLevel(L::Off); // What the engine says of its work is no fault of a page.
    m_session = std::make_unique<MapsSession>(QStringLiteral("http://127.0.0.1:9/map5/"),
                                              std::make_unique<NoNetwork>());
    m_engine = std::make_unique<QQmlApplicationEngine>();
    UiEngine::prepareEngine(m_engine.get(), m_session.get());
    if (!UiEngine::loadWindow(m_engine.get()))
        return false;
    m_window = qobject_cast<QQuickWindow *>(m_engine->rootObjects().first());
    if (!m_window)
        return false;
    m_window->resize(Phone);
    look(QStringLiteral("opening"));
    m_session->open();
    return waitUntil([this] {
        return m_session->ready() && m_session->regions()->count() == DemoData::regionCount()
            && !m_session->regions()->loading();
    });
}

void SelfTest::walk(QSize size, const QString &style)
{
    m_where = QStringLiteral("%1x%2 %3: ").arg(size.width()).arg(size.height()).arg(style);
    m_window->resize(size);
    m_session->showStyle(style);
    walkRegions();
    walkOthers();
    walkUpdate();
}

void SelfTest::walkRegions()
{
    QObject *const page = object("regionsPage");
    m_window->setProperty("page", 0);
    look(QStringLiteral("regions"));
    call(page, "goDown", QStringLiteral("EU"));
    look(QStringLiteral("regions of Europe"));
    call(page, "goDown", QStringLiteral("DE"));
    look(QStringLiteral("regions of Germany"));
    for (const char *words : {"a", "south sandwich", "no such place"}) {
        object("search")->setProperty("text", QLatin1String(words));
        object("search")->setProperty("words", QLatin1String(words));
        look(QLatin1String("search ") + QLatin1String(words));
    }
    for (int i = 0; i < 3; ++i)
        call(page, "goBack");
    for (const char *id : {"GS", "FI", "DE"}) {
        call(m_window, "showDetails", QLatin1String(id));
        look(QLatin1String("details of ") + QLatin1String(id));
        closeDialogs();
    }
}

void SelfTest::walkOthers()
{
    RegionInstaller *const installer = m_session->installer();
    for (const bool busy : {false, true}) {
        if (busy) {
            installer->install(QStringLiteral("GS"));
            installer->install(QStringLiteral("SE"));
            installer->install(QStringLiteral("FI"));
        }
        for (int page = busy ? 0 : 1; page < PageCount; ++page) {
            m_window->setProperty("page", page);
            look(QStringLiteral("page %1%2").arg(page).arg(QLatin1String(busy ? ", busy" : "")));
        }
    }
    installer->pause();
    m_window->setProperty("page", 2);
    look(QStringLiteral("paused transfers"));
    call(m_window, "showDetails", QStringLiteral("GS"));
    look(QStringLiteral("details of a transfer"));
    closeDialogs();
    installer->resume();
    installer->cancelAll();
    look(QStringLiteral("cancelled transfers"));
    call(object("removeDialog"), "ask", QStringLiteral("DK"));
    if (!waitUntil([this] { return object("removeDialog")->property("counted").toBool(); }))
        m_faults.append(QStringLiteral("What a removal frees is never told."));
    look(QStringLiteral("removal"));
    closeDialogs();
    Q_EMIT m_session->noticed(QStringLiteral("A sentence of some length that tells of an error."),
                              true);
    look(QStringLiteral("notice"));
    object("notice")->setProperty("visible", false);
}

// The real update needs a server; the pages only need its values.
void SelfTest::walkUpdate()
{
    const QVariant real = m_window->property("update");
    for (const UpdateView &view : UpdateViews::all()) {
        const std::unique_ptr<QQmlPropertyMap> values = UpdateViews::values(view);
        m_window->setProperty("newerVersion", view.newerVersion);
        m_window->setProperty("update", QVariant::fromValue<QObject *>(values.get()));
        call(m_window, "showUpdate");
        look(QLatin1String("update ") + view.name);
        for (const char *dialog : {"giveUpDialog", "goBackDialog", "removeBackupDialog"}) {
            if (!view.dialogs.contains(QLatin1String(dialog)))
                continue;
            QMetaObject::invokeMethod(object(dialog), "open");
            look(QLatin1String(dialog) + QLatin1Char(' ') + view.name);
            QMetaObject::invokeMethod(object(dialog), "close");
        }
        if (view.showsElsewhere) {
            for (const int page : {0, 1, 3}) {
                m_window->setProperty("page", page);
                look(QStringLiteral("page %1, update ").arg(page) + view.name);
            }
            QObject *const settings = object("settingsView");
            settings->setProperty("contentY",
                                  settings->property("contentHeight").toReal()
                                      - settings->property("height").toReal());
            look(QLatin1String("end of the settings, update ") + view.name);
            settings->setProperty("contentY", 0);
            call(m_window, "showDetails", QStringLiteral("FI"));
            look(QLatin1String("details, update ") + view.name);
            closeDialogs();
        }
        m_window->setProperty("update", real);
    }
    m_window->setProperty("newerVersion", QString());
}

void SelfTest::look(const QString &what)
{
    paint(m_window);
    ++m_views;
    if (!m_pictureFolder.isEmpty())
        m_window->grabWindow().save(QStringLiteral("%1/%2 %3.png")
                                        .arg(m_pictureFolder)
                                        .arg(m_views, 3, 10, QLatin1Char('0'))
                                        .arg(what));
    const QStringList faults = PageInspector::faults(m_window);
    for (const QString &fault : faults)
        m_faults.append(m_where + what + QLatin1String(": ") + fault);
    for (const QString &warning : qAsConst(*warnings()))
        m_faults.append(m_where + what + QLatin1String(": ") + warning);
    warnings()->clear();
}

void SelfTest::call(QObject *object, const char *function, const QVariant &argument)
{
    const bool called = argument.isValid()
        ? QMetaObject::invokeMethod(object, function, Q_ARG(QVariant, argument))
        : QMetaObject::invokeMethod(object, function);
    if (!called)
        m_faults.append(QStringLiteral("There is no function %1.").arg(QLatin1String(function)));
}

void SelfTest::closeDialogs()
{
    for (const char *name : {"regionSheet", "removeDialog"})
        QMetaObject::invokeMethod(object(name), "close");
}

QObject *SelfTest::object(const char *name) const
{
    QObject *const found = m_window->findChild<QObject *>(QLatin1String(name));
    if (!found)
        qFatal("The window has no %s", name);
    return found;
}
