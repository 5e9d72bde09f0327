// SPDX-License-Identifier: MIT
#include "plugin/dataroot.h"

#include "testutils/temporaryhome.h"
#include <QtTest>

class DataRootTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formsThePathsOfTheDevice();
    void putsTheSuffixBehindTheFolderNames();
    void followsTheVariableAtEachCall();
    void cleansTheVariable_data();
    void cleansTheVariable();
};

void DataRootTest::formsThePathsOfTheDevice()
{
    const TemporaryHome restoresTheVariable;
    qunsetenv("VEXA_MYDOCS");

    QCOMPARE(DataRoot::myDocs(), QStringLiteral("/home/user/MyDocs"));
    QCOMPARE(DataRoot::cities(), QStringLiteral("/home/user/MyDocs/cities"));
    QCOMPARE(DataRoot::catalogFolder(), QStringLiteral("/home/user/MyDocs/cities/Tessarin"));
    QCOMPARE(DataRoot::tileCacheFolder(), QStringLiteral("/home/user/MyDocs/cities/diskcache"));
    QCOMPARE(DataRoot::mountPoint(), QStringLiteral("/home/user/MyDocs/."));
}

void DataRootTest::putsTheSuffixBehindTheFolderNames()
{
    const TemporaryHome home;
    const QString suffix = QStringLiteral("_new");

    QCOMPARE(DataRoot::catalogFolder(suffix),
             home.myDocs() + QStringLiteral("/cities/Tessarin_new"));
    QCOMPARE(DataRoot::tileCacheFolder(suffix),
             home.myDocs() + QStringLiteral("/cities/diskcache_new"));
}

void DataRootTest::followsTheVariableAtEachCall()
{
    const TemporaryHome home;

    QCOMPARE(DataRoot::myDocs(), home.myDocs());
    qputenv("VEXA_MYDOCS", "/one");
    QCOMPARE(DataRoot::mountPoint(), QStringLiteral("/one/."));
    qputenv("VEXA_MYDOCS", "/two");
    QCOMPARE(DataRoot::cities(), QStringLiteral("/two/cities"));
}

void DataRootTest::cleansTheVariable_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QString>("cities");

    QTest::newRow("empty") << QByteArray("") << QStringLiteral("/home/user/MyDocs/cities");
    QTest::newRow("slash at the end") << QByteArray("/data/") << QStringLiteral("/data/cities");
    QTest::newRow("detours") << QByteArray("/a/../data//x/.") << QStringLiteral("/data/x/cities");
    QTest::newRow("root folder") << QByteArray("/") << QStringLiteral("/cities");
    QTest::newRow("blanks and other letters") << QByteArray("/my d\xc3\xb6"
                                                            "cs")
                                              << QStringLiteral("/my d\u00f6cs/cities");
}

void DataRootTest::cleansTheVariable()
{
    QFETCH(QByteArray, variable);
    QFETCH(QString, cities);
    const TemporaryHome restoresTheVariable;

    qputenv("VEXA_MYDOCS", variable);

    QCOMPARE(DataRoot::cities(), cities);
}

QTEST_GUILESS_MAIN(DataRootTest)
#include "tst_dataroot.moc"
