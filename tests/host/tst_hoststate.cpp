// SPDX-License-Identifier: MIT
// What the programs keep on disk, and the values that they show.
#include "download/download.h"
#include "download/requestqueue.h"
#include "host/shared/attempttag.h"
#include "host/shared/datasetlock.h"
#include "host/shared/enginesession.h"
#include "host/shared/installjournal.h"
#include "host/shared/regionstatus.h"
#include "host/shared/savedqueue.h"
#include "host/shared/tilelist.h"
#include "host/shared/transfermeter.h"
#include "plugin/dataroot.h"
#include "plugin/vexa.h"
#include "plugin/vexaconstants.h"
#include "testutils/archivebuilder.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <QDir>
#include <QProcess>
#include <QThread>
#include <QtTest>

using Phase = PendingInstall::Phase;

class HostStateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { home = std::make_unique<TemporaryHome>(); }
    void cleanup() { home.reset(); }

    void theJournalComesBackAsItWas();
    void theJournalReplacesInPlaceAndRemoves();
    void theJournalNotesWhatWasUnpackedOnce();
    void attemptNumbersNeverComeTwice();
    void aDamagedJournalIsEmpty_data();
    void aDamagedJournalIsEmpty();
    void aJournalThatCannotBeWrittenSaysSo();

    void takesRequestsOutOfTheSavedQueue();
    void takingTheHeadOutForgetsItsTransfer();
    void anArchiveThatAnotherRequestGrowsStays();
    void filesOutsideTheDownloadFolderStay();
    void tellsWhetherTheUserHasPaused();
    void removesALockThatWasNeverFilled();

    void theLockKeepsASecondHolderOut();
    void theLockOutlivesAProgramAsLongAsItsCommandRuns();
    void aLockThatCannotBeMadeSaysSo();

    void tagsTellAttemptsApart();
    void tilesAreCleanedOfFoldersDotsAndRepetitions();
    void contentPathsBecomeArchivePaths();
    void emptyingAFolderKeepsTheFolderAndLinkTargets();
    void theMeterTellsSpeedAndTime();
    void theMeterStartsAnewWhenBytesGoBack();
    void sentencesSayWhereARegionStands_data();
    void sentencesSayWhereARegionStands();
    void namesOfStatesAreFixed();
    void baseAddressesAreCheckedAndEndInASlash();
    void theConfiguredServerIsTheApplicationsOne();

private:
    static QString journalPath() { return InstallJournal::defaultPath(); }
    static void enqueue(const QList<Request> &requests)
    {
        RequestQueue<Request> queue(nullptr);
        queue.restoreSaved();
        for (const Request &request : requests)
            queue.enqueue(request);
    }

    std::unique_ptr<TemporaryHome> home;
};

void HostStateTest::theJournalComesBackAsItWas()
{
    const PendingInstall entry {QStringLiteral("FI"), QStringLiteral("http://x/ä.zip#3"), 3, 1,
                                Phase::Moving,        {QStringLiteral("0/1/ö.cdt")}};
    QVERIFY(InstallJournal(journalPath()).put(entry));

    const InstallJournal again(journalPath());

    QCOMPARE(again.ids(), QStringList {QStringLiteral("FI")});
    const auto found = again.find(QStringLiteral("FI"));
    QVERIFY(found);
    QCOMPARE(found->url, entry.url);
    QCOMPARE(found->attempt, 3);
    QCOMPARE(found->retries, 1);
    QVERIFY(found->phase == Phase::Moving);
    QCOMPARE(found->files, entry.files);
    QVERIFY(!again.find(QStringLiteral("SE")));
}

void HostStateTest::theJournalReplacesInPlaceAndRemoves()
{
    InstallJournal journal(journalPath());
    journal.put({QStringLiteral("FI"), {}, 0, 0, Phase::Waiting, {}});
    journal.put({QStringLiteral("SE"), {}, 0, 0, Phase::Waiting, {}});

    journal.put({QStringLiteral("FI"), {}, 1, 0, Phase::Engine, {}});
    QCOMPARE(journal.ids(), QStringList({QStringLiteral("FI"), QStringLiteral("SE")}));

    QVERIFY(journal.remove(QStringLiteral("FI")));
    QVERIFY(journal.remove(QStringLiteral("never there")));
    QCOMPARE(InstallJournal(journalPath()).ids(), QStringList {QStringLiteral("SE")});
}

