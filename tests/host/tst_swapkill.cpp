// SPDX-License-Identifier: MIT
/*
 * A program that exchanges or removes data sets is killed ahead of every call that changes a name
 * or a file, in itself and in the commands that it starts, and recovered. Then the data set is
 * wholly the old or wholly the new one. The end of the run prints what became of each gap.
 */
#include "catalog/mapcatalog.h"
#include "swaprig.h"
#include "testutils/childprogram.h"
#include <functional>
#include <memory>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Recovery = DataSetSwap::Recovery;

struct Point
{
    QByteArray name; // call and file
    int number = 0; // of the points with this name, from 1
};

struct ChildRun
{
    int status = 0; // -1 if it was killed
    QByteArray said;
};

// What does not differ from disk to disk is tried where a sync takes no time.
QString scratchTemplate()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    return (memory.isDir() && memory.isWritable() ? memory.filePath() : QDir::tempPath())
        + QStringLiteral("/tst_swapkill-XXXXXX");
}

QByteArray wordFor(Recovery recovery)
{
    switch (recovery) {
    case Recovery::Nothing:
        return "nothing to do";
    case Recovery::SwapFinished:
        return "swap finished";
    case Recovery::SwapUndone:
        return "swap undone";
    case Recovery::UndoFinished:
        return "undo finished";
    case Recovery::UndoAbandoned:
        return "undo abandoned";
    case Recovery::ClearFinished:
        return "removal finished";
    case Recovery::VoicesPutBack:
        return "voices put back";
    case Recovery::Failed:
        break;
    }
    return "failed";
}

/** A program of another kind looks at the maps and makes the folders that it misses. */
void readInTheGap()
{
    {
        DataSetLock orphans; // A move that begins behind a reader is tst_swaprecovery's.
        QVERIFY(orphans.tryLock());
    }
    const bool isGap = !SwapRig::exists(DataRoot::catalogFolder());
    const MapCatalog catalog;
    if (isGap)
        QDir().mkpath(catalog.tessarinDirectory() + QLatin1String("/incoming/deeper"));
}

} // namespace

class SwapKillTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void everyGapLeavesAWholeSet_data();
    void everyGapLeavesAWholeSet();
    void noGapOfTheSwapIsForgotten();
    void aKilledRecoveryIsGoneOnWith_data();
    void aKilledRecoveryIsGoneOnWith();
    void theNextProgramWaitsForAnOrphanedMove();

private:
    ChildRun run(const QByteArray &order, const Point &kill = {}) const;
    QList<Point> pointsOf(const QByteArray &order, const std::function<void()> &arrange) const;
    static std::unique_ptr<SwapRig> arrange(const QByteArray &order, bool withVoices);
    static bool isBefore(const QByteArray &order, const SwapRig &rig);
    static bool isAfter(const QByteArray &order, const SwapRig &rig);

    std::unique_ptr<QTemporaryDir> m_dir;
    QList<QByteArray> m_table;
};

void SwapKillTest::initTestCase()
{
    m_dir = std::make_unique<QTemporaryDir>(scratchTemplate());
    QVERIFY(m_dir->isValid());
    QVERIFY(QDir().mkpath(m_dir->filePath(QStringLiteral("home"))));
    qputenv("HOME", QFile::encodeName(m_dir->filePath(QStringLiteral("home"))));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_dir->filePath(QStringLiteral("config"))));
    qputenv("VEXA_MYDOCS", QFile::encodeName(m_dir->filePath(QStringLiteral("docs"))));
    DataSetLock lock; // makes its folders, so that every run meets the same
    QVERIFY(lock.tryLock());
}

