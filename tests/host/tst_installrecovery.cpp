// SPDX-License-Identifier: MIT
// What a run that died left in the journal, in the engine's queue and on the disk.
#include "download/requestqueue.h"
#include "host/shared/installrecovery.h"
#include "host/shared/savedqueue.h"
#include "plugin/dataroot.h"
#include "plugin/vexaconstants.h"
#include "plugin/vexasettings.h"
#include "testutils/archivebuilder.h"
#include "testutils/temporaryhome.h"
#include <QDir>
#include <QtTest>

using Phase = PendingInstall::Phase;

class InstallRecoveryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aWaitingInstallStaysAsItIs();
    void goesOnWithAllSteps();
    void goesOnWithUnpackAndMoveAndForgetsAnOldList();
    void goesOnWithAMoveWhoseFilesAreNoted();
    void readsTheScratchFolderWhenOnlyTheMoveIsLeft();
    void beginsAgainWhenTheScratchFolderIsNotWhole();
    void goesOnWithAMoveThatHasPutSomeFilesInPlace();
    void beginsAgainWhenAMoveHadBegunAndItsFilesAreNotNoted();
    void beginsAgainWhenTheScratchFolderHasNoTiles();
    void beginsAgainWhenStepsAreMissing_data();
    void beginsAgainWhenStepsAreMissing();
    void recordsWhatIsCompletelyInPlace();
    void beginsAgainWhenATileIsNotInPlace();
    void beginsAgainWhenNothingIsKnown();
    void takesUpARegionThatTheJournalDoesNotKnow();
    void leavesOtherRequestsAlone();
    void dropsASecondAttemptOfTheSameRegion();
    void leavesTheSameRegionOfAnotherDataSetAlone_data();
    void leavesTheSameRegionOfAnotherDataSetAlone();
    void leavesIncompleteStepsOfAnotherAddressAlone();

private:
    static Request step(int type, const QString &id, const QString &url,
                        const QString &pathSuffix = QString())
    {
        QVariant payload = QDir::homePath() + TMP_DIR_PATH + id + QLatin1String(".zip");
        if (type == MoveRequest)
            payload = QStringList {QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE,
                                   DataRoot::tileCacheFolder(pathSuffix) + QLatin1Char('/')};
        return Request(id, type, payload, url);
    }
    static void queue(const QList<int> &types, const QString &id, const QString &url,
                      const QString &pathSuffix = QString())
    {
        RequestQueue<Request> requests(nullptr);
        requests.restoreSaved();
        for (int type : types)
            requests.enqueue(step(type, id, url, pathSuffix));
    }
    static void note(const PendingInstall &entry)
    {
        QVERIFY(InstallJournal(InstallJournal::defaultPath()).put(entry));
    }
    static void addFile(const QString &folder, const QString &name)
    {
        TestFile::write(folder + QLatin1Char('/') + name, "tile");
    }
    static QString scratch() { return QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE; }
    static QString tiles() { return DataRoot::tileCacheFolder(); }

    QList<PendingInstall> recover()
    {
        journal = std::make_unique<InstallJournal>(InstallJournal::defaultPath());
        return InstallRecovery::recover(journal.get(), tiles(), [](const QString &id) {
            return id == QLatin1String("FI") || id == QLatin1String("SE");
        });
    }
    PendingInstall entry(const QString &id = QStringLiteral("FI"))
    {
        return journal->find(id).value_or(PendingInstall());
    }

    const QString fi = QStringLiteral("FI");
    const QString url = QStringLiteral("http://127.0.0.1/FI.zip#7");
    const QStringList files {QStringLiteral("0/1/a.cdt"), QStringLiteral("0/1/b.cdt")};
    std::unique_ptr<TemporaryHome> home;
    std::unique_ptr<InstallJournal> journal;
};

void InstallRecoveryTest::init()
{
    home = std::make_unique<TemporaryHome>();
    QDir().mkpath(tiles());
}

void InstallRecoveryTest::cleanup()
{
    journal.reset();
    home.reset();
}

void InstallRecoveryTest::aWaitingInstallStaysAsItIs()
{
    note({fi, QString(), 0, 0, Phase::Waiting, {}});

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Waiting);
}

