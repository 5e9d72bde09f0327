// SPDX-License-Identifier: MIT
// What the catalogue shows and loads; installing and re-entrancy have tests of their own.
#include "catalog/mapcatalog.h"

#include "catalog/everypass.h"
#include "catalog/mapdata.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QElapsedTimer>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

class MapCatalogTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<MapData>(); }
    void cleanup() { m_data.reset(); }

    void hasItsPropertiesInOrder();
    void hasItsMethodsInOrder();
    void startsWithFoldersAndVersionsButWithoutRegions();
    void makesMissingFolders();
    void aTileFolderIsMadeAlone();
    void takesThePathSuffixOfTheConstructor();
    void aNewPathSuffixWaitsForTheFolderStructure();
    void theFolderStructureAlwaysTells();
    void theMapsVersionIsReadOrStored();
    void aStoredMapsVersionNamesTheCatalogueButStaysOutOfTheContentFile();
    void theMosVersionIsReadOrWritten();
    void theMosVersionOfAnotherDataSet_data();
    void theMosVersionOfAnotherDataSet();
    void catalogueFilesMustAllBeThere();
    void catalogueFilesAreLookedForInOrder();
    void anUpdateLoadsBothLists();
    void anUpdateTellsInOrder();
    void anUpdateLogsItsTwoLines();
    void localizedNamesAreApplied();
    void localizedNamesComeInTheOrderOfTheirIds();
    void withoutACatalogueNothingIsInstalled();
    void nullEntriesOfTheCatalogueAreLeftOut();
    void ofRegionsWithOneIdTheLaterCounts();
    void installedIdsThatAreNotAvailableAreIgnored();
    void anIdIsNotTakenWithItsPrefix();
    void onlyRegionElementsOfADirectoryAreInstalled_data();
    void onlyRegionElementsOfADirectoryAreInstalled();
    void fileListsComeFromTheContentFile();
    void loadingAvailableRegionsAloneKeepsWhatIsInstalled();
    void loadingAvailableRegionsKeepsTheOrderOfInstallation();
    void loadingInstalledRegionsUnmarksWhatIsGone();
    void aDamagedContentFileMeansThatNothingIsInstalled();
    void localeAwareCompareIsThePlatforms();
    void regionsAreFoundById();
    void updateFinishedIsNeverEmitted();
    void scriptsReadTheLists();
    void scriptsFollowTheSignals();
    void scriptsCallWithDefaultArguments();
    void scriptsCannotChangeTheLists();
    void theGarbageCollectorLeavesRegionsAlone();
    void instancesWithDifferentSuffixesAreIndependent();
    void manyRegionsLoadInLinearTime();

private:
    std::unique_ptr<MapData> m_data;
};

namespace {

QString ids(QQmlListProperty<MapRegion> list)
{
    QStringList ids;
    for (int i = 0; i < int(list.count(&list)); ++i)
        ids.append(list.at(&list, i)->id());
    return ids.join(QLatin1Char(' '));
}

QByteArray mosHeader(char first)
{
    return QByteArray(1, first) + QByteArray(15, '\0');
}

/** A QML object whose document sees the catalogue as "catalog". */
class Script
{
public:
    Script(MapCatalog *catalog, const char *body)
    {
        m_engine.rootContext()->setContextProperty(text("catalog"), catalog);
        QQmlComponent component(&m_engine);
        component.setData(QByteArray("import QtQml 2.0\nQtObject {\n") + body + "\n}", QUrl());
        m_object.reset(component.create());
        if (!m_object)
            qFatal("%s", qPrintable(component.errorString()));
    }
    QVariant value(const char *property) const { return m_object->property(property); }
    void call(const char *function)
    {
        if (!QMetaObject::invokeMethod(m_object.get(), function))
            qFatal("no function %s", function);
    }
    QQmlEngine *engine() { return &m_engine; }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_object;
};

} // namespace

void MapCatalogTest::hasItsPropertiesInOrder()
{
    const QMetaObject &meta = MapCatalog::staticMetaObject;
    QStringList found;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        found.append(text(property.typeName()) + QLatin1Char(' ') + text(property.name())
                     + (property.isWritable() ? text(" rw ") : text(" r "))
                     + text(property.notifySignal().methodSignature()));
    }

    const QStringList expected {
        text("QQmlListProperty<MapRegion> installedRegions r installedRegionsChanged()"),
        text("QQmlListProperty<MapRegion> availableRegions r availableRegionsChanged()"),
        text("QString installedMapsVersion rw installedMapsVersionChanged()"),
        text("QString installedMOSVersion rw installedMOSVersionChanged()"),
        text("QString mapBaseDirectory r mapBaseDirectoryChanged()"),
        text("QString tessarinDirectory r tessarinDirectoryChanged()"),
        text("bool bussy r bussyChanged()"),
    };
    QCOMPARE(found, expected);
}

