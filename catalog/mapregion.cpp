// SPDX-License-Identifier: MIT
#include "catalog/mapregion.h"

#include <QCoreApplication>
#include <qqml.h>

namespace {

QList<MapRegion *> *listOf(const QQmlListProperty<MapRegion> *property)
{
    return static_cast<QList<MapRegion *> *>(property->data);
}

} // namespace

MapRegion::MapRegion(const QString &id)
    : m_id(id)
{
    registerType();
    m_childrenProperty = createDeclarativeList(this, &m_children);
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
    return m_childrenProperty;
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
    return m_downloadUrl;
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
    QStringList tiles;
    for (const QString &entry : fileList) {
        if (entry.contains(QLatin1String(".cdt")))
            tiles.append(entry);
    }
    m_fileList = tiles;
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
    m_downloadUrl = downloadUrl;
}

QQmlListProperty<MapRegion> MapRegion::createDeclarativeList(QObject *owner,
                                                             QList<MapRegion *> *list)
{
    QCoreApplication::processEvents();
    // No clear, replace or removeLast: Qt 6 would make some up from the others.
    return QQmlListProperty<MapRegion>(owner, list, &MapRegion::append, &MapRegion::count,
                                       &MapRegion::at, nullptr, nullptr, nullptr);
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