void InstallRecoveryTest::goesOnWithAllSteps()
{
    note({fi, url, 7, 0, Phase::Engine, {}});
    queue({DownloadRequest, UncompressRequest, MoveRequest}, fi, url);

    const QList<PendingInstall> goingOn = recover();

    QCOMPARE(goingOn.size(), 1);
    QCOMPARE(goingOn.first().url, url);
    QCOMPARE(goingOn.first().attempt, 7);
    QVERIFY(entry().phase == Phase::Engine);
    QCOMPARE(SavedQueue::read().size(), 3);
}

void InstallRecoveryTest::goesOnWithUnpackAndMoveAndForgetsAnOldList()
{
    note({fi, url, 7, 0, Phase::Moving, files});
    queue({UncompressRequest, MoveRequest}, fi, url);

    QCOMPARE(recover().size(), 1);

    QVERIFY(entry().phase == Phase::Engine);
    QVERIFY(entry().files.isEmpty());
}

void InstallRecoveryTest::goesOnWithAMoveWhoseFilesAreNoted()
{
    note({fi, url, 7, 0, Phase::Moving, files});
    queue({MoveRequest}, fi, url);
    for (const QString &file : files)
        addFile(scratch(), file);
    addFile(tiles(), files.first()); // the copy had begun

    QCOMPARE(recover().size(), 1);

    QVERIFY(entry().phase == Phase::Moving);
    QCOMPARE(entry().files, files);
}

void InstallRecoveryTest::readsTheScratchFolderWhenOnlyTheMoveIsLeft()
{
    note({fi, url, 7, 0, Phase::Engine, {}});
    queue({MoveRequest}, fi, url);
    for (const QString &file : files)
        addFile(scratch(), file);

    QCOMPARE(recover().size(), 1);

    QVERIFY(entry().phase == Phase::Moving);
    QCOMPARE(entry().files, files);
    QCOMPARE(entry().attempt, 7);
}

void InstallRecoveryTest::beginsAgainWhenTheScratchFolderIsNotWhole()
{
    note({fi, url, 7, 0, Phase::Moving, files});
    queue({MoveRequest}, fi, url);
    addFile(scratch(), files.first());

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Waiting);
    QVERIFY(SavedQueue::read().isEmpty());
}

// Files that replace others leave the scratch folder one by one.
void InstallRecoveryTest::goesOnWithAMoveThatHasPutSomeFilesInPlace()
{
    note({fi, url, 7, 0, Phase::Moving, files});
    queue({MoveRequest}, fi, url);
    addFile(tiles(), files.at(0));
    addFile(scratch(), files.at(1));

    const QList<PendingInstall> goingOn = recover();

    QCOMPARE(goingOn.size(), 1);
    QCOMPARE(goingOn.first().files, files);
    QCOMPARE(SavedQueue::read().size(), 1);
}

void InstallRecoveryTest::beginsAgainWhenAMoveHadBegunAndItsFilesAreNotNoted()
{
    note({fi, url, 7, 0, Phase::Engine, {}});
    queue({MoveRequest}, fi, url);
    addFile(tiles(), files.at(0));
    addFile(scratch(), files.at(1));
    {
        const VexaSettings::Locker settings;
        settings->setValue(QStringLiteral("moving"), QString(tiles() + QLatin1Char('/')));
    }

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Waiting);
    QVERIFY(SavedQueue::read().isEmpty());
}

void InstallRecoveryTest::beginsAgainWhenTheScratchFolderHasNoTiles()
{
    note({fi, url, 7, 0, Phase::Engine, {}});
    queue({MoveRequest}, fi, url);
    addFile(scratch(), QStringLiteral("README"));

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Waiting);
    QVERIFY(SavedQueue::read().isEmpty());
}

void InstallRecoveryTest::beginsAgainWhenStepsAreMissing_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::newRow("only the download was queued") << QList<int> {DownloadRequest};
    QTest::newRow("the move was not queued") << QList<int> {DownloadRequest, UncompressRequest};
    QTest::newRow("only the unpack is left") << QList<int> {UncompressRequest};
}