void MapCatalogTest::hasItsMethodsInOrder()
{
    const QMetaObject &meta = MapCatalog::staticMetaObject;
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QCOMPARE(method.access(), QMetaMethod::Public);
        found.append(text(method.typeName()) + QLatin1Char(' ') + text(method.name()) + text("(")
                     + QString::fromLatin1(method.parameterTypes().join(',')) + text(") ")
                     + QString::fromLatin1(method.parameterNames().join(',')));
    }

    const QStringList expected {
        text("void updateFinished() "),
        text("void installedRegionsChanged() "),
        text("void availableRegionsChanged() "),
        text("void installedMapsVersionChanged() "),
        text("void installedMOSVersionChanged() "),
        text("void mapBaseDirectoryChanged() "),
        text("void tessarinDirectoryChanged() "),
        text("void bussyChanged() "),
        text("bool catalogFilesExist() "),
        text("void updateCatalog() "),
        text("void updateLocalContentFile() "),
        text("void addInstalledRegion(QString,QStringList) id,fileList"),
        text("void deleteInstalledRegion(QString) id"),
        text("void setInstalledMapsVersion(QString) installedMapsVersion"),
        text("void setInstalledMapsVersion() "),
        text("void setInstalledMOSVersion(QString,QString) installedMOSVersion,differentPath"),
        text("void setInstalledMOSVersion(QString) installedMOSVersion"),
        text("void setInstalledMOSVersion() "),
        text("MapRegion* region(QString) id"),
        text("int localeAwareCompare(QString,QString) strA,strB"),
        text("void removeAllMapData() "),
        text("void setPathSuffix(QString) pathSuffix"),
        text("void setPathSuffix() "),
        text("void resetInstanceWithPathSuffix(QString,bool) "
             "pathSuffix,ensureMainTessarinFiles"),
        text("void resetInstanceWithPathSuffix(QString) pathSuffix"),
        text("void resetInstanceWithPathSuffix() "),
    };
    QCOMPARE(found, expected);
}

void MapCatalogTest::startsWithFoldersAndVersionsButWithoutRegions()
{
    m_data->setCatalog(fileElement("42"));
    m_data->setContent({{"42", {}}});
    writeFile(m_data->configFile(), mosHeader(1));

    MapCatalog catalog;

    QCOMPARE(catalog.mapBaseDirectory(), m_data->citiesFolder());
    QCOMPARE(catalog.tessarinDirectory(), m_data->catalogFolder());
    QCOMPARE(catalog.installedMapsVersion(), text("1.2"));
    QCOMPARE(catalog.installedMOSVersion(), text("1.0.0.0"));
    QCOMPARE(catalog.bussy(), false);
    QCOMPARE(ids(catalog.availableRegions()), QString());
    QCOMPARE(ids(catalog.installedRegions()), QString());
    QCOMPARE(catalog.region(text("42")), nullptr);
}

void MapCatalogTest::makesMissingFolders()
{
    QVERIFY(QDir(m_data->citiesFolder()).removeRecursively());

    const MapCatalog catalog;

    QVERIFY(QFileInfo(m_data->catalogFolder()).isDir());
    QVERIFY(QFileInfo(m_data->tileFolder()).isDir());
}

void MapCatalogTest::aTileFolderIsMadeAlone()
{
    // With "/sub" the parents differ: the catalogue folder gets its own, the tile cache does not.
    const MapCatalog catalog(text("/sub"));

    QVERIFY(QFileInfo(m_data->catalogFolder() + text("/sub")).isDir());
    QVERIFY(QFileInfo(m_data->tileFolder() + text("/sub")).isDir()); // its parent is there
    const MapCatalog other(text("_new/sub"));
    QVERIFY(QFileInfo(m_data->catalogFolder() + text("_new/sub")).isDir());
    QVERIFY(!QFileInfo::exists(m_data->tileFolder() + text("_new")));
}

void MapCatalogTest::takesThePathSuffixOfTheConstructor()
{
    const MapCatalog catalog(text("_new"));

    QCOMPARE(catalog.mapBaseDirectory(), m_data->citiesFolder());
    QCOMPARE(catalog.tessarinDirectory(), m_data->catalogFolder() + text("_new"));
    QVERIFY(QFileInfo(m_data->tileFolder() + text("_new")).isDir());
}

void MapCatalogTest::aNewPathSuffixWaitsForTheFolderStructure()
{
    MapCatalog catalog;
    QSignalSpy changed(&catalog, &MapCatalog::tessarinDirectoryChanged);

    catalog.setPathSuffix(text("_new"));

    QCOMPARE(catalog.tessarinDirectory(), m_data->catalogFolder());
    QCOMPARE(changed.count(), 0);
    catalog.initFolderStructure();
    QCOMPARE(catalog.tessarinDirectory(), m_data->catalogFolder() + text("_new"));
    catalog.setPathSuffix();
    catalog.initFolderStructure();
    QCOMPARE(catalog.tessarinDirectory(), m_data->catalogFolder());
}

