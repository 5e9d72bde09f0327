// SPDX-License-Identifier: MIT
#pragma once

/**
 * Removes what programs that were killed have left and nobody will use again, so that it does not
 * pile up. To be called by whoever holds the data set's lock, ahead of the engine's start: nobody
 * else writes then.
 *
 *  - Beside each file that is replaced as a whole ("content.xml"), the new one that did not get its
 *    name ("content.xml.hTgsrE").
 *  - In the folder where downloads grow, archives that no step in the engine's queue names; with an
 *    empty queue what was unpacked, too.
 *
 * What cannot be removed stays; it does no harm.
 */
namespace Leftovers {

void remove();

} // namespace Leftovers
