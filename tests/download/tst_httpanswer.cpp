// SPDX-License-Identifier: MIT
#include "download/httpanswer_p.h"

#include "download/downloadmanager.h"
#include "download/pace_p.h"
#include "download/requestqueue.h"
#include "testutils/temporaryhome.h"
#include <QTest>

Q_DECLARE_METATYPE(BodyUse)

class HttpAnswerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void readsAContentRange_data();
    void readsAContentRange();
    void judgesABody_data();
    void judgesABody();
    void takesTheTotalBehindTheOnlySlash_data();
    void takesTheTotalBehindTheOnlySlash();
    void callsAServerSlowThatSendsLittleInAStep();
    void callsNoServerSlowThatSendsMuch();
    void callsNoServerSlowThatHasWaitedForUs();
};

void HttpAnswerTest::readsAContentRange_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<qint64>("first");
    QTest::addColumn<qint64>("total");
    const auto row = [](const char *value, qint64 first, qint64 total) {
        QTest::newRow(*value ? value : "nothing") << QString::fromLatin1(value) << first << total;
    };

    row("bytes 100-199/2000", 100, 2000);
    row("bytes 0-0/1", 0, 1);
    row("BYTES 7-8/9", 7, 9);
    row("  bytes  7-8 / 9 ", 7, 9);
    row("bytes 4294967296-8589934591/8589934592", 4294967296, 8589934592);
    row("bytes 0-99/*", 0, -1);
    row("bytes */2000", -1, 2000);
    row("bytes */*", -1, -1);
    row("", -1, -1);
    row("100-199/2000", -1, -1);
    row("bytes 100/2000", -1, -1);
    row("bytes -199/2000", -1, -1);
    row("bytes 1-2/3/4", -1, -1);
    row("items 1-2/3", -1, -1);
    row("bytes 99999999999999999999-99999999999999999999/99999999999999999999", -1, -1);
}

void HttpAnswerTest::readsAContentRange()
{
    QFETCH(QString, value);

    const ContentRange range = ContentRange::parse(value);

    QTEST(range.first, "first");
    QTEST(range.total, "total");
}

void HttpAnswerTest::judgesABody_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("range");
    QTest::addColumn<qint64>("start");
    QTest::addColumn<qint64>("knownTotal");
    QTest::addColumn<BodyUse>("use");
    const auto row = [](const char *name, int status, const char *range, qint64 start,
                        qint64 knownTotal, BodyUse use) {
        QTest::newRow(name) << status << QString::fromLatin1(range) << start << knownTotal << use;
    };

    row("all of it, as it was asked for", 206, "bytes 0-9/10", 0, 0, BodyUse::Append);
    row("the rest, as it was asked for", 206, "bytes 4-9/10", 4, 10, BodyUse::Append);
    row("the rest of a file of unknown size", 206, "bytes 4-9/10", 4, 0, BodyUse::Append);
    row("the rest, its total not told", 206, "bytes 4-9/*", 4, 10, BodyUse::Append);
    row("a part without its range", 206, "", 4, 10, BodyUse::Append);
    row("all without a range", 206, "", 0, 0, BodyUse::Append);
    row("another part than asked for", 206, "bytes 5-9/10", 4, 10, BodyUse::Restart);
    row("all although a part was asked for", 206, "bytes 0-9/10", 4, 10, BodyUse::Restart);
    row("the rest of a longer file", 206, "bytes 4-9/11", 4, 10, BodyUse::Restart);
    row("the rest of a shorter file", 206, "bytes 4-8/9", 4, 10, BodyUse::Restart);
    row("a longer file from its start", 206, "bytes 0-9/11", 0, 10, BodyUse::Append);
    row("a part although all was asked for", 206, "bytes 5-9/10", 0, 0, BodyUse::Refuse);
    row("the whole file", 200, "", 0, 0, BodyUse::Append);
    row("the whole file although a part was asked for", 200, "", 4, 10, BodyUse::StartAnew);
    row("no content", 204, "", 0, 0, BodyUse::Append);
    row("a scheme without status, the start", 0, "", 0, 0, BodyUse::Append);
    row("a scheme without status, asked for a part", 0, "", 4, 10, BodyUse::StartAnew);
    row("a redirection that leads nowhere", 302, "", 0, 0, BodyUse::Ignore);
    row("an error page", 404, "", 4, 10, BodyUse::Ignore);
    row("an error page with a range", 416, "bytes */10", 4, 10, BodyUse::Ignore);
    row("a status below all", 100, "", 0, 0, BodyUse::Ignore);
    row("a server's error", 500, "", 0, 0, BodyUse::Ignore);
}

