// SPDX-License-Identifier: MIT
// Each snippet of doc/qml.md prints what stands below it there.
#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"
#include "cityindex/cityindexlist.h"
#include "doc/snippets.h"
#include "download/runningworker.h"
#include "plugin/logger.h"
#include "testutils/archivebuilder.h"
#include "testutils/nginxserver.h"
#include <QQmlContext>
#include <QQmlEngine>
#include <QtTest>

namespace {

const char Version[] = "26.11.21.00";

/** The device and the host that the page speaks of. */
class Device
{
public:
    Device()
    {
        writeContent();
        QSettings settings(QStringLiteral("Orvel"), QStringLiteral("Maps"));
        settings.setValue(QStringLiteral("vexa/vexaBaseURI"),
                          QStringLiteral("https://maps.example.org/map5/"));
        settings.sync();
        catalog = std::make_unique<MapCatalog>();
        catalog->updateCatalog();
        cities = std::make_unique<CityIndexList>();
        worker = std::make_unique<RunningWorker>();
        worker->goOnline();
        deliverEvents(); // what the engine has to say of that

        engine.addImportPath(QStringLiteral(VEXA_QML_DIR));
        QQmlContext *context = engine.rootContext();
        context->setContextProperty(QStringLiteral("catalog"), catalog.get());
        context->setContextProperty(QStringLiteral("cities"), cities.get());
        context->setContextProperty(QStringLiteral("downloads"), &worker->iface());
    }

    MapData data;
    NginxServer server;
    std::unique_ptr<MapCatalog> catalog;
    std::unique_ptr<CityIndexList> cities;
    std::unique_ptr<RunningWorker> worker;
    QQmlEngine engine;

private:
    QByteArray file(const char *id, const char *name, int size, const QByteArray &nested = {})
    {
        return QByteArray("<File Id=\"") + id + "\" Description=\"" + name + "\" ZipFileSize=\""
            + QByteArray::number(size) + "\" Link=\""
            + server.url(QByteArray("/") + id + ".zip").toUtf8() + "\">" + nested + "</File>\n";
    }

    void writeContent()
    {
        writeFile(data.catalogFile(Version),
                  "<Catalog>\n" + file("FI", "Finland", 362597, file("AX", "\xc3\x85land", 9000))
                      + file("SE", "Sweden", 620714) + "</Catalog>\n");
        writeFile(data.namesFile(),
                  "<regions><region id=\"FI\" name=\"Suomi\"/>"
                  "<region id=\"SE\" name=\"Sverige\"/></regions>\n");
        QByteArray content = contentXml({{"SE", {"b/4/n59e018.cdt"}}});
        writeFile(data.contentFile(), content.replace("1.2", Version));
        data.makeTile("b/4/n59e018.cdt");
        ArchiveBuilder builder;
        builder.addFile(QStringLiteral("a/3/n60e024.cdt"), "tile");
        server.add(QStringLiteral("/FI.zip"), readFile(builder.make(QStringLiteral("FI.zip"))));
    }
};

} // namespace

class QmlSnippetsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void snippetPrintsWhatThePageSays_data();
    void snippetPrintsWhatThePageSays();
    void everyPropertyOfEveryClassIsOnThePage();
};

void QmlSnippetsTest::snippetPrintsWhatThePageSays_data()
{
    addSnippets(QStringLiteral("qml.md"));
}

void QmlSnippetsTest::snippetPrintsWhatThePageSays()
{
    QFETCH(QString, snippet);
    QFETCH(QString, output);
    Device device;
    const LogCatcher log(L::Off); // the snippet about the logger raises it

    const auto page = makePage(&device.engine, snippet);

    QTRY_COMPARE_WITH_TIMEOUT(printed(log), output, 30000);
    QVERIFY(device.worker->waitForEmptyQueue());
    deliverEvents();
    QCOMPARE(printed(log), output); // and nothing more
}

void QmlSnippetsTest::everyPropertyOfEveryClassIsOnThePage()
{
    const QString page = QString::fromUtf8(readFile(QStringLiteral(VEXA_DOC_DIR "/qml.md")));
    // Those whose signals are never emitted, or not once a page can see the object.
    const QByteArrayList silent {"idChanged",        "nameChanged",        "childrenChanged",
                                 "hasParentChanged", "downloadUrlChanged", "downloadSizeChanged"};

    for (const QMetaObject *type :
         {&MapCatalog::staticMetaObject, &MapRegion::staticMetaObject,
          &DownloadManagerIface::staticMetaObject, &CityIndexList::staticMetaObject,
          &CityIndex::staticMetaObject}) {
        QVERIFY(type->propertyCount() > type->propertyOffset());
        for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            QByteArrayList names {property.name()};
            if (property.hasNotifySignal() && !silent.contains(property.notifySignal().name()))
                names.append(property.notifySignal().name());
            for (const QByteArray &name : names) {
                // In a table, by itself or behind its class.
                const QRegularExpression word(
                    QStringLiteral("\\|.*`(%1\\.)?%2`")
                        .arg(QLatin1String(type->className()), QString::fromLatin1(name)));
                QVERIFY2(word.match(page).hasMatch(), type->className() + ("." + name));
            }
        }
    }
}

QTEST_GUILESS_MAIN(QmlSnippetsTest)
#include "tst_qmlsnippets.moc"
