// SPDX-License-Identifier: MIT
#include "archive/unpacking.h"
#include "testutils/archivebuilder.h"
#include "testutils/logcatcher.h"
#include <QMetaEnum>
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

class VexaArchiveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void startsWithoutErrorAndWithTheDescribedPause();
    void errorCodesHaveFixedNumbersAndFiveIsUnused();
    void signalsHaveTheirParameterNames();
    void resultTravelsThroughAQueuedConnection();
    void destructorTracesItsSignature();
    void destructorClosesAnOpenArchive();
    void everyFormatIsUnpacked_data();
    void everyFormatIsUnpacked();
    void emptyArchiveSucceedsWithAnEmptyList_data();
    void emptyArchiveSucceedsWithAnEmptyList();
    void zeroByteFileIsUnpacked();
    void parentThatTheArchiveDoesNotListIsMade();
    void missingDestinationIsMadeWithItsParents();
    void relativeDestinationBelongsToTheWorkingFolder();
    void listKeepsTheStoredNamesInTheirOrder();
    void linksAndDevicesAreSkippedWithoutAMessage();
    void sparseFileIsUnpackedInFullLength();
    void secondUnpackStartsAfresh();
    void finishReadMayComeAtAnyTime();
    void resetErrorForgetsTheError();

private:
    std::unique_ptr<ArchiveBuilder> m_builder;
};

void VexaArchiveTest::init()
{
    m_builder = std::make_unique<ArchiveBuilder>();
}

void VexaArchiveTest::startsWithoutErrorAndWithTheDescribedPause()
{
    const VexaArchive archive(QStringLiteral("/nowhere/a.zip"));

    QCOMPARE(archive.parent(), nullptr);
    QCOMPARE(archive.error(), VexaArchive::NoError);
    QCOMPARE(archive.errorString(), QString());
    QCOMPARE(archive.getUnpackedFileList(), QStringList());
    QCOMPARE(archive.blockPause(), 30);
    QVERIFY(!archive.isContained());
}

void VexaArchiveTest::errorCodesHaveFixedNumbersAndFiveIsUnused()
{
    const QMetaEnum codes = QMetaEnum::fromType<VexaArchive::ArchiveError>();
    QStringList found;
    for (int i = 0; i < codes.keyCount(); ++i)
        found.append(QStringLiteral("%1 %2").arg(codes.value(i)).arg(QLatin1String(codes.key(i))));

    QCOMPARE(found,
             strings({"0 NoError", "1 OpenError", "2 IterationError", "3 ReadError", "4 WriteError",
                      "6 CancelledError"}));
}

void VexaArchiveTest::signalsHaveTheirParameterNames()
{
    const QMetaObject &meta = VexaArchive::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
    const QMetaMethod progress = meta.method(meta.methodOffset());
    const QMetaMethod finished = meta.method(meta.methodOffset() + 1);

    QCOMPARE(progress, QMetaMethod::fromSignal(&VexaArchive::progress));
    QCOMPARE(progress.parameterNames(), (QList<QByteArray> {"bytes", "total"}));
    QCOMPARE(finished.methodSignature(), QByteArray("finished(VexaArchive::ArchiveError)"));
    QCOMPARE(finished.parameterNames(), QList<QByteArray> {"success"});
}

void VexaArchiveTest::resultTravelsThroughAQueuedConnection()
{
    VexaArchive archive(QStringLiteral("/nowhere/a.zip"));
    QList<int> results;
    connect(
        &archive, &VexaArchive::finished, this,
        [&results](VexaArchive::ArchiveError success) { results.append(success); },
        Qt::QueuedConnection);
    QSignalSpy byName(&archive, SIGNAL(finished(VexaArchive::ArchiveError)));

    quint64 size = 0;
    QVERIFY(!archive.getUncompressedSize(size));

    QCOMPARE(results, QList<int>());
    QTRY_COMPARE(results, QList<int> {1});
    QCOMPARE(byName.count(), 1);
}

void VexaArchiveTest::destructorTracesItsSignature()
{
    auto archive = std::make_unique<VexaArchive>(QStringLiteral("/nowhere/a.zip"));
    const LogCatcher log(4);

    archive.reset();

    QCOMPARE(log.texts(), strings({"[TRACE] virtual VexaArchive::~VexaArchive()"}));
}

