// SPDX-License-Identifier: MIT
/*
 * An update is killed ahead of the calls that change files, from its first to its last, in the
 * program itself and in the commands that it starts; then it is run again until it is done. Of
 * calls of one name the first, one in the middle and the last are taken. A plain run takes a third
 * of them all, and those of the shell's commands, with which the swap is done; all of them with
 *
 *     VEXA_KILL_POINTS=all build/dev/tests/tst_cliupdatekill
 */
#include "updaterig.h"
#include <QtTest>

namespace {

struct Point
{
    QByteArray name; // call and file
    int number = 0; // of the points with this name, from 1
};

constexpr int Stride = 3; // every so many points in a plain run

// Made by chance, so no later run comes by it.
bool isRandom(const QByteArray &name)
{
    static const QRegularExpression form(QStringLiteral("[.-][A-Za-z]{6}(/|$)|\\(nameless\\)"));
    static const QRegularExpression plain(QStringLiteral("\\.(config|voices)$"));
    const QString text = QString::fromUtf8(name);
    return form.match(text).hasMatch() && !plain.match(text).hasMatch();
}

// Ahead of the command, behind it, and the command alone.
bool isOfAMove(const QByteArray &name)
{
    return name.endsWith(" mv");
}

} // namespace

class CliUpdateKillTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void goesOnFromEveryPoint();
    void whatHasComeIsNotFetchedAgain();
    void goingBackIsWholeFromEveryPoint();

private:
    ProgramRun runUntil(const Point &point, const QStringList &command);
    QList<Point> pointsOf(const QStringList &command);
    void restore(const QString &name);
    void keep(const QString &name);
    Tiles mainSet() const;
    bool isOld() const { return mainSet() == m_old; }
    bool isNew() const { return mainSet() == m_new; }
    // For the log: which files are not as they should be.
    QByteArray unlike(const Tiles &expected) const
    {
        const Tiles found = mainSet();
        QByteArray names;
        const QStringList all = (found + expected).keys();
        for (const QString &name : all) {
            if (found.value(name) != expected.value(name))
                names += ' ' + name.toUtf8();
        }
        return names;
    }

    std::unique_ptr<UpdateRig> rig;
    Tiles m_old;
    Tiles m_new;
};

// One device is put away as it was before, and brought back for every kill.
void CliUpdateKillTest::initTestCase()
{
    rig = std::make_unique<UpdateRig>();
    QVERIFY(rig->install({QStringLiteral("FI"), QStringLiteral("SE")}));
    rig->publishNext();
    m_old = mainSet();
    keep(QStringLiteral("before"));
    QCOMPARE(rig->run(words("update")).code, 0);
    m_new = mainSet();
    keep(QStringLiteral("after"));
    QVERIFY(m_old != m_new);
}

// The order of a region's tiles in the content file depends on where the run before was killed.
Tiles CliUpdateKillTest::mainSet() const
{
    Tiles files = rig->mainSet();
    QByteArray &content = files[QStringLiteral("/cities/Tessarin/content.xml")];
    QList<QByteArray> lines = content.split('\n');
    std::sort(lines.begin(), lines.end());
    content = lines.join('\n');
    return files;
}

void CliUpdateKillTest::cleanupTestCase()
{
    rig.reset();
}

void CliUpdateKillTest::keep(const QString &name)
{
    QCOMPARE(QProcess::execute(QStringLiteral("cp"),
                               {QStringLiteral("-a"), rig->dataFolder(), rig->scratchPath(name)}),
             0);
}

void CliUpdateKillTest::restore(const QString &name)
{
    QVERIFY(QDir(rig->dataFolder()).removeRecursively());
    QCOMPARE(QProcess::execute(QStringLiteral("cp"),
                               {QStringLiteral("-a"), rig->scratchPath(name), rig->dataFolder()}),
             0);
}

ProgramRun CliUpdateKillTest::runUntil(const Point &point, const QStringList &command)
{
    const QString state = rig->scratchPath(QStringLiteral("count"));
    TestFile::write(state, QByteArray(8, '\0'));
    QFile::remove(rig->scratchPath(QStringLiteral("log")));
    QProcessEnvironment environment = rig->environment();
    environment.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(VEXA_KILLPOINTS));
    // The address checker wants to be first; the library does not mind.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("verify_asan_link_order=0"));
    environment.insert(QStringLiteral("VEXA_KILL_STATE"), state);
    environment.insert(QStringLiteral("VEXA_KILL_NAME"), QString::fromUtf8(point.name));
    environment.insert(QStringLiteral("VEXA_KILL_AT"), QString::number(point.number));
    environment.insert(QStringLiteral("VEXA_KILL_LOG"), rig->scratchPath(QStringLiteral("log")));
    ChildProgram child(QStringLiteral(VEXA_MAPS_PROGRAM), rig->arguments(command), environment);
    ProgramRun run;
    run.code = child.waitForFinished();
    run.out = child.output();
    run.err = child.errorOutput();
    return run;
}

