// SPDX-License-Identifier: MIT
// list and info: what there is. They need no lock and change nothing.
#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/cli/command.h"
#include "host/cli/lockedsession.h"
#include "host/cli/regionlookup.h"
#include "host/shared/attempttag.h"
#include "host/shared/regionfiles.h"
#include "host/shared/regionstatus.h"
#include "plugin/dataroot.h"
#include <functional>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>
#include <QUrl>

namespace {

// Deeper trees exist only in files that are made to harm; their rows are shown at this depth.
constexpr int MaxIndent = 40;

QJsonObject regionJson(const MapRegion &region)
{
    return {{QStringLiteral("id"), region.id()},
            {QStringLiteral("name"), RegionLookup::displayName(region)},
            {QStringLiteral("catalogName"), region.name()},
            {QStringLiteral("downloadSize"), double(region.downloadSize())},
            {QStringLiteral("installed"), region.installed()}};
}

class ListCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(ListCommand)

public:
    QString name() const override { return QStringLiteral("list"); }
    QString summary() const override
    {
        return tr("Show the regions that can be downloaded, and which are installed.");
    }
    QStringList examples() const override
    {
        return {QStringLiteral("list"), QStringLiteral("list --search fin"),
                QStringLiteral("list --installed --json")};
    }
    void addOptions(QCommandLineParser &parser) override
    {
        parser.addOptions({
            {QStringLiteral("search"), tr("Only regions whose id or name contains this text."),
             tr("TEXT")},
            {QStringLiteral("installed"), tr("Only installed regions.")},
        });
    }
    int run(const QCommandLineParser &parser, CommandContext &context) override
    {
        if (const int code = settleData(context))
            return code;
        MapCatalog catalog;
        catalog.updateCatalog();
        const RegionLookup regions(&catalog);
        if (regions.isEmpty() && !context.json) {
            context.console.error(
                tr("There is no catalogue yet: run \"vexa-maps refresh\" first."));
            return ExitFailure;
        }
        m_text = parser.value(QStringLiteral("search"));
        m_installedOnly = parser.isSet(QStringLiteral("installed"));
        collect(regions);
        return context.json ? showJson(context) : showTree(context);
    }

private:
    struct Row
    {
        const MapRegion *region;
        QString parentId;
        int depth;
        bool wanted; // else it is there because something below it is
    };

    // With a stack of its own: the tree may be deeper than the thread's.
    void collect(const RegionLookup &regions)
    {
        QList<Row> stack;
        push(stack, regions.topLevel(), QString(), 0);
        while (!stack.isEmpty()) {
            const Row row = stack.takeLast();
            m_rows.append(row);
            push(stack, regions.sorted(RegionLookup::childrenOf(*row.region)), row.region->id(),
                 row.depth + 1);
        }
        dropUnwanted();
    }

    void push(QList<Row> &stack, const QList<MapRegion *> &regions, const QString &parentId,
              int depth) const
    {
        for (auto region = regions.crbegin(); region != regions.crend(); ++region) {
            const bool wanted = (!m_installedOnly || (*region)->installed())
                && (m_text.isEmpty() || RegionLookup::matches(**region, m_text));
            stack.append({*region, parentId, depth, wanted});
        }
    }

    // Backwards, since parents stand in front of their children: keeps the way to wanted rows.
    void dropUnwanted()
    {
        QList<Row> kept;
        int needed = -1; // depth of the ancestors that are still needed
        for (auto row = m_rows.crbegin(); row != m_rows.crend(); ++row) {
            if (!row->wanted && row->depth != needed)
                continue;
            kept.prepend(*row);
            needed = row->depth - 1;
        }
        m_rows = kept;
    }

    int showTree(CommandContext &context) const
    {
        int wanted = 0;
        for (const Row &row : m_rows) {
            const MapRegion &region = *row.region;
            const QString mark = region.installed() ? QStringLiteral("*") : QStringLiteral(" ");
            const QString label = QString(qMin(row.depth, MaxIndent) * 2, QLatin1Char(' '))
                + RegionLookup::displayName(region);
            const QString size =
                region.downloadSize() > 0 ? RegionWords::size(region.downloadSize()) : QString();
            context.console.result(
                QStringLiteral("%1 %2 %3  %4")
                    .arg(mark, label.leftJustified(44), size.rightJustified(10), region.id()));
            wanted += row.wanted ? 1 : 0;
        }
        if (wanted == 0)
            context.console.note(tr("No region matches."));
        else
            context.console.note(wanted == 1 ? tr("1 region; * is installed")
                                             : tr("%1 regions; * is installed").arg(wanted));
        return ExitOk;
    }

