// SPDX-License-Identifier: MIT
// What the next start makes of every state that a crash, and programs that run behind it, can
// leave.
#include "catalog/mapcatalog.h"
#include "swapstates.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QtTest>

namespace {

using namespace CutShort;
using Recovery = DataSetSwap::Recovery;

/** What a program did that ran behind the crash. */
enum class Reader {
    None,
    MadeFolders, ///< empty ones, where some were missing
    MadeMore, ///< folders in them, too
    Wrote, ///< a file in them
};

void read(Reader reader)
{
    if (reader == Reader::None)
        return;
    const bool noCatalogs = !SwapRig::exists(catalogs());
    const bool noTiles = !SwapRig::exists(tiles());
    const MapCatalog catalog;
    for (const QString &folder :
         {noCatalogs ? catalogs() : QString(), noTiles ? tiles() : QString()}) {
        if (folder.isEmpty())
            continue;
        if (reader == Reader::MadeMore)
            QDir().mkpath(folder + QLatin1String("/incoming/deeper"));
        if (reader == Reader::Wrote)
            SwapRig::write(folder + QLatin1String("/incoming/precious"), "precious");
    }
}

} // namespace

Q_DECLARE_METATYPE(Reader)

class SwapRecoveryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void doesNothingWithoutAJournal();
    void makesNoFolders();
    void finishesFromEveryState_data();
    void finishesFromEveryState();
    void takesFoldersOutThatWereMovedInto_data();
    void takesFoldersOutThatWereMovedInto();
    void undoesIfThePreparedSetIsLost_data();
    void undoesIfThePreparedSetIsLost();
    void finishesWithoutTheOldSet_data();
    void finishesWithoutTheOldSet();
    void neverMixesTwoSets_data();
    void neverMixesTwoSets();
    void touchesNothingIfBothAreLost_data();
    void touchesNothingIfBothAreLost();
    void isNotFooledByAnEmptyPreparedSet_data();
    void isNotFooledByAnEmptyPreparedSet();
    void keepsVoicesThatAReaderMade_data();
    void keepsVoicesThatAReaderMade();

private:
    std::unique_ptr<TemporaryHome> m_home;
};

void SwapRecoveryTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void SwapRecoveryTest::cleanup()
{
    m_home.reset();
}

void SwapRecoveryTest::doesNothingWithoutAJournal()
{
    const SwapRig rig;
    QString text = QStringLiteral("of before");

    QVERIFY(!DataSetSwap::journalExists());
    QCOMPARE(recoverBehindLock(&text), Recovery::Nothing);

    QCOMPARE(text, QString());
    QVERIFY(rig.isOld());
}

void SwapRecoveryTest::makesNoFolders()
{
    QCOMPARE(recoverBehindLock(), Recovery::Nothing);

    QVERIFY(!SwapRig::exists(DataRoot::cities()));
}

void SwapRecoveryTest::finishesFromEveryState_data()
{
    QTest::addColumn<bool>("undo");
    QTest::addColumn<int>("moves");
    QTest::addColumn<bool>("voices");
    QTest::addColumn<bool>("identities");
    QTest::addColumn<Reader>("reader");
    const char *const readers[] = {"", ", a reader", ", a reader made more", ", a reader wrote"};
    for (const bool undo : {false, true}) {
        for (int moves = 0; moves <= Moves; ++moves) {
            for (const bool voices : {true, false}) {
                for (const bool identities : {true, false}) {
                    for (int reader = 0; reader < 4; ++reader)
                        QTest::addRow("%s%s, %d moves%s%s", undo ? "undo" : "swap",
                                      voices ? "" : " without voices", moves,
                                      identities ? "" : ", new inodes", readers[reader])
                            << undo << moves << voices << identities << Reader(reader);
                }
            }
        }
    }
}

void SwapRecoveryTest::finishesFromEveryState()
{
    QFETCH(bool, undo);
    QFETCH(int, moves);
    QFETCH(bool, voices);
    QFETCH(bool, identities);
    QFETCH(Reader, reader);
    const SwapRig rig(voices);
    if (undo)
        moveUpTo(Moves, Operation::Swap);
    const Operation operation = undo ? Operation::Undo : Operation::Swap;
    note(operation, identities);
    moveUpTo(moves, operation);
    read(reader);

    QString text;
    const Recovery recovery = recoverBehindLock(&text);

    QCOMPARE(recovery, undo ? Recovery::UndoFinished : Recovery::SwapFinished);
    // Only these two leave a name free that a reader takes.
    const bool written = reader == Reader::Wrote && (moves == 2 || moves == 4);
    if (written) {
        const QString aside = (moves == 2 ? catalogs() : tiles()) + QLatin1String(".aside");
        QCOMPARE(TestFile::read(aside + QLatin1String("/incoming/precious")),
                 QByteArray("precious"));
        QVERIFY2(text.contains(aside), qPrintable(text));
        QVERIFY(QDir(aside).removeRecursively());
    } else {
        QCOMPARE(text, QString());
    }
    QVERIFY2(undo ? rig.isOld() : rig.isNew(), SwapRig::description());
}

