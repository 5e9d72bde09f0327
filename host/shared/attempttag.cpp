// SPDX-License-Identifier: MIT
#include "host/shared/attempttag.h"

#include <QUrl>

QString AttemptTag::tagged(const QString &url, int attempt)
{
    QUrl address(url);
    address.setFragment(QString::number(attempt));
    return QString::fromLatin1(address.toEncoded());
}

int AttemptTag::of(const QString &url)
{
    return QUrl(url).fragment().toInt();
}

QString AttemptTag::untagged(const QString &url)
{
    QUrl address(url);
    address.setFragment(QString()); // null: no "#" either
    return QString::fromLatin1(address.toEncoded());
}
