// SPDX-License-Identifier: MIT
#include "archive/unpacking.h"
#include "testutils/archivebuilder.h"
#include <QBuffer>
#include <QtTest>

namespace {

constexpr int Block = 400960;

QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

} // namespace

class ArchiveProgressTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void thousandsOfEntriesAreUnpacked();
    void progressRunsOnceOverTheWholeArchive();
    void progressComesBeforeTheBlockIsWritten();
    void fileHasATemporaryNameUntilItIsWhole();
    void sizesAreSummedUpBeyondFourGibibytes();
    void sizeOfAMissingArchiveEmitsFinishedOnce();
    void sizeOfACutArchiveLeavesTheNumberAlone();
    void entryCanBeExtractedByHand();
    void extractWithoutAnOpenArchiveIsAnError();
    void pauseIsNeverNegative();
    void everyBlockIsFollowedByThePause();

private:
    std::unique_ptr<ArchiveBuilder> m_builder;
};

void ArchiveProgressTest::init()
{
    m_builder = std::make_unique<ArchiveBuilder>();
}

void ArchiveProgressTest::thousandsOfEntriesAreUnpacked()
{
    RawTar tar;
    for (int i = 0; i < 3000; ++i)
        tar.add(QByteArray::number(i % 50) + "/" + QByteArray::number(i) + ".cdt", "data");
    Unpacking unpacking(m_builder->write(QStringLiteral("a.tar"), tar.bytes()));

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.archive.getUnpackedFileList().size(), 3000);
    QCOMPARE(unpacking.found().size(), 3000 + 50);
    QCOMPARE(unpacking.steps().last(), QStringLiteral("12000/12000"));
}

void ArchiveProgressTest::progressRunsOnceOverTheWholeArchive()
{
    Unpacking unpacking(m_builder->write(QStringLiteral("a.tar"),
                                         RawTar()
                                             .add("1", QByteArray(2 * Block, 'x'))
                                             .add("2", "four")
                                             .add("3", QByteArray(Block + 1, 'y'))
                                             .bytes()));

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.steps(),
             strings({"400960/1202885", "801920/1202885", "801924/1202885", "1202884/1202885",
                      "1202885/1202885"}));
}

void ArchiveProgressTest::progressComesBeforeTheBlockIsWritten()
{
    VexaArchive archive(m_builder->write(QStringLiteral("a.tar"),
                                         RawTar().add("1", QByteArray(Block + 5, 'x')).bytes()));
    archive.setBlockPause(0);
    QBuffer device;
    QVERIFY(device.open(QIODevice::WriteOnly));
    QList<qint64> sizes;
    connect(&archive, &VexaArchive::progress, this, [&] { sizes.append(device.size()); });
    quint64 size = 0;
    QVERIFY(archive.getUncompressedSize(size));
    const QTemporaryDir folder;
    connect(&archive, &VexaArchive::progress, this, [&] {
        const QFileInfoList files = QDir(folder.path()).entryInfoList(QDir::Files);
        sizes.append(files.isEmpty() ? -1 : files.first().size());
    });

    QVERIFY(archive.unpack(folder.path()));

    QCOMPARE(sizes, (QList<qint64> {0, 0, 0, Block}));
}

void ArchiveProgressTest::fileHasATemporaryNameUntilItIsWhole()
{
    Unpacking unpacking(m_builder->write(QStringLiteral("a.tar"),
                                         RawTar().add("d/f", QByteArray(Block + 1, 'x')).bytes()));
    QList<QStringList> seen;
    connect(&unpacking.archive, &VexaArchive::progress, this,
            [&] { seen.append(unpacking.found()); });

    QVERIFY(unpacking.run());

    QCOMPARE(seen.size(), 2);
    for (const QStringList &names : std::as_const(seen)) {
        QCOMPARE(names.size(), 1);
        QVERIFY(QRegularExpression(QStringLiteral("^vexa-maps\\.[A-Za-z0-9]{6}$"))
                    .match(names.first())
                    .hasMatch());
    }
    QCOMPARE(unpacking.found(), strings({"d/", "d/f"}));
}

