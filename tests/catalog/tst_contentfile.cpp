// SPDX-License-Identifier: MIT
// The content file, the tile tree and the header of config.cfg, all through the processor.
#include "catalog/mapcatalogprocessor.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"
#include "catalog/mapregion.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QRegularExpression>
#include <QTest>
#include <sys/stat.h>
#include <unistd.h>

class ContentFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<MapData>(); }
    void cleanup() { m_data.reset(); }

    void idsLoseTheirFirstCharacterAndComeOnce();
    void onlyRegionsInTheirPlaceCount_data();
    void onlyRegionsInTheirPlaceCount();
    void versionsOfFourPartsGetTwoDigits_data();
    void versionsOfFourPartsGetTwoDigits();
    void aLineFeedInTheVersionIsRemoved();
    void missingAndEmptyFilesGiveEmptyValues();
    void tilesAreFoundTwoLevelsDeepInOrder();
    void onlyTileFilesAreFound();
    void aMissingTileFolderHasNoTiles();
    void lookingForTilesRunsTheEventLoopForEachFolder();
    void theContentFileIsWrittenToTheByte();
    void anEmptyContentFileIsWrittenToTheByte();
    void tileNamesOfARegion_data();
    void tileNamesOfARegion();
    void tileNamesEqualTheRegularExpression();
    void tilePathsHaveOneFormWhateverTheSpelling_data();
    void tilePathsHaveOneFormWhateverTheSpelling();
    void whatIsWrittenReadsBack();
    void charactersThatXmlForbidsDoNotSpoilTheFile();
    void writingRunsTheEventLoopForEachTileAndRegion();
    void regionsMayDieWhileTheFileIsWritten();
    void theProcessorMayDieWhileTheFileIsWritten();
    void aNewerWriteFromTheEventLoopStays();
    void aFileThatCannotBeOpenedStaysAsItWas();
    void aMissingFolderIsNotMade();
    void modeOwnerAndLinkOfTheOldFileAreKept();
    void noOtherFileIsLeftBeside();
    void mosVersionsAreFourNumbers_data();
    void mosVersionsAreFourNumbers();
    void onlyTheHeaderOfTheConfigFileIsWritten_data();
    void onlyTheHeaderOfTheConfigFileIsWritten();
    void theConfigFileIsNeverMade();
    void tablesGiveEachRegionItsPaths();
    void tablesAreReadByPositionAndNotByName();
    void tablesOfAFileThatCannotBeParsedAreEmpty_data();
    void tablesOfAFileThatCannotBeParsedAreEmpty();

private:
    void write(const QList<MapRegion *> &regions)
    {
        m_processor.updateLocalContent(m_data->contentFile(), text("1.2"), regions,
                                       m_data->tileFolder());
    }
    QByteArray written() const { return readFile(m_data->contentFile()); }
    QStringList ids(const QByteArray &content)
    {
        writeFile(m_data->contentFile(), content);
        return m_processor.readLocalContent(m_data->contentFile());
    }
    QString version(const QByteArray &content)
    {
        writeFile(m_data->contentFile(), content);
        return m_processor.readLocalMapVersion(m_data->contentFile());
    }

    std::unique_ptr<MapData> m_data;
    MapCatalogProcessor m_processor;
};

namespace {

/** A region as after an installation. */
struct InstalledRegion : MapRegion
{
    InstalledRegion(const char *id, const char *name, const QStringList &files)
        : MapRegion(text(id))
    {
        setName(text(name));
        setFileList(files);
    }
};

/** Counts the passes of the event loop: a timer without interval fires once in each. */
class EventLoopCounter : public QObject
{
public:
    EventLoopCounter() { startTimer(0); }
    int count = 0;

protected:
    void timerEvent(QTimerEvent *) override { ++count; }
};

} // namespace

void ContentFileTest::idsLoseTheirFirstCharacterAndComeOnce()
{
    QCOMPARE(ids("<directory><regions><region id=\"142\"/><region id=\"142\"/><region id=\"17\"/>"
                 "</regions></directory>"),
             QStringList({text("42"), text("7")}));
    QCOMPARE(ids("<directory><regions><region id=\"242\"/><region id=\"x9\"/><region id=\"\"/>"
                 "<region id=\"1\"/></regions></directory>"),
             QStringList({text("42"), text("9"), QString()}));
}

