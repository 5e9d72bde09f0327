// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/installjournal.h"
#include <functional>
#include <QList>
#include <QString>

/**
 * Brings the journal, the engine's saved queue and the disk together after a run that may have
 * ended at any moment. To be run before the worker starts: what lies in the scratch folder is
 * known only until then.
 *
 *  - The queue has the region's steps up to the move: the engine will go on with them. If only the
 *    move is left and nobody noted what was unpacked, the scratch folder tells, if it is whole.
 *  - The queue has only a part of them (the crash came while they were queued), or is empty and it
 *    is not known what was unpacked, or files are missing: the region is downloaded again.
 *  - The queue has none, and all the files that were noted are there: only recording is left.
 *  - The queue has steps for a region that the journal does not know: they are taken up.
 *  - Steps whose move goes to another data set's tile cache are left to that one's journal.
 */
namespace InstallRecovery {

/**
 * Returns the entries that the engine will work on, in its order; those to be begun or recorded
 * are in the journal. isRegion tells the ids of the catalogue from others in the queue.
 */
QList<PendingInstall> recover(InstallJournal *journal, const QString &tileCacheFolder,
                              const std::function<bool(const QString &id)> &isRegion);

} // namespace InstallRecovery
