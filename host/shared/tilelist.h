// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/**
 * What is done with the list of an archive's entries. Plain functions; paths in a list are
 * relative, with "/". Only tiles (entries with ".cdt" in their name) are a region's files.
 */
namespace TileList {

/** The tiles among the entries, without "./" in front, folders and repetitions, in their order. */
QStringList tiles(const QStringList &entries);

/**
 * An entry of a region's file list in the form in which an archive names it: the content file
 * gives "\a\3\3fa9.cdt", an install that was just made "a/3/3fa9.cdt".
 */
QString plain(const QString &entry);

/** Those that are not a file in the folder. */
QStringList missing(const QStringList &tiles, const QString &folder);

/** All files below the folder, relative to it, in a fixed order. */
QStringList filesBelow(const QString &folder);

/** Removes what is in the folder, not the folder itself. Returns whether all went. */
bool empty(const QString &folder);

} // namespace TileList
