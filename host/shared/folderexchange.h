// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/swapjournal.h"
#include <QCoreApplication>
#include <QString>
#include <QStringList>

/**
 * One exchange of the main data set with another, in whatever state it is: finds the folders and
 * brings it to its end, or back to its beginning.
 *
 * A folder is known by its identity; where the identities fit nothing (a file system that numbers
 * its folders anew, a restored backup), by its name, by which other names there are, and by what it
 * holds. For a set that arrives from "_new" and makes the old one leave to "_":
 *
 *     Tessarin  Tessarin_new  Tessarin_      moved
 *     old       new           -              nothing
 *     (empty)   new           old            the old one; a program may have made an empty folder
 *     new       -             old            both
 *     old/Tessarin_new        -              the new one, into the old one, which had not moved
 *
 * Folders in the way that hold no file are removed; what holds files is kept under another name.
 * Every step looks at the disk anew, so both ways may be cut short anywhere and gone again.
 */
class FolderExchange
{
    Q_DECLARE_TR_FUNCTIONS(FolderExchange)

public:
    explicit FolderExchange(const SwapNote &note);

    /** A note of the folders as they are before the exchange. */
    static SwapNote noteOf(SwapNote::Operation operation, const QString &suffix);
    /** The suffix from which the other set comes, and the one that the main set gets. */
    static QString arrivingSuffix(const SwapNote &note);
    static QString leavingSuffix(const SwapNote &note);

    /** Whether the arriving set is the main one, and the other where it shall be. */
    bool isFinished() const;

    /** False: the reason. Some steps may have been done. */
    bool finish(QString *errorString);
    bool takeBack(QString *errorString);

    /** The new names of what was in the way. */
    QStringList setAside() const;

private:
    struct Chain // the names that a folder of either set can have
    {
        QString main;
        QString arrivesFrom;
        QString leavesTo;
        QString nested; // where mv puts it if a folder has the main name
        FolderOps::Identity leaving;
        FolderOps::Identity arriving;
        QString version; // of the arriving catalogue folder; null for tiles
    };
    struct Place // where the folders are now; empty: nowhere
    {
        QString leaving;
        QString arriving;
    };

    static Place locate(const Chain &chain);
    static Place locateByName(const Chain &chain);
    bool finish(const Chain &chain, QString *errorString);
    bool takeBack(const Chain &chain, QString *errorString);
    bool takeOut(const Chain &chain, QString *errorString);
    bool moveVoices(const QString &from, const QString &to, QString *errorString);
    bool voicesAreIn(const QString &folder, const QString &other) const;
    bool clearTheWay(const QString &path, const QString &asideName, QString *errorString);

    Chain m_catalogs;
    Chain m_tiles;
    FolderOps::Identity m_voices;
    QStringList m_setAside;
};
