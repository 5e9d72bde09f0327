// SPDX-License-Identifier: MIT
#ifndef VEXA_CITYINDEXLISTPROCESSOR_H
#define VEXA_CITYINDEXLISTPROCESSOR_H

#include "cityindex/cityindex.h"
#include "vexa_export.h"
#include <QMap>
#include <QString>

/**
 * The reader and writer of "cityindex.xml", which keeps the city index between two starts.
 *
 * It has no state; whoever reads or writes makes one on the stack. Neither direction reports
 * success or failure, and nothing is logged.
 *
 * The file declares the encoding "ANSI", which no codec answers to, and is UTF-8. Both are part of
 * the format, so that files can be exchanged with what others have written.
 */
class VEXA_EXPORT CityIndexListProcessor
{
public:
    CityIndexListProcessor() = default;

    /**
     * Adds the file's records to the map, which is not cleared first. A record replaces one of the
     * same id that is there already, so the last one of an id wins. Elements count at any depth;
     * one that lacks an id, name or version is passed over. A missing file adds nothing, a damaged
     * one what stands before the damage. Bytes that are no UTF-8 become U+FFFD.
     */
    void readCityIndexList(const QString &path, QMap<QString, CityIndex> &entries) const;

    /**
     * Writes the file anew from the whole map, in the map's order and with the entries' own ids.
     *
     * The new file is written beside the old one and put in its place at the end, so that an
     * interruption leaves one or the other whole. If it cannot be written, the old one stays as it
     * is; the folder is not made. Characters that XML forbids become U+FFFD. An entry whose texts
     * have together more than MaxEntryCharacters is left out: no reader would get past it.
     */
    void updateCityIndexListContent(const QString &path,
                                    const QMap<QString, CityIndex> &entries) const;

    /** The longest entry that is written, in UTF-16 units of its three texts together. */
    static constexpr int MaxEntryCharacters = 150000;
};

#endif
