// SPDX-License-Identifier: MIT
#pragma once

/** What the program returns; documented, so never renumber. */
enum ExitCode {
    ExitOk = 0,
    ExitFailure = 1, ///< an archive, the disk or the catalogue
    ExitUsage = 2, ///< the command line
    ExitUnknownRegion = 3,
    ExitNetwork = 4, ///< the server cannot be reached, is silent, or does not deliver
    ExitLocked = 5, ///< another program is at work on the same data
    ExitFindings = 6, ///< "lint" has found something
    ExitInterrupted = 130, ///< Ctrl-C or SIGTERM
};
