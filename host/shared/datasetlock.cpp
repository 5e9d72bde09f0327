// SPDX-License-Identifier: MIT
#include "host/shared/datasetlock.h"

#include "plugin/dataroot.h"
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr auto LeftoverPatience = 60s; // for a copy that outlives its program
constexpr auto RetryInterval = 20ms;

struct flock wholeFile()
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

bool lock(int descriptor)
{
    struct flock request = wholeFile();
    return fcntl(descriptor, F_OFD_SETLK, &request) == 0;
}

bool isLocked(int descriptor)
{
    struct flock request = wholeFile();
    return fcntl(descriptor, F_OFD_GETLK, &request) == 0 && request.l_type != F_UNLCK;
}

qint64 pidIn(int descriptor)
{
    char text[32] = {};
    const ssize_t size = pread(descriptor, text, sizeof text - 1, 0);
    return size > 0 ? QByteArray(text).trimmed().toLongLong() : 0;
}

void writePid(int descriptor)
{
    const QByteArray text = QByteArray::number(qint64(getpid())) + '\n';
    // Only to tell a user who holds the lock; the lock itself does not need it.
    if (ftruncate(descriptor, 0) != 0 || pwrite(descriptor, text.constData(), text.size(), 0) < 0)
        return;
}

// A program whose id is not known (yet) counts as alive.
bool isDead(qint64 pid)
{
    return pid > 0 && kill(pid_t(pid), 0) != 0 && errno == ESRCH;
}

} // namespace

DataSetLock::~DataSetLock()
{
    for (const int descriptor : {m_home, m_root}) {
        if (descriptor >= 0)
            close(descriptor);
    }
}

bool DataSetLock::tryLock()
{
    m_root = take(rootLockPath());
    m_home = m_root >= 0 ? take(homeLockPath()) : -1;
    if (m_home >= 0)
        return true;
    if (m_root >= 0)
        close(m_root);
    m_root = -1;
    return false;
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
        const int descriptor = open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
        if (descriptor < 0)
            continue;
        const qint64 pid = isLocked(descriptor) ? pidIn(descriptor) : 0;
        close(descriptor);
        if (pid > 0)
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

int DataSetLock::take(const QString &path)
{
    const QString folder = QFileInfo(path).path();
    if (!QDir().mkpath(folder)) {
        m_errorString = tr("The folder %1 cannot be made.").arg(folder);
        return -1;
    }
    // Without O_CLOEXEC: the class comment tells why the engine's commands shall inherit it.
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT, 0644);
    if (descriptor < 0) {
        m_errorString = tr("The lock file %1 cannot be written.").arg(path);
        return -1;
    }
    QElapsedTimer clock;
    clock.start();
    bool ours = lock(descriptor);
    while (!ours && isDead(pidIn(descriptor))
           && !clock.hasExpired(std::chrono::milliseconds(LeftoverPatience).count())) {
        QThread::msleep(std::chrono::milliseconds(RetryInterval).count());
        ours = lock(descriptor);
    }
    if (ours) {
        writePid(descriptor);
        return descriptor;
    }
    m_heldByOther = true;
    m_errorString =
        tr("Another program (process %1) is at work on this map data. Try again when it is done.")
            .arg(pidIn(descriptor));
    close(descriptor);
    return -1;
}
