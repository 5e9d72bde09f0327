// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/networksource.h"
#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <QVariantMap>

class QDBusPendingCallWatcher;

/**
 * Asks NetworkManager over D-Bus and follows what it tells, also when the service comes, goes or
 * comes back.
 *
 * Online is a network with a way out. One from which NetworkManager could not reach its own test
 * server counts too, because many networks block just that; a login page in front of the network
 * does not: it would answer in place of the content server. Mobile networks, also those behind
 * Bluetooth, are never unmetered; Wi-Fi and cables are unless NetworkManager says or guesses
 * otherwise; of any other kind it must say or guess so.
 *
 * Never starts the service, and never waits for it.
 */
class NetworkManagerSource : public NetworkSource
{
    Q_OBJECT

public:
    /** On the system bus, or on the bus with this address. */
    explicit NetworkManagerSource(const QString &busAddress = QString(), QObject *parent = nullptr);
    ~NetworkManagerSource() override;

    NetworkReport report() const override;

private Q_SLOTS:
    void onPropertiesChanged(const QString &interface, const QVariantMap &changed,
                             const QStringList &invalidated);
    void onBusLost();

private:
    void watchBus();
    void ask();
    void onAnswer();
    void onOwnerChanged(const QString &owner);
    void take(const QVariantMap &properties);
    void fallSilent();
    void tell(NetworkReport::Standing standing);

    const QString m_connectionName;
    QDBusConnection m_bus;
    QDBusPendingCallWatcher *m_asked = nullptr; // child; null unless an answer is awaited
    QVariantMap m_properties; // as told last
    NetworkReport m_report;
};