void HostStateTest::theJournalNotesWhatWasUnpackedOnce()
{
    InstallJournal journal(journalPath());
    journal.put({QStringLiteral("FI"), {}, 4, 0, Phase::Engine, {}});

    journal.noteUnpacked(QStringLiteral("FI"), 3, {QStringLiteral("late.cdt")});
    QVERIFY(journal.find(QStringLiteral("FI"))->phase == Phase::Engine);

    journal.noteUnpacked(QStringLiteral("FI"), 4, {QStringLiteral("a.cdt")});
    journal.noteUnpacked(QStringLiteral("FI"), 4, {QStringLiteral("b.cdt")});
    const auto entry = InstallJournal(journalPath()).find(QStringLiteral("FI"));
    QVERIFY(entry->phase == Phase::Moving);
    QCOMPARE(entry->files, QStringList {QStringLiteral("a.cdt")});
}

void HostStateTest::attemptNumbersNeverComeTwice()
{
    {
        InstallJournal journal(journalPath());
        QCOMPARE(journal.nextAttempt(), 1);
        journal.put({QStringLiteral("FI"), {}, journal.nextAttempt(), 0, Phase::Engine, {}});
        journal.remove(QStringLiteral("FI"));
    }

    QCOMPARE(InstallJournal(journalPath()).nextAttempt(), 3);
}

void HostStateTest::aDamagedJournalIsEmpty_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut") << QByteArray("{\"installs\":[{\"id\":\"FI\"");
    QTest::newRow("no object") << QByteArray("[1,2]");
    QTest::newRow("entries of another kind") << QByteArray("{\"installs\":[1,\"x\",{}]}");
}

void HostStateTest::aDamagedJournalIsEmpty()
{
    QFETCH(QByteArray, bytes);
    TestFile::write(journalPath(), bytes);

    InstallJournal journal(journalPath());

    QVERIFY(journal.ids().isEmpty());
    QVERIFY(journal.put({QStringLiteral("FI"), {}, 0, 0, Phase::Waiting, {}}));
    QCOMPARE(InstallJournal(journalPath()).ids(), QStringList {QStringLiteral("FI")});
}

void HostStateTest::aJournalThatCannotBeWrittenSaysSo()
{
    const LogCatcher log;
    QDir().mkpath(journalPath()); // a folder in its place
    InstallJournal journal(journalPath());

    QVERIFY(!journal.put({QStringLiteral("FI"), {}, 0, 0, Phase::Waiting, {}}));

    QVERIFY(log.contains(QStringLiteral("Could not write the list of pending installs")));
}

void HostStateTest::takesRequestsOutOfTheSavedQueue()
{
    enqueue(
        {Request(QStringLiteral("FI"), DownloadRequest, QStringLiteral("x"), QStringLiteral("u")),
         Request(QStringLiteral("SE"), DownloadRequest, QStringLiteral("y"), QStringLiteral("v")),
         Request(QStringLiteral("FI"), MoveRequest,
                 QStringList {QStringLiteral("a"), QStringLiteral("b")}, QStringLiteral("u"))});

    QCOMPARE(SavedQueue::removeIf(
                 [](const Request &request) { return request.id == QLatin1String("FI"); }),
             2);

    const QList<Request> left = SavedQueue::read();
    QCOMPARE(left.size(), 1);
    QCOMPARE(left.first().id, QStringLiteral("SE"));
    QCOMPARE(left.first().payload.toString(), QStringLiteral("y"));
    QCOMPARE(SavedQueue::removeIf([](const Request &) { return false; }), 0);
}

void HostStateTest::takingTheHeadOutForgetsItsTransfer()
{
    const QString archive = home->downloadFolder() + QLatin1String("FI.zip");
    TestFile::write(archive, "part");
    enqueue({Request(QStringLiteral("FI"), DownloadRequest, archive, QStringLiteral("u"))});
    {
        const VexaSettings::Locker settings;
        Download download;
        download.url = QUrl(QStringLiteral("u"));
        download.fileName = archive;
        download.bytesReceived = 4;
        download.serialize(*settings);
        settings->sync();
    }
    QCOMPARE(SavedQueue::bytesReceived(), qint64(4));

    SavedQueue::removeIf([](const Request &) { return true; });

    QCOMPARE(SavedQueue::bytesReceived(), qint64(0));
    QVERIFY(!QFile::exists(archive));
}

