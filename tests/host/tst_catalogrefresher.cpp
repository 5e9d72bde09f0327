// SPDX-License-Identifier: MIT
#include "host/shared/catalogrefresher.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include <QSignalSpy>
#include <QtTest>

using Result = CatalogRefresher::Result;

class CatalogRefresherTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void adoptsAVersionWhereNothingIsInstalled();
    void aVersionOfSingleDigitsIsFoundAgainAfterARestart();
    void renewsTheCatalogueOfTheSameVersion();
    void keepsTheVersionOfInstalledRegions();
    void takesTheNamesInTheUsersLanguage();
    void fallsBackOnTheFirstLanguageAndShowsIt();
    void worksWithoutAnyNames();
    void aBadCatalogueNeverReplacesTheOldOne_data();
    void aBadCatalogueNeverReplacesTheOldOne();
    void aBadVersionFileIsRefused_data();
    void aBadVersionFileIsRefused();
    void aMissingCatalogueIsANetworkFailure();
    void anUnreachableServerIsANetworkFailure();
    void aFolderThatCannotBeWrittenIsADiskFailure();
    void abortEndsItAndLeavesNothing();
    void cutNamesAreNotTaken();

private:
    Result refresh();
    QString device(const char *name) const
    {
        return DataRoot::catalogFolder() + QLatin1Char('/') + QLatin1String(name);
    }

    std::unique_ptr<TemporaryHome> home;
    std::unique_ptr<NginxServer> server;
    std::unique_ptr<TestContent> content;
    std::unique_ptr<EngineSession> session;
    std::unique_ptr<CatalogRefresher> refresher;
};

void CatalogRefresherTest::init()
{
    home = std::make_unique<TemporaryHome>();
    server = std::make_unique<NginxServer>();
    content = std::make_unique<TestContent>(server->folder() + QLatin1String("/map5"));
    content->addRegion(QStringLiteral("FI"), QStringLiteral("Finland"),
                       {{QStringLiteral("0/1/a.cdt"), "tile"}});
    content->publish(QStringLiteral("1.0"));
    QDir().mkpath(DataRoot::cities());
}

void CatalogRefresherTest::cleanup()
{
    refresher.reset();
    session.reset();
    content.reset();
    server.reset();
    home.reset();
}

Result CatalogRefresherTest::refresh()
{
    refresher.reset();
    session = nullptr;
    session = std::make_unique<EngineSession>(server->url("/map5/"));
    refresher = std::make_unique<CatalogRefresher>(session->catalog(), session->downloads(),
                                                   session->baseUri());
    QSignalSpy finished(refresher.get(), &CatalogRefresher::finished);
    connect(session.get(), &EngineSession::started, refresher.get(), &CatalogRefresher::start);
    session->start();
    if (finished.isEmpty())
        finished.wait(30000);
    QTest::qWait(0);
    if (finished.count() != 1)
        return Result::None;
    return refresher->result();
}

void CatalogRefresherTest::adoptsAVersionWhereNothingIsInstalled()
{
    QVERIFY(refresh() == Result::Adopted);

    QCOMPARE(refresher->serverVersion(), QStringLiteral("1.0"));
    QCOMPARE(session->catalog()->installedMapsVersion(), QStringLiteral("1.0"));
    QVERIFY(session->catalog()->catalogFilesExist());
    QVERIFY(session->catalog()->region(QStringLiteral("FI")));
    QCOMPARE(MapCatalog().installedMapsVersion(), QStringLiteral("1.0"));
    QVERIFY(!QFile::exists(device("incoming")));
    QVERIFY(session->downloads()->getRequests().isEmpty());
}

void CatalogRefresherTest::aVersionOfSingleDigitsIsFoundAgainAfterARestart()
{
    content->publish(QStringLiteral("3.1.12.5"));

    QVERIFY(refresh() == Result::Adopted);

    MapCatalog restarted;
    restarted.updateCatalog();
    QCOMPARE(restarted.installedMapsVersion(), QStringLiteral("03.01.12.05"));
    QVERIFY(restarted.catalogFilesExist());
    QVERIFY(restarted.region(QStringLiteral("FI")));
    QVERIFY(refresh() == Result::Renewed);
}

void CatalogRefresherTest::renewsTheCatalogueOfTheSameVersion()
{
    QVERIFY(refresh() == Result::Adopted);
    content->addLink(QStringLiteral("SE"), QStringLiteral("Sweden"), QStringLiteral("SE.zip"));
    content->publish(QStringLiteral("1.0"));

    QVERIFY(refresh() == Result::Renewed);

    QVERIFY(session->catalog()->region(QStringLiteral("SE")));
}

void CatalogRefresherTest::keepsTheVersionOfInstalledRegions()
{
    QVERIFY(refresh() == Result::Adopted);
    QVERIFY(session->installer()->install(QStringLiteral("FI")));
    QTRY_VERIFY_WITH_TIMEOUT(!session->installer()->busy(), 30000);
    content->publish(QStringLiteral("2.0"));

    QVERIFY(refresh() == Result::NewerExists);

    QCOMPARE(refresher->serverVersion(), QStringLiteral("2.0"));
    QCOMPARE(session->catalog()->installedMapsVersion(), QStringLiteral("1.0"));
    QVERIFY(session->catalog()->region(QStringLiteral("FI"))->installed());
    QVERIFY(!QFile::exists(device("catalog-2.0.xml")));
}

