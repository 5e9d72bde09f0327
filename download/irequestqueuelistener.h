// SPDX-License-Identifier: MIT
#ifndef VEXA_IREQUESTQUEUELISTENER_H
#define VEXA_IREQUESTQUEUELISTENER_H

#include "vexa_export.h"

/** Who is told that a request queue has changed. The queue does not own it. */
class VEXA_EXPORT IRequestQueueListener
{
public:
    virtual ~IRequestQueueListener() = default;

    /**
     * Called after every change, without any lock, in the thread that made the change: the GUI
     * thread or the worker's.
     */
    virtual void onChanged() = 0;
};

#endif