void HostStateTest::anArchiveThatAnotherRequestGrowsStays()
{
    const QString archive = home->downloadFolder() + QLatin1String("maps.zip");
    TestFile::write(archive, "part");
    enqueue({Request(QStringLiteral("FI"), DownloadRequest, archive, QStringLiteral("u")),
             Request(QStringLiteral("SE"), DownloadRequest, archive, QStringLiteral("v"))});

    SavedQueue::removeIf([](const Request &request) { return request.id == QLatin1String("SE"); });

    QVERIFY(QFile::exists(archive));
}

void HostStateTest::filesOutsideTheDownloadFolderStay()
{
    const QString precious = home->path() + QLatin1String("/letter.txt");
    TestFile::write(precious, "dear");
    const QString climbing = home->downloadFolder() + QLatin1String("../../../letter.txt");
    enqueue({Request(QStringLiteral("FI"), DownloadRequest, precious, QStringLiteral("u")),
             Request(QStringLiteral("FI"), UncompressRequest, climbing, QStringLiteral("u"))});

    QCOMPARE(SavedQueue::removeIf([](const Request &) { return true; }), 2);

    QVERIFY(QFile::exists(precious));
}

void HostStateTest::tellsWhetherTheUserHasPaused()
{
    QVERIFY(!SavedQueue::pausedByUser());
    {
        const VexaSettings::Locker settings;
        settings->setValue(QStringLiteral("isSuspended"), true);
        settings->sync();
    }
    QVERIFY(SavedQueue::pausedByUser());
}

void HostStateTest::removesALockThatWasNeverFilled()
{
    QString path;
    {
        const VexaSettings::Locker settings;
        path = settings->fileName() + QLatin1String(".lock");
    }
    TestFile::write(path, QByteArray());

    SavedQueue::removeBrokenLock();

    QVERIFY(!QFile::exists(path));
    TestFile::write(path, "1\nother\nhost\n"); // somebody's: Qt decides
    SavedQueue::removeBrokenLock();
    QVERIFY(QFile::exists(path));
}

void HostStateTest::theLockKeepsASecondHolderOut()
{
    DataSetLock second;
    {
        DataSetLock first;
        QCOMPARE(DataSetLock::holder(), qint64(0));
        QVERIFY(first.tryLock());

        QVERIFY(!second.tryLock());
        QVERIFY(second.isHeldByOther());
        QVERIFY(second.errorString().contains(QString::number(QCoreApplication::applicationPid())));
        QCOMPARE(DataSetLock::holder(), QCoreApplication::applicationPid());
    }
    QVERIFY(second.tryLock());
}

void HostStateTest::theLockOutlivesAProgramAsLongAsItsCommandRuns()
{
    // A command that has inherited the lock of a program that is gone: as after kill -9.
    const QString path = DataRoot::myDocs() + QLatin1String("/.vexa-maps.lock");
    QProcess command;
    {
        DataSetLock dying;
        QVERIFY(dying.tryLock());
        command.start(QStringLiteral("/bin/sh"),
                      {QStringLiteral("-c"), QStringLiteral("read line")});
        QVERIFY(command.waitForStarted());
    }
    QProcess dead;
    dead.start(QStringLiteral("/bin/true"), QStringList());
    QVERIFY(dead.waitForStarted());
    const qint64 deadPid = dead.processId();
    QVERIFY(dead.waitForFinished());
    QVERIFY(DataSetLock::holder() != 0); // the command holds it
    TestFile::patch(path, 0, QByteArray::number(deadPid) + "\n            ");
    DataSetLock next;
    const std::unique_ptr<QThread> taker(QThread::create([&next] { next.tryLock(); }));
    taker->start();
    QVERIFY(!taker->wait(200)); // it waits for the command's end

    command.closeWriteChannel();

    QVERIFY(taker->wait(60000));
    QCOMPARE(DataSetLock::holder(), QCoreApplication::applicationPid());

    QVERIFY(command.waitForFinished());
}

