// SPDX-License-Identifier: MIT
#include "download/request.h"

#include <algorithm>
#include <QStringList>
#include <utility>

namespace {

QStringList payloadKeys(int type)
{
    static const QStringList file {QStringLiteral("filename")};
    static const QStringList archive {QStringLiteral("archiveName")};
    static const QStringList paths {QStringLiteral("source"), QStringLiteral("dest")};
    switch (type) {
    case TestDownloadRequest:
    case DownloadRequest:
        return file;
    case UncompressRequest:
        return archive;
    case MoveRequest:
        return paths;
    default:
        return QStringList();
    }
}

} // namespace

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
    serializePayload(settings);
    return 0;
}

void Request::serializeOver(const Request &before, QSettings &settings) const
{
    if (before.id != id)
        settings.setValue(QStringLiteral("id"), id);
    if (before.type != type)
        settings.setValue(QStringLiteral("type"), type);
    if (before.state != state)
        settings.setValue(QStringLiteral("state"), state);
    if (before.url != url)
        settings.setValue(QStringLiteral("url"), url);
    const QStringList keys = payloadKeys(type);
    const QStringList keysBefore = payloadKeys(before.type);
    for (const QString &key : keysBefore) {
        if (!keys.contains(key))
            settings.remove(key);
    }
    if (before.type != type || before.payload != payload)
        serializePayload(settings);
}

void Request::serializePayload(QSettings &settings) const
{
    const QStringList keys = payloadKeys(type);
    if (keys.size() == 1) {
        settings.setValue(keys.first(), payload.toString());
        return;
    }
    const QStringList paths = payload.toStringList();
    for (int i = 0; i < int(keys.size()); ++i)
        settings.setValue(keys.at(i), paths.value(i));
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

QList<Request> Request::readAll(QSettings &settings)
{
    settings.beginGroup(QStringLiteral("requests"));
    const int size = settings.value(QStringLiteral("size")).toInt();
    QList<int> indexes;
    const QStringList groups = settings.childGroups();
    for (const QString &group : groups) {
        const int index = group.toInt();
        const bool isEntry = index > 0 && group == QString::number(index); // "01" is none
        if (isEntry && (size <= 0 || index <= size))
            indexes.append(index);
    }
    std::sort(indexes.begin(), indexes.end());
    QList<Request> requests;
    requests.reserve(indexes.size());
    for (int index : std::as_const(indexes)) {
        settings.beginGroup(QString::number(index));
        Request request;
        request.deSerialize(settings);
        settings.endGroup();
        requests.append(request);
    }
    settings.endGroup();
    return requests;
}

bool operator==(const Request &a, const Request &b)
{
    return a.id == b.id && a.type == b.type && a.url == b.url && a.payload == b.payload;
}
