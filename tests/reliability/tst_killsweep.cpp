// SPDX-License-Identifier: MIT
/*
 * The real program is killed at any moment, again and again, while a user installs, removes and
 * updates; nobody repairs anything in between. After each kill every region must be not installed,
 * or whole and identical to its archive, or on its way and finished by the next start; after each
 * round the device must be able to come to rest, whole and without anything left over.
 *
 * 20 kills, or 1,000 in the long form (VEXA_LONG=1). The seed is printed and in the table; the same
 * one gives the same orders and delays:
 *
 *     VEXA_SEED=1234 VEXA_LONG=1 build/dev/tests/tst_killsweep
 */
#include "killworld.h"
#include "testutils/reporttable.h"
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

namespace {

constexpr int KillsPerRound = 10;
constexpr int ShortKills = 20;
constexpr int LongKills = 1000;

quint32 seed()
{
    bool isNumber = false;
    const quint32 given = qEnvironmentVariable("VEXA_SEED").toUInt(&isNumber);
    return isNumber ? given : QRandomGenerator::global()->generate();
}

struct Outcome
{
    int kills = 0;
    int ended = 0; // before they could be killed
    int found[5] = {}; // by RegionFound
};

} // namespace

class KillSweepTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void nothingIsLostWheneverItDies();

private:
    QStringList nextOrder();
    void measure();
    void killOnce();
    void comeToRest();
    int below(int limit) { return int(m_random.bounded(quint32(limit))); }

    std::unique_ptr<KillWorld> m_world;
    const quint32 m_seed = seed();
    QRandomGenerator m_random {m_seed};
    QMap<QString, int> m_longest; // ms that an order took, by its first word
    QMap<QString, Outcome> m_outcomes; // by the order's first word
    int m_kills = 0;
};

void KillSweepTest::initTestCase()
{
    qInfo("VEXA_SEED=%u", m_seed);
    KillWorld::useMemory();
    m_world = std::make_unique<KillWorld>();
    QCOMPARE(m_world->run(words("refresh")).code, 0);
    m_world->keep("empty");
    measure();
}

void KillSweepTest::cleanupTestCase()
{
    ReportTable table(QStringLiteral("killsweep"),
                      {QStringLiteral("Order"), QStringLiteral("Kills"),
                       QStringLiteral("Ended before"), QStringLiteral("Not installed"),
                       QStringLiteral("Whole, as first installed"), QStringLiteral("Whole, newer"),
                       QStringLiteral("Being put in place"), QStringLiteral("Damaged")});
    for (auto order = m_outcomes.cbegin(); order != m_outcomes.cend(); ++order) {
        QStringList cells {order.key(), QString::number(order.value().kills),
                           QString::number(order.value().ended)};
        for (const int count : order.value().found)
            cells.append(QString::number(count));
        table.addRow(cells);
    }
    table.addNote(QStringLiteral("%1 kills at random moments, seed %2. Counted are all three "
                                 "regions after each kill, as the next start finds them.")
                      .arg(m_kills)
                      .arg(m_seed));
    QVERIFY(table.save());
    m_world.reset();
}

// How long the orders take here, so that the kills fall into them and not behind.
void KillSweepTest::measure()
{
    m_world->publishNext();
    m_world->restore("empty");
    for (const char *order :
         {"install FI SE NO", "resume", "install FI", "remove NO", "update", "update --undo",
          "update --cancel", "cities --add a --name Aarhus --package-version 1"}) {
        QElapsedTimer clock;
        clock.start();
        const ProgramRun run = m_world->run(words(order));
        QVERIFY2(run.code == 0, run.err.constData());
        int &longest = m_longest[words(order).first()];
        longest = std::max(longest, int(clock.elapsed()));
    }
}

