// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/** A folder of the user's choice that stands for the whole device. */
namespace DataFolder {

/**
 * Makes the process keep everything below the folder: the map data in it, downloads, scratch
 * folder, queue and settings in ".vexa-home" there. They go together, so that two data sets never
 * share a queue and files are moved on one file system.
 *
 * Sets VEXA_MYDOCS, HOME and XDG_CONFIG_HOME. To be called before any settings are read for the
 * data set, and before a second thread runs. False if the folder cannot be made.
 */
bool use(const QString &folder);
/** The same without making anything, for whoever only looks at what is there, if anything. */
void lookAt(const QString &folder);

} // namespace DataFolder
