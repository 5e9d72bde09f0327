// SPDX-License-Identifier: MIT
#ifndef VEXA_MAPCATALOGPROCESSOR_H
#define VEXA_MAPCATALOGPROCESSOR_H

#include "vexa_export.h"
#include <memory>
#include <QDir>
#include <QFileInfo>
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

class MapRegion;

/**
 * The reader and writer of the files that tell which regions there are and which are installed:
 * "catalog-%1.xml", "regionname-lang-%1.xml", "content.xml" and the header of "config.cfg".
 *
 * Each catalogue has one; it decides when to read what. The processor owns the regions that it
 * makes: readCatalog() deletes those of the call before, and the destructor the rest.
 *
 * Lives in the GUI thread. Making regions, looking for tiles and writing the content file run the
 * event loop in between, so that the user interface stays alive; whatever happens there, also the
 * end of the processor, is survived. No reader reports an error: a file that is missing, empty or
 * cannot be opened gives an empty result, and nothing is logged.
 */
class VEXA_EXPORT MapCatalogProcessor
{
public:
    MapCatalogProcessor();
    ~MapCatalogProcessor();
    Q_DISABLE_COPY(MapCatalogProcessor)

    /**
     * Deletes the regions made before and makes those of a catalogue file; runs the event loop
     * after each one made, and now and then while many are deleted. Descendants come before
     * their ancestor; the tree itself is in the regions' children. A top-level region that lacks
     * one of its attributes is a null entry, a nested one is left out. A damaged file gives what
     * stands before the damage. The list is empty if the processor has ended meanwhile.
     */
    QList<MapRegion *> readCatalog(const QString &path);

    /**
     * The localized names by region id. The content file only decides the name of one region,
     * which depends on the edition of the installed maps. A damaged region-name file gives what
     * stands before the damage.
     */
    QMap<QString, QString> readRegionNames(const QString &regionNameFilePath,
                                           const QString &contentFilePath) const;

    /** Always empty: the catalogue answers from its own tables. Kept for those who call it. */
    QStringList readRegionFileList(const QString &id, const QString &contentFilePath) const;

    /**
     * The ids of the installed regions in the content file's order, each once. A file with an
     * error anywhere gives none.
     */
    QStringList readLocalContent(const QString &contentFilePath) const;

    /**
     * The version of the installed maps, of four parts two digits each ("03.01.12.05"), of other
     * forms as it stands. A file with an error anywhere gives an empty text; one of more than 256
     * KiB is only read at both ends, so that there a cut is noticed and nothing else.
     */
    QString readLocalMapVersion(const QString &contentFilePath) const;

    /**
     * Writes the content file: version, tiles on the disk, installed regions. The regions are
     * copied before the event loop runs, so they may change or die meanwhile. The file is written
     * beside the old one and put in its place at the end; if it cannot be written, the old one
     * stays as it is. If a call from the event loop has written the same file meanwhile, that one
     * is newer and stays.
     */
    void updateLocalContent(const QString &contentFilePath, const QString &mapVersion,
                            const QList<MapRegion *> &installedRegions,
                            const QString &tileCachePath) const;

    /** The tile files two levels below the folder, folder by folder, sorted by name in each. */
    QList<QFileInfo> findInstalledTiles(const QDir &tileCacheFolder) const;

    /** The four numbers at the start of config.cfg with dots between; fewer if it is shorter. */
    QString readLocalMOSVersion(const QString &configFilePath) const;

    /**
     * Replaces the first 16 bytes of config.cfg, if it exists and the version has four parts. A
     * part that is not a number becomes 0.
     */
    void updateLocalMOSVersion(const QString &configFilePath, const QString &version) const;

private:
    QList<MapRegion *> m_regions; // owned
    std::shared_ptr<char> m_lifetime; // expires with the processor
};

#endif
