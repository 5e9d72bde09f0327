// SPDX-License-Identifier: MIT
// Catalogue, region-name and content files that are cut, damaged, hostile or huge. The readers of
// the first two use what stands before the damage; those of the content file use all or nothing.
#include "catalog/mapcatalogprocessor.h"

#include "catalog/mapdata.h"
#include "catalog/mapregion.h"
#include "testutils/logcatcher.h"
#include <cstdio>
#include <functional>
#include <memory>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

class DamagedXmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<MapData>(); }
    void cleanup() { m_data.reset(); }

    void theCatalogueUpToTheDamageIsUsed_data();
    void theCatalogueUpToTheDamageIsUsed();
    void theNamesUpToTheDamageAreUsed();
    void everyCutGivesABeginningOfTheCatalogue();
    void encodings_data();
    void encodings();
    void aCharacterMayBeCutByTheChunksOfReading();
    void quotesInAValueAreNoAttributes();
    void theContentFileIsUsedWholeOrNotAtAll_data();
    void theContentFileIsUsedWholeOrNotAtAll();
    void everyCutOfAContentFileGivesNothing();
    void deepFilesAreRead_data();
    void deepFilesAreRead();
    void deepRegionsAreRead();
    void hugeFilesTakeLittleMemory_data();
    void hugeFilesTakeLittleMemory();
    void noDamageIsLogged();

private:
    QString regions(const QByteArray &catalog);

    std::unique_ptr<MapData> m_data;
    MapCatalogProcessor m_processor;
};

namespace {

const QByteArray EmptyRegion("<File Id=\"E\" Description=\"\" ZipFileSize=\"1\" Link=\"\"/>");

// An entity that becomes a thousand million letters.
QByteArray nestedBomb()
{
    QByteArray bomb("<!DOCTYPE c [<!ENTITY e0 \"xxxxxxxxxx\">");
    for (int i = 1; i < 9; ++i) {
        bomb += "<!ENTITY e" + QByteArray::number(i) + " \""
            + ("&e" + QByteArray::number(i - 1) + ";").repeated(10) + "\">";
    }
    return bomb + "]>";
}

// An entity of many letters, for many references to it.
QByteArray flatBomb(int letters)
{
    return "<!DOCTYPE c [<!ENTITY e8 \"" + QByteArray(letters, 'x') + "\">]>";
}

} // namespace

QString DamagedXmlTest::regions(const QByteArray &catalog)
{
    writeFile(m_data->catalogFile(), catalog);
    QStringList ids;
    for (const MapRegion *region : m_processor.readCatalog(m_data->catalogFile()))
        ids.append(region ? region->id() : text("null"));
    return ids.join(QLatin1Char(' '));
}

