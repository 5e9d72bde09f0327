// SPDX-License-Identifier: MIT
#include "download/stepengine.h"
#include "download/worker.h"
#include "testutils/archivebuilder.h"
#include "testutils/fakesystem.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSemaphore>
#include <QSignalSpy>
#include <QtTest>

namespace {

constexpr int Block = 400960; // bytes that the extractor takes at once

const QString Url = QStringLiteral("http://server/map5/FI.zip");
const QString OtherUrl = QStringLiteral("http://server/map5/SE.zip");

// The lines of a step without those that the loop around it writes.
QStringList stepLines(const LogCatcher &log)
{
    QStringList lines = log.texts();
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QString &line) {
                                   return line.startsWith(QLatin1String("[INFO] Settings file: "))
                                       || line == QLatin1String("[INFO] Vexa thread exit");
                               }),
                lines.end());
    return lines;
}

QString quotedForLog(int error)
{
    return QStringLiteral("[WARNING] Error: %1 at void "
                          "DownloadManager::onUncompressFinished(VexaArchive::ArchiveError)")
        .arg(error);
}

int savedRequests()
{
    const VexaSettings::Locker settings;
    return settings->value(QStringLiteral("requests/size")).toInt();
}

} // namespace

class UncompressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void unpacksIntoTheScratchFolder();
    void writesItsLinesInOrder();
    void tracesItsBeginningAndEveryBlock();
    void quotesAScratchFolderWithABlank();
    void emptiesTheScratchFolderFirst();
    void unpacksAlthoughTheCleanupFailed();
    void unpacksAlthoughThereIsNoShell();
    void leavesTheQueueBeforeTheArchiveIsDeleted();

    void aMissingArchiveIsAnError();
    void aRequestWithoutAnArchiveIsAnError();
    void aDamagedArchiveIsAnErrorAndDeleted();
    void aScratchFolderThatCannotBeMadeIsAnError();
    void aFailedUnpackLeavesNothingForTheMove();
    void aMissingArchiveLeavesNothingStaleForTheMove();

    void exitKeepsRequestAndArchive();
    void aCancelledUnpackIsDoneAgainAtTheNextStart();
    void aRequestOfAnEarlierRunClearsTheSavedFlag();
    void cancelDoesNotRemoveAnotherRegionsRequest();

    void theListIsThatOfTheUnpackThatFinished();
    void theListShownBehindAFailedUnpackIsEmpty();
    void theInterfaceShowsTheListOfEachUnpack();
    void tellsOfProgressAtMostOnceASecond();

    void theWorkerHandsThePauseOver();
    void theWorkerHandsContainmentOver();
    void namesAreNotFilteredUnlessContained();

private:
    QString archiveOf(const QString &name, const QList<QPair<QString, QByteArray>> &files);
    QString inDownloadFolder(const QString &path);

    std::unique_ptr<TemporaryHome> m_home;
};

void UncompressTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void UncompressTest::cleanup()
{
    m_home.reset();
}

// A real archive where a download leaves it.
QString UncompressTest::archiveOf(const QString &name,
                                  const QList<QPair<QString, QByteArray>> &files)
{
    ArchiveBuilder builder;
    for (const auto &file : files)
        builder.addFile(file.first, file.second);
    return inDownloadFolder(builder.make(name));
}

QString UncompressTest::inDownloadFolder(const QString &path)
{
    QDir().mkpath(m_home->downloadFolder());
    const QString target = m_home->downloadFolder() + QFileInfo(path).fileName();
    QFile::remove(target);
    if (!QFile::copy(path, target))
        qFatal("no copy of %s", qPrintable(path));
    return target;
}

