// SPDX-License-Identifier: MIT
// What changes the catalogue: who may run when, installing and deleting.
#include "catalog/mapcatalog.h"

#include "catalog/tilefile_p.h"
#include "plugin/logger.h"
#include <algorithm>
#include <QCoreApplication>
#include <QFile>

namespace {

const QLatin1Char Slash('/');
const QLatin1Char Backslash('\\');

// Deletes a file of the tile cache; never a folder, and nothing that is not inside. A file that
// cannot be removed is not reported: it does no harm but take room.
void deleteTileFile(const QString &tileCache, const QString &entry, QLatin1String caller,
                    QLatin1String reason)
{
    const QString path = tileCache + Slash + entry;
    const bool isOutside = TileFile::isOutside(entry);
    if (!isOutside && !QFile::exists(path))
        return;
    if (isOutside || TileFile::isLinkedOutside(tileCache, path)) {
        L::og()->error(caller + QLatin1String(" will not DELETE the file ") + path
                       + QLatin1String(" as it's outside of the tile cache"));
        return;
    }
    L::og()->info(caller + QLatin1String(" will DELETE the file ") + path + reason);
    QFile::remove(path);
}

} // namespace

/** Which of one region's files others use as well. */
class MapCatalog::UsedFiles
{
public:
    explicit UsedFiles(const QStringList &entries)
    {
        for (const QString &entry : entries)
            m_own.insert(TileFile::normalized(entry));
    }

    void forget() { m_used.clear(); }

    // A look at each entry of all others: only those that are the region's, too, are kept.
    void note(const QStringList &othersEntries)
    {
        for (const QString &entry : othersEntries) {
            TileFile::normalize(entry, &m_path);
            if (m_own.contains(m_path))
                m_used.insert(*m_own.constFind(m_path));
        }
    }

    bool contains(const QString &entry) const
    {
        return m_used.contains(TileFile::normalized(entry));
    }

private:
    QSet<QString> m_own;
    QSet<QString> m_used;
    QString m_path; // keeps its room
};

void MapCatalog::updateCatalog()
{
    if (m_bussy) {
        L::og()->info(QStringLiteral("Skipping action..."));
        // The update under way reads folders that this call does not mean any more.
        if (isFolderChangeRemembered())
            remember({Action::UpdateCatalog, QString(), {}});
        return;
    }
    start({Action::UpdateCatalog, QString(), {}});
}

void MapCatalog::loadAvailableRegions()
{
    start({Action::LoadAvailable, QString(), {}});
}

void MapCatalog::loadInstalledRegions()
{
    start({Action::LoadInstalled, QString(), {}});
}

void MapCatalog::updateLocalContentFile()
{
    start({Action::Write, QString(), {}});
}

void MapCatalog::addInstalledRegion(QString id, QStringList fileList)
{
    start({Action::Install, id, fileList});
}

void MapCatalog::deleteInstalledRegion(QString id)
{
    start({Action::Delete, id, {}});
}

bool MapCatalog::isLoad(Action action)
{
    return action == Action::UpdateCatalog || action == Action::LoadAvailable
        || action == Action::LoadInstalled;
}

bool MapCatalog::isChange(Action action)
{
    return action == Action::Install || action == Action::Delete || action == Action::Write;
}

bool MapCatalog::isVersionChange(Action action)
{
    return action == Action::SetMapsVersion || action == Action::SetMosVersion;
}

bool MapCatalog::isFolderChange(Action action)
{
    return !isLoad(action) && !isChange(action) && !isVersionChange(action);
}

// Whether it moves or removes files that another catalogue may be at work on.
bool MapCatalog::takesFoldersAway(Action action)
{
    return action == Action::Swap || action == Action::RemoveBackups || action == Action::RemoveAll;
}

QList<MapCatalog *> &MapCatalog::allCatalogs()
{
    static QList<MapCatalog *> catalogs;
    return catalogs;
}

bool MapCatalog::isAtWork() const
{
    return m_loading || m_changingFolders || m_changes > 0;
}

bool MapCatalog::othersAreAtWork() const
{
    const QList<MapCatalog *> &all = allCatalogs();
    return std::any_of(all.cbegin(), all.cend(), [this](const MapCatalog *catalog) {
        return catalog != this && catalog->isAtWork();
    });
}

bool MapCatalog::isFolderChangeRemembered() const
{
    return std::any_of(m_remembered.cbegin(), m_remembered.cend(),
                       [](const Call &call) { return isFolderChange(call.action); });
}

void MapCatalog::start(const Call &call)
{
    if (mustWait(call.action)) {
        remember(call);
        return;
    }
    const Self self(this);
    perform(call);
    if (self)
        performRemembered();
    performRememberedOfAll();
}

