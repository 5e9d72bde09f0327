// SPDX-License-Identifier: MIT
// Where each region stands, as QML asks for it.
#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/shared/regioninstaller.h"

RegionStatus RegionInstaller::status(const QString &id) const
{
    const auto found = m_status.constFind(id);
    if (found != m_status.constEnd())
        return *found;
    RegionStatus status;
    const MapRegion *region = m_catalog->region(id);
    if (region && region->installed())
        status.state = RegionState::Installed;
    return status;
}

QString RegionInstaller::state(const QString &id) const
{
    return RegionWords::name(status(id).state);
}

QString RegionInstaller::waitReason(const QString &id) const
{
    return RegionWords::name(status(id).wait);
}

QString RegionInstaller::reason(const QString &id) const
{
    const RegionStatus current = status(id);
    return current.state == RegionState::Waiting ? RegionWords::reason(current.wait)
                                                 : current.reason;
}

QString RegionInstaller::sentence(const QString &id) const
{
    return RegionWords::sentence(status(id));
}

double RegionInstaller::progress(const QString &id) const
{
    return status(id).fraction();
}

qlonglong RegionInstaller::bytesReceived(const QString &id) const
{
    return status(id).bytes;
}

qlonglong RegionInstaller::bytesTotal(const QString &id) const
{
    return status(id).total;
}

qlonglong RegionInstaller::remainingTime(const QString &id) const
{
    return status(id).remainingMs;
}

void RegionInstaller::setState(const QString &id, RegionState state)
{
    RegionStatus status;
    status.state = state;
    setStatus(id, status);
}

void RegionInstaller::setStatus(const QString &id, const RegionStatus &status)
{
    const RegionStatus before = this->status(id);
    m_status.insert(id, status);
    if (status == before)
        return;
    const bool sameState = status.state == before.state && status.wait == before.wait
        && status.failure == before.failure && status.reason == before.reason;
    if (sameState)
        Q_EMIT progressChanged(id);
    else
        Q_EMIT stateChanged(id);
}

// From now on the catalogue tells.
void RegionInstaller::clearStatus(const QString &id)
{
    m_status.remove(id);
    Q_EMIT stateChanged(id);
}
