// SPDX-License-Identifier: MIT
#pragma once

#include "host/updaterig.h"
#include "testutils/killorders.h"
#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

/** How one region is found, and what its files are. */
enum class RegionFound {
    NotInstalled,
    WholeOld, ///< listed, every file identical to the archive that it was installed from
    WholeNew, ///< the same of the newer archive
    Pending, ///< listed as before, while its newer files are put in place; the next command goes on
    Damaged,
};

/**
 * A device on which the real program is killed: whole states of it can be put away and brought
 * back, and every region is compared with its archives byte by byte.
 *
 * Finland (zip), Sweden (tar.gz) and Norway (7z, which comes in several pieces) share a tile. The
 * server has a newer Finland for the same maps version, and a newer version of Finland and Sweden.
 */
class KillWorld : public UpdateRig
{
public:
    KillWorld();
    /**
     * To be called first: temporary folders are made in memory, where a sync takes no time. What a
     * killed program wrote stays on any file system.
     */
    static void useMemory();

    /** Puts the device away under a name, or brings such a state back. */
    void keep(const char *state);
    void restore(const char *state);
    /** Whether the archive of Finland on the server is the newer one of the same version. */
    void serveNewerFinland(bool newer);

    /** Runs a command until the point; without one, to its end. */
    ProgramRun runUntil(const KillPoint &point, const QStringList &command);
    /** All points of a run to its end. */
    QList<KillPoint> pointsOf(const QStringList &command);
    /**
     * The names of all calls of a run to its end, with those that wait for the disk. A rename or
     * link has " synced" behind its name if its thread waited behind its last write.
     */
    QList<QByteArray> callsOf(const QStringList &command);

    /** Ids in the content file, and the tiles of each as listed there. */
    QMap<QString, QStringList> listed() const;
    QStringList pendingIds() const;
    /** To be asked after the program has been started once since it was killed. */
    RegionFound find(const QString &id) const;
    /** Why a region is damaged; empty if it is not. */
    QString damage(const QString &id) const;
    /** Files of archives and unpacking that are left where downloads grow. */
    QStringList scratchFiles() const;
    /** What is in the tile cache and belongs to none of the regions as they are listed. */
    QStringList strayTiles() const;

    /** The tiles that a region may have, the oldest first. */
    QList<Tiles> versions(const QString &id) const { return m_versions.value(id); }
    static QStringList ids();

private:
    ProgramRun runWith(QProcessEnvironment environment, const KillPoint &point,
                       const QStringList &command);
    QString differenceFrom(const Tiles &tiles, const QStringList &listed) const;

    KillOrders m_orders;
    QMap<QString, QList<Tiles>> m_versions;
};

/** The part of the chain that a point belongs to, in words for the table. */
QString stepOf(const QByteArray &pointName);
/** Points of one kind stand for each other: one tile for the others, one folder for the others. */
QString kindOf(const KillPoint &point);
