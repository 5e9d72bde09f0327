// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/installjournal.h"
#include "host/shared/moveguard.h"
#include "host/shared/regionstatus.h"
#include "host/shared/removalcount.h"
#include "host/shared/transfermeter.h"
#include <memory>
#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

class DownloadManagerIface;
class MapCatalog;
class Worker;

/**
 * Installs, updates and removes regions, and knows for each where it stands: the one place where
 * the engine's signals become a state that a user can be shown.
 *
 *   queued --> downloading --> unpacking --> moving --> recording --> installed
 *                |     ^           |            |           |
 *                v     |           +------------+-----------+--> failed
 *               waiting            +--> cancelled (not any more once moving has begun)
 *
 * A download that fails when the network is gone, or goes soon after, did not fail by its server:
 * the region waits, and begins again by itself when there is a network that may be used.
 *
 * One region is given to the engine at a time, in the order of the requests; those that follow are
 * kept in a journal of the installer's own, so that nothing is lost whenever the process dies. A
 * region is recorded as installed only when the engine finished without an error and every tile of
 * it is there. Removals are done between the engine's moves, never beside one; one that was cut
 * short is taken up like an install.
 *
 * A program makes one for a data set, in the GUI thread, after the catalogue was loaded and before
 * the worker starts, calls restore(), and starts the worker. At the end it stops the worker, waits
 * for it, and only then destroys the installer. Neither the catalogue nor the worker is owned.
 * QML uses it as a context property: everything is asked by region id, and stateChanged() or
 * progressChanged() with that id follows every change.
 */
class RegionInstaller : public QObject
{
    Q_OBJECT
    /** Ids of the regions whose install is not over, in order. */
    Q_PROPERTY(QStringList pending READ pending NOTIFY pendingChanged)
    /**
     * Ids of the regions whose last request failed or was cancelled, in alphabetical order. One
     * leaves when it is asked for again, removed or dismissed; the process's end dismisses all.
     */
    Q_PROPERTY(QStringList failed READ failed NOTIFY failedChanged)
    /** Whether anything is under way or queued, removals included. */
    Q_PROPERTY(bool busy READ busy NOTIFY busyChanged)
    /** Whether the user has paused the downloads; survives a restart. */
    Q_PROPERTY(bool paused READ paused NOTIFY pausedChanged)
    /** Whether there is a network; false at first. */
    Q_PROPERTY(bool online READ online WRITE setOnline NOTIFY networkChanged)
    /** Whether there is Wi-Fi (or a cable); false at first. */
    Q_PROPERTY(bool wifi READ wifi WRITE setWifi NOTIFY networkChanged)
    /** Whether the mobile network may be used where there is no Wi-Fi; false at first. */
    Q_PROPERTY(bool mobileAllowed READ mobileAllowed WRITE setMobileAllowed NOTIFY networkChanged)
    /** Address that the catalogue's relative links belong to; ends in "/". */
    Q_PROPERTY(QString baseUri READ baseUri WRITE setBaseUri NOTIFY baseUriChanged)

public:
    RegionInstaller(MapCatalog *catalog, Worker *worker, const QString &pathSuffix = QString(),
                    QObject *parent = nullptr);
    ~RegionInstaller() override;

    /** Takes up what an earlier run left. Once, before the worker starts. */
    void restore();

    QStringList pending() const;
    QStringList failed() const;
    bool busy() const;
    bool paused() const;
    bool online() const;
    bool wifi() const;
    bool mobileAllowed() const;
    QString baseUri() const;
    void setOnline(bool online);
    void setWifi(bool wifi);
    void setMobileAllowed(bool allowed);
    /** All three at once: downloads never run by a mixture of what was and what is. */
    void setNetwork(bool online, bool wifi, bool mobileAllowed);
    /**
     * How long after a download has failed, in ms, a loss of the network still counts as its cause;
     * 10000 by default. The region then waits for the network instead of having failed.
     */
    void setNetworkPatience(int ms);
    void setBaseUri(const QString &baseUri);

    /**
     * Queues the install, or the update, of a region. Returns false, and refusal() says why, if
     * the catalogue does not know it, has no address for it, if it is under way already, or if
     * the disk is too full.
     */
    Q_INVOKABLE bool install(const QString &id);
    /** Gives an install up. Returns false if there is none or its files are being moved already. */
    Q_INVOKABLE bool cancel(const QString &id);
    /** Gives all up that can be. */
    Q_INVOKABLE void cancelAll();
    /**
     * Forgets that the last request failed or was cancelled: the region is installed or not, as
     * before that request. Returns false, and refusal() says why, if there is nothing to forget.
     */
    Q_INVOKABLE bool dismiss(const QString &id);
    /** Forgets it of all of failed(). */
    Q_INVOKABLE void dismissAll();
    /**
     * Queues the removal of an installed region; removed() follows. Returns false, and refusal()
     * says why, if it is not installed or an update of it is under way.
     */
    Q_INVOKABLE bool remove(const QString &id);
    /** Why the last install(), cancel(), dismiss() or remove() returned false, in words. */
    Q_INVOKABLE QString refusal() const;