void SwapKillTest::cleanupTestCase()
{
    std::printf("%-10s%-8s%-8s%-30s%-18s%s\n", "order", "voices", "reader", "killed ahead of",
                "recovery", "set in use");
    for (const QByteArray &line : std::as_const(m_table))
        std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

ChildRun SwapKillTest::run(const QByteArray &order, const Point &kill) const
{
    const QString state = m_dir->filePath(QStringLiteral("count"));
    TestFile::write(state, QByteArray(8, '\0'));
    QFile::remove(m_dir->filePath(QStringLiteral("log")));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VEXA_KILL_STATE"), state);
    environment.insert(QStringLiteral("VEXA_KILL_NAME"), QString::fromUtf8(kill.name));
    environment.insert(QStringLiteral("VEXA_KILL_AT"), QString::number(kill.number));
    environment.insert(QStringLiteral("VEXA_KILL_LOG"), m_dir->filePath(QStringLiteral("log")));
    ChildProgram child(QStringLiteral(VEXA_SWAPCHILD), {QString::fromUtf8(order)}, environment);
    ChildRun result;
    result.status = child.waitForFinished();
    result.said = child.output() + child.errorOutput();
    return result;
}

// Those of a run without a kill, in their order.
QList<Point> SwapKillTest::pointsOf(const QByteArray &order,
                                    const std::function<void()> &arrange) const
{
    arrange();
    run(order);
    QList<Point> points;
    std::map<QByteArray, int> numbers;
    const QList<QByteArray> lines =
        TestFile::read(m_dir->filePath(QStringLiteral("log"))).split('\n');
    for (const QByteArray &name : lines) {
        // The locks come ahead of everything.
        if (!name.isEmpty() && !name.endsWith(".lock"))
            points.append({name, ++numbers[name]});
    }
    return points;
}

std::unique_ptr<SwapRig> SwapKillTest::arrange(const QByteArray &order, bool withVoices)
{
    auto rig = std::make_unique<SwapRig>(withVoices);
    if (order == "undo" || order == "clear") {
        MapCatalog catalog;
        DataSetSwap dataSets;
        if (!dataSets.swap(&catalog))
            qFatal("no swap: %s", qPrintable(dataSets.errorString()));
    }
    return rig;
}

bool SwapKillTest::isBefore(const QByteArray &order, const SwapRig &rig)
{
    return order == "swap" || order == "discard" ? rig.isOld() : rig.isNew();
}

bool SwapKillTest::isAfter(const QByteArray &order, const SwapRig &rig)
{
    if (order == "clear")
        return rig.isNewAlone();
    if (order == "discard")
        return rig.isOldAlone();
    return order == "swap" ? rig.isNew() : rig.isOld();
}

void SwapKillTest::everyGapLeavesAWholeSet_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("voices");
    QTest::addColumn<bool>("reader");
    for (const QByteArray order : {"swap", "undo", "clear", "discard"}) {
        for (const bool voices : {true, false}) {
            const QList<Point> points = pointsOf(order, [&] { arrange(order, voices); });
            QVERIFY(points.size() >= 5);
            for (const Point &point : points) {
                for (const bool reader : {false, true}) {
                    if (reader && (order == "clear" || order == "discard"))
                        continue; // They leave no gap to fall into.
                    QTest::addRow("%s%s%s, %s %d", order.constData(), voices ? "" : " voiceless",
                                  reader ? " with a reader" : "", point.name.constData(),
                                  point.number)
                        << order << point.name << point.number << voices << reader;
                }
            }
        }
    }
}

void SwapKillTest::everyGapLeavesAWholeSet()
{
    QFETCH(QByteArray, order);
    QFETCH(QByteArray, name);
    QFETCH(int, number);
    QFETCH(bool, voices);
    QFETCH(bool, reader);
    const auto rig = arrange(order, voices);

    const ChildRun killed = run(order, {name, number});
    QVERIFY2(killed.status == -1, killed.said.constData());
    const bool noted = DataSetSwap::journalExists();
    // The set must not be offered for going back to while it may be half there.
    QVERIFY(!noted || !DataSetSwap::backupExists());
    if (reader)
        readInTheGap();
    QString text;
    const Recovery recovery = recoverBehindLock(&text);

    const bool before = isBefore(order, *rig);
    const bool after = isAfter(order, *rig);
    QVERIFY2(before || after, SwapRig::description() + text.toUtf8());
    QCOMPARE(text, QString());
    QVERIFY(!DataSetSwap::journalExists());
    // What was noted and can be finished is finished; what was not noted has not begun.
    QVERIFY(!noted || (after && recovery != Recovery::Failed && recovery != Recovery::Nothing));
    const bool isNewSet =
        order == "clear" || (order == "swap" && after) || (order == "undo" && before);
    m_table.append(order.leftJustified(10) + QByteArray(voices ? "yes" : "no").leftJustified(8)
                   + QByteArray(reader ? "yes" : "no").leftJustified(8)
                   + (name + ' ' + QByteArray::number(number)).leftJustified(30)
                   + wordFor(recovery).leftJustified(18) + (isNewSet ? "whole new" : "whole old"));
    // And it is the end of it: the next start finds nothing.
    QCOMPARE(recoverBehindLock(), Recovery::Nothing);
}

