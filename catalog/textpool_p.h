// SPDX-License-Identifier: MIT
#ifndef VEXA_TEXTPOOL_P_H
#define VEXA_TEXTPOOL_P_H

#include <array>
#include <QRandomGenerator>
#include <QString>
#include <QStringView>
#include <vector>

/**
 * Texts that come again and again, each kept once: whoever takes one shares it with all who took it
 * before.
 *
 * Made for a hundred thousand of them and half a million takings while a user interface waits.
 * Looking for a text makes no copy of it, as QSet would need one; a text takes no allocation but
 * its own, for in Qt 5 to free all nodes of such a set at once takes longer than a frame; and there
 * are many small tables, since a large one stops everything each time that it grows.
 */
class TextPool
{
public:
    QString take(QStringView text)
    {
        if (text.isEmpty())
            return QString();
        const auto hash = size_t(qHash(text, m_seed));
        return m_tables[hash % m_tables.size()].take(text, hash);
    }

    /** Forgets the texts and calls the function for each, until it gives false. False then. */
    template <typename Function> bool release(Function function)
    {
        for (Table &table : m_tables) {
            if (!table.release(function))
                return false;
        }
        return true;
    }

private:
    static constexpr size_t Tables = 128;

    struct Slot
    {
        size_t hash = 0;
        QString text; // null where the slot is free
    };

    class Table
    {
    public:
        QString take(QStringView text, size_t hash)
        {
            if (m_used * 4 >= m_slots.size() * 3)
                grow();
            Slot &slot = find(text, hash);
            if (slot.text.isNull()) {
                slot = {hash, text.toString()};
                ++m_used;
            }
            return slot.text;
        }

        template <typename Function> bool release(Function function)
        {
            bool goesOn = true;
            for (; goesOn && !m_slots.empty(); m_slots.pop_back())
                goesOn = m_slots.back().text.isNull() || function();
            m_used = 0;
            m_slots = {};
            return goesOn;
        }

    private:
        // Where the text is, or the free place for it: the first of those from the hash's own on.
        Slot &find(QStringView text, size_t hash)
        {
            const size_t last = m_slots.size() - 1; // the sizes are powers of two
            size_t place = hash / Tables & last;
            while (!m_slots[place].text.isNull()
                   && (m_slots[place].hash != hash || QStringView(m_slots[place].text) != text))
                place = (place + 1) & last;
            return m_slots[place];
        }

        void grow()
        {
            std::vector<Slot> old(m_slots.empty() ? 16 : 2 * m_slots.size());
            old.swap(m_slots);
            for (Slot &slot : old) {
                if (!slot.text.isNull())
                    find(slot.text, slot.hash) = std::move(slot);
            }
        }

        std::vector<Slot> m_slots;
        size_t m_used = 0;
    };

    const quint32 m_seed = QRandomGenerator::global()->generate(); // no file can foresee it
    std::array<Table, Tables> m_tables;
};

#endif
