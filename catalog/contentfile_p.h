// SPDX-License-Identifier: MIT
#ifndef VEXA_CONTENTFILE_P_H
#define VEXA_CONTENTFILE_P_H

#include "catalog/tiletree_p.h"
#include "vexa_export.h"
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
    QHash<QString, QString> tilePaths; ///< tile name to path, "\a\3\x.cdt"
    QHash<QString, QStringList> regionTileNames; ///< region id to tile names
    QHash<QString, QStringList> regionTilePaths; ///< region id to paths; empty for unknown tiles
};

/** What is written of an installed region. */
struct Region
{
    QString id;
    QString name;
    QStringList fileList;
};

/** The ids of the regions, each once; none if there is an error anywhere in the file. */
QStringList readIds(const QString &path);

/** The "map-version" as it stands; empty if there is an error anywhere in the file. */
QString readMapVersion(const QString &path);

/** The tables; empty if there is an error anywhere in the file. Exported for the fuzzing. */
VEXA_EXPORT Tables readTables(const QString &path);

/**
 * The bytes of the file. Runs the event loop after each tile and each region, so it must not be
 * given anything that can end meanwhile. Exported for the fuzzing.
 */
VEXA_EXPORT QByteArray write(const QString &mapVersion, QList<TileTree::Folder> folders,
                             QList<Region> regions);

/** The bytes of a file of this version that lists neither tiles nor regions. */
QByteArray writeEmpty(const QString &mapVersion);

} // namespace ContentFile

#endif