void UncompressTest::unpacksIntoTheScratchFolder()
{
    const QString archive =
        archiveOf(QStringLiteral("FI.zip"),
                  {{QStringLiteral("a/3/3fa9.cdt"), "tile"},
                   {QStringLiteral("b.cdt"), ArchiveBuilder::noise(Block * 2)}});
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));

    engine.run();

    QCOMPARE(Step::found(Step::scratchFolder()),
             QStringList({QStringLiteral("a/"), QStringLiteral("a/3/"),
                          QStringLiteral("a/3/3fa9.cdt"), QStringLiteral("b.cdt")}));
    QCOMPARE(TestFile::read(Step::scratchFolder() + QLatin1String("/a/3/3fa9.cdt")),
             QByteArray("tile"));
    QCOMPARE(TestFile::read(Step::scratchFolder() + QLatin1String("/b.cdt")),
             ArchiveBuilder::noise(Block * 2));
    // Twice, once by the archive and once by the step: whoever listens must not mind.
    QCOMPARE(engine.events,
             QStringList({QStringLiteral("finished(3, http://server/map5/FI.zip, FI)"),
                          QStringLiteral("dequeued"),
                          QStringLiteral("finished(3, http://server/map5/FI.zip, FI)")}));
    QVERIFY(!QFile::exists(archive));
    QCOMPARE(savedRequests(), 0);
}

void UncompressTest::writesItsLinesInOrder()
{
    const QString archive =
        archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "tile"}});
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    const LogCatcher log(L::Info);

    engine.run();

    QCOMPARE(
        stepLines(log),
        QStringList(
            {QStringLiteral("[INFO] Shell is available"),
             QStringLiteral("[INFO] Command rm -rf %1/* returned: 0").arg(Step::scratchFolder()),
             QStringLiteral("[INFO] Remove succeeded"), quotedForLog(0),
             QStringLiteral("[INFO] Succeeded to unpack archive: ") + archive}));
}

void UncompressTest::tracesItsBeginningAndEveryBlock()
{
    const QString archive = archiveOf(
        QStringLiteral("FI.tar"), {{QStringLiteral("a.cdt"), ArchiveBuilder::noise(Block + 1)}});
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    const LogCatcher log(L::Trace);

    engine.run();

    QCOMPARE(log.count(QStringLiteral("[TRACE] int DownloadManager::doUncompress()")), 1);
    const QString progress = QStringLiteral(
        "[TRACE] void DownloadManager::onUncompressProgress(quint64, quint64) %1/400961");
    QStringList blocks;
    for (const QString &line : log.texts()) {
        if (line.contains(QLatin1String("onUncompressProgress")))
            blocks.append(line);
    }
    QVERIFY(blocks.size() >= 2);
    QCOMPARE(blocks.last(), progress.arg(400961));
}

void UncompressTest::quotesAScratchFolderWithABlank()
{
    const QString home = m_home->path() + QLatin1String("/two words");
    QVERIFY(QDir().mkpath(home));
    qputenv("HOME", QFile::encodeName(home)); // TemporaryHome gives the old one back
    TestFile::write(Step::scratchFolder() + QLatin1String("/stale.cdt"), "old");
    const QString archive =
        archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "tile"}});
    const FakeSystem system;
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));

    engine.run();

    QCOMPARE(system.commands(),
             QList<QByteArray> {"rm -rf '" + QFile::encodeName(Step::scratchFolder()) + "'/*"});
    QCOMPARE(Step::found(Step::scratchFolder()), QStringList {QStringLiteral("a.cdt")});
}

void UncompressTest::emptiesTheScratchFolderFirst()
{
    TestFile::write(Step::scratchFolder() + QLatin1String("/a.cdt"), "of an earlier region");
    TestFile::write(Step::scratchFolder() + QLatin1String("/c/d/stale.cdt"), "old");
    TestFile::write(Step::scratchFolder() + QLatin1String("/.hidden/f"), "not seen by the shell");
    TestFile::write(Step::scratchFolder() + QLatin1String("/..hidden"), "nor this");
    const QString archive =
        archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "tile"}});
    const FakeSystem system;
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));

    engine.run();

    QCOMPARE(system.commands(),
             QList<QByteArray> {"rm -rf " + QFile::encodeName(Step::scratchFolder()) + "/*"});
    QCOMPARE(Step::found(Step::scratchFolder()), QStringList {QStringLiteral("a.cdt")});
    QCOMPARE(TestFile::read(Step::scratchFolder() + QLatin1String("/a.cdt")), QByteArray("tile"));
}

