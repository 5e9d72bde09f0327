// SPDX-License-Identifier: MIT
#include "host/cli/updatepreview.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/cli/lockedsession.h"
#include "host/cli/regionlookup.h"
#include "host/cli/signalwatcher.h"
#include "host/shared/datasetswap.h"
#include "host/shared/updateinspection.h"
#include "plugin/dataroot.h"
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

namespace {

using namespace UpdatePreview;

constexpr int MaxTilesShown = 5; // of those in danger; JSON has all

class PreviewReport
{
    Q_DECLARE_TR_FUNCTIONS(PreviewReport)

public:
    PreviewReport(MapCatalog *catalog, const UpdateInspection &inspection)
        : m_catalog(catalog)
        , m_inspection(inspection)
        , m_preview(inspection.preview())
    { }

    QJsonObject json() const
    {
        QJsonObject object {
            {QStringLiteral("dryRun"), true},
            {QStringLiteral("upToDate"), m_inspection.isUpToDate()},
            {QStringLiteral("mapsVersion"), m_inspection.installedVersion()},
            {QStringLiteral("serverVersion"), m_inspection.serverVersion()},
            {QStringLiteral("complete"), m_preview.isWhole},
            {QStringLiteral("downloadBytes"), double(m_preview.downloadBytes)},
            {QStringLiteral("newSetBytes"), double(m_preview.newSetBytes)},
            {QStringLiteral("peakBytes"), double(m_preview.peakBytes)},
            {QStringLiteral("freeBytes"), double(m_inspection.freeBytes())},
            {QStringLiteral("backupBytes"), double(m_inspection.backupBytes())},
            {QStringLiteral("error"), m_inspection.errorString()},
        };
        addTiles(m_preview.tiles, &object);
        QJsonArray regions;
        for (const Region &region : m_preview.regions)
            regions.append(regionJson(region));
        object.insert(QStringLiteral("regions"), regions);
        return object;
    }

    void show(Console &console) const
    {
        console.result(tr("Version %1 is installed, the server has %2.")
                           .arg(m_inspection.installedVersion(), m_inspection.serverVersion()));
        for (const Region &region : m_preview.regions)
            showRegion(region, console);
        if (!m_preview.isWhole)
            console.result(tr("What follows leaves out the regions whose archive is not known."));
        console.result(tr("In total %1 to download; %2.")
                           .arg(size(m_preview.downloadBytes), words(m_preview.tiles)));
        console.result(tr("The new maps take %1. Until the update is done, up to %2 are needed "
                          "beside the maps in use; %3 are free.")
                           .arg(size(m_preview.newSetBytes), size(m_preview.peakBytes),
                                size(m_inspection.freeBytes())));
        console.result(
            tr("Removing the backup afterwards frees %1.").arg(size(m_inspection.backupBytes())));
        if (DataSetSwap::backupExists())
            console.result(tr("The backup of the last update is still there: before an update, "
                              "remove it with \"vexa-maps update --clear-backup\"."));
    }

private:
    static QString size(qint64 bytes) { return RegionWords::size(bytes); }

    static QString words(const TileChanges &tiles)
    {
        return tr("tiles: %1 new, %2 of another size, %3 of the same size, %4 gone")
            .arg(tiles.added)
            .arg(tiles.resized)
            .arg(tiles.sameSize)
            .arg(tiles.gone);
    }

    static void addTiles(const TileChanges &tiles, QJsonObject *object)
    {
        object->insert(QStringLiteral("addedTiles"), tiles.added);
        object->insert(QStringLiteral("resizedTiles"), tiles.resized);
        object->insert(QStringLiteral("sameSizeTiles"), tiles.sameSize);
        object->insert(QStringLiteral("goneTiles"), tiles.gone);
    }