void ContentFileTest::onlyRegionsInTheirPlaceCount_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("expected");
    const QStringList none;
    const QStringList both {text("2"), text("3")};
    QTest::newRow("another root") << QByteArray("<dir><regions><region id='12'/></regions></dir>")
                                  << none;
    QTest::newRow("another place")
        << QByteArray("<directory><x><regions><region id='12'/></regions></x><region id='13'/>"
                      "<regions><x><region id='14'/></x></regions></directory>")
        << none;
    QTest::newRow("other names") << QByteArray(
        "<directory><regions><Region id='12'/><TI id='13'/><region ID='14'/>"
        "</regions></directory>") << none;
    QTest::newRow("two lists") << QByteArray(
        "<directory><regions><region id='12'/></regions><diskcache/>"
        "<regions><region id='13'/></regions></directory>")
                               << both;
    QTest::newRow("nested in a region")
        << QByteArray("<directory><regions><region id='12'><region id='14'/></region>"
                      "<region id='13'/></regions></directory>")
        << both;
    QTest::newRow("another namespace")
        << QByteArray("<directory xmlns='u'><regions><region id='12'/></regions></directory>")
        << none;
}

void ContentFileTest::onlyRegionsInTheirPlaceCount()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, expected);

    QCOMPARE(ids(content), expected);
}

void ContentFileTest::versionsOfFourPartsGetTwoDigits_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *version, const char *expected) {
        const QByteArray content = QByteArray("<directory map-version=\"") + version + "\"/>";
        QTest::newRow(version) << content << text(expected);
    };
    row("3.1.12.5", "03.01.12.05");
    row("1.2.3", "1.2.3");
    row("1.2.3.4.5", "1.2.3.4.5");
    row("2012.w14", "2012.w14");
    row("1...4", "01...04");
    row("0.0.23.107", "00.00.23.107");
    row("", "");
    QTest::newRow("no version") << QByteArray("<directory/>") << QString();
    QTest::newRow("another root") << QByteArray("<dir map-version=\"1\"/>") << QString();
    QTest::newRow("another case") << QByteArray("<directory Map-Version=\"1\"/>") << QString();
}

void ContentFileTest::versionsOfFourPartsGetTwoDigits()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);

    QCOMPARE(version(content), expected);
}

void ContentFileTest::aLineFeedInTheVersionIsRemoved()
{
    QCOMPARE(version("<directory map-version=\"3.1.12.5&#10;\"/>"), text("03.01.12.05"));
    QCOMPARE(version("<directory map-version=\"3.1.12.5\n\"/>"), text("03.01.12.05"));
}

void ContentFileTest::missingAndEmptyFilesGiveEmptyValues()
{
    const LogCatcher log(4);
    const QString folder = m_data->catalogFolder();
    writeFile(folder + text("/empty"), QByteArray());
    QDir().mkpath(folder + text("/folder"));
    for (const char *name : {"/missing", "/empty", "/folder"}) {
        const QString path = folder + text(name);
        QCOMPARE(m_processor.readLocalContent(path), QStringList());
        QCOMPARE(m_processor.readLocalMapVersion(path), QString());
        QCOMPARE(m_processor.readLocalMOSVersion(path), QString());
    }
    QCOMPARE(log.lines().size(), 0);
}

void ContentFileTest::tilesAreFoundTwoLevelsDeepInOrder()
{
    for (const char *tile : {"a/3/3fa9.cdt", "0/0/x.cdt", "top.cdt", "f/f/b.cdt", "f/f/a.cdt",
                             "f/deep.cdt", "f/f/f/deeper.cdt", "0/f/y.cdt"})
        m_data->makeTile(tile);

    QStringList found;
    for (const QFileInfo &tile : m_processor.findInstalledTiles(QDir(m_data->tileFolder())))
        found.append(QDir(m_data->tileFolder()).relativeFilePath(tile.absoluteFilePath()));

    QCOMPARE(found.join(QLatin1Char(' ')),
             text("0/0/x.cdt 0/f/y.cdt a/3/3fa9.cdt f/f/a.cdt f/f/b.cdt"));
}

void ContentFileTest::onlyTileFilesAreFound()
{
    for (const char *file : {"0/0/x.cdt.bak", "0/0/x.txt", "0/0/folder.cdt/x", "g/0/x.cdt",
                             "A/0/x.cdt", "00/0/x.cdt", "0/10/x.cdt"})
        m_data->makeTile(file);

    QCOMPARE(m_processor.findInstalledTiles(QDir(m_data->tileFolder())).size(), 0);
}

