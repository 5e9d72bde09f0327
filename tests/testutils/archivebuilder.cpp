// SPDX-License-Identifier: MIT
#include "testutils/archivebuilder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <vector>

namespace {

struct Recipe
{
    QString ending;
    QString command; // %1 is the archive; runs in the folder of the content
};

// From the longest ending to the shortest. "*" leaves the folder itself out.
const Recipe Recipes[] = {
    {QStringLiteral(".encrypted.zip"), QStringLiteral("zip -q -r -P secret '%1' *")},
    {QStringLiteral(".stored.zip"), QStringLiteral("zip -q -0 -r '%1' *")},
    {QStringLiteral(".encrypted.7z"), QStringLiteral("7z a -bd -bso0 -psecret '%1' ./*")},
    {QStringLiteral(".tar.gz"), QStringLiteral("bsdtar -czf '%1' *")},
    {QStringLiteral(".tar.bz2"), QStringLiteral("bsdtar -cjf '%1' *")},
    {QStringLiteral(".tar.xz"), QStringLiteral("bsdtar -cJf '%1' *")},
    {QStringLiteral(".tar.zst"), QStringLiteral("bsdtar --zstd -cf '%1' *")},
    {QStringLiteral(".tar.lz4"), QStringLiteral("bsdtar --lz4 -cf '%1' *")},
    {QStringLiteral(".zip.gz"), QStringLiteral("cat * | zip -q - - | gzip > '%1'")},
    {QStringLiteral(".tar"), QStringLiteral("bsdtar --format ustar -cf '%1' *")},
    {QStringLiteral(".pax"), QStringLiteral("bsdtar --format pax -cf '%1' *")},
    {QStringLiteral(".cpio"), QStringLiteral("bsdtar --format newc -cf '%1' *")},
    {QStringLiteral(".iso"), QStringLiteral("bsdtar --format iso9660 -cf '%1' *")},
    {QStringLiteral(".xar"), QStringLiteral("bsdtar --format xar -cf '%1' *")},
    {QStringLiteral(".zip"), QStringLiteral("zip -q -r '%1' *")},
    {QStringLiteral(".7z"), QStringLiteral("7z a -bd -bso0 '%1' ./*")},
};

QByteArray octal(qint64 number, int width)
{
    return QByteArray::number(number, 8).rightJustified(width - 1, '0') + '\0';
}

QByteArray padded(const QByteArray &bytes, int width)
{
    return bytes + QByteArray(width - bytes.size(), '\0');
}

// Its length stands in front and counts its own digits too.
QByteArray extendedRecord(const QByteArray &key, const QByteArray &value)
{
    const QByteArray text = ' ' + key + '=' + value + '\n';
    qint64 length = text.size();
    while (QByteArray::number(length).size() + text.size() != length)
        length = QByteArray::number(length).size() + text.size();
    return QByteArray::number(length) + text;
}

QByteArray littleEndian(quint64 number, int width)
{
    QByteArray bytes;
    for (int i = 0; i < width; ++i)
        bytes.append(char(number >> (8 * i)));
    return bytes;
}

} // namespace

ArchiveBuilder::ArchiveBuilder()
    : m_content(m_dir.filePath(QStringLiteral("content")))
{
    if (!m_dir.isValid() || !QDir().mkpath(m_content))
        qFatal("no temporary folder: %s", qPrintable(m_dir.errorString()));
}

void ArchiveBuilder::addFile(const QString &name, const QByteArray &data)
{
    TestFile::write(m_content + QLatin1Char('/') + name, data);
}

void ArchiveBuilder::addFolder(const QString &name)
{
    if (!QDir(m_content).mkpath(name))
        qFatal("no folder %s", qPrintable(name));
}

void ArchiveBuilder::addLink(const QString &name, const QString &target)
{
    if (!QFile::link(target, m_content + QLatin1Char('/') + name))
        qFatal("no link %s", qPrintable(name));
}

void ArchiveBuilder::addSparseFile(const QString &name, qint64 size)
{
    addFile(name, QByteArray());
    if (!QFile::resize(m_content + QLatin1Char('/') + name, size))
        qFatal("no sparse file %s", qPrintable(name));
}

void ArchiveBuilder::patchFile(const QString &name, qint64 offset, const QByteArray &bytes)
{
    TestFile::patch(m_content + QLatin1Char('/') + name, offset, bytes);
}

QString ArchiveBuilder::make(const QString &name)
{
    const QString path = m_dir.filePath(name);
    if (QDir(m_content).isEmpty()) {
        // The tools refuse to make these.
        if (name.endsWith(QLatin1String(".zip")))
            return write(name, QByteArray("PK\5\6").append(QByteArray(18, '\0')));
        run(QStringLiteral("bsdtar -caf '%1' -T /dev/null").arg(path));
        return path;
    }
    for (const Recipe &recipe : Recipes) {
        if (!name.endsWith(recipe.ending))
            continue;
        run(recipe.command.arg(path));
        return path;
    }
    qFatal("no recipe for %s", qPrintable(name));
    return QString();
}

