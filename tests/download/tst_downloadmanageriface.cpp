// SPDX-License-Identifier: MIT
#include "download/downloadmanageriface.h"

#include "download/queuehelpers.h"
#include "download/settingsfile.h"
#include "download/worker.h"
#include "testutils/logcatcher.h"
#include <QSignalSpy>
#include <QStorageInfo>
#include <QtTest>

namespace {

QStringList strings(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

// What the log shows for a number: the character of that code.
QString character(int code)
{
    return QString(QChar(ushort(code)));
}

} // namespace

class DownloadManagerIfaceTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void isAnObjectFirstAndAListener();
    void startsWithItsFirstValues();
    void downloadQueuesTwoOrThreeRequests_data();
    void downloadQueuesTwoOrThreeRequests();
    void downloadTellsOfEachRequest();
    void downloadDoesNotLookForTheIdOrAddress();
    void testDownloadQueuesOneRequestWithAnEmptyId();
    void addressThatCannotBeParsedIsQueuedAllTheSame();
    void requestsAreMapsWithThreeEntries();
    void queueCanBeAskedForAnId();
    void withoutAnEngineForwardingDoesNothing();
    void permissionIsKeptWithoutAnEngine();
    void wifiIsKeptAndTold();
    void finishedIsLoggedAndPassedOn_data();
    void finishedIsLoggedAndPassedOn();
    void progressIsPassedOnSilently();
    void errorIsLoggedAndPassedOn_data();
    void errorIsLoggedAndPassedOn();
    void recoveryIsLoggedAndRemembered();
    void wifiStateOfTheEngineIsLoggedAndKept();
    void sessionStateIsIgnored();
    void suspensionOfTheEngineIsTold();
    void unpackedFileListCanBeReplaced();
    void expectedListBelongsToTheNextFinishedUnpack();
    void queueChangesAreLoggedAndTold();
    void freeSpaceIsThatOfTheDataRoot();
    void freeSpaceIsZeroWhenItCannotBeTold();
    void destructionCutsTheReceiversOff();

private:
    SettingsFile file() const { return SettingsFile(*m_home); }
    QString save(const char *name) const { return m_home->downloadFolder() + QLatin1String(name); }

    std::unique_ptr<TemporaryHome> m_home;
    std::unique_ptr<Worker> m_worker; // never started here
    DownloadManagerIface *m_iface = nullptr;
};

void DownloadManagerIfaceTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
    m_worker = std::make_unique<Worker>();
    m_iface = m_worker->getDownloadManagerIface();
}

void DownloadManagerIfaceTest::cleanup()
{
    m_worker.reset();
    m_home.reset();
}

void DownloadManagerIfaceTest::isAnObjectFirstAndAListener()
{
    IRequestQueueListener *listener = m_iface;
    QSignalSpy changed(m_iface, &DownloadManagerIface::requestsChanged);

    listener->onChanged();

    QCOMPARE(changed.count(), 1);
    QCOMPARE(static_cast<void *>(static_cast<QObject *>(m_iface)), static_cast<void *>(m_iface));
}

void DownloadManagerIfaceTest::startsWithItsFirstValues()
{
    QVERIFY(!m_iface->isInRecovery());
    QVERIFY(!m_iface->hasWifiConnection());
    QVERIFY(!m_iface->doAllowGprsConnection());
    QVERIFY(m_iface->suspended()); // there is no engine
    QVERIFY(m_iface->getUnpackedFileList().isEmpty());
    QVERIFY(m_iface->getRequests().isEmpty());
    QVERIFY(m_iface->currentlyActiveId().isNull());
    QVERIFY(!m_iface->isInQueue(QString()));
}

void DownloadManagerIfaceTest::downloadQueuesTwoOrThreeRequests_data()
{
    QTest::addColumn<bool>("unzip");
    QTest::newRow("as it is") << false;
    QTest::newRow("unpacked") << true;
}

