// SPDX-License-Identifier: MIT
/*
 * The real program is killed with SIGKILL ahead of the calls that change files, from the first to
 * the last of each order that a user can give, in itself and in the commands that it starts; a kill
 * ahead of a call is one behind the call before. Then it is started again as ever, with nothing
 * repaired. Every region must then be not installed, or whole and identical to its archive; and the
 * next order must bring the device to what it would be without the kill, file by file.
 *
 * A run without a kill tells the points of an order. The short form takes some of each step, which
 * the long form (VEXA_LONG=1, about an hour) does not: it takes every one. One row of the table is
 * one step of one order. To repeat a single kill:
 *
 *     VEXA_KILL_ONLY='rename content.xml, 1' build/dev/tests/tst_killmatrix anOrder:remove
 */
#include "killworld.h"
#include "testutils/reporttable.h"
#include <csignal>
#include <QSet>
#include <QtTest>

namespace {

const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");
const QString No = QStringLiteral("NO");

/** One order of a user, on a device in a certain state. */
struct Order
{
    const char *name;
    const char *from; // the state
    const char *command; // what is killed
    const char *goOn; // what goes on with it; the command itself follows where that is not enough
    QStringList regions; // that it is about; the others must be whole throughout
    int perStep; // points of a step in the short form
    bool newerFinland = false; // served meanwhile
    const char *back = nullptr; // an order that leads back to the state
};

const QList<Order> &orders()
{
    static const QList<Order> all {
        {"install", "empty", "install FI SE NO", "resume", {Fi, Se, No}, 2},
        {"resume half a download", "half", "resume", "resume", {No}, 1},
        {"add a region that shares tiles", "one", "install SE", "resume", {Se}, 1},
        {"update in place", "three", "install FI", "resume", {Fi}, 1, true},
        {"remove", "three", "remove FI", "resume", {Fi}, 10},
        {"cancel", "half", "cancel NO", "cancel", {No}, 1},
        {"update all", "two", "update", "update", {Fi, Se}, 1, false, "update --undo"},
        {"undo the update", "updated", "update --undo", "resume", {Fi, Se}, 1, false, "update"},
        {"add a city",
         "three",
         "cities --add b --name Bergen --package-version 2",
         "resume",
         {},
         9},
    };
    return all;
}

/** A new file that did not get its name; it is removed when the next program changes something. */
enum class Ignore { Nothing, Nameless };

bool isNameless(const QString &name)
{
    static const QRegularExpression form(QStringLiteral("\\.xml\\.[A-Za-z]{6}$"));
    return form.match(name).hasMatch();
}

/** What became of the regions that were cut short in one step of an order. */
struct Outcome
{
    int kills = 0;
    int found[5] = {}; // by RegionFound
    int repairs = 0; // what the next order did not bring to its end
};

} // namespace

class KillMatrixTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void anOrder_data();
    void anOrder();
    void whatHasComeIsNotFetchedAgain();
    void nothingIsReplacedBeforeTheNewFileIsOnTheDisk_data();
    void nothingIsReplacedBeforeTheNewFileIsOnTheDisk();
    void noStepIsOverBeforeItsFilesAreOnTheDisk();

private:
    void makeStates();
    void halveADownload();
    void prepare(const Order &order) const;
    void carryOut(const Order &order, const KillPoint &point);
    void look(const Order &order, Outcome *outcome) const;
    bool goOn(const Order &order) const;
    void goBack(const Order &order) const;
    QByteArray differenceFrom(const Tiles &expected, Ignore ignored = Ignore::Nothing) const;
    Tiles mainSet() const;
    QList<KillPoint> chosen(const Order &order, const QList<KillPoint> &points) const;

    std::unique_ptr<KillWorld> m_world;
    Tiles m_before; // all files of the set in use
    Tiles m_after;
    QStringList m_foldersAfter;
    QMap<QString, Outcome> m_outcomes; // of an order, by step
    std::unique_ptr<ReportTable> m_table;
    int m_kills = 0;
    int m_unreached = 0;
    int m_leftovers = 0;
};

