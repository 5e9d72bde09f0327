// SPDX-License-Identifier: MIT
#pragma once

#include "testutils/reporttable.h"

#include <QString>

/**
 * The rows that one benchmark program measures. Each row says what was done, against whom, which
 * figure was to be reached and which was. benchmarks/run puts the rows of all programs into one
 * table.
 *
 * With `--quick` as an argument of the program everything is small and done once: that only shows
 * that the programs work, and no figure is judged.
 */
class BenchmarkRows
{
public:
    /** The name is that of the program's part of the table: "download", "archive", ... */
    explicit BenchmarkRows(const QString &name);

    /** A figure that must not be larger than the limit, such as a ratio of times. */
    void atMost(const QString &work, const QString &peer, const QString &what, double figure,
                double limit, const QString &unit = QString());
    /** A line of text for the table's end: what a figure leaves out, or why it is missed. */
    void addNote(const QString &note);
    /** Writes the table; the program's exit status: 0, or 1 if it could not be written. */
    int finish();

    /** Whether this is the short form. */
    static bool quick();
    /** How many pairs are compared: 7, in the short form 1. */
    static int pairs();

private:
    ReportTable m_table;
};
