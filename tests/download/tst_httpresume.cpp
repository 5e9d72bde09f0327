// SPDX-License-Identifier: MIT
#include "download/enginechild.h"
#include "download/settingsfile.h"
#include "download/testengine.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QElapsedTimer>
#include <QTest>
#include <vector>

using Server = HttpTestServer;
using Behaviours = std::vector<HttpTestServer::Behaviour>;
Q_DECLARE_METATYPE(Behaviours)

namespace {

constexpr int KiB = 1024;
constexpr int MiB = 1024 * KiB;
constexpr int FileSize = 50000;

QString line(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray bytes(int size, quint32 seed = 1)
{
    return Server::generatedBytes(seed, 0, size);
}

QStringList rangesOf(const Server &server)
{
    QStringList ranges;
    const QList<Server::Request> requests = server.requests();
    for (const Server::Request &request : requests)
        ranges.append(QString::fromLatin1(request.header("Range")));
    return ranges;
}

bool isGenerated(const QString &path, quint32 seed, qint64 size)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() != size)
        return false;
    for (qint64 at = 0; at < size; at += MiB) {
        const QByteArray piece = file.read(MiB);
        if (piece != Server::generatedBytes(seed, at, piece.size()))
            return false;
    }
    return true;
}

} // namespace

/** Transfers that are interrupted, by whatever, and go on. */
class HttpResumeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void takesUpASavedTransfer_data();
    void takesUpASavedTransfer();
    void remembersATotalThatLaterAnswersDoNotTell();
    void finishesACompleteTransferWithoutAsking();
    void neverTakesUpAnotherTransfersRecord_data();
    void neverTakesUpAnotherTransfersRecord();
    void countsSavedBytesInItsProgress();
    void survivesBeingKilledAgainAndAgain();
    void keepsAPartialTransferWhenItIsSuspended();
    void aServerThatGoesAfterASuspensionIsNoFailure();
    void losesNothingOfADripWhenItIsSuspended();
    void keepsAPartialTransferForTheNextRunWhenItExits();
    void tellsTheEndOnceThoughASuspensionCameWithIt_data();
    void tellsTheEndOnceThoughASuspensionCameWithIt();

private:
    std::unique_ptr<TemporaryHome> m_home;
};

void HttpResumeTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void HttpResumeTest::cleanup()
{
    m_home.reset();
}

void HttpResumeTest::takesUpASavedTransfer_data()
{
    QTest::addColumn<QByteArray>("onDisk");
    QTest::addColumn<qint64>("received");
    QTest::addColumn<qint64>("total");
    QTest::addColumn<Behaviours>("behaviours");
    QTest::addColumn<QStringList>("ranges");
    QTest::addColumn<bool>("succeeds");
    const auto row = [](const char *name, const QByteArray &onDisk, qint64 received, qint64 total,
                        const Behaviours &behaviours, const QStringList &starts, bool succeeds) {
        QStringList ranges;
        for (const QString &start : starts)
            ranges.append(line("bytes=") + start + QLatin1Char('-'));
        QTest::newRow(name) << onDisk << received << total << behaviours << ranges << succeeds;
    };
    const QByteArray part = bytes(20000);
    const QByteArray other = bytes(20000, 2); // of a file that was there before
    const QStringList rest {line("20000")};
    const QStringList anew {line("20000"), line("0")};
    const Behaviours honest {Server::Whole()};

    row("where it stopped", part, 20000, FileSize, honest, rest, true);
    row("of unknown total", part, 20000, 0, honest, rest, true);
    row("of which nothing had come", QByteArray(), 0, 0, honest, {line("0")}, true);
    row("whose file is longer than was recorded", part + "killed between write and count", 20000,
        FileSize, honest, rest, true);
    row("whose file is complete but not recorded so", bytes(FileSize), 20000, FileSize, honest,
        rest, true);
    row("whose file is shorter than was recorded", bytes(700), 20000, FileSize, honest,
        {line("700")}, true);
    row("whose file is gone", QByteArray(), 20000, FileSize, honest, {line("0")}, true);
    row("that claims more than there is", part, 60000, FileSize, honest, {line("0")}, true);
    row("that claims nonsense", part, -5, FileSize, honest, {line("0")}, true);
    row("answered with the whole file", other, 20000, FileSize, {Server::NoRange()}, rest, true);
    row("answered with the whole file in chunks", other, 20000, FileSize,
        {Server::NoRange() | Server::Chunked()}, rest, true);
    row("of a file that has grown meanwhile", other, 20000, 40000, honest, anew, true);
    row("of a file that has shrunk meanwhile", other, 20000, 60000, honest, anew, true);
    row("answered with another part", part, 20000, FileSize,
        {Server::WrongRangeStart(), Server::Whole()}, anew, true);
    row("answered with other parts only", part, 20000, FileSize, {Server::WrongRangeStart()}, anew,
        false);
    row("answered without the part's range", part, 20000, FileSize, {Server::MissingContentRange()},
        rest, true);
    row("answered without the part's total", part, 20000, FileSize, {Server::UnknownRangeTotal()},
        rest, true);
    row("complete, its total unknown", bytes(FileSize), FileSize, 0, honest, {line("50000")}, true);
    row("behind the end of the file", bytes(FileSize) + "more", FileSize + 4, 0, honest,
        {line("50004")}, false);
    row("refused although there is more", part, 20000, FileSize, {Server::Status(416)}, rest,
        false);
    row("refused by a file that now ends where we are", bytes(FileSize), FileSize, 2 * FileSize,
        honest, {line("50000")}, false);
    row("not found any more", part, 20000, FileSize, {Server::Status(404)}, rest, false);
}

