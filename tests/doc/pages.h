// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QList>
#include <QString>
#include <QStringList>

/** A fenced block of a page in doc/. */
struct Block
{
    QString language; ///< what stands behind the opening fence
    QString heading; ///< the heading above it
    QString text; ///< with a newline at its end
    int line = 0; ///< of the opening fence, from 1
};

/** The fenced blocks of a page, in their order. The test ends if there is no such page. */
inline QList<Block> blocksOf(const QString &page)
{
    QFile file(QStringLiteral(VEXA_DOC_DIR) + QLatin1Char('/') + page);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no page %s", qPrintable(page));
    QList<Block> blocks;
    QString heading;
    bool inside = false;
    int number = 0;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        ++number;
        if (line.startsWith(QLatin1String("```"))) {
            inside = !inside;
            if (inside)
                blocks.append({line.mid(3), heading, QString(), number});
        } else if (inside) {
            blocks.last().text += line + QLatin1Char('\n');
        } else if (line.startsWith(QLatin1Char('#'))) {
            heading = line.section(QLatin1Char(' '), 1);
        }
    }
    return blocks;
}
