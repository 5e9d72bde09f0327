// SPDX-License-Identifier: MIT
#include "host/shared/networkmanagersource.h"

#include "plugin/logger.h"
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QUuid>

namespace {

using Standing = NetworkReport::Standing;

// The name of the service and of its interface.
QString networkManager()
{
    return QStringLiteral("org.freedesktop.NetworkManager");
}

QString objectPath()
{
    return QStringLiteral("/org/freedesktop/NetworkManager");
}

QString propertiesInterface()
{
    return QStringLiteral("org.freedesktop.DBus.Properties");
}

// NMState: from here on there is a default route.
constexpr uint ConnectedSite = 60;

// NMConnectivityState
constexpr uint NoConnectivity = 1;
constexpr uint LoginPage = 2;

// NMMetered
constexpr uint Metered = 1;
constexpr uint NotMetered = 2;
constexpr uint GuessedMetered = 3;
constexpr uint GuessedNotMetered = 4;

QDBusConnection connectTo(const QString &address, const QString &name)
{
    if (address.isEmpty())
        return QDBusConnection::connectToBus(QDBusConnection::SystemBus, name);
    return QDBusConnection::connectToBus(address, name);
}

bool isMobile(const QString &type)
{
    static const QStringList types {QStringLiteral("gsm"), QStringLiteral("cdma"),
                                    QStringLiteral("wimax"), QStringLiteral("bluetooth")};
    return types.contains(type);
}

bool isWifiOrCable(const QString &type)
{
    static const QStringList types {
        QStringLiteral("802-11-wireless"),
        QStringLiteral("802-3-ethernet"),
        QStringLiteral("bond"),
        QStringLiteral("bridge"),
        QStringLiteral("infiniband"),
        QStringLiteral("team"),
        QStringLiteral("vlan"),
    };
    return types.contains(type);
}

bool isOnline(const QVariantMap &properties)
{
    const uint connectivity = properties.value(QStringLiteral("Connectivity")).toUInt();
    return properties.value(QStringLiteral("State")).toUInt() >= ConnectedSite
        && connectivity != NoConnectivity && connectivity != LoginPage;
}

bool isUnmetered(const QVariantMap &properties)
{
    const QString type = properties.value(QStringLiteral("PrimaryConnectionType")).toString();
    const uint metered = properties.value(QStringLiteral("Metered")).toUInt();
    if (isMobile(type))
        return false;
    if (isWifiOrCable(type))
        return metered != Metered && metered != GuessedMetered;
    return metered == NotMetered || metered == GuessedNotMetered;
}

} // namespace

NetworkManagerSource::NetworkManagerSource(const QString &busAddress, QObject *parent)
    : NetworkSource(parent)
    // A connection of our own: one that is shared under its name could be closed by others.
    , m_connectionName(QStringLiteral("vexa-network-") + QUuid::createUuid().toString())
    , m_bus(connectTo(busAddress, m_connectionName))
{
    if (!m_bus.isConnected()) {
        L::og()->info(QLatin1String("No D-Bus to learn the network's state from: ")
                      + m_bus.lastError().message());
        m_report.standing = Standing::Absent;
        return;
    }
    watchBus();
    ask();
}

NetworkManagerSource::~NetworkManagerSource()
{
    delete m_asked; // before its connection goes
    QDBusConnection::disconnectFromBus(m_connectionName);
}

NetworkReport NetworkManagerSource::report() const
{
    return m_report;
}

// Before the first question, so that no change falls between its answer and the watch.
void NetworkManagerSource::watchBus()
{
    m_bus.connect(networkManager(), objectPath(), propertiesInterface(),
                  QStringLiteral("PropertiesChanged"), this,
                  SLOT(onPropertiesChanged(QString, QVariantMap, QStringList)));
    m_bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                  this, SLOT(onBusLost()));
    auto *watcher = new QDBusServiceWatcher(networkManager(), m_bus,
                                            QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(
        watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &, const QString &owner) { onOwnerChanged(owner); });
}

void NetworkManagerSource::ask()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        networkManager(), objectPath(), propertiesInterface(), QStringLiteral("GetAll"));
    call << networkManager();
    call.setAutoStartService(false);
    delete m_asked; // Its answer would be an older one.
    m_asked = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(m_asked, &QDBusPendingCallWatcher::finished, this, &NetworkManagerSource::onAnswer);
}

void NetworkManagerSource::onAnswer()
{
    const QDBusPendingReply<QVariantMap> reply = *m_asked;
    m_asked->deleteLater();
    m_asked = nullptr;
    if (reply.isError()) {
        L::og()->info(QLatin1String("NetworkManager does not tell the network's state: ")
                      + reply.error().message());
        fallSilent();
        return;
    }
    m_properties.clear();
    take(reply.value());
}

void NetworkManagerSource::onOwnerChanged(const QString &owner)
{
    if (owner.isEmpty()) {
        delete m_asked;
        m_asked = nullptr;
        fallSilent();
    } else {
        ask(); // What an earlier owner told stands until the answer.
    }
}

void NetworkManagerSource::onPropertiesChanged(const QString &interface, const QVariantMap &changed,
                                               const QStringList &invalidated)
{
    if (interface != networkManager())
        return;
    // Changes mean nothing without what they change.
    if (m_report.standing != Standing::Told || !invalidated.isEmpty())
        ask();
    else
        take(changed);
}

void NetworkManagerSource::onBusLost()
{
    L::og()->info(QStringLiteral("The D-Bus connection that told the network's state is lost"));
    delete m_asked;
    m_asked = nullptr;
    fallSilent();
}

void NetworkManagerSource::take(const QVariantMap &properties)
{
    for (auto it = properties.begin(); it != properties.end(); ++it)
        m_properties.insert(it.key(), it.value());
    tell(Standing::Told);
}

void NetworkManagerSource::fallSilent()
{
    m_properties.clear();
    const bool hasTold =
        m_report.standing == Standing::Told || m_report.standing == Standing::Silent;
    tell(hasTold ? Standing::Silent : Standing::Absent);
}

void NetworkManagerSource::tell(NetworkReport::Standing standing)
{
    NetworkReport report;
    report.standing = standing;
    report.online = isOnline(m_properties);
    report.unmetered = report.online && isUnmetered(m_properties);
    if (report == m_report)
        return;
    m_report = report;
    Q_EMIT changed();
}
