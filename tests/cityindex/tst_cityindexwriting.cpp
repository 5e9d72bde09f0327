// SPDX-License-Identifier: MIT
// The file of the city index: what is written, when it can be and when it cannot.
#include "cityindex/cityindexlistprocessor.h"

#include "cityindex/cityfiletest.h"
#include "download/filesizelimit.h"
#include "testutils/logcatcher.h"
#include <QDir>
#include <QFileInfo>
#include <QTest>

class CityIndexWritingTest : public CityFileTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void theFileIsWrittenToTheByte();
    void anEmptyListIsWrittenAndReadBack();
    void theEntrysOwnIdIsWritten();
    void textsReadBackAsTheyWere_data();
    void textsReadBackAsTheyWere();
    void charactersThatXmlForbidsDoNotSpoilTheFile();
    void anEntryThatIsTooLongCostsNoOther();
    void manyEntriesReadBack();
    void writingReplacesTheWholeFile();
    void aFolderIsNotMade();
    void noOtherFileIsLeftBeside();
    void modeAndLinkOfTheOldFileAreKept();
    void aFileInWhosePlaceIsAFolderStays();
    void aReadOnlyFileStaysAsItWas();
    void aReadOnlyFolderLetsTheFileBeOverwritten();
    void aFullDiskLeavesTheOldFile();
    void nothingIsLogged();
};

void CityIndexWritingTest::theFileIsWrittenToTheByte()
{
    add(text("a"), text("Århus"), text("1.0"));
    add(text("B"), text("<\"&'>"), QString());

    write();

    QCOMPARE(TestFile::read(m_file),
             text("<?xml version=\"1.0\" encoding=\"ANSI\"?>\n"
                  "<cityindexlist>\n"
                  " <cityindex id=\"B\" name=\"&lt;&quot;&amp;'&gt;\" version=\"\"/>\n"
                  " <cityindex id=\"a\" name=\"Århus\" version=\"1.0\"/>\n"
                  "</cityindexlist>\n")
                 .toUtf8());
}

void CityIndexWritingTest::anEmptyListIsWrittenAndReadBack()
{
    write();

    QCOMPARE(TestFile::read(m_file),
             QByteArray("<?xml version=\"1.0\" encoding=\"ANSI\"?>\n<cityindexlist/>\n"));
    QCOMPARE(readBack(), QStringList());
}

void CityIndexWritingTest::theEntrysOwnIdIsWritten()
{
    m_entries.insert(text("1"), CityIndex(text("z"), text("first key"), text("1")));
    m_entries.insert(text("2"), CityIndex(text("a"), text("second key"), text("1")));

    write();

    const QByteArray file = TestFile::read(m_file);
    QVERIFY(file.indexOf("id=\"z\" name=\"first") > 0);
    QVERIFY(file.indexOf("id=\"z\"") < file.indexOf("id=\"a\" name=\"second"));
    QCOMPARE(readBack(), QStringList({text("a|second key|1"), text("z|first key|1")}));
}

void CityIndexWritingTest::textsReadBackAsTheyWere_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("empty") << QString();
    QTest::newRow("blanks") << text("  ");
    QTest::newRow("line ends and tabs") << text("\n\r\t\r\n");
    QTest::newRow("markup") << text("<cityindex id=\"\"/> &amp; ]]> <!-- ' \"");
    QTest::newRow("a byte order mark") << QString(QChar(0xfeff)) + text("x");
    QTest::newRow("all planes") << text("ä€🗺");
    QTest::newRow("high controls") << QString(QChar(0x85)) + QChar(0x2028) + QChar(0x7f);
    QTest::newRow("50000 letters") << QString(50000, QLatin1Char('x'));
    QTest::newRow("50000 apostrophes") << QString(50000, QLatin1Char('\''));
    QTest::newRow("50000 quotes") << QString(50000, QLatin1Char('"'));
    QTest::newRow("50000 ampersands") << QString(50000, QLatin1Char('&'));
    QTest::newRow("50000 line ends") << QString(50000, QLatin1Char('\n'));
}

void CityIndexWritingTest::textsReadBackAsTheyWere()
{
    QFETCH(QString, value);
    add(value, value, value);
    add(text("~~"), text("behind"), text("1"));

    write();

    QMap<QString, CityIndex> entries;
    m_processor.readCityIndexList(m_file, entries);
    QCOMPARE(rows(entries), rows(m_entries));
}

void CityIndexWritingTest::charactersThatXmlForbidsDoNotSpoilTheFile()
{
    QString name = text("A");
    for (const int c : {0x0, 0x1, 0xb, 0x1f, 0xfffe, 0xffff, 0xdc00, 0xd800})
        name += QChar(c);
    add(text("a"), name, name);
    add(text("b") + QChar(1), text("B"), text("1"));
    add(text("c"), text("C"), text("1"));

    write();

    const QString replaced = text("A") + QString(8, QChar(0xfffd));
    QCOMPARE(
        readBack(),
        QStringList({text("a|%1|%1").arg(replaced), text("b\xef\xbf\xbd|B|1"), text("c|C|1")}));
}

