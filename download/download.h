// SPDX-License-Identifier: MIT
#ifndef VEXA_DOWNLOAD_H
#define VEXA_DOWNLOAD_H

#include "vexa_export.h"
#include <QSettings>
#include <QString>
#include <QUrl>

/**
 * How far the one HTTP transfer of the engine has come, so that it can go on where it stopped,
 * also after a restart.
 *
 * A plain value that lives in the download manager. It is stored under "download/" in the
 * download-state settings after every chunk of data.
 */
class VEXA_EXPORT Download
{
public:
    /** Writes the five "download/..." keys. The caller holds the settings and syncs. Returns 0. */
    int serialize(QSettings &settings) const;

    /** Reads the five keys; missing ones give an empty address, an empty name and 0. Returns 0. */
    int deSerialize(QSettings &settings);

    /** Forgets the transfer; what is stored stays until somebody serialises again. */
    void clear();

    QUrl url; ///< what is fetched
    QString fileName; ///< full path of the save file
    qint64 bytesReceived = 0; ///< bytes in the save file, where the next request goes on
    qint64 bytesTotal = 0; ///< size of the whole file as the server told it; 0 or -1 if unknown
    int downloadType = 0; ///< 1 if the server told a range or a length, else 0
};

#endif
