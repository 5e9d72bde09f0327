// SPDX-License-Identifier: MIT
// vexa-maps update and the way back, as a user and a script see them.
#include "updaterig.h"
#include <pty.h>
#include <QtTest>
#include <sys/wait.h>
#include <unistd.h>

namespace {

const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");

} // namespace

class CliUpdateTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { rig = std::make_unique<UpdateRig>(); }
    void cleanup() { rig.reset(); }

    void bringsAllRegionsToTheNewVersion();
    void keepsVoicesCityIndexAndMosVersion();
    void saysWhenThereIsNothingNew();
    void keepsTheBackupUntilItIsCleared();
    void aBackupOfAnEarlierUpdateStandsAgainstTheNext();
    void goesBackAndForthWithoutADownload();
    void goingBackKeepsTheCityIndexThatWasMadeSince();
    void goingBackTellsOfRegionsThatWouldBeLost();
    void withoutABackupThereIsNoWayBack();
    void refusesWithoutACatalogue();
    void refusesWhileInstallsArePending();
    void whileAnUpdateIsPreparedOthersStepBack();
    void cancelGivesAPreparedUpdateUp();
    void followsWhatTheUserRemovesAndInstallsMeanwhile();
    void beginsAnewForAYetNewerVersion();
    void aVersionThatTheServerTookBackIsGivenUp();
    void aRegionThatTheNewVersionLacksIsNamed();
    void onATerminalItAsksForTheBackup_data();
    void onATerminalItAsksForTheBackup();
    void theOptionsExcludeEachOther_data();
    void theOptionsExcludeEachOther();

private:
    bool installBoth() { return rig->install({Fi, Se}); }
    // Cut short while the second archive is on its way: the first region is in the prepared set.
    bool cutShort();

    std::unique_ptr<UpdateRig> rig;
};

bool CliUpdateTest::cutShort()
{
    rig->publishNext();
    const QString missing = rig->next.archivePath(Se);
    QFile::rename(missing, missing + QLatin1String(".away"));
    const ProgramRun run = rig->run(words("update"));
    QFile::rename(missing + QLatin1String(".away"), missing);
    return run.code == 4;
}

void CliUpdateTest::bringsAllRegionsToTheNewVersion()
{
    QVERIFY(installBoth());
    rig->publishNext();

    const ProgramRun run = rig->run(words("update --json"));

    QVERIFY2(run.code == 0, qPrintable(textOf(run)));
    QCOMPARE(rig->tilesIn(), rig->next.tiles(Fi) + rig->next.tiles(Se));
    QCOMPARE(rig->installedIds(), QStringList({Fi, Se}));
    QCOMPARE(rig->version(), rig->newVersion);
    const QJsonObject result = run.object();
    QCOMPARE(result.value(QLatin1String("result")).toString(), QStringLiteral("updated"));
    QCOMPARE(result.value(QLatin1String("fromVersion")).toString(), rig->oldVersion);
    QCOMPARE(result.value(QLatin1String("toVersion")).toString(), rig->newVersion);
    QCOMPARE(result.value(QLatin1String("regions")).toVariant().toStringList(),
             QStringList({Fi, Se}));
    QVERIFY(result.value(QLatin1String("dropped")).toArray().isEmpty());
    QVERIFY(result.value(QLatin1String("backup")).toBool());
    QVERIFY(result.value(QLatin1String("error")).toString().isEmpty());
    // The new version can be worked with: what it newly has can be installed.
    QCOMPARE(rig->run(words("install NO")).code, 0);
    QVERIFY(!QFile::exists(rig->engineFolder() + QLatin1String("/update.json")));
    QVERIFY(!QFile::exists(rig->engineFolder() + QLatin1String("/installs_new.json")));
}

