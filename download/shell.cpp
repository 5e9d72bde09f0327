// SPDX-License-Identifier: MIT
#include "download/shell_p.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <pthread.h>
#include <QFile>

namespace {

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
    const SignalsHeldBack heldBack;
    return std::system(QFile::encodeName(command).constData()); // NOLINT: see above
}
