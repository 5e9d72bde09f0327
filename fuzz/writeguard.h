// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/**
 * While one lives, this program changes files in one folder only: calls of the C library that would
 * make, write, rename or remove anything elsewhere fail with EACCES.
 *
 * Links are followed to find out where a path leads. One guard at a time, one thread.
 */
class WriteGuard
{
public:
    /** The folder as an absolute path without links. */
    explicit WriteGuard(const QByteArray &folder);
    ~WriteGuard();
    Q_DISABLE_COPY(WriteGuard)

    /** Whether anything had to be refused. */
    bool hasRefused() const;
};
