// SPDX-License-Identifier: MIT
// Swapping and going back, and what is refused beforehand.
#include "catalog/mapcatalog.h"
#include "download/filesizelimit.h"
#include "host/shared/folderops.h"
#include "host/shared/swapjournal.h"
#include "swaprig.h"
#include "testutils/childprogram.h"
#include "testutils/temporaryhome.h"
#include <functional>
#include <memory>
#include <QStorageInfo>
#include <QTimer>
#include <QtTest>
#include <unistd.h>

using Act = std::function<void()>;
Q_DECLARE_METATYPE(Act)

namespace {

constexpr int ManyTiles = 10000;

/** Puts a link to the real thing in its place. */
void makeLink(const QString &path)
{
    const QString elsewhere = DataRoot::myDocs() + QLatin1String("/elsewhere");
    QVERIFY(QDir().rename(path, elsewhere));
    QVERIFY(QFile::link(elsewhere, path));
}

void removeTree(const QString &path)
{
    QVERIFY(QDir(path).removeRecursively());
}

} // namespace

class DataSetSwapTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void swapsAndGoesBack_data();
    void swapsAndGoesBack();
    void swapsTenThousandTiles();
    void tellsOfTheBackup();
    void refuses_data();
    void refuses();
    void refusesASuffix_data();
    void refusesASuffix();
    void refusesAPathWithABlank();
    void refusesWhatIsWriteProtected_data();
    void refusesWhatIsWriteProtected();
    void refusesAMountPoint_data();
    void refusesAMountPoint();
    void knowsAMountPoint();
    void refusesAFullDisk();
    void doesNothingIfTheJournalCannotBeWritten();
    void refusesWhileACatalogueLoads_data();
    void refusesWhileACatalogueLoads();
    void refusesToGoBack_data();
    void refusesToGoBack();

private:
    bool swap();

    std::unique_ptr<TemporaryHome> m_home;
    std::unique_ptr<SwapRig> m_rig;
    DataSetSwap m_dataSets;
};

void DataSetSwapTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
    m_rig = std::make_unique<SwapRig>();
    m_dataSets = DataSetSwap();
}

void DataSetSwapTest::cleanup()
{
    m_rig.reset();
    m_home.reset();
}

bool DataSetSwapTest::swap()
{
    MapCatalog catalog;
    return m_dataSets.swap(&catalog);
}

void DataSetSwapTest::swapsAndGoesBack_data()
{
    QTest::addColumn<bool>("voices");
    QTest::newRow("with voices") << true;
    QTest::newRow("without voices") << false;
}

void DataSetSwapTest::swapsAndGoesBack()
{
    QFETCH(bool, voices);
    const SwapRig rig(voices);
    MapCatalog catalog;
    QCOMPARE(catalog.installedMapsVersion(), QLatin1String(SwapRig::OldVersion));
    for (int round = 0; round < 2; ++round) {
        QVERIFY2(m_dataSets.check(), qPrintable(m_dataSets.errorString()));
        QVERIFY(!m_dataSets.checkUndo());

        QVERIFY2(m_dataSets.swap(&catalog), qPrintable(m_dataSets.errorString()));

        QVERIFY2(rig.isNew(), SwapRig::description());
        QCOMPARE(m_dataSets.errorString(), QString());
        QCOMPARE(catalog.installedMapsVersion(), QLatin1String(SwapRig::NewVersion));
        QVERIFY(!m_dataSets.check());
        QVERIFY2(m_dataSets.checkUndo(), qPrintable(m_dataSets.errorString()));

        QVERIFY2(m_dataSets.undo(&catalog), qPrintable(m_dataSets.errorString()));

        QVERIFY2(rig.isOld(), SwapRig::description());
        QCOMPARE(m_dataSets.errorString(), QString());
        QCOMPARE(catalog.installedMapsVersion(), QLatin1String(SwapRig::OldVersion));
    }
}

