// SPDX-License-Identifier: MIT
// The file of the city index: what is read from whole, foreign, damaged and hostile ones, and what
// is written.
#include "cityindex/cityindexlistprocessor.h"

#include "cityindex/citydata.h"
#include "download/filesizelimit.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

class CityIndexListProcessorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        m_file = m_dir->filePath(text("cityindex.xml"));
        m_entries.clear();
    }
    void cleanup() { m_dir.reset(); }

    void recordsAreRead_data();
    void recordsAreRead();
    void whatIsNotThereLeavesTheMapAlone();
    void readingAddsAndReplaces();
    void everyCutGivesABeginning();
    void encodings_data();
    void encodings();
    void hostileFilesGiveWhatStandsBefore_data();
    void hostileFilesGiveWhatStandsBefore();
    void deepRecordsAreRead();
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
    void aFileThatCannotBeReadAddsNothing();
    void aFullDiskLeavesTheOldFile();
    void nothingIsLogged();

private:
    QStringList read(const QByteArray &file)
    {
        TestFile::write(m_file, file);
        return readBack();
    }
    QStringList readBack() const
    {
        QMap<QString, CityIndex> entries;
        m_processor.readCityIndexList(m_file, entries);
        return rows(entries);
    }
    void add(const QString &id, const QString &name, const QString &version)
    {
        m_entries.insert(id, CityIndex(id, name, version));
    }
    void write() const { m_processor.updateCityIndexListContent(m_file, m_entries); }

    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_file;
    QMap<QString, CityIndex> m_entries;
    const CityIndexListProcessor m_processor;
};

namespace {

/** Takes the superuser's powers away from this process while it lives; no other user has them. */
class WithoutPowers
{
public:
    WithoutPowers()
        : m_wasRoot(getuid() == 0)
        , m_isWithout(!m_wasRoot || setresuid(Nobody, Nobody, 0) == 0)
    { }
    ~WithoutPowers()
    {
        if (m_wasRoot && setresuid(0, 0, 0) != 0)
            qFatal("cannot become the superuser again");
        prctl(PR_SET_DUMPABLE, 1); // else the leak checker could not look at us at the end
    }
    WithoutPowers(const WithoutPowers &) = delete;
    WithoutPowers &operator=(const WithoutPowers &) = delete;

    bool worked() const { return m_isWithout; }

    /** Makes a file or folder the powerless user's, with this mode. */
    static bool give(const QString &path, mode_t mode)
    {
        const QByteArray name = QFile::encodeName(path);
        return (getuid() != 0 || chown(name.constData(), Nobody, Nobody) == 0)
            && chmod(name.constData(), mode) == 0;
    }

private:
    static constexpr uid_t Nobody = 65534;
    const bool m_wasRoot;
    const bool m_isWithout;
};

// An entity that becomes a thousand million letters.
QByteArray entityBomb()
{
    QByteArray bomb("<!DOCTYPE c [<!ENTITY e0 \"xxxxxxxxxx\">");
    for (int i = 1; i < 9; ++i) {
        bomb += "<!ENTITY e" + QByteArray::number(i) + " \""
            + ("&e" + QByteArray::number(i - 1) + ";").repeated(10) + "\">";
    }
    return bomb + "]>";
}

} // namespace