void MapCatalogTest::theFolderStructureAlwaysTells()
{
    MapCatalog catalog;
    QSignalSpy base(&catalog, &MapCatalog::mapBaseDirectoryChanged);
    QSignalSpy tessarin(&catalog, &MapCatalog::tessarinDirectoryChanged);
    QSignalSpy maps(&catalog, &MapCatalog::installedMapsVersionChanged);
    QSignalSpy mos(&catalog, &MapCatalog::installedMOSVersionChanged);

    catalog.initFolderStructure();

    QCOMPARE(base.count(), 1);
    QCOMPARE(tessarin.count(), 1);
    QCOMPARE(maps.count(), 0);
    catalog.initialize();
    QCOMPARE(base.count(), 2);
    QCOMPARE(tessarin.count(), 2);
    QCOMPARE(maps.count(), 1);
    QCOMPARE(mos.count(), 1);
}

void MapCatalogTest::theMapsVersionIsReadOrStored()
{
    MapCatalog catalog;
    QSignalSpy changed(&catalog, &MapCatalog::installedMapsVersionChanged);

    catalog.setInstalledMapsVersion(text("5.1"));
    QCOMPARE(catalog.installedMapsVersion(), text("5.1"));
    catalog.setInstalledMapsVersion(text("5.1")); // tells also when nothing changes
    QCOMPARE(changed.count(), 2);

    writeFile(m_data->contentFile(), "<directory map-version=\"3.1.12.5\"/>");
    catalog.setInstalledMapsVersion();
    QCOMPARE(catalog.installedMapsVersion(), text("03.01.12.05"));
    QFile::remove(m_data->contentFile());
    catalog.setInstalledMapsVersion();
    QCOMPARE(catalog.installedMapsVersion(), QString());
    QCOMPARE(changed.count(), 4);
}

void MapCatalogTest::aStoredMapsVersionNamesTheCatalogueButStaysOutOfTheContentFile()
{
    m_data->setContent({});
    m_data->setCatalog(fileElement("42"));
    writeFile(m_data->catalogFile("5.1"), "<c>" + fileElement("51") + "</c>");
    MapCatalog catalog;

    catalog.setInstalledMapsVersion(text("5.1"));
    catalog.updateCatalog();

    QCOMPARE(ids(catalog.availableRegions()), text("51"));
    QCOMPARE(readFile(m_data->contentFile()), contentXml({}));
}

void MapCatalogTest::theMosVersionIsReadOrWritten()
{
    writeFile(m_data->configFile(), mosHeader(1) + "rest");
    MapCatalog catalog;
    QSignalSpy changed(&catalog, &MapCatalog::installedMOSVersionChanged);

    catalog.setInstalledMOSVersion(text("1.0.23.7"));

    QCOMPARE(catalog.installedMOSVersion(), text("1.0.23.7"));
    QCOMPARE(readFile(m_data->configFile()).toHex(),
             QByteArray("01000000000000001700000007000000") + QByteArray("rest").toHex());
    writeFile(m_data->configFile(), mosHeader(2));
    catalog.setInstalledMOSVersion();
    QCOMPARE(catalog.installedMOSVersion(), text("2.0.0.0"));
    QFile::remove(m_data->configFile());
    catalog.setInstalledMOSVersion(text("3.0.0.0")); // the file must exist to be written
    QCOMPARE(catalog.installedMOSVersion(), text("3.0.0.0"));
    QVERIFY(!QFile::exists(m_data->configFile()));
    QCOMPARE(changed.count(), 3);
}

void MapCatalogTest::theMosVersionOfAnotherDataSet_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("differentPath");
    QTest::addColumn<QString>("folder");
    QTest::newRow("the main one") << QString() << text("diskcache_new") << text("diskcache_new");
    QTest::newRow("one with a suffix") << text("_x") << text("other") << text("other_x");
    QTest::newRow("every occurrence") << text("_diskcache") << text("dc") << text("dc_dc");
    QTest::newRow("no back reference") << QString() << text("a\\1b\\0") << text("a\\1b\\0");
    QTest::newRow("in other letters it is none")
        << text("_DISKCACHE") << text("dc") << text("dc_DISKCACHE");
}

void MapCatalogTest::theMosVersionOfAnotherDataSet()
{
    QFETCH(QString, suffix);
    QFETCH(QString, differentPath);
    QFETCH(QString, folder);
    const QString config = m_data->citiesFolder() + text("/") + folder + text("/config.cfg");
    writeFile(config, mosHeader(9));
    MapCatalog catalog(suffix);

    catalog.setInstalledMOSVersion(QString(), differentPath);
    QCOMPARE(catalog.installedMOSVersion(), text("9.0.0.0"));
    catalog.setInstalledMOSVersion(text("1.0.23.7"), differentPath);

    QCOMPARE(readFile(config).toHex(), QByteArray("01000000000000001700000007000000"));
}