void HttpResumeTest::takesUpASavedTransfer()
{
    QFETCH(QByteArray, onDisk);
    QFETCH(qint64, received);
    QFETCH(qint64, total);
    QFETCH(Behaviours, behaviours);
    QFETCH(QStringList, ranges);
    QFETCH(bool, succeeds);
    Server server;
    server.add("/a", bytes(FileSize), behaviours);
    const QString url = server.url("/a");
    const QString file = TestEngine::saveFile(url);
    if (!onDisk.isEmpty())
        writeFile(file, onDisk);
    saveEarlierRun(url, file, received, total);
    TestEngine engine;

    engine.start();

    EVENTUALLY(engine.isIdle());
    EVENTUALLY(engine.finished.count() + engine.error.count() == 1);
    QCOMPARE(engine.finished.count(), succeeds ? 1 : 0);
    QCOMPARE(rangesOf(server), ranges);
    if (succeeds)
        QCOMPARE(contentOf(file), bytes(FileSize));
    else
        QVERIFY(!QFile::exists(file));
}

void HttpResumeTest::remembersATotalThatLaterAnswersDoNotTell()
{
    const auto cutPart =
        Server::MissingContentRange() | Server::NoContentLength() | Server::CutAfter(1000);
    Server server;
    server.add("/a", bytes(FileSize), {cutPart, Server::Whole()});
    const QString url = server.url("/a");
    const QString file = TestEngine::saveFile(url);
    writeFile(file, bytes(20000));
    saveEarlierRun(url, file, 20000, FileSize);
    TestEngine engine;

    engine.start();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(FileSize));
    // Qt by itself may repeat a request that was cut.
    QVERIFY(rangesOf(server).last() == line("bytes=21000-")
            || rangesOf(server).last() == line("bytes=20000-"));
}

void HttpResumeTest::finishesACompleteTransferWithoutAsking()
{
    Server server;
    const QString url = server.url("/a");
    const QString file = TestEngine::saveFile(url);
    writeFile(file, bytes(FileSize));
    saveEarlierRun(url, file, FileSize, FileSize);
    TestEngine engine;

    engine.start();

    EVENTUALLY(engine.finished.count() == 1);
    EVENTUALLY(engine.isIdle());
    QCOMPARE(engine.finished.at(0), QList<QVariant>({2, url, line("region")}));
    QCOMPARE(contentOf(file), bytes(FileSize));
    QCOMPARE(server.requestCount(), 0);
    EVENTUALLY(SettingsFile(*m_home).value(line("download/fileName")).toString().isEmpty());
}

void HttpResumeTest::neverTakesUpAnotherTransfersRecord_data()
{
    QTest::addColumn<bool>("sameUrl");
    QTest::addColumn<bool>("sameFile");

    QTest::newRow("of another address") << false << true;
    QTest::newRow("of another file") << true << false;
    QTest::newRow("of another address and file") << false << false;
}

void HttpResumeTest::neverTakesUpAnotherTransfersRecord()
{
    QFETCH(bool, sameUrl);
    QFETCH(bool, sameFile);
    Server server;
    server.add("/a", bytes(FileSize));
    const QString url = server.url("/a");
    const QString file = TestEngine::saveFile(url);
    const QString otherFile = m_home->downloadFolder() + line("other");
    writeFile(file, bytes(1000, 2));
    writeFile(otherFile, bytes(1000, 3));
    saveEarlierRun(url, file, 0, 0);
    {
        const VexaSettings::Locker settings;
        Download record;
        record.url = QUrl(sameUrl ? url : server.url("/other"));
        record.fileName = sameFile ? file : otherFile;
        record.bytesReceived = 1000;
        record.bytesTotal = FileSize;
        record.serialize(*settings);
        settings->sync();
    }
    TestEngine engine;

    engine.start();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(rangesOf(server), QStringList(line("bytes=0-")));
    QCOMPARE(contentOf(file), bytes(FileSize));
    QCOMPARE(contentOf(otherFile), bytes(1000, 3));
}

