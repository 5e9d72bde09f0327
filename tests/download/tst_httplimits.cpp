// SPDX-License-Identifier: MIT
#include "download/enginechild.h"
#include "download/filesizelimit.h"
#include "download/settingsfile.h"
#include "download/testengine.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <limits>
#include <memory>
#include <QElapsedTimer>
#include <QTest>

using Server = HttpTestServer;

namespace {

constexpr int KiB = 1024;
constexpr int MiB = 1024 * KiB;

QString line(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray bytes(int size)
{
    return Server::generatedBytes(1, 0, size);
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

/** A transfer on a full disk, one that is too fast for it, and what a crash costs it. */
class HttpLimitsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void countsNothingThatCouldNotBeWritten();
    void stopsAtOnceWhileItWaitsForSpace();
    void keepsItsMemorySmallWhenTheServerIsFast();
    void fetchesLittleMoreThanItCanWrite();
    void recordsWhatHasComeWhileMoreComes();
    void recordsTheLastBytesThatCameBeforeTheServerWentSilent();
    void estimatesATimeForAnySizeThatAServerClaims();

private:
    std::unique_ptr<TemporaryHome> m_home;
};

void HttpLimitsTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void HttpLimitsTest::cleanup()
{
    m_home.reset();
}

void HttpLimitsTest::countsNothingThatCouldNotBeWritten()
{
    constexpr qint64 Limit = 256 * KiB;
    Server server;
    server.add("/a", bytes(MiB));
    const LogCatcher log(L::Trace);
    TestEngine engine(200);
    engine.start();
    FileSizeLimit disk(Limit);

    const QString file = engine.download(server.url("/a"));
    const QString failed = line("[ERROR] Could not write to the save file ") + file;
    EVENTUALLY(log.texts().filter(failed).size() >= 2);
    QVERIFY(QFileInfo(file).size() <= Limit);
    QVERIFY(savedRecord().bytesReceived <= Limit);
    QCOMPARE(engine.worker->getRequestQueue()->snapshot().size(), 1);
    disk.lift();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(MiB));
    QCOMPARE(engine.error.count(), 0);
}

void HttpLimitsTest::stopsAtOnceWhileItWaitsForSpace()
{
    Server server;
    server.add("/a", bytes(MiB));
    const LogCatcher log(L::Trace);
    TestEngine engine(60000);
    engine.start();
    const FileSizeLimit disk(256 * KiB);
    const QString file = engine.download(server.url("/a"));
    EVENTUALLY(log.contains(line("Could not write to the save file ")));
    QElapsedTimer clock;
    clock.start();

    engine.stop();

    QVERIFY(clock.elapsed() < 30000);
    QCOMPARE(SettingsFile(*m_home).requests().size(), 1);
    QCOMPARE(SettingsFile(*m_home).value(line("download/bytesReceived")).toLongLong(),
             QFileInfo(file).size());
    QCOMPARE(server.requestCount(), 1);
}

void HttpLimitsTest::estimatesATimeForAnySizeThatAServerClaims()
{
    Server server;
    const qint64 claim = std::numeric_limits<qint64>::max();
    server.add("/a", bytes(1000),
               {Server::WrongRangeTotal(claim) | Server::Drip(1, 50) | Server::StallAfter(400)});
    TestEngine engine;
    engine.start();

    engine.download(server.url("/a"));

    const auto times = [&engine] {
        QList<qint64> all;
        for (const QList<QVariant> &signal : std::as_const(engine.progress))
            all.append(signal.at(5).toLongLong());
        return all;
    };
    EVENTUALLY(times().contains(qint64(1e18)));
    for (const qint64 time : times())
        QVERIFY(time >= 0);
}

void HttpLimitsTest::keepsItsMemorySmallWhenTheServerIsFast()
{
#ifdef VEXA_SANITIZED
    constexpr qint64 LimitKiB = 200 * KiB; // with the checker's own memory
#else
    constexpr qint64 LimitKiB = 56 * KiB;
#endif
    constexpr qint64 Size = 300LL * MiB;
    Server server;
    server.add("/a", Server::Content::generated(1, Size));
    const QString url = server.url("/a");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(line("ASAN_OPTIONS"), line("quarantine_size_mb=1"));
    ChildProgram child(QCoreApplication::applicationFilePath(), engineChildArguments(*m_home, url),
                       environment);

    QCOMPARE(child.waitForFinished(), 0);

    QVERIFY(peakMemoryOf(child) > 0);
    QVERIFY2(peakMemoryOf(child) < LimitKiB, child.output().constData());
    QVERIFY(isGenerated(TestEngine::saveFile(url), 1, Size));
}

// The network's and the kernel's buffers are in it, too, and those may hold 20 MiB.
void HttpLimitsTest::fetchesLittleMoreThanItCanWrite()
{
    constexpr qint64 Size = 300LL * MiB;
    Server server;
    server.add("/a", Server::Content::generated(1, Size));
    TestEngine engine(60000);
    engine.start();
    const QString file = engine.download(server.url("/a"));
    EVENTUALLY(QFileInfo(file).size() > 0);

    const VexaSettings::Locker settings; // the engine needs them to record what it wrote
    qint64 sent = -1;
    while (sent < server.bodyBytesSent(0)) { // until the server gets rid of nothing any more
        sent = server.bodyBytesSent(0);
        QTest::qWait(500);
    }

    QVERIFY(sent - QFileInfo(file).size() < 64 * MiB);
}

void HttpLimitsTest::recordsWhatHasComeWhileMoreComes()
{
    constexpr int Size = 20 * MiB;
    Server server;
    server.add("/a", Server::Content::generated(1, Size), {Server::Drip(1000, 1)});
    TestEngine engine;
    engine.start();
    const SettingsFile settings(*m_home);
    const auto recorded = [&settings] {
        return settings.value(line("download/bytesReceived")).toLongLong();
    };

    engine.download(server.url("/a"));

    for (int times = 0; times < 5; ++times) {
        const qint64 before = recorded();
        EVENTUALLY(recorded() > before);
    }
    QVERIFY(server.bodyBytesSent(0) < Size); // it was still sending
    QCOMPARE(server.requestCount(), 1);
}

void HttpLimitsTest::recordsTheLastBytesThatCameBeforeTheServerWentSilent()
{
    Server server;
    server.add("/a", bytes(MiB), {Server::Drip(1000, 1) | Server::StallAfter(345678)});
    TestEngine engine(60000);
    engine.start();
    const SettingsFile settings(*m_home);

    const QString file = engine.download(server.url("/a"));

    EVENTUALLY(settings.value(line("download/bytesReceived")).toLongLong() == 345678);
    QCOMPARE(contentOf(file), bytes(345678));
    QCOMPARE(server.requestCount(), 1);
    QCOMPARE(server.openConnections(), 1);
}

int main(int argc, char **argv)
{
    if (isEngineChild(argc, argv))
        return runEngineChild(argc, argv);
    QCoreApplication app(argc, argv);
    HttpLimitsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_httplimits.moc"
