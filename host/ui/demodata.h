// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/**
 * A device with made-up maps below the data root: a catalogue of three levels with names of all
 * lengths, some of it installed. For the self-test and for tests of the pages.
 */
namespace DemoData {

/** The version of the maps that create() writes. */
inline constexpr char Version[] = "26.11.21.00";

/** How many regions the catalogue has. */
int regionCount();

/**
 * Writes it; false if the disk refuses. extraRegions more are put at the top level, for tests of
 * long lists.
 */
bool create(int extraRegions = 0);

} // namespace DemoData
