// SPDX-License-Identifier: MIT
// The command that looks through a content server's folder: its text files.
#include "cityindex/cityindexlistprocessor.h"
#include "lintrig.h"
#include <QtTest>

class CliLintXmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { rig = std::make_unique<LintRig>(); }
    void cleanup() { rig.reset(); }

    void versionsAndFilesAreChecked_data();
    void versionsAndFilesAreChecked();
    void cataloguesAreChecked_data();
    void cataloguesAreChecked();
    void brokenXmlIsFoundWhereItIs_data();
    void brokenXmlIsFoundWhereItIs();
    void namesAreChecked_data();
    void namesAreChecked();
    void aNameThatDevicesBringAlongIsFound();
    void cityIndexesAreChecked_data();
    void cityIndexesAreChecked();
    void contentFilesAreChecked_data();
    void contentFilesAreChecked();
    void aFileWithoutMeasureIsNotRead();
    void whatBelongsToARegionThatIsNotListedIsNotFoundAgain();
    void addressesBelowTheServersAreLookedForInTheFolder();

private:
    std::unique_ptr<LintRig> rig;
};

namespace {

void columns()
{
    QTest::addColumn<Files>("files");
    QTest::addColumn<QStringList>("expected");
}

QTestData &row(const char *name, const QString &file, const QByteArray &bytes,
               const QStringList &expected)
{
    return QTest::newRow(name) << Files {{file, bytes}} << expected;
}

// Where in which file, behind the file's name.
QStringList at(const QString &file, std::initializer_list<const char *> places)
{
    QStringList result;
    for (const char *place : places)
        result.append(file + QString::fromUtf8(place));
    return result;
}

QByteArray fileTag(const QByteArray &attributes)
{
    return "  <File " + attributes + " />\n";
}

} // namespace

void CliLintXmlTest::versionsAndFilesAreChecked_data()
{
    columns();
    const QString version = QStringLiteral("version.txt");
    row("no version", version, QByteArray(), at(version, {" missing-file"}));
    row("an empty version", version, "", at(version, {":1:1 version"}));
    row("two lines", version, "26.11.21.00\n26.12.01.00\n", at(version, {":1:1 version"}));
    row("a version of one digit", version, "6.11.21.00\n",
        at(version, {":1:1 missing-file", ":1:1 version"}));
    row("a version of three parts", version, "26.11.21\n",
        at(version, {":1:1 missing-file", ":1:1 version"}));
    row("no English names", NamesFile, QByteArray(), at(NamesFile, {" missing-file"}));
    for (const char *name : {"Catalog-26.xml", "catalog.xml", "RegionName-lang-001.xml",
                             "regionname-lang.xml", "version.TXT", "content.XML", "cityindex.XML"})
        row(name, QString::fromUtf8(name), "", at(QString::fromUtf8(name), {" file-name"}));
    for (const char *name :
         {"regionname-lang-1.xml", "regionname-lang-024.xml", "regionname-lang-fi.xml"})
        row(name, QString::fromUtf8(name), LintRig::names(""),
            at(QString::fromUtf8(name), {" language"}));
    row("a file that nobody means for devices", QStringLiteral("index.html"), "", {});
    row("no config of a device", QStringLiteral("config.cfg"), "1.0.23.7\n",
        at(QStringLiteral("config.cfg"), {" config"}));
    row("text instead of numbers", QStringLiteral("config.cfg"), "01.00.23.07 and more",
        at(QStringLiteral("config.cfg"), {" config"}));
    row("a negative number", QStringLiteral("config.cfg"),
        QByteArray("\1\0\0\0\0\0\0\0\x17\0\0\xff\7\0\0\0", 16),
        at(QStringLiteral("config.cfg"), {" config"}));
    row("a good config", QStringLiteral("config.cfg"),
        QByteArray("\1\0\0\0\0\0\0\0\x17\0\0\0\7\0\0\0", 16), {});
    row("a folder in its place", QStringLiteral("config.cfg/x"), "",
        at(QStringLiteral("config.cfg"), {" unreadable"}));
}

void CliLintXmlTest::versionsAndFilesAreChecked()
{
    QFETCH(Files, files);
    QFETCH(QStringList, expected);
    rig->write(files);

    QCOMPARE(rig->findings(), expected);
}