void DamagedXmlTest::theCatalogueUpToTheDamageIsUsed_data()
{
    QTest::addColumn<QByteArray>("catalog");
    QTest::addColumn<QString>("ids");
    const QByteArray a = fileElement("A");
    const QByteArray b = fileElement("B");
    const QByteArray open = fileElement("O").replace("</File>\n", "");
    const auto row = [](const char *name, const QByteArray &catalog, const char *ids) {
        QTest::newRow(name) << catalog << text(ids);
    };
    row("cut between elements", "<c>" + a, "A");
    row("cut in a tag", "<c>" + a + b.left(10), "A");
    row("cut in an attribute", "<c>" + a + "<File Id=\"B", "A");
    row("cut in an end tag", "<c>" + a + "</", "A");
    row("cut in an open region", "<c>" + a + open, "A O");
    row("cut in the child of an open region", "<c>" + open + a + "<File Id=", "A O");
    row("cut in an incomplete region", "<c><File Id=\"X\"><File", "null");
    row("cut in a comment", "<c>" + a + "<!-- " + b, "A");
    row("a tag that does not match", "<c>" + a + "</d>" + b, "A");
    row("text after the root", "<c>" + a + "</c>text", "A");
    row("a second root", "<c>" + a + "</c><c>" + b + "</c>", "A");
    row("a NUL after the root", "<c>" + a + "</c>" + QByteArray(1, '\0'), "A");
    row("a bare ampersand", "<c>" + a + "<File Id=\"B&C\" Description=\"\"", "A");
    row("a less-than in an attribute", "<c>" + a + "<File Id=\"B<C\"/>", "A");
    row("an unquoted attribute", "<c>" + a + "<File Id=B/>" + b, "A");
    row("an attribute given twice", "<c>" + a + "<File Id=\"B\" Id=\"C\"/></c>", "A");
    row("an unknown entity", "<c>" + a + "<x y=\"&foo;\"/>" + b + "</c>", "A");
    row("a control character", "<c>" + a + "\x01" + b + "</c>", "A");
    row("a prefix that is not declared", "<x:c>" + a + "<y:z w:v=\"1\"/>" + b + "</x:c>", "A B");
    row("only a declaration", "<?xml version=\"1.0\"?>", "");
    row("only an open root", "<c>", "");
    row("only a byte order mark", "\xef\xbb\xbf", "");
    row("only blanks", " \n\t ", "");
    row("no markup", "hello", "");
    row("a blank before the declaration", " <?xml version=\"1.0\"?><c>" + a + "</c>", "");
    row("binary", QByteArray::fromHex("1f8b0800000000000003ff00fe3c633e"), "");
    row("only NULs", QByteArray(1000, '\0'), "");
    row("a nested entity bomb", nestedBomb() + "<c>" + a + "<x>&e8;</x>" + b + "</c>", "A");
    row("a nested entity bomb in an attribute",
        nestedBomb() + "<c>" + a + "<x y=\"&e8;\"/>" + b + "</c>", "A");
    row("an entity that names itself",
        "<!DOCTYPE c [<!ENTITY e \"&f;\"><!ENTITY f \"&e;\">]><c>" + a + "<x>&e;</x></c>", "A");
    row("a flat entity bomb",
        flatBomb(4000) + "<c>" + a + "<x>" + QByteArray("&e8;").repeated(30000) + "</x></c>", "A");
    row("an external entity",
        "<!DOCTYPE c [<!ENTITY e SYSTEM \"/etc/passwd\">]><c>" + a + "<x>&e;</x>" + b + "</c>",
        "A");
    row("a small entity", "<!DOCTYPE c [<!ENTITY e \"Z\">]><c>" + fileElement("&e;") + "</c>", "Z");
}

void DamagedXmlTest::theCatalogueUpToTheDamageIsUsed()
{
    QFETCH(QByteArray, catalog);
    QFETCH(QString, ids);

    if (QTest::currentDataTag() == QByteArray("an external entity")) {
        // Qt leaves such a reference out; what matters is that nothing is fetched.
        QVERIFY(regions(catalog).startsWith(text("A")));
        return;
    }
    QCOMPARE(regions(catalog), ids);
}

void DamagedXmlTest::theNamesUpToTheDamageAreUsed()
{
    writeFile(m_data->namesFile(),
              "<n><region id=\"1\" name=\"One\"/><region id=\"2\" name=\"Two\"></n>"
              "<region id=\"3\" name=\"Three\"/></n>");

    const QMap<QString, QString> names =
        m_processor.readRegionNames(m_data->namesFile(), m_data->contentFile());

    QCOMPARE(names.keys(), QStringList({text("1"), text("2")}));
}

void DamagedXmlTest::everyCutGivesABeginningOfTheCatalogue()
{
    const QByteArray catalog = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<c>"
        + fileElement("A", fileElement("\xc3\xa4")) + fileElement("B") + "</c>\n";
    // A region counts from the end of its own start tag; while it is open it comes last.
    const QStringList allowed {QString(), text("A"), text("\xc3\xa4 A"), text("\xc3\xa4 A B")};
    int stage = 0;
    for (int length = 0; length <= catalog.size(); ++length) {
        const int now = int(allowed.indexOf(regions(catalog.left(length))));
        QVERIFY2(now >= stage, qPrintable(QString::number(length)));
        stage = now;
    }
    QCOMPARE(stage, 3);
}

