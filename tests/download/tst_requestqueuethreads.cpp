// SPDX-License-Identifier: MIT
// The queue between threads: waiting, waking, stopping.
#include "download/queuehelpers.h"
#include "download/requestqueue.h"
#include "download/settingsfile.h"
#include "testutils/logcatcher.h"
#include <QSemaphore>
#include <QSet>
#include <QtTest>

namespace {

QString sleepLine()
{
    return QStringLiteral("[TRACE] Queue empty. Sleeping ...");
}

// What happens just before the waiter takes the lock to sleep: the line is logged there.
std::function<void()> beforeTheSleep;

void actOnSleepLine(QtMsgType, const QMessageLogContext &, const QString &text)
{
    if (beforeTheSleep && text.contains(QLatin1String("Queue empty. Sleeping ...")))
        std::exchange(beforeTheSleep, nullptr)();
}

} // namespace

class RequestQueueThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void blockedHeadReturnsWhatIsEnqueued();
    void blockedDequeueReturnsWhatIsEnqueued();
    void blockedConsumerReturnsWhenStopped_data();
    void blockedConsumerReturnsWhenStopped();
    void wakeUpWithoutAnItemIsSleptOver();
    void oneItemServesOneOfTwoWaiters();
    void twoConsumersShareEverythingOnce();
    void itemRemovedBeforeItIsTakenIsWaitedOver();
    void changeOfTheListItselfIsNoticed();
    void wakeUpBetweenTestAndSleepIsNotMissed_data();
    void wakeUpBetweenTestAndSleepIsNotMissed();
    void tightHandOversLoseNoWakeUp();
    void stopIsNeverMissed();
    void producersAndConsumerAgreeWithTheFile();
    void noDownloadKeyLandsAmongTheRequests();
};

void RequestQueueThreadsTest::initTestCase()
{
    // Every hand-over syncs the settings: on a disk, thousands of them take minutes.
    if (QFileInfo(QStringLiteral("/dev/shm")).isWritable())
        qputenv("TMPDIR", "/dev/shm");
}

void RequestQueueThreadsTest::blockedHeadReturnsWhatIsEnqueued()
{
    const TemporaryHome home;
    const LogCatcher log(L::Trace);
    Queue queue(nullptr);
    Request got;
    Background consumer([&] { got = queue.head(); });
    QTRY_COMPARE(log.count(sleepLine()), 1);

    queue.enqueue(someRequest(QStringLiteral("a")));

    QVERIFY(consumer.ends());
    QCOMPARE(got, someRequest(QStringLiteral("a")));
    QCOMPARE(SettingsFile(home).ids(), QStringList {QStringLiteral("a")});
}

void RequestQueueThreadsTest::blockedDequeueReturnsWhatIsEnqueued()
{
    const TemporaryHome home;
    const LogCatcher log(L::Trace);
    Queue queue(nullptr);
    Request got;
    Background consumer([&] { got = queue.dequeue(); });
    QTRY_COMPARE(log.count(sleepLine()), 1);

    queue.enqueue(someRequest(QStringLiteral("a")));

    QVERIFY(consumer.ends());
    QCOMPARE(got, someRequest(QStringLiteral("a")));
    QCOMPARE(SettingsFile(home).ids(), QStringList());
}

void RequestQueueThreadsTest::blockedConsumerReturnsWhenStopped_data()
{
    QTest::addColumn<bool>("byHead");
    QTest::newRow("in head") << true;
    QTest::newRow("in dequeue") << false;
}

void RequestQueueThreadsTest::blockedConsumerReturnsWhenStopped()
{
    QFETCH(bool, byHead);
    const TemporaryHome home;
    const LogCatcher log(L::Trace);
    CountingListener listener;
    Queue queue(&listener);
    Request got = someRequest(QStringLiteral("a"));
    Background consumer([&] { got = byHead ? queue.head() : queue.dequeue(); });
    QTRY_COMPARE(log.count(sleepLine()), 1);

    queue.stop();

    QVERIFY(consumer.ends());
    QCOMPARE(got, Request());
    QVERIFY(got.id.isNull());
    QCOMPARE(listener.count, 0);
}