void CityIndexListProcessorTest::recordsAreRead_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("expected");
    const QByteArray a = cityElement("a", "A");
    const QByteArray b = cityElement("b", "B");
    const auto row = [](const char *name, const QByteArray &file, const char *expected) {
        QTest::newRow(name) << file << text(expected);
    };
    row("a whole file", cityFile(b + a), "a|A|1.0 b|B|1.0");
    row("an empty list", cityFile(""), "");
    row("an empty list of one tag", "<cityindexlist/>", "");
    row("another document element", "<x>" + a + "</x>", "a|A|1.0");
    row("the document element is no record", cityElement("r", "R"), "");
    row("records inside of the document element only",
        "<cityindex id='r' name='R' version='1'>" + a + "</cityindex>", "a|A|1.0");
    row("nested deeper", cityFile("<x><y>" + a + "</y></x>" + b), "a|A|1.0 b|B|1.0");
    row("nested in a record",
        cityFile("<cityindex id='o' name='O' version='1'>" + a + "</cityindex>" + b),
        "a|A|1.0 b|B|1.0 o|O|1");
    row("nested in one that is no record", cityFile("<cityindex id='o'>" + a + "</cityindex>"),
        "a|A|1.0");
    row("the last one of an id wins",
        cityFile(cityElement("a", "first", "9") + b + cityElement("a", "last", "1")),
        "a|last|1 b|B|1.0");
    row("the last one that is whole wins", cityFile(a + "<cityindex id='a' name='last'/>"),
        "a|A|1.0");
    row("no id", cityFile("<cityindex name='x' version='x'/>" + a), "a|A|1.0");
    row("no name", cityFile("<cityindex id='x' version='x'/>" + a), "a|A|1.0");
    row("no version", cityFile("<cityindex id='x' name='x'/>" + a), "a|A|1.0");
    row("no attributes", cityFile("<cityindex/>" + a), "a|A|1.0");
    row("attributes in another order and more of them",
        cityFile("<cityindex size='7' version='3' name='A' x='' id='a'/>"), "a|A|3");
    row("attributes in another case", cityFile("<cityindex ID='x' Name='x' version='x'/>" + a),
        "a|A|1.0");
    row("elements of another name", cityFile("<CityIndex id='x' name='x' version='x'/>" + a),
        "a|A|1.0");
    row("empty values", cityFile("<cityindex id='' name='' version=''/>"), "||");
    row("values that are not trimmed",
        cityFile("<cityindex id=' a&#10;' name='&#9;A ' version=' '/>"), " a\n|\tA | ");
    row("references", cityFile("<cityindex id='&lt;' name='&amp;&#228;' version='&quot;&gt;'/>"),
        "<|&\u00e4|\">");
    row("text and comments between", cityFile("x<!-- " + b + " -->" + a + "<![CDATA[" + b + "]]>"),
        "a|A|1.0");
    row("a prefix that is not declared",
        "<x:list>" + a
            + "<y:z w:v='1'/><x:cityindex id='n' name='n'"
              " version='n'/>"
            + b + "</x:list>",
        "a|A|1.0 b|B|1.0");
    row("attributes with a prefix", cityFile("<cityindex x:id='x' x:name='x' x:version='x'/>" + a),
        "a|A|1.0");
    row("a default namespace", "<cityindexlist xmlns='u'>" + a + "</cityindexlist>", "a|A|1.0");
    row("no declaration", "<cityindexlist>" + a + "</cityindexlist>", "a|A|1.0");
    row("another line end", cityFile("\r\n" + a + "\r\n"), "a|A|1.0");
}

void CityIndexListProcessorTest::recordsAreRead()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, expected);

    QCOMPARE(read(file).join(QLatin1Char(' ')), expected);
}

void CityIndexListProcessorTest::whatIsNotThereLeavesTheMapAlone()
{
    add(text("a"), text("A"), text("1"));
    const CityIndex *entry = &*m_entries.constFind(text("a"));
    TestFile::write(m_file, QByteArray());
    QVERIFY(QDir().mkpath(m_dir->filePath(text("folder"))));

    for (const char *name : {"missing", "missing/missing", "cityindex.xml", "folder"})
        m_processor.readCityIndexList(m_dir->filePath(text(name)), m_entries);
    m_processor.readCityIndexList(QString(), m_entries);

    QCOMPARE(rows(m_entries), QStringList {text("a|A|1")});
    QCOMPARE(&*m_entries.constFind(text("a")), entry);
}

void CityIndexListProcessorTest::readingAddsAndReplaces()
{
    add(text("a"), text("A"), text("1"));
    add(text("b"), text("B"), text("1"));
    const CityIndex *b = &*m_entries.constFind(text("b"));
    QSignalSpy version(b, &CityIndex::versionChanged);
    TestFile::write(m_file, cityFile(cityElement("b", "new", "2") + cityElement("c", "C")));

    m_processor.readCityIndexList(m_file, m_entries);

    QCOMPARE(rows(m_entries), QStringList({text("a|A|1"), text("b|new|2"), text("c|C|1.0")}));
    QCOMPARE(&*m_entries.constFind(text("b")), b);
    QCOMPARE(version.count(), 1);
}

void CityIndexListProcessorTest::everyCutGivesABeginning()
{
    add(text("a"), text("Århus"), text("1"));
    add(text("b"), text("B<&\">"), text("2"));
    add(text("c"), text("🗺"), text("3"));
    write();
    const QByteArray whole = TestFile::read(m_file);
    int before = 0;

    for (int length = 0; length <= whole.size(); ++length) {
        const QStringList found = read(whole.left(length));

        QCOMPARE(found, QStringList(rows(m_entries).mid(0, found.size())));
        QVERIFY(found.size() >= before);
        before = int(found.size());
    }
    QCOMPARE(before, 3);
}

