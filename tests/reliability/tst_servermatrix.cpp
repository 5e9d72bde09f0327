// SPDX-License-Identifier: MIT
// Every fault of a server, at the first byte and in the middle, with and without a told size.
#include "download/testengine.h"
#include "host/shared/tilelist.h"
#include "installerrig.h"
#include "reliability/servermatrix.h"
#include "testutils/archivebuilder.h"
#include "testutils/reporttable.h"
#include <QSignalSpy>
#include <QtTest>

using Server = HttpTestServer;
using Behaviour = HttpTestServer::Behaviour;

namespace {

constexpr int Limit = 60000; // ms
constexpr int StallHeartbeat = 100; // ms: with it a stall is soon over
constexpr int StallRequests = 8; // show that it goes on for ever
constexpr int MostRequests = 200; // that a fault without a stall may cost
const QString Fi = QStringLiteral("FI");
const QByteArray Path("/archives/FI.zip");

struct CellResult
{
    CellEnd end = CellEnd::Trying;
    QString sentence;
};

} // namespace

class ServerMatrixTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void endsAsExpectedAndNeverWithAWrongFile_data();
    void endsAsExpectedAndNeverWithAWrongFile();

private:
    CellResult run(const ServerFault &fault, bool resumed, bool told, bool eachTime);
    static bool stopInTheMiddle(InstallerRig &rig, const QString &baseUri, qint64 bytes);
    CellEnd endOf(InstallerRig &rig, const QSignalSpy &errors) const;
    static void compareLeftovers(InstallerRig &rig, CellEnd end);

    std::unique_ptr<InstallerRig> m_rig; // one for all: its device is emptied after each install
    std::unique_ptr<OtherServers> m_others;
    QByteArray m_archive;
    Tiles m_tiles;
    QList<ServerFault> m_faults;
    ReportTable m_table {QStringLiteral("servermatrix"),
                         {QStringLiteral("The server's fault"), QStringLiteral("Download"),
                          QStringLiteral("Size"), QStringLiteral("Once, then well"),
                          QStringLiteral("Each time"), QStringLiteral("The user is told")}};
};

void ServerMatrixTest::initTestCase()
{
    m_tiles = tilesOf({"0/1/a.cdt", "a/3/z.cdt"});
    m_rig = std::make_unique<InstallerRig>();
    m_rig->content.addRegion(Fi, QStringLiteral("Finland"), m_tiles);
    m_archive = TestFile::read(m_rig->content.archivePath(Fi));
    m_others = std::make_unique<OtherServers>();
    for (Server *server : {&m_others->plain, &m_others->tls, &m_others->stopped})
        server->add("/FI.zip", m_archive);
    m_others->plain.add("/login", QByteArray("<html><body>Log in first</body></html>\n"));
    m_others->stopped.stop();
    m_faults = serverFaults(m_archive, *m_others);
}

void ServerMatrixTest::cleanupTestCase()
{
    QVERIFY(m_table.save());
    m_others.reset();
    m_rig.reset();
}

// Leaves the download where it had this many bytes. Without the short patience: on a busy machine
// it would ask anew before they are there.
bool ServerMatrixTest::stopInTheMiddle(InstallerRig &rig, const QString &baseUri, qint64 bytes)
{
    rig.openSession(false);
    rig.installer().setBaseUri(baseUri);
    rig.session->start();
    const bool inTheMiddle = rig.installer().install(Fi)
        && QTest::qWaitFor([bytes] { return savedRecord().bytesReceived == bytes; }, Limit);
    rig.closeSession();
    return inTheMiddle;
}

CellEnd ServerMatrixTest::endOf(InstallerRig &rig, const QSignalSpy &errors) const
{
    if (rig.state(Fi) == QLatin1String("installed"))
        return rig.tileDifference(m_tiles).isEmpty() ? CellEnd::Whole : CellEnd::Wrong;
    if (rig.state(Fi) != QLatin1String("failed"))
        return CellEnd::Trying;
    // The engine may have failed too by then, of what it was told to leave.
    if (rig.installer().reason(Fi).contains(QLatin1String("the catalogue says")))
        return CellEnd::OtherSize;
    if (errors.isEmpty())
        return CellEnd::Unknown;
    switch (errors.at(0).at(2).toInt()) {
    case 1:
        return CellEnd::Failed;
    case 2:
        return CellEnd::Damaged;
    case 4:
        return CellEnd::Refused;
    default:
        return CellEnd::Unknown;
    }
}

