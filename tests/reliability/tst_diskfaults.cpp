// SPDX-License-Identifier: MIT
/*
 * A disk that is full, read-only or broken while the real program works: at one call that changes a
 * file, from one such call on, and with so many pages left. The program must say in words what it
 * could not do or do it all the same, every region must be whole or not there, and the same command
 * must come to its end as soon as the disk is well again, without any repair.
 *
 * A plain run takes some of the calls; all of them with VEXA_LONG=1.
 */
#include "killworld.h"
#include "testutils/reporttable.h"
#include "testutils/smalldisk.h"
#include <algorithm>
#include <cerrno>
#include <QProcess>
#include <QtTest>

namespace {

constexpr qint64 Page = 4096;
constexpr int NetworkFailed = 4; // exit code
constexpr int Patience = 2; // s
constexpr int PatienceForATry = 7; // s: the engine tries again after five
constexpr int ShortestSentence = 20; // letters
constexpr qint64 Plenty = 64 * 1024 * 1024;

struct Step
{
    const char *name;
    const char *before; ///< the kept state
    const char *command;
    const char *after;
};

const Step Steps[] = {
    {"catalogue refresh", "empty", "refresh", "catalogue"},
    {"download, unpack, move and record", "catalogue", "install FI SE", "installed"},
    {"removal", "installed", "remove FI", "removed"},
    {"city index", "installed", "cities --add DE-B --name Berlin --package-version 26.11",
     "cities"},
    {"update and swap", "installed", "update", "updated"},
    {"swap back", "updated", "update --undo", "undone"},
    {"removal of the backup", "updated", "update --clear-backup", "cleared"},
};
constexpr int FirstOfNextVersion = 4; // of the steps

struct Fault
{
    const char *name;
    int number;
    bool lasting;
};

const Fault Faults[] = {
    {"one call fails (EIO)", EIO, false},
    {"full from one call on (ENOSPC)", ENOSPC, true},
    {"read-only from one call on (EROFS)", EROFS, true},
};

/** How often each end was met. */
struct Count
{
    int runs = 0;
    int done = 0;
    int told = 0;
    int whole = 0;
};

QStringList commandOf(const Step &step, int patience)
{
    return QStringList {QStringLiteral("--timeout"), QString::number(patience)}
    + words(step.command);
}

/** True if there is nothing to tell. */
bool tell(const QStringList &wrong)
{
    for (const QString &line : wrong)
        qWarning("%s", qPrintable(line)); // one by one: Qt cuts the text of a failure
    return wrong.isEmpty();
}

/** For the log of a failure. */
QString saidBy(const ProgramRun &run)
{
    return QLatin1String(" [") + QString::number(run.code) + QLatin1String(": ")
        + textOf(run).trimmed() + QLatin1Char(']');
}

/** What the program says at the end, without its name. */
QByteArray lastLine(const QByteArray &text)
{
    const QByteArray line = text.trimmed().split('\n').last();
    const QByteArray name("vexa-maps: ");
    return line.startsWith(name) ? line.mid(name.size()) : QByteArray();
}

} // namespace

class DiskFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void endsWellWithFailingCalls_data() { addSteps(); }
    void endsWellWithFailingCalls();
    void endsWellOnASmallDisk_data() { addSteps(); }
    void endsWellOnASmallDisk();
    void cleanupTestCase();

private:
    static void addSteps();
    ProgramRun runWithFault(const KillPoint &point, const Fault &fault, const QStringList &command);
    QList<KillPoint> pointsOf(const Step &step);
    /** What was wrong with the end of a run and with the one that followed; empty if nothing. */
    QString judge(const Step &step, const ProgramRun &run, Count *count);
    Tiles mainSet() const;
    /** The names of files that are not as they should be. */
    QString unlike(const Tiles &wanted) const;
    void put(const char *state);
    void addRow(const Step &step, const char *fault, const Count &count);
    void publishFor(int step);

    std::unique_ptr<KillWorld> world;
    std::unique_ptr<SmallDisk> disk;
    std::unique_ptr<KillOrders> orders;
    QMap<QByteArray, Tiles> m_sets;
    ReportTable m_table {QStringLiteral("diskfaults"),
                         {QStringLiteral("Step"), QStringLiteral("Fault"), QStringLiteral("Runs"),
                          QStringLiteral("Done all the same"), QStringLiteral("Failed in words"),
                          QStringLiteral("Whole when the disk is well again")}};
    int m_rows = 0;
};

