// SPDX-License-Identifier: MIT
// The catalogue and the region-name file; the content file has its own test.
#include "catalog/mapcatalogprocessor.h"

#include "catalog/mapdata.h"
#include "catalog/mapregion.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QPointer>
#include <QTest>

class MapCatalogProcessorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<MapData>(); }
    void cleanup() { m_data.reset(); }

    void regionsComeAfterTheirDescendants();
    void regionsHaveWhatTheCatalogueSays();
    void theRootMayHaveAnyName();
    void otherElementsAndTheirContentAreIgnored();
    void theOrderOfAttributesDoesNotMatter();
    void otherAttributesAndTextAreIgnored();
    void emptyAttributesAreAccepted();
    void downloadSizes_data();
    void downloadSizes();
    void anIncompleteTopLevelRegionIsANullEntry_data();
    void anIncompleteTopLevelRegionIsANullEntry();
    void anIncompleteNestedRegionIsLeftOut();
    void regionsOfTheSameIdAreAllKept();
    void readingAgainDeletesTheRegionsOfBefore();
    void readingNothingDeletesThemToo();
    void theEndDeletesTheRegions();
    void aDeletedRegionIsNeverTheChildOfALivingOne();
    void aReadFromTheEventLoopOfAReadLeavesBothResultsAlive();
    void theEndDuringAReadLeavesNoRegions();
    void missingEmptyAndUnreadableFilesGiveNothing_data();
    void missingEmptyAndUnreadableFilesGiveNothing();
    void namesComeById();
    void namesAreFoundAtAnyDepthButNotAtTheRoot();
    void theLaterNameOfAnIdWins();
    void incompleteNamesAreSkipped();
    void theNameOfRegion411DependsOnTheEdition_data();
    void theNameOfRegion411DependsOnTheEdition();
    void theFileListIsAlwaysEmpty();

private:
    QList<MapRegion *> read(const QByteArray &catalog)
    {
        writeFile(m_data->catalogFile(), catalog);
        return m_processor.readCatalog(m_data->catalogFile());
    }
    QMap<QString, QString> readNames(const QByteArray &names)
    {
        writeFile(m_data->namesFile(), names);
        return m_processor.readRegionNames(m_data->namesFile(), m_data->contentFile());
    }

    std::unique_ptr<MapData> m_data;
    MapCatalogProcessor m_processor;
};

namespace {

QString idsOf(const QList<MapRegion *> &regions)
{
    QStringList ids;
    for (const MapRegion *region : regions)
        ids.append(region ? region->id() : text("null"));
    return ids.join(QLatin1Char(' '));
}

QString childrenOf(const MapRegion *region)
{
    auto children = region->children();
    QStringList ids;
    for (int i = 0; i < int(children.count(&children)); ++i)
        ids.append(children.at(&children, i)->id());
    return ids.join(QLatin1Char(' '));
}

} // namespace

void MapCatalogProcessorTest::regionsComeAfterTheirDescendants()
{
    const QList<MapRegion *> regions = read(
        "<Catalog>" + fileElement("A", fileElement("A1") + fileElement("A2", fileElement("A2a")))
        + fileElement("B") + "</Catalog>");

    QCOMPARE(idsOf(regions), text("A1 A2a A2 A B"));
    QCOMPARE(childrenOf(regions.at(3)), text("A1 A2"));
    QCOMPARE(childrenOf(regions.at(2)), text("A2a"));
    QCOMPARE(childrenOf(regions.at(4)), QString());
    QVERIFY(regions.at(0)->hasParent());
    QVERIFY(regions.at(1)->hasParent());
    QVERIFY(regions.at(2)->hasParent());
    QVERIFY(!regions.at(3)->hasParent());
    QVERIFY(!regions.at(4)->hasParent());
}

void MapCatalogProcessorTest::regionsHaveWhatTheCatalogueSays()
{
    const QList<MapRegion *> regions =
        read("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Catalog>"
             "<File Id=\"42\" Description=\"\xc3\x85land &amp; more\" ZipFileSize=\"123\" "
             "Link=\"http://localhost/a.zip?b=1&amp;c=2\"/></Catalog>");

    QCOMPARE(regions.size(), 1);
    const MapRegion *region = regions.at(0);
    QCOMPARE(region->id(), text("42"));
    QCOMPARE(region->name(), text("\xc3\x85land & more"));
    QCOMPARE(region->localizedName(), QString());
    QCOMPARE(region->downloadSize(), qint64(123));
    QCOMPARE(region->installationSize(), qint64(0));
    QCOMPARE(region->downloadUrl(), text("http://localhost/a.zip?b=1&c=2"));
    QCOMPARE(region->installed(), false);
    QCOMPARE(region->fileList(), QStringList());
}