void DownloadManagerIfaceTest::downloadQueuesTwoOrThreeRequests()
{
    QFETCH(bool, unzip);
    const QString id = QStringLiteral("FI");
    const QString url = QStringLiteral("http://h/map5/FI%20a.zip?x=1");
    const QString saved = save("FI a.zip");
    const QString destination = QStringLiteral("/maps/");

    m_iface->download(id, url, destination, unzip);

    QList<Request> expected {Request(id, 2, saved, url)};
    if (unzip) {
        const QString scratch = m_home->path() + QLatin1String("/MyDocs/.vexa/tmp/unzipped");
        expected << Request(id, 3, saved, url)
                 << Request(id, 4, QStringList {scratch, destination}, url);
    } else {
        expected << Request(id, 4, QStringList {saved, destination}, url);
    }
    QCOMPARE(m_worker->getRequestQueue()->snapshot(), expected);
    QCOMPARE(file().requests(), expected);
    for (const Request &request : file().requests())
        QCOMPARE(request.state, 0);
}

void DownloadManagerIfaceTest::downloadTellsOfEachRequest()
{
    QSignalSpy changed(m_iface, &DownloadManagerIface::requestsChanged);

    m_iface->download(QStringLiteral("a"), QStringLiteral("http://h/a"), QStringLiteral("/d"),
                      true);

    QCOMPARE(changed.count(), 3);
}

void DownloadManagerIfaceTest::downloadDoesNotLookForTheIdOrAddress()
{
    for (int i = 0; i < 2; ++i)
        m_iface->download(QStringLiteral("a"), QStringLiteral("http://h/a"), QStringLiteral("/d"),
                          false);

    QCOMPARE(file().ids(), strings({"a", "a", "a", "a"}));
}

void DownloadManagerIfaceTest::testDownloadQueuesOneRequestWithAnEmptyId()
{
    m_iface->testDownload(QStringLiteral("http://h/a/"));

    const QList<Request> queued = m_worker->getRequestQueue()->snapshot();
    QCOMPARE(queued.size(), 1);
    QCOMPARE(queued.at(0), Request(QString(), 1, save("download"), QStringLiteral("http://h/a/")));
    QVERIFY(!queued.at(0).id.isNull());
    QVERIFY(queued.at(0).id.isEmpty());
    QVERIFY(file().keys().contains(QStringLiteral("requests/1/id")));
    QCOMPARE(file().requests(), queued);
}

void DownloadManagerIfaceTest::addressThatCannotBeParsedIsQueuedAllTheSame()
{
    m_iface->download(QStringLiteral("a"), QStringLiteral("http://[bad"), QStringLiteral("/d"),
                      false);
    m_iface->download(QStringLiteral("b"), QString(), QStringLiteral("/d"), false);

    const QList<Request> queued = m_worker->getRequestQueue()->snapshot();
    QCOMPARE(file().ids(), strings({"a", "a", "b", "b"}));
    QCOMPARE(queued.at(0).url, QStringLiteral("http://[bad"));
    QCOMPARE(queued.at(2).payload.toString(), save("download"));
}

void DownloadManagerIfaceTest::requestsAreMapsWithThreeEntries()
{
    m_iface->download(QStringLiteral("FI"), QStringLiteral("http://h/FI"), QStringLiteral("/d"),
                      true);

    const QVariantList requests = m_iface->getRequests();

    QCOMPARE(requests.size(), 3);
    for (int i = 0; i < 3; ++i) {
        const QVariantMap expected {{QStringLiteral("url"), QStringLiteral("http://h/FI")},
                                    {QStringLiteral("type"), i + 2},
                                    {QStringLiteral("id"), QStringLiteral("FI")}};
        QCOMPARE(requests.at(i).toMap(), expected);
        QCOMPARE(requests.at(i).toMap().value(QStringLiteral("type")).userType(),
                 int(QMetaType::Int));
    }
    QCOMPARE(m_iface->property("requests").toList(), requests);
}

void DownloadManagerIfaceTest::queueCanBeAskedForAnId()
{
    m_iface->download(QStringLiteral("FI"), QStringLiteral("http://h/FI"), QStringLiteral("/d"),
                      false);
    m_iface->download(QStringLiteral("SE"), QStringLiteral("http://h/SE"), QStringLiteral("/d"),
                      false);

    QCOMPARE(m_iface->currentlyActiveId(), QStringLiteral("FI"));
    QVERIFY(m_iface->isInQueue(QStringLiteral("FI")));
    QVERIFY(m_iface->isInQueue(QStringLiteral("SE")));
    QVERIFY(!m_iface->isInQueue(QStringLiteral("se")));
    QVERIFY(!m_iface->isInQueue(QStringLiteral("S")));
    QVERIFY(!m_iface->isInQueue(QString()));
}

