// SPDX-License-Identifier: MIT
#include "plugin/vexasettings.h"

#include "plugin/qtcompat.h"
#include "plugin/vexaconstants.h"
#include <QCoreApplication>
#include <QMutex>

namespace {

// Two, so that instance() can be called by whoever holds a Locker.
QMutex useMutex;
QMutex pointerMutex; // taken after useMutex

} // namespace

QSettings *VexaSettings::settings = nullptr;

QSettings *VexaSettings::instance()
{
    const QMutexLocker lock(&pointerMutex);
    if (!settings) {
        settings = new QSettings(VEXA_SETTINGS_FILE_NAME, VEXA_SETTINGS_FILE_NAME);
        VexaCompat::useUtf8(*settings);
        // QSettings posts itself an event to write later. Without a thread it never gets one, so
        // no event loop touches the object while another thread has it.
        settings->moveToThread(nullptr);
    }
    return settings;
}

void VexaSettings::destroy()
{
    const QMutexLocker use(&useMutex);
    const QMutexLocker lock(&pointerMutex);
    delete settings;
    settings = nullptr;
}

VexaSettings::Locker::Locker()
{
    useMutex.lock();
    m_settings = instance();
}

VexaSettings::Locker::~Locker()
{
    // The events that nobody will ever deliver would pile up, one a change.
    QCoreApplication::removePostedEvents(m_settings);
    useMutex.unlock();
}
