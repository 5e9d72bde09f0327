// SPDX-License-Identifier: MIT
#include "plugin/vexa.h"

#include "plugin/logger.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <dlfcn.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPluginLoader>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSettings>
#include <QtTest>

namespace {

const char Startup[] = "[TRACE] VEXA plugin startup.";
const char Finished[] = "[TRACE] VEXA plugin startup finished";

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

/** The application's settings file, before the plugin reads it. */
void writeSettings(const TemporaryHome &home, const QByteArray &text)
{
    const QString folder = home.settingsFolder() + QStringLiteral("/Orvel");
    QFile file(folder + QStringLiteral("/Maps.conf"));
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly)
        || file.write(text) != text.size())
        qFatal("%s cannot be written", qPrintable(file.fileName()));
}

QByteArray readSettings(const TemporaryHome &home)
{
    QFile file(home.settingsFolder() + QStringLiteral("/Orvel/Maps.conf"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** An engine and the two ways in which the plugin comes to it. */
class Engine
{
public:
    void importVexa()
    {
        m_engine.addImportPath(latin1(VEXA_QML_DIR));
        QQmlComponent component(&m_engine);
        component.setData("import QtQml 2.0\nimport Vexa 1.0\n"
                          "QtObject { property var uri: vexaBaseURI; property var assets: "
                          "vexaAssetsPath; property var logger: log }",
                          QUrl());
        m_object.reset(component.create());
        if (!m_object)
            qFatal("%s", qPrintable(component.errorString()));
    }

    void initialize(const char *uri = "Vexa") { m_plugin.initializeEngine(&m_engine, uri); }

    /** What a page read from the context when it was made. */
    QVariant seen(const char *name) const { return m_object->property(name); }
    QVariant context(const char *name) const
    {
        return m_engine.rootContext()->contextProperty(latin1(name));
    }
    void setContext(const char *name, const QVariant &value)
    {
        m_engine.rootContext()->setContextProperty(latin1(name), value);
    }
    QQmlContext *rootContext() const { return m_engine.rootContext(); }

private:
    QQmlEngine m_engine;
    VEXA m_plugin;
    std::unique_ptr<QObject> m_object;
};

} // namespace

class VexaTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasNothingOfItsOwnInTheMetaObject();
    void givesQmlItsPropertiesBeforeThePageIsMade();
    void usesDefaultsWithoutSettings();
    void defaultServerEndsInMap5();
    void tracesItsStartupAtLevelFour();
    void appliesTheLogLevel_data();
    void appliesTheLogLevel();
    void keepsTheLogLevelWithoutTheKey();
    void takesTheServerFromTheSettings_data();
    void takesTheServerFromTheSettings();
    void readsTheSettingsAfreshForEachEngine();
    void neverWritesTheSettings();
    void toleratesASettingsFileThatCannotBeRead();
    void keepsTheApplicationsOwnLog_data();
    void keepsTheApplicationsOwnLog();
    void keepsTheApplicationsOwnLogObject();
    void replacesALogThatHoldsNothing_data();
    void replacesALogThatHoldsNothing();
    void replacesANullLogObject();
    void doesNotCareAboutTheImportName();
    void setsEveryEngineUp();
    void tellsItsVerificationData();
    void keepsOnePluginObjectAndMakesANewOneAfterItsEnd();
};

void VexaTest::hasNothingOfItsOwnInTheMetaObject()
{
    const QMetaObject &meta = VEXA::staticMetaObject;

    QCOMPARE(meta.className(), "VEXA");
    QCOMPARE(meta.superClass(), &QQmlExtensionPlugin::staticMetaObject);
    QCOMPARE(meta.methodCount(), meta.methodOffset());
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.enumeratorCount(), meta.enumeratorOffset());
}

void VexaTest::givesQmlItsPropertiesBeforeThePageIsMade()
{
    const TemporaryHome home;
    writeSettings(home, "[vexa]\nvexaBaseURI=http://maps.example/map5/\n");
    const LogCatcher log(2);
    Engine engine;

    engine.importVexa();

    QCOMPARE(engine.seen("uri"), QVariant(QStringLiteral("http://maps.example/map5/")));
    QCOMPARE(engine.seen("assets"), QVariant(QStringLiteral("/usr/share/vexa/")));
    // The linked library's logger: plugin and library are one file, loaded once.
    QCOMPARE(engine.seen("logger").value<QObject *>(), static_cast<QObject *>(L::og()));
}

