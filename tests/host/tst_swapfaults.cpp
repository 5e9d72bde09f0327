// SPDX-License-Identifier: MIT
// Shells and disks that do not do what they are told, and removing what a swap has left.
#include "catalog/mapcatalog.h"
#include "swaprig.h"
#include "testutils/fakesystem.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QtTest>

namespace {

/** Puts a link to the real thing in its place. */
void makeLink(const QString &path)
{
    const QString elsewhere = DataRoot::myDocs() + QLatin1String("/elsewhere");
    QVERIFY(QDir().rename(path, elsewhere));
    QVERIFY(QFile::link(elsewhere, path));
}

void removeTree(const QString &path)
{
    QVERIFY(QDir(path).removeRecursively());
}

/** A name that a move takes: of the source or of the target, without a slash at the end. */
QByteArray word(const QString &path)
{
    return QFile::encodeName(path);
}

} // namespace

class SwapFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void finishesWhatTheShellDoesNot_data();
    void finishesWhatTheShellDoesNot();
    void takesBackWhatCannotBeFinished_data();
    void takesBackWhatCannotBeFinished();
    void keepsTheJournalIfNeitherWayIsOpen();
    void aReaderBetweenTheMovesDoesNoHarm();
    void goingBackStopsWhereItCannotGoOn();
    void clearsTheBackup();
    void discardsThePreparedSet();
    void discardsHalfAPreparedSet();
    void neverRemovesTheMainSet();
    void savesVoicesThatOnlyTheBackupHas();
    void setsVoicesAsideThatBothHave();
    void aRemovalThatFailsIsFinishedLater();

private:
    bool swap();
    bool undo();

    std::unique_ptr<TemporaryHome> m_home;
    std::unique_ptr<SwapRig> m_rig;
    DataSetSwap m_dataSets;
};

void SwapFaultsTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
    m_rig = std::make_unique<SwapRig>();
    m_dataSets = DataSetSwap();
}

void SwapFaultsTest::cleanup()
{
    m_rig.reset();
    m_home.reset();
}

bool SwapFaultsTest::swap()
{
    MapCatalog catalog;
    return m_dataSets.swap(&catalog);
}

bool SwapFaultsTest::undo()
{
    MapCatalog catalog;
    return m_dataSets.undo(&catalog);
}

void SwapFaultsTest::finishesWhatTheShellDoesNot_data()
{
    QTest::addColumn<int>("move"); // from 0; -1: there is no shell; 5: none succeeds
    QTest::newRow("no shell") << -1;
    QTest::newRow("the voices stay") << 0;
    // The next move puts the new catalogue into the old one.
    QTest::newRow("the old catalogue stays") << 1;
    QTest::newRow("the new catalogue stays") << 2;
    QTest::newRow("the old tiles stay") << 3;
    QTest::newRow("the new tiles stay") << 4;
    QTest::newRow("there is no mv") << 5;
}

namespace {

QByteArray moveCommand(int move)
{
    const QByteArray commands[] = {"mv " + word(SwapRig::voices()), "mv " + word(catalogs()) + ' ',
                                   "mv " + word(catalogs("_new")),  "mv " + word(tiles()) + ' ',
                                   "mv " + word(tiles("_new")),     "mv "};
    return commands[move];
}

} // namespace

void SwapFaultsTest::finishesWhatTheShellDoesNot()
{
    QFETCH(int, move);
    FakeSystem system;
    if (move < 0)
        system.takeShellAway();
    else
        system.answer(moveCommand(move), 127);

    QVERIFY(swap());

    QVERIFY2(m_rig->isNew(), SwapRig::description());
    QVERIFY2(m_dataSets.errorString().contains(QLatin1String("shell did not move every folder")),
             qPrintable(m_dataSets.errorString()));
}

void SwapFaultsTest::takesBackWhatCannotBeFinished_data()
{
    QTest::addColumn<int>("move");
    QTest::addColumn<QString>("source");
    // By then the old tiles have their new name.
    QTest::newRow("the voices") << 0 << QStringLiteral("/diskcache_/voices");
    QTest::newRow("the old catalogue") << 1 << QStringLiteral("/Tessarin");
    QTest::newRow("the new catalogue") << 2 << QStringLiteral("/Tessarin_new");
    QTest::newRow("the old tiles") << 3 << QStringLiteral("/diskcache");
    QTest::newRow("the new tiles") << 4 << QStringLiteral("/diskcache_new");
}

void SwapFaultsTest::takesBackWhatCannotBeFinished()
{
    QFETCH(int, move);
    QFETCH(QString, source);
    {
        FakeSystem system;
        system.answer(moveCommand(move), 1);
        system.separate(QFile::encodeName(DataRoot::cities() + source));

        QVERIFY(!swap());
    }
    QVERIFY2(m_rig->isOld(), SwapRig::description());
    QVERIFY2(m_dataSets.errorString().contains(QLatin1String("is as it was before"))
                 && m_dataSets.errorString().contains(source),
             qPrintable(m_dataSets.errorString()));
    QVERIFY(swap());
}

