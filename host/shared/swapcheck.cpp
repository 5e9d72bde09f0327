// SPDX-License-Identifier: MIT
#include "host/shared/swapcheck.h"

#include "catalog/mapcatalogprocessor.h"
#include "host/shared/catalogfiles.h"
#include "host/shared/folderexchange.h"
#include "plugin/dataroot.h"
#include "plugin/shell_p.h"
#include <algorithm>
#include <QFile>
#include <QStorageInfo>
#include <QXmlStreamReader>
#include <unistd.h>

namespace {

constexpr qint64 JournalSpace = 65536; // bytes; far more than the journal and its folder need
const QLatin1String Voices("/voices");

bool isWritable(const QString &folder)
{
    return ::access(QFile::encodeName(folder).constData(), W_OK | X_OK) == 0;
}

bool listsRegions(const QString &catalogFile)
{
    MapCatalogProcessor processor;
    const QList<MapRegion *> regions = processor.readCatalog(catalogFile);
    return std::any_of(regions.begin(), regions.end(),
                       [](const MapRegion *region) { return region != nullptr; });
}

// That the file tells its version is not enough: of a long one that is read from the ends.
bool isWellFormed(const QString &xmlFile)
{
    QFile file(xmlFile);
    if (!file.open(QFile::ReadOnly))
        return false;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd())
        xml.readNext();
    return !xml.hasError();
}

} // namespace

SwapCheck::SwapCheck(const SwapNote &note)
    : m_isSwap(note.operation == SwapNote::Operation::Swap)
    , m_suffix(note.suffix)
    , m_from(FolderExchange::arrivingSuffix(note))
    , m_to(FolderExchange::leavingSuffix(note))
{ }

QString SwapCheck::objection() const
{
    if (SwapJournal::exists())
        return tr("An exchange of the map data was cut short. Start the program again first.");
    for (const auto question : {&SwapCheck::names, &SwapCheck::folders, &SwapCheck::voices,
                                &SwapCheck::permissions, &SwapCheck::content}) {
        QString answer = (this->*question)();
        if (!answer.isEmpty())
            return answer;
    }
    return QString();
}

QString SwapCheck::names() const
{
    if (!SwapJournal::isUsableSuffix(m_suffix))
        return tr("\"%1\" cannot stand behind the name of a data set.").arg(m_suffix);
    // The library's moves are commands without quotes.
    const QString path = DataRoot::cities();
    if (m_isSwap && Shell::quoted(path) != path)
        return tr("The path %1 has a blank or another character that the update cannot handle. "
                  "Move the map data to a folder with a plain name.")
            .arg(path);
    return QString();
}

QString SwapCheck::folders() const
{
    const bool catalogs = FolderOps::exists(DataRoot::catalogFolder(m_from));
    if (!catalogs && !FolderOps::exists(DataRoot::tileCacheFolder(m_from)))
        return m_isSwap ? tr("There is no prepared map data.")
                        : tr("There is no backup to go back to.");
    for (const QString &path : {DataRoot::catalogFolder(m_to), DataRoot::tileCacheFolder(m_to)}) {
        if (FolderOps::exists(path))
            return m_isSwap
                ? tr("The backup of an earlier update is still there (%1). Remove it "
                     "or go back to it first.")
                      .arg(path)
                : tr("Another update is being prepared (%1). Give it up first.").arg(path);
    }
    for (const QString &suffix : {QString(), m_from}) {
        for (const QString &path :
             {DataRoot::catalogFolder(suffix), DataRoot::tileCacheFolder(suffix)}) {
            QString answer = folder(path);
            if (!answer.isEmpty())
                return answer;
        }
    }
    return QString();
}

QString SwapCheck::folder(const QString &path) const
{
    if (!FolderOps::exists(path))
        return tr("The folder %1 is missing.").arg(path);
    if (!FolderOps::isFolder(path))
        return tr("%1 is a link or a file; it must be a folder.").arg(path);
    if (FolderOps::isMountPoint(path))
        return tr("Another file system is mounted at %1; it must be a folder of the file system "
                  "around it.")
            .arg(path);
    return QString();
}

QString SwapCheck::voices() const
{
    const QString current = DataRoot::tileCacheFolder() + Voices;
    const QString other = DataRoot::tileCacheFolder(m_from) + Voices;
    if (FolderOps::exists(other))
        return tr("%1 is in the way of the voice data.").arg(other);
    return FolderOps::exists(current) ? folder(current) : QString();
}

QString SwapCheck::permissions() const
{
    QStringList folders {DataRoot::cities()};
    const QString voices = DataRoot::tileCacheFolder() + Voices;
    // A folder that gets another parent is written to, too.
    if (FolderOps::exists(voices))
        folders << voices << DataRoot::tileCacheFolder() << DataRoot::tileCacheFolder(m_from);
    for (const QString &path : std::as_const(folders)) {
        if (!isWritable(path))
            return tr("The folder %1 is write-protected.").arg(path);
    }
    if (QStorageInfo(DataRoot::cities()).bytesAvailable() < JournalSpace)
        return tr("There is no space left at %1.").arg(DataRoot::cities());
    return QString();
}

QString SwapCheck::content() const
{
    const QString catalogs = DataRoot::catalogFolder(m_from);
    const QString contentFile = catalogs + QLatin1Char('/') + CatalogFiles::contentName();
    const QString version = MapCatalogProcessor().readLocalMapVersion(contentFile);
    if (version.isEmpty() || !isWellFormed(contentFile))
        return tr("%1 is missing or damaged.").arg(contentFile);
    const QString catalogFile =
        catalogs + QLatin1String("/catalog-") + version + QLatin1String(".xml");
    if (!listsRegions(catalogFile))
        return tr("%1 is missing, damaged, or lists no regions.").arg(catalogFile);
    return QString();
}