void ContentFileTest::aMissingTileFolderHasNoTiles()
{
    QCOMPARE(m_processor.findInstalledTiles(QDir(text("/nowhere"))).size(), 0);
}

void ContentFileTest::lookingForTilesRunsTheEventLoopForEachFolder()
{
    const EventLoopCounter passes;

    m_processor.findInstalledTiles(QDir(m_data->tileFolder()));

    QVERIFY2(passes.count >= 256, qPrintable(QString::number(passes.count)));
}

void ContentFileTest::theContentFileIsWrittenToTheByte()
{
    m_data->makeTile("a/3/3fa9.cdt");
    m_data->makeTile("0/0/x.y.cdt");
    InstalledRegion alpha("42", "Alpha", {text("a/3/3fa9.cdt"), text("\\0\\0\\x.cdt")});
    InstalledRegion beta("7", "B & <\"'\xc3\xa4\">", {});

    write({&alpha, &beta});

    QCOMPARE(written(),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<directory map-version=\"1.2\">\n"
                        " <diskcache>\n"
                        "  <TI name=\"x\" path=\"\\0\\0\\x.y.cdt\"/>\n"
                        "  <TI name=\"3fa9\" path=\"\\a\\3\\3fa9.cdt\"/>\n"
                        " </diskcache>\n"
                        " <regions>\n"
                        "  <region id=\"142\" name=\"Alpha\">\n"
                        "   <TI name=\"9\" path=\"\\a\\3\\3fa9.cdt\"/>\n"
                        "   <TI name=\"x\" path=\"\\0\\0\\x.cdt\"/>\n"
                        "  </region>\n"
                        "  <region id=\"17\" name=\"B &amp; &lt;&quot;'\xc3\xa4&quot;&gt;\"/>\n"
                        " </regions>\n"
                        "</directory>\n"));
}

void ContentFileTest::anEmptyContentFileIsWrittenToTheByte()
{
    write({});

    QCOMPARE(written(),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<directory map-version=\"1.2\">\n"
                        " <diskcache/>\n"
                        " <regions/>\n"
                        "</directory>\n"));
}

void ContentFileTest::tileNamesOfARegion_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *entry, const char *name) {
        QTest::newRow(entry) << text(entry) << text(name);
    };
    row("a/3/3fa9.cdt", "9"); // one character is left of the name, as it must be
    row("\\a\\3\\3fa9.cdt", "9");
    row("a_.cdt", "_");
    row("aZ.cdt", "Z");
    row("a.cdt b.cdt", "b");
    row("x.cdt.bak", "x.bak");
    row("a.cdt/-.cdt", "a/-.cdt"); // the last one that has a letter before it
    row(".cdt", ".cdt"); // no match
    row("-.cdt", "-.cdt");
    row("\xc3\xa4.cdt", "\xc3\xa4.cdt"); // no letter in the expression's sense
    row(".cdt.cdt", "t");
}

void ContentFileTest::tileNamesOfARegion()
{
    QFETCH(QString, entry);
    QFETCH(QString, name);
    InstalledRegion region("42", "Alpha", {entry});

    write({&region});

    const QRegularExpressionMatch match =
        QRegularExpression(text("<TI name=\"([^\"]*)\"")).match(QString::fromUtf8(written()));
    QCOMPARE(match.captured(1), name);
}

void ContentFileTest::tileNamesEqualTheRegularExpression()
{
    const QRegularExpression pattern(text(".*([a-zA-Z0-9_]+)\\.cdt"),
                                     QRegularExpression::DotMatchesEverythingOption);
    const QString letters = text("a9_Z.-/cdt\xc3\xa4 ");
    QStringList entries;
    quint32 random = 1;
    for (int i = 0; i < 2000; ++i) {
        QString entry;
        for (int k = 0; k < 12; ++k) {
            random = random * 1664525U + 1013904223U;
            const quint32 pick = random >> 16;
            entry += pick % 3 == 0 ? text(".cdt") : QString(letters.at(pick % letters.size()));
        }
        entries.append(entry);
    }
    InstalledRegion region("42", "Alpha", entries);

    write({&region});

    QStringList expected;
    for (const QString &entry : region.fileList())
        expected.append(QString(entry).replace(pattern, text("\\1")));
    QStringList names;
    auto matches =
        QRegularExpression(text("<TI name=\"([^\"]*)\"")).globalMatch(QString::fromUtf8(written()));
    while (matches.hasNext())
        names.append(matches.next().captured(1));
    QVERIFY(names.size() > 1900);
    QCOMPARE(names, expected);
}

