// SPDX-License-Identifier: MIT
#include "download/requestqueue.h"

#include "download/queuehelpers.h"
#include "download/settingsfile.h"
#include "testutils/logcatcher.h"
#include <QtTest>

namespace {

QStringList idsOf(const QList<Request> &requests)
{
    QStringList ids;
    for (const Request &request : requests)
        ids.append(request.id);
    return ids;
}

QStringList letters(const QString &text)
{
    return text.split(QString(), Qt::SkipEmptyParts);
}

QString trace(const char *text)
{
    return QLatin1String("[TRACE] ") + QLatin1String(text);
}

} // namespace

class RequestQueueTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void newQueueIsEmptyAndNotStopped();
    void firstInIsFirstOut();
    void everyChangeIsOnTheDiskWhenTheCallReturns();
    void headLeavesQueueAndFileAlone();
    void dequeueLeavesTheRestAtTheFirstIndexes();
    void sizeEntryFollowsTheQueue();
    void stateOfTheOriginalDoesNotReachTheQueue();
    void removalTakesAllStepsOfAnAddress();
    void removalComparesAddressesExactly();
    void removalThatHitsNothingStillRewritesAndTells();
    void removalMayBeGivenTheAddressOfAnItem();
    void removalsFromAnEmptyQueueTellWithoutWriting();
    void everythingCanBeRemoved();
    void stoppedQueueAnswersAtOnce();
    void stoppedQueueStillTakesAndRemoves();
    void dequeueIfHeadTakesOnlyThatOne();
    void dequeueIfHeadOfAnEmptyQueueDoesNotWait();
    void isHeadKnowsTheOldest();
    void listenerIsToldOncePerChange();
    void listenerMayCallBack();
    void queueWorksWithoutAListener();
    void snapshotIsACopy();
    void serializesIntoAnyGivenSettings();
    void serializingDropsTheOldArrayOnly();
    void changesLeaveTheFileThatAWholeRewritingLeaves();
    void logsItsLifeAndItsCalls();
    void waitingIsLogged();
    void logsNothingBelowTheTraceLevel();

private:
    SettingsFile file() const { return SettingsFile(*m_home); }
    void enqueue(const QString &ids)
    {
        for (const QString &id : letters(ids))
            m_queue->enqueue(someRequest(id));
        m_listener.count = 0;
    }

    std::unique_ptr<TemporaryHome> m_home;
    CountingListener m_listener;
    std::unique_ptr<Queue> m_queue;
};

void RequestQueueTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
    m_listener.count = 0;
    m_listener.action = nullptr;
    m_queue = std::make_unique<Queue>(&m_listener);
}

void RequestQueueTest::cleanup()
{
    m_queue.reset();
    m_home.reset();
}

void RequestQueueTest::newQueueIsEmptyAndNotStopped()
{
    QVERIFY(m_queue->isEmpty());
    QVERIFY(!m_queue->stopped);
    QVERIFY(!m_queue->hasSavedTransfer);
    QCOMPARE(m_listener.count, 0);
    QVERIFY(!file().exists());
}

void RequestQueueTest::firstInIsFirstOut()
{
    enqueue(QStringLiteral("abc"));

    QCOMPARE(m_queue->dequeue().id, QStringLiteral("a"));
    QCOMPARE(m_queue->dequeue().id, QStringLiteral("b"));
    QCOMPARE(m_queue->dequeue().id, QStringLiteral("c"));
    QVERIFY(m_queue->isEmpty());
}

