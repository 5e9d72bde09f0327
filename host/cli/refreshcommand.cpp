// SPDX-License-Identifier: MIT
// refresh: fetches the newest catalogue.
#include "host/cli/command.h"
#include "host/cli/lockedsession.h"
#include "host/cli/regionlookup.h"
#include "host/cli/sessionrun.h"
#include "host/cli/updateguard.h"
#include "host/shared/catalogrefresher.h"
#include "host/shared/installjournal.h"
#include "host/shared/savedqueue.h"
#include <QJsonObject>

namespace {

using Result = CatalogRefresher::Result;

QString resultName(Result result)
{
    switch (result) {
    case Result::Adopted:
        return QStringLiteral("adopted");
    case Result::Renewed:
        return QStringLiteral("renewed");
    case Result::NewerExists:
        return QStringLiteral("newerExists");
    case Result::NetworkFailed:
    case Result::CatalogueFailed:
    case Result::DiskFailed:
    case Result::Aborted:
    case Result::None:
        break;
    }
    return QStringLiteral("failed");
}

int exitCodeOf(Result result)
{
    switch (result) {
    case Result::Adopted:
    case Result::Renewed:
    case Result::NewerExists:
        return ExitOk;
    case Result::NetworkFailed:
        return ExitNetwork;
    default:
        return ExitFailure;
    }
}

class RefreshCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(RefreshCommand)

public:
    QString name() const override { return QStringLiteral("refresh"); }
    QString summary() const override
    {
        return tr("Fetch the newest catalogue and the regions' names.");
    }
    QStringList examples() const override
    {
        return {QStringLiteral("refresh"),
                QStringLiteral("refresh --base-uri http://localhost:8080/map5/")};
    }
    int run(const QCommandLineParser &, CommandContext &context) override
    {
        DataSetLock lock;
        if (const int code = takeLock(&lock, context))
            return code;
        if (const int code = refuseDuringUpdate(context))
            return code;
        const QStringList pending = InstallJournal(InstallJournal::defaultPath()).ids();
        if (!pending.isEmpty()) {
            // Their archives belong to the catalogue that they were chosen from.
            context.console.error(tr("Installs are pending (%1): run \"vexa-maps resume\" or "
                                     "\"vexa-maps cancel\" first.")
                                      .arg(pending.join(QLatin1String(", "))));
            return ExitFailure;
        }
        EngineSession session(context.baseUri);
        CatalogRefresher refresher(session.catalog(), session.downloads(), context.baseUri);
        const int code = refresh(session, refresher, context);
        report(session, refresher, context);
        return code;
    }

private:
    static int refresh(EngineSession &session, CatalogRefresher &refresher, CommandContext &context)
    {
        SessionRun run(&session, &context, false);
        QObject::connect(&run, &SessionRun::started, &refresher, &CatalogRefresher::start);
        QObject::connect(&refresher, &CatalogRefresher::progress, &run, &SessionRun::noteNews);
        QObject::connect(&refresher, &CatalogRefresher::fetching, &run,
                         [&context, &run](const QString &fileName) {
                             run.noteNews();
                             const QString line = tr("Fetching %1").arg(fileName);
                             if (context.console.isTerminal())
                                 context.console.progress(line);
                             else
                                 context.console.detail(line);
                         });
        QObject::connect(&refresher, &CatalogRefresher::finished, &run,
                         [&run, &refresher] { run.endRun(exitCodeOf(refresher.result())); });
        const int code = run.run();
        refresher.abort(); // Only after a silent server or Ctrl-C; the engine is gone by now.
        SavedQueue::removeIf(
            [](const Request &request) { return CatalogRefresher::isOurs(request.id); });
        return code;
    }

    static void report(EngineSession &session, const CatalogRefresher &refresher,
                       CommandContext &context)
    {
        const QString installed = session.catalog()->installedMapsVersion();
        if (context.json)
            context.console.json(QJsonDocument(
                QJsonObject {{QStringLiteral("result"), resultName(refresher.result())},
                             {QStringLiteral("serverVersion"), refresher.serverVersion()},
                             {QStringLiteral("mapsVersion"), installed},
                             {QStringLiteral("namesCode"), refresher.namesCode()},
                             {QStringLiteral("error"), refresher.errorString()}}));
        if (!refresher.errorString().isEmpty())
            context.console.error(refresher.errorString());
        switch (refresher.result()) {
        case Result::Adopted:
            context.console.note(tr("The maps are now at version %1.").arg(installed));
            break;
        case Result::Renewed:
            context.console.note(tr("The catalogue of version %1 is up to date.").arg(installed));
            break;
        case Result::NewerExists:
            context.console.note(
                tr("The server has version %1; installed regions stay at version %2.")
                    .arg(refresher.serverVersion(), installed));
            break;
        default:
            return;
        }
        if (refresher.namesCode().isEmpty() && refresher.result() != Result::NewerExists)
            context.console.note(tr("The server has no region names in your language."));
    }
};

} // namespace

void addRefreshCommand(CommandList &commands)
{
    commands.push_back(std::make_unique<RefreshCommand>());
}