void MapCatalogProcessorTest::theRootMayHaveAnyName()
{
    // Also the name of what it contains; it is no region then.
    QCOMPARE(idsOf(read("<File>" + fileElement("A") + "</File>")), text("A"));
    QCOMPARE(idsOf(read("<x:y z=\"1\">" + fileElement("A") + "</x:y>")), text("A"));
}

void MapCatalogProcessorTest::otherElementsAndTheirContentAreIgnored()
{
    const QList<MapRegion *> regions =
        read("<Catalog><file Id=\"a\" Description=\"\" ZipFileSize=\"\" Link=\"\"/>"
             "<Region Id=\"b\" Description=\"\" ZipFileSize=\"\" Link=\"\"/>"
             "<x:File Id=\"c\" Description=\"\" ZipFileSize=\"\" Link=\"\"/><Group>"
             + fileElement("d") + "</Group>"
             + fileElement("A", "<Group>" + fileElement("e") + "</Group>" + fileElement("A1"))
             + "<File2/></Catalog>");

    QCOMPARE(idsOf(regions), text("A1 A"));
    QCOMPARE(childrenOf(regions.at(1)), text("A1"));
}

void MapCatalogProcessorTest::theOrderOfAttributesDoesNotMatter()
{
    QCOMPARE(idsOf(read("<c><File Link='l' ZipFileSize='1' Description='d' Id='A'/></c>")),
             text("A"));
}

void MapCatalogProcessorTest::otherAttributesAndTextAreIgnored()
{
    const QList<MapRegion *> regions =
        read("<!-- x --><c xmlns=\"urn:x\" version=\"1\">text<File id=\"no\" Id=\"A\" x:Id=\"no\" "
             "Description=\"d\" ZipFileSize=\"1\" Link=\"l\" fileList=\"a.cdt\">more<!-- x -->"
             "<![CDATA[<File/>]]></File><?pi x?></c>");

    QCOMPARE(idsOf(regions), text("A"));
    QCOMPARE(regions.at(0)->fileList(), QStringList());
}

void MapCatalogProcessorTest::emptyAttributesAreAccepted()
{
    const QList<MapRegion *> regions =
        read("<c><File Id=\"\" Description=\"\" ZipFileSize=\"\" Link=\"\"/></c>");

    QCOMPARE(regions.size(), 1);
    QCOMPARE(regions.at(0)->id(), QString());
    QCOMPARE(regions.at(0)->downloadSize(), qint64(0));
    QCOMPARE(regions.at(0)->downloadUrl(), QString());
}

void MapCatalogProcessorTest::downloadSizes_data()
{
    QTest::addColumn<QByteArray>("size");
    QTest::addColumn<qint64>("bytes");
    QTest::newRow("a number") << QByteArray("1048576") << qint64(1048576);
    QTest::newRow("above 32 bits") << QByteArray("5368709120") << qint64(5368709120);
    QTest::newRow("the largest") << QByteArray("9223372036854775807")
                                 << qint64(Q_INT64_C(9223372036854775807));
    QTest::newRow("above 64 bits") << QByteArray("9223372036854775808") << qint64(0);
    QTest::newRow("no number") << QByteArray("12abc") << qint64(0);
    QTest::newRow("hexadecimal") << QByteArray("0x10") << qint64(0);
    QTest::newRow("a fraction") << QByteArray("1.5") << qint64(0);
    QTest::newRow("empty") << QByteArray() << qint64(0);
}

void MapCatalogProcessorTest::downloadSizes()
{
    QFETCH(QByteArray, size);
    QFETCH(qint64, bytes);

    const QList<MapRegion *> regions =
        read("<c><File Id=\"A\" Description=\"d\" ZipFileSize=\"" + size + "\" Link=\"l\"/></c>");

    QCOMPARE(regions.at(0)->downloadSize(), bytes);
    QCOMPARE(regions.at(0)->installationSize(), qint64(0));
}

void MapCatalogProcessorTest::anIncompleteTopLevelRegionIsANullEntry_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::newRow("without Id") << QByteArray("Description='d' ZipFileSize='1' Link='l'");
    QTest::newRow("without Description") << QByteArray("Id='X' ZipFileSize='1' Link='l'");
    QTest::newRow("without ZipFileSize") << QByteArray("Id='X' Description='d' Link='l'");
    QTest::newRow("without Link") << QByteArray("Id='X' Description='d' ZipFileSize='1'");
    QTest::newRow("without any") << QByteArray();
    QTest::newRow("in other letters")
        << QByteArray("ID='X' description='d' ZipFileSize='1' Link='l'");
}