void RequestQueueTest::everyChangeIsOnTheDiskWhenTheCallReturns()
{
    const Request move(QStringLiteral("m"), MoveRequest,
                       QStringList {QStringLiteral("/from"), QStringLiteral("/to")},
                       QStringLiteral("http://h/m"));

    m_queue->enqueue(someRequest(QStringLiteral("a")));
    QCOMPARE(file().requests(), QList<Request> {someRequest(QStringLiteral("a"))});

    m_queue->enqueue(move);
    QCOMPARE(file().requests(), (QList<Request> {someRequest(QStringLiteral("a")), move}));

    m_queue->enqueue(someRequest(QStringLiteral("b")));
    QCOMPARE(file().ids(), letters(QStringLiteral("amb")));

    m_queue->dequeue();
    QCOMPARE(file().ids(), letters(QStringLiteral("mb")));

    QVERIFY(m_queue->dequeueIfHead(move));
    QCOMPARE(file().ids(), letters(QStringLiteral("b")));

    m_queue->enqueue(someRequest(QStringLiteral("c")));
    m_queue->removeRequests(QStringLiteral("http://h/b"));
    QCOMPARE(file().ids(), letters(QStringLiteral("c")));

    m_queue->removeAllRequests();
    QCOMPARE(file().ids(), QStringList());
}

void RequestQueueTest::headLeavesQueueAndFileAlone()
{
    enqueue(QStringLiteral("ab"));
    const QByteArray before = file().bytes();
    const QDateTime written = QFileInfo(file().path()).lastModified();

    const Request first = m_queue->head();
    const Request second = m_queue->head();

    QCOMPARE(first, someRequest(QStringLiteral("a")));
    QCOMPARE(second, first);
    QCOMPARE(idsOf(m_queue->snapshot()), letters(QStringLiteral("ab")));
    QCOMPARE(file().bytes(), before);
    QCOMPARE(QFileInfo(file().path()).lastModified(), written);
    QCOMPARE(m_listener.count, 0);
}

void RequestQueueTest::dequeueLeavesTheRestAtTheFirstIndexes()
{
    enqueue(QStringLiteral("abc"));

    m_queue->dequeue();

    QCOMPARE(file().value(QStringLiteral("requests/1/id")).toString(), QStringLiteral("b"));
    QCOMPARE(file().value(QStringLiteral("requests/2/id")).toString(), QStringLiteral("c"));
    QCOMPARE(file().value(QStringLiteral("requests/size")).toInt(), 2);
    QVERIFY(!file().keys().contains(QStringLiteral("requests/3/id")));
}

void RequestQueueTest::sizeEntryFollowsTheQueue()
{
    enqueue(QStringLiteral("a"));
    QCOMPARE(file().value(QStringLiteral("requests/size")).toInt(), 1);

    m_queue->dequeue();

    QCOMPARE(file().keys(), QStringList {QStringLiteral("requests/size")});
    QCOMPARE(file().value(QStringLiteral("requests/size")).toInt(), 0);
}

void RequestQueueTest::stateOfTheOriginalDoesNotReachTheQueue()
{
    Request request = someRequest(QStringLiteral("a"));
    m_queue->enqueue(request);
    request.id = QStringLiteral("b");

    Request head = m_queue->head();
    head.state = StateDone;

    QCOMPARE(m_queue->head().id, QStringLiteral("a"));
    QCOMPARE(m_queue->head().state, int(StateNew));
}

void RequestQueueTest::removalTakesAllStepsOfAnAddress()
{
    const QString url = QStringLiteral("http://h/FI.zip");
    m_queue->enqueue(someRequest(QStringLiteral("FI"), url));
    m_queue->enqueue(someRequest(QStringLiteral("SE")));
    m_queue->enqueue(someRequest(QStringLiteral("other id"), url));
    m_queue->enqueue(someRequest(QStringLiteral("FI")));
    m_listener.count = 0;

    m_queue->removeRequests(url);

    // The second FI has another address: the id is not looked at.
    QCOMPARE(file().ids(), QStringList({QStringLiteral("SE"), QStringLiteral("FI")}));
    QCOMPARE(idsOf(m_queue->snapshot()), file().ids());
    QCOMPARE(m_listener.count, 1);
}

void RequestQueueTest::removalComparesAddressesExactly()
{
    m_queue->enqueue(someRequest(QStringLiteral("a"), QStringLiteral("http://h/A.zip")));

    m_queue->removeRequests(QStringLiteral("http://h/a.zip"));
    m_queue->removeRequests(QStringLiteral("http://h/A.zi"));
    m_queue->removeRequests(QStringLiteral("http://H/A.zip"));
    m_queue->removeRequests(QString());

    QCOMPARE(file().ids(), QStringList {QStringLiteral("a")});
}

