// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QObject>
#include <QSocketNotifier>

/**
 * Turns Ctrl-C (SIGINT) and SIGTERM into a Qt signal.
 *
 * The signals are blocked and read from a descriptor, not caught: the engine's shell commands
 * switch Ctrl-C off for the whole process while they run, and a handler would miss one then. A
 * blocked signal waits. Threads that are started later have them blocked too, and the engine's
 * commands ignore them, so that a Ctrl-C for the whole job does not stop a copy half-way. Make it
 * first thing in main(), before any thread.
 */
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;

    /** From now on one of the signals ends the program at once: the user insists. */
    void letThrough();

Q_SIGNALS:
    /** One of the signals came. */
    void interrupted();

private:
    void read();

    int m_descriptor = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
