// SPDX-License-Identifier: MIT
// The command that looks through a content server's folder: the command
// itself, which files there must be, what is in the archives, and check sums.
#include "lintrig.h"
#include <QCryptographicHash>
#include <QDirIterator>
#include <QProcess>
#include <QtTest>

class CliLintTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { rig = std::make_unique<LintRig>(); }
    void cleanup() { rig.reset(); }

    void aGoodFolderHasNothing();
    void eachFindingIsNamedWithItsPlace();
    void inTheFolderItselfNamesAreShort();
    void jsonHasFindingsAndCounts();
    void nothingIsWritten();
    void aWrongCommandLineIsAUsageError_data();
    void aWrongCommandLineIsAUsageError();

    void entriesAreChecked_data();
    void entriesAreChecked();
    void aNameFromAnArchiveStaysInItsLine();
    void archivesOfTheToolsAreRead_data();
    void archivesOfTheToolsAreRead();
    void encryptedArchivesAreFound_data();
    void encryptedArchivesAreFound();
    void damagedArchivesAreFound_data();
    void damagedArchivesAreFound();
    void aCheckSumThatDevicesLookAtIsLookedAt();
    void anArchiveOfTwoCataloguesIsReadOnce();
    void filesThatNoCatalogueNamesAreFound();
    void tilesOfSeveralArchivesAreCompared();

    void aLanguageWithoutNamesIsFound();
    void checkSumsAreCompared_data();
    void checkSumsAreCompared();
    void whatDoesNotFitItsCheckSumIsNamed();
    void filesWithoutACheckSumAreCounted();

private:
    QByteArray output() const { return rig->run().out; }

    std::unique_ptr<LintRig> rig;
};

namespace {

const QString Archive = QStringLiteral("archives/FI.tar");

const QString Sums = QStringLiteral("SHA256SUMS");

QStringList kinds(std::initializer_list<const char *> names)
{
    QStringList result;
    for (const char *name : names)
        result.append(Archive + QLatin1Char(' ') + QLatin1String(name));
    return result;
}

} // namespace

void CliLintTest::aGoodFolderHasNothing()
{
    const ProgramRun run = rig->run();

    QCOMPARE(run.out,
             QByteArray("Nothing found. Looked at: catalogues 1, regions 2, archives 2, files of "
                        "names 91.\n"));
    QCOMPARE(run.err, QByteArray());
    QCOMPARE(run.code, 0);
    QCOMPARE(rig->run({QStringLiteral("--quiet")}).out, QByteArray());
}

void CliLintTest::eachFindingIsNamedWithItsPlace()
{
    rig->write({{NamesFile, LintRig::names("<region id=\"XX\" name=\"Nowhere\" colour=\"\"/>")},
                {CatalogueFile, LintRig::catalogue(4711)}});

    const ProgramRun run = rig->run();

    const QByteArray folder = rig->folder().toUtf8();
    QCOMPARE(
        run.out,
        QByteArray(folder + "/catalog-26.11.21.00.xml:3:39: the archive \"archives/FI.tar\" has "
                   + "2048 bytes and not 4711: devices refuse it [other-size]\n" + folder
                   + "/regionname-lang-001.xml:2:10: no catalogue has a region \"XX\" "
                   + "[unknown-region]\n" + folder + "/regionname-lang-001.xml:2:33: nobody reads "
                   + "the attribute \"colour\" [unknown-attribute]\nFound: 3. Looked at: "
                   + "catalogues 1, regions 2, archives 2, files of names 91.\n"));
    QCOMPARE(run.code, 6);
}

void CliLintTest::inTheFolderItselfNamesAreShort()
{
    rig->write({{QStringLiteral("archives/SE.tar"), "x"}});

    QVERIFY2(rig->outputFromInside().startsWith("archives/SE.tar: no catalogue names this file"),
             rig->outputFromInside().constData());
}

