// SPDX-License-Identifier: MIT
#include "host/shared/regionstatus.h"

#include <algorithm>
#include <QLocale>
#include <tuple>

namespace {

constexpr qint64 Second = 1000;

auto fields(const RegionStatus &s)
{
    return std::tie(s.state, s.wait, s.failure, s.reason, s.bytes, s.total, s.bytesPerSecond,
                    s.remainingMs);
}

} // namespace

double RegionStatus::fraction() const
{
    if (total <= 0)
        return -1;
    return std::clamp(double(bytes) / double(total), 0.0, 1.0);
}

bool operator==(const RegionStatus &a, const RegionStatus &b)
{
    return fields(a) == fields(b);
}

QString RegionWords::name(RegionState state)
{
    switch (state) {
    case RegionState::NotInstalled:
        return QStringLiteral("notInstalled");
    case RegionState::Queued:
        return QStringLiteral("queued");
    case RegionState::Waiting:
        return QStringLiteral("waiting");
    case RegionState::Downloading:
        return QStringLiteral("downloading");
    case RegionState::Unpacking:
        return QStringLiteral("unpacking");
    case RegionState::Moving:
        return QStringLiteral("moving");
    case RegionState::Recording:
        return QStringLiteral("recording");
    case RegionState::Installed:
        return QStringLiteral("installed");
    case RegionState::Failed:
        return QStringLiteral("failed");
    case RegionState::Cancelled:
        break;
    }
    return QStringLiteral("cancelled");
}

QString RegionWords::name(WaitReason reason)
{
    switch (reason) {
    case WaitReason::PausedByUser:
        return QStringLiteral("pausedByUser");
    case WaitReason::NetworkNotPermitted:
        return QStringLiteral("networkNotPermitted");
    case WaitReason::NoWifi:
        return QStringLiteral("noWifi");
    case WaitReason::None:
        break;
    }
    return QString();
}

QString RegionWords::reason(WaitReason reason)
{
    switch (reason) {
    case WaitReason::PausedByUser:
        return tr("Paused by you");
    case WaitReason::NetworkNotPermitted:
        return tr("Waiting for a network");
    case WaitReason::NoWifi:
        return tr("Waiting for Wi-Fi");
    case WaitReason::None:
        break;
    }
    return QString();
}

QString RegionWords::sentence(const RegionStatus &status)
{
    const double fraction = status.fraction();
    const int percent = fraction < 0 ? -1 : int(fraction * 100);
    switch (status.state) {
    case RegionState::NotInstalled:
        return tr("Not installed");
    case RegionState::Queued:
        return tr("Waiting for its turn");
    case RegionState::Waiting:
        return reason(status.wait);
    case RegionState::Downloading:
        if (percent < 0)
            return status.bytes > 0 ? tr("Downloading, %1").arg(size(status.bytes))
                                    : tr("Downloading");
        if (status.remainingMs < 0)
            return tr("Downloading %1 %").arg(percent);
        return tr("Downloading %1 %, %2 left").arg(percent).arg(duration(status.remainingMs));
    case RegionState::Unpacking:
        return percent < 0 ? tr("Unpacking") : tr("Unpacking %1 %").arg(percent);
    case RegionState::Moving:
        return tr("Putting the files into place");
    case RegionState::Recording:
        return tr("Finishing");
    case RegionState::Installed:
        return tr("Installed");
    case RegionState::Failed:
        return status.reason;
    case RegionState::Cancelled:
        break;
    }
    return tr("Cancelled");
}

QString RegionWords::duration(qint64 ms)
{
    const qint64 seconds = std::max<qint64>(ms / Second, 0);
    if (seconds < 60)
        return tr("%1 s").arg(seconds);
    const qint64 minutes = (seconds + 30) / 60;
    if (minutes < 60)
        return tr("%1 min").arg(minutes);
    return tr("%1 h %2 min").arg(minutes / 60).arg(minutes % 60);
}

QString RegionWords::size(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, bytes < 1000 * 1000 ? 0 : 1,
                                       QLocale::DataSizeSIFormat);
}
