// SPDX-License-Identifier: MIT
// Files so long that to read them in one go, or to free what was read, would be felt.
#include "catalog/mapcatalog.h"

#include "catalog/everypass.h"
#include "catalog/mapdata.h"
#include <algorithm>
#include <memory>
#include <QPointer>
#include <QTest>

class LongFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theVersionIsReadFromTheEndsOfAContentFile();
    void aContentFileThatIsCutHasNoVersion_data();
    void aContentFileThatIsCutHasNoVersion();
    void theEventLoopRunsWhileTilesAreReadAndTheirPoolGoes();
    void theEventLoopRunsWhileNamesAreRead();
    void theEventLoopRunsWhileOldRegionsGo();
    void aDeletionRunsTheEventLoopForEachOtherRegion();
    void theCatalogueMayDieMeanwhile();

private:
    QString version() const
    {
        return MapCatalogProcessor().readLocalMapVersion(m_data->contentFile());
    }
    QString listed(MapCatalog *catalog) const;

    std::unique_ptr<MapData> m_data;
};

namespace {

constexpr int Regions = 2000;
constexpr int Tiles = 20000;

QByteArray longContent()
{
    QList<QByteArray> tiles;
    for (int i = 0; i < Tiles; ++i)
        tiles.append("a/3/" + QByteArray::number(i) + ".cdt");
    return contentXml({{"7", tiles}, {"42", {"b/4/x.cdt"}}});
}

} // namespace

void LongFilesTest::init()
{
    m_data = std::make_unique<MapData>();
    QByteArray elements;
    QByteArray names = "<n>";
    for (int i = 0; i < Regions; ++i) {
        const QByteArray id = QByteArray::number(i);
        elements += fileElement(id);
        names += "<region id=\"" + id + "\" name=\"Name " + id + "\"/>";
    }
    m_data->setCatalog(elements);
    writeFile(m_data->namesFile(), names + "</n>");
    writeFile(m_data->contentFile(), longContent());
}

void LongFilesTest::cleanup()
{
    m_data.reset();
}

// The numbers of available and installed regions, of names and of the first installed one's tiles.
QString LongFilesTest::listed(MapCatalog *catalog) const
{
    auto available = catalog->availableRegions();
    auto installed = catalog->installedRegions();
    int names = 0;
    for (int i = 0; i < int(available.count(&available)); ++i)
        names += !available.at(&available, i)->localizedName().isEmpty();
    const MapRegion *first = installed.at(&installed, 0);
    return QStringLiteral("%1 %2 %3 %4")
        .arg(available.count(&available))
        .arg(installed.count(&installed))
        .arg(names)
        .arg(first ? first->fileList().size() : 0);
}

// A short file is read to its end, and has no version either if it is damaged.
void LongFilesTest::theVersionIsReadFromTheEndsOfAContentFile()
{
    const QByteArray whole = longContent();
    QCOMPARE(version(), text("1.2"));

    writeFile(m_data->contentFile(), QByteArray(whole).replace(whole.size() / 2, 1, "<"));

    QCOMPARE(version(), text("1.2"));
    QCOMPARE(MapCatalogProcessor().readLocalContent(m_data->contentFile()), QStringList());
    MapCatalog catalog;
    catalog.updateCatalog();
    QCOMPARE(listed(&catalog), QStringLiteral("%1 0 %1 0").arg(Regions));
}

void LongFilesTest::aContentFileThatIsCutHasNoVersion_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray whole = longContent().trimmed();
    QTest::newRow("by a character") << whole.left(whole.size() - 1);
    QTest::newRow("by its last tag") << whole.left(whole.lastIndexOf("</directory>"));
    QTest::newRow("between two tiles") << whole.left(whole.lastIndexOf("<TI"));
    QTest::newRow("in a tile") << whole.left(whole.size() * 3 / 4);
    // As a power failure leaves them.
    QTest::newRow("and filled up with zeros")
        << whole.left(whole.size() - 4096) + QByteArray(4096, '\0');
    QTest::newRow("and it goes on behind") << whole + "<x/>";
    QTest::newRow("in its first tag") << "<directory map-version=\"1.2\"" + whole;
}

