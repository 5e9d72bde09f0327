// SPDX-License-Identifier: MIT
#include "processmeter.h"

#include <algorithm>
#include <malloc.h>
#include <QDir>
#include <QFile>
#include <QTest>
#include <unistd.h>

namespace {

constexpr int ThreadPatience = 2000; // ms
constexpr int WarmUp = 4; // one of so many samples

int entriesOf(const char *folder)
{
    return int(QDir(QLatin1String(folder))
                   .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                   .size());
}

qint64 residentBytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no figures of this process");
    return file.readAll().split(' ').at(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

template <typename Sample, typename Number>
Number least(const QList<Sample> &samples, int from, int to, Number Sample::*value)
{
    Number result = samples.at(from).*value;
    for (int i = from; i < to; ++i)
        result = std::min(result, samples.at(i).*value);
    return result;
}

QString kilobytes(qint64 before, qint64 after)
{
    return QStringLiteral("%1, %2 KiB").arg(before / 1024).arg(after / 1024);
}

} // namespace

bool ProcessMeter::measuresHeap()
{
#ifdef VEXA_SANITIZED
    return false;
#else
    return true;
#endif
}

void ProcessMeter::sample()
{
    // A thread that was waited for is out of Qt's hands a moment before it is out of the kernel's.
    if (!m_samples.isEmpty()) {
        const int before = least(m_samples, 0, int(m_samples.size()), &Sample::threads);
        const auto isAsBefore = [before] { return entriesOf("/proc/self/task") <= before; };
        if (!QTest::qWaitFor(isAsBefore, ThreadPatience))
            qInfo("there are more than the %d threads of before", before);
    }
    Sample now;
    malloc_trim(0); // what is free, but kept, is nobody's growth
    now.resident = residentBytes();
    now.threads = entriesOf("/proc/self/task");
    now.files = entriesOf("/proc/self/fd");
    if (measuresHeap()) {
        const struct mallinfo2 heap = mallinfo2();
        now.heap = qint64(heap.uordblks) + qint64(heap.hblkhd);
    }
    m_samples.append(now);
}

template <typename Number> Number ProcessMeter::early(Number Sample::*value) const
{
    const int from = int(m_samples.size()) / WarmUp;
    return least(m_samples, from, from + int(m_samples.size() - from) / 3, value);
}

template <typename Number> Number ProcessMeter::late(Number Sample::*value) const
{
    const int size = int(m_samples.size());
    return least(m_samples, size - (size - size / WarmUp) / 3, size, value);
}

qint64 ProcessMeter::heapGrowth() const
{
    return late(&Sample::heap) - early(&Sample::heap);
}

qint64 ProcessMeter::residentGrowth() const
{
    return late(&Sample::resident) - early(&Sample::resident);
}

int ProcessMeter::threadGrowth() const
{
    return late(&Sample::threads) - early(&Sample::threads);
}

int ProcessMeter::fileGrowth() const
{
    return late(&Sample::files) - early(&Sample::files);
}

QStringList ProcessMeter::figures() const
{
    const auto pair = [this](int Sample::*value) {
        return QStringLiteral("%1, %2").arg(early(value)).arg(late(value));
    };
    return {measuresHeap() ? kilobytes(early(&Sample::heap), late(&Sample::heap))
                           : QStringLiteral("not measured"),
            kilobytes(early(&Sample::resident), late(&Sample::resident)), pair(&Sample::threads),
            pair(&Sample::files)};
}