void KillMatrixTest::initTestCase()
{
    m_table = std::make_unique<ReportTable>(
        QStringLiteral("killmatrix"),
        QStringList {QStringLiteral("Order"), QStringLiteral("Killed in"), QStringLiteral("Kills"),
                     QStringLiteral("Not installed"), QStringLiteral("Whole, as before"),
                     QStringLiteral("Whole, newer"), QStringLiteral("Being put in place"),
                     QStringLiteral("Damaged"), QStringLiteral("Repair needed")});
    KillWorld::useMemory();
    m_world = std::make_unique<KillWorld>();
    makeStates();
}

void KillMatrixTest::cleanupTestCase()
{
    m_table->addNote(
        QStringLiteral(
            "%1 kills; %2 more runs ended before their point came again. Counted are the "
            "regions of the order (of \"add a city\" the file), as the "
            "next start finds them. \"Being put in place\": listed as before, its newer "
            "files half there, and pending; the next order finishes it. %3 files lay in "
            "the download folder at the end.")
            .arg(m_kills)
            .arg(m_unreached)
            .arg(m_leftovers));
    QVERIFY(m_table->save());
    m_world.reset();
}

// Each is put away once and brought back for every kill.
void KillMatrixTest::makeStates()
{
    KillWorld &world = *m_world;
    QCOMPARE(world.run(words("refresh")).code, 0);
    world.keep("empty");
    halveADownload();
    world.keep("half");
    world.restore("empty");
    QVERIFY(world.install({Fi}));
    QCOMPARE(world.run(words("cities --add a --name Aarhus --package-version 1")).code, 0);
    world.keep("one");
    QCOMPARE(world.run(words("install SE")).code, 0);
    world.keep("two");
    QCOMPARE(world.run(words("install NO")).code, 0);
    world.keep("three");
    world.restore("two");
    world.publishNext();
    QCOMPARE(world.run(words("update")).code, 0);
    world.keep("updated");
}

// By a user who stops it; the server is slow meanwhile.
void KillMatrixTest::halveADownload()
{
    KillWorld &world = *m_world;
    const auto serveAt = [&world](qint64 bytesPerSecond) {
        world.server.stop();
        world.server.setRateLimit(bytesPerSecond);
        world.server.start();
    };
    serveAt(100000);
    const auto child = world.start(words("install NO"));
    QVERIFY(child->waitForSize(world.downloadFolder() + QLatin1String("/NO.7z"), 1000));
    child->sendSignal(SIGINT);
    QCOMPARE(child->waitForFinished(), 130);
    serveAt(0);
    QVERIFY(!world.scratchFiles().isEmpty());
    QCOMPARE(world.pendingIds(), QStringList {No});
}

void KillMatrixTest::prepare(const Order &order) const
{
    m_world->restore(order.from);
    m_world->serveNewerFinland(order.newerFinland);
}

// The order of a region's tiles in the content file depends on where the run before was killed.
Tiles KillMatrixTest::mainSet() const
{
    Tiles files = m_world->mainSet();
    QByteArray &content = files[QStringLiteral("/cities/Tessarin/content.xml")];
    QList<QByteArray> lines = content.split('\n');
    std::sort(lines.begin(), lines.end());
    content = lines.join('\n');
    return files;
}

QByteArray KillMatrixTest::differenceFrom(const Tiles &expected, Ignore ignored) const
{
    const Tiles found = mainSet();
    QByteArray names;
    const QStringList all = (found + expected).keys();
    for (const QString &name : all) {
        const bool counts = ignored == Ignore::Nothing || !isNameless(name);
        if (counts && found.value(name) != expected.value(name))
            names += ' ' + name.toUtf8();
    }
    return names;
}

// Of each step so many, at first one of every kind.
QList<KillPoint> KillMatrixTest::chosen(const Order &order, const QList<KillPoint> &points) const
{
    const QByteArray only = qgetenv("VEXA_KILL_ONLY");
    QList<KillPoint> some;
    QMap<QString, QSet<QString>> kinds; // taken, by step
    for (const KillPoint &point : points) {
        QSet<QString> &taken = kinds[stepOf(point.name)];
        const bool isRepresentative =
            taken.size() < order.perStep && !taken.contains(kindOf(point));
        if (only.isEmpty() ? ReportTable::longForm() || isRepresentative : point.text() == only) {
            taken.insert(kindOf(point));
            some.append(point);
        }
    }
    return some;
}

