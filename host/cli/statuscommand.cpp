// SPDX-License-Identifier: MIT
// status: where everything stands. It needs no lock, so it can be asked during an install.
#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "download/worker.h"
#include "host/cli/command.h"
#include "host/cli/lockedsession.h"
#include "host/cli/regionlookup.h"
#include "host/shared/attempttag.h"
#include "host/shared/datasetlock.h"
#include "host/shared/datasetswap.h"
#include "host/shared/installjournal.h"
#include "host/shared/preparedset.h"
#include "host/shared/regionfiles.h"
#include "host/shared/regionstatus.h"
#include "host/shared/savedqueue.h"
#include "host/shared/updatestate.h"
#include "plugin/dataroot.h"
#include <iterator>
#include <QJsonArray>
#include <QJsonObject>

namespace {

QString stepName(int type)
{
    const char *const names[] = {"unknown", "test", "download", "unpack", "move"};
    return QLatin1String(type > 0 && type < int(std::size(names)) ? names[type] : names[0]);
}

QString phaseName(PendingInstall::Phase phase)
{
    switch (phase) {
    case PendingInstall::Phase::Waiting:
        return QStringLiteral("queued");
    case PendingInstall::Phase::Engine:
        return QStringLiteral("downloading");
    case PendingInstall::Phase::Moving:
        return QStringLiteral("moving");
    case PendingInstall::Phase::Moved:
        break;
    }
    return QStringLiteral("recording");
}

class StatusCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(StatusCommand)

public:
    QString name() const override { return QStringLiteral("status"); }
    QString summary() const override
    {
        return tr("Show versions, free space, pending installs and the queue.");
    }
    QStringList examples() const override
    {
        return {QStringLiteral("status"), QStringLiteral("status --json")};
    }
    int run(const QCommandLineParser &, CommandContext &context) override
    {
        if (const int code = settleData(context))
            return code;
        const QJsonObject status = gather(context);
        if (context.json)
            context.console.json(QJsonDocument(status));
        else
            show(status, context.console);
        return ExitOk;
    }

private:
    static QJsonArray pendingInstalls()
    {
        QJsonArray pending;
        const QList<PendingInstall> entries =
            InstallJournal(InstallJournal::defaultPath()).entries();
        for (const PendingInstall &entry : entries)
            pending.append(QJsonObject {{QStringLiteral("id"), entry.id},
                                        {QStringLiteral("phase"), phaseName(entry.phase)}});
        return pending;
    }

    static QJsonArray queue()
    {
        QJsonArray steps;
        const QList<Request> requests = SavedQueue::read();
        for (const Request &request : requests)
            steps.append(QJsonObject {{QStringLiteral("id"), request.id},
                                      {QStringLiteral("step"), stepName(request.type)},
                                      {QStringLiteral("url"), AttemptTag::untagged(request.url)}});
        return steps;
    }

    // What an update has prepared, be it cut short, ready, or put aside by going back.
    static QJsonValue update()
    {
        const UpdateState state = UpdateState::read();
        const bool preparing = state.phase != UpdateState::Phase::None
            && (state.isUnfinished() || PreparedSet::exists());
        if (!preparing)
            return QJsonValue();
        return QJsonObject {{QStringLiteral("version"), state.version},
                            {QStringLiteral("ready"), !state.isUnfinished()},
                            {QStringLiteral("regions"),
                             QJsonArray::fromStringList(PreparedSet::installedIds(UpdateSuffix))}};
    }

    static QJsonValue backup()
    {
        if (!DataSetSwap::backupExists())
            return QJsonValue();
        return QJsonObject {{QStringLiteral("version"), DataSetSwap::backupVersion()},
                            {QStringLiteral("size"), double(DataSetSwap::backupBytes())}};
    }

    static QJsonObject gather(const CommandContext &context)
    {
        MapCatalog catalog;
        catalog.updateCatalog();
        qint64 installedSize = 0;
        QStringList installedIds;
        const QList<MapRegion *> installed = RegionFiles::installed(&catalog);
        for (const MapRegion *region : installed) {
            installedIds.append(region->id());
            installedSize += RegionFiles::sizeOnDisk(*region, DataRoot::tileCacheFolder());
        }
        Worker worker; // not started: it tells the free space
        return {
            {QStringLiteral("dataRoot"), DataRoot::myDocs()},
            {QStringLiteral("baseUri"), context.baseUri},
            {QStringLiteral("mapsVersion"), catalog.installedMapsVersion()},
            {QStringLiteral("mosVersion"), catalog.installedMOSVersion()},
            {QStringLiteral("catalogReady"), catalog.catalogFilesExist()},
            {QStringLiteral("installed"), QJsonArray::fromStringList(installedIds)},
            {QStringLiteral("installedSize"), double(installedSize)},
            {QStringLiteral("freeSpace"), double(worker.getDownloadManagerIface()->getFreeSpace())},
            {QStringLiteral("pausedByUser"), SavedQueue::pausedByUser()},
            {QStringLiteral("pending"), pendingInstalls()},
            {QStringLiteral("queue"), queue()},
            {QStringLiteral("update"), update()},
            {QStringLiteral("backup"), backup()},
            {QStringLiteral("bytesReceived"), double(SavedQueue::bytesReceived())},
            {QStringLiteral("activeProcess"), double(DataSetLock::holder())}};
    }

