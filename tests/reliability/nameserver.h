// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <thread>

/**
 * The smallest name server on the server's side of the FaultLink, port 53: it knows every name, or
 * none, or is silent.
 */
class NameServer
{
public:
    enum class Mood {
        Knows, ///< every name is the server's address; there are no addresses of IPv6
        KnowsNone, ///< no such name
        Silent,
    };

    explicit NameServer(Mood mood);
    ~NameServer();
    NameServer(const NameServer &) = delete;
    NameServer &operator=(const NameServer &) = delete;

    void setMood(Mood mood) { m_mood = mood; }
    int questions() const { return m_questions; }

private:
    void serve();

    std::atomic<Mood> m_mood;
    std::atomic<int> m_questions {0};
    std::atomic<bool> m_ready {false};
    std::atomic<bool> m_ends {false};
    std::thread m_thread;
};
