// SPDX-License-Identifier: MIT
#include "download/worker.h"

#include "download/downloadmanager.h"
#include "plugin/logger.h"
#include "plugin/vexasettings.h"
#include <QTimer>

Worker::Worker()
    : m_interface(this)
    , m_queue(&m_interface)
{
    L::og()->trace(QStringLiteral("Worker::Worker()"));
}

Worker::~Worker()
{
    L::og()->trace(QStringLiteral("virtual Worker::~Worker()"));
}

DownloadManagerIface *Worker::getDownloadManagerIface()
{
    return &m_interface;
}

RequestQueue<Request> *Worker::getRequestQueue()
{
    return &m_queue;
}

DownloadManager *Worker::getDownloadManager()
{
    return m_manager;
}

void Worker::enqueueRequest(const Request &request)
{
    // The queue's copy in the settings is about to be rewritten.
    m_queue.restoreSaved();
    m_queue.enqueue(request);
}

void Worker::suspend()
{
    withManager([](DownloadManager &manager) { manager.suspend(UserCause); });
}

void Worker::resume()
{
    withManager([](DownloadManager &manager) { manager.resume(UserCause); });
}

void Worker::cancel(const QString &url)
{
    withManager([&url](DownloadManager &manager) { manager.cancel(url); });
}

void Worker::allowGprsConnection(bool allow)
{
    withManager([allow](DownloadManager &manager) { manager.allowGprsConnection(allow); });
}

void Worker::stop()
{
    // One lock with run(), so that a thread that is just beginning either is told here or sees
    // the queue stopped.
    const std::lock_guard lock(m_managerMutex);
    withManager([](DownloadManager &manager) {
        manager.disconnect();
        manager.exit();
    });
    m_queue.stop();
}

void Worker::setUnpackPause(int ms)
{
    m_unpackPause = ms;
    withManager([ms](DownloadManager &manager) { manager.setUnpackPause(ms); });
}

void Worker::setContainedUnpack(bool contained)
{
    m_containedUnpack = contained;
    withManager([contained](DownloadManager &manager) { manager.setContainedUnpack(contained); });
}

void Worker::setHeartbeatInterval(int ms)
{
    m_heartbeatInterval = ms;
}

void Worker::threadSleep(unsigned long ms)
{
    QThread::msleep(ms);
}

void Worker::run()
{
    L::og()->trace(QStringLiteral("virtual void Worker::run()"));
    DownloadManager manager(&m_queue, nullptr);
    manager.setUnpackPause(m_unpackPause);
    manager.setContainedUnpack(m_containedUnpack);
    manager.setHeartbeatInterval(m_heartbeatInterval);

    // Ahead of the connections below, so that the list is there before the signal arrives: a GUI
    // that lags behind shows the list of the unpack that it is told of, and not a later one's.
    connect(&manager, &DownloadManager::finished, &manager,
            [this, &manager](int operation, const QString &url, const QString &id) {
                if (operation == UncompressRequest)
                    m_interface.expectUnpackedFileList(url, id, manager.getUnpackedFileList());
            });
    // Queued in so many words: a call from the GUI thread makes the manager emit there, and the
    // automatic kind would then run QML's handlers in the middle of that call.
    const auto queued = Qt::QueuedConnection;
    connect(&manager, &DownloadManager::progress, &m_interface, &DownloadManagerIface::onProgress,
            queued);
    connect(&manager, &DownloadManager::finished, &m_interface, &DownloadManagerIface::onFinished,
            queued);
    connect(&manager, &DownloadManager::error, &m_interface, &DownloadManagerIface::onError,
            queued);
    connect(&manager, &DownloadManager::recovery, &m_interface, &DownloadManagerIface::onRecovery,
            queued);
    connect(&manager, &DownloadManager::hasWifiConnectionChanged, &m_interface,
            &DownloadManagerIface::onWifiConnectionChanged, queued);
    connect(&manager, &DownloadManager::notifySuspended, &m_interface,
            &DownloadManagerIface::onNotifySuspended, queued);
    {
        const std::lock_guard lock(m_managerMutex);
        m_manager = &manager;
        m_managerAlive = true;
        if (m_queue.stopped)
            manager.exit(); // stop() came before there was a manager to tell
    }
    Q_EMIT engineReady();
    QTimer::singleShot(0, &manager, [&manager] { manager.run(); });
    exec();
    {
        // Waits for calls that are under way; the pointer stays, it only is not used any more.
        const std::lock_guard lock(m_managerMutex);
        m_managerAlive = false;
    }
    VexaSettings::destroy();
}
