// SPDX-License-Identifier: MIT
#include "host/shared/transfermeter.h"

namespace {

constexpr qint64 Window = 10 * 1000; // ms

} // namespace

void TransferMeter::restart()
{
    m_samples.clear();
    m_clock.start();
}

void TransferMeter::add(qint64 bytes)
{
    if (!m_clock.isValid())
        m_clock.start();
    addAt(bytes, m_clock.elapsed());
}

void TransferMeter::addAt(qint64 bytes, qint64 ms)
{
    if (!m_samples.empty() && bytes < m_samples.back().bytes)
        m_samples.clear();
    m_samples.push_back({ms, bytes});
    // One sample before the window stays, so that a slow transfer has a speed too.
    while (m_samples.size() > 2 && ms - m_samples[1].ms > Window)
        m_samples.pop_front();
}

qint64 TransferMeter::bytesPerSecond() const
{
    if (m_samples.size() < 2)
        return 0;
    const qint64 ms = m_samples.back().ms - m_samples.front().ms;
    const qint64 bytes = m_samples.back().bytes - m_samples.front().bytes;
    return ms > 0 ? bytes * 1000 / ms : 0;
}

qint64 TransferMeter::remainingMs(qint64 total) const
{
    const qint64 speed = bytesPerSecond();
    if (speed <= 0 || total <= 0)
        return -1;
    const qint64 left = total - m_samples.back().bytes;
    return left > 0 ? qint64(double(left) * 1000 / double(speed)) : 0;
}
