// SPDX-License-Identifier: MIT
// What --dry-run says, compared with what the same command then does to the disk.
#include "disksize.h"
#include "host/shared/datasetlock.h"
#include "mapsprogram.h"
#include "testutils/httptestserver.h"
#include <csignal>
#include <QtTest>

class CliDryRunTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { maps.reset(); }

    void removeSaysWhatItWillDo();
    void severalRegionsAreCountedOneAfterTheOther();
    void removeIsShownInWords();
    void aDryRemovalChangesNothingAndNeedsNoLock();
    void whatCannotBeRemovedIsRefusedDryToo_data();
    void whatCannotBeRemovedIsRefusedDryToo();
    void updateSaysWhatItWillDo();
    void updateIsShownInWords();
    void aDryUpdateChangesNothingAndNeedsNoLock();
    void theSameVersionIsUpToDate();
    void aDryUpdateFailsAsTheUpdateWould_data();
    void aDryUpdateFailsAsTheUpdateWould();
    void aSilentServerIsGivenUp();
    void aDryUpdateIsInterrupted();
    void withoutMapsThereIsNothingToUpdate();

private:
    QByteArray picture() const;
    void publishNewVersion();

    std::unique_ptr<MapsProgram> maps;
};

void CliDryRunTest::init()
{
    maps = std::make_unique<MapsProgram>();
    maps->addEurope();
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install FI SE")).code, 0);
}

// Every file of the data set with its time and size.
QByteArray CliDryRunTest::picture() const
{
    QByteArray result;
    QStringList lines;
    QDirIterator files(maps->dataFolder(), QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo file(files.next());
        lines.append(QStringLiteral("%1 %2 %3")
                         .arg(file.filePath())
                         .arg(file.size())
                         .arg(file.lastModified().toMSecsSinceEpoch()));
    }
    lines.sort();
    return lines.join(QLatin1Char('\n')).toUtf8();
}

void CliDryRunTest::removeSaysWhatItWillDo()
{
    const ProgramRun dry = maps->run(words("remove --dry-run --json FI"));
    const DiskSize before = DiskSize::of(maps->tileFolder());
    const ProgramRun real = maps->run(words("remove --json FI"));
    const DiskSize after = DiskSize::of(maps->tileFolder());

    QCOMPARE(dry.code, 0);
    QJsonObject said = dry.array().first().toObject();
    QJsonObject done = real.array().first().toObject();
    QCOMPARE(said.value(QLatin1String("freedFiles")).toInt(), before.files - after.files);
    QCOMPARE(qint64(said.value(QLatin1String("freedBytes")).toDouble()),
             before.bytes - after.bytes);
    QCOMPARE(said.value(QLatin1String("neededBy")).toArray(), QJsonArray {QStringLiteral("SE")});
    QCOMPARE(said.take(QStringLiteral("dryRun")), QJsonValue(true));
    QCOMPARE(said.take(QStringLiteral("removed")), QJsonValue(false));
    QCOMPARE(done.take(QStringLiteral("removed")), QJsonValue(true));
    QCOMPARE(said, done);
}

void CliDryRunTest::severalRegionsAreCountedOneAfterTheOther()
{
    const ProgramRun dry = maps->run(words("remove --dry-run --json SE Finland"));
    const DiskSize before = DiskSize::of(maps->tileFolder());
    const ProgramRun real = maps->run(words("remove --json SE Finland"));
    const DiskSize after = DiskSize::of(maps->tileFolder());

    const QJsonArray said = dry.array();
    const QJsonArray done = real.array();
    QCOMPARE(said.size(), 2);
    qint64 bytes = 0;
    for (int i = 0; i < 2; ++i) {
        for (const char *key :
             {"id", "freedFiles", "freedBytes", "keptFiles", "keptBytes", "neededBy"})
            QCOMPARE(said.at(i).toObject().value(QLatin1String(key)),
                     done.at(i).toObject().value(QLatin1String(key)));
        bytes += qint64(said.at(i).toObject().value(QLatin1String("freedBytes")).toDouble());
    }
    QCOMPARE(said.at(0).toObject().value(QLatin1String("keptFiles")).toInt(), 1);
    QCOMPARE(said.at(1).toObject().value(QLatin1String("freedFiles")).toInt(), 2);
    QCOMPARE(bytes, before.bytes - after.bytes);
    QCOMPARE(after.files, 0);
}

void CliDryRunTest::removeIsShownInWords()
{
    const ProgramRun one = maps->run(words("remove --dry-run -q FI"));
    const ProgramRun two = maps->run(words("remove --dry-run FI SE"));

    QVERIFY(one.out.contains("FI (Finland in 001): 1 tile, 20 kB would be freed."));
    QVERIFY(one.out.contains("1 tile (20 kB) would stay, needed by SE (Sweden in 001)."));
    QVERIFY(!one.out.contains("In total"));
    QVERIFY(two.out.contains("SE (Sweden in 001): 2 tiles, 40 kB would be freed."));
    QVERIFY(two.out.contains("In total: 3 tiles, 60 kB would be freed."));
    QVERIFY(maps->runRaw(words("remove --help")).out.contains("files' contents"));
}

