// SPDX-License-Identifier: MIT
#include "plugin/logger.h"
#include "plugin/vexa.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <link.h>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSet>
#include <QtTest>

/** The module as an engine finds it in the build tree, and the file that is library and plugin. */
class QmlModuleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTheLibraryItself();
    void isImportedInItsOneVersion_data();
    void isImportedInItsOneVersion();
    void bringsNoTypes_data();
    void bringsNoTypes();
    void isLoadedOnceBesideTheLinkedLibrary();
    void loadsIntoAProgramThatDoesNotLinkIt();
    void exportsThePluginsFunctions();
};

namespace {

QString module(const char *file)
{
    return QStringLiteral(VEXA_QML_DIR) + QStringLiteral("/Vexa/") + QString::fromLatin1(file);
}

/** Empty if the document could be made, else why not. */
QString errorOf(const QByteArray &document)
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(VEXA_QML_DIR));
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.0\n" + document, QUrl());
    const std::unique_ptr<QObject> object(component.create());
    return object ? QString() : component.errorString();
}

} // namespace

void QmlModuleTest::isTheLibraryItself()
{
    QFile qmldir(module("qmldir"));
    QVERIFY(qmldir.open(QIODevice::ReadOnly));
    QCOMPARE(qmldir.readAll(), QByteArray("module Vexa\nplugin vexa\n"));

    // A copy would run its load-time initialisers a second time.
    QVERIFY(QFileInfo(module("libvexa.so")).isSymLink());
    QCOMPARE(QFileInfo(module("libvexa.so")).canonicalFilePath(),
             QFileInfo(QStringLiteral(VEXA_LIBRARY_FILE)).canonicalFilePath());
}

void QmlModuleTest::isImportedInItsOneVersion_data()
{
    QTest::addColumn<QByteArray>("import");
    QTest::addColumn<bool>("isThere");

    QTest::newRow("1.0") << QByteArray("import Vexa 1.0") << true;
    QTest::newRow("1.0 by name") << QByteArray("import Vexa 1.0 as Maps") << true;
    QTest::newRow("1.5") << QByteArray("import Vexa 1.5") << false;
    QTest::newRow("2.0") << QByteArray("import Vexa 2.0") << false;
}

void QmlModuleTest::isImportedInItsOneVersion()
{
    QFETCH(QByteArray, import);
    QFETCH(bool, isThere);
    const TemporaryHome home;
    const LogCatcher log(2);

    const QString error = errorOf(import + "\nQtObject { property string uri: vexaBaseURI }");

    QVERIFY2(error.isEmpty() == isThere, qPrintable(error));
}

void QmlModuleTest::bringsNoTypes_data()
{
    QTest::addColumn<QByteArray>("type");
    for (const char *type : {"VEXA", "L", "MapCatalog", "MapRegion", "DownloadManagerIface"})
        QTest::newRow(type) << QByteArray(type);
}

void QmlModuleTest::bringsNoTypes()
{
    QFETCH(QByteArray, type);
    const TemporaryHome home;
    const LogCatcher log(2);

    QVERIFY(errorOf("import Vexa 1.0\n" + type + " {}")
                .contains(QString::fromLatin1(type) + QStringLiteral(" is not a type")));
}

void QmlModuleTest::isLoadedOnceBesideTheLinkedLibrary()
{
    const TemporaryHome home;
    const LogCatcher log(2);
    QCOMPARE(errorOf("import Vexa 1.0\nQtObject {}"), QString());

    QStringList loaded;
    dl_iterate_phdr(
        [](dl_phdr_info *info, size_t, void *list) {
            const QString file = QFile::decodeName(info->dlpi_name);
            if (QFileInfo(file).fileName().startsWith(QLatin1String("libvexa")))
                static_cast<QStringList *>(list)->append(file);
            return 0;
        },
        &loaded);

    QVERIFY2(loaded.size() == 1, qPrintable(loaded.join(QLatin1Char(' '))));
}

void QmlModuleTest::loadsIntoAProgramThatDoesNotLinkIt()
{
    const TemporaryHome home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home.settingsFolder());
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setProcessChannelMode(QProcess::MergedChannels);

    program.start(QStringLiteral(VEXA_QML_LOADER), {QStringLiteral(VEXA_QML_DIR)});
    QVERIFY(program.waitForFinished());

    const QByteArray output = program.readAll();
    QVERIFY2(program.exitCode() == 0, output.constData());
    QVERIFY2(output.contains("uri " + VEXA::defaultBaseUri().toUtf8()), output.constData());
    QVERIFY2(output.contains("\"[ERROR] said by a page at Page.qml\" "), output.constData());
}

void QmlModuleTest::exportsThePluginsFunctions()
{
    QProcess nm;
    nm.start(QStringLiteral("nm"),
             {QStringLiteral("-D"), QStringLiteral("--defined-only"), QStringLiteral("-P"),
              QStringLiteral(VEXA_LIBRARY_FILE)});
    QVERIFY(nm.waitForFinished());

    QSet<QByteArray> functions;
    const QList<QByteArray> lines = nm.readAllStandardOutput().split('\n');
    for (const QByteArray &line : lines) {
        const QList<QByteArray> columns = line.split(' ');
        if (columns.value(1) == "T")
            functions.insert(columns[0]);
    }

    QVERIFY(functions.contains("qt_plugin_instance"));
    QVERIFY(functions.contains("qt_plugin_query_verification_data"));
    QVERIFY(functions.contains("_ZN1L2ogEv"));
    // Our own helpers stay inside.
    for (const QByteArray &name : std::as_const(functions))
        QVERIFY2(!name.contains("_GLOBAL__N_"), name.constData());
}

QTEST_GUILESS_MAIN(QmlModuleTest)
#include "tst_qmlmodule.moc"