void HttpResumeTest::countsSavedBytesInItsProgress()
{
    Server server;
    server.add("/a", bytes(FileSize), Server::DelayBeforeAnswer(1100));
    const QString url = server.url("/a");
    const QString file = TestEngine::saveFile(url);
    writeFile(file, bytes(20000));
    saveEarlierRun(url, file, 20000, FileSize);
    TestEngine engine;

    engine.start();

    EVENTUALLY(engine.progress.count() >= 1);
    const QList<QVariant> progress = engine.progress.at(0);
    QCOMPARE(progress.at(3).toLongLong(), 20000);
    QCOMPARE(progress.at(4).toLongLong(), FileSize);
    // 30000 bytes are missing; 20000 seem to have taken as long as this request, over a second.
    QVERIFY(progress.at(5).toLongLong() >= 1600);
}

void HttpResumeTest::survivesBeingKilledAgainAndAgain()
{
    constexpr qint64 Size = 600000;
    Server server;
    server.add("/a", Server::Content::generated(1, Size), Server::Drip(3000, 5));
    const QString url = server.url("/a");
    const QString file = TestEngine::saveFile(url);

    qint64 kept = 0;
    for (int round = 1; round <= 6; ++round) {
        ChildProgram child(QCoreApplication::applicationFilePath(),
                           engineChildArguments(*m_home, round == 1 ? url : QString()));
        // Each time at another moment after a chunk has come.
        QVERIFY(child.waitForSize(file, kept + 40000 + 1777 * round));
        child.kill();
        kept = QFileInfo(file).size();
        QVERIFY(kept < Size);
        const qint64 recorded =
            SettingsFile(*m_home).value(line("download/bytesReceived")).toLongLong();
        QVERIFY2(recorded > 0 && recorded <= kept, "more was recorded than is there");
        const QByteArray piece = contentOf(file);
        QCOMPARE(piece, Server::generatedBytes(1, 0, piece.size()));
        QCOMPARE(SettingsFile(*m_home).requests().size(), 1);
    }
    ChildProgram last(QCoreApplication::applicationFilePath(), engineChildArguments(*m_home));

    QCOMPARE(last.waitForFinished(), 0);
    QVERIFY(isGenerated(file, 1, Size));
    QCOMPARE(SettingsFile(*m_home).requests().size(), 0);
    QStringList ranges = rangesOf(server);
    QCOMPARE(ranges.size(), 7);
    QCOMPARE(ranges.count(line("bytes=0-")), 1);
}

void HttpResumeTest::keepsAPartialTransferWhenItIsSuspended()
{
    Server server;
    server.add("/a", bytes(FileSize), {Server::StallAfter(1000), Server::Whole()});
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    const QString file = engine.download(server.url("/a"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);

    engine.worker->suspend();
    EVENTUALLY(log.count(line("[TRACE] Download is suspended")) == 1);
    EVENTUALLY(server.openConnections() == 0);
    QCOMPARE(contentOf(file), bytes(1000));
    QCOMPARE(engine.worker->getRequestQueue()->snapshot().size(), 1);
    QCOMPARE(savedRecord().bytesReceived, 1000);
    QCOMPARE(server.requestCount(), 1);
    engine.worker->resume();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(FileSize));
    QCOMPARE(rangesOf(server), QStringList({line("bytes=0-"), line("bytes=1000-")}));
    QCOMPARE(engine.error.count(), 0);
}

