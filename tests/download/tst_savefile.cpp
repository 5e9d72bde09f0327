// SPDX-License-Identifier: MIT
#include "download/savefile_p.h"

#include "download/downloadmanager.h"
#include "download/filesizelimit.h"
#include "download/testengine.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <QBuffer>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

namespace {

bool append(SaveFile &file, QByteArray bytes)
{
    QBuffer source(&bytes);
    return source.open(QIODevice::ReadOnly) && file.append(source) == bytes.size();
}

} // namespace

class SaveFileTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void makesTheFileAndAppends();
    void appendsToWhatIsThere();
    void cutsButNeverGrows();
    void saysWhyItCannotBeOpened();
    void saysWhyItCannotBeCut();
    void countsNoChunkOfWhichAnyByteFailed_data();
    void countsNoChunkOfWhichAnyByteFailed();
    void isNamedAfterTheLastPartOfThePath_data();
    void isNamedAfterTheLastPartOfThePath();
    void liesInAFolderThatIsMadeOnce();
    void liesInTheCurrentFolderIfItsOwnCannotBeMade();
};

void SaveFileTest::makesTheFileAndAppends()
{
    const QTemporaryDir dir;
    SaveFile file;

    QVERIFY(!file.isOpen());
    QVERIFY(file.open(dir.filePath(QStringLiteral("new"))));
    QVERIFY(append(file, "one"));
    QVERIFY(append(file, "two"));

    QVERIFY(file.isOpen());
    QCOMPARE(file.size(), 6);
    QCOMPARE(contentOf(dir.filePath(QStringLiteral("new"))), QByteArray("onetwo"));
    file.close();
    QVERIFY(!file.isOpen());
    QVERIFY(SaveFile::remove(dir.filePath(QStringLiteral("new"))));
    QVERIFY(!SaveFile::remove(dir.filePath(QStringLiteral("new"))));
}

void SaveFileTest::appendsToWhatIsThere()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("old"));
    writeFile(path, "old");
    SaveFile file;

    QVERIFY(file.open(path));
    QCOMPARE(file.size(), 3);
    QVERIFY(append(file, "new"));

    QCOMPARE(contentOf(path), QByteArray("oldnew"));
}

void SaveFileTest::cutsButNeverGrows()
{
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("old"));
    writeFile(path, "0123456789");
    SaveFile file;
    QVERIFY(file.open(path));

    QVERIFY(file.cutTo(20));
    QCOMPARE(file.size(), 10);
    QVERIFY(file.cutTo(4));
    QVERIFY(append(file, "x"));

    QCOMPARE(contentOf(path), QByteArray("0123x"));
}

void SaveFileTest::saysWhyItCannotBeOpened()
{
    const QTemporaryDir dir;
    SaveFile file;

    QVERIFY(!file.open(dir.path()));
    QVERIFY(!file.errorString().isEmpty());
    QVERIFY(!file.isOpen());
    QVERIFY(!file.open(dir.filePath(QStringLiteral("missing/file"))));
    QVERIFY(!file.open(QString()));
}

void SaveFileTest::saysWhyItCannotBeCut()
{
    SaveFile file;
    // A device takes every byte and has no length to cut.
    QVERIFY(file.open(QStringLiteral("/dev/null")));

    QVERIFY(!file.cutTo(-1));

    QVERIFY(!file.errorString().isEmpty());
}

void SaveFileTest::countsNoChunkOfWhichAnyByteFailed_data()
{
    QTest::addColumn<int>("chunk");

    QTest::newRow("small enough for the buffer, so the flush fails") << 1000;
    QTest::newRow("large, so the write fails") << 200000;
}

void SaveFileTest::countsNoChunkOfWhichAnyByteFailed()
{
    QFETCH(int, chunk);
    const QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("file"));
    const QByteArray start(9500, 'a');
    SaveFile file;
    QVERIFY(file.open(path));
    QVERIFY(append(file, start));
    {
        const FileSizeLimit limit(10000);

        QVERIFY(!append(file, QByteArray(chunk, 'b')));
    }

    QVERIFY(!file.isOpen());
    QVERIFY(!file.errorString().isEmpty());
    QCOMPARE(contentOf(path), start);
    // Nothing that was stuck comes out with what is written when there is room again.
    QVERIFY(file.open(path));
    QVERIFY(append(file, "c"));
    QCOMPARE(contentOf(path), start + 'c');
}

