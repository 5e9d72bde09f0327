// SPDX-License-Identifier: MIT
// The interface with a running engine, as a QML page uses it.
#include "download/downloadmanageriface.h"

#include "download/queuehelpers.h"
#include "download/runningworker.h"
#include "download/settingsfile.h"
#include "testutils/archivebuilder.h"
#include "testutils/httptestserver.h"
#include "testutils/logcatcher.h"
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QtTest>

using Server = HttpTestServer;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** A page that writes down what it hears, in "heard". */
const char Page[] = R"(
import QtQml 2.15
QtObject {
    id: page
    property var heard: []
    property bool suspendedNow: downloads.isSuspended
    property int queued: downloads.requests.length
    property bool wifi: downloads.hasWifiConnection
    property var files: downloads.unpackedFileList
    function hear(text) { heard.push(text) }
    property Connections connections: Connections {
        target: downloads
        function onFinished(operation, url, id) { page.hear("finished " + operation + " " + id + " " + url) }
        function onProgress(operation, url, id, bytesReceived, bytesTotal, estimatedTime) {
            page.hear("progress " + [operation, url, id, bytesReceived, bytesTotal, estimatedTime].join(" "))
        }
        function onError(operation, id, error, url) { page.hear("error " + [operation, id, error, url].join(" ")) }
        function onRecovery(isSuspended) { page.hear("recovery " + isSuspended) }
        function onIsSuspended(suspended) { page.hear("isSuspended " + suspended) }
        function onIsSuspendedChanged() { page.hear("isSuspendedChanged " + downloads.isSuspended) }
        function onRequestsChanged() { page.hear("requests " + downloads.requests.length) }
        function onUnpackedFileListChanged() { page.hear("files " + downloads.unpackedFileList.join(",")) }
        function onHasWifiConnectionChanged() { page.hear("wifi " + downloads.hasWifiConnection) }
    }
})";

} // namespace

class DownloadManagerIfaceQmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void handlersGetTheirParametersByName();
    void propertyAndSignalOfOneNameBothWork();
    void suspensionIsTold();
    void suspensionByTheNetworkIsNotTheUsers();
    void argumentOfCancelMayBeLeftOut_data();
    void argumentOfCancelMayBeLeftOut();
    void scriptDrivesTheQueue();
    void scriptCannotReachWhatIsNotMeantForIt();
    void changeMadeByTheWorkerReachesThePageInItsOwnThread();
    void regionIsDownloadedUnpackedAndMoved();
    void listIsThatOfTheUnpackThatFinished();
    void failedUnpackLeavesAnEmptyList();
    void listIsAskedOfTheEngineWhenNoneWasAnnounced();
    void runningTransferIsAbortedAheadOfTheEnd();
    void permissionsReachTheEngine();

private:
    SettingsFile file() const { return SettingsFile(*m_home); }
    DownloadManagerIface &iface() { return m_worker->iface(); }
    void start() { m_worker = std::make_unique<RunningWorker>(); }
    void openPage();
    QVariant evaluate(const QString &script);
    QStringList heard() { return m_page->property("heard").toStringList(); }
    void forget() { m_page->setProperty("heard", QVariantList()); }

    std::unique_ptr<TemporaryHome> m_home;
    std::unique_ptr<RunningWorker> m_worker;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QObject> m_page;
};

void DownloadManagerIfaceQmlTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void DownloadManagerIfaceQmlTest::cleanup()
{
    m_page.reset();
    m_engine.reset();
    m_worker.reset();
    m_home.reset();
}

void DownloadManagerIfaceQmlTest::openPage()
{
    m_engine = std::make_unique<QQmlEngine>();
    m_engine->rootContext()->setContextProperty(QStringLiteral("downloads"), &iface());
    QQmlComponent component(m_engine.get());
    component.setData(Page, QUrl());
    m_page.reset(component.create());
    QVERIFY2(m_page, qPrintable(component.errorString()));
}

QVariant DownloadManagerIfaceQmlTest::evaluate(const QString &script)
{
    m_engine->globalObject().setProperty(QStringLiteral("downloads"),
                                         m_engine->newQObject(&iface()));
    QQmlEngine::setObjectOwnership(&iface(), QQmlEngine::CppOwnership);
    const QJSValue value = m_engine->evaluate(script);
    return value.isError() ? QVariant(QLatin1String("error: ") + value.toString())
                           : value.toVariant();
}

