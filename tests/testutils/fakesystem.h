// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QByteArray>
#include <QList>

/**
 * Stands between the library and the C library's system() and rename() while it lives: notes the
 * commands, takes the shell away, lets commands or renames fail. Without orders everything is
 * passed on. Linked into a test program it replaces the two functions for the whole process. One
 * at a time; give orders only while no worker runs.
 */
class FakeSystem
{
public:
    FakeSystem();
    ~FakeSystem();
    FakeSystem(const FakeSystem &) = delete;
    FakeSystem &operator=(const FakeSystem &) = delete;

    /** From now on there is no shell. */
    void takeShellAway();
    /** Commands that begin so are not run; they seem to return this. */
    void answer(const QByteArray &beginning, int result);
    /** Called ahead of each command, in the thread that runs it. */
    void beforeCommand(const std::function<void(const QByteArray &)> &look);
    /** Lets a rename from this path fail as one to another file system does. */
    void separate(const QByteArray &source);
    /** Called ahead of each rename that is passed on. */
    void beforeRename(const std::function<void(const QByteArray &, const QByteArray &)> &look);

    /** Every command so far, run or not. */
    QList<QByteArray> commands() const;
};