void SwapFaultsTest::keepsTheJournalIfNeitherWayIsOpen()
{
    MapCatalog catalog;
    {
        FakeSystem system;
        system.answer(moveCommand(4), 1);
        system.separate(word(tiles("_new")));
        system.separate(word(tiles("_")));

        QVERIFY(!m_dataSets.swap(&catalog));

        QVERIFY2(m_dataSets.errorString().contains(QLatin1String("could not be brought to an end")),
                 qPrintable(m_dataSets.errorString()));
        // No catalogue may have made a folder that will be in the way.
        QVERIFY(!SwapRig::exists(tiles()));
        QVERIFY(DataSetSwap::journalExists());
        QString text;
        QCOMPARE(recoverBehindLock(&text), DataSetSwap::Recovery::Failed);
        QVERIFY2(text.contains(QLatin1String("diskcache_new")), qPrintable(text));
        QVERIFY(!m_dataSets.swap(&catalog));
        QVERIFY(!m_dataSets.undo(&catalog));
        QVERIFY(!m_dataSets.clearBackup());
        QVERIFY(!m_dataSets.discardPrepared());
    }
    QCOMPARE(recoverBehindLock(), DataSetSwap::Recovery::SwapFinished);
    QVERIFY2(m_rig->isNew(), SwapRig::description());
}

void SwapFaultsTest::aReaderBetweenTheMovesDoesNoHarm()
{
    FakeSystem system;
    int readers = 0;
    system.beforeCommand([&readers](const QByteArray &) {
        const MapCatalog reader; // makes the folders that it misses
        ++readers;
    });

    QVERIFY(swap());

    QCOMPARE(readers, 5);
    QVERIFY2(m_rig->isNew(), SwapRig::description());
}

void SwapFaultsTest::goingBackStopsWhereItCannotGoOn()
{
    QVERIFY(swap());
    {
        FakeSystem system;
        system.separate(word(tiles("_")));
        QVERIFY(!undo());
    }
    QVERIFY2(m_rig->isNew(), SwapRig::description());
    QVERIFY2(m_dataSets.errorString().contains(QLatin1String("is as it was before")),
             qPrintable(m_dataSets.errorString()));
    QVERIFY(undo());
}

void SwapFaultsTest::clearsTheBackup()
{
    QVERIFY(m_dataSets.clearBackup()); // There is none yet, which is what was wanted.
    QVERIFY(swap());

    QVERIFY2(m_dataSets.clearBackup(), qPrintable(m_dataSets.errorString()));

    QVERIFY2(m_rig->isNewAlone(), SwapRig::description());
    QVERIFY(!DataSetSwap::backupExists());
    QVERIFY(!m_dataSets.checkUndo());
}

void SwapFaultsTest::discardsThePreparedSet()
{
    QVERIFY2(m_dataSets.discardPrepared(), qPrintable(m_dataSets.errorString()));

    QVERIFY2(m_rig->isOldAlone(), SwapRig::description());
    QVERIFY(m_dataSets.discardPrepared());
}

void SwapFaultsTest::discardsHalfAPreparedSet()
{
    // A link goes, not what it leads to.
    makeLink(tiles("_new"));
    removeTree(catalogs("_new"));

    QVERIFY2(m_dataSets.discardPrepared(), qPrintable(m_dataSets.errorString()));

    QVERIFY2(m_rig->isOldAlone(), SwapRig::description());
    QVERIFY(SwapRig::exists(DataRoot::myDocs() + QLatin1String("/elsewhere/config.cfg")));
}

void SwapFaultsTest::neverRemovesTheMainSet()
{
    DataSetSwap dataSets((QString()));

    QVERIFY(!dataSets.discardPrepared());

    QVERIFY(m_rig->isOld());
}

void SwapFaultsTest::savesVoicesThatOnlyTheBackupHas()
{
    QVERIFY(swap());
    QVERIFY(QDir().rename(SwapRig::voices(), SwapRig::voices(SwapRig::backupSuffix())));
    QVERIFY(QDir().mkpath(SwapRig::voices() + QLatin1String("/en")));

    QVERIFY(m_dataSets.clearBackup());

    QVERIFY2(m_rig->isNewAlone(), SwapRig::description());
}

void SwapFaultsTest::setsVoicesAsideThatBothHave()
{
    QVERIFY(swap());
    SwapRig::write(SwapRig::voices(SwapRig::backupSuffix()) + QLatin1String("/de.wav"), "rechts");

    QVERIFY(m_dataSets.clearBackup());

    const QString aside = DataRoot::cities() + QLatin1String("/voices.aside");
    QCOMPARE(TestFile::read(aside + QLatin1String("/de.wav")), QByteArray("rechts"));
    QVERIFY2(m_dataSets.errorString().contains(aside), qPrintable(m_dataSets.errorString()));
    QVERIFY(m_rig->voicesAreInPlace());
}

void SwapFaultsTest::aRemovalThatFailsIsFinishedLater()
{
    QVERIFY(swap());
    {
        FakeSystem system;
        system.separate(word(tiles("_")));
        QVERIFY(!m_dataSets.clearBackup());
        QVERIFY2(m_dataSets.errorString().contains(tiles("_")),
                 qPrintable(m_dataSets.errorString()));
        QVERIFY(!DataSetSwap::backupExists());
    }

    QCOMPARE(recoverBehindLock(), DataSetSwap::Recovery::ClearFinished);

    QVERIFY2(m_rig->isNewAlone(), SwapRig::description());
}

QTEST_GUILESS_MAIN(SwapFaultsTest)
#include "tst_swapfaults.moc"