void CliUpdateTest::keepsVoicesCityIndexAndMosVersion()
{
    QVERIFY(installBoth());
    rig->publishNext();
    const QByteArray index = "<cityindex><CityIndex/></cityindex>\n";
    TestFile::write(rig->catalogFolder() + QLatin1String("/cityindex.xml"), index);

    QCOMPARE(rig->run(words("update")).code, 0);

    QCOMPARE(TestFile::read(rig->catalogFolder() + QLatin1String("/cityindex.xml")), index);
    QCOMPARE(TestFile::read(rig->tileFolder() + QLatin1String("/voices/en/turn.wav")),
             QByteArray("turn left"));
    QCOMPARE(TestFile::read(rig->tileFolder() + QLatin1String("/config.cfg")),
             UpdateRig::configFile());
    QCOMPARE(rig->status().value(QLatin1String("mosVersion")).toString(),
             QStringLiteral("1.0.23.7"));
}

void CliUpdateTest::saysWhenThereIsNothingNew()
{
    QVERIFY(installBoth());
    const Tiles before = rig->mainSet();

    const ProgramRun run = rig->run(words("update"));

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.contains("up to date"));
    QCOMPARE(rig->mainSet(), before);
    QCOMPARE(rig->folders(), UpdateRig::mainFolders());
    QCOMPARE(rig->run(words("update --json")).object().value(QLatin1String("result")).toString(),
             QStringLiteral("upToDate"));
}

void CliUpdateTest::keepsTheBackupUntilItIsCleared()
{
    QVERIFY(installBoth());
    rig->publishNext();

    const ProgramRun run = rig->run(words("update --keep-backup"));

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.contains("--undo"));
    QVERIFY(run.out.contains("--clear-backup"));
    QCOMPARE(rig->folders(), UpdateRig::mainAndBackupFolders());
    QCOMPARE(rig->tilesIn("_"), rig->content.tiles(Fi) + rig->content.tiles(Se));
    const QJsonObject backup = rig->status().value(QLatin1String("backup")).toObject();
    QCOMPARE(backup.value(QLatin1String("version")).toString(), rig->oldVersion);
    QVERIFY(backup.value(QLatin1String("size")).toDouble() > 4 * 20000);
    QVERIFY(rig->run(words("status")).out.contains("Backup:"));
    rig->server.stop(); // clearing needs no network

    QCOMPARE(rig->run(words("update --clear-backup")).code, 0);

    QCOMPARE(rig->folders(), UpdateRig::mainFolders());
    QVERIFY(rig->status().value(QLatin1String("backup")).isNull());
    QCOMPARE(rig->tilesIn(), rig->next.tiles(Fi) + rig->next.tiles(Se));
    QVERIFY(rig->run(words("update --clear-backup")).out.contains("no backup"));
}

