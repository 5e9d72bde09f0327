// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/command.h"
#include "host/shared/updatestate.h"

/**
 * For commands that steps of an update in the engine's queue would disturb, or that would disturb
 * it: the exit code if one is being prepared.
 */
inline int refuseDuringUpdate(CommandContext &context)
{
    const UpdateState state = UpdateState::read();
    if (!state.isUnfinished())
        return ExitOk;
    context.console.error(
        QCoreApplication::translate("UpdateGuard",
                                    "An update to version %1 is being prepared: \"vexa-maps "
                                    "update\" goes on with it, \"vexa-maps update --cancel\" gives "
                                    "it up.")
            .arg(state.version));
    return ExitFailure;
}
