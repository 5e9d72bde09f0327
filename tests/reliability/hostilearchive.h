// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/** Archives that mean harm, the same thing said in each of the three formats of content servers. */
namespace HostileArchive {

enum class Format { Zip, SevenZip, TarGz };
constexpr Format Formats[] = {Format::Zip, Format::SevenZip, Format::TarGz};

enum class Type { File, Folder, SymLink, HardLink, Fifo, CharacterDevice, BlockDevice, Socket };

struct Entry
{
    QByteArray name;
    QByteArray data = {};
    Type type = Type::File;
    QByteArray target = {}; ///< of a link
    int mode = 0644;
};

/** "zip", "7z" or "tar.gz". */
QString nameOf(Format format);
/** Writes the archive; false if the format has no words for one of the entries. */
bool write(const QString &path, Format format, const QList<Entry> &entries);
/** As tar.gz. */
QByteArray gzipped(const QByteArray &bytes);
/** Writes an archive of one or more files that are zeros from end to end; thousandfold packed. */
void writeZeros(const QString &path, Format format, qint64 bytes);

} // namespace HostileArchive
