// SPDX-License-Identifier: MIT
// Whatever goes wrong while an update is prepared, the maps in use stay as they are, byte for byte,
// and the next run goes on.
#include "testutils/httptestserver.h"
#include "updaterig.h"
#include <csignal>
#include <QtTest>

namespace {

const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");

} // namespace

class CliUpdateFailuresTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { rig.reset(); }

    void aServerThatIsGone();
    void aServerThatFallsSilent_data();
    void aServerThatFallsSilent();
    void aServerWithoutAUsableVersion();
    void aCatalogueThatIsCut();
    void anArchiveThatIsMissing();
    void anArchiveThatIsDamaged();
    void aDiskThatIsTooSmall();
    void aDiskThatIsFull_data();
    void aDiskThatIsFull();
    void ctrlCGoesOnBehindTheLastByte_data();
    void ctrlCGoesOnBehindTheLastByte();
    void aFolderNameThatTheMovesCannotTake();

private:
    void isAsBefore();
    void thenItGoesOn();
    ProgramRun update(const char *options = "") const
    {
        return rig->run(words("--timeout 2 update") + words(options));
    }

    std::unique_ptr<UpdateRig> rig;
    Tiles m_before;
};

void CliUpdateFailuresTest::init()
{
    rig = std::make_unique<UpdateRig>();
    QVERIFY(rig->install({Fi, Se}));
    rig->publishNext();
    m_before = rig->mainSet();
}

void CliUpdateFailuresTest::isAsBefore()
{
    QCOMPARE(rig->mainSet(), m_before);
    QCOMPARE(rig->installedIds(), QStringList({Fi, Se}));
    QCOMPARE(rig->version(), rig->oldVersion);
}

void CliUpdateFailuresTest::thenItGoesOn()
{
    const ProgramRun run = update();

    QVERIFY2(run.code == 0, qPrintable(textOf(run)));
    QCOMPARE(rig->tilesIn(), rig->next.tiles(Fi) + rig->next.tiles(Se));
    QCOMPARE(rig->tilesIn("_"), rig->content.tiles(Fi) + rig->content.tiles(Se));
}

void CliUpdateFailuresTest::aServerThatIsGone()
{
    rig->server.stop();

    const ProgramRun run = update("--json");

    QCOMPARE(run.code, 4);
    QCOMPARE(run.object().value(QLatin1String("result")).toString(), QStringLiteral("failed"));
    QVERIFY(!run.object().value(QLatin1String("error")).toString().isEmpty());
    isAsBefore();
    QCOMPARE(rig->folders(), UpdateRig::mainFolders());
    rig->server.start();
    thenItGoesOn();
}

void CliUpdateFailuresTest::aServerThatFallsSilent_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("at the version") << QByteArray("/version.txt");
    QTest::newRow("at the catalogue") << QByteArray("/catalog-26.12.01.00.xml");
    QTest::newRow("at an archive") << QByteArray("/archives/2/SE.tar.gz");
}

void CliUpdateFailuresTest::aServerThatFallsSilent()
{
    QFETCH(QByteArray, path);
    HttpTestServer server;
    const QString folder = rig->server.folder() + QLatin1String("/map5");
    for (const char *name : {"/version.txt", "/catalog-26.12.01.00.xml", "/regionname-lang-001.xml",
                             "/archives/2/FI.zip", "/archives/2/SE.tar.gz"}) {
        const QByteArray bytes = TestFile::read(folder + QLatin1String(name));
        server.add(name, bytes,
                   path == name ? HttpTestServer::StallAfter(bytes.size() / 2)
                                : HttpTestServer::Whole());
    }
    const QString honest = rig->baseUri;
    rig->baseUri = server.url("/");

    const ProgramRun run = update();

    QCOMPARE(run.code, 4);
    QVERIFY2(run.err.contains("silent"), qPrintable(textOf(run)));
    isAsBefore();
    rig->baseUri = honest;
    if (!path.contains("archives"))
        thenItGoesOn();
}

void CliUpdateFailuresTest::aServerWithoutAUsableVersion()
{
    rig->next.write(QStringLiteral("version.txt"), "../../etc\n");

    QCOMPARE(update().code, 1);

    isAsBefore();
    rig->publishNext();
    thenItGoesOn();
}

void CliUpdateFailuresTest::aCatalogueThatIsCut()
{
    rig->next.write(QStringLiteral("catalog-26.12.01.00.xml"), "<Catalog>\n <File Id=\"FI\"");

    QCOMPARE(update().code, 1);

    isAsBefore();
    rig->publishNext();
    thenItGoesOn();
}

void CliUpdateFailuresTest::anArchiveThatIsMissing()
{
    const QString archive = rig->next.archivePath(Se);
    QVERIFY(QFile::rename(archive, archive + QLatin1String(".away")));

    const ProgramRun run = update();

    QCOMPARE(run.code, 4);
    QVERIFY(run.err.contains("SE"));
    isAsBefore();
    QVERIFY(QFile::rename(archive + QLatin1String(".away"), archive));
    const int fetched = rig->answers("/archives/2/FI");
    thenItGoesOn();
    QCOMPARE(rig->answers("/archives/2/FI"), fetched);
}

