// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QStringList>

class Console;
class MapCatalog;
class MapRegion;

/** Finds and orders the catalogue's regions for people. Used while no load is under way. */
class RegionLookup
{
    Q_DECLARE_TR_FUNCTIONS(RegionLookup)

public:
    explicit RegionLookup(MapCatalog *catalog);

    /** The name to show: in the user's language, else the catalogue's. */
    static QString displayName(const MapRegion &region);
    static QList<MapRegion *> childrenOf(const MapRegion &region);

    bool isEmpty() const;
    /** The regions that have no parent, sorted by name in the user's language. */
    QList<MapRegion *> topLevel() const;
    QList<MapRegion *> sorted(QList<MapRegion *> regions) const;
    /** Whether a region's id or one of its names contains the text; case does not matter. */
    static bool matches(const MapRegion &region, const QString &text);

    /**
     * The id that a user means: an id, or a name that only one region has; case does not matter.
     * Nothing if there is none; the reason is written as an error.
     */
    std::optional<QString> resolve(const QString &text, Console &console) const;
    /** All of them without repetitions, or nothing if one is not found. */
    std::optional<QStringList> resolveAll(const QStringList &texts, Console &console) const;

private:
    MapCatalog *const m_catalog; // not owned
    QList<MapRegion *> m_regions; // the catalogue's
};
