// SPDX-License-Identifier: MIT
#include "plugin/xmlfilewriter_p.h"

#include <chrono>
#include <fcntl.h>
#include <future>
#include <QFile>
#include <QSaveFile>
#include <sys/stat.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr int PieceBytes = 1024 * 1024;

void keepOwner(const QString &path, const QSaveFile &file)
{
    struct stat old = {};
    if (stat(QFile::encodeName(path).constData(), &old) != 0)
        return;
    // Only the superuser may give files away; for the others the file is their own anyway.
    if (fchown(file.handle(), old.st_uid, old.st_gid) == 0)
        fchmod(file.handle(), old.st_mode & 07777);
}

// Nobody knows how long a disk takes: what waits for it does so in a thread of its own. False if
// the file is not wanted any more when that has ended.
bool waitAside(const std::function<void()> &wait, const std::function<bool()> &goesOn)
{
    bool isWanted = true;
    auto ended = std::async(std::launch::async, wait);
    while (ended.wait_for(5ms) != std::future_status::ready)
        isWanted = goesOn() && isWanted;
    return isWanted;
}

// The old file's share of the memory goes in pieces, too; it would be given back all at once when
// the new file takes its place.
void forgetCached(const QFile &old, qint64 begin)
{
    posix_fadvise(old.handle(), begin, PieceBytes, POSIX_FADV_DONTNEED);
}

bool writeInPieces(QSaveFile *file, const QByteArray &bytes, const QFile &old,
                   const std::function<bool()> &goesOn)
{
    for (int at = 0; at < bytes.size(); at += PieceBytes) {
        const int size = qMin(PieceBytes, int(bytes.size()) - at);
        if (file->write(bytes.constData() + at, size) != size || !file->flush())
            return false;
        if (old.isOpen())
            forgetCached(old, at);
        if (!goesOn())
            return false;
    }
    // The system tells of an error once only. The commit finds little to wait for then.
    bool isOnDisk = false;
    const bool isWanted = waitAside([&] { isOnDisk = fdatasync(file->handle()) == 0; }, goesOn);
    return isWanted && isOnDisk;
}

} // namespace

QString XmlFileWriter::writable(QString text)
{
    for (int i = 0; i < text.size(); ++i) {
        const ushort c = text.at(i).unicode();
        const bool isPair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (isPair)
            ++i;
        else if ((c < 0x20 && c != '\t' && c != '\n' && c != '\r') || c >= 0xfffe
                 || text.at(i).isSurrogate())
            text[i] = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

void XmlFileWriter::replace(const QString &path, const QByteArray &bytes,
                            const std::function<bool()> &goesOn)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly))
        return;
    keepOwner(path, file);
    const bool isInPieces = goesOn && bytes.size() > PieceBytes;
    // As long as it is open, its blocks are not given back; of a large file that takes a while.
    QFile old(path);
    if (isInPieces)
        old.open(QFile::ReadOnly);
    const bool isWritten =
        isInPieces ? writeInPieces(&file, bytes, old, goesOn) : file.write(bytes) == bytes.size();
    // What fails is not reported; a file that is not committed leaves the old one as it was.
    if (isWritten)
        file.commit();
    else
        file.cancelWriting();
    if (isInPieces)
        waitAside([&old] { old.close(); }, goesOn);
}
