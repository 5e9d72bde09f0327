// SPDX-License-Identifier: MIT
#ifndef VEXA_GZIPCHECK_P_H
#define VEXA_GZIPCHECK_P_H

#include <QString>

namespace GzipCheck {

/**
 * Reads a file that was packed with gzip to its end and returns whether its data has the size and
 * the check sum that the file names; true also for every file that is not packed so. libarchive
 * passes over both, and nothing else in a tar would tell a tile with a wrong byte.
 */
bool isSound(const QString &path);

} // namespace GzipCheck

#endif