void DownloadManagerIfaceTest::withoutAnEngineForwardingDoesNothing()
{
    m_iface->download(QStringLiteral("FI"), QStringLiteral("http://h/FI"), QStringLiteral("/d"),
                      false);
    QSignalSpy suspended(m_iface, &DownloadManagerIface::isSuspended);
    QSignalSpy changed(m_iface, &DownloadManagerIface::isSuspendedChanged);
    const LogCatcher log(L::Trace);

    m_iface->suspend();
    m_iface->resume();
    m_iface->suspend(NetworkCause);
    m_iface->resume(ForcedCause);
    m_iface->cancel();
    m_iface->cancel(QStringLiteral("http://h/FI"));
    m_iface->cancelAll();
    m_iface->allowGoOnline(true);
    m_iface->prepareToDestroy();

    QCOMPARE(log.texts(), QStringList());
    QCOMPARE(suspended.count() + changed.count(), 0);
    QVERIFY(m_iface->suspended());
    QCOMPARE(file().ids(), strings({"FI", "FI"}));
}

void DownloadManagerIfaceTest::permissionIsKeptWithoutAnEngine()
{
    m_iface->allowGprsConnection(true);
    QVERIFY(m_iface->doAllowGprsConnection());

    m_iface->allowGprsConnection(false);
    QVERIFY(!m_iface->doAllowGprsConnection());
}

void DownloadManagerIfaceTest::wifiIsKeptAndTold()
{
    QSignalSpy changed(m_iface, &DownloadManagerIface::hasWifiConnectionChanged);
    const LogCatcher log(L::Info);

    m_iface->setHasWiFi(true);
    QVERIFY(m_iface->hasWifiConnection());
    m_iface->setHasWiFi(true); // told again, though nothing changed

    QCOMPARE(changed.count(), 2);
    QCOMPARE(log.texts(),
             strings({"[INFO] void DownloadManagerIface::setHasWiFi(bool)",
                      "[INFO] void DownloadManagerIface::setHasWiFi(bool)"}));
}

void DownloadManagerIfaceTest::finishedIsLoggedAndPassedOn_data()
{
    QTest::addColumn<int>("operation");
    for (int operation : {0, 1, 2, 3, 4, 65, 0x20ac, -1})
        QTest::newRow(qPrintable(QString::number(operation))) << operation;
}

void DownloadManagerIfaceTest::finishedIsLoggedAndPassedOn()
{
    QFETCH(int, operation);
    QSignalSpy finished(m_iface, &DownloadManagerIface::finished);
    QSignalSpy list(m_iface, &DownloadManagerIface::unpackedFileListChanged);
    m_iface->setUnpackedFileList(strings({"kept"}));
    const LogCatcher log(L::Trace);

    m_iface->onFinished(operation, QStringLiteral("first"), QStringLiteral("second"));

    QCOMPARE(
        finished,
        (QList<QVariantList> {{operation, QStringLiteral("first"), QStringLiteral("second")}}));
    // The number is shown as a character, and the text names the first string "url".
    QCOMPARE(log.texts(),
             QStringList(QLatin1String("[TRACE] void DownloadManagerIface::onFinished(int, const "
                                       "QString&, const QString&)operation: ")
                         + character(operation) + QLatin1String("url: first")));
    QCOMPARE(m_iface->getUnpackedFileList(), strings({"kept"})); // there is no engine to ask
    QCOMPARE(list.count(), 1);
}

void DownloadManagerIfaceTest::progressIsPassedOnSilently()
{
    QSignalSpy progress(m_iface, &DownloadManagerIface::progress);
    const LogCatcher log(L::Trace);
    const qint64 large = Q_INT64_C(5000000000);

    m_iface->onProgress(2, QStringLiteral("a"), QStringLiteral("b"), large, large + 1, -1);

    QCOMPARE(progress,
             (QList<QVariantList> {
                 {2, QStringLiteral("a"), QStringLiteral("b"), large, large + 1, qint64(-1)}}));
    QCOMPARE(log.texts(), QStringList());
}

