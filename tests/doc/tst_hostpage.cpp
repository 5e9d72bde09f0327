// SPDX-License-Identifier: MIT
// The host of doc/host.md, built from the page, with its page of QML taken from there as well.
#include "doc/pages.h"
#include "testutils/archivebuilder.h"
#include "testutils/nginxserver.h"
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QString blockBelow(const QString &heading)
{
    const QList<Block> blocks = blocksOf(QStringLiteral("host.md"));
    for (const Block &block : blocks) {
        if (block.heading == heading && block.language != QLatin1String("sh"))
            return block.text;
    }
    qFatal("no block below %s", qPrintable(heading));
}

int codeLines(const QString &text)
{
    int lines = 0;
    const QStringList all = text.split(QLatin1Char('\n'));
    for (const QString &line : all)
        lines += line.trimmed().size() > 1; // neither blank nor a brace
    return lines;
}

} // namespace

class HostPageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void hostIsAsShortAsItSays();
    void hostInstallsTheRegionItIsGiven();
    void hostSaysWhatFailed();

private:
    QString path(const char *name) const { return m_device->filePath(QLatin1String(name)); }
    /** Runs it to its end; returns what it wrote, its status goes to m_status. */
    QString run(const QString &region);

    std::unique_ptr<QTemporaryDir> m_device;
    std::unique_ptr<NginxServer> m_server;
    int m_status = -1;
};

void HostPageTest::init()
{
    m_device = std::make_unique<QTemporaryDir>();
    m_server = std::make_unique<NginxServer>();
    const QByteArray base = m_server->url("/map5/").toUtf8();
    TestFile::write(path("Main.qml"), blockBelow(QStringLiteral("Main.qml")).toUtf8());
    TestFile::write(path("config/Orvel/Maps.conf"), "[vexa]\nvexaBaseURI=" + base + '\n');
    const QString folder = path("cities/Tessarin/");
    TestFile::write(folder + QLatin1String("catalog-26.11.21.00.xml"),
                    "<Catalog Version=\"26.11.21.00\">\n"
                    "<File Id=\"UN150\" Description=\"Europe\" ZipFileSize=\"1\" Link=\"E.zip\">\n"
                    "<File Id=\"FI\" Description=\"Finland\" ZipFileSize=\"1\" Link=\"FI.zip\"/>\n"
                    "<File Id=\"SE\" Description=\"Sweden\" ZipFileSize=\"1\" Link=\"SE.zip\"/>\n"
                    "</File></Catalog>\n");
    TestFile::write(folder + QLatin1String("content.xml"),
                    "<directory map-version=\"26.11.21.00\"><diskcache/><regions/></directory>\n");
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("a/3/n60e024.cdt"), "tile");
    m_server->add(QStringLiteral("/map5/FI.zip"),
                  TestFile::read(builder.make(QStringLiteral("FI.zip"))));
}

QString HostPageTest::run(const QString &region)
{
    QProcess host;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VEXA_MYDOCS"), m_device->path());
    environment.insert(QStringLiteral("HOME"), path("home"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path("config"));
    environment.insert(QStringLiteral("QML2_IMPORT_PATH"), QStringLiteral(VEXA_QML_DIR));
    environment.insert(QStringLiteral("QML_DISABLE_DISK_CACHE"), QStringLiteral("1"));
    host.setProcessEnvironment(environment);
    host.setWorkingDirectory(m_device->path());
    host.start(QStringLiteral(VEXA_HOST_PROGRAM), {region});
    if (!host.waitForFinished(60000))
        return QStringLiteral("it does not end");
    m_status = host.exitStatus() == QProcess::NormalExit ? host.exitCode() : -1;
    QString printed;
    const QStringList lines =
        QString::fromUtf8(host.readAllStandardError()).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        // Without the library's own lines, and without Qt's about a reply that failed.
        if (line.startsWith(QLatin1String("qml: ")))
            printed += line.mid(5) + QLatin1Char('\n');
    }
    return printed;
}

void HostPageTest::hostIsAsShortAsItSays()
{
    const int lines = codeLines(blockBelow(QStringLiteral("main.cpp")))
        + codeLines(blockBelow(QStringLiteral("Main.qml")));

    QVERIFY2(lines > 40 && lines <= 52, qPrintable(QString::number(lines)));
}

void HostPageTest::hostInstallsTheRegionItIsGiven()
{
    const QString printed = run(QStringLiteral("FI"));

    QCOMPARE(printed, blockBelow(QStringLiteral("Running it")));
    QCOMPARE(m_status, 0);
    QCOMPARE(TestFile::read(path("cities/diskcache/a/3/n60e024.cdt")), QByteArray("tile"));
    const QByteArray content = TestFile::read(path("cities/Tessarin/content.xml"));
    QVERIFY2(content.contains("<region id=\"1FI\""), content.constData());
    QVERIFY(!content.contains("1SE"));
}

void HostPageTest::hostSaysWhatFailed()
{
    const QString printed = run(QStringLiteral("SE"));

    QCOMPARE(printed, QStringLiteral("- Finland\n- Sweden\n- Europe\nSE failed with code 1\n"));
    QCOMPARE(m_status, 1);
    QVERIFY(!TestFile::read(path("cities/Tessarin/content.xml")).contains("1SE"));
}

QTEST_GUILESS_MAIN(HostPageTest)
#include "tst_hostpage.moc"