void DownloadManagerIfaceQmlTest::handlersGetTheirParametersByName()
{
    start();
    openPage();
    DownloadManager &manager = m_worker->manager();
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");

    Q_EMIT manager.finished(4, a, b);
    Q_EMIT manager.progress(2, a, b, 5000000000, 6000000000, 7);
    Q_EMIT manager.error(2, a, 1, b);
    Q_EMIT manager.recovery(true);
    deliverEvents();

    QCOMPARE(heard(),
             QStringList({QStringLiteral("finished 4 b a"),
                          QStringLiteral("progress 2 a b 5000000000 6000000000 7"),
                          QStringLiteral("error 2 a 1 b"), QStringLiteral("recovery true")}));
    QVERIFY(iface().property("inRecovery").toBool());
}

void DownloadManagerIfaceQmlTest::propertyAndSignalOfOneNameBothWork()
{
    start();
    m_worker->goOnline();
    deliverEvents();
    openPage();
    QVERIFY(!m_page->property("suspendedNow").toBool());

    evaluate(QStringLiteral("downloads.suspend()"));

    QVERIFY(m_page->property("suspendedNow").toBool());
    QCOMPARE(evaluate(QStringLiteral("downloads.isSuspended")), QVariant(true));
    QCOMPARE(heard(),
             QStringList(
                 {QStringLiteral("isSuspended true"), QStringLiteral("isSuspendedChanged true")}));
    deliverEvents();
    // What the engine itself has to say comes behind the call.
    QCOMPARE(heard().mid(2), QStringList {QStringLiteral("isSuspendedChanged true")});
}

void DownloadManagerIfaceQmlTest::suspensionIsTold()
{
    start();
    m_worker->goOnline();
    deliverEvents();
    QSignalSpy told(&iface(), &DownloadManagerIface::isSuspended);
    QSignalSpy changed(&iface(), &DownloadManagerIface::isSuspendedChanged);

    iface().suspend();
    QVERIFY(iface().suspended());
    iface().suspend(); // tells again, though it is suspended already
    iface().resume();
    QVERIFY(!iface().suspended());

    QCOMPARE(told, (QList<QVariantList> {{true}, {true}, {false}}));
    QCOMPARE(changed.count(), 3);
    deliverEvents();
    QCOMPARE(changed.count(), 5); // and the engine tells of its two changes
}

void DownloadManagerIfaceQmlTest::suspensionByTheNetworkIsNotTheUsers()
{
    start();
    m_worker->goOnline();
    QSignalSpy told(&iface(), &DownloadManagerIface::isSuspended);
    const LogCatcher log(L::Info);

    iface().suspend(NetworkCause);
    iface().resume(); // the user's does not lift it
    iface().resume(NetworkCause);

    QCOMPARE(told, (QList<QVariantList> {{true}, {true}, {false}}));
    QVERIFY(log.texts().contains(QStringLiteral("[INFO] Suspending... Cause: 2")));
    QVERIFY(log.texts().contains(QStringLiteral("[INFO] Will not resume - 2")));
    QVERIFY(log.texts().contains(QStringLiteral("[INFO] Will resume - 4")));
}

void DownloadManagerIfaceQmlTest::argumentOfCancelMayBeLeftOut_data()
{
    QTest::addColumn<QString>("call");
    QTest::addColumn<QStringList>("left");
    const QStringList nothing;
    QTest::newRow("left out") << QStringLiteral("downloads.cancel()") << nothing;
    QTest::newRow("empty") << QStringLiteral("downloads.cancel('')") << nothing;
    QTest::newRow("null") << QStringLiteral("downloads.cancel(null)") << nothing;
    QTest::newRow("all") << QStringLiteral("downloads.cancelAll()") << nothing;
    QTest::newRow("one address") << QStringLiteral("downloads.cancel('http://h/a')")
                                 << QStringList {QStringLiteral("b"), QStringLiteral("b")};
    QTest::newRow("another address") << QStringLiteral("downloads.cancel('http://h/A')")
                                     << QStringList {QStringLiteral("a"), QStringLiteral("a"),
                                                     QStringLiteral("b"), QStringLiteral("b")};
}

void DownloadManagerIfaceQmlTest::argumentOfCancelMayBeLeftOut()
{
    QFETCH(QString, call);
    QFETCH(QStringList, left);
    start(); // and not allowed online: nothing is fetched
    openPage();
    for (const QString &id : {QStringLiteral("a"), QStringLiteral("b")})
        iface().download(id, QLatin1String("http://h/") + id, QStringLiteral("/d/"), false);

    evaluate(call);

    QCOMPARE(file().ids(), left);
}