void MapCatalogTest::catalogueFilesMustAllBeThere()
{
    MapCatalog catalog;
    catalog.setInstalledMapsVersion(text("1.2"));
    QVERIFY(!catalog.catalogFilesExist());
    writeFile(m_data->contentFile(), "x");
    QVERIFY(!catalog.catalogFilesExist());
    writeFile(m_data->catalogFile(), "x");
    QVERIFY(!catalog.catalogFilesExist());
    writeFile(m_data->namesFile(), "x");
    QVERIFY(catalog.catalogFilesExist());
    catalog.setInstalledMapsVersion(text("1.3"));
    QVERIFY(!catalog.catalogFilesExist());
}

void MapCatalogTest::catalogueFilesAreLookedForInOrder()
{
    MapCatalog catalog;
    catalog.setInstalledMapsVersion(text("1.2"));
    writeFile(m_data->contentFile(), "x");
    const LogCatcher log(4);

    catalog.catalogFilesExist();
    QCOMPARE(log.lines().size(), 0); // so it has not come to asking for the language
    writeFile(m_data->catalogFile(), "x");
    catalog.catalogFilesExist();

    QCOMPARE(log.texts(), QStringList {text("[TRACE] We receive system name() as C :: 001")});
}

void MapCatalogTest::anUpdateLoadsBothLists()
{
    m_data->setCatalog(fileElement("1", fileElement("11") + fileElement("12")) + fileElement("2"));
    m_data->setContent({{"2", {"a/3/x.cdt"}}, {"11", {}}});
    MapCatalog catalog;

    catalog.updateCatalog();

    QCOMPARE(ids(catalog.availableRegions()), text("11 12 1 2"));
    QCOMPARE(ids(catalog.installedRegions()), text("2 11"));
    QCOMPARE(ids(catalog.region(text("1"))->children()), text("11 12"));
    QVERIFY(catalog.region(text("2"))->installed());
    QVERIFY(catalog.region(text("11"))->installed());
    QVERIFY(!catalog.region(text("12"))->installed());
    QCOMPARE(catalog.region(text("2"))->fileList(), QStringList {text("\\a\\3\\x.cdt")});
}

void MapCatalogTest::anUpdateTellsInOrder()
{
    m_data->setCatalog(fileElement("42"));
    m_data->setContent({{"42", {}}});
    MapCatalog catalog;
    QStringList told;
    connect(&catalog, &MapCatalog::bussyChanged, this,
            [&] { told.append(catalog.bussy() ? text("busy") : text("ready")); });
    connect(&catalog, &MapCatalog::availableRegionsChanged, this,
            [&] { told.append(text("available ") + ids(catalog.availableRegions())); });
    connect(&catalog, &MapCatalog::installedRegionsChanged, this,
            [&] { told.append(text("installed ") + ids(catalog.installedRegions())); });

    catalog.updateCatalog();

    QCOMPARE(
        told,
        QStringList({text("busy"), text("available 42"), text("installed 42"), text("ready")}));
}

void MapCatalogTest::anUpdateLogsItsTwoLines()
{
    m_data->setCatalog(fileElement("42"));
    m_data->setContent({});
    MapCatalog catalog;
    const LogCatcher log(3);

    catalog.updateCatalog();

    QCOMPARE(log.texts(),
             QStringList({text("[INFO] Current installed maps version is 1.2"),
                          text("[INFO] Will try to open regionname-lang-001.xml language file")}));
}

void MapCatalogTest::localizedNamesAreApplied()
{
    m_data->setCatalog(fileElement("42") + fileElement("43") + fileElement("411"));
    m_data->setContent({});
    writeFile(m_data->namesFile(),
              "<n><region id=\"42\" name=\"\xc3\x84lpha\"/><region id=\"99\" name=\"none\"/>"
              "<region id=\"411\" name=\"Taiwan\"/></n>");
    MapCatalog catalog;

    catalog.updateCatalog();

    QCOMPARE(catalog.region(text("42"))->localizedName(), text("\xc3\x84lpha"));
    QCOMPARE(catalog.region(text("42"))->name(), text("Region 42"));
    // A region without an entry has its catalogue name only.
    QCOMPARE(catalog.region(text("43"))->localizedName(), QString());
    QCOMPARE(catalog.region(text("43"))->name(), text("Region 43"));
    QCOMPARE(catalog.region(text("411"))->localizedName(),
             text("qtn_maps_vexa_taiwan_international"));
}

