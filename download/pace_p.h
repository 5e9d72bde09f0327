// SPDX-License-Identifier: MIT
#ifndef VEXA_PACE_P_H
#define VEXA_PACE_P_H

#include <QtGlobal>
#include <utility>

/**
 * Tells by the bytes of a reply whether they come so slowly that one look a step is enough.
 *
 * A server is slow if it sends little in a step, and little between two looks: one that waits for
 * us, because the system's buffers are small, has sent more by the next look.
 */
class Pace
{
public:
    static constexpr int Step = 20; ///< ms
    static constexpr qint64 LittleInAStep = 2 * 1024 * 1024; ///< bytes
    static constexpr qint64 LittleInALook = 128 * 1024; ///< bytes
    /** Bytes that a reply may hold while its reader sleeps; none would mean any number. */
    static constexpr qint64 HeldBack = 1;

    /**
     * To be told after each look how many bytes of the reply have been read so far, and the time,
     * in ms of a clock that began with the reply.
     */
    bool isSlow(qint64 bytes, qint64 now)
    {
        const qint64 brought = bytes - std::exchange(m_bytes, bytes);
        if (now - m_stepBegan >= Step) {
            m_wasSlow = bytes - m_bytesBeforeStep < LittleInAStep;
            m_bytesBeforeStep = bytes;
            m_stepBegan = now;
        }
        // Behind the byte that was held back there is more on its way.
        return m_wasSlow && brought > HeldBack && brought < LittleInALook;
    }

private:
    qint64 m_stepBegan = 0;
    qint64 m_bytesBeforeStep = 0;
    qint64 m_bytes = 0; // at the last look
    bool m_wasSlow = false; // in the last whole step
};

#endif