void DiskFaultsTest::initTestCase()
{
    world = std::make_unique<KillWorld>();
    orders = std::make_unique<KillOrders>(world->scratchPath(QString()));
    QVERIFY(QDir().mkpath(world->dataFolder()));
    disk = std::make_unique<SmallDisk>(Plenty, world->dataFolder());
    world->keep("empty");
    for (const Step &step : Steps) {
        if (&step - Steps == FirstOfNextVersion)
            world->publishNext();
        put(step.before);
        const ProgramRun run = world->run(words(step.command));
        QVERIFY2(run.code == 0, qPrintable(textOf(run)));
        world->keep(step.after);
        m_sets.insert(step.after, mainSet());
    }
}

void DiskFaultsTest::addSteps()
{
    QTest::addColumn<int>("number");
    for (const Step &step : Steps)
        QTest::newRow(step.name) << int(&step - Steps);
}

// The order of the regions' tiles in the content file may differ after a second run.
Tiles DiskFaultsTest::mainSet() const
{
    Tiles files = world->mainSet();
    // What a refresh has left there is cleared by the next one.
    const QStringList names = files.keys();
    for (const QString &name : names) {
        if (name.contains(QLatin1String("/incoming/")))
            files.remove(name);
    }
    // One of a version that is not in use is read by nobody.
    const QString folder = QStringLiteral("/cities/Tessarin/catalog-");
    if (files.contains(folder + world->newVersion + QLatin1String(".xml")))
        files.remove(folder + world->oldVersion + QLatin1String(".xml"));
    QByteArray &content = files[QStringLiteral("/cities/Tessarin/content.xml")];
    QList<QByteArray> lines = content.split('\n');
    std::sort(lines.begin(), lines.end());
    content = lines.join('\n');
    return files;
}

QString DiskFaultsTest::unlike(const Tiles &wanted) const
{
    const Tiles found = mainSet();
    QString names;
    const QStringList all = (found + wanted).keys();
    for (const QString &name : all) {
        if (found.value(name) != wanted.value(name))
            names += QLatin1Char(' ') + name;
    }
    return names;
}

// Into the mounted folder, which stays.
void DiskFaultsTest::put(const char *state)
{
    QVERIFY(disk->setReadOnly(false) && disk->resize(Plenty));
    const QString from = world->scratchPath(QLatin1String(state));
    QCOMPARE(QProcess::execute(QStringLiteral("/bin/sh"),
                               {QStringLiteral("-c"),
                                QStringLiteral("find '%1' -mindepth 1 -delete && cp -a '%2/.' '%1'")
                                    .arg(world->dataFolder(), from)}),
             0);
}

// The server's folder is that of one version; the next one also has what the first one had.
void DiskFaultsTest::publishFor(int step)
{
    if (step >= FirstOfNextVersion)
        world->next.publish(world->newVersion);
    else
        world->content.publish(world->oldVersion);
}

ProgramRun DiskFaultsTest::runWithFault(const KillPoint &point, const Fault &fault,
                                        const QStringList &command)
{
    QProcessEnvironment environment = world->environment();
    KillOrders::preload(&environment, QStringLiteral(VEXA_KILLPOINTS));
    KillOrders::withSyncs(&environment);
    KillOrders::failInstead(&environment, fault.number, fault.lasting);
    orders->give(&environment, point);
    ChildProgram child(QStringLiteral(VEXA_MAPS_PROGRAM), world->arguments(command), environment);
    ProgramRun run;
    run.code = child.waitForFinished();
    run.out = child.output();
    run.err = child.errorOutput();
    return run;
}

// One in the middle of each kind, and in the long form the first and the last as well.
QList<KillPoint> DiskFaultsTest::pointsOf(const Step &step)
{
    put(step.before);
    const ProgramRun run = runWithFault({}, Faults[0], words(step.command));
    if (run.code != 0)
        qFatal("%s", qPrintable(textOf(run)));
    QMap<QString, QList<KillPoint>> kinds;
    const QList<KillPoint> all = orders->points();
    for (const KillPoint &point : all) {
        // The commands as such are points for kills. And a lock that is never let go looks to the
        // program itself like another program at work: it waits and blames whom it waits for.
        const bool isLock = point.name.startsWith("unlink ") && point.name.endsWith(".lock");
        if (!isLock && !point.name.startsWith("alone ") && !point.name.startsWith("behind "))
            kinds[kindOf(point)].append(point);
    }
    QList<KillPoint> points;
    int number = 0;
    for (const QList<KillPoint> &kind : std::as_const(kinds)) {
        if (ReportTable::longForm()) {
            points.append(kind.first());
            if (kind.size() > 2)
                points.append(kind.at(kind.size() / 2));
            if (kind.size() > 1)
                points.append(kind.last());
        } else if (number++ % 6 == 0) {
            points.append(kind.at(kind.size() / 2));
        }
    }
    return points;
}