void DownloadManagerIfaceQmlTest::scriptDrivesTheQueue()
{
    start();
    openPage();

    evaluate(QStringLiteral("downloads.download('FI', 'http://h/FI.zip', '/d/', true)"));
    evaluate(QStringLiteral("downloads.testDownload('http://h/t')"));

    QCOMPARE(m_page->property("queued").toInt(), 4);
    QCOMPARE(
        evaluate(QStringLiteral("downloads.getRequests().map(function(r) { return r.type + r.id "
                                "+ Object.keys(r).sort() }).join(' ')")),
        QVariant(QStringLiteral("2FIid,type,url 3FIid,type,url 4FIid,type,url 1id,type,url")));
    QCOMPARE(evaluate(QStringLiteral("downloads.isInQueue('FI')")), QVariant(true));
    QCOMPARE(evaluate(QStringLiteral("downloads.isInQueue('SE')")), QVariant(false));
    QCOMPARE(evaluate(QStringLiteral("downloads.currentlyActiveId()")),
             QVariant(QStringLiteral("FI")));
    QVERIFY(evaluate(QStringLiteral("downloads.freeDiskSpace")).toDouble() > 0);
}

void DownloadManagerIfaceQmlTest::scriptCannotReachWhatIsNotMeantForIt()
{
    start();
    openPage();

    for (const char *name : {"setHasWiFi", "setUnpackedFileList", "expectUnpackedFileList",
                             "getFreeSpace", "doAllowGprsConnection", "onChanged"}) {
        QCOMPARE(evaluate(QLatin1String("typeof downloads.") + QLatin1String(name)),
                 QVariant(QStringLiteral("undefined")));
    }
    // Read-only: an assignment is an error or no effect, but never a change.
    evaluate(QStringLiteral("downloads.inRecovery = true"));
    QVERIFY(!iface().isInRecovery());
}

void DownloadManagerIfaceQmlTest::changeMadeByTheWorkerReachesThePageInItsOwnThread()
{
    start();
    openPage();
    m_worker->worker.enqueueRequest(someRequest(QStringLiteral("a")));
    deliverEvents();
    forget();
    std::atomic<QThread *> emitter {nullptr};
    QObject::connect(
        &iface(), &DownloadManagerIface::requestsChanged, &iface(),
        [&] { emitter = QThread::currentThread(); }, Qt::DirectConnection);

    Background other([this] { m_worker->worker.getRequestQueue()->removeAllRequests(); });
    QVERIFY(other.ends());

    QCOMPARE(emitter.load(), other.thread());
    const auto heardRequests = [this] { return heard().filter(QStringLiteral("requests ")); };
    QCOMPARE(heardRequests(), QStringList()); // not there ...
    QTRY_COMPARE(heardRequests(), QStringList {QStringLiteral("requests 0")}); // ... but here
    QCOMPARE(m_page->property("queued").toInt(), 0);
}

void DownloadManagerIfaceQmlTest::regionIsDownloadedUnpackedAndMoved()
{
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("a.cdt"), "tile a");
    builder.addFile(QStringLiteral("b.cdt"), "tile b");
    Server server;
    server.add("/FI.zip", contentOf(builder.make(QStringLiteral("FI.zip"))));
    const QString url = server.url("/FI.zip");
    const QString target = m_home->myDocs() + QLatin1String("/tiles/");
    start();
    openPage();

    evaluate(QStringLiteral("downloads.allowGprsConnection(true); downloads.allowGoOnline(true);"
                            "downloads.download('FI', '%1', '%2', true)")
                 .arg(url, target));

    const QString end = QStringLiteral(" FI ") + url;
    QTRY_VERIFY(heard().contains(QLatin1String("finished 4") + end));
    const QStringList all = heard();
    QCOMPARE(all.filter(QStringLiteral("finished ")),
             QStringList({QLatin1String("finished 2") + end, QLatin1String("finished 3") + end,
                          QLatin1String("finished 3") + end, QLatin1String("finished 4") + end}));
    QCOMPARE(all.filter(QStringLiteral("error ")), QStringList());
    QTRY_COMPARE(m_page->property("queued").toInt(), 0);
    QStringList files = iface().getUnpackedFileList();
    files.sort();
    QCOMPARE(files, QStringList({QStringLiteral("a.cdt"), QStringLiteral("b.cdt")}));
    QCOMPARE(m_page->property("files").toStringList(), iface().getUnpackedFileList());
    QCOMPARE(contentOf(target + QLatin1String("b.cdt")), QByteArray("tile b"));
}