void UncompressTest::unpacksAlthoughTheCleanupFailed()
{
    const QString archive =
        archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "tile"}});
    FakeSystem system;
    system.answer("rm -rf ", 256);
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    const LogCatcher log(L::Info);

    engine.run();

    QCOMPARE(
        stepLines(log).mid(0, 3),
        QStringList(
            {QStringLiteral("[INFO] Shell is available"),
             QStringLiteral("[INFO] Command rm -rf %1/* returned: 256").arg(Step::scratchFolder()),
             QStringLiteral("[ERROR] Remove failed")}));
    QCOMPARE(engine.eventsLike(QStringLiteral("error")), QStringList());
    QCOMPARE(Step::found(Step::scratchFolder()), QStringList {QStringLiteral("a.cdt")});
}

void UncompressTest::unpacksAlthoughThereIsNoShell()
{
    const QString archive =
        archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "tile"}});
    FakeSystem system;
    system.takeShellAway();
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    const LogCatcher log(L::Info);

    engine.run();

    QCOMPARE(stepLines(log),
             QStringList({QStringLiteral("[WARNING] Shell is NOT available"),
                          QStringLiteral("[ERROR] Failed to do cleanup"), quotedForLog(0),
                          QStringLiteral("[INFO] Succeeded to unpack archive: ") + archive}));
    QCOMPARE(system.commands().size(), 0);
    QCOMPARE(engine.eventsLike(QStringLiteral("finished")).size(), 2);
    QCOMPARE(Step::found(Step::scratchFolder()), QStringList {QStringLiteral("a.cdt")});
}

void UncompressTest::leavesTheQueueBeforeTheArchiveIsDeleted()
{
    const QString archive =
        archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "tile"}});
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    QList<bool> archiveThere;
    engine.onEvent = [&](const QString &event) {
        if (event == QLatin1String("dequeued"))
            archiveThere.append(QFile::exists(archive));
    };

    engine.run();

    // The other way round a crash in between would leave a step that can never succeed.
    QCOMPARE(archiveThere, QList<bool> {true});
    QVERIFY(!QFile::exists(archive));
}

void UncompressTest::aMissingArchiveIsAnError()
{
    const QString archive = m_home->downloadFolder() + QLatin1String("gone.zip");
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    const LogCatcher log(L::Info);

    engine.run();

    const QString finished = QStringLiteral("finished(3, http://server/map5/FI.zip, FI)");
    QCOMPARE(engine.events,
             QStringList({finished, finished,
                          QStringLiteral("error(3, FI, 2, http://server/map5/FI.zip)"),
                          QStringLiteral("dequeued"), finished}));
    QCOMPARE(log.count(quotedForLog(1)), 2);
    const QString line = stepLines(log).last();
    const QString beginning =
        QStringLiteral("[ERROR] Failed to unpack archive: %1Error code: 1 Error msg: Could not "
                       "open the archive: ")
            .arg(archive);
    QVERIFY2(line.startsWith(beginning) && line.size() > beginning.size(), qPrintable(line));
    QCOMPARE(savedRequests(), 0);
}

void UncompressTest::aRequestWithoutAnArchiveIsAnError()
{
    StepEngine engine;
    engine.queue.enqueue(Request(QStringLiteral("FI"), UncompressRequest, QVariant(), Url));
    engine.queue.enqueue(Request(QStringLiteral("FI"), UncompressRequest,
                                 QStringList({QStringLiteral("/a"), QStringLiteral("/b")}), Url));

    engine.run();

    QCOMPARE(engine.eventsLike(QStringLiteral("error(3, FI, 2, ")).size(), 2);
    QCOMPARE(savedRequests(), 0);
}