void LongFilesTest::aContentFileThatIsCutHasNoVersion()
{
    QFETCH(QByteArray, content);
    QVERIFY(content.size() > 300 * 1024);
    writeFile(m_data->contentFile(), content);

    QCOMPARE(version(), QString());
}

void LongFilesTest::theEventLoopRunsWhileTilesAreReadAndTheirPoolGoes()
{
    MapCatalog catalog;
    catalog.loadAvailableRegions();
    int passes = 0;
    const EveryPass look([&] {
        auto installed = catalog.installedRegions();
        passes += installed.count(&installed) == 0; // so the file is still being read
    });

    catalog.loadInstalledRegions();

    // Every 500 tiles, both while they are read and while the means of reading them go.
    QVERIFY2(passes > 3 * Tiles / 1000, qPrintable(QString::number(passes)));
    QCOMPARE(listed(&catalog), QStringLiteral("%1 2 %1 %2").arg(Regions).arg(Tiles));
}

void LongFilesTest::theEventLoopRunsWhileNamesAreRead()
{
    MapCatalog catalog;
    int passes = 0;
    const EveryPass look([&] {
        auto available = catalog.availableRegions();
        const MapRegion *first = catalog.region(text("0"));
        // All regions are there, and the first name is not: it is being read.
        passes += int(available.count(&available)) == Regions && first->localizedName().isEmpty();
    });

    catalog.loadAvailableRegions();

    QVERIFY2(passes > Regions / 1000, qPrintable(QString::number(passes)));
}

void LongFilesTest::theEventLoopRunsWhileOldRegionsGo()
{
    MapCatalog catalog;
    catalog.updateCatalog();
    QList<QPointer<MapRegion>> old;
    auto available = catalog.availableRegions();
    for (int i = 0; i < Regions; ++i)
        old.append(available.at(&available, i));
    int passes = 0;
    const EveryPass look([&] {
        // Children go after their parents, so the last go first.
        passes += old.constFirst() && !old.constLast();
    });

    catalog.loadAvailableRegions();

    QVERIFY2(passes > Regions / 1000, qPrintable(QString::number(passes)));
    QCOMPARE(old.count(nullptr), Regions);
}

void LongFilesTest::aDeletionRunsTheEventLoopForEachOtherRegion()
{
    constexpr int Others = 50;
    QList<ContentRegion> installed {{"0", {"b/4/own.cdt", "b/4/shared.cdt"}}};
    for (int i = 1; i <= Others; ++i)
        installed.append({QByteArray::number(i), {"b/4/shared.cdt"}});
    m_data->setContent(installed);
    m_data->makeTile("b/4/own.cdt");
    m_data->makeTile("b/4/shared.cdt");
    MapCatalog catalog;
    catalog.updateCatalog();
    int passes = 0;
    // As long as this tile is there, the others are being asked whether they use it.
    const EveryPass look([&] { passes += m_data->hasTile("b/4/own.cdt"); });

    catalog.deleteInstalledRegion(text("0"));

    QVERIFY2(passes >= Others, qPrintable(QString::number(passes)));
    QVERIFY(!m_data->hasTile("b/4/own.cdt"));
    QVERIFY(m_data->hasTile("b/4/shared.cdt"));
}

// In the reading of the names and of the tiles, and while the old regions go. That nothing is
// touched afterwards, the address sanitizer tells.
void LongFilesTest::theCatalogueMayDieMeanwhile()
{
    std::unique_ptr<MapCatalog> catalog;
    int deaths = 0;
    for (int pass = 1, last = 0; deaths == last; pass += 211, ++last) {
        catalog = std::make_unique<MapCatalog>();
        catalog->updateCatalog();
        const EveryPass end(
            [&] {
                ++deaths;
                catalog.reset();
            },
            pass);
        catalog->updateCatalog();
    }
    QVERIFY2(deaths > 20, qPrintable(QString::number(deaths)));
}

QTEST_GUILESS_MAIN(LongFilesTest)

#include "tst_longfiles.moc"