// Those of a run that is let live.
QList<Point> CliUpdateKillTest::pointsOf(const QStringList &command)
{
    const ProgramRun run = runUntil({}, command);
    if (run.code != 0)
        qWarning("%s", qPrintable(textOf(run)));
    QMap<QByteArray, int> counts;
    QList<QByteArray> order;
    const QList<QByteArray> lines =
        TestFile::read(rig->scratchPath(QStringLiteral("log"))).split('\n');
    for (const QByteArray &line : lines) {
        if (line.isEmpty() || isRandom(line))
            continue;
        if (++counts[line] == 1)
            order.append(line);
    }
    QList<Point> points;
    for (const QByteArray &name : std::as_const(order)) {
        QList<int> numbers {1, (counts.value(name) + 1) / 2, counts.value(name)};
        numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
        for (int number : std::as_const(numbers))
            points.append({name, number});
    }
    if (qgetenv("VEXA_KILL_POINTS") == "all")
        return points;
    QList<Point> chosen;
    for (int i = 0; i < points.size(); ++i) {
        if (i % Stride == 0 || isOfAMove(points.at(i).name))
            chosen.append(points.at(i));
    }
    return chosen;
}

void CliUpdateKillTest::goesOnFromEveryPoint()
{
    restore(QStringLiteral("before"));
    const QList<Point> points = pointsOf(words("update"));
    QVERIFY(isNew());
    int killed = 0;
    int atTheOld = 0;
    for (const Point &point : points) {
        restore(QStringLiteral("before"));
        const QByteArray where = point.name + ", " + QByteArray::number(point.number);

        const ProgramRun cut = runUntil(point, words("update"));

        killed += cut.code == -1 ? 1 : 0;
        // Whoever looks next finds one of the two sets, whole, with what belongs to neither.
        rig->run(words("status"));
        QVERIFY2(isOld() || isNew(), where.constData());
        atTheOld += isOld() ? 1 : 0;
        const ProgramRun again = rig->run(words("update"));
        // Killed behind the last word, it was done: then the backup is in the way, or nothing is
        // left to do.
        QVERIFY2(again.code == 0 || (isNew() && again.err.contains("--clear-backup")),
                 (where + ": " + textOf(again).toUtf8()).constData());
        QVERIFY2(isNew(), (where + unlike(m_new)).constData());
        QCOMPARE(rig->folders(), UpdateRig::mainAndBackupFolders());
        QCOMPARE(rig->run(words("update --undo")).code, 0);
        QVERIFY2(isOld(), (where + unlike(m_old)).constData());
    }
    qInfo("%d points, %d killed, %d at the old set", int(points.size()), killed, atTheOld);
    QVERIFY(killed > 20);
    QVERIFY(atTheOld > 10 && atTheOld < points.size());
}

void CliUpdateKillTest::whatHasComeIsNotFetchedAgain()
{
    restore(QStringLiteral("before"));
    const int before = rig->answers("/archives/2/FI.zip");
    const ProgramRun cut =
        runUntil({"before mv", 1}, words("update")); // all is prepared, nothing is swapped
    QCOMPARE(cut.code, -1);
    QVERIFY(rig->answers("/archives/2/FI.zip") > before);
    const int fetched = rig->answers("/archives/");

    QCOMPARE(rig->run(words("update")).code, 0);

    QCOMPARE(rig->answers("/archives/"), fetched);
    QVERIFY(isNew());
}

void CliUpdateKillTest::goingBackIsWholeFromEveryPoint()
{
    restore(QStringLiteral("after"));
    const QList<Point> points = pointsOf(words("update --undo"));
    QVERIFY(isOld());
    int killed = 0;
    for (const Point &point : points) {
        restore(QStringLiteral("after"));
        const QByteArray where = point.name + ", " + QByteArray::number(point.number);

        killed += runUntil(point, words("update --undo")).code == -1 ? 1 : 0;

        rig->run(words("status"));
        QVERIFY2(isOld() || isNew(), where.constData());
        if (isNew())
            QCOMPARE(rig->run(words("update --undo")).code, 0);
        QVERIFY2(isOld(), (where + unlike(m_old)).constData());
        // What was undone can be done again, also where the note of it was lost.
        const ProgramRun again = rig->run(words("update"));
        QVERIFY2(again.code == 0, (where + ": " + textOf(again).toUtf8()).constData());
        QVERIFY2(isNew(), (where + unlike(m_new)).constData());
    }
    qInfo("%d points, %d killed", int(points.size()), killed);
    QVERIFY(killed > 3);
}

QTEST_GUILESS_MAIN(CliUpdateKillTest)
#include "tst_cliupdatekill.moc"