void UncompressTest::aDamagedArchiveIsAnErrorAndDeleted()
{
    const QString archive = archiveOf(QStringLiteral("FI.tar"),
                                      {{QStringLiteral("a.cdt"), ArchiveBuilder::noise(5000)}});
    TestFile::cut(archive, 2000);
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    const LogCatcher log(L::Info);

    engine.run();

    const QString finished = QStringLiteral("finished(3, http://server/map5/FI.zip, FI)");
    QCOMPARE(engine.events,
             QStringList({finished, QStringLiteral("error(3, FI, 2, http://server/map5/FI.zip)"),
                          QStringLiteral("dequeued"), finished}));
    QVERIFY(log.contains(QStringLiteral("Failed to unpack archive: %1Error code: 2 Error msg: "
                                        "Archive iteration error: ")
                             .arg(archive)));
    QVERIFY(!QFile::exists(archive));
}

void UncompressTest::aScratchFolderThatCannotBeMadeIsAnError()
{
    const QString archive =
        archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "tile"}});
    TestFile::write(Step::scratchFolder(), "a file in its place");
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    const LogCatcher log(L::Info);

    engine.run();

    QCOMPARE(stepLines(log).last(),
             QStringLiteral("[ERROR] Failed to unpack archive: %1Error code: 4 Error msg: Could "
                            "create destination directory %2")
                 .arg(archive, Step::scratchFolder()));
    QCOMPARE(engine.eventsLike(QStringLiteral("error(3, FI, 2, ")).size(), 1);
    QCOMPARE(TestFile::read(Step::scratchFolder()), QByteArray("a file in its place"));
}

void UncompressTest::aFailedUnpackLeavesNothingForTheMove()
{
    const QByteArray good = ArchiveBuilder::noise(3000, 1);
    const QByteArray bad = ArchiveBuilder::noise(3000, 2);
    const QString archive =
        archiveOf(QStringLiteral("FI.stored.zip"),
                  {{QStringLiteral("a/good.cdt"), good}, {QStringLiteral("b/bad.cdt"), bad}});
    const qsizetype at = TestFile::read(archive).indexOf(bad);
    QVERIFY(at > TestFile::read(archive).indexOf(good));
    TestFile::patch(archive, at + 100, "damaged");
    const QString tiles = m_home->myDocs() + QLatin1String("/cities/diskcache");
    TestFile::write(tiles + QLatin1String("/a/good.cdt"), "of an earlier version");
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    engine.queue.enqueue(Step::move(QStringLiteral("FI"), Step::scratchFolder(), tiles, Url));

    engine.run();

    QCOMPARE(engine.eventsLike(QStringLiteral("error")),
             QStringList({QStringLiteral("error(3, FI, 2, http://server/map5/FI.zip)"),
                          QStringLiteral("error(4, FI, 3, http://server/map5/FI.zip)")}));
    QCOMPARE(Step::found(Step::scratchFolder()), QStringList());
    QCOMPARE(Step::found(tiles), QStringList({QStringLiteral("a/"), QStringLiteral("a/good.cdt")}));
    QCOMPARE(TestFile::read(tiles + QLatin1String("/a/good.cdt")),
             QByteArray("of an earlier version"));
}

void UncompressTest::aMissingArchiveLeavesNothingStaleForTheMove()
{
    TestFile::write(Step::scratchFolder() + QLatin1String("/stale.cdt"), "of a cancelled region");
    const QString tiles = m_home->myDocs() + QLatin1String("/cities/diskcache");
    QVERIFY(QDir().mkpath(tiles));
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), QStringLiteral("/missing.zip"), Url));
    engine.queue.enqueue(Step::move(QStringLiteral("FI"), Step::scratchFolder(), tiles, Url));

    engine.run();

    QCOMPARE(Step::found(tiles), QStringList());
    QCOMPARE(engine.eventsLike(QStringLiteral("error(4")).size(), 1);
}

