// SPDX-License-Identifier: MIT
#ifndef VEXA_REGIONNAMEFILE_P_H
#define VEXA_REGIONNAMEFILE_P_H

#include <functional>
#include <QString>

/** The form of "regionname-lang-%1.xml": what its elements mean. */
namespace RegionNameFile {

/** Takes a region's id and its name in the user's language; false ends the reading. */
using Visitor = std::function<bool(const QString &id, const QString &name)>;

/**
 * Shows the names in the file's order, also several for one id; the last one counts. A damaged file
 * shows what stands before the damage.
 *
 * @param mapVersion of the installed maps; the name of one region depends on their edition
 */
void read(const QString &path, const QString &mapVersion, const Visitor &visitor);

} // namespace RegionNameFile

#endif
