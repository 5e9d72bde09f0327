// SPDX-License-Identifier: MIT
#include "archive/unpacking.h"
#include "testutils/archivebuilder.h"
#include <csignal>
#include <QtTest>
#include <sys/resource.h>

namespace {

constexpr int Block = 400960;

/** Lets no file of this process grow beyond a size while it lives, as a full disk would. */
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_oldAction(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_old);
        const rlimit limit = {bytes, m_old.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_old);
        std::signal(SIGXFSZ, m_oldAction);
    }
    Q_DISABLE_COPY(FileSizeLimit)

private:
    rlimit m_old = {};
    void (*m_oldAction)(int);
};

QString withCode(const char *before, int code, const char *after)
{
    return QString::fromLatin1(before) + QChar(code) + QString::fromLatin1(after);
}

} // namespace

class ArchiveFailuresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void archiveThatCannotBeOpenedFinishesTwice_data();
    void archiveThatCannotBeOpenedFinishesTwice();
    void archiveWithoutANameIsNotReadFromTheStandardInput();
    void textOfSingleWordsIsTakenForAnArchiveAndRefused();
    void cutArchiveFailsBeforeAnythingIsUnpacked_data();
    void cutArchiveFailsBeforeAnythingIsUnpacked();
    void warningOfTheLibraryIsAnError();
    void headerDamagedOnTheWayEndsTheUnpackAsIfItWereTheEnd();
    void flippedByteInAZipIsAReadError();
    void encryptedArchiveIsAReadError_data();
    void encryptedArchiveIsAReadError();
    void shortDataIsAReadErrorThatShowsCountsAsCharacters();
    void zipWithAWrongSizeIsAReadError();
    void holeAtTheEndOfAFileIsAReadError();
    void failedFileLeavesNothingUnderItsName();
    void whatWasUnpackedBeforeAnErrorStays();
    void fullDiskIsAWriteErrorThatShowsTheCountAsACharacter_data();
    void fullDiskIsAWriteErrorThatShowsTheCountAsACharacter();
    void destinationThatCannotBeMadeIsAWriteError();
    void destinationThatTakesNoFilesIsAWriteError();
    void folderThatCannotBeMadeIsAWriteError();
    void parentThatCannotBeMadeIsAWriteError();
    void fileThatIsThereIsNotOverwritten();
    void nameThatComesTwiceIsAWriteError();
    void fileIsNotPutInThePlaceOfAFolder();
    void damagedArchivesOfEveryFormatAreSurvived_data();
    void damagedArchivesOfEveryFormatAreSurvived();

private:
    QString tar(const RawTar &tar)
    {
        return m_builder->write(QStringLiteral("a.tar"), tar.bytes());
    }

    std::unique_ptr<ArchiveBuilder> m_builder;
};

void ArchiveFailuresTest::init()
{
    m_builder = std::make_unique<ArchiveBuilder>();
}

void ArchiveFailuresTest::archiveThatCannotBeOpenedFinishesTwice_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("missing file") << QByteArray();
    QTest::newRow("web page") << QByteArray("<html><body>404 not found</body></html>\n");
    QTest::newRow("one byte") << QByteArray("x");
    QByteArray damaged = RawTar().add("f", "data").bytes();
    damaged[0] = 'g';
    QTest::newRow("tar with a wrong check sum") << damaged;
}

void ArchiveFailuresTest::archiveThatCannotBeOpenedFinishesTwice()
{
    QFETCH(QByteArray, bytes);
    const QString path = m_builder->write(QStringLiteral("a.zip"), bytes);
    if (bytes.isEmpty())
        QVERIFY(QFile::remove(path));
    Unpacking unpacking(path);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), (QList<int> {1, 1}));
    QCOMPARE(unpacking.archive.error(), VexaArchive::OpenError);
    QVERIFY(
        unpacking.archive.errorString().startsWith(QLatin1String("Could not open the archive: ")));
    QVERIFY(unpacking.archive.errorString().size() > 30); // the library's words follow
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::archiveWithoutANameIsNotReadFromTheStandardInput()
{
    Unpacking unpacking {QString()};

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), (QList<int> {1, 1}));
    QCOMPARE(unpacking.archive.errorString(),
             QStringLiteral("Could not open the archive: it has no name"));
}

