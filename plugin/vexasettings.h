// SPDX-License-Identifier: MIT
#ifndef VEXA_VEXASETTINGS_H
#define VEXA_VEXASETTINGS_H

#include "vexa_export.h"
#include <QMutexLocker>
#include <QSettings>

/**
 * Holder of the one settings object that keeps the download state (the request queue and the
 * transfer in progress) across restarts. Organisation and application are both "vexa"; it is not
 * the application's own store, which the plugin only reads.
 *
 * A file with values that would end the program while they are read, which only damage or malice
 * puts there, is renamed to "vexa.conf.damaged" first; the state then begins empty.
 *
 * The object is made by its first user and lives until destroy(); a later user gets a new one. It
 * belongs to no thread and is never written behind our back: what is set reaches the disk at
 * sync(), under the lock.
 *
 * The GUI thread (it enqueues) and the worker thread (it saves its state) both use the object, and
 * a QSettings group is state of the whole object. So every use takes a Locker, from the first
 * beginGroup() or read to the last sync().
 */
class VEXA_EXPORT VexaSettings
{
public:
    /** The object, or null before the first instance() and after destroy(). Only for looking. */
    static QSettings *settings;

    /**
     * Returns the object, making it if there is none. Thread-safe by itself; to use what it
     * returns while a worker may run, hold a Locker. Owned by this class.
     */
    static QSettings *instance();

    /** Deletes the object, once no Locker is held; does nothing if there is none. Thread-safe. */
    static void destroy();

    /**
     * Exclusive use of the settings for as long as it lives. Not recursive. Whoever also needs
     * the request queue's list mutex takes that one first.
     */
    class VEXA_EXPORT Locker
    {
    public:
        /** Waits until no other thread holds one; makes the object if there is none. */
        Locker();
        /** Gives the settings free; what was not synced stays in memory. */
        ~Locker();
        Q_DISABLE_COPY(Locker)

        /** The settings, for as long as the locker lives. */
        QSettings &operator*() const { return *m_settings; }
        /** The settings, for as long as the locker lives; never null. */
        QSettings *operator->() const { return m_settings; }

        /**
         * A number that stays the same as long as nobody but Lockers has changed the file, so that
         * what one of them has written and synced is still there. Never 0.
         */
        quint64 generation() const;

    private:
        QSettings *m_settings; // not owned
    };
};

#endif
