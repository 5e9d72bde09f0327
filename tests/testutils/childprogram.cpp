// SPDX-License-Identifier: MIT
#include "testutils/childprogram.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <signal.h>

namespace {
constexpr int LookIntervalMs = 2;
}

void startTiedToUs(QProcess &process, const QString &program, const QStringList &arguments)
{
    // Sets the kernel's "kill me when my parent ends" and becomes the program; keeps the id.
    process.start(QStringLiteral("setpriv"),
                  QStringList {QStringLiteral("--pdeathsig"), QStringLiteral("KILL"),
                               QStringLiteral("--"), program}
                      + arguments);
    if (!process.waitForStarted())
        qFatal("setpriv does not start: %s", qPrintable(process.errorString()));
}

ChildProgram::ChildProgram(const QString &program, const QStringList &arguments,
                           const QProcessEnvironment &environment)
{
    m_process.setProcessEnvironment(environment);
    startTiedToUs(m_process, program, arguments);
}

ChildProgram::~ChildProgram()
{
    kill();
}

bool ChildProgram::waitFor(const std::function<bool()> &condition, int limitMs)
{
    QElapsedTimer clock;
    clock.start();
    while (true) {
        // Asked before the condition: what the program did just before its end still counts.
        const bool isOver = m_process.state() == QProcess::NotRunning;
        collect();
        if (condition())
            return true;
        if (isOver || clock.elapsed() >= limitMs)
            return false;
        m_process.waitForFinished(LookIntervalMs);
    }
}

bool ChildProgram::waitForFile(const QString &path, int limitMs)
{
    return waitFor([&] { return QFileInfo::exists(path); }, limitMs);
}

bool ChildProgram::waitForSize(const QString &path, qint64 bytes, int limitMs)
{
    return waitFor([&] { return QFileInfo(path).size() >= bytes; }, limitMs);
}

bool ChildProgram::waitForLine(const QByteArray &text, int limitMs)
{
    return waitFor(
        [&] {
            const int at = int(m_output.indexOf(text));
            return at >= 0 && m_output.indexOf('\n', at) >= 0;
        },
        limitMs);
}

void ChildProgram::kill()
{
    m_process.kill();
    m_process.waitForFinished(-1);
    collect();
}

void ChildProgram::sendSignal(int number)
{
    if (isRunning())
        ::kill(pid_t(m_process.processId()), number);
}

int ChildProgram::waitForFinished(int limitMs)
{
    if (!waitFor([this] { return !isRunning(); }, limitMs))
        return -2;
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

bool ChildProgram::isRunning() const
{
    return m_process.state() != QProcess::NotRunning;
}

void ChildProgram::write(const QByteArray &input)
{
    m_process.write(input);
    m_process.waitForBytesWritten();
}

QByteArray ChildProgram::output()
{
    collect();
    return m_output;
}

QByteArray ChildProgram::errorOutput()
{
    collect();
    return m_errorOutput;
}

void ChildProgram::collect()
{
    m_output += m_process.readAllStandardOutput();
    m_errorOutput += m_process.readAllStandardError();
}