QString DiskFaultsTest::judge(const Step &step, const ProgramRun &run, Count *count)
{
    ++count->runs;
    const Tiles wanted = m_sets.value(step.after);
    if (run.code < 0)
        return QStringLiteral("it does not end");
    if (run.code == NetworkFailed)
        return QStringLiteral("it blames the server");
    if (run.code == 0) {
        ++count->done;
        if (mainSet() != wanted)
            return QLatin1String("it says that all is done, and it is not:") + unlike(wanted);
    } else {
        ++count->told;
        if (lastLine(run.err).size() < ShortestSentence)
            return QLatin1String("no sentence: ") + QString::fromUtf8(run.err);
    }
    world->run(words("status"));
    for (const QString &id : KillWorld::ids()) {
        if (world->find(id) == RegionFound::Damaged)
            return QLatin1String("damaged: ") + world->damage(id);
    }
    // Its exit code says nothing: what is done already may be refused.
    const ProgramRun again = world->run(words(step.command));
    if (mainSet() != wanted)
        return QLatin1String("the next run does not repair it: ") + textOf(again);
    if (!world->strayTiles().isEmpty())
        return QLatin1String("tiles of nobody: ") + world->strayTiles().join(QLatin1String(", "));
    ++count->whole;
    return QString();
}

void DiskFaultsTest::addRow(const Step &step, const char *fault, const Count &count)
{
    m_table.addRow({QLatin1String(step.name), QLatin1String(fault), QString::number(count.runs),
                    QString::number(count.done), QString::number(count.told),
                    QString::number(count.whole)});
    ++m_rows;
}

void DiskFaultsTest::endsWellWithFailingCalls()
{
    QFETCH(int, number);
    const Step &step = Steps[number];
    publishFor(number);
    const QList<KillPoint> points = pointsOf(step);
    QStringList wrong;
    for (const Fault &fault : Faults) {
        Count count;
        for (const KillPoint &point : points) {
            put(step.before);
            const ProgramRun run = runWithFault(
                point, fault, commandOf(step, fault.lasting ? Patience : PatienceForATry));
            const QString trouble = judge(step, run, &count);
            if (!trouble.isEmpty())
                wrong.append(QLatin1String(fault.name) + QLatin1String(", at ")
                             + QString::fromUtf8(point.text()) + QLatin1String(": ") + trouble
                             + saidBy(run));
        }
        addRow(step, fault.name, count);
    }
    QVERIFY(tell(wrong));
}

void DiskFaultsTest::endsWellOnASmallDisk()
{
    QFETCH(int, number);
    const Step &step = Steps[number];
    publishFor(number);
    QStringList wrong;
    const auto isDone = [&](qint64 pages, Count *count) {
        // With none it is also seen that tries without end are no news.
        const ProgramRun run = world->run(commandOf(step, pages == 0 ? PatienceForATry : Patience));
        if (!disk->setReadOnly(false) || !disk->resize(Plenty))
            qFatal("the disk does not get well");
        const QString trouble = judge(step, run, count);
        if (!trouble.isEmpty())
            wrong.append(QString::number(pages) + QLatin1String(" pages: ") + trouble
                         + saidBy(run));
        return run.code == 0;
    };

    Count full;
    int doneInARow = 0;
    for (qint64 pages = 0; doneInARow < 2 && pages * Page < Plenty;) {
        put(step.before);
        QVERIFY(disk->setFree(pages * Page));
        doneInARow = isDone(pages, &full) ? doneInARow + 1 : 0;
        pages += ReportTable::longForm() ? 1 + pages / 50 : 1 + pages / 2;
    }
    addRow(step, "so many pages are free, from none up", full);
    Count readOnly;
    put(step.before);
    QVERIFY(disk->setReadOnly(true));
    QVERIFY(!isDone(-1, &readOnly));
    addRow(step, "mounted read-only", readOnly);
    QVERIFY(tell(wrong));
}

void DiskFaultsTest::cleanupTestCase()
{
    if (m_rows == int(std::size(Steps)) * (int(std::size(Faults)) + 2))
        QVERIFY(m_table.save());
    disk.reset();
    world.reset();
}

int main(int argc, char **argv)
{
    SmallDisk::allow();
    QCoreApplication application(argc, argv);
    DiskFaultsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_diskfaults.moc"