void CliLintXmlTest::cataloguesAreChecked_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArray &bytes,
                        std::initializer_list<const char *> places) {
        QTest::newRow(name) << bytes << at(CatalogueFile, places);
    };
    const auto inside = [&row](const char *name, const QByteArray &lines,
                               std::initializer_list<const char *> places) {
        row(name, LintRig::catalogue(lines), places);
    };
    const QByteArray fi = "Id=\"FI\" Description=\"Finland\" ZipFileSize=\"2048\" ";
    const QByteArray link = "Link=\"archives/FI.tar\"";
    const QByteArray good = fileTag(fi + link);

    row("another version within", "<Catalog Version=\"1\">" + LintRig::catalogue().mid(31),
        {":1:10 version"});
    row("a region as root",
        "<File Id=\"EU\" Description=\"E\" ZipFileSize=\"1\" Link=\"a\">\n" + fileTag(fi + link)
            + fileTag(QByteArray(fi + link).replace("FI", "EU").replace("2048", "3072"))
            + "</File>",
        {":1:1 root"});
    inside("an element in lower case", good + "<file Id=\"XX\"/>", {":4:1 unknown-element"});
    inside("what lies in a foreign element", good + "<Group><File/><File Id=\"XX\"/></Group>",
           {":4:1 unknown-element"});
    inside("a prefix", good + "<m:File />", {":4:1 unknown-element"});
    inside(
        "each attribute that is missing",
        good
            + "<File Description=\"\" ZipFileSize=\"\" Link=\"\"/>\n<File Id=\"\" ZipFileSize=\"\""
              " Link=\"\"/>\n<File Id=\"\" Description=\"\" Link=\"\"/>\n"
              "<File Id=\"\" Description=\"\" ZipFileSize=\"\"/>",
        {":4:1 missing-attribute", ":5:1 missing-attribute", ":6:1 missing-attribute",
         ":7:1 missing-attribute"});
    inside("an attribute in lower case",
           good + "<File id=\"XX\" Description=\"\" ZipFileSize=\"\" Link=\"\"><File/></File>",
           {":4:1 missing-attribute", ":4:7 unknown-attribute"});
    inside("an attribute more", fileTag("\n   Size='1'\n" + fi + link), {":4:4 unknown-attribute"});
    inside("an id that comes twice",
           good
               + "  <File Id=\"EU\" Description=\"E\" "
                 "ZipFileSize=\"2048\" Link=\"archives/../archives/FI.tar?2\"/>\n",
           {":4:9 duplicate-id", ":4:52 same-archive"});
    inside("an empty id",
           good + fileTag("Id=\"\" Description=\"X\" ZipFileSize=\"1\" Link=\"http://x/y\""),
           {":4:9 empty-value"});
    inside("blanks around an id", fileTag(QByteArray(fi).replace("FI", " FI\n") + link),
           {":3:9 blanks"});
    inside("an empty name", fileTag(QByteArray(fi).replace("Finland", " ") + link),
           {":3:17 empty-value"});
    for (const char *size : {"", "12abc", "2 048", "2048.0", "99999999999999999999", "-1"})
        inside(qPrintable(QStringLiteral("the size \"%1\"").arg(QString::fromUtf8(size))),
               fileTag(QByteArray(fi).replace("2048", size) + link), {":3:39 size"});
    inside("a size with blanks", fileTag(QByteArray(fi).replace("2048", " 2048 ") + link), {});
    inside("another size", fileTag(QByteArray(fi).replace("2048", "2047") + link),
           {":3:39 other-size"});
    inside("a size of nothing", fileTag(QByteArray(fi).replace("2048", "0") + link),
           {":3:39 other-size"});
    inside("text", good + "\n  Finland", {":5:3 text"});
    inside("marked text", good + "<![CDATA[x]]>", {":4:10 text"});
    inside("no archive",
           good + fileTag("Id=\"X\" Description=\"X\" ZipFileSize=\"1\" Link=\"X.zip\""),
           {":4:48 missing-archive"});
    inside("a folder for an archive",
           good + fileTag("Id=\"X\" Description=\"X\" ZipFileSize=\"1\" Link=\"archives\""),
           {":4:48 missing-archive"});
    for (const char *address :
         {"", "/other/FI.tar", "../FI.tar", "archives/", "ftp://x/FI.tar", "http:///FI.tar",
          " archives/FI.tar", "archives/FI.tar#1", "%2e%2e/FI.tar", "http://"})
        inside(qPrintable(QStringLiteral("the link \"%1\"").arg(QString::fromUtf8(address))),
               good
                   + fileTag("Id=\"X\" Description=\"X\" ZipFileSize=\"1\" Link=\""
                             + QByteArray(address) + '"'),
               {":4:48 link-address"});
    inside("another server's archive",
           good + fileTag("Id=\"X\" Description=\"X\" ZipFileSize=\"1\" Link=\"http://x/y\""), {});
    row("no region", "<Catalog/>", {" no-regions"});
    row("no bytes", "", {" empty"});
    row("an encoding that not every build knows",
        "<?xml version=\"1.0\" encoding=\"KOI8-R\"?>" + LintRig::catalogue(), {":1:31 encoding"});
    row("16 bits that are none",
        "<?xml version=\"1.0\"\n encoding='UTF-16'?>" + LintRig::catalogue(), {":2:12 encoding"});
    row("latin letters without a word of it", LintRig::catalogue().replace("Finland", "\xc5land"),
        {":3:30 encoding"});
    row("latin letters that are declared",
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"
            + LintRig::catalogue().replace("Finland", "\xc5land"),
        {});
    row("a byte order mark", "\xef\xbb\xbf" + LintRig::catalogue("<x/>\n" + good),
        {":3:1 unknown-element"});
}

