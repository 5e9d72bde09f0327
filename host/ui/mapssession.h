// SPDX-License-Identifier: MIT
#pragma once

#include "cityindex/cityindexlist.h"
#include "host/shared/catalogrefresher.h"
#include "host/shared/datasetlock.h"
#include "host/shared/networkstate.h"
#include "host/ui/mapsupdate.h"
#include "host/ui/opendataset.h"
#include <memory>
#include <QObject>
#include <QString>
#include <QThread>
#include <QTimer>

/**
 * What the pages work with: opens the data set, holds the objects that QML drives, and fetches the
 * catalogue. It decides nothing about regions; RegionInstaller does.
 *
 *     opening -- lock taken, catalogue loaded --> open -- engine started --> ready
 *        |  ^
 *        v  | open() again
 *      problem
 *
 * While all maps are updated the engine rests, and what is open can only be read; then the maps are
 * opened anew, and the objects are replaced by others.
 *
 * The window is there before open() is called: the lock is waited for in a thread, and while the
 * catalogue loads the event loop runs. The program makes one in the GUI thread and destroys it
 * after the QML engine.
 */
class MapsSession : public QObject
{
    Q_OBJECT
    /** The lock or the catalogue is waited for. */
    Q_PROPERTY(bool opening READ opening NOTIFY openChanged)
    /** The objects below are there. openChanged() tells also that others took their place. */
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY openChanged)
    /** Why the data set cannot be opened, in words; empty if nothing is wrong. */
    Q_PROPERTY(QString problem READ problem NOTIFY openChanged)
    Q_PROPERTY(QObject *catalog READ catalog NOTIFY openChanged)
    Q_PROPERTY(QObject *installer READ installer NOTIFY openChanged)
    Q_PROPERTY(QObject *downloads READ downloads NOTIFY openChanged)
    Q_PROPERTY(QObject *cityIndex READ cityIndex NOTIFY openChanged)
    Q_PROPERTY(QObject *regions READ regions NOTIFY openChanged)
    /** There from the beginning. */
    Q_PROPERTY(QObject *network READ network CONSTANT)
    /** The update of all maps; there from the beginning, of use once isOpen. */
    Q_PROPERTY(QObject *update READ update CONSTANT)

    /** The engine takes requests. */
    Q_PROPERTY(bool ready READ ready NOTIFY readyChanged)
    /** The catalogue is being fetched. */
    Q_PROPERTY(bool refreshing READ refreshing NOTIFY refreshingChanged)
    /** The version that the server named last, if the maps on the device are of another; empty. */
    Q_PROPERTY(QString newerVersion READ newerVersion NOTIFY refreshingChanged)

    /** The content server. A new one is kept for the next start; what is no address is refused. */
    Q_PROPERTY(QString baseUri READ baseUri NOTIFY baseUriChanged)
    /** Level of the library's log, 0 to 4; kept for the next start. */
    Q_PROPERTY(int logLevel READ logLevel WRITE setLogLevel NOTIFY logLevelChanged)
    /** "light", "dark", or empty for the system's; kept for the next start. */
    Q_PROPERTY(QString style READ style WRITE setStyle NOTIFY styleChanged)
    /** Whether the style, or the system if that is empty, wants light letters on dark. */
    Q_PROPERTY(bool dark READ dark NOTIFY styleChanged)
    /** Bytes that may still be written where the maps lie; 0 if that cannot be told. */
    Q_PROPERTY(double freeSpace READ freeSpace NOTIFY freeSpaceChanged)
    Q_PROPERTY(QString programVersion READ programVersion CONSTANT)

public:
    /** An empty address means the one of the settings. */
    explicit MapsSession(const QString &baseUri = QString(), QObject *parent = nullptr);
    /** As the first, but the network is asked of this source. */
    MapsSession(const QString &baseUri, std::unique_ptr<NetworkSource> network,
                QObject *parent = nullptr);
    ~MapsSession() override;

    bool opening() const;
    bool isOpen() const;
    QString problem() const;
    MapCatalog *catalog() const;
    RegionInstaller *installer() const;
    DownloadManagerIface *downloads() const;
    CityIndexList *cityIndex() const;
    RegionModel *regions() const;
    NetworkState *network() const;
    MapsUpdate *update() const;
    bool ready() const;
    bool refreshing() const;
    QString newerVersion() const;
    QString baseUri() const;
    int logLevel() const;
    void setLogLevel(int level);
    QString style() const;
    void setStyle(const QString &style);
    /** Overrides the style for this run only. */
    void showStyle(const QString &style);
    bool dark() const;
    double freeSpace() const;
    static QString programVersion();

    /** For MapsUpdate: stops the engine. What is open stays, and can be read, until renew(). */
    void restEngine();
    /** Opens the maps anew, with an engine that runs; renewed() follows, and then ready. */
    void renew(bool isNewest);

    /** Opens the data set, or tries again; isOpen or problem follow. */
    Q_INVOKABLE void open();
    /** Fetches the catalogue; noticed() tells what came of it. */
    Q_INVOKABLE void refresh();
    /** Gives the fetching up. */
    Q_INVOKABLE void cancelRefresh();
    /** Takes another content server; false if the text is no http address. */
    Q_INVOKABLE bool setBaseUri(const QString &text);
    /** Looks how much space there is. */
    Q_INVOKABLE void measureFreeSpace();

Q_SIGNALS:
    void openChanged();
    void readyChanged();
    void renewed();
    void refreshingChanged();
    void baseUriChanged();
    void logLevelChanged();
    void styleChanged();
    void freeSpaceChanged();
    /** Something that the user should be told, once. */
    void noticed(const QString &text, bool isError);

private:
    void onLocked();
    void openDataSet();
    void startEngine();
    void adoptFresh();
    void onRefreshed();

    const std::unique_ptr<NetworkState> m_network;
    QString m_baseUri;
    QString m_problem;
    std::unique_ptr<DataSetLock> m_lock;
    std::unique_ptr<QThread> m_locking;
    bool m_gotLock = false; // written by the thread, read after its end
    bool m_opening = false;
    bool m_ready = false;
    // In the order in which they depend on each other.
    std::unique_ptr<CityIndexList> m_cityIndex;
    std::unique_ptr<OpenDataSet> m_set;
    std::unique_ptr<OpenDataSet> m_fresh; // takes the place of m_set when it is loaded
    std::unique_ptr<CatalogRefresher> m_refresher;
    std::unique_ptr<MapsUpdate> m_update;
    QTimer m_silence;
    QString m_newerVersion;
    QString m_style;
    double m_freeSpace = 0;
};
