// SPDX-License-Identifier: MIT
#include "archive/vexaarchive.h"

#include "archive/archivenames_p.h"
#include "archive/gzipsource_p.h"
#include "archive/temporaryfile_p.h"
#include "archive/unpackfolder_p.h"
#include "plugin/logger.h"
#include <archive.h>
#include <archive_entry.h>
#include <QIODevice>
#include <QThread>

namespace {

constexpr size_t ReadBlockSize = 10240;
constexpr int DataBufferSize = 400960;
constexpr int LibraryMiscError = -1; // libarchive's own "something", in no public header of it

using ArchiveNames::decoded;
using ArchiveNames::Utf8Locale;

QString libraryText(archive *handle)
{
    const Utf8Locale locale;
    return decoded(archive_error_string(handle));
}

int libraryCode(archive *handle)
{
    const Utf8Locale locale;
    return archive_errno(handle);
}

int nextHeader(archive *handle, archive_entry **entry)
{
    const Utf8Locale locale;
    return archive_read_next_header(handle, entry);
}

qint64 readData(archive *handle, QByteArray &buffer)
{
    const Utf8Locale locale;
    return archive_read_data(handle, buffer.data(), size_t(buffer.size()));
}

QString nameOf(archive_entry *entry)
{
    const Utf8Locale locale;
    return decoded(archive_entry_pathname(entry));
}

// Error texts show counts as the character with that code and not as digits. It is meant so: the
// texts are part of the interface.
QChar asCharacter(quint64 count)
{
    return QLatin1Char(char(count & 0xff));
}

} // namespace

void VexaArchive::Closer::operator()(archive *handle) const
{
    const Utf8Locale locale;
    archive_read_free(handle); // nothing was written, so its result says nothing
}

VexaArchive::VexaArchive(const QString &archivePath)
    : m_archivePath(archivePath)
{
    qRegisterMetaType<VexaArchive::ArchiveError>("VexaArchive::ArchiveError");
}

VexaArchive::~VexaArchive()
{
    L::og()->trace(QStringLiteral("virtual VexaArchive::~VexaArchive()"));
    finishRead();
}

VexaArchive::ArchiveError VexaArchive::error() const
{
    return m_error;
}

QString VexaArchive::errorString() const
{
    return m_errorString;
}

void VexaArchive::resetError()
{
    m_error = NoError;
    m_errorString.clear();
}

bool VexaArchive::unpack(QString destination)
{
    resetError();
    m_unpackedFiles.clear();
    m_folder = std::make_unique<UnpackFolder>(destination, m_contained);
    if (!m_folder->create()) {
        // The missing word is part of the text.
        fail(WriteError, QStringLiteral("Could create destination directory ") + destination);
        Q_EMIT finished(m_error);
        return false;
    }

    quint64 total = 0;
    // For an archive that does not open, the first of the two has told so already. It is meant to
    // come twice.
    if (!getUncompressedSize(total) || !startRead()) {
        Q_EMIT finished(m_error);
        return false;
    }

    if (m_gzip)
        m_gzip->trustCheckSums(); // all of them were right a moment ago
    const bool complete = unpackEntries(total);
    finishRead();
    if (m_error == CancelledError)
        purge();
    Q_EMIT finished(m_error);
    return complete;
}

void VexaArchive::purge()
{
    if (m_folder)
        m_folder->removeMade();
}

QStringList VexaArchive::getUnpackedFileList() const
{
    return m_unpackedFiles;
}

bool VexaArchive::getUncompressedSize(quint64 &size)
{
    if (!startRead()) {
        Q_EMIT finished(m_error);
        return false;
    }

    quint64 sum = 0;
    archive_entry *entry = nullptr;
    int result = nextHeader(m_handle.get(), &entry);
    while (result == ARCHIVE_OK) {
        sum += quint64(archive_entry_size(entry));
        result = nextHeader(m_handle.get(), &entry);
    }
    bool whole = result == ARCHIVE_EOF;
    if (!whole)
        failByLibrary(IterationError, QStringLiteral("Archive iteration error: "));
    else if (m_gzip && !m_gzip->isSoundToTheEnd())
        whole =
            fail(IterationError,
                 QStringLiteral("Archive iteration error: the packed data has another check sum"));
    if (whole)
        size = sum;
    finishRead();
    return whole;
}

bool VexaArchive::startRead()
{
    m_cancelled = false;
    finishRead();
    // libarchive would take no name for the standard input and wait there.
    if (m_archivePath.isEmpty())
        return fail(OpenError, QStringLiteral("Could not open the archive: it has no name"));
    const Utf8Locale locale;
    m_handle.reset(archive_read_new());
    if (!m_handle)
        return fail(OpenError, QStringLiteral("Could not open the archive: out of memory"));
    // Both only warn, about formats that need a program to be installed.
    archive_read_support_filter_all(m_handle.get());
    archive_read_support_format_all(m_handle.get());
    m_gzip = GzipSource::open(m_archivePath);
    const QByteArray path = m_archivePath.toUtf8();
    const int result = m_gzip
        ? m_gzip->openArchive(m_handle.get())
        : archive_read_open_filename(m_handle.get(), path.constData(), ReadBlockSize);
    if (result == ARCHIVE_OK)
        return true;
    failByLibrary(OpenError, QStringLiteral("Could not open the archive: "));
    finishRead();
    return false;
}