void CliLintTest::jsonHasFindingsAndCounts()
{
    rig->write({{QStringLiteral("version.txt"), "26.12.01.00\n"}});

    const ProgramRun run = rig->run({QStringLiteral("--json")});

    QCOMPARE(run.code, 6);
    QCOMPARE(run.object(),
             (QJsonObject {{QStringLiteral("folder"), rig->folder()},
                           {QStringLiteral("catalogues"), 1},
                           {QStringLiteral("regions"), 2},
                           {QStringLiteral("archives"), 2},
                           {QStringLiteral("archivesElsewhere"), 0},
                           {QStringLiteral("nameFiles"), 91},
                           {QStringLiteral("checkSums"), 0},
                           {QStringLiteral("findings"),
                            QJsonArray {QJsonObject {
                                {QStringLiteral("file"), QStringLiteral("version.txt")},
                                {QStringLiteral("line"), 1},
                                {QStringLiteral("column"), 1},
                                {QStringLiteral("kind"), QStringLiteral("missing-file")},
                                {QStringLiteral("text"),
                                 QStringLiteral("there is no \"catalog-26.12.01.00.xml\"")}}}}}));
}

void CliLintTest::nothingIsWritten()
{
    const auto state = [this] {
        QMap<QString, QDateTime> result;
        QDirIterator files(rig->folder(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            files.next();
            result.insert(files.filePath(), files.fileInfo().lastModified());
        }
        return result;
    };
    rig->setArchive("no archive");
    const auto before = state();

    QCOMPARE(rig->run().code, 6);

    QCOMPARE(state(), before);
}

void CliLintTest::aWrongCommandLineIsAUsageError_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("no folder") << words("lint");
    QTest::newRow("two folders") << words("lint /tmp /");
    QTest::newRow("no such folder") << words("lint /nowhere/at/all");
    QTest::newRow("an empty name") << QStringList {QStringLiteral("lint"), QString()};
}

void CliLintTest::aWrongCommandLineIsAUsageError()
{
    QFETCH(QStringList, arguments);

    const QTemporaryDir folder;
    const ProgramRun run = MapsProgram::runIn(folder.path(), arguments);

    QCOMPARE(run.code, 2);
    QCOMPARE(run.out, QByteArray());
    QVERIFY2(run.err.contains("lint --help"), run.err.constData());
}

void CliLintTest::entriesAreChecked_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("expected");
    const RawTar good = RawTar().add("0/1/a.cdt", "a");
    const auto row = [&](const char *name, RawTar more, std::initializer_list<const char *> found) {
        QTest::newRow(name) << more.bytes() << kinds(found);
    };
    const auto file = [&](const char *name, std::initializer_list<const char *> found) {
        row(name, RawTar(good).add(name, "x"), found);
    };
    file("../0/1/x.cdt", {"outside"});
    file("0/../../x.cdt", {"outside"});
    file("/0/1/x.cdt", {"outside"});
    file("..", {"outside"});
    file("0/1/a.cdt", {"duplicate-entry"});
    file("./0/1/a.cdt", {"duplicate-entry"});
    file("0/2/../1/a.cdt", {"duplicate-entry"});
    file("0/1", {"duplicate-entry"});
    file("0/1/a.cdt/x.cdt", {"duplicate-entry"});
    file("x.cdt", {"layout"});
    file("0/x.cdt", {"layout"});
    file("0/1/2/x.cdt", {"layout"});
    file("00/1/x.cdt", {"layout"});
    file("A/1/x.cdt", {"layout"});
    file("g/1/x.cdt", {"layout"});
    file("0/1/x.CDT", {"layout"});
    file("0/1/x.cdt.bak", {"layout"});
    file("0/1/.cdt", {"layout"});
    file("0/1/.x.cdt", {"layout"});
    file("0\\1\\x.cdt", {"layout"});
    file("read.me", {"no-tile"});
    file("0/1/x.dat", {"no-tile"});
    file("0/1/\xc5.cdt", {"encoding", "parent-lacks-tiles"});
    row("a symbolic link", RawTar(good).add("0/1/l.cdt", "", RawTar::SymLink, "a.cdt"), {"link"});
    row("a hard link", RawTar(good).add("0/1/l.cdt", "", RawTar::HardLink, "0/1/a.cdt"), {"link"});
    row("a terminal", RawTar(good).add("0/1/l.cdt", "", RawTar::CharacterDevice), {"device"});
    row("a disk", RawTar(good).add("0/1/l.cdt", "", RawTar::BlockDevice), {"device"});
    row("a pipe", RawTar(good).add("0/1/l.cdt", "", RawTar::Fifo), {"special-file"});
    row("a folder outside", RawTar(good).add("../x/", "", RawTar::Folder), {"outside"});
    row("a folder in the place of a file", RawTar(good).add("0/1/a.cdt/", "", RawTar::Folder),
        {"duplicate-entry"});
    row("folders of their own",
        RawTar()
            .add("./", "", RawTar::Folder)
            .add("./0/", "", RawTar::Folder)
            .add("./0/1/", "", RawTar::Folder)
            .add("./0/1/a.cdt", "a")
            .add("0/1/", "", RawTar::Folder),
        {});
    QTest::newRow("no bytes") << QByteArray("") << kinds({"no-tiles"});
    row("a name without a letter", RawTar(good).add("", "x"), {"no-name"});
    row("no entries", RawTar(), {"no-tiles"});
    row("folders only", RawTar().add("0/1/", "", RawTar::Folder), {"no-tiles"});
}