void RequestQueueTest::removalThatHitsNothingStillRewritesAndTells()
{
    enqueue(QStringLiteral("ab"));
    file().write("[General]\n"); // what the rewriting brings back

    m_queue->removeRequests(QStringLiteral("http://h/none"));

    QCOMPARE(file().ids(), letters(QStringLiteral("ab")));
    QCOMPARE(m_listener.count, 1);
}

void RequestQueueTest::removalMayBeGivenTheAddressOfAnItem()
{
    m_queue->enqueue(someRequest(QStringLiteral("a"), QStringLiteral("u")));
    m_queue->enqueue(someRequest(QStringLiteral("b")));
    m_queue->enqueue(someRequest(QStringLiteral("c"), QStringLiteral("u")));

    m_queue->removeRequests(std::as_const(*m_queue).first().url);

    QCOMPARE(file().ids(), QStringList {QStringLiteral("b")});
}

void RequestQueueTest::removalsFromAnEmptyQueueTellWithoutWriting()
{
    m_queue->removeRequests(QStringLiteral("http://h/a"));
    QCOMPARE(m_listener.count, 1);
    m_queue->removeAllRequests();
    QCOMPARE(m_listener.count, 2);

    QVERIFY(!file().exists());
}

void RequestQueueTest::everythingCanBeRemoved()
{
    enqueue(QStringLiteral("abc"));

    m_queue->removeAllRequests();

    QVERIFY(m_queue->isEmpty());
    QCOMPARE(file().keys(), QStringList {QStringLiteral("requests/size")});
    QCOMPARE(m_listener.count, 1);
}

void RequestQueueTest::stoppedQueueAnswersAtOnce()
{
    enqueue(QStringLiteral("a"));

    m_queue->stop();

    for (const Request &request : {m_queue->dequeue(), m_queue->head()}) {
        QCOMPARE(request.type, 0);
        QVERIFY(request.id.isNull());
        QVERIFY(request.url.isNull());
        QVERIFY(!request.payload.isValid());
    }
    QCOMPARE(file().ids(), QStringList {QStringLiteral("a")});
    QCOMPARE(m_listener.count, 0);
}

void RequestQueueTest::stoppedQueueStillTakesAndRemoves()
{
    m_queue->stop();

    enqueue(QStringLiteral("abc"));
    QCOMPARE(file().ids(), letters(QStringLiteral("abc")));
    m_queue->removeRequests(QStringLiteral("http://h/b"));
    QCOMPARE(file().ids(), letters(QStringLiteral("ac")));
    m_queue->removeAllRequests();

    QCOMPARE(file().ids(), QStringList());
    QCOMPARE(m_listener.count, 2);
}

void RequestQueueTest::dequeueIfHeadTakesOnlyThatOne()
{
    enqueue(QStringLiteral("ab"));
    Request worked = m_queue->head();
    worked.state = StateDone; // as the engine's copy has it by then

    QVERIFY(!m_queue->dequeueIfHead(someRequest(QStringLiteral("b"))));
    QCOMPARE(file().ids(), letters(QStringLiteral("ab")));
    QCOMPARE(m_listener.count, 0);

    QVERIFY(m_queue->dequeueIfHead(worked));
    QCOMPARE(file().ids(), letters(QStringLiteral("b")));
    QCOMPARE(m_listener.count, 1);

    QVERIFY(!m_queue->dequeueIfHead(worked));
    QCOMPARE(file().ids(), letters(QStringLiteral("b")));
}

void RequestQueueTest::dequeueIfHeadOfAnEmptyQueueDoesNotWait()
{
    QVERIFY(!m_queue->dequeueIfHead(Request()));
    QCOMPARE(m_listener.count, 0);
}

void RequestQueueTest::isHeadKnowsTheOldest()
{
    QVERIFY(!m_queue->isHead(Request()));
    enqueue(QStringLiteral("ab"));

    QVERIFY(m_queue->isHead(someRequest(QStringLiteral("a"))));
    QVERIFY(!m_queue->isHead(someRequest(QStringLiteral("b"))));
}

