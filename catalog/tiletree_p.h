// SPDX-License-Identifier: MIT
#ifndef VEXA_TILETREE_P_H
#define VEXA_TILETREE_P_H

#include <QList>
#include <QString>
#include <QStringList>

/**
 * The tile files that are on the disk. They lie two levels below the tile-cache folder, in 256
 * folders that are named by one hexadecimal digit each.
 */
namespace TileTree {

/** One of the folders, if there are tiles in it. */
struct Folder
{
    QString path; ///< below the tile cache, "a/3"
    QStringList tiles; ///< the names of the files, sorted
};

/**
 * The folders in the order of their digits. Runs the event loop after each of the 256, so it must
 * not be given anything that can end meanwhile.
 *
 * A file is a tile if its name ends with ".cdt", in letters of any case, and does not begin with
 * a dot. A link to a file is one, too.
 */
QList<Folder> scan(const QString &tileCache);

} // namespace TileTree

#endif
