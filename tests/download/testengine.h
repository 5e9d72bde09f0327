// SPDX-License-Identifier: MIT
#pragma once

#include "download/download.h"
#include "download/downloadmanager.h"
#include "download/request.h"
#include "download/settingsfile.h"
#include "download/worker.h"
#include "plugin/vexasettings.h"
#include <memory>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSemaphore>
#include <QSignalSpy>
#include <QStringList>
#include <QTest>
#include <QUrl>

/** Waits as long as a busy machine may need. */
#define EVENTUALLY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 60000)

/**
 * The download engine as a host has it: a worker whose thread runs, and spies on the interface.
 * Needs a TemporaryHome, and the test's event loop for the spies. Stopped by its destructor.
 */
class TestEngine
{
public:
    explicit TestEngine(int heartbeatMs = 5000)
        : worker(std::make_unique<Worker>())
        , finished(worker->getDownloadManagerIface(), &DownloadManagerIface::finished)
        , progress(worker->getDownloadManagerIface(), &DownloadManagerIface::progress)
        , error(worker->getDownloadManagerIface(), &DownloadManagerIface::error)
    {
        // No spy: the signal comes in the worker thread, and a spy must hear it in its own.
        QObject::connect(
            worker.get(), &Worker::engineReady, worker.get(), [this] { m_ready.release(); },
            Qt::DirectConnection);
        worker->setHeartbeatInterval(heartbeatMs);
        worker->setUnpackPause(0);
    }
    ~TestEngine() { stop(); }
    TestEngine(const TestEngine &) = delete;
    TestEngine &operator=(const TestEngine &) = delete;

    /** Starts the thread; nothing is fetched yet. */
    void startOffline()
    {
        worker->start();
        m_ready.acquire();
    }
    void goOnline()
    {
        manager()->setHasWiFi(true);
        manager()->allowGoOnline(true);
    }
    /** Starts the thread, with a network. */
    void start()
    {
        startOffline();
        goOnline();
    }
    /** Ends the thread, as a host does at its end. */
    void stop()
    {
        worker->stop();
        worker->wait();
    }

    DownloadManager *manager() const { return worker->getDownloadManager(); }

    /** Queues a download or a test download; returns its save file. */
    QString download(const QString &url, const QString &id = QStringLiteral("region"),
                     int type = DownloadRequest)
    {
        const QString file = saveFile(url);
        worker->enqueueRequest(Request(id, type, file, url));
        return file;
    }
    static QString saveFile(const QString &url)
    {
        return DownloadManager::fileNameFromUrl(QUrl::fromEncoded(url.toLocal8Bit()));
    }
    bool isIdle() const { return worker->getRequestQueue()->snapshot().isEmpty(); }

    const std::unique_ptr<Worker> worker;
    QSignalSpy finished;
    QSignalSpy progress;
    QSignalSpy error;

private:
    QSemaphore m_ready;
};

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be opened");
}

inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", qPrintable(path));
}

/** The record of the transfer in the settings. */
inline Download savedRecord()
{
    const VexaSettings::Locker settings;
    settings->sync();
    Download record;
    record.deSerialize(*settings);
    return record;
}

/** Whether queue and record are empty, in memory and on the disk: nothing is left of a request. */
inline bool isForgotten(const TestEngine &engine, const TemporaryHome &home)
{
    const SettingsFile settings(home);
    return engine.isIdle() && settings.requests().isEmpty()
        && settings.value(QStringLiteral("download/url")).toString().isEmpty()
        && settings.value(QStringLiteral("download/fileName")).toString().isEmpty()
        && settings.value(QStringLiteral("download/bytesReceived")).toLongLong() == 0;
}

/** Leaves in the settings what an earlier run would have left: a record and its request. */
inline void saveEarlierRun(const QString &url, const QString &fileName, qint64 bytesReceived,
                           qint64 bytesTotal)
{
    Download record;
    record.url = QUrl::fromEncoded(url.toLocal8Bit());
    record.fileName = fileName;
    record.bytesReceived = bytesReceived;
    record.bytesTotal = bytesTotal;
    record.downloadType = 1;
    {
        const VexaSettings::Locker settings;
        record.serialize(*settings);
        settings->beginWriteArray(QStringLiteral("requests"));
        settings->setArrayIndex(0);
        Request(QStringLiteral("region"), DownloadRequest, fileName, url).serialize(*settings);
        settings->endArray();
        settings->sync();
    }
    VexaSettings::destroy();
}

inline int savedRequestCount()
{
    const VexaSettings::Locker settings;
    settings->sync();
    const int size = settings->beginReadArray(QStringLiteral("requests"));
    settings->endArray();
    return size;
}
