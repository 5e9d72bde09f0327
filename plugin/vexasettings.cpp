// SPDX-License-Identifier: MIT
#include "plugin/vexasettings.h"

#include "plugin/qtcompat.h"
#include "plugin/settingsfile_p.h"
#include "plugin/vexaconstants.h"
#include <QCoreApplication>
#include <QFile>
#include <QMutex>
#include <sys/file.h>
#include <sys/stat.h>

namespace {

// Two, so that instance() can be called by whoever holds a Locker.
QMutex useMutex;
QMutex pointerMutex; // taken after useMutex

// What tells two states of the file apart: QSettings makes a new one with each write.
struct FileState
{
    ino_t inode = 0;
    qint64 size = 0;
    timespec written = {};

    bool operator==(const FileState &other) const
    {
        return inode == other.inode && size == other.size && written.tv_sec == other.written.tv_sec
            && written.tv_nsec == other.written.tv_nsec;
    }
};

FileState leftState; // under useMutex, as the last Locker left it
quint64 fileGeneration = 1; // under useMutex

FileState stateOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return FileState();
    return {status.st_ino, status.st_size, status.st_mtim};
}

// A program that is killed just when it has made its lock file leaves an empty one. It names no
// owner, so Qt would wait for half a minute before it writes. A living owner holds a lock on it.
void removeAbandonedLock(const QString &settingsFile)
{
    QFile file(settingsFile + QLatin1String(".lock"));
    if (!file.exists() || file.size() > 0 || !file.open(QIODevice::ReadWrite))
        return;
    if (::flock(file.handle(), LOCK_EX | LOCK_NB) == 0 && file.size() == 0)
        file.remove();
}

} // namespace

QSettings *VexaSettings::settings = nullptr;

QSettings *VexaSettings::instance()
{
    const QMutexLocker lock(&pointerMutex);
    if (!settings) {
        // Where the file is, QSettings alone knows; it reads no value before it is asked for one.
        const QString file = QSettings(VEXA_SETTINGS_FILE_NAME, VEXA_SETTINGS_FILE_NAME).fileName();
        SettingsFile::setDamagedAside(file);
        settings = new QSettings(VEXA_SETTINGS_FILE_NAME, VEXA_SETTINGS_FILE_NAME);
        VexaCompat::useUtf8(*settings);
        // QSettings parses a section when one of its keys is asked for, and "[requests\1]", which
        // somebody may have written by hand, only when all are: here, not at the next start.
        settings->childGroups();
        removeAbandonedLock(settings->fileName());
        // QSettings posts itself an event to write later. Without a thread it never gets one, so
        // no event loop touches the object while another thread has it.
        settings->moveToThread(nullptr);
    }
    return settings;
}

void VexaSettings::destroy()
{
    const QMutexLocker use(&useMutex);
    const QMutexLocker lock(&pointerMutex);
    delete settings;
    settings = nullptr;
    ++fileGeneration; // the next object may have another file
}

VexaSettings::Locker::Locker()
{
    useMutex.lock();
    m_settings = instance();
    if (!(stateOf(m_settings->fileName()) == leftState))
        ++fileGeneration;
}

VexaSettings::Locker::~Locker()
{
    // The events that nobody will ever deliver would pile up, one a change.
    QCoreApplication::removePostedEvents(m_settings);
    leftState = stateOf(m_settings->fileName());
    useMutex.unlock();
}

quint64 VexaSettings::Locker::generation() const
{
    return fileGeneration;
}
