// SPDX-License-Identifier: MIT
#ifndef VEXA_CITYINDEX_H
#define VEXA_CITYINDEX_H

#include "vexa_export.h"
#include <QObject>
#include <QString>

/**
 * The record of one city data package that the user has on the device.
 *
 * The city index list holds its records by value and hands out their addresses; QML reads them and
 * follows the change signals. A record only keeps texts: it never touches the disk. Unlike other
 * QObjects it can be copied and assigned; then the texts are taken over, and neither the parent nor
 * the object name nor the connections.
 *
 * Records live in the GUI thread. QML can neither make nor change one.
 */
class VEXA_EXPORT CityIndex : public QObject
{
    Q_OBJECT
    /** The identifier of the city package; key of the list. */
    Q_PROPERTY(QString id READ id NOTIFY idChanged)
    /** The name to show. */
    Q_PROPERTY(QString name READ name NOTIFY nameChanged)
    /** The version as the package gives it; never parsed or compared. */
    Q_PROPERTY(QString version READ version NOTIFY versionChanged)

public:
    /** Makes a record of empty texts. */
    explicit CityIndex(QObject *parent = nullptr);
    /** Makes a record without a parent. */
    CityIndex(const QString &id, const QString &name, const QString &version);
    /** Makes a record without a parent that has the texts of another. */
    CityIndex(const CityIndex &other);
    /** Takes over the texts as set() does. */
    CityIndex &operator=(const CityIndex &other);

    /** The identifier of the city package; empty in a record that was made without texts. */
    QString id() const;
    /** The name to show, in whatever language it was added with. */
    QString name() const;
    /** The version text as it was added. */
    QString version() const;

    /**
     * Sets id, name and version in this order, each with its signal. If a handler of one of them
     * calls set() itself, that call is the newer one: it wins, and this one stops.
     */
    void set(const QString &id, const QString &name, const QString &version);
    /** Emits idChanged(), like every setter here also when the value stays the same. */
    void setId(const QString &id);
    /** Emits nameChanged(). Writes no file: CityIndexList::addCityIndex() does. */
    void setName(const QString &name);
    /** Emits versionChanged(). Writes no file: CityIndexList::addCityIndex() does. */
    void setVersion(const QString &version);

    /**
     * Makes the class known to QML as a result; the constructors call it. It gets no name there:
     * QML cannot make records.
     */
    static void registerType();

Q_SIGNALS:
    /** The identifier was set, at each update of the entry too, where it stays the same. */
    void idChanged();
    /** The name was set; comes behind idChanged() when the entry is updated. */
    void nameChanged();
    /** The version was set; the last of the three when the entry is updated. */
    void versionChanged();

private:
    QString m_id;
    QString m_name;
    QString m_version;
    int m_sets = 0; // calls of set() that have begun
};

#endif
