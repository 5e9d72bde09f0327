// SPDX-License-Identifier: MIT
// A whole update with trees of the size that devices have, byte by byte.
#include "catalog/mapcatalog.h"

#include "catalog/datasets.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QTest>

class MapCatalogDataSetFlowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase() { m_data.reset(); }

    void anUpdateReplacesTheMainSet();

private:
    using Snapshot = QMap<QString, QByteArray>;

    Snapshot snapshot(const char *folder) const { return snapshotOf(m_data->path(folder)); }
    QStringList folders() const
    {
        return QDir(m_data->citiesFolder())
            .entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    }
    void installInto(MapCatalog *catalog, const char *id);

    std::unique_ptr<DataSets> m_data;
};

namespace {

constexpr int TilesOfARegion = 5000;

// Names that belong to one region, spread over the 256 folders.
QString tileOf(const char *id, int number)
{
    return QStringLiteral("%1/%2/%3%4.cdt")
        .arg(number % 16, 0, 16)
        .arg(number / 16 % 16, 0, 16)
        .arg(text(id))
        .arg(number, 4, 16, QLatin1Char('0'));
}

// 1 to 4 KiB of any bytes, always the same for one tile of one edition.
QByteArray tileBytes(const QString &tile, const char *edition)
{
    const QByteArray block =
        QCryptographicHash::hash(tile.toUtf8() + edition, QCryptographicHash::Sha256);
    return block.repeated(32 + quint8(block.at(0)) % 96);
}

QStringList writeTiles(const QString &folder, const char *id, const char *edition)
{
    QStringList tiles;
    for (int number = 0; number < TilesOfARegion; ++number) {
        tiles.append(tileOf(id, number));
        writeFile(folder + QLatin1Char('/') + tiles.constLast(),
                  tileBytes(tiles.constLast(), edition));
    }
    return tiles;
}

QMap<QString, QByteArray> part(const QMap<QString, QByteArray> &snapshot, const char *beginning)
{
    QMap<QString, QByteArray> part;
    for (auto it = snapshot.cbegin(); it != snapshot.cend(); ++it) {
        if (it.key().startsWith(text(beginning)))
            part.insert(it.key(), *it);
    }
    return part;
}

QMap<QString, QByteArray> without(QMap<QString, QByteArray> snapshot, const char *beginning)
{
    const QMap<QString, QByteArray> gone = part(snapshot, beginning);
    for (auto it = gone.cbegin(); it != gone.cend(); ++it)
        snapshot.remove(it.key());
    return snapshot;
}

} // namespace

// The main set as an earlier installation left it, and the remains of an earlier update.
void MapCatalogDataSetFlowTest::initTestCase()
{
    m_data = std::make_unique<DataSets>();
    m_data->setCatalog(fileElement("1") + fileElement("2") + fileElement("3"));
    writeFile(m_data->namesFile(), "<n><region id=\"1\" name=\"One\"/></n>");
    writeFile(m_data->path("Tessarin/cityindex.xml"), "<cities><city name=\"Turku\"/></cities>");
    m_data->setContent({});
    writeFile(m_data->configFile(), mosHeader(1) + QByteArray(100, 'c'));
    for (const char *voice : {"voices/en/1.ogg", "voices/fi/1.ogg", "voices/.index"})
        writeFile(m_data->tile(voice), QByteArray(30000, 'v') + voice);

    MapCatalog catalog;
    catalog.updateCatalog();
    for (const char *id : {"1", "2"})
        catalog.addInstalledRegion(text(id), writeTiles(m_data->tileFolder(), id, "first"));
    m_data->makeSet("_", "leftover");
    m_data->makeSet("_new", "leftover");
}

// As a download leaves it: the files are in place, then the catalogue is told.
void MapCatalogDataSetFlowTest::installInto(MapCatalog *catalog, const char *id)
{
    catalog->addInstalledRegion(text(id), writeTiles(m_data->path("diskcache_new"), id, "second"));
}

void MapCatalogDataSetFlowTest::anUpdateReplacesTheMainSet()
{
    MapCatalog main;
    main.updateCatalog();
    main.removeBackupOldFolders(text("_new"));
    QCOMPARE(folders(), QStringList({text("Tessarin"), text("diskcache")}));
    const Snapshot oldCatalogs = snapshot("Tessarin");
    const Snapshot oldTiles = snapshot("diskcache");
    QCOMPARE(oldTiles.size(), 2 * TilesOfARegion + 3 + 1);

    // Prepared beside the main set, which stays as it is and in use.
    MapCatalog second;
    second.resetInstanceWithPathSuffix(text("_new"), true);
    second.updateCatalog();
    QCOMPARE(ids(second.availableRegions()), text("1 2 3"));
    QCOMPARE(ids(second.installedRegions()), QString());
    installInto(&second, "2");
    installInto(&second, "3");
    second.setInstalledMOSVersion(text("2.0.0.0"));
    QCOMPARE(ids(second.installedRegions()), text("2 3"));
    QCOMPARE(ids(main.installedRegions()), text("1 2"));
    main.updateCatalog();
    QCOMPARE(ids(main.installedRegions()), text("1 2"));
    QCOMPARE(main.region(text("2"))->fileList().size(), TilesOfARegion);
    QVERIFY(snapshot("Tessarin") == oldCatalogs);
    QVERIFY(snapshot("diskcache") == oldTiles);
    const Snapshot newCatalogs = snapshot("Tessarin_new");
    const Snapshot newTiles = snapshot("diskcache_new");
    QCOMPARE(newTiles.size(), 2 * TilesOfARegion + 1);
    QVERIFY(part(newTiles, "0/0/2") != part(oldTiles, "0/0/2")); // another edition

    second.swapOriginalFoldersWithSuffixed(text("_new"));

    QCOMPARE(
        folders(),
        QStringList({text("Tessarin"), text("Tessarin_"), text("diskcache"), text("diskcache_")}));
    QVERIFY(snapshot("Tessarin_") == oldCatalogs);
    QVERIFY(snapshot("diskcache_") == without(oldTiles, "voices/"));
    QVERIFY(snapshot("Tessarin") == newCatalogs);
    const Snapshot tiles = snapshot("diskcache");
    QVERIFY(without(tiles, "voices/") == newTiles);
    QVERIFY(part(tiles, "voices/") == part(oldTiles, "voices/"));
    QCOMPARE(part(tiles, "voices/").size(), 3);

    second.removeBackupOldFolders(text("_new"));

    QCOMPARE(folders(), QStringList({text("Tessarin"), text("diskcache")}));
    QVERIFY(snapshot("Tessarin") == newCatalogs);
    QVERIFY(snapshot("diskcache") == tiles);

    main.initialize();
    main.updateCatalog();
    QCOMPARE(main.installedMapsVersion(), text("1.2"));
    QCOMPARE(main.installedMOSVersion(), text("2.0.0.0"));
    QCOMPARE(ids(main.installedRegions()), text("2 3"));
    QVERIFY(!main.region(text("1"))->installed());
    QCOMPARE(main.region(text("3"))->fileList().size(), TilesOfARegion);

    main.deleteInstalledRegion(text("2"));
    QCOMPARE(snapshot("diskcache").size(), TilesOfARegion + 1 + 3);
    main.removeAllMapData();
    QVERIFY(snapshot("diskcache") == part(tiles, "voices/"));
    QCOMPARE(treeOf(m_data->path("Tessarin")), QStringList());
}

QTEST_GUILESS_MAIN(MapCatalogDataSetFlowTest)

#include "tst_mapcatalogdatasetflow.moc"