void SwapRecoveryTest::takesFoldersOutThatWereMovedInto_data()
{
    QTest::addColumn<bool>("identities");
    QTest::addColumn<bool>("oldStayed"); // else a reader made a folder there
    QTest::newRow("into the reader's folder") << true << false;
    QTest::newRow("into the reader's folder, new inodes") << false << false;
    QTest::newRow("into the old folder") << true << true;
    QTest::newRow("into the old folder, new inodes") << false << true;
}

void SwapRecoveryTest::takesFoldersOutThatWereMovedInto()
{
    QFETCH(bool, identities);
    QFETCH(bool, oldStayed);
    const SwapRig rig;
    note(Operation::Swap, identities);
    moveUpTo(1, Operation::Swap);
    if (!oldStayed) {
        move(catalogs(), catalogs("_"));
        move(tiles(), tiles("_"));
        const MapCatalog reader;
    }
    move(catalogs("_new"), catalogs() + QLatin1String("/Tessarin_new"));
    move(tiles("_new"), tiles() + QLatin1String("/diskcache_new"));

    QCOMPARE(recoverBehindLock(), Recovery::SwapFinished);

    QVERIFY2(rig.isNew(), SwapRig::description());
}

void SwapRecoveryTest::undoesIfThePreparedSetIsLost_data()
{
    QTest::addColumn<bool>("identities");
    QTest::addColumn<Reader>("reader");
    QTest::newRow("nobody looked") << true << Reader::None;
    QTest::newRow("a reader made folders") << true << Reader::MadeFolders;
    QTest::newRow("a reader wrote") << true << Reader::Wrote;
    QTest::newRow("nobody looked, new inodes") << false << Reader::None;
    QTest::newRow("a reader made folders, new inodes") << false << Reader::MadeFolders;
    QTest::newRow("a reader wrote, new inodes") << false << Reader::Wrote;
}

void SwapRecoveryTest::undoesIfThePreparedSetIsLost()
{
    QFETCH(bool, identities);
    QFETCH(Reader, reader);
    const SwapRig rig;
    const Tree old = SwapRig::setIn(QString());
    note(Operation::Swap, identities);
    moveUpTo(2, Operation::Swap);
    QVERIFY(QDir(catalogs("_new")).removeRecursively());
    read(reader);

    QString text;
    QCOMPARE(recoverBehindLock(&text), Recovery::SwapUndone);

    QVERIFY2(SwapRig::setIn(QString()) == old, SwapRig::description());
    QVERIFY(rig.voicesAreInPlace());
    QVERIFY2(text.contains(QLatin1String("Tessarin_new is missing")), qPrintable(text));
    QVERIFY(!SwapRig::exists(catalogs("_")));
    QVERIFY(!DataSetSwap::journalExists());
    QCOMPARE(SwapRig::exists(catalogs() + QLatin1String(".aside")), reader == Reader::Wrote);
}

void SwapRecoveryTest::finishesWithoutTheOldSet_data()
{
    QTest::addColumn<bool>("identities");
    QTest::newRow("known by inode") << true;
    QTest::newRow("known by name") << false;
}

void SwapRecoveryTest::finishesWithoutTheOldSet()
{
    QFETCH(bool, identities);
    const SwapRig rig;
    const Tree fresh = SwapRig::setIn(SwapRig::newSuffix());
    note(Operation::Swap, identities);
    moveUpTo(2, Operation::Swap);
    QVERIFY(QDir(catalogs("_")).removeRecursively());
    read(Reader::MadeMore);

    QCOMPARE(recoverBehindLock(), Recovery::SwapFinished);

    QVERIFY2(SwapRig::setIn(QString()) == fresh, SwapRig::description());
    QVERIFY(rig.voicesAreInPlace());
    // What is left of the old set is no backup.
    QVERIFY(!DataSetSwap::backupExists());
}