void UncompressTest::exitKeepsRequestAndArchive()
{
    const QString archive =
        archiveOf(QStringLiteral("FI.tar"),
                  {{QStringLiteral("a.cdt"), "tile"},
                   {QStringLiteral("b.cdt"), ArchiveBuilder::noise(Block * 40)}});
    const QByteArray bytes = TestFile::read(archive);
    Worker worker;
    worker.setUnpackPause(50);
    worker.enqueueRequest(Step::unpack(QStringLiteral("FI"), archive, Url));
    const LogCatcher log(L::Info);
    QSignalSpy finished(worker.getDownloadManagerIface(), &DownloadManagerIface::finished);

    worker.start();
    QTRY_COMPARE(QDir(Step::scratchFolder()).entryList({QStringLiteral("a.cdt")}).size(), 1);
    worker.stop();
    QVERIFY(worker.wait(30000));

    QVERIFY(log.contains(QStringLiteral("Failed to unpack archive: %1Error code: 6 Error msg: "
                                        "Unpacking was cancelled")
                             .arg(archive)));
    QCOMPARE(log.count(quotedForLog(6)), 1);
    QCOMPARE(TestFile::read(archive), bytes);
    QCOMPARE(Step::found(Step::scratchFolder()), QStringList());
    QCOMPARE(savedRequests(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(finished.count(), 0);
}

void UncompressTest::aCancelledUnpackIsDoneAgainAtTheNextStart()
{
    const QByteArray large = ArchiveBuilder::noise(Block * 3);
    const QString archive =
        archiveOf(QStringLiteral("FI.tar"),
                  {{QStringLiteral("a.cdt"), "tile"}, {QStringLiteral("b.cdt"), large}});
    {
        StepEngine engine;
        engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
        // Ahead of the archive's start, which forgets what it was told before.
        FakeSystem system;
        system.beforeCommand([&engine](const QByteArray &) { engine.stop(); });
        engine.run();
        QCOMPARE(engine.events, // nothing beyond the archive's own
                 QStringList {QStringLiteral("finished(3, http://server/map5/FI.zip, FI)")});
        QCOMPARE(engine.manager.getUnpackedFileList(), QStringList());
        QVERIFY(QFile::exists(archive));
        QCOMPARE(Step::found(Step::scratchFolder()), QStringList());
    }
    VexaSettings::destroy();

    StepEngine next;
    next.run();

    QCOMPARE(next.eventsLike(QStringLiteral("finished(3")).size(), 2);
    QCOMPARE(TestFile::read(Step::scratchFolder() + QLatin1String("/b.cdt")), large);
    QVERIFY(!QFile::exists(archive));
}

void UncompressTest::aRequestOfAnEarlierRunClearsTheSavedFlag()
{
    {
        RequestQueue<Request> earlier(nullptr);
        earlier.enqueue(Step::unpack(QStringLiteral("FI"), QStringLiteral("/missing.zip"), Url));
    }
    StepEngine engine;
    QVERIFY(engine.queue.hasSavedTransfer);
    QList<bool> flags;
    engine.onEvent = [&](const QString &) { flags.append(engine.queue.hasSavedTransfer); };

    engine.run();

    QVERIFY(!flags.isEmpty());
    QVERIFY(!flags.contains(true));
}

void UncompressTest::cancelDoesNotRemoveAnotherRegionsRequest()
{
    const QString archive =
        archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "finland"}});
    const QString other =
        archiveOf(QStringLiteral("SE.zip"), {{QStringLiteral("b.cdt"), "sweden"}});
    const QString tiles = m_home->myDocs() + QLatin1String("/tiles");
    QVERIFY(QDir().mkpath(tiles));
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    engine.queue.enqueue(Step::move(QStringLiteral("FI"), Step::scratchFolder(), tiles, Url));
    engine.queue.enqueue(Step::unpack(QStringLiteral("SE"), other, OtherUrl));
    engine.queue.enqueue(Step::move(QStringLiteral("SE"), Step::scratchFolder(), tiles, OtherUrl));
    bool cancelled = false;
    engine.onEvent = [&](const QString &event) {
        // The archive's own signal: the unpack is not over for the engine.
        if (!cancelled && event.startsWith(QLatin1String("finished(3"))) {
            cancelled = true;
            engine.manager.cancel(Url);
        }
    };

    engine.run();

    QCOMPARE(Step::found(tiles), QStringList {QStringLiteral("b.cdt")});
    QCOMPARE(engine.eventsLike(QStringLiteral("finished(4")),
             QStringList {QStringLiteral("finished(4, http://server/map5/SE.zip, SE)")});
    QCOMPARE(engine.eventsLike(QStringLiteral("error")), QStringList());
    QVERIFY(!QFile::exists(archive));
}

