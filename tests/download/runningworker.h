// SPDX-License-Identifier: MIT
#pragma once

#include "download/downloadmanager.h"
#include "download/worker.h"
#include <atomic>
#include <QByteArray>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <sys/syscall.h>
#include <unistd.h>

/**
 * A worker whose engine is there when the constructor returns, and whose thread has ended when the
 * destructor does. Nothing is allowed to go online yet.
 */
class RunningWorker
{
public:
    RunningWorker()
    {
        // Direct: it is emitted in the worker thread, whose number is wanted.
        QObject::connect(
            &worker, &Worker::engineReady, &worker,
            [this] { m_threadNumber = int(syscall(SYS_gettid)); }, Qt::DirectConnection);
        // Shows the thread checker what Qt's own wait hides from it: that the thread is over.
        QObject::connect(
            &worker, &QThread::finished, &worker, [this] { m_over = true; }, Qt::DirectConnection);
        worker.start();
        QDeadlineTimer limit(60000);
        while (m_threadNumber == 0 && !limit.hasExpired())
            QThread::msleep(1);
        if (m_threadNumber == 0)
            qFatal("the engine does not come up");
    }
    ~RunningWorker()
    {
        if (!stop())
            qFatal("the worker thread does not end");
    }
    Q_DISABLE_COPY(RunningWorker)

    Worker *operator->() { return &worker; }
    DownloadManagerIface &iface() { return *worker.getDownloadManagerIface(); }
    DownloadManager &manager() { return *worker.getDownloadManager(); }

    /** What a host with Wi-Fi does before it downloads. */
    void goOnline()
    {
        iface().setHasWiFi(true);
        iface().allowGoOnline(true);
    }

    /** Stops it; whether the thread ended. The limit only keeps a broken test from hanging. */
    bool stop()
    {
        worker.stop();
        return worker.wait(60000) && m_over;
    }

    /** Waits until the queue is empty without letting this thread's events be processed. */
    bool waitForEmptyQueue()
    {
        QDeadlineTimer limit(60000);
        while (!worker.getRequestQueue()->snapshot().isEmpty()) {
            if (limit.hasExpired())
                return false;
            QThread::msleep(2);
        }
        return true;
    }

    /** The kernel's number of the worker thread. */
    int threadNumber() const { return m_threadNumber; }

    Worker worker;

private:
    std::atomic<int> m_threadNumber {0};
    std::atomic<bool> m_over {false};
};

/** Delivers what is on its way to objects of this thread. */
inline void deliverEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::processEvents(); // what the first ones have posted
}

/** How often a thread of this process has gone to sleep of its own; -1 if there is none. */
inline qint64 sleepsOf(int threadNumber)
{
    QFile file(QStringLiteral("/proc/self/task/%1/status").arg(threadNumber));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray key = "\nvoluntary_ctxt_switches:";
    const QByteArray text = file.readAll();
    const auto at = text.indexOf(key) + key.size();
    return text.mid(at, text.indexOf('\n', at) - at).trimmed().toLongLong();
}
