// SPDX-License-Identifier: MIT
// install, remove and status.
#include "mapsprogram.h"
#include "testutils/archivebuilder.h"
#include "testutils/httptestserver.h"
#include <pty.h>
#include <QtTest>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int MiB = 1024 * 1024;

} // namespace

class CliInstallTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { maps.reset(); }

    void installsSeveralRegions();
    void installSaysInJsonWhatBecameOfEach();
    void installOfWhatTheServerLacksIsANetworkFailure();
    void installOfADamagedArchiveIsAFailure();
    void installTellsItsStepsInPlainLines();
    void installDrawsABarOnATerminal();
    void quietWritesNothingWhenAllIsWell();
    void removeSaysWhatIsFreedAndKept();
    void removeOfWhatIsNotInstalledFails();
    void statusTellsVersionsSpaceAndPending();

private:
    std::unique_ptr<MapsProgram> maps;
};

void CliInstallTest::init()
{
    maps = std::make_unique<MapsProgram>();
    maps->addEurope();
}

void CliInstallTest::installsSeveralRegions()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);

    QCOMPARE(maps->run(words("install Finland SE FI")).code, 0);

    QCOMPARE(maps->installedIds(), QStringList({QStringLiteral("FI"), QStringLiteral("SE")}));
    QCOMPARE(maps->tileDifference(maps->content.tiles(QStringLiteral("FI"))
                                  + maps->content.tiles(QStringLiteral("SE"))),
             QString());
}

void CliInstallTest::installSaysInJsonWhatBecameOfEach()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);

    const ProgramRun run = maps->run(words("install FI AX --json"));

    QCOMPARE(run.code, 4);
    const QJsonArray report = run.array();
    QCOMPARE(report.size(), 2);
    QCOMPARE(report.at(0).toObject().value(QLatin1String("state")).toString(),
             QStringLiteral("installed"));
    QCOMPARE(report.at(1).toObject().value(QLatin1String("state")).toString(),
             QStringLiteral("failed"));
    QVERIFY(!report.at(1).toObject().value(QLatin1String("reason")).toString().isEmpty());
}

void CliInstallTest::installOfWhatTheServerLacksIsANetworkFailure()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);

    const ProgramRun run = maps->run(words("install AX"));

    QCOMPARE(run.code, 4);
    QVERIFY(run.err.contains("could not be downloaded"));
    QVERIFY(maps->installedIds().isEmpty());
}

void CliInstallTest::installOfADamagedArchiveIsAFailure()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    const QString path = maps->content.archivePath(QStringLiteral("FI"));
    TestFile::write(path, QByteArray(int(QFileInfo(path).size()), 'x'));

    const ProgramRun run = maps->run(words("install FI"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("damaged"));
    QCOMPARE(maps->tileDifference({}), QString());
}

void CliInstallTest::installTellsItsStepsInPlainLines()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);

    const ProgramRun run = maps->run(words("install FI"));

    QCOMPARE(run.code, 0);
    const int downloading = int(run.out.indexOf("FI (Finland in 001): Downloading"));
    const int installed = int(run.out.indexOf("FI (Finland in 001): Installed"));
    QVERIFY(downloading >= 0 && installed > downloading);
    QVERIFY(!run.out.contains('\r') && !run.out.contains('\033'));
    QVERIFY(run.err.isEmpty());
}

void CliInstallTest::installDrawsABarOnATerminal()
{
    HttpTestServer slow;
    slow.add("/archives/FI.zip", ArchiveBuilder::noise(1 * MiB),
             HttpTestServer::Drip(32 * 1024, 100));
    QCOMPARE(maps->run(words("refresh")).code, 0);
    maps->baseUri = slow.url("/");
    const QStringList arguments = maps->arguments(words("install FI"));

    std::vector<QByteArray> bytes {VEXA_MAPS_PROGRAM};
    for (const QString &argument : arguments)
        bytes.push_back(argument.toLocal8Bit());
    std::vector<char *> argv;
    for (QByteArray &argument : bytes)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    winsize size {24, 100, 0, 0};
    int terminal = -1;
    const pid_t pid = forkpty(&terminal, nullptr, nullptr, &size);
    if (pid == 0) {
        execv(argv[0], argv.data());
        _exit(127);
    }
    QByteArray drawn;
    char buffer[4096];
    for (;;) {
        const ssize_t count = read(terminal, buffer, sizeof buffer);
        if (count <= 0)
            break; // the program has ended
        drawn.append(buffer, int(count));
    }
    close(terminal);
    int status = 0;
    QCOMPARE(waitpid(pid, &status, 0), pid);

    QVERIFY2(drawn.contains("\r\033[K"), drawn.constData());
    QVERIFY2(drawn.contains("[#"), drawn.constData());
    QVERIFY2(drawn.contains(" MB") && drawn.contains("/s") && drawn.contains(" left"),
             drawn.constData());
    QCOMPARE(WEXITSTATUS(status), 4); // not what the catalogue promises
}