void MapCatalogProcessorTest::anIncompleteTopLevelRegionIsANullEntry()
{
    QFETCH(QByteArray, attributes);

    const QList<MapRegion *> regions =
        read("<c>" + fileElement("A") + "<File " + attributes + ">" + fileElement("X1") + "</File>"
             + fileElement("B") + "</c>");

    QCOMPARE(idsOf(regions), text("A null B"));
    read("<c/>"); // the null entry does not disturb the deletion
}

void MapCatalogProcessorTest::anIncompleteNestedRegionIsLeftOut()
{
    const QList<MapRegion *> regions =
        read("<c>"
             + fileElement("A",
                           fileElement("A1") + "<File Id=\"X\">" + fileElement("X1") + "</File>"
                               + fileElement("A2"))
             + "</c>");

    QCOMPARE(idsOf(regions), text("A1 A2 A"));
    QCOMPARE(childrenOf(regions.at(2)), text("A1 A2"));
}

void MapCatalogProcessorTest::regionsOfTheSameIdAreAllKept()
{
    QCOMPARE(idsOf(read("<c>" + fileElement("A") + fileElement("A") + "</c>")), text("A A"));
}

void MapCatalogProcessorTest::readingAgainDeletesTheRegionsOfBefore()
{
    QList<QPointer<MapRegion>> before;
    for (MapRegion *region : read("<c>" + fileElement("A", fileElement("A1")) + "</c>"))
        before.append(region);

    const QList<MapRegion *> after = read("<c>" + fileElement("B") + "</c>");

    QCOMPARE(idsOf(after), text("B"));
    QCOMPARE(before, QList<QPointer<MapRegion>>({nullptr, nullptr}));
}

void MapCatalogProcessorTest::readingNothingDeletesThemToo()
{
    const QPointer<MapRegion> region = read("<c>" + fileElement("A") + "</c>").at(0);

    const QList<MapRegion *> regions = m_processor.readCatalog(text("/nowhere/catalog.xml"));

    QCOMPARE(regions, QList<MapRegion *>());
    QVERIFY(!region);
}

void MapCatalogProcessorTest::theEndDeletesTheRegions()
{
    auto processor = std::make_unique<MapCatalogProcessor>();
    m_data->setCatalog(fileElement("A"));
    const QPointer<MapRegion> region = processor->readCatalog(m_data->catalogFile()).at(0);

    processor.reset();

    QVERIFY(!region);
}

void MapCatalogProcessorTest::aDeletedRegionIsNeverTheChildOfALivingOne()
{
    const QList<MapRegion *> regions =
        read("<c>" + fileElement("A", fileElement("A1", fileElement("A1a"))) + "</c>");
    QList<MapRegion *> alive = regions;
    bool safe = true;
    for (MapRegion *region : regions) {
        connect(region, &QObject::destroyed, this, [&, region] {
            alive.removeOne(region);
            for (const MapRegion *other : std::as_const(alive)) {
                auto children = other->children();
                for (int i = 0; i < int(children.count(&children)); ++i)
                    safe = safe && alive.contains(children.at(&children, i));
            }
        });
    }

    read("<c/>");

    QVERIFY(alive.isEmpty());
    QVERIFY(safe);
}

void MapCatalogProcessorTest::aReadFromTheEventLoopOfAReadLeavesBothResultsAlive()
{
    m_data->setCatalog(fileElement("A", fileElement("A1")) + fileElement("B"));
    QList<MapRegion *> inner;
    QMetaObject::invokeMethod(
        this, [&] { inner = m_processor.readCatalog(m_data->catalogFile()); },
        Qt::QueuedConnection);

    const QList<MapRegion *> outer = m_processor.readCatalog(m_data->catalogFile());

    QCOMPARE(idsOf(inner), text("A1 A B"));
    QCOMPARE(idsOf(outer), text("A1 A B"));
    QList<QPointer<MapRegion>> all;
    for (MapRegion *region : inner + outer)
        all.append(region);
    read("<c/>");
    QCOMPARE(all.count(nullptr), 6);
}

void MapCatalogProcessorTest::theEndDuringAReadLeavesNoRegions()
{
    m_data->setCatalog(fileElement("A", fileElement("A1")) + fileElement("B"));
    auto *processor = new MapCatalogProcessor;
    QMetaObject::invokeMethod(
        this, [&] { delete processor; }, Qt::QueuedConnection);

    const QList<MapRegion *> regions = processor->readCatalog(m_data->catalogFile());

    QCOMPARE(regions, QList<MapRegion *>()); // that they are deleted, the address sanitizer tells
}