    static void show(const QJsonObject &status, Console &console)
    {
        const auto text = [&status](const char *key) {
            return status.value(QLatin1String(key)).toString();
        };
        const auto number = [&status](const char *key) {
            return qint64(status.value(QLatin1String(key)).toDouble());
        };
        const auto line = [&console](const QString &label, const QString &value) {
            console.result((label + QLatin1Char(':')).leftJustified(18) + value);
        };
        const auto orNone = [](const QString &value) {
            return value.isEmpty() ? tr("none") : value;
        };
        line(tr("Map data"), text("dataRoot"));
        line(tr("Server"), text("baseUri"));
        line(tr("Maps version"), orNone(text("mapsVersion")));
        line(tr("MOS version"), orNone(text("mosVersion")));
        line(tr("Catalogue"),
             status.value(QLatin1String("catalogReady")).toBool()
                 ? tr("complete")
                 : tr("missing; run \"vexa-maps refresh\""));
        line(tr("Free space"), RegionWords::size(number("freeSpace")));
        const QStringList installed =
            status.value(QLatin1String("installed")).toVariant().toStringList();
        line(tr("Installed"),
             installed.isEmpty() ? tr("none")
                                 : tr("%1 (%2)").arg(installed.join(QLatin1String(", ")),
                                                     RegionWords::size(number("installedSize"))));
        if (number("activeProcess") > 0)
            line(tr("At work"), tr("process %1").arg(number("activeProcess")));
        if (status.value(QLatin1String("pausedByUser")).toBool())
            line(tr("Paused"), tr("by the user; \"vexa-maps resume\" goes on"));
        const QJsonObject update = status.value(QLatin1String("update")).toObject();
        if (!update.isEmpty())
            line(tr("Update"), updateLine(update));
        const QJsonObject backup = status.value(QLatin1String("backup")).toObject();
        if (!backup.isEmpty())
            line(tr("Backup"),
                 tr("version %1, %2; \"vexa-maps update --undo\" goes back to it")
                     .arg(backup.value(QLatin1String("version")).toString(),
                          RegionWords::size(
                              qint64(backup.value(QLatin1String("size")).toDouble()))));
        showPending(status, console);
    }

    static QString updateLine(const QJsonObject &update)
    {
        const QString version = update.value(QLatin1String("version")).toString();
        if (update.value(QLatin1String("ready")).toBool())
            return tr("version %1 is ready; \"vexa-maps update\" puts it in use").arg(version);
        return tr("version %1 is being prepared, %2 regions are there; \"vexa-maps update\" goes "
                  "on")
            .arg(version)
            .arg(update.value(QLatin1String("regions")).toArray().size());
    }

    static void showPending(const QJsonObject &status, Console &console)
    {
        const QJsonArray pending = status.value(QLatin1String("pending")).toArray();
        if (pending.isEmpty())
            console.result(tr("Nothing is pending."));
        else
            console.result(tr("Pending installs:"));
        for (const QJsonValue &value : pending) {
            const QJsonObject entry = value.toObject();
            console.result(QStringLiteral("  %1  %2")
                               .arg(entry.value(QLatin1String("id")).toString(),
                                    entry.value(QLatin1String("phase")).toString()));
        }
        const QJsonArray queue = status.value(QLatin1String("queue")).toArray();
        if (!queue.isEmpty())
            console.result(tr("Queue of the download engine:"));
        for (const QJsonValue &value : queue) {
            const QJsonObject step = value.toObject();
            console.result(QStringLiteral("  %1  %2  %3")
                               .arg(step.value(QLatin1String("id")).toString(),
                                    step.value(QLatin1String("step")).toString(),
                                    step.value(QLatin1String("url")).toString()));
        }
    }
};

} // namespace

void addStatusCommand(CommandList &commands)
{
    commands.push_back(std::make_unique<StatusCommand>());
}