void VexaTest::usesDefaultsWithoutSettings()
{
    const TemporaryHome home;
    LogCatcher log(2);
    Engine engine;

    engine.initialize();

    QCOMPARE(int(engine.context("vexaBaseURI").userType()), int(QMetaType::QString));
    QCOMPARE(engine.context("vexaBaseURI").toString(), VEXA::defaultBaseUri());
    QCOMPARE(int(engine.context("vexaAssetsPath").userType()), int(QMetaType::QString));
    QCOMPARE(engine.context("vexaAssetsPath").toString(), QStringLiteral("/usr/share/vexa/"));
    QCOMPARE(engine.context("log").value<QObject *>(), static_cast<QObject *>(L::og()));
    QCOMPARE(L::og()->getLogLevel(), 2);
    QVERIFY(!log.contains(QStringLiteral("startup")));
}

void VexaTest::defaultServerEndsInMap5()
{
    QVERIFY(VEXA::defaultBaseUri().startsWith(QLatin1String("http")));
    QVERIFY(VEXA::defaultBaseUri().endsWith(QLatin1String("/map5/")));
}

void VexaTest::tracesItsStartupAtLevelFour()
{
    const TemporaryHome home;
    writeSettings(home, "[General]\nloglevel=4\n");
    LogCatcher log(2);
    Engine engine;

    engine.initialize();

    const QStringList texts = log.texts();
    QCOMPARE(int(texts.size()), 4);
    QCOMPARE(texts[0], QStringLiteral("Set loglevel to  4 "));
    QCOMPARE(texts[1], latin1(Startup));
    // Whether this machine has translations installed is not the test's business.
    QVERIFY(
        texts[2].startsWith(QLatin1String("[TRACE] Loaded translation from /usr/share/vexa/i18n/"))
        || texts[2] == QLatin1String("[WARNING] Warning: no translation file found for vexa"));
    QCOMPARE(texts[3], latin1(Finished));
}

void VexaTest::appliesTheLogLevel_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("level");

    QTest::newRow("off") << QByteArray("0") << 0;
    QTest::newRow("info") << QByteArray("3") << 3;
    QTest::newRow("trace") << QByteArray("4") << 4;
    QTest::newRow("above trace") << QByteArray("9") << 9;
    QTest::newRow("negative") << QByteArray("-2") << -2;
    QTest::newRow("quoted") << QByteArray("\"1\"") << 1;
    QTest::newRow("not a number") << QByteArray("trace") << 0;
    QTest::newRow("empty") << QByteArray("") << 0;
    QTest::newRow("a list") << QByteArray("3, 4") << 0;
}

void VexaTest::appliesTheLogLevel()
{
    QFETCH(QByteArray, value);
    QFETCH(int, level);
    const TemporaryHome home;
    writeSettings(home, "[General]\nloglevel=" + value + "\n");
    LogCatcher log(2);
    Engine engine;

    engine.initialize();

    QCOMPARE(L::og()->getLogLevel(), level);
    QCOMPARE(log.count(latin1(Startup)), level >= 4 ? 1 : 0);
    QCOMPARE(log.count(latin1(Finished)), level >= 4 ? 1 : 0);
    if (level <= 0)
        QVERIFY(log.lines().isEmpty());
}

void VexaTest::keepsTheLogLevelWithoutTheKey()
{
    const TemporaryHome home;
    writeSettings(home, "[General]\nother=4\n[vexa]\nloglevel=1\n");
    LogCatcher log(3);
    Engine engine;

    engine.initialize();

    QCOMPARE(L::og()->getLogLevel(), 3);
}

