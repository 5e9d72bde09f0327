// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <QByteArray>
#include <QString>
#include <thread>

/**
 * A web server on loopback that sends at an even rate, a piece each millisecond, as a network does.
 * What a receiver was too slow to take comes as soon as it can take it, so that the rate holds over
 * the whole time. One client at a time; ranges are honoured, connections end with the body.
 *
 * It sends in a thread of its own, which costs the measured program nothing but the processor.
 */
class PacedSender
{
public:
    /** Sends a body of this many bytes, all of them equal. */
    PacedSender(qint64 size, qint64 bytesPerSecond);
    ~PacedSender();
    PacedSender(const PacedSender &) = delete;
    PacedSender &operator=(const PacedSender &) = delete;

    QString url() const;

private:
    void serve();
    void answer(int client) const;
    void sendBody(int client, qint64 bytes) const;

    const qint64 m_size;
    const qint64 m_bytesPerSecond;
    const QByteArray m_piece;
    int m_listener = -1;
    quint16 m_port = 0;
    std::atomic<bool> m_stopped {false};
    std::thread m_thread;
};
