// SPDX-License-Identifier: MIT
#include "archive/unpacking.h"
#include "testutils/archivebuilder.h"
#include <QtTest>
#include <thread>

namespace {

constexpr int Block = 400960;

} // namespace

class ArchiveCancelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cancelInsideAFileRemovesWhatWasUnpacked();
    void cancelFromProgressStopsBeforeTheNextBlock();
    void cancelBetweenEntriesStopsBeforeTheNextEntry();
    void cancelOfTheLastBlockComesTooLate();
    void cancelFromAnotherThreadStopsTheUnpack();
    void cancelBeforeUnpackIsForgotten();
    void startReadForgetsACancel();
    void cancelLeavesWhatWasThereBefore();
    void cancelLeavesTheWorkingFolderAlone();
    void cancelledUnpackCanBeRepeated();
    void purgeTakesBackASuccessfulUnpack();
    void purgeRemovesFoldersInsideFoldersWhateverTheirOrder();
    void purgeRemovesParentsThatTheArchiveDoesNotList();
    void purgeKeepsFoldersThatAreNotEmpty();
    void purgeRemovesAListedFolderThatWasThereAndIsEmpty();
    void purgeKeepsTheDestinationThatTheArchiveLists();
    void purgeLeavesAFolderThatTookThePlaceOfAFile();
    void purgeTwiceTouchesNothingTheSecondTime();
    void purgeWithoutAnUnpackDoesNothing();

private:
    QString tar(const RawTar &tar)
    {
        return m_builder->write(QStringLiteral("a.tar"), tar.bytes());
    }
    /** Cancels as soon as that many bytes have been read. */
    void cancelAt(Unpacking &unpacking, quint64 limit)
    {
        VexaArchive *archive = &unpacking.archive;
        connect(archive, &VexaArchive::progress, archive, [archive, limit](quint64 bytes) {
            if (bytes >= limit)
                archive->cancel();
        });
    }

    std::unique_ptr<ArchiveBuilder> m_builder;
};

void ArchiveCancelTest::init()
{
    m_builder = std::make_unique<ArchiveBuilder>();
}

void ArchiveCancelTest::cancelInsideAFileRemovesWhatWasUnpacked()
{
    Unpacking unpacking(tar(RawTar()
                                .add("d/", "", RawTar::Folder)
                                .add("d/1", "data")
                                .add("e/", "", RawTar::Folder)
                                .add("2", QByteArray(3 * Block, 'x'))));
    cancelAt(unpacking, 5);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {6});
    QCOMPARE(unpacking.archive.error(), VexaArchive::CancelledError);
    QCOMPARE(unpacking.archive.errorString(), QStringLiteral("Unpacking was cancelled"));
    QCOMPARE(unpacking.found(), QStringList());
    QVERIFY(QDir(unpacking.folder()).exists());
}

void ArchiveCancelTest::cancelFromProgressStopsBeforeTheNextBlock()
{
    Unpacking unpacking(tar(RawTar().add("f", QByteArray(5 * Block, 'x'))));
    cancelAt(unpacking, 2 * Block);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.steps().size(), 2);
    QCOMPARE(unpacking.results(), QList<int> {6});
}

void ArchiveCancelTest::cancelBetweenEntriesStopsBeforeTheNextEntry()
{
    // A file that is whole after the block: the flag is seen at the header that follows.
    Unpacking unpacking(tar(RawTar().add("1", "data").add("2", "data").add("3", "data")));
    QStringList seen;
    connect(&unpacking.archive, &VexaArchive::progress, this,
            [&] { seen = unpacking.found().filter(QRegularExpression(QStringLiteral("^\\d$"))); });
    cancelAt(unpacking, 8);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {6});
    QCOMPARE(unpacking.steps().size(), 2);
    QCOMPARE(seen, QStringList {QStringLiteral("1")});
    QCOMPARE(unpacking.archive.getUnpackedFileList(),
             (QStringList {QStringLiteral("1"), QStringLiteral("2")}));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveCancelTest::cancelOfTheLastBlockComesTooLate()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));
    cancelAt(unpacking, 4);

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {0});
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f")});
}