void VexaTest::takesTheServerFromTheSettings_data()
{
    QTest::addColumn<QByteArray>("settings");
    QTest::addColumn<QString>("server");

    QTest::newRow("absent") << QByteArray("[General]\nvexaBaseURI=http://wrong/group/\n")
                            << VEXA::defaultBaseUri();
    QTest::newRow("plain") << QByteArray("[vexa]\nvexaBaseURI=http://a.example:81/map5/\n")
                           << QStringLiteral("http://a.example:81/map5/");
    QTest::newRow("taken as it is")
        << QByteArray("[vexa]\nvexaBaseURI=anything\n") << QStringLiteral("anything");
    QTest::newRow("empty") << QByteArray("[vexa]\nvexaBaseURI=\n") << QString();
    QTest::newRow("comma without quotes")
        << QByteArray("[vexa]\nvexaBaseURI=http://a.example/x,y/map5/\n")
        << QStringLiteral("http://a.example/x,y/map5/");
}

void VexaTest::takesTheServerFromTheSettings()
{
    QFETCH(QByteArray, settings);
    QFETCH(QString, server);
    const TemporaryHome home;
    writeSettings(home, settings);
    const LogCatcher log(2);
    Engine engine;

    engine.initialize();

    QCOMPARE(int(engine.context("vexaBaseURI").userType()), int(QMetaType::QString));
    QCOMPARE(engine.context("vexaBaseURI").toString(), server);
}

void VexaTest::readsTheSettingsAfreshForEachEngine()
{
    const TemporaryHome home;
    writeSettings(home, "[General]\nloglevel=1\n[vexa]\nvexaBaseURI=http://one/map5/\n");
    const LogCatcher log(2);
    Engine first;
    first.initialize();
    QCOMPARE(L::og()->getLogLevel(), 1);

    QSettings settings(QStringLiteral("Orvel"), QStringLiteral("Maps"));
    settings.setValue(QStringLiteral("loglevel"), 3);
    settings.setValue(QStringLiteral("vexa/vexaBaseURI"), QStringLiteral("http://two/map5/"));
    settings.sync();
    Engine second;
    second.initialize();

    QCOMPARE(L::og()->getLogLevel(), 3);
    QCOMPARE(first.context("vexaBaseURI").toString(), QStringLiteral("http://one/map5/"));
    QCOMPARE(second.context("vexaBaseURI").toString(), QStringLiteral("http://two/map5/"));
}

void VexaTest::neverWritesTheSettings()
{
    const TemporaryHome home;
    const LogCatcher log(2);
    {
        Engine engine;
        engine.initialize();
        QVERIFY(!QFileInfo::exists(home.settingsFolder() + QStringLiteral("/Orvel")));
    }
    const QByteArray untidy = "[vexa]\nvexaBaseURI = http://b/map5/\n\n[General]\nloglevel=junk\n";
    writeSettings(home, untidy);
    Engine engine;

    engine.initialize();

    QCOMPARE(readSettings(home), untidy);
    QCOMPARE(QDir(home.settingsFolder() + QStringLiteral("/Orvel"))
                 .entryList(QDir::Files | QDir::Hidden),
             QStringList {QStringLiteral("Maps.conf")});
    QCOMPARE(engine.context("vexaBaseURI").toString(), QStringLiteral("http://b/map5/"));
}

void VexaTest::toleratesASettingsFileThatCannotBeRead()
{
    const TemporaryHome home;
    // A folder in its place: even root cannot read that.
    QVERIFY(QDir().mkpath(home.settingsFolder() + QStringLiteral("/Orvel/Maps.conf")));
    const LogCatcher log(2);
    Engine engine;

    engine.initialize();

    QCOMPARE(L::og()->getLogLevel(), 2);
    QCOMPARE(engine.context("vexaBaseURI").toString(), VEXA::defaultBaseUri());
}

void VexaTest::keepsTheApplicationsOwnLog_data()
{
    QTest::addColumn<QVariant>("own");

    QTest::newRow("text") << QVariant(QStringLiteral("mine"));
    QTest::newRow("empty text") << QVariant(QString(QLatin1String("")));
    QTest::newRow("number") << QVariant(0);
    QTest::newRow("list") << QVariant(QStringList {QStringLiteral("a")});
}

