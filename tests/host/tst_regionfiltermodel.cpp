// SPDX-License-Identifier: MIT
#include "host/shared/regionfiltermodel.h"

#include "host/shared/hosttypes.h"
#include "host/shared/searchtext.h"
#include "installerrig.h"
#include "regionworld.h"
#include <memory>
#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QtTest>

class RegionFilterModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void foldedTextLeavesOutWhatPeopleLeaveOut_data();
    void foldedTextLeavesOutWhatPeopleLeaveOut();
    void aSearchFindsWhatIsMeant_data();
    void aSearchFindsWhatIsMeant();

    void eachLanguageSortsInItsOwnWay_data();
    void eachLanguageSortsInItsOwnWay();
    void anotherLocaleSortsAnew();
    void regionsOfOneNameStandInTheOrderOfTheirIds();
    void theTreeIsShownLevelByLevel();
    void aFilterShowsWhatItSays();
    void aRegionThatIsInstalledComesIntoView();
    void pendingRegionsStandInTheOrderOfTheQueue();
    void whatWasCancelledStandsBehindTheQueue();
    void aNewNameMovesARowAndKeepsItsPlaceInTheView();
    void aRowTellsAllItsRoles();
    void theCountIsToldOnceForManyChanges();
    void thousandsAreSearchedRight();
    void withoutRegionsItIsEmpty();
    void theRegionsMayGoFirst();

    void aPageShowsRegionsAndFollowsThem();
    void qmlCannotMakeWhatTheProgramHandsOver();
};

namespace {

struct Rig : RegionWorld
{
    RegionFilterModel &open(const char *locale = "en_GB")
    {
        load();
        regionModel = std::make_unique<RegionModel>(catalog.get(), nullptr);
        settle(*regionModel);
        view.setLocale(text(locale));
        view.setRegions(regionModel.get());
        tester = std::make_unique<QAbstractItemModelTester>(
            &view, QAbstractItemModelTester::FailureReportingMode::Fatal);
        return view;
    }
    QString shown() const { return ids(view).join(QLatin1Char(' ')); }

    std::unique_ptr<RegionModel> regionModel;
    RegionFilterModel view;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

QList<WorldRegion> north()
{
    return {{"FI",
             "Finland",
             {{"FI-01", "Åland", {{"FI-01-1", "Mariehamn"}}}, {"FI-02", "Kainuu", {}, ""}}},
            {"SE", "Sweden", {{"SE-AB", "Stockholm"}}, ""},
            {"DK", "København"}};
}

} // namespace

void RegionFilterModelTest::initTestCase()
{
    registerHostTypes("VexaHost");
}

void RegionFilterModelTest::foldedTextLeavesOutWhatPeopleLeaveOut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("folded");
    QTest::newRow("case") << text("HELSINKI AZ") << text("helsinki az");
    QTest::newRow("what is no letter of ASCII") << text("[a]{z}@09`_/:") << text("a z 09");
    QTest::newRow("diacritics") << text("Åland Ñuñoa São") << text("aland nunoa sao");
    QTest::newRow("the same taken apart") << text("A\xCC\x8Aland") << text("aland");
    QTest::newRow("letters with a stroke")
        << text("Łódź Ørsted Đà Ħal") << text("lodz orsted da hal");
    QTest::newRow("two letters in one")
        << text("Straße Æro Œuf Þórr") << text("strasse aero oeuf thorr");
    QTest::newRow("the dotless i") << text("Diyarbakır İzmir") << text("diyarbakir izmir");
    QTest::newRow("punctuation") << text("Côte d’Ivoire, St.-Denis")
                                 << text("cote d ivoire st denis");
    QTest::newRow("other scripts") << text("МОСКВА Ήπειρος") << text("москва ηπειροσ");
    QTest::newRow("full width") << text("ＡＢＣ１") << text("abc1");
    QTest::newRow("beyond the basic plane") << text("𠮷野") << text("𠮷野");
    QTest::newRow("nothing") << text(" -- ") << QString();
}

