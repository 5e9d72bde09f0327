// SPDX-License-Identifier: MIT
#pragma once

#include "doc/pages.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QObject>
#include <QQmlComponent>
#include <QtTest>

/** Rows of a page's snippets, each with the block below it, which is what it prints. */
inline void addSnippets(const QString &page)
{
    QTest::addColumn<QString>("snippet");
    QTest::addColumn<QString>("output");
    const QList<Block> blocks = blocksOf(page);
    int rows = 0;
    for (int i = 0; i < blocks.size(); ++i) {
        if (blocks.at(i).language != QLatin1String("qml"))
            continue;
        const bool hasOutput =
            i + 1 < blocks.size() && blocks.at(i + 1).language == QLatin1String("text");
        // Also for a page that was cut: nothing on it may be left out.
        QVERIFY2(hasOutput, qPrintable(blocks.at(i).text));
        QTest::addRow("%s, line %d", qPrintable(blocks.at(i).heading), blocks.at(i).line)
            << blocks.at(i).text << blocks.at(i + 1).text;
        ++rows;
    }
    QVERIFY(rows > 5);
}

/** What the page prints. Not what Qt says of a reply that fails while it is read: a slip of its
 * own.
 */
inline QString printed(const LogCatcher &log)
{
    QString all;
    const QList<LogLine> lines = log.lines();
    for (const LogLine &line : lines) {
        if (!line.text.startsWith(QLatin1String("QNetworkReplyImplPrivate::")))
            all += line.text.trimmed() + QLatin1Char('\n');
    }
    return all;
}

/** Makes the document. A document that cannot be made prints nothing but why. */
inline std::unique_ptr<QObject> makePage(QQmlEngine *engine, const QString &snippet)
{
    QQmlComponent component(engine);
    component.setData(snippet.toUtf8(), QUrl(QStringLiteral("file:///Page.qml")));
    std::unique_ptr<QObject> page(component.create());
    if (!page)
        qWarning("%s", qPrintable(component.errorString()));
    return page;
}
