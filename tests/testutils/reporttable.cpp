// SPDX-License-Identifier: MIT
#include "testutils/reporttable.h"

#include <QDir>
#include <QFile>

namespace {

QString reportFolder()
{
    const QString folder = qEnvironmentVariable("VEXA_REPORTS");
    return folder.isEmpty() ? QStringLiteral(VEXA_REPORT_DIR) : folder;
}

QString markdownCell(QString cell)
{
    cell.replace(QLatin1Char('|'), QLatin1String("\\|"));
    cell.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return cell;
}

QString line(const QStringList &cells, const QList<int> &widths)
{
    QStringList padded;
    for (int i = 0; i < cells.size(); ++i)
        padded += cells.at(i).leftJustified(widths.at(i));
    return QLatin1String("| ") + padded.join(QLatin1String(" | ")) + QLatin1String(" |\n");
}

} // namespace

ReportTable::ReportTable(const QString &name, const QStringList &heads)
    : m_name(name)
{
    addRow(heads);
}

void ReportTable::addRow(const QStringList &cells)
{
    Q_ASSERT(m_rows.isEmpty() || cells.size() == m_rows.first().size());
    QStringList row;
    for (const QString &cell : cells)
        row += markdownCell(cell);
    m_rows += row;
}

void ReportTable::addNote(const QString &note)
{
    m_notes += note;
}

QString ReportTable::text() const
{
    QList<int> widths;
    QStringList rule;
    for (int column = 0; column < m_rows.first().size(); ++column) {
        int width = 3; // the least that makes a rule
        for (const QStringList &row : m_rows)
            width = qMax(width, int(row.at(column).size()));
        widths += width;
        rule += QString(width, QLatin1Char('-'));
    }
    QString page = line(m_rows.first(), widths) + line(rule, widths);
    for (int row = 1; row < m_rows.size(); ++row)
        page += line(m_rows.at(row), widths);
    for (const QString &note : m_notes)
        page += QLatin1Char('\n') + note + QLatin1Char('\n');
    return page;
}

bool ReportTable::save() const
{
    QFile file(reportFolder() + QLatin1Char('/') + m_name + QLatin1String(".md"));
    const QByteArray page = text().toUtf8();
    return QDir().mkpath(reportFolder()) && file.open(QFile::WriteOnly)
        && file.write(page) == page.size() && file.flush();
}

bool ReportTable::longForm()
{
    return qEnvironmentVariableIntValue("VEXA_LONG") != 0;
}