void RegionFilterModelTest::foldedTextLeavesOutWhatPeopleLeaveOut()
{
    QFETCH(QString, text);
    QFETCH(QString, folded);

    QCOMPARE(SearchText::folded(text), folded);
    QCOMPARE(SearchText::folded(folded), folded);
}

void RegionFilterModelTest::aSearchFindsWhatIsMeant_data()
{
    QTest::addColumn<QString>("search");
    QTest::addColumn<QString>("found");
    QTest::newRow("without diacritics") << text("aland") << text("FI-01");
    QTest::newRow("in capitals") << text("ÅLAND") << text("FI-01");
    QTest::newRow("a part of a word") << text("enha") << text("DK");
    QTest::newRow("by the name in the catalogue") << text("finland") << text("FI");
    QTest::newRow("by the name in the user's language") << text("suomi") << text("FI");
    QTest::newRow("words of both names in any order") << text("suomi finland") << text("FI");
    QTest::newRow("by the id") << text("se-ab") << text("SE-AB");
    QTest::newRow("all words must be there") << text("finland sweden") << QString();
    QTest::newRow("only punctuation") << text("-") << text("FI-01 FI-02 DK FI-01-1 SE-AB FI SE");
    QTest::newRow("nothing like it") << text("xyz") << QString();
}

void RegionFilterModelTest::aSearchFindsWhatIsMeant()
{
    QFETCH(QString, search);
    QFETCH(QString, found);
    Rig rig;
    rig.regions = north();
    rig.localNames = {{"FI", "Suomi"}};
    RegionFilterModel &view = rig.open();

    view.setSearch(search);
    QCOMPARE(rig.shown(), found);

    view.setSearch(QString());
    QCOMPARE(view.count(), 7);
}

void RegionFilterModelTest::eachLanguageSortsInItsOwnWay_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QString>("order");
    QTest::newRow("German") << QByteArray("de_DE") << text("EG AX AO AT R9 R10 CY");
    QTest::newRow("Finnish") << QByteArray("fi_FI") << text("AO R9 R10 CY AX EG AT");
    QTest::newRow("Swedish") << QByteArray("sv_SE") << text("AO R9 R10 CY AX EG AT");
    QTest::newRow("no language") << QByteArray("C") << text("AO R10 R9 CY EG AX AT");
}

void RegionFilterModelTest::eachLanguageSortsInItsOwnWay()
{
    QFETCH(QByteArray, locale);
    QFETCH(QString, order);
    Rig rig;
    rig.regions = {{"CY", "Zypern"},  {"AT", "Österreich"}, {"AX", "Åland"},   {"AO", "Angola"},
                   {"EG", "Ägypten"}, {"R10", "Region 10"}, {"R9", "Region 9"}};

    rig.open(locale.constData());

    QCOMPARE(rig.shown(), order);
}

void RegionFilterModelTest::anotherLocaleSortsAnew()
{
    Rig rig;
    rig.regions = {{"CY", "Zypern"}, {"AX", "Åland"}};
    RegionFilterModel &view = rig.open("de_DE");
    QCOMPARE(rig.shown(), text("AX CY"));

    view.setLocale(text("sv_SE"));

    QCOMPARE(rig.shown(), text("CY AX"));
    QCOMPARE(view.locale(), text("sv_SE"));
}

void RegionFilterModelTest::regionsOfOneNameStandInTheOrderOfTheirIds()
{
    Rig rig;
    rig.regions = {{"C", "Georgia"}, {"A", "Georgia"}, {"B", "Georgia"}};

    rig.open();

    QCOMPARE(rig.shown(), text("A B C"));
}

void RegionFilterModelTest::theTreeIsShownLevelByLevel()
{
    Rig rig;
    rig.regions = north();
    RegionFilterModel &view = rig.open();
    view.setParentId(text("FI"));
    QCOMPARE(view.count(), 7);

    view.setTreeMode(true);
    QCOMPARE(rig.shown(), text("FI-01 FI-02"));
    view.setParentId(text("FI-01"));
    QCOMPARE(rig.shown(), text("FI-01-1"));
    view.setParentId(QString());
    QCOMPARE(rig.shown(), text("FI DK SE"));
    view.setSearch(text("sweden"));
    QCOMPARE(rig.shown(), text("SE"));
    view.setSearch(QString());
    view.setTreeMode(false);
    QCOMPARE(view.count(), 7);
}

