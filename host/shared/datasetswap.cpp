// SPDX-License-Identifier: MIT
#include "host/shared/datasetswap.h"

#include "catalog/mapcatalog.h"
#include "plugin/dataroot.h"
#include <QDir>
#include <QDirIterator>

namespace {

const QString Backup = QStringLiteral("_");

bool moveFolders(const QString &from, const QString &to)
{
    QDir dir;
    const QString voices = QStringLiteral("/voices");
    if (dir.exists(DataRoot::tileCacheFolder() + voices)
        && !dir.rename(DataRoot::tileCacheFolder() + voices,
                       DataRoot::tileCacheFolder(from) + voices))
        return false;
    return dir.rename(DataRoot::catalogFolder(), DataRoot::catalogFolder(to))
        && dir.rename(DataRoot::catalogFolder(from), DataRoot::catalogFolder())
        && dir.rename(DataRoot::tileCacheFolder(), DataRoot::tileCacheFolder(to))
        && dir.rename(DataRoot::tileCacheFolder(from), DataRoot::tileCacheFolder());
}

bool removeSet(const QString &suffix)
{
    return QDir(DataRoot::catalogFolder(suffix)).removeRecursively()
        && QDir(DataRoot::tileCacheFolder(suffix)).removeRecursively();
}

bool setExists(const QString &suffix)
{
    return QDir(DataRoot::catalogFolder(suffix)).exists()
        && QDir(DataRoot::tileCacheFolder(suffix)).exists();
}

} // namespace

DataSetSwap::DataSetSwap(const QString &suffix)
    : m_suffix(suffix)
{ }

bool DataSetSwap::check()
{
    if (!setExists(m_suffix))
        return fail(tr("There is no prepared map data."));
    if (setExists(Backup))
        return fail(tr("There is a backup of an earlier update."));
    return true;
}

bool DataSetSwap::swap(MapCatalog *main)
{
    if (!check())
        return false;
    main->swapOriginalFoldersWithSuffixed(m_suffix);
    main->initialize();
    return true;
}

bool DataSetSwap::checkUndo()
{
    if (!backupExists())
        return fail(tr("There is no backup."));
    if (setExists(m_suffix))
        return fail(tr("An update is being prepared."));
    return true;
}

bool DataSetSwap::undo(MapCatalog *main)
{
    if (!checkUndo() || !moveFolders(Backup, m_suffix))
        return false;
    main->initialize();
    return true;
}

bool DataSetSwap::clearBackup()
{
    return removeSet(Backup) || fail(tr("The backup cannot be removed."));
}

bool DataSetSwap::discardPrepared()
{
    return removeSet(m_suffix) || fail(tr("The prepared map data cannot be removed."));
}

QString DataSetSwap::errorString() const
{
    return m_errorString;
}

bool DataSetSwap::backupExists()
{
    return setExists(Backup);
}

QString DataSetSwap::backupVersion()
{
    return MapCatalogProcessor().readLocalMapVersion(DataRoot::catalogFolder(Backup)
                                                     + QLatin1String("/content.xml"));
}

qint64 DataSetSwap::backupBytes()
{
    qint64 bytes = 0;
    for (const QString &folder :
         {DataRoot::catalogFolder(Backup), DataRoot::tileCacheFolder(Backup)}) {
        QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            files.next();
            bytes += files.fileInfo().size();
        }
    }
    return bytes;
}

bool DataSetSwap::journalExists()
{
    return false;
}

DataSetSwap::Recovery DataSetSwap::recover(QString *)
{
    return Recovery::Nothing;
}

QString DataSetSwap::describe(Recovery recovery)
{
    switch (recovery) {
    case Recovery::Nothing:
        break;
    case Recovery::SwapFinished:
        return tr("An update that was cut short was finished: the new maps are in use.");
    case Recovery::SwapUndone:
        return tr("An update that was cut short could not be finished: the old maps are in use.");
    case Recovery::UndoFinished:
        return tr("Going back to the old maps was cut short and is finished now.");
    case Recovery::UndoAbandoned:
        return tr("Going back to the old maps could not be finished: the new maps are in use.");
    case Recovery::ClearFinished:
        return tr("A removal that was cut short was finished.");
    case Recovery::VoicesPutBack:
        return tr("Voice data that a removal had set aside is in its place again.");
    case Recovery::Failed:
        return tr("An exchange of the map data was cut short and cannot be brought to an end.");
    }
    return QString();
}

bool DataSetSwap::fail(const QString &reason)
{
    m_errorString = reason;
    return false;
}
