// SPDX-License-Identifier: MIT
#include "mapsprogram.h"
#include "testutils/archivebuilder.h"
#include "testutils/httptestserver.h"
#include <csignal>
#include <pty.h>
#include <QSettings>
#include <QtTest>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int MiB = 1024 * 1024;

Tiles tilesOf(std::initializer_list<const char *> names)
{
    Tiles tiles;
    for (const char *name : names)
        tiles.insert(QLatin1String(name), TestContent::tile(QLatin1String(name)));
    return tiles;
}

QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

class CliTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { maps.reset(); }

    void helpShowsCommandsExamplesAndExitCodes();
    void everyCommandHasHelpWithExamples_data();
    void everyCommandHasHelpWithExamples();
    void versionIsShown();
    void aWrongCommandLineIsAUsageError_data();
    void aWrongCommandLineIsAUsageError();

    void refreshAdoptsTheServersVersion();
    void refreshAgainRenewsTheSameVersion();
    void refreshKeepsTheVersionOfInstalledRegions();
    void refreshWithoutNetworkFailsAtOnce();
    void refreshGivesUpOnASilentServer();
    void refreshWaitsForPendingInstalls();

    void listShowsTheSortedTree();
    void listSearchesAndFilters();
    void listWithoutACatalogueSaysWhatToDo();
    void infoShowsARegionByIdOrName();
    void anAmbiguousNameIsRefused();
    void unknownRegionsHaveTheirOwnExitCode_data();
    void unknownRegionsHaveTheirOwnExitCode();

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

    void ctrlCStopsAndResumeGoesOn_data();
    void ctrlCStopsAndResumeGoesOn();
    void ctrlCDoesNotReachTheCopy();
    void ctrlCDuringTheMoveLetsItEnd();
    void aCopyThatOutlivesItsProgramIsWaitedFor();
    void aSecondInstallGoesOnWithTheFirst();
    void cancelGivesUpWhatIsPending();
    void cancelOfOneLeavesTheOther();
    void aSilentServerEndsTheInstall();

    void twoProgramsDoNotWorkOnOneDataFolder();
    void twoDataFoldersDoNotDisturbEachOther();
    void everythingOfADataSetLiesInItsFolder();
    void theServerComesFromTheApplicationSettings();

private:
    std::unique_ptr<MapsProgram> maps;
};

void CliTest::init()
{
    maps = std::make_unique<MapsProgram>();
    TestContent &content = maps->content;
    content.addLink(QStringLiteral("EU"), QStringLiteral("Europe"),
                    QStringLiteral("archives/EU.zip"));
    content.addRegion(QStringLiteral("SE"), QStringLiteral("Sweden"),
                      tilesOf({"0/2/b.cdt", "5/5/border.cdt"}), QStringLiteral("SE.tar.gz"),
                      QStringLiteral("EU"));
    content.addRegion(QStringLiteral("FI"), QStringLiteral("Finland"),
                      tilesOf({"0/1/a.cdt", "5/5/border.cdt"}), QString(), QStringLiteral("EU"));
    content.addLink(QStringLiteral("AX"), QStringLiteral("Åland"),
                    QStringLiteral("archives/AX.zip"), QStringLiteral("FI"));
    content.publish(QStringLiteral("26.11.21.00"));
}

void CliTest::helpShowsCommandsExamplesAndExitCodes()
{
    const ProgramRun run = maps->runRaw({QStringLiteral("--help")});

    QCOMPARE(run.code, 0);
    for (const char *text : {"refresh", "list", "info", "install", "resume", "remove", "status",
                             "cancel", "Examples:", "Exit codes:", "130"})
        QVERIFY2(run.out.contains(text), text);
    QVERIFY(run.err.isEmpty());
}