void CityIndexWritingTest::anEntryThatIsTooLongCostsNoOther()
{
    const int limit = CityIndexListProcessor::MaxEntryCharacters;
    add(text("a"), text("A"), text("1"));
    add(text("b"), QString(limit - 1, QLatin1Char('"')), QString()); // just fits
    add(text("c"), QString(limit, QLatin1Char('x')), QString());
    add(text("d"), text("D"), text("1"));

    write();

    QMap<QString, CityIndex> entries;
    m_processor.readCityIndexList(m_file, entries);
    QCOMPARE(QStringList(entries.keys()), QStringList({text("a"), text("b"), text("d")}));
    QCOMPARE(entries.value(text("b")).name(), m_entries.value(text("b")).name());
}

void CityIndexWritingTest::manyEntriesReadBack()
{
    for (int i = 0; i < 5000; ++i)
        add(text("city.%1").arg(i), text("Größe %1").arg(i), QString::number(i));

    write();

    QCOMPARE(readBack(), rows(m_entries));
}

void CityIndexWritingTest::writingReplacesTheWholeFile()
{
    TestFile::write(m_file, cityFile(cityElement("old", QByteArray(10000, 'x'))));
    add(text("a"), text("A"), text("1"));

    write();

    QCOMPARE(readBack(), QStringList {text("a|A|1")});
    QVERIFY(TestFile::read(m_file).endsWith("\n</cityindexlist>\n"));
}

void CityIndexWritingTest::aFolderIsNotMade()
{
    m_file = m_dir->filePath(text("missing/cityindex.xml"));

    write();

    QVERIFY(QDir(m_dir->path()).isEmpty());
}

void CityIndexWritingTest::noOtherFileIsLeftBeside()
{
    write();
    write();

    QCOMPARE(QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList {text("cityindex.xml")});
}

void CityIndexWritingTest::modeAndLinkOfTheOldFileAreKept()
{
    const QString target = m_dir->filePath(text("card.xml"));
    TestFile::write(target, "old");
    QCOMPARE(chmod(QFile::encodeName(target).constData(), 0604), 0);
    QVERIFY(QFile::link(target, m_file));

    write();

    QCOMPARE(QFileInfo(m_file).symLinkTarget(), target);
    QVERIFY(TestFile::read(target).startsWith("<?xml"));
    struct stat now = {};
    QCOMPARE(stat(QFile::encodeName(target).constData(), &now), 0);
    QCOMPARE(int(now.st_mode & 07777), 0604);
}

void CityIndexWritingTest::aFileInWhosePlaceIsAFolderStays()
{
    TestFile::write(m_file + text("/inside"), "kept");

    write();

    QCOMPARE(TestFile::read(m_file + text("/inside")), QByteArray("kept"));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void CityIndexWritingTest::aReadOnlyFileStaysAsItWas()
{
    TestFile::write(m_file, "kept");
    QVERIFY(WithoutPowers::give(m_dir->path(), 0755));
    QVERIFY(WithoutPowers::give(m_file, 0444));
    {
        const WithoutPowers user;
        QVERIFY(user.worked());
        write();
    }

    QCOMPARE(TestFile::read(m_file), QByteArray("kept"));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void CityIndexWritingTest::aReadOnlyFolderLetsTheFileBeOverwritten()
{
    TestFile::write(m_file, QByteArray(1000, 'x'));
    QVERIFY(WithoutPowers::give(m_file, 0644));
    QVERIFY(WithoutPowers::give(m_dir->path(), 0555));
    add(text("a"), text("A"), text("1"));
    {
        const WithoutPowers user;
        QVERIFY(user.worked());
        write();
    }
    QVERIFY(WithoutPowers::give(m_dir->path(), 0755)); // so that it can be removed

    QCOMPARE(readBack(), QStringList {text("a|A|1")});
}

void CityIndexWritingTest::aFullDiskLeavesTheOldFile()
{
    add(text("a"), text("A"), text("1"));
    write();
    for (int i = 0; i < 1000; ++i)
        add(text("b%1").arg(i), text("B"), text("2"));
    {
        const FileSizeLimit limit(4096);
        write();
    }

    QCOMPARE(readBack(), QStringList {text("a|A|1")});
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

void CityIndexWritingTest::nothingIsLogged()
{
    const LogCatcher log(4);

    read(cityFile(cityElement("a", "A") + "<"));
    m_file = m_dir->filePath(text("missing/cityindex.xml"));
    write();
    readBack();

    QCOMPARE(log.texts(), QStringList());
}

QTEST_GUILESS_MAIN(CityIndexWritingTest)
#include "tst_cityindexwriting.moc"
