// SPDX-License-Identifier: MIT
// What the look at an update says, compared with the disk of a device that has the new version.
#include "catalog/mapcatalog.h"
#include "disksize.h"
#include "host/shared/updateinspection.h"
#include "mapsprogram.h"
#include "plugin/dataroot.h"
#include "testutils/httptestserver.h"
#include <QtTest>

using namespace UpdatePreview;

namespace {

constexpr int Patience = 20000; // ms
constexpr int ShortPatience = 200; // ms
const char *const NewVersion = "26.12.01.00";

QString described(const TileChanges &tiles)
{
    return QStringLiteral("+%1 !%2 =%3 -%4")
        .arg(tiles.added)
        .arg(tiles.resized)
        .arg(tiles.sameSize)
        .arg(tiles.gone);
}

} // namespace

class UpdateInspectionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theFiguresAreThoseOfTheNewSet();
    void endangeredTilesAreNamed();
    void nothingIsChangedAndLittleIsFetched();
    void theSameVersionIsUpToDate();
    void aRegionThatTheNewCatalogueLacksIsTold();
    void aRegionThatOnlyTheContentFileKnowsIsCounted();
    void anArchiveWithAProblemLeavesTheOthers_data();
    void anArchiveWithAProblemLeavesTheOthers();
    void aServerThatFailsEndsTheLook_data();
    void aServerThatFailsEndsTheLook();
    void itIsInterruptedAnywhere();
    void theBackupIsTheMapsInUseWithoutTheVoices();

private:
    void publishNewVersion();
    bool inspect(const QString &baseUri = QString(), int patience = Patience);
    const Region *region(const char *id) const;

    std::unique_ptr<MapsProgram> maps;
    std::unique_ptr<MapCatalog> catalog;
    std::unique_ptr<UpdateInspection> inspection;
};

void UpdateInspectionTest::init()
{
    maps = std::make_unique<MapsProgram>();
    maps->addEurope();
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install FI SE")).code, 0);
    qputenv("VEXA_MYDOCS", QFile::encodeName(maps->dataFolder()));
}

void UpdateInspectionTest::cleanup()
{
    inspection.reset();
    catalog.reset();
    maps.reset();
    qunsetenv("VEXA_MYDOCS");
}

// Finland lets go of the border tile that Sweden still has, and has a new one; a tile of Sweden's
// has another size, the border other bytes of the same size.
void UpdateInspectionTest::publishNewVersion()
{
    maps->content.setTiles(QStringLiteral("FI"), tilesOf({"0/1/a.cdt", "0/1/new.cdt"}));
    Tiles sweden = tilesOf({"5/5/border.cdt"}, "new");
    sweden.insert(QStringLiteral("0/2/b.cdt"), TestContent::tile(QStringLiteral("b"), 30000));
    maps->content.setTiles(QStringLiteral("SE"), sweden);
    maps->content.publish(QLatin1String(NewVersion));
}

bool UpdateInspectionTest::inspect(const QString &baseUri, int patience)
{
    inspection.reset();
    catalog = std::make_unique<MapCatalog>();
    catalog->updateCatalog();
    inspection = std::make_unique<UpdateInspection>(
        catalog.get(), baseUri.isEmpty() ? maps->baseUri : baseUri, patience);
    return inspection->inspect();
}

const Region *UpdateInspectionTest::region(const char *id) const
{
    for (const Region &each : inspection->preview().regions) {
        if (each.id == QLatin1String(id))
            return &each;
    }
    qFatal("no region %s", id);
}

void UpdateInspectionTest::theFiguresAreThoseOfTheNewSet()
{
    publishNewVersion();

    QVERIFY2(inspect(), qPrintable(inspection->errorString()));

    const Preview &preview = inspection->preview();
    QCOMPARE(inspection->serverVersion(), QLatin1String(NewVersion));
    QVERIFY(!inspection->isUpToDate());
    QVERIFY(preview.isWhole);
    QCOMPARE(inspection->failure(), FailureKind::None);
    QCOMPARE(described(region("FI")->tiles), QStringLiteral("+1 !0 =1 -1"));
    QCOMPARE(described(region("SE")->tiles), QStringLiteral("+0 !1 =1 -0"));
    QCOMPARE(described(preview.tiles), QStringLiteral("+1 !1 =2 -0"));
    const qint64 finland = QFileInfo(maps->content.archivePath(QStringLiteral("FI"))).size();
    const qint64 sweden = QFileInfo(maps->content.archivePath(QStringLiteral("SE"))).size();
    QCOMPARE(region("FI")->downloadBytes, finland);
    QCOMPARE(preview.downloadBytes, finland + sweden);
    // A second device that installs the new version from nothing.
    const QStringList device {QStringLiteral("--data-dir"),
                              maps->scratchPath(QStringLiteral("two")),
                              QStringLiteral("--base-uri"), maps->baseUri};
    QCOMPARE(maps->runRaw(device + words("refresh")).code, 0);
    QCOMPARE(maps->runRaw(device + words("install FI SE")).code, 0);
    QCOMPARE(DiskSize::of(maps->scratchPath(QStringLiteral("two/cities/diskcache"))).bytes,
             preview.newSetBytes);
    QVERIFY(preview.peakBytes >= preview.newSetBytes);
    QVERIFY(inspection->freeBytes() > 0);
}

