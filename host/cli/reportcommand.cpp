// SPDX-License-Identifier: MIT
// report: one file for support. It needs no lock and changes nothing but that file.
#include "host/cli/command.h"
#include "host/cli/reporttext.h"
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QSaveFile>

namespace {

const QLatin1String ForceOption("force");

class ReportCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(ReportCommand)

public:
    QString name() const override { return QStringLiteral("report"); }
    QString summary() const override
    {
        return tr("Write a file for support, without anything personal.");
    }
    QString arguments() const override { return QStringLiteral("[FILE]"); }
    QStringList examples() const override
    {
        return {QStringLiteral("report"), QStringLiteral("report -"),
                QStringLiteral("report --force /tmp/maps.txt")};
    }
    void addOptions(QCommandLineParser &parser) override
    {
        parser.addOption({ForceOption, tr("Replace a file that is there.")});
    }
    Arguments wants() const override { return Arguments::Any; }
    bool makesDataFolder() const override { return false; }

    int run(const QCommandLineParser &parser, CommandContext &context) override
    {
        const QStringList given = parser.positionalArguments();
        if (given.size() > 1) {
            context.console.error(tr("\"report\" takes one file."));
            context.console.error(tr("Try \"%1\".").arg(QStringLiteral("vexa-maps report --help")));
            return ExitUsage;
        }
        const QString path = given.value(0, QStringLiteral("vexa-report.txt"));
        const QString text = ReportText(context.baseUri).text();
        if (path == QLatin1String("-"))
            return show(text, context);
        QString error;
        if (!write(path, text.toUtf8(), parser.isSet(ForceOption), &error)) {
            context.console.error(error);
            return ExitFailure;
        }
        if (context.json)
            context.console.json(QJsonDocument(
                QJsonObject {{QStringLiteral("file"), QFileInfo(path).absoluteFilePath()}}));
        context.console.note(
            tr("The report is in %1. Look through it before you send it.").arg(path));
        return ExitOk;
    }

private:
    static int show(const QString &text, CommandContext &context)
    {
        if (context.json)
            context.console.json(QJsonDocument(QJsonObject {{QStringLiteral("report"), text}}));
        else
            context.console.result(text.trimmed());
        return ExitOk;
    }

    static bool write(const QString &path, const QByteArray &text, bool force, QString *error)
    {
        if (!force && (QFileInfo::exists(path) || QFileInfo(path).isSymLink())) {
            *error =
                tr("%1 is there already. Name another file, or replace it with --force.").arg(path);
            return false;
        }
        QSaveFile file(path);
        if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
            return true;
        *error = tr("%1 cannot be written: %2.").arg(path, file.errorString());
        return false;
    }
};

} // namespace

void addReportCommand(CommandList &commands)
{
    commands.push_back(std::make_unique<ReportCommand>());
}
