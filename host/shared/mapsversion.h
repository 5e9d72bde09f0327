// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/** What a content server's version.txt says, and how a device spells it. */
namespace MapsVersion {

/** No version.txt is longer, in bytes. */
constexpr int MaxFileSize = 4096;

/**
 * The version in the bytes of a version.txt; empty if they are none. What is returned can be part
 * of a file name.
 */
QString parse(const QByteArray &bytes);

/**
 * As the content file gives it back ("3.1.12.5" as "03.01.12.05"): the device looks for the
 * catalogue under that one.
 */
QString asInstalled(const QString &version);

} // namespace MapsVersion
