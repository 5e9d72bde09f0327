// SPDX-License-Identifier: MIT
// The last log lines, which are kept for reports; see tst_clireport for what a report tells of
// them.
#include "host/shared/loglines.h"
#include "plugin/logger.h"
#include "testutils/temporaryhome.h"
#include <atomic>
#include <memory>
#include <QDir>
#include <QFileInfo>
#include <QtTest>
#include <thread>
#include <vector>

namespace {

std::atomic<int> shownLines {0};

void countLine(QtMsgType, const QMessageLogContext &, const QString &)
{
    ++shownLines;
}

QString logFile()
{
    return QDir::homePath() + QLatin1String("/MyDocs/.vexa/vexa-maps.log");
}

} // namespace

class LogLinesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        home = std::make_unique<TemporaryHome>();
        QVERIFY(QDir().mkpath(QFileInfo(logFile()).path()));
        before = qInstallMessageHandler(countLine);
        shownLines = 0;
    }
    void cleanup()
    {
        qInstallMessageHandler(before);
        home.reset();
    }

    void linesAreKeptAndStillShown();
    void aCommandShowsNone();
    void linesOfSeveralThreadsDoNotMix();
    void aLongRunBeginsNewFiles();
    void anHourHasAnEndOfLines();
    void withoutAFolderTheWorkGoesOn();

private:
    std::unique_ptr<TemporaryHome> home;
    QtMessageHandler before = nullptr;
};

void LogLinesTest::linesAreKeptAndStillShown()
{
    LogLines::installShown();
    LogLines::keep(QStringLiteral("open"));

    L::og()->error(QStringLiteral("all is\nlost"));

    QCOMPARE(shownLines.load(), 1);
    const QStringList lines = LogLines::kept(10);
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines.first().endsWith(QLatin1String(": open")), qPrintable(lines.first()));
    QVERIFY2(lines.last().endsWith(QLatin1String("Z [ERROR] all is lost")),
             qPrintable(lines.last()));
    QCOMPARE(QFileInfo(logFile()).permissions() & (QFile::ReadGroup | QFile::ReadOther),
             QFile::Permissions());
}

void LogLinesTest::aCommandShowsNone()
{
    LogLines::install();
    LogLines::keep(QStringLiteral("refresh"));

    L::og()->warning(QStringLiteral("a warning"));

    QCOMPARE(shownLines.load(), 0);
    QVERIFY(LogLines::kept(1).constFirst().endsWith(QLatin1String(" [WARNING] a warning")));
}

void LogLinesTest::linesOfSeveralThreadsDoNotMix()
{
    constexpr int Threads = 4;
    constexpr int Lines = 100;
    LogLines::keep(QStringLiteral("open"));

    std::vector<std::thread> threads;
    for (int i = 0; i < Threads; ++i) {
        threads.emplace_back([] {
            for (int line = 0; line < Lines; ++line)
                LogLines::note(QStringLiteral("a line of some length"));
        });
    }
    for (std::thread &thread : threads)
        thread.join();

    const QStringList lines = LogLines::kept(1000);
    QCOMPARE(lines.size(), 1 + Threads * Lines);
    for (const QString &line : lines.mid(1))
        QVERIFY2(line.endsWith(QLatin1String("Z a line of some length")), qPrintable(line));
}

void LogLinesTest::aLongRunBeginsNewFiles()
{
    LogLines::keep(QStringLiteral("open"));

    for (int i = 0; i < 1500; ++i)
        LogLines::note(QString::number(i) + QString(200, QLatin1Char('x')));

    for (const QString &path : {logFile(), logFile() + QLatin1String(".old")})
        QVERIFY2(QFileInfo(path).size() < 130 * 1024, qPrintable(path));
    const QStringList lines = LogLines::kept(600);
    QCOMPARE(lines.size(), 600);
    QVERIFY(lines.first().contains(QLatin1String("Z 900x")));
    QVERIFY(lines.last().contains(QLatin1String("Z 1499x")));
}

void LogLinesTest::anHourHasAnEndOfLines()
{
    LogLines::keep(QStringLiteral("open"));

    for (int i = 1; i < 3000; ++i)
        LogLines::note(QString::number(i));

    QVERIFY(LogLines::kept(1).constFirst().endsWith(QLatin1String("Z 1999")));
}

void LogLinesTest::withoutAFolderTheWorkGoesOn()
{
    QVERIFY(QDir(QFileInfo(logFile()).path()).removeRecursively());

    LogLines::keep(QStringLiteral("open"));
    LogLines::note(QStringLiteral("a line"));

    QVERIFY(LogLines::kept(10).isEmpty());
    QVERIFY(!QFileInfo::exists(logFile()));
}

QTEST_GUILESS_MAIN(LogLinesTest)
#include "tst_loglines.moc"