void CliLintXmlTest::cataloguesAreChecked()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, expected);
    rig->write({{CatalogueFile, bytes}, {NamesFile, LintRig::names("")}});

    const ProgramRun run = rig->run({QStringLiteral("--json")});

    QCOMPARE(LintRig::findingsIn(run), expected);
    QCOMPARE(run.code, expected.isEmpty() ? 0 : 6);
    QCOMPARE(run.object().value(QLatin1String("regions")).toInt(), rig->regionsOfTheLibrary());
}

void CliLintXmlTest::brokenXmlIsFoundWhereItIs_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a tag that ends another")
        << CatalogueFile << LintRig::catalogue().replace(" </File>", " </Fil>")
        << QStringLiteral(":4: broken XML: .+; nothing behind this is read");
    QTest::newRow("behind a declaration of two lines")
        << CatalogueFile
        << "<?xml version=\"1.0\"\n?>" + LintRig::catalogue().replace(" </File>", " </Fil>")
        << QStringLiteral(":5: broken XML: .+");
    QTest::newRow("an attribute twice")
        << CatalogueFile << LintRig::catalogue().replace("Id=\"FI\"", "Id=\"FI\" Id=\"FI\"")
        << QStringLiteral(":3: broken XML: .+");
    QTest::newRow("a cut catalogue")
        << CatalogueFile << LintRig::catalogue().chopped(12)
        << QStringLiteral(":4: broken XML: .+; devices refuse a file that is cut");
    QTest::newRow("names with an ampersand")
        << NamesFile << LintRig::names("<region id=\"FI\" name=\"A & B\"/>")
        << QStringLiteral(":2: broken XML: .+; nothing behind this is read");
    QTest::newRow("a tag without an end")
        << NamesFile << LintRig::names("<region id=\"FI\" name=\"A\"")
        << QStringLiteral(":3: broken XML: .+");
    QTest::newRow("a sign-in page in the place of names")
        << NamesFile << QByteArray("<!DOCTYPE html>\n<p><br></p>")
        << QStringLiteral(":2: broken XML: .+");
    QTest::newRow("a content file in a wrong encoding")
        << QStringLiteral("content.xml")
        << QByteArray("<directory map-version=\"26.11.21.00\">\n<regions>\n<region id=\"1FI\" "
                      "name=\"\xc5\"/></regions></directory>")
        << QStringLiteral(":1: broken XML: .+; the whole file counts as empty");
}

