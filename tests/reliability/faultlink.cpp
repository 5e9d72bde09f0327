// SPDX-License-Identifier: MIT
#include "reliability/faultlink.h"

#include <arpa/inet.h>
#include <chrono>
#include <cstring>
#include <errno.h>
#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <poll.h>
#include <QFile>
#include <QTemporaryFile>
#include <sched.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int Mtu = 1500;
constexpr char ServerIp[] = "10.77.0.1";
constexpr char ClientIp[] = "10.77.0.2";
constexpr char TunName[] = "line";

// Of the program, made by enter().
int serverNamespace = -1;
int serverTun = -1;
int clientTun = -1;

[[noreturn]] void giveUp(const char *what)
{
    qFatal("%s: %s. This test needs networks of its own: as root, or as a user whom the kernel "
           "lets have namespaces (kernel.unprivileged_userns_clone, user.max_user_namespaces) "
           "and who may open /dev/net/tun.",
           what, strerror(errno));
}

void writeTo(const char *path, const QByteArray &text)
{
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    if (file < 0 || write(file, text.constData(), size_t(text.size())) != text.size())
        giveUp(path);
    close(file);
}

// Root in there and nothing more out here. The real root does without if the kernel forbids it.
void becomeRootOfOurOwn()
{
    const QByteArray user = QByteArray::number(getuid());
    const QByteArray group = QByteArray::number(getgid());
    if (unshare(CLONE_NEWUSER) != 0) {
        if (getuid() != 0)
            giveUp("unshare of users");
        return;
    }
    writeTo("/proc/self/setgroups", "deny");
    writeTo("/proc/self/uid_map", "0 " + user + " 1");
    writeTo("/proc/self/gid_map", "0 " + group + " 1");
}

void setFlags(const char *name, bool up)
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request {};
    std::strncpy(request.ifr_name, name, IFNAMSIZ - 1);
    if (ioctl(socket, SIOCGIFFLAGS, &request) != 0)
        giveUp("SIOCGIFFLAGS");
    if (up)
        request.ifr_flags |= IFF_UP;
    else
        request.ifr_flags &= short(~IFF_UP);
    if (ioctl(socket, SIOCSIFFLAGS, &request) != 0)
        giveUp("SIOCSIFFLAGS");
    close(socket);
}

void setAddress(const char *name, unsigned long what, const char *address)
{
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request {};
    std::strncpy(request.ifr_name, name, IFNAMSIZ - 1);
    sockaddr_in ip {};
    ip.sin_family = AF_INET;
    inet_pton(AF_INET, address, &ip.sin_addr);
    std::memcpy(&request.ifr_addr, &ip, sizeof ip);
    if (ioctl(socket, what, &request) != 0)
        giveUp("ioctl of an interface's address");
    close(socket);
}

// In the network of the calling thread. Without the flag for a packet information head, and
// without offloads: every packet comes with its check sums, and is checked when it goes back.
int makeEnd(const char *address)
{
    const int tun = open("/dev/net/tun", O_RDWR | O_NONBLOCK | O_CLOEXEC);
    if (tun < 0)
        giveUp("/dev/net/tun");
    ifreq request {};
    request.ifr_flags = IFF_TUN | IFF_NO_PI;
    std::strncpy(request.ifr_name, TunName, IFNAMSIZ - 1);
    if (ioctl(tun, TUNSETIFF, &request) != 0)
        giveUp("TUNSETIFF");
    ioctl(tun, TUNSETOFFLOAD, 0);
    setAddress(TunName, SIOCSIFADDR, address);
    setAddress(TunName, SIOCSIFNETMASK, "255.255.255.0");
    setFlags(TunName, true);
    setFlags("lo", true);
    return tun;
}

// The file goes from its folder at once; the mount keeps it.
void replaceResolvConf(const QByteArray &text)
{
    QTemporaryFile file;
    if (!file.open() || file.write(text) != text.size() || !file.flush()
        || !file.setPermissions(QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther))
        giveUp("a file for resolv.conf");
    // Else the mount would be seen by the whole machine.
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
        giveUp("private mounts");
    const QByteArray path = QFile::encodeName(file.fileName());
    if (mount(path.constData(), "/etc/resolv.conf", nullptr, MS_BIND, nullptr) != 0)
        giveUp("a mount over /etc/resolv.conf");
}

qint64 nowInMicroseconds()
{
    using namespace std::chrono;
    return duration_cast<microseconds>(steady_clock::now().time_since_epoch()).count();
}

/** The parts of a packet that the link looks at. */
struct TcpView
{
    explicit TcpView(const std::vector<unsigned char> &packet)
    {
        const size_t ipHead = packet.size() >= 20 ? size_t(packet[0] & 15) * 4 : 0;
        if (ipHead < 20 || packet[0] >> 4 != 4 || packet[9] != IPPROTO_TCP
            || packet.size() < ipHead + 20)
            return;
        const size_t tcpHead = size_t(packet[ipHead + 12] >> 4) * 4;
        const int flags = packet[ipHead + 13];
        data = qMax<qint64>(0, qint64(packet.size()) - qint64(ipHead + tcpHead));
        isConnect = (flags & 0x12) == 0x02; // SYN, and no ACK
    }

    qint64 data = 0; // bytes
    bool isConnect = false;
};

} // namespace