void DownloadManagerIfaceTest::errorIsLoggedAndPassedOn_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<int>("code");
    QTest::newRow("download failed") << 2 << 1;
    QTest::newRow("unpack failed") << 3 << 2;
    QTest::newRow("move failed") << 4 << 3;
    QTest::newRow("content refused") << 2 << 4;
    QTest::newRow("letters") << 65 << 66;
}

void DownloadManagerIfaceTest::errorIsLoggedAndPassedOn()
{
    QFETCH(int, operation);
    QFETCH(int, code);
    QSignalSpy error(m_iface, &DownloadManagerIface::error);
    const LogCatcher log(L::Warning);

    m_iface->onError(operation, QStringLiteral("id"), code, QStringLiteral("url"));

    QCOMPARE(
        error,
        (QList<QVariantList> {{operation, QStringLiteral("id"), code, QStringLiteral("url")}}));
    QCOMPARE(log.texts(),
             QStringList(QLatin1String("[WARNING] operation: ") + character(operation)
                         + QLatin1String("error: ") + character(code)
                         + QLatin1String(" at void DownloadManagerIface::onError(int, const "
                                         "QString&, int, const QString&)")));
}

void DownloadManagerIfaceTest::recoveryIsLoggedAndRemembered()
{
    QSignalSpy recovery(m_iface, &DownloadManagerIface::recovery);
    const LogCatcher log(L::Info);

    m_iface->onRecovery(true);
    QVERIFY(m_iface->isInRecovery());
    m_iface->onRecovery(false);
    QVERIFY(m_iface->isInRecovery()); // never goes back

    QCOMPARE(recovery, (QList<QVariantList> {{true}, {false}}));
    // The value is the place where the label begins.
    QCOMPARE(log.texts(),
             strings({"[INFO] sSuspended:  at void DownloadManagerIface::onRecovery(bool)",
                      "[INFO] isSuspended:  at void DownloadManagerIface::onRecovery(bool)"}));
}

void DownloadManagerIfaceTest::wifiStateOfTheEngineIsLoggedAndKept()
{
    QSignalSpy changed(m_iface, &DownloadManagerIface::hasWifiConnectionChanged);
    const LogCatcher log(L::Trace);

    m_iface->onWifiConnectionChanged(true);
    QVERIFY(m_iface->hasWifiConnection());
    m_iface->onWifiConnectionChanged(false);
    QVERIFY(!m_iface->hasWifiConnection());

    QCOMPARE(changed.count(), 2);
    QCOMPARE(log.texts(),
             strings({"[TRACE] asWifiConnection:  at void "
                      "DownloadManagerIface::onWifiConnectionChanged(bool)",
                      "[TRACE] HasWifiConnection:  at void "
                      "DownloadManagerIface::onWifiConnectionChanged(bool)"}));
}

void DownloadManagerIfaceTest::sessionStateIsIgnored()
{
    const LogCatcher log(L::Trace);

    m_iface->onSessionStateChanged(1);

    QCOMPARE(log.texts(), QStringList());
    QVERIFY(!m_iface->hasWifiConnection());
}

void DownloadManagerIfaceTest::suspensionOfTheEngineIsTold()
{
    QSignalSpy changed(m_iface, &DownloadManagerIface::isSuspendedChanged);
    QSignalSpy suspended(m_iface, &DownloadManagerIface::isSuspended);

    m_iface->onNotifySuspended(true);
    m_iface->onNotifySuspended();

    QCOMPARE(changed.count(), 2);
    QCOMPARE(suspended.count(), 0);
    QVERIFY(m_iface->suspended()); // what was told is not what is read
}