    QJsonObject regionJson(const Region &region) const
    {
        QJsonArray endangered;
        for (const EndangeredTile &tile : region.endangered)
            endangered.append(QJsonObject {
                {QStringLiteral("tile"), tile.tile},
                {QStringLiteral("neededBy"), QJsonArray::fromStringList(tile.neededBy)}});
        QJsonObject object {{QStringLiteral("id"), region.id},
                            {QStringLiteral("name"), name(region.id)},
                            {QStringLiteral("lacking"), region.isLacking},
                            {QStringLiteral("problem"), region.problem},
                            {QStringLiteral("downloadBytes"), double(region.downloadBytes)},
                            {QStringLiteral("installedBytes"), double(region.installedBytes)},
                            {QStringLiteral("endangered"), endangered}};
        addTiles(region.tiles, &object);
        return object;
    }

    void showRegion(const Region &region, Console &console) const
    {
        if (region.isLacking) {
            console.result(tr("%1: the new version has no such region.").arg(label(region.id)));
            return;
        }
        if (!region.problem.isEmpty()) {
            console.result(QStringLiteral("%1: %2").arg(label(region.id), region.problem));
            return;
        }
        console.result(tr("%1: %2 to download, %3 on the disk; %4.")
                           .arg(label(region.id), size(region.downloadBytes),
                                size(region.installedBytes), words(region.tiles)));
        if (region.endangered.isEmpty())
            return;
        console.result(tr("  Installed alone over its old version, it would take tiles from other "
                          "regions, %1 in all:")
                           .arg(region.endangered.size()));
        for (int i = 0; i < int(region.endangered.size()) && i < MaxTilesShown; ++i) {
            const EndangeredTile &tile = region.endangered.at(i);
            QStringList needing;
            for (const QString &id : tile.neededBy)
                needing.append(label(id));
            console.result(
                QStringLiteral("    %1: %2").arg(tile.tile, needing.join(QLatin1String(", "))));
        }
        if (region.endangered.size() > MaxTilesShown)
            console.result(
                tr("    and %1 more").arg(int(region.endangered.size()) - MaxTilesShown));
    }

    QString name(const QString &id) const
    {
        const MapRegion *region = m_catalog->region(id);
        return region ? RegionLookup::displayName(*region) : id;
    }

    QString label(const QString &id) const { return QStringLiteral("%1 (%2)").arg(id, name(id)); }

    MapCatalog *const m_catalog; // not owned
    const UpdateInspection &m_inspection;
    const Preview &m_preview;
};

int exitCodeOf(const UpdateInspection &inspection)
{
    if (inspection.wasAborted())
        return ExitInterrupted;
    switch (inspection.failure()) {
    case FailureKind::None:
        return ExitOk;
    case FailureKind::Network:
        return ExitNetwork;
    default:
        return ExitFailure;
    }
}

} // namespace

int previewUpdate(CommandContext &context)
{
    if (const int code = settleData(context))
        return code;
    // A catalogue object would make the folders that are missing.
    if (!QFileInfo::exists(DataRoot::catalogFolder())
        || !QFileInfo::exists(DataRoot::tileCacheFolder())) {
        context.console.error(PreviewReport::tr("There are no maps yet: run \"vexa-maps refresh\" "
                                                "first."));
        return ExitFailure;
    }
    MapCatalog catalog;
    catalog.updateCatalog();
    UpdateInspection inspection(&catalog, context.baseUri, context.timeoutMs);
    QObject::connect(context.signalWatcher, &SignalWatcher::interrupted, &inspection,
                     &UpdateInspection::abort);
    QObject::connect(&inspection, &UpdateInspection::looking, &inspection,
                     [&context](const QString &fileName) {
                         const QString line = PreviewReport::tr("Looking at %1").arg(fileName);
                         if (context.console.isTerminal())
                             context.console.progress(line);
                         else
                             context.console.detail(line);
                     });
    const bool inspected = inspection.inspect();
    context.console.clearProgress();
    context.console.detail(PreviewReport::tr("The server sent %1.")
                               .arg(RegionWords::size(inspection.bytesReceived())));
    const PreviewReport report(&catalog, inspection);
    if (context.json)
        context.console.json(QJsonDocument(report.json()));
    if (!inspected)
        context.console.error(inspection.errorString());
    else if (inspection.isUpToDate() && !context.json)
        context.console.result(
            PreviewReport::tr("Up to date: version %1.").arg(inspection.installedVersion()));
    else if (!context.json)
        report.show(context.console);
    return exitCodeOf(inspection);
}