    Q_INVOKABLE void pause();
    Q_INVOKABLE void resume();

    /** "notInstalled", "queued", "waiting", "downloading" and so on; see RegionState. */
    Q_INVOKABLE QString state(const QString &id) const;
    /** Why it waits: "pausedByUser", "networkNotPermitted", "noWifi", or empty. */
    Q_INVOKABLE QString waitReason(const QString &id) const;
    /** Why it failed or waits, in words; empty if it does neither. */
    Q_INVOKABLE QString reason(const QString &id) const;
    /** One sentence for the user about where it stands. */
    Q_INVOKABLE QString sentence(const QString &id) const;
    /** How far the current step is, 0 to 1; -1 while unknown. */
    Q_INVOKABLE double progress(const QString &id) const;
    Q_INVOKABLE qlonglong bytesReceived(const QString &id) const;
    /** 0 while unknown. */
    Q_INVOKABLE qlonglong bytesTotal(const QString &id) const;
    /** In ms; -1 while unknown. */
    Q_INVOKABLE qlonglong remainingTime(const QString &id) const;
    /** All of the above. */
    RegionStatus status(const QString &id) const;

    /**
     * Whether the catalogue is at work for us and runs the event loop: whoever is called from
     * there must not destroy us.
     */
    bool isInCatalog() const;

    /** For tests; see MoveGuard::beforeMove. */
    MoveGuard *moveGuard();

Q_SIGNALS:
    /** The state, its reason or its failure has changed. */
    void stateChanged(const QString &id);
    /** Only bytes, speed or remaining time have changed. */
    void progressChanged(const QString &id);
    /** A removal is over: what the disk got back, and what stays because other regions need it. */
    void removed(const QString &id, qlonglong freedBytes, int freedFiles, int keptFiles);
    void pendingChanged();
    void failedChanged();
    void busyChanged();
    void pausedChanged();
    void networkChanged();
    void baseUriChanged();

private:
    /** What was given to the engine and is not over there. */
    struct Run
    {
        QString id;
        QString url; // as queued, with the attempt's tag
        int attempt = 0;
        bool dead = false; // failed or cancelled: it only has to end
        bool gone = false; // the queue has nothing of it left
        TransferMeter meter;
    };

    // The engine's side; regioninstaller_engine.cpp.
    void connectEngine();
    void onEngineReady();
    void onProgress(int operation, const QString &url, const QString &id, qint64 bytes,
                    qint64 total);
    void onFinished(int operation, const QString &url, const QString &id);
    void onError(int operation, const QString &id, int code, const QString &url);
    static RegionStatus failureStatus(int code, const QString &id);
    void onOtherSize(const QString &id, int attempt, qint64 bytes);
    void giveUp(Run *run, const RegionStatus &status);
    void onMoveFinished(const Run &run);
    void queueLookForVanished();
    void lookForVanished();
    void settleVanished(const Run &run);
    Run *findRun(const QString &id, const QString &url);
    void dropRun(const Run &run);
    void cancelInEngine(const QString &url);

    // Network and pause; regioninstaller_network.cpp.
    void applyNetwork();
    void holdEngine();
    bool networkUsable() const;
    WaitReason currentWait() const;
    void updateWaiting();
    void noteBroken(const QString &id);
    void takeUpBroken();
    void waitForNetwork(PendingInstall entry, const QString &id);

    // Requests and the catalogue; regioninstaller.cpp.
    bool refuse(const QString &why);
    void schedulePump();
    void pump();
    bool recordNext();
    bool removeNext();
    void onRemovalCounted(const RemovalFigures &figures);
    void feedNext();
    void expectSize(const PendingInstall &entry);
    void record(PendingInstall entry);
    bool writeRecord(const QString &id, const QStringList &tiles);
    QString resolvedUrl(const QString &id) const;
    bool removalIsSafe() const;
    void beginAgain(PendingInstall entry);
    void fail(const QString &id, FailureKind kind, const QString &why);
    void discardMovedFiles(const PendingInstall &entry);
    void setStatus(const QString &id, const RegionStatus &status);
    void setState(const QString &id, RegionState state);
    void clearStatus(const QString &id);
    void noteBusy();

    MapCatalog *const m_catalog; // not owned
    Worker *const m_worker; // not owned
    DownloadManagerIface *const m_iface; // the worker's
    const QString m_pathSuffix; // of the data set
    const QString m_tileFolder;
    QString m_baseUri;
    InstallJournal m_journal;
    MoveGuard m_guard;
    QList<Run> m_runs;
    QStringList m_removals;
    RemovalCount m_count; // for the first of them
    QHash<QString, RegionStatus> m_status; // of regions with a request that is not over well
    QHash<QString, QElapsedTimer> m_broken; // whose download failed, and when
    QString m_refusal;
    int m_networkPatience = 10000; // ms
    bool m_engineReady = false;
    bool m_inCatalog = false; // the catalogue is at work for us and runs the event loop
    bool m_pumpQueued = false;
    bool m_lookQueued = false;
    bool m_wasBusy = false;
    bool m_paused = false;
    bool m_online = false;
    bool m_wifi = false;
    bool m_mobileAllowed = false;
};
