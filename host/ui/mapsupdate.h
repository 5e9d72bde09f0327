// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/datasetupdate.h"
#include <atomic>
#include <memory>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QThread>

class MapsSession;

/**
 * The update of all maps, and the backup that it leaves, as the pages see them.
 *
 * DataSetUpdate does the work. This one sees to it that the session's engine rests meanwhile, that
 * the session goes on with the new maps afterwards, and that the update keeps to the network that
 * the user allows: without it the update is held, and goes on by itself when it is back.
 *
 *   idle --> checking ... done            the states of DataSetUpdate
 *    |          |   ^
 *    |          v   |
 *    |          held                      no usable network
 *    +--> prepared                        an earlier run left one; also after a stop
 *    +--> goingBack --> prepared          the newer maps are kept, too
 *
 * The session makes one. GUI thread.
 */
class MapsUpdate : public QObject
{
    Q_OBJECT
    /** "idle", "prepared", "held", "goingBack", or a name of DataSetUpdate's. */
    Q_PROPERTY(QString state READ state NOTIFY changed)
    /** At work or held; also while the session opens the maps anew after it. */
    Q_PROPERTY(bool running READ running NOTIFY changed)
    /** stop() and giveUp() have an effect. */
    Q_PROPERTY(bool canStop READ canStop NOTIFY changed)
    /** There is a prepared set to go on with or to give up. */
    Q_PROPERTY(bool prepared READ prepared NOTIFY changed)
    /** The prepared set is whole: going on needs no download. */
    Q_PROPERTY(bool whole READ whole NOTIFY changed)
    /** Why no map can be installed or removed now, in words; empty if it can be. */
    Q_PROPERTY(QString blockade READ blockade NOTIFY changed)
    /** Why start() would not begin now, in words; empty if it would. */
    Q_PROPERTY(QString hindrance READ hindrance NOTIFY hindranceChanged)
    Q_PROPERTY(QString fromVersion READ fromVersion NOTIFY changed)
    Q_PROPERTY(QString targetVersion READ targetVersion NOTIFY changed)
    Q_PROPERTY(QString errorString READ errorString NOTIFY changed)
    /** Names of the installed regions that the new version lacks. */
    Q_PROPERTY(QStringList missingRegions READ missingRegions NOTIFY changed)
    /** Name of the region under way; empty if none is. */
    Q_PROPERTY(QString region READ region NOTIFY progressChanged)
    /** Over all regions, 0 to 1; -1 while unknown. */
    Q_PROPERTY(double fraction READ fraction NOTIFY progressChanged)
    Q_PROPERTY(double bytesReceived READ bytesReceived NOTIFY progressChanged)
    /** 0 while unknown. */
    Q_PROPERTY(double bytesTotal READ bytesTotal NOTIFY progressChanged)
    /** Version of the old maps that are kept; empty if there are none. */
    Q_PROPERTY(QString backupVersion READ backupVersion NOTIFY backupChanged)
    /** Their bytes; -1 until measured. */
    Q_PROPERTY(double backupSize READ backupSize NOTIFY backupChanged)
    /** They are being removed. */
    Q_PROPERTY(bool removing READ removing NOTIFY changed)
    /** Names of the regions installed since, which going back would lose. */
    Q_PROPERTY(QStringList lostRegions READ lostRegions NOTIFY backupChanged)

public:
    explicit MapsUpdate(MapsSession *session);
    ~MapsUpdate() override;

    QString state() const;
    bool running() const;
    bool canStop() const;
    bool prepared() const;
    bool whole() const;
    QString blockade() const;
    QString hindrance() const;
    QString fromVersion() const;
    QString targetVersion() const;
    QString errorString() const;
    QStringList missingRegions() const;
    QString region() const;
    double fraction() const;
    double bytesReceived() const;
    double bytesTotal() const;
    QString backupVersion() const;
    double backupSize() const;
    bool removing() const;
    QStringList lostRegions() const;

    /**
     * Looks what earlier runs have left, once, after the maps were opened and before the engine
     * runs. False: an update is unfinished, and the engine must not run.
     */
    bool takeUp();

    /** Begins, or goes on. A refusal is told by the session. */
    Q_INVOKABLE void start(bool dropMissing = false);
    /** Ends soon; what was done stays. */
    Q_INVOKABLE void stop();
    /** Gives the prepared maps up and removes them, also while it runs. */
    Q_INVOKABLE void giveUp();
    /** Puts the old maps in use again, whatever was installed since. */
    Q_INVOKABLE void goBack();
    /** Removes the old maps, in a thread: they are many thousands of files. */
    Q_INVOKABLE void removeBackup();
    /** The user has seen how it ended. */
    Q_INVOKABLE void acknowledge();
    /** Looks anew at what depends on the disk. */
    Q_INVOKABLE void look();

Q_SIGNALS:
    void changed();
    void hindranceChanged();
    void progressChanged();
    void backupChanged();

private:
    bool networkUsable() const;
    QString busyReason() const;
    bool refuse(const QString &why);
    DataSetUpdate *work();
    void onFinished();
    void onNetworkChanged();
    void conclude(const QString &state);
    void onRenewed();
    void setState(const QString &state);
    void copyValues();
    void lookForPrepared();
    void lookForBackup();
    void measureBackup();
    void onBackupRemoved();
    QStringList namesOf(const QStringList &ids) const;

    MapsSession *const m_session; // the owner
    std::unique_ptr<DataSetUpdate> m_work;
    QString m_state = QStringLiteral("idle");
    bool m_running = false;
    bool m_held = false; // stopped only because of the network
    bool m_dropMissing = false;
    bool m_prepared = false;
    bool m_unfinished = false;
    QString m_fromVersion;
    QString m_targetVersion;
    QString m_errorString;
    QStringList m_missing;
    QString m_backupVersion;
    double m_backupSize = -1;
    std::atomic<double> m_measured {-1}; // written by the thread
    QStringList m_lost;
    std::unique_ptr<QThread> m_measuring;
    std::unique_ptr<QThread> m_remover; // there while it runs
    QString m_removalError; // written by that thread, read after its end
};
