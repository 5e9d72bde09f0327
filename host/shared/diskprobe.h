// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>

/**
 * Whether a transfer that gets no further waits for the server or for the disk: the engine waits
 * for room on a full disk without a word, and goes on by itself when there is some.
 */
class DiskProbe
{
    Q_DECLARE_TR_FUNCTIONS(DiskProbe)

public:
    /** Tries it in the folder where downloads grow. A sentence; empty if the disk takes data. */
    static QString trouble();
};
