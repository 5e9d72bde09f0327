// SPDX-License-Identifier: MIT
#include "host/cli/commandline.h"

#include "host/shared/datafolder.h"
#include "host/shared/enginesession.h"
#include "host/shared/loglines.h"
#include "plugin/logger.h"
#include <algorithm>

namespace {

constexpr int DefaultTimeout = 30; // seconds
constexpr int MaxTimeout = 24 * 3600; // seconds
constexpr int IndentedColumn = 26;

QString programName()
{
    return QStringLiteral("vexa-maps");
}

QString row(const QString &left, const QString &right)
{
    return QLatin1String("  ") + left.leftJustified(IndentedColumn - 2) + right + QLatin1Char('\n');
}

} // namespace

CommandLine::CommandLine(SignalWatcher *signalWatcher)
    : m_signalWatcher(signalWatcher)
{
    addRefreshCommand(m_commands);
    addBrowseCommands(m_commands);
    addInstallCommands(m_commands);
    addUpdateCommand(m_commands);
    addRemoveCommand(m_commands);
    addStatusCommand(m_commands);
    addCancelCommand(m_commands);
    addCitiesCommand(m_commands);
    addLintCommand(m_commands);
    addReportCommand(m_commands);
}

void CommandLine::addSharedOptions(QCommandLineParser &parser) const
{
    parser.addOptions({
        {QStringLiteral("data-dir"),
         tr("Keep all map data, downloads and settings below this folder instead of the device's "
            "own places."),
         tr("DIR")},
        {QStringLiteral("base-uri"),
         tr("Content server. Default: the application settings' address, else %1.")
             .arg(EngineSession::configuredBaseUri()),
         tr("URI")},
        {QStringLiteral("timeout"),
         tr("Give up when the server is silent for so long. Default: %1.").arg(DefaultTimeout),
         tr("SECONDS")},
        {QStringLiteral("json"), tr("Write the result as JSON.")},
        {{QStringLiteral("q"), QStringLiteral("quiet")}, tr("Write results and errors only.")},
        {{QStringLiteral("v"), QStringLiteral("verbose")},
         tr("Tell more; given twice, also the library's log.")},
        {{QStringLiteral("h"), QStringLiteral("help")}, tr("Show this help.")},
        {QStringLiteral("version"), tr("Show the program's version.")},
    });
}

Command *CommandLine::find(const QString &name) const
{
    const auto found =
        std::find_if(m_commands.begin(), m_commands.end(),
                     [&name](const auto &command) { return command->name() == name; });
    return found == m_commands.end() ? nullptr : found->get();
}

int CommandLine::run(const QStringList &arguments)
{
    // Only up to the command: what follows it may be options that it alone knows.
    QCommandLineParser parser;
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    addSharedOptions(parser);
    const bool parsed = parser.parse(arguments);
    const QStringList rest = parser.positionalArguments();
    if (!parsed)
        return usageError(parser.errorText());
    if (parser.isSet(QStringLiteral("version"))) {
        m_console.result(programName() + QLatin1Char(' ') + QCoreApplication::applicationVersion());
        return ExitOk;
    }
    if (rest.isEmpty() || rest.first() == QLatin1String("help")) {
        if (Command *command = rest.size() > 1 ? find(rest.at(1)) : nullptr)
            return runCommand(*command, {programName(), QStringLiteral("--help")});
        if (rest.size() > 1)
            return usageError(tr("There is no command \"%1\".").arg(rest.at(1)));
        if (rest.isEmpty() && !parser.isSet(QStringLiteral("help")))
            return usageError(tr("Which command?"));
        m_console.result(programHelp());
        return ExitOk;
    }
    Command *command = find(rest.first());
    if (!command)
        return usageError(tr("There is no command \"%1\".").arg(rest.first()));
    QStringList commandArguments = arguments;
    commandArguments.removeAt(arguments.size() - rest.size());
    return runCommand(*command, commandArguments);
}

int CommandLine::runCommand(Command &command, const QStringList &arguments)
{
    QCommandLineParser parser;
    addSharedOptions(parser);
    command.addOptions(parser);
    if (!parser.parse(arguments))
        return usageError(parser.errorText(), command.name());
    if (parser.isSet(QStringLiteral("help"))) {
        m_console.result(commandHelp(command, parser));
        return ExitOk;
    }
    if (const auto code = checkCount(command, parser.positionalArguments()))
        return *code;
    CommandContext context;
    context.command = command.name();
    if (!prepare(parser, &context) || !prepareDataFolder(command, parser))
        return ExitUsage;
    return command.run(parser, context);
}

std::optional<int> CommandLine::checkCount(const Command &command, const QStringList &given)
{
    const auto wanted = command.wants();
    if (wanted == Command::Arguments::None && !given.isEmpty())
        return usageError(tr("\"%1\" takes no \"%2\".").arg(command.name(), given.first()),
                          command.name());
    if (wanted == Command::Arguments::One && given.size() != 1)
        return usageError(tr("\"%1\" takes one region.").arg(command.name()), command.name());
    if (wanted == Command::Arguments::AtLeastOne && given.isEmpty())
        return usageError(tr("\"%1\" needs a region.").arg(command.name()), command.name());
    return std::nullopt;
}