void VexaArchive::finishRead()
{
    m_handle.reset();
    m_gzip.reset();
}

quint64 VexaArchive::extract(QIODevice &device, quint64 &bytesDone, quint64 total)
{
    quint64 written = 0;
    if (!m_handle) {
        fail(ReadError, QStringLiteral("The archive is not open"));
        return written;
    }
    m_buffer.resize(DataBufferSize);
    for (;;) {
        const qint64 count = readData(m_handle.get(), m_buffer);
        if (count == 0)
            return written;
        if (m_cancelled) {
            fail(CancelledError, QStringLiteral("Unpacking was cancelled"));
            return written;
        }
        if (count < 0) {
            failByLibrary(ReadError, QString());
            return written;
        }

        bytesDone += quint64(count);
        written += quint64(count);
        Q_EMIT progress(bytesDone, total);
        if (device.write(m_buffer.constData(), count) < count) {
            fail(WriteError,
                 QLatin1String("Could not write ") + asCharacter(quint64(count))
                     + QLatin1String(" bytes"));
            return written;
        }
        if (m_blockPause > 0)
            QThread::msleep(static_cast<unsigned long>(m_blockPause));
    }
}

void VexaArchive::cancel()
{
    m_cancelled = true;
}

int VexaArchive::blockPause() const
{
    return m_blockPause;
}

void VexaArchive::setBlockPause(int ms)
{
    m_blockPause = qMax(0, ms);
}

bool VexaArchive::isContained() const
{
    return m_contained;
}

void VexaArchive::setContained(bool contained)
{
    m_contained = contained;
}

bool VexaArchive::unpackEntries(quint64 total)
{
    quint64 bytesDone = 0;
    for (;;) {
        archive_entry *entry = nullptr;
        const int result = nextHeader(m_handle.get(), &entry);
        if (result == ARCHIVE_EOF)
            return true;
        if (m_cancelled)
            return fail(CancelledError, QStringLiteral("Unpacking was cancelled"));
        if (result != ARCHIVE_OK) {
            failByLibrary(IterationError, QStringLiteral("Unpacking error: "));
            return true; // meant: it counts as the end of the archive, only error() tells
        }
        if (!unpackEntry(entry, bytesDone, total))
            return false;
    }
}

bool VexaArchive::unpackEntry(archive_entry *entry, quint64 &bytesDone, quint64 total)
{
    const auto type = archive_entry_filetype(entry);
    if (type != AE_IFREG && type != AE_IFDIR)
        return true; // links and devices have no place in map data

    const QString name = nameOf(entry);
    if (name.isNull())
        return fail(IterationError, QStringLiteral("Unpacking error: an entry has no usable name"));
    if (!m_folder->holds(name))
        return fail(WriteError, QStringLiteral("Entry leads out of the destination: ") + name);
    if (type == AE_IFDIR)
        return unpackFolder(name);
    return unpackFile(name, quint64(archive_entry_size(entry)), bytesDone, total);
}

bool VexaArchive::unpackFile(const QString &name, quint64 size, quint64 &bytesDone, quint64 total)
{
    TemporaryFile file(m_folder->path()); // beside the target, so that it can be renamed
    if (!file.open())
        return fail(WriteError, QStringLiteral("Could not create ") + file.name());
    if (!extractWhole(file.device(), size, bytesDone, total))
        return false;
    if (!m_folder->makeParentOf(name))
        return fail(WriteError,
                    QStringLiteral("Could not create parent directory for file ") + name);
    if (!file.close())
        return fail(WriteError, QStringLiteral("Could not close ") + file.name());
    if (!m_folder->keep(file, name))
        return fail(WriteError,
                    QLatin1String("Could not rename ") + file.name() + QLatin1String(" to ")
                        + m_folder->pathOf(name));
    m_unpackedFiles.append(name);
    return true;
}

bool VexaArchive::unpackFolder(const QString &name)
{
    if (!m_folder->makeFolder(name))
        return fail(WriteError, QStringLiteral("Could not create directory ") + name);
    m_unpackedFiles.append(name);
    return true;
}

bool VexaArchive::extractWhole(QIODevice &device, quint64 size, quint64 &bytesDone, quint64 total)
{
    const quint64 count = extract(device, bytesDone, total);
    if (m_error != NoError)
        return false;
    const int code = libraryCode(m_handle.get());
    if (code != 0 && code != LibraryMiscError)
        return failByLibrary(IterationError, QStringLiteral("Unpacking error: "));
    if (count != size)
        return fail(ReadError,
                    QLatin1String("Read ") + asCharacter(count)
                        + QLatin1String(" bytes instead of ") + asCharacter(size));
    return true;
}

bool VexaArchive::fail(ArchiveError error, const QString &text)
{
    m_error = error;
    m_errorString = text;
    return false;
}

bool VexaArchive::failByLibrary(ArchiveError error, const QString &text)
{
    return fail(error, text + libraryText(m_handle.get()));
}
