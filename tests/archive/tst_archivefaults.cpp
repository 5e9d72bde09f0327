// SPDX-License-Identifier: MIT
#include "archive/unpacking.h"
#include "testutils/archivebuilder.h"
#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <dlfcn.h>
#include <QtTest>

// What no file can provoke: this program defines some functions of libarchive and of the system
// itself. The loader prefers them to the real ones, which they call unless a fault is asked for.

namespace {

// Of the thread that asks for them: the watchdog of Qt Test closes files as well.
struct Faults
{
    int openToFail = 0; // the archive's n-th opening
    bool nullNames = false;
    int errorCode = 0; // what libarchive reports after the data
    int renameError = 0;
    bool closeFails = false; // of the file that is being unpacked
    bool noHandle = false;
};
thread_local Faults faults;

template <typename Function> Function *real(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" {

archive *archive_read_new()
{
    return faults.noHandle ? nullptr : real<archive *()>("archive_read_new")();
}

int archive_read_open_filename(archive *handle, const char *path, size_t blockSize)
{
    static const auto open =
        real<int(archive *, const char *, size_t)>("archive_read_open_filename");
    if (faults.openToFail > 0 && --faults.openToFail == 0)
        path = "/nowhere/a.zip";
    return open(handle, path, blockSize);
}

const char *archive_entry_pathname(archive_entry *entry)
{
    static const auto name = real<const char *(archive_entry *)>("archive_entry_pathname");
    return faults.nullNames ? nullptr : name(entry);
}

int archive_errno(archive *handle)
{
    static const auto code = real<int(archive *)>("archive_errno");
    return faults.errorCode ? faults.errorCode : code(handle);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
              unsigned int flags) noexcept
{
    using Rename = int(int, const char *, int, const char *, unsigned int);
    static const auto rename = real<Rename>("renameat2");
    if (!faults.renameError)
        return rename(fromFolder, from, toFolder, to, flags);
    errno = faults.renameError;
    return -1;
}

int close(int descriptor)
{
    static const auto realClose = real<int(int)>("close");
    const int result = realClose(descriptor);
    if (!faults.closeFails)
        return result;
    errno = ENOSPC;
    return -1;
}

} // extern "C"

class ArchiveFaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { faults = Faults(); }
    void secondOpeningThatFailsFinishesOnce();
    void missingMemoryForAHandleIsAnOpenError();
    void entryWithoutANameIsAnIterationError();
    void errorAfterTheDataIsAnIterationError();
    void unspecificErrorAfterTheDataIsIgnored();
    void fileThatCannotBeStoredAtCloseIsAWriteError();
    void fileSystemWithoutSafeRenameIsServed_data();
    void fileSystemWithoutSafeRenameIsServed();
    void fileSystemWithoutSafeRenameOverwritesNothing();
    void renameThatFailsIsNotTriedAgain();

private:
    QString tar(const RawTar &tar) { return m_builder.write(QStringLiteral("a.tar"), tar.bytes()); }

    ArchiveBuilder m_builder;
};

void ArchiveFaultsTest::secondOpeningThatFailsFinishesOnce()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));
    faults.openToFail = 2;

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {1});
    QVERIFY(
        unpacking.archive.errorString().startsWith(QLatin1String("Could not open the archive: ")));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFaultsTest::missingMemoryForAHandleIsAnOpenError()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));
    faults.noHandle = true;

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), (QList<int> {1, 1}));
    QCOMPARE(unpacking.archive.errorString(),
             QStringLiteral("Could not open the archive: out of memory"));
}

void ArchiveFaultsTest::entryWithoutANameIsAnIterationError()
{
    Unpacking unpacking(tar(RawTar().add("link", "", RawTar::SymLink, "f").add("f", "data")));
    faults.nullNames = true;

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {2});
    QVERIFY(unpacking.archive.errorString().startsWith(QLatin1String("Unpacking error: ")));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFaultsTest::errorAfterTheDataIsAnIterationError()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));
    faults.errorCode = 84;

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {2});
    QVERIFY(unpacking.archive.errorString().startsWith(QLatin1String("Unpacking error: ")));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFaultsTest::unspecificErrorAfterTheDataIsIgnored()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));
    faults.errorCode = -1;

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {0});
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f")});
}

void ArchiveFaultsTest::fileThatCannotBeStoredAtCloseIsAWriteError()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));
    connect(&unpacking.archive, &VexaArchive::progress, this, [] { faults.closeFails = true; });

    const bool unpacked = unpacking.run();
    faults.closeFails = false;

    QVERIFY(!unpacked);
    QCOMPARE(unpacking.results(), QList<int> {4});
    QVERIFY(unpacking.archive.errorString().startsWith(QLatin1String("Could not close ")));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveFaultsTest::fileSystemWithoutSafeRenameIsServed_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("not by the file system") << EINVAL;
    QTest::newRow("not by the kernel") << ENOSYS;
}

void ArchiveFaultsTest::fileSystemWithoutSafeRenameIsServed()
{
    QFETCH(int, error);
    Unpacking unpacking(tar(RawTar().add("d/f", "data")));
    faults.renameError = error;

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.found(), (QStringList {QStringLiteral("d/"), QStringLiteral("d/f")}));
}

void ArchiveFaultsTest::fileSystemWithoutSafeRenameOverwritesNothing()
{
    Unpacking unpacking(tar(RawTar().add("f", "first").add("f", "second")));
    faults.renameError = EINVAL;

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("f"))), QByteArray("first"));
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f")});
}

void ArchiveFaultsTest::renameThatFailsIsNotTriedAgain()
{
    Unpacking unpacking(tar(RawTar().add("f", "data")));
    faults.renameError = EIO;

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QVERIFY(unpacking.archive.errorString().startsWith(QLatin1String("Could not rename ")));
    QCOMPARE(unpacking.found(), QStringList());
}

QTEST_GUILESS_MAIN(ArchiveFaultsTest)
#include "tst_archivefaults.moc"