void RequestQueueThreadsTest::wakeUpWithoutAnItemIsSleptOver()
{
    const TemporaryHome home;
    const LogCatcher log(L::Trace);
    Queue queue(nullptr);
    Request got;
    Background consumer([&] { got = queue.head(); });
    QTRY_COMPARE(log.count(sleepLine()), 1);

    for (int i = 0; i < 100; ++i) {
        const QMutexLocker lock(&queue.waitMutex);
        queue.itemAvailable.wakeAll();
    }
    QVERIFY(!consumer.isOver());
    queue.enqueue(someRequest(QStringLiteral("a")));

    QVERIFY(consumer.ends());
    QCOMPARE(got.id, QStringLiteral("a"));
    QCOMPARE(log.count(sleepLine()), 1);
}

void RequestQueueThreadsTest::oneItemServesOneOfTwoWaiters()
{
    const TemporaryHome home;
    const LogCatcher log(L::Trace);
    Queue queue(nullptr);
    std::atomic<int> served {0};
    std::atomic<int> empty {0};
    const auto take = [&] { ++(queue.dequeue().type == 0 ? empty : served); };
    Background one(take);
    Background two(take);
    QTRY_COMPARE(log.count(sleepLine()), 2);

    queue.enqueue(someRequest(QStringLiteral("a")));
    QTRY_COMPARE(served.load(), 1);
    QTRY_VERIFY(one.isOver() != two.isOver());
    QCOMPARE(empty.load(), 0);
    queue.stop();

    QVERIFY(one.ends());
    QVERIFY(two.ends());
    QCOMPARE(served.load(), 1);
    QCOMPARE(empty.load(), 1);
}

void RequestQueueThreadsTest::twoConsumersShareEverythingOnce()
{
    constexpr int Items = 400;
    const TemporaryHome home;
    Queue queue(nullptr);
    QMutex mutex;
    QStringList got;
    const auto consume = [&] {
        for (;;) {
            const Request request = queue.dequeue();
            if (request.type == 0)
                return;
            const QMutexLocker lock(&mutex);
            got.append(request.id);
        }
    };
    Background one(consume);
    Background two(consume);

    for (int i = 0; i < Items; ++i)
        queue.enqueue(someRequest(QString::number(i)));
    const auto gotAll = [&] {
        const QMutexLocker lock(&mutex);
        return got.size() == Items;
    };
    QTRY_VERIFY_WITH_TIMEOUT(gotAll(), 60000);
    queue.stop();

    QVERIFY(one.ends());
    QVERIFY(two.ends());
    QCOMPARE(QSet<QString>(got.begin(), got.end()).size(), Items);
}

void RequestQueueThreadsTest::itemRemovedBeforeItIsTakenIsWaitedOver()
{
    const TemporaryHome home;
    Queue queue(nullptr);
    std::atomic<int> empties {0};
    std::atomic<int> items {0};
    Background consumer([&] {
        while (!queue.stopped)
            ++(queue.head().type == 0 ? empties : items);
    });

    for (int i = 0; i < 300; ++i) {
        queue.enqueue(someRequest(QStringLiteral("a")));
        queue.removeAllRequests();
    }
    queue.stop();

    QVERIFY(consumer.ends());
    QVERIFY(empties <= 1); // only the stop gives an empty one
}

void RequestQueueThreadsTest::changeOfTheListItselfIsNoticed()
{
    const TemporaryHome home;
    const LogCatcher log(L::Trace);
    Queue queue(nullptr);
    queue.enqueue(someRequest(QStringLiteral("a")));
    {
        const QMutexLocker lock(&queue.listMutex);
        queue.clear(); // the base class's, past the queue
    }
    Request got;
    Background consumer([&] { got = queue.head(); });

    QTRY_COMPARE(log.count(sleepLine()), 1); // and does not turn and turn
    queue.enqueue(someRequest(QStringLiteral("b")));

    QVERIFY(consumer.ends());
    QCOMPARE(got.id, QStringLiteral("b"));
}

void RequestQueueThreadsTest::wakeUpBetweenTestAndSleepIsNotMissed_data()
{
    QTest::addColumn<bool>("byStop");
    QTest::newRow("of an item") << false;
    QTest::newRow("of the stop") << true;
}

void RequestQueueThreadsTest::wakeUpBetweenTestAndSleepIsNotMissed()
{
    QFETCH(bool, byStop);
    const TemporaryHome home;
    const LogCatcher levelAndHandlerGuard(L::Trace);
    Queue queue(nullptr);
    beforeTheSleep = [&] {
        if (byStop)
            queue.stop();
        else
            queue.enqueue(someRequest(QStringLiteral("a")));
    };
    qInstallMessageHandler(actOnSleepLine);
    Request got = someRequest(QStringLiteral("b"));
    Background consumer([&] { got = queue.head(); });

    const bool woke = consumer.ends();

    queue.stop(); // a waiter that missed it must not outlive the test
    QVERIFY(woke);
    QCOMPARE(got.id, byStop ? QString() : QStringLiteral("a"));
}

