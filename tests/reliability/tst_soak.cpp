// SPDX-License-Identifier: MIT
/*
 * The same thing over and over: memory, threads and open files must not grow with it. The long form
 * (VEXA_LONG=1) is 10,000 requests, 1,000 starts of the worker and 200 loads of the catalogue.
 */
#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"
#include "download/runningworker.h"
#include "plugin/logger.h"
#include "processmeter.h"
#include "testutils/archivebuilder.h"
#include "testutils/nginxserver.h"
#include "testutils/reporttable.h"
#include <functional>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QtTest>

namespace {

constexpr int Samples = 20;
constexpr int RequestsARound = 5; // download, unpack, move; download, move
constexpr qint64 KiB = 1024;

// The least that a repetition can lose is one allocation, and that is 32 bytes with malloc's own
// part. What is allowed beside that holds still: tables that grow in steps, a reply on its way.
constexpr qint64 HeapARepetition = 16;
constexpr qint64 HeapOnce = 64 * KiB;
// Holes in the heap hold pages. A lost page a repetition would be more even in the short form.
constexpr qint64 ResidentOnce = 4 * 1024 * KiB;

int repetitions(int longForm, int shortForm)
{
    return ReportTable::longForm() ? longForm : shortForm;
}

} // namespace

class SoakTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { L::og()->setLogLevel(L::Off); }
    void requestsThroughOneWorker();
    void startsAndStopsOfTheWorker();
    void catalogueLoadsWithQmlAttached();
    void cleanupTestCase();

private:
    void soak(const QString &what, int number, const std::function<bool()> &repetition);

    ReportTable m_table {QStringLiteral("soak"),
                         {QStringLiteral("Repeated"), QStringLiteral("Times"),
                          QStringLiteral("Heap after warm-up, at the end"),
                          QStringLiteral("Resident"), QStringLiteral("Threads"),
                          QStringLiteral("Open files")}};
    int m_rows = 0;
};

void SoakTest::soak(const QString &what, int number, const std::function<bool()> &repetition)
{
    ProcessMeter meter;
    for (int i = 1; i <= number; ++i) {
        QVERIFY2(repetition(), qPrintable(QStringLiteral("repetition %1").arg(i)));
        if (i * Samples / number != (i - 1) * Samples / number) {
            deliverEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            meter.sample();
        }
    }
    m_table.addRow(QStringList {what, QString::number(number)} + meter.figures());
    ++m_rows;
    const QByteArray figures = meter.figures().join(QLatin1String("; ")).toUtf8();
    QVERIFY2(meter.heapGrowth() <= HeapOnce + HeapARepetition * number, figures.constData());
    if (ProcessMeter::measuresHeap())
        QVERIFY2(meter.residentGrowth() <= ResidentOnce, figures.constData());
    QVERIFY2(meter.threadGrowth() <= 0, figures.constData());
    QVERIFY2(meter.fileGrowth() <= 0, figures.constData());
}

void SoakTest::requestsThroughOneWorker()
{
    const TemporaryHome home;
    NginxServer server;
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("0/1/a.cdt"), ArchiveBuilder::noise(5000));
    TestFile::write(server.folder() + QLatin1String("/FI.zip"),
                    TestFile::read(builder.make(QStringLiteral("FI.zip"))));
    TestFile::write(server.folder() + QLatin1String("/catalog.xml"), "<Catalog/>");
    RunningWorker worker;
    worker->setUnpackPause(0);
    worker.goOnline();
    int errors = 0;
    connect(&worker.iface(), &DownloadManagerIface::error, this, [&errors] { ++errors; });
    const int rounds = repetitions(10000, 250) / RequestsARound;

    soak(QStringLiteral("download, unpack and move of a region, and of a plain file"), rounds, [&] {
        worker.iface().download(QStringLiteral("FI"), server.url("/FI.zip"),
                                home.myDocs() + QLatin1String("/tiles/"), true);
        worker.iface().download(QStringLiteral("catalogue"), server.url("/catalog.xml"),
                                home.myDocs() + QLatin1String("/catalog.xml"), false);
        return QTest::qWaitFor(
            [&worker] { return worker->getRequestQueue()->snapshot().isEmpty(); }, 60000);
    });

    m_table.addNote(
        QStringLiteral("%1 requests went through the one worker.").arg(rounds * RequestsARound));
    QCOMPARE(errors, 0);
    QVERIFY(QFile::exists(home.myDocs() + QLatin1String("/tiles/0/1/a.cdt")));
}

void SoakTest::startsAndStopsOfTheWorker()
{
    const TemporaryHome home;

    soak(QStringLiteral("start and stop of a worker"), repetitions(1000, 100), [] {
        RunningWorker worker;
        worker.goOnline();
        return worker.stop();
    });
}

void SoakTest::catalogueLoadsWithQmlAttached()
{
    const MapData data;
    QByteArray files;
    QList<ContentRegion> installed;
    for (int country = 0; country < 40; ++country) {
        const QByteArray id = "C" + QByteArray::number(country);
        files += fileElement(id, fileElement(id + "A") + fileElement(id + "B"));
        installed.append({id + "A", {"0/1/" + id + ".cdt"}});
    }
    data.setCatalog(files);
    data.setContent(installed);
    MapCatalog catalog;
    catalog.updateCatalog();
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("catalog"), &catalog);
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.15\n"
                      "QtObject {\n"
                      "    property int count: available.count + here.count\n"
                      "    property var available: Instantiator {\n"
                      "        model: catalog.availableRegions\n"
                      "        delegate: QtObject {\n"
                      "            property string name: modelData.localizedName\n"
                      "            property int children: modelData.children.length\n"
                      "        }\n"
                      "    }\n"
                      "    property var here: Instantiator {\n"
                      "        model: catalog.installedRegions\n"
                      "        delegate: QtObject { property bool ours: modelData.installed }\n"
                      "    }\n"
                      "}\n",
                      QUrl());
    const std::unique_ptr<QObject> view(component.create());
    QVERIFY2(view, qPrintable(component.errorString()));
    const int count = view->property("count").toInt();
    QVERIFY2(count >= 80, QByteArray::number(count).constData());

    soak(QStringLiteral("load of the catalogue (120 regions) with QML attached"),
         repetitions(200, 40), [&] {
             catalog.updateCatalog();
             deliverEvents();
             QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
             engine.collectGarbage();
             return view->property("count").toInt() == count;
         });
}

void SoakTest::cleanupTestCase()
{
    if (m_rows == 3)
        QVERIFY(m_table.save());
}

QTEST_GUILESS_MAIN(SoakTest)
#include "tst_soak.moc"