void CliUpdateFailuresTest::anArchiveThatIsDamaged()
{
    const QString archive = rig->next.archivePath(Se);
    const QByteArray whole = TestFile::read(archive);
    QByteArray damaged = whole;
    damaged.replace(damaged.size() / 2, 100, QByteArray(100, 'x'));
    TestFile::write(archive, damaged);

    const ProgramRun run = update();

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("damaged"));
    isAsBefore();
    TestFile::write(archive, whole);
    thenItGoesOn();
}

void CliUpdateFailuresTest::aDiskThatIsTooSmall()
{
    QByteArray catalogue =
        TestFile::read(rig->server.folder() + QLatin1String("/map5/catalog-26.12.01.00.xml"));
    const QByteArray fitting = catalogue;
    catalogue.replace("ZipFileSize=\"", "ZipFileSize=\"9000000000000");
    rig->next.write(QStringLiteral("catalog-26.12.01.00.xml"), catalogue);

    const ProgramRun run = update();

    QCOMPARE(run.code, 1);
    QVERIFY2(run.err.contains("needs up to"), qPrintable(textOf(run)));
    QCOMPARE(rig->answers("/archives/2/"), 0); // before the first byte
    isAsBefore();
    QCOMPARE(rig->run(words("update --cancel")).code, 0);
    rig->next.write(QStringLiteral("catalog-26.12.01.00.xml"), fitting);
    thenItGoesOn();
}

void CliUpdateFailuresTest::aDiskThatIsFull_data()
{
    QTest::addColumn<QString>("limit"); // of any file that is written, in blocks of 1024 bytes
    QTest::newRow("for an archive") << QStringLiteral("30");
    QTest::newRow("for a tile") << QStringLiteral("19");
    QTest::newRow("for everything") << QStringLiteral("0");
}

void CliUpdateFailuresTest::aDiskThatIsFull()
{
    QFETCH(QString, limit);
    QStringList arguments {QStringLiteral("-c"),
                           QStringLiteral("ulimit -f %1; trap '' XFSZ; exec \"$@\"").arg(limit),
                           QStringLiteral("sh"), QStringLiteral(VEXA_MAPS_PROGRAM)};
    arguments += rig->arguments(words("--timeout 2 update"));
    ChildProgram child(QStringLiteral("/bin/bash"), arguments, rig->environment());

    const int code = child.waitForFinished();

    QVERIFY2(code == 1 || code == 4, child.errorOutput().constData());
    QVERIFY(!child.errorOutput().isEmpty());
    isAsBefore();
    thenItGoesOn();
}

void CliUpdateFailuresTest::ctrlCGoesOnBehindTheLastByte_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void CliUpdateFailuresTest::ctrlCGoesOnBehindTheLastByte()
{
    QFETCH(int, signal);
    HttpTestServer server;
    const QString folder = rig->server.folder() + QLatin1String("/map5");
    for (const char *name : {"/version.txt", "/catalog-26.12.01.00.xml", "/regionname-lang-001.xml",
                             "/archives/2/FI.zip"})
        server.add(name, TestFile::read(folder + QLatin1String(name)));
    const QByteArray archive = TestFile::read(folder + QLatin1String("/archives/2/SE.tar.gz"));
    server.add("/archives/2/SE.tar.gz", archive,
               {HttpTestServer::StallAfter(archive.size() / 2), HttpTestServer::Whole()});
    rig->baseUri = server.url("/");
    const auto child = rig->start(words("update"));
    QVERIFY(child->waitForSize(rig->downloadFolder() + QLatin1String("/SE.tar.gz"),
                               archive.size() / 2));

    child->sendSignal(signal);

    QCOMPARE(child->waitForFinished(), 130);
    QVERIFY(child->errorOutput().contains("Interrupted"));
    isAsBefore();
    thenItGoesOn();
    const QList<HttpTestServer::Request> requests = server.requests();
    QVERIFY(std::any_of(requests.begin(), requests.end(),
                        [&archive](const HttpTestServer::Request &request) {
                            return request.header("Range")
                                == "bytes=" + QByteArray::number(archive.size() / 2) + '-';
                        }));
}

// The library's moves do not quote: found out before anything is downloaded.
void CliUpdateFailuresTest::aFolderNameThatTheMovesCannotTake()
{
    const QString odd = rig->scratchPath(QStringLiteral("odd name"));
    QVERIFY(QFile::rename(rig->dataFolder(), odd));
    QStringList arguments = rig->arguments(words("update"));
    arguments[1] = odd;
    const Tiles before = m_before;

    const ProgramRun run = rig->runRaw(arguments);

    QCOMPARE(run.code, 1);
    QVERIFY(!run.err.isEmpty());
    QCOMPARE(rig->answers("/archives/2/"), 0);
    QVERIFY(QFile::rename(odd, rig->dataFolder()));
    QCOMPARE(rig->mainSet(), before);
}

QTEST_GUILESS_MAIN(CliUpdateFailuresTest)
#include "tst_cliupdatefailures.moc"
