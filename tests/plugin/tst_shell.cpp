// SPDX-License-Identifier: MIT
#include "plugin/shell_p.h"
#include "testutils/archivebuilder.h"
#include "testutils/childprogram.h"
#include "testutils/fakesystem.h"
#include "testutils/temporaryhome.h"

#include <atomic>
#include <csignal>
#include <QDir>
#include <QtTest>
#include <sys/wait.h>
#include <thread>

class ShellTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void quotesAPathOnlyWhereTheShellNeedsIt_data();
    void quotesAPathOnlyWhereTheShellNeedsIt();
    void aQuotedPathReachesTheCommandAsItIs_data();
    void aQuotedPathReachesTheCommandAsItIs();
    void returnsWhatSystemReturns();
    void aCtrlCDoesNotReachTheCommand_data();
    void aCtrlCDoesNotReachTheCommand();
    void theThreadHearsSignalsAgainAfterwards();
    void tellsWhetherThereIsAShell();
    void waitsForTheCommandOfAKilledProgram();
    void aProgramStartedMeanwhileDoesNotKeepTheTurn();
    void aCommandAtOnceDoesNotWaitForTheEngine();
    void aCommandAtOnceLeavesTheEngineItsTurn();
    void aCommandAtOnceIsPassedByteForByte();
    void aCtrlCDoesNotReachACommandAtOnce_data();
    void aCtrlCDoesNotReachACommandAtOnce();
};

void ShellTest::quotesAPathOnlyWhereTheShellNeedsIt_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("word");

    QTest::newRow("a plain path stands as it is")
        << QStringLiteral("/home/user/MyDocs/.vexa/tmp/unzipped")
        << QStringLiteral("/home/user/MyDocs/.vexa/tmp/unzipped");
    QTest::newRow("all plain letters")
        << QStringLiteral("/aZ09._-+,:@%=") << QStringLiteral("/aZ09._-+,:@%=");
    QTest::newRow("beyond ASCII") << QStringLiteral("/Åland/日本") << QStringLiteral("/Åland/日本");
    QTest::newRow("blank") << QStringLiteral("/My Docs") << QStringLiteral("'/My Docs'");
    QTest::newRow("single quote") << QStringLiteral("/a'b") << QStringLiteral("'/a'\\''b'");
    QTest::newRow("double quote") << QStringLiteral("/a\"b") << QStringLiteral("'/a\"b'");
    QTest::newRow("dollar") << QStringLiteral("/$HOME") << QStringLiteral("'/$HOME'");
    QTest::newRow("pattern") << QStringLiteral("/*") << QStringLiteral("'/*'");
    QTest::newRow("backtick") << QStringLiteral("/`id`") << QStringLiteral("'/`id`'");
    QTest::newRow("line end") << QStringLiteral("/a\nb") << QStringLiteral("'/a\nb'");
    QTest::newRow("tilde") << QStringLiteral("~") << QStringLiteral("'~'");
    QTest::newRow("leading dash") << QStringLiteral("-rf") << QStringLiteral("./-rf");
    QTest::newRow("leading dash and blank") << QStringLiteral("-r f") << QStringLiteral("'./-r f'");
    QTest::newRow("nothing") << QString() << QStringLiteral("''");
}

void ShellTest::quotesAPathOnlyWhereTheShellNeedsIt()
{
    QFETCH(QString, path);
    QFETCH(QString, word);

    QCOMPARE(Shell::quoted(path), word);
}

void ShellTest::aQuotedPathReachesTheCommandAsItIs_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"plain", "two words", "a'b''c", "$HOME", "*", "a\\b", "`id`", "a;b&c|d", "(x)<y>", "a\nb",
          "~", "#", "!x", "[a-z]", "{a,b}", "Åland", "\"q\""})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void ShellTest::aQuotedPathReachesTheCommandAsItIs()
{
    QFETCH(QString, name);
    const QTemporaryDir dir;
    const QString path = dir.filePath(name);

    const int result = Shell::run(QLatin1String("printf '%s' ") + Shell::quoted(path)
                                  + QLatin1String(" > ") + Shell::quoted(path));

    QCOMPARE(result, 0);
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList {name});
    QCOMPARE(TestFile::read(path), QFile::encodeName(path));
}

void ShellTest::returnsWhatSystemReturns()
{
    const int success = Shell::run(QStringLiteral("true"));
    const int failure = Shell::run(QStringLiteral("exit 3"));

    QCOMPARE(success, 0);
    QVERIFY(WIFEXITED(failure));
    QCOMPARE(WEXITSTATUS(failure), 3);
    QVERIFY(failure != 3);
}

void ShellTest::aCtrlCDoesNotReachTheCommand_data()
{
    QTest::addColumn<QString>("signal");
    for (const char *signal : {"INT", "TERM", "QUIT", "HUP"})
        QTest::newRow(signal) << QString::fromLatin1(signal);
}

