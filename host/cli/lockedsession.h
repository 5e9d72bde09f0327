// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/command.h"
#include "host/shared/datasetlock.h"

/**
 * Takes the lock for a command that changes something, and ends what an earlier run began with
 * whole data sets or with a removal; the exit code if either fails. To be called ahead of the first
 * MapCatalog.
 */
int takeLock(DataSetLock *lock, CommandContext &context);

/**
 * The same for a command that only reads, which keeps no lock: does nothing unless a swap of data
 * sets or a removal was cut short. If another program is in the middle of one, waits a moment for
 * its end rather than to show half of each set.
 */
int settleData(CommandContext &context);
