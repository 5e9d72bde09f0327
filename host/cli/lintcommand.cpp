// SPDX-License-Identifier: MIT
// lint: what devices would not read in a publisher's folder as its author meant it.
#include "host/cli/command.h"
#include "host/cli/lintfolder.h"
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

namespace {

class LintCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(LintCommand)

public:
    QString name() const override { return QStringLiteral("lint"); }
    QString summary() const override
    {
        return tr("Look through a content server's folder for what devices would not read.");
    }
    QString arguments() const override { return QStringLiteral("DIR"); }
    QStringList examples() const override
    {
        return {QStringLiteral("lint demo/map5"), QStringLiteral("lint demo/map5 --json"),
                QStringLiteral("lint --base-uri https://maps.example.org/map5/ demo/map5")};
    }
    Arguments wants() const override { return Arguments::Any; }
    bool makesDataFolder() const override { return false; }

    int run(const QCommandLineParser &parser, CommandContext &context) override
    {
        const QStringList given = parser.positionalArguments();
        if (given.size() != 1)
            return usageError(tr("\"lint\" takes one folder."), context.console);
        const QString folder = QDir::cleanPath(given.first());
        if (given.first().isEmpty() || !QDir(folder).isReadable())
            return usageError(tr("The folder \"%1\" cannot be read.").arg(given.first()),
                              context.console);
        LintReport report;
        LintFolder lint(folder, QUrl(context.baseUri), &report);
        lint.onFile = [&context](const QString &file) { context.console.progress(file); };
        lint.check();
        context.console.clearProgress();
        const QList<LintFinding> findings = report.findings();
        if (context.json)
            showJson(folder, report, findings, context.console);
        else
            show(folder, report, findings, context.console);
        return findings.isEmpty() ? ExitOk : ExitFindings;
    }

private:
    static int usageError(const QString &text, Console &console)
    {
        console.error(text);
        console.error(tr("Try \"%1\".").arg(QStringLiteral("vexa-maps lint --help")));
        return ExitUsage;
    }

    static void show(const QString &folder, const LintReport &report,
                     const QList<LintFinding> &findings, Console &console)
    {
        const QString inFolder =
            folder == QLatin1String(".") ? QString() : folder + QLatin1Char('/');
        for (const LintFinding &finding : findings) {
            QString place;
            if (finding.place.line > 0)
                place = QStringLiteral(":%1:%2").arg(finding.place.line).arg(finding.place.column);
            console.result(inFolder + finding.file + place + QLatin1String(": ") + finding.text
                           + QLatin1String(" [") + finding.kind + QLatin1Char(']'));
        }
        console.note(summary(report, int(findings.size())));
    }

    static QString summary(const LintReport &report, int findings)
    {
        QString text = findings == 0 ? tr("Nothing found.") : tr("Found: %1.").arg(findings);
        text += QLatin1Char(' ')
            + tr("Looked at: catalogues %1, regions %2, archives %3, files of names %4.")
                  .arg(report.catalogues)
                  .arg(report.regions)
                  .arg(report.archives)
                  .arg(report.nameFiles);
        if (report.checkSums > 0)
            text += QLatin1Char(' ') + tr("Compared: check sums %1.").arg(report.checkSums);
        if (report.archivesElsewhere > 0)
            text += QLatin1Char(' ')
                + tr("Not looked at: archives on other servers %1.").arg(report.archivesElsewhere);
        return text;
    }

    static void showJson(const QString &folder, const LintReport &report,
                         const QList<LintFinding> &findings, Console &console)
    {
        QJsonArray list;
        for (const LintFinding &finding : findings)
            list.append(QJsonObject {{QStringLiteral("file"), finding.file},
                                     {QStringLiteral("line"), finding.place.line},
                                     {QStringLiteral("column"), finding.place.column},
                                     {QStringLiteral("kind"), finding.kind},
                                     {QStringLiteral("text"), finding.text}});
        console.json(QJsonDocument(
            QJsonObject {{QStringLiteral("folder"), folder},
                         {QStringLiteral("catalogues"), report.catalogues},
                         {QStringLiteral("regions"), report.regions},
                         {QStringLiteral("archives"), report.archives},
                         {QStringLiteral("archivesElsewhere"), report.archivesElsewhere},
                         {QStringLiteral("nameFiles"), report.nameFiles},
                         {QStringLiteral("checkSums"), report.checkSums},
                         {QStringLiteral("findings"), list}}));
    }
};

} // namespace

void addLintCommand(CommandList &commands)
{
    commands.push_back(std::make_unique<LintCommand>());
}
