// SPDX-License-Identifier: MIT
#include "host/shared/datasetlock.h"

#include "plugin/dataroot.h"
#include <QDir>
#include <QFileInfo>

bool DataSetLock::tryLock()
{
    m_root = take(rootLockPath());
    m_home = m_root ? take(homeLockPath()) : nullptr;
    if (!m_home)
        m_root.reset();
    return m_root != nullptr;
}

QString DataSetLock::errorString() const
{
    return m_errorString;
}

bool DataSetLock::isHeldByOther() const
{
    return m_heldByOther;
}

qint64 DataSetLock::holder()
{
    for (const QString &path : {rootLockPath(), homeLockPath()}) {
        QLockFile lock(path);
        lock.setStaleLockTime(0);
        if (!QFileInfo::exists(path) || lock.tryLock(0))
            continue; // Taken for a moment only: it was free, or left by a killed program.
        qint64 pid = 0;
        QString host;
        QString program;
        if (lock.error() == QLockFile::LockFailedError && lock.getLockInfo(&pid, &host, &program))
            return pid;
    }
    return 0;
}

QString DataSetLock::rootLockPath()
{
    return DataRoot::myDocs() + QLatin1String("/.vexa-maps.lock");
}

QString DataSetLock::homeLockPath()
{
    return QDir::homePath() + QLatin1String("/MyDocs/.vexa/engine.lock");
}

std::unique_ptr<QLockFile> DataSetLock::take(const QString &path)
{
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder)) {
        m_errorString = tr("The folder %1 cannot be made.").arg(folder);
        return nullptr;
    }
    auto lock = std::make_unique<QLockFile>(path);
    lock->setStaleLockTime(
        0); // A long install is not a dead one; a dead process is noticed anyway.
    if (lock->tryLock(0))
        return lock;
    m_heldByOther = lock->error() == QLockFile::LockFailedError;
    if (!m_heldByOther) {
        m_errorString = tr("The lock file %1 cannot be written.").arg(path);
        return nullptr;
    }
    qint64 pid = 0;
    QString host;
    QString program;
    lock->getLockInfo(&pid, &host, &program);
    m_errorString =
        tr("Another program (%1, process %2) is at work on this map data. Try again when "
           "it is done.")
            .arg(program)
            .arg(pid);
    return nullptr;
}
