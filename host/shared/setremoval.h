// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/**
 * Removes a data set in two steps, so that no half of one is ever taken for a whole: the folders
 * get names that nobody looks for, which takes no time, and are then emptied, which may be cut
 * short and is gone on with at the next start.
 */
class SetRemoval
{
    Q_DECLARE_TR_FUNCTIONS(SetRemoval)

public:
    /** The backup's suffix, or a prepared set's; never empty. */
    explicit SetRemoval(const QString &suffix);

    /** Whether there is anything left of the set. */
    bool isNeeded() const;
    /** What stands against it; empty if nothing does. Changes nothing. */
    QString objection() const;
    /**
     * Takes the set's names away; false: the reason. Voice data goes to the main set if that has
     * none, else aside. May be called again after it was cut short.
     */
    bool takeNames(QString *errorString);
    /** The new name of voice data that the main set had no room for. */
    QStringList setAside() const;

    /** Whether anything that lost its name is still there. */
    static bool hasNameless();
    /** Removes all that lost its name, of whichever set. */
    static bool removeNameless(QString *errorString);

private:
    static QStringList namelessPaths();
    bool rescueVoices(QString *errorString);

    const QStringList m_folders;
    const QString m_voices;
    QStringList m_setAside;
};