// As texts are ordered, however long the ids are the same and whatever letters they have; of
// several names for one region the last one counts.
void MapCatalogTest::localizedNamesComeInTheOrderOfTheirIds()
{
    const QList<QByteArray> ids {"9",
                                 "10",
                                 "1",
                                 "\xc8\x80"
                                 "a",
                                 "\xc4\x80z",
                                 "abcdefgh9",
                                 "\xc3\xbfz",
                                 "abcdefgh10",
                                 "\xc3\xbf"
                                 "a",
                                 "abcdefgh"};
    QByteArray elements;
    QByteArray names = "<n><region id=\"10\" name=\"other\"/><region id=\"none\" name=\"none\"/>";
    for (const QByteArray &id : ids) {
        elements += fileElement(id);
        names += "<region id=\"" + id + "\" name=\"" + id + "\"/>";
    }
    m_data->setCatalog(elements);
    m_data->setContent({});
    writeFile(m_data->namesFile(), names + "</n>");
    MapCatalog catalog;
    QStringList told;
    QSet<MapRegion *> followed;
    const EveryPass follow([&] {
        for (const QByteArray &id : ids) {
            MapRegion *region = catalog.region(text(id));
            if (!region || followed.contains(region))
                continue;
            followed.insert(region);
            connect(region, &MapRegion::localizedNameChanged, this,
                    [&told, region] { told.append(region->localizedName()); });
        }
    });

    catalog.updateCatalog();

    QCOMPARE(told,
             QStringList({text("1"), text("10"), text("9"), text("abcdefgh"), text("abcdefgh10"),
                          text("abcdefgh9"),
                          text("\xc3\xbf"
                               "a"),
                          text("\xc3\xbfz"), text("\xc4\x80z"),
                          text("\xc8\x80"
                               "a")}));
}

void MapCatalogTest::withoutACatalogueNothingIsInstalled()
{
    m_data->setContent({{"42", {"a/3/x.cdt"}}});
    MapCatalog catalog;
    QSignalSpy available(&catalog, &MapCatalog::availableRegionsChanged);
    QSignalSpy installed(&catalog, &MapCatalog::installedRegionsChanged);

    catalog.updateCatalog();

    QCOMPARE(ids(catalog.availableRegions()), QString());
    QCOMPARE(ids(catalog.installedRegions()), QString());
    QCOMPARE(available.count(), 1);
    QCOMPARE(installed.count(), 1);
}

void MapCatalogTest::nullEntriesOfTheCatalogueAreLeftOut()
{
    m_data->setContent({});
    m_data->setCatalog("<File Id=\"41\"/>" + fileElement("42"));
    MapCatalog catalog;

    catalog.updateCatalog();

    QCOMPARE(ids(catalog.availableRegions()), text("42"));
}

void MapCatalogTest::ofRegionsWithOneIdTheLaterCounts()
{
    m_data->setContent({{"42", {"a/3/x.cdt"}}});
    m_data->setCatalog(fileElement("42") + fileElement("42"));
    MapCatalog catalog;

    for (int round = 0; round < 2; ++round) {
        catalog.updateCatalog();

        auto available = catalog.availableRegions();
        QCOMPARE(ids(available), text("42 42"));
        QCOMPARE(ids(catalog.installedRegions()), text("42"));
        QCOMPARE(catalog.region(text("42")), available.at(&available, 1));
        QVERIFY(!available.at(&available, 0)->installed());
        QVERIFY(available.at(&available, 1)->installed());
    }
    catalog.loadAvailableRegions();
    auto available = catalog.availableRegions();
    QCOMPARE(ids(catalog.installedRegions()), text("42"));
    QVERIFY(!available.at(&available, 0)->installed());
    QVERIFY(available.at(&available, 1)->installed());
}

void MapCatalogTest::installedIdsThatAreNotAvailableAreIgnored()
{
    m_data->setContent({{"1", {}}, {"99", {"a/3/x.cdt"}}, {"2", {}}});
    m_data->setCatalog(fileElement("2") + fileElement("1"));
    MapCatalog catalog;

    catalog.updateCatalog();

    QCOMPARE(ids(catalog.installedRegions()), text("1 2"));
}

void MapCatalogTest::anIdIsNotTakenWithItsPrefix()
{
    // "142" in the content file is region 42; that there is a region 142 says nothing about it.
    m_data->setContent({{"42", {"a/3/x.cdt"}}});
    m_data->setCatalog(fileElement("142"));
    MapCatalog catalog;

    catalog.updateCatalog();

    QCOMPARE(ids(catalog.installedRegions()), QString());
    QVERIFY(!catalog.region(text("142"))->installed());
}

void MapCatalogTest::onlyRegionElementsOfADirectoryAreInstalled_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    const QByteArray region = "<region id=\"142\"><TI path=\"x.cdt\"/></region>";
    QTest::newRow("after another element with the id")
        << "<directory><regions><y id=\"142\"/>" + region + "</regions></directory>" << text("42");
    QTest::newRow("of another name")
        << QByteArray("<directory><regions><y id=\"142\"/></regions></directory>") << QString();
    QTest::newRow("of another root") << "<any><regions>" + region + "</regions></any>" << QString();
    QTest::newRow("in two lists") << "<directory><regions>" + region
            + "</regions><regions><region id=\"17\"/>" + region + "</regions></directory>"
                                  << text("42 7");
}

