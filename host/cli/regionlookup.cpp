// SPDX-License-Identifier: MIT
#include "host/cli/regionlookup.h"

#include "catalog/mapcatalog.h"
#include "catalog/mapregion.h"
#include "host/cli/console.h"
#include <algorithm>

RegionLookup::RegionLookup(MapCatalog *catalog)
    : m_catalog(catalog)
{
    QQmlListProperty<MapRegion> list = catalog->availableRegions();
    for (int i = 0; i < int(list.count(&list)); ++i)
        m_regions.append(list.at(&list, i));
}

QString RegionLookup::displayName(const MapRegion &region)
{
    QString localized = region.localizedName();
    if (localized.isEmpty())
        return region.name();
    // One region's name is an identifier for the translators; without them it is no name.
    if (!localized.startsWith(QLatin1String("qtn_")))
        return localized;
    const QString translated = qtTrId(localized.toUtf8().constData());
    return translated == localized ? region.name() : translated;
}

QList<MapRegion *> RegionLookup::childrenOf(const MapRegion &region)
{
    QList<MapRegion *> children;
    QQmlListProperty<MapRegion> list = region.children();
    for (int i = 0; i < int(list.count(&list)); ++i)
        children.append(list.at(&list, i));
    return children;
}

bool RegionLookup::isEmpty() const
{
    return m_regions.isEmpty();
}

QList<MapRegion *> RegionLookup::topLevel() const
{
    QList<MapRegion *> regions;
    for (MapRegion *region : m_regions) {
        if (!region->hasParent())
            regions.append(region);
    }
    return sorted(regions);
}

QList<MapRegion *> RegionLookup::sorted(QList<MapRegion *> regions) const
{
    std::stable_sort(regions.begin(), regions.end(), [this](MapRegion *a, MapRegion *b) {
        return m_catalog->localeAwareCompare(displayName(*a), displayName(*b)) < 0;
    });
    return regions;
}

bool RegionLookup::matches(const MapRegion &region, const QString &text)
{
    return region.id().contains(text, Qt::CaseInsensitive)
        || region.name().contains(text, Qt::CaseInsensitive)
        || displayName(region).contains(text, Qt::CaseInsensitive);
}

std::optional<QString> RegionLookup::resolve(const QString &text, Console &console) const
{
    if (m_catalog->region(text))
        return text;
    QStringList ids;
    for (const MapRegion *region : m_regions) {
        const bool meant = region->id().compare(text, Qt::CaseInsensitive) == 0
            || region->name().compare(text, Qt::CaseInsensitive) == 0
            || displayName(*region).compare(text, Qt::CaseInsensitive) == 0;
        if (meant && !ids.contains(region->id()))
            ids.append(region->id());
    }
    if (ids.size() == 1)
        return ids.first();
    if (ids.size() > 1)
        console.error(
            tr("\"%1\" can mean %2: give the id.").arg(text, ids.join(QLatin1String(", "))));
    else if (isEmpty())
        console.error(tr("There is no catalogue yet: run \"vexa-maps refresh\" first."));
    else
        console.error(tr("There is no region \"%1\"; \"vexa-maps list\" shows all.").arg(text));
    return std::nullopt;
}

std::optional<QStringList> RegionLookup::resolveAll(const QStringList &texts,
                                                    Console &console) const
{
    QStringList ids;
    bool allFound = true;
    for (const QString &text : texts) {
        const auto id = resolve(text, console);
        if (id && !ids.contains(*id))
            ids.append(*id);
        allFound = allFound && id;
    }
    if (!allFound)
        return std::nullopt;
    return ids;
}