void ArchiveCancelTest::cancelFromAnotherThreadStopsTheUnpack()
{
    Unpacking unpacking(tar(RawTar().add("1", "data").add("2", QByteArray(8 * Block, 'x'))));
    std::thread other;
    // From the first block on, nothing forgets the wish. Joined in the third, so that the test
    // does not depend on who is faster.
    connect(&unpacking.archive, &VexaArchive::progress, this, [&](quint64 bytes) {
        if (bytes == 4)
            other = std::thread([&unpacking] { unpacking.archive.cancel(); });
        else if (bytes > 2 * Block && other.joinable())
            other.join();
    });

    const bool unpacked = unpacking.run();
    if (other.joinable())
        other.join();

    QVERIFY(!unpacked);
    QCOMPARE(unpacking.results(), QList<int> {6});
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveCancelTest::cancelBeforeUnpackIsForgotten()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));

    unpacking.archive.cancel();

    QVERIFY(unpacking.run());
    QCOMPARE(unpacking.results(), QList<int> {0});
}

void ArchiveCancelTest::startReadForgetsACancel()
{
    Unpacking unpacking(tar(RawTar().add("f", QByteArray(2 * Block, 'x'))));
    cancelAt(unpacking, 1);
    QVERIFY(!unpacking.run());
    unpacking.archive.disconnect();
    unpacking.archive.resetError();

    QVERIFY(unpacking.archive.startRead());

    QVERIFY(unpacking.run());
    QCOMPARE(unpacking.archive.error(), VexaArchive::NoError);
}

void ArchiveCancelTest::cancelLeavesWhatWasThereBefore()
{
    Unpacking unpacking(tar(RawTar().add("d/1", "data").add("2", QByteArray(2 * Block, 'x'))));
    TestFile::write(unpacking.path(QStringLiteral("d/old")), "data");
    TestFile::write(unpacking.path(QStringLiteral("other/old")), "data");
    cancelAt(unpacking, 5);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.found(),
             (QStringList {QStringLiteral("d/"), QStringLiteral("d/old"), QStringLiteral("other/"),
                           QStringLiteral("other/old")}));
}

void ArchiveCancelTest::cancelLeavesTheWorkingFolderAlone()
{
    const QTemporaryDir working;
    TestFile::write(working.filePath(QStringLiteral("1")), "not the archive's");
    QVERIFY(QDir(working.path()).mkdir(QStringLiteral("d")));
    Unpacking unpacking(tar(RawTar()
                                .add("1", "data")
                                .add("d/", "", RawTar::Folder)
                                .add("2", QByteArray(2 * Block, 'x'))));
    cancelAt(unpacking, 5);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(working.path()));

    const bool unpacked = unpacking.run();
    QVERIFY(QDir::setCurrent(before));

    QVERIFY(!unpacked);
    QCOMPARE(unpacking.found(), QStringList());
    QCOMPARE(TestFile::read(working.filePath(QStringLiteral("1"))),
             QByteArray("not the archive's"));
    QVERIFY(QFileInfo::exists(working.filePath(QStringLiteral("d"))));
}

void ArchiveCancelTest::cancelledUnpackCanBeRepeated()
{
    Unpacking unpacking(tar(RawTar().add("d/1", "data").add("2", QByteArray(2 * Block, 'x'))));
    const auto connection = connect(&unpacking.archive, &VexaArchive::progress, &unpacking.archive,
                                    [&unpacking] { unpacking.archive.cancel(); });
    QVERIFY(!unpacking.run());
    disconnect(connection);

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.results(), (QList<int> {6, 0}));
    QCOMPARE(unpacking.found(),
             (QStringList {QStringLiteral("2"), QStringLiteral("d/"), QStringLiteral("d/1")}));
}

