// SPDX-License-Identifier: MIT
// The steps after a download: unpacking an archive, moving what came out of it.
#include "download/downloadmanager.h"

#include "download/downloadmanager_p.h"
#include "download/shell_p.h"
#include "plugin/dataroot.h"
#include "plugin/vexaconstants.h"
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>

namespace {

QString everythingIn(const QString &folder)
{
    return Shell::quoted(folder) + QLatin1String("/*");
}

int runLogged(const QString &command)
{
    const int result = Shell::run(command);
    L::og()->info(QLatin1String("Command ") + command + QLatin1String(" returned: ")
                  + QString::number(result));
    return result;
}

// A damaged request must never empty the root, the home folder or the user's documents.
bool mayBeEmptied(const QString &folder)
{
    const QString path = QFileInfo(folder).canonicalFilePath();
    for (const QString &kept : {QDir::homePath(), DataRoot::myDocs()}) {
        const QString keptPath = QFileInfo(kept).canonicalFilePath() + QLatin1Char('/');
        if (keptPath.startsWith(path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/')))
            return false;
    }
    return !path.isEmpty();
}

// rename() puts the file in place of an older one in one step. Between two file systems a copy is
// made beside the target first, so that no half file ever has the final name.
bool moveOver(const QString &source, const QString &target)
{
    const QByteArray from = QFile::encodeName(source);
    const QByteArray to = QFile::encodeName(target);
    if (std::rename(from.constData(), to.constData()) == 0)
        return true;
    if (errno != EXDEV)
        return false;
    const QString part = target + QLatin1String(".vexa-part");
    QFile::remove(part); // from a move that was cut short; usually there is none
    if (!QFile::copy(source, part))
        return false;
    if (std::rename(QFile::encodeName(part).constData(), to.constData()) != 0) {
        QFile::remove(part); // only a leftover if this fails too
        return false;
    }
    QFile::remove(source); // only a leftover if it fails
    return true;
}

} // namespace

int DownloadManager::doUncompress()
{
    d->trace(QStringLiteral("int DownloadManager::doUncompress()"));
    const QString archiveName = d->current.payload.toString();
    const QString scratch = QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE;
    d->urlText = addressOf(d->current).toString();
    d->queue->hasSavedTransfer = false;
    emptyScratchFolder(scratch);

    VexaArchive archive(archiveName);
    archive.setBlockPause(d->unpackPause);
    archive.setContained(d->containedUnpack);
    connect(&archive, &VexaArchive::progress, this, &DownloadManager::onUncompressProgress,
            Qt::DirectConnection);
    connect(&archive, &VexaArchive::finished, this, &DownloadManager::onUncompressFinished,
            Qt::DirectConnection);
    {
        const QMutexLocker lock(&d->requestMutex);
        d->archive = &archive;
    }
    const bool unpacked = archive.unpack(scratch);
    archive.disconnect(this);
    {
        const QMutexLocker lock(&d->requestMutex);
        d->archive = nullptr;
        d->unpackedFiles = unpacked ? archive.getUnpackedFileList() : QStringList();
    }
    if (unpacked) {
        d->info(QLatin1String("Succeeded to unpack archive: ") + archiveName);
        d->current.state = StateDone;
    } else {
        L::og()->error(QLatin1String("Failed to unpack archive: ") + archiveName
                       + QLatin1String("Error code: ") + QString::number(archive.error())
                       + QLatin1String(" Error msg: ") + archive.errorString());
    }
    if (archive.error() == VexaArchive::CancelledError)
        return 0; // stays queued, to be done again at the next start
    if (!unpacked) {
        // The move that is queued behind this must not find half an archive.
        archive.purge();
        d->current.state = StateFailed;
        Q_EMIT error(d->current.type, d->current.id, UncompressFailed, d->urlText);
    }
    // First out of the queue, then off the disk: a crash in between leaves a file behind, the
    // other way round it would leave a step that can never succeed.
    d->queue->dequeueIfHead(d->current);
    QFile::remove(archiveName); // gone already, or a leftover
    Q_EMIT finished(d->current.type, d->urlText, d->current.id);
    return 0;
}

void DownloadManager::emptyScratchFolder(const QString &scratch)
{
    if (!Shell::isAvailable()) {
        L::og()->warning(QStringLiteral("Shell is NOT available"));
        L::og()->error(QStringLiteral("Failed to do cleanup"));
        return;
    }
    d->info(QStringLiteral("Shell is available"));
    if (runLogged(QLatin1String("rm -rf ") + everythingIn(scratch)) != 0)
        L::og()->error(QStringLiteral("Remove failed"));
    else
        d->info(QStringLiteral("Remove succeeded"));
}

void DownloadManager::onUncompressProgress(quint64 bytes, quint64 total)
{
    // Reading the archive's start clears its cancel flag, and exit() may have set it before that.
    if (d->exiting)
        d->archive->cancel();
    if (L::og()->passes(L::Trace))
        d->trace(
            QStringLiteral("void DownloadManager::onUncompressProgress(quint64, quint64) %1/%2")
                .arg(bytes)
                .arg(total));
    if (d->elapsed(d->loopClock) > d->ProgressInterval) {
        Q_EMIT progress(d->current.type, d->urlText, d->current.id, qint64(bytes), qint64(total),
                        0);
        d->loopClock.start();
    }
}

void DownloadManager::onUncompressFinished(VexaArchive::ArchiveError success)
{
    L::og()->warning(QLatin1String("Error: ") + QString::number(success),
                     QStringLiteral("void DownloadManager::onUncompressFinished("
                                    "VexaArchive::ArchiveError)"));
    {
        // Whoever hears finished() asks for the list of this unpack and not of the last one.
        const QMutexLocker lock(&d->requestMutex);
        d->unpackedFiles =
            success == VexaArchive::NoError ? d->archive->getUnpackedFileList() : QStringList();
    }
    // Comes again when the step is over: whoever listens must not mind.
    Q_EMIT finished(d->current.type, d->urlText, d->current.id);
}

int DownloadManager::doMove()
{
    d->trace(QStringLiteral("int DownloadManager::doMove()"));
    const QStringList paths = d->current.payload.toStringList();
    const QString source = paths.value(0);
    const QString destination = paths.value(1);
    d->urlText = addressOf(d->current).toString();
    const bool savedRequest = d->queue->hasSavedTransfer.exchange(false);
    Q_EMIT progress(d->current.type, d->urlText, d->current.id, 0, 0, 0);

    const QString parent = QFileInfo(destination).absolutePath();
    if (!QDir().mkpath(parent))
        L::og()->warning(QLatin1String("Couldn't create directory: ") + parent);
    if (QFileInfo(source).isDir()) {
        moveFolder(source, destination);
    } else {
        moveFile(source, destination, savedRequest);
        d->queue->dequeueIfHead(d->current);
    }
    Q_EMIT finished(d->current.type, d->urlText, d->current.id);
    return 0;
}

// A failed copy still empties the source, and the removal alone decides the state: both are meant.
void DownloadManager::moveFolder(const QString &source, const QString &destination)
{
    L::og()->info(QLatin1String("Moving: ") + source + QLatin1String(" to ") + destination,
                  QStringLiteral("int DownloadManager::doMove()"));
    const bool shellAvailable = Shell::isAvailable();
    if (!shellAvailable)
        L::og()->warning(QStringLiteral("Shell is NOT available"));
    if (!shellAvailable || !mayBeEmptied(source)) {
        L::og()->error(QStringLiteral("Failed to move directories"));
        failTransfer(MoveFailed);
        d->queue->dequeueIfHead(d->current);
        return;
    }
    d->info(QStringLiteral("Shell is available"));
    if (runLogged(QLatin1String("cp -a ") + everythingIn(source) + QLatin1Char(' ')
                  + Shell::quoted(destination))
        != 0) {
        L::og()->error(QStringLiteral("Move failed"));
        failTransfer(MoveFailed);
    }
    // Out of the queue before the source goes: done again without it, the step would fail.
    d->queue->dequeueIfHead(d->current);
    if (runLogged(QLatin1String("rm -rf ") + everythingIn(source)) != 0) {
        L::og()->error(QStringLiteral("Remove failed"));
        failTransfer(MoveFailed);
    } else {
        d->current.state = StateDone;
    }
}

void DownloadManager::moveFile(const QString &source, const QString &destination, bool savedRequest)
{
    QString target = QFileInfo(destination).absoluteFilePath();
    if (QFileInfo(destination).fileName().isEmpty())
        target = destination + QLatin1Char('/') + QFileInfo(source).fileName();
    // An earlier run was cut short between the rename and its entry in the settings.
    if (savedRequest && !QFileInfo::exists(source) && QFileInfo(target).isFile()) {
        d->current.state = StateDone;
        return;
    }
    // The rename below does both: a file that went first would be lost if the rename failed.
    L::og()->info(QLatin1String("Removing destination: ") + target);
    L::og()->info(QLatin1String("Moving: ") + source + QLatin1String(" to ") + target);
    if (moveOver(source, target)) {
        d->current.state = StateDone;
    } else {
        L::og()->error(QLatin1String("Failed to move: ") + source + QLatin1String(" to ") + target);
        failTransfer(MoveFailed);
    }
}
