// SPDX-License-Identifier: MIT
// The figures of an update's preview, from tables; and which tiles the catalogue really removes.
#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"
#include "host/shared/regionfiles.h"
#include "host/shared/tilelist.h"
#include "host/shared/updatepreview.h"
#include <QSet>
#include <QtTest>

Q_DECLARE_METATYPE(ArchiveFile)

using namespace UpdatePreview;

namespace {

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// "a/3/x.cdt=10 a/3/y.cdt=20"
QList<ArchiveFile> files(const char *text)
{
    QList<ArchiveFile> result;
    for (const QString &word : words(text))
        result.append(
            {word.section(QLatin1Char('='), 0, 0), word.section(QLatin1Char('='), 1).toLongLong()});
    return result;
}

QHash<QString, qint64> sizes(const char *text)
{
    QHash<QString, qint64> result;
    for (const ArchiveFile &file : files(text))
        result.insert(file.path, file.size);
    return result;
}

QString described(const TileChanges &tiles)
{
    return QStringLiteral("+%1 !%2 =%3 -%4")
        .arg(tiles.added)
        .arg(tiles.resized)
        .arg(tiles.sameSize)
        .arg(tiles.gone);
}

} // namespace

class UpdatePreviewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tilesAreComparedWithTheDisk_data();
    void tilesAreComparedWithTheDisk();
    void aSharedTileCountsOnceInTheSums();
    void aRegionThatTheNewVersionLacksIsTold();
    void aRegionWithAProblemIsLeftOutOfTheSums();
    void thePeakIsTheWorstMoment_data();
    void thePeakIsTheWorstMoment();
    void filesThatAreNotMovedTakeRoomOnlyOnTheWay();
    void noRegionsComeToNothing();
    void tilesThatOthersNeedAreEndangered_data();
    void tilesThatOthersNeedAreEndangered();
    void theCatalogueRemovesWhatIsEndangered();
};

void UpdatePreviewTest::tilesAreComparedWithTheDisk_data()
{
    QTest::addColumn<QStringList>("oldTiles");
    QTest::addColumn<QHash<QString, qint64>>("onDisk");
    QTest::addColumn<QList<ArchiveFile>>("newFiles");
    QTest::addColumn<QString>("changes");
    QTest::newRow("the same") << words("x.cdt y.cdt") << sizes("x.cdt=1 y.cdt=2")
                              << files("x.cdt=1 y.cdt=2") << QStringLiteral("+0 !0 =2 -0");
    QTest::newRow("one of each") << words("x.cdt y.cdt z.cdt") << sizes("x.cdt=1 y.cdt=2 z.cdt=3")
                                 << files("x.cdt=1 y.cdt=5 n.cdt=7")
                                 << QStringLiteral("+1 !1 =1 -1");
    QTest::newRow("missing on the disk, and in the new version too")
        << words("x.cdt y.cdt") << sizes("x.cdt=1") << files("x.cdt=1")
        << QStringLiteral("+0 !0 =1 -0");
    QTest::newRow("missing on the disk, and there in the new version")
        << words("x.cdt") << sizes("") << files("x.cdt=1") << QStringLiteral("+1 !0 =0 -0");
    QTest::newRow("on the disk for another region")
        << words("") << sizes("x.cdt=1") << files("x.cdt=2") << QStringLiteral("+0 !1 =0 -0");
    QTest::newRow("files that are no tiles")
        << words("x.cdt") << sizes("x.cdt=1") << files("x.cdt=1 README=9 .cdt/y.cdt=4")
        << QStringLiteral("+0 !0 =1 -0");
}

void UpdatePreviewTest::tilesAreComparedWithTheDisk()
{
    QFETCH(QStringList, oldTiles);
    using Sizes = QHash<QString, qint64>;
    QFETCH(Sizes, onDisk);
    QFETCH(QList<ArchiveFile>, newFiles);
    QFETCH(QString, changes);
    const QString id = QStringLiteral("A");

    const Preview preview = of({{{id, oldTiles}}, onDisk, {{id, {100, newFiles, QString()}}}});

    QCOMPARE(described(preview.regions.first().tiles), changes);
    QCOMPARE(described(preview.tiles), changes);
    QCOMPARE(preview.downloadBytes, qint64(100));
    QVERIFY(preview.isWhole);
}