void UncompressTest::theListIsThatOfTheUnpackThatFinished()
{
    const QString first = archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "1"}});
    const QString second = archiveOf(QStringLiteral("SE.zip"), {{QStringLiteral("b.cdt"), "2"}});
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), first, Url));
    engine.queue.enqueue(Step::unpack(QStringLiteral("SE"), second, OtherUrl));
    QStringList shown;
    engine.onEvent = [&](const QString &event) {
        if (event.startsWith(QLatin1String("finished(3")))
            shown.append(engine.manager.getUnpackedFileList().join(QLatin1Char('|')));
    };

    engine.run();

    QCOMPARE(shown,
             QStringList({QStringLiteral("a.cdt"), QStringLiteral("a.cdt"), QStringLiteral("b.cdt"),
                          QStringLiteral("b.cdt")}));
    QCOMPARE(engine.manager.getUnpackedFileList(), QStringList {QStringLiteral("b.cdt")});
}

void UncompressTest::theListShownBehindAFailedUnpackIsEmpty()
{
    const QString first = archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "1"}});
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), first, Url));
    engine.queue.enqueue(
        Step::unpack(QStringLiteral("SE"), QStringLiteral("/missing.zip"), OtherUrl));
    QStringList shown;
    engine.onEvent = [&](const QString &event) {
        if (event.startsWith(QLatin1String("finished(3, http://server/map5/SE")))
            shown.append(engine.manager.getUnpackedFileList());
    };

    engine.run();

    QCOMPARE(engine.eventsLike(QStringLiteral("finished(3, http://server/map5/SE")).size(), 3);
    QCOMPARE(shown, QStringList());
    QCOMPARE(engine.manager.getUnpackedFileList(), QStringList());
}

void UncompressTest::theInterfaceShowsTheListOfEachUnpack()
{
    const QString first = archiveOf(QStringLiteral("FI.zip"), {{QStringLiteral("a.cdt"), "1"}});
    const QString second = archiveOf(QStringLiteral("SE.zip"), {{QStringLiteral("b.cdt"), "2"}});
    Worker worker;
    worker.setUnpackPause(0);
    worker.enqueueRequest(Step::unpack(QStringLiteral("FI"), first, Url));
    worker.enqueueRequest(Step::unpack(QStringLiteral("SE"), second, OtherUrl));
    DownloadManagerIface *iface = worker.getDownloadManagerIface();
    QStringList shown;
    connect(iface, &DownloadManagerIface::unpackedFileListChanged,
            [&] { shown.append(iface->getUnpackedFileList().join(QLatin1Char('|'))); });
    QSemaphore dequeued;
    connect(
        iface, &DownloadManagerIface::requestsChanged, iface,
        [&dequeued, &worker] {
            if (QThread::currentThread() == &worker)
                dequeued.release();
        },
        Qt::DirectConnection);

    worker.start();
    // The GUI thread does not look until the worker is through with both.
    QVERIFY(dequeued.tryAcquire(2, 30000));
    QTRY_COMPARE(shown.size(), 4);
    worker.stop();
    QVERIFY(worker.wait(30000));

    QCOMPARE(shown,
             QStringList({QStringLiteral("a.cdt"), QStringLiteral("a.cdt"), QStringLiteral("b.cdt"),
                          QStringLiteral("b.cdt")}));
}

