// SPDX-License-Identifier: MIT
#include "plugin/xmlfilewriter_p.h"

#include <fcntl.h>
#include <QFile>
#include <QSaveFile>
#include <sys/stat.h>
#include <unistd.h>

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

// Each piece is on its way to the disk while the next one is written; then it is waited for. Left
// to the end, that wait would be for all of them at once. What fails on the way fails again when
// the file is committed, which waits once more.
void startWriting(const QSaveFile &file, qint64 begin)
{
    sync_file_range(file.handle(), begin, PieceBytes, SYNC_FILE_RANGE_WRITE);
}

void waitUntilWritten(const QSaveFile &file, qint64 begin)
{
    sync_file_range(file.handle(), begin, PieceBytes, SYNC_FILE_RANGE_WAIT_BEFORE);
}

// The old file's share of the memory goes in pieces, too; it would be given back all at once when
// the new file takes its place.
void forgetCached(const QFile &old, qint64 begin)
{
    posix_fadvise(old.handle(), begin, PieceBytes, POSIX_FADV_DONTNEED);
}

bool writeInPieces(QSaveFile *file, const QByteArray &bytes, const std::function<bool()> &goesOn)
{
    QFile old(file->fileName());
    const bool isThere = old.open(QFile::ReadOnly);
    for (int at = 0; at < bytes.size(); at += PieceBytes) {
        const int size = qMin(PieceBytes, int(bytes.size()) - at);
        if (file->write(bytes.constData() + at, size) != size || !file->flush())
            return false;
        startWriting(*file, at);
        if (at > 0)
            waitUntilWritten(*file, at - PieceBytes);
        if (isThere)
            forgetCached(old, at);
        if (goesOn && !goesOn())
            return false;
    }
    return true;
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
    // What fails is not reported; a file that is not committed leaves the old one as it was.
    const bool isSmall = bytes.size() <= PieceBytes;
    if (isSmall ? file.write(bytes) == bytes.size() : writeInPieces(&file, bytes, goesOn))
        file.commit();
    else
        file.cancelWriting();
}
