// SPDX-License-Identifier: MIT
#ifndef VEXA_TILEFILE_P_H
#define VEXA_TILEFILE_P_H

#include <QString>

/**
 * What an entry of a region's file list names. Entries come in three spellings: "\a\3\x.cdt" from
 * the content file, "a/3/x.cdt" from QML after a download, and "/a/3/x.cdt". All are relative to
 * the tile-cache folder; case counts.
 */
namespace TileFile {

/**
 * The entry as "a/3/x.cdt", whatever its spelling, and with "." and ".." resolved as text: two
 * entries with the same result name the same file.
 */
QString normalized(const QString &entry);

/**
 * As normalized(), into a text that keeps its room from call to call: for one look at hundreds of
 * thousands of entries.
 */
void normalize(const QString &entry, QString *path);

/** The entry as the content file writes it, "\a\3\x.cdt". */
QString contentPath(const QString &entry);

/**
 * The "name" of an entry in a region of the content file: the last letter, digit or underscore
 * before ".cdt", and what follows. Without such a character it is the whole entry.
 */
QString key(const QString &entry);

/** Whether the entry, taken below the root folder, is a place outside it; follows no links. */
bool isOutside(const QString &entry);

/** Whether a folder on the way from the root to the file is a link to a place outside the root. */
bool isLinkedOutside(const QString &root, const QString &path);

} // namespace TileFile

#endif
