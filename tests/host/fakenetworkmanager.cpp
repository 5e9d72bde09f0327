// SPDX-License-Identifier: MIT
#include "fakenetworkmanager.h"

#include "testutils/childprogram.h"
#include <QDBusError>
#include <QDBusMessage>
#include <QFile>
#include <QUuid>

namespace {

constexpr int StartLimitMs = 20000;

QString service()
{
    return QStringLiteral("org.freedesktop.NetworkManager");
}

QString objectPath()
{
    return QStringLiteral("/org/freedesktop/NetworkManager");
}

} // namespace

PrivateBus::PrivateBus()
{
    QByteArray text =
        R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <listen>unix:path=@FOLDER@/socket</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*"/>
    <allow receive_sender="*"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";
    text.replace("@FOLDER@", QFile::encodeName(m_folder.path()));
    QFile configuration(m_folder.filePath(QStringLiteral("bus.conf")));
    if (!configuration.open(QIODevice::WriteOnly) || configuration.write(text) != text.size())
        qFatal("%s cannot be written", qPrintable(configuration.fileName()));
    configuration.close();
    startTiedToUs(m_process, QStringLiteral("/usr/bin/dbus-daemon"),
                  {QLatin1String("--config-file=") + configuration.fileName(),
                   QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    // Printed when it listens.
    QByteArray address;
    while (!address.endsWith('\n') && m_process.waitForReadyRead(StartLimitMs))
        address += m_process.readAllStandardOutput();
    m_address = QString::fromLocal8Bit(address.trimmed());
    if (m_address.isEmpty())
        qFatal("no message bus: %s", m_process.readAllStandardError().constData());
}

PrivateBus::~PrivateBus()
{
    stop();
}

void PrivateBus::stop()
{
    m_process.kill();
    m_process.waitForFinished(-1);
}

FakeNetworkManager::FakeNetworkManager(const PrivateBus &bus)
    : m_connectionName(QStringLiteral("fake-") + QUuid::createUuid().toString())
    , m_bus(QDBusConnection::connectToBus(bus.address(), m_connectionName))
{
    if (!m_bus.isConnected())
        qFatal("no connection to the bus: %s", qPrintable(m_bus.lastError().message()));
    keep(wifi());
}

FakeNetworkManager::~FakeNetworkManager()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void FakeNetworkManager::appear(bool withObject)
{
    m_bus.unregisterObject(objectPath());
    if (withObject
        && !m_bus.registerObject(objectPath(), this, QDBusConnection::ExportAllProperties))
        qFatal("the object cannot be registered");
    if (!m_bus.registerService(service()))
        qFatal("the service cannot be registered: %s", qPrintable(m_bus.lastError().message()));
}

void FakeNetworkManager::vanish()
{
    m_bus.unregisterService(service());
}

QVariantMap FakeNetworkManager::properties(const Network &network)
{
    return {{QStringLiteral("State"), network.state},
            {QStringLiteral("Connectivity"), network.connectivity},
            {QStringLiteral("PrimaryConnectionType"), network.type},
            {QStringLiteral("Metered"), network.metered}};
}

void FakeNetworkManager::set(const Network &network)
{
    keep(network);
    send(service(), properties(network), {});
}

void FakeNetworkManager::setOfOtherInterface(const Network &network)
{
    send(service() + QLatin1String(".Statistics"), properties(network), {});
}

void FakeNetworkManager::setAndInvalidate(const Network &network)
{
    keep(network);
    send(service(), {}, {QStringLiteral("State"), QStringLiteral("Metered")});
}

void FakeNetworkManager::setVersion(const QString &version)
{
    m_version = version;
    send(service(), {{QStringLiteral("Version"), version}}, {});
}

void FakeNetworkManager::keep(const Network &network)
{
    m_state = network.state;
    m_connectivity = network.connectivity;
    m_type = network.type;
    m_metered = network.metered;
}

void FakeNetworkManager::send(const QString &interface, const QVariantMap &changed,
                              const QStringList &invalidated)
{
    QDBusMessage signal =
        QDBusMessage::createSignal(objectPath(), QStringLiteral("org.freedesktop.DBus.Properties"),
                                   QStringLiteral("PropertiesChanged"));
    signal << interface << changed << invalidated;
    if (!m_bus.send(signal))
        qFatal("the signal cannot be sent");
}
