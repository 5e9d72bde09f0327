// SPDX-License-Identifier: MIT
// What concerns whole data sets: going over to another one, swapping, removing.
#include "catalog/mapcatalog.h"

#include "catalog/contentfile_p.h"
#include "plugin/shell_p.h"
#include "plugin/xmlfilewriter_p.h"

namespace {

const QLatin1Char Slash('/');
const QLatin1Char BackupMark('_');
const QLatin1String Voices("/voices");

bool exists(const QString &folder)
{
    return QDir(folder).exists();
}

} // namespace

void MapCatalog::initialize()
{
    start({Action::Initialize, QString(), {}});
}

void MapCatalog::initFolderStructure()
{
    start({Action::InitFolders, QString(), {}});
}

void MapCatalog::resetInstanceWithPathSuffix(QString pathSuffix, bool ensureMainTessarinFiles)
{
    start({Action::Reset, pathSuffix, {}, ensureMainTessarinFiles});
}

void MapCatalog::swapOriginalFoldersWithSuffixed(const QString &suffix)
{
    start({Action::Swap, suffix, {}});
}

void MapCatalog::removeBackupOldFolders(const QString &suffix)
{
    start({Action::RemoveBackups, suffix, {}});
}

void MapCatalog::removeAllMapData() const
{
    // A load or a change under way would read, or write, half of what is left.
    if (mustWait(Action::RemoveAll))
        remember({Action::RemoveAll, QString(), {}});
    else
        removeMapData();
}

void MapCatalog::setPathSuffix(QString pathSuffix)
{
    // In turn with the others: one that waits would take the suffix of a later call.
    start({Action::SetSuffix, pathSuffix, {}});
}

void MapCatalog::setInstalledMapsVersion(QString installedMapsVersion)
{
    if (isFolderChangeRemembered())
        remember({Action::SetMapsVersion, installedMapsVersion, {}});
    else
        storeMapsVersion(installedMapsVersion);
}

void MapCatalog::setInstalledMOSVersion(QString installedMOSVersion, QString differentPath)
{
    // It is meant for the folders to come and must not be written into those of before.
    if (isFolderChangeRemembered())
        remember({Action::SetMosVersion, installedMOSVersion, {differentPath}});
    else
        storeMosVersion(installedMOSVersion, differentPath);
}

void MapCatalog::performFolderChange(const Call &call)
{
    const Self self(this);
    m_changingFolders = true;
    switch (call.action) {
    case Action::SetSuffix:
        m_pathSuffix = call.id;
        break;
    case Action::InitFolders:
        takeFolders();
        break;
    case Action::Initialize:
        takeFoldersAndVersions();
        break;
    case Action::Reset:
        if (call.seed && !call.id.isEmpty())
            seedDataSet(call.id);
        m_pathSuffix = call.id;
        takeFoldersAndVersions();
        break;
    case Action::Swap:
        swapFolders(call.id);
        break;
    case Action::RemoveBackups:
        removeBackups(call.id);
        break;
    default:
        removeMapData();
        break;
    }
    if (self)
        m_changingFolders = false;
}

void MapCatalog::takeFoldersAndVersions()
{
    const Self self(this);
    takeFolders();
    if (self)
        storeMapsVersion(QString());
    if (self)
        storeMosVersion(QString(), QString());
}

void MapCatalog::seedDataSet(const QString &suffix) const
{
    const QString catalogFolder = m_catalogFolderPath + suffix + Slash;
    if (!exists(catalogFolder))
        mkDirSystem(catalogFolder);
    copySystem(m_catalogFolderPath + QLatin1String("/catalog*"), catalogFolder);
    const QString contentFile = catalogFolder + QLatin1String("content.xml");
    touchSystem(contentFile);
    XmlFileWriter::replace(contentFile, ContentFile::writeEmpty(m_installedMapsVersion));
    copySystem(m_catalogFolderPath + QLatin1String("/regionname*"), catalogFolder);

    const QString tileCacheFolder = m_tileCacheFolderPath + suffix + Slash;
    if (!exists(tileCacheFolder))
        mkDirSystem(tileCacheFolder);
    copySystem(m_tileCacheFolderPath + QLatin1String("/config.cfg"), tileCacheFolder);
}

void MapCatalog::swapFolders(const QString &suffix)
{
    const Self self(this);
    m_pathSuffix.clear();
    takeFolders();
    if (!self)
        return;
    const QString &catalogs = m_catalogFolderPath;
    const QString &tiles = m_tileCacheFolderPath;
    // The slash behind the voices belongs to the command: a link to a folder is not taken along.
    moveSystem(tiles + Voices + Slash, tiles + suffix + Voices);
    moveSystem(catalogs, catalogs + BackupMark);
    moveSystem(catalogs + suffix, catalogs);
    moveSystem(tiles, tiles + BackupMark);
    moveSystem(tiles + suffix, tiles);
}

void MapCatalog::removeBackups(const QString &suffix) const
{
    const QString &catalogs = m_catalogFolderPath;
    const QString &tiles = m_tileCacheFolderPath;
    if (exists(catalogs + BackupMark) || exists(tiles + BackupMark)) {
        removeSystem(catalogs + BackupMark);
        removeSystem(tiles + BackupMark);
    }
    if (exists(catalogs + suffix) || exists(tiles + suffix)) {
        removeSystem(catalogs + suffix);
        removeSystem(tiles + suffix);
    }
}

void MapCatalog::removeMapData() const
{
    const QString parked = m_baseFolderPath + Voices;
    removeSystem(m_catalogFolderPath + QLatin1String("/*"));
    moveSystem(m_tileCacheFolderPath + Voices, parked);
    removeSystem(m_tileCacheFolderPath + QLatin1String("/*"));
    moveSystem(parked, m_tileCacheFolderPath + Voices);
}

void MapCatalog::execSystem(QString command) const
{
    if (Shell::isAvailable())
        Shell::runAtOnce(command.toUtf8());
}

void MapCatalog::touchSystem(const QString &path) const
{
    execSystem(QLatin1String("touch ") + path);
}

void MapCatalog::removeSystem(const QString &path) const
{
    execSystem(QLatin1String("rm -rf ") + path);
}

void MapCatalog::mkDirSystem(const QString &path) const
{
    execSystem(QLatin1String("mkdir ") + path);
}

void MapCatalog::copySystem(const QString &from, const QString &to) const
{
    execSystem(QLatin1String("cp ") + from + QLatin1Char(' ') + to);
}

void MapCatalog::moveSystem(const QString &from, const QString &to) const
{
    execSystem(QLatin1String("mv ") + from + QLatin1Char(' ') + to);
}
