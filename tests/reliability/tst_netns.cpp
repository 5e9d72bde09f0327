// SPDX-License-Identifier: MIT
// Downloads over a line that loses, delays, damages and breaks, between two kernels' networks.
#include "download/testengine.h"
#include "installerrig.h"
#include "mapsprogram.h"
#include "reliability/faultlink.h"
#include "reliability/nameserver.h"
#include "testutils/logcatcher.h"
#include "testutils/reporttable.h"
#include <QtTest>

Q_DECLARE_METATYPE(LinkFaults)

namespace {

constexpr int MiB = 1024 * 1024;
constexpr int Limit = 120000; // ms
constexpr int LongLimit = 3600000; // ms
const QString Fi = QStringLiteral("FI");

int limit()
{
    return ReportTable::longForm() ? LongLimit : Limit;
}

QString megabytes(qint64 bytes)
{
    return QString::number(double(bytes) / 1e6, 'f', 1) + QStringLiteral(" MB");
}

/** So many megabytes of noise, in tiles. */
Tiles largeTiles(int megabytes)
{
    constexpr int TileSize = 2 * MiB;
    Tiles tiles;
    for (int i = 0; i * TileSize < megabytes * MiB; ++i)
        tiles.insert(QStringLiteral("%1/large.cdt").arg(i),
                     ArchiveBuilder::noise(TileSize, quint32(2 * i + 1)));
    return tiles;
}

/** Whether one request was for what was missing, and was sent just that. */
bool askedForTheRest(const NginxServer &server, qint64 size)
{
    const QList<NginxServer::Entry> log = server.accessLog();
    return std::any_of(log.begin(), log.end(), [size](const NginxServer::Entry &entry) {
        const qint64 from = entry.range.mid(6).chopped(1).toLongLong(); // of "bytes=N-"
        return from > 0 && entry.status == 206 && entry.bodyBytesSent == size - from;
    });
}

} // namespace

class NetnsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();

    void arrivesIdenticalOverABadLine_data();
    void arrivesIdenticalOverABadLine();
    void goesOnWhenTheLineIsBack_data();
    void goesOnWhenTheLineIsBack();
    void anAppThatIsToldOfTheLossWaitsAndGoesOn();
    void withoutARouteTheInstallFailsAtOnce();
    void aNameThatNobodyKnowsIsAFailure_data();
    void aNameThatNobodyKnowsIsAFailure();
    void installsByNameWhenTheNameServerIsBack();

private:
    QStringList install() const;
    void addRow(const QString &fault, int requests);
    int archiveRequests() const;
    bool someRequestWentOn() const;
    void stayDown(ChildProgram *child, qint64 connectsBefore);

    std::unique_ptr<FaultLink> m_link;
    std::unique_ptr<MapsProgram> m_maps;
    qint64 m_archiveSize = 0;
    int m_logged = 0; // entries of the server's log that belong to earlier tests
    ReportTable m_table {QStringLiteral("netns"),
                         {QStringLiteral("The line"), QStringLiteral("Archive"),
                          QStringLiteral("Reached the client"), QStringLiteral("Packets"),
                          QStringLiteral("Lost"), QStringLiteral("Damaged"),
                          QStringLiteral("Overtaken"), QStringLiteral("Blocked"),
                          QStringLiteral("Answers ended"), QStringLiteral("Outcome")}};
};

void NetnsTest::initTestCase()
{
    m_link = std::make_unique<FaultLink>();
    m_maps = std::make_unique<MapsProgram>();
    m_maps->content.addRegion(Fi, QStringLiteral("Finland"),
                              largeTiles(ReportTable::longForm() ? 200 : 6));
    m_maps->content.publish(QStringLiteral("26.11.21.00"));
    m_archiveSize = QFileInfo(m_maps->content.archivePath(Fi)).size();
    QCOMPARE(m_maps->run(words("refresh")).code, 0);
}

void NetnsTest::cleanupTestCase()
{
    QVERIFY(m_table.save());
    m_maps.reset();
    m_link.reset();
}

void NetnsTest::init()
{
    m_link->goUp();
    m_link->setFaults(LinkFaults());
    m_link->goDownAfter(-1);
    QVERIFY(m_maps->run(words("remove FI")).code >= 0); // if it is installed
    QCOMPARE(m_maps->tileDifference({}), QString());
    m_logged = int(m_maps->server.accessLog().size());
    m_link->resetCounts();
}

QStringList NetnsTest::install() const
{
    return m_maps->arguments(words("install FI --timeout 3600"));
}

// Of those that the server knows to be over.
int NetnsTest::archiveRequests() const
{
    int count = 0;
    const QList<NginxServer::Entry> log = m_maps->server.accessLog().mid(m_logged);
    for (const NginxServer::Entry &entry : log)
        count += entry.path.endsWith("FI.zip");
    return count;
}