void FaultLink::enter(const QByteArray &resolvConf)
{
    becomeRootOfOurOwn();
    if (unshare(CLONE_NEWNET | CLONE_NEWNS) != 0)
        giveUp("unshare of the network");
    serverNamespace = open("/proc/self/ns/net", O_RDONLY | O_CLOEXEC);
    serverTun = makeEnd(ServerIp);
    if (unshare(CLONE_NEWNET) != 0)
        giveUp("unshare of the second network");
    clientTun = makeEnd(ClientIp);
    replaceResolvConf(resolvConf);
}

FaultLink::FaultLink()
{
    m_directions[0].from = serverTun;
    m_directions[0].to = clientTun;
    m_directions[1].from = clientTun;
    m_directions[1].to = serverTun;
    m_wake = eventfd(0, EFD_CLOEXEC);
    m_thread = std::thread([this] { carry(); });
}

FaultLink::~FaultLink()
{
    const quint64 one = 1;
    if (write(m_wake, &one, sizeof one) != sizeof one)
        qFatal("the link cannot be ended");
    m_thread.join();
    close(m_wake);
}

QString FaultLink::serverAddress()
{
    return QString::fromLatin1(ServerIp);
}

QStringList FaultLink::serverCommand()
{
    return {QStringLiteral("nsenter"),
            QStringLiteral("--net=/proc/%1/fd/%2").arg(getpid()).arg(serverNamespace)};
}

void FaultLink::moveThreadToServer()
{
    if (setns(serverNamespace, CLONE_NEWNET) != 0)
        giveUp("setns");
}

void FaultLink::setClientInterface(bool up)
{
    setFlags(TunName, up);
}

void FaultLink::setFaults(const LinkFaults &faults)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_faults = faults;
}

void FaultLink::goDownAfter(qint64 serverBytes)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_downAfter = serverBytes;
}

FaultLink::Counts FaultLink::counts() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_counts;
}

void FaultLink::resetCounts()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_counts = Counts();
}

bool FaultLink::chance(double share)
{
    return share > 0 && std::uniform_real_distribution<>(0, 1)(m_random) < share;
}

void FaultLink::carry()
{
    while (true) {
        qint64 next = -1;
        const qint64 now = nowInMicroseconds();
        for (const Direction &direction : m_directions) {
            if (!direction.waiting.empty() && (next < 0 || direction.waiting.top().due < next))
                next = direction.waiting.top().due;
        }
        const int wait = next < 0 ? -1 : int(qMax<qint64>(0, (next - now + 999) / 1000));
        std::array<pollfd, 3> files {pollfd {m_directions[0].from, POLLIN, 0},
                                     pollfd {m_directions[1].from, POLLIN, 0},
                                     pollfd {m_wake, POLLIN, 0}};
        if (poll(files.data(), files.size(), wait) < 0 && errno != EINTR)
            qFatal("poll: %s", strerror(errno));
        if (files[2].revents != 0)
            return;
        take(m_directions[0], true);
        take(m_directions[1], false);
        for (Direction &direction : m_directions)
            send(direction, nowInMicroseconds());
    }
}

// Whether the link was to go down behind this packet.
bool FaultLink::isTrigger(const std::vector<unsigned char> &packet, bool fromServer)
{
    const TcpView tcp(packet);
    if (m_downAfter < 0 || tcp.data == 0)
        return false;
    if (m_downAfter == 0)
        return !fromServer;
    m_downAfter -= fromServer ? tcp.data : 0;
    return m_downAfter <= 0;
}

void FaultLink::take(Direction &direction, bool fromServer)
{
    std::vector<unsigned char> packet(Mtu + 100);
    for (ssize_t size = 0; (size = read(direction.from, packet.data(), packet.size())) > 0;
         packet.resize(Mtu + 100)) {
        packet.resize(size_t(size));
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_counts.packets;
        m_counts.connects += !fromServer && TcpView(packet).isConnect;
        if (m_down) {
            ++m_counts.blocked;
            continue;
        }
        if (isTrigger(packet, fromServer)) {
            m_downAfter = -1;
            m_down = true;
        }
        if (chance(m_faults.loss)) {
            ++m_counts.lost;
            continue;
        }
        if (chance(m_faults.corruption)) {
            ++m_counts.damaged;
            const size_t bit = m_random() % (packet.size() * 8);
            packet[bit / 8] ^= static_cast<unsigned char>(1 << bit % 8);
        }
        const qint64 now = nowInMicroseconds();
        direction.free = qMax(direction.free, now);
        if (m_faults.bytesPerSecond > 0)
            direction.free += qint64(packet.size()) * 1000000 / m_faults.bytesPerSecond;
        const qint64 jitter =
            m_faults.jitterMs > 0 ? qint64(m_random() % quint64(m_faults.jitterMs * 1000)) : 0;
        direction.waiting.push(
            {direction.free + m_faults.delayMs * 1000 + jitter, m_number++, packet});
    }
}

void FaultLink::send(Direction &direction, qint64 now)
{
    while (!direction.waiting.empty() && direction.waiting.top().due <= now) {
        const Packet &packet = direction.waiting.top();
        // A queue that is full loses packets, as everywhere.
        const bool sent = write(direction.to, packet.bytes.data(), packet.bytes.size()) > 0;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            if (sent && direction.to == clientTun)
                m_counts.serverBytes += TcpView(packet.bytes).data;
            m_counts.overtaken += packet.number < direction.lastSent;
        }
        direction.lastSent = qMax(direction.lastSent, packet.number);
        direction.waiting.pop();
    }
}
