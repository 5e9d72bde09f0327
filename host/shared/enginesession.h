// SPDX-License-Identifier: MIT
#pragma once

#include "catalog/mapcatalog.h"
#include "download/worker.h"
#include "host/shared/regioninstaller.h"
#include <QObject>
#include <QString>

/**
 * Catalogue, engine and installer of one program, put together in the right order and taken apart
 * in the right order.
 *
 * A program makes one in the GUI thread, after it has set the data root, taken the DataSetLock and
 * called DataSetSwap::recover() without a failure: on a swap that was cut short the catalogue would
 * make empty folders and the installer settle on them. The catalogue is loaded at once; the engine
 * runs between start() and stop(). Of two sessions only one may run at a time.
 */
class EngineSession : public QObject
{
    Q_OBJECT

public:
    /** The path suffix names the data set; all of them share the engine's one queue. */
    explicit EngineSession(const QString &baseUri, const QString &pathSuffix = QString(),
                           QObject *parent = nullptr);
    /** Stops the engine if it runs. */
    ~EngineSession() override;

    /** Takes up what earlier runs left and starts the worker; started() follows. */
    void start();
    /**
     * Stops and waits: a transfer ends at once and is gone on with next time, an unpack is undone
     * and done again, a move is brought to its end.
     */
    void stop();
    bool isRunning() const;

    MapCatalog *catalog();
    Worker *worker();
    DownloadManagerIface *downloads();
    RegionInstaller *installer();
    QString baseUri() const;

    /**
     * The content server: the application settings' "vexa/vexaBaseURI", else the one chosen at
     * build time; always with a slash at the end.
     */
    static QString configuredBaseUri();
    /** The address with a slash at its end, or an empty string if it is no http address. */
    static QString checkedBaseUri(const QString &text);

Q_SIGNALS:
    /** The engine takes requests now. */
    void started();

private:
    MapCatalog m_catalog;
    Worker m_worker;
    RegionInstaller m_installer;
    const QString m_baseUri;
};