void HttpResumeTest::aServerThatGoesAfterASuspensionIsNoFailure()
{
    Server server;
    server.add("/a", bytes(FileSize), {Server::StallAfter(1000), Server::Whole()});
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    const QString file = engine.download(server.url("/a"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);
    // Told while the suspension is being made: the worker thread has not looked at it yet.
    bool seen = false;
    const auto goAway = [&](bool suspended) {
        if (!suspended)
            return;
        server.stop();
        // Not the end of the reply: that is only heard of if it comes together with the error.
        const QString ended = line("[TRACE] Item downloaded. Exiting waiting loop...");
        seen = QTest::qWaitFor([&] { return log.contains(ended); }, 60000);
    };
    QObject::connect(engine.manager(), &DownloadManager::notifySuspended, engine.manager(), goAway,
                     Qt::DirectConnection);

    engine.worker->suspend();

    QVERIFY(seen);
    EVENTUALLY(log.contains(line("Download is suspended")));
    QCOMPARE(contentOf(file), bytes(1000));
    server.start();
    engine.worker->resume();
    EVENTUALLY(engine.isIdle());
    EVENTUALLY(engine.finished.count() + engine.error.count() == 1);
    QCOMPARE(engine.error.count(), 0);
    QCOMPARE(contentOf(file), bytes(FileSize));
    QCOMPARE(rangesOf(server), QStringList({line("bytes=0-"), line("bytes=1000-")}));
}

void HttpResumeTest::losesNothingOfADripWhenItIsSuspended()
{
    Server server;
    server.add("/a", bytes(FileSize), {Server::Drip(10, 1), Server::Drip(10, 1), Server::Whole()});
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    const QString file = engine.download(server.url("/a"));

    for (int times = 1; times <= 2; ++times) {
        const qint64 before = QFileInfo(file).size();
        EVENTUALLY(QFileInfo(file).size() > before + 200);
        engine.worker->suspend();
        EVENTUALLY(log.count(line("[TRACE] Download is suspended")) == times);
        EVENTUALLY(savedRecord().bytesReceived == QFileInfo(file).size());
        QCOMPARE(contentOf(file), bytes(int(QFileInfo(file).size())));
        engine.worker->resume();
    }

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(FileSize));
}

void HttpResumeTest::keepsAPartialTransferForTheNextRunWhenItExits()
{
    Server server;
    server.add("/a", bytes(FileSize), {Server::StallAfter(1000), Server::Whole()});
    const QString file = TestEngine::saveFile(server.url("/a"));
    {
        const LogCatcher log(L::Trace);
        TestEngine engine;
        engine.start();
        engine.download(server.url("/a"));
        EVENTUALLY(savedRecord().bytesReceived == 1000);
        QElapsedTimer clock;
        clock.start();

        engine.stop();

        QVERIFY2(clock.elapsed() < 4000, "it should not wait for the heartbeat");
        const QStringList lines = log.textsWithout(line("DownloadManagerIface"));
        const int seen = int(lines.indexOf(line("[TRACE] Exit received. Suspending...")));
        QCOMPARE(lines.mid(seen + 1, 5),
                 QStringList({line("[INFO] void DownloadManager::suspend(SuspensionCause)"),
                              line("[INFO] Suspending... Cause: 2"),
                              line("[TRACE] Item downloaded. Exiting waiting loop..."),
                              line("[TRACE] Checking download state..."),
                              line("[TRACE] Download is suspended")}));
    }
    QCOMPARE(contentOf(file), bytes(1000));
    QCOMPARE(SettingsFile(*m_home).requests().size(), 1);
    QVERIFY(!SettingsFile(*m_home).value(line("isSuspended")).toBool());

    TestEngine engine;
    engine.start();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(FileSize));
    QCOMPARE(rangesOf(server), QStringList({line("bytes=0-"), line("bytes=1000-")}));
}

void HttpResumeTest::tellsTheEndOnceThoughASuspensionCameWithIt_data()
{
    QTest::addColumn<int>("status");

    QTest::newRow("a good end") << 0;
    QTest::newRow("a failure") << 404;
}

void HttpResumeTest::tellsTheEndOnceThoughASuspensionCameWithIt()
{
    QFETCH(int, status);
    Server server;
    server.add("/a", bytes(100), status == 0 ? Server::Whole() : Server::Status(status));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.startOffline();
    DownloadManager *manager = engine.manager();
    const auto suspend = [manager] { manager->suspend(); };
    QObject::connect(manager, &DownloadManager::finished, manager, suspend, Qt::DirectConnection);
    QObject::connect(manager, &DownloadManager::error, manager, suspend, Qt::DirectConnection);
    engine.goOnline();
    const QString file = engine.download(server.url("/a"));
    EVENTUALLY(log.count(line("[TRACE] Download is suspended")) == 1);
    QCOMPARE(engine.worker->getRequestQueue()->snapshot().size(), 1);

    engine.worker->resume();

    EVENTUALLY(engine.isIdle());
    EVENTUALLY(engine.finished.count() + engine.error.count() == 1);
    engine.stop();
    QCOMPARE(engine.finished.count() + engine.error.count(), 1);
    QCOMPARE(server.requestCount(), 1);
    QCOMPARE(QFile::exists(file), status == 0);
}

int main(int argc, char **argv)
{
    if (isEngineChild(argc, argv))
        return runEngineChild(argc, argv);
    QCoreApplication app(argc, argv);
    HttpResumeTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_httpresume.moc"
