// SPDX-License-Identifier: MIT
#include "host/shared/networkbinding.h"

#include "host/shared/networkstate.h"
#include "host/shared/regioninstaller.h"

NetworkBinding::NetworkBinding(NetworkState *network, RegionInstaller *installer, QObject *parent)
    : QObject(parent)
    , m_network(network)
    , m_installer(installer)
{
    tellInstaller();
    connect(network, &NetworkState::changed, this, &NetworkBinding::tellInstaller);
    connect(installer, &RegionInstaller::networkChanged, this,
            [this] { m_network->setMobileAllowed(m_installer->mobileAllowed()); });
}

void NetworkBinding::tellInstaller()
{
    m_installer->setNetwork(m_network->online(), m_network->wifi(), m_network->mobileAllowed());
}