void HttpAnswerTest::judgesABody()
{
    QFETCH(int, status);
    QFETCH(QString, range);
    QFETCH(qint64, start);
    QFETCH(qint64, knownTotal);
    QFETCH(BodyUse, use);

    QCOMPARE(int(judgeBody(status, ContentRange::parse(range), start, knownTotal)), int(use));
}

void HttpAnswerTest::takesTheTotalBehindTheOnlySlash_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<qint64>("total");
    const auto row = [](const char *value, qint64 total) {
        QTest::newRow(*value ? value : "nothing") << QString::fromLatin1(value) << total;
    };

    row("bytes 100-199/2000", 2000);
    row("bytes 0-99/*", 0);
    row("bytes */2000", 2000);
    row("/5", 5);
    row("5/", 0);
    row("/", 0);
    row("", 0);
    row("bytes 100-199", 0);
    row("bytes 0-1/2/3", 0);
    row("bytes 0-1/10 of 20", 0);
    row("bytes 0-1/0x10", 0);
    row("bytes 0-1/8589934592", 8589934592);
    row("bytes 0-1/99999999999999999999", 0);
}

void HttpAnswerTest::takesTheTotalBehindTheOnlySlash()
{
    const TemporaryHome home;
    RequestQueue<Request> queue(nullptr);
    const DownloadManager manager(&queue, nullptr);
    QFETCH(QString, value);

    QTEST(manager.bytesTotalFromContentRange(value), "total");
}

void HttpAnswerTest::callsAServerSlowThatSendsLittleInAStep()
{
    Pace pace;

    QVERIFY(!pace.isSlow(1000, 1)); // no step is over, it may be the start of a fast one
    QVERIFY(!pace.isSlow(2000, Pace::Step - 1));
    QVERIFY(pace.isSlow(3000, Pace::Step));
    QVERIFY(!pace.isSlow(3000, 2 * Pace::Step)); // nothing has come: it is waited for
    QVERIFY(!pace.isSlow(3000 + Pace::HeldBack, 3 * Pace::Step)); // the rest comes behind it
    QVERIFY(pace.isSlow(4000, 3 * Pace::Step + 1));
}

void HttpAnswerTest::callsNoServerSlowThatSendsMuch()
{
    Pace pace;
    qint64 bytes = Pace::LittleInAStep;

    QVERIFY(!pace.isSlow(bytes, Pace::Step));
    QVERIFY(!pace.isSlow(bytes += 2, Pace::Step + 1)); // a small piece between large ones
    QVERIFY(!pace.isSlow(bytes += Pace::LittleInAStep, 2 * Pace::Step));
    QVERIFY(!pace.isSlow(bytes += 2, 2 * Pace::Step + 1));
    QVERIFY(pace.isSlow(bytes += 2, 3 * Pace::Step)); // until a step brings little
}

void HttpAnswerTest::callsNoServerSlowThatHasWaitedForUs()
{
    Pace pace;

    QVERIFY(pace.isSlow(1000, Pace::Step));
    QVERIFY(!pace.isSlow(1000 + Pace::LittleInALook, 2 * Pace::Step));
    QVERIFY(pace.isSlow(2000 + Pace::LittleInALook, 3 * Pace::Step));
}

QTEST_GUILESS_MAIN(HttpAnswerTest)
#include "tst_httpanswer.moc"
