// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

/** What one run of a program took. */
struct Cost
{
    /** Seconds from its start to its end. */
    double wall = 0;
    /** Seconds of processor time, user and system, children that it waited for included. */
    double cpu = 0;
    /** The most memory it ever held, in bytes. */
    qint64 memory = 0;
    /** What the program told about itself: the last line of its output, if that is a JSON object.
     */
    QJsonObject told;
};

/**
 * Runs the program to its end and measures it from outside. A program that cannot be started or
 * ends with a status other than zero ends the whole benchmark with a message: a figure of work that
 * was not done is worse than none.
 */
Cost measureProgram(const QString &program, const QStringList &arguments);

/** The same with this program itself: what its main() does for `--work NAME ARGUMENTS`. */
Cost measureSelf(const QStringList &arguments);

/** Prints what a child tells its parent, its peak of memory with it; call it last, even if empty.
 */
void tell(QJsonObject told = {});

/**
 * Times a part of a program's work from its making on, so that a short one does not drown in what
 * it takes to start a program. What it tells stands in the Cost instead of the whole program's.
 */
class Stopwatch
{
public:
    Stopwatch();
    /** Wall and processor time until now, for tell(). */
    QJsonObject figures() const;

private:
    double m_wall;
    double m_cpu;
};

/** The ratios of our cost to the peer's; each the median of all pairs. */
struct Ratios
{
    double wall = 0;
    double cpu = 0;
    double memory = 0;
    /** Our own costs, each the median of all runs. */
    Cost ours;
    /** The peer's. */
    Cost peers;
};

/** Whether a pair ahead of all that count fills the caches for both sides. */
enum class Warmup {
    OnePair,
    None, ///< for runs that take long and read nothing from a disk
};

/**
 * Runs ours and the peer's in turn, so that both meet the same machine in the same minute, and
 * changes who goes first with each pair.
 *
 * @param pairs how many at least, 7 for a figure that is shown: short work is measured for some
 *              seconds. With 1, the quick form, it is one pair
 */
Ratios comparePairs(const std::function<Cost()> &ours, const std::function<Cost()> &peers,
                    int pairs, Warmup warmup = Warmup::OnePair);

/** The middle one; of an even number, the mean of the two in the middle. NaN for none. */
double median(QList<double> values);
