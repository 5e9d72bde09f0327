// SPDX-License-Identifier: MIT
#ifndef VEXA_SHELL_P_H
#define VEXA_SHELL_P_H

#include <QByteArray>
#include <QString>

/**
 * The platform's shell, with which whole folders are copied and removed. Any thread may use it;
 * the calling thread waits until the command is over.
 */
namespace Shell {

/** Whether there is a shell at all. */
bool isAvailable();

/**
 * The path as a word of a command: as it stands if the shell takes every letter of it as it is,
 * else quoted. "*" is quoted too; a pattern goes behind the quoted part.
 */
QString quoted(const QString &path);

/**
 * Runs the command and returns what system() returns, 0 for success. A Ctrl-C meant for this
 * program does not reach the command. If a killed run of the program has left a command of the
 * download engine that is still at work, waits for it first, up to a minute.
 */
int run(const QString &command);

/** As run(), but waits for nobody: for commands that have nothing to do with the engine's files. */
int runAtOnce(const QByteArray &command);

} // namespace Shell

#endif
