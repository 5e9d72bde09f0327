// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/regionrow.h"
#include <QHash>
#include <QPointer>
#include <QQmlListProperty>

class MapCatalog;
class MapRegion;

/**
 * Copies the regions of a catalogue one after the other, so that thousands can be spread over many
 * turns of the event loop. The catalogue may load in between, which ends the regions' lives:
 * isLost() tells, and the copying must begin anew after the load.
 *
 * GUI thread. The catalogue is not owned.
 */
class RegionSnapshot
{
public:
    /** Runs the event loop once. The catalogue may be null. */
    explicit RegionSnapshot(MapCatalog *catalog);

    /** Begins anew. The catalogue must not be in the middle of a load. */
    void start();
    /** Whether the regions that start() saw are gone. Nothing must be copied then. */
    bool isLost() const;
    bool isAtEnd() const;
    /** How many regions were looked at since start(). */
    int copied() const;
    /** The region that copyNext() will copy. */
    MapRegion *next() const;
    /**
     * Copies what the catalogue says of the next region. Of several with the same id the last one
     * counts, as for MapCatalog::region().
     */
    RegionRow *copyNext();
    /** After the last one: tells the rows of each other. */
    void finish();

    /** The copy with this id, or null. */
    RegionRow *find(const QString &id) const;
    /** After finish(): the copies in the catalogue's order, children before their parent. */
    RegionRows &rows();
    void clear();

private:
    void adopt(const QString &parentId, const MapRegion &parent);

    QPointer<MapCatalog> m_catalog;
    mutable QQmlListProperty<MapRegion> m_regions; // a view of the catalogue's own list
    QPointer<MapRegion> m_first; // dies with all others
    int m_count = 0;
    int m_copied = 0;
    RegionRows m_rows; // null where a later region of the same id came
    QHash<QString, int> m_indexOf;
    QHash<const MapRegion *, QString> m_idOf; // of the regions that count
    QHash<QString, const MapRegion *> m_regionOf;
};
