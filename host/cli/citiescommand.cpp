// SPDX-License-Identifier: MIT
// cities: the city packages on the device, as the city index lists them. Looking needs no lock.
#include "cityindex/cityindexlist.h"
#include "cityindex/cityindexlistprocessor.h"
#include "host/cli/command.h"
#include "host/cli/lockedsession.h"
#include "plugin/dataroot.h"
#include <algorithm>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>

namespace {

using Entries = QMap<QString, CityIndex>;

const QLatin1String AddOption("add");
const QLatin1String NameOption("name");
const QLatin1String VersionOption("package-version");

QString indexPath()
{
    return QDir(DataRoot::catalogFolder()).filePath(QStringLiteral("cityindex.xml"));
}

// Not through a list, which would make the folder.
Entries savedEntries()
{
    Entries entries;
    CityIndexListProcessor().readCityIndexList(indexPath(), entries);
    return entries;
}

QJsonObject entryJson(const CityIndex &entry)
{
    return {{QStringLiteral("id"), entry.id()},
            {QStringLiteral("name"), entry.name()},
            {QStringLiteral("version"), entry.version()}};
}

bool hasControlCharacter(const QString &text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

class CitiesCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(CitiesCommand)

public:
    QString name() const override { return QStringLiteral("cities"); }
    QString summary() const override
    {
        return tr("Show the city packages on the device, or record one.");
    }
    QStringList examples() const override
    {
        return {QStringLiteral("cities"), QStringLiteral("cities --json"),
                QStringLiteral("cities --add DE-B --name Berlin --package-version 26.11")};
    }
    void addOptions(QCommandLineParser &parser) override
    {
        parser.addOptions({
            {AddOption,
             tr("Record the city package with this id; what is not said stays as it was."),
             tr("ID")},
            {NameOption, tr("Its name; a new one needs it."), tr("NAME")},
            {VersionOption, tr("Its version; a new one needs it."), tr("VERSION")},
        });
    }
    int run(const QCommandLineParser &parser, CommandContext &context) override
    {
        if (parser.isSet(AddOption))
            return add(parser, context);
        if (parser.isSet(NameOption) || parser.isSet(VersionOption))
            return usageError(tr("--name and --package-version go with --add."), context.console);
        if (const int code = settleData(context))
            return code;
        const Entries entries = savedEntries();
        if (context.json)
            showJson(entries, context.console);
        else
            show(entries, context.console);
        return ExitOk;
    }

private:
    static int usageError(const QString &text, Console &console)
    {
        console.error(text);
        console.error(tr("Try \"%1\".").arg(QStringLiteral("vexa-maps cities --help")));
        return ExitUsage;
    }

    static int add(const QCommandLineParser &parser, CommandContext &context)
    {
        const QString id = parser.value(AddOption);
        if (id.isEmpty())
            return usageError(tr("A city package needs an id."), context.console);
        for (const QLatin1String option : {AddOption, NameOption, VersionOption}) {
            if (hasControlCharacter(parser.value(option)))
                return usageError(tr("The value of --%1 has a control character.").arg(option),
                                  context.console);
        }
        DataSetLock lock;
        if (const int code = takeLock(&lock, context))
            return code;
        const Entries before = savedEntries();
        const bool isNew = !before.contains(id);
        if (isNew && !(parser.isSet(NameOption) && parser.isSet(VersionOption)))
            return usageError(tr("%1 is new: it needs --name and --package-version.").arg(id),
                              context.console);
        const CityIndex old = before.value(id);
        const QString name = parser.isSet(NameOption) ? parser.value(NameOption) : old.name();
        const QString version =
            parser.isSet(VersionOption) ? parser.value(VersionOption) : old.version();
        CityIndexList().addCityIndex(id, name, version);
        return report({id, name, version}, isNew, context);
    }

    // The list keeps silent about a file that it could not write.
    static int report(const CityIndex &entry, bool isNew, CommandContext &context)
    {
        const CityIndex saved = savedEntries().value(entry.id());
        if (entryJson(saved) != entryJson(entry)) {
            context.console.error(
                tr("%1 is not recorded: %2 cannot be written.").arg(entry.id(), indexPath()));
            return ExitFailure;
        }
        if (context.json)
            context.console.json(QJsonDocument(entryJson(saved)));
        context.console.note(
            (isNew ? tr("Added %1 (%2), version %3.") : tr("Updated %1 (%2), version %3."))
                .arg(saved.id(), saved.name(), saved.version()));
        return ExitOk;
    }

    static void showJson(const Entries &entries, Console &console)
    {
        QJsonArray array;
        for (const CityIndex &entry : entries)
            array.append(entryJson(entry));
        console.json(QJsonDocument(array));
    }

    static void show(const Entries &entries, Console &console)
    {
        QString::size_type idWidth = 0;
        QString::size_type nameWidth = 0;
        for (const CityIndex &entry : entries) {
            idWidth = std::max(idWidth, entry.id().size());
            nameWidth = std::max(nameWidth, entry.name().size());
        }
        for (const CityIndex &entry : entries)
            console.result(entry.id().leftJustified(int(idWidth)) + QLatin1String("  ")
                           + entry.name().leftJustified(int(nameWidth)) + QLatin1String("  ")
                           + entry.version());
        if (entries.isEmpty())
            console.note(tr("There are no city packages."));
    }
};

} // namespace

void addCitiesCommand(CommandList &commands)
{
    commands.push_back(std::make_unique<CitiesCommand>());
}