bool NetnsTest::someRequestWentOn() const
{
    const QList<NginxServer::Entry> log = m_maps->server.accessLog().mid(m_logged);
    return std::any_of(log.begin(), log.end(), [](const NginxServer::Entry &entry) {
        return entry.path.endsWith("FI.zip") && entry.status == 206 && entry.range != "bytes=0-";
    });
}

void NetnsTest::addRow(const QString &fault, int requests)
{
    const FaultLink::Counts counts = m_link->counts();
    const auto number = [](qint64 n) { return QString::number(n); };
    m_table.addRow({fault, megabytes(m_archiveSize), megabytes(counts.serverBytes),
                    number(counts.packets), number(counts.lost), number(counts.damaged),
                    number(counts.overtaken), number(counts.blocked), number(requests),
                    QStringLiteral("identical")});
}

void NetnsTest::arrivesIdenticalOverABadLine_data()
{
    QTest::addColumn<LinkFaults>("faults");
    const auto row = [](const char *name, double loss, double corruption, int delayMs, int jitterMs,
                        qint64 rate) {
        QTest::newRow(name) << LinkFaults {loss, corruption, delayMs, jitterMs, rate};
    };
    row("sound", 0, 0, 0, 0, 0);
    row("2 % lost", 0.02, 0, 0, 0, 0);
    row("1 % damaged", 0, 0.01, 0, 0, 0);
    row("50 ms late", 0, 0, 50, 0, 0);
    row("overtaking, up to 20 ms late", 0, 0, 2, 18, 0);
    row("2 MB/s", 0, 0, 0, 0, 2000000);
    row("all at once", 0.01, 0.01, 5, 5, 4000000);
}

void NetnsTest::arrivesIdenticalOverABadLine()
{
    QFETCH(LinkFaults, faults);
    m_link->setFaults(faults);

    const auto child = m_maps->startRaw(install());
    QCOMPARE(child->waitForFinished(limit()), 0);

    QCOMPARE(m_maps->tileDifference(m_maps->content.tiles(Fi)), QString());
    const FaultLink::Counts counts = m_link->counts();
    QVERIFY(counts.serverBytes >= m_archiveSize); // it did come this way
    QCOMPARE(counts.lost > 0, faults.loss > 0);
    QCOMPARE(counts.damaged > 0, faults.corruption > 0);
    QCOMPARE(counts.overtaken > 0, faults.jitterMs > 0);
    QTRY_VERIFY(archiveRequests() > 0);
    addRow(QString::fromUtf8(QTest::currentDataTag()), archiveRequests());
}

// Long enough that the engine has given its connection up and begun another, in vain.
void NetnsTest::stayDown(ChildProgram *child, qint64 connectsBefore)
{
    QVERIFY(child->waitFor(
        [&] { return m_link->isDown() && m_link->counts().connects > connectsBefore; }, Limit));
    if (ReportTable::longForm())
        QVERIFY(!child->waitFor([] { return false; }, 30000));
}

void NetnsTest::goesOnWhenTheLineIsBack_data()
{
    QTest::addColumn<int>("share");
    QTest::addColumn<LinkFaults>("faults");
    QTest::newRow("down before the connect") << -1 << LinkFaults();
    QTest::newRow("down behind the request") << 0 << LinkFaults();
    QTest::newRow("down in the middle of the file") << 50 << LinkFaults();
    QTest::newRow("down just before the end") << 99 << LinkFaults();
    QTest::newRow("down in the middle, and all else at once")
        << 50 << LinkFaults {0.01, 0.01, 5, 5, 4000000};
}

void NetnsTest::goesOnWhenTheLineIsBack()
{
    QFETCH(int, share); // of the file that has come by then, in percent
    QFETCH(LinkFaults, faults);
    m_link->setFaults(faults);
    if (share < 0)
        m_link->goDown();
    else
        m_link->goDownAfter(m_archiveSize * share / 100);

    const auto child = m_maps->startRaw(install());
    stayDown(child.get(), share < 0 ? 3 : 1);
    const FaultLink::Counts whileDown = m_link->counts();
    m_link->goUp();
    QCOMPARE(child->waitForFinished(limit()), 0);

    QCOMPARE(m_maps->tileDifference(m_maps->content.tiles(Fi)), QString());
    QVERIFY(whileDown.blocked > 0);
    QTRY_VERIFY(archiveRequests() > 0);
    if (share > 0)
        QVERIFY(someRequestWentOn());
    // What had come was not fetched again; what was lost on the way comes twice.
    const qint64 sent = m_link->counts().serverBytes;
    QVERIFY2(sent >= m_archiveSize && sent < m_archiveSize * 5 / 4, qPrintable(megabytes(sent)));
    addRow(QString::fromUtf8(QTest::currentDataTag()), archiveRequests());
}