void CliInstallTest::quietWritesNothingWhenAllIsWell()
{
    QVERIFY(maps->run(words("refresh -q")).out.isEmpty());
    const ProgramRun run = maps->run(words("install FI --quiet"));

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.isEmpty() && run.err.isEmpty());
    QVERIFY(maps->run(words("list -q")).out.contains("FI"));
    // The other end: the library's own lines.
    QVERIFY(maps->run(words("refresh -v -v")).err.contains("[INFO]"));
}

void CliInstallTest::removeSaysWhatIsFreedAndKept()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install FI SE")).code, 0);

    const ProgramRun run = maps->run(words("remove Finland --json"));

    QCOMPARE(run.code, 0);
    const QJsonObject report = run.array().first().toObject();
    QCOMPARE(report.value(QLatin1String("freedFiles")).toInt(), 1);
    QCOMPARE(report.value(QLatin1String("freedBytes")).toInt(), 20000);
    QCOMPARE(report.value(QLatin1String("keptFiles")).toInt(), 1);
    QCOMPARE(maps->tileDifference(maps->content.tiles(QStringLiteral("SE"))), QString());
    const ProgramRun last = maps->run(words("remove SE"));
    QVERIFY(last.out.contains("2 tiles"));
    QVERIFY(!last.out.contains("stay"));
    QCOMPARE(maps->tileDifference({}), QString());
}

void CliInstallTest::removeOfWhatIsNotInstalledFails()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install FI")).code, 0);

    const ProgramRun run = maps->run(words("remove FI SE"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("SE is not installed"));
    QCOMPARE(maps->installedIds(), QStringList {QStringLiteral("FI")}); // all or none
}

void CliInstallTest::statusTellsVersionsSpaceAndPending()
{
    QJsonObject status = maps->run(words("status --json")).object();
    QCOMPARE(status.value(QLatin1String("catalogReady")).toBool(), false);
    QVERIFY(maps->run(words("status")).out.contains("vexa-maps refresh"));

    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install SE")).code, 0);
    HttpTestServer silent;
    silent.add("/archives/FI.zip", QByteArray("1"), HttpTestServer::SilentAccept());
    maps->baseUri = silent.url("/");
    QCOMPARE(maps->run(words("install FI --timeout 1")).code, 4);

    status = maps->run(words("status --json")).object();
    QCOMPARE(status.value(QLatin1String("mapsVersion")).toString(), QStringLiteral("26.11.21.00"));
    QVERIFY(status.value(QLatin1String("freeSpace")).toDouble() > 0);
    QCOMPARE(status.value(QLatin1String("installed")).toArray(), QJsonArray {QStringLiteral("SE")});
    QCOMPARE(status.value(QLatin1String("installedSize")).toInt(), 40000);
    QCOMPARE(status.value(QLatin1String("pausedByUser")).toBool(), false);
    const QJsonArray queue = status.value(QLatin1String("queue")).toArray();
    QCOMPARE(queue.size(), 3);
    QCOMPARE(queue.at(0).toObject().value(QLatin1String("step")).toString(),
             QStringLiteral("download"));
    QCOMPARE(queue.at(0).toObject().value(QLatin1String("url")).toString(),
             silent.url("/archives/FI.zip"));
    const QJsonArray pending = status.value(QLatin1String("pending")).toArray();
    QCOMPARE(pending.size(), 1);
    QCOMPARE(pending.at(0).toObject().value(QLatin1String("id")).toString(), QStringLiteral("FI"));
    QVERIFY(maps->run(words("status")).out.contains("Pending installs:\n  FI"));
}

QTEST_GUILESS_MAIN(CliInstallTest)
#include "tst_cliinstall.moc"
