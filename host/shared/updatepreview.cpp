// SPDX-License-Identifier: MIT
#include "host/shared/updatepreview.h"

#include "host/shared/tilelist.h"
#include <QSet>

namespace UpdatePreview {

namespace {

// The engine moves what the shell's "*" names.
bool isMoved(const QString &path)
{
    return !path.startsWith(QLatin1Char('.'));
}

QStringList tilesOf(const QList<ArchiveFile> &files)
{
    QStringList paths;
    for (const ArchiveFile &file : files) {
        if (isMoved(file.path))
            paths.append(file.path);
    }
    return TileList::tiles(paths);
}

TileChanges compare(const QStringList &oldTiles, const QHash<QString, qint64> &onDisk,
                    const QHash<QString, qint64> &newTiles)
{
    TileChanges changes;
    for (auto tile = newTiles.begin(); tile != newTiles.end(); ++tile) {
        const auto old = onDisk.constFind(tile.key());
        if (old == onDisk.constEnd())
            ++changes.added;
        else if (*old != *tile)
            ++changes.resized;
        else
            ++changes.sameSize;
    }
    for (const QString &tile : oldTiles)
        changes.gone += onDisk.contains(tile) && !newTiles.contains(tile) ? 1 : 0;
    return changes;
}

/** One region after the other, in the order in which an update installs them. */
class Reckoning
{
public:
    explicit Reckoning(const Input &input)
        : m_input(input)
    {
        for (const InstalledRegion &region : input.installed) {
            for (const QString &tile : region.tiles)
                m_users[tile].append(region.id);
        }
    }

    Preview run()
    {
        QStringList oldTiles;
        for (const InstalledRegion &region : m_input.installed) {
            m_preview.regions.append(add(region));
            oldTiles += region.tiles;
        }
        oldTiles.removeDuplicates();
        m_preview.tiles = compare(oldTiles, m_input.sizesOnDisk, m_newTiles);
        m_preview.newSetBytes = m_setBytes;
        return m_preview;
    }

private:
    Region add(const InstalledRegion &installed)
    {
        Region region;
        region.id = installed.id;
        const auto archive = m_input.archives.constFind(installed.id);
        region.isLacking = archive == m_input.archives.constEnd();
        if (region.isLacking)
            return region;
        region.problem = archive->problem;
        if (!region.problem.isEmpty()) {
            m_preview.isWhole = false;
            return region;
        }
        region.downloadBytes = archive->bytes;
        m_preview.downloadBytes += archive->bytes;

        QHash<QString, qint64> files;
        qint64 unpacked = 0;
        for (const ArchiveFile &file : archive->files) {
            unpacked += file.size;
            if (isMoved(file.path))
                files.insert(file.path, file.size);
        }
        QHash<QString, qint64> tiles;
        const QStringList paths = tilesOf(archive->files);
        for (const QString &path : paths)
            tiles.insert(path, files.value(path));
        region.tiles = compare(installed.tiles, m_input.sizesOnDisk, tiles);
        region.endangered = endangered(installed, tiles);
        for (auto tile = tiles.begin(); tile != tiles.end(); ++tile)
            m_newTiles.insert(tile.key(), tile.value());
        region.installedBytes = install(archive->bytes, unpacked, files);
        return region;
    }

    // First the archive stands beside what it is unpacked to; it goes, and that is copied into the
    // new set; then it goes too.
    qint64 install(qint64 archiveBytes, qint64 unpacked, const QHash<QString, qint64> &files)
    {
        m_preview.peakBytes = qMax(m_preview.peakBytes, m_setBytes + archiveBytes + unpacked);
        qint64 bytes = 0;
        for (auto file = files.begin(); file != files.end(); ++file) {
            bytes += file.value();
            m_setBytes += file.value() - m_setFiles.value(file.key());
            m_setFiles.insert(file.key(), file.value());
        }
        m_preview.peakBytes = qMax(m_preview.peakBytes, m_setBytes + unpacked);
        return bytes;
    }

    QList<EndangeredTile> endangered(const InstalledRegion &installed,
                                     const QHash<QString, qint64> &newTiles) const
    {
        QList<EndangeredTile> result;
        for (const QString &tile : installed.tiles) {
            if (newTiles.contains(tile) || !m_input.sizesOnDisk.contains(tile))
                continue;
            QStringList others = m_users.value(tile);
            others.removeAll(installed.id);
            if (!others.isEmpty())
                result.append({tile, others});
        }
        return result;
    }

    const Input &m_input;
    Preview m_preview;
    QHash<QString, QStringList> m_users; // ids of the regions that list a tile
    QHash<QString, qint64> m_newTiles;
    QHash<QString, qint64> m_setFiles; // of the new set so far, with their sizes
    qint64 m_setBytes = 0;
};

} // namespace

Preview of(const Input &input)
{
    return Reckoning(input).run();
}

} // namespace UpdatePreview
