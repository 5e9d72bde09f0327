// SPDX-License-Identifier: MIT
#include "fuzz/targets.h"
#include "fuzz/workspace.h"
#include "host/shared/swapjournal.h"
#include "host/shared/zipdirectory.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

bool isSame(const FolderOps::Identity &a, const FolderOps::Identity &b)
{
    return (a.isNull() && b.isNull()) || (a.inode == b.inode && a.born == b.born);
}

bool isSame(const SwapNote &a, const SwapNote &b)
{
    return a.operation == b.operation && a.suffix == b.suffix
        && isSame(a.leavingCatalog, b.leavingCatalog) && isSame(a.leavingTiles, b.leavingTiles)
        && isSame(a.arrivingCatalog, b.arrivingCatalog) && isSame(a.arrivingTiles, b.arrivingTiles)
        && isSame(a.voices, b.voices) && a.arrivingVersion == b.arrivingVersion;
}

} // namespace

void fuzzZipDirectory(const QByteArray &input)
{
    const auto reader = [&input](qint64 offset, qint64 size) -> std::optional<QByteArray> {
        require(offset >= 0 && size >= 0, "nothing is asked for that no file has");
        if (offset > input.size() || size > input.size() - offset)
            return std::nullopt;
        return input.mid(int(offset), int(size));
    };
    const auto entries = ZipDirectory::read(reader, input.size());
    if (!entries)
        return;
    for (const ZipDirectory::Entry &entry : *entries) {
        require(entry.size >= 0, "a size is no debt");
        require(!entry.isFile || !entry.isFolder, "an entry is one thing");
        require(entry.isFolder == entry.name.endsWith('/'), "a folder's name ends in a slash");
    }
}

void fuzzSwapJournal(const QByteArray &input)
{
    QDir().mkpath(QFileInfo(SwapJournal::path()).path());
    QFile file(SwapJournal::path());
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate)
                && file.write(input) == input.size(),
            "the journal can be put there");
    file.close();

    QString text;
    const auto note = SwapJournal::read(&text);
    require(note.has_value() == text.isEmpty(), "what cannot be read has a reason");
    require(SwapJournal::remove(&text), "a journal can be removed");
    if (!note)
        return;
    require(SwapJournal::write(*note, &text), "what was read can be written");
    const auto again = SwapJournal::read(&text);
    require(again && isSame(*again, *note), "a note survives being written");
    require(SwapJournal::remove(&text), "a journal can be removed");
}
