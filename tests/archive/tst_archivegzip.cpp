// SPDX-License-Identifier: MIT
#include "archive/unpacking.h"
#include "testutils/archivebuilder.h"
#include <QtEndian>
#include <QtTest>

namespace {

constexpr int Block = 400960;

QByteArray littleEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

// A packed file of its own; some of them behind each other are one, too.
QByteArray gzip(const QByteArray &data)
{
    constexpr int Head = 4 + 2; // Qt's size and zlib's header
    constexpr int End = 4; // zlib's check sum
    const QByteArray packed = qCompress(data);
    const QByteArray deflated =
        data.isEmpty() ? QByteArray("\3\0", 2) : packed.mid(Head, packed.size() - Head - End);
    return QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\xff", 10) + deflated
        + littleEndian(RawZip::checkSum(data)) + littleEndian(quint32(data.size()));
}

QByteArray tar(const QByteArray &name, const QByteArray &data)
{
    return RawTar().add(name, data).bytes();
}

QByteArray withFlippedBit(QByteArray bytes, int fromTheEnd)
{
    const auto at = bytes.size() - fromTheEnd;
    bytes[at] = char(bytes.at(at) ^ 1);
    return bytes;
}

const QString otherSum =
    QStringLiteral("Archive iteration error: the packed data has another check sum");

} // namespace

// A tar has no check sums of its own: those of gzip are all that tells a damaged tile.
class ArchiveGzipTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void realToolsArchiveIsUnpacked();
    void wrongCheckSumIsRefusedBeforeAnythingIsUnpacked_data();
    void wrongCheckSumIsRefusedBeforeAnythingIsUnpacked();
    void wrongCheckSumIsNoSize();
    void sizeIsFoundAgainAfterAFailure();
    void fileThatLacksItsEndIsRefused_data();
    void fileThatLacksItsEndIsRefused();
    void shortFileThatLacksItsEndIsNoArchive();
    void damagedDataIsRefused();
    void piecesAreOneArchive_data();
    void piecesAreOneArchive();
    void headerWithEveryFieldIsRead();
    void packedNothingIsAnEmptyArchive();
    void nameOfTheFileDoesNotMatter();
    void fileThatOnlyBeginsLikeOneIsNotTakenForIt();
    void archivePackedTwiceIsUnpacked();

private:
    QString write(const QByteArray &bytes)
    {
        return m_builder.write(QStringLiteral("a.tar.gz"), bytes);
    }

    ArchiveBuilder m_builder;
};

void ArchiveGzipTest::realToolsArchiveIsUnpacked()
{
    const QByteArray data = ArchiveBuilder::noise(5 * Block + 1);
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("d/f"), data);
    Unpacking unpacking(builder.make(QStringLiteral("a.tar.gz")));

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    QCOMPARE(unpacking.results(), QList<int> {0});
    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("d/f"))), data);
    QCOMPARE(unpacking.steps().first(), QStringLiteral("400960/2004801"));
    QCOMPARE(unpacking.steps().last(), QStringLiteral("2004801/2004801"));
}

void ArchiveGzipTest::wrongCheckSumIsRefusedBeforeAnythingIsUnpacked_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray first = gzip(tar("f", "data"));
    const QByteArray second = gzip(tar("g", "data"));
    const QByteArray large = gzip(tar("g", ArchiveBuilder::noise(3 * Block)));
    QTest::newRow("check sum") << withFlippedBit(first, 8);
    QTest::newRow("size") << withFlippedBit(first, 1);
    QTest::newRow("check sum of a piece") << withFlippedBit(first, 5) + second;
    QTest::newRow("size of a piece") << withFlippedBit(first, 4) + second;
    // libarchive has no reason to look beyond the end of the first tar.
    QTest::newRow("check sum behind the end") << first + withFlippedBit(second, 8);
    QTest::newRow("size behind the end") << first + withFlippedBit(second, 4);
    QTest::newRow("check sum far behind the end") << first + withFlippedBit(large, 8);
}

void ArchiveGzipTest::wrongCheckSumIsRefusedBeforeAnythingIsUnpacked()
{
    QFETCH(QByteArray, bytes);
    Unpacking unpacking(write(bytes));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {2});
    QCOMPARE(unpacking.archive.errorString(), otherSum);
    QCOMPARE(unpacking.steps(), QStringList());
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveGzipTest::wrongCheckSumIsNoSize()
{
    Unpacking unpacking(write(withFlippedBit(gzip(tar("f", "data")), 8)));

    quint64 size = 7;
    QVERIFY(!unpacking.archive.getUncompressedSize(size));

    QCOMPARE(size, quint64(7));
    QCOMPARE(unpacking.archive.error(), VexaArchive::IterationError);
    QCOMPARE(unpacking.results(), QList<int>()); // only unpack() tells this one
}

