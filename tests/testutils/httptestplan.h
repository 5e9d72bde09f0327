// SPDX-License-Identifier: MIT
#pragma once

#include "testutils/httptestserver.h"

/** Everything that is decided about one answer before its first byte is sent. */
struct HttpTestPlan
{
    enum class ContentRange { Right, Missing, Text, WrongStart, WrongTotal, UnknownTotal };
    enum class Ending { KeepAlive, Close, Reset };

    HttpTestServer::Content content;
    int status = 0; ///< 0: 200, 206 or 416, as the request and the content have it
    bool ranges = true;
    ContentRange contentRange = ContentRange::Right;
    QByteArray contentRangeText;
    qint64 contentRangeNumber = 0;
    QList<HttpHeader> headers;
    bool contentLength = true;
    bool chunked = false;
    bool gzip = false;
    bool gzipAlways = false; ///< also if the request does not accept it
    qint64 headLimit = -1; ///< bytes of the head that are sent
    bool headCut = false; ///< closes behind them
    bool endlessHead = false;
    qint64 cutAfter = -1;
    qint64 stallAfter = -1;
    qint64 missing = 0;
    qint64 surplus = 0;
    qint64 dripBytes = 0;
    int dripMs = 0;
    int answerDelayMs = 0;
    int bodyDelayMs = 0;
    int closeDelayMs = 0;
    bool silent = false;
    QByteArray garbage; ///< sent in place of an answer
    bool noAnswer = false;
    bool stopListening = false;
    Ending ending = Ending::KeepAlive;
};
