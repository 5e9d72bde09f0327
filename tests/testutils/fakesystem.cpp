// SPDX-License-Identifier: MIT
#include "testutils/fakesystem.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <QMutex>
#include <QMutexLocker>
#include <QPair>
#include <QtGlobal>

namespace {

struct Orders
{
    bool shellGone = false;
    QList<QPair<QByteArray, int>> answers;
    QList<QByteArray> separated;
    std::function<void(const QByteArray &)> beforeCommand;
    std::function<void(const QByteArray &, const QByteArray &)> beforeRename;
    QList<QByteArray> commands;
};

QMutex mutex;
Orders *orders = nullptr;

template <typename Function> Function real(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

bool orderedAnswer(const QByteArray &command, int *result)
{
    for (const auto &answer : std::as_const(orders->answers)) {
        if (command.startsWith(answer.first)) {
            *result = answer.second;
            return true;
        }
    }
    return false;
}

} // namespace

FakeSystem::FakeSystem()
{
    const QMutexLocker lock(&mutex);
    if (orders)
        qFatal("only one fake system may live at a time");
    orders = new Orders;
}

FakeSystem::~FakeSystem()
{
    const QMutexLocker lock(&mutex);
    delete orders;
    orders = nullptr;
}

void FakeSystem::takeShellAway()
{
    const QMutexLocker lock(&mutex);
    orders->shellGone = true;
}

void FakeSystem::answer(const QByteArray &beginning, int result)
{
    const QMutexLocker lock(&mutex);
    orders->answers.append({beginning, result});
}

void FakeSystem::beforeCommand(const std::function<void(const QByteArray &)> &look)
{
    const QMutexLocker lock(&mutex);
    orders->beforeCommand = look;
}

void FakeSystem::separate(const QByteArray &source)
{
    const QMutexLocker lock(&mutex);
    orders->separated.append(source);
}

void FakeSystem::beforeRename(
    const std::function<void(const QByteArray &, const QByteArray &)> &look)
{
    const QMutexLocker lock(&mutex);
    orders->beforeRename = look;
}

QList<QByteArray> FakeSystem::commands() const
{
    const QMutexLocker lock(&mutex);
    return orders->commands;
}

// Exported, so that the library's calls end here.
extern "C" Q_DECL_EXPORT int system(const char *command)
{
    {
        std::function<void(const QByteArray &)> look;
        {
            const QMutexLocker lock(&mutex);
            if (orders && !command)
                return orders->shellGone ? 0 : 1;
            if (orders) {
                orders->commands.append(command);
                look = orders->beforeCommand;
            }
        }
        if (look)
            look(command);
    }
    {
        const QMutexLocker lock(&mutex);
        int result = 0;
        if (orders && orderedAnswer(command, &result))
            return result;
    }
    return real<int (*)(const char *)>("system")(command);
}

extern "C" Q_DECL_EXPORT int rename(const char *from, const char *to) noexcept
{
    std::function<void(const QByteArray &, const QByteArray &)> look;
    {
        const QMutexLocker lock(&mutex);
        if (orders && orders->separated.contains(from)) {
            errno = EXDEV;
            return -1;
        }
        if (orders)
            look = orders->beforeRename;
    }
    if (look)
        look(from, to);
    return real<int (*)(const char *, const char *)>("rename")(from, to);
}
