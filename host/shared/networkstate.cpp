// SPDX-License-Identifier: MIT
#include "host/shared/networkstate.h"

#include "host/shared/networkmanagersource.h"
#include "plugin/logger.h"
#include <QSettings>

namespace {

using Standing = NetworkReport::Standing;

constexpr char ManualKey[] = "network/manual";
constexpr char ManualOnlineKey[] = "network/manualOnline";
constexpr char ManualWifiKey[] = "network/manualWifi";
constexpr char MobileAllowedKey[] = "network/mobileAllowed";

// Not the file of the download state, which the engine rewrites all the time.
class ChoiceSettings : public QSettings
{
public:
    ChoiceSettings()
        : QSettings(QStringLiteral("vexa"), QStringLiteral("maps"))
    { }

    void read(const char *key, bool *choice) const
    {
        *choice = value(QLatin1String(key), *choice).toBool();
    }
};

} // namespace

NetworkState::NetworkState(QObject *parent)
    : NetworkState(std::make_unique<NetworkManagerSource>(), parent)
{ }

NetworkState::NetworkState(std::unique_ptr<NetworkSource> source, QObject *parent)
    : QObject(parent)
    , m_source(std::move(source))
{
    const ChoiceSettings settings;
    settings.read(ManualKey, &m_manual);
    settings.read(ManualOnlineKey, &m_manualOnline);
    settings.read(ManualWifiKey, &m_manualWifi);
    settings.read(MobileAllowedKey, &m_mobileAllowed);
    connect(m_source.get(), &NetworkSource::changed, this, &NetworkState::changed);
}

NetworkState::~NetworkState() = default;

bool NetworkState::byHand() const
{
    return m_manual || m_source->report().standing == Standing::Absent;
}

bool NetworkState::available() const
{
    return m_source->report().standing == Standing::Told;
}

bool NetworkState::online() const
{
    return byHand() ? m_manualOnline : m_source->report().online;
}

bool NetworkState::wifi() const
{
    return online() && (byHand() ? m_manualWifi : m_source->report().unmetered);
}

bool NetworkState::metered() const
{
    return online() && !wifi();
}

QString NetworkState::source() const
{
    if (byHand())
        return QStringLiteral("manual");
    return available() ? QStringLiteral("platform") : QStringLiteral("none");
}

bool NetworkState::manual() const
{
    return m_manual;
}

bool NetworkState::manualOnline() const
{
    return m_manualOnline;
}

bool NetworkState::manualWifi() const
{
    return m_manualWifi;
}

bool NetworkState::mobileAllowed() const
{
    return m_mobileAllowed;
}

void NetworkState::setManual(bool manual)
{
    choose(&m_manual, manual, ManualKey);
}

void NetworkState::setManualOnline(bool online)
{
    choose(&m_manualOnline, online, ManualOnlineKey);
}

void NetworkState::setManualWifi(bool wifi)
{
    choose(&m_manualWifi, wifi, ManualWifiKey);
}

void NetworkState::setMobileAllowed(bool allowed)
{
    choose(&m_mobileAllowed, allowed, MobileAllowedKey);
}

void NetworkState::choose(bool *choice, bool value, const char *name)
{
    if (*choice == value)
        return;
    *choice = value;
    ChoiceSettings settings;
    settings.setValue(QLatin1String(name), value);
    settings.sync();
    // The choice holds for this run all the same.
    if (settings.status() != QSettings::NoError)
        L::og()->warning(QLatin1String("The network choices could not be written to ")
                         + settings.fileName());
    Q_EMIT changed();
}
