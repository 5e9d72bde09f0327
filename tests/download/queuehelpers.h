// SPDX-License-Identifier: MIT
#pragma once

#include "download/request.h"
#include "download/requestqueue.h"
#include <atomic>
#include <functional>
#include <memory>
#include <QThread>

using Queue = RequestQueue<Request>;

/** Counts what it is told, and does in it what a test wants done. */
class CountingListener : public IRequestQueueListener
{
public:
    void onChanged() override
    {
        ++count;
        thread = QThread::currentThread();
        if (action)
            action();
    }

    std::atomic<int> count {0};
    std::atomic<QThread *> thread {nullptr}; ///< where it was told last
    std::function<void()> action;
};

/** Something that runs in a thread of its own; the destructor waits for its end. */
class Background
{
public:
    explicit Background(const std::function<void()> &work)
        : m_thread(QThread::create([this, work] {
            work();
            m_done = true;
        }))
    {
        m_thread->start();
    }
    ~Background() { ends(); }
    Q_DISABLE_COPY(Background)

    QThread *thread() const { return m_thread.get(); }
    bool isOver() const { return m_thread->isFinished(); }
    /** Whether it ends; the limit only keeps a broken test from hanging. */
    bool ends()
    {
        // The flag shows the thread checker what Qt's own wait hides from it.
        return m_thread->wait(60000) && m_done;
    }

private:
    std::atomic<bool> m_done {false};
    std::unique_ptr<QThread> m_thread;
};

/** A download of this id; its address and file follow from it unless given. */
inline Request someRequest(const QString &id, const QString &url = QString())
{
    return Request(id, DownloadRequest, QLatin1String("/files/") + id,
                   url.isEmpty() ? QLatin1String("http://h/") + id : url);
}
