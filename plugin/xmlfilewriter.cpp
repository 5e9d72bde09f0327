// SPDX-License-Identifier: MIT
#include "plugin/xmlfilewriter_p.h"

#include <fcntl.h>
#include <QFile>
#include <QSaveFile>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int PieceBytes = 512 * 1024;

void keepOwner(const QString &path, const QSaveFile &file)
{
    struct stat old = {};
    if (stat(QFile::encodeName(path).constData(), &old) != 0)
        return;
    // Only the superuser may give files away; for the others the file is their own anyway.
    if (fchown(file.handle(), old.st_uid, old.st_gid) == 0)
        fchmod(file.handle(), old.st_mode & 07777);
}

// Writes a piece and waits until the disk has it. Left to the end, that wait would be for all of
// them at once. What fails here fails again when the file is committed, which waits once more.
bool writePiece(QSaveFile *file, const QByteArray &piece)
{
    const qint64 begin = file->pos();
    if (file->write(piece) != piece.size() || !file->flush())
        return false;
    sync_file_range(file->handle(), begin, piece.size(),
                    SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER);
    return true;
}

bool writeInPieces(QSaveFile *file, const QByteArray &bytes, const std::function<bool()> &goesOn)
{
    for (int at = 0; at < bytes.size(); at += PieceBytes) {
        const auto size = qMin(PieceBytes, int(bytes.size()) - at);
        if (!writePiece(file, QByteArray::fromRawData(bytes.constData() + at, size)))
            return false;
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
