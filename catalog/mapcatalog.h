// SPDX-License-Identifier: MIT
#ifndef VEXA_MAPCATALOG_H
#define VEXA_MAPCATALOG_H

#include "catalog/mapcatalogprocessor.h"
#include "catalog/mapregion.h"
#include "vexa_export.h"
#include <functional>
#include <QDir>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QQmlListProperty>
#include <QSet>
#include <QString>
#include <QStringList>
#include <vector>

/**
 * The map data of the device as QML sees it: which regions can be downloaded, which are installed,
 * in which versions and in which folders.
 *
 * The host (or QML) makes one for the main data set and one more for each data set with a path
 * suffix. It never downloads anything: whoever has unpacked and moved a region's files calls
 * addInstalledRegion(). The lists are empty until the first updateCatalog().
 *
 * Lives in the GUI thread. Loading, installing, deleting and writing the content file run the
 * event loop after each item, so QML and timers call in meanwhile. Some rules keep that safe:
 *
 *  - updateCatalog() during updateCatalog() is skipped, unless a change of the folders waits.
 *  - A load (updateCatalog() or one of its two halves) and a change (installing, deleting, writing
 *    the content file) never overlap. Whichever is called while the other runs is remembered and
 *    carried out in order, before the outermost call returns. Otherwise the content file could be
 *    written from half-filled lists, and the user would lose regions.
 *  - A change called from a change runs at once. If it concerns the same region, the newer one
 *    wins and the older one stops.
 *  - What goes over to other folders or replaces them (setPathSuffix(), initialize(),
 *    resetInstanceWithPathSuffix() and so on) waits like a load, for loads and for changes; and
 *    whatever is called after it waits for it, so that nothing meant for one data set lands in
 *    another. Swapping and removing wait for all other catalogues of the process as well.
 *
 * The regions belong to the catalogue's processor and die at the next load. The lists are emptied
 * before, so they never show a region that is gone. The catalogue may be deleted from its own
 * event loop.
 */
class VEXA_EXPORT MapCatalog : public QObject
{
    Q_OBJECT
    /** The installed regions, in the order of the content file; a view that follows the list. */
    Q_PROPERTY(QQmlListProperty<MapRegion> installedRegions READ installedRegions NOTIFY
                   installedRegionsChanged)
    /** All regions of the catalogue file, children before their parent, not sorted; a view. */
    Q_PROPERTY(QQmlListProperty<MapRegion> availableRegions READ availableRegions NOTIFY
                   availableRegionsChanged)
    /** The version of the installed maps; it names the catalogue file. */
    Q_PROPERTY(QString installedMapsVersion READ installedMapsVersion WRITE setInstalledMapsVersion
                   NOTIFY installedMapsVersionChanged)
    /** The version of the map-object data, "1.0.23.7". */
    Q_PROPERTY(QString installedMOSVersion READ installedMOSVersion WRITE setInstalledMOSVersion
                   NOTIFY installedMOSVersionChanged)
    /** The folder of all map data. */
    Q_PROPERTY(QString mapBaseDirectory READ mapBaseDirectory NOTIFY mapBaseDirectoryChanged)
    /** The catalogue folder, with the path suffix. */
    Q_PROPERTY(QString tessarinDirectory READ tessarinDirectory NOTIFY tessarinDirectoryChanged)
    /** True exactly while updateCatalog() runs. The spelling is fixed. */
    Q_PROPERTY(bool bussy READ bussy NOTIFY bussyChanged)

public:
    /**
     * Makes the folders if they are missing and reads the versions, but not the catalogue. The
     * path suffix is empty for the main data set. Failures show later, as files that are not there.
     */
    explicit MapCatalog(const QString &pathSuffix = QString(), QObject *parent = nullptr);
    /** Deletes the regions. */
    ~MapCatalog() override;

    /** Both views run the event loop first, see MapRegion::createDeclarativeList(). */
    QQmlListProperty<MapRegion> installedRegions();
    /** The regions of the catalogue file; empty before the first load and if it cannot be read. */
    QQmlListProperty<MapRegion> availableRegions();
    /** The maps version, "26.11.21.00"; empty if the content file is missing or damaged. */
    QString installedMapsVersion() const;
    /** The map-object version, "1.0.23.7"; shorter or empty if config.cfg is short or missing. */
    QString installedMOSVersion() const;
    /** DataRoot::cities() when the folders were taken; without a slash at the end. */
    QString mapBaseDirectory() const;
    /** The folder of the catalogue, names and content files; without a slash at the end. */
    QString tessarinDirectory() const;
    /** Whether an updateCatalog() is under way; calls meanwhile are skipped or wait. */
    bool bussy() const;

    /**
     * Whether there are a content file, a catalogue of the installed maps version and a region-name
     * file for the device's language. Looks at names only, not into the files.
     */
    Q_INVOKABLE bool catalogFilesExist();

    /** Loads available and installed regions anew. If it is running already, logs and returns. */
    Q_INVOKABLE void updateCatalog();

