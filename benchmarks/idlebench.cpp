// SPDX-License-Identifier: MIT
/*
 * A phone in a pocket: nothing is queued, the network is there. Whatever wakes up then costs
 * battery and is a fault, so the peer is nothing at all.
 */
#include "benchmarks/benchmarkrows.h"
#include "benchmarks/measure.h"
#include "download/runningworker.h"
#include "testutils/temporaryhome.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

namespace {

// How often threads of this process went to sleep so far: each time, something had woken them.
qint64 sleeps()
{
    qint64 count = 0;
    const QDir threads(QStringLiteral("/proc/self/task"));
    const QStringList names = threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &thread : names) {
        QFile status(threads.filePath(thread + QStringLiteral("/status")));
        if (!status.open(QFile::ReadOnly))
            continue;
        const QByteArray text = status.readAll();
        const QByteArray key("\nvoluntary_ctxt_switches:");
        const auto begin = text.indexOf(key) + key.size();
        count += text.mid(begin, text.indexOf('\n', begin) - begin).trimmed().toLongLong();
    }
    return count;
}

void runFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

void beIdle(int seconds)
{
    const TemporaryHome home;
    RunningWorker worker;
    worker.goOnline();
    runFor(1000); // what the start set off is over then
    const qint64 before = sleeps();
    runFor(seconds * 1000);
    // The main thread's own sleep, which the timer ended, is this program's.
    tell({{QStringLiteral("wakeUps"), double(sleeps() - before - 1)}});
}

} // namespace

int main(int count, char *words[])
{
    const QCoreApplication application(count, words);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--work")) {
        beIdle(arguments.value(2).toInt());
        return 0;
    }
    BenchmarkRows rows(QStringLiteral("idle"));
    const int seconds = BenchmarkRows::quick() ? 2 : 60;
    const Cost cost = measureSelf({QString::number(seconds)});
    rows.atMost(QStringLiteral("12: idle for %1 s, queue empty").arg(seconds), QStringLiteral("-"),
                QStringLiteral("wake-ups of all threads"),
                cost.told.value(QStringLiteral("wakeUps")).toDouble(-1), 0);
    return rows.finish();
}