void UpdateInspectionTest::endangeredTilesAreNamed()
{
    publishNewVersion();

    QVERIFY2(inspect(), qPrintable(inspection->errorString()));

    QCOMPARE(region("FI")->endangered.size(), 1);
    QCOMPARE(region("FI")->endangered.first().tile, QStringLiteral("5/5/border.cdt"));
    QCOMPARE(region("FI")->endangered.first().neededBy, QStringList {QStringLiteral("SE")});
    QVERIFY(region("SE")->endangered.isEmpty());
    // The catalogue alone, as it would be done in place.
    catalog->addInstalledRegion(QStringLiteral("FI"),
                                maps->content.tiles(QStringLiteral("FI")).keys());
    QVERIFY(!QFile::exists(maps->tileFolder() + QStringLiteral("/5/5/border.cdt")));
}

void UpdateInspectionTest::nothingIsChangedAndLittleIsFetched()
{
    for (int i = 0; i < 100; ++i)
        maps->content.addRegion(QStringLiteral("R%1").arg(i), QStringLiteral("Region"), {});
    Tiles tiles;
    for (int i = 0; i < 100; ++i)
        tiles.insert(QStringLiteral("a/3/%1.cdt").arg(i),
                     TestContent::tile(QString::number(i), 40000));
    maps->content.setTiles(QStringLiteral("FI"), tiles);
    maps->content.publish(QLatin1String(NewVersion));
    const QByteArray content =
        TestFile::read(maps->catalogFolder() + QStringLiteral("/content.xml"));
    const DiskSize before = DiskSize::of(maps->dataFolder());

    QVERIFY2(inspect(), qPrintable(inspection->errorString()));

    const DiskSize after = DiskSize::of(maps->dataFolder());
    QCOMPARE(after.files, before.files);
    QCOMPARE(after.bytes, before.bytes);
    QCOMPARE(TestFile::read(maps->catalogFolder() + QStringLiteral("/content.xml")), content);
    QVERIFY(region("FI")->downloadBytes > 3900000);
    QVERIFY2(inspection->bytesReceived() < 300000,
             qPrintable(QString::number(inspection->bytesReceived())));
}

void UpdateInspectionTest::theSameVersionIsUpToDate()
{
    QVERIFY(inspect());

    QVERIFY(inspection->isUpToDate());
    QCOMPARE(inspection->serverVersion(), inspection->installedVersion());
    QVERIFY(inspection->preview().regions.isEmpty());
    QCOMPARE(inspection->bytesReceived(), qint64(12)); // the version and nothing else
}

void UpdateInspectionTest::aRegionThatTheNewCatalogueLacksIsTold()
{
    TestContent other(maps->server.folder() + QStringLiteral("/other"));
    other.addRegion(QStringLiteral("SE"), QStringLiteral("Sweden"), tilesOf({"0/2/b.cdt"}));
    other.publish(QLatin1String(NewVersion));

    QVERIFY2(inspect(maps->server.url("/other/")), qPrintable(inspection->errorString()));

    QVERIFY(region("FI")->isLacking);
    QVERIFY(!region("SE")->isLacking);
    QCOMPARE(described(inspection->preview().tiles), QStringLiteral("+0 !0 =1 -2"));
}

void UpdateInspectionTest::aRegionThatOnlyTheContentFileKnowsIsCounted()
{
    publishNewVersion();
    // The catalogue of the version in use loses Sweden.
    TestFile::write(maps->catalogFolder() + QStringLiteral("/catalog-26.11.21.00.xml"),
                    "<Catalog><File Id=\"FI\" Description=\"Finland\" ZipFileSize=\"1\" "
                    "Link=\"x.zip\"/></Catalog>");

    QVERIFY2(inspect(), qPrintable(inspection->errorString()));

    QCOMPARE(described(region("SE")->tiles), QStringLiteral("+0 !1 =1 -0"));
    QCOMPARE(region("FI")->endangered.size(), 1);
}

void UpdateInspectionTest::anArchiveWithAProblemLeavesTheOthers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("failure");
    QTest::newRow("missing") << QByteArray() << int(FailureKind::Network);
    QTest::newRow("damaged") << QByteArray("no archive") << int(FailureKind::Archive);
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("README"), "text");
    QTest::newRow("without tiles")
        << TestFile::read(builder.make(QStringLiteral("x.zip"))) << int(FailureKind::Archive);
}