void DataSetSwapTest::swapsTenThousandTiles()
{
    for (int i = 0; i < ManyTiles; ++i) {
        const QByteArray name = QByteArray::number(i % 16, 16) + '/'
            + QByteArray::number(i / 16 % 16, 16) + '/' + QByteArray::number(i) + ".cdt";
        SwapRig::write(SwapRig::below(tiles("_new"), name), name);
    }
    const Tree before = SwapRig::setIn(SwapRig::newSuffix());

    QVERIFY2(swap(), qPrintable(m_dataSets.errorString()));

    QVERIFY(SwapRig::setIn(QString()) == before);
    QVERIFY(m_dataSets.clearBackup());
    QCOMPARE(SwapRig::namesInCities(), SwapRig::mainNames());
}

void DataSetSwapTest::tellsOfTheBackup()
{
    QVERIFY(!DataSetSwap::backupExists());
    QCOMPARE(DataSetSwap::backupVersion(), QString());
    QCOMPARE(DataSetSwap::backupBytes(), qint64(0));
    qint64 bytes = 0;
    for (const auto &entry : SwapRig::setIn(QString()))
        bytes += entry.second.size();

    QVERIFY(swap());

    QVERIFY(DataSetSwap::backupExists());
    QCOMPARE(DataSetSwap::backupVersion(), QLatin1String(SwapRig::OldVersion));
    QCOMPARE(DataSetSwap::backupBytes(), bytes);
    QVERIFY(QDir().rename(tiles("_"), tiles("_elsewhere")));
    QVERIFY(!DataSetSwap::backupExists());
    QCOMPARE(DataSetSwap::backupBytes(), qint64(0));
}

void DataSetSwapTest::refuses_data()
{
    QTest::addColumn<Act>("arrange");
    QTest::addColumn<QString>("reason"); // a part of it
    const auto add = [](const char *name, const Act &arrange, const char *reason) {
        QTest::newRow(name) << arrange << QString::fromUtf8(reason);
    };
    add(
        "nothing is prepared", [] { removeTree(catalogs("_new")), removeTree(tiles("_new")); },
        "no prepared map data");
    add(
        "the prepared catalogue is missing", [] { removeTree(catalogs("_new")); },
        "Tessarin_new is missing");
    add(
        "the prepared tiles are missing", [] { removeTree(tiles("_new")); },
        "diskcache_new is missing");
    add(
        "the main catalogue is missing", [] { removeTree(catalogs()); }, "Tessarin is missing");
    add(
        "the main catalogue is a link", [] { makeLink(catalogs()); }, "Tessarin is a link");
    add(
        "the main tiles are a link", [] { makeLink(tiles()); }, "diskcache is a link");
    add(
        "the prepared catalogue is a link", [] { makeLink(catalogs("_new")); },
        "Tessarin_new is a link");
    add(
        "the prepared tiles are a link", [] { makeLink(tiles("_new")); },
        "diskcache_new is a link");
    add(
        "the prepared tiles are a file",
        [] {
            removeTree(tiles("_new"));
            SwapRig::write(tiles("_new"), "file");
        },
        "diskcache_new is a link or a file");
    add(
        "an old catalogue is left", [] { QDir().mkpath(catalogs("_")); },
        "backup of an earlier update");
    add(
        "old tiles are left", [] { QDir().mkpath(tiles("_")); }, "backup of an earlier update");
    add(
        "a link that leads nowhere is left", [] { QFile::link(catalogs("_gone"), catalogs("_")); },
        "backup of an earlier update");
    add(
        "the voices are a link", [] { makeLink(SwapRig::voices()); }, "voices is a link");
    add(
        "the voices are a file",
        [] {
            removeTree(SwapRig::voices());
            SwapRig::write(SwapRig::voices(), "file");
        },
        "voices is a link or a file");
    add(
        "voices are in the way", [] { QDir().mkpath(SwapRig::voices(SwapRig::newSuffix())); },
        "in the way of the voice data");
    add(
        "the content file is missing",
        [] { QFile::remove(catalogs("_new") + QLatin1String("/content.xml")); },
        "content.xml is missing or damaged");
    add(
        "the content file is cut",
        [] { SwapRig::write(catalogs("_new") + QLatin1String("/content.xml"), "<directory map-"); },
        "content.xml is missing or damaged");
    add(
        "a long content file that is damaged in the middle",
        [] {
            SwapRig::write(catalogs("_new") + QLatin1String("/content.xml"),
                           "<directory map-version=\"1.3\">" + QByteArray("<x/>").repeated(100000)
                               + "<</directory>");
        },
        "content.xml is missing or damaged");
    add(
        "the catalogue of the version is missing",
        [] {
            QVERIFY(QFile::rename(catalogs("_new") + QLatin1String("/catalog-1.3.xml"),
                                  catalogs("_new") + QLatin1String("/catalog-1.4.xml")));
        },
        "catalog-1.3.xml is missing");
    add(
        "the catalogue lists nothing",
        [] {
            SwapRig::write(catalogs("_new") + QLatin1String("/catalog-1.3.xml"),
                           "<Catalog></Catalog>");
        },
        "lists no regions");
    add(
        "a journal is there", [] { SwapRig::write(SwapRig::journal(), "anything"); },
        "was cut short");
}

