// SPDX-License-Identifier: MIT
#include "catalog/mapregion.h"

#include <algorithm>
#include <QCoreApplication>
#include <qqml.h>

namespace {

QList<MapRegion *> *listOf(const QQmlListProperty<MapRegion> *property)
{
    return static_cast<QList<MapRegion *> *>(property->data);
}

QQmlListProperty<MapRegion> viewOf(QObject *owner, QList<MapRegion *> *list)
{
    // No clear, replace or removeLast: Qt 6 would make some up from the others.
    return QQmlListProperty<MapRegion>(owner, list, &MapRegion::append, &MapRegion::count,
                                       &MapRegion::at, nullptr, nullptr, nullptr);
}

} // namespace

MapRegion::MapRegion(const QString &id)
    : m_id(id)
{
    registerType();
    QCoreApplication::processEvents();
}

QString MapRegion::id() const
{
    return m_id;
}

QString MapRegion::name() const
{
    return m_name;
}

QStringList MapRegion::fileList() const
{
    return m_fileList;
}

QString MapRegion::localizedName() const
{
    return m_localizedName;
}

bool MapRegion::installed() const
{
    return m_installed;
}

QQmlListProperty<MapRegion> MapRegion::children() const
{
    // Made when it is asked for: most regions have no children, and it takes more room than all
    // else here.
    auto *owner = const_cast<MapRegion *>(this);
    return viewOf(owner, &owner->m_children);
}

bool MapRegion::hasParent() const
{
    return m_hasParent;
}

qint64 MapRegion::downloadSize() const
{
    return m_downloadSize;
}

QString MapRegion::downloadUrl() const
{
    return QString::fromUtf8(m_downloadUrl);
}

qint64 MapRegion::installationSize() const
{
    return m_installationSize;
}

void MapRegion::setName(const QString &name)
{
    m_name = name;
    Q_EMIT nameChanged();
}

void MapRegion::setLocalizedName(const QString &localizedName)
{
    m_localizedName = localizedName;
    Q_EMIT localizedNameChanged();
}

void MapRegion::setInstalled(bool installed)
{
    m_installed = installed;
    Q_EMIT installedChanged();
}

void MapRegion::setFileList(const QStringList &fileList)
{
    // Anywhere in the entry and in small letters only: lists also name what the engine keeps
    // beside a tile, "x.cdt.idx".
    const auto isOther = [](const QString &entry) {
        return !entry.contains(QLatin1String(".cdt"));
    };
    m_fileList = fileList; // shared as long as nothing has to go
    if (std::any_of(fileList.cbegin(), fileList.cend(), isOther))
        m_fileList.erase(std::remove_if(m_fileList.begin(), m_fileList.end(), isOther),
                         m_fileList.end());
    Q_EMIT fileListChanged();
}

void MapRegion::addChild(MapRegion *child)
{
    m_children.append(child);
    Q_EMIT childrenChanged();
}

void MapRegion::setSize(qint64 downloadSize, qint64 installationSize)
{
    m_downloadSize = downloadSize;
    m_installationSize = installationSize;
}

void MapRegion::setHasParent(bool hasParent)
{
    m_hasParent = hasParent;
}

void MapRegion::setDownloadUrl(const QString &downloadUrl)
{
    m_downloadUrl = downloadUrl.toUtf8();
    m_downloadUrl.squeeze(); // It has room for three bytes a letter.
}

QQmlListProperty<MapRegion> MapRegion::createDeclarativeList(QObject *owner,
                                                             QList<MapRegion *> *list)
{
    QCoreApplication::processEvents();
    return viewOf(owner, list);
}

void MapRegion::registerType()
{
    // Not under the name "Vexa": a type registered there before the plugin loads makes the import
    // of the plugin fail.
    static const int once = qmlRegisterAnonymousType<MapRegion>("VexaTypes", 1);
    Q_UNUSED(once);
}

void MapRegion::append(QQmlListProperty<MapRegion> *property, MapRegion *region)
{
    // A null function instead of this one would be an error in the script.
    Q_UNUSED(property);
    Q_UNUSED(region);
}

VexaCompat::ListIndex MapRegion::count(QQmlListProperty<MapRegion> *property)
{
    return VexaCompat::ListIndex(listOf(property)->size());
}

MapRegion *MapRegion::at(QQmlListProperty<MapRegion> *property, VexaCompat::ListIndex index)
{
    const QList<MapRegion *> *list = listOf(property);
    return index >= 0 && index < list->size() ? list->at(index) : nullptr;
}
