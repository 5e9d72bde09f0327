// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

class MapCatalog;

/**
 * Removes installed regions so that a crash on the way costs nothing. The catalogue deletes a
 * region's tiles first and forgets the region last; in between it would list a region that is half
 * gone. So the removal is noted on disk while it lasts, and the next start brings it to its end.
 *
 * To be used in the GUI thread by whoever holds the data set's lock. A RegionInstaller takes up
 * what was cut short by itself; a program without one calls finish() before it shows what is there.
 */
namespace RegionRemoval {

/** Where removals that are under way are noted, for the data set with this path suffix. */
QString notePath(const QString &pathSuffix = QString());

/**
 * Removes the region and loads the catalogue anew; runs the event loop meanwhile. Returns false if
 * it is still recorded as installed: the content file could not be written.
 */
bool remove(MapCatalog *catalog, const QString &id, const QString &pathSuffix = QString());

/** To be called when the region is installed anew, before that is recorded: it is not to go now. */
void forget(const QString &id, const QString &pathSuffix = QString());

/** The ids of regions whose removal was cut short. */
QStringList unfinished(const QString &pathSuffix = QString());

/** Brings to its end what was cut short. The catalogue is loaded. Returns what is removed now. */
QStringList finish(MapCatalog *catalog, const QString &pathSuffix = QString());

} // namespace RegionRemoval