    /** Writes the content file from what is installed; emits nothing and reports no failure. */
    Q_INVOKABLE void updateLocalContentFile();

    /**
     * Records a region as installed with these files, which are in place already. If it was
     * installed before, its old files that the new list does not name are deleted first, also
     * those that another region uses. An id that is not available is ignored.
     *
     * Like deleteInstalledRegion() it does not emit installedRegionsChanged(): the region's own
     * signals tell.
     */
    Q_INVOKABLE void addInstalledRegion(QString id, QStringList fileList);

    /**
     * Deletes a region's files except those that another installed region lists, and records it
     * as not installed. Ignored if it is not available or not installed.
     */
    Q_INVOKABLE void deleteInstalledRegion(QString id);

    /** Stores the version, or reads it from the content file if it is empty; writes no file. */
    Q_INVOKABLE void setInstalledMapsVersion(QString installedMapsVersion = QString());

    /**
     * Stores the version and writes it into config.cfg, which must exist; or reads it from there
     * if it is empty. differentPath stands for every "diskcache" in the path of the tile-cache
     * folder, to reach the file of another data set.
     */
    Q_INVOKABLE void setInstalledMOSVersion(QString installedMOSVersion = QString(),
                                            QString differentPath = QString());

    /** The available region with this id, or null. It stays the catalogue's, not the script's. */
    Q_INVOKABLE MapRegion *region(QString id);

    /** Compares as the user's language sorts: below, equal to or above 0. */
    Q_INVOKABLE int localeAwareCompare(QString strA, QString strB);

    /**
     * Removes what is in the two folders of the data set, except the voice data and hidden files.
     * Neither the lists nor the versions follow, and nothing is emitted: the caller loads anew.
     */
    Q_INVOKABLE void removeAllMapData() const;

    /** Stores the suffix for the next initFolderStructure(). */
    Q_INVOKABLE void setPathSuffix(QString pathSuffix = QString());

    /**
     * Works on the data set with this path suffix from now on: takes its folders and reads its
     * versions. The lists stay as they are until the next updateCatalog(); a change before it would
     * write what the old data set lists into the new one's content file.
     *
     * With ensureMainTessarinFiles and a suffix that is not empty, the new data set is seeded
     * before: it gets the catalogue files, the region names and config.cfg of the current one, and
     * a content file that lists nothing. The suffix is put behind the names of the current
     * folders, which have the current suffix in them.
     */
    Q_INVOKABLE void resetInstanceWithPathSuffix(QString pathSuffix = QString(),
                                                 bool ensureMainTessarinFiles = false);

    /**
     * Puts the data set with this suffix in the place of the main one, whose folders are kept as
     * backups with "_" behind their names; the voice data goes with the new set. The instance
     * works on the main folders afterwards, but keeps lists and versions until it is told to load.
     *
     * Five moves without a check between them: whoever calls this makes sure beforehand that they
     * can succeed, and knows what to do when the power fails between two.
     */
    void swapOriginalFoldersWithSuffixed(const QString &suffix);

    /**
     * Removes the backups of the current folders, and what is left of the data set with this
     * suffix. An empty suffix names the current folders themselves: they are removed.
     */
    void removeBackupOldFolders(const QString &suffix);

    /**
     * Runs a command of the platform's shell and waits for its end; does nothing if there is no
     * shell. What becomes of the command is not told.
     */
    void execSystem(QString command) const;
    /**
     * The shell's own commands. The arguments are not quoted: a blank separates two, and "*" stands
     * for many files.
     */
    void touchSystem(const QString &path) const;
    /** Removes files and folders with all that is in them. */
    void removeSystem(const QString &path) const;
    /** Makes a folder, but not its parents. */
    void mkDirSystem(const QString &path) const;
    /** Copies files. */
    void copySystem(const QString &from, const QString &to) const;
    /** Renames, or moves into a folder. */
    void moveSystem(const QString &from, const QString &to) const;

