// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/**
 * A table of what a test saw, in Markdown, for people to read: doc/reliability/ holds the last
 * ones.
 *
 * It is written to the file NAME.md in the folder that the environment variable VEXA_REPORTS names,
 * otherwise in the build's folder "reports". Columns are padded, so that the raw text reads well
 * too.
 */
class ReportTable
{
public:
    /** The name is that of the file; the heads are those of the columns. */
    ReportTable(const QString &name, const QStringList &heads);

    /** A row has as many cells as there are heads; "|" and line ends in a cell are made harmless.
     */
    void addRow(const QStringList &cells);
    /** A line of text below the table, such as the seed of a random run. */
    void addNote(const QString &note);
    /** The whole page as it is written by save(). */
    QString text() const;
    /** Writes the file; false if that failed, which a test should not let pass. */
    bool save() const;

    /**
     * Whether the long form was asked for (VEXA_LONG=1 in the environment): all points instead of a
     * choice, the full sizes and counts instead of small ones.
     */
    static bool longForm();

private:
    QString m_name;
    QList<QStringList> m_rows; // the first holds the heads
    QStringList m_notes;
};
