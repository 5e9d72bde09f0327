// SPDX-License-Identifier: MIT
// A process that is killed while it writes the content file, again and again.
#include "catalog/mapcatalog.h"

#include "catalog/mapdata.h"
#include <csignal>
#include <cstdio>
#include <memory>
#include <QProcess>
#include <QTest>

class ContentCrashTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<MapData>(); }
    void cleanup() { m_data.reset(); }

    void killingTheWriterNeverCostsTheInstalledList();

private:
    std::unique_ptr<MapData> m_data;
};

namespace {

constexpr int Regions = 100;

// Writes without end and tells of each time.
int writeForEver()
{
    MapCatalog catalog;
    catalog.updateCatalog();
    for (;;) {
        catalog.updateLocalContentFile();
        putchar('.');
        fflush(stdout);
    }
}

} // namespace

void ContentCrashTest::killingTheWriterNeverCostsTheInstalledList()
{
    QByteArray elements;
    QList<ContentRegion> installed;
    for (int i = 0; i < Regions; ++i) {
        const QByteArray id = QByteArray::number(i);
        // Long, so that a good part of the time goes into the write itself.
        const QByteArray tile = "a/3/" + id + QByteArray(200, 'x') + ".cdt";
        elements += fileElement(id);
        QList<QByteArray> tiles;
        for (int k = 0; k < 20; ++k)
            tiles.append(tile);
        installed.append({id, tiles});
    }
    m_data->setCatalog(elements);
    m_data->setContent(installed);

    for (int round = 0; round < 25; ++round) {
        QProcess child;
        child.start(QCoreApplication::applicationFilePath(), {text("--write")});
        QVERIFY(child.waitForReadyRead(60000));
        // At another moment of the next write each time, in steps of a few microseconds.
        for (int spin = 0; spin < round * 37 % 101; ++spin)
            QFile::exists(m_data->contentFile());
        QCOMPARE(kill(pid_t(child.processId()), SIGKILL), 0);
        QVERIFY(child.waitForFinished());

        const MapCatalogProcessor processor;
        QCOMPARE(int(processor.readLocalContent(m_data->contentFile()).size()), Regions);
        QCOMPARE(processor.readLocalMapVersion(m_data->contentFile()), text("1.2"));
    }
    MapCatalog catalog;
    catalog.updateCatalog();
    auto list = catalog.installedRegions();
    QCOMPARE(int(list.count(&list)), Regions);
    QCOMPARE(int(list.at(&list, Regions - 1)->fileList().size()), 20);
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == QLatin1String("--write"))
        return writeForEver();
    ContentCrashTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_contentcrash.moc"
