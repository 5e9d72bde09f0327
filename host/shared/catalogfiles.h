// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QIODevice;

/** The files of a catalogue folder and of a content server: their names, and whether one is whole.
 */
namespace CatalogFiles {

/** The catalogue of this maps version. */
QString catalogName(const QString &version);

/** The regions' names in the language of this code. */
QString namesName(const QString &code);

/**
 * Whether the XML ends before its end. The catalogue's readers take what they can get; a file that
 * was cut on its way must not pass for whole. The device is open for reading.
 */
bool isCut(QIODevice *xml);

} // namespace CatalogFiles