void ContentFileTest::tilePathsHaveOneFormWhateverTheSpelling_data()
{
    QTest::addColumn<QString>("entry");
    QTest::newRow("from the content file") << text("\\a\\3\\3fa9.cdt");
    QTest::newRow("from QML") << text("a/3/3fa9.cdt");
    QTest::newRow("with a slash in front") << text("/a/3/3fa9.cdt");
}

void ContentFileTest::tilePathsHaveOneFormWhateverTheSpelling()
{
    QFETCH(QString, entry);
    InstalledRegion region("42", "Alpha", {entry});

    write({&region});

    QVERIFY2(written().contains("<TI name=\"9\" path=\"\\a\\3\\3fa9.cdt\"/>"),
             written().constData());
}

void ContentFileTest::whatIsWrittenReadsBack()
{
    InstalledRegion alpha("42", "Al\"pha\n\t<&>",
                          {text("a/3/x y&<\"'\xc3\xa4.cdt"), text("b/4/two.cdt")});
    InstalledRegion beta("<7&\">", "", {});
    m_processor.updateLocalContent(m_data->contentFile(), text("1.2&<"), {&alpha, &beta},
                                   m_data->tileFolder());

    QCOMPARE(m_processor.readLocalContent(m_data->contentFile()),
             QStringList({text("42"), text("<7&\">")}));
    QCOMPARE(m_processor.readLocalMapVersion(m_data->contentFile()), text("1.2&<"));
    MapCatalog catalog;
    catalog.processContentXml();
    QCOMPARE(catalog.readRegionFileList(text("42")),
             QStringList({text("\\a\\3\\x y&<\"'\xc3\xa4.cdt"), text("\\b\\4\\two.cdt")}));
}

void ContentFileTest::charactersThatXmlForbidsDoNotSpoilTheFile()
{
    QString name = text("A");
    for (const int c : {0x0, 0x1, 0xb, 0x1f, 0xfffe, 0xffff, 0xdc00, 0xd800})
        name += QChar(c);
    name += QString::fromUtf8("\xf0\x9f\x97\xba"); // a pair is fine
    InstalledRegion region("42", "", {name + text(".cdt")});
    region.setName(name);

    write({&region});

    QCOMPARE(m_processor.readLocalContent(m_data->contentFile()), QStringList {text("42")});
    QVERIFY(written().contains("\xf0\x9f\x97\xba"));
    MapCatalog catalog;
    catalog.processContentXml();
    // Replaced and not dropped: what is left could be the name of another file.
    QCOMPARE(catalog.readRegionFileList(text("42")).value(0).count(QChar(0xfffd)), 8);
}

void ContentFileTest::writingRunsTheEventLoopForEachTileAndRegion()
{
    InstalledRegion region("42", "Alpha", {});
    int without = 0;
    {
        const EventLoopCounter passes;
        m_processor.findInstalledTiles(QDir(m_data->tileFolder()));
        without = passes.count;
    }
    for (int i = 0; i < 40; ++i)
        m_data->makeTile(qPrintable(QStringLiteral("0/0/%1.cdt").arg(i)));
    QList<MapRegion *> regions;
    for (int i = 0; i < 30; ++i)
        regions.append(&region);
    const EventLoopCounter passes;

    write(regions);

    QVERIFY2(passes.count >= without + 70, qPrintable(QString::number(passes.count)));
}

void ContentFileTest::regionsMayDieWhileTheFileIsWritten()
{
    auto region = std::make_unique<InstalledRegion>("42", "Alpha", QStringList {text("x.cdt")});
    QMetaObject::invokeMethod(
        this, [&] { region.reset(); }, Qt::QueuedConnection);

    write({region.get()});

    QVERIFY(!region);
    QVERIFY(written().contains("<region id=\"142\" name=\"Alpha\">"));
}

