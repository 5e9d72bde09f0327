// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <QByteArray>
#include <QList>
#include <QtGlobal>

/**
 * The list of files at the end of a zip archive.
 *
 * libarchive lists a zip by visiting each file's own header, all over the archive, which on a
 * server means to fetch nearly all of it. This reads the list alone. It only knows plain cases; for
 * whatever is unusual it says so, and libarchive is to decide.
 */
namespace ZipDirectory {

struct Entry
{
    QByteArray name; ///< as stored; a folder's ends in "/"
    qint64 size = 0; ///< unpacked
    bool isFile = false; ///< else a folder, a link or a device
    bool isFolder = false;
    bool isEncrypted = false;
};

/** Gives exactly these bytes of the archive, or nothing; it knows itself why. */
using Reader = std::function<std::optional<QByteArray>(qint64 offset, qint64 size)>;

/** Whether this is how a zip archive begins. */
bool startsLikeZip(const QByteArray &head);

/**
 * The entries in the order in which they are unpacked. Nothing if the archive has no such list, or
 * one that is damaged or unusual, or if it could not be read.
 */
std::optional<QList<Entry>> read(const Reader &reader, qint64 archiveSize);

} // namespace ZipDirectory