void UpdatePreviewTest::aSharedTileCountsOnceInTheSums()
{
    Input input;
    input.installed = {{QStringLiteral("A"), words("a.cdt ab.cdt old.cdt")},
                       {QStringLiteral("B"), words("b.cdt ab.cdt old.cdt")}};
    input.sizesOnDisk = sizes("a.cdt=1 b.cdt=2 ab.cdt=30 old.cdt=4");
    input.archives = {{QStringLiteral("A"), {10, files("a.cdt=1 ab.cdt=31 n.cdt=5"), QString()}},
                      {QStringLiteral("B"), {20, files("b.cdt=3 ab.cdt=32 n.cdt=5"), QString()}}};

    const Preview preview = of(input);

    QCOMPARE(described(preview.regions.at(0).tiles), QStringLiteral("+1 !1 =1 -1"));
    QCOMPARE(described(preview.regions.at(1).tiles), QStringLiteral("+1 !2 =0 -1"));
    QCOMPARE(described(preview.tiles), QStringLiteral("+1 !2 =1 -1"));
    QCOMPARE(preview.regions.at(0).installedBytes, qint64(37));
    QCOMPARE(preview.regions.at(1).installedBytes, qint64(40));
    QCOMPARE(preview.newSetBytes, qint64(1 + 3 + 32 + 5)); // the later ab.cdt replaces the earlier
    QCOMPARE(preview.downloadBytes, qint64(30));
}

void UpdatePreviewTest::aRegionThatTheNewVersionLacksIsTold()
{
    Input input;
    input.installed = {{QStringLiteral("A"), words("a.cdt ab.cdt")},
                       {QStringLiteral("B"), words("ab.cdt")}};
    input.sizesOnDisk = sizes("a.cdt=1 ab.cdt=30");
    input.archives = {{QStringLiteral("B"), {20, files("ab.cdt=30"), QString()}}};

    const Preview preview = of(input);

    QVERIFY(preview.regions.at(0).isLacking);
    QVERIFY(!preview.regions.at(1).isLacking);
    QVERIFY(preview.isWhole);
    QCOMPARE(described(preview.regions.at(0).tiles), QStringLiteral("+0 !0 =0 -0"));
    QCOMPARE(described(preview.tiles), QStringLiteral("+0 !0 =1 -1")); // a.cdt goes with A
    QVERIFY(preview.regions.at(0).endangered.isEmpty()); // nobody installs it over itself
}

void UpdatePreviewTest::aRegionWithAProblemIsLeftOutOfTheSums()
{
    Input input;
    input.installed = {{QStringLiteral("A"), words("a.cdt")},
                       {QStringLiteral("B"), words("b.cdt")}};
    input.sizesOnDisk = sizes("a.cdt=1 b.cdt=2");
    input.archives = {{QStringLiteral("A"), {10, files("a.cdt=1"), QStringLiteral("damaged")}},
                      {QStringLiteral("B"), {20, files("b.cdt=2"), QString()}}};

    const Preview preview = of(input);

    QVERIFY(!preview.isWhole);
    QCOMPARE(preview.regions.at(0).problem, QStringLiteral("damaged"));
    QVERIFY(!preview.regions.at(0).isLacking);
    QCOMPARE(preview.downloadBytes, qint64(20));
    QCOMPARE(preview.newSetBytes, qint64(2));
}

void UpdatePreviewTest::thePeakIsTheWorstMoment_data()
{
    QTest::addColumn<QList<qint64>>("archives");
    QTest::addColumn<QList<qint64>>("tiles");
    QTest::addColumn<qint64>("peak");
    QTest::newRow("one that packs badly: archive and unpacked")
        << QList<qint64> {120} << QList<qint64> {100} << qint64(220);
    QTest::newRow("one that packs well: unpacked and its copy")
        << QList<qint64> {10} << QList<qint64> {100} << qint64(200);
    QTest::newRow("the last is the worst")
        << QList<qint64> {50, 50} << QList<qint64> {100, 100} << qint64(300);
    QTest::newRow("the first is the worst")
        << QList<qint64> {900, 5} << QList<qint64> {1000, 10} << qint64(2000);
}

void UpdatePreviewTest::thePeakIsTheWorstMoment()
{
    QFETCH(QList<qint64>, archives);
    QFETCH(QList<qint64>, tiles);
    QFETCH(qint64, peak);
    Input input;
    for (int i = 0; i < int(archives.size()); ++i) {
        const QString id = QString::number(i);
        input.installed.append({id, {}});
        input.archives.insert(
            id, {archives.at(i), {{id + QLatin1String(".cdt"), tiles.at(i)}}, QString()});
    }

    QCOMPARE(of(input).peakBytes, peak);
}

void UpdatePreviewTest::filesThatAreNotMovedTakeRoomOnlyOnTheWay()
{
    const Preview preview =
        of({{{QStringLiteral("A"), {}}},
            {},
            {{QStringLiteral("A"), {10, files("x.cdt=100 README=7 .hidden=1000"), QString()}}}});

    QCOMPARE(preview.regions.first().installedBytes, qint64(107));
    QCOMPARE(preview.newSetBytes, qint64(107));
    QCOMPARE(preview.peakBytes, qint64(107 + 1107));
}

void UpdatePreviewTest::noRegionsComeToNothing()
{
    const Preview preview = of(Input());

    QVERIFY(preview.regions.isEmpty());
    QVERIFY(preview.isWhole);
    QCOMPARE(preview.peakBytes, qint64(0));
}

