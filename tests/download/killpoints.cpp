// SPDX-License-Identifier: MIT
/*
 * Names the calls of a program that change files (opening with O_CREAT or O_TRUNC, write, rename,
 * unlink, mkdir, ftruncate and so on) and kills it with SIGKILL just ahead of a chosen one. The
 * commands that the program starts with system() are watched with it: a kill in one of them takes
 * both, as a power cut does. Three points belong to each command itself: ahead of it ("before"),
 * left alone (the program is killed, the command begins a while later) and behind it.
 *
 * A point's name is the call and the last part of the path, as "rename vexa.conf"; parts that are
 * there by chance are left out of it.
 *
 * A program links this library ahead of all others; its commands get it by LD_PRELOAD. No Qt and no
 * sanitizer in here, because it is loaded into programs that have neither. Orders come from the
 * environment:
 *
 *   VEXA_KILL_STATE  a file of at least 8 bytes, zero at the beginning: how often the name came
 *   VEXA_KILL_NAME   the name of the point
 *   VEXA_KILL_AT     1 for the first point of that name, 0 for none
 *   VEXA_KILL_ERROR  optional, an errno: the call fails with it, and nothing is killed
 *   VEXA_KILL_FROM   set: so does every such call that follows, as on a disk that stays full
 *   VEXA_KILL_LOG    optional, gets a line with the name of each point
 *   VEXA_KILL_SYNCS  if set, calls that wait for the disk are points too (fsync, fdatasync,
 * syncfs), and a rename or link tells whether its thread waited behind its last write
 *   VEXA_KILL_MAIN   set in commands: the program to take along
 */
#include <atomic>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#define EXPORTED extern "C" __attribute__((visibility("default")))