void VexaArchiveTest::destructorClosesAnOpenArchive()
{
    m_builder->addFile(QStringLiteral("a"), "data");
    const QString path = m_builder->make(QStringLiteral("a.tar"));
    const auto openFiles = [&path] {
        int count = 0;
        for (const QFileInfo &link : QDir(QStringLiteral("/proc/self/fd")).entryInfoList())
            count += link.symLinkTarget() == path;
        return count;
    };

    auto archive = std::make_unique<VexaArchive>(path);
    QVERIFY(archive->startRead());
    QCOMPARE(openFiles(), 1);
    archive.reset();

    QCOMPARE(openFiles(), 0);
}

void VexaArchiveTest::everyFormatIsUnpacked_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"a.tar", "a.tar.gz", "a.tar.bz2", "a.tar.xz", "a.tar.zst", "a.tar.lz4",
                             "a.pax", "a.cpio", "a.iso", "a.zip", "a.stored.zip", "a.7z"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void VexaArchiveTest::everyFormatIsUnpacked()
{
    QFETCH(QString, name);
    const QByteArray big = ArchiveBuilder::noise(2 * Block + 17);
    m_builder->addFile(QStringLiteral("config.cfg"), "small\n");
    m_builder->addFile(QStringLiteral("a/3/3fa9.cdt"), big);
    m_builder->addFile(QStringLiteral("a/3/empty"), QByteArray());
    m_builder->addFolder(QStringLiteral("b/c"));
    Unpacking unpacking(m_builder->make(name));

    const bool unpacked = unpacking.run();

    QVERIFY2(unpacked, qPrintable(unpacking.archive.errorString()));
    QCOMPARE(unpacking.results(), QList<int> {0});
    QCOMPARE(unpacking.found(),
             strings({"a/", "a/3/", "a/3/3fa9.cdt", "a/3/empty", "b/", "b/c/", "config.cfg"}));
    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("a/3/3fa9.cdt"))), big);
    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("a/3/empty"))), QByteArray());
    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("config.cfg"))), QByteArray("small\n"));
    for (const QString &entry : unpacking.archive.getUnpackedFileList())
        QVERIFY2(QFileInfo::exists(unpacking.path(entry)), qPrintable(entry));
}

void VexaArchiveTest::emptyArchiveSucceedsWithAnEmptyList_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"a.tar", "a.tar.gz", "a.zip", "a.7z"})
        QTest::newRow(name) << QString::fromLatin1(name);
    QTest::newRow("a file without a byte") << QString();
}

void VexaArchiveTest::emptyArchiveSucceedsWithAnEmptyList()
{
    QFETCH(QString, name);
    Unpacking unpacking(name.isEmpty() ? m_builder->write(QStringLiteral("nothing"), QByteArray())
                                       : m_builder->make(name));

    const bool unpacked = unpacking.run();

    QVERIFY2(unpacked, qPrintable(unpacking.archive.errorString()));
    QCOMPARE(unpacking.results(), QList<int> {0});
    QCOMPARE(unpacking.steps(), QStringList());
    QCOMPARE(unpacking.archive.getUnpackedFileList(), QStringList());
    QVERIFY(QDir(unpacking.folder()).exists());
    QCOMPARE(unpacking.found(), QStringList());
}

void VexaArchiveTest::zeroByteFileIsUnpacked()
{
    m_builder->addFile(QStringLiteral("empty"), QByteArray());
    Unpacking unpacking(m_builder->make(QStringLiteral("a.tar")));

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.found(), strings({"empty"}));
    QCOMPARE(unpacking.steps(), QStringList());
}

void VexaArchiveTest::parentThatTheArchiveDoesNotListIsMade()
{
    Unpacking unpacking(
        m_builder->write(QStringLiteral("a.tar"), RawTar().add("d/e/f.txt", "data").bytes()));

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.found(), strings({"d/", "d/e/", "d/e/f.txt"}));
    QCOMPARE(unpacking.archive.getUnpackedFileList(), strings({"d/e/f.txt"}));
}

void VexaArchiveTest::missingDestinationIsMadeWithItsParents()
{
    const QTemporaryDir home;
    VexaArchive archive(
        m_builder->write(QStringLiteral("a.tar"), RawTar().add("f", "data").bytes()));

    QVERIFY(archive.unpack(home.filePath(QStringLiteral("x/y/z/"))));

    QCOMPARE(TestFile::read(home.filePath(QStringLiteral("x/y/z/f"))), QByteArray("data"));
}

