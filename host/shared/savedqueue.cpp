// SPDX-License-Identifier: MIT
#include "host/shared/savedqueue.h"

#include "download/download.h"
#include "plugin/vexaconstants.h"
#include "plugin/vexasettings.h"
#include <algorithm>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

QString suspendedKey()
{
    return QStringLiteral("isSuspended");
}

QString arrayName()
{
    return QStringLiteral("requests");
}

// Under the settings' lock.
QList<Request> readFrom(QSettings &settings)
{
    settings.sync();
    return Request::readAll(settings);
}

void writeTo(QSettings &settings, const QList<Request> &requests)
{
    settings.beginGroup(arrayName());
    settings.remove(QString());
    settings.endGroup();
    settings.beginWriteArray(arrayName());
    for (int i = 0; i < int(requests.size()); ++i) {
        settings.setArrayIndex(i);
        requests.at(i).serialize(settings);
    }
    settings.endArray();
}

// Only what the engine itself put there; a payload is text from a file that anybody may edit.
void removeDownloadedFile(const QString &path)
{
    if (!path.isEmpty() && QDir::cleanPath(path).startsWith(QDir::homePath() + TMP_DIR_PATH))
        QFile::remove(path);
}

} // namespace

QList<Request> SavedQueue::read()
{
    const VexaSettings::Locker settings;
    return readFrom(*settings);
}

int SavedQueue::removeIf(const std::function<bool(const Request &)> &unwanted)
{
    const VexaSettings::Locker settings;
    QList<Request> kept;
    QList<Request> removed;
    const QList<Request> requests = readFrom(*settings);
    for (const Request &request : requests)
        (unwanted(request) ? removed : kept).append(request);
    if (removed.isEmpty())
        return 0;

    writeTo(*settings, kept);
    if (unwanted(requests.first()) && requests.first().type <= DownloadRequest)
        Download().serialize(*settings);
    settings->sync();

    for (const Request &request : std::as_const(removed)) {
        // Archives of one name grow in one file, one after the other.
        const bool shared = std::any_of(kept.begin(), kept.end(), [&request](const Request &other) {
            return other.payload == request.payload;
        });
        if (request.type != MoveRequest && !shared)
            removeDownloadedFile(request.payload.toString());
    }
    return int(removed.size());
}

bool SavedQueue::pausedByUser()
{
    const VexaSettings::Locker settings;
    settings->sync();
    return settings->value(suspendedKey(), false).toBool();
}

void SavedQueue::setPausedByUser(bool paused)
{
    const VexaSettings::Locker settings;
    if (settings->value(suspendedKey(), false).toBool() == paused)
        return;
    settings->setValue(suspendedKey(), paused);
    settings->sync();
}

void SavedQueue::removeBrokenLock()
{
    const VexaSettings::Locker settings;
    const QString path = settings->fileName() + QLatin1String(".lock");
    if (QFileInfo(path).isFile() && QFileInfo(path).size() == 0)
        QFile::remove(path); // If it fails, Qt waits.
}

QString SavedQueue::begunMove()
{
    const VexaSettings::Locker settings;
    settings->sync();
    return settings->value(QStringLiteral("moving")).toString(); // the engine's key
}

qint64 SavedQueue::bytesReceived()
{
    const VexaSettings::Locker settings;
    settings->sync();
    Download download;
    download.deSerialize(*settings);
    return download.bytesReceived;
}
