// SPDX-License-Identifier: MIT
#ifndef VEXA_CITYINDEXLIST_H
#define VEXA_CITYINDEXLIST_H

#include "cityindex/cityindex.h"
#include "vexa_export.h"
#include <QDir>
#include <QMap>
#include <QObject>
#include <QString>

/**
 * The city data packages that the user has on the device, as QML sees them: how many there are, and
 * each by its identifier.
 *
 * The host makes one for the application. QML adds or updates an entry after a city package has
 * been installed; entries are never removed. The list is read from "cityindex.xml" in the
 * catalogue folder when it is made, and written there after each addition. No failure is reported
 * or logged: an unreadable file is an empty list, and if the file cannot be written the old one
 * stays, while the list in memory has the new entry.
 *
 * Lives in the GUI thread. Handlers of its signals and of the entries' may call back into the list,
 * and may delete it. What they load anew during an addition waits until the addition is in the
 * file, else it would be lost.
 */
class VEXA_EXPORT CityIndexList : public QObject
{
    Q_OBJECT
    /** The number of entries. */
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    /** Makes the folder if it is missing and loads the list; writes no file. */
    explicit CityIndexList(const QString &pathSuffix = QString(), QObject *parent = nullptr);

    /** The number of entries; 0 also when the file is missing or cannot be read. */
    int count() const;

    /**
     * The entry with this id, or null. It stays the list's, not the script's, and its address stays
     * the same when entries are added or updated. It is gone with the next load.
     */
    Q_INVOKABLE CityIndex *cityIndex(const QString &id);

    /**
     * Adds an entry and emits countChanged(), or gives the entry with this id its new name and
     * version, with the entry's three signals. Then writes the whole file.
     */
    Q_INVOKABLE void addCityIndex(const QString &id, const QString &name, const QString &version);

    /** Goes over to the folder with this suffix: setPathSuffix() and initialize(). */
    Q_INVOKABLE void resetInstanceWithPathSuffix(const QString &pathSuffix = QString());

    /**
     * Stores what is put behind the path of the folder, without a separator; the next initialize()
     * uses it.
     */
    Q_INVOKABLE void setPathSuffix(const QString &pathSuffix = QString());

    /** Goes over to the folder of the path suffix and loads its list. */
    void initialize();

    /** Goes over to the folder of the path suffix and makes it if it is missing; loads nothing. */
    void initFolderStructure();

    /** Replaces all entries by those of the file and emits countChanged(), always. */
    void loadList();

    /**
     * The entries themselves, ascending in the order of QString's operator<. A copy of the map
     * shares the entries until the list changes, and takes their addresses away from it then: who
     * needs one beyond that must detach() it at once.
     */
    QMap<QString, CityIndex> &getCityIndexList();

Q_SIGNALS:
    /** An entry was added, or the list was loaded (then also if the number is the same). */
    void countChanged();

private:
    // What handlers have asked for while entries were added.
    enum class Waiting { Nothing, Load, Initialize };

    void carryOutWaiting();

    QString m_pathSuffix;
    QDir m_folder;
    QString m_folderPath;
    QMap<QString, CityIndex> m_entries;
    int m_additions = 0; // calls of addCityIndex() that are under way
    Waiting m_waiting = Waiting::Nothing;
};

#endif
