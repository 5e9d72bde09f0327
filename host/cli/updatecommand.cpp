// SPDX-License-Identifier: MIT
// update: all installed maps to the newest version, and the way back.
#include "catalog/mapcatalog.h"
#include "host/cli/command.h"
#include "host/cli/lockedsession.h"
#include "host/cli/signalwatcher.h"
#include "host/cli/updatepreview.h"
#include "host/cli/updaterun.h"
#include "host/shared/datasetswap.h"
#include "host/shared/preparedset.h"
#include <iostream>
#include <QJsonArray>
#include <QJsonObject>
#include <string>
#include <unistd.h>

namespace {

using State = DataSetUpdate::State;

const char *const Modes[] = {"dry-run", "undo", "clear-backup", "cancel"};

/** What one run came to, for scripts. */
struct Outcome
{
    QString result;
    QString fromVersion;
    QString toVersion;
    QStringList regions;
    QStringList dropped;
    QString error;
};

class UpdateCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(UpdateCommand)

public:
    QString name() const override { return QStringLiteral("update"); }
    QString summary() const override
    {
        return tr("Bring all installed maps to the newest version; the old ones stay in use until "
                  "the new ones are complete.");
    }
    QStringList examples() const override
    {
        return {QStringLiteral("update --dry-run"), QStringLiteral("update"),
                QStringLiteral("update --keep-backup --json"), QStringLiteral("update --undo"),
                QStringLiteral("update --clear-backup")};
    }
    void addOptions(QCommandLineParser &parser) override
    {
        parser.addOptions({
            {QStringLiteral("keep-backup"), tr("Keep the old maps without asking.")},
            {QStringLiteral("drop-missing"),
             tr("Go on without the installed regions that the new version lacks.")},
            {QStringLiteral("dry-run"), tr("Only show what an update would do.")},
            {QStringLiteral("undo"), tr("Go back to the old maps, as long as they are kept.")},
            {QStringLiteral("force"),
             tr("With --undo: also if regions were installed since, which are not in the old "
                "maps.")},
            {QStringLiteral("clear-backup"), tr("Remove the old maps, and do nothing else.")},
            {QStringLiteral("cancel"), tr("Give up an update that is being prepared.")},
        });
    }
    int run(const QCommandLineParser &parser, CommandContext &context) override
    {
        if (const int code = checkOptions(parser, context.console))
            return code;
        if (parser.isSet(QStringLiteral("dry-run")))
            return previewUpdate(context);
        DataSetLock lock;
        if (const int code = takeLock(&lock, context))
            return code;
        MapCatalog main;
        main.updateCatalog();
        DataSetUpdate update(&main, context.baseUri);
        if (parser.isSet(QStringLiteral("undo")))
            return undo(update, parser.isSet(QStringLiteral("force")), context);
        if (parser.isSet(QStringLiteral("clear-backup")))
            return clearBackup(update, context);
        if (parser.isSet(QStringLiteral("cancel")))
            return cancel(update, context);
        update.setDropMissing(parser.isSet(QStringLiteral("drop-missing")));
        return bringUpToDate(update, parser.isSet(QStringLiteral("keep-backup")), context);
    }

private:
    static int checkOptions(const QCommandLineParser &parser, Console &console)
    {
        QStringList modes;
        for (const char *mode : Modes) {
            if (parser.isSet(QLatin1String(mode)))
                modes.append(QLatin1String("--") + QLatin1String(mode));
        }
        const bool updates = parser.isSet(QStringLiteral("keep-backup"))
            || parser.isSet(QStringLiteral("drop-missing"));
        if (modes.size() > 1 || (!modes.isEmpty() && updates)) {
            console.error(tr("\"%1\" stands alone.").arg(modes.first()));
            return ExitUsage;
        }
        if (parser.isSet(QStringLiteral("force")) && !parser.isSet(QStringLiteral("undo"))) {
            console.error(tr("\"--force\" belongs to \"--undo\"."));
            return ExitUsage;
        }
        return ExitOk;
    }

    static int bringUpToDate(DataSetUpdate &update, bool keep, CommandContext &context)
    {
        const int code = UpdateRun(&update, &context).run();
        Outcome outcome {resultName(update.state()),
                         update.fromVersion(),
                         update.targetVersion(),
                         update.regions(),
                         update.dropMissing() ? update.missingRegions() : QStringList(),
                         update.errorString()};
        if (update.state() == State::Done) {
            context.console.note(tr("The maps are now at version %1; they were at %2.")
                                     .arg(outcome.toVersion, outcome.fromVersion));
            if (!outcome.dropped.isEmpty())
                context.console.note(
                    tr("Version %1 does not have: %2.")
                        .arg(outcome.toVersion, outcome.dropped.join(QLatin1String(", "))));
            settleBackup(update, keep, context);
        } else if (update.state() == State::UpToDate) {
            context.console.note(tr("The maps are up to date: version %1.").arg(outcome.toVersion));
        } else {
            explain(update, context.console);
        }
        report(outcome, context);
        return code;
    }

