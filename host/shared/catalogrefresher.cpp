// SPDX-License-Identifier: MIT
#include "host/shared/catalogrefresher.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapcatalogprocessor.h"
#include "download/downloadmanageriface.h"
#include "download/request.h"
#include "host/shared/attempttag.h"
#include "host/shared/catalogfiles.h"
#include "host/shared/mapsversion.h"
#include "host/shared/tilelist.h"
#include <algorithm>
#include <cstdio>
#include <QDir>
#include <QFile>
#include <QUrl>

namespace {

const char *const IdPrefix = "refresh:";

QString versionIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return MapsVersion::parse(file.read(MapsVersion::MaxFileSize + 1));
}

bool isCut(const QString &path)
{
    QFile file(path);
    return !file.open(QIODevice::ReadOnly) || CatalogFiles::isCut(&file);
}

bool listsRegions(const QString &path)
{
    MapCatalogProcessor processor;
    const QList<MapRegion *> regions = processor.readCatalog(path);
    return std::any_of(regions.begin(), regions.end(),
                       [](const MapRegion *region) { return region != nullptr; });
}

// In one step; QFile's own rename refuses to replace.
bool replaceFile(const QString &from, const QString &to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

} // namespace

CatalogRefresher::CatalogRefresher(MapCatalog *catalog, DownloadManagerIface *downloads,
                                   const QString &baseUri, QObject *parent)
    : QObject(parent)
    , m_catalog(catalog)
    , m_downloads(downloads)
    , m_baseUri(baseUri)
    // Below the catalogue folder, so that putting into place is a rename on one file system.
    , m_incoming(catalog->tessarinDirectory() + QLatin1String("/incoming"))
{
    connect(downloads, &DownloadManagerIface::finished, this, &CatalogRefresher::onFinished);
    connect(downloads, &DownloadManagerIface::error, this, &CatalogRefresher::onError);
    connect(downloads, &DownloadManagerIface::progress, this,
            [this](int, const QString &url, const QString &id, qint64 bytes) {
                if (id != m_id || AttemptTag::of(url) != AttemptTag::of(m_url) || bytes <= m_bytes)
                    return;
                m_bytes = bytes;
                Q_EMIT progress();
            });
}

bool CatalogRefresher::isOurs(const QString &id)
{
    return id.startsWith(QLatin1String(IdPrefix));
}

void CatalogRefresher::start()
{
    QDir(m_incoming).removeRecursively(); // What an earlier refresh left is of no use.
    if (!QDir().mkpath(m_incoming)) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                finish(Result::DiskFailed, tr("The folder %1 cannot be made.").arg(m_incoming));
            },
            Qt::QueuedConnection);
        return;
    }
    fetch(CatalogFiles::versionName(), [this](bool arrived) { onVersion(arrived); });
}

void CatalogRefresher::abort()
{
    if (m_result != Result::None)
        return;
    const QString url = m_url;
    finish(Result::Aborted);
    if (!url.isEmpty())
        m_downloads->cancel(url);
}

CatalogRefresher::Result CatalogRefresher::result() const
{
    return m_result;
}

QString CatalogRefresher::serverVersion() const
{
    return m_serverVersion;
}

QString CatalogRefresher::namesCode() const
{
    return m_namesCode;
}

QString CatalogRefresher::errorString() const
{
    return m_errorString;
}

void CatalogRefresher::fetch(const QString &fileName, const std::function<void(bool)> &then)
{
    static int attempts = 0; // GUI thread only
    m_then = then;
    m_failed = false;
    m_notStored = false;
    m_bytes = -1;
    m_fileName = fileName;
    m_id = QLatin1String(IdPrefix) + fileName;
    m_url = AttemptTag::tagged(
        QUrl(m_baseUri).resolved(QUrl(fileName)).toString(QUrl::FullyEncoded), ++attempts);
    Q_EMIT fetching(fileName);
    m_downloads->download(m_id, m_url, m_incoming + QLatin1Char('/'), false);
}

// The move ends last, also behind a download that failed.
void CatalogRefresher::onFinished(int operation, const QString &url, const QString &id)
{
    if (operation != MoveRequest || id != m_id || AttemptTag::of(url) != AttemptTag::of(m_url)
        || !m_then)
        return;
    const auto then = std::move(m_then);
    m_then = nullptr;
    m_url.clear();
    if (m_notStored)
        finish(Result::DiskFailed,
               tr("%1 cannot be written.").arg(m_incoming + QLatin1Char('/') + m_fileName));
    else
        then(!m_failed);
}