void CatalogRefresherTest::takesTheNamesInTheUsersLanguage()
{
    const QByteArray code = MapCatalog().getDigitCode().toLatin1();
    content->publish(QStringLiteral("1.0"), {"001", code});

    QVERIFY(refresh() == Result::Adopted);

    QCOMPARE(refresher->namesCode(), QString::fromLatin1(code));
    QCOMPARE(session->catalog()->region(QStringLiteral("FI"))->localizedName(),
             QStringLiteral("Finland in ") + QString::fromLatin1(code));
}

void CatalogRefresherTest::fallsBackOnTheFirstLanguageAndShowsIt()
{
    QVERIFY(refresh() == Result::Adopted);

    QCOMPARE(refresher->namesCode(), QStringLiteral("001"));
    QCOMPARE(session->catalog()->region(QStringLiteral("FI"))->localizedName(),
             QStringLiteral("Finland in 001"));
}

void CatalogRefresherTest::worksWithoutAnyNames()
{
    QVERIFY(QFile::remove(server->folder() + QLatin1String("/map5/regionname-lang-001.xml")));

    QVERIFY(refresh() == Result::Adopted);

    QVERIFY(refresher->namesCode().isEmpty());
    QCOMPARE(session->catalog()->region(QStringLiteral("FI"))->name(), QStringLiteral("Finland"));
}

void CatalogRefresherTest::aBadCatalogueNeverReplacesTheOldOne_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("no regions") << QByteArray("<Catalog/>");
    QTest::newRow("a page to log in") << QByteArray("<html><body>Log in</body></html>");
    QTest::newRow("cut") << QByteArray("<Catalog><File Id=\"FI\" Description=\"F\" "
                                       "ZipFileSize=\"1\" Link=\"x\"/>");
    QTest::newRow("regions without a link")
        << QByteArray("<Catalog><File Id=\"FI\" Description=\"F\" ZipFileSize=\"1\"/></Catalog>");
}

void CatalogRefresherTest::aBadCatalogueNeverReplacesTheOldOne()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(refresh() == Result::Adopted);
    const QByteArray old = TestFile::read(device("catalog-1.0.xml"));
    content->write(QStringLiteral("catalog-1.0.xml"), bytes);

    const Result result = refresh();

    // Nothing came, or what came is nothing.
    QVERIFY(result == Result::CatalogueFailed
            || (bytes.isEmpty() && result == Result::NetworkFailed));
    QVERIFY(!refresher->errorString().isEmpty());
    QCOMPARE(TestFile::read(device("catalog-1.0.xml")), old);
    QVERIFY(session->catalog()->region(QStringLiteral("FI")));
}

void CatalogRefresherTest::aBadVersionFileIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("blank") << QByteArray("  \n");
    QTest::newRow("a page") << QByteArray("<html/>");
    QTest::newRow("a path") << QByteArray("../../etc/x");
    QTest::newRow("two lines") << QByteArray("1.0\n2.0\n");
    QTest::newRow("long") << QByteArray(5000, '1');
}

void CatalogRefresherTest::aBadVersionFileIsRefused()
{
    QFETCH(QByteArray, bytes);
    content->write(QStringLiteral("version.txt"), bytes);

    QVERIFY(refresh() == Result::CatalogueFailed);

    QVERIFY(refresher->errorString().contains(QLatin1String("no usable map version")));
    QVERIFY(refresher->serverVersion().isEmpty());
}

void CatalogRefresherTest::aMissingCatalogueIsANetworkFailure()
{
    content->write(QStringLiteral("version.txt"), "2.0");

    QVERIFY(refresh() == Result::NetworkFailed);

    QVERIFY(refresher->errorString().contains(QLatin1String("catalog-2.0.xml")));
    QVERIFY(!QFile::exists(device("content.xml")));
}

void CatalogRefresherTest::anUnreachableServerIsANetworkFailure()
{
    server->stop();

    QVERIFY(refresh() == Result::NetworkFailed);
}

void CatalogRefresherTest::aFolderThatCannotBeWrittenIsADiskFailure()
{
    QDir().mkpath(DataRoot::cities());
    TestFile::write(DataRoot::catalogFolder(), "a file in its place");

    QVERIFY(refresh() == Result::DiskFailed);

    QVERIFY(refresher->errorString().contains(QLatin1String("cannot be made")));
}

void CatalogRefresherTest::abortEndsItAndLeavesNothing()
{
    HttpTestServer silent;
    silent.add("/map5/version.txt", QByteArray("1.0"), HttpTestServer::SilentAccept());
    session = std::make_unique<EngineSession>(silent.url("/map5/"));
    refresher = std::make_unique<CatalogRefresher>(session->catalog(), session->downloads(),
                                                   session->baseUri());
    QSignalSpy finished(refresher.get(), &CatalogRefresher::finished);
    connect(session.get(), &EngineSession::started, refresher.get(), &CatalogRefresher::start);
    session->start();
    QTRY_COMPARE(silent.requestCount(), 1);

    refresher->abort();
    refresher->abort();

    QCOMPARE(finished.count(), 1);
    QVERIFY(refresher->result() == Result::Aborted);
    QTRY_VERIFY(session->downloads()->getRequests().isEmpty());
    QVERIFY(!QFile::exists(device("incoming")));
}

void CatalogRefresherTest::cutNamesAreNotTaken()
{
    content->write(QStringLiteral("regionname-lang-001.xml"), "<r><region id=\"FI\" name=\"Su");

    QVERIFY(refresh() == Result::Adopted);

    QVERIFY(refresher->namesCode().isEmpty());
    QVERIFY(!QFile::exists(device("regionname-lang-001.xml")));
}

QTEST_GUILESS_MAIN(CatalogRefresherTest)
#include "tst_catalogrefresher.moc"
