// SPDX-License-Identifier: MIT
// remove: takes installed regions off the disk. The engine does not run meanwhile.
#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/cli/command.h"
#include "host/cli/lockedsession.h"
#include "host/cli/regionlookup.h"
#include "host/shared/installjournal.h"
#include "host/shared/regionfiles.h"
#include "host/shared/regionremoval.h"
#include "host/shared/regionstatus.h"
#include "plugin/dataroot.h"
#include <QJsonArray>
#include <QJsonObject>

namespace {

class RemoveCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(RemoveCommand)

public:
    QString name() const override { return QStringLiteral("remove"); }
    QString summary() const override
    {
        return tr("Remove regions; tiles that other installed regions need stay.");
    }
    QString arguments() const override { return QStringLiteral("ID..."); }
    Arguments wants() const override { return Arguments::AtLeastOne; }
    QStringList examples() const override
    {
        return {QStringLiteral("remove FI"), QStringLiteral("remove Finland Sweden"),
                QStringLiteral("remove --dry-run FI SE")};
    }
    void addOptions(QCommandLineParser &parser) override
    {
        parser.addOption({QStringLiteral("dry-run"),
                          tr("Only say what would be freed and what would stay. Sizes are those of "
                             "the files' contents; the file system may give them more room.")});
    }
    int run(const QCommandLineParser &parser, CommandContext &context) override
    {
        const bool dryRun = parser.isSet(QStringLiteral("dry-run"));
        DataSetLock lock;
        if (const int code = dryRun ? settleData(context) : takeLock(&lock, context))
            return code;
        MapCatalog catalog;
        catalog.updateCatalog();
        const auto ids =
            RegionLookup(&catalog).resolveAll(parser.positionalArguments(), context.console);
        if (!ids)
            return ExitUnknownRegion;
        if (!mayBeRemoved(catalog, *ids, context.console))
            return ExitFailure;
        if (dryRun)
            return showPlan(catalog, *ids, context);
        QJsonArray report;
        int code = ExitOk;
        for (const QString &id : *ids) {
            if (!removeOne(catalog, id, context, &report))
                code = ExitFailure;
        }
        if (context.json)
            context.console.json(QJsonDocument(report));
        return code;
    }

private:
    // All are looked at before the first is removed.
    static bool mayBeRemoved(MapCatalog &catalog, const QStringList &ids, Console &console)
    {
        bool allMay = true;
        const InstallJournal journal(InstallJournal::defaultPath());
        for (const QString &id : ids) {
            if (journal.find(id)) {
                console.error(tr("%1 is being installed; run \"vexa-maps resume\" or \"vexa-maps "
                                 "cancel %1\" first.")
                                  .arg(id));
                allMay = false;
            } else if (!catalog.region(id)->installed()) {
                console.error(tr("%1 is not installed.").arg(id));
                allMay = false;
            }
        }
        return allMay;
    }

    static QJsonObject reportOf(const RemovalFigures &figures, bool removed)
    {
        return {{QStringLiteral("id"), figures.id},
                {QStringLiteral("removed"), removed},
                {QStringLiteral("freedFiles"), figures.freedFiles},
                {QStringLiteral("freedBytes"), double(figures.freedBytes)},
                {QStringLiteral("keptFiles"), figures.keptFiles},
                {QStringLiteral("keptBytes"), double(figures.keptBytes)},
                {QStringLiteral("neededBy"), QJsonArray::fromStringList(figures.neededBy)}};
    }

    static int showPlan(MapCatalog &catalog, const QStringList &ids, CommandContext &context)
    {
        const RemovalPlan plan =
            RegionFiles::planRemoval(&catalog, ids, DataRoot::tileCacheFolder());
        QJsonArray report;
        for (const RemovalFigures &figures : plan.regions) {
            QJsonObject object = reportOf(figures, false);
            object.insert(QStringLiteral("dryRun"), true);
            report.append(object);
        }
        if (context.json) {
            context.console.json(QJsonDocument(report));
            return ExitOk;
        }
        for (const RemovalFigures &figures : plan.regions)
            showFigures(catalog, label(catalog, figures.id), figures, context.console);
        if (plan.regions.size() > 1)
            showFigures(catalog, tr("In total"), plan.total, context.console);
        return ExitOk;
    }

    static void showFigures(MapCatalog &catalog, const QString &label,
                            const RemovalFigures &figures, Console &console)
    {
        console.result(
            tr("%1: %2, %3 would be freed.")
                .arg(label, tiles(figures.freedFiles), RegionWords::size(figures.freedBytes)));
        if (figures.keptFiles == 0)
            return;
        QStringList needing;
        for (const QString &id : figures.neededBy)
            needing.append(RemoveCommand::label(catalog, id));
        console.result(tr("  %1 (%2) would stay, needed by %3.")
                           .arg(tiles(figures.keptFiles), RegionWords::size(figures.keptBytes),
                                needing.join(QLatin1String(", "))));
    }

    static QString tiles(int count)
    {
        return count == 1 ? tr("1 tile") : tr("%1 tiles").arg(count);
    }

    static QString label(MapCatalog &catalog, const QString &id)
    {
        return QStringLiteral("%1 (%2)").arg(id, RegionLookup::displayName(*catalog.region(id)));
    }

    static bool removeOne(MapCatalog &catalog, const QString &id, CommandContext &context,
                          QJsonArray *report)
    {
        const RemovalFigures figures =
            RegionFiles::removalFigures(&catalog, id, DataRoot::tileCacheFolder());
        const QString name = RegionLookup::displayName(*catalog.region(id));
        const bool gone = RegionRemoval::remove(&catalog, id);
        report->append(reportOf(figures, gone));
        if (!gone) {
            context.console.error(
                tr("%1 is still recorded: the content file cannot be written.").arg(id));
            return false;
        }
        context.console.note(
            tr("Removed %1 (%2): %3, %4 freed.")
                .arg(id, name, tiles(figures.freedFiles), RegionWords::size(figures.freedBytes)));
        if (figures.keptFiles > 0)
            context.console.note(
                tr("  Kept for other installed regions: %1 (%2).")
                    .arg(tiles(figures.keptFiles), RegionWords::size(figures.keptBytes)));
        return true;
    }
};

} // namespace

void addRemoveCommand(CommandList &commands)
{
    commands.push_back(std::make_unique<RemoveCommand>());
}
