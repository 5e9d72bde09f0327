// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/command.h"
#include <optional>
#include <QCoreApplication>
#include <QStringList>

/**
 * The program's command line: finds the command, reads the options that all commands share (before
 * or behind the command's name), writes help, and prepares the process before the library is used:
 * data root, home folder, settings folder, log level.
 */
class CommandLine
{
    Q_DECLARE_TR_FUNCTIONS(CommandLine)

public:
    explicit CommandLine(SignalWatcher *signalWatcher);

    /** Runs what the arguments (with the program's name) ask for; returns the exit code. */
    int run(const QStringList &arguments);

private:
    void addSharedOptions(QCommandLineParser &parser) const;
    Command *find(const QString &name) const;
    QString programHelp() const;
    QString commandHelp(const Command &command, QCommandLineParser &parser) const;
    int runCommand(Command &command, const QStringList &arguments);
    std::optional<int> checkCount(const Command &command, const QStringList &given);
    bool prepare(const QCommandLineParser &parser, CommandContext *context);
    bool prepareDataFolder(const Command &command, const QCommandLineParser &parser);
    int usageError(const QString &text, const QString &command = QString());

    CommandList m_commands;
    SignalWatcher *const m_signalWatcher; // not owned
    Console m_console;
};
