// SPDX-License-Identifier: MIT
// cancel: gives up what an earlier run left. The engine does not run meanwhile.
#include "host/cli/command.h"
#include "host/cli/lockedsession.h"
#include "host/shared/installjournal.h"
#include "host/shared/savedqueue.h"
#include "host/shared/tilelist.h"
#include "host/shared/updatestate.h"
#include "plugin/vexaconstants.h"
#include <algorithm>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>

namespace {

bool moveHasBegun(const PendingInstall &entry)
{
    return entry.phase == PendingInstall::Phase::Moving
        || entry.phase == PendingInstall::Phase::Moved;
}

class CancelCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(CancelCommand)

public:
    QString name() const override { return QStringLiteral("cancel"); }
    QString summary() const override
    {
        return tr("Give up pending installs and delete what was downloaded of them.");
    }
    QString arguments() const override { return QStringLiteral("[ID...]"); }
    Arguments wants() const override { return Arguments::Any; }
    QStringList examples() const override
    {
        return {QStringLiteral("cancel"), QStringLiteral("cancel FI")};
    }
    int run(const QCommandLineParser &parser, CommandContext &context) override
    {
        DataSetLock lock;
        if (const int code = takeLock(&lock, context))
            return code;
        SavedQueue::removeBrokenLock();
        InstallJournal journal(InstallJournal::defaultPath());
        const QStringList given = parser.positionalArguments();
        const QStringList ids = given.isEmpty() ? journal.ids() : given;
        for (const QString &id : ids) {
            if (!journal.find(id)) {
                context.console.error(tr("%1 is not pending.").arg(id));
                return ExitUnknownRegion;
            }
        }
        QJsonArray cancelled;
        int code = ExitOk;
        for (const QString &id : ids) {
            if (cancelOne(journal, id, context.console))
                cancelled.append(id);
            else
                code = ExitFailure;
        }
        // An update's steps are the update's to cancel.
        if (given.isEmpty() && !UpdateState::read().isUnfinished())
            cancelForeign(journal);
        if (SavedQueue::read().isEmpty())
            TileList::empty(QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE);
        if (context.json)
            context.console.json(QJsonDocument(cancelled));
        else if (ids.isEmpty())
            context.console.note(tr("Nothing is pending."));
        return code;
    }

private:
    // The queue first: a crash in between leaves an entry that begins the download again, and not
    // steps that nobody asked for.
    static bool cancelOne(InstallJournal &journal, const QString &id, Console &console)
    {
        if (moveHasBegun(*journal.find(id))) {
            console.error(
                tr("The files of %1 are partly in place; \"vexa-maps resume\" finishes it, "
                   "then it can be removed.")
                    .arg(id));
            return false;
        }
        SavedQueue::removeIf([&id](const Request &request) { return request.id == id; });
        if (!journal.remove(id)) {
            console.error(tr("The list of pending installs cannot be written."));
            return false;
        }
        console.note(tr("Cancelled %1.").arg(id));
        return true;
    }

    // What is left of a refresh, or was queued by another program.
    static void cancelForeign(const InstallJournal &journal)
    {
        const QStringList ours = journal.ids();
        SavedQueue::removeIf(
            [&ours](const Request &request) { return !ours.contains(request.id); });
    }
};

} // namespace

void addCancelCommand(CommandList &commands)
{
    commands.push_back(std::make_unique<CancelCommand>());
}