void RegionFilterModelTest::aFilterShowsWhatItSays()
{
    Rig rig;
    rig.regions = north();
    rig.installed = {{"DK", {"0/1/a.cdt"}}, {"SE", {"0/1/b.cdt"}}};
    RegionFilterModel &view = rig.open();
    QCOMPARE(view.filter(), text("all"));

    view.setFilter(text("installed"));
    QCOMPARE(rig.shown(), text("DK SE"));
    view.setFilter(text("downloadable"));
    QCOMPARE(rig.shown(), text("FI-01 FI DK FI-01-1 SE-AB"));
    view.setFilter(text("pending"));
    QCOMPARE(rig.shown(), QString());
    view.setFilter(text("transfers"));
    QCOMPARE(rig.shown(), QString());
    view.setFilter(text("failed"));
    QCOMPARE(rig.shown(), QString());
    view.setFilter(text("something else"));
    QCOMPARE(view.count(), 7);
}

void RegionFilterModelTest::aRegionThatIsInstalledComesIntoView()
{
    Rig rig;
    rig.regions = north();
    RegionFilterModel &view = rig.open();
    view.setFilter(text("installed"));

    rig.catalog->addInstalledRegion(text("DK"), {text("0/1/a.cdt")});
    QCOMPARE(rig.shown(), text("DK"));

    rig.catalog->deleteInstalledRegion(text("DK"));
    QCOMPARE(rig.shown(), QString());
}

void RegionFilterModelTest::pendingRegionsStandInTheOrderOfTheQueue()
{
    InstallerRig rig;
    for (const char *id : {"A", "B", "C", "D"})
        rig.content.addRegion(text(id), text(id), tilesOf({"0/1/a.cdt"}));
    rig.openSession(false); // nothing leaves the queue
    RegionModel regions(&rig.catalog(), &rig.installer());
    RegionFilterModel view;
    QAbstractItemModelTester tester(&view, QAbstractItemModelTester::FailureReportingMode::Fatal);
    view.setFilter(text("pending"));
    view.setRegions(&regions);
    settle(regions);
    QCOMPARE(view.count(), 0);
    const auto shown = [&view] { return ids(view).join(QLatin1Char(' ')); };

    for (const char *id : {"C", "A", "D", "B"})
        QVERIFY(rig.installer().install(text(id)));
    QTRY_COMPARE(shown(), text("C A D B"));

    QVERIFY(rig.installer().cancel(text("A")));
    QVERIFY(rig.installer().install(text("A")));
    QTRY_COMPARE(shown(), text("C D B A"));

    QVERIFY(rig.installer().cancel(text("C")));
    QTRY_COMPARE(shown(), text("D B A"));
    view.setFilter(text("all"));
    QCOMPARE(shown(), text("A B C D"));
    view.setFilter(text("pending"));
    QCOMPARE(shown(), text("D B A"));
    QVERIFY(view.get(0).value(text("pending")).toBool());

    rig.installer().cancelAll();
    QTRY_COMPARE(shown(), QString());
}

void RegionFilterModelTest::whatWasCancelledStandsBehindTheQueue()
{
    InstallerRig rig;
    for (const char *id : {"A", "B", "C"})
        rig.content.addRegion(text(id), text(id), tilesOf({"0/1/a.cdt"}));
    rig.openSession(false);
    RegionModel regions(&rig.catalog(), &rig.installer());
    RegionFilterModel view;
    view.setFilter(text("transfers"));
    view.setRegions(&regions);
    settle(regions);

    for (const char *id : {"C", "A", "B"})
        QVERIFY(rig.installer().install(text(id)));
    QVERIFY(rig.installer().cancel(text("A")));

    QTRY_COMPARE(ids(view).join(QLatin1Char(' ')), text("C B A"));
    view.setFilter(text("failed"));
    QCOMPARE(ids(view).join(QLatin1Char(' ')), text("A"));
    QCOMPARE(view.get(0).value(text("state")).toString(), text("cancelled"));
}