void CliTest::everyCommandHasHelpWithExamples_data()
{
    QTest::addColumn<QString>("command");
    for (const char *name :
         {"refresh", "list", "info", "install", "resume", "remove", "status", "cancel"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void CliTest::everyCommandHasHelpWithExamples()
{
    QFETCH(QString, command);

    const ProgramRun run = maps->runRaw({command, QStringLiteral("--help")});

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.startsWith("Usage: vexa-maps " + command.toUtf8() + " [options]"));
    QVERIFY(run.out.contains("Examples:\n  vexa-maps " + command.toUtf8()));
    QVERIFY(run.out.contains("--data-dir"));
    QCOMPARE(maps->runRaw({QStringLiteral("help"), command}).out, run.out);
}

void CliTest::versionIsShown()
{
    const ProgramRun run = maps->runRaw({QStringLiteral("--version")});

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.startsWith("vexa-maps "));
}

void CliTest::aWrongCommandLineIsAUsageError_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("no command") << QStringList();
    QTest::newRow("unknown command") << words("fly");
    QTest::newRow("help for an unknown command") << words("help fly");
    QTest::newRow("unknown option before the command") << words("--wings list");
    QTest::newRow("unknown option behind the command") << words("list --wings");
    QTest::newRow("install without a region") << words("install");
    QTest::newRow("info with two regions") << words("info FI SE");
    QTest::newRow("refresh with an argument") << words("refresh now");
    QTest::newRow("address without a scheme") << words("--base-uri localhost/map5 list");
    QTest::newRow("address of a file") << words("--base-uri file:///tmp/ list");
    QTest::newRow("timeout that is no number") << words("refresh --timeout soon");
    QTest::newRow("timeout of nothing") << words("refresh --timeout 0");
    QTest::newRow("data folder in a file") << words("--data-dir /dev/null/x list");
}

void CliTest::aWrongCommandLineIsAUsageError()
{
    QFETCH(QStringList, arguments);

    const ProgramRun run = maps->runRaw(arguments);

    QCOMPARE(run.code, 2);
    QVERIFY(run.out.isEmpty());
    QVERIFY(run.err.startsWith("vexa-maps: "));
    QVERIFY(run.err.contains("--help"));
}

void CliTest::refreshAdoptsTheServersVersion()
{
    const ProgramRun run = maps->run(words("refresh --json"));

    QCOMPARE(run.code, 0);
    QCOMPARE(run.object().value(QLatin1String("result")).toString(), QStringLiteral("adopted"));
    QVERIFY(TestFile::read(maps->catalogFolder() + QLatin1String("/content.xml"))
                .contains("26.11.21.00"));
    QVERIFY(!QFile::exists(maps->catalogFolder() + QLatin1String("/incoming")));
}

void CliTest::refreshAgainRenewsTheSameVersion()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    maps->content.addLink(QStringLiteral("NO"), QStringLiteral("Norway"), QStringLiteral("NO.zip"));
    maps->content.publish(QStringLiteral("26.11.21.00"));

    const ProgramRun run = maps->run(words("refresh"));

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.contains("up to date"));
    QCOMPARE(maps->run(words("info NO")).code, 0);
}

void CliTest::refreshKeepsTheVersionOfInstalledRegions()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install FI")).code, 0);
    maps->content.publish(QStringLiteral("26.12.24.00"));

    const ProgramRun run = maps->run(words("refresh"));

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.contains("26.12.24.00"));
    QCOMPARE(
        maps->run(words("status --json")).object().value(QLatin1String("mapsVersion")).toString(),
        QStringLiteral("26.11.21.00"));
    QCOMPARE(maps->installedIds(), QStringList {QStringLiteral("FI")});
}

void CliTest::refreshWithoutNetworkFailsAtOnce()
{
    maps->server.stop();

    const ProgramRun run = maps->run(words("refresh"));

    QCOMPARE(run.code, 4);
    QVERIFY(run.err.contains("cannot be reached"));
    QVERIFY(run.out.isEmpty());
}

void CliTest::refreshGivesUpOnASilentServer()
{
    HttpTestServer silent;
    silent.add("/map5/version.txt", QByteArray("1"), HttpTestServer::SilentAccept());
    maps->baseUri = silent.url("/map5/");

    const ProgramRun run = maps->run(words("refresh --timeout 1"));

    QCOMPARE(run.code, 4);
    QVERIFY(run.err.contains("silent"));
    QVERIFY(maps->run(words("status --json"))
                .object()
                .value(QLatin1String("queue"))
                .toArray()
                .isEmpty());
}

void CliTest::refreshWaitsForPendingInstalls()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    HttpTestServer silent;
    silent.add("/archives/FI.zip", QByteArray("1"), HttpTestServer::SilentAccept());
    maps->baseUri = silent.url("/");
    QCOMPARE(maps->run(words("install FI --timeout 1")).code, 4);

    const ProgramRun run = maps->run(words("refresh"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("pending"));
}