void CliLintTest::entriesAreChecked()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, expected);
    rig->setArchive(bytes);
    // What is new in Finland is not in Europe.
    const int place = int(expected.indexOf(Archive + QLatin1String(" parent-lacks-tiles")));
    if (place >= 0)
        expected[place] = CatalogueFile + QLatin1String(":3:3 parent-lacks-tiles");

    QCOMPARE(rig->findings(), expected);
}

void CliLintTest::aNameFromAnArchiveStaysInItsLine()
{
    rig->setArchive(
        RawTar().add("0/1/a.cdt", "a").add("a\nb\x1b[31m" + QByteArray(99, 'c'), "x").bytes());

    const QByteArray out = output();

    QVERIFY2(out.contains("/archives/FI.tar: \"a?b?[31m" + QByteArray(72, 'c')
                          + "\xe2\x80\xa6\" is no tile: it stays on the device for ever [no-tile]"),
             out.constData());
}

void CliLintTest::archivesOfTheToolsAreRead_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"x.tar", "x.tar.gz", "x.tar.bz2", "x.tar.xz", "x.tar.zst", "x.tar.lz4",
                             "x.zip", "x.stored.zip", "x.7z", "x.pax", "x.cpio"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void CliLintTest::archivesOfTheToolsAreRead()
{
    QFETCH(QString, name);
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("0/1/a.cdt"), "a");
    rig->setArchive(TestFile::read(builder.make(name)));
    QCOMPARE(rig->findings(), QStringList());

    builder.addFile(QStringLiteral("0/read.me"), "x");
    rig->setArchive(TestFile::read(builder.make(QLatin1String("more.") + name)));
    QCOMPARE(rig->findings(), kinds({"no-tile"}));
}

void CliLintTest::encryptedArchivesAreFound_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("zip") << QStringLiteral("x.encrypted.zip");
    QTest::newRow("7z") << QStringLiteral("x.encrypted.7z");
}

void CliLintTest::encryptedArchivesAreFound()
{
    QFETCH(QString, name);
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("0/1/a.cdt"), "a");
    builder.addFile(QStringLiteral("5/5/b.cdt"), "b");
    rig->setArchive(TestFile::read(builder.make(name)));

    QCOMPARE(rig->findings(), kinds({"encrypted"}));
}

void CliLintTest::damagedArchivesAreFound_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray tar = RawTar().add("0/1/a.cdt", "a").add("5/5/b.cdt", "b").bytes();
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("0/1/a.cdt"), ArchiveBuilder::noise(5000));
    const QByteArray gzip = TestFile::read(builder.make(QStringLiteral("x.tar.gz")));
    const QByteArray zip = TestFile::read(builder.make(QStringLiteral("x.zip")));
    QTest::newRow("a sign-in page") << QByteArray("<html><p>Please sign in");
    QTest::newRow("a wrong header") << QByteArray(tar).replace("5/5/b", "5/5/c");
    QTest::newRow("a cut header") << tar.left(1200);
    QTest::newRow("a cut gzip") << gzip.left(gzip.size() / 2);
    QTest::newRow("a cut zip") << zip.left(20);
}

void CliLintTest::damagedArchivesAreFound()
{
    QFETCH(QByteArray, bytes);
    rig->setArchive(bytes);

    QCOMPARE(rig->findings(), kinds({"damaged"}));
}

