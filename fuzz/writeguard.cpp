// SPDX-License-Identifier: MIT
#include "fuzz/writeguard.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

std::string guarded; // empty: no guard
bool refused = false;

bool isInside(const std::string &path)
{
    return path == guarded || path.compare(0, guarded.size() + 1, guarded + '/') == 0;
}

// followed: whether the call goes through a link at the path itself.
bool mayChange(const char *path, bool followed)
{
    if (guarded.empty() || !path)
        return true;
    const int before = errno;
    std::error_code error;
    const fs::path whole = fs::absolute(path, error);
    // Of what does not exist yet, the part that does decides; ".." behind it counts as text.
    const fs::path real =
        followed || !whole.has_filename() || whole.filename() == ".." || whole.filename() == "."
        ? fs::weakly_canonical(whole, error)
        : fs::weakly_canonical(whole.parent_path(), error) / whole.filename();
    const bool inside = !error && isInside(real.native());
    errno = inside ? before : EACCES;
    refused = refused || !inside;
    return inside;
}

constexpr int ChangingFlags = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC;

int guardedOpen(const char *path, int flags, mode_t mode)
{
    if ((flags & ChangingFlags) != 0 && !mayChange(path, (flags & O_NOFOLLOW) == 0))
        return -1;
    return int(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? mode_t(va_arg(arguments, unsigned)) : 0;
}

} // namespace

WriteGuard::WriteGuard(const QByteArray &folder)
{
    refused = false;
    guarded = folder.toStdString();
}

WriteGuard::~WriteGuard()
{
    guarded.clear();
}

bool WriteGuard::hasRefused() const
{
    return refused;
}

// In place of the C library's, in the whole program. Straight to the kernel: they are called before
// anything could look up the real ones.
extern "C" {

int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return guardedOpen(path, flags, mode);
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return guardedOpen(path, flags, mode);
}

int mkdir(const char *path, mode_t mode) noexcept
{
    return mayChange(path, false) ? int(syscall(SYS_mkdirat, AT_FDCWD, path, mode)) : -1;
}

int unlink(const char *path) noexcept
{
    return mayChange(path, false) ? int(syscall(SYS_unlinkat, AT_FDCWD, path, 0)) : -1;
}

int rmdir(const char *path) noexcept
{
    return mayChange(path, false) ? int(syscall(SYS_unlinkat, AT_FDCWD, path, AT_REMOVEDIR)) : -1;
}

int remove(const char *path) noexcept
{
    const int result = unlink(path);
    return result == 0 || errno != EISDIR ? result : rmdir(path);
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
              unsigned flags) noexcept
{
    return mayChange(from, false) && mayChange(to, false)
        ? int(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags))
        : -1;
}

int rename(const char *from, const char *to) noexcept
{
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int link(const char *from, const char *to) noexcept
{
    return mayChange(to, false) ? int(syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0)) : -1;
}

} // extern "C"
