// SPDX-License-Identifier: MIT
// The examples of doc/files.md and doc/content-server.md, each read with the library's own reader,
// and written back.
#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"
#include "cityindex/cityindexlist.h"
#include "doc/pages.h"
#include "download/download.h"
#include "download/requestqueue.h"
#include "download/runningworker.h"
#include "host/shared/installjournal.h"
#include "host/shared/networksource.h"
#include "host/shared/networkstate.h"
#include "host/shared/regionremoval.h"
#include "host/shared/updatestate.h"
#include "plugin/vexa.h"
#include "plugin/vexasettings.h"
#include <QQmlContext>
#include <QQmlEngine>
#include <QRegularExpression>
#include <QtTest>

namespace {

QByteArray example(const QString &heading, const QString &page = QStringLiteral("files.md"))
{
    const QList<Block> blocks = blocksOf(page);
    for (const Block &block : blocks) {
        if (block.heading == heading)
            return block.text.toUtf8();
    }
    qFatal("no example of %s", qPrintable(heading));
}

/** The keys in the table below a heading; N stands for a number. */
QStringList keysBelow(const QString &heading)
{
    const QString page = QString::fromUtf8(readFile(QStringLiteral(VEXA_DOC_DIR "/files.md")));
    const QString section = page.section(QLatin1String("\n## ") + heading + QLatin1Char('\n'), 1)
                                .section(QLatin1String("\n## "), 0, 0);
    QStringList keys;
    const QStringList lines = section.split(QLatin1Char('\n'));
    static const QRegularExpression key(QStringLiteral("`([^`]+)`"));
    for (const QString &line : lines) {
        if (!line.startsWith(QLatin1String("| `")))
            continue;
        auto found = key.globalMatch(line.section(QLatin1Char('|'), 1, 1));
        while (found.hasNext())
            keys.append(found.next().captured(1));
    }
    keys.sort();
    return keys;
}

QStringList keysOf(const QSettings &settings)
{
    QStringList keys;
    static const QRegularExpression number(QStringLiteral("/[0-9]+/"));
    const QStringList all = settings.allKeys();
    for (QString key : all)
        keys.append(key.replace(number, QStringLiteral("/N/")));
    keys.removeDuplicates();
    keys.sort();
    return keys;
}

/** The lines of a settings file without blank ones, in an order of their own. */
QList<QByteArray> sortedLines(const QByteArray &bytes)
{
    QList<QByteArray> lines = bytes.split('\n');
    lines.removeAll(QByteArray());
    std::sort(lines.begin(), lines.end());
    return lines;
}

QString settingsFile(const char *name)
{
    return QSettings(QStringLiteral("vexa"), QStringLiteral("vexa"))
        .fileName()
        .replace(QLatin1String("vexa/vexa.conf"), QLatin1String(name));
}

/** A platform that tells nothing. */
class Nobody : public NetworkSource
{
public:
    NetworkReport report() const override { return {}; }
};

class NoListener : public IRequestQueueListener
{
public:
    void onChanged() override { }
};

} // namespace

class FilesPageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<MapData>(); }
    void cleanup() { m_data.reset(); }
    void catalogueNamesAndContentAreReadTogether();
    void contentFileIsWrittenAsOnThePage();
    void cityIndexIsReadAndWrittenAsOnThePage();
    void configHeaderIsTheVersion();
    void engineTakesUpItsStateAndWritesItBack();
    void everyKeyOfTheEngineIsInTheTable();
    void applicationSettingsReachThePage();
    void choicesOfTheUserAreRead();
    void pendingInstallsAreReadAndWrittenBack();
    void stateOfTheUpdateIsReadAndWrittenBack();
    void unfinishedRemovalsAreRead();
    void examplesOfTheContentServerAreRead();

private:
    void writeCatalogFiles() const
    {
        for (const char *name :
             {"catalog-26.11.21.00.xml", "regionname-lang-001.xml", "content.xml"})
            writeFile(m_data->catalogFolder() + QLatin1Char('/') + text(name), example(text(name)));
        m_data->makeTile("a/3/n60e024.cdt");
    }

    std::unique_ptr<MapData> m_data;
};

