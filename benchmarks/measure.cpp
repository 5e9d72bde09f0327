// SPDX-License-Identifier: MIT
#include "benchmarks/measure.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <limits>
#include <QByteArray>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonDocument>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char **environ;

namespace {

// A busy second of the machine would otherwise be all that is seen of a short piece of work.
constexpr qint64 ShortestComparison = 12 * 1000; // ms
constexpr int MostPairs = 49;

const QLatin1String peakKey("peakMemory");
const QLatin1String wallKey("wall");
const QLatin1String cpuKey("cpu");

double secondsOf(clockid_t clock)
{
    timespec now = {};
    clock_gettime(clock, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

// Bytes; the kernel's "VmHWM:     1234 kB".
double peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QFile::ReadOnly))
        return 0;
    const QByteArray lines = status.readAll();
    const QByteArray line = lines.mid(lines.indexOf("VmHWM:") + 6);
    return line.left(line.indexOf('k')).trimmed().toDouble() * 1024;
}

[[noreturn]] void giveUp(const QString &program, const QString &why)
{
    std::fprintf(stderr, "%s: %s\n", qPrintable(program), qPrintable(why));
    std::exit(1);
}

// The child's output goes to a nameless file: reading a pipe meanwhile would cost time of ours.
class Child
{
public:
    Child(const QString &program, const QStringList &arguments)
        : m_program(program)
        , m_output(std::tmpfile())
    {
        std::vector<QByteArray> words {QFile::encodeName(program)};
        for (const QString &argument : arguments)
            words.push_back(argument.toLocal8Bit());
        std::vector<char *> pointers;
        for (QByteArray &word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, fileno(m_output), STDOUT_FILENO);
        m_clock.start();
        const int error =
            posix_spawnp(&m_pid, pointers[0], &actions, nullptr, pointers.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        if (error)
            giveUp(program, QString::fromLocal8Bit(std::strerror(error)));
    }

    Cost waitForEnd()
    {
        int status = 0;
        rusage usage = {};
        while (wait4(m_pid, &status, 0, &usage) < 0) {
            if (errno != EINTR)
                giveUp(m_program, QStringLiteral("cannot be waited for"));
        }
        Cost cost;
        cost.wall = double(m_clock.nsecsElapsed()) / 1e9;
        cost.cpu = seconds(usage.ru_utime) + seconds(usage.ru_stime);
        cost.memory = qint64(usage.ru_maxrss) * 1024;
        const QByteArray output = takeOutput();
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
            giveUp(m_program,
                   QStringLiteral("ended with status %1\n").arg(status)
                       + QString::fromLocal8Bit(output));
        const QByteArray lastLine = output.mid(output.trimmed().lastIndexOf('\n') + 1);
        cost.told = QJsonDocument::fromJson(lastLine).object();
        cost.wall = cost.told.value(wallKey).toDouble(cost.wall);
        cost.cpu = cost.told.value(cpuKey).toDouble(cost.cpu);
        // What the system counts for a child begins with what its parent held; of ours we know
        // better.
        if (cost.told.contains(peakKey))
            cost.memory = qint64(cost.told.value(peakKey).toDouble());
        return cost;
    }

private:
    static double seconds(const timeval &time)
    {
        return double(time.tv_sec) + double(time.tv_usec) / 1e6;
    }

    QByteArray takeOutput()
    {
        std::rewind(m_output);
        QFile file;
        QByteArray output;
        if (file.open(m_output, QFile::ReadOnly))
            output = file.readAll();
        std::fclose(m_output);
        return output;
    }

    QString m_program;
    std::FILE *m_output;
    pid_t m_pid = -1;
    QElapsedTimer m_clock;
};

Cost medianCost(const QList<Cost> &costs)
{
    QList<double> wall;
    QList<double> cpu;
    QList<double> memory;
    for (const Cost &cost : costs) {
        wall += cost.wall;
        cpu += cost.cpu;
        memory += double(cost.memory);
    }
    Cost middle;
    middle.wall = median(wall);
    middle.cpu = median(cpu);
    middle.memory = qint64(median(memory));
    middle.told = costs.last().told;
    return middle;
}

double ratio(double ours, double peers)
{
    return peers > 0 ? ours / peers : std::numeric_limits<double>::infinity();
}

} // namespace

Cost measureProgram(const QString &program, const QStringList &arguments)
{
    return Child(program, arguments).waitForEnd();
}

Cost measureSelf(const QStringList &arguments)
{
    return measureProgram(QCoreApplication::applicationFilePath(),
                          QStringList {QStringLiteral("--work")} + arguments);
}

void tell(QJsonObject told)
{
    told.insert(peakKey, peakMemory());
    std::printf("\n%s\n", QJsonDocument(told).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

Stopwatch::Stopwatch()
    : m_wall(secondsOf(CLOCK_MONOTONIC))
    , m_cpu(secondsOf(CLOCK_PROCESS_CPUTIME_ID))
{ }

QJsonObject Stopwatch::figures() const
{
    return {{wallKey, secondsOf(CLOCK_MONOTONIC) - m_wall},
            {cpuKey, secondsOf(CLOCK_PROCESS_CPUTIME_ID) - m_cpu}};
}

Ratios comparePairs(const std::function<Cost()> &ours, const std::function<Cost()> &peers,
                    int pairs, Warmup warmup)
{
    QList<Cost> all[2];
    QList<double> wall;
    QList<double> cpu;
    QList<double> memory;
    // The short form counts the first pair, too.
    const bool isQuick = pairs == 1;
    const int warmups = warmup == Warmup::OnePair && !isQuick ? 1 : 0;
    QElapsedTimer clock;
    clock.start();
    const auto isEnough = [&](int measured) {
        const bool isLong = isQuick || clock.elapsed() > ShortestComparison;
        return measured >= MostPairs || (measured >= pairs && isLong);
    };
    for (int pair = 0; !isEnough(pair - warmups); ++pair) {
        const bool oursFirst = pair % 2 == 0;
        const Cost first = oursFirst ? ours() : peers();
        const Cost second = oursFirst ? peers() : ours();
        if (pair < warmups)
            continue;
        const Cost &our = oursFirst ? first : second;
        const Cost &their = oursFirst ? second : first;
        all[0] += our;
        all[1] += their;
        wall += ratio(our.wall, their.wall);
        cpu += ratio(our.cpu, their.cpu);
        memory += ratio(double(our.memory), double(their.memory));
    }
    Ratios ratios;
    ratios.wall = median(wall);
    ratios.cpu = median(cpu);
    ratios.memory = median(memory);
    ratios.ours = medianCost(all[0]);
    ratios.peers = medianCost(all[1]);
    return ratios;
}

double median(QList<double> values)
{
    if (values.isEmpty())
        return std::nan("");
    std::sort(values.begin(), values.end());
    const auto middle = values.size() / 2;
    return values.size() % 2 ? values.at(middle) : (values.at(middle - 1) + values.at(middle)) / 2;
}
