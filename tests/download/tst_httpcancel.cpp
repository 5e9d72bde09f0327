// SPDX-License-Identifier: MIT
#include "download/settingsfile.h"
#include "download/testengine.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QTest>

using Server = HttpTestServer;

namespace {

QString line(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray bytes(int size, quint32 seed = 1)
{
    return Server::generatedBytes(seed, 0, size);
}

} // namespace

/** Cancelling: before, while, between and just after the attempts of a transfer. */
class HttpCancelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void discardsARunningTransfer_data();
    void discardsARunningTransfer();
    void leavesTheRunningTransferAloneIfAnotherIsCancelled();
    void discardsASuspendedTransferAndResumes();
    void discardsATransferThatCouldNotBegin();
    void discardsAnInterruptedTransferByItself_data();
    void discardsAnInterruptedTransferByItself();
    void discardsATransferThatHasJustEnded_data();
    void discardsATransferThatHasJustEnded();
    void clearsTheDiskThoughTheLoopSleeps();
    void doesNotHitTheNextRequest();
    void startsAnewWhenItIsAskedForAgain();
    void saysWhenTheFileCannotBeRemoved();

private:
    bool isRecordEmpty() const;

    std::unique_ptr<TemporaryHome> m_home;
};

void HttpCancelTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void HttpCancelTest::cleanup()
{
    m_home.reset();
}

bool HttpCancelTest::isRecordEmpty() const
{
    const SettingsFile settings(*m_home);
    return settings.value(line("download/url")).toString().isEmpty()
        && settings.value(line("download/fileName")).toString().isEmpty()
        && settings.value(line("download/bytesReceived")).toLongLong() == 0
        && settings.value(line("download/bytesTotal")).toLongLong() == 0
        && settings.value(line("download/downloadType")).toLongLong() == 0;
}

void HttpCancelTest::discardsARunningTransfer_data()
{
    QTest::addColumn<bool>("all");

    QTest::newRow("by its address") << false;
    QTest::newRow("with all others") << true;
}