void DamagedXmlTest::encodings_data()
{
    QTest::addColumn<QByteArray>("catalog");
    QTest::addColumn<QString>("name");
    const QString name = text("\xc3\x85land \xe2\x82\xac");
    const QByteArray utf8 = "<c><File Id=\"1\" Description=\"" + name.toUtf8()
        + "\" ZipFileSize=\"1\" Link=\"l\"/></c>";
    const auto declared = [](const char *encoding) {
        return QByteArray("<?xml version=\"1.0\" encoding=\"") + encoding + "\"?>\n";
    };
    const QString plain = QString::fromUtf8(utf8);
    QByteArray little("\xff\xfe");
    QByteArray big("\xfe\xff");
    for (const QChar c : plain) {
        little += char(c.cell());
        little += char(c.row());
        big += char(c.row());
        big += char(c.cell());
    }
    QTest::newRow("none declared") << utf8 << name;
    QTest::newRow("UTF-8") << declared("UTF-8") + utf8 << name;
    QTest::newRow("UTF-8 in single quotes")
        << "<?xml version='1.0' encoding='utf-8' standalone='yes'?>" + utf8 << name;
    QTest::newRow("UTF-8 with a byte order mark") << "\xef\xbb\xbf" + utf8 << name;
    QTest::newRow("both") << "\xef\xbb\xbf" + declared("UTF-8") + utf8 << name;
    QTest::newRow("ANSI, which is no encoding") << declared("ANSI") + utf8 << name;
    QTest::newRow("UTF-16, which the declaration disproves") << declared("UTF-16") + utf8 << name;
    QTest::newRow("UTF-16, little end first") << little << name;
    QTest::newRow("UTF-16, big end first") << big << name;
    QTest::newRow("Latin-1") << declared("ISO-8859-1")
            + "<c><File Id='1' Description='\xc5land' ZipFileSize='' Link=''/></c>"
                             << text("\xc3\x85land");
    QTest::newRow("Latin-1 that says UTF-8")
        << declared("UTF-8") + "<c><File Id='1' Description='\xc5land' ZipFileSize='' Link=''/></c>"
        << text("\xef\xbf\xbdland");
    QTest::newRow("another version") << "<?xml version=\"1.1\" encoding=\"UTF-8\"?>" + utf8 << name;
}

void DamagedXmlTest::encodings()
{
    QFETCH(QByteArray, catalog);
    QFETCH(QString, name);
    writeFile(m_data->catalogFile(), catalog);

    const QList<MapRegion *> regions = m_processor.readCatalog(m_data->catalogFile());

    QCOMPARE(regions.size(), 1);
    QCOMPARE(regions.at(0)->name(), name);
}

void DamagedXmlTest::aCharacterMayBeCutByTheChunksOfReading()
{
    // Characters of four bytes, at every offset to the reader's chunks; UTF-16 cuts their pairs.
    const QByteArray map("\xf0\x9f\x97\xba");
    for (int shift = 0; shift < 4; ++shift) {
        QByteArray catalog = "<c>" + QByteArray(shift, ' ');
        for (int i = 0; i < 100; ++i)
            catalog += "<x y=\"" + map.repeated(500) + "\"/>";
        catalog += fileElement(map) + "</c>";
        QCOMPARE(regions(catalog), QString::fromUtf8(map));

        const QString plain = QString::fromUtf8(catalog);
        QByteArray wide("\xff\xfe");
        wide.append(reinterpret_cast<const char *>(plain.utf16()), plain.size() * 2);
        QCOMPARE(regions(wide), QString::fromUtf8(map));
    }
}

void DamagedXmlTest::quotesInAValueAreNoAttributes()
{
    const QByteArray apostrophes(100000, '\'');
    const QByteArray quotes(100000, '"');

    QCOMPARE(regions("<c>" + fileElement("A") + "<x y=\"" + apostrophes + "\" z='" + quotes + "'/>"
                     + apostrophes + fileElement("B") + "</c>"),
             text("A B"));
}

void DamagedXmlTest::theContentFileIsUsedWholeOrNotAtAll_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isUsed");
    const QByteArray whole = contentXml({{"42", {"a/3/x.cdt"}}, {"7", {}}});
    const auto root = [](const QByteArray &more) {
        return "<directory map-version=\"1.2\"><regions><region id=\"142\"/><region id=\"17\"/>"
            + more + "</regions></directory>";
    };
    QTest::newRow("whole") << whole << true;
    QTest::newRow("with a byte order mark") << "\xef\xbb\xbf" + whole << true;
    QTest::newRow("with blanks behind") << whole + " \n\n" << true;
    QTest::newRow("with a comment behind") << whole + "<!-- x -->" << true;
    QTest::newRow("without a declaration") << root(QByteArray()) << true;
    QTest::newRow("a declared prefix") << root("<x:y xmlns:x='u' x:z='1'/>") << true;
    QTest::newRow("a small entity")
        << "<!DOCTYPE directory [<!ENTITY e \"Z\">]>" + root("<x>&e;</x>") << true;
    QTest::newRow("text behind") << whole + "x" << false;
    QTest::newRow("a second root") << whole + "<x/>" << false;
    QTest::newRow("a NUL behind") << whole + QByteArray(1, '\0') << false;
    QTest::newRow("a tag that does not match") << root("<x></y>") << false;
    QTest::newRow("an attribute given twice") << root("<x a='1' a='2'/>") << false;
    QTest::newRow("a prefix that is not declared") << root("<x:y/>") << false;
    QTest::newRow("an unknown encoding") << QByteArray(whole).replace("UTF-8", "ANSI") << false;
    QTest::newRow("a wrong byte") << root("<x y='\xc5land'/>") << false;
    QTest::newRow("an unknown entity") << root("&foo;") << false;
    QTest::newRow("an entity bomb") << nestedBomb() + root("<x>&e8;</x>") << false;
    QTest::newRow("another version")
        << QByteArray(whole).replace("version=\"1.0\"", "version=\"2.0\"") << false;
}