void MapCatalogProcessorTest::missingEmptyAndUnreadableFilesGiveNothing_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("a missing file") << text("missing");
    QTest::newRow("an empty file") << text("empty");
    QTest::newRow("a folder") << text("folder");
}

void MapCatalogProcessorTest::missingEmptyAndUnreadableFilesGiveNothing()
{
    QFETCH(QString, kind);
    const QString path = m_data->catalogFolder() + text("/some.xml");
    if (kind == text("empty"))
        writeFile(path, QByteArray());
    else if (kind == text("folder"))
        QDir().mkpath(path);
    const LogCatcher log(4);

    QCOMPARE(m_processor.readCatalog(path), QList<MapRegion *>());
    QCOMPARE(m_processor.readRegionNames(path, m_data->contentFile()).size(), 0);
    QCOMPARE(log.lines().size(), 0);
}

void MapCatalogProcessorTest::namesComeById()
{
    const QMap<QString, QString> names =
        readNames("<names><region id=\"43\" name=\"Beta\"/>"
                  "<region id=\"42\" name=\"\xc3\x84lpha\" other=\"x\"/></names>");

    QCOMPARE(names.size(), 2);
    QCOMPARE(names.value(text("42")), text("\xc3\x84lpha"));
    QCOMPARE(names.value(text("43")), text("Beta"));
}

void MapCatalogProcessorTest::namesAreFoundAtAnyDepthButNotAtTheRoot()
{
    const QMap<QString, QString> names =
        readNames("<region id=\"0\" name=\"root\"><a><b><region id=\"1\" name=\"One\">"
                  "<region id=\"2\" name=\"Two\"/></region></b></a></region>");

    QCOMPARE(names.keys(), QStringList({text("1"), text("2")}));
}

void MapCatalogProcessorTest::theLaterNameOfAnIdWins()
{
    const QMap<QString, QString> names =
        readNames("<n><region id=\"1\" name=\"a\"/><region id=\"1\" name=\"b\"/></n>");

    QCOMPARE(names.value(text("1")), text("b"));
}

void MapCatalogProcessorTest::incompleteNamesAreSkipped()
{
    const QMap<QString, QString> names = readNames(
        "<n><region id=\"1\"/><region name=\"b\"/><region Id=\"2\" Name=\"c\"/>"
        "<Region id=\"3\" name=\"d\"/><File id=\"4\" name=\"e\"/><region id=\"5\" name=\"\"/></n>");

    QCOMPARE(names.keys(), QStringList {text("5")});
}

void MapCatalogProcessorTest::theNameOfRegion411DependsOnTheEdition_data()
{
    QTest::addColumn<QByteArray>("version");
    QTest::addColumn<QString>("name");
    const QString china = text("qtn_maps_vexa_taiwan_china");
    const QString international = text("qtn_maps_vexa_taiwan_international");
    QTest::newRow("a last part of two letters") << QByteArray("1.2.TW") << china;
    QTest::newRow("a last part of one digit") << QByteArray("1.2.3") << international;
    QTest::newRow("a last part of three") << QByteArray("1.2.345") << international;
    QTest::newRow("an empty last part") << QByteArray("1.2.") << international;
    QTest::newRow("one part of two") << QByteArray("12") << china;
    QTest::newRow("four parts, filled up to two digits") << QByteArray("1.2.3.4") << china;
    QTest::newRow("no content file") << QByteArray() << international;
}

void MapCatalogProcessorTest::theNameOfRegion411DependsOnTheEdition()
{
    QFETCH(QByteArray, version);
    QFETCH(QString, name);
    if (!version.isEmpty())
        writeFile(m_data->contentFile(), "<directory map-version=\"" + version + "\"/>");

    const QMap<QString, QString> names =
        readNames("<n><region id=\"411\" name=\"Taiwan\"/><region id=\"412\" name=\"x\"/></n>");

    QCOMPARE(names.value(text("411")), name);
    QCOMPARE(names.value(text("412")), text("x"));
}

void MapCatalogProcessorTest::theFileListIsAlwaysEmpty()
{
    m_data->setContent({{"42", {"a/3/x.cdt"}}});

    QCOMPARE(m_processor.readRegionFileList(text("42"), m_data->contentFile()), QStringList());
}

QTEST_GUILESS_MAIN(MapCatalogProcessorTest)

#include "tst_mapcatalogprocessor.moc"
