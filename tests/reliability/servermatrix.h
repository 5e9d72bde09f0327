// SPDX-License-Identifier: MIT
#pragma once

#include "testutils/httptestserver.h"
#include <memory>
#include <QList>
#include <QString>

/** What one install from a bad server came to. */
enum class CellEnd {
    Whole, ///< installed, every tile as the server has it
    Wrong, ///< installed with other bytes: must never be
    Failed, ///< reported as not to be downloaded
    Refused, ///< reported as refused by the server
    Damaged, ///< the archive's own check found it
    OtherSize, ///< not the size that the catalogue gives
    Unknown, ///< failed in a way that nobody thought of: must never be
    Trying, ///< asked for again and again, until the server gets well or the user gives up
};

/** One letter for each, as the table of what is expected has them. */
char letterOf(CellEnd end);
/** In words, for the report. */
QString wordsOf(CellEnd end);

/** One thing that servers do wrong. */
struct ServerFault
{
    QString name;
    HttpTestServer::Behaviour behaviour;
    /** It keeps the client waiting, so only the heartbeat ends it. */
    bool stalls = false;
    /**
     * The allowed ends: fresh and resumed, each with the size told and not told; a pair is the end
     * if the fault comes once and if it comes each time. Several letters: Qt may ask a second time
     * by itself, and then the fault that comes once is never seen.
     */
    QList<QByteArray> ends;
};

/** The servers to which a redirection may lead. */
struct OtherServers
{
    HttpTestServer plain;
    HttpTestServer tls {HttpTestServer::Security::Tls};
    HttpTestServer stopped;
};

/** All faults that there are, for an archive of this content. */
QList<ServerFault> serverFaults(const QByteArray &archive, OtherServers &others);