    // What can be done about it.
    static void explain(const DataSetUpdate &update, Console &console)
    {
        if (!update.missingRegions().isEmpty() && !update.dropMissing())
            console.error(tr("\"vexa-maps update --drop-missing\" goes on without them."));
        else if (DataSetSwap::backupExists())
            console.error(tr("\"vexa-maps update --undo\" goes back to it, \"vexa-maps update "
                             "--clear-backup\" removes it."));
        else if (update.fromVersion().isEmpty())
            console.error(tr("Run \"vexa-maps refresh\" first."));
        else if (update.targetVersion().isEmpty() && update.failure() == FailureKind::Catalogue)
            console.error(tr("\"vexa-maps resume\" finishes installs, \"vexa-maps cancel\" gives "
                             "them up."));
    }

    // The backup is cleared only when somebody says so.
    static void settleBackup(DataSetUpdate &update, bool keep, CommandContext &context)
    {
        if (!DataSetSwap::backupExists())
            return;
        const bool mayAsk = !keep && context.console.isTerminal() && isatty(STDIN_FILENO) == 1;
        if (mayAsk && !wantsBackup(context)) {
            if (update.clearBackup())
                context.console.note(tr("The old maps are removed."));
            else
                context.console.error(update.errorString());
            return;
        }
        context.console.note(
            tr("The old maps (version %1, %2) are kept: \"vexa-maps update --undo\" "
               "goes back to them, \"vexa-maps update --clear-backup\" removes "
               "them.")
                .arg(DataSetSwap::backupVersion(), RegionWords::size(DataSetSwap::backupBytes())));
    }

    static bool wantsBackup(CommandContext &context)
    {
        context.signalWatcher->letThrough(); // Ctrl-C is an answer: nothing is removed.
        context.console.ask(
            tr("Keep the old maps (version %1, %2) to be able to go back? [Y/n] ")
                .arg(DataSetSwap::backupVersion(), RegionWords::size(DataSetSwap::backupBytes())));
        std::string answer;
        std::getline(std::cin, answer);
        const QString word = QString::fromLocal8Bit(answer.c_str()).trimmed().toLower();
        return word != tr("n") && word != tr("no");
    }

    static int undo(DataSetUpdate &update, bool force, CommandContext &context)
    {
        const QStringList since = update.regionsSinceBackup();
        const bool done = update.undo(force);
        if (done) {
            context.console.note(tr("The maps are back at version %1.").arg(update.fromVersion()));
            context.console.note(
                tr("Version %1 is kept as well: \"vexa-maps update\" puts it in use again, "
                   "\"vexa-maps update --cancel\" removes it.")
                    .arg(update.targetVersion()));
        } else {
            context.console.error(update.errorString());
            if (!since.isEmpty() && !force)
                context.console.error(tr("\"vexa-maps update --undo --force\" goes back without "
                                         "them."));
        }
        report({done ? QStringLiteral("undone") : QStringLiteral("failed"),
                done ? update.targetVersion() : QString(), done ? update.fromVersion() : QString(),
                done ? PreparedSet::installedIds(QString()) : QStringList(),
                done ? since : QStringList(), update.errorString()},
               context);
        return done ? ExitOk : ExitFailure;
    }

    static int clearBackup(DataSetUpdate &update, CommandContext &context)
    {
        const bool existed = DataSetSwap::backupExists();
        const bool done = update.clearBackup();
        if (!done)
            context.console.error(update.errorString());
        else
            context.console.note(existed ? tr("The old maps are removed.")
                                         : tr("There is no backup."));
        report({done ? QStringLiteral("backupCleared") : QStringLiteral("failed"),
                QString(),
                QString(),
                {},
                {},
                update.errorString()},
               context);
        return done ? ExitOk : ExitFailure;
    }

    static int cancel(DataSetUpdate &update, CommandContext &context)
    {
        const bool existed =
            UpdateState::read().phase != UpdateState::Phase::None || PreparedSet::exists();
        QEventLoop loop;
        QObject::connect(&update, &DataSetUpdate::finished, &loop, &QEventLoop::quit);
        update.cancel();
        loop.exec();
        const bool done = update.state() == State::Cancelled;
        if (!done)
            context.console.error(update.errorString());
        else
            context.console.note(existed ? tr("The update is given up.")
                                         : tr("No update is being prepared."));
        report({done ? QStringLiteral("cancelled") : QStringLiteral("failed"),
                QString(),
                QString(),
                {},
                {},
                update.errorString()},
               context);
        return done ? ExitOk : ExitFailure;
    }

    static QString resultName(State state)
    {
        switch (state) {
        case State::Done:
            return QStringLiteral("updated");
        case State::UpToDate:
            return QStringLiteral("upToDate");
        case State::Stopped:
            return QStringLiteral("interrupted");
        default:
            return QStringLiteral("failed");
        }
    }

    static void report(const Outcome &outcome, CommandContext &context)
    {
        if (!context.json)
            return;
        context.console.json(QJsonDocument(
            QJsonObject {{QStringLiteral("result"), outcome.result},
                         {QStringLiteral("fromVersion"), outcome.fromVersion},
                         {QStringLiteral("toVersion"), outcome.toVersion},
                         {QStringLiteral("regions"), QJsonArray::fromStringList(outcome.regions)},
                         {QStringLiteral("dropped"), QJsonArray::fromStringList(outcome.dropped)},
                         {QStringLiteral("backup"), DataSetSwap::backupExists()},
                         {QStringLiteral("error"), outcome.error}}));
    }
};

} // namespace

void addUpdateCommand(CommandList &commands)
{
    commands.push_back(std::make_unique<UpdateCommand>());
}