void UpdateInspectionTest::anArchiveWithAProblemLeavesTheOthers()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, failure);
    publishNewVersion();
    const QString path = maps->content.archivePath(QStringLiteral("FI"));
    QVERIFY(QFile::remove(path));
    if (!bytes.isEmpty())
        TestFile::write(path, bytes);

    QVERIFY2(inspect(), qPrintable(inspection->errorString()));

    QCOMPARE(int(inspection->failure()), failure);
    QVERIFY(!inspection->preview().isWhole);
    QVERIFY(!region("FI")->problem.isEmpty());
    QVERIFY(region("SE")->problem.isEmpty());
    QVERIFY(region("SE")->downloadBytes > 0);
}

void UpdateInspectionTest::aServerThatFailsEndsTheLook_data()
{
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("failure");
    QTest::newRow("silent about the version") << 0 << int(FailureKind::Network);
    QTest::newRow("no version") << 1 << int(FailureKind::Network);
    QTest::newRow("a page for a version") << 2 << int(FailureKind::Catalogue);
    QTest::newRow("no catalogue") << 3 << int(FailureKind::Network);
    QTest::newRow("a cut catalogue") << 4 << int(FailureKind::Catalogue);
    QTest::newRow("an empty catalogue") << 5 << int(FailureKind::Catalogue);
    QTest::newRow("silent about an archive") << 6 << int(FailureKind::Network);
    QTest::newRow("a version without end") << 7 << int(FailureKind::Network);
}

void UpdateInspectionTest::aServerThatFailsEndsTheLook()
{
    QFETCH(int, step);
    QFETCH(int, failure);
    using Server = HttpTestServer;
    const QByteArray catalogue = "<Catalog><File Id=\"FI\" Description=\"Finland\" "
                                 "ZipFileSize=\"1\" Link=\"FI.zip\"/></Catalog>";
    HttpTestServer server;
    server.add("/version.txt", QByteArray(NewVersion));
    server.add("/catalog-26.12.01.00.xml", catalogue);
    server.add("/FI.zip", QByteArray("x"), Server::SilentAccept());
    if (step == 0)
        server.add("/version.txt", QByteArray(NewVersion), Server::SilentAccept());
    else if (step == 1)
        server.remove("/version.txt");
    else if (step == 2)
        server.add("/version.txt", QByteArray("<html>hello</html>"));
    else if (step == 3)
        server.remove("/catalog-26.12.01.00.xml");
    else if (step == 4)
        server.add("/catalog-26.12.01.00.xml", catalogue.left(catalogue.size() - 4));
    else if (step == 5)
        server.add("/catalog-26.12.01.00.xml", QByteArray("<Catalog></Catalog>"));
    else if (step == 7)
        server.add("/version.txt", Server::Content::generated(1, 1024 * 1024 * 1024));

    QVERIFY(!inspect(server.url("/"), ShortPatience));

    QCOMPARE(int(inspection->failure()), failure);
    QVERIFY(!inspection->wasAborted());
    QVERIFY(!inspection->errorString().isEmpty());
    QVERIFY(inspection->preview().regions.isEmpty());
    QVERIFY(inspection->bytesReceived() < 16 * 1024 * 1024);
}

void UpdateInspectionTest::itIsInterruptedAnywhere()
{
    publishNewVersion();
    for (const char *at : {"version.txt", "catalog-26.12.01.00.xml", "FI.zip", "SE.tar.gz"}) {
        catalog = std::make_unique<MapCatalog>();
        catalog->updateCatalog();
        UpdateInspection look(catalog.get(), maps->baseUri, Patience);
        connect(&look, &UpdateInspection::looking, &look, [&look, at](const QString &fileName) {
            if (fileName == QLatin1String(at))
                QMetaObject::invokeMethod(
                    &look, [&look] { look.abort(); }, Qt::QueuedConnection);
        });

        QVERIFY2(!look.inspect(), at);

        QVERIFY(look.wasAborted());
        QCOMPARE(look.failure(), FailureKind::None);
        QVERIFY(!look.errorString().isEmpty());
    }
}

void UpdateInspectionTest::theBackupIsTheMapsInUseWithoutTheVoices()
{
    publishNewVersion();
    TestFile::write(maps->tileFolder() + QStringLiteral("/voices/en/a.wav"), "a voice");
    TestFile::write(maps->tileFolder() + QStringLiteral("/config.cfg"), QByteArray(16, 'c'));

    QVERIFY2(inspect(), qPrintable(inspection->errorString()));

    QCOMPARE(inspection->backupBytes(),
             DiskSize::of(maps->tileFolder()).bytes + DiskSize::of(maps->catalogFolder()).bytes
                 - 7);
}

QTEST_GUILESS_MAIN(UpdateInspectionTest)
#include "tst_updateinspection.moc"
