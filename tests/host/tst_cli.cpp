// SPDX-License-Identifier: MIT
// The command line itself, and the commands that look.
#include "mapsprogram.h"
#include "testutils/archivebuilder.h"
#include "testutils/httptestserver.h"
#include <QtTest>

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

private:
    std::unique_ptr<MapsProgram> maps;
};

void CliTest::init()
{
    maps = std::make_unique<MapsProgram>();
    maps->addEurope();
}

void CliTest::helpShowsCommandsExamplesAndExitCodes()
{
    const ProgramRun run = maps->runRaw({QStringLiteral("--help")});

    QCOMPARE(run.code, 0);
    for (const char *text :
         {"refresh", "list", "info", "install", "resume", "remove", "status", "cancel", "cities",
          "lint", "report", "Examples:", "Exit codes:", "130"})
        QVERIFY2(run.out.contains(text), text);
    QVERIFY(run.err.isEmpty());
}

void CliTest::everyCommandHasHelpWithExamples_data()
{
    QTest::addColumn<QString>("command");
    for (const char *name : {"refresh", "list", "info", "install", "resume", "remove", "status",
                             "cancel", "cities", "lint", "report"})
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

QTEST_GUILESS_MAIN(CliTest)
#include "tst_cli.moc"
