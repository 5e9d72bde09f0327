// SPDX-License-Identifier: MIT
#include "host/shared/zipdirectory.h"

#include <algorithm>
#include <QtEndian>
#include <sys/stat.h>

namespace {

constexpr qint64 TailSize = 16 * 1024; // as far back as libarchive looks too
constexpr int EndSize = 22;
constexpr int End64Size = 56;
constexpr int Locator64Size = 20;
constexpr int HeaderSize = 46;
constexpr qint64 MaxDirectory = 256 * 1024 * 1024; // bytes; a million tiles have 100 MB
constexpr quint32 See64 = 0xffffffff; // the value is in the 64-bit field
constexpr quint16 Extra64 = 0x0001;
constexpr quint16 ExtraUnicodePath = 0x7075;
constexpr quint16 FlagEncrypted = 1;
constexpr int SystemFat = 0;
constexpr int SystemUnix = 3;
constexpr quint32 FatFolder = 0x10;

quint16 u16(const QByteArray &bytes, int at)
{
    return qFromLittleEndian<quint16>(bytes.constData() + at);
}

quint32 u32(const QByteArray &bytes, int at)
{
    return qFromLittleEndian<quint32>(bytes.constData() + at);
}

quint64 u64(const QByteArray &bytes, int at)
{
    return qFromLittleEndian<quint64>(bytes.constData() + at);
}

/** Where the list lies in the archive. */
struct Place
{
    qint64 offset = 0;
    qint64 size = 0;
    qint64 count = 0;
};

struct SortedEntry
{
    ZipDirectory::Entry entry;
    quint64 offset = 0; // of the file's own header
};

// Archives above 4 GiB or with more than 65535 files: a second, larger end record, found by a
// third one that stands in front of the first.
std::optional<Place> place64(const ZipDirectory::Reader &reader, const QByteArray &locator,
                             qint64 locatorAt)
{
    const quint64 at = u64(locator, 8);
    if (locatorAt < End64Size || at > quint64(locatorAt - End64Size))
        return std::nullopt;
    const auto end = reader(qint64(at), End64Size);
    if (!end || !end->startsWith("PK\6\6") || u32(*end, 16) != 0 || u32(*end, 20) != 0)
        return std::nullopt;
    const quint64 size = u64(*end, 40);
    const quint64 offset = u64(*end, 48);
    if (size > quint64(MaxDirectory) || offset > at || offset + size != at)
        return std::nullopt;
    return Place {qint64(offset), qint64(size), qint64(u64(*end, 32))};
}

std::optional<Place> findDirectory(const ZipDirectory::Reader &reader, qint64 archiveSize)
{
    const qint64 tailAt = std::max<qint64>(0, archiveSize - TailSize);
    const auto tail = reader(tailAt, archiveSize - tailAt);
    if (!tail)
        return std::nullopt;
    for (int at = int(tail->size()) - EndSize; at >= 0; --at) {
        if (tail->mid(at, 4) != QByteArray("PK\5\6"))
            continue;
        // Behind it stands a comment and nothing else.
        if (at + EndSize + u16(*tail, at + 20) != tail->size())
            continue;
        if (at >= Locator64Size && tail->mid(at - Locator64Size, 4) == QByteArray("PK\6\7"))
            return place64(reader, tail->mid(at - Locator64Size, Locator64Size),
                           tailAt + at - Locator64Size);
        const Place place {u32(*tail, at + 16), u32(*tail, at + 12), u16(*tail, at + 10)};
        const bool oneVolume = u16(*tail, at + 4) == 0 && u16(*tail, at + 6) == 0
            && u16(*tail, at + 8) == u16(*tail, at + 10);
        // Where something stands in front of the archive, all its offsets are off.
        const bool fits = place.offset + place.size == tailAt + at && place.size <= MaxDirectory;
        return oneVolume && fits ? std::optional<Place>(place) : std::nullopt;
    }
    return std::nullopt;
}

quint32 crc32(const QByteArray &bytes)
{
    quint32 crc = 0xffffffff;
    for (const char byte : bytes) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xedb88320 : 0);
    }
    return ~crc;
}