void NetnsTest::anAppThatIsToldOfTheLossWaitsAndGoesOn()
{
    InstallerRig rig;
    const Tiles tiles = largeTiles(6);
    rig.content.addRegion(Fi, QStringLiteral("Finland"), tiles);
    const qint64 size = QFileInfo(rig.content.archivePath(Fi)).size();
    rig.openSession();
    m_link->goDownAfter(size / 2);
    QVERIFY(rig.installer().install(Fi));
    QTRY_VERIFY_WITH_TIMEOUT(m_link->isDown() && savedRecord().bytesReceived > 0, Limit);
    FaultLink::setClientInterface(false);

    rig.installer().setOnline(false);

    QTRY_COMPARE(rig.state(Fi), QStringLiteral("waiting"));
    QCOMPARE(rig.installer().waitReason(Fi), QStringLiteral("networkNotPermitted"));
    const qint64 connects = m_link->counts().connects;
    FaultLink::setClientInterface(true);
    m_link->goUp();
    rig.installer().setOnline(true);
    QTRY_COMPARE_WITH_TIMEOUT(rig.state(Fi), QStringLiteral("installed"), Limit);
    QCOMPARE(m_link->counts().connects, connects + 1);
    QCOMPARE(rig.tileDifference(tiles), QString());
    QTRY_VERIFY(askedForTheRest(rig.server, size));
}

void NetnsTest::withoutARouteTheInstallFailsAtOnce()
{
    FaultLink::setClientInterface(false);

    const auto child = m_maps->startRaw(install());
    const int code = child->waitForFinished(limit());
    FaultLink::setClientInterface(true);

    QCOMPARE(code, 4);
    QVERIFY(child->errorOutput().contains("could not be downloaded"));
    QCOMPARE(m_maps->tileDifference({}), QString());
    QCOMPARE(m_maps->startRaw(install())->waitForFinished(limit()), 0);
    QCOMPARE(m_maps->tileDifference(m_maps->content.tiles(Fi)), QString());
}

void NetnsTest::aNameThatNobodyKnowsIsAFailure_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<bool>("silent");
    QTest::addColumn<bool>("down");
    QTest::newRow("no such name") << QStringLiteral("none.test") << false << false;
    QTest::newRow("a silent name server") << QStringLiteral("silent.test") << true << false;
    QTest::newRow("a name server behind a dead line")
        << QStringLiteral("dead.test") << false << true;
}

void NetnsTest::aNameThatNobodyKnowsIsAFailure()
{
    QFETCH(QString, host);
    QFETCH(bool, silent);
    QFETCH(bool, down);
    const NameServer names(silent ? NameServer::Mood::Silent : NameServer::Mood::KnowsNone);
    if (down)
        m_link->goDown();
    const TemporaryHome home;
    const LogCatcher log(L::Trace);
    TestEngine engine(Limit); // The resolver may take its time.
    engine.start();

    const QString url = QStringLiteral("http://%1/FI.zip").arg(host);
    const QString file = engine.download(url, Fi);

    EVENTUALLY(engine.error.count() == 1);
    EVENTUALLY(isForgotten(engine, home));
    QCOMPARE(engine.error.at(0), QList<QVariant>({2, Fi, 1, url}));
    QCOMPARE(log.count(QStringLiteral("[ERROR] Error: 3")), 1); // host not found
    QVERIFY(!QFile::exists(file));
    QCOMPARE(engine.finished.count(), 0);
    QCOMPARE(names.questions() > 0, !down);
}

void NetnsTest::installsByNameWhenTheNameServerIsBack()
{
    NameServer names(NameServer::Mood::KnowsNone);
    m_maps->baseUri = QStringLiteral("http://maps.test:%1/map5/").arg(m_maps->server.port());

    const auto child = m_maps->startRaw(install());
    QCOMPARE(child->waitForFinished(limit()), 4);
    QVERIFY(child->errorOutput().contains("could not be downloaded"));
    names.setMood(NameServer::Mood::Knows);

    QCOMPARE(m_maps->startRaw(install())->waitForFinished(limit()), 0);
    QCOMPARE(m_maps->tileDifference(m_maps->content.tiles(Fi)), QString());
}

int main(int argc, char **argv)
{
    FaultLink::enter("nameserver " + FaultLink::serverAddress().toLatin1()
                     + "\noptions timeout:1 attempts:1\n");
    NginxServer::setPlace({FaultLink::serverAddress(), FaultLink::serverCommand()});
    QCoreApplication app(argc, argv);
    NetnsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_netns.moc"
