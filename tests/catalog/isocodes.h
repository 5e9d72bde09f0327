// SPDX-License-Identifier: MIT
#pragma once

#include "catalog/mapdata.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

/** The countries and their parts, as Debian's package iso-codes has them. */
namespace IsoCodes {

/** The entries of a standard: "3166-1" for the countries, "3166-2" for their parts. */
inline QJsonArray entries(const char *standard)
{
    const QByteArray bytes =
        readFile(text("/usr/share/iso-codes/json/iso_%1.json").arg(text(standard)));
    const QJsonArray entries =
        QJsonDocument::fromJson(bytes).object().value(text(standard)).toArray();
    if (entries.isEmpty())
        qFatal("The package iso-codes is missing.");
    return entries;
}

/** A field of an entry; empty if it has none of this name. */
inline QByteArray field(const QJsonValue &entry, const char *key)
{
    return entry.toObject().value(text(key)).toString().toUtf8();
}

} // namespace IsoCodes
