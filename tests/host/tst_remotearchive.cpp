// SPDX-License-Identifier: MIT
// Lists of archives on servers, compared with what the extractor makes of the same archives.
#include "archive/unpacking.h"
#include "host/shared/remotearchive.h"
#include "testutils/archivebuilder.h"
#include "testutils/httptestserver.h"
#include "testutils/nginxserver.h"
#include <QDirIterator>
#include <QNetworkAccessManager>
#include <QTimer>
#include <QtTest>

using Failure = RemoteArchive::Failure;
using Server = HttpTestServer;

namespace {

constexpr int Patience = 20000; // ms
constexpr int ShortPatience = 200; // ms
constexpr qint64 MiB = 1024 * 1024;

QByteArray describe(const QList<ArchiveFile> &files)
{
    QByteArray text;
    for (const ArchiveFile &file : files)
        text += file.path.toUtf8() + ' ' + QByteArray::number(file.size) + '\n';
    return text;
}

// What the extractor makes of it; its failure in words if it refuses.
QByteArray unpacked(const QString &path)
{
    Unpacking unpacking(path);
    unpacking.archive.setContained(true);
    unpacking.run();
    if (unpacking.archive.error() != VexaArchive::NoError)
        return "refused";
    QMap<QString, qint64> sizes;
    QDirIterator entries(unpacking.folder(), QDir::Files | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QFileInfo file(entries.next());
        sizes.insert(QDir(unpacking.folder()).relativeFilePath(file.filePath()), file.size());
    }
    QList<ArchiveFile> files;
    for (auto file = sizes.begin(); file != sizes.end(); ++file)
        files.append({file.key(), file.value()});
    return describe(files);
}

// Sixty tiles and what else there may be in an archive.
void fill(ArchiveBuilder &builder)
{
    for (int i = 0; i < 60; ++i)
        builder.addFile(QStringLiteral("a/3/tile%1.cdt").arg(i),
                        ArchiveBuilder::noise(4000 + 7 * i, quint32(i) + 1));
    builder.addFile(QStringLiteral("0/0/Ålesund.cdt"), "tile");
    builder.addFile(QStringLiteral("0/0/empty.cdt"), QByteArray());
    builder.addFile(QStringLiteral("README"), "text");
    builder.addFolder(QStringLiteral("b/empty"));
    builder.addLink(QStringLiteral("a/3/link.cdt"), QStringLiteral("tile1.cdt"));
}

void addFormats()
{
    QTest::addColumn<QString>("name");
    for (const char *ending : {"zip", "stored.zip", "7z", "tar", "tar.gz", "tar.bz2", "tar.xz",
                               "tar.zst", "tar.lz4", "pax", "cpio", "iso"})
        QTest::newRow(ending) << QStringLiteral("FI.") + QLatin1String(ending);
}

} // namespace

class RemoteArchiveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void listsWhatUnpackingMakes_data() { addFormats(); }
    void listsWhatUnpackingMakes();
    void listsOnAServerWithoutRanges_data() { addFormats(); }
    void listsOnAServerWithoutRanges();
    void listsAnswersOfAllForms_data();
    void listsAnswersOfAllForms();
    void aListAtTheEndCostsLittle_data();
    void aListAtTheEndCostsLittle();
    void aFormatWithoutAListIsReadThroughOnce();
    void anEmptyArchiveHasNoFiles_data();
    void anEmptyArchiveHasNoFiles();
    void aServerThatFailsGivesNoList_data();
    void aServerThatFailsGivesNoList();
    void aServerThatFailsLaterGivesNoList_data();
    void aServerThatFailsLaterGivesNoList();
    void aServerThatIsNotThereIsANetworkFailure();
    void whatTheExtractorRefusesIsRefused_data();
    void whatTheExtractorRefusesIsRefused();
    void everyCutArchiveIsRefused_data();
    void everyCutArchiveIsRefused();
    void linksAndDevicesAreNotListed();
    void redirectsAreFollowedOnce();
    void aListIsInterrupted();