void UncompressTest::tellsOfProgressAtMostOnceASecond()
{
    const QString archive = archiveOf(
        QStringLiteral("FI.tar"), {{QStringLiteral("a.cdt"), ArchiveBuilder::noise(Block * 10)}});
    StepEngine engine;
    engine.manager.setUnpackPause(250);
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));
    QElapsedTimer clock;
    clock.start();
    QList<qint64> times;
    engine.onEvent = [&](const QString &event) {
        if (event.startsWith(QLatin1String("progress")))
            times.append(clock.elapsed());
    };

    engine.run();

    QVERIFY(times.size() >= 2);
    for (int i = 1; i < times.size(); ++i)
        QVERIFY2(times.at(i) - times.at(i - 1) >= 999, qPrintable(QString::number(i)));
    // 4009600 bytes in all, no time estimate.
    for (const QString &event : engine.eventsLike(QStringLiteral("progress"))) {
        QVERIFY2(event.startsWith(QLatin1String("progress(3, http://server/map5/FI.zip, FI, "))
                     && event.endsWith(QLatin1String(", 4009600, 0)")),
                 qPrintable(event));
    }
}

void UncompressTest::theWorkerHandsThePauseOver()
{
    const QString archive = archiveOf(QStringLiteral("FI.tar"),
                                      {{QStringLiteral("a.cdt"), ArchiveBuilder::noise(Block)}});
    Worker worker;
    worker.setUnpackPause(700);
    worker.enqueueRequest(Step::unpack(QStringLiteral("FI"), archive, Url));
    QElapsedTimer clock;
    clock.start();

    worker.start();
    QTRY_VERIFY_WITH_TIMEOUT(worker.getRequestQueue()->snapshot().isEmpty(), 30000);

    QVERIFY(clock.elapsed() >= 700);
    worker.stop();
    QVERIFY(worker.wait(30000));
}

void UncompressTest::theWorkerHandsContainmentOver()
{
    const QString archive = m_home->downloadFolder() + QLatin1String("FI.tar");
    TestFile::write(archive, RawTar().add("good.cdt", "1").add("../outside.cdt", "2").bytes());
    Worker worker;
    worker.setUnpackPause(0);
    worker.setContainedUnpack(true);
    worker.enqueueRequest(Step::unpack(QStringLiteral("FI"), archive, Url));
    QSignalSpy error(worker.getDownloadManagerIface(), &DownloadManagerIface::error);
    const LogCatcher log(L::Info);

    worker.start();
    QTRY_COMPARE(error.count(), 1);
    worker.stop();
    QVERIFY(worker.wait(30000));

    QCOMPARE(error.at(0).at(0).toInt(), 3);
    QCOMPARE(error.at(0).at(2).toInt(), 2);
    QVERIFY(log.contains(QStringLiteral("Error code: 4 Error msg: Entry leads out of the "
                                        "destination: ../outside.cdt")));
    QVERIFY(!QFile::exists(m_home->downloadFolder() + QLatin1String("outside.cdt")));
    QCOMPARE(Step::found(Step::scratchFolder()), QStringList());
}

void UncompressTest::namesAreNotFilteredUnlessContained()
{
    const QString archive = m_home->downloadFolder() + QLatin1String("FI.tar");
    TestFile::write(archive, RawTar().add("../outside.cdt", "2").bytes());
    StepEngine engine;
    engine.queue.enqueue(Step::unpack(QStringLiteral("FI"), archive, Url));

    engine.run();

    // Meant so: the server's archives are trusted unless the host says otherwise.
    QCOMPARE(TestFile::read(m_home->downloadFolder() + QLatin1String("outside.cdt")),
             QByteArray("2"));
}

QTEST_GUILESS_MAIN(UncompressTest)
#include "tst_uncompress.moc"
