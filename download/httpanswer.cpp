// SPDX-License-Identifier: MIT
#include "download/httpanswer_p.h"

#include "plugin/vexaconstants.h"
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QRegularExpression>

namespace {

qint64 numberOr(const QString &text, qint64 fallback)
{
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? number : fallback;
}

} // namespace

ContentRange ContentRange::parse(const QString &value)
{
    static const QRegularExpression form(
        QStringLiteral("^\\s*bytes\\s+(?:(\\d+)-\\d+|\\*)\\s*/\\s*(\\d+|\\*)\\s*$"),
        QRegularExpression::CaseInsensitiveOption);
    ContentRange range;
    const QRegularExpressionMatch match = form.match(value);
    range.first = numberOr(match.captured(1), -1);
    range.total = numberOr(match.captured(2), -1);
    return range;
}

QString httpHeader(const QNetworkReply &reply, const QString &name)
{
    return QString::fromLatin1(reply.rawHeader(name.toLatin1()));
}

int httpStatus(const QNetworkReply &reply)
{
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

ContentRange contentRangeOf(const QNetworkReply &reply)
{
    return ContentRange::parse(httpHeader(reply, HTTP_CONTENT_RANGE_TOKEN));
}

BodyUse judgeBody(int httpStatus, const ContentRange &range, qint64 start, qint64 knownTotal)
{
    constexpr int PartialContent = 206;
    // Schemes other than HTTP have no status; they send whole files.
    if (httpStatus != 0 && (httpStatus < 200 || httpStatus > 299))
        return BodyUse::Ignore;
    if (httpStatus != PartialContent)
        return start > 0 ? BodyUse::StartAnew : BodyUse::Append;
    // A part without its range is taken to be the part that was asked for.
    if (range.first >= 0 && range.first != start)
        return start > 0 ? BodyUse::Restart : BodyUse::Refuse;
    // Another size than before: the file on the server has changed.
    if (start > 0 && knownTotal > 0 && range.total > 0 && range.total != knownTotal)
        return BodyUse::Restart;
    return BodyUse::Append;
}
