// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/command.h"
#include "host/shared/enginesession.h"
#include <QElapsedTimer>
#include <QEventLoop>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

/**
 * One run of the engine in a command: starts the session, shows what becomes of the regions, and
 * ends when the work is done, when the server is silent for too long, or at Ctrl-C. Whatever the
 * end, the engine is stopped and waited for; what is left stays for the next run.
 */
class SessionRun : public QObject
{
    Q_OBJECT

public:
    /** resumable: what is not done when it ends is gone on with by the next run. */
    SessionRun(EngineSession *session, CommandContext *context, bool resumable);

    /** Runs until endRun() or an end of its own; returns the exit code. */
    int run();
    /** The work is done; run() returns this code, unless something worse was found before. */
    void endRun(int code);
    /** There was news from the server: the patience begins anew. */
    void noteNews();

    /** Regions that failed in this run, with why. */
    QHash<QString, RegionStatus> failures() const;

Q_SIGNALS:
    /** The engine takes requests now. */
    void started();

private:
    void onInterrupted();
    void onSilence();
    void onStateChanged(const QString &id);
    void onProgressChanged(const QString &id);
    QString hint() const;
    QString label(const QString &id) const;
    QString progressLine(const QString &id) const;
    bool waitsForServer() const;

    EngineSession *const m_session; // not owned
    CommandContext *const m_context; // not owned
    QEventLoop m_loop;
    QTimer m_silence;
    QHash<QString, RegionStatus> m_failures;
    QHash<QString, QString> m_lastLines; // per region, on a non-terminal: what was said last
    QHash<QString, int> m_lastTenth;
    int m_code = ExitOk;
    const bool m_resumable;
    bool m_ended = false;
};
