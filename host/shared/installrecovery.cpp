// SPDX-License-Identifier: MIT
#include "host/shared/installrecovery.h"

#include "host/shared/attempttag.h"
#include "host/shared/savedqueue.h"
#include "host/shared/tilelist.h"
#include "plugin/vexaconstants.h"
#include <QDir>
#include <QSet>

namespace {

using Phase = PendingInstall::Phase;

/** The steps of one download() call that are still in the queue. */
struct SavedSteps
{
    QString id;
    QString url;
    QList<int> types;
    QString destination; // of the move; empty if that step is missing

    bool areComplete() const { return !types.isEmpty() && types.last() == MoveRequest; }
    bool isMoveOnly() const { return types == QList<int> {MoveRequest}; }
};

QList<SavedSteps> groupedByUrl(const QList<Request> &requests)
{
    QList<SavedSteps> groups;
    for (const Request &request : requests) {
        if (groups.isEmpty() || groups.last().url != request.url || groups.last().id != request.id
            || groups.last().areComplete())
            groups.append({request.id, request.url, {}, QString()});
        groups.last().types.append(request.type);
        if (request.type == MoveRequest)
            groups.last().destination = request.payload.toStringList().value(1);
    }
    return groups;
}

void removeSteps(const SavedSteps &steps)
{
    SavedQueue::removeIf([&steps](const Request &request) {
        return request.url == steps.url && request.id == steps.id;
    });
}

void beginAgain(InstallJournal *journal, PendingInstall entry)
{
    entry.phase = Phase::Waiting;
    entry.url.clear();
    entry.files.clear();
    journal->put(entry);
}

bool goesTo(const SavedSteps &steps, const QString &tileCacheFolder)
{
    return QDir::cleanPath(steps.destination) == QDir::cleanPath(tileCacheFolder);
}

/** Whether the journal of this tile cache's data set answers for the steps. */
bool isOurs(const SavedSteps &steps, const std::optional<PendingInstall> &entry,
            const QString &tileCacheFolder, bool isRegion)
{
    // The crash came while they were queued: without their move only the address tells whose.
    if (steps.destination.isEmpty())
        return entry && entry->url == steps.url;
    if (!goesTo(steps, tileCacheFolder))
        return false; // Another data set may install a region of the same id.
    return entry || (isRegion && steps.types.contains(UncompressRequest));
}

/** Makes the entry say what the engine is about to do; false if it cannot be gone on with. */
bool goOn(InstallJournal *journal, PendingInstall *entry, const SavedSteps &steps)
{
    if (!steps.areComplete())
        return false;
    const bool filesKnown =
        entry->url == steps.url && (entry->phase == Phase::Moving || entry->phase == Phase::Moved);
    entry->url = steps.url;
    entry->attempt = AttemptTag::of(steps.url);
    if (!steps.isMoveOnly()) {
        entry->phase = Phase::Engine;
        entry->files.clear();
    } else {
        // As long as the move is queued, the scratch folder has all that is not in place.
        const QString scratch = QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE;
        if (!filesKnown) {
            if (SavedQueue::begunMove() == steps.destination)
                return false; // It was whole, but what it held nobody knows.
            entry->files = TileList::filesBelow(scratch);
        }
        entry->phase = Phase::Moving;
        const QStringList tiles = TileList::tiles(entry->files);
        const QStringList gone = TileList::missing(tiles, scratch);
        if (tiles.isEmpty() || !TileList::missing(gone, steps.destination).isEmpty())
            return false;
    }
    return journal->put(*entry);
}

void settleWithoutSteps(InstallJournal *journal, PendingInstall entry,
                        const QString &tileCacheFolder)
{
    if (entry.phase == Phase::Waiting)
        return;
    const QStringList tiles = TileList::tiles(entry.files);
    const bool unpacked = entry.phase == Phase::Moving || entry.phase == Phase::Moved;
    if (unpacked && !tiles.isEmpty() && TileList::missing(tiles, tileCacheFolder).isEmpty()) {
        entry.phase = Phase::Moved;
        journal->put(entry);
        return;
    }
    beginAgain(journal, entry);
}

} // namespace

QList<PendingInstall> InstallRecovery::recover(InstallJournal *journal,
                                               const QString &tileCacheFolder,
                                               const std::function<bool(const QString &)> &isRegion)
{
    QList<PendingInstall> goingOn;
    QSet<QString> settled;
    const QList<SavedSteps> groups = groupedByUrl(SavedQueue::read());
    for (const SavedSteps &steps : groups) {
        auto entry = journal->find(steps.id);
        if (!isOurs(steps, entry, tileCacheFolder, isRegion(steps.id)))
            continue;
        if (settled.contains(steps.id)) {
            removeSteps(steps); // a second attempt of a run that died between the two
            continue;
        }
        settled.insert(steps.id);
        PendingInstall install = entry.value_or(PendingInstall());
        install.id = steps.id;
        if (goOn(journal, &install, steps)) {
            goingOn.append(install);
        } else {
            removeSteps(steps);
            beginAgain(journal, install);
        }
    }
    const QList<PendingInstall> entries = journal->entries();
    for (const PendingInstall &entry : entries) {
        if (!settled.contains(entry.id))
            settleWithoutSteps(journal, entry, tileCacheFolder);
    }
    return goingOn;
}
