// SPDX-License-Identifier: MIT
// Whatever command comes first behind a swap that was cut short, it ends the swap.
#include "host/shared/folderexchange.h"
#include "host/shared/swapjournal.h"
#include "mapsprogram.h"
#include "swaprig.h"
#include <memory>
#include <QtTest>

class SwapCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyCommandFinishesTheSwap_data();
    void everyCommandFinishesTheSwap();
    void everyCommandRefusesHalfASwap_data();
    void everyCommandRefusesHalfASwap();
    void aReaderWaitsForTheProgramThatSwaps();
    void aReaderDoesNotWaitForEver();
    void readersTakeNoLockOtherwise();

private:
    void cutShort();

    std::unique_ptr<MapsProgram> m_maps;
    std::unique_ptr<SwapRig> m_rig;
};

void SwapCommandsTest::init()
{
    m_maps = std::make_unique<MapsProgram>();
    qputenv("VEXA_MYDOCS", QFile::encodeName(m_maps->dataFolder()));
    qputenv("HOME", QFile::encodeName(m_maps->homeFolder()));
    m_rig = std::make_unique<SwapRig>();
}

void SwapCommandsTest::cleanup()
{
    m_rig.reset();
    m_maps.reset();
}

// Between the second and the third move: there is no catalogue folder.
void SwapCommandsTest::cutShort()
{
    QString error;
    QVERIFY(SwapJournal::write(
        FolderExchange::noteOf(SwapNote::Operation::Swap, SwapRig::newSuffix()), &error));
    QVERIFY(QDir().rename(SwapRig::voices(), SwapRig::voices(SwapRig::newSuffix())));
    QVERIFY(
        QDir().rename(DataRoot::catalogFolder(), DataRoot::catalogFolder(SwapRig::backupSuffix())));
}

void SwapCommandsTest::everyCommandFinishesTheSwap_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("code");
    QTest::newRow("list") << QStringLiteral("list") << 0;
    QTest::newRow("info") << QStringLiteral("info FI") << 0;
    QTest::newRow("status") << QStringLiteral("status") << 0;
    QTest::newRow("cities") << QStringLiteral("cities") << 0;
    QTest::newRow("remove") << QStringLiteral("remove XX") << 3;
    QTest::newRow("install") << QStringLiteral("install XX") << 3;
    QTest::newRow("resume") << QStringLiteral("resume") << 0;
    QTest::newRow("cancel") << QStringLiteral("cancel") << 0;
    QTest::newRow("refresh") << QStringLiteral("refresh") << 4;
}

void SwapCommandsTest::everyCommandFinishesTheSwap()
{
    QFETCH(QString, command);
    QFETCH(int, code);
    cutShort();

    const ProgramRun run = m_maps->run(command.split(QLatin1Char(' ')));

    QVERIFY2(run.code == code, run.err.constData());
    QVERIFY2(m_rig->isNew(), SwapRig::description());
    QVERIFY2((run.out + run.err).contains("An update that was cut short was finished"),
             (run.out + run.err).constData());
    // JSON is not disturbed, and the next run has nothing to tell.
    const ProgramRun next = m_maps->run(words("status --json"));
    QCOMPARE(next.object().value(QLatin1String("mapsVersion")).toString(),
             QLatin1String(SwapRig::NewVersion));
    QCOMPARE(next.err, QByteArray());
}

void SwapCommandsTest::everyCommandRefusesHalfASwap_data()
{
    QTest::addColumn<QString>("command");
    for (const char *command : {"list", "info FI", "status", "cities", "remove FI", "install FI",
                                "resume", "cancel", "refresh"})
        QTest::newRow(command) << QString::fromUtf8(command);
}

void SwapCommandsTest::everyCommandRefusesHalfASwap()
{
    QFETCH(QString, command);
    cutShort();
    TestFile::write(SwapRig::journal(), "{ \"format\": \"cut");
    const Tree before = SwapRig::treeOf(DataRoot::cities());

    const ProgramRun run = m_maps->run(command.split(QLatin1Char(' ')));

    QVERIFY2(run.code == 1, run.err.constData());
    QVERIFY2(run.err.contains("cannot be brought to an end")
                 && run.err.contains(".vexa-swap.json is damaged"),
             run.err.constData());
    // Above all no empty folders.
    QVERIFY2(SwapRig::treeOf(DataRoot::cities()) == before, SwapRig::description());
}

void SwapCommandsTest::aReaderWaitsForTheProgramThatSwaps()
{
    auto lock = std::make_unique<DataSetLock>();
    QVERIFY(lock->tryLock());
    cutShort();

    const auto reader = m_maps->start(words("list --json"));
    QVERIFY(!reader->waitFor([] { return SwapRig::exists(DataRoot::catalogFolder()); }, 500));
    QVERIFY(reader->isRunning());
    QCOMPARE(DataSetSwap::recover(), DataSetSwap::Recovery::SwapFinished);

    QCOMPARE(reader->waitForFinished(), 0);
    QVERIFY(reader->output().contains("\"FI\""));
    QVERIFY2(m_rig->isNew(), SwapRig::description());
}

void SwapCommandsTest::aReaderDoesNotWaitForEver()
{
    DataSetLock lock;
    QVERIFY(lock.tryLock());
    cutShort();

    const ProgramRun run = m_maps->run(words("status"));

    QCOMPARE(run.code, 5);
    QVERIFY2(run.err.contains("Another program"), run.err.constData());
    QVERIFY(!SwapRig::exists(DataRoot::catalogFolder()));
}

void SwapCommandsTest::readersTakeNoLockOtherwise()
{
    DataSetLock lock;
    QVERIFY(lock.tryLock());

    QCOMPARE(m_maps->run(words("list")).code, 0);
    QCOMPARE(m_maps->run(words("status")).code, 0);
    QVERIFY(m_rig->isOld());
}

QTEST_GUILESS_MAIN(SwapCommandsTest)
#include "tst_swapcommands.moc"
