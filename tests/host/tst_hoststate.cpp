// SPDX-License-Identifier: MIT
// What the programs keep on disk.
#include "download/download.h"
#include "download/requestqueue.h"
#include "host/shared/datasetlock.h"
#include "host/shared/installjournal.h"
#include "host/shared/savedqueue.h"
#include "plugin/dataroot.h"
#include "plugin/vexasettings.h"
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
    void findsTheRequestsThatTheEngineFinds();
    void takingTheHeadOutForgetsItsTransfer();
    void anArchiveThatAnotherRequestGrowsStays();
    void filesOutsideTheDownloadFolderStay();
    void tellsWhetherTheUserHasPaused();
    void removesALockThatWasNeverFilled();
    void theLockKeepsASecondHolderOut();
    void theLockOutlivesAProgramAsLongAsItsCommandRuns();
    void aLockThatCannotBeMadeSaysSo();

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

void HostStateTest::findsTheRequestsThatTheEngineFinds()
{
    {
        const VexaSettings::Locker settings;
        for (const char *entry : {"1", "01", "+1", "x", "-1", "3"})
            settings->setValue(QStringLiteral("requests/%1/id").arg(QLatin1String(entry)),
                               QLatin1String(entry));
        settings->sync();
    }

    const QList<Request> found = SavedQueue::read();

    RequestQueue<Request> queue(nullptr);
    queue.restoreSaved(); // which writes them anew
    QCOMPARE(found.size(), 2);
    QVERIFY(found == queue.snapshot());
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

QTEST_GUILESS_MAIN(HostStateTest)
#include "tst_hoststate.moc"