void CatalogRefresher::onError(int operation, const QString &id, int code, const QString &url)
{
    Q_UNUSED(code);
    if (id != m_id || AttemptTag::of(url) != AttemptTag::of(m_url))
        return;
    // Behind a download that failed, there is nothing that the move could find.
    if (operation == MoveRequest && !m_failed)
        m_notStored = true;
    m_failed = true;
}

void CatalogRefresher::onVersion(bool arrived)
{
    if (!arrived) {
        finish(Result::NetworkFailed,
               tr("%1 cannot be reached, or it is no map server.").arg(m_baseUri));
        return;
    }
    m_serverVersion = versionIn(m_incoming + QLatin1Char('/') + CatalogFiles::versionName());
    if (m_serverVersion.isEmpty()) {
        finish(Result::CatalogueFailed, tr("%1 names no usable map version.").arg(m_baseUri));
        return;
    }
    m_targetVersion = MapsVersion::asInstalled(m_serverVersion);
    const QString installed = m_catalog->installedMapsVersion();
    m_keepVersion = m_targetVersion != installed && regionsAreInstalled();
    if (m_keepVersion) {
        finish(Result::NewerExists);
        return;
    }
    fetch(CatalogFiles::catalogName(m_serverVersion), [this](bool ok) { onCatalog(ok); });
}

void CatalogRefresher::onCatalog(bool arrived)
{
    const QString name = CatalogFiles::catalogName(m_serverVersion);
    if (!arrived) {
        finish(Result::NetworkFailed, tr("The server does not deliver %1.").arg(name));
        return;
    }
    const QString path = m_incoming + QLatin1Char('/') + name;
    if (isCut(path) || !listsRegions(path)) {
        finish(Result::CatalogueFailed,
               tr("The server's %1 is damaged or lists no regions; the old one stays.").arg(name));
        return;
    }
    const QString code = m_catalog->getDigitCode();
    fetch(CatalogFiles::namesName(code), [this, code](bool ok) { onNames(code, ok); });
}

// Names are wanted but not needed: without them regions have their names from the catalogue.
void CatalogRefresher::onNames(const QString &code, bool arrived)
{
    const QString fallback = CatalogFiles::fallbackCode();
    if (!arrived && code != fallback) {
        fetch(CatalogFiles::namesName(fallback),
              [this, fallback](bool ok) { onNames(fallback, ok); });
        return;
    }
    if (arrived && !isCut(m_incoming + QLatin1Char('/') + CatalogFiles::namesName(code)))
        m_namesCode = code;
    putIntoPlace();
}

void CatalogRefresher::putIntoPlace()
{
    const QString folder = m_catalog->tessarinDirectory() + QLatin1Char('/');
    if (!m_namesCode.isEmpty()) {
        // Under the name that the catalogue looks for, whichever language the server had.
        const QString target = folder + CatalogFiles::namesName(m_catalog->getDigitCode());
        if (!replaceFile(m_incoming + QLatin1Char('/') + CatalogFiles::namesName(m_namesCode),
                         target)) {
            finish(Result::DiskFailed, tr("%1 cannot be written.").arg(target));
            return;
        }
    }
    const QString target = folder + CatalogFiles::catalogName(m_targetVersion);
    if (!replaceFile(m_incoming + QLatin1Char('/') + CatalogFiles::catalogName(m_serverVersion),
                     target)) {
        finish(Result::DiskFailed, tr("%1 cannot be written.").arg(target));
        return;
    }
    const bool sameVersion = m_catalog->installedMapsVersion() == m_targetVersion;
    if (!sameVersion && !adopt(m_targetVersion)) {
        finish(Result::DiskFailed,
               tr("%1 cannot be written.").arg(folder + CatalogFiles::contentName()));
        return;
    }
    m_catalog->updateCatalog();
    finish(sameVersion ? Result::Renewed : Result::Adopted);
}

bool CatalogRefresher::adopt(const QString &version)
{
    m_catalog->setInstalledMapsVersion(version);
    m_catalog->updateLocalContentFile();
    m_catalog->setInstalledMapsVersion(); // as it will be read at the next start
    return m_catalog->installedMapsVersion() == version;
}

// The content file decides, not the lists: a region that the catalogue does not know is installed
// all the same.
bool CatalogRefresher::regionsAreInstalled() const
{
    const MapCatalogProcessor processor;
    return !processor
                .readLocalContent(m_catalog->tessarinDirectory() + QLatin1Char('/')
                                  + CatalogFiles::contentName())
                .isEmpty();
}

void CatalogRefresher::finish(Result result, const QString &errorString)
{
    if (m_result != Result::None)
        return;
    m_result = result;
    m_errorString = errorString;
    m_then = nullptr;
    m_url.clear();
    QDir(m_incoming).removeRecursively(); // Only leftovers if it fails.
    Q_EMIT finished();
}
