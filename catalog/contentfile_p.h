// SPDX-License-Identifier: MIT
#ifndef VEXA_CONTENTFILE_P_H
#define VEXA_CONTENTFILE_P_H

#include "catalog/tiletree_p.h"
#include <functional>
#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/**
 * The form of "content.xml": what its elements mean, and nothing of when it is read or written.
 *
 * In the file a region's id has a "1" in front; readers drop the first character, whatever it is,
 * and everything here but the writer speaks of plain ids.
 */
namespace ContentFile {

/** What the catalogue looks up; lists are in the file's order. */
struct Tables
{
    QStringList ids; ///< of the regions, as readIds() gives them
    /** By region id, "\a\3\x.cdt"; empty for unknown tiles. */
    QHash<QString, QStringList> regionTilePaths;
};

/** What is written of an installed region. */
struct Region
{
    QString id;
    QString name;
    QStringList fileList;
};

/** What is called for every tile while a file is read; false ends the reading. */
using Pause = std::function<bool()>;

/** The ids of the regions, each once; none if there is an error anywhere in the file. */
QStringList readIds(const QString &path);

/**
 * The "map-version" as it stands; empty if there is an error anywhere in the file. Of a file of
 * more than 256 KiB only both ends are read: there it is empty if the file is cut.
 */
QString readMapVersion(const QString &path);

/**
 * The tables; empty if there is an error anywhere in the file or the pause has ended it.
 */
Tables readTables(const QString &path, const Pause &pause = Pause());

/**
 * The bytes of the file. Runs the event loop after each tile and each region, so it must not be
 * given anything that can end meanwhile.
 */
QByteArray write(const QString &mapVersion, QList<TileTree::Folder> folders, QList<Region> regions);

/** The bytes of a file of this version that lists neither tiles nor regions. */
QByteArray writeEmpty(const QString &mapVersion);

} // namespace ContentFile

#endif