void DataSetSwapTest::refuses()
{
    QFETCH(Act, arrange);
    QFETCH(QString, reason);
    MapCatalog catalog; // ahead, because it makes folders
    arrange();
    const Tree before = SwapRig::treeOf(DataRoot::myDocs());

    QVERIFY(!m_dataSets.check());
    QVERIFY2(m_dataSets.errorString().contains(reason), qPrintable(m_dataSets.errorString()));
    QVERIFY(!m_dataSets.swap(&catalog));

    QVERIFY2(m_dataSets.errorString().contains(reason), qPrintable(m_dataSets.errorString()));
    QVERIFY2(SwapRig::treeOf(DataRoot::myDocs()) == before, SwapRig::description());
}

void DataSetSwapTest::refusesASuffix_data()
{
    QTest::addColumn<QString>("suffix");
    for (const char *suffix : {"", "_", "a/b", "/..", "a b", "$(x)", "*", ";x"})
        QTest::newRow(suffix) << QString::fromUtf8(suffix);
}

void DataSetSwapTest::refusesASuffix()
{
    QFETCH(QString, suffix);
    DataSetSwap dataSets(suffix);
    MapCatalog catalog;

    QVERIFY(!dataSets.check());
    QVERIFY(!dataSets.swap(&catalog));
    QVERIFY(!dataSets.checkUndo());
    QVERIFY(!dataSets.discardPrepared());

    QVERIFY2(dataSets.errorString().contains(QLatin1String("cannot stand behind the name")),
             qPrintable(dataSets.errorString()));
    QVERIFY(m_rig->isOld());
}

void DataSetSwapTest::refusesAPathWithABlank()
{
    qputenv("VEXA_MYDOCS", QFile::encodeName(m_home->myDocs() + QLatin1String("/my maps")));
    const SwapRig rig;

    QVERIFY(!swap());

    QVERIFY(m_dataSets.errorString().contains(QLatin1String("has a blank")));
    QVERIFY(rig.isOld());
}

void DataSetSwapTest::refusesWhatIsWriteProtected_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the folder of all maps") << QString();
    QTest::newRow("the tiles") << QStringLiteral("/diskcache");
    QTest::newRow("the prepared tiles") << QStringLiteral("/diskcache_new");
    QTest::newRow("the voices") << QStringLiteral("/diskcache/voices");
}

