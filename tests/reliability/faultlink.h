// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <atomic>
#include <mutex>
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <queue>
#include <random>
#include <thread>
#include <vector>

/** What a link does to the packets of either direction. */
struct LinkFaults
{
    double loss = 0; ///< share of the packets that vanish, 0 to 1
    double corruption = 0; ///< share of the packets in which one bit flips
    int delayMs = 0;
    int jitterMs = 0; ///< at most this much more, another time for each packet: they overtake
    qint64 bytesPerSecond = 0; ///< 0: as fast as it goes
};

/**
 * Two networks of the kernel's own with a bad line between them: the program is on the client's
 * side, the server's side is one command away (serverCommand()). All packets go through a thread
 * of this program, which loses, delays, reorders and damages them; the kernels at both ends are
 * the real ones and have to cope. Nothing of it touches the machine's own network.
 *
 *     program -- TUN 10.77.0.2 -- this thread -- TUN 10.77.0.1 -- nginx
 *
 * enter() comes first in main(): the kernel moves only a program without threads into a network of
 * its own. It needs no root where the kernel lets users have namespaces and /dev/net/tun is theirs
 * to open; otherwise it ends the program and says what is missing.
 */
class FaultLink
{
public:
    /** Makes the networks; resolvConf is what programs here see as /etc/resolv.conf. */
    static void enter(const QByteArray &resolvConf);

    FaultLink();
    ~FaultLink();
    FaultLink(const FaultLink &) = delete;
    FaultLink &operator=(const FaultLink &) = delete;

    static QString serverAddress();
    /** In front of a command line: runs it on the server's side. */
    static QStringList serverCommand();
    /** Moves the calling thread to the server's side, for good. */
    static void moveThreadToServer();
    /** Takes the client's end of the line down or up, as a phone does that leaves its network. */
    static void setClientInterface(bool up);

    /** From now on; what is under way comes as it was to come. */
    void setFaults(const LinkFaults &faults);
    /** Nothing passes any more. */
    void goDown() { m_down = true; }
    void goUp() { m_down = false; }
    /**
     * Goes down by itself once the server has sent this many bytes of TCP data from now on; with 0
     * when the client's first TCP data, which is its request, has passed.
     */
    void goDownAfter(qint64 serverBytes);
    bool isDown() const { return m_down; }

    struct Counts
    {
        qint64 packets = 0; ///< that either side has sent
        qint64 lost = 0;
        qint64 damaged = 0;
        qint64 overtaken = 0; ///< that came behind one which was sent later
        qint64 blocked = 0; ///< that came while the link was down
        qint64 connects = 0; ///< connections that the client began, those into a dead link too
        qint64 serverBytes = 0; ///< of TCP data that reached the client, repetitions included
    };
    /** Since the last reset. */
    Counts counts() const;
    void resetCounts();

private:
    struct Packet
    {
        qint64 due = 0; // microseconds
        qint64 number = 0;
        std::vector<unsigned char> bytes;
        bool operator<(const Packet &other) const
        {
            return due != other.due ? due > other.due : number > other.number; // the first on top
        }
    };
    struct Direction
    {
        int from = -1;
        int to = -1;
        qint64 free = 0; // when the line has sent what it was given, in microseconds
        qint64 lastSent = -1; // number of the newest packet that has come through
        std::priority_queue<Packet> waiting;
    };

    void carry();
    void take(Direction &direction, bool fromServer);
    void send(Direction &direction, qint64 now);
    bool isTrigger(const std::vector<unsigned char> &packet, bool fromServer);
    bool chance(double share);

    std::array<Direction, 2> m_directions; // carrying thread only
    std::mt19937_64 m_random {20261121}; // likewise
    qint64 m_number = 0; // likewise
    mutable std::mutex m_mutex; // guards the three below
    LinkFaults m_faults;
    Counts m_counts;
    qint64 m_downAfter = -1;
    std::atomic<bool> m_down {false};
    int m_wake = -1;
    std::thread m_thread;
};