// What does not fit in the fixed fields. False if it is damaged.
bool readExtra(const QByteArray &extra, bool hasLongSize, bool hasLongOffset, bool hasLongPacked,
               SortedEntry *sorted)
{
    int at = 0;
    while (at + 4 <= extra.size()) {
        const quint16 kind = u16(extra, at);
        const int size = u16(extra, at + 2);
        at += 4;
        if (at + size > extra.size())
            return false;
        const QByteArray field = extra.mid(at, size);
        at += size;
        if (kind == Extra64) {
            int next = 0;
            const auto take = [&](bool present, quint64 *value) {
                if (!present)
                    return true;
                if (next + 8 > field.size())
                    return false;
                *value = u64(field, next);
                next += 8;
                return true;
            };
            quint64 unpacked = quint64(sorted->entry.size);
            quint64 packed = 0;
            if (!take(hasLongSize, &unpacked) || !take(hasLongPacked, &packed)
                || !take(hasLongOffset, &sorted->offset) || unpacked > quint64(INT64_MAX))
                return false;
            sorted->entry.size = qint64(unpacked);
        } else if (kind == ExtraUnicodePath && field.size() > 5 && field.at(0) == 1
                   && u32(field, 1) == crc32(sorted->entry.name)) {
            sorted->entry.name = field.mid(5);
        }
    }
    return true;
}

void readKind(int system, quint32 attributes, ZipDirectory::Entry *entry)
{
    const quint32 mode = system == SystemUnix ? attributes >> 16 : 0;
    const bool fatFolder = system == SystemFat && attributes & FatFolder;
    // Some tools write these; libarchive asks no more than this either, whatever the system.
    if (!entry->name.contains('/'))
        entry->name.replace('\\', '/');
    const bool isFolder = entry->name.endsWith('/') || S_ISDIR(mode) || fatFolder;
    if (isFolder && !entry->name.endsWith('/'))
        entry->name += '/';
    entry->isFolder = isFolder;
    // A tool that reads from a pipe stores the pipe's mode for what it read.
    entry->isFile = !isFolder && ((mode & S_IFMT) == 0 || S_ISREG(mode) || S_ISFIFO(mode));
}

// The entry at this place, which then moves behind it; nothing if it is damaged.
std::optional<SortedEntry> readEntry(const QByteArray &directory, int *at)
{
    if (*at + HeaderSize > directory.size() || directory.mid(*at, 4) != QByteArray("PK\1\2"))
        return std::nullopt;
    const QByteArray header = directory.mid(*at, HeaderSize);
    const int nameSize = u16(header, 28);
    const int extraSize = u16(header, 30);
    const int end = *at + HeaderSize + nameSize + extraSize + u16(header, 32);
    if (end > directory.size())
        return std::nullopt;
    SortedEntry sorted;
    sorted.offset = u32(header, 42);
    sorted.entry.size = u32(header, 24);
    sorted.entry.name = directory.mid(*at + HeaderSize, nameSize);
    sorted.entry.isEncrypted = u16(header, 8) & FlagEncrypted;
    if (!readExtra(directory.mid(*at + HeaderSize + nameSize, extraSize), u32(header, 24) == See64,
                   u32(header, 42) == See64, u32(header, 20) == See64, &sorted))
        return std::nullopt;
    readKind(quint8(header.at(5)), u32(header, 38), &sorted.entry);
    *at = end;
    return sorted;
}

} // namespace

bool ZipDirectory::startsLikeZip(const QByteArray &head)
{
    return head.startsWith("PK\3\4") || head.startsWith("PK\5\6");
}

std::optional<QList<ZipDirectory::Entry>> ZipDirectory::read(const Reader &reader,
                                                             qint64 archiveSize)
{
    const auto place = findDirectory(reader, archiveSize);
    if (!place)
        return std::nullopt;
    const auto directory = reader(place->offset, place->size);
    if (!directory)
        return std::nullopt;
    std::vector<SortedEntry> found;
    int at = 0;
    while (at < directory->size()) {
        const auto entry = readEntry(*directory, &at);
        if (!entry || entry->offset >= quint64(place->offset))
            return std::nullopt;
        found.push_back(*entry);
    }
    // The field has 16 bits; tools without the larger record let it overflow.
    if (quint16(found.size()) != quint16(place->count))
        return std::nullopt;
    std::stable_sort(found.begin(), found.end(), [](const SortedEntry &a, const SortedEntry &b) {
        return a.offset < b.offset;
    });
    QList<Entry> entries;
    for (const SortedEntry &sorted : found)
        entries.append(sorted.entry);
    return entries;
}
