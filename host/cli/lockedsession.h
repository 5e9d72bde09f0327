// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/command.h"
#include "host/shared/datasetlock.h"

/** Takes the lock for a command that changes something; the exit code if that fails. */
inline int takeLock(DataSetLock *lock, CommandContext &context)
{
    if (lock->tryLock())
        return ExitOk;
    context.console.error(lock->errorString());
    return lock->isHeldByOther() ? ExitLocked : ExitFailure;
}