void CityIndexListProcessorTest::encodings_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("name");
    const QString name = text("Århus €");
    const auto file = [](const QByteArray &declaration, const QByteArray &name) {
        return declaration + "<cityindexlist>" + cityElement("a", name) + "</cityindexlist>";
    };
    const auto declared = [](const QByteArray &encoding) {
        return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>\n";
    };
    QTest::newRow("ANSI and UTF-8") << file(declared("ANSI"), name.toUtf8()) << name;
    QTest::newRow("ANSI and Latin-1")
        << file(declared("ANSI"), "\xc5rhus") << text("\xef\xbf\xbdrhus");
    QTest::newRow("UTF-8 and Latin-1")
        << file(declared("UTF-8"), "\xc5rhus") << text("\xef\xbf\xbdrhus");
    QTest::newRow("nothing and Latin-1") << file("", "\xc5rhus") << text("\xef\xbf\xbdrhus");
    QTest::newRow("Latin-1") << file(declared("ISO-8859-1"), "\xc5rhus") << text("Århus");
    QTest::newRow("UTF-8") << file(declared("UTF-8"), name.toUtf8()) << name;
    QTest::newRow("nothing and UTF-8") << file("", name.toUtf8()) << name;
    QTest::newRow("a byte order mark") << file("\xef\xbb\xbf", name.toUtf8()) << name;
    QTest::newRow("a byte order mark and ANSI")
        << file("\xef\xbb\xbf" + declared("ANSI"), name.toUtf8()) << name;
    QTest::newRow("a later version of XML")
        << file("<?xml version=\"1.1\" encoding=\"ANSI\"?>", name.toUtf8()) << name;
}

void CityIndexListProcessorTest::encodings()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, name);

    QCOMPARE(read(file), QStringList {text("a|%1|1.0").arg(name)});
}

void CityIndexListProcessorTest::hostileFilesGiveWhatStandsBefore_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<bool>("isReadOn");
    const QByteArray open = "<cityindexlist>" + cityElement("a", "A");
    const QByteArray close = cityElement("b", "B") + "</cityindexlist>";
    const auto row = [&](const char *name, const QByteArray &middle, bool isReadOn = false,
                         const QByteArray &start = QByteArray()) {
        QTest::newRow(name) << QByteArray(start + open + middle + close) << isReadOn;
    };
    row("nothing", "", true);
    row("a bomb in a text", "<x>&e8;</x>", false, entityBomb());
    row("a bomb in a record", cityElement("x", "&e8;"), false, entityBomb());
    row("a long entity that comes often", "<x>" + QByteArray("&e;").repeated(30000) + "</x>", false,
        "<!DOCTYPE c [<!ENTITY e \"" + QByteArray(4000, 'x') + "\">]>");
    row("an unknown entity", cityElement("x", "&foo;"));
    row("a control character", cityElement("x", "\x01"));
    row("a NUL", QByteArray(1, '\0'));
    row("a character reference to a NUL", cityElement("x", "&#0;"));
    row("half a pair", cityElement("x", "&#xd800;"));
    row("an attribute given twice", "<cityindex id='x' id='y' name='z' version='1'/>");
    row("a tag that does not match", "<x></y>");
    row("a bare ampersand", cityElement("x", "A & B"));
    row("999000 levels", QByteArray("<x>").repeated(999000) + QByteArray("</x>").repeated(999000),
        true);
    row("1100000 levels", QByteArray("<x>").repeated(1100000));
    row("a name of 20 MB", cityElement("x", QByteArray(20 * 1024 * 1024, 'x')));
    row("a comment of 20 MB", "<!--" + QByteArray(20 * 1024 * 1024, 'x') + "-->");
}

void CityIndexListProcessorTest::hostileFilesGiveWhatStandsBefore()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, isReadOn);

    QCOMPARE(read(file).join(QLatin1Char(' ')), text(isReadOn ? "a|A|1.0 b|B|1.0" : "a|A|1.0"));
}

void CityIndexListProcessorTest::deepRecordsAreRead()
{
    const int depth = 20000;

    QCOMPARE(int(read("<c>" + QByteArray("<x>").repeated(depth) + cityElement("a", "A")).size()),
             1);
}

