// SPDX-License-Identifier: MIT
#ifndef VEXA_DISKSYNC_P_H
#define VEXA_DISKSYNC_P_H

#include <QString>
#include <QStringList>

/**
 * Waits until what was written is on the disk, where a power cut cannot reach it. Whoever notes
 * that a step is done waits first: the note is synced, and it must not outlive what it tells of.
 * Any thread.
 */
namespace DiskSync {

/** Waits for a file's bytes; false if they could not be written. */
bool file(const QString &path);

/** Waits for these files, given relative to the folder; false if one could not be written. */
bool files(const QString &folder, const QStringList &names);

/** The files in and below the folder, relative to it. */
QStringList filesBelow(const QString &folder);

} // namespace DiskSync

#endif