void SaveFileTest::isNamedAfterTheLastPartOfThePath_data()
{
    QTest::addColumn<QByteArray>("url");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *what, const char *url, const QString &name) {
        QTest::newRow(what) << QByteArray(url) << name;
    };
    const QString fallback = QStringLiteral("download");

    row("a file", "http://h/map5/FI.zip", QStringLiteral("FI.zip"));
    row("a query and a fragment", "http://h/FI.zip?x=/y.zip#z/a", QStringLiteral("FI.zip"));
    row("blanks and letters", "http://h/a%20b%C3%A4", QString::fromUtf8("a b\xc3\xa4"));
    row("a percent sign", "http://h/100%25.zip", QStringLiteral("100%.zip"));
    row("a trailing slash", "http://h/map5/", fallback);
    row("no path", "http://h", fallback);
    row("the root", "http://h/", fallback);
    row("an empty address", "", fallback);
    row("the folder above", "http://h/a/..", fallback);
    row("the folder above, in disguise", "http://h/a/%2E%2E", fallback);
    row("the folder itself", "http://h/a/.", fallback);
    row("a slash in disguise", "http://h/a%2F..%2Fb.zip", QStringLiteral("b.zip"));
    row("a way out in disguise", "http://h/..%2F..%2F..", fallback);
    row("a zero byte", "http://h/a%00b", fallback);
    const QByteArray longest(255, 'x'); // bytes, and not letters
    row("the longest name", "http://h/" + longest, QString::fromLatin1(longest));
    row("a name too long for a file", "http://h/x" + longest, fallback);
    row("a name too long in UTF-8", "http://h/" + QByteArray("%C3%85").repeated(128), fallback);
    row("a hidden file", "http://h/.profile", QStringLiteral(".profile"));
}

void SaveFileTest::isNamedAfterTheLastPartOfThePath()
{
    const TemporaryHome home;
    QFETCH(QByteArray, url);
    QFETCH(QString, name);

    const QString path = DownloadManager::fileNameFromUrl(QUrl::fromEncoded(url));

    QCOMPARE(path, home.downloadFolder() + name);
}

void SaveFileTest::liesInAFolderThatIsMadeOnce()
{
    const TemporaryHome home;
    const QUrl url(QStringLiteral("http://h/FI.zip"));
    const QString dir = home.downloadFolder();
    const LogCatcher log(L::Trace);

    DownloadManager::fileNameFromUrl(url);
    DownloadManager::fileNameFromUrl(url);

    QVERIFY(QDir(dir).exists());
    QCOMPARE(dir, QDir::homePath() + QLatin1String("/MyDocs/.vexa/tmp/"));
    QCOMPARE(log.texts(),
             QStringList({QLatin1String("[INFO] Creating directory: ") + dir,
                          QLatin1String("[INFO] temporary file directory: ") + dir,
                          QLatin1String("[INFO] temporary file directory: ") + dir}));
}

void SaveFileTest::liesInTheCurrentFolderIfItsOwnCannotBeMade()
{
    const TemporaryHome home;
    const QString dir = home.downloadFolder();
    writeFile(home.path() + QLatin1String("/MyDocs"), "in the way");
    const LogCatcher log(L::Trace);

    const QString path = DownloadManager::fileNameFromUrl(QUrl(QStringLiteral("http://h/FI.zip")));

    QCOMPARE(path, QStringLiteral("./FI.zip"));
    QCOMPARE(
        log.texts(),
        QStringList({QLatin1String("[INFO] Creating directory: ") + dir,
                     QLatin1String("[WARNING] Couldn't create directory: ") + dir,
                     QStringLiteral("[WARNING] Current directory will be used for temporary files"),
                     QStringLiteral("[INFO] temporary file directory: ./")}));
}

QTEST_GUILESS_MAIN(SaveFileTest)
#include "tst_savefile.moc"