void VexaTest::keepsTheApplicationsOwnLog()
{
    QFETCH(QVariant, own);
    const TemporaryHome home;
    const LogCatcher log(2);
    Engine engine;
    engine.setContext("log", own);

    engine.initialize();

    QCOMPARE(engine.context("log"), own);
}

void VexaTest::keepsTheApplicationsOwnLogObject()
{
    const TemporaryHome home;
    const LogCatcher log(2);
    QObject own;
    Engine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("log"), &own);

    engine.importVexa();

    QCOMPARE(engine.context("log").value<QObject *>(), &own);
    QCOMPARE(engine.seen("logger").value<QObject *>(), &own);
}

void VexaTest::replacesALogThatHoldsNothing_data()
{
    QTest::addColumn<QVariant>("nothing");

    QTest::newRow("no value") << QVariant();
    QTest::newRow("text that is null") << QVariant(QString());
    QTest::newRow("nullptr") << QVariant::fromValue(nullptr);
}

void VexaTest::replacesALogThatHoldsNothing()
{
    QFETCH(QVariant, nothing);
    const TemporaryHome home;
    const LogCatcher log(2);
    Engine engine;
    engine.setContext("log", nothing);

    engine.initialize();

    QCOMPARE(engine.context("log").value<QObject *>(), static_cast<QObject *>(L::og()));
}

void VexaTest::replacesANullLogObject()
{
    const TemporaryHome home;
    const LogCatcher log(2);
    Engine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("log"),
                                             static_cast<QObject *>(nullptr));

    engine.initialize();

    QCOMPARE(engine.context("log").value<QObject *>(), static_cast<QObject *>(L::og()));
}

void VexaTest::doesNotCareAboutTheImportName()
{
    const TemporaryHome home;
    const LogCatcher log(2);
    Engine named;
    Engine unnamed;

    named.initialize("com.example.Other");
    unnamed.initialize(nullptr);

    QCOMPARE(named.context("vexaBaseURI").toString(), VEXA::defaultBaseUri());
    QCOMPARE(unnamed.context("vexaBaseURI").toString(), VEXA::defaultBaseUri());
    QCOMPARE(unnamed.context("vexaAssetsPath").toString(), QStringLiteral("/usr/share/vexa/"));
}

void VexaTest::setsEveryEngineUp()
{
    const TemporaryHome home;
    writeSettings(home, "[General]\nloglevel=4\n");
    LogCatcher log(2);
    Engine first;
    Engine second;

    first.importVexa();
    second.importVexa();

    QCOMPARE(first.seen("uri").toString(), VEXA::defaultBaseUri());
    QCOMPARE(second.seen("uri").toString(), VEXA::defaultBaseUri());
    QCOMPARE(log.count(latin1(Startup)), 2);
    QCOMPARE(log.count(latin1(Finished)), 2);
}

void VexaTest::tellsItsVerificationData()
{
    using Function = const char *(*)();

    const auto function =
        reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, "qt_plugin_query_verification_data"));

    QVERIFY(function);
    QCOMPARE(QByteArray(function()),
             QByteArray("pattern=QT_PLUGIN_VERIFICATION_DATA\nversion=4.7.4\ndebug=false\n"
                        "buildkey=armv6 linux g++-4 full-config"));
}

void VexaTest::keepsOnePluginObjectAndMakesANewOneAfterItsEnd()
{
    using Function = QObject *(*)();
    const auto instance = reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, "qt_plugin_instance"));
    QVERIFY(instance);

    const QPointer<QObject> first = instance();
    QVERIFY(qobject_cast<VEXA *>(first.data()));
    QCOMPARE(instance(), first.data());
    QPluginLoader loader(latin1(VEXA_LIBRARY_FILE));
    QCOMPARE(loader.instance(), first.data());

    delete first.data();
    const QPointer<QObject> second = instance();
    QVERIFY(first.isNull());
    QVERIFY(qobject_cast<VEXA *>(second.data()));
    QCOMPARE(instance(), second.data());
    QCOMPARE(loader.instance(), second.data());
}

QTEST_GUILESS_MAIN(VexaTest)
#include "tst_vexa.moc"