void FilesPageTest::catalogueNamesAndContentAreReadTogether()
{
    writeCatalogFiles();
    MapCatalog catalog;
    catalog.updateCatalog();

    QVERIFY(catalog.catalogFilesExist());
    QCOMPARE(catalog.installedMapsVersion(), QStringLiteral("26.11.21.00"));
    const MapRegion *finland = catalog.region(QStringLiteral("FI"));
    const MapRegion *aland = catalog.region(QStringLiteral("AX"));
    QVERIFY(finland && aland);
    QCOMPARE(finland->downloadSize(), 362597);
    QCOMPARE(finland->downloadUrl(), QStringLiteral("archives/26.11.21.00/FI.zip"));
    QCOMPARE(finland->localizedName(), QStringLiteral("Finland (Suomi)"));
    QCOMPARE(aland->localizedName(), text("\xc3\x85land"));
    QVERIFY(aland->hasParent());
    QVERIFY(finland->installed() && !aland->installed());
    QCOMPARE(finland->fileList(), QStringList {QStringLiteral("\\a\\3\\n60e024.cdt")});
}

void FilesPageTest::contentFileIsWrittenAsOnThePage()
{
    writeCatalogFiles();
    MapCatalog catalog;
    catalog.updateCatalog();
    QFile::remove(m_data->contentFile());

    catalog.updateLocalContentFile();

    QCOMPARE(readFile(m_data->contentFile()), example(QStringLiteral("content.xml")));
}

void FilesPageTest::cityIndexIsReadAndWrittenAsOnThePage()
{
    const QString path = m_data->catalogFolder() + QLatin1String("/cityindex.xml");
    const QByteArray bytes = example(QStringLiteral("cityindex.xml"));
    writeFile(path, bytes);
    CityIndexList cities;
    QCOMPARE(cities.count(), 1);
    const CityIndex *city = cities.cityIndex(QStringLiteral("hel"));
    QVERIFY(city);
    QFile::remove(path);

    cities.addCityIndex(city->id(), city->name(), city->version());

    QCOMPARE(readFile(path), bytes);
}

void FilesPageTest::configHeaderIsTheVersion()
{
    const QByteArray header = QByteArray::fromHex(example(QStringLiteral("config.cfg")));
    QCOMPARE(header.size(), 16);
    writeFile(m_data->configFile(), header + "what is behind");

    MapCatalog catalog;
    QCOMPARE(catalog.installedMOSVersion(), QStringLiteral("1.0.23.7"));
    catalog.setInstalledMOSVersion(QStringLiteral("1.0.23.8"));

    QCOMPARE(readFile(m_data->configFile()),
             header.left(12) + QByteArray("\x08\0\0\0", 4) + "what is behind");
}

void FilesPageTest::engineTakesUpItsStateAndWritesItBack()
{
    const QString path = settingsFile("vexa/vexa.conf");
    writeFile(path, example(QStringLiteral("vexa.conf")));
    NoListener listener;
    RequestQueue<Request> queue(&listener);
    queue.restoreSaved();
    Download download;
    {
        const VexaSettings::Locker settings;
        download.deSerialize(*settings);
        QVERIFY(settings->value(QStringLiteral("isSuspended")).toBool());
    }

    QCOMPARE(queue.snapshot().size(), 3);
    QCOMPARE(queue.snapshot().last().type, int(MoveRequest));
    QCOMPARE(queue.snapshot().last().payload.toStringList(),
             QStringList({QStringLiteral("/home/user/MyDocs/.vexa/tmp/unzipped"),
                          QStringLiteral("/home/user/MyDocs/cities/diskcache/")}));
    QCOMPARE(download.bytesReceived, 131072);
    QCOMPARE(download.bytesTotal, 362597);
    {
        const VexaSettings::Locker settings;
        settings->remove(QStringLiteral("download"));
        download.serialize(*settings);
        queue.serialize(*settings);
    }
    QCOMPARE(sortedLines(readFile(path)), sortedLines(example(QStringLiteral("vexa.conf"))));
}

void FilesPageTest::everyKeyOfTheEngineIsInTheTable()
{
    const QStringList table = keysBelow(QStringLiteral("vexa.conf"));
    writeFile(settingsFile("vexa/vexa.conf"), example(QStringLiteral("vexa.conf")));
    QCOMPARE(keysOf(*VexaSettings::instance()), table);
    VexaSettings::destroy();
    QFile::remove(settingsFile("vexa/vexa.conf"));

    // A running engine with all kinds of requests, suspended, writes no other.
    RunningWorker worker;
    worker.iface().suspend();
    worker.iface().testDownload(QStringLiteral("http://localhost:1/t"));
    worker.iface().download(QStringLiteral("FI"), QStringLiteral("http://localhost:1/FI.zip"),
                            QStringLiteral("/d/"), true);
    worker.manager().saveState();
    QVERIFY(worker.stop());

    const QStringList written = keysOf(QSettings(QStringLiteral("vexa"), QStringLiteral("vexa")));
    QStringList expected = table;
    expected.removeOne(QStringLiteral("moving")); // only while files are moved
    QCOMPARE(written, expected);
}

