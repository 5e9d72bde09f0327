// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/networksource.h"
#include "host/ui/mapssession.h"
#include "host/ui/pageinspector.h"
#include "host/ui/uiengine.h"
#include "plugin/dataroot.h"
#include "testcontent.h"
#include "testutils/nginxserver.h"
#include "testutils/temporaryhome.h"
#include <functional>
#include <memory>
#include <QAccessible>
#include <QDir>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtTest>

/** A network that the test switches. */
class TestNetwork : public NetworkSource
{
public:
    NetworkReport report() const override { return m_report; }

    void set(bool online, bool wifi)
    {
        m_report.standing = NetworkReport::Standing::Told;
        m_report.online = online;
        m_report.unmetered = wifi;
        Q_EMIT changed();
    }

private:
    NetworkReport m_report;
};

/**
 * The app's real window on an empty device, and a real web server with content. The tests do what
 * a user does: they look for what is shown, press, and type.
 */
class UiRig
{
public:
    static constexpr int Long = 60000; // ms, for what the engine does on a loaded machine

    UiRig()
        : content(server.folder() + QLatin1String("/map5"))
    {
        auto source = std::make_unique<TestNetwork>();
        network = source.get();
        network->set(true, true);
        session = std::make_unique<MapsSession>(server.url("/map5/"), std::move(source));
        UiEngine::prepareEngine(&engine, session.get());
        QObject::connect(&engine, &QQmlEngine::warnings, &engine,
                         [](const QList<QQmlError> &errors) {
                             for (const QQmlError &error : errors)
                                 QTest::qFail(qPrintable(error.toString()), __FILE__, __LINE__);
                         });
        if (!UiEngine::loadWindow(&engine))
            qFatal("the window cannot be made");
        window = qobject_cast<QQuickWindow *>(engine.rootObjects().first());
        window->resize(360, 640);
        window->requestActivate();
    }

    /** Puts the server's catalogue on the device, as a refresh would, and opens it. */
    bool openWithCatalog()
    {
        content.publish(QStringLiteral("1.0"));
        const QString folder = DataRoot::catalogFolder();
        QDir().mkpath(folder);
        for (const char *name : {"catalog-1.0.xml", "regionname-lang-001.xml"})
            QFile::copy(server.folder() + QLatin1String("/map5/") + QLatin1String(name),
                        folder + QLatin1Char('/') + QLatin1String(name));
        {
            MapCatalog catalog;
            catalog.setInstalledMapsVersion(QStringLiteral("1.0"));
            catalog.updateLocalContentFile();
        }
        return open();
    }

    bool open()
    {
        session->open();
        return QTest::qWaitFor([this] { return session->ready(); }, Long);
    }

    QQuickItem *named(const QString &name) { return PageInspector::findNamed(window, name); }

    /** Whether some shown text contains this. */
    bool shows(const QString &part)
    {
        const QList<QQuickItem *> items = PageInspector::shownItems(window->contentItem());
        return std::any_of(items.begin(), items.end(), [&part](const QQuickItem *item) {
            return item->inherits("QQuickText") && item->property("text").toString().contains(part);
        });
    }
    bool waitFor(const char *part)
    {
        const QString text = QString::fromUtf8(part);
        return QTest::qWaitFor([this, &text] { return shows(text); }, Long);
    }

    /** Presses the control with this spoken name, where a finger would; false if there is none. */
    bool press(const char *name)
    {
        const QString text = QString::fromUtf8(name);
        return pressItem([this, &text] { return named(text); });
    }

    /** Presses the row of the region with this name. */
    bool pressRow(const char *name)
    {
        const QString text = QString::fromUtf8(name);
        return pressItem([this, &text]() -> QQuickItem * {
            const QList<QQuickItem *> items = PageInspector::shownItems(window->contentItem());
            for (QQuickItem *item : items) {
                if (item->inherits("QQuickItemDelegate") && item->property("text") == text)
                    return item;
            }
            return nullptr;
        });
    }

    /** Until the server knows that nobody waits for the rest of this file any more. */
    bool waitForHangUp(const QByteArray &path)
    {
        return QTest::qWaitFor(
            [this, &path] {
                const QList<NginxServer::Entry> log = server.accessLog();
                return !log.isEmpty() && log.last().path == path;
            },
            Long);
    }

    void type(const QString &text)
    {
        for (const QChar letter : text)
            QTest::keyClick(window, letter.toLatin1());
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(window, key, modifiers);
    }

    RegionInstaller &installer() { return *session->installer(); }

    TemporaryHome home;
    NginxServer server;
    TestContent content;
    TestNetwork *network = nullptr; // the session's
    std::unique_ptr<MapsSession> session;
    QQmlApplicationEngine engine;
    QQuickWindow *window = nullptr; // the engine's

private:
    bool pressItem(const std::function<QQuickItem *()> &find)
    {
        const QQuickItem *item = nullptr;
        const bool found = QTest::qWaitFor(
            [&] {
                window->grabWindow(); // Layouts are made when a frame is painted.
                item = find();
                return item && item->isEnabled();
            },
            Long);
        if (!found)
            return false;
        const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, centre.toPoint());
        return true;
    }
};

/** A main function for tests with a window. */
#define UI_TEST_MAIN(TestClass)                                                                    \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        QGuiApplication application(argc, argv);                                                   \
        QTemporaryDir settings;                                                                    \
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());        \
        UiEngine::prepareProcess();                                                                \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
