// SPDX-License-Identifier: MIT
#include "host/cli/updaterun.h"

#include "host/cli/console.h"
#include "host/cli/signalwatcher.h"
#include <chrono>

namespace {

using State = DataSetUpdate::State;

QString stepLine(const DataSetUpdate &update)
{
    switch (update.state()) {
    case State::Checking:
        return UpdateRun::tr("Asking for the newest version");
    case State::Fetching:
        return UpdateRun::tr("Fetching the catalogue of version %1").arg(update.targetVersion());
    case State::Installing:
        return UpdateRun::tr("Preparing version %1").arg(update.targetVersion());
    case State::Swapping:
        return UpdateRun::tr("Putting version %1 in use").arg(update.targetVersion());
    default:
        return QString();
    }
}

} // namespace

UpdateRun::UpdateRun(DataSetUpdate *update, CommandContext *context)
    : m_update(update)
    , m_context(context)
{
    update->setPatience(std::chrono::milliseconds(context->timeoutMs));
    connect(update, &DataSetUpdate::stateChanged, this, &UpdateRun::onStateChanged);
    connect(update, &DataSetUpdate::progressChanged, this, &UpdateRun::onProgressChanged);
    connect(update, &DataSetUpdate::finished, &m_loop, &QEventLoop::quit);
    connect(context->signalWatcher, &SignalWatcher::interrupted, this, &UpdateRun::onInterrupted);
}

int UpdateRun::run()
{
    m_update->start();
    m_loop.exec();
    m_context->console.clearProgress();
    if (!m_update->errorString().isEmpty())
        m_context->console.error(m_update->errorString());
    return exitCode();
}

// Stopping waits, at most for the end of a move; who does not want to may insist. A swap that has
// begun comes to its end.
void UpdateRun::onInterrupted()
{
    if (m_update->state() == State::Swapping || !m_update->isRunning())
        return;
    m_context->console.error(tr("Interrupted. \"vexa-maps update\" goes on."));
    m_context->signalWatcher->letThrough();
    m_update->stop();
}

void UpdateRun::onStateChanged()
{
    const QString line = stepLine(*m_update);
    if (line.isEmpty() || line == m_lastLine)
        return;
    m_lastLine = line;
    if (m_context->console.isTerminal())
        m_context->console.progress(line);
    else
        m_context->console.note(line);
}

void UpdateRun::onProgressChanged()
{
    if (m_update->state() != State::Installing || m_update->region().isEmpty())
        return;
    if (m_context->console.isTerminal()) {
        m_context->console.progress(progressLine());
        return;
    }
    // A log file wants a line now and then.
    const int tenth = int(m_update->fraction() * 10);
    if (tenth > m_lastTenth)
        m_context->console.note(progressLine());
    m_lastTenth = tenth;
}

QString UpdateRun::progressLine() const
{
    const double fraction = m_update->fraction();
    const RegionStatus status = m_update->regionStatus();
    QString line = fraction < 0
        ? QString()
        : QStringLiteral("%1 %2 %  ").arg(Console::bar(fraction)).arg(int(fraction * 100), 3);
    line += m_update->regionName(m_update->region()) + QLatin1String(": ")
        + RegionWords::sentence(status);
    if (status.state == RegionState::Downloading && status.bytesPerSecond > 0)
        line += tr("  %1/s").arg(RegionWords::size(status.bytesPerSecond));
    return line;
}

int UpdateRun::exitCode() const
{
    switch (m_update->state()) {
    case State::Done:
    case State::UpToDate:
        return ExitOk;
    case State::Stopped:
        return ExitInterrupted;
    default:
        return m_update->failure() == FailureKind::Network ? ExitNetwork : ExitFailure;
    }
}
