// SPDX-License-Identifier: MIT
#include "download/downloadmanageriface.h"

#include "download/downloadmanager.h"
#include "download/worker.h"
#include "plugin/dataroot.h"
#include "plugin/logger.h"
#include "plugin/vexaconstants.h"
#include <algorithm>
#include <QDir>
#include <QFile>
#include <QMutexLocker>
#include <QUrl>
#include <QVariantMap>
#include <sys/statfs.h>

namespace {

// The log lines show numbers as the character with that code: the format is relied on.
QString asCharacter(quint64 number, quint64 mask = 0xffff)
{
    return QString(QChar(ushort(number & mask)));
}

// ... and booleans as the place at which the label begins.
QString fromIndex(const QString &label, bool index)
{
    return label.mid(index ? 1 : 0);
}

QString saveFileFor(const QString &url)
{
    return DownloadManager::fileNameFromUrl(QUrl::fromEncoded(url.toLocal8Bit()));
}

} // namespace

DownloadManagerIface::DownloadManagerIface(Worker *worker)
    : m_worker(worker)
{ }

DownloadManagerIface::~DownloadManagerIface()
{
    QObject::disconnect(this, nullptr, nullptr, nullptr);
}

void DownloadManagerIface::testDownload(const QString &url)
{
    m_worker->enqueueRequest(
        Request(QStringLiteral(""), TestDownloadRequest, saveFileFor(url), url));
}

void DownloadManagerIface::download(const QString &id, const QString &url, const QString &destDir,
                                    bool unzip)
{
    const QString fileName = saveFileFor(url);
    m_worker->enqueueRequest(Request(id, DownloadRequest, fileName, url));
    QString source = fileName;
    if (unzip) {
        m_worker->enqueueRequest(Request(id, UncompressRequest, fileName, url));
        source = QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE;
    }
    m_worker->enqueueRequest(Request(id, MoveRequest, QStringList {source, destDir}, url));
}

void DownloadManagerIface::suspend()
{
    suspend(UserCause);
}

void DownloadManagerIface::resume()
{
    resume(UserCause);
}

void DownloadManagerIface::cancel(const QString &url)
{
    m_worker->cancel(url);
}

void DownloadManagerIface::cancelAll()
{
    cancel(QString());
}

void DownloadManagerIface::allowGprsConnection(bool allow)
{
    m_allowGprs = allow;
    m_worker->allowGprsConnection(allow);
}

QVariantList DownloadManagerIface::getRequests()
{
    QVariantList list;
    const QList<Request> requests = m_worker->getRequestQueue()->snapshot();
    for (const Request &request : requests) {
        list.append(QVariantMap {{QStringLiteral("url"), request.url},
                                 {QStringLiteral("type"), request.type},
                                 {QStringLiteral("id"), request.id}});
    }
    return list;
}

bool DownloadManagerIface::isInQueue(const QString &id)
{
    const QList<Request> requests = m_worker->getRequestQueue()->snapshot();
    return std::any_of(requests.begin(), requests.end(),
                       [&id](const Request &request) { return request.id == id; });
}

QString DownloadManagerIface::currentlyActiveId()
{
    return m_worker->getRequestQueue()->snapshot().value(0).id;
}

void DownloadManagerIface::allowGoOnline(bool allow)
{
    m_worker->withManager([allow](DownloadManager &manager) { manager.allowGoOnline(allow); });
}

void DownloadManagerIface::suspend(SuspensionCause cause)
{
    bool nowSuspended = false;
    const bool told = m_worker->withManager([cause, &nowSuspended](DownloadManager &manager) {
        manager.suspend(cause);
        nowSuspended = manager.suspended();
    });
    if (told)
        tellSuspended(nowSuspended);
}

void DownloadManagerIface::resume(SuspensionCause cause)
{
    bool nowSuspended = false;
    const bool told = m_worker->withManager([cause, &nowSuspended](DownloadManager &manager) {
        manager.resume(cause);
        nowSuspended = manager.suspended();
    });
    if (told)
        tellSuspended(nowSuspended);
}

// Behind the call and not within it: a handler may stop the worker and wait for its end.
void DownloadManagerIface::tellSuspended(bool suspended)
{
    Q_EMIT isSuspended(suspended);
    Q_EMIT isSuspendedChanged();
}

bool DownloadManagerIface::suspended()
{
    bool suspended = true;
    m_worker->withManager(
        [&suspended](DownloadManager &manager) { suspended = manager.suspended(); });
    return suspended;
}

bool DownloadManagerIface::isInRecovery()
{
    return m_inRecovery;
}

bool DownloadManagerIface::hasWifiConnection() const
{
    return m_hasWifi;
}

bool DownloadManagerIface::doAllowGprsConnection()
{
    return m_allowGprs;
}