void MapCatalogTest::onlyRegionElementsOfADirectoryAreInstalled()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    writeFile(m_data->contentFile(), content);
    m_data->setCatalog(fileElement("7") + fileElement("42"));
    MapCatalog catalog;
    catalog.setInstalledMapsVersion(text("1.2"));

    catalog.updateCatalog();

    QCOMPARE(ids(catalog.installedRegions()), expected);
}

void MapCatalogTest::fileListsComeFromTheContentFile()
{
    m_data->setCatalog(fileElement("42") + fileElement("142"));
    writeFile(m_data->contentFile(),
              "<directory map-version=\"1.2\"><diskcache><TI name=\"t\" path=\"\\0\\0\\t.cdt\"/>"
              "<TI name=\"u\" path=\"\\0\\0\\u.txt\"/></diskcache><regions><region id=\"142\">"
              "<TI name=\"9\" path=\"\\b\\2\\9.cdt\"/><TI name=\"t\"/><TI name=\"u\"/>"
              "<TI name=\"unknown\"/><TI name=\"9\" path=\"\\a\\1\\9.cdt\"/></region>"
              "<region id=\"1142\"/></regions></directory>");
    MapCatalog catalog;

    catalog.updateCatalog();

    QCOMPARE(catalog.region(text("42"))->fileList(),
             QStringList({text("\\b\\2\\9.cdt"), text("\\0\\0\\t.cdt"), text("\\a\\1\\9.cdt")}));
    // An empty list stays empty, although "142" is what the other region is called in the file.
    QVERIFY(catalog.region(text("142"))->installed());
    QCOMPARE(catalog.region(text("142"))->fileList(), QStringList());
}

void MapCatalogTest::loadingAvailableRegionsAloneKeepsWhatIsInstalled()
{
    m_data->setCatalog(fileElement("1") + fileElement("2") + fileElement("3"));
    m_data->setContent({{"3", {"a/3/x.cdt"}}, {"1", {}}});
    MapCatalog catalog;
    catalog.updateCatalog();
    m_data->setCatalog(fileElement("2") + fileElement("3"));
    QSignalSpy installed(&catalog, &MapCatalog::installedRegionsChanged);

    catalog.loadAvailableRegions();

    QCOMPARE(ids(catalog.availableRegions()), text("2 3"));
    QCOMPARE(ids(catalog.installedRegions()), text("3"));
    auto list = catalog.installedRegions();
    QCOMPARE(list.at(&list, 0), catalog.region(text("3")));
    QVERIFY(catalog.region(text("3"))->installed());
    QVERIFY(!catalog.region(text("2"))->installed());
    QCOMPARE(catalog.region(text("3"))->fileList(), QStringList {text("\\a\\3\\x.cdt")});
    QCOMPARE(installed.count(), 0);
    catalog.updateLocalContentFile();
    QVERIFY(readFile(m_data->contentFile()).contains("<region id=\"13\""));
}

void MapCatalogTest::loadingAvailableRegionsKeepsTheOrderOfInstallation()
{
    m_data->setCatalog(fileElement("1") + fileElement("2") + fileElement("3") + fileElement("4"));
    m_data->setContent({{"3", {}}, {"4", {}}, {"1", {}}, {"2", {}}});
    MapCatalog catalog;
    catalog.updateCatalog();

    catalog.loadAvailableRegions();

    QCOMPARE(ids(catalog.installedRegions()), text("3 4 1 2"));
}

void MapCatalogTest::loadingInstalledRegionsUnmarksWhatIsGone()
{
    m_data->setCatalog(fileElement("1") + fileElement("2"));
    m_data->setContent({{"1", {}}, {"2", {}}});
    MapCatalog catalog;
    catalog.updateCatalog();
    m_data->setContent({{"2", {}}});

    catalog.loadInstalledRegions();

    QCOMPARE(ids(catalog.installedRegions()), text("2"));
    QVERIFY(!catalog.region(text("1"))->installed());
    m_data->setContent({{"1", {}}});
    catalog.updateCatalog();
    QCOMPARE(ids(catalog.installedRegions()), text("1"));
    QVERIFY(!catalog.region(text("2"))->installed());
}

void MapCatalogTest::aDamagedContentFileMeansThatNothingIsInstalled()
{
    m_data->setCatalog(fileElement("1"));
    m_data->setContent({{"1", {}}});
    MapCatalog catalog;
    writeFile(m_data->contentFile(), contentXml({{"1", {}}}).chopped(5));

    catalog.updateCatalog();

    QCOMPARE(ids(catalog.availableRegions()), text("1"));
    QCOMPARE(ids(catalog.installedRegions()), QString());
}

