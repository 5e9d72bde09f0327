// SPDX-License-Identifier: MIT
#include "download/enginechild.h"
#include "download/settingsfile.h"
#include "download/testengine.h"
#include "testutils/httptestserver.h"
#include "testutils/nginxserver.h"
#include "testutils/temporaryhome.h"
#include <memory>
#include <QCryptographicHash>
#include <QTest>

namespace {

constexpr int MiB = 1024 * 1024;

QString line(const char *text)
{
    return QString::fromLatin1(text);
}

QByteArray bytes(int size)
{
    return HttpTestServer::generatedBytes(1, 0, size);
}

QByteArray hashOf(const QString &path)
{
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return QByteArray("cannot be read");
    return hash.result();
}

} // namespace

/** The transfer against the server that hosts use. */
class NginxTransferTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void fetchesTheFileByteForByte();
    void asksForTheRestOfASavedTransfer();
    void endsWellIfAllOfAFileOfUnknownSizeIsThere();
    void reportsAMissingFile();
    void goesOnAfterASuspension();
    void fetchesABigFileThoughItIsKilled();

private:
    std::unique_ptr<TemporaryHome> m_home;
    std::unique_ptr<NginxServer> m_server;
};

void NginxTransferTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
    m_server = std::make_unique<NginxServer>();
}

void NginxTransferTest::cleanup()
{
    m_server.reset();
    m_home.reset();
}

void NginxTransferTest::fetchesTheFileByteForByte()
{
    m_server->add(line("map5/FI.zip"), bytes(3 * MiB));
    m_server->add(line("map5/empty"), QByteArray());
    TestEngine engine;
    engine.start();

    const QString file = engine.download(m_server->url("/map5/FI.zip"));
    const QString empty = engine.download(m_server->url("/map5/empty"));

    EVENTUALLY(engine.finished.count() == 2);
    QCOMPARE(contentOf(file), bytes(3 * MiB));
    QCOMPARE(contentOf(empty), QByteArray());
    EVENTUALLY(m_server->accessLog().size() == 2);
    const NginxServer::Entry entry = m_server->accessLog().at(0);
    QCOMPARE(entry.method, QByteArray("GET"));
    QCOMPARE(entry.path, QByteArray("/map5/FI.zip"));
    QCOMPARE(entry.range, QByteArray("bytes=0-"));
    QCOMPARE(entry.status, 206);
    QCOMPARE(entry.bodyBytesSent, 3 * MiB);
    QCOMPARE(engine.error.count(), 0);
}

void NginxTransferTest::asksForTheRestOfASavedTransfer()
{
    m_server->add(line("FI.zip"), bytes(3 * MiB));
    const QString url = m_server->url("/FI.zip");
    const QString file = TestEngine::saveFile(url);
    writeFile(file, bytes(MiB));
    saveEarlierRun(url, file, MiB, 3 * MiB);
    TestEngine engine;

    engine.start();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(3 * MiB));
    EVENTUALLY(m_server->accessLog().size() == 1);
    const NginxServer::Entry entry = m_server->accessLog().at(0);
    QCOMPARE(entry.range, QByteArray("bytes=1048576-"));
    QCOMPARE(entry.status, 206);
    QCOMPARE(entry.bodyBytesSent, 2 * MiB);
}

void NginxTransferTest::endsWellIfAllOfAFileOfUnknownSizeIsThere()
{
    m_server->add(line("FI.zip"), bytes(1000));
    const QString url = m_server->url("/FI.zip");
    const QString file = TestEngine::saveFile(url);
    writeFile(file, bytes(1000));
    saveEarlierRun(url, file, 1000, 0);
    TestEngine engine;

    engine.start();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(1000));
    EVENTUALLY(m_server->accessLog().size() == 1);
    QCOMPARE(m_server->accessLog().at(0).status, 416);
}

void NginxTransferTest::reportsAMissingFile()
{
    TestEngine engine;
    engine.start();

    const QString file = engine.download(m_server->url("/missing"));

    EVENTUALLY(engine.error.count() == 1);
    EVENTUALLY(engine.isIdle());
    QCOMPARE(engine.error.at(0).at(2).toInt(), 1);
    QVERIFY(!QFile::exists(file));
    EVENTUALLY(m_server->accessLog().size() == 1);
    QCOMPARE(m_server->accessLog().at(0).status, 404);
}

void NginxTransferTest::goesOnAfterASuspension()
{
    m_server->stop();
    m_server->setRateLimit(2 * MiB);
    m_server->start();
    m_server->add(line("FI.zip"), bytes(3 * MiB));
    TestEngine engine;
    engine.start();
    const QString file = engine.download(m_server->url("/FI.zip"));
    EVENTUALLY(QFileInfo(file).size() > 100000);

    engine.worker->suspend();
    EVENTUALLY(m_server->accessLog().size() == 1);
    EVENTUALLY(savedRecord().bytesReceived == QFileInfo(file).size());
    const qint64 kept = QFileInfo(file).size();
    QVERIFY(kept < 3 * MiB);
    engine.worker->resume();

    EVENTUALLY(engine.finished.count() == 1);
    QCOMPARE(contentOf(file), bytes(3 * MiB));
    EVENTUALLY(m_server->accessLog().size() == 2);
    QCOMPARE(m_server->accessLog().at(1).range, "bytes=" + QByteArray::number(kept) + '-');
    QCOMPARE(m_server->accessLog().at(1).bodyBytesSent, 3 * MiB - kept);
}

void NginxTransferTest::fetchesABigFileThoughItIsKilled()
{
    constexpr qint64 Size = 96LL * MiB;
    m_server->add(line("big.zip"), bytes(Size));
    const QString url = m_server->url("/big.zip");
    const QString file = TestEngine::saveFile(url);
    const QString program = QCoreApplication::applicationFilePath();
    {
        m_server->stop();
        m_server->setRateLimit(40 * MiB);
        m_server->start();
        ChildProgram child(program, engineChildArguments(*m_home, url));
        QVERIFY(child.waitForSize(file, 5 * MiB));
        child.kill();
        QVERIFY(QFileInfo(file).size() < Size);
    }
    m_server->stop();
    m_server->setRateLimit(0);
    m_server->start();
    ChildProgram child(program, engineChildArguments(*m_home));

    QCOMPARE(child.waitForFinished(), 0);
    QCOMPARE(hashOf(file), hashOf(m_server->folder() + line("/big.zip")));
    EVENTUALLY(!m_server->accessLog().isEmpty());
    const NginxServer::Entry last = m_server->accessLog().last();
    QCOMPARE(last.status, 206);
    QVERIFY(last.range != "bytes=0-");
    QVERIFY(last.bodyBytesSent < Size);
    QVERIFY(SettingsFile(*m_home).requests().isEmpty());
}

int main(int argc, char **argv)
{
    if (isEngineChild(argc, argv))
        return runEngineChild(argc, argv);
    QCoreApplication app(argc, argv);
    NginxTransferTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_nginxtransfer.moc"