    int showJson(CommandContext &context) const
    {
        QJsonArray regions;
        for (const Row &row : m_rows) {
            if (!row.wanted)
                continue;
            QJsonObject object = regionJson(*row.region);
            object.insert(QStringLiteral("parent"),
                          row.parentId.isEmpty() ? QJsonValue() : QJsonValue(row.parentId));
            object.insert(QStringLiteral("depth"), row.depth);
            regions.append(object);
        }
        context.console.json(QJsonDocument(regions));
        return ExitOk;
    }

    QString m_text;
    bool m_installedOnly = false;
    QList<Row> m_rows;
};

class InfoCommand : public Command
{
    Q_DECLARE_TR_FUNCTIONS(InfoCommand)

public:
    QString name() const override { return QStringLiteral("info"); }
    QString summary() const override { return tr("Show all that is known of one region."); }
    QString arguments() const override { return QStringLiteral("ID"); }
    Arguments wants() const override { return Arguments::One; }
    QStringList examples() const override
    {
        return {QStringLiteral("info FI"), QStringLiteral("info Finland --json")};
    }
    int run(const QCommandLineParser &parser, CommandContext &context) override
    {
        if (const int code = settleData(context))
            return code;
        MapCatalog catalog;
        catalog.updateCatalog();
        const auto id =
            RegionLookup(&catalog).resolve(parser.positionalArguments().first(), context.console);
        if (!id)
            return ExitUnknownRegion;
        const MapRegion &region = *catalog.region(*id);
        const QString tiles = DataRoot::tileCacheFolder();
        QJsonObject object = regionJson(region);
        object.insert(QStringLiteral("url"),
                      QUrl(context.baseUri)
                          .resolved(QUrl(region.downloadUrl()))
                          .toString(QUrl::FullyEncoded));
        QStringList children;
        const QList<MapRegion *> below = RegionLookup::childrenOf(region);
        for (const MapRegion *child : below)
            children.append(child->id());
        object.insert(QStringLiteral("children"), QJsonArray::fromStringList(children));
        if (region.installed()) {
            const RemovalFigures figures = RegionFiles::removalFigures(&catalog, *id, tiles);
            object.insert(QStringLiteral("tiles"), int(region.fileList().size()));
            object.insert(QStringLiteral("sizeOnDisk"),
                          double(RegionFiles::sizeOnDisk(region, tiles)));
            object.insert(QStringLiteral("sharedTiles"), figures.keptFiles);
            object.insert(QStringLiteral("freedByRemoval"), double(figures.freedBytes));
        }
        if (context.json)
            context.console.json(QJsonDocument(object));
        else
            show(object, context.console);
        return ExitOk;
    }

private:
    static void show(const QJsonObject &object, Console &console)
    {
        const auto line = [&console](const QString &label, const QString &value) {
            console.result((label + QLatin1Char(':')).leftJustified(18) + value);
        };
        const auto size = [&object](const char *key) {
            return RegionWords::size(qint64(object.value(QLatin1String(key)).toDouble()));
        };
        line(tr("Id"), object.value(QLatin1String("id")).toString());
        line(tr("Name"), object.value(QLatin1String("name")).toString());
        line(tr("In the catalogue"), object.value(QLatin1String("catalogName")).toString());
        line(tr("Download"), size("downloadSize"));
        line(tr("Address"), object.value(QLatin1String("url")).toString());
        const QStringList children =
            object.value(QLatin1String("children")).toVariant().toStringList();
        if (!children.isEmpty())
            line(tr("Contains"), children.join(QLatin1String(", ")));
        if (!object.value(QLatin1String("installed")).toBool()) {
            line(tr("Installed"), tr("no"));
            return;
        }
        line(tr("Installed"), tr("yes"));
        line(tr("Tiles"),
             tr("%1, %2 of them shared with other installed regions")
                 .arg(object.value(QLatin1String("tiles")).toInt())
                 .arg(object.value(QLatin1String("sharedTiles")).toInt()));
        line(tr("On disk"), size("sizeOnDisk"));
        line(tr("Removal frees"), size("freedByRemoval"));
    }
};

} // namespace

void addBrowseCommands(CommandList &commands)
{
    commands.push_back(std::make_unique<ListCommand>());
    commands.push_back(std::make_unique<InfoCommand>());
}