void ArchiveProgressTest::sizesAreSummedUpBeyondFourGibibytes()
{
    const qint64 fiveGiB = qint64(5) * 1024 * 1024 * 1024;
    m_builder->addSparseFile(QStringLiteral("1"), fiveGiB);
    m_builder->addSparseFile(QStringLiteral("2"), fiveGiB);
    m_builder->addFile(QStringLiteral("3"), "data");
    VexaArchive archive(m_builder->make(QStringLiteral("a.pax")));
    QSignalSpy finished(&archive, &VexaArchive::finished);

    quint64 size = 1;
    QVERIFY(archive.getUncompressedSize(size));

    QCOMPARE(size, quint64(2 * fiveGiB + 4));
    QCOMPARE(finished.count(), 0);
}

void ArchiveProgressTest::sizeOfAMissingArchiveEmitsFinishedOnce()
{
    Unpacking unpacking(QStringLiteral("/nowhere/a.zip"));

    quint64 size = 7;
    QVERIFY(!unpacking.archive.getUncompressedSize(size));

    QCOMPARE(size, quint64(7));
    QCOMPARE(unpacking.results(), QList<int> {1});
}

void ArchiveProgressTest::sizeOfACutArchiveLeavesTheNumberAlone()
{
    const QByteArray whole = RawTar().add("1", "data").add("2", QByteArray(9000, 'x')).bytes();
    Unpacking unpacking(m_builder->write(QStringLiteral("a.tar"), whole.left(3000)));

    quint64 size = 7;
    QVERIFY(!unpacking.archive.getUncompressedSize(size));

    QCOMPARE(size, quint64(7));
    QCOMPARE(unpacking.archive.error(), VexaArchive::IterationError);
    QVERIFY(unpacking.archive.errorString().startsWith(
        QLatin1String("Archive iteration error: Truncated")));
    QCOMPARE(unpacking.results(), QList<int>()); // only unpack() tells this one
}

void ArchiveProgressTest::entryCanBeExtractedByHand()
{
    // The current entry of an archive that was only opened is none: libarchive says so.
    VexaArchive archive(
        m_builder->write(QStringLiteral("a.tar"), RawTar().add("f", "data").bytes()));
    QVERIFY(archive.startRead());
    QBuffer device;
    QVERIFY(device.open(QIODevice::WriteOnly));

    quint64 bytesDone = 5;
    QCOMPARE(archive.extract(device, bytesDone, 9), quint64(0));
    archive.finishRead();

    QCOMPARE(archive.error(), VexaArchive::ReadError);
    QVERIFY(!archive.errorString().isEmpty());
    QCOMPARE(bytesDone, quint64(5));
    QCOMPARE(device.data(), QByteArray());
}

void ArchiveProgressTest::extractWithoutAnOpenArchiveIsAnError()
{
    VexaArchive archive(QStringLiteral("/nowhere/a.zip"));
    QBuffer device;
    QVERIFY(device.open(QIODevice::WriteOnly));

    quint64 bytesDone = 0;
    QCOMPARE(archive.extract(device, bytesDone, 0), quint64(0));

    QCOMPARE(archive.error(), VexaArchive::ReadError);
    QCOMPARE(archive.errorString(), QStringLiteral("The archive is not open"));
}

void ArchiveProgressTest::pauseIsNeverNegative()
{
    VexaArchive archive(QStringLiteral("/nowhere/a.zip"));

    archive.setBlockPause(7);
    QCOMPARE(archive.blockPause(), 7);
    archive.setBlockPause(-1);
    QCOMPARE(archive.blockPause(), 0);
}

void ArchiveProgressTest::everyBlockIsFollowedByThePause()
{
    Unpacking unpacking(m_builder->write(
        QStringLiteral("a.tar"), RawTar().add("f", QByteArray(3 * Block + 1, 'x')).bytes()));
    unpacking.archive.setBlockPause(30);
    QElapsedTimer clock;
    clock.start();

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.steps().size(), 4);
    QVERIFY2(clock.elapsed() >= 4 * 30, qPrintable(QString::number(clock.elapsed())));
}

QTEST_GUILESS_MAIN(ArchiveProgressTest)
#include "tst_archiveprogress.moc"