void RequestQueueTest::listenerIsToldOncePerChange()
{
    m_queue->enqueue(someRequest(QStringLiteral("a")));
    QCOMPARE(m_listener.count, 1);
    m_queue->head();
    QCOMPARE(m_listener.count, 1);
    m_queue->dequeue();
    QCOMPARE(m_listener.count, 2);
    QCOMPARE(m_listener.thread.load(), QThread::currentThread());

    Background other([this] { m_queue->enqueue(someRequest(QStringLiteral("b"))); });
    QVERIFY(other.ends());
    QCOMPARE(m_listener.count, 3);
    QCOMPARE(m_listener.thread.load(), other.thread()); // the thread that made the change
}

void RequestQueueTest::listenerMayCallBack()
{
    QList<qsizetype> sizes;
    m_listener.action = [&] {
        // Every one of these takes the lock.
        sizes.append(m_queue->snapshot().size());
        m_queue->isHead(Request());
        if (m_listener.count == 1)
            m_queue->enqueue(someRequest(QStringLiteral("second")));
    };

    m_queue->enqueue(someRequest(QStringLiteral("first")));
    m_queue->dequeue();
    m_queue->dequeueIfHead(someRequest(QStringLiteral("second")));
    m_queue->removeRequests(QString());
    m_queue->removeAllRequests();

    QCOMPARE(sizes, (QList<qsizetype> {1, 2, 1, 0, 0, 0}));
}

void RequestQueueTest::queueWorksWithoutAListener()
{
    Queue queue(nullptr);

    queue.enqueue(someRequest(QStringLiteral("a")));
    queue.removeAllRequests();

    QVERIFY(queue.isEmpty());
}

void RequestQueueTest::snapshotIsACopy()
{
    enqueue(QStringLiteral("ab"));

    QList<Request> copy = m_queue->snapshot();
    copy.removeFirst();

    QCOMPARE(idsOf(m_queue->snapshot()), letters(QStringLiteral("ab")));
}

void RequestQueueTest::serializesIntoAnyGivenSettings()
{
    enqueue(QStringLiteral("ab"));
    const QByteArray before = file().bytes();
    const QString path = m_home->path() + QLatin1String("/other.conf");
    QSettings settings(path, QSettings::IniFormat);
    m_listener.count = 0;

    const int status = m_queue->serialize(settings);

    QVERIFY(QFileInfo::exists(path)); // synced
    QCOMPARE(settings.value(QStringLiteral("requests/size")).toInt(), 2);
    QCOMPARE(settings.value(QStringLiteral("requests/2/id")).toString(), QStringLiteral("b"));
    QVERIFY(settings.group().isEmpty());
    QCOMPARE(file().bytes(), before);
    QCOMPARE(m_listener.count, 0);
    QCOMPARE(status, 0);
}

void RequestQueueTest::serializingDropsTheOldArrayOnly()
{
    file().write("[General]\nisSuspended=true\n[download]\nurl=http://h/x\n[requests]\n1\\id=old\n"
                 "1\\type=9\n7\\id=older\nstray=1\nsize=7\n[requestsX]\na=b\n");
    enqueue(QStringLiteral("a"));

    QStringList keys = file().keys();
    keys.sort();
    QCOMPARE(keys,
             QStringList({QStringLiteral("download/url"), QStringLiteral("isSuspended"),
                          QStringLiteral("requests/1/filename"), QStringLiteral("requests/1/id"),
                          QStringLiteral("requests/1/state"), QStringLiteral("requests/1/type"),
                          QStringLiteral("requests/1/url"), QStringLiteral("requests/size"),
                          QStringLiteral("requestsX/a")}));
}

