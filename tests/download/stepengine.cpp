// SPDX-License-Identifier: MIT
#include "download/stepengine.h"

#include "plugin/vexaconstants.h"
#include <QDir>
#include <QDirIterator>
#include <QTimer>

StepEngine::StepEngine()
    : queue(this)
    , manager(&queue, nullptr)
{
    manager.setUnpackPause(0);
    QObject::connect(&manager, &DownloadManager::finished,
                     [this](int operation, const QString &url, const QString &id) {
                         add(QStringLiteral("finished(%1, ").arg(operation) + url
                             + QLatin1String(", ") + id + QLatin1Char(')'));
                     });
    QObject::connect(&manager, &DownloadManager::error,
                     [this](int operation, const QString &id, int code, const QString &url) {
                         add(QStringLiteral("error(%1, ").arg(operation) + id
                             + QStringLiteral(", %1, ").arg(code) + url + QLatin1Char(')'));
                     });
    QObject::connect(&manager, &DownloadManager::progress,
                     [this](int operation, const QString &url, const QString &id, qint64 bytes,
                            qint64 total, qint64 time) {
                         add(QStringLiteral("progress(%1, ").arg(operation) + url
                             + QLatin1String(", ") + id
                             + QStringLiteral(", %1, %2, %3)").arg(bytes).arg(total).arg(time));
                     });
}

void StepEngine::run()
{
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [this] {
        if (queue.snapshot().isEmpty())
            stop();
    });
    timer.start(0);
    m_running = true;
    manager.run();
    m_running = false;
}

void StepEngine::stop()
{
    manager.exit();
    queue.stop();
}

QStringList StepEngine::eventsLike(const QString &beginning) const
{
    QStringList matching;
    for (const QString &event : events) {
        if (event.startsWith(beginning))
            matching.append(event);
    }
    return matching;
}

void StepEngine::onChanged()
{
    if (m_running)
        add(QStringLiteral("dequeued"));
}

void StepEngine::add(const QString &event)
{
    events.append(event);
    if (onEvent)
        onEvent(event);
}

Request Step::unpack(const QString &id, const QString &archive, const QString &url)
{
    return Request(id, UncompressRequest, archive, url);
}

Request Step::move(const QString &id, const QString &source, const QString &destination,
                   const QString &url)
{
    return Request(id, MoveRequest, QStringList {source, destination}, url);
}

QString Step::scratchFolder()
{
    return QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE;
}

QStringList Step::found(const QString &folder)
{
    QStringList names;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        const bool isFolder = it.fileInfo().isDir() && !it.fileInfo().isSymLink();
        names.append(QDir(folder).relativeFilePath(it.filePath())
                     + (isFolder ? QStringLiteral("/") : QString()));
    }
    names.sort();
    return names;
}
