// SPDX-License-Identifier: MIT
#include "host/shared/moveguard.h"

#include "download/downloadmanager.h"
#include "download/worker.h"
#include "host/shared/attempttag.h"
#include "host/shared/installjournal.h"
#include "host/shared/tilelist.h"
#include "plugin/vexaconstants.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>

namespace {

QString key(const QString &id, int attempt)
{
    return QString::number(attempt) + QLatin1Char(':') + id;
}

QString scratchFolder()
{
    return QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE;
}

} // namespace

MoveGuard::MoveGuard(Worker *worker, InstallJournal *journal)
    : m_worker(worker)
    , m_journal(journal)
{
    // Direct: the connections must stand before the engine takes up its first request.
    connect(
        worker, &Worker::engineReady, this, [this] { watchEngine(); }, Qt::DirectConnection);
}

bool MoveGuard::refuse(const QString &id, int attempt)
{
    const QMutexLocker lock(&m_mutex);
    if (m_moving.contains(key(id, attempt)))
        return false;
    m_refused.insert(key(id, attempt));
    return true;
}

void MoveGuard::expectSize(const QString &id, int attempt, qint64 bytes)
{
    const QMutexLocker lock(&m_mutex);
    m_expected.insert(key(id, attempt), bytes);
}

void MoveGuard::forget(const QString &id, int attempt)
{
    const QMutexLocker lock(&m_mutex);
    m_expected.remove(key(id, attempt));
    m_refused.remove(key(id, attempt));
    m_moving.remove(key(id, attempt));
}

// In the worker thread, like all below.
void MoveGuard::watchEngine()
{
    const DownloadManager *engine = m_worker->getDownloadManager();
    connect(
        engine, &DownloadManager::error, this,
        [this](int operation, const QString &id, int, const QString &url) {
            onError(operation, id, url);
        },
        Qt::DirectConnection);
    connect(
        engine, &DownloadManager::progress, this,
        [this](int operation, const QString &url, const QString &id) {
            onProgress(operation, id, url);
        },
        Qt::DirectConnection);
    connect(
        engine, &DownloadManager::finished, this,
        [this](int operation, const QString &url, const QString &id) {
            if (operation == DownloadRequest)
                onDownloaded(id, attemptOf(id, url));
        },
        Qt::DirectConnection);
}

// The request is put away behind its signal, so it is still the queue's head.
void MoveGuard::onDownloaded(const QString &id, int attempt)
{
    const QList<Request> queue = m_worker->getRequestQueue()->snapshot();
    if (queue.isEmpty() || queue.first().id != id)
        return; // cancelled just now
    const QString archive = queue.first().payload.toString();
    const qint64 size = QFileInfo(archive).size();
    {
        const QMutexLocker lock(&m_mutex);
        const qint64 expected = m_expected.value(key(id, attempt));
        if (expected <= 0 || size == expected)
            return;
        m_refused.insert(key(id, attempt));
    }
    // The unpack that would have removed it is about to be cancelled.
    QFile::remove(archive); // Only a leftover if it fails.
    Q_EMIT otherSize(id, attempt, size);
}

void MoveGuard::onError(int operation, const QString &id, const QString &url)
{
    if (operation == DownloadRequest || operation == UncompressRequest)
        refuse(id, attemptOf(id, url));
}

// A move tells its progress once, before it touches a file.
void MoveGuard::onProgress(int operation, const QString &id, const QString &url)
{
    if (operation == MoveRequest)
        onMoveBegins(id, attemptOf(id, url));
}

void MoveGuard::onMoveBegins(const QString &id, int attempt)
{
    bool refused = false;
    {
        const QMutexLocker lock(&m_mutex);
        refused = m_refused.contains(key(id, attempt));
        if (!refused)
            m_moving.insert(key(id, attempt));
    }
    if (refused) {
        TileList::empty(scratchFolder()); // What stays is no worse than without us.
        return;
    }
    // Empty when this run did not unpack it; then the journal learnt it before the start.
    const QStringList unpacked = m_worker->getDownloadManager()->getUnpackedFileList();
    if (!unpacked.isEmpty())
        m_journal->noteUnpacked(id, attempt, unpacked);
    if (beforeMove)
        beforeMove();
}

// A step that is taken up after a restart may come without the address.
int MoveGuard::attemptOf(const QString &id, const QString &url) const
{
    if (!url.isEmpty())
        return AttemptTag::of(url);
    const auto entry = m_journal->find(id);
    return entry ? entry->attempt : 0;
}
