// SPDX-License-Identifier: MIT
#include "host/shared/remotearchive.h"

#include "archive/archivenames_p.h"
#include "host/shared/folderops.h"
#include "host/shared/zipdirectory.h"
#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <QDir>

using ArchiveNames::Utf8Locale;

namespace {

constexpr qint64 ReadSize = 64 * 1024; // given to libarchive at a time
// What is kept of the end of a file that can only be read through: a list of a million tiles.
constexpr qint64 WindowSize = 64 * 1024 * 1024;

/** The locale of the program, while libarchive has called us and we run an event loop. */
class ProgramLocale
{
public:
    ProgramLocale()
        : m_previous(uselocale(LC_GLOBAL_LOCALE))
    { }
    ~ProgramLocale() { uselocale(m_previous); }
    Q_DISABLE_COPY(ProgramLocale)

private:
    locale_t m_previous;
};

struct Closer
{
    void operator()(archive *handle) const { archive_read_free(handle); }
};

bool startsLike7z(const QByteArray &head)
{
    return head.startsWith(QByteArray("7z\xbc\xaf\x27\x1c", 6));
}

} // namespace

/** Where the bytes of the archive come from. */
class RemoteArchive::Source
{
public:
    virtual ~Source() = default;
    /** Whether read() may be asked for any place; else only for the one behind the last. */
    virtual bool isSeekable() const = 0;
    virtual qint64 size() const = 0;
    /** Some bytes, none at the end; nothing if they cannot be had. */
    virtual std::optional<QByteArray> read(qint64 offset, qint64 maxBytes) = 0;

    std::optional<QByteArray> readWhole(qint64 offset, qint64 size)
    {
        QByteArray bytes;
        while (bytes.size() < size) {
            const auto more = read(offset + bytes.size(), size - bytes.size());
            if (!more || more->isEmpty())
                return std::nullopt;
            bytes += *more;
        }
        return bytes;
    }
};

class RemoteArchive::RangedSource : public Source
{
public:
    explicit RangedSource(HttpFile *file)
        : m_file(file)
    { }
    bool isSeekable() const override { return true; }
    qint64 size() const override { return m_file->size(); }
    std::optional<QByteArray> read(qint64 offset, qint64 maxBytes) override
    {
        return m_file->readAt(offset, maxBytes);
    }

private:
    HttpFile *const m_file; // not owned
};

/** For formats that need no more than the bytes in their order. */
class RemoteArchive::StreamedSource : public Source
{
public:
    StreamedSource(HttpFile *file, const QByteArray &head)
        : m_file(file)
        , m_head(head)
    { }
    bool isSeekable() const override { return false; }
    qint64 size() const override { return m_file->size(); }
    std::optional<QByteArray> read(qint64 offset, qint64) override
    {
        return offset == 0 && !m_head.isEmpty() ? m_head : m_file->readNext();
    }

private:
    HttpFile *const m_file; // not owned
    const QByteArray m_head;
};

/** For formats with a list at the end: the start and the end of a file that was read through. */
class RemoteArchive::WindowSource : public Source
{
public:
    explicit WindowSource(const QByteArray &head)
        : m_head(head)
        , m_tail(head)
    { }
    void append(const QByteArray &bytes)
    {
        m_tail += bytes;
        if (m_tail.size() <= 2 * WindowSize)
            return;
        const qint64 surplus = m_tail.size() - WindowSize;
        m_tail.remove(0, int(surplus));
        m_tailOffset += surplus;
    }
    bool isSeekable() const override { return true; }
    qint64 size() const override { return m_tailOffset + m_tail.size(); }
    std::optional<QByteArray> read(qint64 offset, qint64 maxBytes) override
    {
        if (offset < m_head.size())
            return m_head.mid(int(offset), int(maxBytes));
        if (offset < m_tailOffset)
            return std::nullopt;
        const qint64 start = offset - m_tailOffset;
        return start < m_tail.size() ? m_tail.mid(int(start), int(maxBytes)) : QByteArray();
    }

private:
    const QByteArray m_head;
    QByteArray m_tail;
    qint64 m_tailOffset = 0;
};

