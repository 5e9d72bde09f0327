// SPDX-License-Identifier: MIT
#include "hostilearchive.h"

#include "testutils/archivebuilder.h"
#include <archive.h>
#include <archive_entry.h>
#include <memory>
#include <QFile>
#include <QtEndian>
#include <sys/stat.h>

namespace {

using HostileArchive::Entry;
using HostileArchive::Format;
using HostileArchive::Type;

struct WriterDeleter
{
    void operator()(archive *handle) const { archive_write_free(handle); }
};
struct EntryDeleter
{
    void operator()(archive_entry *entry) const { archive_entry_free(entry); }
};

int fileType(Type type)
{
    switch (type) {
    case Type::File:
    case Type::HardLink:
        return S_IFREG;
    case Type::Folder:
        return S_IFDIR;
    case Type::SymLink:
        return S_IFLNK;
    case Type::Fifo:
        return S_IFIFO;
    case Type::CharacterDevice:
        return S_IFCHR;
    case Type::BlockDevice:
        return S_IFBLK;
    case Type::Socket:
        return S_IFSOCK;
    }
    return 0;
}

QByteArray zip(const QList<Entry> &entries)
{
    RawZip archive;
    for (const Entry &entry : entries) {
        if (entry.type == Type::HardLink)
            return QByteArray();
        RawZip::Entry raw;
        raw.name = entry.name;
        if (entry.type == Type::Folder && !raw.name.endsWith('/'))
            raw.name += '/';
        raw.data = entry.type == Type::SymLink ? entry.target : entry.data;
        raw.mode = fileType(entry.type) | entry.mode;
        archive.add(raw);
    }
    return archive.bytes();
}

QByteArray tar(const QList<Entry> &entries)
{
    RawTar archive;
    for (const Entry &entry : entries) {
        RawTar::Type type = RawTar::File;
        switch (entry.type) {
        case Type::File:
            break;
        case Type::Folder:
            type = RawTar::Folder;
            break;
        case Type::SymLink:
            type = RawTar::SymLink;
            break;
        case Type::HardLink:
            type = RawTar::HardLink;
            break;
        case Type::Fifo:
            type = RawTar::Fifo;
            break;
        case Type::CharacterDevice:
            type = RawTar::CharacterDevice;
            break;
        case Type::BlockDevice:
            type = RawTar::BlockDevice;
            break;
        case Type::Socket:
            return QByteArray();
        }
        archive.add(entry.name, entry.data, type, entry.target, entry.mode);
    }
    return archive.bytes();
}

bool addTo7z(archive *writer, const Entry &entry)
{
    const bool hasData = entry.type == Type::File;
    const bool sayable =
        !entry.name.contains('\0') && QString::fromUtf8(entry.name).toUtf8() == entry.name;
    if (!sayable || (!hasData && entry.type != Type::Folder && entry.type != Type::SymLink))
        return false;
    const std::unique_ptr<archive_entry, EntryDeleter> header(archive_entry_new());
    archive_entry_set_pathname_utf8(header.get(), entry.name.constData());
    archive_entry_set_mode(header.get(), mode_t(fileType(entry.type) | entry.mode));
    if (entry.type == Type::SymLink)
        archive_entry_set_symlink_utf8(header.get(), entry.target.constData());
    archive_entry_set_size(header.get(), hasData ? entry.data.size() : 0);
    if (archive_write_header(writer, header.get()) != ARCHIVE_OK)
        return false;
    const size_t size = size_t(entry.data.size());
    return !hasData || archive_write_data(writer, entry.data.constData(), size) == la_ssize_t(size);
}

bool write7z(const QString &path, const QList<Entry> &entries)
{
    const std::unique_ptr<archive, WriterDeleter> writer(archive_write_new());
    archive_write_set_format_7zip(writer.get());
    archive_write_set_options(writer.get(), "compression=store");
    if (archive_write_open_filename(writer.get(), QFile::encodeName(path).constData())
        != ARCHIVE_OK)
        return false;
    for (const Entry &entry : entries) {
        if (!addTo7z(writer.get(), entry))
            return false;
    }
    return archive_write_close(writer.get()) == ARCHIVE_OK;
}

// What zlib packs, without the frame that Qt and zlib put around it.
QByteArray deflated(const QByteArray &bytes)
{
    constexpr int FrameStart = 4 + 2; // Qt's size, zlib's header
    constexpr int FrameEnd = 4; // zlib's check sum
    const QByteArray framed = qCompress(bytes, 9);
    return framed.mid(FrameStart, framed.size() - FrameStart - FrameEnd);
}

QByteArray number32(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

void writeZeroZip(const QString &path, qint64 bytes, const QByteArray &piece)
{
    RawZip archive;
    RawZip::Entry entry;
    entry.data = deflated(piece);
    entry.deflated = true;
    entry.size = piece.size();
    entry.checkSum = RawZip::checkSum(piece);
    for (qint64 done = 0; done < bytes; done += piece.size()) {
        entry.name = "zeros-" + QByteArray::number(done / piece.size());
        archive.add(entry);
    }
    TestFile::write(path, archive.bytes());
}

// Packed pieces behind each other are one packed file.
void writeZeroTar(const QString &path, qint64 bytes, const QByteArray &piece)
{
    QByteArray archive;
    const QByteArray packed = HostileArchive::gzipped(piece);
    for (qint64 done = 0; done < bytes; done += piece.size()) {
        RawTar entry;
        entry.add("zeros-" + QByteArray::number(done / piece.size()), piece);
        archive += HostileArchive::gzipped(entry.bytes().left(512)) + packed;
    }
    TestFile::write(path, archive + HostileArchive::gzipped(RawTar().bytes()));
}

} // namespace

QString HostileArchive::nameOf(Format format)
{
    switch (format) {
    case Format::Zip:
        return QStringLiteral("zip");
    case Format::SevenZip:
        return QStringLiteral("7z");
    case Format::TarGz:
        return QStringLiteral("tar.gz");
    }
    return QString();
}

bool HostileArchive::write(const QString &path, Format format, const QList<Entry> &entries)
{
    if (format == Format::SevenZip)
        return write7z(path, entries);
    const QByteArray bytes = format == Format::Zip ? zip(entries) : tar(entries);
    if (bytes.isNull())
        return false;
    TestFile::write(path, format == Format::Zip ? bytes : gzipped(bytes));
    return true;
}

QByteArray HostileArchive::gzipped(const QByteArray &bytes)
{
    return QByteArray("\x1f\x8b\x08\0\0\0\0\0\2\xff", 10) + deflated(bytes)
        + number32(RawZip::checkSum(bytes)) + number32(quint32(bytes.size()));
}

void HostileArchive::writeZeros(const QString &path, Format format, qint64 bytes)
{
    const QByteArray piece(int(qMin<qint64>(bytes, 256 * 1024 * 1024)), '\0');
    switch (format) {
    case Format::Zip:
        return writeZeroZip(path, bytes, piece);
    case Format::TarGz:
        return writeZeroTar(path, bytes, piece);
    case Format::SevenZip: {
        ArchiveBuilder builder;
        builder.addSparseFile(QStringLiteral("zeros"), bytes);
        QFile::remove(path);
        if (!QFile::rename(builder.make(QStringLiteral("zeros.7z")), path))
            qFatal("no 7z of zeros");
        return;
    }
    }
}
