// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/console.h"
#include "host/cli/exitcodes.h"
#include <memory>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <vector>

class SignalWatcher;

/** What the options that every command knows have said, and what every command works with. */
struct CommandContext
{
    Console console;
    SignalWatcher *signalWatcher = nullptr; // not owned
    QString baseUri; ///< checked; ends in "/"
    QString command; ///< its name
    int timeoutMs = 0; ///< time without any news from the server after which to give up
    bool json = false;
};

/**
 * One command of the program, as "install". Knows its options, its help and how to run. Made for
 * each run of the program; runs once, in the main thread.
 */
class Command
{
public:
    virtual ~Command() = default;

    virtual QString name() const = 0;
    /** One line for the list of commands. */
    virtual QString summary() const = 0;
    /** What follows the name in the usage line, as "[options] ID..."; may be empty. */
    virtual QString arguments() const { return QString(); }
    /** Command lines that show its use, without the program's name. */
    virtual QStringList examples() const = 0;
    virtual void addOptions(QCommandLineParser &parser) { Q_UNUSED(parser); }
    /** How many names or ids of regions a command takes. */
    enum class Arguments { None, One, AtLeastOne, Any };
    virtual Arguments wants() const { return Arguments::None; }
    /** Whether the folder of --data-dir is made if it is not there. */
    virtual bool makesDataFolder() const { return true; }
    /** Does the work; returns the exit code. */
    virtual int run(const QCommandLineParser &parser, CommandContext &context) = 0;
};

using CommandList = std::vector<std::unique_ptr<Command>>;

// Each in the file that is named after its group.
void addBrowseCommands(CommandList &commands);
void addStatusCommand(CommandList &commands);
void addRefreshCommand(CommandList &commands);
void addInstallCommands(CommandList &commands);
void addUpdateCommand(CommandList &commands);
void addRemoveCommand(CommandList &commands);
void addCancelCommand(CommandList &commands);
void addCitiesCommand(CommandList &commands);
void addLintCommand(CommandList &commands);
void addReportCommand(CommandList &commands);