void CliLintTest::aCheckSumThatDevicesLookAtIsLookedAt()
{
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("0/1/a.cdt"), "a");
    QByteArray gzip = TestFile::read(builder.make(QStringLiteral("x.tar.gz")));
    gzip[gzip.size() - 5] = char(gzip.at(gzip.size() - 5) ^ 1); // in the CRC
    rig->setArchive(gzip);

    QCOMPARE(rig->findings(), kinds({"damaged"}));
    QVERIFY(output().contains("another check sum"));
}

void CliLintTest::anArchiveOfTwoCataloguesIsReadOnce()
{
    rig->setArchive(RawTar().add("0/1/a.cdt", "a").add("x", "x").bytes());
    rig->write({{QStringLiteral("catalog-26.10.01.00.xml"),
                 LintRig::catalogue(3072).replace("26.11.21", "26.10.01")}});

    QCOMPARE(rig->findings(), kinds({"no-tile"}));
    QVERIFY(output().contains("catalogues 2, regions 4, archives 2,"));
}

void CliLintTest::filesThatNoCatalogueNamesAreFound()
{
    rig->write({{QStringLiteral("archives/SE.tar"), "x"},
                {QStringLiteral("archives/FI.tar.sha256"), "x"},
                {QStringLiteral("old/SE.tar"), "x"}});

    QCOMPARE(rig->findings(), QStringList {QStringLiteral("archives/SE.tar unnamed-archive")});
}

void CliLintTest::tilesOfSeveralArchivesAreCompared()
{
    // Not in Europe, another size than in Europe, and the name of one in Europe elsewhere.
    rig->setArchive(RawTar().add("0/1/c.cdt", "c").add("0/1/a.cdt", "aa").bytes());
    QCOMPARE(rig->findings(),
             QStringList({Archive + QLatin1String(" other-tile"),
                          CatalogueFile + QLatin1String(":3:3 parent-lacks-tiles")}));
    QVERIFY(output().contains("\"FI\" lies in \"EU\", whose archive lacks tiles of it, such as "
                              "\"0/1/c.cdt\""));

    rig->setArchive(RawTar().add("0/1/a.cdt", "a").add("6/6/b.x.cdt", "b").bytes());
    QCOMPARE(rig->findings(),
             QStringList({Archive + QLatin1String(" same-name"),
                          CatalogueFile + QLatin1String(":3:3 parent-lacks-tiles")}));
    QVERIFY(output().contains("\"6/6/b.x.cdt\" has the name of \"5/5/b.cdt\""));
}

void CliLintTest::aLanguageWithoutNamesIsFound()
{
    rig->write({{LintRig::namesFile(31), QByteArray()}});
    QCOMPARE(rig->findings(),
             QStringList {LintRig::namesFile(31) + QLatin1String(" missing-names")});
    QVERIFY(output().contains("languages without a file of names: 1 (031); "));

    for (const int code : {6, 9, 14, 50, 103})
        rig->write({{LintRig::namesFile(code), QByteArray()}});
    QCOMPARE(rig->findings(),
             QStringList {LintRig::namesFile(6) + QLatin1String(" missing-names")});
    QVERIFY(output().contains("of names: 6 (006, 009, 014, 031, 050, \xe2\x80\xa6); "));

    // A device has the names of one language.
    QVERIFY(QFile::remove(rig->path(QStringLiteral("version.txt"))));
    rig->write(
        {{QStringLiteral("content.xml"), "<directory map-version=\"26.11.21.00\"></directory>"}});
    QCOMPARE(rig->findings(), QStringList());
}