void CliUpdateTest::aBackupOfAnEarlierUpdateStandsAgainstTheNext()
{
    QVERIFY(installBoth());
    rig->publishNext();
    QCOMPARE(rig->run(words("update")).code, 0);
    rig->next.publish(QStringLiteral("27.01.01.00"));
    const Tiles before = rig->mainSet();
    const int answered = rig->answers("/map5/");

    const ProgramRun run = rig->run(words("update"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("--undo"));
    QVERIFY(run.err.contains("--clear-backup"));
    QCOMPARE(rig->answers("/map5/"), answered);
    QCOMPARE(rig->mainSet(), before);
    QCOMPARE(rig->folders(), UpdateRig::mainAndBackupFolders());
}

void CliUpdateTest::goesBackAndForthWithoutADownload()
{
    QVERIFY(installBoth());
    const Tiles old = rig->mainSet();
    rig->publishNext();
    QCOMPARE(rig->run(words("update")).code, 0);
    const Tiles fresh = rig->mainSet();
    const int archives = rig->answers("/archives/2/");

    const ProgramRun back = rig->run(words("update --undo --json"));

    QVERIFY2(back.code == 0, qPrintable(textOf(back)));
    QCOMPARE(back.object().value(QLatin1String("result")).toString(), QStringLiteral("undone"));
    QCOMPARE(back.object().value(QLatin1String("toVersion")).toString(), rig->oldVersion);
    QCOMPARE(rig->mainSet(), old);
    QCOMPARE(rig->version(), rig->oldVersion);
    const QJsonObject update = rig->status().value(QLatin1String("update")).toObject();
    QCOMPARE(update.value(QLatin1String("version")).toString(), rig->newVersion);
    QVERIFY(update.value(QLatin1String("ready")).toBool());
    QVERIFY(rig->run(words("status")).out.contains("is ready"));

    const ProgramRun forth = rig->run(words("update"));

    QVERIFY2(forth.code == 0, qPrintable(textOf(forth)));
    QCOMPARE(rig->mainSet(), fresh);
    QCOMPARE(rig->answers("/archives/2/"), archives);
}

void CliUpdateTest::goingBackKeepsTheCityIndexThatWasMadeSince()
{
    QVERIFY(installBoth());
    rig->publishNext();
    QCOMPARE(rig->run(words("update")).code, 0);
    const QByteArray index = "<cityindex><CityIndex/></cityindex>\n";
    TestFile::write(rig->catalogFolder() + QLatin1String("/cityindex.xml"), index);
    rig->server.stop(); // going back needs no network

    QCOMPARE(rig->run(words("update --undo")).code, 0);

    QCOMPARE(TestFile::read(rig->catalogFolder() + QLatin1String("/cityindex.xml")), index);
    QCOMPARE(TestFile::read(rig->tileFolder() + QLatin1String("/voices/en/turn.wav")),
             QByteArray("turn left"));
}

void CliUpdateTest::goingBackTellsOfRegionsThatWouldBeLost()
{
    QVERIFY(rig->install({Fi}));
    rig->publishNext();
    QCOMPARE(rig->run(words("update")).code, 0);
    QCOMPARE(rig->run(words("install NO")).code, 0);
    const Tiles before = rig->mainSet();

    const ProgramRun refused = rig->run(words("update --undo"));

    QCOMPARE(refused.code, 1);
    QVERIFY(refused.err.contains("NO"));
    QVERIFY(refused.err.contains("--force"));
    QCOMPARE(rig->mainSet(), before);
    QCOMPARE(rig->run(words("update --undo --force")).code, 0);
    QCOMPARE(rig->tilesIn(), rig->content.tiles(Fi));
    QCOMPARE(rig->installedIds(), QStringList {Fi});
}

void CliUpdateTest::withoutABackupThereIsNoWayBack()
{
    QVERIFY(rig->install({Fi}));
    const Tiles before = rig->mainSet();

    const ProgramRun run = rig->run(words("update --undo --json"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("no backup"));
    QCOMPARE(run.object().value(QLatin1String("result")).toString(), QStringLiteral("failed"));
    QCOMPARE(rig->mainSet(), before);
}

void CliUpdateTest::refusesWithoutACatalogue()
{
    const ProgramRun run = rig->run(words("update"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("vexa-maps refresh"));
}

void CliUpdateTest::refusesWhileInstallsArePending()
{
    QVERIFY(rig->install({Fi}));
    rig->server.stop();
    QCOMPARE(rig->run(words("--timeout 1 install SE")).code, 4);
    TestFile::write(rig->engineFolder() + QLatin1String("/installs.json"),
                    "{\"installs\":[{\"id\":\"SE\",\"phase\":\"waiting\"}]}");
    rig->server.start();
    rig->publishNext();

    const ProgramRun run = rig->run(words("update"));

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("SE"));
    QVERIFY(run.err.contains("vexa-maps resume"));
    QCOMPARE(rig->folders(), UpdateRig::mainFolders());
}

void CliUpdateTest::whileAnUpdateIsPreparedOthersStepBack()
{
    QVERIFY(installBoth());
    QVERIFY(cutShort());

    for (const char *command : {"install AX", "resume", "refresh"}) {
        const ProgramRun run = rig->run(words(command));
        QCOMPARE(run.code, 1);
        QVERIFY2(run.err.contains("vexa-maps update --cancel"), command);
    }
    const QJsonObject update = rig->status().value(QLatin1String("update")).toObject();
    QCOMPARE(update.value(QLatin1String("version")).toString(), rig->newVersion);
    QVERIFY(!update.value(QLatin1String("ready")).toBool());
    QCOMPARE(update.value(QLatin1String("regions")).toVariant().toStringList(), QStringList {Fi});
    QVERIFY(rig->run(words("status")).out.contains("being prepared"));
    QCOMPARE(rig->run(words("cancel")).code, 0); // of installs; the update's stay
    QCOMPARE(rig->run(words("remove SE")).code, 0);
    QCOMPARE(rig->tilesIn(), rig->content.tiles(Fi));
    QVERIFY(!rig->status().value(QLatin1String("update")).isNull());
}

void CliUpdateTest::cancelGivesAPreparedUpdateUp()
{
    QVERIFY(installBoth());
    const Tiles before = rig->mainSet();
    QVERIFY(cutShort());
    rig->server.stop();

    const ProgramRun run = rig->run(words("update --cancel --json"));

    QCOMPARE(run.code, 0);
    QCOMPARE(run.object().value(QLatin1String("result")).toString(), QStringLiteral("cancelled"));
    QCOMPARE(rig->folders(), UpdateRig::mainFolders());
    QCOMPARE(rig->mainSet(), before);
    QVERIFY(rig->status().value(QLatin1String("update")).isNull());
    QVERIFY(rig->status().value(QLatin1String("queue")).toArray().isEmpty());
    rig->server.start();
    rig->content.publish(rig->oldVersion);
    QCOMPARE(rig->run(words("install AX")).code, 0);
    QVERIFY(rig->run(words("update --cancel")).out.contains("No update"));
}

void CliUpdateTest::followsWhatTheUserRemovesAndInstallsMeanwhile()
{
    QVERIFY(rig->install({Fi, Se}));
    rig->publishNext();
    QCOMPARE(rig->run(words("update")).code, 0);
    QCOMPARE(rig->run(words("update --undo")).code, 0); // a prepared set with both
    QCOMPARE(rig->run(words("remove FI")).code, 0);
    rig->next.addRegion(QStringLiteral("AX"), QStringLiteral("Aland"), tilesOf({"a/a/ax.cdt"}, "2"),
                        QStringLiteral("2/AX.zip"));
    rig->content.publish(rig->oldVersion);
    QCOMPARE(rig->run(words("install AX")).code, 0);
    // The same version, as the prepared set's own catalogue knows it, but with the region.
    rig->publishNext();
    QFile::remove(rig->catalogFolder() + QLatin1String("_new/catalog-26.12.01.00.xml"));
    QVERIFY(QFile::copy(rig->server.folder() + QLatin1String("/map5/catalog-26.12.01.00.xml"),
                        rig->catalogFolder() + QLatin1String("_new/catalog-26.12.01.00.xml")));
    const int swedens = rig->answers("/archives/2/SE");

    const ProgramRun run = rig->run(words("update"));

    QVERIFY2(run.code == 0, qPrintable(textOf(run)));
    QCOMPARE(rig->installedIds(), QStringList({QStringLiteral("AX"), Se}));
    QCOMPARE(rig->tilesIn(), rig->next.tiles(QStringLiteral("AX")) + rig->next.tiles(Se));
    QCOMPARE(rig->answers("/archives/2/SE"), swedens);
}

void CliUpdateTest::beginsAnewForAYetNewerVersion()
{
    QVERIFY(installBoth());
    QVERIFY(cutShort());
    TestContent third(rig->server.folder() + QLatin1String("/map5"));
    third.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/1/a.cdt"}, "3"),
                    QStringLiteral("3/FI.zip"));
    third.addRegion(Se, QStringLiteral("Sweden"), tilesOf({"0/2/b.cdt"}, "3"),
                    QStringLiteral("3/SE.zip"));
    third.publish(QStringLiteral("27.01.01.00"));

    const ProgramRun run = rig->run(words("update"));

    QVERIFY2(run.code == 0, qPrintable(textOf(run)));
    QCOMPARE(rig->tilesIn(), third.tiles(Fi) + third.tiles(Se));
    QCOMPARE(rig->version(), QStringLiteral("27.01.01.00"));
    QCOMPARE(rig->folders(), UpdateRig::mainAndBackupFolders());
    QVERIFY(!QFile::exists(rig->catalogFolder() + QLatin1String("/catalog-26.12.01.00.xml")));
}

void CliUpdateTest::aVersionThatTheServerTookBackIsGivenUp()
{
    QVERIFY(installBoth());
    const Tiles before = rig->mainSet();
    QVERIFY(cutShort());
    rig->content.publish(rig->oldVersion);

    const ProgramRun run = rig->run(words("update"));

    QCOMPARE(run.code, 0);
    QVERIFY(run.out.contains("up to date"));
    QCOMPARE(rig->folders(), UpdateRig::mainFolders());
    QCOMPARE(rig->mainSet(), before);
}

void CliUpdateTest::aRegionThatTheNewVersionLacksIsNamed()
{
    QVERIFY(rig->install({Fi, QStringLiteral("AX")}));
    rig->publishNext();
    const Tiles before = rig->mainSet();

    const ProgramRun refused = rig->run(words("update"));

    QCOMPARE(refused.code, 1);
    QVERIFY(refused.err.contains("AX"));
    QVERIFY(refused.err.contains("--drop-missing"));
    QCOMPARE(rig->answers("/archives/2/"), 0);
    QCOMPARE(rig->mainSet(), before);
    const ProgramRun run = rig->run(words("update --drop-missing --json"));
    QCOMPARE(run.code, 0);
    QCOMPARE(run.object().value(QLatin1String("dropped")).toVariant().toStringList(),
             QStringList {QStringLiteral("AX")});
    QCOMPARE(rig->installedIds(), QStringList {Fi});
    QCOMPARE(rig->tilesIn(), rig->next.tiles(Fi));
}

void CliUpdateTest::onATerminalItAsksForTheBackup_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("asks");
    QTest::addColumn<bool>("keeps");
    QTest::newRow("no") << QStringList() << QByteArray("n\n") << true << false;
    QTest::newRow("yes") << QStringList() << QByteArray("y\n") << true << true;
    QTest::newRow("only Enter") << QStringList() << QByteArray("\n") << true << true;
    QTest::newRow("the end of input") << QStringList() << QByteArray("\x04") << true << true;
    QTest::newRow("Ctrl-C") << QStringList() << QByteArray("\x03") << true << true;
    QTest::newRow("told before") << QStringList {QStringLiteral("--keep-backup")} << QByteArray()
                                 << false << true;
}