void RegionFilterModelTest::aNewNameMovesARowAndKeepsItsPlaceInTheView()
{
    Rig rig;
    rig.regions = north();
    RegionFilterModel &view = rig.open();
    const QPersistentModelIndex finland(view.index(view.rowOf(text("FI")), 0));
    const QPersistentModelIndex sweden(view.index(view.rowOf(text("SE")), 0));
    QSignalSpy reset(&view, &QAbstractItemModel::modelReset);

    rig.localNames = {{"FI", "Zuomi"}};
    rig.load();
    settle(*rig.regionModel);

    QCOMPARE(rig.shown(), text("FI-01 FI-02 DK FI-01-1 SE-AB SE FI"));
    QVERIFY(reset.isEmpty());
    QCOMPARE(finland.row(), 6);
    QCOMPARE(finland.data().toString(), text("Zuomi"));
    QCOMPARE(sweden.row(), 5);
}

void RegionFilterModelTest::aRowTellsAllItsRoles()
{
    Rig rig;
    rig.regions = north();
    RegionFilterModel &view = rig.open();

    QCOMPARE(view.get(0), rig.regionModel->get(text("FI-01")));
    QCOMPARE(view.get(0).value(text("path")).toString(), text("Finland"));
    QVERIFY(view.get(-1).isEmpty());
    QVERIFY(view.get(7).isEmpty());
    QCOMPARE(view.rowOf(text("FI-01")), 0);
    view.setSearch(text("sweden"));
    QCOMPARE(view.rowOf(text("FI-01")), -1);
    QCOMPARE(view.rowOf(text("XX")), -1);
}

void RegionFilterModelTest::theCountIsToldOnceForManyChanges()
{
    Rig rig;
    rig.regions = RegionWorld::many(200);
    RegionFilterModel &view = rig.open();
    QCoreApplication::processEvents();
    QSignalSpy counted(&view, &RegionFilterModel::countChanged);

    view.setSearch(text("region 7"));
    QCOMPARE(view.count(), 38); // with a seven anywhere
    QTRY_COMPARE(counted.count(), 1);

    view.setSearch(text("Region  7")); // the same words
    QCoreApplication::processEvents();
    QCOMPARE(counted.count(), 1);
}

void RegionFilterModelTest::thousandsAreSearchedRight()
{
    Rig rig;
    rig.regions = RegionWorld::countries();
    RegionFilterModel &view = rig.open();
    const int all = view.count();
    QVERIFY(all > 5000);

    view.setSearch(text("a"));
    int expected = 0;
    for (int i = 0; i < all; ++i)
        expected += rig.regionModel->row(i).searchText.contains(QLatin1Char('a')) ? 1 : 0;
    QCOMPARE(view.count(), expected);
    view.setSearch(text("al"));
    view.setSearch(text("aland"));
    QVERIFY(ids(view).contains(text("AX")));
    QVERIFY(view.count() < 30);
    view.setSearch(QString());

    QCOMPARE(view.count(), all);
    QCollator collator(QLocale(text("en_GB")));
    collator.setNumericMode(true);
    for (int row = 1; row < all; ++row)
        QVERIFY(collator.compare(view.index(row - 1, 0).data().toString(),
                                 view.index(row, 0).data().toString())
                <= 0);
}

void RegionFilterModelTest::withoutRegionsItIsEmpty()
{
    RegionFilterModel view;

    view.setSearch(text("a"));
    view.setTreeMode(true);
    view.setFilter(text("pending"));

    QCOMPARE(view.count(), 0);
    QVERIFY(view.get(0).isEmpty());
    QCOMPARE(view.rowOf(text("FI")), -1);
    QVERIFY(!view.regions());
}

void RegionFilterModelTest::theRegionsMayGoFirst()
{
    Rig rig;
    rig.regions = north();
    RegionFilterModel &view = rig.open();
    QCOMPARE(view.count(), 7);

    rig.tester.reset();
    rig.regionModel.reset();

    QCOMPARE(view.count(), 0);
    QVERIFY(!view.regions());
    view.setSearch(text("a"));
    QVERIFY(view.get(0).isEmpty());
}