void HttpCancelTest::discardsARunningTransfer()
{
    QFETCH(bool, all);
    Server server;
    server.add("/a", bytes(5000), Server::StallAfter(1000));
    server.add("/b", bytes(3000, 2));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    const QString a = engine.download(server.url("/a"));
    engine.worker->enqueueRequest(
        Request(line("region"), MoveRequest, QStringList({a, a}), server.url("/a")));
    const QString b = engine.download(server.url("/b"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);

    engine.worker->cancel(all ? QString() : server.url("/a"));

    EVENTUALLY(engine.isIdle());
    EVENTUALLY(log.count(line("[TRACE] Download is canceled")) == 1);
    EVENTUALLY(!QFile::exists(a));
    EVENTUALLY(engine.finished.count() == (all ? 0 : 1));
    engine.stop();
    QVERIFY(isRecordEmpty());
    QCOMPARE(engine.error.count(), 0);
    QCOMPARE(QFile::exists(b), !all);
    if (!all)
        QCOMPARE(contentOf(b), bytes(3000, 2));
    const QStringList lines = log.texts();
    const int seen = int(lines.indexOf(line("[TRACE] Download is canceled")));
    QCOMPARE(lines.at(seen - 1), line("[TRACE] Checking download state..."));
    QCOMPARE(lines.at(seen + 1), line("[TRACE] Removing the file"));
    QVERIFY(!log.contains(line("Failed to remove file")));
    QCOMPARE(server.requestCount("/a"), 1);
}

void HttpCancelTest::leavesTheRunningTransferAloneIfAnotherIsCancelled()
{
    Server server;
    server.add("/a", bytes(5000), Server::StallAfter(1000));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    const QString a = engine.download(server.url("/a"));
    engine.download(server.url("/b"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);

    engine.worker->cancel(server.url("/b"));
    engine.worker->cancel(server.url("/never queued"));
    QCOMPARE(engine.worker->getRequestQueue()->snapshot().size(), 1);
    server.resumeStalled();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(a), bytes(5000));
    QCOMPARE(server.requestCount(), 1);
    QVERIFY(!log.contains(line("Download is canceled")));
}

void HttpCancelTest::discardsASuspendedTransferAndResumes()
{
    Server server;
    server.add("/a", bytes(5000), Server::StallAfter(1000));
    server.add("/b", bytes(3000, 2));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    const QString a = engine.download(server.url("/a"));
    const QString b = engine.download(server.url("/b"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);
    engine.worker->suspend();
    EVENTUALLY(log.contains(line("Download is suspended")));

    engine.worker->cancel(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QVERIFY(!QFile::exists(a));
    QCOMPARE(contentOf(b), bytes(3000, 2));
    QVERIFY(!engine.manager()->suspended());
}

void HttpCancelTest::discardsATransferThatCouldNotBegin()
{
    Server server;
    server.add("/b", bytes(3000, 2));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    const QString a = TestEngine::saveFile(server.url("/a"));
    QVERIFY(QDir().mkpath(a)); // A folder in the file's place.
    engine.start();
    engine.download(server.url("/a"));
    const QString b = engine.download(server.url("/b"));
    EVENTUALLY(log.contains(line("ERROR: Problem opening save file")));

    engine.worker->cancel(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(b), bytes(3000, 2));
    QVERIFY(QFileInfo(a).isDir());
    engine.stop();
    QVERIFY(isRecordEmpty());
    QCOMPARE(server.requestCount(), 1);
}

void HttpCancelTest::discardsAnInterruptedTransferByItself_data()
{
    QTest::addColumn<QString>("cancelled");
    QTest::addColumn<bool>("discarded");
    QTest::addColumn<int>("left");

    QTest::newRow("by its address") << line("http://h/a") << true << 0;
    QTest::newRow("with all others") << QString() << true << 0;
    QTest::newRow("not by another address") << line("http://h/b") << false << 1;
}

// No loop runs here, as between two turns of it.
void HttpCancelTest::discardsAnInterruptedTransferByItself()
{
    QFETCH(QString, cancelled);
    QFETCH(bool, discarded);
    QFETCH(int, left);
    const QString url = line("http://h/a");
    const QString file = TestEngine::saveFile(url);
    writeFile(file, bytes(1000));
    saveEarlierRun(url, file, 1000, 5000);
    RequestQueue<Request> queue(nullptr);
    DownloadManager manager(&queue, nullptr);

    manager.cancel(cancelled);

    QCOMPARE(QFile::exists(file), !discarded);
    QCOMPARE(isRecordEmpty(), discarded);
    QCOMPARE(SettingsFile(*m_home).requests().size(), left);
    manager.saveState();
    QCOMPARE(isRecordEmpty(), discarded);
}

void HttpCancelTest::discardsATransferThatHasJustEnded_data()
{
    QTest::addColumn<int>("status");

    QTest::newRow("well") << 0;
    QTest::newRow("badly") << 404;
}

void HttpCancelTest::discardsATransferThatHasJustEnded()
{
    QFETCH(int, status);
    Server server;
    server.add("/a", bytes(100), status == 0 ? Server::Whole() : Server::Status(status));
    server.add("/b", bytes(3000, 2));
    TestEngine engine;
    engine.startOffline();
    DownloadManager *manager = engine.manager();
    const QString url = server.url("/a");
    const auto cancel = [manager, url] { manager->cancel(url); };
    QObject::connect(manager, &DownloadManager::finished, manager, cancel, Qt::DirectConnection);
    QObject::connect(manager, &DownloadManager::error, manager, cancel, Qt::DirectConnection);
    const QString a = engine.download(url);
    engine.worker->enqueueRequest(Request(line("region"), MoveRequest, QStringList({a, a}), url));
    const QString b = engine.download(server.url("/b"));
    engine.goOnline();

    EVENTUALLY(engine.isIdle());
    EVENTUALLY(engine.finished.count() + engine.error.count() == 2);
    engine.stop();
    QVERIFY(!QFile::exists(a));
    QCOMPARE(contentOf(b), bytes(3000, 2));
    QVERIFY(isRecordEmpty());
}

void HttpCancelTest::clearsTheDiskThoughTheLoopSleeps()
{
    Server server;
    server.add("/a", bytes(5000), Server::StallAfter(1000));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    const QString a = engine.download(server.url("/a"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);

    engine.worker->cancel(server.url("/a"));

    EVENTUALLY(log.contains(line("Queue empty. Sleeping ...")));
    EVENTUALLY(isRecordEmpty());
    QVERIFY(!QFile::exists(a));
    QVERIFY(SettingsFile(*m_home).requests().isEmpty());
    QVERIFY(server.openConnections() == 0
            || QTest::qWaitFor([&] { return server.openConnections() == 0; }, 60000));
}

void HttpCancelTest::doesNotHitTheNextRequest()
{
    Server server;
    server.add("/b", bytes(3000, 2));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    // A step that does not look for cancels, executing again and again.
    engine.worker->enqueueRequest(Request(line("x"), 5, QVariant(), line("http://h/x")));
    const QString b = engine.download(server.url("/b"));
    engine.start();
    EVENTUALLY(log.contains(line("DownloadManager::saveState()")));

    engine.worker->cancel(line("http://h/x"));

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(b), bytes(3000, 2));
    QVERIFY(!log.contains(line("Download is canceled")));
    QCOMPARE(server.requestCount(), 1);
}

void HttpCancelTest::startsAnewWhenItIsAskedForAgain()
{
    Server server;
    server.add("/a", bytes(5000), {Server::StallAfter(1000), Server::Whole()});
    TestEngine engine;
    engine.start();
    engine.download(server.url("/a"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);

    engine.worker->cancel(server.url("/a"));
    const QString a = engine.download(server.url("/a"));

    EVENTUALLY(engine.finished.count() == 1);
    EVENTUALLY(engine.isIdle());
    QCOMPARE(contentOf(a), bytes(5000));
    QCOMPARE(server.request(1).header("Range"), QByteArray("bytes=0-"));
}

void HttpCancelTest::saysWhenTheFileCannotBeRemoved()
{
    Server server;
    server.add("/a", bytes(5000), Server::StallAfter(1000));
    const LogCatcher log(L::Trace);
    TestEngine engine;
    engine.start();
    const QString a = engine.download(server.url("/a"));
    EVENTUALLY(savedRecord().bytesReceived == 1000);
    QVERIFY(QFile::remove(a));

    engine.worker->cancel(QString());

    EVENTUALLY(log.count(line("[TRACE] Failed to remove file: ") + a) == 1);
    EVENTUALLY(engine.isIdle());
}

QTEST_GUILESS_MAIN(HttpCancelTest)
#include "tst_httpcancel.moc"
