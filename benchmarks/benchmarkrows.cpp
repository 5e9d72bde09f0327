// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarkrows.h"

#include <cstdio>
#include <QCoreApplication>

namespace {

QString number(double figure)
{
    const bool isTiny = figure > 0 && figure < 0.1;
    return QString::number(figure, 'f', isTiny ? 4 : figure < 10 ? 2 : figure < 100 ? 1 : 0);
}

} // namespace

BenchmarkRows::BenchmarkRows(const QString &name)
    : m_table(QStringLiteral("benchmark-") + name,
              {QStringLiteral("Work"), QStringLiteral("Peer"), QStringLiteral("Figure"),
               QStringLiteral("Measured"), QStringLiteral("Reach"), QStringLiteral("Holds")})
{ }

void BenchmarkRows::atMost(const QString &work, const QString &peer, const QString &what,
                           double figure, double limit, const QString &unit)
{
    const QString behind = unit.isEmpty() ? unit : QLatin1Char(' ') + unit;
    const QString holds = quick() ? QStringLiteral("not judged")
        : figure <= limit         ? QStringLiteral("yes")
                                  : QStringLiteral("**no**");
    m_table.addRow({work, peer, what, number(figure) + behind,
                    QStringLiteral("<= ") + number(limit) + behind, holds});
    // A run takes minutes: whoever waits sees what there is.
    std::printf("%s, %s: %s (<= %s)%s\n", qPrintable(work), qPrintable(what),
                qPrintable(number(figure) + behind), qPrintable(number(limit)),
                figure <= limit || quick() ? "" : "  MISSED");
    std::fflush(stdout);
}

void BenchmarkRows::addNote(const QString &note)
{
    m_table.addNote(note);
}

int BenchmarkRows::finish()
{
    return m_table.save() ? 0 : 1;
}

bool BenchmarkRows::quick()
{
    return QCoreApplication::arguments().contains(QStringLiteral("--quick"));
}

int BenchmarkRows::pairs()
{
    return quick() ? 1 : 7;
}