namespace {

const char *const Page = R"(
import QtQml 2.15
import VexaHost 1.0
QtObject {
    id: page
    property RegionModel source: regionModel
    property RegionInstaller installer: theInstaller
    property MapCatalog catalog: theCatalog
    property string size: Words.size(7100000)
    property string duration: Words.duration(120000)
    property int shown: view.count
    property string first: shown > 0 ? view.get(0).name : ""
    property string path: shown > 0 ? view.get(0).path : ""
    property string search: ""
    property RegionFilterModel view: RegionFilterModel {
        regions: page.source
        search: page.search
        locale: "en_GB"
    }
    property Instantiator delegates: Instantiator {
        model: page.view
        delegate: QtObject {
            required property string regionId
            required property string sentence
            required property bool installed
            property string line: regionId + ": " + sentence
        }
    }
    function lines() {
        var lines = [];
        for (var i = 0; i < delegates.count; ++i)
            lines.push(delegates.objectAt(i).line);
        return lines.join("; ");
    }
    property RemovalPreview preview: RemovalPreview {
        regions: page.source
        regionId: "SE"
    }
    function foretold() {
        return preview.ready ? preview.freedFiles + " " + preview.freedBytes : "counting";
    }
}
)";

QVariant call(QObject *page, const char *function)
{
    QVariant result;
    QMetaObject::invokeMethod(page, function, Q_RETURN_ARG(QVariant, result));
    return result;
}

} // namespace

void RegionFilterModelTest::aPageShowsRegionsAndFollowsThem()
{
    Rig rig;
    rig.regions = north();
    rig.load();
    RegionModel regions(rig.catalog.get(), nullptr);
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(text("regionModel"), &regions);
    engine.rootContext()->setContextProperty(text("theCatalog"), rig.catalog.get());
    engine.rootContext()->setContextProperty(text("theInstaller"), nullptr);
    QQmlComponent component(&engine);
    component.setData(Page, QUrl());
    const std::unique_ptr<QObject> page(component.create());
    QVERIFY2(page, qPrintable(component.errorString()));

    QTRY_COMPARE(page->property("shown").toInt(), 7);
    QCOMPARE(page->property("first").toString(), text("Åland"));
    QCOMPARE(page->property("path").toString(), text("Finland"));
    QCOMPARE(page->property("size").toString(), text("7.1 MB"));
    QCOMPARE(page->property("duration").toString(), text("2 min"));
    QVERIFY(page->property("catalog").value<QObject *>());

    page->setProperty("search", text("sweden"));
    QCOMPARE(call(page.get(), "lines").toString(), text("SE: Not installed"));
    QTRY_COMPARE(page->property("shown").toInt(), 1);
    writeFile(rig.data.tileFolder() + text("/0/1/a.cdt"), "abc");
    rig.catalog->addInstalledRegion(text("SE"), {text("0/1/a.cdt")});
    QCOMPARE(call(page.get(), "lines").toString(), text("SE: Installed"));
    rig.catalog->updateCatalog();
    engine.collectGarbage();
    settle(regions);
    QCOMPARE(call(page.get(), "lines").toString(), text("SE: Installed"));
    QTRY_COMPARE(call(page.get(), "foretold").toString(), text("1 3"));
}

void RegionFilterModelTest::qmlCannotMakeWhatTheProgramHandsOver()
{
    for (const char *name : {"RegionModel", "RegionInstaller", "MapCatalog", "DownloadManagerIface",
                             "NetworkState", "NetworkBinding"}) {
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData(QByteArray("import VexaHost 1.0\n") + name + " { }", QUrl());
        QVERIFY(component.isError());
        QVERIFY2(component.errorString().contains(text("hands it over")),
                 qPrintable(component.errorString()));
    }
}

QTEST_GUILESS_MAIN(RegionFilterModelTest)
#include "tst_regionfiltermodel.moc"
