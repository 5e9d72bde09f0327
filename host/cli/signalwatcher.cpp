// SPDX-License-Identifier: MIT
#include "host/cli/signalwatcher.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

sigset_t watchedSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGTERM);
    return set;
}

} // namespace

SignalWatcher::SignalWatcher(QObject *parent)
    : QObject(parent)
{
    const sigset_t set = watchedSignals();
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
    // For the engine's commands, which inherit it: a shell lifts the block for what it starts, but
    // leaves alone what is ignored. For us nothing is lost: a blocked signal waits all the same.
    for (const int watched : {SIGINT, SIGTERM})
        std::signal(watched, SIG_IGN);
    m_descriptor = signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC);
    if (m_descriptor < 0) {
        letThrough(); // Better an abrupt end than none.
        return;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] { read(); });
}

SignalWatcher::~SignalWatcher()
{
    m_notifier.reset();
    if (m_descriptor >= 0)
        close(m_descriptor);
}

void SignalWatcher::letThrough()
{
    for (const int watched : {SIGINT, SIGTERM})
        std::signal(watched, SIG_DFL);
    const sigset_t set = watchedSignals();
    pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
}

void SignalWatcher::read()
{
    signalfd_siginfo info;
    if (::read(m_descriptor, &info, sizeof info) == sizeof info)
        Q_EMIT interrupted();
}
