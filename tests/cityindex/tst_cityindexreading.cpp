// SPDX-License-Identifier: MIT
// The file of the city index: what is read from whole, foreign, damaged and hostile ones.
#include "cityindex/cityindexlistprocessor.h"

#include "cityindex/cityfiletest.h"
#include <QDir>
#include <QSignalSpy>
#include <QTest>

class CityIndexReadingTest : public CityFileTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

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
    void aFileThatCannotBeReadAddsNothing();
};

namespace {

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

void CityIndexReadingTest::recordsAreRead_data()
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

void CityIndexReadingTest::recordsAreRead()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, expected);

    QCOMPARE(read(file).join(QLatin1Char(' ')), expected);
}

void CityIndexReadingTest::whatIsNotThereLeavesTheMapAlone()
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

void CityIndexReadingTest::readingAddsAndReplaces()
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

void CityIndexReadingTest::everyCutGivesABeginning()
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

void CityIndexReadingTest::encodings_data()
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

void CityIndexReadingTest::encodings()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, name);

    QCOMPARE(read(file), QStringList {text("a|%1|1.0").arg(name)});
}

void CityIndexReadingTest::hostileFilesGiveWhatStandsBefore_data()
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
    row("100000 levels", QByteArray("<x>").repeated(100000) + QByteArray("</x>").repeated(100000),
        true);
    row("1100000 levels", QByteArray("<x>").repeated(1100000));
    row("a name of 20 MB", cityElement("x", QByteArray(20 * 1024 * 1024, 'x')));
    row("a comment of 20 MB", "<!--" + QByteArray(20 * 1024 * 1024, 'x') + "-->");
}

void CityIndexReadingTest::hostileFilesGiveWhatStandsBefore()
{
    QFETCH(QByteArray, file);
    QFETCH(bool, isReadOn);

    QCOMPARE(read(file).join(QLatin1Char(' ')), text(isReadOn ? "a|A|1.0 b|B|1.0" : "a|A|1.0"));
}

void CityIndexReadingTest::deepRecordsAreRead()
{
    const int depth = 20000;

    QCOMPARE(int(read("<c>" + QByteArray("<x>").repeated(depth) + cityElement("a", "A")).size()),
             1);
}

void CityIndexReadingTest::aFileThatCannotBeReadAddsNothing()
{
    TestFile::write(m_file, cityFile(cityElement("a", "A")));
    QVERIFY(WithoutPowers::give(m_dir->path(), 0755));
    QVERIFY(WithoutPowers::give(m_file, 0200));
    const WithoutPowers user;
    QVERIFY(user.worked());

    QCOMPARE(readBack(), QStringList());
}

QTEST_GUILESS_MAIN(CityIndexReadingTest)
#include "tst_cityindexreading.moc"
