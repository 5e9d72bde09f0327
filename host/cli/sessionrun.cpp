// SPDX-License-Identifier: MIT
#include "host/cli/sessionrun.h"

#include "catalog/mapregion.h"
#include "download/downloadmanageriface.h"
#include "host/cli/regionlookup.h"
#include "host/cli/signalwatcher.h"
#include "host/shared/diskprobe.h"

SessionRun::SessionRun(EngineSession *session, CommandContext *context, bool resumable)
    : m_session(session)
    , m_context(context)
    , m_resumable(resumable)
{
    m_silence.setSingleShot(true);
    m_silence.setInterval(context->timeoutMs);
    connect(&m_silence, &QTimer::timeout, this, &SessionRun::onSilence);
    connect(context->signalWatcher, &SignalWatcher::interrupted, this, &SessionRun::onInterrupted);
    RegionInstaller *installer = session->installer();
    connect(installer, &RegionInstaller::stateChanged, this, &SessionRun::onStateChanged);
    connect(installer, &RegionInstaller::progressChanged, this, &SessionRun::onProgressChanged);
    connect(session, &EngineSession::started, this, [this, installer] {
        installer->resume(); // Whoever types a command wants it done now.
        Q_EMIT started();
    });
    // A test of patience only for the server: an archive may take long to unpack.
    connect(session->downloads(), &DownloadManagerIface::finished, this, [this] { noteNews(); });
}

int SessionRun::run()
{
    m_session->start();
    m_silence.start();
    if (!m_ended)
        m_loop.exec();
    m_silence.stop();
    m_context->console.clearProgress();
    // Stopping waits, at most for the end of a move; who does not want to may insist.
    m_context->signalWatcher->letThrough();
    m_session->stop();
    return m_code;
}

void SessionRun::endRun(int code)
{
    if (m_ended)
        return;
    m_ended = true;
    m_code = code;
    m_loop.quit();
}

void SessionRun::noteNews()
{
    m_silence.start();
}

QHash<QString, RegionStatus> SessionRun::failures() const
{
    return m_failures;
}

void SessionRun::onInterrupted()
{
    if (m_ended)
        return;
    m_context->console.error(tr("Interrupted.") + hint());
    endRun(ExitInterrupted);
}

void SessionRun::onSilence()
{
    if (!waitsForServer()) {
        m_silence.start();
        return;
    }
    const QString trouble = DiskProbe::trouble();
    if (!trouble.isEmpty()) {
        m_context->console.error(trouble + hint());
        endRun(ExitFailure);
        return;
    }
    m_context->console.error(
        tr("The server has been silent for %1 s; giving up.").arg(m_context->timeoutMs / 1000)
        + hint());
    endRun(ExitNetwork);
}

bool SessionRun::waitsForServer() const
{
    const QVariantList requests = m_session->downloads()->getRequests();
    if (requests.isEmpty())
        return false;
    const int type = requests.first().toMap().value(QStringLiteral("type")).toInt();
    return type == DownloadRequest || type == TestDownloadRequest;
}

void SessionRun::onStateChanged(const QString &id)
{
    noteNews();
    const RegionStatus status = m_session->installer()->status(id);
    m_lastTenth.remove(id);
    if (status.state == RegionState::Failed) {
        m_failures.insert(id, status);
        m_context->console.error(label(id) + QLatin1String(": ") + status.reason);
        return;
    }
    m_failures.remove(id);
    const QString line = label(id) + QLatin1String(": ") + RegionWords::sentence(status);
    const bool isEnd = status.state == RegionState::Installed;
    if (m_context->console.isTerminal() && !isEnd)
        m_context->console.progress(progressLine(id));
    else if (m_lastLines.value(id) != line)
        m_context->console.note(line);
    m_lastLines.insert(id, line);
}

void SessionRun::onProgressChanged(const QString &id)
{
    noteNews();
    if (m_context->console.isTerminal()) {
        m_context->console.progress(progressLine(id));
        return;
    }
    // A log file wants a line now and then.
    const RegionStatus status = m_session->installer()->status(id);
    const int tenth = int(status.fraction() * 10);
    if (tenth <= m_lastTenth.value(id, 0))
        return;
    m_lastTenth.insert(id, tenth);
    m_context->console.note(label(id) + QLatin1String(": ") + RegionWords::sentence(status));
}

QString SessionRun::hint() const
{
    return m_resumable ? tr(" \"vexa-maps resume\" goes on.") : QString();
}

QString SessionRun::label(const QString &id) const
{
    const MapRegion *region = m_session->catalog()->region(id);
    const QString name = region ? RegionLookup::displayName(*region) : QString();
    return name.isEmpty() || name == id ? id : tr("%1 (%2)").arg(id, name);
}

QString SessionRun::progressLine(const QString &id) const
{
    const RegionStatus status = m_session->installer()->status(id);
    const double fraction = status.fraction();
    if (fraction < 0)
        return label(id) + QLatin1String(": ") + RegionWords::sentence(status);
    QString line = QStringLiteral("%1 %2 %3 %")
                       .arg(label(id), Console::bar(fraction))
                       .arg(int(fraction * 100), 3);
    if (status.state != RegionState::Downloading)
        return line + QLatin1String("  ") + RegionWords::sentence(status);
    line += tr("  %1 of %2").arg(RegionWords::size(status.bytes), RegionWords::size(status.total));
    if (status.bytesPerSecond > 0)
        line += tr("  %1/s").arg(RegionWords::size(status.bytesPerSecond));
    if (status.remainingMs >= 0)
        line += tr("  %1 left").arg(RegionWords::duration(status.remainingMs));
    return line;
}
