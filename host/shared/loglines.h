// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/** Where a program's log lines go: to Qt's own output or not, and the last ones to a file. */
namespace LogLines {

/** From now on they come here, and are shown no more: the lines of a command would be lost in them.
 */
void install();

/** From now on to standard error, too, without Qt's decoration. */
void show();

/** In place of install(): they are still shown as Qt does it. */
void installShown();

/**
 * From now on to the file of this home folder, too, under a first line that names the program and
 * what it does. Errors and warnings are enough there; the level is raised to them. Whoever gets the
 * data set's lock calls this, so that one program at a time begins a new file.
 */
void keep(const QString &deed);

/** One more line for the file, if lines are kept. Any thread. */
void note(const QString &line);

/** The last lines that were kept, by this program or earlier ones, oldest first. */
QStringList kept(int count);

} // namespace LogLines