void ShellTest::aCtrlCDoesNotReachTheCommand()
{
    QFETCH(QString, signal);

    const int result = Shell::run(QStringLiteral("kill -%1 $$; exit 7").arg(signal));

    QVERIFY(WIFEXITED(result));
    QCOMPARE(WEXITSTATUS(result), 7);
}

void ShellTest::theThreadHearsSignalsAgainAfterwards()
{
    sigset_t before;
    sigset_t after;
    pthread_sigmask(SIG_SETMASK, nullptr, &before);

    Shell::run(QStringLiteral("true"));

    pthread_sigmask(SIG_SETMASK, nullptr, &after);
    for (int signal : {SIGINT, SIGTERM, SIGQUIT, SIGHUP})
        QCOMPARE(sigismember(&after, signal), sigismember(&before, signal));
}

void ShellTest::tellsWhetherThereIsAShell()
{
    FakeSystem system;
    QVERIFY(Shell::isAvailable());

    system.takeShellAway();

    QVERIFY(!Shell::isAvailable());
    QCOMPARE(system.commands().size(), 0);
}

void ShellTest::waitsForTheCommandOfAKilledProgram()
{
    const TemporaryHome home;
    QVERIFY(QDir().mkpath(home.downloadFolder()));
    const QString file = home.downloadFolder() + QLatin1String("order");
    // Holds the lock as the command of a killed program does, until its input ends.
    ChildProgram earlier(QStringLiteral("flock"),
                         {home.downloadFolder(), QStringLiteral("sh"), QStringLiteral("-c"),
                          QStringLiteral("echo ready; read line; echo earlier >> \"$0\""), file});
    QVERIFY(earlier.waitForLine("ready"));
    std::atomic<bool> begun {false};

    std::thread later([&] {
        begun = true;
        Shell::run(QLatin1String("echo later >> ") + Shell::quoted(file));
    });
    QTRY_VERIFY(begun);
    QVERIFY(!earlier.waitForFile(file, 200)); // neither has come to its turn
    earlier.write("go on\n");
    later.join();

    QCOMPARE(earlier.waitForFinished(), 0);
    QCOMPARE(TestFile::read(file), QByteArray("earlier\nlater\n"));
}

void ShellTest::aProgramStartedMeanwhileDoesNotKeepTheTurn()
{
    const TemporaryHome home;
    QVERIFY(QDir().mkpath(home.downloadFolder()));
    FakeSystem system;
    std::unique_ptr<ChildProgram> meanwhile;
    system.beforeCommand([&](const QByteArray &) {
        if (!meanwhile)
            meanwhile.reset(new ChildProgram(QStringLiteral("cat"), {}));
    });

    Shell::run(QStringLiteral("true"));

    QVERIFY(meanwhile->isRunning());
    ChildProgram other(QStringLiteral("flock"),
                       {QStringLiteral("-n"), home.downloadFolder(), QStringLiteral("true")});
    QCOMPARE(other.waitForFinished(), 0);
}

void ShellTest::aCommandAtOnceDoesNotWaitForTheEngine()
{
    const TemporaryHome home;
    QVERIFY(QDir().mkpath(home.downloadFolder()));
    ChildProgram engine(QStringLiteral("flock"),
                        {home.downloadFolder(), QStringLiteral("sh"), QStringLiteral("-c"),
                         QStringLiteral("echo ready; read line")});
    QVERIFY(engine.waitForLine("ready"));

    std::atomic<bool> over {false};
    std::thread command([&] {
        Shell::runAtOnce("true");
        over = true;
    });
    const bool isOverBefore = QTest::qWaitFor([&] { return over.load(); }, 20000);
    engine.write("go on\n");
    command.join();

    QVERIFY(isOverBefore);
    QCOMPARE(engine.waitForFinished(), 0);
}

void ShellTest::aCommandAtOnceLeavesTheEngineItsTurn()
{
    const TemporaryHome home;
    QVERIFY(QDir().mkpath(home.downloadFolder()));

    const int result =
        Shell::runAtOnce("flock -n " + QFile::encodeName(home.downloadFolder()) + " true");

    QCOMPARE(result, 0);
}

void ShellTest::aCommandAtOnceIsPassedByteForByte()
{
    const FakeSystem system;
    const QByteArray command("true '\xc3\x85land' \"\xff\" *");

    Shell::runAtOnce(command);

    QCOMPARE(system.commands(), QList<QByteArray> {command});
}

void ShellTest::aCtrlCDoesNotReachACommandAtOnce_data()
{
    aCtrlCDoesNotReachTheCommand_data();
}

void ShellTest::aCtrlCDoesNotReachACommandAtOnce()
{
    QFETCH(QString, signal);

    const int result = Shell::runAtOnce("kill -" + signal.toLatin1() + " $$; exit 7");

    QVERIFY(WIFEXITED(result));
    QCOMPARE(WEXITSTATUS(result), 7);
}

QTEST_GUILESS_MAIN(ShellTest)
#include "tst_shell.moc"
