// SPDX-License-Identifier: MIT
// The way back, and its end.
#include "catalog/mapcatalog.h"
#include "host/shared/datasetswap.h"
#include "host/shared/datasetupdate.h"
#include "host/shared/installjournal.h"
#include "host/shared/preparedset.h"
#include "plugin/dataroot.h"

namespace {

QString backupSuffix()
{
    return QStringLiteral("_");
}

// The index of places belongs to the user and not to a version of the maps.
bool carryCityIndexBack()
{
    const QString name = QStringLiteral("/cityindex.xml");
    return replaceFileBy(DataRoot::catalogFolder() + name,
                         DataRoot::catalogFolder(backupSuffix()) + name);
}

} // namespace

QStringList DataSetUpdate::regionsSinceBackup() const
{
    QStringList since;
    if (!DataSetSwap::backupExists())
        return since;
    const QStringList before = PreparedSet::installedIds(backupSuffix());
    const QStringList now = PreparedSet::installedIds(QString());
    for (const QString &id : now) {
        if (!before.contains(id))
            since.append(id);
    }
    return since;
}

bool DataSetUpdate::refuse(const QString &why)
{
    m_errorString = why;
    Q_EMIT stateChanged();
    return false;
}

bool DataSetUpdate::undo(bool force)
{
    if (m_running)
        return refuse(tr("An update is under way."));
    DataSetSwap swap {QString(UpdateSuffix)};
    if (!DataSetSwap::backupExists())
        return refuse(tr("There is no backup to go back to."));
    const QStringList pending = InstallJournal(InstallJournal::defaultPath()).ids();
    if (!pending.isEmpty())
        return refuse(tr("Installs are pending (%1).").arg(pending.join(QLatin1String(", "))));
    const QStringList since = regionsSinceBackup();
    if (!since.isEmpty() && !force)
        return refuse(tr("Regions were installed since and are not in the backup: %1.")
                          .arg(since.join(QLatin1String(", "))));
    if (!swap.checkUndo())
        return refuse(swap.errorString());
    m_fromVersion = DataSetSwap::backupVersion();
    m_targetVersion = m_main->installedMapsVersion();
    if (!noteState(UpdateState::Phase::Undoing) || !carryCityIndexBack())
        return refuse(tr("The city index and the state of the update cannot be written."));
    if (!swap.undo(m_main))
        return refuse(swap.errorString());
    m_main->updateCatalog();
    noteState(UpdateState::Phase::Ready); // Without it the folders tell.
    m_errorString.clear();
    Q_EMIT stateChanged();
    return true;
}

bool DataSetUpdate::clearBackup()
{
    if (m_running)
        return refuse(tr("An update is under way."));
    DataSetSwap swap {QString(UpdateSuffix)};
    if (!swap.clearBackup())
        return refuse(swap.errorString());
    m_errorString.clear();
    Q_EMIT stateChanged();
    return true;
}
