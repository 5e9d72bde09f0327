// SPDX-License-Identifier: MIT
#pragma once

#include "download/downloadmanager.h"
#include "download/requestqueue.h"
#include <functional>
#include <QString>
#include <QStringList>

/**
 * A queue and its download manager in the test's own thread. Make the TemporaryHome first; what is
 * in the settings then is taken up.
 */
class StepEngine : private IRequestQueueListener
{
public:
    StepEngine();

    /** Works until nothing is queued any more, or until stop(). */
    void run();
    /** Ends run() at its next turn; may come from a handler. */
    void stop();

    /** The events that begin so. */
    QStringList eventsLike(const QString &beginning) const;

    /**
     * What came while run() worked, in order and with the values in the signals' order:
     * "finished(3, url, id)", "error(3, id, 2, url)", "progress(4, url, id, 0, 0, 0)", and
     * "dequeued" for every change of the queue.
     */
    QStringList events;
    /** Called within each event. */
    std::function<void(const QString &event)> onEvent;

private:
    bool m_running = false;

public:
    // Behind what the queue's listener uses: restored requests are told of at once.
    RequestQueue<Request> queue;
    DownloadManager manager;

private:
    void onChanged() override;
    void add(const QString &event);
};

/** The requests that a test enqueues. */
namespace Step {

Request unpack(const QString &id, const QString &archive, const QString &url);
Request move(const QString &id, const QString &source, const QString &destination,
             const QString &url);
/** The folder into which archives are unpacked. */
QString scratchFolder();
/** All files and folders below a folder, sorted; folders with a slash at the end. */
QStringList found(const QString &folder);

} // namespace Step