void VexaArchiveTest::relativeDestinationBelongsToTheWorkingFolder()
{
    const QTemporaryDir home;
    VexaArchive archive(
        m_builder->write(QStringLiteral("a.tar"), RawTar().add("f", "data").bytes()));
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(home.path()));

    const bool unpacked = archive.unpack(QStringLiteral("x/y"));
    QVERIFY(QDir::setCurrent(before));

    QVERIFY(unpacked);
    QCOMPARE(TestFile::read(home.filePath(QStringLiteral("x/y/f"))), QByteArray("data"));
    archive.purge(); // from another working folder
    QCOMPARE(QDir(home.filePath(QStringLiteral("x/y"))).isEmpty(), true);
}

void VexaArchiveTest::listKeepsTheStoredNamesInTheirOrder()
{
    Unpacking unpacking(m_builder->write(QStringLiteral("a.tar"),
                                         RawTar()
                                             .add("./", "", RawTar::Folder)
                                             .add("z/", "", RawTar::Folder)
                                             .add("./z/2", "data")
                                             .add("a", "data")
                                             .bytes()));

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.archive.getUnpackedFileList(), strings({"./", "z/", "./z/2", "a"}));
}

void VexaArchiveTest::linksAndDevicesAreSkippedWithoutAMessage()
{
    Unpacking unpacking(m_builder->write(QStringLiteral("a.tar"),
                                         RawTar()
                                             .add("file", "data")
                                             .add("hard", "", RawTar::HardLink, "file")
                                             .add("soft", "", RawTar::SymLink, "file")
                                             .add("pipe", "", RawTar::Fifo)
                                             .add("tty", "", RawTar::CharacterDevice)
                                             .add("disk", "", RawTar::BlockDevice)
                                             .add("last", "data")
                                             .bytes()));
    const LogCatcher log(4);

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {0});
    QCOMPARE(unpacking.found(), strings({"file", "last"}));
    QCOMPARE(unpacking.archive.getUnpackedFileList(), strings({"file", "last"}));
    QCOMPARE(log.texts(), QStringList());
}

void VexaArchiveTest::sparseFileIsUnpackedInFullLength()
{
    const int size = 3 * 1024 * 1024;
    m_builder->addSparseFile(QStringLiteral("sparse"), size);
    m_builder->patchFile(QStringLiteral("sparse"), size - 3, "end");
    Unpacking unpacking(m_builder->make(QStringLiteral("a.pax")));

    QVERIFY(unpacking.run());

    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("sparse"))),
             QByteArray(size - 3, '\0') + "end");
}

void VexaArchiveTest::secondUnpackStartsAfresh()
{
    Unpacking unpacking(
        m_builder->write(QStringLiteral("a.tar"), RawTar().add("f", "data").bytes()));
    QVERIFY(unpacking.run());
    QVERIFY(!unpacking.run()); // the file is there
    QCOMPARE(unpacking.archive.getUnpackedFileList(), QStringList());
    QVERIFY(QFile::remove(unpacking.path(QStringLiteral("f"))));

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.results(), (QList<int> {0, 4, 0}));
    QCOMPARE(unpacking.archive.error(), VexaArchive::NoError);
    QCOMPARE(unpacking.archive.errorString(), QString());
    QCOMPARE(unpacking.archive.getUnpackedFileList(), strings({"f"}));
}

void VexaArchiveTest::finishReadMayComeAtAnyTime()
{
    VexaArchive archive(
        m_builder->write(QStringLiteral("a.tar"), RawTar().add("f", "data").bytes()));

    archive.finishRead();
    QVERIFY(archive.startRead());
    QVERIFY(archive.startRead());
    archive.finishRead();
    archive.finishRead();

    quint64 size = 0;
    QVERIFY(archive.getUncompressedSize(size));
    QCOMPARE(size, quint64(4));
}

void VexaArchiveTest::resetErrorForgetsTheError()
{
    VexaArchive archive(QStringLiteral("/nowhere/a.zip"));
    QVERIFY(!archive.startRead());
    QCOMPARE(archive.error(), VexaArchive::OpenError);

    archive.resetError();

    QCOMPARE(archive.error(), VexaArchive::NoError);
    QCOMPARE(archive.errorString(), QString());
}

QTEST_GUILESS_MAIN(VexaArchiveTest)
#include "tst_vexaarchive.moc"