void DownloadManagerIfaceQmlTest::listIsThatOfTheUnpackThatFinished()
{
    Server server;
    for (const char *name : {"one", "two", "three"}) {
        ArchiveBuilder builder;
        builder.addFile(QLatin1String(name) + QLatin1String(".cdt"), name);
        server.add(QByteArray("/") + name,
                   contentOf(builder.make(QLatin1String(name) + QLatin1String(".tar"))));
    }
    start();
    iface().allowGprsConnection(true);
    iface().allowGoOnline(true);
    openPage();
    for (const char *name : {"one", "two", "three"})
        iface().download(QLatin1String(name), server.url(QByteArray("/") + name),
                         m_home->myDocs() + QLatin1Char('/'), true);
    forget();

    // The page gets no chance to run until everything has been unpacked and moved.
    QVERIFY(m_worker->waitForEmptyQueue());
    QCOMPARE(heard().filter(QStringLiteral("finished")), QStringList());
    QTRY_COMPARE(heard().filter(QStringLiteral("finished 4")).size(), 3);

    QStringList seen;
    const QStringList all = heard();
    for (const QString &line : all) {
        if (line.startsWith(QLatin1String("finished 3")))
            seen << line.section(QLatin1Char(' '), 2, 2);
        else if (line.startsWith(QLatin1String("files")))
            seen << line;
    }
    QStringList expected;
    for (const char *name : {"one", "two", "three"}) {
        for (int i = 0; i < 2; ++i) // each unpack tells of its end twice
            expected << QLatin1String(name)
                     << QLatin1String("files ") + QLatin1String(name) + QLatin1String(".cdt");
    }
    QCOMPARE(seen, expected);
}

void DownloadManagerIfaceQmlTest::failedUnpackLeavesAnEmptyList()
{
    start();
    openPage();
    iface().setUnpackedFileList(QStringList {QStringLiteral("old")});
    const QString broken = m_home->path() + QLatin1String("/broken.zip");
    QFile file(broken);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("no archive");
    file.close();

    m_worker->worker.enqueueRequest(
        Request(QStringLiteral("a"), UncompressRequest, broken, QStringLiteral("u")));

    QTRY_VERIFY(heard().contains(QStringLiteral("error 3 a 2 u")));
    QTRY_COMPARE(heard().last(), QStringLiteral("files "));
    QVERIFY(iface().getUnpackedFileList().isEmpty());
}

void DownloadManagerIfaceQmlTest::listIsAskedOfTheEngineWhenNoneWasAnnounced()
{
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("x"), "x");
    start();
    QSignalSpy changed(&iface(), &DownloadManagerIface::unpackedFileListChanged);
    m_worker->worker.enqueueRequest(Request(QStringLiteral("a"), UncompressRequest,
                                            builder.make(QStringLiteral("a.tar")),
                                            QStringLiteral("u")));
    QTRY_COMPARE(changed.count(), 2);
    iface().setUnpackedFileList(QStringList());

    iface().onFinished(2, QString(), QString());
    QVERIFY(iface().getUnpackedFileList().isEmpty());
    iface().onFinished(3, QString(), QString());

    QCOMPARE(iface().getUnpackedFileList(), QStringList {QStringLiteral("x")});
    QCOMPARE(changed.count(), 4);
}

void DownloadManagerIfaceQmlTest::runningTransferIsAbortedAheadOfTheEnd()
{
    Server server;
    server.add("/a", Server::Content::generated(1, 1000000), Server::StallAfter(500000));
    start();
    m_worker->goOnline();
    iface().download(QStringLiteral("a"), server.url("/a"), QStringLiteral("/d/"), false);
    QTRY_VERIFY(QFileInfo(m_home->downloadFolder() + QLatin1Char('a')).size() > 0);
    QCOMPARE(server.openConnections(), 1);

    iface().prepareToDestroy();

    QTRY_COMPARE(server.openConnections(), 0);
    QVERIFY(m_worker->stop());
    QCOMPARE(file().ids().size(), 2); // to be gone on with next time
}

void DownloadManagerIfaceQmlTest::permissionsReachTheEngine()
{
    start();
    openPage();
    const LogCatcher log(L::Trace);

    evaluate(QStringLiteral("downloads.allowGprsConnection(true)"));
    QVERIFY(iface().doAllowGprsConnection());
    QVERIFY(iface().suspended()); // no network at all is allowed yet
    evaluate(QStringLiteral("downloads.allowGoOnline(true)"));
    QVERIFY(!iface().suspended());
    evaluate(QStringLiteral("downloads.allowGprsConnection(false)"));
    QVERIFY(iface().suspended());
    iface().setHasWiFi(true);
    QVERIFY(log.texts().contains(QStringLiteral("[TRACE] m_hasWifiConnection: 1")));
    QVERIFY(iface().suspended()); // looked at by the next transfer or permission
    evaluate(QStringLiteral("downloads.allowGoOnline(true)"));
    QVERIFY(!iface().suspended());

    forget();
    deliverEvents();
    QVERIFY(heard().contains(QStringLiteral("wifi true"))); // the engine says it, too
    QVERIFY(m_page->property("wifi").toBool());
}

QTEST_GUILESS_MAIN(DownloadManagerIfaceQmlTest)
#include "tst_downloadmanagerifaceqml.moc"
