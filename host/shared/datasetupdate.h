// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/catalogrefresher.h"
#include "host/shared/enginesession.h"
#include "host/shared/regionstatus.h"
#include "host/shared/updatestate.h"
#include "host/shared/versionprobe.h"
#include <chrono>
#include <memory>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>

class MapCatalog;

/**
 * Updates all installed maps to the server's newest version: prepares a second data set while the
 * one in use stays as it is, puts it in use when it is whole, and keeps the old one as a backup.
 *
 *   idle --> checking --> upToDate
 *               |
 *               +--> fetching --> installing --> ready --> swapping --> done
 *               |                     ^
 *               +--- prepared before -+
 *
 *   any of them --> failed, stopped, cancelled
 *
 * After "failed" and "stopped", and also after a crash, the prepared set stays on the disk and
 * start() goes on with it; cancel() gives it up. If the server has yet another version by then, the
 * update begins anew. Regions that were removed or installed meanwhile are removed and added.
 *
 * A program makes one in the GUI thread, under the DataSetLock and after DataSetSwap::recover().
 * The engine has one queue for all data sets, so no EngineSession may run while this works; the
 * catalogue of the maps in use (not owned) is only read until the swap, and loaded anew after it.
 * Neither may be changed meanwhile. Stop it before it is destroyed, unless isRunning() is false.
 *
 * QML uses it as a context property.
 */
class DataSetUpdate : public QObject
{
    Q_OBJECT
    /** Where it stands, as in the drawing above: "idle", "checking" and so on. */
    Q_PROPERTY(QString state READ stateName NOTIFY stateChanged)
    /** Whether it is at work. */
    Q_PROPERTY(bool running READ isRunning NOTIFY stateChanged)
    /** The version of the maps that it started from; empty before the first start. */
    Q_PROPERTY(QString fromVersion READ fromVersion NOTIFY stateChanged)
    /** The version that it leads to; empty until the server has told. */
    Q_PROPERTY(QString targetVersion READ targetVersion NOTIFY stateChanged)
    /** The region that is being downloaded or installed; empty if none is. */
    Q_PROPERTY(QString region READ region NOTIFY progressChanged)
    /** How far it is over all regions, from 0 to 1; -1 while unknown. */
    Q_PROPERTY(double fraction READ fraction NOTIFY progressChanged)
    /** Bytes of archives that have come, with those that came in earlier runs. */
    Q_PROPERTY(qlonglong bytesReceived READ bytesReceived NOTIFY progressChanged)
    /** Bytes of all archives; 0 while unknown. */
    Q_PROPERTY(qlonglong bytesTotal READ bytesTotal NOTIFY progressChanged)
    /** Why it failed, or why undo() or the like returned false, in words; else empty. */
    Q_PROPERTY(QString errorString READ errorString NOTIFY stateChanged)
    /** Regions that the new version lacks. start() fails because of them unless dropMissing. */
    Q_PROPERTY(QStringList missingRegions READ missingRegions NOTIFY stateChanged)
    /** Whether to go on without the regions that the new version lacks; false at first. */
    Q_PROPERTY(bool dropMissing READ dropMissing WRITE setDropMissing NOTIFY optionsChanged)
    /** Whether "ready" leads to the swap at once; true at first. Else swap() is waited for. */
    Q_PROPERTY(bool swapWhenReady READ swapWhenReady WRITE setSwapWhenReady NOTIFY optionsChanged)

public:
    enum class State {
        Idle,
        Checking,
        UpToDate,
        Fetching,
        Installing,
        Ready,
        Swapping,
        Done,
        Failed,
        Stopped,
        Cancelled,
    };
    Q_ENUM(State)

    DataSetUpdate(MapCatalog *main, const QString &baseUri, QObject *parent = nullptr);
    /** Stops the engine if it runs. */
    ~DataSetUpdate() override;