bool MapCatalog::mustWait(Action action) const
{
    if (m_loading || m_changingFolders)
        return true;
    // One that comes after a change of the folders is meant for the new ones.
    if (m_changes > 0)
        return !isChange(action) || isFolderChangeRemembered();
    if (!m_remembered.isEmpty())
        return true; // not before those who came first
    return takesFoldersAway(action) && othersAreAtWork();
}

void MapCatalog::remember(const Call &call) const
{
    // A load that will run anyway, with no change before it, will see the same files.
    if (isLoad(call.action)) {
        for (auto last = m_remembered.crbegin(); last != m_remembered.crend(); ++last) {
            if (!isLoad(last->action))
                break;
            if (last->action == call.action)
                return;
        }
    }
    m_remembered.append(call);
}

bool MapCatalog::canPerformRemembered() const
{
    if (m_remembered.isEmpty() || m_performingRemembered || isAtWork())
        return false;
    return !takesFoldersAway(m_remembered.first().action) || !othersAreAtWork();
}

void MapCatalog::performRemembered()
{
    const Self self(this);
    while (canPerformRemembered()) {
        m_performingRemembered = true;
        perform(m_remembered.takeFirst());
        if (!self)
            return;
        m_performingRemembered = false;
    }
}

// What waited for the catalogue that has just ended its work, or has died at it.
void MapCatalog::performRememberedOfAll()
{
    const auto next = [] {
        const QList<MapCatalog *> &all = allCatalogs();
        return std::find_if(all.cbegin(), all.cend(), [](const MapCatalog *catalog) {
            return catalog->canPerformRemembered();
        });
    };
    for (auto catalog = next(); catalog != allCatalogs().cend(); catalog = next())
        (*catalog)->performRemembered();
}

void MapCatalog::perform(const Call &call)
{
    if (isLoad(call.action))
        performLoad(call.action);
    else if (isChange(call.action))
        performChange(call);
    else if (call.action == Action::SetMapsVersion)
        storeMapsVersion(call.id);
    else if (call.action == Action::SetMosVersion)
        storeMosVersion(call.id, call.fileList.constFirst());
    else
        performFolderChange(call);
}

void MapCatalog::performLoad(Action action)
{
    const Self self(this);
    m_loading = true;
    if (action == Action::UpdateCatalog) {
        m_bussy = true;
        Q_EMIT bussyChanged();
    }
    if (self && action != Action::LoadInstalled)
        loadAvailable();
    if (self && action != Action::LoadAvailable)
        loadInstalled();
    if (!self)
        return;
    m_loading = false;
    if (action == Action::UpdateCatalog) {
        m_bussy = false;
        Q_EMIT bussyChanged();
    }
}

void MapCatalog::performChange(const Call &call)
{
    const Self self(this);
    ++m_changes;
    if (call.action == Action::Install)
        install(call.id, call.fileList);
    else if (call.action == Action::Delete)
        uninstall(call.id);
    else
        writeContent(paths());
    if (self)
        --m_changes;
}

bool MapCatalog::checkIfFileCanBeDeleted(QString file, const QString &id) const
{
    for (const MapRegion *region : m_installedRegions) {
        if (region->id() != id && region->fileList().contains(file))
            return false;
    }
    return true;
}

void MapCatalog::install(const QString &id, const QStringList &fileList)
{
    const MapRegion *region = m_regionIndex.value(id);
    if (!region)
        return;
    const Paths target = paths();
    const quint64 change = ++m_changeOf[id];
    if (!region->installed()) {
        L::og()->info(QLatin1String("It seems that the region ") + id
                      + QLatin1String(" is not installed, it will be..."));
    } else {
        // The spelling is fixed: log texts are part of the interface.
        L::og()->info(QLatin1String("It seems that the region ") + id
                      + QLatin1String(" is installed, old NOT USED files fill be removed first, "
                                      "then update..."));
        if (!deleteReplacedFiles(id, fileList, change) || !markNotInstalled(id, change))
            return;
    }
    if (markInstalled(id, fileList, change))
        writeContent(target);
}

void MapCatalog::uninstall(const QString &id)
{
    const MapRegion *region = m_regionIndex.value(id);
    if (!region || !region->installed())
        return;
    const Self self(this);
    const Paths target = paths();
    const quint64 change = ++m_changeOf[id];
    m_uninstalling.insert(id);
    const bool isDeleted = deleteUnsharedFiles(id, change);
    if (self)
        m_uninstalling.remove(id);
    if (isDeleted && markNotInstalled(id, change))
        writeContent(target);
}