namespace {

std::atomic<long> *count = nullptr;
long killAt = 0;
long mainProgram = 0;
const char *killName = "";
int logFile = -1;
int errorNumber = 0;
bool lasting = false;
thread_local int errorDue = 0; // of the call that comes next in this thread

constexpr long Broken = 1L << 40; // in the count: from now on all fail
bool withSyncs = false;
thread_local bool isSynced = false; // nothing written by this thread is waiting

// By system calls of its own, which are not counted.
__attribute__((constructor)) void takeOrders()
{
    const char *state = getenv("VEXA_KILL_STATE");
    if (!state)
        return;
    const int file = int(syscall(SYS_openat, AT_FDCWD, state, O_RDWR | O_CLOEXEC, 0));
    void *memory = mmap(nullptr, sizeof(*count), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (memory == MAP_FAILED)
        abort();
    if (const char *point = getenv("VEXA_KILL_AT"))
        killAt = atol(point);
    if (const char *name = getenv("VEXA_KILL_NAME"))
        killName = strdup(name);
    withSyncs = getenv("VEXA_KILL_SYNCS") != nullptr;
    if (const char *number = getenv("VEXA_KILL_ERROR"))
        errorNumber = atoi(number);
    lasting = getenv("VEXA_KILL_FROM") != nullptr;
    if (const char *program = getenv("VEXA_KILL_MAIN"))
        mainProgram = atol(program);
    if (const char *log = getenv("VEXA_KILL_LOG"))
        logFile = int(
            syscall(SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    count = static_cast<std::atomic<long> *>(memory);
}

// What is written beside a file, to replace it in one step, is named by chance: "vexa.conf.hTgsrE".
bool isTemporary(const std::string &file, size_t dot)
{
    if (dot == 0 || file[dot] != '.')
        return false;
    for (size_t i = dot + 1; i < file.size(); ++i) {
        if (!isalpha(static_cast<unsigned char>(file[i])))
            return false;
    }
    const std::string target = file.substr(0, dot);
    const size_t ending = target.rfind('.');
    return target == "vexa-maps" || (ending != std::string::npos && ending > 0);
}

std::string nameOf(const char *function, const char *what)
{
    std::string file(what ? what : "");
    file.erase(0, file.rfind('/') + 1);
    if (file.rfind('#', 0) == 0)
        file = "(nameless)";
    const size_t dot = file.size() < 7 ? 0 : file.size() - 7;
    if (isTemporary(file, dot))
        file.replace(dot, std::string::npos, ".XXXXXX");
    return std::string(mainProgram ? "command-" : "") + function + ' ' + file;
}

bool isPoint(const std::string &name)
{
    if (logFile >= 0) {
        const std::string line = name + '\n';
        syscall(SYS_write, logFile, line.data(), line.size());
    }
    return name == killName && ++*count == killAt;
}

void die()
{
    if (mainProgram)
        syscall(SYS_kill, mainProgram, SIGKILL);
    syscall(SYS_kill, getpid(), SIGKILL);
    pause();
}

void reach(const std::string &name)
{
    const bool chosen = isPoint(name);
    if (chosen && errorNumber == 0)
        die();
    if (chosen && lasting)
        *count |= Broken;
    if (chosen || (*count & Broken) != 0)
        errorDue = errorNumber;
}

void point(const char *function, const char *what)
{
    if (count)
        reach(nameOf(function, what));
}

long failing()
{
    errno = errorDue;
    errorDue = 0;
    return -1;
}

bool isFile(int file)
{
    struct stat about = {};
    return fstat(file, &about) == 0 && S_ISREG(about.st_mode);
}

void pointAt(const char *function, int file)
{
    char link[40];
    char name[4096] = {};
    snprintf(link, sizeof link, "/proc/self/fd/%d", file);
    const ssize_t length = readlink(link, name, sizeof name - 1);
    point(function, length > 0 ? name : "");
}

void filePoint(const char *function, int file)
{
    if (!count || !isFile(file))
        return;
    isSynced = false;
    pointAt(function, file);
}

void namePoint(const char *function, const char *to)
{
    if (!count)
        return;
    std::string name = nameOf(function, to);
    if (withSyncs)
        name += isSynced ? " synced" : " unsynced";
    reach(name);
}

void syncPoint(const char *function, int file)
{
    if (!count || !withSyncs)
        return;
    isSynced = true;
    pointAt(function, file);
}

bool changes(int flags)
{
    return (flags & (O_CREAT | O_TRUNC)) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

// The real call; or one that fails, which all of them say by -1. The caller drops the arguments.
template <typename Function> Function next(Function, const char *name)
{
    if (errorDue != 0)
        return reinterpret_cast<Function>(reinterpret_cast<void *>(&failing));
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

#define NEXT(function) next(&function, #function)

#define OPEN(function)                                                                             \
    EXPORTED int function(const char *path, int flags, ...)                                        \
    {                                                                                              \
        va_list arguments;                                                                         \
        va_start(arguments, flags);                                                                \
        const mode_t mode = va_arg(arguments, mode_t);                                             \
        va_end(arguments);                                                                         \
        if (changes(flags))                                                                        \
            point("open", path);                                                                   \
        return NEXT(function)(path, flags, mode);                                                  \
    }
OPEN(open)
OPEN(open64)

#define OPENAT(function)                                                                           \
    EXPORTED int function(int folder, const char *path, int flags, ...)                            \
    {                                                                                              \
        va_list arguments;                                                                         \
        va_start(arguments, flags);                                                                \
        const mode_t mode = va_arg(arguments, mode_t);                                             \
        va_end(arguments);                                                                         \
        if (changes(flags))                                                                        \
            point("open", path);                                                                   \
        return NEXT(function)(folder, path, flags, mode);                                          \
    }
OPENAT(openat)
OPENAT(openat64)

EXPORTED ssize_t write(int file, const void *bytes, size_t size)
{
    filePoint("write", file);
    return NEXT(write)(file, bytes, size);
}

EXPORTED ssize_t writev(int file, const iovec *pieces, int number)
{
    filePoint("write", file);
    return NEXT(writev)(file, pieces, number);
}

EXPORTED ssize_t copy_file_range(int from, off64_t *fromAt, int to, off64_t *toAt, size_t size,
                                 unsigned flags)
{
    filePoint("write", to);
    return NEXT(copy_file_range)(from, fromAt, to, toAt, size, flags);
}

EXPORTED ssize_t pwrite(int file, const void *bytes, size_t size, off_t at)
{
    filePoint("write", file);
    return NEXT(pwrite)(file, bytes, size, at);
}

EXPORTED ssize_t pwrite64(int file, const void *bytes, size_t size, off64_t at)
{
    filePoint("write", file);
    return NEXT(pwrite64)(file, bytes, size, at);
}

EXPORTED ssize_t sendfile(int to, int from, off_t *at, size_t size) noexcept
{
    filePoint("write", to);
    return NEXT(sendfile)(to, from, at, size);
}

EXPORTED int rename(const char *from, const char *to) noexcept
{
    namePoint("rename", to);
    return NEXT(rename)(from, to);
}

EXPORTED int renameat(int fromFolder, const char *from, int toFolder, const char *to) noexcept
{
    namePoint("rename", to);
    return NEXT(renameat)(fromFolder, from, toFolder, to);
}

EXPORTED int renameat2(int fromFolder, const char *from, int toFolder, const char *to,
                       unsigned flags) noexcept
{
    namePoint("rename", to);
    return NEXT(renameat2)(fromFolder, from, toFolder, to, flags);
}

EXPORTED int link(const char *from, const char *to) noexcept
{
    namePoint("link", to);
    return NEXT(link)(from, to);
}

EXPORTED int linkat(int fromFolder, const char *from, int toFolder, const char *to,
                    int flags) noexcept
{
    namePoint("link", to);
    return NEXT(linkat)(fromFolder, from, toFolder, to, flags);
}

EXPORTED int symlink(const char *target, const char *path) noexcept
{
    point("link", path);
    return NEXT(symlink)(target, path);
}

EXPORTED int unlink(const char *path) noexcept
{
    point("unlink", path);
    return NEXT(unlink)(path);
}

EXPORTED int unlinkat(int folder, const char *path, int flags) noexcept
{
    point("unlink", path);
    return NEXT(unlinkat)(folder, path, flags);
}

EXPORTED int remove(const char *path) noexcept
{
    point("unlink", path);
    return NEXT(remove)(path);
}

EXPORTED int rmdir(const char *path) noexcept
{
    point("rmdir", path);
    return NEXT(rmdir)(path);
}

EXPORTED int mkdir(const char *path, mode_t mode) noexcept
{
    point("mkdir", path);
    return NEXT(mkdir)(path, mode);
}

EXPORTED int mkdirat(int folder, const char *path, mode_t mode) noexcept
{
    point("mkdir", path);
    return NEXT(mkdirat)(folder, path, mode);
}

EXPORTED int ftruncate(int file, off_t size) noexcept
{
    filePoint("truncate", file);
    return NEXT(ftruncate)(file, size);
}

EXPORTED int ftruncate64(int file, off64_t size) noexcept
{
    filePoint("truncate", file);
    return NEXT(ftruncate64)(file, size);
}

EXPORTED int truncate(const char *path, off_t size) noexcept
{
    point("truncate", path);
    return NEXT(truncate)(path, size);
}

EXPORTED int truncate64(const char *path, off64_t size) noexcept
{
    point("truncate", path);
    return NEXT(truncate64)(path, size);
}

EXPORTED int fsync(int file)
{
    syncPoint("sync", file);
    return NEXT(fsync)(file);
}

EXPORTED int fdatasync(int file)
{
    syncPoint("sync", file);
    return NEXT(fdatasync)(file);
}

EXPORTED int syncfs(int file) noexcept
{
    syncPoint("syncfs", file);
    return NEXT(syncfs)(file);
}

namespace {

// Begins when the next start of the program is well under way.
void leaveAlone(const char *command)
{
    if (fork() == 0) {
        const std::string late = std::string("exec >/dev/null 2>&1; sleep 0.3; ") + command;
        execl("/bin/sh", "sh", "-c", late.c_str(), nullptr);
        _exit(127);
    }
}

std::string counted(const char *command)
{
    Dl_info self = {};
    dladdr(reinterpret_cast<void *>(&leaveAlone), &self);
    return std::string("LD_PRELOAD='") + self.dli_fname
        + "' VEXA_KILL_MAIN=" + std::to_string(getpid()) + ' ' + command;
}

} // namespace

EXPORTED int system(const char *command)
{
    if (!command || !count)
        return NEXT(system)(command);
    const std::string program(command, strcspn(command, " "));
    point("before", program.c_str());
    if (isPoint(nameOf("alone", program.c_str()))) {
        leaveAlone(command);
        die();
    }
    const int result = NEXT(system)(counted(command).c_str());
    point("behind", program.c_str());
    return result;
}
