// SPDX-License-Identifier: MIT
#include "plugin/vexaconstants.h"

#include "testutils/childprogram.h"
#include <dlfcn.h>
#include <QCoreApplication>
#include <QtTest>

namespace {

// Made while the program is loaded, as a host's own constants may be.
const QString MadeAtLoad = TMP_DIR_PATH_UNZIPPED_ARCHIVE + HTTP_CONTENT_RANGE_SEPARATOR_TOKEN;

} // namespace

class VexaConstantsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void haveTheirValues_data();
    void haveTheirValues();
    void areReadyWhenTheProgramIsLoaded();
    void mountPointFollowsTheVariableAtLoad_data();
    void mountPointFollowsTheVariableAtLoad();
};

void VexaConstantsTest::haveTheirValues_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("linked");
    QTest::addColumn<QString>("value");

#define CONSTANT(name, value)                                                                      \
    QTest::newRow(#name) << QByteArray(#name) << name << QStringLiteral(value)
    CONSTANT(VEXA_SETTINGS_FILE_NAME, "vexa");
    CONSTANT(TMP_DIR_PATH, "/MyDocs/.vexa/tmp/");
    CONSTANT(TMP_DIR_PATH_UNZIPPED_ARCHIVE, "/MyDocs/.vexa/tmp/unzipped");
    CONSTANT(HTTP_RANGE_TOKEN, "Range");
    CONSTANT(HTTP_CONTENT_RANGE_TOKEN, "Content-Range");
    CONSTANT(HTTP_CONTENT_LENGTH_TOKEN, "Content-Length");
    CONSTANT(HTTP_RANGE_VALUE_BYTES_TOKEN, "bytes=");
    CONSTANT(HTTP_CONTENT_RANGE_SEPARATOR_TOKEN, "/");
#undef CONSTANT
}

void VexaConstantsTest::haveTheirValues()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, linked);
    QFETCH(QString, value);

    QCOMPARE(linked, value);
    // Exported under its plain name, as a reference: the symbol holds the string's address.
    const auto *exported =
        static_cast<const QString *const *>(dlsym(RTLD_DEFAULT, name.constData()));
    QVERIFY(exported);
    QCOMPARE(**exported, value);
}

void VexaConstantsTest::areReadyWhenTheProgramIsLoaded()
{
    QCOMPARE(MadeAtLoad, QStringLiteral("/MyDocs/.vexa/tmp/unzipped/"));
}

void VexaConstantsTest::mountPointFollowsTheVariableAtLoad_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QByteArray>("mountPoint");

    QTest::newRow("on the device") << QString() << QByteArray("/home/user/MyDocs/.\n");
    QTest::newRow("elsewhere") << QStringLiteral("/data/") << QByteArray("/data/.\n");
}

void VexaConstantsTest::mountPointFollowsTheVariableAtLoad()
{
    QFETCH(QString, variable);
    QFETCH(QByteArray, mountPoint);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("VEXA_MYDOCS"));
    if (!variable.isEmpty())
        environment.insert(QStringLiteral("VEXA_MYDOCS"), variable);

    ChildProgram child(QCoreApplication::applicationFilePath(), {QStringLiteral("--mount-point")},
                       environment);

    QCOMPARE(child.waitForFinished(), 0);
    QCOMPARE(child.output(), mountPoint);
}

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(QStringLiteral("--mount-point"))) {
        puts(MOUNT_POINT_MY_DOCS.toUtf8().constData());
        return 0;
    }
    VexaConstantsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_vexaconstants.moc"
