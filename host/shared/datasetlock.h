// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QCoreApplication>
#include <QLockFile>
#include <QString>

/**
 * Keeps a second program from running the engine on the same data: one lock for the data root,
 * one for the home folder with the engine's queue. A lock that a killed program left is taken over.
 *
 * Whoever starts a Worker or changes the catalogue holds one; readers need none.
 */
class DataSetLock
{
    Q_DECLARE_TR_FUNCTIONS(DataSetLock)

public:
    DataSetLock() = default;
    Q_DISABLE_COPY(DataSetLock)

    /** Returns whether both locks are ours now; errorString() tells why not. Does not wait. */
    bool tryLock();
    QString errorString() const;
    /** Whether it failed because another program holds one. */
    bool isHeldByOther() const;

    /** Process id of the program that holds one of the locks now; 0 if none does. */
    static qint64 holder();

private:
    static QString rootLockPath();
    static QString homeLockPath();
    std::unique_ptr<QLockFile> take(const QString &path);

    std::unique_ptr<QLockFile> m_root;
    std::unique_ptr<QLockFile> m_home;
    QString m_errorString;
    bool m_heldByOther = false;
};
