// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>
#include <QString>

/** The path suffix of the data set that an update prepares. */
inline const QLatin1String UpdateSuffix("_new");

/**
 * How far an update of the whole data set is, on disk. Only what cannot be seen from the prepared
 * data set itself is noted: which regions are there, its own content file tells.
 *
 * DataSetUpdate writes it; whoever would disturb an update, or wants to tell of one, reads it.
 */
struct UpdateState
{
    enum class Phase {
        None, ///< there is no update
        Fetching, ///< the prepared set may be half seeded; it is begun anew
        Installing, ///< the new catalogue is in the prepared set, regions are being added
        Ready, ///< the prepared set is whole
        Swapping, ///< the swap was asked for; the folders tell what became of it
        Undoing, ///< the same of going back, which makes the newer set the prepared one
    };

    Phase phase = Phase::None;
    QString version; ///< of the prepared set, as its content file gives it
    QString fromVersion; ///< of the set that it is to replace

    /** A missing or damaged file gives Phase::None. */
    static UpdateState read();
    /** False: not written. */
    bool write() const;
    /** False: it is still there. */
    static bool remove();

    /**
     * Whether the engine's queue may hold steps of the update, or a half-seeded set waits: then
     * installs into the main set must wait.
     */
    bool isUnfinished() const;
    /** "none", "fetching", "installing", "ready" and so on, for scripts. */
    QString phaseName() const;
};
