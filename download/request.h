// SPDX-License-Identifier: MIT
#ifndef VEXA_REQUEST_H
#define VEXA_REQUEST_H

#include "vexa_export.h"
#include <QList>
#include <QSettings>
#include <QString>
#include <QVariant>

/**
 * What a request asks for; also the operation in the engine's signals. The numbers are stored and
 * sent to QML: never renumber them.
 */
enum RequestType : int {
    TestDownloadRequest = 1, ///< see whether the server answers; payload: the save file's path
    DownloadRequest = 2, ///< fetch a file; payload: the save file's path
    UncompressRequest = 3, ///< unpack an archive; payload: the archive's path
    MoveRequest = 4, ///< move a file or a folder's content; payload: list of source, destination
};

/** How far a request has come. Stored: never renumber; 1 is not used. */
enum RequestState : int {
    StateNew = 0, ///< queued and not over yet; every request begins here
    StateDone = 2, ///< over, finished() was emitted
    StateFailed = 3, ///< over, error() was emitted
    StateAborted = 4, ///< stopped by a cancel
};

/**
 * One step of work for the download engine. Installing a region takes two or three of them, which
 * share the region's id and the archive's address.
 *
 * A plain value: the interface makes it, the queue keeps copies and mirrors them in the settings,
 * the engine works on a copy. It never touches the network or a file other than the settings that
 * it is given.
 */
class VEXA_EXPORT Request
{
public:
    /** A request that asks for nothing: null id and address, type 0. */
    Request() = default;
    /** A request with these values; they are not checked. See the members below. */
    Request(const QString &id, int type, const QVariant &payload, const QString &url,
            int state = StateNew);

    /**
     * Writes the request at the position that the caller has chosen (group or array index). The
     * caller holds the settings and syncs them. A type that is not known is written without its
     * payload. Returns 0.
     */
    int serialize(QSettings &settings) const;

    /**
     * Writes the request where another one was written before, and of it only what differs. Leaves
     * the same keys there as serialize() at an empty position.
     */
    void serializeOver(const Request &before, QSettings &settings) const;

    /**
     * Reads the request from the position that the caller has chosen. Missing keys read as empty
     * or 0; a type that is not known leaves the payload as it was. Returns 0.
     */
    int deSerialize(QSettings &settings);

    /**
     * Reads the array "requests", oldest first; the caller holds the settings. The entries that are
     * there decide and not the array's size: a damaged file may claim any number.
     */
    static QList<Request> readAll(QSettings &settings);

    QString id; ///< who asked: the region's id; empty for a test download
    int type = 0; ///< RequestType, or 0
    QVariant payload; ///< what it works on; see RequestType
    QString url; ///< the address as the caller gave it; work is cancelled by it
    int state = StateNew; ///< RequestState

private:
    void serializePayload(QSettings &settings) const;
};

/** Whether two requests ask for the same; how far they have come does not matter. */
VEXA_EXPORT bool operator==(const Request &a, const Request &b);

#endif