    /** Sets up the folders and reads both versions. */
    void initialize();
    /** Takes the folders of the path suffix, making those that are missing; failures are silent. */
    void initFolderStructure();
    /** The first half of updateCatalog(). What was installed before stays so, if still available.
     */
    void loadAvailableRegions();
    /** The second half of updateCatalog(). */
    void loadInstalledRegions();
    /** Reads the content file into the tables that readRegionFileList() answers from. */
    void processContentXml();
    /** The paths of an installed region's tiles, in the content file's order. Takes the plain id.
     */
    QStringList readRegionFileList(const QString &id) const;
    /** Whether no installed region but this one has exactly this entry in its file list. */
    bool checkIfFileCanBeDeleted(QString file, const QString &id) const;
    /** The three-digit code of the system's language, for the name of the region-name file. */
    QString getDigitCode() const;

Q_SIGNALS:
    /** Never emitted; kept for handlers that QML may have. */
    void updateFinished();
    /** A load has read the content file. Not after addInstalledRegion() and its opposite. */
    void installedRegionsChanged();
    /** A load has read the catalogue and the region names. */
    void availableRegionsChanged();
    /** The version was stored or read again, also if it is the same as before. */
    void installedMapsVersionChanged();
    /** The version was stored or read again, also if it is the same as before. */
    void installedMOSVersionChanged();
    /** The folders were taken anew, by initialize() and the like, also if they are the same. */
    void mapBaseDirectoryChanged();
    /** Comes behind mapBaseDirectoryChanged(), for the same reasons. */
    void tessarinDirectoryChanged();
    /** updateCatalog() begins or ends. */
    void bussyChanged();

private:
    enum class Action {
        // Loads.
        UpdateCatalog,
        LoadAvailable,
        LoadInstalled,
        // Changes of what is installed.
        Install,
        Delete,
        Write,
        // Versions.
        SetMapsVersion,
        SetMosVersion,
        // Changes of the folders.
        SetSuffix,
        InitFolders,
        Initialize,
        Reset,
        Swap,
        RemoveBackups,
        RemoveAll,
    };
    struct Call
    {
        Action action;
        QString id; ///< or the path suffix, or the version
        QStringList fileList; ///< or the one path of another data set
        bool seed = false;
    };
    using Self = QPointer<MapCatalog>; // null once the event loop or a slot has deleted us

    class UsedFiles;

    struct NamedRegion
    {
        quint64 start; ///< of the id: most are told apart by it, without a look at the text
        QHash<QString, MapRegion *>::const_iterator region; ///< in the index
        QString name;
        int place; ///< in the file
    };
    using NamedRegions = std::vector<NamedRegion>;

    struct Paths
    {
        QString contentFile;
        QString tileCache;
    };

    static bool isLoad(Action action);
    static bool isChange(Action action);
    static bool isVersionChange(Action action);
    static bool isFolderChange(Action action);
    static bool takesFoldersAway(Action action);
    static QList<MapCatalog *> &allCatalogs();
    bool isAtWork() const;
    bool othersAreAtWork() const;
    bool isFolderChangeRemembered() const;
    void start(const Call &call);
    bool mustWait(Action action) const;
    void remember(const Call &call) const;
    void perform(const Call &call);
    void performLoad(Action action);
    void performChange(const Call &call);
    void performFolderChange(const Call &call);
    bool canPerformRemembered() const;
    void performRemembered();
    static void performRememberedOfAll();

    void takeFolders();
    void takeFoldersAndVersions();
    void storeMapsVersion(QString installedMapsVersion);
    void storeMosVersion(QString installedMOSVersion, const QString &differentPath);
    void seedDataSet(const QString &suffix) const;
    void swapFolders(const QString &suffix);
    void removeBackups(const QString &suffix) const;
    void removeMapData() const;

    void loadAvailable();
    void makeAvailable(MapRegion *region);
    void applyRegionNames(const QDir &folder);
    NamedRegions readRegionNames(const QDir &folder) const;
    std::function<bool()> pauses() const;
    void loadInstalled();
    void releaseTables();
    void unmark(const QList<MapRegion *> &regions);

    Paths paths() const;
    void install(const QString &id, const QStringList &fileList);
    void uninstall(const QString &id);
    bool deleteReplacedFiles(const QString &id, const QStringList &fileList, quint64 change);
    bool deleteUnsharedFiles(const QString &id, quint64 change);
    bool findUsedFiles(const QString &id, quint64 change, UsedFiles *files);
    QSet<QString> filesToCome() const;
    bool markNotInstalled(const QString &id, quint64 change);
    bool markInstalled(const QString &id, const QStringList &fileList, quint64 change);
    bool isLatestChange(const QString &id, quint64 change) const;
    void writeContent(const Paths &paths);

    // What was installed before a load, so that the regions that come anew can take it over.
    struct WasInstalled
    {
        int place;
        QStringList fileList;
    };

    QString m_pathSuffix;
    QDir m_baseFolder;
    QDir m_catalogFolder;
    QDir m_tileCacheFolder;
    QString m_baseFolderPath;
    QString m_catalogFolderPath;
    QString m_tileCacheFolderPath;
    QString m_installedMapsVersion;
    QString m_installedMOSVersion;
    bool m_bussy = false;
    MapCatalogProcessor m_processor; // owns the regions; ends after the lists below
    QHash<QString, MapRegion *> m_regionIndex; // by id
    QList<MapRegion *> m_installedRegions;
    QList<MapRegion *> m_availableRegions;
    QHash<QString, QStringList> m_regionTilePaths; // by plain id

    bool m_loading = false;
    bool m_changingFolders = false;
    int m_changes = 0; // the changes under way, one inside the other
    bool m_performingRemembered = false;
    mutable QList<Call> m_remembered; // also of removeAllMapData(), which is const
    QHash<QString, WasInstalled> m_wasInstalled; // by id; filled while a load runs
    QHash<QString, quint64> m_changeOf; // by id; the number of the region's latest change
    QSet<QString> m_uninstalling; // ids of the regions whose files are being deleted
    quint64 m_installedRevision = 0; // changes with what the installed regions list
};

#endif
