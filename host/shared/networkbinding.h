// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class NetworkState;
class RegionInstaller;

/**
 * Lets the network decide whether an installer's downloads may run: they stop when the network
 * goes, also in the middle of a file, and go on there when it is back.
 *
 * A program makes one after installer and network state and before the worker starts, and destroys
 * it before either. Nothing is fetched until the network state knows that it may be. The permission
 * for the mobile network may be given to either of the two; the network state keeps it. GUI thread.
 */
class NetworkBinding : public QObject
{
    Q_OBJECT

public:
    /** Neither is owned. */
    NetworkBinding(NetworkState *network, RegionInstaller *installer, QObject *parent = nullptr);

private:
    void tellInstaller();

    NetworkState *const m_network; // not owned
    RegionInstaller *const m_installer; // not owned
};
