// SPDX-License-Identifier: MIT
#include "archive/temporaryfile_p.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool renameToFreePath(const char *from, const char *to)
{
    if (::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;

    // Some file systems cannot do both in one step. Nobody else writes here, so two will do.
    struct stat status = {};
    return ::lstat(to, &status) != 0 && ::rename(from, to) == 0;
}

} // namespace

TemporaryFile::TemporaryFile(const QString &folder)
    : m_path(folder.toUtf8() + "/vexa-maps.XXXXXX")
{ }

TemporaryFile::~TemporaryFile()
{
    m_file.close();
    // A leftover is harmless: it has no final name, and the folder is emptied before the next use.
    if (m_exists)
        ::unlink(m_path.constData());
}

bool TemporaryFile::open()
{
    const int descriptor = ::mkostemp(m_path.data(), O_CLOEXEC);
    if (descriptor < 0)
        return false;
    m_exists = true;
    return m_file.open(descriptor, QIODevice::ReadWrite | QIODevice::Unbuffered,
                       QFileDevice::AutoCloseHandle);
}

QIODevice &TemporaryFile::device()
{
    return m_file;
}

bool TemporaryFile::close()
{
    m_file.close();
    return m_file.error() == QFileDevice::NoError;
}

bool TemporaryFile::renameTo(const QString &path)
{
    if (!renameToFreePath(m_path.constData(), path.toUtf8().constData()))
        return false;
    m_exists = false;
    return true;
}

QString TemporaryFile::name() const
{
    return QString::fromUtf8(m_path);
}
