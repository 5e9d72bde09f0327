// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/command.h"
#include "host/shared/datasetupdate.h"
#include <QEventLoop>
#include <QObject>
#include <QString>

/**
 * One run of an update in the command: shows how far it is, ends it at Ctrl-C, and returns when it
 * is over. Whatever the end, the engine is stopped then.
 */
class UpdateRun : public QObject
{
    Q_OBJECT

public:
    UpdateRun(DataSetUpdate *update, CommandContext *context);

    /** Starts the update and returns the exit code of what came of it. */
    int run();

private:
    void onInterrupted();
    void onStateChanged();
    void onProgressChanged();
    QString progressLine() const;
    int exitCode() const;

    DataSetUpdate *const m_update; // not owned
    CommandContext *const m_context; // not owned
    QEventLoop m_loop;
    QString m_lastLine; // on a non-terminal: what was said last
    int m_lastTenth = 0;
};