void KillMatrixTest::anOrder_data()
{
    QTest::addColumn<int>("number");
    for (int i = 0; i < orders().size(); ++i)
        QTest::newRow(orders().at(i).name) << i;
}

void KillMatrixTest::anOrder()
{
    QFETCH(int, number);
    const Order &order = orders().at(number);
    prepare(order);
    m_before = mainSet();
    const QList<KillPoint> points = m_world->pointsOf(words(order.command));
    m_after = mainSet();
    m_foldersAfter = m_world->folders();
    m_outcomes.clear();

    const QList<KillPoint> some = chosen(order, points);
    for (const KillPoint &point : some) {
        carryOut(order, point);
        if (QTest::currentTestFailed())
            qWarning("killed at %s", point.text().constData());
    }

    int damaged = 0;
    int repairs = 0;
    for (auto step = m_outcomes.cbegin(); step != m_outcomes.cend(); ++step) {
        QStringList cells {QLatin1String(order.name), step.key(),
                           QString::number(step.value().kills)};
        for (const int count : step.value().found)
            cells.append(QString::number(count));
        m_table->addRow(cells << QString::number(step.value().repairs));
        damaged += step.value().found[int(RegionFound::Damaged)];
        repairs += step.value().repairs;
    }
    QCOMPARE(damaged, 0);
    QCOMPARE(repairs, 0);
    QVERIFY(!m_outcomes.isEmpty() || qEnvironmentVariableIsSet("VEXA_KILL_ONLY"));
}

void KillMatrixTest::carryOut(const Order &order, const KillPoint &point)
{
    prepare(order);
    const ProgramRun killed = m_world->runUntil(point, words(order.command));
    if (killed.code != -1) {
        ++m_unreached; // Two threads are at work: not every run comes by the same points.
        return;
    }
    ++m_kills;
    Outcome &outcome = m_outcomes[stepOf(point.name)];
    ++outcome.kills;
    look(order, &outcome);
    const bool whole = goOn(order);
    const QByteArray difference = differenceFrom(m_after);
    const bool isEnd = whole && difference.isEmpty() && m_world->folders() == m_foldersAfter
        && m_world->pendingIds().isEmpty();
    if (!isEnd)
        qWarning("after %s: %s%s", point.text().constData(), difference.constData(),
                 qPrintable(m_world->folders().join(QLatin1Char(' '))));
    outcome.repairs += isEnd ? 0 : 1;
    m_leftovers += int(m_world->scratchFiles().size());
    if (order.back && isEnd)
        goBack(order);
}

// As whoever looks next finds it; a start that only reads is one.
void KillMatrixTest::look(const Order &order, Outcome *outcome) const
{
    const ProgramRun start = m_world->run(words("status"));
    QVERIFY2(start.code == 0, start.err.constData());
    for (const QString &id : KillWorld::ids()) {
        const RegionFound found = m_world->find(id);
        if (found == RegionFound::Damaged)
            qWarning("%s", qPrintable(m_world->damage(id)));
        if (order.regions.contains(id) || found == RegionFound::Damaged)
            ++outcome->found[int(found)];
    }
    if (!order.regions.isEmpty() && !order.back)
        return;
    // A set of files is the one or the other.
    const bool isOld = differenceFrom(m_before, Ignore::Nameless).isEmpty();
    const bool isNew = differenceFrom(m_after, Ignore::Nameless).isEmpty();
    if (order.regions.isEmpty())
        ++outcome->found[int(isOld       ? RegionFound::WholeOld
                                 : isNew ? RegionFound::WholeNew
                                         : RegionFound::Damaged)];
    else
        QVERIFY(isOld || isNew);
}

// What was not noted before the kill is ordered again, as whoever ordered it would.
bool KillMatrixTest::goOn(const Order &order) const
{
    const ProgramRun next = m_world->run(words(order.goOn));
    if (differenceFrom(m_after).isEmpty() && m_world->pendingIds().isEmpty())
        return true; // "update" may have found that all was done and the backup in its way.
    if (next.code != 0)
        qWarning("%s", next.err.constData());
    const ProgramRun again = m_world->run(words(order.command));
    if (again.code != 0)
        qWarning("%s", again.err.constData());
    return next.code == 0 && again.code == 0;
}

