// SPDX-License-Identifier: MIT
#include "host/cli/lintreport.h"

#include <algorithm>
#include <tuple>

namespace {

constexpr int MaxQuoted = 80; // characters

} // namespace

void LintReport::add(const QString &file, LintPlace place, const char *kind, const QString &text)
{
    m_findings.append({file, place, QLatin1String(kind), text});
}

QList<LintFinding> LintReport::findings() const
{
    QList<LintFinding> sorted = m_findings;
    std::stable_sort(sorted.begin(), sorted.end(), [](const LintFinding &a, const LintFinding &b) {
        return std::tie(a.file, a.place.line, a.place.column)
            < std::tie(b.file, b.place.line, b.place.column);
    });
    return sorted;
}

QString LintReport::quoted(const QString &text)
{
    QString inside = text.size() > MaxQuoted ? text.left(MaxQuoted) + QChar(0x2026) : text;
    for (QChar &c : inside) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator
            || c == QChar::ParagraphSeparator)
            c = QLatin1Char('?');
    }
    return QLatin1Char('"') + inside + QLatin1Char('"');
}
