// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/folderops.h"
#include <optional>
#include <QCoreApplication>
#include <QString>

/** What the journal tells of one exchange or removal of data sets. */
struct SwapNote
{
    enum class Operation {
        Swap, ///< prepared set -> main set -> backup
        Undo, ///< backup -> main set -> prepared set
        Clear, ///< the backup is removed
        Discard, ///< the prepared set is removed
    };

    Operation operation = Operation::Swap;
    QString suffix; ///< the prepared set's
    // The rest is known for exchanges only. "Leaving" is the set that was in use before.
    FolderOps::Identity leavingCatalog;
    FolderOps::Identity leavingTiles;
    FolderOps::Identity arrivingCatalog;
    FolderOps::Identity arrivingTiles;
    FolderOps::Identity voices; ///< null: there were none
    QString arrivingVersion; ///< of the maps
};

/**
 * The file that tells the next start what was under way: "cities/.vexa-swap.json", on the file
 * system of the folders, so that one sync covers all.
 *
 * Whoever holds the DataSetLock writes it; others may ask whether it exists. doc/updates.md shows
 * its form.
 */
class SwapJournal
{
    Q_DECLARE_TR_FUNCTIONS(SwapJournal)

public:
    static QString path();
    /** Whether there is something of that name, readable or not. */
    static bool exists();
    /** Writes the note beside its place and puts it there; on the disk when the call returns. */
    static bool write(const SwapNote &note, QString *errorString);
    /**
     * The note. Nothing if it is missing, cut, foreign or of a later version; errorString says
     * which, and nobody may guess what was under way.
     */
    static std::optional<SwapNote> read(QString *errorString);
    /** Takes it away; on the disk when the call returns. */
    static bool remove(QString *errorString);
    /** Takes away what a write that was cut short left. */
    static void removeUnfinished();
    /** Whether a data set may have this suffix: one word for the shell, and not the backup's. */
    static bool isUsableSuffix(const QString &suffix);
};
