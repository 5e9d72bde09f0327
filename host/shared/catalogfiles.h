// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QIODevice;

/** The files of data sets and of a content server: their names, and whether one is whole. */
namespace CatalogFiles {

/** Names the maps version that a content server offers. */
QString versionName();

/** What is installed, and of which maps version. */
QString contentName();

/** Begins with the version of the map objects. */
QString configName();

/** The catalogue of this maps version. */
QString catalogName(const QString &version);

/** The regions' names in the language of this code. */
QString namesName(const QString &code);

/** The code of the language whose names stand in for those that a server does not have. */
QString fallbackCode();

/**
 * Whether the XML ends before its end. The catalogue's readers take what they can get; a file that
 * was cut on its way must not pass for whole. The device is open for reading.
 */
bool isCut(QIODevice *xml);

} // namespace CatalogFiles