void ArchiveFailuresTest::textOfSingleWordsIsTakenForAnArchiveAndRefused()
{
    // libarchive sees an "mtree" in it, a list of files without their data.
    Unpacking unpacking(m_builder->write(QStringLiteral("a.zip"), "{\n\"error\":404\n}\n"));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {2});
    QVERIFY(unpacking.archive.errorString().startsWith(QLatin1String("Archive iteration error: ")));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::cutArchiveFailsBeforeAnythingIsUnpacked_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"a.tar", "a.tar.gz", "a.tar.xz", "a.tar.bz2", "a.tar.zst", "a.cpio"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void ArchiveFailuresTest::cutArchiveFailsBeforeAnythingIsUnpacked()
{
    QFETCH(QString, name);
    m_builder->addFile(QStringLiteral("1"), ArchiveBuilder::noise(3 * Block));
    m_builder->addFile(QStringLiteral("2"), ArchiveBuilder::noise(3 * Block, 2));
    const QString path = m_builder->make(name);
    TestFile::cut(path, QFileInfo(path).size() / 4 * 3);
    Unpacking unpacking(path);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {2});
    QVERIFY(unpacking.archive.errorString().startsWith(QLatin1String("Archive iteration error: ")));
    QCOMPARE(unpacking.found(), QStringList());
    QCOMPARE(unpacking.archive.getUnpackedFileList(), QStringList());
}

void ArchiveFailuresTest::warningOfTheLibraryIsAnError()
{
    // A name in an extended header must be UTF-8. libarchive would go on with the raw bytes.
    Unpacking unpacking(
        tar(RawTar().add("x", "11 path=\xff\xfe\n", RawTar::ExtendedHeader).add("f", "data")));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {2});
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::headerDamagedOnTheWayEndsTheUnpackAsIfItWereTheEnd()
{
    // Damaged while it is unpacked: the first pass finds every damage that is there before.
    const int size = 2 * Block;
    const QString path = tar(RawTar().add("1", QByteArray(size, 'x')).add("2", "data"));
    Unpacking unpacking(path);
    connect(&unpacking.archive, &VexaArchive::progress, this, [path] {
        TestFile::patch(path, 512 + (size + 511) / 512 * 512, QByteArray(400, '?'));
    });

    QVERIFY(unpacking.run()); // meant: only the code tells

    QCOMPARE(unpacking.results(), QList<int> {2});
    QCOMPARE(unpacking.archive.error(), VexaArchive::IterationError);
    QVERIFY(unpacking.archive.errorString().startsWith(QLatin1String("Unpacking error: ")));
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("1")});
    QCOMPARE(unpacking.archive.getUnpackedFileList(), QStringList {QStringLiteral("1")});
}

void ArchiveFailuresTest::flippedByteInAZipIsAReadError()
{
    m_builder->addFile(QStringLiteral("f"), QByteArray("find me").append(QByteArray(100, 'x')));
    const QString path = m_builder->make(QStringLiteral("a.stored.zip"));
    TestFile::patch(path, TestFile::read(path).indexOf("find me"), "F");
    Unpacking unpacking(path);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {3});
    QVERIFY(unpacking.archive.errorString().contains(QLatin1String("CRC")));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::encryptedArchiveIsAReadError_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("zip") << QStringLiteral("a.encrypted.zip");
    QTest::newRow("7z") << QStringLiteral("a.encrypted.7z");
}