void MapCatalogTest::localeAwareCompareIsThePlatforms()
{
    MapCatalog catalog;

    QVERIFY(catalog.localeAwareCompare(text("a"), text("b")) < 0);
    QVERIFY(catalog.localeAwareCompare(text("b"), text("a")) > 0);
    QCOMPARE(catalog.localeAwareCompare(text("a"), text("a")), 0);
    QCOMPARE(catalog.localeAwareCompare(text("\xc3\x84"), text("B")),
             QString::localeAwareCompare(text("\xc3\x84"), text("B")));
}

void MapCatalogTest::regionsAreFoundById()
{
    m_data->setContent({{"11", {}}});
    m_data->setCatalog(fileElement("1", fileElement("11")));
    MapCatalog catalog;
    catalog.updateCatalog();

    QCOMPARE(catalog.region(text("11"))->id(), text("11"));
    QCOMPARE(catalog.region(text("1"))->id(), text("1"));
    QCOMPARE(catalog.region(text("2")), nullptr);
    QCOMPARE(catalog.region(QString()), nullptr);
}

void MapCatalogTest::updateFinishedIsNeverEmitted()
{
    m_data->setContent({{"1", {"a/3/x.cdt"}}});
    m_data->setCatalog(fileElement("1"));
    MapCatalog catalog;
    QSignalSpy finished(&catalog, &MapCatalog::updateFinished);

    catalog.updateCatalog();
    catalog.addInstalledRegion(text("1"), {});
    catalog.deleteInstalledRegion(text("1"));

    QCOMPARE(finished.count(), 0);
}

void MapCatalogTest::scriptsReadTheLists()
{
    m_data->setContent({{"42", {"a/3/x.cdt"}}});
    m_data->setCatalog(fileElement("42", fileElement("43")));
    MapCatalog catalog;
    catalog.updateCatalog();

    const Script script(
        &catalog,
        "property var all: [catalog.availableRegions.length, catalog.availableRegions[0].id,"
        " catalog.installedRegions.length, catalog.installedRegions[0].name,"
        " catalog.installedRegions[0].fileList[0], catalog.availableRegions[1].children[0].id,"
        " catalog.installedMapsVersion, catalog.bussy].join('|')");

    QCOMPARE(script.value("all").toString(), text("2|43|1|Region 42|\\a\\3\\x.cdt|43|1.2|false"));
}

void MapCatalogTest::scriptsFollowTheSignals()
{
    m_data->setContent({{"42", {}}});
    m_data->setCatalog(fileElement("42") + fileElement("43"));
    MapCatalog catalog;
    Script script(&catalog,
                  "property int available: catalog.availableRegions.length\n"
                  "property int installed: catalog.installedRegions.length\n"
                  "property string states: ''\n"
                  "property var c: Connections { target: catalog\n"
                  " function onBussyChanged() { states += catalog.bussy + ' ' }\n"
                  " function onInstalledRegionsChanged() { states += 'installed ' } }");
    QCOMPARE(script.value("available").toInt(), 0);

    catalog.updateCatalog();

    QCOMPARE(script.value("available").toInt(), 2);
    QCOMPARE(script.value("installed").toInt(), 1);
    QCOMPARE(script.value("states").toString(), text("true installed false "));
}

void MapCatalogTest::scriptsCallWithDefaultArguments()
{
    m_data->setContent({});
    m_data->setCatalog(fileElement("42"));
    writeFile(m_data->configFile(), mosHeader(7));
    m_data->makeTile("a/3/x.cdt");
    MapCatalog catalog;
    Script script(
        &catalog,
        "property string log: ''\n"
        "function run() {\n"
        " log += catalog.catalogFilesExist() + ' '\n"
        " catalog.setInstalledMapsVersion('9'); log += catalog.installedMapsVersion + ' '\n"
        " catalog.setInstalledMapsVersion(); log += catalog.installedMapsVersion + ' '\n"
        " catalog.installedMOSVersion = '1.2.3.4'; log += catalog.installedMOSVersion + ' '\n"
        " catalog.setInstalledMOSVersion(); log += catalog.installedMOSVersion + ' '\n"
        " catalog.setInstalledMOSVersion('5.6.7.8'); log += catalog.installedMOSVersion + ' '\n"
        " catalog.setInstalledMOSVersion('', 'other'); log += catalog.installedMOSVersion + ' '\n"
        " catalog.setPathSuffix('_x'); catalog.setPathSuffix()\n"
        " catalog.updateCatalog()\n"
        " catalog.addInstalledRegion('42', ['a/3/x.cdt', 'readme'])\n"
        " log += catalog.region('42').fileList.join() + ' ' + catalog.region('1') + ' '\n"
        " catalog.updateLocalContentFile()\n"
        " catalog.deleteInstalledRegion('42'); log += catalog.region('42').installed + ' '\n"
        " log += catalog.localeAwareCompare('a', 'a')\n"
        "}");

    script.call("run");

    QCOMPARE(script.value("log").toString(),
             text("false 9 1.2 1.2.3.4 1.2.3.4 5.6.7.8  a/3/x.cdt null false 0"));
    QVERIFY(!m_data->hasTile("a/3/x.cdt"));
}

