// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QObject>

/**
 * Watches how long this thread goes without the event loop: from the begin of one pass to the begin
 * of the next, what the first of them has to do included. That is what a frame waits for.
 */
class LoopWatch : public QObject
{
public:
    LoopWatch()
    {
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this,
                [this] { note(); });
        m_clock.start();
    }

    /** The longest time until now, in milliseconds. */
    double longest()
    {
        note();
        return double(m_longest) / 1e6;
    }

private:
    void note()
    {
        m_longest = qMax(m_longest, m_clock.nsecsElapsed());
        m_clock.start();
    }

    QElapsedTimer m_clock;
    qint64 m_longest = 0;
};
