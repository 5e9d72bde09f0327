// SPDX-License-Identifier: MIT
// The list at the end of zip archives that no tool would make, compared with what is unpacked.
#include "archive/unpacking.h"
#include "host/shared/zipdirectory.h"
#include "testutils/archivebuilder.h"
#include <algorithm>
#include <QtEndian>
#include <QtTest>

namespace {

template <typename Number> QByteArray le(Number number)
{
    QByteArray bytes(int(sizeof number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray u16(int number)
{
    return le(quint16(number));
}

QByteArray u32(qint64 number)
{
    return le(quint32(number));
}

quint32 crc32(const QByteArray &bytes)
{
    quint32 crc = ~0u;
    for (const char byte : bytes) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? (crc >> 1) ^ 0xedb88320u : crc >> 1;
    }
    return ~crc;
}

constexpr int Unix = 3;
constexpr int Fat = 0;

/** A zip archive of stored files whose list can be in any order and say any system. */
class ListedZip
{
public:
    struct File
    {
        File(const QByteArray &name, const QByteArray &data, int system = Unix,
             quint32 attributes = 0100644u << 16, const QByteArray &extra = QByteArray())
            : name(name)
            , data(data)
            , system(system)
            , attributes(attributes)
            , extra(extra)
        { }
        QByteArray name;
        QByteArray data;
        int system;
        quint32 attributes;
        QByteArray extra;
    };

    ListedZip &add(const File &file)
    {
        const QByteArray common = u16(0x0800) + u16(0) + u32(0) + u32(crc32(file.data))
            + u32(file.data.size()) + u32(file.data.size()) + u16(file.name.size())
            + u16(file.extra.size());
        m_directory.append("PK\1\2" + u16((file.system << 8) | 20) + u16(20) + common + u16(0)
                           + u16(0) + u16(0) + u32(file.attributes) + u32(m_files.size())
                           + file.name + file.extra);
        m_files += "PK\3\4" + u16(20) + common + file.name + file.extra + file.data;
        return *this;
    }
    ListedZip &reverseDirectory()
    {
        std::reverse(m_directory.begin(), m_directory.end());
        return *this;
    }
    QByteArray bytes(const QByteArray &comment = QByteArray()) const
    {
        const QByteArray directory = m_directory.join();
        return m_files + directory + "PK\5\6" + u16(0) + u16(0) + u16(m_directory.size())
            + u16(m_directory.size()) + u32(directory.size()) + u32(m_files.size())
            + u16(comment.size()) + comment;
    }

private:
    QByteArray m_files;
    QByteArrayList m_directory;
};

ZipDirectory::Reader readerOf(const QByteArray &bytes)
{
    return [bytes](qint64 offset, qint64 size) -> std::optional<QByteArray> {
        // A reader is never asked for what is not there.
        if (offset < 0 || size < 0 || offset > bytes.size() || size > bytes.size() - offset)
            qFatal("asked for %lld bytes at %lld", size, offset);
        return bytes.mid(int(offset), int(size));
    };
}

std::optional<QList<ZipDirectory::Entry>> entriesOf(const QByteArray &bytes)
{
    return ZipDirectory::read(readerOf(bytes), bytes.size());
}

QStringList filesOf(const QByteArray &bytes)
{
    QStringList files;
    const auto entries = entriesOf(bytes);
    if (!entries)
        return {QStringLiteral("no list")};
    for (const ZipDirectory::Entry &entry : *entries) {
        if (entry.isFile)
            files.append(
                QStringLiteral("%1 %2").arg(QString::fromUtf8(entry.name)).arg(entry.size));
    }
    files.sort();
    return files;
}

QStringList unpackedFiles(const QByteArray &bytes)
{
    ArchiveBuilder builder;
    Unpacking unpacking(builder.write(QStringLiteral("raw.zip"), bytes));
    unpacking.archive.setContained(true);
    unpacking.run();
    if (unpacking.archive.error() != VexaArchive::NoError)
        return {QStringLiteral("refused: ") + unpacking.archive.errorString()};
    QStringList files;
    const QStringList found = unpacking.found();
    for (const QString &name : found) {
        if (!name.endsWith(QLatin1Char('/')))
            files.append(
                QStringLiteral("%1 %2").arg(name).arg(QFileInfo(unpacking.path(name)).size()));
    }
    return files;
}

} // namespace

class ZipDirectoryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsWhatUnpackingMakes_data();
    void listsWhatUnpackingMakes();
    void largeSizesComeFromTheLongField();
    void archivesWithManyFilesHaveALargerRecord();
    void entriesComeInTheOrderOfTheFiles();
    void whatIsUnusualIsLeftToTheLibrary_data();
    void whatIsUnusualIsLeftToTheLibrary();
    void damageIsSurvivedAtEveryByte();
    void everyCutIsSurvived();
    void aReaderThatFailsGivesNoList();
};

void ZipDirectoryTest::listsWhatUnpackingMakes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const ListedZip::File tile {"a/3/x.cdt", "tile"};
    QTest::newRow("a tile") << ListedZip().add(tile).bytes();
    QTest::newRow("a comment") << ListedZip().add(tile).bytes("made by hand");
    QTest::newRow("a comment that looks like an end")
        << ListedZip().add(tile).bytes("PK\5\6 is how it ends, or does it not now");
    QTest::newRow("a folder by its name")
        << ListedZip().add({"a/3/", QByteArray(), Unix, 0}).add(tile).bytes();
    QTest::newRow("a folder by its mode")
        << ListedZip().add({"a/3", QByteArray(), Unix, 040755u << 16}).add(tile).bytes();
    QTest::newRow("a folder by its attribute")
        << ListedZip().add({"a/3", QByteArray(), Fat, 0x10}).add(tile).bytes();
    QTest::newRow("a link")
        << ListedZip().add(tile).add({"a/3/l.cdt", "x.cdt", Unix, 0120777u << 16}).bytes();
    QTest::newRow("a mode of nothing") << ListedZip().add({"a/3/x.cdt", "tile", Unix, 0}).bytes();
    QTest::newRow("a pipe's mode")
        << ListedZip().add({"a/3/x.cdt", "tile", Unix, 0010644u << 16}).bytes();
    QTest::newRow("a device") << ListedZip().add({"a/3/x.cdt", "", Unix, 0020644u << 16}).bytes();
    QTest::newRow("another system") << ListedZip().add({"a/3/x.cdt", "tile", 11, 0}).bytes();
    QTest::newRow("backslashes") << ListedZip().add({"a\\3\\x.cdt", "tile", Fat, 0}).bytes();
    QTest::newRow("backslashes of Unix") << ListedZip().add({"a\\3\\x.cdt", "tile"}).bytes();
    QTest::newRow("both slashes") << ListedZip().add({"a/3\\x.cdt", "tile", Fat, 0}).bytes();
    QTest::newRow("an unknown extra field")
        << ListedZip().add({"x.cdt", "tile", Unix, 0, u16(0x4242) + u16(3) + "abc"}).bytes();
    QTest::newRow("a name in an extra field")
        << ListedZip()
               .add(
                   {"odd.cdt", "tile", Unix, 0,
                    u16(0x7075) + u16(14) + '\1' + u32(crc32("odd.cdt")) + "\xc3\xa5\xc3\xa4.cdtx"})
               .bytes();
    QTest::newRow("a stale name in an extra field")
        << ListedZip()
               .add({"odd.cdt", "tile", Unix, 0,
                     u16(0x7075) + u16(12) + '\1' + u32(crc32("old.cdt")) + "new.cdt"})
               .bytes();
    QTest::newRow("no files") << ListedZip().bytes();
}

