// SPDX-License-Identifier: MIT
#include "download/download.h"

#include "download/settingsfile.h"
#include <QtTest>

namespace {

constexpr qint64 FiveGiB = Q_INT64_C(5) * 1024 * 1024 * 1024;

Download someDownload()
{
    Download download;
    download.url = QUrl(QStringLiteral("http://h:8080/map5/FI.zip?a=1&b=%2F#x"));
    download.fileName = QStringLiteral("/home/u/FI.zip");
    download.bytesReceived = 1000;
    download.bytesTotal = 2000;
    download.downloadType = 1;
    return download;
}

} // namespace

class DownloadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newRecordIsEmpty();
    void writesItsFiveKeysAtTheTopLevel();
    void countsAreStoredAsSigned64Bit();
    void doesNotSync();
    void comesBackFromTheDiskAsItWas_data();
    void comesBackFromTheDiskAsItWas();
    void addressIsStoredInItsDefaultTextForm();
    void countsAboveFourGibibytesSurvive();
    void countsAreReadAsUnsigned_data();
    void countsAreReadAsUnsigned();
    void missingKeysGiveAnEmptyRecord();
    void valuesOfTheWrongKindReadAsZero();
    void clearForgetsEverythingButWhatIsStored();

private:
    /** As another process would read it. */
    static Download readFrom(const SettingsFile &file)
    {
        const QTemporaryDir folder;
        const QString copy = folder.filePath(QStringLiteral("copy.conf"));
        QFile::copy(file.path(), copy);
        QSettings settings(copy, QSettings::IniFormat);
        VexaCompat::useUtf8(settings);
        Download download = someDownload();
        if (download.deSerialize(settings) != 0)
            qFatal("the status is always 0");
        return download;
    }
};

void DownloadTest::newRecordIsEmpty()
{
    const Download download;

    QVERIFY(download.url.isEmpty());
    QVERIFY(download.fileName.isNull());
    QCOMPARE(download.bytesReceived, 0);
    QCOMPARE(download.bytesTotal, 0);
    QCOMPARE(download.downloadType, 0);
}

void DownloadTest::writesItsFiveKeysAtTheTopLevel()
{
    const TemporaryHome home;
    QSettings settings(QStringLiteral("vexa"), QStringLiteral("vexa"));

    const int status = someDownload().serialize(settings);
    settings.sync();

    QStringList keys = SettingsFile(home).keys();
    keys.sort();
    QCOMPARE(
        keys,
        QStringList({QStringLiteral("download/bytesReceived"),
                     QStringLiteral("download/bytesTotal"), QStringLiteral("download/downloadType"),
                     QStringLiteral("download/fileName"), QStringLiteral("download/url")}));
    QCOMPARE(status, 0);
}

void DownloadTest::countsAreStoredAsSigned64Bit()
{
    const TemporaryHome home;
    QSettings settings(QStringLiteral("vexa"), QStringLiteral("vexa"));

    someDownload().serialize(settings);

    QCOMPARE(settings.value(QStringLiteral("download/bytesReceived")).userType(),
             int(QMetaType::LongLong));
    QCOMPARE(settings.value(QStringLiteral("download/bytesTotal")).userType(),
             int(QMetaType::LongLong));
    QCOMPARE(settings.value(QStringLiteral("download/downloadType")).userType(),
             int(QMetaType::Int));
    QCOMPARE(settings.value(QStringLiteral("download/url")).userType(), int(QMetaType::QString));
}

void DownloadTest::doesNotSync()
{
    const TemporaryHome home;
    QSettings settings(QStringLiteral("vexa"), QStringLiteral("vexa"));

    someDownload().serialize(settings);

    QVERIFY(!SettingsFile(home).exists());
    settings.sync();
    QVERIFY(SettingsFile(home).exists());
}

void DownloadTest::comesBackFromTheDiskAsItWas_data()
{
    QTest::addColumn<QString>("url");
    QTest::addColumn<QString>("fileName");
    const QString file = QStringLiteral("/home/u/FI.zip");

    QTest::newRow("plain") << QStringLiteral("http://h/map5/FI.zip") << file;
    QTest::newRow("port, query, fragment") << QStringLiteral("http://h:81/a?b=1&c=2,3;4#d") << file;
    QTest::newRow("escaped blank and slash") << QStringLiteral("http://h/a%20b%2Fc%25d") << file;
    QTest::newRow("letters outside Latin-1")
        << QString::fromUtf8("http://h/%C3%85land€") << QString::fromUtf8("/Åland €.zip");
    QTest::newRow("odd file name")
        << QStringLiteral("http://h/a") << QStringLiteral("./ a,b;\"c\" ");
    QTest::newRow("nothing") << QString() << QString();
}

