// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

/**
 * The keys and values of a settings file as texts, without the settings' own reader: that one can
 * rename a damaged file, and makes objects of what it finds.
 */
namespace IniFile {

/** "group/key" and value in the file's order; lines that are neither are left out. */
QList<QPair<QString, QString>> read(const QByteArray &bytes);

} // namespace IniFile
