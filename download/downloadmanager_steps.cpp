// SPDX-License-Identifier: MIT
// The steps after a download: unpacking an archive, moving what came out of it.
#include "download/downloadmanager.h"

#include "download/downloadmanager_p.h"
#include "plugin/dataroot.h"
#include "plugin/disksync_p.h"
#include "plugin/shell_p.h"
#include "plugin/vexaconstants.h"
#include "plugin/vexasettings.h"
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>
#include <system_error>

namespace {

QString everythingIn(const QString &folder)
{
    return Shell::quoted(folder) + QLatin1String("/*");
}

// The pattern leaves out what begins with a dot. It would be in the way of the next archive that
// brings such a file.
void removeHiddenIn(const QString &folder)
{
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden
                                                             | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (!entry.fileName().startsWith(QLatin1Char('.')))
            continue;
        // What cannot be removed is found by the unpack, if it is in the way.
        if (entry.isDir() && !entry.isSymLink())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

int runLogged(const QString &command)
{
    const int result = Shell::run(command);
    L::og()->info(QLatin1String("Command ") + command + QLatin1String(" returned: ")
                  + QString::number(result));
    return result;
}

QString withSlash(const QString &path)
{
    return path.endsWith(QLatin1Char('/')) ? path : path + QLatin1Char('/');
}

// Whether the path is the folder or lies in it, all links followed; false if either is missing.
bool isIn(const QString &path, const QString &folder)
{
    const QString inner = QFileInfo(path).canonicalFilePath();
    const QString outer = QFileInfo(folder).canonicalFilePath();
    return !inner.isEmpty() && !outer.isEmpty() && withSlash(inner).startsWith(withSlash(outer));
}

// A damaged request must never empty the root, the home folder or the user's documents, nor the
// folder that it has just filled.
bool mayBeEmptied(const QString &folder, const QString &destination)
{
    return !destination.isEmpty() && !isIn(QDir::homePath(), folder)
        && !isIn(DataRoot::myDocs(), folder) && !isIn(destination, folder)
        && !isIn(QFileInfo(destination).absolutePath(), folder);
}

bool renameOver(const QString &source, const QString &target)
{
    return std::rename(QFile::encodeName(source).constData(), QFile::encodeName(target).constData())
        == 0;
}

// Copies and waits until the bytes are on the disk: a rename that outlives a power cut must not
// show a file that did not.
bool copyWhole(const QString &source, const QString &target)
{
    std::error_code error;
    std::filesystem::copy_file(QFile::encodeName(source).constData(),
                               QFile::encodeName(target).constData(),
                               std::filesystem::copy_options::overwrite_existing, error);
    return !error && DiskSync::file(target);
}

// rename() puts the file in place of an older one in one step. Between two file systems a copy is
// made beside the target first, so that no half file ever has the final name.
bool moveOver(const QString &source, const QString &target)
{
    if (renameOver(source, target))
        return true;
    if (errno != EXDEV)
        return false;
    const QString part = target + QLatin1String(".vexa-part");
    if (!copyWhole(source, part) || !renameOver(part, target)) {
        QFile::remove(part); // only a leftover if this fails too
        return false;
    }
    QFile::remove(source); // only a leftover if it fails
    return true;
}

// The target of the move that is under way. A run that finds it after a crash can tell a file that
// has arrived from one that was never there, and a scratch folder that is not whole any more.
QString movingKey()
{
    return QStringLiteral("moving");
}

QString movingTo()
{
    const VexaSettings::Locker settings;
    return settings->value(movingKey()).toString();
}

void setMovingTo(const QString &target)
{
    const VexaSettings::Locker settings;
    settings->setValue(movingKey(), target);
    settings->sync();
}

// Not synced: the dequeue that follows does it, so that mark and queue change together on disk.
void forgetMoving()
{
    const VexaSettings::Locker settings;
    settings->remove(movingKey());
}

bool arrives(const QString &source, const QString &target)
{
    // An earlier run was cut short between the rename and its entry in the settings.
    if (!QFileInfo::exists(source) && movingTo() == target)
        return QFileInfo(target).isFile();
    if (!QFileInfo(source).isFile())
        return false;
    setMovingTo(target);
    return moveOver(source, target);
}

// Files that take the place of older ones. Those at the top are left out: without any entry there
// the copy would have nothing to copy, and fail; and so are those that its pattern leaves out.
QStringList replacements(const QString &source, const QString &destination,
                         const QStringList &files)
{
    QStringList result;
    for (const QString &file : files) {
        const QFileInfo old(withSlash(destination) + file);
        const bool isCopied = file.contains(QLatin1Char('/')) && !file.startsWith(QLatin1Char('.'));
        if (isCopied && old.isFile() && !old.isSymLink()
            && QFileInfo(withSlash(source) + file).isFile())
            result.append(file);
    }
    return result;
}

// The copy that follows writes into the files that are there: cut short, it would leave half of a
// tile that another region needs. What cannot be put in place here is left to it.
void replaceWhole(const QString &source, const QString &destination, const QStringList &files)
{
    const QStringList old = replacements(source, destination, files);
    if (old.isEmpty())
        return;
    setMovingTo(destination);
    for (const QString &file : old)
        moveOver(withSlash(source) + file, withSlash(destination) + file);
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
    // The archive goes when the step is out of the queue; what came out of it must be safe first.
    const bool unpacked =
        archive.unpack(scratch) && DiskSync::files(scratch, DiskSync::filesBelow(scratch));
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
    if (!archiveName.isEmpty())
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
    removeHiddenIn(scratch);
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
    d->queue->hasSavedTransfer = false;
    Q_EMIT progress(d->current.type, d->urlText, d->current.id, 0, 0, 0);

    const QString parent = QFileInfo(destination).absolutePath();
    if (!QDir().mkpath(parent))
        L::og()->warning(QLatin1String("Couldn't create directory: ") + parent);
    if (QFileInfo(source).isDir())
        moveFolder(source, destination);
    else
        moveFile(source, destination);
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
    if (!shellAvailable || !mayBeEmptied(source, destination)) {
        L::og()->error(QStringLiteral("Failed to move directories"));
        failStep(MoveFailed);
        d->queue->dequeueIfHead(d->current);
        return;
    }
    d->info(QStringLiteral("Shell is available"));
    const QStringList files = DiskSync::filesBelow(source);
    replaceWhole(source, destination, files);
    if (runLogged(QLatin1String("cp -a ") + everythingIn(source) + QLatin1Char(' ')
                  + Shell::quoted(destination))
            != 0
        || !DiskSync::files(destination, files)) {
        L::og()->error(QStringLiteral("Move failed"));
        failStep(MoveFailed);
    }
    forgetMoving();
    // Out of the queue before the source goes: done again without it, the step would fail.
    d->queue->dequeueIfHead(d->current);
    if (runLogged(QLatin1String("rm -rf ") + everythingIn(source)) != 0) {
        L::og()->error(QStringLiteral("Remove failed"));
        failStep(MoveFailed);
    } else {
        d->current.state = StateDone;
    }
    // In any other folder they are somebody's.
    const QString scratch = QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE;
    if (QDir::cleanPath(source) == QDir::cleanPath(scratch))
        removeHiddenIn(scratch);
}

void DownloadManager::moveFile(const QString &source, const QString &destination)
{
    QString target = QFileInfo(destination).absoluteFilePath();
    if (QFileInfo(destination).fileName().isEmpty())
        target = destination + QLatin1Char('/') + QFileInfo(source).fileName();
    // The rename below removes it in the same step: a file that went first would be lost if the
    // rename failed.
    L::og()->info(QLatin1String("Removing destination: ") + target);
    L::og()->info(QLatin1String("Moving: ") + source + QLatin1String(" to ") + target);
    if (!destination.isEmpty() && arrives(source, target)) {
        d->current.state = StateDone;
    } else {
        L::og()->error(QLatin1String("Failed to move: ") + source + QLatin1String(" to ") + target);
        failStep(MoveFailed);
    }
    forgetMoving();
    d->queue->dequeueIfHead(d->current);
}