void CliLintXmlTest::brokenXmlIsFoundWhereItIs()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, expected);
    rig->write({{file, bytes}});

    const ProgramRun run = rig->run();

    QCOMPARE(run.code, 6);
    // Columns of errors differ between the versions of Qt.
    const QRegularExpression form(
        QRegularExpression::escape(rig->path(file))
        + QString(expected).replace(0, 3, expected.left(3) + QStringLiteral("\\d+:"))
        + QStringLiteral(" \\[broken-xml\\]\n"));
    QVERIFY2(form.match(QString::fromUtf8(run.out)).hasMatch(), run.out.constData());
    // The reader only says that there are some.
    QCOMPARE(run.out.contains("content.xml:3:24: the bytes here are no character"),
             bytes.contains('\xc5'));
}

void CliLintXmlTest::namesAreChecked_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArray &bytes,
                        std::initializer_list<const char *> places) {
        QTest::newRow(name) << bytes << at(NamesFile, places);
    };
    const auto inside = [&row](const char *name, const QByteArray &elements,
                               std::initializer_list<const char *> places) {
        row(name, LintRig::names(elements), places);
    };
    inside("a region that no catalogue has", "<region id=\"SE\" name=\"S\"/>",
           {":2:10 unknown-region"});
    inside("no id", "<region name=\"S\"/>", {":2:2 missing-attribute"});
    inside("no name", "<region id=\"FI\"/>", {":2:2 missing-attribute"});
    inside("attributes as in a catalogue", "<region Id=\"FI\" Name=\"S\"/>",
           {":2:2 missing-attribute", ":2:10 unknown-attribute", ":2:18 unknown-attribute"});
    inside("another element", "<Region id=\"FI\" name=\"S\"/>", {":2:2 unknown-element"});
    inside("names in a group are read", "<group><region id=\"FI\" name=\"S\"/></group>",
           {":2:2 unknown-element"});
    inside("an id twice", "<region id=\"FI\" name=\"S\"/>\n<region id=\"FI\" name=\"T\"/>",
           {":3:9 duplicate-id"});
    inside("an empty name", "<region id=\"FI\" name=\"\"/>", {":2:18 empty-value"});
    inside("characters of two units", "<!--\xf0\x9f\x97\xba--><region id=\"SE\" name=\"S\"/>",
           {":2:18 unknown-region"});
    inside("text", "Finland", {":2:2 text"});
    row("a region as root", "<region id=\"FI\" name=\"S\"/>", {":1:1 root"});
    row("no bytes", "", {" empty"});
    row("no entries", LintRig::names(""), {});
    row("declared and with brackets in comments and quotes",
        "<?xml version=\"1.0\" encoding=\"utf-8\"?><!DOCTYPE regions [<!ELEMENT a ANY> <!-- ' -->]>"
        "<regions><!-- <region/> --><?x <region/>?><region id=\"FI\" name='>\"'/></regions>",
        {});
}

void CliLintXmlTest::namesAreChecked()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, expected);
    rig->write({{NamesFile, bytes}});

    QCOMPARE(rig->findings(), expected);
}

void CliLintXmlTest::aNameThatDevicesBringAlongIsFound()
{
    rig->write({{CatalogueFile, LintRig::catalogue().replace("FI\"", "411\"")},
                {NamesFile, LintRig::names("<region id=\"411\" name=\"T\"/>")}});

    QCOMPARE(rig->findings(), at(NamesFile, {":2:10 fixed-name"}));
}