void DownloadManagerIfaceTest::unpackedFileListCanBeReplaced()
{
    QSignalSpy changed(m_iface, &DownloadManagerIface::unpackedFileListChanged);

    m_iface->setUnpackedFileList(strings({"a", "b"}));
    QCOMPARE(m_iface->getUnpackedFileList(), strings({"a", "b"}));
    m_iface->setUnpackedFileList(m_iface->getUnpackedFileList()); // its own list
    QCOMPARE(m_iface->property("unpackedFileList").toStringList(), strings({"a", "b"}));
    m_iface->setUnpackedFileList(QStringList());

    QVERIFY(m_iface->getUnpackedFileList().isEmpty());
    QCOMPARE(changed.count(), 3);
}

void DownloadManagerIfaceTest::expectedListBelongsToTheNextFinishedUnpack()
{
    QStringList order;
    QObject::connect(m_iface, &DownloadManagerIface::finished, m_iface, [&](int operation) {
        order << QString::number(operation) + m_iface->getUnpackedFileList().join(QLatin1Char(','));
    });
    QObject::connect(m_iface, &DownloadManagerIface::unpackedFileListChanged, m_iface,
                     [&] { order << m_iface->getUnpackedFileList().join(QLatin1Char(',')); });

    const QString url = QStringLiteral("u");
    m_iface->expectUnpackedFileList(url, QString(), strings({"a"}));
    m_iface->expectUnpackedFileList(url, QString(), strings({"b"}));
    m_iface->expectUnpackedFileList(QStringLiteral("v"), QString(), strings({"c"}));
    m_iface->onFinished(2, url, QString());
    m_iface->onFinished(3, QStringLiteral("v"), QString());
    m_iface->onFinished(3, url, QString());
    m_iface->onFinished(3, url, QString());
    m_iface->onFinished(3, url, QString());

    // The list changes behind the signal; the last one has no list of its own.
    QCOMPARE(order, strings({"2", "3", "c", "3c", "a", "3a", "b", "3b"}));
}

void DownloadManagerIfaceTest::queueChangesAreLoggedAndTold()
{
    QSignalSpy changed(m_iface, &DownloadManagerIface::requestsChanged);
    const LogCatcher log(L::Trace);

    m_worker->getRequestQueue()->enqueue(someRequest(QStringLiteral("a")));

    QCOMPARE(changed.count(), 1);
    QCOMPARE(log.texts().last(),
             QStringLiteral("[TRACE] virtual void DownloadManagerIface::onChanged()"));
}

void DownloadManagerIfaceTest::freeSpaceIsThatOfTheDataRoot()
{
    const QString path = m_home->myDocs() + QLatin1String("/.");
    // Others write to the disk, too: the number may move between two looks at it.
    constexpr qint64 Tolerance = 1024 * 1024 * 1024;
    const LogCatcher log(L::Info);

    const quint64 bytes = m_iface->getFreeSpace();

    QVERIFY(bytes > 0);
    QVERIFY(qAbs(qint64(bytes) - QStorageInfo(path).bytesAvailable()) < Tolerance);
    // The lowest byte, as a character.
    QCOMPARE(log.texts(),
             QStringList(QLatin1String("[INFO] Free space on ") + path
                         + QLatin1String("partition is: ") + character(int(bytes & 0xff))
                         + QLatin1String(" bytes")));
    QVERIFY(m_iface->property("freeDiskSpace").toULongLong() > 0);
}

void DownloadManagerIfaceTest::freeSpaceIsZeroWhenItCannotBeTold()
{
    qputenv("VEXA_MYDOCS", "/nowhere");
    const LogCatcher log(L::Info);

    QCOMPARE(m_iface->property("freeDiskSpace").toULongLong(), 0ULL);

    QCOMPARE(log.texts(),
             QStringList(QLatin1String("[INFO] Free space on /nowhere/.partition is: ")
                         + character(0) + QLatin1String(" bytes")));
}

void DownloadManagerIfaceTest::destructionCutsTheReceiversOff()
{
    int heard = 0;
    auto worker = std::make_unique<Worker>();
    QObject::connect(worker->getDownloadManagerIface(), &QObject::destroyed, m_iface,
                     [&] { ++heard; });

    worker.reset();

    QCOMPARE(heard, 0); // cut before the object tells of its end
}

QTEST_GUILESS_MAIN(DownloadManagerIfaceTest)
#include "tst_downloadmanageriface.moc"