void DownloadTest::comesBackFromTheDiskAsItWas()
{
    QFETCH(QString, url);
    QFETCH(QString, fileName);
    const TemporaryHome home;
    Download download = someDownload();
    download.url = QUrl::fromEncoded(url.toUtf8());
    download.fileName = fileName;
    {
        QSettings settings(QStringLiteral("vexa"), QStringLiteral("vexa"));
        VexaCompat::useUtf8(settings);
        download.serialize(settings);
    }

    const Download read = readFrom(SettingsFile(home));

    QCOMPARE(read.url, download.url);
    QCOMPARE(read.fileName, fileName);
    QCOMPARE(read.bytesReceived, 1000);
    QCOMPARE(read.bytesTotal, 2000);
    QCOMPARE(read.downloadType, 1);
}

void DownloadTest::addressIsStoredInItsDefaultTextForm()
{
    const TemporaryHome home;
    QSettings settings(QStringLiteral("vexa"), QStringLiteral("vexa"));
    Download download;
    download.url = QUrl::fromEncoded("http://h/a%20b%2Fc");

    download.serialize(settings);

    QCOMPARE(settings.value(QStringLiteral("download/url")).toString(), download.url.toString());
}

void DownloadTest::countsAboveFourGibibytesSurvive()
{
    const TemporaryHome home;
    Download download = someDownload();
    download.bytesReceived = FiveGiB + 1;
    download.bytesTotal = std::numeric_limits<qint64>::max();
    {
        QSettings settings(QStringLiteral("vexa"), QStringLiteral("vexa"));
        download.serialize(settings);
    }

    const Download read = readFrom(SettingsFile(home));

    QCOMPARE(read.bytesReceived, FiveGiB + 1);
    QCOMPARE(read.bytesTotal, std::numeric_limits<qint64>::max());
}

void DownloadTest::countsAreReadAsUnsigned_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<qint64>("read");
    QTest::newRow("zero") << QByteArray("0") << qint64(0);
    QTest::newRow("below zero") << QByteArray("-1") << qint64(0);
    QTest::newRow("more than 32 bits") << QByteArray("4294967296") << Q_INT64_C(4294967296);
    QTest::newRow("no number") << QByteArray("all") << qint64(0);
    QTest::newRow("too large for 64 bits") << QByteArray("18446744073709551616") << qint64(0);
}

void DownloadTest::countsAreReadAsUnsigned()
{
    QFETCH(QByteArray, stored);
    QFETCH(qint64, read);
    const TemporaryHome home;
    const SettingsFile file(home);
    file.write("[download]\nbytesReceived=" + stored + "\nbytesTotal=" + stored + "\n");

    const Download download = readFrom(file);

    QCOMPARE(download.bytesReceived, read);
    QCOMPARE(download.bytesTotal, read);
}

void DownloadTest::missingKeysGiveAnEmptyRecord()
{
    const TemporaryHome home;

    const Download download = readFrom(SettingsFile(home));

    QVERIFY(download.url.isEmpty());
    QVERIFY(download.fileName.isEmpty());
    QCOMPARE(download.bytesReceived, 0);
    QCOMPARE(download.bytesTotal, 0);
    QCOMPARE(download.downloadType, 0);
}

void DownloadTest::valuesOfTheWrongKindReadAsZero()
{
    const TemporaryHome home;
    const SettingsFile file(home);
    file.write("[download]\nurl=a, b\nfileName=a, b\nbytesReceived=x\ndownloadType=one\n");

    const Download download = readFrom(file);

    QVERIFY(download.url.isEmpty());
    QVERIFY(download.fileName.isEmpty());
    QCOMPARE(download.bytesReceived, 0);
    QCOMPARE(download.downloadType, 0);
}

void DownloadTest::clearForgetsEverythingButWhatIsStored()
{
    const TemporaryHome home;
    QSettings settings(QStringLiteral("vexa"), QStringLiteral("vexa"));
    Download download = someDownload();
    download.serialize(settings);
    settings.sync();
    const QByteArray before = SettingsFile(home).bytes();

    download.clear();
    settings.sync();

    QVERIFY(download.url.isEmpty());
    QVERIFY(download.fileName.isNull());
    QCOMPARE(download.bytesReceived, 0);
    QCOMPARE(download.bytesTotal, 0);
    QCOMPARE(download.downloadType, 0);
    QCOMPARE(SettingsFile(home).bytes(), before);

    download.clear(); // a second time harms nothing
    QVERIFY(download.fileName.isNull());
}

QTEST_GUILESS_MAIN(DownloadTest)
#include "tst_download.moc"
