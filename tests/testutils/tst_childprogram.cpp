// SPDX-License-Identifier: MIT
#include "testutils/childprogram.h"

#include <QTemporaryDir>
#include <QtTest>
#include <signal.h>

class ChildProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isWatchedAndKilled();
    void tellsHowItEnded();
};

void ChildProgramTest::isWatchedAndKilled()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("f"));
    ChildProgram child(QStringLiteral("sh"),
                       {QStringLiteral("-c"),
                        QStringLiteral("read line; echo got $line; echo x > \"$0\"; "
                                       "read line; while :; do echo 123456789 >> \"$0\"; done"),
                        file});

    child.write("this\n");
    QVERIFY(child.waitForLine("got this"));
    QVERIFY(child.waitForFile(file));
    QVERIFY(!child.waitForSize(file, 100, 50));
    child.write("go\n");
    QVERIFY(child.waitForSize(file, 5000));
    child.kill();

    QVERIFY(!child.isRunning());
    QCOMPARE(child.waitForFinished(), -1);
    QVERIFY(!child.waitFor([] { return false; }));
}

void ChildProgramTest::tellsHowItEnded()
{
    ChildProgram ends(QStringLiteral("sh"),
                      {QStringLiteral("-c"), QStringLiteral("echo out; echo err >&2; exit 3")});
    ChildProgram waits(
        QStringLiteral("sh"),
        {QStringLiteral("-c"), QStringLiteral("trap 'exit 7' INT; echo ready; read line")});

    QCOMPARE(ends.waitForFinished(), 3);
    QCOMPARE(ends.output(), QByteArray("out\n"));
    QCOMPARE(ends.errorOutput(), QByteArray("err\n"));
    QVERIFY(waits.waitForLine("ready"));
    QCOMPARE(waits.waitForFinished(20), -2);
    waits.sendSignal(SIGINT);
    QCOMPARE(waits.waitForFinished(), 7);
}

QTEST_GUILESS_MAIN(ChildProgramTest)
#include "tst_childprogram.moc"