void ServerMatrixTest::compareLeftovers(InstallerRig &rig, CellEnd end)
{
    QTRY_VERIFY_WITH_TIMEOUT(rig.session->downloads()->getRequests().isEmpty(), Limit);
    rig.closeSession();
    const QStringList recorded = InstallerRig::recordedIds();
    QCOMPARE(recorded, end == CellEnd::Whole ? QStringList {Fi} : QStringList());
    if (end != CellEnd::Whole)
        QCOMPARE(rig.tileDifference({}), QString());
    QCOMPARE(TileList::filesBelow(rig.home.downloadFolder()), QStringList());
}

CellResult ServerMatrixTest::run(const ServerFault &fault, bool resumed, bool told, bool eachTime)
{
    const Behaviour well =
        told ? Behaviour() : Server::NoContentLength() | Server::UnknownRangeTotal();
    std::vector<Behaviour> answers {well | fault.behaviour};
    const int half = m_archive.size() / 2;
    if (resumed)
        answers.insert(answers.begin(), well | Server::StallAfter(half)); // for the first session
    if (!eachTime)
        answers.push_back(well);
    Server server;
    server.add(Path, m_archive, answers);

    InstallerRig &rig = *m_rig;
    const auto emptyDevice = qScopeGuard([&rig] {
        rig.closeSession();
        for (const QString &folder : {rig.home.path(), rig.home.myDocs()}) {
            QDir(folder).removeRecursively();
            QDir().mkpath(folder);
        }
    });
    CellResult result;
    if (resumed && !stopInTheMiddle(rig, server.url("/"), half)) {
        qWarning("it does not get into the middle");
        return result;
    }
    rig.openSession(false);
    rig.installer().setBaseUri(server.url("/"));
    if (fault.stalls)
        rig.session->worker()->setHeartbeatInterval(StallHeartbeat);
    QSignalSpy errors(rig.session->downloads(), &DownloadManagerIface::error);
    rig.session->start();
    if (!resumed && !rig.installer().install(Fi)) {
        qWarning("it does not begin");
        return result;
    }
    const int most = fault.stalls && eachTime ? StallRequests : MostRequests;
    const bool over = QTest::qWaitFor(
        [&] { return !rig.installer().busy() || server.requestCount() >= most; }, Limit);
    if (!over)
        qWarning("neither an end nor another request, state %s", qPrintable(rig.state(Fi)));
    result.end = endOf(rig, errors);
    result.sentence = rig.installer().sentence(Fi);
    if (result.end == CellEnd::Trying)
        rig.installer().cancel(Fi);
    compareLeftovers(rig, result.end);
    return result;
}

void ServerMatrixTest::endsAsExpectedAndNeverWithAWrongFile_data()
{
    QTest::addColumn<int>("fault");
    QTest::addColumn<bool>("resumed");
    QTest::addColumn<bool>("told");
    for (int i = 0; i < m_faults.size(); ++i) {
        for (int kind = 0; kind < 4; ++kind) {
            const bool resumed = kind >= 2;
            const bool told = kind % 2 == 0;
            QTest::addRow("%s, %s, size %s", qPrintable(m_faults.at(i).name),
                          resumed ? "resumed" : "fresh", told ? "told" : "not told")
                << i << resumed << told;
        }
    }
}

void ServerMatrixTest::endsAsExpectedAndNeverWithAWrongFile()
{
    QFETCH(int, fault);
    QFETCH(bool, resumed);
    QFETCH(bool, told);
    const ServerFault &row = m_faults.at(fault);
    const QList<QByteArray> ends = row.ends.value((resumed ? 2 : 0) + (told ? 0 : 1)).split(' ');

    const CellResult always = run(row, resumed, told, true);
    QVERIFY2(ends.value(1).contains(letterOf(always.end)), qPrintable(wordsOf(always.end)));
    QString once = QStringLiteral("(long form)");
    if ((resumed && told) || ReportTable::longForm()) {
        const CellEnd end = run(row, resumed, told, false).end;
        QVERIFY2(ends.value(0).contains(letterOf(end)), qPrintable(wordsOf(end)));
        once = wordsOf(end);
    }

    m_table.addRow({row.name, resumed ? QStringLiteral("resumed") : QStringLiteral("fresh"),
                    told ? QStringLiteral("told") : QStringLiteral("not told"), once,
                    wordsOf(always.end), always.sentence});
}

QTEST_GUILESS_MAIN(ServerMatrixTest)
#include "tst_servermatrix.moc"
