// SPDX-License-Identifier: MIT
// How the content file is put together and saved: which tiles are found, every character, and
// files that are too large to be saved in one go.
#include "catalog/mapcatalogprocessor.h"

#include "catalog/everypass.h"
#include "catalog/mapdata.h"
#include "catalog/mapregion.h"
#include <atomic>
#include <cerrno>
#include <functional>
#include <memory>
#include <QSemaphore>
#include <QXmlStreamWriter>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

// What a wait for the disk does in this program; nothing: it waits.
std::function<int()> theDisk;

} // namespace

// Stands before the system's own, also for the library.
extern "C" __attribute__((visibility("default"))) int fdatasync(int file)
{
    return theDisk ? theDisk() : int(syscall(SYS_fdatasync, file));
}

class ContentWritingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<MapData>(); }
    void cleanup() { m_data.reset(); }

    void tilesAreFoundWhateverTheirKind_data();
    void tilesAreFoundWhateverTheirKind();
    void aLinkedFolderOfTilesIsFollowed();
    void everyCharacterIsWrittenAsByAnXmlWriter();
    void aLargeFileIsSavedWhole();
    void savingALargeFileRunsTheEventLoop();
    void theEventLoopRunsWhileTheDiskTakesItsTime();
    void aLargeFileThatTheDiskRefusesLeavesTheOldOne();
    void aNewerFileStaysWhenALargeOneIsOvertakenWhileItIsSaved();

private:
    void write(const QList<MapRegion *> &regions)
    {
        m_processor.updateLocalContent(m_data->contentFile(), text("1.2"), regions,
                                       m_data->tileFolder());
    }
    QByteArray written() const { return readFile(m_data->contentFile()); }

    std::unique_ptr<MapData> m_data;
    MapCatalogProcessor m_processor;
};

namespace {

// A region whose tiles take some MB of the content file.
std::unique_ptr<MapRegion> largeRegion(const char *id)
{
    QStringList tiles;
    for (int i = 0; i < 80000; ++i)
        tiles.append(QStringLiteral("a/3/a3%1.cdt").arg(i, 6, 16, QLatin1Char('0')));
    auto region = std::make_unique<MapRegion>(text(id));
    region->setFileList(tiles);
    return region;
}

} // namespace

void ContentWritingTest::tilesAreFoundWhateverTheirKind_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("isFound");
    const auto row = [](const char *what, const char *name, const char *kind, bool isFound) {
        QTest::newRow(what) << text(name) << text(kind) << isFound;
    };
    row("a file", "x.cdt", "file", true);
    row("capital letters", "x.CDT", "file", true);
    row("blanks and foreign letters", "x y\xc3\xa4.cdt", "file", true);
    row("a hidden file", ".x.cdt", "file", false);
    row("nothing but the ending", ".cdt", "file", false);
    row("the ending in the middle", "x.cdt.idx", "file", false);
    row("a folder", "x.cdt", "folder", false);
    row("a pipe", "x.cdt", "pipe", false);
    row("a link to a file", "x.cdt", "link", true);
    row("a link to a folder", "x.cdt", "link to a folder", false);
    row("a link to nothing", "x.cdt", "broken link", false);
}

void ContentWritingTest::tilesAreFoundWhateverTheirKind()
{
    QFETCH(QString, name);
    QFETCH(QString, kind);
    QFETCH(bool, isFound);
    const QString folder = m_data->tileFolder() + text("/a/3");
    const QString path = folder + QLatin1Char('/') + name;
    QVERIFY(QDir().mkpath(folder));
    if (kind == text("file"))
        writeFile(path, "x");
    else if (kind == text("folder"))
        QVERIFY(QDir().mkpath(path));
    else if (kind == text("pipe"))
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    else if (kind == text("link to a folder"))
        QVERIFY(QFile::link(m_data->catalogFolder(), path));
    else
        QVERIFY(QFile::link(m_data->citiesFolder() + text("/target"), path));
    if (kind == text("link"))
        writeFile(m_data->citiesFolder() + text("/target"), "x");

    const QList<QFileInfo> tiles = m_processor.findInstalledTiles(QDir(m_data->tileFolder()));

    QCOMPARE(int(tiles.size()), isFound ? 1 : 0);
    QVERIFY(!isFound || tiles.at(0).filePath() == path);
}

void ContentWritingTest::aLinkedFolderOfTilesIsFollowed()
{
    writeFile(m_data->citiesFolder() + text("/card/x.cdt"), "x");
    QVERIFY(QDir().mkpath(m_data->tileFolder() + text("/a")));
    QVERIFY(QFile::link(m_data->citiesFolder() + text("/card"), m_data->tile("a/3")));

    write({});

    QVERIFY2(written().contains("<TI name=\"x\" path=\"\\a\\3\\x.cdt\"/>"), written().constData());
}