void SwapRecoveryTest::neverMixesTwoSets_data()
{
    QTest::addColumn<bool>("identities");
    QTest::addColumn<int>("moves");
    QTest::addColumn<QString>("lost");
    QTest::addColumn<int>("recovery");
    const auto add = [](const char *name, bool identities, int moves, const char *lost,
                        Recovery recovery) {
        QTest::newRow(name) << identities << moves << QString::fromUtf8(lost) << int(recovery);
    };
    add("new tiles lost ahead", true, 0, "diskcache_new", Recovery::SwapUndone);
    add("new tiles lost half-way", true, 3, "diskcache_new", Recovery::SwapUndone);
    add("old tiles lost in the gap", true, 4, "diskcache_", Recovery::SwapFinished);
    add("old tiles lost behind", true, 5, "diskcache_", Recovery::SwapFinished);
    // Whose tiles are there cannot be known.
    add("new tiles lost ahead, new inodes", false, 0, "diskcache_new", Recovery::Failed);
    add("new tiles lost half-way, new inodes", false, 3, "diskcache_new", Recovery::Failed);
    add("old tiles lost behind, new inodes", false, 5, "diskcache_", Recovery::Failed);
    add("new catalogue lost ahead, new inodes", false, 0, "Tessarin_new", Recovery::SwapUndone);
    add("old catalogue lost behind, new inodes", false, 5, "Tessarin_", Recovery::SwapFinished);
}

// Somebody has removed a folder by hand before the program is started again.
void SwapRecoveryTest::neverMixesTwoSets()
{
    QFETCH(bool, identities);
    QFETCH(int, moves);
    QFETCH(QString, lost);
    QFETCH(int, recovery);
    const SwapRig rig(false);
    const Tree old = SwapRig::setIn(QString());
    const Tree fresh = SwapRig::setIn(SwapRig::newSuffix());
    note(Operation::Swap, identities);
    moveUpTo(moves, Operation::Swap);
    QVERIFY(QDir(DataRoot::cities() + QLatin1Char('/') + lost).removeRecursively());
    const Tree before = SwapRig::treeOf(DataRoot::cities());

    QCOMPARE(int(recoverBehindLock()), recovery);

    if (recovery == int(Recovery::Failed))
        QVERIFY2(SwapRig::treeOf(DataRoot::cities()) == before, SwapRig::description());
    else
        QVERIFY2(SwapRig::setIn(QString()) == (recovery == int(Recovery::SwapUndone) ? old : fresh),
                 SwapRig::description());
}

void SwapRecoveryTest::touchesNothingIfBothAreLost_data()
{
    finishesWithoutTheOldSet_data();
}

void SwapRecoveryTest::touchesNothingIfBothAreLost()
{
    QFETCH(bool, identities);
    const SwapRig rig;
    note(Operation::Swap, identities);
    moveUpTo(2, Operation::Swap);
    QVERIFY(QDir(catalogs("_")).removeRecursively());
    QVERIFY(QDir(tiles("_new")).removeRecursively());
    const Tree before = SwapRig::treeOf(DataRoot::cities());

    QString text;
    QCOMPARE(recoverBehindLock(&text), Recovery::Failed);

    QVERIFY2(text.contains(QLatin1String("diskcache_new is missing"))
                 && text.contains(QLatin1String("Tessarin_ is missing")),
             qPrintable(text));
    QVERIFY(SwapRig::treeOf(DataRoot::cities()) == before);
}

void SwapRecoveryTest::isNotFooledByAnEmptyPreparedSet_data()
{
    finishesWithoutTheOldSet_data();
}

// A program opened the prepared set when it was in use already, and made its folders anew.
void SwapRecoveryTest::isNotFooledByAnEmptyPreparedSet()
{
    QFETCH(bool, identities);
    const SwapRig rig;
    note(Operation::Swap, identities);
    moveUpTo(Moves, Operation::Swap);
    {
        const MapCatalog catalog(SwapRig::newSuffix());
    }

    QCOMPARE(recoverBehindLock(), Recovery::SwapFinished);

    QVERIFY(QDir().rmdir(catalogs("_new")));
    QVERIFY(QDir().rmdir(tiles("_new")));
    QVERIFY2(rig.isNew(), SwapRig::description());
}

void SwapRecoveryTest::keepsVoicesThatAReaderMade_data()
{
    finishesWithoutTheOldSet_data();
}

void SwapRecoveryTest::keepsVoicesThatAReaderMade()
{
    QFETCH(bool, identities);
    const SwapRig rig;
    note(Operation::Swap, identities);
    SwapRig::write(SwapRig::voices(SwapRig::newSuffix()) + QLatin1String("/de.wav"), "rechts");

    QString text;
    QCOMPARE(recoverBehindLock(&text), Recovery::SwapFinished);

    const QString aside = DataRoot::cities() + QLatin1String("/voices.aside");
    QCOMPARE(TestFile::read(aside + QLatin1String("/de.wav")), QByteArray("rechts"));
    QVERIFY2(text.contains(aside), qPrintable(text));
    QVERIFY(QDir(aside).removeRecursively());
    QVERIFY2(rig.isNew(), SwapRig::description());
}

QTEST_GUILESS_MAIN(SwapRecoveryTest)
#include "tst_swaprecovery.moc"
