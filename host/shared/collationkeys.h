// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <QCollator>
#include <QHash>
#include <QString>

/**
 * Sort keys of names, each computed once: comparing two keys is many times faster than comparing
 * two names by the rules of a language. Numbers in names sort by value.
 *
 * All users of a locale share one; it goes with the last of them. GUI thread.
 */
class CollationKeys
{
public:
    /** For the locale with this name ("de_DE"); an empty name is the user's locale. */
    static std::shared_ptr<CollationKeys> of(const QString &localeName);

    /** Valid until the next call. */
    const QCollatorSortKey &key(const QString &name);

private:
    explicit CollationKeys(const QCollator &collator);

    QCollator m_collator;
    QHash<QString, QCollatorSortKey> m_keys;
};
