// SPDX-License-Identifier: MIT
#include "download/download.h"

int Download::serialize(QSettings &settings) const
{
    settings.setValue(QStringLiteral("download/url"), url.toString());
    settings.setValue(QStringLiteral("download/fileName"), fileName);
    settings.setValue(QStringLiteral("download/bytesReceived"), bytesReceived);
    settings.setValue(QStringLiteral("download/bytesTotal"), bytesTotal);
    settings.setValue(QStringLiteral("download/downloadType"), downloadType);
    return 0;
}

int Download::deSerialize(QSettings &settings)
{
    url = QUrl(settings.value(QStringLiteral("download/url")).toString());
    fileName = settings.value(QStringLiteral("download/fileName")).toString();
    // Unsigned, though they are written signed: what is below zero in the file reads as 0.
    bytesReceived = qint64(settings.value(QStringLiteral("download/bytesReceived")).toULongLong());
    bytesTotal = qint64(settings.value(QStringLiteral("download/bytesTotal")).toULongLong());
    downloadType = settings.value(QStringLiteral("download/downloadType")).toInt();
    return 0;
}

void Download::clear()
{
    url.clear();
    if (!fileName.isNull())
        fileName = QString();
    bytesTotal = 0;
    bytesReceived = 0;
    downloadType = 0;
}
