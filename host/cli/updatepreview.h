// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/command.h"

/**
 * Shows what an update would do: what is downloaded, which tiles change, what it takes on the disk,
 * and which tiles others would lose. Changes nothing and needs no lock. Returns the exit code.
 */
int previewUpdate(CommandContext &context);
