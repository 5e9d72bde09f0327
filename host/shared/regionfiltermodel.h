// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/regionmodel.h"
#include <memory>
#include <QPointer>
#include <QSortFilterProxyModel>
#include <QString>
#include <QStringList>
#include <QVariantMap>

class CollationKeys;

/**
 * The regions that one view shows: some of a RegionModel's, sorted by name as the user's language
 * sorts, numbers by their value.
 *
 * A region is shown if it passes the filter, the search and, with treeMode, the parent. QML makes
 * one for each view (import VexaHost). GUI thread. The RegionModel is not owned.
 */
class RegionFilterModel : public QSortFilterProxyModel
{
    Q_OBJECT
    Q_PROPERTY(RegionModel *regions READ regions WRITE setRegions NOTIFY regionsChanged)
    /**
     * Words that must all be in the id or the names, in any order and place. Case, diacritics and
     * punctuation do not matter. All regions match an empty search.
     */
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)
    /** With treeMode: the region whose children are shown; empty for the top level. */
    Q_PROPERTY(QString parentId READ parentId WRITE setParentId NOTIFY parentIdChanged)
    /** Whether only the children of parentId are shown, instead of regions of all levels. */
    Q_PROPERTY(bool treeMode READ treeMode WRITE setTreeMode NOTIFY treeModeChanged)
    /**
     * "all", "installed", "downloadable" (has an address), "pending" (in the queue, in its order),
     * "failed" (also cancelled), or "transfers": the pending ones in order, then the failed ones.
     * Any other text is the same as "all".
     */
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    /** The locale whose rules sort, as "de_DE"; empty, the default, for the user's. */
    Q_PROPERTY(QString locale READ locale WRITE setLocale NOTIFY localeChanged)
    /** How many regions are shown. The signal comes once for all changes of an event. */
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    explicit RegionFilterModel(QObject *parent = nullptr);
    ~RegionFilterModel() override;

    RegionModel *regions() const;
    void setRegions(RegionModel *regions);
    /** The same as setRegions(); any other model is refused. */
    void setSourceModel(QAbstractItemModel *model) override;
    QString search() const;
    void setSearch(const QString &search);
    QString parentId() const;
    void setParentId(const QString &id);
    bool treeMode() const;
    void setTreeMode(bool treeMode);
    QString filter() const;
    void setFilter(const QString &filter);
    QString locale() const;
    void setLocale(const QString &name);
    int count() const;

    /** All roles of a row by their names; empty if there is no such row. */
    Q_INVOKABLE QVariantMap get(int row) const;
    /** The row of the region, or -1 if it is not shown. */
    Q_INVOKABLE int rowOf(const QString &id) const;

Q_SIGNALS:
    void regionsChanged();
    void searchChanged();
    void parentIdChanged();
    void treeModeChanged();
    void filterChanged();
    void localeChanged();
    void countChanged();

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;

private:
    enum class Filter { All, Installed, Downloadable, Pending, Failed, Transfers };

    static Filter filterNamed(const QString &name);
    bool passesFilter(const RegionRow &row) const;
    int compareNames(const RegionRow &a, const RegionRow &b) const;
    void noteCount();

    QPointer<RegionModel> m_regions;
    QString m_search;
    QStringList m_words;
    QString m_parentId;
    bool m_treeMode = false;
    QString m_filterName;
    Filter m_filter = Filter::All;
    QString m_locale;
    std::shared_ptr<CollationKeys> m_keys; // of another locale than the user's; else null
    int m_toldCount = 0;
    bool m_countQueued = false;
};
