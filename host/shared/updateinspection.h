// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/regionstatus.h"
#include "host/shared/remotearchive.h"
#include "host/shared/updatepreview.h"
#include <QByteArray>
#include <QHash>
#include <QNetworkAccessManager>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QUrl>

class HttpFile;
class MapCatalog;

/**
 * Looks at what an update would do: asks the server for its version, its catalogue and the lists of
 * its archives, and compares them with the disk. Changes nothing, uses no engine, needs no lock.
 *
 * A program makes one for each look, in the GUI thread. inspect() waits in an event loop of its
 * own; neither this nor the catalogue may be deleted or loaded meanwhile.
 */
class UpdateInspection : public QObject
{
    Q_OBJECT

public:
    /**
     * The catalogue of the maps in use is loaded, and not owned. Gives up when the server is silent
     * for the patience, in ms.
     */
    UpdateInspection(MapCatalog *catalog, const QString &baseUri, int patience,
                     QObject *parent = nullptr);
    ~UpdateInspection() override;

    /**
     * Once. False if there is nothing to show; failure(), wasAborted() and errorString() say why.
     * A region whose archive alone cannot be listed is told in the preview, and in failure().
     */
    bool inspect();
    void abort();

    QString installedVersion() const;
    /** As the server spells it; empty if it was not told. */
    QString serverVersion() const;
    /** Whether both are the same; then there is no preview. */
    bool isUpToDate() const;
    const UpdatePreview::Preview &preview() const;
    /** What removing the backup frees once the update is done: the maps in use, without voices. */
    qint64 backupBytes() const;
    /** Free bytes where the new maps would be kept; -1 if unknown. */
    qint64 freeBytes() const;
    /** What the look has cost. */
    qint64 bytesReceived() const;

    FailureKind failure() const;
    bool wasAborted() const;
    QString errorString() const;

Q_SIGNALS:
    /** This file of the server is looked at now. */
    void looking(const QString &fileName);

private:
    struct Offer
    {
        QUrl url; // empty if there is no usable address
        qint64 bytes = 0;
    };

    bool readVersion();
    bool readCatalogue();
    bool listArchives();
    bool listArchive(const QString &id, const Offer &offer);
    void readInstalled();
    void readSizes();
    bool fetch(const QString &fileName, qint64 maxBytes, QByteArray *bytes);
    bool fail(FailureKind failure, const QString &text);
    void noteProblem(const QString &id, FailureKind kind, const QString &text);

    MapCatalog *const m_catalog; // not owned
    const QUrl m_baseUri;
    const int m_patience;
    QNetworkAccessManager m_network;
    HttpFile *m_file = nullptr; // what is waited for; on the stack of who waits
    RemoteArchive *m_archive = nullptr; // likewise
    QString m_serverVersion;
    bool m_upToDate = false;
    QHash<QString, Offer> m_offers; // of the new catalogue, by id
    UpdatePreview::Input m_input;
    UpdatePreview::Preview m_preview;
    qint64 m_backupBytes = 0;
    qint64 m_bytesReceived = 0;
    FailureKind m_failure = FailureKind::None;
    bool m_aborted = false;
    QString m_errorString;
};
