// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

class MapCatalog;

/**
 * Whether an update fits on the disk beside the maps that stay in use until it is done.
 *
 * A catalogue tells only how large an archive is. What its tiles take is reckoned from what the
 * installed region takes on disk for its own archive's size.
 */
class UpdateSpace
{
    Q_DECLARE_TR_FUNCTIONS(UpdateSpace)

public:
    /** What an update takes at its worst moment, in bytes; rounded up to blocks of the disk. */
    struct Need
    {
        qint64 tiles = 0; ///< all regions of the new set, below DataRoot::cities()
        qint64 scratch = 0; ///< an archive and what is in it, in the home folder, for one region
    };

    /**
     * For these regions; partly finished work is part of it. toFetch are those of them that are
     * still to be downloaded. Both catalogues are loaded.
     */
    static Need need(MapCatalog *main, MapCatalog *prepared, const QStringList &wanted,
                     const QStringList &toFetch);

    /** Empty if there is room, else a sentence that says where and how much is missing. */
    static QString shortage(const Need &need);
};
