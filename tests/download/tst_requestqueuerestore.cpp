// SPDX-License-Identifier: MIT
// What an earlier run left in the settings: taken up whole, or left alone.
#include "download/queuehelpers.h"
#include "download/requestqueue.h"
#include "download/settingsfile.h"
#include "testutils/childprogram.h"
#include "testutils/logcatcher.h"
#include <QCoreApplication>
#include <QtTest>

namespace {

constexpr int ManyRequests = 300;

/** What this program does when it is started as the one that is killed: it loads, again and again.
 */
int loadForEver(const QString &settingsFolder)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsFolder);
    QTextStream out(stdout);
    for (;;) {
        CountingListener listener;
        Queue queue(&listener);
        queue.restoreSaved();
        VexaSettings::destroy();
        out << queue.size() << " loaded" << Qt::endl;
    }
}

} // namespace

class RequestQueueRestoreTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void savedRequestsComeBackInOrder();
    void nothingSavedChangesNothing();
    void runningTwiceTakesUpOnce();
    void queueWithItemsIsLeftAlone();
    void listenerIsToldOfEachWithoutTheLock();
    void logsAsIfEachWereEnqueued();
    void waitingConsumerIsWoken();
    void damagedArrayGivesTheEntriesThatAreThere_data();
    void damagedArrayGivesTheEntriesThatAreThere();
    void takingUpMendsADamagedArray();
    void unknownTypesAreKept();
    void otherKeysStay();
    void thousandsAreTakenUpInOneWrite();
    void killWhileLoadingLosesNothing();
};

void RequestQueueRestoreTest::savedRequestsComeBackInOrder()
{
    const TemporaryHome home;
    const Request move(QStringLiteral("FI"), MoveRequest,
                       QStringList {QStringLiteral("/from"), QStringLiteral("/to")},
                       QStringLiteral("http://h/FI"));
    {
        Queue before(nullptr);
        for (int i = 0; i < 12; ++i) // 10 sorts behind 9, not behind 1
            before.enqueue(someRequest(QString::number(i)));
        before.enqueue(move);
        VexaSettings::destroy();
    }
    const QByteArray bytes = SettingsFile(home).bytes();

    Queue queue(nullptr);
    queue.restoreSaved();

    QCOMPARE(queue.size(), 13);
    for (int i = 0; i < 12; ++i)
        QCOMPARE(queue.at(i), someRequest(QString::number(i)));
    QCOMPARE(queue.at(12), move);
    QVERIFY(queue.hasSavedTransfer);
    QCOMPARE(SettingsFile(home).bytes(), bytes);
}

void RequestQueueRestoreTest::nothingSavedChangesNothing()
{
    const TemporaryHome home;
    CountingListener listener;
    Queue queue(&listener);

    queue.restoreSaved();

    QVERIFY(queue.isEmpty());
    QVERIFY(!queue.hasSavedTransfer);
    QCOMPARE(listener.count, 0);
    QVERIFY(!SettingsFile(home).exists());
}

void RequestQueueRestoreTest::runningTwiceTakesUpOnce()
{
    const TemporaryHome home;
    SettingsFile(home).write("[requests]\n1\\id=a\n1\\type=2\nsize=1\n");
    CountingListener listener;
    Queue queue(&listener);

    queue.restoreSaved();
    queue.restoreSaved();

    QCOMPARE(queue.size(), 1);
    QCOMPARE(listener.count, 1);
}

void RequestQueueRestoreTest::queueWithItemsIsLeftAlone()
{
    const TemporaryHome home;
    Queue queue(nullptr);
    queue.enqueue(someRequest(QStringLiteral("a")));

    queue.restoreSaved();

    QCOMPARE(queue.size(), 1);
    QVERIFY(!queue.hasSavedTransfer);
}

void RequestQueueRestoreTest::listenerIsToldOfEachWithoutTheLock()
{
    const TemporaryHome home;
    SettingsFile(home).write("[requests]\n1\\id=a\n1\\type=2\n2\\id=b\n2\\type=2\nsize=2\n");
    CountingListener listener;
    Queue queue(&listener);
    QList<qsizetype> sizes;
    listener.action = [&] { sizes.append(queue.snapshot().size()); };

    queue.restoreSaved();

    QCOMPARE(sizes, (QList<qsizetype> {2, 2}));
}