namespace {

/** What libarchive's callbacks work on. */
template <typename Source> struct Client
{
    Source *source;
    qint64 position = 0;
    QByteArray current; // what was given last; must stay until the next call
    bool failed = false;

    static la_ssize_t read(archive *handle, void *data, const void **buffer)
    {
        auto *self = static_cast<Client *>(data);
        {
            const ProgramLocale locale;
            const auto bytes = self->source->read(self->position, ReadSize);
            self->failed = !bytes;
            self->current = bytes.value_or(QByteArray());
        }
        if (self->failed) {
            archive_set_error(handle, EIO, "The server does not deliver");
            return ARCHIVE_FATAL;
        }
        self->position += self->current.size();
        *buffer = self->current.constData();
        return la_ssize_t(self->current.size());
    }

    static la_int64_t skip(archive *, void *data, la_int64_t count)
    {
        auto *self = static_cast<Client *>(data);
        const qint64 skipped = qMin(qint64(count), self->source->size() - self->position);
        self->position += qMax<qint64>(0, skipped);
        return qMax<qint64>(0, skipped);
    }

    static la_int64_t seek(archive *, void *data, la_int64_t offset, int whence)
    {
        auto *self = static_cast<Client *>(data);
        const qint64 from = whence == SEEK_SET ? 0
            : whence == SEEK_CUR               ? self->position
                                               : self->source->size();
        if (offset > 0 ? from > INT64_MAX - offset : from + offset < 0)
            return ARCHIVE_FATAL;
        self->position = from + offset;
        return self->position;
    }
};

} // namespace

RemoteArchive::RemoteArchive(QNetworkAccessManager *network, const QUrl &url, int patience,
                             QObject *parent)
    : QObject(parent)
    , m_file(network, url, patience)
    , m_name(url.fileName())
{ }

bool RemoteArchive::list()
{
    if (!m_file.open())
        return failByNetwork();
    if (m_file.access() == HttpFile::Access::Ranged) {
        RangedSource source(&m_file);
        const auto head = source.read(0, ReadSize);
        return head && listFrom(source, ZipDirectory::startsLikeZip(*head));
    }
    QByteArray head;
    while (head.size() < ReadSize) {
        const auto more = m_file.readNext();
        if (!more)
            return failByNetwork();
        if (more->isEmpty())
            break;
        head += *more;
    }
    const bool isZip = ZipDirectory::startsLikeZip(head);
    if (!isZip && !startsLike7z(head)) {
        StreamedSource source(&m_file, head);
        return listFrom(source, false);
    }
    WindowSource source(head);
    while (const auto more = m_file.readNext()) {
        if (more->isEmpty())
            return listFrom(source, isZip);
        source.append(*more);
    }
    return failByNetwork();
}

void RemoteArchive::abort()
{
    m_file.abort();
}

QList<ArchiveFile> RemoteArchive::files() const
{
    QList<ArchiveFile> files;
    for (auto file = m_files.begin(); file != m_files.end(); ++file)
        files.append({file.key(), file.value()});
    return files;
}

qint64 RemoteArchive::size() const
{
    return m_file.size();
}

RemoteArchive::Failure RemoteArchive::failure() const
{
    return m_failure;
}

QString RemoteArchive::errorString() const
{
    return m_errorString;
}

qint64 RemoteArchive::bytesReceived() const
{
    return m_file.bytesReceived();
}

bool RemoteArchive::listFrom(Source &source, bool isZip)
{
    const Listing listing = isZip ? listByDirectory(source) : Listing::Unusual;
    const bool listed =
        listing == Listing::Listed || (listing == Listing::Unusual && listByLibrary(source));
    if (!listed)
        m_files.clear();
    return listed;
}

