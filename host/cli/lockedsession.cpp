// SPDX-License-Identifier: MIT
#include "host/cli/lockedsession.h"

#include "catalog/mapcatalog.h"
#include "host/shared/datasetswap.h"
#include "host/shared/leftovers.h"
#include "host/shared/loglines.h"
#include "host/shared/regionremoval.h"
#include <chrono>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace {

using namespace std::chrono_literals;

constexpr auto SwapPatience = 10s; // moves take no time, but the disk is synced before and behind
constexpr unsigned long WaitStep = 20; // ms

void finishRemovals(CommandContext &context)
{
    if (RegionRemoval::unfinished().isEmpty())
        return;
    MapCatalog catalog;
    catalog.updateCatalog();
    const QStringList removed = RegionRemoval::finish(&catalog);
    for (const QString &id : removed)
        context.console.note(
            QCoreApplication::translate("LockedSession",
                                        "The removal of %1, which was cut short, is finished.")
                .arg(id));
}

int recover(CommandContext &context)
{
    QString text;
    const DataSetSwap::Recovery recovery = DataSetSwap::recover(&text);
    if (recovery == DataSetSwap::Recovery::Failed) {
        context.console.error(DataSetSwap::describe(recovery) + QLatin1Char(' ') + text);
        return ExitFailure;
    }
    if (recovery != DataSetSwap::Recovery::Nothing)
        context.console.note(DataSetSwap::describe(recovery));
    if (!text.isEmpty())
        context.console.note(text);
    finishRemovals(context);
    Leftovers::remove();
    return ExitOk;
}

} // namespace

int takeLock(DataSetLock *lock, CommandContext &context)
{
    if (lock->tryLock()) {
        LogLines::keep(context.command);
        return recover(context);
    }
    context.console.error(lock->errorString());
    return lock->isHeldByOther() ? ExitLocked : ExitFailure;
}

int settleData(CommandContext &context)
{
    const QDeadlineTimer patience(SwapPatience);
    while (DataSetSwap::journalExists()) {
        DataSetLock lock;
        if (lock.tryLock())
            return recover(context);
        if (!lock.isHeldByOther() || patience.hasExpired()) {
            context.console.error(lock.errorString());
            return lock.isHeldByOther() ? ExitLocked : ExitFailure;
        }
        QThread::msleep(WaitStep);
    }
    if (!RegionRemoval::unfinished().isEmpty()) {
        DataSetLock lock;
        if (lock.tryLock())
            return recover(context);
        // Another program is at it, or nothing can be changed; what there is may be shown.
    }
    return ExitOk;
}
