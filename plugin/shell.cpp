// SPDX-License-Identifier: MIT
#include "plugin/shell_p.h"

#include "plugin/vexaconstants.h"
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <pthread.h>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QThread>
#include <sys/file.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr auto LongestWait = 60s;
constexpr unsigned long WaitStep = 20; // ms

// The command inherits the mask of the thread that starts it. Without this, a Ctrl-C in a terminal
// would stop a copy half-way, although the program itself means to end cleanly.
class SignalsHeldBack
{
public:
    SignalsHeldBack()
    {
        sigset_t signals;
        sigemptyset(&signals);
        for (int signal : {SIGINT, SIGTERM, SIGQUIT, SIGHUP})
            sigaddset(&signals, signal);
        pthread_sigmask(SIG_BLOCK, &signals, &m_before);
    }
    ~SignalsHeldBack() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    Q_DISABLE_COPY(SignalsHeldBack)

private:
    sigset_t m_before;
};

// When the program is killed its command lives on, and the next start would unpack into the folder
// that an old "rm" is still emptying. The command inherits the descriptor and with it the lock, so
// the next start's first command waits for it.
class OneAtATime
{
public:
    OneAtATime()
        : m_folder(::open(QFile::encodeName(QDir::homePath() + TMP_DIR_PATH).constData(),
                          O_RDONLY | O_DIRECTORY)) // not O_CLOEXEC, see above
    {
        // Without the folder there is nothing that two commands could meet in.
        const QDeadlineTimer deadline(
            LongestWait); // a command that hangs must not hold us for good
        while (m_folder >= 0 && ::flock(m_folder, LOCK_EX | LOCK_NB) != 0
               && (errno == EWOULDBLOCK || errno == EINTR) && !deadline.hasExpired())
            QThread::msleep(WaitStep);
    }
    ~OneAtATime()
    {
        if (m_folder < 0)
            return;
        // Closing alone would leave the lock to a program that was started meanwhile.
        ::flock(m_folder, LOCK_UN);
        ::close(m_folder);
    }
    Q_DISABLE_COPY(OneAtATime)

private:
    int m_folder;
};

bool isPlain(QChar c)
{
    const ushort code = c.unicode();
    return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z')
        || (code >= '0' && code <= '9') || QLatin1String("/._-+,:@%=").contains(c) || code >= 0x80;
}

} // namespace

bool Shell::isAvailable()
{
    return std::system(nullptr) != 0; // NOLINT: the shell is what is asked for
}

QString Shell::quoted(const QString &path)
{
    // A relative path could be taken for an option.
    if (path.startsWith(QLatin1Char('-')))
        return quoted(QLatin1String("./") + path);
    if (!path.isEmpty() && std::all_of(path.begin(), path.end(), isPlain))
        return path;
    QString word = path;
    word.replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + word + QLatin1Char('\'');
}

int Shell::run(const QString &command)
{
    const OneAtATime turn;
    return runAtOnce(QFile::encodeName(command));
}

int Shell::runAtOnce(const QByteArray &command)
{
    const SignalsHeldBack heldBack;
    return std::system(command.constData()); // NOLINT: see above
}