void InstallRecoveryTest::beginsAgainWhenStepsAreMissing()
{
    QFETCH(QList<int>, types);
    note({fi, url, 7, 0, Phase::Engine, {}});
    queue(types, fi, url);
    const QString archive = QDir::homePath() + TMP_DIR_PATH + QLatin1String("FI.zip");
    TestFile::write(archive, "part");

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Waiting);
    QVERIFY(SavedQueue::read().isEmpty());
    QVERIFY(!QFile::exists(archive));
}

void InstallRecoveryTest::recordsWhatIsCompletelyInPlace()
{
    note({fi, url, 7, 0, Phase::Moving, files});
    for (const QString &file : files)
        addFile(tiles(), file);

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Moved);
    QCOMPARE(entry().files, files);
}

void InstallRecoveryTest::beginsAgainWhenATileIsNotInPlace()
{
    note({fi, url, 7, 0, Phase::Moved, files});
    addFile(tiles(), files.first());

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Waiting);
    QVERIFY(entry().files.isEmpty());
}

void InstallRecoveryTest::beginsAgainWhenNothingIsKnown()
{
    note({fi, url, 7, 0, Phase::Engine, {}});
    for (const QString &file : files)
        addFile(tiles(), file); // it may be there: without the list nobody can say

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Waiting);
}

void InstallRecoveryTest::takesUpARegionThatTheJournalDoesNotKnow()
{
    queue({DownloadRequest, UncompressRequest, MoveRequest}, QStringLiteral("SE"),
          QStringLiteral("http://127.0.0.1/SE.zip"));

    QCOMPARE(recover().size(), 1);

    QVERIFY(entry(QStringLiteral("SE")).phase == Phase::Engine);
    QCOMPARE(entry(QStringLiteral("SE")).attempt, 0);
}

void InstallRecoveryTest::leavesOtherRequestsAlone()
{
    queue({DownloadRequest, MoveRequest}, QStringLiteral("notes"),
          QStringLiteral("http://127.0.0.1/notes.txt"));
    queue({DownloadRequest, MoveRequest}, fi, QStringLiteral("http://127.0.0.1/FI.jpg"));

    QVERIFY(recover().isEmpty());

    QCOMPARE(SavedQueue::read().size(), 4);
    QVERIFY(journal->ids().isEmpty());
}

void InstallRecoveryTest::dropsASecondAttemptOfTheSameRegion()
{
    note({fi, url, 7, 0, Phase::Engine, {}});
    queue({DownloadRequest, UncompressRequest, MoveRequest}, fi, url);
    queue({DownloadRequest, UncompressRequest, MoveRequest}, fi,
          QStringLiteral("http://127.0.0.1/FI.zip#8"));

    QCOMPARE(recover().size(), 1);

    const QList<Request> left = SavedQueue::read();
    QCOMPARE(left.size(), 3);
    QCOMPARE(left.first().url, url);
}

void InstallRecoveryTest::leavesTheSameRegionOfAnotherDataSetAlone_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::newRow("all steps") << QList<int> {DownloadRequest, UncompressRequest, MoveRequest};
    QTest::newRow("the move") << QList<int> {MoveRequest};
}

void InstallRecoveryTest::leavesTheSameRegionOfAnotherDataSetAlone()
{
    QFETCH(QList<int>, types);
    note({fi, url, 7, 0, Phase::Engine, {}});
    queue(types, fi, url, QStringLiteral("_new")); // even the attempt's number is the same

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Waiting);
    QCOMPARE(SavedQueue::read().size(), types.size());
}

void InstallRecoveryTest::leavesIncompleteStepsOfAnotherAddressAlone()
{
    note({fi, QString(), 0, 0, Phase::Waiting, {}});
    queue({DownloadRequest}, fi, QStringLiteral("http://127.0.0.1/other/FI.zip#3"));

    QVERIFY(recover().isEmpty());

    QVERIFY(entry().phase == Phase::Waiting);
    QCOMPARE(SavedQueue::read().size(), 1);
}

QTEST_GUILESS_MAIN(InstallRecoveryTest)
#include "tst_installrecovery.moc"