void DamagedXmlTest::theContentFileIsUsedWholeOrNotAtAll()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isUsed);
    writeFile(m_data->contentFile(), content);

    const QStringList ids = m_processor.readLocalContent(m_data->contentFile());
    const QString version = m_processor.readLocalMapVersion(m_data->contentFile());

    QCOMPARE(ids, isUsed ? QStringList({text("42"), text("7")}) : QStringList());
    QCOMPARE(version, isUsed ? text("1.2") : QString());
}

void DamagedXmlTest::everyCutOfAContentFileGivesNothing()
{
    const QByteArray whole = contentXml({{"42", {"a/3/x.cdt"}}}).trimmed();
    for (int length = 0; length < whole.size(); ++length) {
        writeFile(m_data->contentFile(), whole.left(length));
        QCOMPARE(m_processor.readLocalContent(m_data->contentFile()), QStringList());
        QCOMPARE(m_processor.readLocalMapVersion(m_data->contentFile()), QString());
    }
    writeFile(m_data->contentFile(), whole);
    QCOMPARE(m_processor.readLocalContent(m_data->contentFile()), QStringList {text("42")});
}

void DamagedXmlTest::deepFilesAreRead_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<bool>("isUsed");
    QTest::newRow("10000 levels") << 10000 << true;
    QTest::newRow("999000 levels") << 999000 << true;
    QTest::newRow("more than a file can mean") << 1100000 << false;
}

void DamagedXmlTest::deepFilesAreRead()
{
    QFETCH(int, depth);
    QFETCH(bool, isUsed);
    const QByteArray deep = QByteArray("<x>").repeated(depth) + QByteArray("</x>").repeated(depth);

    QCOMPARE(regions("<c>" + fileElement("A") + deep + fileElement("B") + "</c>"),
             isUsed ? text("A B") : text("A"));
    writeFile(m_data->namesFile(), "<n><region id=\"1\" name=\"a\"/>" + deep + "</n>");
    QCOMPARE(m_processor.readRegionNames(m_data->namesFile(), m_data->contentFile()).size(), 1);
    writeFile(m_data->contentFile(),
              "<directory><regions><region id=\"12\"/></regions>" + deep + "</directory>");
    QCOMPARE(m_processor.readLocalContent(m_data->contentFile()).size(), isUsed ? 1 : 0);
}

void DamagedXmlTest::deepRegionsAreRead()
{
    const int depth = 10000;
    const QByteArray tag = "<File Id=\"1\" Description=\"d\" ZipFileSize=\"1\" Link=\"l\">";
    // Closed and cut.
    for (const QByteArray &end : {QByteArray("</File>").repeated(depth) + "</c>", QByteArray()}) {
        writeFile(m_data->catalogFile(), "<c>" + tag.repeated(depth) + end);

        const QList<MapRegion *> regions = m_processor.readCatalog(m_data->catalogFile());

        QCOMPARE(int(regions.size()), depth);
        QVERIFY(!regions.last()->hasParent());
        auto children = regions.last()->children();
        QCOMPARE(children.at(&children, 0), regions.at(depth - 2));
    }
}

namespace {

using Writer = std::function<void(QFile &)>;

void writeRepeated(QFile &file, const QByteArray &part, qint64 bytes)
{
    const QByteArray block = part.repeated(int(qMax<qint64>(1, 65536 / part.size())));
    for (qint64 written = 0; written < bytes; written += block.size())
        file.write(block);
}

// A tag with this many attributes.
QByteArray wideTag(int attributes)
{
    QByteArray tag("<x");
    for (int i = 0; i < attributes; ++i)
        tag += " a" + QByteArray::number(i) + "=\"\"";
    return tag + "/>";
}

// In a process of its own: what it used at most cannot be asked of a part of its life.
int readAndTellMemory(const QString &path)
{
    MapCatalogProcessor processor;
    const auto regions = processor.readCatalog(path).size();
    const auto ids = processor.readLocalContent(path).size();
    const QByteArray status = readFile(QStringLiteral("/proc/self/status"));
    const QByteArray line = status.mid(status.indexOf("VmHWM:") + 6, 20).simplified();
    printf("%d %d %s\n", int(regions), int(ids), line.left(line.indexOf(' ')).constData());
    return 0;
}

} // namespace

