// SPDX-License-Identifier: MIT
#ifndef VEXA_SUSPENSIONCAUSE_H
#define VEXA_SUSPENSIONCAUSE_H

/** Why the engine is suspended, or who asks it to go on. Logged as a number: never renumber. */
enum SuspensionCause : int {
    NotSuspended = 0, ///< it is not
    UserCause = 1, ///< the user or the application asked; survives a restart
    NetworkCause = 2, ///< no network that may be used
    ForcedCause = 3, ///< resumes whatever the cause was; a cancel does this
};

#endif
