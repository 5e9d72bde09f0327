// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/regionfiles.h"
#include <QList>
#include <QObject>
#include <QString>
#include <QThreadPool>

/**
 * Counts what the removal of a region would free and keep, in a thread of its own: each of its
 * thousands of tiles is looked for on a card that may be slow.
 *
 * Lives in the GUI thread. Its destructor waits for a count that is under way.
 */
class RemovalCount : public QObject
{
    Q_OBJECT

public:
    explicit RemovalCount(QObject *parent = nullptr);
    ~RemovalCount() override;

    /**
     * Counts for this region, of what is installed; counted() follows. A count that is under way is
     * given up for it.
     */
    void start(const QList<InstalledTiles> &installed, const QString &id,
               const QString &tileCacheFolder);
    /** Gives the count up: counted() does not follow. */
    void cancel();
    bool isRunning() const;

Q_SIGNALS:
    void counted(const RemovalFigures &figures);

private:
    void onCounted(int question, const RemovalFigures &figures);

    int m_question = 0; // the number of the newest
    bool m_running = false;
    QThreadPool m_thread;
};
