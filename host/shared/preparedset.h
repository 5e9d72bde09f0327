// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/**
 * The data set beside the main one in which an update is prepared: what the update does with its
 * folders and with what the engine's queue holds for it. GUI thread, under the DataSetLock, and
 * while no engine runs; errorString() tells why the last call failed.
 */
class PreparedSet
{
    Q_DECLARE_TR_FUNCTIONS(PreparedSet)

public:
    /** Whether anything of it is on the disk. */
    static bool exists();
    /**
     * Whether it has the catalogue of this version and was made by an update that can be gone on
     * with. Which of its regions are whole is not asked.
     */
    static bool isFor(const QString &version);

    /** Ids in the content file of the data set with this suffix, known to its catalogue or not. */
    static QStringList installedIds(const QString &pathSuffix);

    /** Makes one without regions, from the main set's catalogue, names and config.cfg. */
    bool seed();
    /**
     * Removes what does not belong to a set of this version: other catalogues, which the seed
     * brought along, and files that a killed run had not written to their end.
     */
    static void tidy(const QString &version);
    /**
     * Brings along what the user or the map engine has changed in the main set since the seed: the
     * city index and config.cfg. Right before the swap.
     */
    bool carryOver();
    /** Gives all of it up: steps in the engine's queue, the list of its installs, its folders. */
    bool discard();

    QString errorString() const;

private:
    QString m_errorString;
};

/** Copies the bytes of a file, in one step for whoever looks; removes the target if there is none.
 */
bool replaceFileBy(const QString &from, const QString &to);