void SwapKillTest::noGapOfTheSwapIsForgotten()
{
    const QList<Point> points = pointsOf("swap", [] { arrange("swap", true); });
    QList<QByteArray> names;
    for (const Point &point : points)
        names.append(point.name);

    const QList<QByteArray> moves {"voices", "Tessarin_", "Tessarin", "diskcache_", "diskcache"};
    QList<QByteArray> wanted {"open .vexa-swap.json.new", "write .vexa-swap.json.new",
                              "rename .vexa-swap.json"};
    for (const QByteArray &target : moves)
        wanted << "before mv"
               << "alone mv"
               << "command-rename " + target << "behind mv";
    wanted << "unlink .vexa-swap.json";
    QList<QByteArray> found;
    for (const QByteArray &name : std::as_const(names)) {
        if (wanted.contains(name))
            found.append(name);
    }
    QCOMPARE(found, wanted);
}

void SwapKillTest::aKilledRecoveryIsGoneOnWith_data()
{
    QTest::addColumn<QByteArray>("order");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("number");
    for (const QByteArray order : {"swap", "undo", "clear"}) {
        const QList<Point> points = pointsOf(order, [&] { arrange(order, true); });
        for (const Point &point : points) {
            const bool isState =
                point.name.contains("rename ") || point.name == "unlink .vexa-swap.json";
            if (isState && !point.name.endsWith(".vexa-swap.json.new")
                && point.name != "rename .vexa-swap.json")
                QTest::addRow("%s, %s", order.constData(), point.name.constData())
                    << order << point.name << point.number;
        }
    }
}

void SwapKillTest::aKilledRecoveryIsGoneOnWith()
{
    QFETCH(QByteArray, order);
    QFETCH(QByteArray, name);
    QFETCH(int, number);
    std::unique_ptr<SwapRig> rig;
    const auto cutShort = [&] {
        rig = arrange(order, true);
        QCOMPARE(run(order, {name, number}).status, -1);
    };
    const QList<Point> points = pointsOf("recover", cutShort);
    QVERIFY(isAfter(order, *rig));
    QVERIFY(!points.isEmpty());

    for (const Point &point : points) {
        cutShort();
        QCOMPARE(run("recover", point).status, -1);

        QString text;
        const Recovery recovery = recoverBehindLock(&text);

        QVERIFY2(isAfter(order, *rig), point.name + ' ' + SwapRig::description() + text.toUtf8());
        m_table.append(order.leftJustified(10) + QByteArray("yes").leftJustified(8)
                       + QByteArray("no").leftJustified(8)
                       + (name + ", then " + point.name).leftJustified(60) + wordFor(recovery));
        QVERIFY(!DataSetSwap::journalExists());
    }
}

void SwapKillTest::theNextProgramWaitsForAnOrphanedMove()
{
    const SwapRig rig;
    const QString gate = m_dir->filePath(QStringLiteral("gate"));
    const QString bin = m_dir->filePath(QStringLiteral("bin"));
    QDir().mkpath(bin);
    TestFile::write(bin + QLatin1String("/mv"),
                    "#!/bin/sh\ntouch " + QFile::encodeName(gate) + ".reached\nwhile [ ! -e "
                        + QFile::encodeName(gate)
                        + " ]; do sleep 0.02; done\nexec /bin/mv \"$@\"\n");
    QFile::setPermissions(bin + QLatin1String("/mv"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), bin + QLatin1String(":/usr/bin:/bin"));
    ChildProgram swapper(QStringLiteral(VEXA_SWAPCHILD), {QStringLiteral("swap")}, environment);
    QVERIFY(swapper.waitForFile(gate + QLatin1String(".reached")));
    swapper.kill();

    ChildProgram next(QStringLiteral(VEXA_SWAPCHILD), {QStringLiteral("recover")});
    // As long as the move is about to happen, nobody touches the folders.
    QVERIFY(!next.waitFor([] { return !DataSetSwap::journalExists(); }, 500));
    QVERIFY(next.isRunning());
    TestFile::write(gate, "open");

    QCOMPARE(next.waitForFinished(), 0);
    QCOMPARE(next.output(), QByteArray::number(int(Recovery::SwapFinished)) + "\n\n");
    QVERIFY2(rig.isNew(), SwapRig::description());
}

QTEST_GUILESS_MAIN(SwapKillTest)
#include "tst_swapkill.moc"
