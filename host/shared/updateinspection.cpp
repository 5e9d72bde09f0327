// SPDX-License-Identifier: MIT
#include "host/shared/updateinspection.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/shared/catalogfiles.h"
#include "host/shared/httpfile.h"
#include "host/shared/mapsversion.h"
#include "host/shared/tilelist.h"
#include "plugin/dataroot.h"
#include <QBuffer>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QPair>
#include <QScopedValueRollback>
#include <QSet>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <sys/stat.h>

namespace {

constexpr qint64 MaxCatalogue = 256 * 1024 * 1024; // bytes

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

/** What removing folders would free: the contents, each once, that have no name elsewhere. */
class FolderBytes
{
public:
    void add(const QString &folder, const QString &except = QString())
    {
        QDirIterator entries(folder,
                             QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System);
        while (entries.hasNext()) {
            const QString path = entries.next();
            struct stat status = {};
            if (path == except || ::lstat(QFile::encodeName(path).constData(), &status) != 0)
                continue;
            if (S_ISDIR(status.st_mode))
                add(path, except);
            else if (++m_names[{quint64(status.st_dev), quint64(status.st_ino)}]
                     == quint64(status.st_nlink))
                m_bytes += qint64(status.st_size);
        }
    }
    qint64 bytes() const { return m_bytes; }

private:
    QHash<QPair<quint64, quint64>, quint64> m_names; // found so far, by device and inode
    qint64 m_bytes = 0;
};

QUrl usableAddress(const QUrl &baseUri, const QString &link)
{
    const QUrl url = link.isEmpty() ? QUrl() : baseUri.resolved(QUrl(link));
    const bool isHttp =
        url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return url.isValid() && !url.host().isEmpty() && isHttp ? url : QUrl();
}

} // namespace

UpdateInspection::UpdateInspection(MapCatalog *catalog, const QString &baseUri, int patience,
                                   QObject *parent)
    : QObject(parent)
    , m_catalog(catalog)
    , m_baseUri(baseUri)
    , m_patience(patience)
{ }

UpdateInspection::~UpdateInspection() = default;

bool UpdateInspection::inspect()
{
    if (!readVersion())
        return false;
    m_upToDate = MapsVersion::asInstalled(m_serverVersion) == installedVersion();
    if (m_upToDate)
        return true;
    readInstalled();
    if (!readCatalogue() || !listArchives())
        return false;
    readSizes();
    m_preview = UpdatePreview::of(m_input);
    FolderBytes backup;
    backup.add(DataRoot::catalogFolder());
    // The voices go over to the new maps.
    backup.add(DataRoot::tileCacheFolder(), DataRoot::tileCacheFolder() + QLatin1String("/voices"));
    m_backupBytes = backup.bytes();
    return true;
}

void UpdateInspection::abort()
{
    m_aborted = true;
    if (m_file)
        m_file->abort();
    if (m_archive)
        m_archive->abort();
}

QString UpdateInspection::installedVersion() const
{
    return m_catalog->installedMapsVersion();
}

QString UpdateInspection::serverVersion() const
{
    return m_serverVersion;
}

bool UpdateInspection::isUpToDate() const
{
    return m_upToDate;
}

const UpdatePreview::Preview &UpdateInspection::preview() const
{
    return m_preview;
}

qint64 UpdateInspection::backupBytes() const
{
    return m_backupBytes;
}

qint64 UpdateInspection::freeBytes() const
{
    return QStorageInfo(DataRoot::cities()).bytesAvailable();
}

qint64 UpdateInspection::bytesReceived() const
{
    return m_bytesReceived;
}

FailureKind UpdateInspection::failure() const
{
    return m_failure;
}

bool UpdateInspection::wasAborted() const
{
    return m_aborted;
}

QString UpdateInspection::errorString() const
{
    return m_errorString;
}

bool UpdateInspection::readVersion()
{
    QByteArray bytes;
    if (!fetch(CatalogFiles::versionName(), MapsVersion::MaxFileSize, &bytes))
        return false;
    m_serverVersion = MapsVersion::parse(bytes);
    if (m_serverVersion.isEmpty())
        return fail(FailureKind::Catalogue,
                    tr("%1 names no usable map version.").arg(m_baseUri.toString()));
    return true;
}

// The ids are the content file's: a region that the old catalogue does not know is updated too.
void UpdateInspection::readInstalled()
{
    const MapCatalogProcessor processor;
    const QStringList ids = processor.readLocalContent(
        m_catalog->tessarinDirectory() + QLatin1Char('/') + CatalogFiles::contentName());
    for (const QString &id : ids) {
        const MapRegion *region = m_catalog->region(id);
        const QStringList entries =
            region && region->installed() ? region->fileList() : m_catalog->readRegionFileList(id);
        QStringList tiles;
        for (const QString &entry : entries)
            tiles.append(TileList::plain(entry));
        tiles.removeDuplicates();
        m_input.installed.append({id, tiles});
    }
}

