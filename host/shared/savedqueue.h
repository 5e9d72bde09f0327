// SPDX-License-Identifier: MIT
#pragma once

#include "download/request.h"
#include <functional>
#include <QList>
#include <QString>
#include <QStringList>

/**
 * The engine's queue as it lies in the settings while no engine runs: what an earlier run left.
 *
 * Programs look at it, and take requests out of it, before they start a Worker; while one runs,
 * the queue's own interface is the way. Any thread; it keeps nothing.
 */
namespace SavedQueue {

/** All requests, oldest first. */
QList<Request> read();

/**
 * Takes out the requests that the function wants gone and writes the rest. If the transfer in
 * progress goes with them, its state and its partial file go too, so that the next request does
 * not take it for its own; so do archives that waited to be unpacked. Returns how many went.
 */
int removeIf(const std::function<bool(const Request &)> &unwanted);

/** Whether the user had paused the engine when it last ran. */
bool pausedByUser();
/** Makes it so for the next start. Also while an engine runs: it is not told. */
void setPausedByUser(bool paused);

/**
 * Removes the lock of the settings file if a killed program left it without its process id: Qt
 * cannot tell whose such a lock is, and would wait for half a minute. To be called by whoever
 * holds the DataSetLock, before a worker starts.
 */
void removeBrokenLock();

/** Where the move goes that had begun to take files out of its source; empty if there is none. */
QString begunMove();

/** Bytes of the transfer in progress that are there. */
qint64 bytesReceived();

} // namespace SavedQueue