void RequestQueueThreadsTest::tightHandOversLoseNoWakeUp()
{
    // One item at a time: a wake-up that is lost leaves both sides waiting for ever.
    constexpr int HandOvers = 3000;
    const TemporaryHome home;
    Queue queue(nullptr);
    QSemaphore taken;
    std::atomic<int> inOrder {0};
    Background consumer([&] {
        for (int i = 0; i < HandOvers; ++i) {
            const Request request = i % 2 ? queue.dequeue() : queue.head();
            if (i % 2 == 0)
                queue.dequeueIfHead(request);
            if (request.id == QString::number(i))
                ++inOrder;
            taken.release();
        }
    });

    int done = 0;
    for (; done < HandOvers; ++done) {
        queue.enqueue(someRequest(QString::number(done)));
        if (!taken.tryAcquire(1, 60000))
            break;
    }
    queue.stop();

    QCOMPARE(done, HandOvers);
    QVERIFY(consumer.ends());
    QCOMPARE(inOrder.load(), HandOvers);
}

void RequestQueueThreadsTest::stopIsNeverMissed()
{
    const TemporaryHome home;
    for (int i = 0; i < 2000; ++i) {
        Queue queue(nullptr);
        QSemaphore begun;
        Background consumer([&] {
            begun.release();
            queue.head();
        });
        begun.acquire();
        if (i % 4 == 0)
            QThread::yieldCurrentThread(); // some of them are asleep by then, some are not

        queue.stop();

        if (!consumer.ends())
            QFAIL(qPrintable(QStringLiteral("the %1th stop was missed").arg(i)));
    }
}

void RequestQueueThreadsTest::producersAndConsumerAgreeWithTheFile()
{
    constexpr int PerProducer = 60;
    const TemporaryHome home;
    Queue queue(nullptr);
    const auto produce = [&](const QString &name) {
        for (int i = 0; i < PerProducer; ++i)
            queue.enqueue(someRequest(name + QString::number(i), name));
    };
    std::atomic<int> taken {0};
    {
        Background one([&] { produce(QStringLiteral("a")); });
        Background two([&] { produce(QStringLiteral("b")); });
        Background consumer([&] {
            for (; taken < PerProducer; ++taken)
                queue.dequeue();
        });
    }

    QStringList left;
    const QList<Request> snapshot = queue.snapshot();
    for (const Request &request : snapshot)
        left.append(request.id);
    QCOMPARE(left.size(), PerProducer);
    QCOMPARE(SettingsFile(home).ids(), left);
}

void RequestQueueThreadsTest::noDownloadKeyLandsAmongTheRequests()
{
    // A group is state of the whole settings object: what the worker saves while the GUI thread
    // writes the array must not end up inside it.
    const TemporaryHome home;
    Queue queue(nullptr);
    std::atomic<bool> over {false};
    Background saver([&] {
        for (int i = 0; !over; ++i) {
            const VexaSettings::Locker settings;
            settings->setValue(QStringLiteral("download/bytesReceived"), i);
            settings->sync();
        }
    });

    for (int i = 0; i < 200; ++i) {
        queue.enqueue(someRequest(QString::number(i)));
        if (queue.snapshot().size() > 5)
            queue.dequeue();
    }
    over = true;
    QVERIFY(saver.ends());

    const QStringList keys = SettingsFile(home).keys();
    QVERIFY(keys.contains(QStringLiteral("download/bytesReceived")));
    for (const QString &key : keys) {
        const QString last = key.section(QLatin1Char('/'), -1);
        QVERIFY2(!key.startsWith(QLatin1String("requests/"))
                     || !key.contains(QLatin1String("download")),
                 qPrintable(key));
        QVERIFY2(key != QLatin1String("bytesReceived")
                     && (last != QLatin1String("id") || key.startsWith(QLatin1String("requests/"))),
                 qPrintable(key));
    }
    QCOMPARE(SettingsFile(home).ids().size(), 5);
}

QTEST_GUILESS_MAIN(RequestQueueThreadsTest)
#include "tst_requestqueuethreads.moc"
