// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QProcessEnvironment>
#include <QString>

/** A call of a program that changes a file: its name is the call and the file's. */
struct KillPoint
{
    QByteArray name;
    int number = 0; ///< of the points with this name, from 1; 0 for none

    QByteArray text() const { return name + ", " + QByteArray::number(number); }
};

/**
 * Tells the library of killpoints.cpp, in a program that a test starts, where to kill it, and hears
 * from it which points there were. For one program at a time.
 *
 *     orders.give(&environment, {"rename content.xml", 1});
 *     ChildProgram child(program, arguments, environment); // dies just ahead of the call
 */
class KillOrders
{
public:
    /** Keeps two files in the folder, which must exist. */
    explicit KillOrders(const QString &folder);

    /**
     * Puts the orders into the environment of a program that is linked with the library and starts
     * the count anew. Without a point the program lives and only tells.
     */
    void give(QProcessEnvironment *environment, const KillPoint &point = {}) const;
    /** Has a program that knows nothing of the library load it too. */
    static void preload(QProcessEnvironment *environment, const QString &library);
    /**
     * The point's call fails with this errno in place of the kill; with lasting, so do all such
     * calls behind it.
     */
    static void failInstead(QProcessEnvironment *environment, int errorNumber, bool lasting);
    /** Makes calls that wait for the disk points too. */
    static void withSyncs(QProcessEnvironment *environment);

    /** The names of the last run's points, in order. */
    QList<QByteArray> names() const;
    /** The last run's points, without those whose names chance has made. */
    QList<KillPoint> points() const;

private:
    QString m_state;
    QString m_log;
};
