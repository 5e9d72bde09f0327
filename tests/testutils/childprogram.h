// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

/** Starts a program that the kernel kills when the calling thread ends, however that comes. */
void startTiedToUs(QProcess &process, const QString &program, const QStringList &arguments);

/**
 * A program that a test starts, watches and, if it likes, kills at a chosen moment, as a crash or
 * an empty battery would. Killed at the latest by the destructor.
 *
 *     ChildProgram child(program, arguments);
 *     QVERIFY(child.waitForSize(saveFile, 1 * MiB));
 *     child.kill();
 */
class ChildProgram
{
public:
    ChildProgram(const QString &program, const QStringList &arguments,
                 const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());
    ~ChildProgram();
    ChildProgram(const ChildProgram &) = delete;
    ChildProgram &operator=(const ChildProgram &) = delete;

    /** Waits until the condition holds; false if the program ends first or the time is over. */
    bool waitFor(const std::function<bool()> &condition, int limitMs = 30000);
    bool waitForFile(const QString &path, int limitMs = 30000);
    /** Until the file has at least this many bytes. */
    bool waitForSize(const QString &path, qint64 bytes, int limitMs = 30000);
    /** Until one line of the standard output has this text in it. */
    bool waitForLine(const QByteArray &text, int limitMs = 30000);

    /** kill -9; returns when the program is gone. */
    void kill();
    /** Another signal, e.g. SIGINT; does not wait. */
    void sendSignal(int number);
    /** The exit status; -1 for a crash or kill, -2 if it still runs after the limit. */
    int waitForFinished(int limitMs = 60000);
    bool isRunning() const;

    void write(const QByteArray &input);
    /** The standard output so far. */
    QByteArray output();
    /** The standard error so far. */
    QByteArray errorOutput();

private:
    void collect();

    QProcess m_process;
    QByteArray m_output;
    QByteArray m_errorOutput;
};
