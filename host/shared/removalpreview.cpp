// SPDX-License-Identifier: MIT
#include "host/shared/removalpreview.h"

#include <utility>

RemovalPreview::RemovalPreview(QObject *parent)
    : QObject(parent)
{
    connect(&m_count, &RemovalCount::counted, this, &RemovalPreview::onCounted);
}

RemovalPreview::~RemovalPreview() = default;

RegionModel *RemovalPreview::regions() const
{
    return m_regions;
}

void RemovalPreview::setRegions(RegionModel *regions)
{
    if (regions == m_regions)
        return;
    if (m_regions)
        m_regions->disconnect(this);
    m_regions = regions;
    if (regions)
        connect(regions, &RegionModel::loadingChanged, this, &RemovalPreview::onLoadingChanged);
    Q_EMIT regionsChanged();
    count();
}

QString RemovalPreview::regionId() const
{
    return m_id;
}

void RemovalPreview::setRegionId(const QString &id)
{
    if (id == m_id)
        return;
    m_id = id;
    Q_EMIT regionIdChanged();
    count();
}

bool RemovalPreview::ready() const
{
    return m_ready;
}

int RemovalPreview::freedFiles() const
{
    return m_figures.freedFiles;
}

qlonglong RemovalPreview::freedBytes() const
{
    return m_figures.freedBytes;
}

int RemovalPreview::keptFiles() const
{
    return m_figures.keptFiles;
}

qlonglong RemovalPreview::keptBytes() const
{
    return m_figures.keptBytes;
}

QStringList RemovalPreview::neededBy() const
{
    return m_figures.neededBy;
}

void RemovalPreview::forget()
{
    m_count.cancel();
    m_figures = RemovalFigures();
    if (!std::exchange(m_ready, false))
        return;
    Q_EMIT changed();
}

// The end of a load counts; in its middle nothing can be told.
void RemovalPreview::count()
{
    forget();
    if (!m_id.isEmpty() && m_regions && !m_regions->loading())
        m_count.start(m_regions->installedTiles(), m_id, m_regions->tileFolder());
}

void RemovalPreview::onLoadingChanged()
{
    if (!m_regions->loading())
        count();
}

void RemovalPreview::onCounted(const RemovalFigures &figures)
{
    m_figures = figures;
    m_ready = true;
    Q_EMIT changed();
}