private:
    bool list(const Server::Behaviour &behaviour, const QString &archive, int patience = Patience);

    std::unique_ptr<ArchiveBuilder> builder;
    std::unique_ptr<QNetworkAccessManager> network;
    std::unique_ptr<Server> server;
    std::unique_ptr<RemoteArchive> remote;
};

void RemoteArchiveTest::init()
{
    builder = std::make_unique<ArchiveBuilder>();
    network = std::make_unique<QNetworkAccessManager>();
    server = std::make_unique<Server>();
}

void RemoteArchiveTest::cleanup()
{
    remote.reset();
    network.reset();
    server.reset();
    builder.reset();
}

bool RemoteArchiveTest::list(const Server::Behaviour &behaviour, const QString &archive,
                             int patience)
{
    server->add("/archive", TestFile::read(archive), behaviour);
    remote =
        std::make_unique<RemoteArchive>(network.get(), QUrl(server->url("/archive")), patience);
    return remote->list();
}

void RemoteArchiveTest::listsWhatUnpackingMakes()
{
    QFETCH(QString, name);
    fill(*builder);
    const QString path = builder->make(name);

    QVERIFY2(list(Server::Whole(), path), qPrintable(remote->errorString()));

    QCOMPARE(describe(remote->files()), unpacked(path));
    QCOMPARE(remote->size(), QFileInfo(path).size());
    QVERIFY(remote->files().size() >= 63);
}

void RemoteArchiveTest::listsOnAServerWithoutRanges()
{
    QFETCH(QString, name);
    fill(*builder);
    const QString path = builder->make(name);

    QVERIFY2(list(Server::NoRange(), path), qPrintable(remote->errorString()));

    QCOMPARE(describe(remote->files()), unpacked(path));
    QCOMPARE(server->requestCount(), 1);
    QVERIFY(remote->bytesReceived() <= QFileInfo(path).size());
}

void RemoteArchiveTest::listsAnswersOfAllForms_data()
{
    QTest::addColumn<int>("form");
    QTest::newRow("chunked") << 0;
    QTest::newRow("no length") << 1;
    QTest::newRow("a range that starts elsewhere, then the whole") << 2;
    QTest::newRow("a range of a whole that is not told, then the whole") << 3;
    QTest::newRow("a range that is not named, then the whole") << 4;
    QTest::newRow("a range that is no range, then the whole") << 5;
    QTest::newRow("in drops") << 6;
}

void RemoteArchiveTest::listsAnswersOfAllForms()
{
    QFETCH(int, form);
    fill(*builder);
    const QString path = builder->make(QStringLiteral("FI.zip"));
    const std::vector<Server::Behaviour> first {
        Server::Chunked() | Server::NoRange(),
        Server::NoContentLength() | Server::NoRange(),
        Server::WrongRangeStart(),
        Server::UnknownRangeTotal(),
        Server::MissingContentRange(),
        Server::ContentRangeText("bytes one to two"),
        Server::Drip(20000, 1),
    };
    server->add("/FI.zip", TestFile::read(path),
                std::vector<Server::Behaviour> {first.at(size_t(form)), Server::Whole()});
    RemoteArchive archive(network.get(), QUrl(server->url("/FI.zip")), Patience);

    QVERIFY2(archive.list(), qPrintable(archive.errorString()));

    QCOMPARE(describe(archive.files()), unpacked(path));
}

void RemoteArchiveTest::aListAtTheEndCostsLittle_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("tiles");
    QTest::newRow("zip") << QStringLiteral("FI.zip") << 200;
    QTest::newRow("zip with a list of several pieces") << QStringLiteral("FI.zip") << 1500;
    QTest::newRow("7z") << QStringLiteral("FI.7z") << 200;
}

