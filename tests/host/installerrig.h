// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/enginesession.h"
#include "plugin/dataroot.h"
#include "testcontent.h"
#include "testutils/httptestserver.h"
#include "testutils/nginxserver.h"
#include "testutils/temporaryhome.h"
#include <atomic>
#include <memory>
#include <QFile>
#include <QHash>
#include <QSemaphore>
#include <QStringList>

/** Holds the engine just before it moves files, from when it is made until it is destroyed. */
class HeldMove
{
public:
    /** Before the session starts. */
    explicit HeldMove(MoveGuard *guard)
        : m_state(std::make_shared<State>())
    {
        guard->beforeMove = [state = m_state] {
            state->reached = true;
            state->goOn.acquire();
            state->goOn.release(); // for all moves that follow
        };
    }
    ~HeldMove() { letGo(); }
    Q_DISABLE_COPY(HeldMove)

    bool isReached() const { return m_state->reached; }
    void letGo() { m_state->goOn.release(); }

private:
    struct State
    {
        std::atomic<bool> reached {false};
        QSemaphore goOn;
    };
    const std::shared_ptr<State> m_state;
};

/**
 * A device with an empty data root, a real web server with content, and a session between them.
 * openSession() puts the server's catalogue on the device first, as a refresh would.
 */
class InstallerRig
{
public:
    InstallerRig()
        : content(server.folder() + QLatin1String("/map5"))
    { }

    EngineSession &openSession(bool start = true)
    {
        putCatalogOnDevice();
        closeSession();
        session = std::make_unique<EngineSession>(server.url("/map5/"));
        states.clear();
        QObject::connect(&installer(), &RegionInstaller::stateChanged, &installer(),
                         [this](const QString &id) {
                             const QString state = installer().state(id);
                             if (states[id].isEmpty() || states[id].last() != state)
                                 states[id].append(state);
                         });
        if (start)
            session->start();
        return *session;
    }

    void closeSession() { session.reset(); }

    /** Brings the device the catalogue of what the server has now. */
    void refresh()
    {
        QFile::remove(DataRoot::catalogFolder() + QLatin1String("/catalog-1.0.xml"));
        putCatalogOnDevice();
        catalog().updateCatalog();
    }

    RegionInstaller &installer() { return *session->installer(); }
    MapCatalog &catalog() { return *session->catalog(); }
    bool isInstalled(const QString &id)
    {
        const MapRegion *region = catalog().region(id);
        return region && region->installed();
    }
    QString state(const QString &id) { return installer().state(id); }
    QString tileFolder() const { return DataRoot::tileCacheFolder(); }
    QString tileDifference(const Tiles &tiles) const { return differenceOf(tileFolder(), tiles); }

    /** What a restart would find recorded, read by a catalogue of its own. */
    static QStringList recordedIds()
    {
        return MapCatalogProcessor().readLocalContent(DataRoot::catalogFolder()
                                                      + QLatin1String("/content.xml"));
    }

    TemporaryHome home;
    NginxServer server;
    TestContent content;
    std::unique_ptr<EngineSession> session;
    /** The states of each region so far, without repetitions. */
    QHash<QString, QStringList> states;

private:
    void putCatalogOnDevice()
    {
        content.publish(QStringLiteral("1.0"));
        const QString folder = DataRoot::catalogFolder();
        if (QFile::exists(folder + QLatin1String("/catalog-1.0.xml")))
            return;
        const bool isFirst = !QFile::exists(folder + QLatin1String("/content.xml"));
        QDir().mkpath(folder);
        QDir().mkpath(DataRoot::tileCacheFolder());
        for (const char *name : {"catalog-1.0.xml", "regionname-lang-001.xml"})
            QFile::copy(server.folder() + QLatin1String("/map5/") + QLatin1String(name),
                        folder + QLatin1Char('/') + QLatin1String(name));
        if (!isFirst)
            return;
        MapCatalog catalog;
        catalog.setInstalledMapsVersion(QStringLiteral("1.0"));
        catalog.updateLocalContentFile();
    }
};
