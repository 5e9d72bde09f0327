// SPDX-License-Identifier: MIT
#include "host/shared/setremoval.h"

#include "host/shared/folderops.h"
#include "plugin/dataroot.h"
#include <algorithm>
#include <QDir>

namespace {

const QLatin1String Voices("/voices");
const QLatin1String NamelessMark(".vexa-discarded-");

QString freeName()
{
    const QString start = DataRoot::cities() + QLatin1Char('/') + NamelessMark;
    int number = 1;
    while (FolderOps::exists(start + QString::number(number)))
        ++number;
    return start + QString::number(number);
}

} // namespace

SetRemoval::SetRemoval(const QString &suffix)
    : m_folders {DataRoot::catalogFolder(suffix), DataRoot::tileCacheFolder(suffix)}
    , m_voices(DataRoot::tileCacheFolder(suffix) + Voices)
{ }

bool SetRemoval::isNeeded() const
{
    return std::any_of(m_folders.begin(), m_folders.end(), FolderOps::exists);
}

QString SetRemoval::objection() const
{
    for (const QString &folder : m_folders) {
        if (FolderOps::isFolder(folder) && FolderOps::isMountPoint(folder))
            return tr("Another file system is mounted at %1; it cannot be removed.").arg(folder);
    }
    return QString();
}

bool SetRemoval::takeNames(QString *errorString)
{
    if (!rescueVoices(errorString))
        return false;
    return std::all_of(m_folders.begin(), m_folders.end(), [errorString](const QString &folder) {
        return !FolderOps::exists(folder) || FolderOps::rename(folder, freeName(), errorString);
    });
}

QStringList SetRemoval::setAside() const
{
    return m_setAside;
}

bool SetRemoval::hasNameless()
{
    return !namelessPaths().isEmpty();
}

bool SetRemoval::removeNameless(QString *errorString)
{
    bool all = true;
    const QStringList paths = namelessPaths();
    for (const QString &path : paths)
        all = FolderOps::removeTree(path, errorString) && all;
    return all;
}

QStringList SetRemoval::namelessPaths()
{
    const QDir cities(DataRoot::cities());
    QStringList paths;
    const QStringList names =
        cities.entryList({NamelessMark + QLatin1Char('*')},
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString &name : names)
        paths.append(cities.filePath(name));
    return paths;
}

bool SetRemoval::rescueVoices(QString *errorString)
{
    if (!FolderOps::isFolder(m_voices) || !FolderOps::hasFiles(m_voices))
        return true;
    const QString target = DataRoot::tileCacheFolder() + Voices;
    if (!FolderOps::exists(target) || FolderOps::removeEmptyTree(target))
        return FolderOps::rename(m_voices, target, errorString);
    const QString aside = FolderOps::setAside(m_voices, DataRoot::cities() + Voices);
    if (aside.isEmpty()) {
        *errorString = tr("%1 cannot be moved to a safe place.").arg(m_voices);
        return false;
    }
    m_setAside.append(aside);
    return true;
}
