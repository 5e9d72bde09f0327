// SPDX-License-Identifier: MIT
#include "plugin/xmlfilewriter_p.h"

#include <QFile>
#include <QSaveFile>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void keepOwner(const QString &path, const QSaveFile &file)
{
    struct stat old = {};
    if (stat(QFile::encodeName(path).constData(), &old) != 0)
        return;
    // Only the superuser may give files away; for the others the file is their own anyway.
    if (fchown(file.handle(), old.st_uid, old.st_gid) == 0)
        fchmod(file.handle(), old.st_mode & 07777);
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

void XmlFileWriter::replace(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    file.setDirectWriteFallback(true);
    if (!file.open(QIODevice::WriteOnly))
        return;
    keepOwner(path, file);
    // What fails is not reported; a file that is not committed leaves the old one as it was.
    if (file.write(bytes) == bytes.size())
        file.commit();
    else
        file.cancelWriting();
}
