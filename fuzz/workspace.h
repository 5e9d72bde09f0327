// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/**
 * The folder in which the targets work, in TMPDIR: it stands for the home folder, the data folder
 * and the place of the settings. Nothing is logged.
 *
 * Made once, before anything of the library, and removed at the end of the program; a program that
 * crashes leaves it.
 */
namespace Workspace {

/** Makes it, and the application object. */
void create();

/** Absolute, with the links resolved. */
QString path();
QString path(const QString &name);
QString home();
/** What stands for /home/user/MyDocs. */
QString myDocs();

/** Writes the bytes to a file, whose folder exists, and returns its path. */
QString file(const QString &name, const QByteArray &bytes);
QByteArray readAll(const QString &path);

} // namespace Workspace