void HostStateTest::aLockThatCannotBeMadeSaysSo()
{
    QDir().mkpath(DataRoot::myDocs() + QLatin1String("/.vexa-maps.lock"));
    DataSetLock lock;

    QVERIFY(!lock.tryLock());

    QVERIFY(!lock.isHeldByOther());
    QVERIFY(lock.errorString().contains(QLatin1String("cannot be written")));
}

void HostStateTest::tagsTellAttemptsApart()
{
    const QString tagged = AttemptTag::tagged(QStringLiteral("http://h/a b.zip?x=1"), 12);

    QCOMPARE(tagged, QStringLiteral("http://h/a%20b.zip?x=1#12"));
    QCOMPARE(AttemptTag::of(tagged), 12);
    QCOMPARE(AttemptTag::of(QUrl(tagged).toString()), 12); // as the engine's signals have it
    QCOMPARE(AttemptTag::untagged(tagged), QStringLiteral("http://h/a%20b.zip?x=1"));
    QCOMPARE(AttemptTag::of(QStringLiteral("http://h/a.zip")), 0);
    QCOMPARE(AttemptTag::of(QString()), 0);
}

void HostStateTest::tilesAreCleanedOfFoldersDotsAndRepetitions()
{
    const QStringList entries {QStringLiteral("./"),          QStringLiteral("a/"),
                               QStringLiteral("./a/3/x.cdt"), QStringLiteral("a/3/x.cdt"),
                               QStringLiteral("README"),      QStringLiteral("b/odd.cdt/"),
                               QStringLiteral("a//3/y.cdt")};

    QCOMPARE(TileList::tiles(entries),
             QStringList({QStringLiteral("a/3/x.cdt"), QStringLiteral("a/3/y.cdt")}));
}

void HostStateTest::contentPathsBecomeArchivePaths()
{
    QCOMPARE(TileList::plain(QStringLiteral("\\a\\3\\x.cdt")), QStringLiteral("a/3/x.cdt"));
    QCOMPARE(TileList::plain(QStringLiteral("a/3/x.cdt")), QStringLiteral("a/3/x.cdt"));
    QCOMPARE(TileList::plain(QString()), QString());
}

void HostStateTest::emptyingAFolderKeepsTheFolderAndLinkTargets()
{
    const QString folder = home->path() + QLatin1String("/full");
    const QString outside = home->path() + QLatin1String("/outside");
    TestFile::write(folder + QLatin1String("/a/b.cdt"), "x");
    TestFile::write(folder + QLatin1String("/.hidden"), "x");
    TestFile::write(outside + QLatin1String("/kept"), "x");
    QVERIFY(QFile::link(outside, folder + QLatin1String("/link")));

    QVERIFY(TileList::empty(folder));

    QVERIFY(QDir(folder).exists());
    QVERIFY(QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    QVERIFY(QFile::exists(outside + QLatin1String("/kept")));
}

void HostStateTest::theMeterTellsSpeedAndTime()
{
    TransferMeter meter;
    QCOMPARE(meter.bytesPerSecond(), qint64(0));
    QCOMPARE(meter.remainingMs(1000), qint64(-1));

    meter.addAt(5000, 0); // there from an earlier run: counts for no speed
    QCOMPARE(meter.remainingMs(10000), qint64(-1));
    meter.addAt(6000, 1000);
    meter.addAt(7000, 2000);

    QCOMPARE(meter.bytesPerSecond(), qint64(1000));
    QCOMPARE(meter.remainingMs(10000), qint64(3000));
    QCOMPARE(meter.remainingMs(7000), qint64(0));
    QCOMPARE(meter.remainingMs(0), qint64(-1));

    for (int second = 3; second <= 30; ++second)
        meter.addAt(7000 + (second - 2) * 500, second * 1000);
    QCOMPARE(meter.bytesPerSecond(), qint64(500)); // the start is forgotten
    meter.restart();
    QCOMPARE(meter.bytesPerSecond(), qint64(0));
}

void HostStateTest::theMeterStartsAnewWhenBytesGoBack()
{
    TransferMeter meter;
    meter.addAt(1000, 0);
    meter.addAt(9000, 1000);

    meter.addAt(100, 2000);

    QCOMPARE(meter.bytesPerSecond(), qint64(0));
}

void HostStateTest::sentencesSayWhereARegionStands_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("remaining");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char *name, RegionState state, qint64 bytes, qint64 total,
                        qint64 remaining, const char *sentence) {
        QTest::newRow(name) << int(state) << bytes << total << remaining
                            << QString::fromLatin1(sentence);
    };
    row("not installed", RegionState::NotInstalled, 0, 0, -1, "Not installed");
    row("queued", RegionState::Queued, 0, 0, -1, "Waiting for its turn");
    row("begun", RegionState::Downloading, 0, 0, -1, "Downloading");
    row("no total", RegionState::Downloading, 500, 0, -1, "Downloading, 500 bytes");
    row("no time", RegionState::Downloading, 34, 100, -1, "Downloading 34 %");
    row("time", RegionState::Downloading, 34, 100, 120000, "Downloading 34 %, 2 min left");
    row("seconds", RegionState::Downloading, 34, 100, 3000, "Downloading 34 %, 3 s left");
    row("hours", RegionState::Downloading, 34, 100, 3900000, "Downloading 34 %, 1 h 5 min left");
    row("more than all", RegionState::Downloading, 300, 100, -1, "Downloading 100 %");
    row("unpacking", RegionState::Unpacking, 0, 0, -1, "Unpacking");
    row("unpacking half", RegionState::Unpacking, 1, 2, -1, "Unpacking 50 %");
    row("moving", RegionState::Moving, 0, 0, -1, "Putting the files into place");
    row("recording", RegionState::Recording, 0, 0, -1, "Finishing");
    row("installed", RegionState::Installed, 0, 0, -1, "Installed");
    row("cancelled", RegionState::Cancelled, 0, 0, -1, "Cancelled");
}