void ArchiveFailuresTest::encryptedArchiveIsAReadError()
{
    QFETCH(QString, name);
    m_builder->addFile(QStringLiteral("f"), "secret data");
    Unpacking unpacking(m_builder->make(name));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {3});
    QVERIFY(!unpacking.archive.errorString().isEmpty());
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::shortDataIsAReadErrorThatShowsCountsAsCharacters()
{
    // An mtree names a file of 321 bytes (1 * 256 + 'A') and has none of them.
    Unpacking unpacking(
        m_builder->write(QStringLiteral("a.mtree"), "#mtree\nf type=file size=321\n"));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {3});
    QCOMPARE(unpacking.archive.errorString(), withCode("Read ", 0, " bytes instead of A"));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::zipWithAWrongSizeIsAReadError()
{
    // Streamed twice over, its entries come without a size: 6 bytes where none were promised.
    m_builder->addFile(QStringLiteral("f"), "6bytes");
    Unpacking unpacking(m_builder->make(QStringLiteral("a.zip.gz")));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {3});
    QCOMPARE(unpacking.archive.errorString(),
             withCode("Read ", 6, " bytes instead of ") + QChar(0));
    QCOMPARE(unpacking.steps(), QStringList {QStringLiteral("6/0")});
}

void ArchiveFailuresTest::holeAtTheEndOfAFileIsAReadError()
{
    // libarchive gives holes only up to the last data. Better an error than a shorter file.
    m_builder->addSparseFile(QStringLiteral("f"), 1024 * 1024);
    Unpacking unpacking(m_builder->make(QStringLiteral("a.pax")));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {3});
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::failedFileLeavesNothingUnderItsName()
{
    const QString path = tar(RawTar().add("f", QByteArray(3 * Block, 'x')));
    Unpacking unpacking(path);
    connect(&unpacking.archive, &VexaArchive::progress, this,
            [path] { TestFile::cut(path, 2 * Block); });

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {3});
    QVERIFY(!unpacking.steps().isEmpty());
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::whatWasUnpackedBeforeAnErrorStays()
{
    Unpacking unpacking(tar(RawTar().add("1", "data").add("1", "again").add("2", "data")));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("1")});
    QCOMPARE(unpacking.archive.getUnpackedFileList(), QStringList {QStringLiteral("1")});
    unpacking.archive.purge();
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::fullDiskIsAWriteErrorThatShowsTheCountAsACharacter_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("code");
    QTest::newRow("in a whole block") << 3 * Block << 2 * Block + 1000 << Block % 256;
    QTest::newRow("in the rest") << Block + 1000 << Block + 1 << 1000 % 256;
    QTest::newRow("at the first byte") << 1000 << 0 << 1000 % 256;
}

void ArchiveFailuresTest::fullDiskIsAWriteErrorThatShowsTheCountAsACharacter()
{
    QFETCH(int, size);
    QFETCH(int, limit);
    QFETCH(int, code);
    Unpacking unpacking(tar(RawTar().add("f", QByteArray(size, 'x'))));

    bool unpacked = true;
    {
        const FileSizeLimit fullDisk {rlim_t(limit)};
        unpacked = unpacking.run();
    }

    QVERIFY(!unpacked);
    QCOMPARE(unpacking.results(), QList<int> {4});
    QCOMPARE(unpacking.archive.errorString(), withCode("Could not write ", code, " bytes"));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFailuresTest::destinationThatCannotBeMadeIsAWriteError()
{
    VexaArchive archive(tar(RawTar().add("f", "data")));
    QSignalSpy finished(&archive, &VexaArchive::finished);
    const QString destination =
        m_builder->write(QStringLiteral("file"), "data") + QLatin1String("/below");

    QVERIFY(!archive.unpack(destination));

    QCOMPARE(finished.count(), 1);
    QCOMPARE(archive.error(), VexaArchive::WriteError);
    QCOMPARE(archive.errorString(),
             QStringLiteral("Could create destination directory ") + destination);
}

void ArchiveFailuresTest::destinationThatTakesNoFilesIsAWriteError()
{
    VexaArchive archive(tar(RawTar().add("f", "data")));

    QVERIFY(!archive.unpack(QStringLiteral("/proc/self")));

    QCOMPARE(archive.error(), VexaArchive::WriteError);
    QVERIFY(
        archive.errorString().startsWith(QLatin1String("Could not create /proc/self/vexa-maps.")));
}

void ArchiveFailuresTest::folderThatCannotBeMadeIsAWriteError()
{
    Unpacking unpacking(tar(RawTar().add("d/e/", "", RawTar::Folder)));
    TestFile::write(unpacking.path(QStringLiteral("d")), "a file");

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QCOMPARE(unpacking.archive.errorString(), QStringLiteral("Could not create directory d/e/"));
    QCOMPARE(unpacking.archive.getUnpackedFileList(), QStringList());
}

void ArchiveFailuresTest::parentThatCannotBeMadeIsAWriteError()
{
    Unpacking unpacking(tar(RawTar().add("d/f", "data")));
    TestFile::write(unpacking.path(QStringLiteral("d")), "a file");

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QCOMPARE(unpacking.archive.errorString(),
             QStringLiteral("Could not create parent directory for file d/f"));
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("d")});
}

