// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <QElapsedTimer>
#include <QtGlobal>

/**
 * Tells how fast one transfer runs, from what came in during the last ten seconds.
 *
 * The engine's own estimate counts the bytes of earlier runs as if they had come in this one, and
 * knows no total when the server sends the whole file; so programs show this one.
 */
class TransferMeter
{
public:
    /** Forgets everything: another transfer begins. */
    void restart();
    /** So many bytes of the file are there now. A smaller number than before starts anew. */
    void add(qint64 bytes);
    /** As add(), at a time of the caller's: ms on any clock that never goes back. */
    void addAt(qint64 bytes, qint64 ms);

    /** 0 until it can be told. */
    qint64 bytesPerSecond() const;
    /** Time until total bytes are there, in ms; -1 until it can be told. */
    qint64 remainingMs(qint64 total) const;

private:
    struct Sample
    {
        qint64 ms;
        qint64 bytes;
    };
    std::deque<Sample> m_samples;
    QElapsedTimer m_clock;
};
