// SPDX-License-Identifier: MIT
#ifndef VEXA_WORKER_H
#define VEXA_WORKER_H

#include "download/downloadmanageriface.h"
#include "download/request.h"
#include "download/requestqueue.h"
#include "vexa_export.h"
#include <atomic>
#include <mutex>
#include <QString>
#include <QThread>

class DownloadManager;

/**
 * The thread in which downloads run, and the owner of what the download engine consists of: the
 * interface for QML, the request queue and, while the thread runs, the download manager.
 *
 * The host application makes one in the GUI thread, starts it, gives getDownloadManagerIface() to
 * QML, and at its end calls stop() and wait() before it deletes it. Nothing in the library makes
 * one. All members are for the GUI thread unless they say otherwise.
 *
 * The members that only pass a call on to the manager do nothing before engineReady() and after
 * the thread has ended.
 */
class VEXA_EXPORT Worker : public QThread
{
    Q_OBJECT

public:
    /** The thread is not started. */
    Worker();
    /** Neither stops the thread nor waits for it: the host has done both. */
    ~Worker() override;

    /** What QML works with; owned by the worker, never null. */
    DownloadManagerIface *getDownloadManagerIface();
    /** The queue; owned by the worker, never null. */
    RequestQueue<Request> *getRequestQueue();
    /** The manager; null before engineReady(), and not to be used once the thread has ended. */
    DownloadManager *getDownloadManager();

    /**
     * Queues a request and writes the queue to the settings. Works at any time: what an earlier
     * run has left there is taken up first and keeps its place in front. Any thread.
     */
    void enqueueRequest(const Request &request);

    /** Suspends at the user's request. */
    void suspend();
    /** Resumes at the user's request; see DownloadManager::resume(). */
    void resume();
    /** Cancels the requests with this address; an empty one means all. */
    void cancel(const QString &url);
    /** Whether the mobile network may be used; false until somebody allows it, at each start. */
    void allowGprsConnection(bool allow);

    /**
     * Makes the thread end, at once or, if it has not begun yet, as soon as it does. No signal of
     * the engine reaches the interface any more, but for those that are already on their way.
     * Does not wait; what is unfinished stays in the settings and is done at the next start. The
     * host's wait() must not come from within a handler of requestsChanged(), which a cancel()
     * emits while it still uses the manager.
     */
    void stop();

    /**
     * Pause after each block of an unpack, in ms; 30 by default. It leaves the device to others; a
     * host on a fast machine sets 0. Takes effect with the next unpack.
     */
    void setUnpackPause(int ms);
    /**
     * Whether archives that would write outside the scratch folder are refused; false by default.
     * Takes effect with the next unpack.
     */
    void setContainedUnpack(bool contained);
    /**
     * Time without progress after which a transfer is sent again, in ms; 5000 by default. Takes
     * effect at the start of the thread.
     */
    void setHeartbeatInterval(int ms);

    /** Lets the calling thread sleep for so many ms. Any thread. */
    static void threadSleep(unsigned long ms);

    /**
     * Calls with the manager if there is one that works; returns whether there was. The thread
     * cannot end before the call is over, so the call must not wait for that. Any thread.
     */
    template <typename Call> bool withManager(Call call)
    {
        // Recursive: a cancel changes the queue, and whoever hears of that may come back here.
        const std::lock_guard lock(m_managerMutex);
        if (!m_managerAlive)
            return false;
        call(*m_manager.load());
        return true;
    }

Q_SIGNALS:
    /** The manager is there: from now on calls reach it. Emitted in the worker thread. */
    void engineReady();

protected:
    /** The thread: makes the manager and runs its event loop until stop(). */
    void run() override;

private:
    DownloadManagerIface m_interface;
    RequestQueue<Request> m_queue; // after the interface, which listens to it
    std::atomic<DownloadManager *> m_manager {nullptr}; // on the stack of run()
    std::recursive_mutex m_managerMutex; // held while the manager is called from outside
    bool m_managerAlive = false; // under m_managerMutex
    std::atomic<int> m_unpackPause {30};
    std::atomic<bool> m_containedUnpack {false};
    std::atomic<int> m_heartbeatInterval {5000};
};

#endif