void DownloadManagerIface::setHasWiFi(bool hasWiFi)
{
    L::og()->info(QStringLiteral("void DownloadManagerIface::setHasWiFi(bool)"));
    m_hasWifi = hasWiFi;
    Q_EMIT hasWifiConnectionChanged();
    m_worker->withManager([hasWiFi](DownloadManager &manager) { manager.setHasWiFi(hasWiFi); });
}

QStringList DownloadManagerIface::getUnpackedFileList() const
{
    return m_unpackedFileList;
}

void DownloadManagerIface::setUnpackedFileList(const QStringList &list)
{
    m_unpackedFileList = list;
    Q_EMIT unpackedFileListChanged();
}

quint64 DownloadManagerIface::getFreeSpace()
{
    const QString path = DataRoot::mountPoint();
    struct statfs fileSystem = {};
    statfs(QFile::encodeName(path).constData(), &fileSystem); // a failure leaves zeros: no space
    const quint64 bytes = quint64(fileSystem.f_bavail) * quint64(fileSystem.f_bsize);
    L::og()->info(QLatin1String("Free space on ") + path + QLatin1String("partition is: ")
                  + asCharacter(bytes, 0xff) + QLatin1String(" bytes"));
    return bytes;
}

void DownloadManagerIface::onChanged()
{
    L::og()->trace(QStringLiteral("virtual void DownloadManagerIface::onChanged()"));
    Q_EMIT requestsChanged();
}

void DownloadManagerIface::expectUnpackedFileList(const QString &first, const QString &second,
                                                  const QStringList &list)
{
    const QMutexLocker lock(&m_expectedMutex);
    m_expectedLists.push_back({first, second, list});
}

std::optional<QStringList> DownloadManagerIface::takeExpectedList(const QString &first,
                                                                  const QString &second)
{
    const QMutexLocker lock(&m_expectedMutex);
    const auto it = std::find_if(m_expectedLists.begin(), m_expectedLists.end(),
                                 [&](const ExpectedList &expected) {
                                     return expected.first == first && expected.second == second;
                                 });
    if (it == m_expectedLists.end())
        return std::nullopt;
    const QStringList files = it->files;
    m_expectedLists.erase(it);
    return files;
}

void DownloadManagerIface::onFinished(int operation, const QString &id, const QString &url)
{
    L::og()->trace(QLatin1String("void DownloadManagerIface::onFinished(int, const QString&, "
                                 "const QString&)operation: ")
                   + asCharacter(quint64(operation)) + QLatin1String("url: ") + id);
    // Ahead of the signal, so that a nested call cannot take it for its own.
    std::optional<QStringList> files;
    if (operation == UncompressRequest)
        files = takeExpectedList(id, url);
    Q_EMIT finished(operation, id, url);
    if (operation != UncompressRequest)
        return;
    if (!files)
        m_worker->withManager(
            [&files](DownloadManager &manager) { files = manager.getUnpackedFileList(); });
    if (files)
        setUnpackedFileList(*files);
}

void DownloadManagerIface::onProgress(int operation, const QString &id, const QString &url,
                                      qint64 bytesReceived, qint64 bytesTotal, qint64 estimatedTime)
{
    Q_EMIT progress(operation, id, url, bytesReceived, bytesTotal, estimatedTime);
}

void DownloadManagerIface::onError(int operation, const QString &id, int error, const QString &url)
{
    L::og()->warning(QLatin1String("operation: ") + asCharacter(quint64(operation))
                         + QLatin1String("error: ") + asCharacter(quint64(error)),
                     QStringLiteral("void DownloadManagerIface::onError(int, const QString&, int, "
                                    "const QString&)"));
    Q_EMIT this->error(operation, id, error, url);
}

void DownloadManagerIface::onRecovery(bool isSuspended)
{
    L::og()->info(fromIndex(QStringLiteral("isSuspended: "), isSuspended),
                  QStringLiteral("void DownloadManagerIface::onRecovery(bool)"));
    m_suspended = isSuspended;
    m_inRecovery = true;
    Q_EMIT recovery(isSuspended);
}

void DownloadManagerIface::onWifiConnectionChanged(bool hasWifiConnection)
{
    L::og()->trace(fromIndex(QStringLiteral("HasWifiConnection: "), hasWifiConnection),
                   QStringLiteral("void DownloadManagerIface::onWifiConnectionChanged(bool)"));
    m_hasWifi = hasWifiConnection;
    Q_EMIT hasWifiConnectionChanged();
}

void DownloadManagerIface::onSessionStateChanged(int state)
{
    Q_UNUSED(state);
}

void DownloadManagerIface::onNotifySuspended(bool suspended)
{
    m_suspended = suspended;
    Q_EMIT isSuspendedChanged();
}

void DownloadManagerIface::prepareToDestroy()
{
    m_worker->withManager([](DownloadManager &manager) { manager.prepareToDestroy(); });
}