void CliLintXmlTest::cityIndexesAreChecked_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("read");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArray &bytes, int read,
                        std::initializer_list<const char *> places) {
        QTest::newRow(name) << bytes << read << at(QStringLiteral("cityindex.xml"), places);
    };
    const auto list = [&row](const char *name, const QByteArray &elements, int read,
                             std::initializer_list<const char *> places) {
        row(name, "<cityindexlist>\n" + elements + "\n</cityindexlist>", read, places);
    };
    const QByteArray good = "<cityindex id=\"hel\" name=\"H\" version=\"1\"/>";
    list("a good one", good, 1, {});
    list("none", "", 0, {});
    row("as the library writes it",
        "<?xml version=\"1.0\" encoding=\"ANSI\"?>\n<cityindexlist>\n <cityindex id=\"hel\" "
        "name=\"\xc3\xa5\" version=\"1\"/>\n</cityindexlist>\n",
        1, {});
    list("a byte of another encoding", "<cityindex id=\"a\" name=\"\xe5\" version=\"\"/>", 1,
         {":2:25 encoding"});
    list("no version", "<cityindex id=\"hel\" name=\"H\"/>", 0, {":2:1 missing-attribute"});
    list("an attribute in capitals", "<cityindex Id=\"hel\" name=\"H\" version=\"1\"/>", 0,
         {":2:1 missing-attribute", ":2:12 unknown-attribute"});
    list("another attribute", "<cityindex id=\"h\" name=\"H\" version=\"1\" size=\"1\"/>", 1,
         {":2:40 unknown-attribute"});
    list("another element", "<CityIndex id=\"hel\" name=\"H\" version=\"1\"/>", 0,
         {":2:1 unknown-element"});
    list("cities in a group are read", "<group>" + good + "</group>", 1, {":2:1 unknown-element"});
    list("an id twice", good + '\n' + good, 1, {":3:12 duplicate-id"});
    list("no id", "<cityindex id=\"\" name=\"H\" version=\"1\"/>", 1, {":2:12 empty-value"});
    list("an id with blanks", "<cityindex id=\" h\" name=\"H\" version=\"1\"/>", 1,
         {":2:12 blanks"});
    list("no name", "<cityindex id=\"h\" name=\"\" version=\"1\"/>", 1, {":2:19 empty-value"});
    list("text", "Helsinki", 0, {":2:1 text"});
    row("a city as root", good, 0, {":1:1 root"});
    row("no bytes", "", 0, {" empty"});
}

void CliLintXmlTest::cityIndexesAreChecked()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, read);
    QFETCH(QStringList, expected);
    rig->write({{QStringLiteral("cityindex.xml"), bytes}});

    QCOMPARE(rig->findings(), expected);
    QMap<QString, CityIndex> cities;
    CityIndexListProcessor().readCityIndexList(rig->path(QStringLiteral("cityindex.xml")), cities);
    QCOMPARE(int(cities.size()), read);
}

void CliLintXmlTest::contentFilesAreChecked_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArray &bytes,
                        std::initializer_list<const char *> places) {
        QTest::newRow(name) << bytes << at(QStringLiteral("content.xml"), places);
    };
    const QByteArray tile = "<TI name=\"a\" path=\"\\0\\1\\a.cdt\"/>";
    const auto file = [&](const QByteArray &regions, const QByteArray &tiles) {
        return "<directory map-version=\"26.11.21.00\">\n<diskcache>\n" + tiles
            + "\n</diskcache>\n<regions>\n" + regions + "\n</regions>\n</directory>";
    };
    const auto regions = [&](const char *name, const QByteArray &elements,
                             std::initializer_list<const char *> places) {
        row(name, file(elements, tile), places);
    };
    regions("a good one", "<region id=\"1FI\" name=\"F\">" + tile + "</region>", {});
    regions("an id without the 1", "<region id=\"FI\" name=\"F\"/>", {":6:9 id-without-1"});
    regions("an id of nothing", "<region id=\"1\" name=\"F\"/>", {":6:9 id-without-1"});
    regions("no id", "<region name=\"F\"/>", {":6:1 missing-attribute"});
    regions("a region that no catalogue has", "<region id=\"1SE\" name=\"S\"/>",
            {":6:9 unknown-region"});
    regions("an id twice", "<region id=\"1FI\" name=\"F\"/>\n<region id=\"1FI\" name=\"F\"/>",
            {":7:9 duplicate-id"});
    regions("another element", "<Region id=\"1FI\" name=\"F\"/>", {":6:1 unknown-element"});
    regions("another namespace", "<region id=\"1FI\" name=\"F\" xmlns=\"x:y\"/>",
            {":6:1 unknown-element"});
    regions("a tile by its name alone", "<region id=\"1FI\" name=\"F\">\n<TI name=\"a\"/></region>",
            {":7:1 missing-attribute"});
    regions("a tile that is not there",
            "<region id=\"1FI\" name=\"F\">\n<TI path=\"\\0\\1\\b.cdt\"/></region>",
            {":7:5 unknown-tile"});
    regions("text", "Finland", {":6:1 text"});
    row("a tile without a path", file("", "<TI name=\"a\"/>"), {":3:1 missing-attribute"});
    row("a tile twice", file("", tile + "\n" + tile), {":4:14 duplicate-tile"});
    row("a tile outside", file("", "<TI name=\"a\" path=\"\\..\\..\\a.cdt\"/>"), {":3:14 outside"});
    row("no tile", file("", "<TI name=\"a\" path=\"\\a\\b\\c.txt\"/>"), {":3:14 no-tile"});
    row("another root", "<Directory map-version=\"26.11.21.00\"/>", {":1:1 root"});
    row("a root with a namespace", "<directory xmlns=\"x:y\" map-version=\"26.11.21.00\"/>",
        {":1:1 root"});
    row("no version", "<directory/>", {":1:1 missing-attribute"});
    row("an empty version", "<directory map-version=\"\"/>", {":1:12 empty-value"});
    row("a version of one digit", "<directory map-version=\"26.11.21.0\"/>", {":1:12 version"});
    row("no catalogue of its version", "<directory map-version=\"26.11.22.00\"/>",
        {":1:12 missing-file"});
    row("an element between", "<directory map-version=\"26.11.21.00\"><Regions/></directory>",
        {":1:38 unknown-element"});
    row("no bytes", "", {" empty"});
}