void KillMatrixTest::goBack(const Order &order) const
{
    const ProgramRun back = m_world->run(words(order.back));
    QVERIFY2(back.code == 0, back.err.constData());
    const QByteArray difference = differenceFrom(m_before);
    QVERIFY2(difference.isEmpty(), difference.constData());
}

void KillMatrixTest::whatHasComeIsNotFetchedAgain()
{
    m_world->restore("two");
    const int before = m_world->answers("/archives/2/FI.zip");
    // All is prepared, nothing is swapped.
    QCOMPARE(m_world->runUntil({"before mv", 1}, words("update")).code, -1);
    QVERIFY(m_world->answers("/archives/2/FI.zip") > before);
    const int fetched = m_world->answers("/archives/");

    QCOMPARE(m_world->run(words("update")).code, 0);

    QCOMPARE(m_world->answers("/archives/"), fetched);
    QCOMPARE(m_world->version(), m_world->newVersion);
}

// What a power cut would do cannot be tried; but a file that gets its name after its bytes are on
// the disk is the old or the new one.
void KillMatrixTest::nothingIsReplacedBeforeTheNewFileIsOnTheDisk_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QList<QByteArray>>("files");
    const auto add = [](const char *from, const char *command, const QList<QByteArray> &files) {
        QTest::newRow(command) << QByteArray(from) << QByteArray(command) << files;
    };
    add("empty", "install FI", {"content.xml", "installs.json", "vexa.conf"});
    add("three", "remove FI", {"content.xml", "removals.json"});
    add("three", "cities --add b --name Bergen --package-version 2", {"cityindex.xml"});
    add("two", "update",
        {"content.xml", "installs_new.json", "update.json", "vexa.conf", ".vexa-swap.json"});
}

void KillMatrixTest::nothingIsReplacedBeforeTheNewFileIsOnTheDisk()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, command);
    QFETCH(QList<QByteArray>, files);
    m_world->restore(from.constData());
    m_world->serveNewerFinland(false);

    const QList<QByteArray> calls = m_world->callsOf(words(command.constData()));

    for (const QByteArray &file : std::as_const(files)) {
        QVERIFY2(calls.contains("rename " + file + " synced")
                     || calls.contains("link " + file + " synced"),
                 file.constData());
        QVERIFY2(!calls.contains("rename " + file + " unsynced"), file.constData());
        QVERIFY2(!calls.contains("link " + file + " unsynced"), file.constData());
    }
}

void KillMatrixTest::noStepIsOverBeforeItsFilesAreOnTheDisk()
{
    m_world->restore("empty");
    m_world->serveNewerFinland(false);

    const QList<QByteArray> calls = m_world->callsOf(words("install FI"));

    // The archive before it is unpacked; the unpacked tile before the archive goes; the tile in
    // place before the unpacked one goes.
    const auto archive = calls.indexOf("sync FI.zip");
    QVERIFY(archive > calls.lastIndexOf("write FI.zip"));
    const auto unpacked = calls.indexOf("rename gone.cdt unsynced");
    QVERIFY(unpacked > archive);
    const auto safe = calls.indexOf("sync gone.cdt");
    QVERIFY(safe > unpacked);
    QVERIFY(safe < calls.indexOf("unlink FI.zip"));
    const auto copied = calls.indexOf("behind cp");
    QVERIFY(copied > calls.indexOf("unlink FI.zip"));
    const auto inPlace = calls.indexOf("sync gone.cdt", copied);
    QVERIFY(inPlace > copied);
    QVERIFY(inPlace < calls.indexOf("before rm", copied));
    QVERIFY(inPlace < calls.indexOf("rename vexa.conf synced", copied));
}

int main(int argc, char **argv)
{
    // Qt Test gives a function five minutes; CTest watches over all of them.
    qputenv("QTEST_FUNCTION_TIMEOUT", "100000000");
    QCoreApplication app(argc, argv);
    KillMatrixTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_killmatrix.moc"