void UpdatePreviewTest::tilesThatOthersNeedAreEndangered_data()
{
    QTest::addColumn<QString>("newTiles");
    QTest::addColumn<QString>("onDisk");
    QTest::addColumn<QString>("endangered");
    const QString all = QStringLiteral("a.cdt=1 ab.cdt=1 abc.cdt=1");
    QTest::newRow("the new version has all") << all << all << QString();
    QTest::newRow("it lacks what nobody else needs")
        << QStringLiteral("ab.cdt=1 abc.cdt=1") << all << QString();
    QTest::newRow("it lacks what one other needs")
        << QStringLiteral("a.cdt=1 abc.cdt=1") << all << QStringLiteral("ab.cdt:B");
    QTest::newRow("it lacks what two others need")
        << QStringLiteral("a.cdt=1 ab.cdt=1") << all << QStringLiteral("abc.cdt:B,C");
    QTest::newRow("it lacks all") << QStringLiteral("n.cdt=1") << all
                                  << QStringLiteral("ab.cdt:B abc.cdt:B,C");
    QTest::newRow("what is missing already cannot be removed")
        << QStringLiteral("n.cdt=1") << QStringLiteral("a.cdt=1 abc.cdt=1")
        << QStringLiteral("abc.cdt:B,C");
}

void UpdatePreviewTest::tilesThatOthersNeedAreEndangered()
{
    QFETCH(QString, newTiles);
    QFETCH(QString, onDisk);
    QFETCH(QString, endangered);
    Input input;
    input.installed = {{QStringLiteral("A"), words("a.cdt ab.cdt abc.cdt")},
                       {QStringLiteral("B"), words("ab.cdt abc.cdt")},
                       {QStringLiteral("C"), words("abc.cdt")}};
    input.sizesOnDisk = sizes(onDisk.toLatin1().constData());
    input.archives = {
        {QStringLiteral("A"), {1, files(newTiles.toLatin1().constData()), QString()}}};

    const Preview preview = of(input);

    QStringList found;
    for (const EndangeredTile &tile : preview.regions.first().endangered)
        found.append(tile.tile + QLatin1Char(':') + tile.neededBy.join(QLatin1Char(',')));
    QCOMPARE(found.join(QLatin1Char(' ')), endangered);
}

// The same data set, for each of its regions: what the preview warns of is what the others miss
// after the catalogue alone has put the new list in place.
void UpdatePreviewTest::theCatalogueRemovesWhatIsEndangered()
{
    const QStringList newTiles = words("0/0/a.cdt 0/0/new.cdt");
    for (const char *id : {"A", "B", "C"}) {
        MapData data;
        data.setCatalog(fileElement("A") + fileElement("B") + fileElement("C"));
        data.setContent({{"A", {"0/0/a.cdt", "0/0/ab.cdt", "0/0/abc.cdt", "0/0/none.cdt"}},
                         {"B", {"0/0/b.cdt", "0/0/ab.cdt", "0/0/abc.cdt", "0/0/none.cdt"}},
                         {"C", {"0/0/abc.cdt"}}});
        for (const char *tile :
             {"0/0/a.cdt", "0/0/b.cdt", "0/0/ab.cdt", "0/0/abc.cdt", "0/0/new.cdt"})
            data.makeTile(tile);
        MapCatalog catalog;
        catalog.updateCatalog();
        Input input;
        QSet<QString> ofOthers;
        const QList<MapRegion *> regions = RegionFiles::installed(&catalog);
        for (const MapRegion *region : regions) {
            QStringList tiles;
            const QStringList entries = region->fileList();
            for (const QString &entry : entries)
                tiles.append(TileList::plain(entry));
            input.installed.append({region->id(), tiles});
            for (const QString &tile : std::as_const(tiles)) {
                if (!data.hasTile(tile.toLatin1().constData()))
                    continue;
                input.sizesOnDisk.insert(tile, 1);
                if (region->id() != QLatin1String(id))
                    ofOthers.insert(tile);
            }
        }
        QList<ArchiveFile> newFiles;
        for (const QString &tile : newTiles)
            newFiles.append({tile, 1});
        input.archives.insert(QLatin1String(id), {1, newFiles, QString()});
        QStringList warned;
        const Preview preview = of(input);
        for (const Region &region : preview.regions) {
            for (const EndangeredTile &tile : region.endangered)
                warned.append(tile.tile);
        }

        catalog.addInstalledRegion(QLatin1String(id), newTiles);

        QStringList lost;
        for (const QString &tile : std::as_const(ofOthers)) {
            if (!data.hasTile(tile.toLatin1().constData()))
                lost.append(tile);
        }
        lost.sort();
        warned.sort();
        QCOMPARE(warned, lost);
        QCOMPARE(warned.isEmpty(), false);
    }
}

QTEST_GUILESS_MAIN(UpdatePreviewTest)
#include "tst_updatepreview.moc"