void CliTest::listShowsTheSortedTree()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install SE")).code, 0);

    const ProgramRun run = maps->run(words("list"));

    QCOMPARE(run.code, 0);
    const QList<QByteArray> lines = run.out.split('\n');
    QVERIFY(lines.at(0).startsWith("  Europe in 001"));
    QVERIFY(lines.at(1).startsWith("    Finland in 001"));
    QVERIFY(lines.at(2).startsWith("      Åland in 001"));
    QVERIFY(lines.at(3).startsWith("*   Sweden in 001"));
    QVERIFY(lines.at(3).endsWith("  SE"));
    QVERIFY(lines.at(4).startsWith("4 regions"));
}

void CliTest::listSearchesAndFilters()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install SE")).code, 0);

    const QJsonArray found = maps->run(words("list --search åLAND --json")).array();
    QCOMPARE(found.size(), 1);
    QCOMPARE(found.at(0).toObject().value(QLatin1String("id")).toString(), QStringLiteral("AX"));
    QCOMPARE(found.at(0).toObject().value(QLatin1String("depth")).toInt(), 2);
    QCOMPARE(found.at(0).toObject().value(QLatin1String("parent")).toString(),
             QStringLiteral("FI"));
    // The way to what was found is shown, and nothing beside it.
    const ProgramRun tree = maps->run(words("list --search åland"));
    QVERIFY(tree.out.contains("Europe") && tree.out.contains("Finland"));
    QVERIFY(!tree.out.contains("Sweden"));
    QCOMPARE(maps->installedIds(), QStringList {QStringLiteral("SE")});
    QVERIFY(maps->run(words("list --search nowhere")).out.contains("No region matches"));
}

void CliTest::listWithoutACatalogueSaysWhatToDo()
{
    const ProgramRun run = maps->run(words("list"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("vexa-maps refresh"));
    QCOMPARE(maps->run(words("list --json")).array().size(), 0);
}

void CliTest::infoShowsARegionByIdOrName()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);

    for (const QString &name : {QStringLiteral("FI"), QStringLiteral("fi"),
                                QStringLiteral("Finland"), QStringLiteral("finland in 001")}) {
        const ProgramRun run = maps->run({QStringLiteral("info"), name, QStringLiteral("--json")});
        QCOMPARE(run.code, 0);
        QCOMPARE(run.object().value(QLatin1String("id")).toString(), QStringLiteral("FI"));
    }
    const QJsonObject info = maps->run(words("info FI --json")).object();
    QCOMPARE(info.value(QLatin1String("url")).toString(),
             maps->server.url("/map5/archives/FI.zip"));
    QCOMPARE(qint64(info.value(QLatin1String("downloadSize")).toDouble()),
             QFileInfo(maps->content.archivePath(QStringLiteral("FI"))).size());
    QCOMPARE(info.value(QLatin1String("children")).toArray().size(), 1);
    QVERIFY(maps->run(words("info FI")).out.contains("Finland"));
}

void CliTest::anAmbiguousNameIsRefused()
{
    maps->content.addLink(QStringLiteral("GE1"), QStringLiteral("Georgia"),
                          QStringLiteral("1.zip"));
    maps->content.addLink(QStringLiteral("GE2"), QStringLiteral("Georgia"),
                          QStringLiteral("2.zip"));
    maps->content.publish(QStringLiteral("26.11.21.00"));
    QCOMPARE(maps->run(words("refresh")).code, 0);

    const ProgramRun run = maps->run(words("info Georgia"));

    QCOMPARE(run.code, 3);
    QVERIFY(run.err.contains("GE1") && run.err.contains("GE2"));
}

void CliTest::unknownRegionsHaveTheirOwnExitCode_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::newRow("info") << words("info XX");
    QTest::newRow("install") << words("install FI XX");
    QTest::newRow("remove") << words("remove XX");
    QTest::newRow("cancel") << words("cancel XX");
}