void RequestQueueRestoreTest::logsAsIfEachWereEnqueued()
{
    const TemporaryHome home;
    SettingsFile(home).write("[requests]\n1\\id=a\n1\\type=2\n2\\id=b\n2\\type=2\nsize=2\n");
    Queue queue(nullptr);
    const LogCatcher log(L::Trace);

    queue.restoreSaved();

    const QString call =
        QStringLiteral("[TRACE] void RequestQueue<T>::enqueue(const T&) [with T = Request]");
    const QString enqueing = QStringLiteral("[TRACE] Enqueing an Item ...");
    QCOMPARE(log.texts(), QStringList({call, enqueing, call, enqueing}));
}

void RequestQueueRestoreTest::waitingConsumerIsWoken()
{
    const TemporaryHome home;
    const LogCatcher log(L::Trace);
    Queue queue(nullptr);
    Request got;
    Background consumer([&] { got = queue.head(); });
    QTRY_COMPARE(log.count(QStringLiteral("[TRACE] Queue empty. Sleeping ...")), 1);
    SettingsFile(home).write("[requests]\n1\\id=a\n1\\type=2\nsize=1\n");

    queue.restoreSaved();

    QVERIFY(consumer.ends());
    QCOMPARE(got.id, QStringLiteral("a"));
}

void RequestQueueRestoreTest::damagedArrayGivesTheEntriesThatAreThere_data()
{
    QTest::addColumn<QByteArray>("array");
    QTest::addColumn<QString>("ids");
    const QByteArray one = "1\\id=a\n1\\type=2\n";
    const QByteArray two = "2\\id=b\n2\\type=2\n";
    const QByteArray three = "3\\id=c\n3\\type=2\n";

    QTest::newRow("whole") << one + two + "size=2\n" << QStringLiteral("ab");
    QTest::newRow("empty") << QByteArray("size=0\n") << QString();
    QTest::newRow("size of two thousand millions") << one + "size=2000000000\n"
                                                   << QStringLiteral("a");
    QTest::newRow("size beyond an int") << one + "size=99999999999\n" << QStringLiteral("a");
    QTest::newRow("negative size") << one + two + "size=-5\n" << QStringLiteral("ab");
    QTest::newRow("no size") << one + two << QStringLiteral("ab");
    QTest::newRow("size that is no number") << one + "size=many\n" << QStringLiteral("a");
    QTest::newRow("size alone") << QByteArray("size=3\n") << QString();
    QTest::newRow("a hole") << one + three + "size=3\n" << QStringLiteral("ac");
    QTest::newRow("first one missing") << two + three + "size=3\n" << QStringLiteral("bc");
    QTest::newRow("entries behind the size") << one + two + "size=1\n" << QStringLiteral("a");
    QTest::newRow("entries that are no numbers")
        << one + "x\\id=x\n0\\id=0\n-1\\id=m\n01\\id=z\n2x\\id=y\nsize=3\n"
        << QStringLiteral("a");
    QTest::newRow("in another order") << three + one + two + "size=3\n" << QStringLiteral("abc");
    QTest::newRow("cut in the middle") << one + "2\\id=b\n2\\ty" << QStringLiteral("ab");
    QTest::newRow("rubbish between") << one + "%%%\n\x01\x02\n[=\n[requests]\n" + two + "size=2\n"
                                     << QStringLiteral("ab");
}

void RequestQueueRestoreTest::damagedArrayGivesTheEntriesThatAreThere()
{
    QFETCH(QByteArray, array);
    QFETCH(QString, ids);
    const TemporaryHome home;
    SettingsFile(home).write("[requests]\n" + array);
    Queue queue(nullptr);

    queue.restoreSaved();

    QString restored;
    for (const Request &request : std::as_const(queue))
        restored += request.id;
    QCOMPARE(restored, ids);
    QCOMPARE(bool(queue.hasSavedTransfer), !ids.isEmpty());
}

