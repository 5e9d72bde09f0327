// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/networksource.h"
#include <memory>
#include <QObject>
#include <QString>

/**
 * How the device is connected, and what the user says about that, for QML and for the engine.
 *
 * The platform is asked: NetworkManager over D-Bus, on both Qts. Where it is not there, or where
 * the user does not believe it, the user's own words count:
 *
 *     manual  platform               source      online, wifi
 *     off     tells                  "platform"  what the platform says
 *     off     has not answered yet   "none"      false
 *     off     fell silent            "none"      false, until it speaks again
 *     off     is not there           "manual"    manualOnline, manualWifi
 *     on      any                    "manual"    manualOnline, manualWifi
 *
 * A platform that fell silent is not replaced by the user's words: those may be from another place,
 * and a download over the wrong network costs money.
 *
 * The user's choices survive a restart, in the settings of the organisation "vexa" and the
 * application "maps": "network/manual", "network/manualOnline", "network/manualWifi" and
 * "network/mobileAllowed". GUI thread; NetworkBinding hands all of this to a RegionInstaller.
 */
class NetworkState : public QObject
{
    Q_OBJECT
    /** Whether the platform tells now. */
    Q_PROPERTY(bool available READ available NOTIFY changed)
    /** Whether there is a network that leads to servers. */
    Q_PROPERTY(bool online READ online NOTIFY changed)
    /** Whether its traffic costs nothing: Wi-Fi or a cable, not a metered one; false offline. */
    Q_PROPERTY(bool wifi READ wifi NOTIFY changed)
    /** Online, but not as wifi has it: the mobile network, or Wi-Fi of another phone. */
    Q_PROPERTY(bool metered READ metered NOTIFY changed)
    /** Who says so: "platform", "manual" or "none". */
    Q_PROPERTY(QString source READ source NOTIFY changed)
    /** Whether the user's words count in any case; off at first. */
    Q_PROPERTY(bool manual READ manual WRITE setManual NOTIFY changed)
    /** The user's word that there is a network; true at first. */
    Q_PROPERTY(bool manualOnline READ manualOnline WRITE setManualOnline NOTIFY changed)
    /** The user's word that it is Wi-Fi or a cable; false at first, since a wrong yes costs. */
    Q_PROPERTY(bool manualWifi READ manualWifi WRITE setManualWifi NOTIFY changed)
    /** Whether the user lets downloads use a metered network; false at first. */
    Q_PROPERTY(bool mobileAllowed READ mobileAllowed WRITE setMobileAllowed NOTIFY changed)

public:
    /** Asks the platform. */
    explicit NetworkState(QObject *parent = nullptr);
    /** Asks this source. */
    explicit NetworkState(std::unique_ptr<NetworkSource> source, QObject *parent = nullptr);
    ~NetworkState() override;

    bool available() const;
    bool online() const;
    bool wifi() const;
    bool metered() const;
    QString source() const;

    bool manual() const;
    bool manualOnline() const;
    bool manualWifi() const;
    bool mobileAllowed() const;
    void setManual(bool manual);
    void setManualOnline(bool online);
    void setManualWifi(bool wifi);
    void setMobileAllowed(bool allowed);

Q_SIGNALS:
    /** Some property, whichever. */
    void changed();

private:
    bool byHand() const;
    void choose(bool *choice, bool value, const char *name);

    const std::unique_ptr<NetworkSource> m_source;
    bool m_manual = false;
    bool m_manualOnline = true;
    bool m_manualWifi = false;
    bool m_mobileAllowed = false;
};