RemoteArchive::Listing RemoteArchive::listByDirectory(Source &source)
{
    const auto entries = ZipDirectory::read(
        [&source](qint64 offset, qint64 size) { return source.readWhole(offset, size); },
        source.size());
    if (m_file.failure() != HttpFile::Failure::None) {
        failByNetwork();
        return Listing::Failed;
    }
    if (!entries)
        return Listing::Unusual;
    for (const ZipDirectory::Entry &entry : *entries) {
        if (entry.isEncrypted) {
            fail(Failure::Archive, tr("%1 is encrypted.").arg(m_name));
            return Listing::Failed;
        }
        if (!entry.isFile && !entry.isFolder)
            continue; // links and devices are not unpacked
        if (!add(ArchiveNames::decoded(entry.name.constData()), entry.size, entry.isFile))
            return Listing::Failed;
    }
    return Listing::Listed;
}

bool RemoteArchive::listByLibrary(Source &source)
{
    const Utf8Locale locale;
    const std::unique_ptr<archive, Closer> handle(archive_read_new());
    if (!handle)
        return fail(Failure::Archive, tr("%1: out of memory.").arg(m_name));
    // The same as the extractor's. Both only warn, of formats that need a program.
    archive_read_support_filter_all(handle.get());
    archive_read_support_format_all(handle.get());
    Client<Source> client {&source, 0, QByteArray(), false};
    if (source.isSeekable()) {
        archive_read_set_seek_callback(handle.get(), &Client<Source>::seek);
        archive_read_set_skip_callback(handle.get(), &Client<Source>::skip);
    }
    archive_read_set_read_callback(handle.get(), &Client<Source>::read);
    archive_read_set_callback_data(handle.get(), &client);
    int result = archive_read_open1(handle.get());
    archive_entry *entry = nullptr;
    while (result == ARCHIVE_OK) {
        result = archive_read_next_header(handle.get(), &entry);
        if (result == ARCHIVE_OK && !addEntry(entry))
            return false;
    }
    if (result == ARCHIVE_EOF)
        return true;
    if (m_file.failure() != HttpFile::Failure::None)
        return failByNetwork();
    if (client.failed)
        return fail(Failure::Refused,
                    tr("%1 cannot be listed: its server gives only whole files.").arg(m_name));
    return fail(Failure::Archive,
                tr("%1 is damaged or no archive: %2.")
                    .arg(m_name, ArchiveNames::decoded(archive_error_string(handle.get()))));
}

bool RemoteArchive::addEntry(archive_entry *entry)
{
    const auto type = archive_entry_filetype(entry);
    if (type != AE_IFREG && type != AE_IFDIR)
        return true; // links and devices are not unpacked
    if (archive_entry_is_encrypted(entry))
        return fail(Failure::Archive, tr("%1 is encrypted.").arg(m_name));
    if (type == AE_IFREG && !archive_entry_size_is_set(entry))
        return fail(Failure::Archive, tr("%1 does not tell how large its files are.").arg(m_name));
    return add(ArchiveNames::decoded(archive_entry_pathname(entry)),
               qint64(archive_entry_size(entry)), type == AE_IFREG);
}

// The extractor stops at a name that leads out or that it has made already, so nothing of such an
// archive is ever installed.
bool RemoteArchive::add(const QString &name, qint64 size, bool isFile)
{
    const QString path = QDir::cleanPath(name);
    const bool leadsOut = path.startsWith(QLatin1Char('/')) || FolderOps::leadsOut(path);
    if (name.isEmpty() || leadsOut || size < 0 || (isFile && m_files.contains(path)))
        return fail(Failure::Archive,
                    tr("%1 holds a file that may not be unpacked: \"%2\".").arg(m_name, name));
    if (isFile)
        m_files.insert(path, size);
    return true;
}

bool RemoteArchive::fail(Failure failure, const QString &text)
{
    m_failure = failure;
    m_errorString = text;
    return false;
}

bool RemoteArchive::failByNetwork()
{
    switch (m_file.failure()) {
    case HttpFile::Failure::Aborted:
        return fail(Failure::Aborted, m_file.errorString());
    case HttpFile::Failure::Refused:
        return fail(Failure::Refused, m_file.errorString());
    default:
        return fail(Failure::Network, m_file.errorString());
    }
}
