// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/**
 * Follows what this process holds over many repetitions of the same thing: memory, threads and
 * open files. Sample it at moments that are alike, such as behind every hundredth repetition.
 *
 * The first samples are the warm-up, in which caches fill. Growth is the least of the last third
 * less the least of the third behind the warm-up, so that what only comes and goes does not count.
 */
class ProcessMeter
{
public:
    /** The heap is not measured in a build with a checker, which has a heap of its own. */
    static bool measuresHeap();

    void sample();

    /** In bytes that malloc() has given out; 0 if not measured. */
    qint64 heapGrowth() const;
    /** In bytes of RAM. */
    qint64 residentGrowth() const;
    int threadGrowth() const;
    int fileGrowth() const;

    /** For a table: heap, resident memory, threads and files as "before, after". */
    QStringList figures() const;

private:
    struct Sample
    {
        qint64 heap = 0;
        qint64 resident = 0;
        int threads = 0;
        int files = 0;
    };
    template <typename Number> Number early(Number Sample::*value) const;
    template <typename Number> Number late(Number Sample::*value) const;

    QList<Sample> m_samples;
};