QStringList KillSweepTest::nextOrder()
{
    const QJsonObject status = m_world->status();
    const QString update =
        status.value(QLatin1String("update")).toObject().value(QLatin1String("version")).toString();
    const bool isReady =
        status.value(QLatin1String("update")).toObject().value(QLatin1String("ready")).toBool();
    const bool hasBackup = status.value(QLatin1String("backup")).isObject();
    const QStringList installed = m_world->listed().keys();
    const QStringList ids = KillWorld::ids();
    QList<QStringList> choices;
    if (!update.isEmpty() && !isReady)
        return below(8) == 0 ? words("update --cancel") : words("update");
    if (!m_world->pendingIds().isEmpty())
        choices << words("resume") << words("resume");
    else if (!hasBackup && !installed.isEmpty())
        choices << words("update");
    if (hasBackup)
        choices << words("update --undo --force") << words("update --clear-backup");
    for (int i = 0; i < 3; ++i)
        choices << QStringList {QStringLiteral("install"), ids.at(below(int(ids.size())))};
    choices << QStringList {QStringLiteral("install")} + ids;
    for (int i = 0; i < 2 && !installed.isEmpty(); ++i)
        choices << QStringList {QStringLiteral("remove"),
                                installed.at(below(int(installed.size())))};
    choices << words("cities --add x --name Xanten --package-version")
            + QStringList {QString::number(below(1000))};
    return choices.at(below(int(choices.size())));
}

void KillSweepTest::killOnce()
{
    const QStringList order = nextOrder();
    const int delay = below(m_longest.value(order.first(), 500) * 1000); // microseconds
    const auto child = m_world->start(order);
    QElapsedTimer clock;
    clock.start();
    child->waitFor([&] { return clock.nsecsElapsed() / 1000 >= delay; });
    const bool wasRunning = child->isRunning();
    child->kill();

    Outcome &outcome = m_outcomes[order.first()];
    outcome.kills += wasRunning ? 1 : 0;
    outcome.ended += wasRunning ? 0 : 1;
    m_kills += wasRunning ? 1 : 0;
    const ProgramRun start = m_world->run(words("status"));
    QVERIFY2(start.code == 0, start.err.constData());
    for (const QString &id : KillWorld::ids()) {
        const RegionFound found = m_world->find(id);
        ++outcome.found[int(found)];
        QVERIFY2(
            found != RegionFound::Damaged,
            qPrintable(order.join(QLatin1Char(' ')) + QLatin1String(": ") + m_world->damage(id)));
    }
}

void KillSweepTest::comeToRest()
{
    const QJsonObject update = m_world->status().value(QLatin1String("update")).toObject();
    if (!update.isEmpty()) {
        const ProgramRun cancel = m_world->run(words("update --cancel"));
        QVERIFY2(cancel.code == 0, cancel.err.constData());
    }
    const ProgramRun resume = m_world->run(words("resume"));
    QVERIFY2(resume.code == 0, resume.err.constData());
    QCOMPARE(m_world->pendingIds(), QStringList());
    for (const QString &id : KillWorld::ids()) {
        const RegionFound found = m_world->find(id);
        QVERIFY2(found != RegionFound::Damaged && found != RegionFound::Pending,
                 qPrintable(m_world->damage(id)));
    }
    // What can be installed can be removed, and then nothing is left but what was no region's.
    const QStringList installed = m_world->listed().keys();
    if (!installed.isEmpty())
        QCOMPARE(m_world->run(words("remove") + installed).code, 0);
    QCOMPARE(m_world->listed().keys(), QStringList());
    QCOMPARE(m_world->strayTiles(), QStringList());
    QCOMPARE(m_world->scratchFiles(), QStringList());
}

void KillSweepTest::nothingIsLostWheneverItDies()
{
    const int wanted = ReportTable::longForm() ? LongKills : ShortKills;
    int turn = 0;
    while (m_kills < wanted) {
        if (turn++ % KillsPerRound == 0) {
            m_world->restore("empty");
            m_world->serveNewerFinland(below(2) == 1);
        }
        killOnce();
        if (turn % KillsPerRound == 0 || m_kills == wanted)
            comeToRest();
        if (QTest::currentTestFailed()) {
            qWarning("kill %d, VEXA_SEED=%u", m_kills, m_seed);
            return;
        }
    }
}

int main(int argc, char **argv)
{
    // Qt Test gives a function five minutes; CTest watches over all of them.
    qputenv("QTEST_FUNCTION_TIMEOUT", "100000000");
    QCoreApplication app(argc, argv);
    KillSweepTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_killsweep.moc"
