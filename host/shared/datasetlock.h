// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>

/**
 * Keeps a second program from running the engine on the same data: one lock for the data root,
 * one for the home folder with the engine's queue.
 *
 * The kernel holds the locks (open file description locks on two files that stay), so a killed
 * program leaves none behind, at whatever moment it died. The engine's shell commands inherit
 * them on purpose: a copy that outlives its killed program still writes, and the next program
 * waits for its end.
 *
 * Whoever starts a Worker or changes the catalogue holds one; readers need none.
 */
class DataSetLock
{
    Q_DECLARE_TR_FUNCTIONS(DataSetLock)

public:
    DataSetLock() = default;
    ~DataSetLock();
    Q_DISABLE_COPY(DataSetLock)

    /**
     * Returns whether both locks are ours now; errorString() tells why not. Does not wait for
     * another program, only, for at most a minute, for what a killed one left running.
     */
    bool tryLock();
    QString errorString() const;
    /** Whether it failed because another program holds one. */
    bool isHeldByOther() const;

    /** Process id of the program that holds one of the locks now; 0 if none does. */
    static qint64 holder();

    /** The lock file of the data root. */
    static QString rootLockPath();
    /** The lock file of the home folder. */
    static QString homeLockPath();

private:
    int take(const QString &path);

    int m_root = -1; // descriptors of the lock files; the locks last as long as they are open
    int m_home = -1;
    QString m_errorString;
    bool m_heldByOther = false;
};