void ArchiveGzipTest::sizeIsFoundAgainAfterAFailure()
{
    const QByteArray whole = gzip(tar("f", "data"));
    VexaArchive archive(write(withFlippedBit(whole, 8)));
    quint64 size = 7;
    QVERIFY(!archive.getUncompressedSize(size));
    write(whole);

    QVERIFY(archive.getUncompressedSize(size));

    QCOMPARE(size, quint64(4));
}

void ArchiveGzipTest::fileThatLacksItsEndIsRefused_data()
{
    QTest::addColumn<int>("lacking");
    for (const int bytes : {1, 4, 5, 8, 9, 20})
        QTest::newRow(QByteArray::number(bytes).constData()) << bytes;
}

void ArchiveGzipTest::fileThatLacksItsEndIsRefused()
{
    QFETCH(int, lacking);
    const QByteArray whole = gzip(tar("f", ArchiveBuilder::noise(2 * Block)));
    Unpacking unpacking(write(whole.left(whole.size() - lacking)));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {2});
    QCOMPARE(unpacking.steps(), QStringList());
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveGzipTest::shortFileThatLacksItsEndIsNoArchive()
{
    const QByteArray whole = gzip(tar("f", "data"));
    Unpacking unpacking(write(whole.left(whole.size() - 1)));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), (QList<int> {1, 1}));
    QVERIFY(unpacking.archive.errorString().contains(QLatin1String("truncated gzip input")));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveGzipTest::damagedDataIsRefused()
{
    QByteArray bytes = gzip(tar("f", ArchiveBuilder::noise(2 * Block)));
    bytes.replace(bytes.size() / 2, 64, QByteArray(64, '\xff'));
    Unpacking unpacking(write(bytes));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {2});
    QVERIFY(unpacking.archive.errorString().startsWith(QLatin1String("Archive iteration error: ")));
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveGzipTest::piecesAreOneArchive_data()
{
    QTest::addColumn<QByteArray>("behind");
    QTest::newRow("nothing behind") << QByteArray();
    QTest::newRow("zeros behind, as tools fill up blocks") << QByteArray(512, '\0');
    QTest::newRow("a word behind") << QByteArray("the end");
    QTest::newRow("a byte that could begin one more") << QByteArray("\x1f");
}

void ArchiveGzipTest::piecesAreOneArchive()
{
    QFETCH(QByteArray, behind);
    const QByteArray data = ArchiveBuilder::noise(3 * Block);
    const QByteArray whole = RawTar().add("1", data).add("2", "data").bytes();
    // Pieces know nothing of what is packed: this one ends within the first file.
    Unpacking unpacking(
        write(gzip(whole.left(Block)) + gzip(QByteArray()) + gzip(whole.mid(Block)) + behind));

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    QCOMPARE(unpacking.results(), QList<int> {0});
    QCOMPARE(unpacking.found(), (QStringList {QStringLiteral("1"), QStringLiteral("2")}));
    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("1"))), data);
    QCOMPARE(unpacking.steps().last(), QStringLiteral("%1/%1").arg(data.size() + 4));
}

void ArchiveGzipTest::headerWithEveryFieldIsRead()
{
    QByteArray bytes = gzip(tar("f", "data"));
    bytes[3] = 0x1c; // extra field, name and comment
    bytes.insert(10, QByteArray("\3\0abcname\0comment\0", 18));
    Unpacking unpacking(write(bytes));

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f")});
}

void ArchiveGzipTest::packedNothingIsAnEmptyArchive()
{
    Unpacking unpacking(write(gzip(QByteArray())));

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    QCOMPARE(unpacking.results(), QList<int> {0});
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveGzipTest::nameOfTheFileDoesNotMatter()
{
    Unpacking unpacking(m_builder.write(QStringLiteral("a.zip"), gzip(tar("f", "data"))));
    QVERIFY(unpacking.run());
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f")});

    Unpacking damaged(
        m_builder.write(QStringLiteral("a.zip"), withFlippedBit(gzip(tar("f", "data")), 8)));
    QVERIFY(!damaged.run());
    QCOMPARE(damaged.archive.errorString(), otherSum);
}

void ArchiveGzipTest::fileThatOnlyBeginsLikeOneIsNotTakenForIt()
{
    // A tar whose first name has the two bytes; and something that is nothing at all.
    Unpacking unpacking(write(tar("\x1f\x8b", "data")));
    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));
    QCOMPARE(unpacking.results(), QList<int> {0});

    Unpacking nothing(write(QByteArray("\x1f\x8b\x08")));
    QVERIFY(!nothing.run());
    QCOMPARE(nothing.results(), (QList<int> {1, 1}));
}

void ArchiveGzipTest::archivePackedTwiceIsUnpacked()
{
    Unpacking unpacking(write(gzip(gzip(tar("f", "data")))));

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f")});
}

QTEST_GUILESS_MAIN(ArchiveGzipTest)
#include "tst_archivegzip.moc"
