// SPDX-License-Identifier: MIT
#include "testutils/reporttable.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestReportTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void columnsArePadded();
    void aCellCannotBreakTheTable();
    void theFileGoesWhereTheTesterSays();
    void aFolderThatCannotBeWrittenIsTold();
};

void TestReportTable::columnsArePadded()
{
    ReportTable table(QStringLiteral("t"), {QStringLiteral("Step"), QStringLiteral("N")});
    table.addRow({QStringLiteral("download"), QStringLiteral("7")});
    table.addNote(QStringLiteral("Seed 5."));
    QCOMPARE(table.text(),
             QStringLiteral("| Step     | N   |\n"
                            "| -------- | --- |\n"
                            "| download | 7   |\n"
                            "\nSeed 5.\n"));
}

void TestReportTable::aCellCannotBreakTheTable()
{
    ReportTable table(QStringLiteral("t"), {QStringLiteral("Cell")});
    table.addRow({QStringLiteral("a|b\nc")});
    QVERIFY(table.text().contains(QLatin1String("| a\\|b c |\n")));
}

void TestReportTable::theFileGoesWhereTheTesterSays()
{
    const QTemporaryDir folder;
    qputenv("VEXA_REPORTS", QFile::encodeName(folder.filePath(QStringLiteral("new"))));
    const ReportTable table(QStringLiteral("name"), {QStringLiteral("Head")});
    QVERIFY(table.save());
    QFile file(folder.filePath(QStringLiteral("new/name.md")));
    QVERIFY(file.open(QFile::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), table.text());
}

void TestReportTable::aFolderThatCannotBeWrittenIsTold()
{
    qputenv("VEXA_REPORTS", "/proc/nothing");
    QVERIFY(!ReportTable(QStringLiteral("name"), {QStringLiteral("Head")}).save());
}

QTEST_GUILESS_MAIN(TestReportTable)
#include "tst_reporttable.moc"