void CliTest::unknownRegionsHaveTheirOwnExitCode()
{
    QFETCH(QStringList, command);
    QCOMPARE(maps->run(words("refresh")).code, 0);

    const ProgramRun run = maps->run(command);

    QCOMPARE(run.code, 3);
    QVERIFY(run.err.contains("XX"));
    QVERIFY(maps->installedIds().isEmpty()); // nothing is begun when one is wrong
}

void CliTest::installsSeveralRegions()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);

    QCOMPARE(maps->run(words("install Finland SE FI")).code, 0);

    QCOMPARE(maps->installedIds(), QStringList({QStringLiteral("FI"), QStringLiteral("SE")}));
    QCOMPARE(maps->tileDifference(maps->content.tiles(QStringLiteral("FI"))
                                  + maps->content.tiles(QStringLiteral("SE"))),
             QString());
}

void CliTest::installSaysInJsonWhatBecameOfEach()
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

void CliTest::installOfWhatTheServerLacksIsANetworkFailure()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);

    const ProgramRun run = maps->run(words("install AX"));

    QCOMPARE(run.code, 4);
    QVERIFY(run.err.contains("could not be downloaded"));
    QVERIFY(maps->installedIds().isEmpty());
}

void CliTest::installOfADamagedArchiveIsAFailure()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    TestFile::write(maps->content.archivePath(QStringLiteral("FI")), "no archive");

    const ProgramRun run = maps->run(words("install FI"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("damaged"));
    QCOMPARE(maps->tileDifference({}), QString());
}

void CliTest::installTellsItsStepsInPlainLines()
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

void CliTest::installDrawsABarOnATerminal()
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
    QCOMPARE(WEXITSTATUS(status), 1); // noise is no archive
}

void CliTest::quietWritesNothingWhenAllIsWell()
{
    QVERIFY(maps->run(words("refresh -q")).out.isEmpty());
    const ProgramRun run = maps->run(words("install FI --quiet"));

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.isEmpty() && run.err.isEmpty());
    QVERIFY(maps->run(words("list -q")).out.contains("FI"));
    // The other end: the library's own lines.
    QVERIFY(maps->run(words("refresh -v -v")).err.contains("[INFO]"));
}

void CliTest::removeSaysWhatIsFreedAndKept()
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

void CliTest::removeOfWhatIsNotInstalledFails()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install FI")).code, 0);

    const ProgramRun run = maps->run(words("remove FI SE"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("SE is not installed"));
    QCOMPARE(maps->installedIds(), QStringList {QStringLiteral("FI")}); // all or none
}

void CliTest::statusTellsVersionsSpaceAndPending()
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

void CliTest::ctrlCStopsAndResumeGoesOn_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void CliTest::ctrlCStopsAndResumeGoesOn()
{
    QFETCH(int, signal);
    QCOMPARE(maps->run(words("refresh")).code, 0);
    const QByteArray archive = TestFile::read(maps->content.archivePath(QStringLiteral("FI")));
    HttpTestServer server;
    server.add("/archives/FI.zip", archive,
               {HttpTestServer::StallAfter(archive.size() / 2), HttpTestServer::Whole()});
    maps->baseUri = server.url("/");
    const QString saveFile = maps->downloadFolder() + QLatin1String("/FI.zip");
    const auto child = maps->start(words("install FI"));
    QVERIFY(child->waitForSize(saveFile, archive.size() / 2));

    child->sendSignal(signal);

    QCOMPARE(child->waitForFinished(), 130);
    QVERIFY(child->errorOutput().contains("Interrupted"));
    QVERIFY(maps->installedIds().isEmpty());
    QCOMPARE(QFileInfo(saveFile).size(), archive.size() / 2);
    QCOMPARE(maps->run(words("resume")).code, 0);
    QCOMPARE(server.request(1).header("Range"),
             "bytes=" + QByteArray::number(archive.size() / 2) + '-');
    QCOMPARE(maps->installedIds(), QStringList {QStringLiteral("FI")});
    QCOMPARE(maps->tileDifference(maps->content.tiles(QStringLiteral("FI"))), QString());
    QVERIFY(maps->run(words("resume")).out.contains("Nothing is pending"));
}

void CliTest::ctrlCDoesNotReachTheCopy()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    // On a terminal Ctrl-C goes to all programs of the job, the copy too.
    maps->replaceTool(QStringLiteral("cp"), "kill -INT $$\nexec /bin/cp \"$@\"\n");

    QCOMPARE(maps->run(words("install FI")).code, 0);

    QCOMPARE(maps->tileDifference(maps->content.tiles(QStringLiteral("FI"))), QString());
}