void CliDryRunTest::aDryRemovalChangesNothingAndNeedsNoLock()
{
    const QByteArray before = picture();
    QCOMPARE(maps->run(words("remove --dry-run FI SE")).code, 0);
    QCOMPARE(picture(), before);
    QCOMPARE(maps->installedIds(), QStringList({QStringLiteral("FI"), QStringLiteral("SE")}));

    // As if another program were at work: where the lock is, this program's environment tells.
    qputenv("VEXA_MYDOCS", QFile::encodeName(maps->dataFolder()));
    qputenv("HOME", QFile::encodeName(maps->homeFolder()));
    DataSetLock lock;
    QVERIFY(lock.tryLock());
    QCOMPARE(maps->run(words("remove FI")).code, 5);
    QCOMPARE(maps->run(words("remove --dry-run FI")).code, 0);
}

void CliDryRunTest::whatCannotBeRemovedIsRefusedDryToo_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<int>("code");
    QTest::newRow("not installed") << words("FI EU") << 1;
    QTest::newRow("unknown") << words("XX") << 3;
    QTest::newRow("none at all") << QStringList() << 2;
}

void CliDryRunTest::whatCannotBeRemovedIsRefusedDryToo()
{
    QFETCH(QStringList, command);
    QFETCH(int, code);

    const ProgramRun dry = maps->run(words("remove --dry-run") + command);
    const ProgramRun real = maps->run(words("remove") + command);

    QCOMPARE(dry.code, code);
    QCOMPARE(real.code, code);
    QCOMPARE(dry.err, real.err);
    QVERIFY(dry.out.isEmpty());
}

// Finland lets go of the border tile that Sweden still has, and has a new one; a tile of Sweden's
// has another size.
void CliDryRunTest::publishNewVersion()
{
    maps->content.setTiles(QStringLiteral("FI"), tilesOf({"0/1/a.cdt", "0/1/new.cdt"}));
    Tiles sweden = tilesOf({"5/5/border.cdt"}, "new");
    sweden.insert(QStringLiteral("0/2/b.cdt"), TestContent::tile(QStringLiteral("b"), 30000));
    maps->content.setTiles(QStringLiteral("SE"), sweden);
    maps->content.publish(QStringLiteral("26.12.01.00"));
}

void CliDryRunTest::updateSaysWhatItWillDo()
{
    publishNewVersion();
    TestFile::write(maps->tileFolder() + QStringLiteral("/voices/en.wav"), "voice");
    const auto bytes = [](const QJsonObject &object, const char *key) {
        return qint64(object.value(QLatin1String(key)).toDouble());
    };

    const ProgramRun dry = maps->run(words("update --dry-run --json"));
    const auto asked = maps->server.accessLog().size();
    const ProgramRun real = maps->run(words("update --keep-backup"));

    QCOMPARE(dry.code, 0);
    QVERIFY2(real.code == 0, real.err.constData());
    const QJsonObject said = dry.object();
    QCOMPARE(said.value(QLatin1String("serverVersion")).toString(), QStringLiteral("26.12.01.00"));
    QCOMPARE(said.value(QLatin1String("addedTiles")).toInt(), 1);
    QCOMPARE(said.value(QLatin1String("resizedTiles")).toInt(), 1);
    QCOMPARE(said.value(QLatin1String("sameSizeTiles")).toInt(), 2);
    QCOMPARE(said.value(QLatin1String("goneTiles")).toInt(), 0);
    QCOMPARE(maps->installedIds(), QStringList({QStringLiteral("FI"), QStringLiteral("SE")}));
    QCOMPARE(DiskSize::of(maps->tileFolder()).bytes - 5, bytes(said, "newSetBytes"));
    QCOMPARE(DiskSize::of(maps->tileFolder() + QLatin1Char('_')).bytes
                 + DiskSize::of(maps->catalogFolder() + QLatin1Char('_')).bytes,
             bytes(said, "backupBytes"));
    qint64 downloaded = 0;
    const QList<NginxServer::Entry> log = maps->server.accessLog().mid(asked);
    for (const NginxServer::Entry &entry : log)
        downloaded += entry.path.contains("/archives/") ? entry.bodyBytesSent : 0;
    QCOMPARE(downloaded, bytes(said, "downloadBytes"));
    maps->content.publish(QStringLiteral("26.12.24.00"));
    QVERIFY(maps->run(words("update --dry-run")).out.contains("--clear-backup"));
    const qint64 before = DiskSize::of(maps->dataFolder() + QStringLiteral("/cities")).bytes;
    QCOMPARE(maps->run(words("update --clear-backup")).code, 0);
    QCOMPARE(before - DiskSize::of(maps->dataFolder() + QStringLiteral("/cities")).bytes,
             bytes(said, "backupBytes"));
}