void RequestQueueRestoreTest::takingUpMendsADamagedArray()
{
    const TemporaryHome home;
    const SettingsFile file(home);
    file.write("[requests]\n1\\id=a\n1\\type=2\n7\\id=b\n7\\type=3\n7\\archiveName=/b\nsize=-5\n");
    Queue queue(nullptr);

    queue.restoreSaved();

    QCOMPARE(file.value(QStringLiteral("requests/size")).toInt(), 2);
    QCOMPARE(file.ids(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(file.requests().at(1).payload, QVariant(QStringLiteral("/b")));
    QVERIFY(!file.keys().contains(QStringLiteral("requests/7/id")));
}

void RequestQueueRestoreTest::unknownTypesAreKept()
{
    const TemporaryHome home;
    const SettingsFile file(home);
    file.write("[requests]\n1\\id=a\n1\\type=9\n1\\state=3\n1\\url=u\nsize=1\n");
    Queue queue(nullptr);

    queue.restoreSaved();

    QCOMPARE(queue.head(), Request(QStringLiteral("a"), 9, QVariant(), QStringLiteral("u")));
    QCOMPARE(queue.head().state, 3);
    QCOMPARE(file.value(QStringLiteral("requests/1/type")).toInt(), 9);
}

void RequestQueueRestoreTest::otherKeysStay()
{
    const TemporaryHome home;
    const SettingsFile file(home);
    file.write("[General]\nisSuspended=true\n[download]\nbytesReceived=17\n"
               "[requests]\n1\\id=a\n1\\type=2\nsize=1\n");
    Queue queue(nullptr);

    queue.restoreSaved();

    QCOMPARE(file.value(QStringLiteral("isSuspended")).toBool(), true);
    QCOMPARE(file.value(QStringLiteral("download/bytesReceived")).toInt(), 17);
    QVERIFY(VexaSettings::settings->group().isEmpty());
}

void RequestQueueRestoreTest::thousandsAreTakenUpInOneWrite()
{
    const TemporaryHome home;
    QByteArray array = "[requests]\n";
    for (int i = 1; i <= 3000; ++i)
        array += QByteArray::number(i) + "\\id=" + QByteArray::number(i) + '\n';
    SettingsFile(home).write(array + "size=3000\n");
    CountingListener listener;
    Queue queue(&listener);
    int writes = 0;
    QByteArray last = SettingsFile(home).bytes();
    listener.action = [&] {
        if (listener.count % 500 != 1)
            return;
        const QByteArray now = SettingsFile(home).bytes();
        writes += now == last ? 0 : 1;
        last = now;
    };

    queue.restoreSaved();

    QCOMPARE(queue.size(), 3000);
    QCOMPARE(listener.count, 3000);
    QCOMPARE(writes, 1);
}

void RequestQueueRestoreTest::killWhileLoadingLosesNothing()
{
    const TemporaryHome home;
    const SettingsFile file(home);
    {
        QByteArray array = "[requests]\n";
        for (int i = 1; i <= ManyRequests; ++i)
            array += QByteArray::number(i) + "\\id=" + QByteArray::number(i) + "\n"
                + QByteArray::number(i) + "\\type=2\n";
        file.write(array + "size=" + QByteArray::number(ManyRequests) + '\n');
    }

    for (int i = 0; i < 12; ++i) {
        ChildProgram child(QCoreApplication::applicationFilePath(),
                           {QStringLiteral("--load-for-ever"), home.settingsFolder()});
        QVERIFY2(child.waitForLine(QByteArray::number(ManyRequests) + " loaded"),
                 child.output() + child.errorOutput());
        child.waitFor([] { return false; }, 3 * i); // so that it is hit at another place each time
        QVERIFY(child.isRunning());
        child.kill();
        // Qt waits half a minute for a lock file whose maker died before it could sign it.
        QFile::remove(file.path() + QLatin1String(".lock"));

        QCOMPARE(file.ids().size(), ManyRequests);
        QCOMPARE(file.ids().last(), QString::number(ManyRequests));
    }
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], "--load-for-ever") == 0)
        return loadForEver(QFile::decodeName(argv[2]));
    RequestQueueRestoreTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_requestqueuerestore.moc"