void DamagedXmlTest::hugeFilesTakeLittleMemory_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("regions");
    QTest::addColumn<int>("ids");
    QTest::addColumn<int>("memory"); // MiB; a program without a file takes 15
    // Less than a copy of the file would take.
    const int little = 36;
    QTest::newRow("25 MB of elements") << 0 << 2 << 1 << little;
    QTest::newRow("25 MB of text") << 1 << 1 << 0 << little;
    QTest::newRow("a tag of 25 MB") << 2 << 1 << 0 << little;
    QTest::newRow("a comment of 25 MB") << 3 << 1 << 0 << little;
    // As many as there may be; a longer file has no more.
    QTest::newRow("25 MB of open elements") << 4 << 1 << 0 << 400;
    QTest::newRow("25 MB of a closed root's rest") << 5 << 1 << 1 << little;
    QTest::newRow("a tag of a million attributes") << 6 << 1 << 0 << little;
    QTest::newRow("a tag of 100000 attributes") << 7 << 1 << 0 << little;
    QTest::newRow("many tags of 900 attributes") << 8 << 2 << 1 << little;
    QTest::newRow("a text full of entities") << 9 << 1 << 0 << 100;
}

void DamagedXmlTest::hugeFilesTakeLittleMemory()
{
    QFETCH(int, kind);
    QFETCH(int, regions);
    QFETCH(int, ids);
    QFETCH(int, memory);
    qint64 size = 25 * 1024 * 1024;
#ifdef VEXA_SANITIZED
    // The checkers take their time, and keep memory aside.
    size /= 5;
    memory = 2000;
#endif
    const Writer middle[] = {
        [&](QFile &f) {
            writeRepeated(f, "<TI name=\"3fa9\" path=\"\\a\\3\\3fa9.cdt\"/>\n", size);
        },
        [&](QFile &f) { writeRepeated(f, "x", size); },
        [&](QFile &f) {
            f.write("<x y=\"");
            writeRepeated(f, "x", size);
            f.write("\"/>");
        },
        [&](QFile &f) {
            f.write("<!--");
            writeRepeated(f, "x", size);
            f.write("-->");
        },
        [&](QFile &f) { writeRepeated(f, "<x>", size); },
        [&](QFile &f) {
            f.write("</directory>");
            writeRepeated(f, "<!--x-->\n", size);
        },
        [&](QFile &f) { f.write(wideTag(1000000)); },
        [&](QFile &f) { f.write(wideTag(100000)); },
        [&](QFile &f) { writeRepeated(f, wideTag(900), 2 * 1024 * 1024); },
        [&](QFile &f) {
            f.write("<x>");
            writeRepeated(f, "&e8;", size);
            f.write("</x>");
        },
    };
    const QString path = m_data->catalogFolder() + text("/huge.xml");
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        if (kind == 9)
            file.write(flatBomb(100));
        file.write("<directory><regions><region id=\"12\"/></regions>" + EmptyRegion);
        middle[kind](file);
        if (kind != 5)
            file.write(EmptyRegion + "</directory>");
    }
    QProcess child;

    child.start(QCoreApplication::applicationFilePath(), {text("--read"), path});

    QVERIFY(child.waitForFinished(150000));
    QCOMPARE(child.exitStatus(), QProcess::NormalExit);
    const QList<QByteArray> told = child.readAllStandardOutput().simplified().split(' ');
    QCOMPARE(told.value(0).toInt(), regions);
    QCOMPARE(told.value(1).toInt(), ids);
    const int taken = told.value(2).toInt(); // kB
    QVERIFY2(taken > 0 && taken < memory * 1024, told.value(2).constData());
}

void DamagedXmlTest::noDamageIsLogged()
{
    const LogCatcher log(4);

    QCOMPARE(regions("<c>" + fileElement("A") + "<"), text("A"));
    writeFile(m_data->contentFile(), "<directory><");
    m_processor.readLocalContent(m_data->contentFile());
    m_processor.readRegionNames(m_data->contentFile(), m_data->contentFile());

    QCOMPARE(log.lines().size(), 0);
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == QLatin1String("--read"))
        return readAndTellMemory(app.arguments().value(2));
    DamagedXmlTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_damagedxml.moc"
