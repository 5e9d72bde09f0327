// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/**
 * A number in the fragment of an address, by which the signals of one attempt to download it are
 * told from late ones of an earlier attempt. The engine hands the address through its signals; the
 * fragment never reaches the server.
 */
namespace AttemptTag {

/** The address, percent-encoded, with the attempt's number (above 0) as its fragment. */
QString tagged(const QString &url, int attempt);

/** The number in an address; 0 if it has none, and also for the empty address. */
int of(const QString &url);

/** The address as the server knows it. */
QString untagged(const QString &url);

} // namespace AttemptTag