// Of what XML forbids nothing is left, so an XML writer can be the judge.
void ContentWritingTest::everyCharacterIsWrittenAsByAnXmlWriter()
{
    QString all;
    for (int c = 0x20; c < 0xfffe; ++c) {
        if (!QChar(c).isSurrogate())
            all += QChar(c);
    }
    all += text("\t\n\r\xf0\x9f\x97\xba");
    MapRegion region(text("42"));
    region.setName(all);
    QByteArray expected;
    QXmlStreamWriter xml(&expected);
    xml.writeEmptyElement(text("region"));
    xml.writeAttribute(text("id"), text("142"));
    xml.writeAttribute(text("name"), all);
    xml.writeEndDocument();

    write({&region});

    QVERIFY(written().contains(expected.trimmed()));
}

void ContentWritingTest::aLargeFileIsSavedWhole()
{
    const auto region = largeRegion("42");
    QByteArray expected("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<directory map-version=\"1.2\">\n <diskcache/>\n <regions>\n"
                        "  <region id=\"142\" name=\"\">\n");
    const QStringList tiles = region->fileList();
    for (const QString &tile : tiles) {
        const QByteArray path = tile.toUtf8().replace('/', '\\');
        expected +=
            "   <TI name=\"" + path.mid(path.size() - 5, 1) + "\" path=\"\\" + path + "\"/>\n";
    }
    expected += "  </region>\n </regions>\n</directory>\n";

    write({region.get()});

    QVERIFY(written() == expected);
    QCOMPARE(QDir(m_data->catalogFolder()).entryList(QDir::Files),
             QStringList {text("content.xml")});
}

void ContentWritingTest::savingALargeFileRunsTheEventLoop()
{
    const auto passesOf = [&](MapRegion *region) {
        const EveryPass passes([] {});
        write({region});
        return passes.calls();
    };
    MapRegion small(text("42"));
    const int usual = passesOf(&small);
    const auto large = largeRegion("42");

    const int passes = passesOf(large.get());

    QVERIFY2(passes >= usual + 3, qPrintable(QStringLiteral("%1, %2").arg(usual).arg(passes)));
}

void ContentWritingTest::theEventLoopRunsWhileTheDiskTakesItsTime()
{
    constexpr int Passes = 3;
    constexpr int Patience = 30000; // ms, of a disk that would wait for ever
    std::atomic<bool> waits {false};
    bool wasServed = true;
    QSemaphore passes;
    const EveryPass pass([&] {
        if (waits)
            passes.release();
    });
    theDisk = [&] {
        if (!waits.exchange(true))
            wasServed = passes.tryAcquire(Passes, Patience);
        return 0;
    };
    const auto large = largeRegion("42");

    write({large.get()});

    theDisk = nullptr;
    QVERIFY(waits);
    QVERIFY(wasServed);
    QVERIFY(written().endsWith("</directory>\n"));
}

// As the system does it: it tells of the error once, and whoever asks again hears nothing of it.
void ContentWritingTest::aLargeFileThatTheDiskRefusesLeavesTheOldOne()
{
    MapRegion older(text("7"));
    write({&older});
    std::atomic<int> waits {0};
    theDisk = [&] {
        errno = EIO;
        return ++waits == 1 ? -1 : 0;
    };
    const auto large = largeRegion("42");

    write({large.get()});

    theDisk = nullptr;
    QVERIFY(waits > 0);
    QVERIFY(written().contains("id=\"17\""));
    QCOMPARE(QDir(m_data->catalogFolder()).entryList(QDir::Files).size(), 1);
}

void ContentWritingTest::aNewerFileStaysWhenALargeOneIsOvertakenWhileItIsSaved()
{
    const auto older = largeRegion("42");
    MapRegion newer(text("7"));
    int usual = 0;
    {
        const EveryPass passes([] {});
        write({&newer});
        usual = passes.calls();
    }
    int overtaken = 0;
    bool wasInside = true;
    // In ever larger steps: how many passes there are while the disk is waited for, nobody knows.
    for (int pass = 1; wasInside; pass += 1 + pass / 5, ++overtaken) {
        const EveryPass poke([&] { write({&newer}); }, usual + pass);

        write({older.get()});

        wasInside = poke.hasCalled();
        QCOMPARE(written().contains("id=\"17\""), wasInside);
        QCOMPARE(written().contains("id=\"142\""), !wasInside);
        QVERIFY(written().endsWith("</directory>\n"));
        QCOMPARE(QDir(m_data->catalogFolder()).entryList(QDir::Files).size(), 1);
    }
    QVERIFY(overtaken > 3);
}

QTEST_GUILESS_MAIN(ContentWritingTest)

#include "tst_contentwriting.moc"
