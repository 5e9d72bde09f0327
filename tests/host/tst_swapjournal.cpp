// SPDX-License-Identifier: MIT
// The journal itself, and the recoveries that concern no exchange: removals and parked voices.
#include "swapstates.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QtTest>

namespace {

using namespace CutShort;
using Recovery = DataSetSwap::Recovery;

} // namespace

class SwapJournalTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_home = std::make_unique<TemporaryHome>(); }
    void cleanup() { m_home.reset(); }

    void refusesAJournal_data();
    void refusesAJournal();
    void takesAnUnfinishedNoteAway();
    void aNoteNeverReplacesANote();
    void finishesARemoval_data();
    void finishesARemoval();
    void removesWhatLostItsName();
    void putsParkedVoicesBack();
    void leavesParkedVoicesIfThereAreOthers();
    void hasAWordForEveryOutcome();

private:
    std::unique_ptr<TemporaryHome> m_home;
};

void SwapJournalTest::refusesAJournal_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("reason");
    const TemporaryHome home;
    const SwapRig rig;
    note(Operation::Swap);
    const QByteArray whole = TestFile::read(SwapRig::journal());
    const QByteArray later = QByteArray(whole).replace("\"version\": 1", "\"version\": 2");
    const QString damaged = QStringLiteral("is damaged");
    QTest::newRow("empty") << QByteArray("") << damaged;
    QTest::newRow("cut") << whole.left(whole.size() / 2) << damaged;
    QTest::newRow("cut at its last byte") << whole.trimmed().chopped(1) << damaged;
    QTest::newRow("zeros") << QByteArray(whole.size(), '\0') << damaged;
    QTest::newRow("no object") << QByteArray("[1, 2]") << damaged;
    QTest::newRow("another program's")
        << QByteArray("{\"format\": \"other\", \"version\": 1}") << damaged;
    QTest::newRow("of a later version") << later << QStringLiteral("later version");
    QTest::newRow("an unknown order")
        << QByteArray(whole).replace("\"swap\"", "\"destroy\"") << damaged;
    QTest::newRow("an empty suffix") << QByteArray(whole).replace("\"_new\"", "\"\"") << damaged;
    QTest::newRow("a suffix that leads elsewhere")
        << QByteArray(whole).replace("\"_new\"", "\"/../../x\"") << damaged;
    QTest::newRow("no identities") << QByteArray(whole).replace("inode", "anode") << damaged;
    QTest::newRow("far too long") << whole + QByteArray(100000, ' ') << damaged;
    QTest::newRow("a removal of the main set")
        << QByteArray("{\"format\": \"vexa-data-set-swap\", \"version\": 1, "
                      "\"operation\": \"discard\", \"suffix\": \"\"}")
        << damaged;
}

void SwapJournalTest::refusesAJournal()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, reason);
    const SwapRig rig;
    moveUpTo(2, Operation::Swap);
    TestFile::write(SwapRig::journal(), text);
    const Tree before = SwapRig::treeOf(DataRoot::cities());

    QString said;
    QCOMPARE(recoverBehindLock(&said), Recovery::Failed);

    QVERIFY2(said.contains(SwapRig::journal()) && said.contains(reason), qPrintable(said));
    QVERIFY(SwapRig::treeOf(DataRoot::cities()) == before);
}

void SwapJournalTest::takesAnUnfinishedNoteAway()
{
    const SwapRig rig;
    TestFile::write(SwapRig::journal() + QLatin1String(".new"), "{\"format\": \"ve");

    QVERIFY(!DataSetSwap::journalExists());
    QCOMPARE(recoverBehindLock(), Recovery::Nothing);

    QVERIFY2(rig.isOld(), SwapRig::description());
}

void SwapJournalTest::aNoteNeverReplacesANote()
{
    const SwapRig rig;
    TestFile::write(SwapRig::journal(), "of a swap that was cut short");
    QString error;

    QVERIFY(
        !SwapJournal::write(FolderExchange::noteOf(Operation::Swap, SwapRig::newSuffix()), &error));

    QVERIFY(!error.isEmpty());
    QCOMPARE(TestFile::read(SwapRig::journal()), QByteArray("of a swap that was cut short"));
}

void SwapJournalTest::finishesARemoval_data()
{
    QTest::addColumn<bool>("discard");
    QTest::addColumn<int>("moves");
    for (int moves = 0; moves <= 2; ++moves) {
        QTest::addRow("backup, %d moves", moves) << false << moves;
        QTest::addRow("prepared set, %d moves", moves) << true << moves;
    }
}

void SwapJournalTest::finishesARemoval()
{
    QFETCH(bool, discard);
    QFETCH(int, moves);
    const SwapRig rig;
    if (!discard)
        moveUpTo(Moves, Operation::Swap);
    note(discard ? Operation::Discard : Operation::Clear);
    const char *suffix = discard ? "_new" : "_";
    const QString nameless = DataRoot::cities() + QLatin1String("/.vexa-discarded-");
    if (moves > 0)
        move(catalogs(suffix), nameless + QLatin1Char('1'));
    if (moves > 1)
        move(tiles(suffix), nameless + QLatin1Char('2'));
    QVERIFY(!DataSetSwap::backupExists());

    QCOMPARE(recoverBehindLock(), Recovery::ClearFinished);

    QVERIFY2(discard ? rig.isOldAlone() : rig.isNewAlone(), SwapRig::description());
}

void SwapJournalTest::removesWhatLostItsName()
{
    const SwapRig rig;
    SwapRig::write(DataRoot::cities() + QLatin1String("/.vexa-discarded-7/a/3/x.cdt"), "half");

    QCOMPARE(recoverBehindLock(), Recovery::ClearFinished);

    QVERIFY2(rig.isOld(), SwapRig::description());
}

void SwapJournalTest::putsParkedVoicesBack()
{
    const SwapRig rig;
    move(SwapRig::voices(), DataRoot::cities() + QLatin1String("/voices"));

    QCOMPARE(recoverBehindLock(), Recovery::VoicesPutBack);

    QVERIFY2(rig.isOld(), SwapRig::description());
}

void SwapJournalTest::leavesParkedVoicesIfThereAreOthers()
{
    const SwapRig rig;
    const QString parked = DataRoot::cities() + QLatin1String("/voices/sv.wav");
    SwapRig::write(parked, "vänster");

    QCOMPARE(recoverBehindLock(), Recovery::Nothing);

    QCOMPARE(TestFile::read(parked), QByteArray("vänster"));
    QVERIFY(rig.voicesAreInPlace());
}

void SwapJournalTest::hasAWordForEveryOutcome()
{
    QCOMPARE(DataSetSwap::describe(Recovery::Nothing), QString());
    QSet<QString> sentences;
    for (int i = int(Recovery::SwapFinished); i <= int(Recovery::Failed); ++i)
        sentences.insert(DataSetSwap::describe(Recovery(i)));
    QCOMPARE(int(sentences.size()), int(Recovery::Failed));
    QVERIFY(!sentences.contains(QString()));
}

QTEST_GUILESS_MAIN(SwapJournalTest)
#include "tst_swapjournal.moc"
