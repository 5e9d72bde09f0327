// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/regionmodel.h"
#include "host/shared/removalcount.h"
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

/**
 * What the removal of a region would free and what would stay, for a dialog that asks before it
 * (import VexaHost). The files are counted in a thread, so the figures come a moment after the
 * region is set; after each load of the catalogue they are counted anew.
 *
 *     RemovalPreview { id: preview; regions: regionModel; regionId: "FI" }
 *     Text { text: preview.ready ? Words.size(preview.freedBytes) : "" }
 *
 * QML makes it. GUI thread. The RegionModel is not owned.
 */
class RemovalPreview : public QObject
{
    Q_OBJECT
    Q_PROPERTY(RegionModel *regions READ regions WRITE setRegions NOTIFY regionsChanged)
    /** The region; empty, the default, for none. */
    Q_PROPERTY(QString regionId READ regionId WRITE setRegionId NOTIFY regionIdChanged)
    /** Whether the figures are this region's; until then they are 0. */
    Q_PROPERTY(bool ready READ ready NOTIFY changed)
    /** 0, as all others, if the region is not installed. */
    Q_PROPERTY(int freedFiles READ freedFiles NOTIFY changed)
    Q_PROPERTY(qlonglong freedBytes READ freedBytes NOTIFY changed)
    /** Files that stay because other installed regions need them. */
    Q_PROPERTY(int keptFiles READ keptFiles NOTIFY changed)
    Q_PROPERTY(qlonglong keptBytes READ keptBytes NOTIFY changed)
    /** Ids of those regions, in the catalogue's order. */
    Q_PROPERTY(QStringList neededBy READ neededBy NOTIFY changed)

public:
    explicit RemovalPreview(QObject *parent = nullptr);
    ~RemovalPreview() override;

    RegionModel *regions() const;
    void setRegions(RegionModel *regions);
    QString regionId() const;
    void setRegionId(const QString &id);
    bool ready() const;
    int freedFiles() const;
    qlonglong freedBytes() const;
    int keptFiles() const;
    qlonglong keptBytes() const;
    QStringList neededBy() const;

Q_SIGNALS:
    void regionsChanged();
    void regionIdChanged();
    void changed();

private:
    void count();
    void onCounted(const RemovalFigures &figures);
    void onLoadingChanged();
    void forget();

    QPointer<RegionModel> m_regions;
    QString m_id;
    RemovalFigures m_figures;
    bool m_ready = false;
    RemovalCount m_count;
};