void CliLintXmlTest::contentFilesAreChecked()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, expected);
    rig->write({{QStringLiteral("content.xml"), bytes}});
    QCOMPARE(rig->findings(), expected);

    // Without a version of its own it is a data set as on a device, which has no archives.
    QVERIFY(QFile::remove(rig->path(QStringLiteral("version.txt"))));
    QVERIFY(QDir(rig->path(QStringLiteral("archives"))).removeRecursively());
    QCOMPARE(rig->findings(), expected);
}

void CliLintXmlTest::aFileWithoutMeasureIsNotRead()
{
    QFile names(rig->path(NamesFile));
    QVERIFY(names.open(QIODevice::ReadWrite));
    QVERIFY(names.resize(256 * 1024 * 1024 + 1)); // takes no room on the disk

    QCOMPARE(rig->findings(), at(NamesFile, {" unreadable"}));
}

void CliLintXmlTest::whatBelongsToARegionThatIsNotListedIsNotFoundAgain()
{
    rig->write({{NamesFile,
                 LintRig::names("<region id=\"FI\" name=\"F\"/>"
                                "<region id=\"AX\" name=\"A\"/>")},
                {QStringLiteral("archives/AX.tar"), "x"},
                {CatalogueFile,
                 LintRig::catalogue(fileTag("id=\"FI\" Description=\"F\" ZipFileSize=\"1\" "
                                            "Link=\"archives/FI.tar\">")
                                        .replace(" />", "")
                                    + fileTag("Id=\"AX\" Link=\"archives/AX.tar\"") + "</File>")}});
    QCOMPARE(rig->findings(),
             at(CatalogueFile, {":3:3 missing-attribute", ":3:9 unknown-attribute"}));

    // Behind an error nobody knows which regions there are.
    rig->write({{CatalogueFile, LintRig::catalogue("<File&>")}});
    QCOMPARE(rig->findings().size(), 1);
}

void CliLintXmlTest::addressesBelowTheServersAreLookedForInTheFolder()
{
    rig->write(
        {{CatalogueFile,
          LintRig::catalogue(fileTag("Id=\"FI\" Description=\"F\" ZipFileSize=\"1\" "
                                     "Link=\"https://maps.example.org/map5/archives/FI.tar\""))}});
    QCOMPARE(rig->findings(), at(QStringLiteral("archives/FI.tar"), {" unnamed-archive"}));
    QVERIFY(rig->run().out.contains("Not looked at: archives on other servers 1."));

    QCOMPARE(rig->findings(words("--base-uri https://maps.example.org/map5/")),
             at(CatalogueFile, {":3:33 other-size"}));
}

QTEST_GUILESS_MAIN(CliLintXmlTest)
#include "tst_clilintxml.moc"