void ZipDirectoryTest::listsWhatUnpackingMakes()
{
    QFETCH(QByteArray, bytes);

    QCOMPARE(filesOf(bytes), unpackedFiles(bytes));
}

void ZipDirectoryTest::largeSizesComeFromTheLongField()
{
    const qint64 size = 5LL * 1024 * 1024 * 1024;
    QByteArray bytes =
        ListedZip().add({"x.cdt", "tile", Unix, 0, u16(1) + u16(8) + le(quint64(size))}).bytes();
    const int entry = int(bytes.indexOf("PK\1\2"));
    bytes.replace(entry + 24, 4, u32(0xffffffff));

    QCOMPARE(filesOf(bytes), QStringList {QStringLiteral("x.cdt %1").arg(size)});
    bytes.replace(entry + 20, 4, u32(0xffffffff)); // one more than the field has
    QVERIFY(!entriesOf(bytes));
}

void ZipDirectoryTest::archivesWithManyFilesHaveALargerRecord()
{
    ListedZip zip;
    zip.add({"x.cdt", "tile"}).add({"y.cdt", "other"});
    QByteArray bytes = zip.bytes();
    const int end = int(bytes.lastIndexOf("PK\5\6"));
    const int directory = int(bytes.indexOf("PK\1\2"));
    const QByteArray record = "PK\6\6" + le(quint64(44)) + u16(45) + u16(45) + u32(0) + u32(0)
        + le(quint64(2)) + le(quint64(2)) + le(quint64(end - directory)) + le(quint64(directory));
    const QByteArray locator = "PK\6\7" + u32(0) + le(quint64(end)) + u32(1);
    bytes.replace(end + 8, 12, u16(0xffff) + u16(0xffff) + u32(0xffffffff) + u32(0xffffffff));
    bytes.insert(end, record + locator);

    QCOMPARE(filesOf(bytes), QStringList({QStringLiteral("x.cdt 4"), QStringLiteral("y.cdt 5")}));
    QCOMPARE(filesOf(bytes), unpackedFiles(bytes));
}