// Deliberately without asking whether other regions use them: an update brings the newer tile.
// False if the change was overtaken.
bool MapCatalog::deleteReplacedFiles(const QString &id, const QStringList &fileList, quint64 change)
{
    const Self self(this);
    const QString tileCache = m_tileCacheFolderPath;
    const QLatin1String caller("(addInstalledRegion)");
    QSet<QString> newFiles = filesToCome();
    for (const QString &entry : fileList)
        newFiles.insert(TileFile::normalized(entry));

    const QStringList oldEntries = m_regionIndex.value(id)->fileList();
    for (QString entry : oldEntries) {
        // Entries that came from QML in this session do not begin with a separator.
        if (entry.startsWith(Backslash) || entry.startsWith(Slash))
            entry.remove(0, 1);
        entry.replace(Backslash, Slash);
        if (newFiles.contains(TileFile::normalized(entry))) {
            L::og()->info(caller + QLatin1String(" will KEEP the file ") + tileCache + Slash + entry
                          + QLatin1String(" as it's used after update"));
        } else {
            deleteTileFile(tileCache, entry, caller,
                           QLatin1String(" as it's not used after update"));
        }
        QCoreApplication::processEvents();
        if (!self || !isLatestChange(id, change))
            return false;
    }
    return true;
}

// False if the change was overtaken.
bool MapCatalog::deleteUnsharedFiles(const QString &id, quint64 change)
{
    const Self self(this);
    const QString tileCache = m_tileCacheFolderPath;
    const QLatin1String caller("(deleteInstalledRegion)");
    const QStringList entries = m_regionIndex.value(id)->fileList();
    UsedFiles used(entries);
    if (!findUsedFiles(id, change, &used))
        return false;
    quint64 usedRevision = m_installedRevision;

    for (QString entry : entries) {
        if (usedRevision != m_installedRevision) {
            if (!findUsedFiles(id, change, &used))
                return false;
            usedRevision = m_installedRevision;
        }
        if (used.contains(entry)) {
            L::og()->trace(caller + QLatin1String(" will KEEP the file ") + tileCache + Slash
                           + entry + QLatin1String(" as it's used"));
        } else {
            entry.replace(Backslash, Slash);
            deleteTileFile(tileCache, entry, caller, QLatin1String(" as it's not used"));
        }
        QCoreApplication::processEvents();
        if (!self || !isLatestChange(id, change))
            return false;
    }
    return true;
}

// Asking checkIfFileCanBeDeleted() for each entry would take the square of the entries, and would
// miss that a region installed in this session spells a file otherwise than one that was loaded.
// False if the change was overtaken.
bool MapCatalog::findUsedFiles(const QString &id, quint64 change, UsedFiles *files)
{
    const Self self(this);
    quint64 revision = 0;
    do {
        revision = m_installedRevision;
        files->forget();
        for (const Call &call : std::as_const(m_remembered))
            files->note(call.fileList); // on the disk already, for an installation that waits
        const QList<MapRegion *> regions = m_installedRegions;
        for (const MapRegion *region : regions) {
            // What two deletions, one inside the other, share must not be left over.
            if (region->id() != id && !m_uninstalling.contains(region->id()))
                files->note(region->fileList());
            QCoreApplication::processEvents();
            if (!self || !isLatestChange(id, change))
                return false;
            if (revision != m_installedRevision)
                break; // what is installed has changed meanwhile
        }
    } while (revision != m_installedRevision);
    return true;
}

// The files of installations that wait for this change are on the disk already.
QSet<QString> MapCatalog::filesToCome() const
{
    QSet<QString> files;
    for (const Call &call : m_remembered) {
        for (const QString &entry : call.fileList)
            files.insert(TileFile::normalized(entry));
    }
    return files;
}

// False if the change was overtaken.
bool MapCatalog::markNotInstalled(const QString &id, quint64 change)
{
    const Self self(this);
    MapRegion *region = m_regionIndex.value(id);
    m_installedRegions.removeAll(region);
    ++m_installedRevision;
    region->setInstalled(false);
    return self && isLatestChange(id, change);
}

// False if the change was overtaken.
bool MapCatalog::markInstalled(const QString &id, const QStringList &fileList, quint64 change)
{
    const Self self(this);
    MapRegion *region = m_regionIndex.value(id);
    region->setInstalled(true);
    if (!self || !isLatestChange(id, change))
        return false;
    region->setFileList(fileList);
    if (!self || !isLatestChange(id, change))
        return false;
    m_installedRegions.append(region);
    ++m_installedRevision;
    return true;
}

// Loads wait for changes, so the region is still there; but a newer change may have had it.
bool MapCatalog::isLatestChange(const QString &id, quint64 change) const
{
    return m_changeOf.value(id) == change && m_regionIndex.contains(id);
}

MapCatalog::Paths MapCatalog::paths() const
{
    return {m_catalogFolder.filePath(QStringLiteral("content.xml")), m_tileCacheFolderPath};
}

void MapCatalog::writeContent(const Paths &paths)
{
    m_processor.updateLocalContent(paths.contentFile, m_installedMapsVersion, m_installedRegions,
                                   paths.tileCache);
}