// As nginx counts it: the start, and the list with some bytes around it.
void RemoteArchiveTest::aListAtTheEndCostsLittle()
{
    QFETCH(QString, name);
    QFETCH(int, tiles);
    NginxServer nginx;
    for (int i = 0; i < tiles; ++i)
        builder->addFile(QStringLiteral("a/3/tile%1.cdt").arg(i),
                         ArchiveBuilder::noise(int(4 * MiB / tiles), quint32(i) + 1));
    const QString path = builder->make(name);
    nginx.add(QStringLiteral("FI"), TestFile::read(path));
    RemoteArchive archive(network.get(), QUrl(nginx.url("/FI")), Patience);

    QVERIFY2(archive.list(), qPrintable(archive.errorString()));

    QCOMPARE(describe(archive.files()), unpacked(path));
    qint64 sent = 0;
    QTRY_VERIFY(nginx.accessLog().size() >= 2);
    const QList<NginxServer::Entry> log = nginx.accessLog();
    for (const NginxServer::Entry &entry : log) {
        QCOMPARE(entry.status, 206);
        sent += entry.bodyBytesSent;
    }
    QCOMPARE(sent, archive.bytesReceived());
    QVERIFY2(log.size() <= 4, qPrintable(QString::number(log.size())));
    QVERIFY2(sent < 200 * 1024 + 120 * tiles, qPrintable(QString::number(sent)));
    QVERIFY(sent < QFileInfo(path).size() / 5);
}

void RemoteArchiveTest::aFormatWithoutAListIsReadThroughOnce()
{
    NginxServer nginx;
    for (int i = 0; i < 20; ++i)
        builder->addFile(QStringLiteral("a/3/tile%1.cdt").arg(i),
                         ArchiveBuilder::noise(int(MiB), quint32(i) + 1));
    const QString path = builder->make(QStringLiteral("FI.tar.gz"));
    nginx.add(QStringLiteral("FI"), TestFile::read(path));
    RemoteArchive archive(network.get(), QUrl(nginx.url("/FI")), Patience);

    QVERIFY2(archive.list(), qPrintable(archive.errorString()));

    QCOMPARE(describe(archive.files()), unpacked(path));
    const qint64 size = QFileInfo(path).size();
    QVERIFY2(archive.bytesReceived() <= size + 2 * 64 * 1024, // a look at the end may come first
             qPrintable(QString::number(archive.bytesReceived() - size)));
    // The pieces grow: a request for each 64 KiB would be 320.
    QTRY_VERIFY(nginx.accessLog().size() >= 2);
    QVERIFY(nginx.accessLog().size() < 20);
}

void RemoteArchiveTest::anEmptyArchiveHasNoFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("ranges");
    for (const char *name : {"e.zip", "e.tar", "e.tar.gz", "nothing"}) {
        for (const bool ranges : {true, false})
            QTest::addRow("%s, %s", name, ranges ? "ranges" : "none")
                << QString::fromLatin1(name) << ranges;
    }
}

void RemoteArchiveTest::anEmptyArchiveHasNoFiles()
{
    QFETCH(QString, name);
    QFETCH(bool, ranges);
    const QString path =
        name == QLatin1String("nothing") ? builder->write(name, QByteArray()) : builder->make(name);

    QVERIFY2(list(ranges ? Server::Whole() : Server::NoRange(), path),
             qPrintable(remote->errorString()));

    QVERIFY(remote->files().isEmpty());
    QCOMPARE(unpacked(path), QByteArray());
}

void RemoteArchiveTest::aServerThatFailsGivesNoList_data()
{
    QTest::addColumn<int>("behaviour");
    int i = 0;
    for (const char *name : {"not found", "forbidden", "an error", "no content", "silence",
                             "a stall in the first piece", "a cut", "a reset", "a short body",
                             "garbage", "nothing", "compression"})
        QTest::newRow(name) << i++;
}

void RemoteArchiveTest::aServerThatFailsGivesNoList()
{
    QFETCH(int, behaviour);
    fill(*builder);
    const QString path = builder->make(QStringLiteral("FI.tar"));
    const std::vector<Server::Behaviour> behaviours {
        Server::Status(404),    Server::Status(403),
        Server::Status(500),    Server::Status(204, QByteArray()),
        Server::SilentAccept(), Server::StallAfter(1000),
        Server::CutAfter(1000), Server::ResetAfter(1000),
        Server::ShortBody(10),  Server::Garbage(),
        Server::CloseAtOnce(),  Server::Header("Content-Encoding", "br"),
    };

    QVERIFY(!list(behaviours.at(size_t(behaviour)), path, ShortPatience));

    // An answer with a status of its own says that others may fare better.
    QCOMPARE(remote->failure(), behaviour < 4 ? Failure::Refused : Failure::Network);
    QVERIFY(!remote->errorString().isEmpty());
    QVERIFY(remote->files().isEmpty());
}

