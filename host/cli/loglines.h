// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/** Where the library's log lines go: to standard error if asked for, and the last ones to a file.
 */
namespace LogLines {

/** Takes them from Qt's own output, where they would disturb. */
void install();

/** From now on to standard error, too. */
void show();

/**
 * From now on to the file, too, under a first line that names the command. Errors and warnings are
 * enough there; the level is raised to them. Whoever holds the data set's lock calls this once.
 */
void keep(const QString &command);

/** One more line for the file, if lines are kept. Any thread. */
void note(const QString &line);

/** The last lines that were kept, by this program or earlier ones, oldest first. */
QStringList kept(int count);

} // namespace LogLines
