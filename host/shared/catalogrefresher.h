// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QObject>
#include <QString>

class DownloadManagerIface;
class MapCatalog;

/**
 * Fetches the newest catalogue and its region names from the content server, through the engine.
 *
 *     version.txt --> catalog-VERSION.xml --> regionname-lang-CODE.xml --> put into place
 *                                                    | (the server has none)
 *                                                    v
 *                                             regionname-lang-001.xml
 *
 * The files come into a folder of their own and take the place of the old ones only when the
 * catalogue has been read and lists regions. On a device with nothing installed the new version is
 * adopted. Where regions are installed their version's catalogue stays, because it belongs to the
 * files on disk; then result() tells that a newer one exists.
 *
 * Made per refresh, in the GUI thread, while the engine runs. It waits for the server as long as
 * the engine does, that is without end while the server is silent: whoever starts it gives up with
 * abort().
 */
class CatalogRefresher : public QObject
{
    Q_OBJECT

public:
    enum class Result {
        None, ///< not over
        Adopted, ///< the server's version is the device's now
        Renewed, ///< the version was the same; its files were fetched again
        NewerExists, ///< installed regions keep their version; serverVersion() is another
        NetworkFailed, ///< the server could not be reached or has no such file
        CatalogueFailed, ///< what the server sent is no version or no catalogue
        DiskFailed, ///< the files could not be put into place
        Aborted,
    };

    CatalogRefresher(MapCatalog *catalog, DownloadManagerIface *downloads, const QString &baseUri,
                     QObject *parent = nullptr);

    /** Begins; finished() follows once, never before this returns. */
    void start();
    /** Gives up what is under way; finished() follows at once. Does nothing if it is over. */
    void abort();

    Result result() const;
    /** The version that the server names; empty until it is known. */
    QString serverVersion() const;
    /** The language code whose names were fetched; empty if the server has none. */
    QString namesCode() const;
    /** What went wrong, in words; empty if nothing did. */
    QString errorString() const;

    /** Whether an id in the engine's queue is a refresh's and not a region's. */
    static bool isOurs(const QString &id);

Q_SIGNALS:
    /** The next file is asked for. */
    void fetching(const QString &fileName);
    /**
     * More of it has come than before. An engine that begins it again and again, as on a full disk,
     * makes no progress.
     */
    void progress();
    void finished();

private:
    void fetch(const QString &fileName, const std::function<void(bool)> &then);
    void onFinished(int operation, const QString &url, const QString &id);
    void onError(int operation, const QString &id, int code, const QString &url);
    void onVersion(bool arrived);
    void onCatalog(bool arrived);
    void onNames(const QString &code, bool arrived);
    bool regionsAreInstalled() const;
    bool adopt(const QString &version);
    void putIntoPlace();
    void finish(Result result, const QString &errorString = QString());

    MapCatalog *const m_catalog; // not owned
    DownloadManagerIface *const m_downloads; // not owned
    const QString m_baseUri;
    const QString m_incoming; // folder that the files come into
    std::function<void(bool)> m_then; // after the current file
    QString m_id; // of the current file
    QString m_url;
    QString m_fileName;
    bool m_failed = false; // the current file
    bool m_notStored = false; // it came, and the disk did not take it
    qint64 m_bytes = -1; // of it, the most so far
    QString m_serverVersion;
    QString m_targetVersion; // as the content file gives it back
    QString m_namesCode;
    bool m_keepVersion = false;
    Result m_result = Result::None;
    QString m_errorString;
};