void ContentFileTest::theProcessorMayDieWhileTheFileIsWritten()
{
    InstalledRegion region("42", "Alpha", {text("x.cdt")});
    auto *processor = new MapCatalogProcessor;
    QMetaObject::invokeMethod(
        this, [&] { delete processor; }, Qt::QueuedConnection);

    processor->updateLocalContent(m_data->contentFile(), text("1.2"), {&region},
                                  m_data->tileFolder());

    QVERIFY(written().contains("<region id=\"142\" name=\"Alpha\">"));
}

void ContentFileTest::aNewerWriteFromTheEventLoopStays()
{
    InstalledRegion older("42", "Older", {});
    InstalledRegion newer("42", "Newer", {});
    QMetaObject::invokeMethod(
        this, [&] { write({&newer}); }, Qt::QueuedConnection);

    write({&older});

    QVERIFY2(written().contains("Newer"), written().constData());
    write({&older});
    QVERIFY(written().contains("Older")); // which holds for that call only
}

void ContentFileTest::aFileThatCannotBeOpenedStaysAsItWas()
{
    // A folder in its place, since the tests may run as a user who may open everything.
    writeFile(m_data->contentFile() + text("/inside"), "kept");
    const LogCatcher log(4);

    write({});

    QVERIFY(QFileInfo(m_data->contentFile()).isDir());
    QCOMPARE(readFile(m_data->contentFile() + text("/inside")), QByteArray("kept"));
    QCOMPARE(log.lines().size(), 0);
}

void ContentFileTest::aMissingFolderIsNotMade()
{
    const QString path = m_data->citiesFolder() + text("/missing/content.xml");

    m_processor.updateLocalContent(path, text("1.2"), {}, m_data->tileFolder());

    QVERIFY(!QFileInfo::exists(QFileInfo(path).path()));
}

void ContentFileTest::modeOwnerAndLinkOfTheOldFileAreKept()
{
    const QString target = m_data->citiesFolder() + text("/card/content.xml");
    writeFile(target, "old");
    QVERIFY(QFile::link(target, m_data->contentFile()));
    const QByteArray targetName = QFile::encodeName(target);
    QCOMPARE(chmod(targetName.constData(), 0604), 0);
    // Only the superuser can give a file to another; for others it is their own before and after.
    const bool isGiven = chown(targetName.constData(), 1234, 2345) == 0;

    write({});

    QCOMPARE(QFileInfo(m_data->contentFile()).symLinkTarget(), target);
    QVERIFY(readFile(target).startsWith("<?xml"));
    struct stat now = {};
    QCOMPARE(stat(targetName.constData(), &now), 0);
    QCOMPARE(int(now.st_mode & 07777), 0604);
    QCOMPARE(now.st_uid, isGiven ? uid_t(1234) : getuid());
    if (isGiven)
        QCOMPARE(now.st_gid, gid_t(2345));
}

void ContentFileTest::noOtherFileIsLeftBeside()
{
    write({});
    write({});

    QCOMPARE(QDir(m_data->catalogFolder()).entryList(QDir::Files | QDir::Hidden),
             QStringList {text("content.xml")});
}

void ContentFileTest::mosVersionsAreFourNumbers_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QString>("version");
    const auto row = [](const char *name, const char *hex, const char *version) {
        QTest::newRow(name) << QByteArray::fromHex(hex) << text(version);
    };
    row("four numbers", "01000000000000001700000007000000", "1.0.23.7");
    row("a longer file", "0100000000000000170000000700000063000000", "1.0.23.7");
    row("signed numbers", "ffffffff00000080ffffff7f00010000", "-1.-2147483648.2147483647.256");
    row("three numbers", "010000000200000003000000", "1.2.3");
    row("a number that is cut", "0100000002000000030000000400", "1.2.3.0");
    row("one byte", "05", "0");
    row("nothing", "", "");
}

void ContentFileTest::mosVersionsAreFourNumbers()
{
    QFETCH(QByteArray, hex);
    QFETCH(QString, version);
    writeFile(m_data->configFile(), hex);

    QCOMPARE(m_processor.readLocalMOSVersion(m_data->configFile()), version);
}

