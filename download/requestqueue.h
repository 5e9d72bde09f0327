// SPDX-License-Identifier: MIT
#ifndef VEXA_REQUESTQUEUE_H
#define VEXA_REQUESTQUEUE_H

#include "download/irequestqueuelistener.h"
#include "plugin/logger.h"
#include "plugin/qtcompat.h"
#include "plugin/vexasettings.h"
#include <algorithm>
#include <atomic>
#include <QList>
#include <QMutex>
#include <QMutexLocker>
#include <QQueue>
#include <utility>

/**
 * The hand-over of work from the GUI thread to the worker thread, first in, first out.
 *
 * The GUI thread enqueues. The worker takes the head, works on it while it stays queued, and takes
 * it out when the step is over. Every change is written to the array "requests" of the
 * download-state settings before the call returns, so a step that a crash cuts short is found
 * there and done again.
 *
 * Used as RequestQueue<Request> only. The Worker owns the one queue. Thread-safe unless a member
 * says otherwise; what QQueue offers beside the members below is not, and needs the list mutex.
 * The listener is called without a lock.
 *
 * Locks are taken in this order: list mutex, then the settings', then the wait mutex. A wake-up
 * cannot be lost: the waiter tests again under the wait mutex, and it is woken under it.
 */
template <typename T> class RequestQueue : public QQueue<T>
{
public:
    /** The listener is not owned and must outlive the queue. */
    explicit RequestQueue(IRequestQueueListener *listener)
        : m_listener(listener)
    {
        log("RequestQueue<T>::RequestQueue(IRequestQueueListener*) [with T = Request]");
    }

    ~RequestQueue() { log("RequestQueue<T>::~RequestQueue() [with T = Request]"); }

    Q_DISABLE_COPY(RequestQueue)

    /** Appends a copy of the item and wakes who waits for one. */
    void enqueue(const T &item)
    {
        log("void RequestQueue<T>::enqueue(const T&) [with T = Request]");
        {
            const QMutexLocker lock(&listMutex);
            log("Enqueing an Item ..."); // The spelling is fixed: log texts are an interface.
            QQueue<T>::enqueue(item);
            changed();
            wake();
        }
        notify();
    }

    /**
     * Returns the oldest item, which stays queued. Waits as long as there is none. An empty item
     * means that the queue was stopped.
     */
    T head()
    {
        log("T RequestQueue<T>::head() [with T = Request]");
        while (waitForItem()) {
            const QMutexLocker lock(&listMutex);
            log("Dequeing an Item ..."); // Says so although it takes nothing out.
            m_size = this->size(); // Somebody may have used the list itself.
            if (!this->isEmpty()) // It may have been removed since the wait.
                return this->first();
        }
        return T();
    }

    /** Takes the oldest item out; waits and stops like head(). */
    T dequeue()
    {
        log("T RequestQueue<T>::dequeue() [with T = Request]");
        while (waitForItem()) {
            T item;
            {
                const QMutexLocker lock(&listMutex);
                log("Dequeing an Item ...");
                m_size = this->size();
                if (this->isEmpty())
                    continue;
                item = QQueue<T>::dequeue();
                changed();
            }
            notify();
            return item;
        }
        return T();
    }

    /**
     * Takes the oldest item out if it is still this one; never waits. A request may have been
     * removed by a cancel while the worker was busy with it, and the head is then another's.
     * Returns whether it was the head.
     */
    bool dequeueIfHead(const T &item)
    {
        log("T RequestQueue<T>::dequeue() [with T = Request]");
        {
            const QMutexLocker lock(&listMutex);
            log("Dequeing an Item ...");
            if (this->isEmpty() || !(this->first() == item))
                return false;
            QQueue<T>::dequeue();
            changed();
        }
        notify();
        return true;
    }

    /** Whether this is the oldest item. */
    bool isHead(const T &item) const
    {
        const QMutexLocker lock(&listMutex);
        return !this->isEmpty() && this->first() == item;
    }

    /** Removes every item with this address: all the steps of one download. */
    void removeRequests(const QString &url)
    {
        log("void RequestQueue<T>::removeRequests(const QString&) [with T = Request]");
        const QString wanted = url; // It may be that of an item, which moves below.
        {
            const QMutexLocker lock(&listMutex);
            if (!this->isEmpty()) {
                this->erase(std::remove_if(this->begin(), this->end(),
                                           [&wanted](const T &item) { return item.url == wanted; }),
                            this->end());
                changed();
            }
        }
        notify();
    }

    /** Removes everything. */
    void removeAllRequests()
    {
        log("void RequestQueue<T>::removeAllRequests() [with T = Request]");
        {
            const QMutexLocker lock(&listMutex);
            if (!this->isEmpty()) {
                this->clear();
                changed();
            }
        }
        notify();
    }

    /**
     * Takes up what an earlier run left in the settings, if the queue is empty; an item that is
     * already queued was mirrored there, so then there is nothing to take up. The settings are
     * rewritten once, when all is in memory: a crash meanwhile loses nothing. Logs and tells the
     * listener as if each item were enqueued. Sets hasSavedTransfer if there was any.
     */
    void restoreSaved()
    {
        qsizetype restored = 0;
        {
            const QMutexLocker lock(&listMutex);
            if (!this->isEmpty())
                return;
            {
                const VexaSettings::Locker settings;
                this->append(T::readAll(*settings));
            }
            restored = this->size();
            if (restored == 0)
                return;
            for (qsizetype i = 0; i < restored; ++i) {
                log("void RequestQueue<T>::enqueue(const T&) [with T = Request]");
                log("Enqueing an Item ...");
            }
            hasSavedTransfer = true;
            changed();
            wake();
        }
        for (; restored > 0; --restored)
            notify();
    }

    /** Writes the whole array into the settings and syncs them. The caller holds listMutex. */
    int serialize(QSettings &settings)
    {
        settings.beginGroup(QStringLiteral("requests"));
        settings.remove(QString());
        settings.endGroup();
        settings.beginWriteArray(QStringLiteral("requests"));
        int index = 0;
        for (const T &item : std::as_const(*this)) {
            settings.setArrayIndex(index++);
            item.serialize(settings);
        }
        settings.endArray();
        settings.sync();
        return 0;
    }

    /** A copy of all items, oldest first. */
    QList<T> snapshot() const
    {
        QList<T> copy;
        const QMutexLocker lock(&listMutex);
        // One by one: a list that is shared is read here and changed there without the lock.
        copy.reserve(this->size());
        for (const T &item : *this)
            copy.append(item);
        return copy;
    }

    /** From now on head() and dequeue() return empty items at once, and who waits is woken. */
    void stop()
    {
        stopped = true;
        wake();
    }

    VexaCompat::WaitCondition itemAvailable; ///< woken after an enqueue and by stop()
    QMutex waitMutex; ///< held only around the wait, and to wake
    mutable QMutex listMutex; ///< guards the list and the writing of its copy in the settings
    std::atomic<bool> stopped {false}; ///< set by Worker::stop()
    /** The head goes on with a transfer of an earlier run; the step that begins with it clears it.
     */
    std::atomic<bool> hasSavedTransfer {false};

private:
    static void log(const char *text)
    {
        if (L::og()->passes(L::Trace))
            L::og()->trace(QString::fromLatin1(text));
    }

    // Returns whether there is an item; false means that the queue was stopped.
    bool waitForItem()
    {
        if (stopped)
            return false;
        // Tested before the lock on purpose: a queue with work costs no second lock.
        if (m_size > 0)
            return true;
        log("Queue empty. Sleeping ...");
        {
            const QMutexLocker lock(&waitMutex);
            while (m_size == 0 && !stopped)
                itemAvailable.wait(&waitMutex);
        }
        log("Got an Item. Waking up ...");
        return !stopped;
    }

    void wake()
    {
        const QMutexLocker lock(&waitMutex);
        itemAvailable.wakeAll();
    }

    // After every change of the list, under listMutex.
    void changed()
    {
        m_size = this->size();
        const VexaSettings::Locker settings;
        if (settings.generation() == m_writtenIn)
            serializeOver(*settings);
        else
            serialize(*settings);
        m_written = *this;
        m_writtenIn = settings.generation();
    }

    // Leaves the same array as serialize(), where the array is the one that was written last: of a
    // long queue most stays as it is.
    void serializeOver(QSettings &settings)
    {
        settings.beginWriteArray(QStringLiteral("requests"), int(this->size()));
        for (int i = 0; i < int(this->size()); ++i) {
            const T &item = this->at(i);
            const bool isNew = i >= int(m_written.size());
            if (!isNew && item == m_written.at(i) && item.state == m_written.at(i).state)
                continue;
            settings.setArrayIndex(i);
            if (isNew)
                item.serialize(settings);
            else
                item.serializeOver(m_written.at(i), settings);
        }
        settings.endArray();
        settings.beginGroup(QStringLiteral("requests"));
        for (auto i = this->size(); i < m_written.size(); ++i)
            settings.remove(QString::number(i + 1));
        settings.endGroup();
        settings.sync();
    }

    void notify()
    {
        if (m_listener)
            m_listener->onChanged();
    }

    IRequestQueueListener *const m_listener; // not owned
    QList<T> m_written; // what the array in the settings holds; under listMutex
    quint64 m_writtenIn = 0; // the settings' generation in which it was written
    std::atomic<qsizetype> m_size {0}; // the list's size, to be read without listMutex
};

#endif
