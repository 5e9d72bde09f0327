// SPDX-License-Identifier: MIT
#include "host/shared/removalcount.h"

RemovalCount::RemovalCount(QObject *parent)
    : QObject(parent)
{
    m_thread.setMaxThreadCount(1);
}

RemovalCount::~RemovalCount()
{
    m_thread.clear();
    m_thread.waitForDone();
}

void RemovalCount::start(const QList<InstalledTiles> &installed, const QString &id,
                         const QString &tileCacheFolder)
{
    m_thread.clear(); // What has not begun is not wanted any more.
    const int question = ++m_question;
    m_running = true;
    m_thread.start([this, installed, id, tileCacheFolder, question] {
        const RemovalFigures figures =
            RegionFiles::planRemoval(installed, {id}, tileCacheFolder).regions.value(0);
        QMetaObject::invokeMethod(
            this, [this, question, figures] { onCounted(question, figures); },
            Qt::QueuedConnection);
    });
}

void RemovalCount::cancel()
{
    m_thread.clear();
    ++m_question;
    m_running = false;
}

bool RemovalCount::isRunning() const
{
    return m_running;
}

void RemovalCount::onCounted(int question, const RemovalFigures &figures)
{
    if (question != m_question)
        return;
    m_running = false;
    Q_EMIT counted(figures);
}
