// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/regionfiles.h"
#include "host/shared/regionrow.h"
#include "host/shared/regionsizes.h"
#include "host/shared/regionsnapshot.h"
#include <memory>
#include <QAbstractListModel>
#include <QHash>
#include <QPointer>
#include <QTimer>
#include <QVariantMap>

class CollationKeys;
class MapCatalog;
class RegionInstaller;

/**
 * All regions of a catalogue for the views of a user interface, flat, one row each: what the
 * catalogue says of the region and where the installer stands with it.
 *
 * The model copies values, because regions die at the catalogue's next load, and follows:
 *
 *  - While a load is under way the rows stay as they are. After its end they are brought up to
 *    date, at most SliceSize regions in one turn of the event loop, so that thousands of regions
 *    never hold up a frame; loading() is true until the last one. Rows of regions that stay are
 *    changed, not replaced: views keep their place, and there is no reset.
 *
 *      load ends --> collecting --> removing --> merging --> idle
 *          ^            |  what the catalogue has now, copied
 *          +------------+  it loads again
 *
 *  - A change of one region's state, progress or installed mark changes its one row at once.
 *  - The size on disk is measured in a thread of its own, when it is first asked for.
 *
 * The rows are in the catalogue's order, children before their parent; RegionFilterModel sorts and
 * filters. GUI thread. Catalogue and installer are not owned; the installer may be null, and then
 * regions are only installed or not.
 */
class RegionModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /** Whether the catalogue loads, or its regions are still being taken over. */
    Q_PROPERTY(bool loading READ loading NOTIFY loadingChanged)

public:
    enum Role {
        RegionIdRole = Qt::UserRole + 1, ///< regionId
        NameRole, ///< name: in the user's language, else the catalogue's
        CatalogNameRole, ///< catalogName
        ParentIdRole, ///< parentId; empty at the top level
        DepthRole, ///< depth; 0 at the top level
        PathRole, ///< path: names of the ancestors, the topmost first, " › " between
        HasChildrenRole, ///< hasChildren
        ChildCountRole, ///< childCount
        DownloadSizeRole, ///< downloadSize in bytes; 0 while unknown
        InstallationSizeRole, ///< installationSize in bytes; 0 while unknown
        DownloadableRole, ///< downloadable: whether the catalogue has an address for it
        InstalledRole, ///< installed
        SizeOnDiskRole, ///< sizeOnDisk in bytes; 0 if not installed, -1 until measured
        StateRole, ///< state: "notInstalled", "queued" and so on; see RegionWords::name()
        WaitReasonRole, ///< waitReason: "pausedByUser", "networkNotPermitted", "noWifi" or empty
        SentenceRole, ///< sentence: where it stands, for the user
        ReasonRole, ///< reason: why it failed or waits, for the user; else empty
        ProgressRole, ///< progress of the current step, 0 to 1; -1 while unknown
        BytesReceivedRole, ///< bytesReceived
        BytesTotalRole, ///< bytesTotal; 0 while unknown
        RemainingTimeRole, ///< remainingTime in ms; -1 while unknown
        PendingRole, ///< pending: whether an install of it is not over
    };
    Q_ENUM(Role)

    /** At most so many regions are looked at in one turn of the event loop. */
    static constexpr int SliceSize = 128;

    /** Begins to take over what the catalogue has now. */
    RegionModel(MapCatalog *catalog, RegionInstaller *installer, QObject *parent = nullptr);
    ~RegionModel() override;

    int count() const;
    bool loading() const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /** The row of the region, or -1. */
    Q_INVOKABLE int rowOf(const QString &id) const;
    /** All roles of a region by their names; empty if there is no such region. */
    Q_INVOKABLE QVariantMap get(const QString &id) const;
    /** For RemovalPreview: what is installed now; nothing while the catalogue loads. */
    QList<InstalledTiles> installedTiles() const;
    /** The folder that holds the tiles of this data set. */
    QString tileFolder() const;

    /** The values behind a row; for proxy models. Valid until the event loop runs. */
    const RegionRow &row(int number) const;
    /** For tests: how many regions were looked at in the current or last taking-over. */
    int lookedAt() const;

Q_SIGNALS:
    void countChanged();
    void loadingChanged();

private:
    enum class Phase { Idle, Collecting, Removing, Merging };

    // Taking over; regionmodel_takeover.cpp.
    void connectSources();
    void onBussyChanged();
    void takeOver();
    void onTurn();
    void setPhase(Phase phase);
    void collectSome();
    void collect(MapRegion *region);
    void prepareMerge();
    void removeSome();
    void dropRows(int first, int last);
    void mergeSome();
    int putRows(int first, size_t end);
    void changeRow(int number, const RegionRow &fresh);
    void endTakeOver();

    // What changes one row.
    void onRegionChanged();
    void onFilesChanged();
    void refresh(const QString &id);
    void changeStatus(RegionRow *row, bool installed, const RegionStatus &status, bool shown);
    void onPendingChanged();
    void requeueSome();
    void onMeasured(const QString &id, qint64 bytes);
    RegionStatus statusOf(const QString &id, bool installed) const;
    void changed(const RegionRow &row, const QVector<int> &roles);

    bool catalogIsLoading() const;
    int numberOf(const RegionRow &row) const;
    const RegionRow *current(const QString &id) const;
    QVariant value(const RegionRow &row, int role) const;
    QString path(const RegionRow &row) const;
    qint64 sizeOnDisk(const RegionRow &row) const;
    void measure(const RegionRow &row) const;
    void noteLoading();

    const QPointer<MapCatalog> m_catalog; // not owned
    const QPointer<RegionInstaller> m_installer; // not owned; may be null
    RegionRows m_rows;
    QHash<QString, RegionRow *> m_byId; // of m_rows
    QTimer m_turns; // of the event loop, while there is something to do
    Phase m_phase = Phase::Idle;
    RegionSnapshot m_snapshot;
    std::vector<bool> m_keeps; // by row: whether it stays, also in its place
    size_t m_cursor = 0; // of the rows while removing, of the snapshot while merging
    int m_lookedAt = 0;
    bool m_inTurn = false;
    bool m_again = false; // the catalogue changed during the turn
    bool m_wasLoading = false;
    QHash<QString, int> m_queue; // pending regions' order
    QStringList m_requeued; // ids whose rows do not have that order yet
    int m_lastOrder = 0;
    const std::unique_ptr<RegionSizes> m_sizes;
    const std::shared_ptr<CollationKeys> m_keys; // of the user's locale
};