void RemoteArchiveTest::aServerThatFailsLaterGivesNoList_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("behaviour");
    for (const QByteArray name : {"FI.zip", "FI.7z", "FI.tar"}) {
        int i = 0;
        for (const QByteArray what :
             {"another part", "another size", "the whole", "a stall", "a cut", "a short body",
              "not found", "another file", "another edition", "no range named"})
            QTest::newRow(name + ", " + what) << QString::fromLatin1(name) << i++;
    }
}

void RemoteArchiveTest::aServerThatFailsLaterGivesNoList()
{
    QFETCH(QString, name);
    QFETCH(int, behaviour);
    fill(*builder);
    const QString path = builder->make(name);
    const QByteArray bytes = TestFile::read(path);
    const std::vector<Server::Behaviour> later {
        Server::WrongRangeStart(),
        Server::WrongRangeTotal(bytes.size() + 5),
        Server::NoRange(),
        Server::StallAfter(100),
        Server::CutAfter(100),
        Server::ShortBody(10),
        Server::Status(404),
        Server::ChangedFile(bytes + "more"),
        Server::Header("ETag", "\"two\""),
        Server::MissingContentRange(),
    };
    server->add(
        "/FI", bytes,
        std::vector<Server::Behaviour> {
            Server::Header("ETag", "\"one\""),
            later.at(size_t(behaviour))
                | (behaviour == 8 ? Server::Behaviour() : Server::Header("ETag", "\"one\""))});
    RemoteArchive archive(network.get(), QUrl(server->url("/FI")), ShortPatience);

    QVERIFY(!archive.list());

    QCOMPARE(archive.failure(), behaviour == 6 ? Failure::Refused : Failure::Network);
    QVERIFY(!archive.errorString().isEmpty());
    QVERIFY(archive.files().isEmpty());
}

void RemoteArchiveTest::aServerThatIsNotThereIsANetworkFailure()
{
    const QString url = server->url("/FI.zip");
    server->stop();
    RemoteArchive archive(network.get(), QUrl(url), Patience);

    QVERIFY(!archive.list());

    QCOMPARE(archive.failure(), Failure::Network);
    QVERIFY(archive.errorString().contains(QLatin1String("127.0.0.1")));
}

void RemoteArchiveTest::whatTheExtractorRefusesIsRefused_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("ranges");
    const auto row = [](const char *name, const QString &path) {
        QTest::addRow("%s, ranges", name) << path << true;
        QTest::addRow("%s, none", name) << path << false;
    };
    static ArchiveBuilder made; // outlives the rows
    made.addFile(QStringLiteral("a/3/x.cdt"), "tile");
    row("encrypted zip", made.make(QStringLiteral("e.encrypted.zip")));
    row("encrypted 7z", made.make(QStringLiteral("e.encrypted.7z")));
    made.addFile(QStringLiteral("top.cdt"), "tile"); // what the next one holds
    row("sizes unknown", made.make(QStringLiteral("e.zip.gz")));
    row("a path that comes twice",
        made.write(QStringLiteral("twice.tar"),
                   RawTar().add("a/3/x.cdt", "tile").add("./a/3/x.cdt", "longer").bytes()));
    row("text", made.write(QStringLiteral("text"), "<html>no such archive</html>"));
    row("words", made.write(QStringLiteral("words"), "one\ntwo\nthree\n"));
    row("a name that climbs out",
        made.write(QStringLiteral("out.tar"), RawTar().add("../x.cdt", "tile").bytes()));
    row("a name that climbs out on the way",
        made.write(QStringLiteral("way.tar"), RawTar().add("a/../../x.cdt", "tile").bytes()));
    row("an absolute name",
        made.write(QStringLiteral("abs.tar"), RawTar().add("/tmp/vexa-x.cdt", "tile").bytes()));
    row("a folder that climbs out",
        made.write(QStringLiteral("folder.tar"),
                   RawTar().add("../out/", QByteArray(), RawTar::Folder).bytes()));
}