void CliTest::ctrlCDuringTheMoveLetsItEnd()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    const QString begun = maps->scratchPath(QStringLiteral("begun"));
    const QString go = maps->scratchPath(QStringLiteral("go"));
    maps->replaceTool(QStringLiteral("cp"),
                      "touch " + begun.toUtf8() + "\nwhile [ ! -e " + go.toUtf8()
                          + " ]; do sleep 0.02; done\nexec /bin/cp \"$@\"\n");
    const auto child = maps->start(words("install FI"));
    QVERIFY(child->waitForFile(begun));

    child->sendSignal(SIGINT);
    QVERIFY(child->waitFor([&] { return child->errorOutput().contains("Interrupted"); }));
    TestFile::write(go, QByteArray());

    QCOMPARE(child->waitForFinished(), 130);
    maps->server.stop(); // what is in place is not fetched again
    QCOMPARE(maps->run(words("resume")).code, 0);
    QCOMPARE(maps->installedIds(), QStringList {QStringLiteral("FI")});
    QCOMPARE(maps->tileDifference(maps->content.tiles(QStringLiteral("FI"))), QString());
}

void CliTest::aCopyThatOutlivesItsProgramIsWaitedFor()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    const QString begun = maps->scratchPath(QStringLiteral("begun"));
    const QString go = maps->scratchPath(QStringLiteral("go"));
    maps->replaceTool(QStringLiteral("cp"),
                      "touch " + begun.toUtf8() + "\nwhile [ ! -e " + go.toUtf8()
                          + " ]; do sleep 0.02; done\nexec /bin/cp \"$@\"\n");
    const auto killed = maps->start(words("install FI"));
    QVERIFY(killed->waitForFile(begun));
    killed->kill();

    const auto next = maps->start(words("resume"));
    QVERIFY(!next->waitFor([&] { return !next->output().isEmpty(); }, 500));
    QVERIFY(next->isRunning());
    TestFile::write(go, QByteArray());

    QCOMPARE(next->waitForFinished(), 0);
    QCOMPARE(maps->tileDifference(maps->content.tiles(QStringLiteral("FI"))), QString());
}

void CliTest::aSecondInstallGoesOnWithTheFirst()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    maps->server.stop();
    HttpTestServer silent;
    const QString there = maps->baseUri;
    silent.add("/archives/FI.zip", TestFile::read(maps->content.archivePath(QStringLiteral("FI"))),
               {HttpTestServer::SilentAccept(), HttpTestServer::Whole()});
    maps->baseUri = silent.url("/");
    QCOMPARE(maps->run(words("install FI --timeout 1")).code, 4);
    maps->server.start();
    maps->baseUri = there;

    const ProgramRun run = maps->run(words("install SE"));

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.contains("Going on with what an earlier run left: FI"));
    QCOMPARE(maps->installedIds(), QStringList({QStringLiteral("FI"), QStringLiteral("SE")}));
}

void CliTest::cancelGivesUpWhatIsPending()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    const QByteArray archive = TestFile::read(maps->content.archivePath(QStringLiteral("FI")));
    HttpTestServer server;
    server.add("/archives/FI.zip", archive, HttpTestServer::StallAfter(1000));
    maps->baseUri = server.url("/");
    QCOMPARE(maps->run(words("install FI SE --timeout 1")).code, 4);

    const ProgramRun run = maps->run(words("cancel"));

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.contains("Cancelled FI") && run.out.contains("Cancelled SE"));
    const QJsonObject status = maps->run(words("status --json")).object();
    QVERIFY(status.value(QLatin1String("queue")).toArray().isEmpty());
    QVERIFY(status.value(QLatin1String("pending")).toArray().isEmpty());
    QVERIFY(!QFile::exists(maps->downloadFolder() + QLatin1String("/FI.zip")));
    QVERIFY(maps->run(words("cancel")).out.contains("Nothing is pending"));
}