void DataSetSwapTest::refusesWhatIsWriteProtected()
{
    QFETCH(QString, name);
    // The child keeps its group.
    const auto readOnly = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup
        | QFile::ReadOther | QFile::ExeOther;
    const auto all = readOnly | QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    const QString cities = DataRoot::cities();
    for (QString path = QFileInfo(m_home->myDocs()).path(); path != QDir::tempPath();
         path = QFileInfo(path).path())
        QFile::setPermissions(path, all);
    for (const char *folder : {"", "/..", "/Tessarin", "/Tessarin_new", "/diskcache",
                               "/diskcache_new", "/diskcache/voices"})
        QVERIFY(QFile::setPermissions(cities + QLatin1String(folder), all));
    const auto check = [] {
        ChildProgram child(QStringLiteral(VEXA_SWAPCHILD), {QStringLiteral("check-as-nobody")});
        child.waitForFinished();
        return QString::fromUtf8(child.output() + child.errorOutput());
    };
    QCOMPARE(check(), QStringLiteral("true\n\n"));
    QVERIFY(QFile::setPermissions(cities + name, readOnly));

    const QString said = check();

    QVERIFY2(said.contains(cities + name + QLatin1String(" is write-protected")), qPrintable(said));
    QVERIFY(QFile::setPermissions(cities + name, all));
}

void DataSetSwapTest::knowsAMountPoint()
{
    QVERIFY(FolderOps::isMountPoint(QStringLiteral("/proc")));
    QVERIFY(!FolderOps::isMountPoint(DataRoot::catalogFolder()));
    // The folder of all maps may well be a link to a memory card.
    const QString card = DataRoot::myDocs() + QLatin1String("/card");
    QVERIFY(QDir().rename(DataRoot::cities(), card));
    QVERIFY(QFile::link(card, DataRoot::cities()));
    QVERIFY(!FolderOps::isMountPoint(DataRoot::catalogFolder()));
    QVERIFY2(swap(), qPrintable(m_dataSets.errorString()));
    QVERIFY(m_rig->isNew());
}

void DataSetSwapTest::refusesAMountPoint_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("path");
    for (const char *path :
         {"Tessarin", "diskcache", "Tessarin_new", "diskcache_new", "diskcache/voices"}) {
        QTest::addRow("another file system at %s", path)
            << QStringLiteral("mount -t tmpfs none ") << QString::fromUtf8(path);
        QTest::addRow("a part of the same one at %s", path)
            << QStringLiteral("mkdir -p docs/other && mount --bind docs/other ")
            << QString::fromUtf8(path);
    }
}

namespace {

/** What the child says in a place of its own, where this user may mount; null if nobody may. */
QString checkedBehind(const QString &command)
{
    ChildProgram may(QStringLiteral("unshare"),
                     {QStringLiteral("-rm"), QStringLiteral("mount"), QStringLiteral("-t"),
                      QStringLiteral("tmpfs"), QStringLiteral("none"), DataRoot::cities()});
    if (may.waitForFinished() != 0)
        return QString();
    ChildProgram child(
        QStringLiteral("unshare"),
        {QStringLiteral("-rm"), QStringLiteral("sh"), QStringLiteral("-ec"),
         QStringLiteral("cd '%1'; %2; exec '%3' check")
             .arg(QFileInfo(DataRoot::myDocs()).path(), command, QStringLiteral(VEXA_SWAPCHILD))});
    child.waitForFinished();
    return QString::fromUtf8(child.output() + child.errorOutput());
}

} // namespace

void DataSetSwapTest::refusesAMountPoint()
{
    QFETCH(QString, command);
    QFETCH(QString, path);
    const QString mounted = DataRoot::cities() + QLatin1Char('/') + path;

    const QString said = checkedBehind(
        QString(command).replace(QLatin1String("docs"), DataRoot::myDocs()) + mounted);

    // Where nobody may mount, knowsAMountPoint() has to do.
    if (said.isNull())
        return;
    QVERIFY2(said.contains(QStringLiteral("mounted at %1;").arg(mounted)), qPrintable(said));
}

void DataSetSwapTest::refusesAFullDisk()
{
    const QString docs = DataRoot::myDocs();
    const QString said = checkedBehind(
        QStringLiteral("cp -a %1 %1.copy; mount -t tmpfs -o size=4m none %1; cp -a %1.copy/. %1; "
                       "dd if=/dev/zero of=%1/filler bs=4096 2>%1.dd || true")
            .arg(docs));

    if (said.isNull()) // doesNothingIfTheJournalCannotBeWritten() has to do
        return;
    QVERIFY2(said.contains(QLatin1String("no space left")), qPrintable(said));
}

