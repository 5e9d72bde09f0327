// SPDX-License-Identifier: MIT
// Where each region stands, as QML asks for it.
#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/shared/regioninstaller.h"

namespace {

bool isFailed(const RegionStatus &status)
{
    return status.state == RegionState::Failed || status.state == RegionState::Cancelled;
}

} // namespace

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

QStringList RegionInstaller::failed() const
{
    QStringList ids;
    for (auto status = m_status.cbegin(); status != m_status.cend(); ++status) {
        if (isFailed(*status))
            ids.append(status.key());
    }
    ids.sort();
    return ids;
}

bool RegionInstaller::dismiss(const QString &id)
{
    if (!isFailed(status(id)))
        return refuse(tr("The last install of %1 did not fail.").arg(id));
    // A move that fails is not over before its files are cleared away.
    if (m_journal.find(id))
        return refuse(tr("The files of %1 are being put into place already.").arg(id));
    m_refusal.clear();
    m_broken.remove(id);
    clearStatus(id);
    return true;
}

void RegionInstaller::dismissAll()
{
    const QStringList ids = failed();
    for (const QString &id : ids)
        dismiss(id);
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
    if (isFailed(status) != isFailed(before))
        Q_EMIT failedChanged();
}

// From now on the catalogue tells.
void RegionInstaller::clearStatus(const QString &id)
{
    const RegionStatus before = m_status.take(id);
    Q_EMIT stateChanged(id);
    if (isFailed(before))
        Q_EMIT failedChanged();
}
