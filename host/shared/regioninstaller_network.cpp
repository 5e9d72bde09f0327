// SPDX-License-Identifier: MIT
// What the network and the user allow the engine, and what waits for them.
#include "download/downloadmanageriface.h"
#include "host/shared/regioninstaller.h"
#include "host/shared/savedqueue.h"
#include <utility>

bool RegionInstaller::paused() const
{
    return currentWait() == WaitReason::PausedByUser;
}

bool RegionInstaller::online() const
{
    return m_online;
}

bool RegionInstaller::wifi() const
{
    return m_wifi;
}

bool RegionInstaller::mobileAllowed() const
{
    return m_mobileAllowed;
}

void RegionInstaller::setOnline(bool online)
{
    setNetwork(online, m_wifi, m_mobileAllowed);
}

void RegionInstaller::setWifi(bool wifi)
{
    setNetwork(m_online, wifi, m_mobileAllowed);
}

void RegionInstaller::setMobileAllowed(bool allowed)
{
    setNetwork(m_online, m_wifi, allowed);
}

void RegionInstaller::setNetwork(bool online, bool wifi, bool mobileAllowed)
{
    if (online == m_online && wifi == m_wifi && mobileAllowed == m_mobileAllowed)
        return;
    m_online = online;
    m_wifi = wifi;
    m_mobileAllowed = mobileAllowed;
    applyNetwork();
    if (!networkUsable())
        takeUpBroken();
    Q_EMIT networkChanged();
}

void RegionInstaller::setNetworkPatience(int ms)
{
    m_networkPatience = ms;
}

bool RegionInstaller::networkUsable() const
{
    return m_online && (m_wifi || m_mobileAllowed);
}

// The engine looks at the Wi-Fi only when it is asked whether it may go online. What forbids is
// said first and what permits last, so that no moment in between lets a request out.
void RegionInstaller::applyNetwork()
{
    if (!m_engineReady)
        return;
    // The network's return lifts a suspension that the network has caused. The user may have paused
    // since; then the engine must not hear of the return.
    const bool mayGoOnline = m_online && !m_paused;
    if (!mayGoOnline)
        m_iface->allowGoOnline(false);
    m_iface->setHasWiFi(m_wifi);
    m_iface->allowGprsConnection(m_mobileAllowed);
    if (mayGoOnline)
        m_iface->allowGoOnline(true);
    // A resume() that came while there was no network was refused; the wish still stands.
    if (!m_paused && networkUsable() && m_iface->suspended())
        m_iface->resume();
    updateWaiting();
}

void RegionInstaller::pause()
{
    if (m_paused)
        return;
    m_paused = true;
    if (m_engineReady)
        holdEngine();
    updateWaiting();
    Q_EMIT pausedChanged();
}

// An engine that the network has suspended takes no notice of the user's wish. To resume it for a
// moment would set its transfer going, so it is left as it is, and the wish is written for it.
void RegionInstaller::holdEngine()
{
    if (!m_iface->suspended())
        m_iface->suspend();
    SavedQueue::setPausedByUser(true);
    applyNetwork();
}

void RegionInstaller::resume()
{
    const bool before = paused();
    m_paused = false;
    if (m_engineReady) {
        SavedQueue::setPausedByUser(false);
        applyNetwork();
    }
    updateWaiting();
    if (before)
        Q_EMIT pausedChanged();
}

WaitReason RegionInstaller::currentWait() const
{
    if (m_paused)
        return WaitReason::PausedByUser;
    if (!m_engineReady || !m_iface->suspended())
        return WaitReason::None;
    if (!m_online)
        return WaitReason::NetworkNotPermitted;
    if (!networkUsable())
        return WaitReason::NoWifi;
    return WaitReason::PausedByUser; // at the engine's own interface
}

// Suspension stops downloads only; what is being unpacked or moved goes on.
void RegionInstaller::updateWaiting()
{
    const WaitReason wait = currentWait();
    const QString active = m_engineReady ? m_iface->currentlyActiveId() : QString();
    const QList<Run> runs = m_runs;
    for (const Run &run : runs) {
        RegionStatus next = status(run.id);
        const bool downloads = next.state == RegionState::Queued
            || next.state == RegionState::Waiting || next.state == RegionState::Downloading;
        if (run.dead || !downloads || run.id != active)
            continue;
        next.state = wait == WaitReason::None ? RegionState::Downloading : RegionState::Waiting;
        next.wait = wait;
        if (wait != WaitReason::None) {
            next.bytesPerSecond = 0;
            next.remainingMs = -1;
            if (Run *live = findRun(run.id, run.url))
                live->meter.restart();
        }
        setStatus(run.id, next);
    }
}

// A connection often breaks before the platform says that the network is gone.
void RegionInstaller::noteBroken(const QString &id)
{
    QElapsedTimer since;
    since.start();
    m_broken.insert(id, since);
}

// It was not the server then: those downloads go on when there is a network again.
void RegionInstaller::takeUpBroken()
{
    const QHash<QString, QElapsedTimer> broken = std::exchange(m_broken, {});
    for (auto it = broken.begin(); it != broken.end(); ++it) {
        if (it->elapsed() >= m_networkPatience || status(it.key()).state != RegionState::Failed)
            continue; // or asked for again, or removed, since
        waitForNetwork(PendingInstall(), it.key());
        Q_EMIT pendingChanged();
    }
    noteBusy();
}

void RegionInstaller::waitForNetwork(PendingInstall entry, const QString &id)
{
    entry.id = id;
    entry.attempt = 0; // What is left of the last one in the engine is none of its business.
    beginAgain(entry);
    if (m_journal.ids().value(0) != id)
        return; // It waits for those ahead of it first.
    RegionStatus status;
    status.state = RegionState::Waiting;
    status.wait = m_online ? WaitReason::NoWifi : WaitReason::NetworkNotPermitted;
    setStatus(id, status);
}
