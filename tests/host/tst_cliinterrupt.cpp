// SPDX-License-Identifier: MIT
// Programs that are stopped, and programs side by side.
#include "mapsprogram.h"
#include "testutils/archivebuilder.h"
#include "testutils/httptestserver.h"
#include <csignal>
#include <QtTest>

class CliInterruptTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { maps.reset(); }

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

void CliInterruptTest::init()
{
    maps = std::make_unique<MapsProgram>();
    maps->addEurope();
}

void CliInterruptTest::ctrlCStopsAndResumeGoesOn_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void CliInterruptTest::ctrlCStopsAndResumeGoesOn()
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

void CliInterruptTest::ctrlCDoesNotReachTheCopy()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    // On a terminal Ctrl-C goes to all programs of the job, the copy too.
    maps->replaceTool(QStringLiteral("cp"), "kill -INT $$\nexec /bin/cp \"$@\"\n");

    QCOMPARE(maps->run(words("install FI")).code, 0);

    QCOMPARE(maps->tileDifference(maps->content.tiles(QStringLiteral("FI"))), QString());
}

void CliInterruptTest::ctrlCDuringTheMoveLetsItEnd()
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

void CliInterruptTest::aCopyThatOutlivesItsProgramIsWaitedFor()
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

void CliInterruptTest::aSecondInstallGoesOnWithTheFirst()
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

void CliInterruptTest::cancelGivesUpWhatIsPending()
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

void CliInterruptTest::cancelOfOneLeavesTheOther()
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

void CliInterruptTest::aSilentServerEndsTheInstall()
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

void CliInterruptTest::twoProgramsDoNotWorkOnOneDataFolder()
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

void CliInterruptTest::twoDataFoldersDoNotDisturbEachOther()
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

void CliInterruptTest::everythingOfADataSetLiesInItsFolder()
{
    QCOMPARE(maps->run(words("refresh")).code, 0);
    QCOMPARE(maps->run(words("install FI")).code, 0);

    QVERIFY(QFile::exists(maps->homeFolder() + QLatin1String("/.config/vexa/vexa.conf")));
    QVERIFY(QFile::exists(maps->engineFolder() + QLatin1String("/installs.json")));
    QVERIFY(!QFile::exists(maps->scratchPath(QStringLiteral("home"))));
}

void CliInterruptTest::theServerComesFromTheApplicationSettings()
{
    const QString settings = maps->scratchPath(QStringLiteral("home/.config/Orvel/Maps.conf"));
    TestFile::write(settings, "[vexa]\nvexaBaseURI=" + maps->baseUri.toUtf8() + "\n");

    const ProgramRun run = maps->runRaw(
        QStringList {QStringLiteral("--data-dir"), maps->dataFolder()} + words("refresh"));

    QCOMPARE(run.code, 0);
}

QTEST_GUILESS_MAIN(CliInterruptTest)
#include "tst_cliinterrupt.moc"