void HostStateTest::sentencesSayWhereARegionStands()
{
    QFETCH(int, state);
    QFETCH(QString, sentence);
    QFETCH(qint64, bytes);
    QFETCH(qint64, total);
    QFETCH(qint64, remaining);
    RegionStatus status;
    status.state = RegionState(state);
    status.bytes = bytes;
    status.total = total;
    status.remainingMs = remaining;

    QCOMPARE(RegionWords::sentence(status), sentence);
}

void HostStateTest::namesOfStatesAreFixed()
{
    const QStringList expected {QStringLiteral("notInstalled"), QStringLiteral("queued"),
                                QStringLiteral("waiting"),      QStringLiteral("downloading"),
                                QStringLiteral("unpacking"),    QStringLiteral("moving"),
                                QStringLiteral("recording"),    QStringLiteral("installed"),
                                QStringLiteral("failed"),       QStringLiteral("cancelled")};
    QStringList names;
    for (int state = 0; state < int(expected.size()); ++state)
        names.append(RegionWords::name(RegionState(state)));

    QCOMPARE(names, expected);
    QCOMPARE(RegionWords::name(WaitReason::None), QString());
    QVERIFY(RegionWords::reason(WaitReason::None).isEmpty());
    RegionStatus failed;
    failed.state = RegionState::Failed;
    failed.reason = QStringLiteral("It rained.");
    QCOMPARE(RegionWords::sentence(failed), failed.reason);
}

void HostStateTest::baseAddressesAreCheckedAndEndInASlash()
{
    QCOMPARE(EngineSession::checkedBaseUri(QStringLiteral("http://h/map5")),
             QStringLiteral("http://h/map5/"));
    QCOMPARE(EngineSession::checkedBaseUri(QStringLiteral("https://h/map5/")),
             QStringLiteral("https://h/map5/"));
    for (const char *bad : {"", "h/map5", "ftp://h/", "http:///x", "file:///etc/"})
        QCOMPARE(EngineSession::checkedBaseUri(QLatin1String(bad)), QString());
}

void HostStateTest::theConfiguredServerIsTheApplicationsOne()
{
    QCOMPARE(EngineSession::configuredBaseUri(), VEXA::defaultBaseUri());
    {
        QSettings settings(QStringLiteral("Orvel"), QStringLiteral("Maps"));
        settings.setValue(QStringLiteral("vexa/vexaBaseURI"), QStringLiteral("http://other/map5"));
    }
    QCOMPARE(EngineSession::configuredBaseUri(), QStringLiteral("http://other/map5/"));
}

QTEST_GUILESS_MAIN(HostStateTest)
#include "tst_hoststate.moc"