void CityIndexListProcessorTest::theFileIsWrittenToTheByte()
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

void CityIndexListProcessorTest::anEmptyListIsWrittenAndReadBack()
{
    write();

    QCOMPARE(TestFile::read(m_file),
             QByteArray("<?xml version=\"1.0\" encoding=\"ANSI\"?>\n<cityindexlist/>\n"));
    QCOMPARE(readBack(), QStringList());
}

void CityIndexListProcessorTest::theEntrysOwnIdIsWritten()
{
    m_entries.insert(text("1"), CityIndex(text("z"), text("first key"), text("1")));
    m_entries.insert(text("2"), CityIndex(text("a"), text("second key"), text("1")));

    write();

    const QByteArray file = TestFile::read(m_file);
    QVERIFY(file.indexOf("id=\"z\" name=\"first") > 0);
    QVERIFY(file.indexOf("id=\"z\"") < file.indexOf("id=\"a\" name=\"second"));
    QCOMPARE(readBack(), QStringList({text("a|second key|1"), text("z|first key|1")}));
}

void CityIndexListProcessorTest::textsReadBackAsTheyWere_data()
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

void CityIndexListProcessorTest::textsReadBackAsTheyWere()
{
    QFETCH(QString, value);
    add(value, value, value);
    add(text("~~"), text("behind"), text("1"));

    write();

    QMap<QString, CityIndex> entries;
    m_processor.readCityIndexList(m_file, entries);
    QCOMPARE(rows(entries), rows(m_entries));
}

void CityIndexListProcessorTest::charactersThatXmlForbidsDoNotSpoilTheFile()
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

void CityIndexListProcessorTest::anEntryThatIsTooLongCostsNoOther()
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

void CityIndexListProcessorTest::manyEntriesReadBack()
{
    for (int i = 0; i < 5000; ++i)
        add(text("city.%1").arg(i), text("Größe %1").arg(i), QString::number(i));

    write();

    QCOMPARE(readBack(), rows(m_entries));
}

void CityIndexListProcessorTest::writingReplacesTheWholeFile()
{
    TestFile::write(m_file, cityFile(cityElement("old", QByteArray(10000, 'x'))));
    add(text("a"), text("A"), text("1"));

    write();

    QCOMPARE(readBack(), QStringList {text("a|A|1")});
    QVERIFY(TestFile::read(m_file).endsWith("\n</cityindexlist>\n"));
}

void CityIndexListProcessorTest::aFolderIsNotMade()
{
    m_file = m_dir->filePath(text("missing/cityindex.xml"));

    write();

    QVERIFY(QDir(m_dir->path()).isEmpty());
}

void CityIndexListProcessorTest::noOtherFileIsLeftBeside()
{
    write();
    write();

    QCOMPARE(QDir(m_dir->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList {text("cityindex.xml")});
}

void CityIndexListProcessorTest::modeAndLinkOfTheOldFileAreKept()
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

void CityIndexListProcessorTest::aFileInWhosePlaceIsAFolderStays()
{
    TestFile::write(m_file + text("/inside"), "kept");

    write();

    QCOMPARE(TestFile::read(m_file + text("/inside")), QByteArray("kept"));
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files | QDir::Hidden), QStringList());
}

void CityIndexListProcessorTest::aReadOnlyFileStaysAsItWas()
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

void CityIndexListProcessorTest::aReadOnlyFolderLetsTheFileBeOverwritten()
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

void CityIndexListProcessorTest::aFileThatCannotBeReadAddsNothing()
{
    TestFile::write(m_file, cityFile(cityElement("a", "A")));
    QVERIFY(WithoutPowers::give(m_dir->path(), 0755));
    QVERIFY(WithoutPowers::give(m_file, 0200));
    const WithoutPowers user;
    QVERIFY(user.worked());

    QCOMPARE(readBack(), QStringList());
}

void CityIndexListProcessorTest::aFullDiskLeavesTheOldFile()
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

void CityIndexListProcessorTest::nothingIsLogged()
{
    const LogCatcher log(4);

    read(cityFile(cityElement("a", "A") + "<"));
    m_file = m_dir->filePath(text("missing/cityindex.xml"));
    write();
    readBack();

    QCOMPARE(log.texts(), QStringList());
}

QTEST_GUILESS_MAIN(CityIndexListProcessorTest)
#include "tst_cityindexlistprocessor.moc"