bool UpdateInspection::readCatalogue()
{
    const QString name = CatalogFiles::catalogName(m_serverVersion);
    QByteArray bytes;
    if (!fetch(name, MaxCatalogue, &bytes))
        return false;
    const QTemporaryDir folder;
    const QString path = folder.filePath(name);
    if (!folder.isValid() || !writeFile(path, bytes))
        return fail(FailureKind::Disk, tr("%1 cannot be written.").arg(path));
    MapCatalogProcessor processor;
    const QList<MapRegion *> regions = processor.readCatalog(path);
    for (const MapRegion *region : regions) {
        if (region)
            m_offers.insert(
                region->id(),
                {usableAddress(m_baseUri, region->downloadUrl()), region->downloadSize()});
    }
    QBuffer xml(&bytes);
    if (!xml.open(QIODevice::ReadOnly) || CatalogFiles::isCut(&xml) || m_offers.isEmpty())
        return fail(FailureKind::Catalogue,
                    tr("The server's %1 is damaged or lists no regions.").arg(name));
    return true;
}

bool UpdateInspection::listArchives()
{
    for (const UpdatePreview::InstalledRegion &region : std::as_const(m_input.installed)) {
        const auto offer = m_offers.constFind(region.id);
        if (offer == m_offers.constEnd())
            continue;
        if (offer->url.isEmpty())
            noteProblem(region.id, FailureKind::Catalogue,
                        tr("The catalogue gives no usable address for %1.").arg(region.id));
        else if (!listArchive(region.id, *offer))
            return false;
    }
    return true;
}

// False if the server is not worth another question.
bool UpdateInspection::listArchive(const QString &id, const Offer &offer)
{
    if (m_aborted)
        return fail(FailureKind::None, tr("Interrupted."));
    Q_EMIT looking(offer.url.fileName());
    RemoteArchive archive(&m_network, offer.url, m_patience);
    const QScopedValueRollback<RemoteArchive *> current(m_archive, &archive);
    const bool listed = archive.list();
    m_bytesReceived += archive.bytesReceived();
    switch (archive.failure()) {
    case RemoteArchive::Failure::Network:
        return fail(FailureKind::Network, archive.errorString());
    case RemoteArchive::Failure::Aborted:
        return fail(FailureKind::None, archive.errorString());
    case RemoteArchive::Failure::Refused:
        noteProblem(id, FailureKind::Network, archive.errorString());
        return true;
    case RemoteArchive::Failure::Archive:
        noteProblem(id, FailureKind::Archive, archive.errorString());
        return true;
    case RemoteArchive::Failure::None:
        break;
    }
    QStringList paths;
    const QList<ArchiveFile> files = archive.files();
    for (const ArchiveFile &file : files)
        paths.append(file.path);
    if (!listed || TileList::tiles(paths).isEmpty()) {
        noteProblem(id, FailureKind::Archive, tr("The archive of %1 holds no map tiles.").arg(id));
        return true;
    }
    const qint64 bytes = archive.size() >= 0 ? archive.size() : offer.bytes;
    m_input.archives.insert(id, {bytes, files, QString()});
    return true;
}

void UpdateInspection::readSizes()
{
    QSet<QString> paths;
    for (const UpdatePreview::InstalledRegion &region : std::as_const(m_input.installed)) {
        for (const QString &tile : region.tiles)
            paths.insert(tile);
    }
    for (const UpdatePreview::NewArchive &archive : std::as_const(m_input.archives)) {
        for (const ArchiveFile &file : archive.files)
            paths.insert(file.path);
    }
    const QString folder = DataRoot::tileCacheFolder() + QLatin1Char('/');
    for (const QString &path : std::as_const(paths)) {
        const QFileInfo file(folder + path);
        if (file.isFile())
            m_input.sizesOnDisk.insert(path, file.size());
    }
}

bool UpdateInspection::fetch(const QString &fileName, qint64 maxBytes, QByteArray *bytes)
{
    if (m_aborted)
        return fail(FailureKind::None, tr("Interrupted."));
    Q_EMIT looking(fileName);
    HttpFile file(&m_network, m_baseUri.resolved(QUrl(fileName)), m_patience);
    const QScopedValueRollback<HttpFile *> current(m_file, &file);
    const auto fetched = file.fetch(maxBytes);
    m_bytesReceived += file.bytesReceived();
    if (!fetched)
        return fail(file.failure() == HttpFile::Failure::Aborted ? FailureKind::None
                                                                 : FailureKind::Network,
                    file.errorString());
    *bytes = *fetched;
    return true;
}

bool UpdateInspection::fail(FailureKind failure, const QString &text)
{
    m_failure = failure;
    m_errorString = text;
    return false;
}

// The worst of several is told: a server that comes back helps no damaged archive.
void UpdateInspection::noteProblem(const QString &id, FailureKind kind, const QString &text)
{
    m_input.archives.insert(id, {0, {}, text});
    if (m_failure == FailureKind::None || m_failure == FailureKind::Network)
        m_failure = kind;
}
