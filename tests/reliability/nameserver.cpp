// SPDX-License-Identifier: MIT
#include "reliability/nameserver.h"

#include "reliability/faultlink.h"
#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int HeadSize = 12;
constexpr int LookInterval = 20; // ms between two looks at the end

// Behind the name, its type and its class (4 bytes); -1 for what is no question.
int endOfQuestion(const QByteArray &packet)
{
    int at = HeadSize;
    while (at < packet.size() && packet.at(at) != 0)
        at += static_cast<unsigned char>(packet.at(at)) + 1;
    return at + 5 <= packet.size() ? at + 5 : -1;
}

QByteArray answerTo(const QByteArray &question, NameServer::Mood mood)
{
    const int end = endOfQuestion(question);
    if (end < 0)
        return QByteArray();
    QByteArray answer = question.left(end); // without what the resolver may have added
    const bool isAddress = answer.at(end - 3) == 1; // type A, not AAAA
    answer[2] = char(0x84); // an answer, and we are the authority
    answer[3] = mood == NameServer::Mood::KnowsNone ? char(3) : char(0);
    for (int i = 6; i < HeadSize; ++i)
        answer[i] = 0;
    if (mood == NameServer::Mood::Knows && isAddress) {
        answer[7] = 1; // one answer: the same name, A, IN, good for 0 s, 4 bytes
        answer += QByteArray("\xc0\x0c\0\1\0\1\0\0\0\0\0\4", 12);
        in_addr address {};
        inet_pton(AF_INET, qPrintable(FaultLink::serverAddress()), &address);
        answer += QByteArray(reinterpret_cast<const char *>(&address), sizeof address);
    }
    return answer;
}

} // namespace

NameServer::NameServer(Mood mood)
    : m_mood(mood)
    , m_thread([this] { serve(); })
{
    while (!m_ready)
        std::this_thread::yield();
}

NameServer::~NameServer()
{
    m_ends = true;
    m_thread.join();
}

void NameServer::serve()
{
    FaultLink::moveThreadToServer();
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in here {};
    here.sin_family = AF_INET;
    here.sin_port = htons(53);
    if (bind(socket, reinterpret_cast<sockaddr *>(&here), sizeof here) != 0)
        qFatal("port 53 of the server's side cannot be had");
    m_ready = true;
    while (!m_ends) {
        pollfd file {socket, POLLIN, 0};
        if (poll(&file, 1, LookInterval) <= 0)
            continue;
        QByteArray packet(1500, 0);
        sockaddr_in from {};
        socklen_t length = sizeof from;
        const ssize_t size = recvfrom(socket, packet.data(), size_t(packet.size()), 0,
                                      reinterpret_cast<sockaddr *>(&from), &length);
        if (size < HeadSize)
            continue;
        ++m_questions;
        if (m_mood == Mood::Silent)
            continue;
        const QByteArray answer = answerTo(packet.left(int(size)), m_mood);
        // A lost answer is asked for again.
        (void)sendto(socket, answer.constData(), size_t(answer.size()), 0,
                     reinterpret_cast<sockaddr *>(&from), length);
    }
    close(socket);
}
