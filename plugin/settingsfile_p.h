// SPDX-License-Identifier: MIT
#ifndef VEXA_SETTINGSFILE_P_H
#define VEXA_SETTINGSFILE_P_H

#include <QByteArray>
#include <QString>

/** The file of a QSettings, looked at before QSettings reads it. */
namespace SettingsFile {

/**
 * Whether QSettings would unpack a value of any type at all ("@Variant(", "@DateTime("). One of a
 * few bytes can ask for more memory than there is, which ends the program. What the library stores
 * (texts, numbers, booleans) is never written so.
 */
bool holdsPackedValues(const QByteArray &bytes);

/**
 * Renames a file that holds such values to its name and ".damaged", where an earlier one is
 * replaced. Returns whether there was one to rename.
 */
bool setDamagedAside(const QString &path);

} // namespace SettingsFile

#endif
