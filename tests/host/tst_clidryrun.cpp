// SPDX-License-Identifier: MIT
// What --dry-run says, compared with what the same command then does to the disk.
#include "disksize.h"
#include "host/shared/datasetlock.h"
#include "mapsprogram.h"
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

private:
    QByteArray picture() const;

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

    QVERIFY(one.out.contains("FI (Finland in 001): 1 tiles, 20 kB would be freed."));
    QVERIFY(one.out.contains("1 tiles (20 kB) would stay, needed by SE (Sweden in 001)."));
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

QTEST_GUILESS_MAIN(CliDryRunTest)
#include "tst_clidryrun.moc"