void CliTest::cancelOfOneLeavesTheOther()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    HttpTestServer server;
    server.add("/archives/FI.zip", QByteArray(5000, 'x'), HttpTestServer::StallAfter(1000));
    const QString there = maps->baseUri;
    maps->baseUri = server.url("/");
    QCOMPARE(maps->run(words("install FI SE --timeout 1")).code, 4);
    maps->baseUri = there;

    QCOMPARE(maps->run(words("cancel FI")).code, 0);

    QCOMPARE(maps->run(words("resume")).code, 0);
    QCOMPARE(maps->installedIds(), QStringList {QStringLiteral("SE")});
    QCOMPARE(maps->tileDifference(maps->content.tiles(QStringLiteral("SE"))), QString());
}

void CliTest::aSilentServerEndsTheInstall()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    HttpTestServer server;
    server.add("/archives/FI.zip", QByteArray(5000, 'x'), HttpTestServer::StallAfter(1000));
    maps->baseUri = server.url("/");

    const ProgramRun run = maps->run(words("install FI --timeout 1"));

    QCOMPARE(run.code, 4);
    QVERIFY(run.err.contains("silent for 1 s"));
    QVERIFY(run.err.contains("vexa-maps resume"));
}

void CliTest::twoProgramsDoNotWorkOnOneDataFolder()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    HttpTestServer server;
    server.add("/archives/FI.zip", QByteArray(5000, 'x'), HttpTestServer::StallAfter(1000));
    maps->baseUri = server.url("/");
    const auto first = maps->start(words("install FI"));
    QVERIFY(first->waitForSize(maps->downloadFolder() + QLatin1String("/FI.zip"), 1000));

    for (const char *command : {"refresh", "install SE", "remove SE", "resume", "cancel"}) {
        const ProgramRun second = maps->run(words(command));
        QCOMPARE(second.code, 5);
        QVERIFY(second.err.contains("at work on this map data"));
    }
    // Looking is allowed, and tells who is at work.
    QVERIFY(maps->run(words("status --json")).object().value(QLatin1String("activeProcess")).toInt()
            > 0);
    QCOMPARE(maps->run(words("list")).code, 0);
    QVERIFY(first->isRunning());
    first->kill();
    QCOMPARE(maps->run(words("cancel")).code, 0); // a dead program's lock is no lock
}

void CliTest::twoDataFoldersDoNotDisturbEachOther()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    HttpTestServer server;
    server.add("/archives/FI.zip", QByteArray(5000, 'x'), HttpTestServer::StallAfter(1000));
    const QString there = maps->baseUri;
    maps->baseUri = server.url("/");
    const auto first = maps->start(words("install FI"));
    QVERIFY(first->waitForSize(maps->downloadFolder() + QLatin1String("/FI.zip"), 1000));
    const QString other = maps->scratchPath(QStringLiteral("other"));
    const QStringList shared {QStringLiteral("--data-dir"), other, QStringLiteral("--base-uri"),
                              there};

    QCOMPARE(maps->runRaw(shared + words("refresh")).code, 0);
    QCOMPARE(maps->runRaw(shared + words("install SE")).code, 0);

    QVERIFY(first->isRunning());
    QCOMPARE(differenceOf(other + QLatin1String("/cities/diskcache"),
                          maps->content.tiles(QStringLiteral("SE"))),
             QString());
    QCOMPARE(maps->tileDifference({}), QString());
}

void CliTest::everythingOfADataSetLiesInItsFolder()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install FI")).code, 0);

    QVERIFY(QFile::exists(maps->homeFolder() + QLatin1String("/.config/vexa/vexa.conf")));
    QVERIFY(QFile::exists(maps->engineFolder() + QLatin1String("/installs.json")));
    QVERIFY(!QFile::exists(maps->scratchPath(QStringLiteral("home"))));
}

void CliTest::theServerComesFromTheApplicationSettings()
{
    const QString settings = maps->scratchPath(QStringLiteral("home/.config/Orvel/Maps.conf"));
    TestFile::write(settings, "[vexa]\nvexaBaseURI=" + maps->baseUri.toUtf8() + "\n");

    const ProgramRun run = maps->runRaw(
        QStringList {QStringLiteral("--data-dir"), maps->dataFolder()} + words("refresh"));

    QCOMPARE(run.code, 0);
}

QTEST_GUILESS_MAIN(CliTest)
#include "tst_cli.moc"