void ArchiveFailuresTest::fileThatIsThereIsNotOverwritten()
{
    Unpacking unpacking(tar(RawTar().add("f", "new")));
    TestFile::write(unpacking.path(QStringLiteral("f")), "old");

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    const QString pattern = QStringLiteral("^Could not rename %1/vexa-maps\\.\\w{6} to %1/f$")
                                .arg(QRegularExpression::escape(unpacking.folder()));
    QVERIFY2(QRegularExpression(pattern).match(unpacking.archive.errorString()).hasMatch(),
             qPrintable(unpacking.archive.errorString()));
    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("f"))), QByteArray("old"));
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f")});
    unpacking.archive.purge();
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f")}); // not ours
}

void ArchiveFailuresTest::nameThatComesTwiceIsAWriteError()
{
    Unpacking unpacking(tar(RawTar().add("f", "first").add("./f", "second")));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("f"))), QByteArray("first"));
}

void ArchiveFailuresTest::fileIsNotPutInThePlaceOfAFolder()
{
    Unpacking unpacking(tar(RawTar().add("d/", "", RawTar::Folder).add("d", "data")));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("d/")});
}

void ArchiveFailuresTest::damagedArchivesOfEveryFormatAreSurvived_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"a.tar", "a.pax", "a.tar.gz", "a.tar.bz2", "a.tar.xz", "a.tar.zst",
                             "a.cpio", "a.iso", "a.zip", "a.7z"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void ArchiveFailuresTest::damagedArchivesOfEveryFormatAreSurvived()
{
    QFETCH(QString, name);
    m_builder->addFile(QStringLiteral("d/1"), ArchiveBuilder::noise(500));
    m_builder->addFile(QString::fromUtf8("ü"), ArchiveBuilder::noise(500, 2));
    m_builder->addFolder(QStringLiteral("e"));
    const QString path = m_builder->make(name);
    const QByteArray whole = TestFile::read(path);
    QRandomGenerator generator(5);

    for (int round = 0; round < 60; ++round) {
        QByteArray damaged = whole;
        for (int i = 0; i < 3; ++i) {
            const int at = generator.bounded(int(whole.size()));
            damaged[at] = char(damaged.at(at) ^ (1 << generator.bounded(8)));
        }
        TestFile::write(path, damaged);
        Unpacking unpacking(path);
        // What damage makes of a name must not reach our own folders.
        unpacking.archive.setContained(true);

        const bool unpacked = unpacking.run();

        const QList<int> results = unpacking.results();
        QVERIFY(!results.isEmpty());
        QCOMPARE(results.last(), int(unpacking.archive.error()));
        QCOMPARE(results.size(), results.last() == VexaArchive::OpenError ? 2 : 1);
        QVERIFY(unpacked || results.last() != VexaArchive::NoError);
        QCOMPARE(unpacking.found().filter(QStringLiteral("vexa-maps.")), QStringList());
        QCOMPARE(unpacking.foundOutside(), QStringList());
    }
}

QTEST_GUILESS_MAIN(ArchiveFailuresTest)
#include "tst_archivefailures.moc"
