// SPDX-License-Identifier: MIT
#pragma once

#include "testutils/httptestplan.h"
#include <QObject>
#include <QTcpSocket>

/**
 * One connection of the fault server: reads requests, asks for a plan for each and carries it out.
 * Made and deleted in the server's thread; child of its socket's server.
 *
 *   reading -- whole head --> answering -- body sent --> ending -- kept alive --> reading
 *                              |    ^                      |
 *                    stallAfter v    | resume()             v
 *                             stalled                    closed
 */
class HttpTestConnection : public QObject
{
public:
    struct Hooks
    {
        /** Notes the request and decides the answer; gives the request's number too. */
        std::function<HttpTestPlan(const HttpTestServer::Request &, int *number)> plan;
        /** That many more bytes of body have been written for this request. */
        std::function<void(int number, qint64 bytes)> sent;
        std::function<void()> stopListening;
    };

    HttpTestConnection(QTcpSocket *socket, const Hooks &hooks, QObject *parent);

    /** Goes on after stallAfter. */
    void resume();

private:
    enum class State { Reading, Answering, Stalled, Ending, Closed };

    void read();
    void answer(const HttpTestServer::Request &request);
    void sendHead();
    void sendEndlessHead();
    void sendBody();
    void sendPiece(qint64 length);
    void bodySent();
    void end();
    void resetWhenTaken();
    void after(int ms, void (HttpTestConnection::*step)());

    QTcpSocket *m_socket; // child
    Hooks m_hooks;
    QByteArray m_input;
    State m_state = State::Reading;
    HttpTestPlan m_plan;
    int m_number = 0;
    bool m_headOnly = false;
    bool m_waiting = false; // a drip's timer runs
    QByteArray m_head;
    qint64 m_start = 0; // first byte of the content that is sent
    qint64 m_length = 0; // of the body as it should be
    qint64 m_toSend = 0; // of the body as it will be
    qint64 m_sent = 0;
};