void DataSetSwapTest::doesNothingIfTheJournalCannotBeWritten()
{
    MapCatalog catalog;
    {
        const FileSizeLimit limit(20);
        QVERIFY(!m_dataSets.swap(&catalog));
    }
    QVERIFY2(m_dataSets.errorString().contains(QLatin1String(".vexa-swap.json cannot be written")),
             qPrintable(m_dataSets.errorString()));
    QVERIFY2(m_rig->isOld(), SwapRig::description());
    QVERIFY(m_dataSets.swap(&catalog));
    {
        const FileSizeLimit limit(20);
        QVERIFY(!m_dataSets.undo(&catalog));
        QVERIFY(!m_dataSets.clearBackup());
    }
    QVERIFY2(m_rig->isNew(), SwapRig::description());
}

void DataSetSwapTest::refusesWhileACatalogueLoads_data()
{
    QTest::addColumn<bool>("another");
    QTest::newRow("the main one") << false;
    QTest::newRow("the prepared set's") << true;
}

void DataSetSwapTest::refusesWhileACatalogueLoads()
{
    QFETCH(bool, another);
    MapCatalog catalog;
    MapCatalog prepared(SwapRig::newSuffix());
    MapCatalog &loading = another ? prepared : catalog;
    bool called = false;
    bool swapped = true;
    connect(&loading, &MapCatalog::bussyChanged, this, [&] {
        if (!called)
            QTimer::singleShot(0, this, [&] { swapped = m_dataSets.swap(&catalog); });
        called = true;
    });

    loading.updateCatalog();

    QVERIFY(!swapped);
    QVERIFY2(m_dataSets.errorString().contains(QLatin1String("being loaded")),
             qPrintable(m_dataSets.errorString()));
    QCoreApplication::processEvents();
    // Nor is it made up for later, when nobody expects it.
    QVERIFY2(m_rig->isOld(), SwapRig::description());
    QVERIFY(m_dataSets.swap(&catalog));
    QVERIFY2(m_rig->isNew(), SwapRig::description());
}

void DataSetSwapTest::refusesToGoBack_data()
{
    QTest::addColumn<Act>("arrange");
    QTest::addColumn<QString>("reason");
    QTest::newRow("there is no backup")
        << Act([] { removeTree(catalogs("_")), removeTree(tiles("_")); })
        << QStringLiteral("no backup to go back to");
    QTest::newRow("half of the backup is missing")
        << Act([] { removeTree(tiles("_")); }) << QStringLiteral("diskcache_ is missing");
    QTest::newRow("an update is being prepared")
        << Act([] { QDir().mkpath(tiles("_new")); }) << QStringLiteral("being prepared");
    QTest::newRow("the backup has voices")
        << Act([] { QDir().mkpath(SwapRig::voices(SwapRig::backupSuffix())); })
        << QStringLiteral("in the way of the voice data");
    QTest::newRow("the backup's content file is damaged")
        << Act([] { SwapRig::write(catalogs("_") + QLatin1String("/content.xml"), "<dir"); })
        << QStringLiteral("content.xml is missing or damaged");
}

void DataSetSwapTest::refusesToGoBack()
{
    QFETCH(Act, arrange);
    QFETCH(QString, reason);
    MapCatalog catalog;
    QVERIFY(m_dataSets.swap(&catalog));
    arrange();
    const Tree before = SwapRig::treeOf(DataRoot::myDocs());

    QVERIFY(!m_dataSets.checkUndo());
    QVERIFY(!m_dataSets.undo(&catalog));

    QVERIFY2(m_dataSets.errorString().contains(reason), qPrintable(m_dataSets.errorString()));
    QVERIFY(SwapRig::treeOf(DataRoot::myDocs()) == before);
}

QTEST_GUILESS_MAIN(DataSetSwapTest)
#include "tst_datasetswap.moc"
