// SPDX-License-Identifier: MIT
#ifndef VEXA_HTTPANSWER_P_H
#define VEXA_HTTPANSWER_P_H

#include <QString>
#include <QtGlobal>

/** What a Content-Range header says: which bytes of a file of which size. */
struct ContentRange
{
    /** Reads "bytes 100-199/2000"; parts that are missing or no numbers stay -1. */
    static ContentRange parse(const QString &value);

    qint64 first = -1; ///< offset of the first byte that is sent
    qint64 total = -1; ///< size of the whole file
};

class QNetworkReply;

/** The value of a header of the reply; empty if it was not sent. */
QString httpHeader(const QNetworkReply &reply, const QString &name);
/** The reply's status; 0 before its head has come, and for other schemes than HTTP. */
int httpStatus(const QNetworkReply &reply);
/** The reply's Content-Range; without one all is -1. */
ContentRange contentRangeOf(const QNetworkReply &reply);

/** What is to be done with the body of a server's answer to a request for the rest of a file. */
enum class BodyUse {
    Append, ///< it goes on where the save file ends
    StartAnew, ///< it is the whole file: what was saved goes first
    Restart, ///< it fits nothing that was saved: forget that, and ask again for all of it
    Refuse, ///< it is not what was asked for, although all of the file was asked for
    Ignore, ///< it is an error page
};

/**
 * Judges an answer by its status and Content-Range. start is the byte from which the file was
 * asked for; knownTotal is the file's size as earlier answers told it, 0 or less if unknown.
 */
BodyUse judgeBody(int httpStatus, const ContentRange &range, qint64 start, qint64 knownTotal);

#endif
