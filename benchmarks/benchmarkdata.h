// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

/** A region of a catalogue that a benchmark writes. */
struct CatalogRegion
{
    QByteArray id;
    QByteArray name; ///< UTF-8
    QList<CatalogRegion> children = {};
};

/** The files of a catalogue folder. The same arguments give the same bytes, everywhere. */
namespace BenchmarkData {

/** All countries with their subdivisions, nested as the package iso-codes has them. */
QList<CatalogRegion> realRegions();
/** That many made-up regions: countries of 20 states of 20 districts, the last one cut short. */
QList<CatalogRegion> syntheticRegions(int count);
/** How many there are, the nested ones included. */
int countOf(const QList<CatalogRegion> &regions);
/** The ids of all, parents first. */
QList<QByteArray> idsOf(const QList<CatalogRegion> &regions);

/** "catalog-%1.xml" in the form that a content server has it. */
QByteArray catalogXml(const QList<CatalogRegion> &regions);
/** "regionname-lang-%1.xml" with a name for each region, half of them other ones. */
QByteArray regionNamesXml(const QList<CatalogRegion> &regions);

} // namespace BenchmarkData

/**
 * The tiles of a device and which installed region lists which. What the regions share is spread
 * evenly: each takes its own stretch of the common tiles, which overlaps those of its neighbours.
 */
class TileWorld
{
public:
    /**
     * @param references how many tiles each region lists
     * @param sharedPercent how many of these other regions list as well, if there are enough tiles
     */
    TileWorld(int tiles, int regions, int references, int sharedPercent = 90);

    int regions() const { return m_regions; }
    /** "a/3/a3f01234.cdt" and so on, in the order in which the library finds them. */
    const QStringList &tiles() const { return m_tiles; }
    /** What a region lists, "a/3/a3f01234.cdt" as a host tells it. */
    QStringList fileList(int region) const;

    /**
     * "content.xml" with all tiles and regions, as the library itself writes it.
     *
     * @param ids of the regions, at least as many as there are here
     */
    QByteArray contentXml(const QByteArray &mapsVersion, const QList<QByteArray> &ids) const;
    /** Makes all tile files below the folder; ends the program if that fails. */
    void makeTree(const QString &folder, int bytesPerTile = 0) const;

private:
    const int m_regions;
    const int m_own; // tiles of each region that no other lists
    const int m_shared; // tiles of each region that others may list as well
    QStringList m_tiles; // sorted
    QList<int> m_places; // of the tile with this number in the sorted list
};
