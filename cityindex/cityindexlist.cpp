// SPDX-License-Identifier: MIT
#include "cityindex/cityindexlist.h"

#include "cityindex/cityindexlistprocessor.h"
#include "plugin/dataroot.h"
#include <QPointer>
#include <QQmlEngine>

namespace {

QString filePath(const QDir &folder)
{
    return folder.filePath(QStringLiteral("cityindex.xml"));
}

} // namespace

CityIndexList::CityIndexList(const QString &pathSuffix, QObject *parent)
    : QObject(parent)
{
    CityIndex::registerType();
    setPathSuffix(pathSuffix);
    initialize();
}

int CityIndexList::count() const
{
    return int(m_entries.size());
}

CityIndex *CityIndexList::cityIndex(const QString &id)
{
    const auto entry = m_entries.find(id);
    if (entry == m_entries.end())
        return nullptr;
    // An object without a parent that a script gets as a result is the script's to delete.
    QQmlEngine::setObjectOwnership(&*entry, QQmlEngine::CppOwnership);
    return &*entry;
}

void CityIndexList::addCityIndex(const QString &id, const QString &name, const QString &version)
{
    const QPointer<CityIndexList> self(this);
    const QString path = filePath(m_folder); // a handler may go over to another folder
    ++m_additions;
    const auto entry = m_entries.find(id);
    if (entry != m_entries.end()) {
        entry->set(id, name, version);
    } else {
        m_entries.insert(id, CityIndex(id, name, version));
        Q_EMIT countChanged();
    }
    if (!self)
        return;
    CityIndexListProcessor().updateCityIndexListContent(path, m_entries);
    if (--m_additions == 0)
        carryOutWaiting();
}

void CityIndexList::resetInstanceWithPathSuffix(const QString &pathSuffix)
{
    setPathSuffix(pathSuffix);
    initialize();
}

void CityIndexList::setPathSuffix(const QString &pathSuffix)
{
    m_pathSuffix = pathSuffix;
}

void CityIndexList::initialize()
{
    if (m_additions > 0) {
        m_waiting = Waiting::Initialize;
        return;
    }
    initFolderStructure();
    loadList();
}

void CityIndexList::initFolderStructure()
{
    m_folder = QDir(DataRoot::catalogFolder(m_pathSuffix));
    m_folderPath = m_folder.path();
    // A failure shows later, as a file that is not there.
    if (!m_folder.exists())
        QDir().mkpath(m_folderPath);
}

void CityIndexList::loadList()
{
    if (m_additions > 0) {
        m_waiting = qMax(m_waiting, Waiting::Load);
        return;
    }
    // Swapped, so that whoever hears that an old entry is gone finds the new ones in place.
    QMap<QString, CityIndex> entries;
    CityIndexListProcessor().readCityIndexList(filePath(m_folder), entries);
    m_entries.swap(entries);
    Q_EMIT countChanged();
}

QMap<QString, CityIndex> &CityIndexList::getCityIndexList()
{
    return m_entries;
}

void CityIndexList::carryOutWaiting()
{
    const Waiting waiting = m_waiting;
    m_waiting = Waiting::Nothing;
    if (waiting == Waiting::Initialize)
        initialize();
    else if (waiting == Waiting::Load)
        loadList();
}
