// SPDX-License-Identifier: MIT
#include "archive/gzipsource_p.h"

#include <archive.h>
#include <cerrno>
#include <cstring>

namespace {

constexpr size_t PackedSize = 64 * 1024;
constexpr size_t PlainSize = 256 * 1024; // zlib copies its window each time this is full
constexpr int GzipOnly = 16 + MAX_WBITS;

} // namespace

std::unique_ptr<GzipSource> GzipSource::open(const QString &path)
{
    std::FILE *file = std::fopen(path.toUtf8().constData(), "rbe");
    if (!file)
        return nullptr;
    std::unique_ptr<GzipSource> source(new GzipSource(file));
    const bool isGzip = source->fill() && source->isPackedHere()
        && inflateInit2(&source->m_stream, GzipOnly) == Z_OK;
    return isGzip ? std::move(source) : nullptr;
}

GzipSource::GzipSource(std::FILE *file)
    : m_file(file)
    , m_packed(PackedSize)
    , m_plain(PlainSize)
{
    m_stream.next_in = m_packed.data();
}

GzipSource::~GzipSource()
{
    inflateEnd(&m_stream); // only an error, and no harm, where nothing was begun
}

int GzipSource::openArchive(archive *handle)
{
    return archive_read_open(handle, this, nullptr, &GzipSource::read, nullptr);
}

bool GzipSource::isSoundToTheEnd()
{
    while (m_state == State::Unpacking)
        unpackMore();
    return m_state == State::AtEnd;
}

void GzipSource::trustCheckSums()
{
    inflateValidate(&m_stream, 0); // cannot fail for a stream that was begun
}

// A wrong check sum comes to light with the last data, which goes first: the end tells of the sum.
// Of a file that is cut off libarchive would give nothing more, so that a short one is no archive.
ssize_t GzipSource::read(archive *handle, void *source, const void **data)
{
    auto *self = static_cast<GzipSource *>(source);
    const size_t count = self->unpackMore();
    *data = self->m_plain.data();
    const bool lacksMore = self->m_state == State::CutOff || self->m_state == State::Unreadable;
    if (!lacksMore && (count > 0 || self->m_state == State::AtEnd))
        return ssize_t(count);
    archive_set_error(handle, EIO, "%s", self->failure());
    return ARCHIVE_FATAL;
}

size_t GzipSource::unpackMore()
{
    m_stream.next_out = m_plain.data();
    m_stream.avail_out = uInt(m_plain.size());
    while (m_state == State::Unpacking && m_stream.avail_out > 0) {
        if (m_stream.avail_in == 0 && !fill())
            break;
        const int result = inflate(&m_stream, Z_NO_FLUSH);
        if (result == Z_STREAM_END)
            goOnBehindEnd();
        else if (result != Z_OK)
            m_state = State::Damaged;
    }
    return m_plain.size() - m_stream.avail_out;
}

// Adds to the packed bytes that are still there. False if there are no more, which means that the
// file is cut off, unless the caller knows better.
bool GzipSource::fill()
{
    std::memmove(m_packed.data(), m_stream.next_in, m_stream.avail_in);
    m_stream.next_in = m_packed.data();
    const size_t count = std::fread(m_packed.data() + m_stream.avail_in, 1,
                                    m_packed.size() - m_stream.avail_in, m_file.get());
    m_stream.avail_in += uInt(count);
    if (count == 0)
        m_state = std::ferror(m_file.get()) ? State::Unreadable : State::CutOff;
    return count > 0;
}

// What libarchive takes for it. It knows other kinds of files, and one of those may begin nearly
// so.
bool GzipSource::isPackedHere() const
{
    constexpr unsigned char Reserved = 0xe0;
    const unsigned char *head = m_stream.next_in;
    return m_stream.avail_in >= 4 && head[0] == 0x1f && head[1] == 0x8b && head[2] == Z_DEFLATED
        && !(head[3] & Reserved);
}

void GzipSource::goOnBehindEnd()
{
    while (m_stream.avail_in < 4 && fill()) { }
    if (m_state == State::Unreadable)
        return;
    m_state = isPackedHere() ? State::Unpacking : State::AtEnd;
    inflateReset(&m_stream); // cannot fail for a stream that was begun
}

const char *GzipSource::failure() const
{
    switch (m_state) {
    case State::CutOff:
        return "truncated gzip input";
    case State::Unreadable:
        return "the file cannot be read";
    default:
        return "gzip decompression failed";
    }
}
