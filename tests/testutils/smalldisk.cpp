// SPDX-License-Identifier: MIT
#include "testutils/smalldisk.h"

#include "testutils/archivebuilder.h"
#include <cerrno>
#include <cstring>
#include <QFile>
#include <sched.h>
#include <sys/mount.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace {

struct statvfs statusOf(const QString &path)
{
    struct statvfs status = {};
    if (statvfs(QFile::encodeName(path).constData(), &status) != 0)
        qFatal("no file system at %s", qPrintable(path));
    return status;
}

QByteArray sizeOption(qint64 bytes)
{
    return "mode=700,size=" + QByteArray::number(bytes);
}

void mapToRoot(const char *file, unsigned id)
{
    TestFile::write(QLatin1String("/proc/self/") + QLatin1String(file),
                    "0 " + QByteArray::number(id) + " 1");
}

} // namespace

void SmallDisk::allow()
{
    const unsigned user = geteuid();
    const unsigned group = getegid();
    if (user != 0 || unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            qFatal("no mounts of our own: %s", std::strerror(errno));
        TestFile::write(QStringLiteral("/proc/self/setgroups"), "deny");
        mapToRoot("uid_map", user);
        mapToRoot("gid_map", group);
    }
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        qFatal("no mounts of our own: %s", std::strerror(errno));
}

SmallDisk::SmallDisk(qint64 bytes, const QString &folder)
    : m_path(folder.isEmpty() ? m_dir.path() : folder)
    , m_bytes(bytes)
{
    const QByteArray place = QFile::encodeName(path());
    if (mount("vexa-test", place.constData(), "tmpfs", MS_NOSUID | MS_NODEV,
              sizeOption(bytes).constData())
        != 0)
        qFatal("cannot mount a small disk: %s", std::strerror(errno));
}

SmallDisk::~SmallDisk()
{
    umount2(QFile::encodeName(path()).constData(), MNT_DETACH);
}

qint64 SmallDisk::freeBytes() const
{
    const struct statvfs status = statusOf(path());
    return qint64(status.f_bavail) * qint64(status.f_frsize);
}

qint64 SmallDisk::usedBytes() const
{
    const struct statvfs status = statusOf(path());
    return qint64(status.f_blocks - status.f_bfree) * qint64(status.f_frsize);
}

bool SmallDisk::resize(qint64 bytes)
{
    m_bytes = bytes;
    return remount();
}

bool SmallDisk::setFree(qint64 bytes)
{
    // To the kernel no size at all means no limit, and that it never takes back.
    return resize(qMax(usedBytes() + bytes, qint64(sysconf(_SC_PAGESIZE))));
}

bool SmallDisk::setReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    return remount();
}

bool SmallDisk::remount()
{
    unsigned long flags = MS_REMOUNT | MS_NOSUID | MS_NODEV;
    if (m_readOnly)
        flags |= MS_RDONLY;
    return mount(nullptr, QFile::encodeName(path()).constData(), nullptr, flags,
                 sizeOption(m_bytes).constData())
        == 0;
}
