// SPDX-License-Identifier: MIT
#include "host/shared/preparedset.h"

#include "catalog/mapcatalog.h"
#include "host/shared/catalogfiles.h"
#include "host/shared/catalogrefresher.h"
#include "host/shared/datasetswap.h"
#include "host/shared/installjournal.h"
#include "host/shared/savedqueue.h"
#include "host/shared/tilelist.h"
#include "host/shared/updatestate.h"
#include "plugin/dataroot.h"
#include "plugin/vexaconstants.h"
#include <cstdio>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

namespace {

QString catalogueFile(const QString &name)
{
    return DataRoot::catalogFolder(UpdateSuffix) + QLatin1Char('/') + name;
}

QString contentFile(const QString &pathSuffix)
{
    return DataRoot::catalogFolder(pathSuffix) + QLatin1Char('/') + CatalogFiles::contentName();
}

QString versionOf(const QString &pathSuffix)
{
    return MapCatalogProcessor().readLocalMapVersion(contentFile(pathSuffix));
}

// A step belongs to the prepared set if its move goes there, or, where the move was not queued any
// more, if only its journal knows the address.
void removeQueuedSteps(const InstallJournal &journal)
{
    QSet<QString> urls;
    const QList<PendingInstall> entries = journal.entries();
    for (const PendingInstall &entry : entries)
        urls.insert(entry.url);
    urls.remove(QString());
    const QString folder = QDir::cleanPath(DataRoot::tileCacheFolder(UpdateSuffix));
    const QList<Request> requests = SavedQueue::read();
    for (const Request &request : requests) {
        if (request.type != MoveRequest)
            continue;
        const QString target = QDir::cleanPath(request.payload.toStringList().value(1));
        if (target == folder)
            urls.insert(request.url);
        else
            urls.remove(request.url);
    }
    SavedQueue::removeIf([&urls](const Request &request) {
        return urls.contains(request.url) || CatalogRefresher::isOurs(request.id);
    });
}

} // namespace

bool replaceFileBy(const QString &from, const QString &to)
{
    if (!QFile::exists(from))
        return QFile::remove(to) || !QFile::exists(to);
    // A name that the next attempt takes too, so that a crash leaves nothing for good.
    const QString part = to + QLatin1String(".part");
    QFile::remove(part); // If it fails, the copy tells.
    return QFile::copy(from, part)
        && std::rename(QFile::encodeName(part).constData(), QFile::encodeName(to).constData()) == 0;
}

bool PreparedSet::exists()
{
    return QFileInfo::exists(DataRoot::catalogFolder(UpdateSuffix))
        || QFileInfo::exists(DataRoot::tileCacheFolder(UpdateSuffix));
}

bool PreparedSet::isFor(const QString &version)
{
    using Phase = UpdateState::Phase;
    const UpdateState state = UpdateState::read();
    return state.phase != Phase::None && state.phase != Phase::Fetching && state.version == version
        && versionOf(UpdateSuffix) == version
        && QFileInfo(catalogueFile(CatalogFiles::catalogName(version))).isFile()
        && QFileInfo(DataRoot::tileCacheFolder(UpdateSuffix)).isDir();
}

QStringList PreparedSet::installedIds(const QString &pathSuffix)
{
    return MapCatalogProcessor().readLocalContent(contentFile(pathSuffix));
}

bool PreparedSet::seed()
{
    MapCatalog catalog;
    catalog.resetInstanceWithPathSuffix(UpdateSuffix, true);
    // The library's copies report nothing. The version is there if the first file could be written,
    // and config.cfg is the last that is copied.
    const QFileInfo config(DataRoot::tileCacheFolder() + QLatin1Char('/')
                           + CatalogFiles::configName());
    const QFileInfo copy(DataRoot::tileCacheFolder(UpdateSuffix) + QLatin1Char('/')
                         + CatalogFiles::configName());
    const bool isCopied = !config.exists() || copy.size() == config.size();
    if (versionOf(UpdateSuffix) == versionOf(QString()) && isCopied)
        return true;
    m_errorString =
        tr("The folders %1 and %2 cannot be written.")
            .arg(DataRoot::catalogFolder(UpdateSuffix), DataRoot::tileCacheFolder(UpdateSuffix));
    return false;
}

void PreparedSet::tidy(const QString &version)
{
    // What fails here is only a leftover.
    QDir folder(DataRoot::catalogFolder(UpdateSuffix));
    const QString catalogue = CatalogFiles::catalogName(version);
    // A file is written under a name with six letters behind it until it is whole.
    static const QRegularExpression cutShort(QStringLiteral("\\.xml\\.[A-Za-z0-9]{6}\\z"));
    const QStringList names = folder.entryList(QDir::Files | QDir::Hidden);
    for (const QString &name : names) {
        const bool isCatalogue =
            name.startsWith(QLatin1String("catalog-")) && name.endsWith(QLatin1String(".xml"));
        if ((isCatalogue && name != catalogue) || cutShort.match(name).hasMatch())
            folder.remove(name);
    }
}

bool PreparedSet::carryOver()
{
    const QString index = QStringLiteral("/cityindex.xml");
    const QString config = QLatin1Char('/') + CatalogFiles::configName();
    if (replaceFileBy(DataRoot::catalogFolder() + index,
                      DataRoot::catalogFolder(UpdateSuffix) + index)
        && replaceFileBy(DataRoot::tileCacheFolder() + config,
                         DataRoot::tileCacheFolder(UpdateSuffix) + config))
        return true;
    m_errorString = tr("The city index and config.cfg cannot be copied to the new maps.");
    return false;
}

bool PreparedSet::discard()
{
    const QString journalPath = InstallJournal::defaultPath(UpdateSuffix);
    removeQueuedSteps(InstallJournal(journalPath));
    if (SavedQueue::read().isEmpty())
        TileList::empty(QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE);
    if (QFile::exists(journalPath) && !QFile::remove(journalPath)) {
        m_errorString = tr("The file %1 cannot be removed.").arg(journalPath);
        return false;
    }
    DataSetSwap swap {QString(UpdateSuffix)};
    if (exists() && !swap.discardPrepared()) {
        m_errorString = swap.errorString();
        return false;
    }
    if (UpdateState::remove())
        return true;
    m_errorString = tr("The state of the update cannot be written.");
    return false;
}

QString PreparedSet::errorString() const
{
    return m_errorString;
}