bool CommandLine::prepare(const QCommandLineParser &parser, CommandContext *context)
{
    const QStringList names = parser.optionNames();
    const auto verbose = names.count(QStringLiteral("v")) + names.count(QStringLiteral("verbose"));
    const bool quiet = parser.isSet(QStringLiteral("quiet"));
    context->json = parser.isSet(QStringLiteral("json"));
    // Whoever reads JSON wants nothing beside it.
    context->console = Console(quiet || context->json ? Console::Level::Quiet
                                   : verbose > 0      ? Console::Level::Verbose
                                                      : Console::Level::Normal);
    L::og()->setLogLevel(verbose > 1 ? int(L::Info) : int(L::Off));
    if (verbose > 1)
        LogLines::show();
    context->signalWatcher = m_signalWatcher;

    // Before the settings move with the data folder: the server is the user's choice.
    const QString uri = parser.value(QStringLiteral("base-uri"));
    context->baseUri = parser.isSet(QStringLiteral("base-uri"))
        ? EngineSession::checkedBaseUri(uri)
        : EngineSession::configuredBaseUri();
    if (context->baseUri.isEmpty()) {
        usageError(tr("\"%1\" is no http address.").arg(uri));
        return false;
    }
    bool isNumber = true;
    int seconds = DefaultTimeout;
    if (parser.isSet(QStringLiteral("timeout")))
        seconds = parser.value(QStringLiteral("timeout")).toInt(&isNumber);
    if (!isNumber || seconds < 1 || seconds > MaxTimeout) {
        usageError(
            tr("\"%1\" is no number of seconds.").arg(parser.value(QStringLiteral("timeout"))));
        return false;
    }
    context->timeoutMs = seconds * 1000;
    return true;
}

bool CommandLine::prepareDataFolder(const Command &command, const QCommandLineParser &parser)
{
    if (!parser.isSet(QStringLiteral("data-dir")))
        return true;
    const QString folder = parser.value(QStringLiteral("data-dir"));
    if (!command.makesDataFolder() && !folder.isEmpty()) {
        DataFolder::lookAt(folder);
        return true;
    }
    if (DataFolder::use(folder))
        return true;
    usageError(tr("The folder \"%1\" cannot be used.").arg(folder));
    return false;
}

int CommandLine::usageError(const QString &text, const QString &command)
{
    m_console.error(text);
    const QString help = command.isEmpty()
        ? programName() + QLatin1String(" --help")
        : programName() + QLatin1Char(' ') + command + QLatin1String(" --help");
    m_console.error(tr("Try \"%1\".").arg(help));
    return ExitUsage;
}

QString CommandLine::programHelp() const
{
    QString text = tr("Usage: vexa-maps [options] COMMAND [arguments]\n"
                      "Keeps the offline map data of this device.\n");
    text += QLatin1Char('\n') + tr("Commands:") + QLatin1Char('\n');
    for (const auto &command : m_commands)
        text += row(command->name(), command->summary());
    text += row(QStringLiteral("help COMMAND"), tr("Show what a command does and its options."));
    text += QLatin1Char('\n')
        + tr("Options that all commands take are shown by each command's help.\n");
    text += QLatin1Char('\n') + tr("Examples:") + QLatin1Char('\n');
    for (const char *example :
         {"refresh", "list --search fin", "install FI SE", "remove FI",
          "--data-dir /tmp/maps --base-uri http://localhost:8080/map5/ refresh"})
        text += QLatin1String("  ") + programName() + QLatin1Char(' ') + QLatin1String(example)
            + QLatin1Char('\n');
    text += QLatin1Char('\n') + tr("Exit codes:") + QLatin1Char('\n');
    text += row(QStringLiteral("0"), tr("done"));
    text += row(QStringLiteral("1"), tr("it failed: an archive, the disk or the catalogue"));
    text += row(QStringLiteral("2"), tr("the command line is wrong"));
    text += row(QStringLiteral("3"), tr("there is no such region"));
    text += row(QStringLiteral("4"), tr("the server cannot be reached or does not deliver"));
    text += row(QStringLiteral("5"), tr("another program is at work on the same data"));
    text += row(QStringLiteral("6"), tr("\"lint\" has found something"));
    text += row(QStringLiteral("130"), tr("interrupted; the next run goes on"));
    return text.trimmed();
}

QString CommandLine::commandHelp(const Command &command, QCommandLineParser &parser) const
{
    parser.setApplicationDescription(command.summary());
    QString text = parser.helpText();
    // Qt writes the path that the program was called by and knows nothing of commands.
    const int end = int(text.indexOf(QLatin1Char('\n')));
    text.replace(0, end,
                 tr("Usage: vexa-maps %1 %2")
                     .arg(command.name(), QStringLiteral("[options] %1").arg(command.arguments()))
                     .trimmed());
    text += QLatin1Char('\n') + tr("Examples:") + QLatin1Char('\n');
    const QStringList examples = command.examples();
    for (const QString &example : examples)
        text +=
            QLatin1String("  ") + programName() + QLatin1Char(' ') + example + QLatin1Char('\n');
    return text.trimmed();
}