    State state() const;
    QString stateName() const;
    bool isRunning() const;
    QString fromVersion() const;
    QString targetVersion() const;
    QString region() const;
    double fraction() const;
    qlonglong bytesReceived() const;
    qlonglong bytesTotal() const;
    QString errorString() const;
    /** What kind of failure it was; None unless the state is Failed. */
    FailureKind failure() const;
    QStringList missingRegions() const;
    /** The regions of the new version, in the order of the content file; empty until known. */
    QStringList regions() const;
    bool dropMissing() const;
    bool swapWhenReady() const;
    void setDropMissing(bool drop);
    void setSwapWhenReady(bool swap);
    /** Where the region under way stands. */
    RegionStatus regionStatus() const;
    /** The name of one of the regions for the user; its id if the new catalogue is not there. */
    QString regionName(const QString &id) const;

    /** Fail when the server is silent for so long; 0, as at first: wait without end. */
    void setPatience(std::chrono::milliseconds patience);

    /** Begins, or goes on; finished() follows. Does nothing while it runs. */
    Q_INVOKABLE void start();
    /** Puts the prepared set in use; finished() follows. Does nothing unless "ready". */
    Q_INVOKABLE void swap();
    /** Ends as soon as it can be ended cleanly; what was done stays. finished() follows. */
    Q_INVOKABLE void stop();
    /** Gives the prepared set up, stopping first if need be. finished() follows. */
    Q_INVOKABLE void cancel();

    /**
     * Regions that were installed since the backup was put away, and that undo() would lose; empty
     * if there is no backup.
     */
    Q_INVOKABLE QStringList regionsSinceBackup() const;
    /**
     * Puts the backup in use again; the newer maps stay as a prepared set, which start() can put in
     * use without a download and cancel() removes. The city index keeps what was added since.
     * Needs no server. Refused, with errorString(), while anything is at work or pending, and, if
     * not forced, because of regionsSinceBackup().
     */
    Q_INVOKABLE bool undo(bool force = false);
    /** Removes the backup. False: errorString() says why. */
    Q_INVOKABLE bool clearBackup();

Q_SIGNALS:
    void stateChanged();
    void progressChanged();
    void optionsChanged();
    /** It is over: the state is one that ends. Once for each start(), swap() or cancel(). */
    void finished();

private:
    using Step = void (DataSetUpdate::*)();

    void beginRun();
    void later(Step step);
    void runStep(Step step, int run);
    bool isInCatalog() const;
    void setState(State state);
    void end(State state);
    void fail(FailureKind kind, const QString &reason);
    void conclude();
    void takeApart();
    void closeSession();
    void onSilence();
    bool waitsForServer() const;
    void noteNews();

    // The steps; datasetupdate_steps.cpp.
    void check();
    QString hindrance() const;
    bool wasSwapped();
    bool refuse(const QString &why);
    void onVersion();
    void beginAnew();
    void fetchCatalogue();
    void onCatalogue();
    void openPrepared();
    bool isTidy() const;
    void connectInstaller();
    void reconcile();
    bool removeUnwanted();
    bool installMissing();
    bool isWhole(const QString &id) const;
    void settle();
    void onReady();
    void doSwap();
    bool noteState(UpdateState::Phase phase);

    void onRegionChanged(const QString &id);

    MapCatalog *const m_main; // not owned
    const QString m_baseUri;
    State m_state = State::Idle;
    bool m_running = false;
    State m_end = State::Idle; // Idle: no end was asked for
    bool m_discard = false; // at the end
    bool m_swapNow = false; // whatever m_swapWhenReady says
    QString m_fromVersion;
    QString m_targetVersion;
    QString m_errorString;
    FailureKind m_failure = FailureKind::None;
    QStringList m_missing;
    QStringList m_wanted;
    QString m_region;
    RegionStatus m_regionStatus;
    QHash<QString, QString> m_names;
    QHash<QString, qint64> m_sizes; // of the archives, by id
    QSet<QString> m_whole; // ids of the regions that need nothing more
    QHash<QString, RegionStatus> m_failures;
    bool m_dropMissing = false;
    bool m_swapWhenReady = true;
    bool m_inStep = false; // a step is at work, and may run the event loop
    int m_run = 0; // counts the starts: a late step of an earlier one is not run
    int m_rounds = 0; // of reconcile()
    QTimer m_silence;
    std::unique_ptr<VersionProbe> m_probe;
    std::unique_ptr<EngineSession> m_session; // outlives what follows
    std::unique_ptr<CatalogRefresher> m_refresher;
};