void FilesPageTest::applicationSettingsReachThePage()
{
    writeFile(settingsFile("Orvel/Maps.conf"), example(QStringLiteral("Orvel/Maps.conf")));
    QCOMPARE(keysOf(QSettings(QStringLiteral("Orvel"), QStringLiteral("Maps"))),
             keysBelow(QStringLiteral("Orvel/Maps.conf")));
    QQmlEngine engine;
    VEXA plugin;

    plugin.initializeEngine(&engine, "Vexa");

    QCOMPARE(L::og()->getLogLevel(), 3);
    L::og()->setLogLevel(L::Warning);
    QCOMPARE(engine.rootContext()->contextProperty(QStringLiteral("vexaBaseURI")).toString(),
             QStringLiteral("https://maps.example.org/map5/"));
}

void FilesPageTest::choicesOfTheUserAreRead()
{
    writeFile(settingsFile("vexa/maps.conf"), example(QStringLiteral("maps.conf")));
    QCOMPARE(keysOf(QSettings(QStringLiteral("vexa"), QStringLiteral("maps"))),
             keysBelow(QStringLiteral("maps.conf")));

    const NetworkState network(std::make_unique<Nobody>());

    QVERIFY(network.manual() && !network.manualOnline());
    QVERIFY(network.manualWifi() && network.mobileAllowed());
}

void FilesPageTest::pendingInstallsAreReadAndWrittenBack()
{
    const QString path = InstallJournal::defaultPath();
    QVERIFY(path.endsWith(QLatin1String("/MyDocs/.vexa/installs.json")));
    const QByteArray bytes = example(QStringLiteral("installs.json"));
    writeFile(path, bytes);
    InstallJournal journal(path);
    const auto entry = journal.find(QStringLiteral("FI"));
    QVERIFY(entry);
    QCOMPARE(entry->phase, PendingInstall::Phase::Moving);

    QVERIFY(journal.put(*entry));

    QCOMPARE(readFile(path) + '\n', bytes);
}

void FilesPageTest::stateOfTheUpdateIsReadAndWrittenBack()
{
    const QString path = QDir::homePath() + QLatin1String("/MyDocs/.vexa/update.json");
    const QByteArray bytes = example(QStringLiteral("update.json"));
    writeFile(path, bytes);

    const UpdateState state = UpdateState::read();
    QCOMPARE(state.phase, UpdateState::Phase::Installing);
    QVERIFY(state.write());

    QCOMPARE(readFile(path) + '\n', bytes);
}

void FilesPageTest::unfinishedRemovalsAreRead()
{
    writeFile(RegionRemoval::notePath(), example(QStringLiteral("removals.json")));

    QCOMPARE(RegionRemoval::unfinished(), QStringList {QStringLiteral("SE")});
}

void FilesPageTest::examplesOfTheContentServerAreRead()
{
    const QString folder = m_data->catalogFolder() + QLatin1Char('/');
    const QByteArray content = example(QStringLiteral("content.xml"));
    writeFile(folder + QLatin1String("content.xml"), content);
    const QString page = QStringLiteral("content-server.md");
    writeFile(folder + QLatin1String("catalog-26.11.21.00.xml"),
              example(QStringLiteral("Catalogue"), page));
    writeFile(folder + QLatin1String("regionname-lang-001.xml"),
              example(QStringLiteral("Names"), page));
    MapCatalog catalog;

    catalog.updateCatalog();

    const MapRegion *finland = catalog.region(QStringLiteral("FI"));
    QVERIFY(finland && finland->hasParent());
    QCOMPARE(finland->localizedName(), QStringLiteral("Suomi"));
    QCOMPARE(catalog.region(QStringLiteral("EU"))->downloadSize(), 791272);
}

QTEST_GUILESS_MAIN(FilesPageTest)
#include "tst_filespage.moc"