void ZipDirectoryTest::entriesComeInTheOrderOfTheFiles()
{
    const QByteArray bytes =
        ListedZip().add({"b.cdt", "1"}).add({"a.cdt", "22"}).reverseDirectory().bytes();

    const auto entries = entriesOf(bytes);

    QVERIFY(entries);
    QCOMPARE(entries->size(), 2);
    QCOMPARE(entries->first().name, QByteArray("b.cdt"));
}

void ZipDirectoryTest::whatIsUnusualIsLeftToTheLibrary_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray zip = ListedZip().add({"x.cdt", "tile"}).bytes();
    const int end = int(zip.lastIndexOf("PK\5\6"));
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("a start alone") << zip.left(30);
    QTest::newRow("something in front") << "#!/bin/sh\n" + zip;
    QTest::newRow("something behind") << zip + "more";
    QTest::newRow("a long comment")
        << ListedZip().add({"x.cdt", "tile"}).bytes(QByteArray(20000, 'c'));
    const auto patched = [&](int at, const QByteArray &field) {
        QByteArray bytes = zip;
        return bytes.replace(at, field.size(), field);
    };
    QTest::newRow("another volume") << patched(end + 4, u16(1));
    QTest::newRow("fewer entries than it says") << patched(end + 8, u16(2) + u16(2));
    QTest::newRow("a list that begins before the archive") << patched(end + 12, u32(0xfffffff0));
    QTest::newRow("a list that lies elsewhere") << patched(end + 16, u32(1));
    QTest::newRow("an entry that is no entry") << patched(int(zip.indexOf("PK\1\2")), "QK");
    QTest::newRow("a name longer than the list")
        << patched(int(zip.indexOf("PK\1\2")) + 28, u16(5000));
    QTest::newRow("a file behind the list") << patched(int(zip.indexOf("PK\1\2")) + 42, u32(70000));
}

void ZipDirectoryTest::whatIsUnusualIsLeftToTheLibrary()
{
    QFETCH(QByteArray, bytes);

    QVERIFY(!entriesOf(bytes));
}

void ZipDirectoryTest::damageIsSurvivedAtEveryByte()
{
    const QByteArray whole =
        ListedZip()
            .add({"a/3/x.cdt", "tile", Unix, 0, u16(1) + u16(16) + QByteArray(16, '\1')})
            .add({"y.cdt", "tile", Unix, 0,
                  u16(0x7075) + u16(12) + '\1' + u32(crc32("y.cdt")) + "new.cdt"})
            .bytes("comment");
    int listed = 0;
    for (int at = 0; at < whole.size(); ++at) {
        for (const int bits : {0x01, 0x80, 0xff}) {
            QByteArray damaged = whole;
            damaged[at] = char(damaged.at(at) ^ bits);
            const auto entries = entriesOf(damaged);
            listed += entries ? 1 : 0;
            for (const ZipDirectory::Entry &entry : entries.value_or(QList<ZipDirectory::Entry>()))
                QVERIFY(entry.size >= 0);
        }
    }
    QVERIFY(listed > 0); // much of it does not matter to the list
    QVERIFY(listed < 3 * whole.size());
}

void ZipDirectoryTest::everyCutIsSurvived()
{
    const QByteArray whole = ListedZip().add({"a/3/x.cdt", "tile"}).add({"y.cdt", "other"}).bytes();

    for (int size = 0; size < whole.size(); ++size)
        QVERIFY(!entriesOf(whole.left(size)));
}

void ZipDirectoryTest::aReaderThatFailsGivesNoList()
{
    const QByteArray whole =
        ListedZip().add({"x.cdt", QByteArray(30000, 't')}).bytes(QByteArray(16000, 'c'));
    for (const int answers : {0, 1}) {
        int left = answers;
        const auto reader = readerOf(whole);
        QVERIFY(!ZipDirectory::read(
            [&](qint64 offset, qint64 size) {
                return left-- > 0 ? reader(offset, size) : std::optional<QByteArray>();
            },
            whole.size()));
    }
    QVERIFY(entriesOf(whole));
}

QTEST_GUILESS_MAIN(ZipDirectoryTest)
#include "tst_zipdirectory.moc"