void MapCatalogTest::scriptsCannotChangeTheLists()
{
    m_data->setContent({{"42", {}}});
    m_data->setCatalog(fileElement("42"));
    MapCatalog catalog;
    catalog.updateCatalog();
    Script script(&catalog,
                  "property int refused: 0\n"
                  "function attempt(change) { try { change() } catch (e) { refused += 1 } }\n"
                  "function run() {\n"
                  " var region = catalog.region('42')\n"
                  " for (var list of [catalog.availableRegions, catalog.installedRegions]) {\n"
                  "  attempt(function() { list.push(region) })\n"
                  "  attempt(function() { list.length = 0 })\n"
                  "  attempt(function() { list[0] = null }) }\n"
                  " attempt(function() { catalog.availableRegions = [] })\n"
                  " attempt(function() { catalog.installedRegions = [region, region] })\n"
                  " attempt(function() { catalog.bussy = true }) }");

    script.call("run");

    QCOMPARE(ids(catalog.availableRegions()), text("42"));
    QCOMPARE(ids(catalog.installedRegions()), text("42"));
    QVERIFY(!catalog.bussy());
    QVERIFY(script.value("refused").toInt() > 0);
}

void MapCatalogTest::theGarbageCollectorLeavesRegionsAlone()
{
    m_data->setContent({{"42", {}}});
    m_data->setCatalog(fileElement("1", fileElement("11")) + fileElement("42"));
    MapCatalog catalog;
    catalog.updateCatalog();
    QList<QPointer<MapRegion>> regions;
    for (const char *id : {"1", "11", "42"})
        regions.append(catalog.region(text(id)));
    Script script(&catalog,
                  "property int seen: 0\n"
                  "function look() {\n"
                  " for (var id of ['1', '11', '42', 'none']) if (catalog.region(id)) seen += 1\n"
                  " for (var i = 0; i < catalog.availableRegions.length; ++i)\n"
                  "  seen += catalog.availableRegions[i].children.length\n"
                  " seen += catalog.installedRegions[0].name.length }");

    for (int round = 0; round < 5; ++round) {
        script.call("look");
        script.engine()->collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    QCOMPARE(regions.count(nullptr), 0);
    QCOMPARE(script.value("seen").toInt(), 5 * (3 + 1 + 9));
    for (MapRegion *region : std::as_const(regions))
        QCOMPARE(QQmlEngine::objectOwnership(region), QQmlEngine::CppOwnership);
}

void MapCatalogTest::instancesWithDifferentSuffixesAreIndependent()
{
    m_data->setContent({{"1", {}}});
    m_data->setCatalog(fileElement("1"));
    writeFile(m_data->catalogFolder() + text("_b/content.xml"), contentXml({{"2", {}}}));
    writeFile(m_data->catalogFolder() + text("_b/catalog-1.2.xml"),
              "<c>" + fileElement("2") + "</c>");
    MapCatalog a;
    MapCatalog b(text("_b"));

    a.updateCatalog();
    b.updateCatalog();

    QCOMPARE(ids(a.installedRegions()), text("1"));
    QCOMPARE(ids(b.installedRegions()), text("2"));
}

void MapCatalogTest::manyRegionsLoadInLinearTime()
{
    const auto load = [this](int count) {
        QByteArray elements;
        QList<ContentRegion> installed;
        for (int i = 0; i < count; ++i) {
            elements += fileElement(QByteArray::number(i));
            installed.append({QByteArray::number(count - i - 1), {"a/3/x.cdt"}});
        }
        m_data->setCatalog(elements);
        m_data->setContent(installed);
        MapCatalog catalog;
        QElapsedTimer timer;
        timer.start();
        catalog.updateCatalog();
        catalog.loadAvailableRegions();
        const qint64 time = timer.nsecsElapsed();
        auto list = catalog.installedRegions();
        return int(list.count(&list)) == count && list.at(&list, 0)->id().toInt() == count - 1
            ? time
            : -1;
    };

    // Ten times the regions: quadratic work would take a hundred times as long. Compared with
    // itself, so the machine's speed does not matter, and again if something else came between.
    bool isLinear = false;
    for (int attempt = 0; attempt < 5 && !isLinear; ++attempt) {
        const qint64 few = load(2000);
        const qint64 many = load(20000);
        QVERIFY(few > 0);
        QVERIFY(many > 0);
        isLinear = many < 40 * few;
    }
    QVERIFY(isLinear);
}

QTEST_GUILESS_MAIN(MapCatalogTest)

#include "tst_mapcatalog.moc"