void ContentFileTest::onlyTheHeaderOfTheConfigFileIsWritten_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<QByteArray>("header");
    const QByteArray old(16, '\xaa');
    QTest::newRow("four parts") << text("1.0.23.7")
                                << QByteArray::fromHex("01000000000000001700000007000000");
    QTest::newRow("no numbers") << text("1.x..4")
                                << QByteArray::fromHex("01000000000000000000000004000000");
    QTest::newRow("negative and hexadecimal")
        << text("-1.0x10.2.3") << QByteArray::fromHex("ffffffff000000000200000003000000");
    QTest::newRow("three parts") << text("1.2.3") << old;
    QTest::newRow("five parts") << text("1.2.3.4.5") << old;
    QTest::newRow("nothing") << QString() << old;
}

void ContentFileTest::onlyTheHeaderOfTheConfigFileIsWritten()
{
    QFETCH(QString, version);
    QFETCH(QByteArray, header);
    const QByteArray rest("the map engine's own");
    writeFile(m_data->configFile(), QByteArray(16, '\xaa') + rest);

    m_processor.updateLocalMOSVersion(m_data->configFile(), version);

    QCOMPARE(readFile(m_data->configFile()).toHex(), (header + rest).toHex());
}

void ContentFileTest::theConfigFileIsNeverMade()
{
    m_processor.updateLocalMOSVersion(m_data->configFile(), text("1.2.3.4"));

    QVERIFY(!QFile::exists(m_data->configFile()));
    QVERIFY(QDir().mkpath(m_data->configFile()));
    m_processor.updateLocalMOSVersion(m_data->configFile(), text("1.2.3.4"));
    QVERIFY(QFileInfo(m_data->configFile()).isDir());
}

void ContentFileTest::tablesGiveEachRegionItsPaths()
{
    writeFile(m_data->contentFile(),
              "<directory><regions>"
              "<region id=\"142\"><TI name=\"t2\"/><TI name=\"none\"/><TI name=\"t1\"/>"
              "<TI name=\"t1\" path=\"\\p\\q\\t.cdt\"/></region>"
              "<region id=\"17\"/><region id=\"142\"><TI name=\"t1\"/></region></regions>"
              "<diskcache><TI name=\"t1\" path=\"old\"/><TI name=\"t2\" path=\"\\b.cdt\"/>"
              "<TI name=\"t1\" path=\"\\a.cdt\"/><TI name=\"t3\"/></diskcache></directory>");
    MapCatalog catalog;

    catalog.processContentXml();

    // In the file's order; an unknown tile has an empty path, a path of the region's own counts.
    QCOMPARE(catalog.readRegionFileList(text("42")),
             QStringList({text("\\b.cdt"), QString(), text("\\a.cdt"), text("\\p\\q\\t.cdt"),
                          text("\\a.cdt")}));
    QCOMPARE(catalog.readRegionFileList(text("7")), QStringList());
    QCOMPARE(catalog.readRegionFileList(text("142")), QStringList()); // plain ids only
}

void ContentFileTest::tablesAreReadByPositionAndNotByName()
{
    writeFile(
        m_data->contentFile(),
        "<any><other><TI name=\"t\" path=\"no\"/></other>"
        "<diskcache><x name=\"t\" path=\"\\t.cdt\"><TI name=\"t\" path=\"no\"/></x></diskcache>"
        "<regions><y id=\"142\"><z name=\"t\"><TI name=\"t\"/></z></y></regions></any>");
    MapCatalog catalog;

    catalog.processContentXml();

    QCOMPARE(catalog.readRegionFileList(text("42")), QStringList {text("\\t.cdt")});
}

void ContentFileTest::tablesOfAFileThatCannotBeParsedAreEmpty_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray whole = contentXml({{"42", {"a/3/x.cdt"}}});
    QTest::newRow("cut") << whole.left(whole.indexOf("</directory>"));
    QTest::newRow("with a rest") << whole + "<x/>";
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blank") << QByteArray("\n");
}

void ContentFileTest::tablesOfAFileThatCannotBeParsedAreEmpty()
{
    QFETCH(QByteArray, content);
    m_data->setContent({{"42", {"a/3/x.cdt"}}});
    MapCatalog catalog;
    catalog.processContentXml();
    QCOMPARE(catalog.readRegionFileList(text("42")).size(), 1);
    writeFile(m_data->contentFile(), content);

    catalog.processContentXml();

    QCOMPARE(catalog.readRegionFileList(text("42")), QStringList());
}

QTEST_GUILESS_MAIN(ContentFileTest)

#include "tst_contentfile.moc"