void RequestQueueTest::changesLeaveTheFileThatAWholeRewritingLeaves()
{
    const auto numbered = [](int i) {
        const QString id = QString::number(i / 3);
        const QString url = QLatin1String("http://h/") + id;
        const QStringList paths {QLatin1String("/from/") + id, QStringLiteral("/to")};
        const QVariant payload = i % 5 == MoveRequest ? QVariant(paths) : QVariant(paths.first());
        return Request(id, i % 5, payload, url, i % 7 == 0 ? StateFailed : StateNew);
    };
    const auto isAsRewritten = [this] {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("whole.conf"));
        QSettings whole(path, QSettings::IniFormat);
        VexaCompat::useUtf8(whole);
        m_queue->serialize(whole);
        QFile written(path);
        return written.open(QIODevice::ReadOnly) && written.readAll() == file().bytes();
    };

    for (int i = 0; i < 60; ++i) {
        m_queue->enqueue(numbered(i));
        QVERIFY(isAsRewritten());
        if (i % 4 == 3)
            m_queue->dequeue();
        if (i % 11 == 10)
            m_queue->removeRequests(QLatin1String("http://h/") + QString::number(i / 4));
        if (i == 40)
            m_queue->removeAllRequests();
        if (i == 50)
            VexaSettings::destroy();
        QVERIFY(isAsRewritten());
    }
}

void RequestQueueTest::logsItsLifeAndItsCalls()
{
    const LogCatcher log(L::Trace);
    {
        Queue queue(nullptr);
        queue.enqueue(someRequest(QStringLiteral("a")));
        queue.head();
        queue.dequeueIfHead(someRequest(QStringLiteral("a")));
        queue.enqueue(someRequest(QStringLiteral("a")));
        queue.dequeue();
        queue.removeRequests(QString());
        queue.removeAllRequests();
        queue.stop();
        queue.head();
        queue.dequeue();
    }

    const QString enqueue = trace("void RequestQueue<T>::enqueue(const T&) [with T = Request]");
    const QString enqueing = trace("Enqueing an Item ...");
    const QString head = trace("T RequestQueue<T>::head() [with T = Request]");
    const QString dequeue = trace("T RequestQueue<T>::dequeue() [with T = Request]");
    const QString dequeing = trace("Dequeing an Item ..."); // head() says so too
    QCOMPARE(log.texts(),
             QStringList(
                 {trace("RequestQueue<T>::RequestQueue(IRequestQueueListener*) [with T = Request]"),
                  enqueue, enqueing, head, dequeing, dequeue, dequeing, enqueue, enqueing, dequeue,
                  dequeing,
                  trace("void RequestQueue<T>::removeRequests(const QString&) [with T = Request]"),
                  trace("void RequestQueue<T>::removeAllRequests() [with T = Request]"), head,
                  dequeue, trace("RequestQueue<T>::~RequestQueue() [with T = Request]")}));
}

void RequestQueueTest::waitingIsLogged()
{
    const LogCatcher log(L::Trace);
    {
        Background consumer([this] { m_queue->dequeue(); });
        QTRY_COMPARE(log.count(trace("Queue empty. Sleeping ...")), 1);
        m_queue->enqueue(someRequest(QStringLiteral("a")));
        QVERIFY(consumer.ends());
    }
    QStringList texts = log.texts();
    QCOMPARE(texts.mid(0, 2),
             QStringList({trace("T RequestQueue<T>::dequeue() [with T = Request]"),
                          trace("Queue empty. Sleeping ...")}));
    QCOMPARE(texts.mid(4),
             QStringList({trace("Got an Item. Waking up ..."), trace("Dequeing an Item ...")}));

    {
        Background consumer([this] { m_queue->head(); });
        QTRY_COMPARE(log.count(trace("Queue empty. Sleeping ...")), 2);
        m_queue->stop();
        QVERIFY(consumer.ends());
    }
    texts = log.texts();
    QCOMPARE(
        texts.mid(6),
        QStringList({trace("T RequestQueue<T>::head() [with T = Request]"),
                     trace("Queue empty. Sleeping ..."), trace("Got an Item. Waking up ...")}));
}

void RequestQueueTest::logsNothingBelowTheTraceLevel()
{
    const LogCatcher log(L::Info);

    enqueue(QStringLiteral("ab"));
    m_queue->head();
    m_queue->dequeue();
    m_queue->removeAllRequests();

    QCOMPARE(log.texts(), QStringList());
}

QTEST_GUILESS_MAIN(RequestQueueTest)
#include "tst_requestqueue.moc"
