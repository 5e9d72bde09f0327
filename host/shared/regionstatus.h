// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QtGlobal>

/** Where a region stands; see RegionInstaller for how one leads to the next. */
enum class RegionState {
    NotInstalled,
    Queued, ///< its turn has not come
    Waiting, ///< its turn has come, but the network may not be used; WaitReason tells why
    Downloading,
    Unpacking,
    Moving,
    Recording, ///< the files are in place, the content file is written
    Installed,
    Failed, ///< the last request failed; an earlier version may still be installed
    Cancelled, ///< the last request was cancelled; an earlier version may still be installed
};

/** Why a region waits. */
enum class WaitReason {
    None,
    PausedByUser,
    NetworkNotPermitted, ///< there is no network, or the program says that there is none
    NoWifi, ///< there is one that costs money, and the user has not allowed that
};

/** What kind of failure it was: programs choose their exit code by it. */
enum class FailureKind {
    None,
    Network, ///< the server could not be reached or did not give the file
    Archive, ///< the file came, but it is not an archive of tiles
    Disk, ///< files could not be put into place or recorded
    Catalogue, ///< the catalogue has no such region, or no usable address for it
};

/** Where one region stands and how far it is. A plain value. */
struct RegionStatus
{
    RegionState state = RegionState::NotInstalled;
    WaitReason wait = WaitReason::None;
    FailureKind failure = FailureKind::None;
    QString reason; ///< the failure in words, for people; else empty
    qint64 bytes = 0; ///< of the archive while downloading, of its content while unpacking
    qint64 total = 0; ///< 0 while unknown
    qint64 bytesPerSecond = 0; ///< 0 while unknown
    qint64 remainingMs = -1; ///< -1 while unknown

    /** From 0 to 1, or -1 while unknown. */
    double fraction() const;
};

bool operator==(const RegionStatus &a, const RegionStatus &b);

/** Words for a RegionStatus. */
class RegionWords
{
    Q_DECLARE_TR_FUNCTIONS(RegionWords)

public:
    /** The state as scripts and QML compare it: "notInstalled", "queued", "waiting" and so on. */
    static QString name(RegionState state);
    /** "pausedByUser", "networkNotPermitted", "noWifi", or empty. */
    static QString name(WaitReason reason);
    /** Why it waits, for people; empty for None. */
    static QString reason(WaitReason reason);
    /** One sentence that says where the region stands, in the user's language. */
    static QString sentence(const RegionStatus &status);
    /** A time span for people: "2 min", "1 h 5 min". */
    static QString duration(qint64 ms);
    /** A size for people: "850 kB", "7.1 MB"; in powers of 1000, as catalogues give them. */
    static QString size(qint64 bytes);
};
