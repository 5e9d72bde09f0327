// SPDX-License-Identifier: MIT
// A pause at every early moment of a transfer, with and without a server that goes meanwhile: what
// follows the resume is always an installed region.
#include "download/downloadmanageriface.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include <QtTest>

namespace {

const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");
constexpr int LimitMs = 60000;
constexpr int Rounds = 6; // each pauses a little later than the one before
constexpr int HeartbeatMs = 500; // after which a silent server is asked again
constexpr int ArchiveSize = 200000; // bytes; more than a socket takes up at once

} // namespace

class InstallerPauseTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPauseBeforeTheFirstByteEndsInAnInstalledRegion_data();
    void aPauseBeforeTheFirstByteEndsInAnInstalledRegion();
    void aServerThatIsStillAwayAtTheResumeIsAClearFailure();
    void manyPausesInARowEndInAnInstalledRegion();

private:
    void serve(HttpTestServer *server, const HttpTestServer::Behaviour &first);
    static bool reach(InstallerRig *rig, HttpTestServer *server, const QString &moment);

    std::unique_ptr<InstallerRig> m_rig;
    QByteArray m_archive;
};

// The archive is made by the rig's own content, and served by the server that misbehaves.
void InstallerPauseTest::serve(HttpTestServer *server, const HttpTestServer::Behaviour &first)
{
    m_rig = std::make_unique<InstallerRig>();
    m_rig->content.addRegion(Se, QStringLiteral("Sweden"),
                             {{QStringLiteral("0/1/a.cdt"), TestContent::tile(Fi, ArchiveSize)}});
    m_archive = TestFile::read(m_rig->content.archivePath(Se));
    server->add("/FI.zip", m_archive, {first, HttpTestServer::Whole()});
    m_rig->content.addLink(Fi, QStringLiteral("Finland"), server->url("/FI.zip"));
    m_rig->openSession(false);
    m_rig->session->worker()->setHeartbeatInterval(HeartbeatMs);
    m_rig->session->start();
}

bool InstallerPauseTest::reach(InstallerRig *rig, HttpTestServer *server, const QString &moment)
{
    const auto isReached = [&] {
        if (moment == QLatin1String("at the first \"downloading\""))
            return rig->state(Fi) == QLatin1String("downloading");
        if (moment == QLatin1String("connected"))
            return server->openConnections() > 0;
        if (moment == QLatin1String("asked for"))
            return server->requestCount() > 0;
        if (moment == QLatin1String("first bytes on their way"))
            return server->requestCount() > 0 && server->bodyBytesSent(0) > 0;
        return true; // right after install()
    };
    // Without a pause between two looks: some of these moments are short.
    QElapsedTimer clock;
    clock.start();
    while (!isReached() && clock.elapsed() < LimitMs)
        QCoreApplication::processEvents();
    return isReached();
}

void InstallerPauseTest::aPauseBeforeTheFirstByteEndsInAnInstalledRegion_data()
{
    QTest::addColumn<QString>("moment");
    QTest::addColumn<bool>("serverGoes");

    for (const char *moment : {"right after install()", "at the first \"downloading\"", "connected",
                               "asked for", "first bytes on their way"}) {
        QTest::addRow("%s", moment) << QString::fromLatin1(moment) << false;
        QTest::addRow("%s, and the server goes", moment) << QString::fromLatin1(moment) << true;
    }
}

void InstallerPauseTest::aPauseBeforeTheFirstByteEndsInAnInstalledRegion()
{
    QFETCH(QString, moment);
    QFETCH(bool, serverGoes);
    for (int round = 0; round < Rounds; ++round) {
        HttpTestServer server;
        const bool answers = moment == QLatin1String("first bytes on their way");
        serve(&server, answers ? HttpTestServer::StallAfter(1) : HttpTestServer::SilentAccept());
        QVERIFY(m_rig->installer().install(Fi));
        QVERIFY(reach(m_rig.get(), &server, moment));
        for (int turn = 0; turn < round; ++turn)
            QCoreApplication::processEvents();

        m_rig->installer().pause();
        if (serverGoes) {
            // At once: the engine has hardly heard of the pause.
            server.stop();
            QTRY_COMPARE(m_rig->state(Fi), QStringLiteral("waiting"));
            server.start();
        }
        m_rig->installer().resume();

        QTRY_VERIFY2_WITH_TIMEOUT(!m_rig->installer().busy(), qPrintable(m_rig->state(Fi)),
                                  LimitMs);
        QVERIFY2(m_rig->state(Fi) == QLatin1String("installed"),
                 qPrintable(m_rig->installer().reason(Fi)));
        QCOMPARE(m_rig->tileDifference(m_rig->content.tiles(Se)), QString());
        m_rig.reset();
    }
}

void InstallerPauseTest::aServerThatIsStillAwayAtTheResumeIsAClearFailure()
{
    HttpTestServer server;
    serve(&server, HttpTestServer::SilentAccept());
    QVERIFY(m_rig->installer().install(Fi));
    QVERIFY(reach(m_rig.get(), &server, QStringLiteral("asked for")));
    m_rig->installer().pause();
    server.stop();
    QTRY_COMPARE(m_rig->state(Fi), QStringLiteral("waiting"));

    m_rig->installer().resume();

    QTRY_COMPARE_WITH_TIMEOUT(m_rig->state(Fi), QStringLiteral("failed"), LimitMs);
    QVERIFY(m_rig->installer().status(Fi).failure == FailureKind::Network);
    QVERIFY(m_rig->installer().reason(Fi).contains(QLatin1String("could not be downloaded")));
    QTRY_VERIFY(!m_rig->installer().busy());
    server.start();
    QVERIFY(m_rig->installer().install(Fi));
    QTRY_COMPARE_WITH_TIMEOUT(m_rig->state(Fi), QStringLiteral("installed"), LimitMs);
    m_rig.reset();
}

void InstallerPauseTest::manyPausesInARowEndInAnInstalledRegion()
{
    HttpTestServer server;
    serve(&server, HttpTestServer::SilentAccept());
    QVERIFY(m_rig->installer().install(Fi));
    for (int i = 0; i < 50; ++i) {
        m_rig->installer().pause();
        for (int turn = 0; turn < i % 5; ++turn)
            QCoreApplication::processEvents();
        m_rig->installer().resume();
    }
    QTRY_COMPARE_WITH_TIMEOUT(m_rig->state(Fi), QStringLiteral("installed"), LimitMs);
    m_rig.reset();
}

QTEST_GUILESS_MAIN(InstallerPauseTest)
#include "tst_installerpause.moc"