QString ArchiveBuilder::write(const QString &name, const QByteArray &bytes)
{
    const QString path = m_dir.filePath(name);
    TestFile::write(path, bytes);
    return path;
}

QByteArray ArchiveBuilder::noise(int size, quint32 seed)
{
    std::vector<quint32> words(size_t(size) / sizeof(quint32) + 1);
    QRandomGenerator(seed).generate(words.begin(), words.end());
    return QByteArray(reinterpret_cast<const char *>(words.data()), size);
}

void ArchiveBuilder::run(const QString &shellCommand)
{
    QProcess process;
    process.setWorkingDirectory(m_content);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), shellCommand});
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0)
        qFatal("%s: %s", qPrintable(shellCommand), process.readAll().constData());
}

RawTar &RawTar::add(const QByteArray &name, const QByteArray &data, Type type,
                    const QByteArray &target, int mode)
{
    if (name.size() > 100 || name.contains('\0'))
        add("long name", extendedRecord("path", name), ExtendedHeader);
    QByteArray header = padded(name.left(100), 100) + octal(mode, 8) + octal(0, 8) + octal(0, 8)
        + octal(data.size(), 12) + octal(0, 12) + QByteArray(8, ' ') + char(type)
        + padded(target, 100) + QByteArray("ustar\00000", 8) + QByteArray(64, '\0') + octal(1, 8)
        + octal(3, 8);
    header = padded(header, 512);
    qint64 sum = 0;
    for (const char byte : std::as_const(header))
        sum += uchar(byte);
    header.replace(148, 8, octal(sum, 7) + ' ');
    m_bytes += header + data + QByteArray((512 - data.size() % 512) % 512, '\0');
    return *this;
}

QByteArray RawTar::bytes() const
{
    return m_bytes + QByteArray(1024, '\0');
}

RawZip &RawZip::add(const Entry &entry)
{
    const QByteArray centralName = entry.centralName.isNull() ? entry.name : entry.centralName;
    const qint64 packedSize = entry.packedSize < 0 ? entry.data.size() : entry.packedSize;
    const qint64 size = entry.size < 0 ? entry.data.size() : entry.size;
    const quint32 sum = entry.checkSum < 0 ? checkSum(entry.data) : quint32(entry.checkSum);
    const auto shared = [&](const QByteArray &name) {
        return littleEndian(20, 2) + littleEndian(0, 2) + littleEndian(entry.deflated ? 8 : 0, 2)
            + littleEndian(0, 4) + littleEndian(sum, 4) + littleEndian(quint64(packedSize), 4)
            + littleEndian(quint64(size), 4) + littleEndian(quint64(name.size()), 2)
            + littleEndian(0, 2);
    };
    constexpr int MadeOnUnix = 3 << 8 | 20;
    m_list += "PK\1\2" + littleEndian(MadeOnUnix, 2) + shared(centralName) + littleEndian(0, 6)
        + littleEndian(quint64(entry.mode) << 16, 4) + littleEndian(quint64(m_bytes.size()), 4)
        + centralName;
    m_bytes += "PK\3\4" + shared(entry.name) + entry.name + entry.data;
    ++m_count;
    return *this;
}

QByteArray RawZip::bytes() const
{
    const QByteArray count = littleEndian(quint64(m_count), 2);
    return m_bytes + m_list + "PK\5\6" + littleEndian(0, 4) + count + count
        + littleEndian(quint64(m_list.size()), 4) + littleEndian(quint64(m_bytes.size()), 4)
        + littleEndian(0, 2);
}

quint32 RawZip::checkSum(const QByteArray &data)
{
    static const std::vector<quint32> table = [] {
        std::vector<quint32> sums(256);
        for (quint32 byte = 0; byte < 256; ++byte) {
            quint32 sum = byte;
            for (int bit = 0; bit < 8; ++bit)
                sum = (sum & 1) ? 0xedb88320 ^ (sum >> 1) : sum >> 1;
            sums[byte] = sum;
        }
        return sums;
    }();
    quint32 sum = 0xffffffff;
    for (const char byte : data)
        sum = table[(sum ^ uchar(byte)) & 0xff] ^ (sum >> 8);
    return ~sum;
}

QByteArray TestFile::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray("cannot read ").append(path.toUtf8());
    return file.readAll();
}

void TestFile::write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly)
        || file.write(bytes) != bytes.size() || !file.flush())
        qFatal("cannot write %s", qPrintable(path));
}

void TestFile::patch(const QString &path, qint64 offset, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite) || !file.seek(offset) || file.write(bytes) != bytes.size()
        || !file.flush())
        qFatal("cannot patch %s", qPrintable(path));
}

void TestFile::cut(const QString &path, qint64 size)
{
    if (!QFile::resize(path, size))
        qFatal("cannot cut %s", qPrintable(path));
}
