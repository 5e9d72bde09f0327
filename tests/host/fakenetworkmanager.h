// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariantMap>

/**
 * A message bus of the test's own, with a socket in a temporary folder; nobody else is on it. Ends
 * with the test program, also when that is killed.
 */
class PrivateBus
{
public:
    /** Runs when it returns; ends the test program if that cannot be. */
    PrivateBus();
    ~PrivateBus();
    Q_DISABLE_COPY(PrivateBus)

    QString address() const { return m_address; }
    /** Ends at once; everybody loses the connection. */
    void stop();

private:
    QTemporaryDir m_folder;
    QProcess m_process;
    QString m_address;
};

/**
 * NetworkManager as far as its properties go, played on a private bus. Has Wi-Fi at first, and is
 * not on the bus before appear().
 */
class FakeNetworkManager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.NetworkManager")
    Q_PROPERTY(uint State MEMBER m_state)
    Q_PROPERTY(uint Connectivity MEMBER m_connectivity)
    Q_PROPERTY(QString PrimaryConnectionType MEMBER m_type)
    Q_PROPERTY(uint Metered MEMBER m_metered)
    Q_PROPERTY(QString Version MEMBER m_version)

public:
    // The numbers are NetworkManager's own.
    enum State { Asleep = 10, Disconnected = 20, ConnectedLocal = 50, Site = 60, Global = 70 };
    enum Connectivity { Unknown = 0, None = 1, Portal = 2, Limited = 3, Full = 4 };
    enum Metered { MeteredUnknown = 0, Yes = 1, No = 2, GuessYes = 3, GuessNo = 4 };

    /** All of the network in one go, as told in one signal. */
    struct Network
    {
        uint state = Global;
        uint connectivity = Full;
        QString type = QStringLiteral("802-11-wireless");
        uint metered = GuessNo;
    };
    static Network wifi() { return {}; }
    static Network mobile() { return {Global, Full, QStringLiteral("gsm"), GuessYes}; }
    static Network nothing() { return {Disconnected, None, QString(), MeteredUnknown}; }

    explicit FakeNetworkManager(const PrivateBus &bus);
    ~FakeNetworkManager() override;

    /** Takes the service's name. With an object, it answers; without one, it has nothing to say. */
    void appear(bool withObject = true);
    /** Gives the name up. */
    void vanish();
    /** Changes all of it and tells what has changed. */
    void set(const Network &network);
    /** Changes all of it and tells only that something has. */
    void setAndInvalidate(const Network &network);
    /** The same values, said to be another interface's; keeps its own. */
    void setOfOtherInterface(const Network &network);
    /** A change of what has nothing to do with the network. */
    void setVersion(const QString &version);

private:
    static QVariantMap properties(const Network &network);
    void keep(const Network &network);
    void send(const QString &interface, const QVariantMap &changed, const QStringList &invalidated);

    const QString m_connectionName;
    QDBusConnection m_bus;
    uint m_state = 0;
    uint m_connectivity = 0;
    QString m_type;
    uint m_metered = 0;
    QString m_version;
};