void CliLintTest::checkSumsAreCompared_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArray &lines,
                        std::initializer_list<const char *> found) {
        QStringList expected;
        for (const char *where : found)
            expected.append(Sums + QLatin1String(where));
        QTest::newRow(name) << lines << expected;
    };
    const QByteArray sum =
        QCryptographicHash::hash("26.11.21.00\n", QCryptographicHash::Sha256).toHex();
    const QByteArray other(64, 'a');
    const QByteArray good = sum + "  version.txt\n";
    row("a good line", good, {});
    row("without an end", good.chopped(1), {});
    row("of a binary file", sum + " *version.txt\n", {});
    row("in capitals", sum.toUpper() + "  version.txt\n", {});
    row("with lines of another system", sum + "  version.txt\r\n\r\n", {});
    row("with its algorithm", "SHA256 (version.txt) = " + sum + '\n', {});
    row("a comment, a line of nothing, blanks", "# all\n\n  " + good, {});
    row("by another path", sum + "  archives/../version.txt\n", {});
    row("a name with an escape", '\\' + sum + "  a\\\\b\\n.txt\n", {});
    row("another sum", good + other + "  version.txt\n", {":2:67 other-sum"});
    row("another sum with its algorithm", "SHA256 (version.txt) = " + other + '\n',
        {":1:9 other-sum"});
    row("no such file", "#\n" + sum + "  version\n", {":2:67 missing-file"});
    row("a folder", sum + "  archives\n", {":1:67 missing-file"});
    row("a blank in front of the name", sum + "   version.txt\n", {":1:67 missing-file"});
    row("no name", sum + '\n', {":1:1 check-sum"});
    row("no sum", "version.txt\n", {":1:1 check-sum"});
    row("a sum that is too short", sum.mid(1) + "  version.txt\n", {":1:1 check-sum"});
    row("a sum that is too long", 'a' + good, {":1:1 check-sum"});
    row("another algorithm", "MD5 (version.txt) = " + sum.left(32) + '\n', {":1:1 check-sum"});
    row("an escape that is none", '\\' + sum + "  a\\b.txt\n", {":1:1 check-sum"});
    row("blanks only", good + "  \n", {":2:1 check-sum"});
    row("comments only", "# none\n", {" empty"});
    row("no bytes", "", {" empty"});
}

void CliLintTest::checkSumsAreCompared()
{
    QFETCH(QByteArray, lines);
    QFETCH(QStringList, expected);
    rig->write({{QStringLiteral("a\\b\n.txt"), "26.11.21.00\n"}, {Sums, lines}});

    QStringList found = rig->findings();
    found.removeAll(Sums + QLatin1String(" no-sum")); // of the files that have no line here
    QCOMPARE(found, expected);

    // The tool that a copy is checked with says the same.
    QProcess tool;
    tool.setWorkingDirectory(rig->folder());
    tool.start(QStringLiteral("sha256sum"), words("--check --strict SHA256SUMS"));
    QVERIFY(tool.waitForFinished());
    QCOMPARE(tool.exitCode() == 0, expected.isEmpty());
}

void CliLintTest::whatDoesNotFitItsCheckSumIsNamed()
{
    const QByteArray sum(64, 'a');
    rig->write({{Sums,
                 "SHA256 (archives/FI.tar) = " + sum + '\n' + sum + "  ../map5/version.txt\n" + sum
                     + "  /dev/zero\n"}});

    const ProgramRun run = rig->run();

    const QByteArray list = rig->path(Sums).toUtf8();
    QCOMPARE(run.out,
             list + ": files without a check sum: 94; the first is \"archives/EU.tar\" [no-sum]\n"
                 + list + ":1:9: \"archives/FI.tar\" has another check sum [other-sum]\n" + list
                 + ":2:67: \"../map5/version.txt\" leads out of what is published [outside]\n"
                 + list + ":3:67: \"/dev/zero\" leads out of what is published [outside]\n"
                 + "Found: 4. Looked at: catalogues 1, regions 2, archives 2, files of names 91. "
                   "Compared: check sums 3.\n");
    QCOMPARE(run.code, 6);
}

void CliLintTest::filesWithoutACheckSumAreCounted()
{
    rig->write({{QStringLiteral("index.html"), "for people"}});
    QProcess tool;
    tool.setWorkingDirectory(rig->folder());
    tool.setStandardOutputFile(rig->path(Sums));
    tool.start(QStringLiteral("sha256sum"),
               QDir(rig->folder()).entryList({QStringLiteral("*.xml")})
                   + words("version.txt ./archives/EU.tar archives/FI.tar"));
    QVERIFY(tool.waitForFinished());
    QCOMPARE(rig->run().code, 0);
    QVERIFY2(output().endsWith(" Compared: check sums 95.\n"), output().constData());

    QByteArray lines = TestFile::read(rig->path(Sums));
    rig->write({{Sums, lines.left(lines.indexOf('\n') + 1)}});
    QCOMPARE(rig->findings(), QStringList {Sums + QLatin1String(" no-sum")});
    QVERIFY2(output().contains("files without a check sum: 94; the first is \"archives/EU.tar\""),
             output().constData());
}

QTEST_GUILESS_MAIN(CliLintTest)
#include "tst_clilint.moc"