void CliDryRunTest::updateIsShownInWords()
{
    publishNewVersion();

    const ProgramRun run = maps->run(words("update --dry-run -q"));

    QCOMPARE(run.code, 0);
    for (const char *text :
         {"Version 26.11.21.00 is installed, the server has 26.12.01.00.",
          "FI (Finland in 001): ", "tiles: 1 new, 0 of another size, 1 of the same size, 1 gone.",
          "it would take tiles from other regions, 1 in all:", "5/5/border.cdt: SE (Sweden in 001)",
          "In total ", "The new maps take 90 kB.", "Removing the backup afterwards frees "})
        QVERIFY2(run.out.contains(text), text);
}

void CliDryRunTest::aDryUpdateChangesNothingAndNeedsNoLock()
{
    publishNewVersion();
    const QByteArray before = picture();
    qputenv("VEXA_MYDOCS", QFile::encodeName(maps->dataFolder()));
    qputenv("HOME", QFile::encodeName(maps->homeFolder()));

    QCOMPARE(maps->run(words("update --dry-run")).code, 0);

    QCOMPARE(picture(), before);
    DataSetLock lock;
    QVERIFY(lock.tryLock());
    QCOMPARE(maps->run(words("update")).code, 5);
    QCOMPARE(maps->run(words("update --dry-run")).code, 0);
}

void CliDryRunTest::theSameVersionIsUpToDate()
{
    const ProgramRun shown = maps->run(words("update --dry-run"));
    const ProgramRun json = maps->run(words("update --dry-run --json"));

    QCOMPARE(shown.code, 0);
    QCOMPARE(shown.out, QByteArray("Up to date: version 26.11.21.00.\n"));
    QCOMPARE(json.object().value(QLatin1String("upToDate")).toBool(), true);
}

void CliDryRunTest::aDryUpdateFailsAsTheUpdateWould_data()
{
    QTest::addColumn<bool>("damaged");
    QTest::addColumn<int>("code");
    QTest::newRow("an archive that is missing") << false << 4;
    QTest::newRow("an archive that is damaged") << true << 1;
}

void CliDryRunTest::aDryUpdateFailsAsTheUpdateWould()
{
    QFETCH(bool, damaged);
    QFETCH(int, code);
    publishNewVersion();
    const QString path = maps->content.archivePath(QStringLiteral("FI"));
    const int size = int(QFileInfo(path).size()); // another one would be a fault of the server's
    QVERIFY(QFile::remove(path));
    if (damaged)
        TestFile::write(path, QByteArray(size, 'x'));

    const ProgramRun dry = maps->run(words("update --dry-run"));
    const ProgramRun json = maps->run(words("update --dry-run --json"));

    QCOMPARE(dry.code, code);
    QVERIFY(dry.out.contains("leaves out the regions"));
    QCOMPARE(json.code, code);
    QCOMPARE(json.object().value(QLatin1String("complete")).toBool(true), false);
    QCOMPARE(maps->run(words("update")).code, code);
}

void CliDryRunTest::aSilentServerIsGivenUp()
{
    HttpTestServer silent;
    silent.add("/map5/version.txt", QByteArray("26.12.01.00"), HttpTestServer::SilentAccept());
    maps->baseUri = silent.url("/map5/");

    const ProgramRun run = maps->run(words("update --dry-run --timeout 1"));

    QCOMPARE(run.code, 4);
    QVERIFY(run.err.contains("silent for 1 s"));
    QVERIFY(run.out.isEmpty());
}

void CliDryRunTest::aDryUpdateIsInterrupted()
{
    HttpTestServer silent;
    silent.add("/map5/version.txt", QByteArray("26.12.01.00"), HttpTestServer::SilentAccept());
    maps->baseUri = silent.url("/map5/");
    const auto child = maps->start(words("update --dry-run"));
    QVERIFY(child->waitFor([&silent] { return silent.requestCount() > 0; }));

    child->sendSignal(SIGINT);

    QCOMPARE(child->waitForFinished(), 130);
}

void CliDryRunTest::withoutMapsThereIsNothingToUpdate()
{
    const QString empty = maps->scratchPath(QStringLiteral("empty"));

    const ProgramRun run = maps->runRaw({QStringLiteral("--data-dir"), empty,
                                         QStringLiteral("update"), QStringLiteral("--dry-run")});

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("vexa-maps refresh"));
    QVERIFY(!QFile::exists(empty + QStringLiteral("/cities")));
}

QTEST_GUILESS_MAIN(CliDryRunTest)
#include "tst_clidryrun.moc"