void RemoteArchiveTest::whatTheExtractorRefusesIsRefused()
{
    QFETCH(QString, path);
    QFETCH(bool, ranges);
    QCOMPARE(unpacked(path), QByteArray("refused"));

    QVERIFY(!list(ranges ? Server::Whole() : Server::NoRange(), path));

    QCOMPARE(remote->failure(), Failure::Archive);
    QVERIFY(!remote->errorString().isEmpty());
    QVERIFY(remote->files().isEmpty());
}

void RemoteArchiveTest::everyCutArchiveIsRefused_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"FI.zip", "FI.7z", "FI.tar", "FI.tar.gz", "FI.tar.xz"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void RemoteArchiveTest::everyCutArchiveIsRefused()
{
    QFETCH(QString, name);
    fill(*builder);
    const QByteArray whole = TestFile::read(builder->make(name));
    for (const int percent : {5, 40, 75, 97}) {
        const QString path =
            builder->write(QStringLiteral("cut"), whole.left(whole.size() * percent / 100));
        for (const bool ranges : {true, false}) {
            QVERIFY2(!list(ranges ? Server::Whole() : Server::NoRange(), path),
                     qPrintable(QString::number(percent)));
            QCOMPARE(remote->failure(), Failure::Archive);
        }
    }
}

void RemoteArchiveTest::linksAndDevicesAreNotListed()
{
    const QString path =
        builder->write(QStringLiteral("odd.tar"),
                       RawTar()
                           .add("./a/3/x.cdt", "tile")
                           .add("a/3/hard.cdt", QByteArray(), RawTar::HardLink, "./a/3/x.cdt")
                           .add("a/3/soft.cdt", QByteArray(), RawTar::SymLink, "../../../x")
                           .add("a/3/pipe.cdt", QByteArray(), RawTar::Fifo)
                           .add("a//3/./y.cdt", "other")
                           .bytes());

    QVERIFY2(list(Server::Whole(), path), qPrintable(remote->errorString()));

    QCOMPARE(describe(remote->files()), QByteArray("a/3/x.cdt 4\na/3/y.cdt 5\n"));
    QCOMPARE(describe(remote->files()), unpacked(path));
}

void RemoteArchiveTest::redirectsAreFollowedOnce()
{
    fill(*builder);
    const QString path = builder->make(QStringLiteral("FI.zip"));
    server->add("/mirror", TestFile::read(path), Server::Whole());
    server->add("/FI.zip", QByteArray(), Server::Redirect(server->url("/mirror")));
    RemoteArchive archive(network.get(), QUrl(server->url("/FI.zip")), Patience);

    QVERIFY2(archive.list(), qPrintable(archive.errorString()));

    QCOMPARE(describe(archive.files()), unpacked(path));
    QVERIFY(server->requestCount("/mirror") >= 2);
    // Qt may repeat the first request, if the connection broke; what leads on is not asked again.
    bool redirected = false;
    const QList<Server::Request> requests = server->requests();
    for (const Server::Request &request : requests) {
        redirected = redirected || request.path == "/mirror";
        QVERIFY(request.path == (redirected ? "/mirror" : "/FI.zip"));
    }
}

void RemoteArchiveTest::aListIsInterrupted()
{
    server->add("/FI.zip", QByteArray("x"), Server::SilentAccept());
    RemoteArchive archive(network.get(), QUrl(server->url("/FI.zip")), Patience);
    QTimer timer;
    connect(&timer, &QTimer::timeout, &archive, [&] {
        if (server->requestCount() > 0)
            archive.abort();
    });
    timer.start(1);

    QVERIFY(!archive.list());

    QCOMPARE(archive.failure(), Failure::Aborted);
}

QTEST_GUILESS_MAIN(RemoteArchiveTest)
#include "tst_remotearchive.moc"
