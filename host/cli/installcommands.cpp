// SPDX-License-Identifier: MIT
// install and resume: work that the engine does until nothing is pending.
#include "catalog/mapregion.h"
#include "host/cli/command.h"
#include "host/cli/lockedsession.h"
#include "host/cli/regionlookup.h"
#include "host/cli/sessionrun.h"
#include "host/cli/updateguard.h"
#include "host/shared/installjournal.h"
#include "host/shared/regionfiles.h"
#include "plugin/dataroot.h"
#include <algorithm>
#include <QJsonArray>
#include <QJsonObject>

namespace {

int exitCodeOf(const QHash<QString, RegionStatus> &failures)
{
    if (failures.isEmpty())
        return ExitOk;
    const bool network =
        std::all_of(failures.begin(), failures.end(), [](const RegionStatus &status) {
            return status.failure == FailureKind::Network;
        });
    return network ? ExitNetwork : ExitFailure;
}

QJsonObject reportOf(EngineSession &session, const QString &id)
{
    const RegionInstaller *installer = session.installer();
    const MapRegion *region = session.catalog()->region(id);
    return {{QStringLiteral("id"), id},
            {QStringLiteral("state"), installer->state(id)},
            {QStringLiteral("reason"), installer->reason(id)},
            {QStringLiteral("installed"), region && region->installed()}};
}

/** Works until the installer has nothing left to do. */
class WorkCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(WorkCommand)

protected:
    static int workOff(EngineSession &session, CommandContext &context, const QStringList &ids)
    {
        SessionRun run(&session, &context, true);
        RegionInstaller *installer = session.installer();
        QObject::connect(installer, &RegionInstaller::busyChanged, &run, [&run, installer] {
            if (!installer->busy())
                run.endRun(exitCodeOf(run.failures()));
        });
        QObject::connect(&run, &SessionRun::started, &run, [&run, installer] {
            if (!installer->busy())
                run.endRun(exitCodeOf(run.failures()));
        });
        const int code = run.run();
        if (context.json) {
            QJsonArray report;
            for (const QString &id : ids)
                report.append(reportOf(session, id));
            context.console.json(QJsonDocument(report));
        }
        return code;
    }
};

class InstallCommand : public WorkCommand
{
    Q_DECLARE_TR_FUNCTIONS(InstallCommand)

public:
    QString name() const override { return QStringLiteral("install"); }
    QString summary() const override
    {
        return tr("Download and install regions, or fetch installed ones again.");
    }
    QString arguments() const override { return QStringLiteral("ID..."); }
    Arguments wants() const override { return Arguments::AtLeastOne; }
    QStringList examples() const override
    {
        return {QStringLiteral("install FI"), QStringLiteral("install Finland Sweden"),
                QStringLiteral("install FI --timeout 120 --json")};
    }
    int run(const QCommandLineParser &parser, CommandContext &context) override
    {
        DataSetLock lock;
        if (const int code = takeLock(&lock, context))
            return code;
        if (const int code = refuseDuringUpdate(context))
            return code;
        const QStringList before = InstallJournal(InstallJournal::defaultPath()).ids();
        EngineSession session(context.baseUri);
        const auto ids = RegionLookup(session.catalog())
                             .resolveAll(parser.positionalArguments(), context.console);
        if (!ids)
            return ExitUnknownRegion;
        if (!before.isEmpty())
            context.console.note(tr("Going on with what an earlier run left: %1")
                                     .arg(before.join(QLatin1String(", "))));
        QStringList all = before;
        for (const QString &id : *ids) {
            if (before.contains(id))
                continue;
            if (!session.installer()->install(id)) {
                context.console.error(session.installer()->refusal());
                return ExitFailure;
            }
            all.append(id);
        }
        return workOff(session, context, all);
    }
};

class ResumeCommand : public WorkCommand
{
    Q_DECLARE_TR_FUNCTIONS(ResumeCommand)

public:
    QString name() const override { return QStringLiteral("resume"); }
    QString summary() const override
    {
        return tr("Go on with installs that an earlier run did not finish.");
    }
    QStringList examples() const override { return {QStringLiteral("resume")}; }
    int run(const QCommandLineParser &, CommandContext &context) override
    {
        DataSetLock lock;
        if (const int code = takeLock(&lock, context))
            return code;
        if (const int code = refuseDuringUpdate(context))
            return code;
        EngineSession session(context.baseUri);
        const QStringList ids = InstallJournal(InstallJournal::defaultPath()).ids();
        if (ids.isEmpty())
            context.console.note(tr("Nothing is pending."));
        return workOff(session, context, ids);
    }
};

} // namespace

void addInstallCommands(CommandList &commands)
{
    commands.push_back(std::make_unique<InstallCommand>());
    commands.push_back(std::make_unique<ResumeCommand>());
}
