// SPDX-License-Identifier: MIT
#include "download/request.h"

#include <QStringList>

Request::Request(const QString &id, int type, const QVariant &payload, const QString &url,
                 int state)
    : id(id)
    , type(type)
    , payload(payload)
    , url(url)
    , state(state)
{ }

int Request::serialize(QSettings &settings) const
{
    settings.setValue(QStringLiteral("id"), id);
    settings.setValue(QStringLiteral("type"), type);
    settings.setValue(QStringLiteral("state"), state);
    settings.setValue(QStringLiteral("url"), url);
    switch (type) {
    case TestDownloadRequest:
    case DownloadRequest:
        settings.setValue(QStringLiteral("filename"), payload.toString());
        break;
    case UncompressRequest:
        settings.setValue(QStringLiteral("archiveName"), payload.toString());
        break;
    case MoveRequest: {
        const QStringList paths = payload.toStringList();
        settings.setValue(QStringLiteral("source"), paths.value(0));
        settings.setValue(QStringLiteral("dest"), paths.value(1));
        break;
    }
    default:
        break;
    }
    return 0;
}

int Request::deSerialize(QSettings &settings)
{
    id = settings.value(QStringLiteral("id")).toString();
    type = settings.value(QStringLiteral("type")).toInt();
    state = settings.value(QStringLiteral("state")).toInt();
    url = settings.value(QStringLiteral("url")).toString();
    switch (type) {
    case TestDownloadRequest:
    case DownloadRequest:
        payload = settings.value(QStringLiteral("filename")).toString();
        break;
    case UncompressRequest:
        payload = settings.value(QStringLiteral("archiveName")).toString();
        break;
    case MoveRequest:
        payload = QStringList {settings.value(QStringLiteral("source")).toString(),
                               settings.value(QStringLiteral("dest")).toString()};
        break;
    default:
        break;
    }
    return 0;
}

bool operator==(const Request &a, const Request &b)
{
    return a.id == b.id && a.type == b.type && a.url == b.url && a.payload == b.payload;
}
