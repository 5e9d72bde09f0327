// SPDX-License-Identifier: MIT
#include "host/shared/collationkeys.h"

#include <QLocale>

CollationKeys::CollationKeys(const QCollator &collator)
    : m_collator(collator)
{
    m_collator.setNumericMode(true);
}

std::shared_ptr<CollationKeys> CollationKeys::of(const QString &localeName)
{
    static QHash<QString, std::weak_ptr<CollationKeys>> known;
    std::shared_ptr<CollationKeys> keys = known.value(localeName).lock();
    if (!keys) {
        const QCollator collator =
            localeName.isEmpty() ? QCollator() : QCollator(QLocale(localeName));
        keys.reset(new CollationKeys(collator));
        known.insert(localeName, keys);
    }
    return keys;
}

const QCollatorSortKey &CollationKeys::key(const QString &name)
{
    auto found = m_keys.find(name);
    if (found == m_keys.end())
        found = m_keys.insert(name, m_collator.sortKey(name));
    return *found;
}