void CliUpdateTest::onATerminalItAsksForTheBackup()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, answer);
    QFETCH(bool, asks);
    QFETCH(bool, keeps);
    QVERIFY(installBoth());
    rig->publishNext();
    QList<QByteArray> arguments {VEXA_MAPS_PROGRAM};
    const QStringList all = rig->arguments(QStringList {QStringLiteral("update")} + options);
    for (const QString &argument : all)
        arguments.append(QFile::encodeName(argument));
    std::vector<char *> argv;
    for (QByteArray &argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);

    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        execv(argv[0], argv.data());
        _exit(127);
    }
    QByteArray shown;
    bool answered = false;
    char buffer[4096];
    for (ssize_t size = 0; (size = read(terminal, buffer, sizeof buffer)) > 0;) {
        shown.append(buffer, int(size));
        if (!answered && shown.contains("[Y/n]")) {
            answered = true;
            QCOMPARE(write(terminal, answer.constData(), size_t(answer.size())), answer.size());
        }
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    close(terminal);

    QVERIFY2(shown.contains("[#"), shown.constData()); // the bar
    QCOMPARE(answered, asks);
    QCOMPARE(rig->version(), rig->newVersion);
    QCOMPARE(rig->folders(), keeps ? UpdateRig::mainAndBackupFolders() : UpdateRig::mainFolders());
}

void CliUpdateTest::theOptionsExcludeEachOther_data()
{
    QTest::addColumn<QString>("options");
    for (const char *options :
         {"--undo --clear-backup", "--undo --cancel", "--clear-backup --keep-backup",
          "--cancel --drop-missing", "--force", "FI"})
        QTest::newRow(options) << QString::fromLatin1(options);
}

void CliUpdateTest::theOptionsExcludeEachOther()
{
    QFETCH(QString, options);

    QCOMPARE(
        rig->run(QStringList {QStringLiteral("update")} + options.split(QLatin1Char(' '))).code, 2);
}

QTEST_GUILESS_MAIN(CliUpdateTest)
#include "tst_cliupdate.moc"
