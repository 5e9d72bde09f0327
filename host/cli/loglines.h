// SPDX-License-Identifier: MIT
#pragma once

/**
 * Where the messages of the library and of Qt go: to standard error, and only if the user asked
 * for them. The program tells itself what the user must know.
 */
namespace LogLines {

/** Takes Qt's messages from now on and drops them. */
void install();

/** From now on they are written. */
void show();

} // namespace LogLines