void ArchiveCancelTest::purgeTakesBackASuccessfulUnpack()
{
    m_builder->addFile(QStringLiteral("a/3/3fa9.cdt"), "tile");
    m_builder->addFile(QStringLiteral("config.cfg"), "data");
    m_builder->addFolder(QStringLiteral("empty"));
    Unpacking unpacking(m_builder->make(QStringLiteral("a.zip")));
    QVERIFY(unpacking.run());
    const QStringList list = unpacking.archive.getUnpackedFileList();

    unpacking.archive.purge();

    QCOMPARE(unpacking.found(), QStringList());
    QCOMPARE(unpacking.archive.getUnpackedFileList(), list);
    QCOMPARE(unpacking.results(), QList<int> {0});
}

void ArchiveCancelTest::purgeRemovesFoldersInsideFoldersWhateverTheirOrder()
{
    Unpacking unpacking(tar(RawTar()
                                .add("a/", "", RawTar::Folder)
                                .add("a/b/", "", RawTar::Folder)
                                .add("a/b/c/", "", RawTar::Folder)
                                .add("x/y/", "", RawTar::Folder)
                                .add("./x/./", "", RawTar::Folder)
                                .add("a/b/f", "data")));
    QVERIFY(unpacking.run());

    unpacking.archive.purge();

    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveCancelTest::purgeRemovesParentsThatTheArchiveDoesNotList()
{
    Unpacking unpacking(tar(RawTar().add("a/b/f", "data").add("c/d/", "", RawTar::Folder)));
    QVERIFY(QDir().mkpath(unpacking.path(QStringLiteral("c"))));
    QVERIFY(unpacking.run());

    unpacking.archive.purge();

    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("c/")});
}

void ArchiveCancelTest::purgeKeepsFoldersThatAreNotEmpty()
{
    Unpacking unpacking(tar(RawTar().add("a/", "", RawTar::Folder).add("a/f", "data")));
    QVERIFY(unpacking.run());
    TestFile::write(unpacking.path(QStringLiteral("a/user")), "data");

    unpacking.archive.purge();

    QCOMPARE(unpacking.found(), (QStringList {QStringLiteral("a/"), QStringLiteral("a/user")}));
}

void ArchiveCancelTest::purgeRemovesAListedFolderThatWasThereAndIsEmpty()
{
    Unpacking unpacking(tar(RawTar().add("a/", "", RawTar::Folder)));
    QVERIFY(QDir().mkpath(unpacking.path(QStringLiteral("a"))));
    QVERIFY(unpacking.run());

    unpacking.archive.purge();

    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveCancelTest::purgeKeepsTheDestinationThatTheArchiveLists()
{
    Unpacking unpacking(
        tar(RawTar().add("./", "", RawTar::Folder).add("../out/", "", RawTar::Folder)));
    QVERIFY(unpacking.run());

    unpacking.archive.purge();

    QVERIFY(QDir(unpacking.folder()).exists());
}

void ArchiveCancelTest::purgeLeavesAFolderThatTookThePlaceOfAFile()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));
    QVERIFY(unpacking.run());
    QVERIFY(QFile::remove(unpacking.path(QStringLiteral("f"))));
    QVERIFY(QDir().mkpath(unpacking.path(QStringLiteral("f"))));

    unpacking.archive.purge();

    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f/")});
}

void ArchiveCancelTest::purgeTwiceTouchesNothingTheSecondTime()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));
    QVERIFY(unpacking.run());
    unpacking.archive.purge();
    TestFile::write(unpacking.path(QStringLiteral("f")), "someone else's");

    unpacking.archive.purge();

    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("f"))), QByteArray("someone else's"));
}

void ArchiveCancelTest::purgeWithoutAnUnpackDoesNothing()
{
    Unpacking unpacking(QStringLiteral("/nowhere/a.zip"));

    unpacking.archive.purge();

    QCOMPARE(unpacking.archive.error(), VexaArchive::NoError);
    QCOMPARE(unpacking.results(), QList<int>());
}

QTEST_GUILESS_MAIN(ArchiveCancelTest)
#include "tst_archivecancel.moc"
