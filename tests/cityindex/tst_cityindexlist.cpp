// SPDX-License-Identifier: MIT
#include "cityindex/cityindexlist.h"

#include "cityindex/citydata.h"
#include "cityindex/cityindexlistprocessor.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QDir>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

class CityIndexListTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<CityData>(); }
    void cleanup() { m_data.reset(); }

    void hasItsPropertyAndMethodsInOrder();
    void aFreshDeviceGetsTheFolderAndNoFile();
    void thePathSuffixFollowsTheFolderDirectly_data();
    void thePathSuffixFollowsTheFolderDirectly();
    void isLoadedWhenItIsMade();
    void aNewEntryIsAddedToldAndWritten();
    void anUpdateTellsTheEntryAndNotTheCount();
    void theFileIsWrittenAfterTheSignals();
    void entriesAreInCodeUnitOrderInListAndFile();
    void anUnknownIdGivesNull();
    void addressesStayWhenEntriesComeAndChange();
    void theMapIsHandedOutItself();
    void anEntryOfASharedMapIsTheListsOwn();
    void theTextsOfAnEntryMayUpdateIt();
    void aPathSuffixAloneChangesNothing();
    void aResetGoesOverToTheOtherFolder();
    void aResetWithoutASuffixGoesBack();
    void initializeUsesTheStoredSuffix();
    void theFolderIsMadeWithoutLoading();
    void loadingReplacesTheListAndAlwaysTells();
    void whoHearsThatAnEntryIsGoneFindsTheNewOnes();
    void aFolderThatCannotBeMadeGivesAListInMemory();
    void aFileThatCannotBeWrittenStaysAsItWas();
    void whatIsAddedIsThereAfterARestart();
    void nothingIsLogged();

private:
    std::unique_ptr<CityData> m_data;
};

void CityIndexListTest::hasItsPropertyAndMethodsInOrder()
{
    const QMetaObject &meta = CityIndexList::staticMetaObject;

    QCOMPARE(propertiesOf(meta), QStringList {text("int count countChanged()")});
    QCOMPARE(methodsOf(meta),
             QStringList({
                 text("signal void countChanged() ()"),
                 text("invokable CityIndex* cityIndex(QString) (id)"),
                 text("invokable void addCityIndex(QString,QString,QString) (id, name, version)"),
                 text("invokable void resetInstanceWithPathSuffix(QString) (pathSuffix)"),
                 text("invokable void resetInstanceWithPathSuffix() () default"),
                 text("invokable void setPathSuffix(QString) (pathSuffix)"),
                 text("invokable void setPathSuffix() () default"),
             }));
}

void CityIndexListTest::aFreshDeviceGetsTheFolderAndNoFile()
{
    QObject parent;
    const CityIndexList list(QString(), &parent);

    QCOMPARE(list.parent(), &parent);
    QCOMPARE(list.count(), 0);
    QVERIFY(QFileInfo(m_data->folder()).isDir());
    QVERIFY(QDir(m_data->folder()).isEmpty());
    QVERIFY(
        QDir(m_data->root() + text("/cities")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot)
        == QStringList {text("Tessarin")});
}

void CityIndexListTest::thePathSuffixFollowsTheFolderDirectly_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::newRow("none") << QString();
    QTest::newRow("a sibling") << text("_new");
    QTest::newRow("letters") << text("2");
    QTest::newRow("a folder inside") << text("/in/side");
}

void CityIndexListTest::thePathSuffixFollowsTheFolderDirectly()
{
    QFETCH(QString, suffix);

    CityIndexList list(suffix);
    list.addCityIndex(text("a"), QString(), QString());

    QVERIFY(QFile::exists(m_data->folder() + suffix + text("/cityindex.xml")));
}

void CityIndexListTest::isLoadedWhenItIsMade()
{
    TestFile::write(m_data->file(), cityFile(cityElement("b", "B", "2") + cityElement("a", "A")));

    CityIndexList list;

    QCOMPARE(list.count(), 2);
    QCOMPARE(list.cityIndex(text("b"))->name(), text("B"));
    QCOMPARE(list.cityIndex(text("b"))->version(), text("2"));
    QCOMPARE(list.cityIndex(text("a"))->id(), text("a"));
    // Loading never writes.
    QVERIFY(TestFile::read(m_data->file()).contains("</cityindexlist>"));
    QVERIFY(!TestFile::read(m_data->file()).contains("\n <cityindex"));
}

void CityIndexListTest::aNewEntryIsAddedToldAndWritten()
{
    CityIndexList list;
    QSignalSpy count(&list, &CityIndexList::countChanged);
    int countThen = 0;
    connect(&list, &CityIndexList::countChanged, this, [&] { countThen = list.count(); });

    list.addCityIndex(text("de.b"), text("Berlin & \"Umland\""), text("2012 w14"));

    QCOMPARE(count.count(), 1);
    QCOMPARE(countThen, 1);
    QCOMPARE(rows(list.getCityIndexList()),
             QStringList {text("de.b|Berlin & \"Umland\"|2012 w14")});
    QCOMPARE(list.cityIndex(text("de.b"))->parent(), nullptr);
    QCOMPARE(TestFile::read(m_data->file()),
             QByteArray("<?xml version=\"1.0\" encoding=\"ANSI\"?>\n<cityindexlist>\n"
                        " <cityindex id=\"de.b\" name=\"Berlin &amp; &quot;Umland&quot;\""
                        " version=\"2012 w14\"/>\n</cityindexlist>\n"));
}

void CityIndexListTest::anUpdateTellsTheEntryAndNotTheCount()
{
    CityIndexList list;
    list.addCityIndex(text("a"), text("A"), text("1"));
    QSignalSpy count(&list, &CityIndexList::countChanged);
    QStringList heard;
    const CityIndex *entry = list.cityIndex(text("a"));
    connect(entry, &CityIndex::idChanged, this, [&] { heard.append(text("id")); });
    connect(entry, &CityIndex::nameChanged, this, [&] { heard.append(text("name")); });
    connect(entry, &CityIndex::versionChanged, this, [&] { heard.append(text("version")); });

    list.addCityIndex(text("a"), text("A"), text("2"));

    QCOMPARE(heard.join(QLatin1Char(' ')), text("id name version"));
    QCOMPARE(count.count(), 0);
    QCOMPARE(list.count(), 1);
    QCOMPARE(entry->version(), text("2"));
    QVERIFY(TestFile::read(m_data->file()).contains("version=\"2\""));
}

void CityIndexListTest::theFileIsWrittenAfterTheSignals()
{
    CityIndexList list;
    bool wasThere = true;
    connect(&list, &CityIndexList::countChanged, this,
            [&] { wasThere = QFile::exists(m_data->file()); });
    list.addCityIndex(text("a"), text("A"), text("1"));
    QVERIFY(!wasThere);

    QByteArray then;
    connect(list.cityIndex(text("a")), &CityIndex::versionChanged, this,
            [&] { then = TestFile::read(m_data->file()); });
    list.addCityIndex(text("a"), text("A"), text("2"));
    QVERIFY(then.contains("version=\"1\""));
}

void CityIndexListTest::entriesAreInCodeUnitOrderInListAndFile()
{
    CityIndexList list;
    // A wide "a" stands behind the pair of surrogates, although its code point is the lower one.
    const QStringList sorted {QString(),  text("B"), text("a"),    text("a b"),
                              text("aa"), text("ä"), text("🗺"), text("ａ")};
    for (const int i : {3, 7, 0, 5, 2, 6, 1, 4})
        list.addCityIndex(sorted.at(i), text("n"), text("v"));

    QCOMPARE(QStringList(list.getCityIndexList().keys()), sorted);
    const QByteArray file = TestFile::read(m_data->file());
    auto place = file.indexOf("<cityindex ");
    for (const QString &id : sorted) {
        QVERIFY2(file.mid(place).startsWith("<cityindex id=\"" + id.toUtf8() + "\" "),
                 qPrintable(id));
        place = file.indexOf("<cityindex ", place + 1);
    }
    QCOMPARE(int(place), -1);
}

void CityIndexListTest::anUnknownIdGivesNull()
{
    CityIndexList list;
    QCOMPARE(list.cityIndex(QString()), nullptr);

    list.addCityIndex(text("a"), text("A"), text("1"));

    QCOMPARE(list.cityIndex(text("A")), nullptr);
    QCOMPARE(list.cityIndex(text("a ")), nullptr);
    QCOMPARE(list.cityIndex(QString()), nullptr);
    QCOMPARE(list.count(), 1);
}

void CityIndexListTest::addressesStayWhenEntriesComeAndChange()
{
    CityIndexList list;
    list.addCityIndex(text("m"), text("M"), text("1"));
    CityIndex *const entry = list.cityIndex(text("m"));

    for (int i = 0; i < 300; ++i)
        list.addCityIndex(text(i % 2 ? "a%1" : "z%1").arg(i), text("n"), text("v"));
    list.addCityIndex(text("m"), text("M"), text("2"));

    QCOMPARE(list.cityIndex(text("m")), entry);
    QCOMPARE(entry->version(), text("2"));
    QCOMPARE(list.count(), 301);
}

void CityIndexListTest::theMapIsHandedOutItself()
{
    CityIndexList list;
    list.addCityIndex(text("a"), text("A"), text("1"));

    list.getCityIndexList().insert(text("b"), CityIndex(text("b"), text("B"), text("1")));

    QCOMPARE(list.count(), 2);
    QCOMPARE(&list.getCityIndexList()[text("b")], list.cityIndex(text("b")));
}

void CityIndexListTest::anEntryOfASharedMapIsTheListsOwn()
{
    CityIndexList list;
    list.addCityIndex(text("a"), text("A"), text("1"));
    const CityIndex *entry = nullptr;
    {
        const QMap<QString, CityIndex> copy = list.getCityIndexList();
        entry = list.cityIndex(text("a"));
        QVERIFY(entry != &*copy.find(text("a")));
    }

    list.addCityIndex(text("b"), text("B"), text("1"));

    QCOMPARE(list.cityIndex(text("a")), entry);
    QCOMPARE(entry->name(), text("A"));
}

void CityIndexListTest::theTextsOfAnEntryMayUpdateIt()
{
    CityIndexList list;
    list.addCityIndex(text("a"), text("A"), text("1"));
    const CityIndex *entry = list.cityIndex(text("a"));

    list.addCityIndex(entry->id(), entry->version(), entry->name());

    QCOMPARE(rows(list.getCityIndexList()), QStringList {text("a|1|A")});
}

void CityIndexListTest::aPathSuffixAloneChangesNothing()
{
    CityIndexList list;
    QSignalSpy count(&list, &CityIndexList::countChanged);

    list.setPathSuffix(text("_new"));
    list.addCityIndex(text("a"), text("A"), text("1"));

    QVERIFY(!QFileInfo::exists(m_data->folder("_new")));
    QVERIFY(QFile::exists(m_data->file()));
    QCOMPARE(count.count(), 1); // the addition's
    list.loadList();
    QCOMPARE(list.count(), 1);
}

void CityIndexListTest::aResetGoesOverToTheOtherFolder()
{
    TestFile::write(m_data->file("_new"), cityFile(cityElement("b", "B")));
    CityIndexList list;
    list.addCityIndex(text("a"), text("A"), text("1"));
    QSignalSpy count(&list, &CityIndexList::countChanged);

    list.resetInstanceWithPathSuffix(text("_new"));
    QCOMPARE(count.count(), 1); // although there is one entry as before
    QCOMPARE(rows(list.getCityIndexList()), QStringList {text("b|B|1.0")});

    list.addCityIndex(text("c"), text("C"), text("1"));
    QVERIFY(TestFile::read(m_data->file("_new")).contains("\"c\""));
    QVERIFY(!TestFile::read(m_data->file()).contains("\"c\""));

    list.resetInstanceWithPathSuffix(text("_empty"));
    QCOMPARE(list.count(), 0);
    QVERIFY(QFileInfo(m_data->folder("_empty")).isDir());
}

void CityIndexListTest::aResetWithoutASuffixGoesBack()
{
    TestFile::write(m_data->file(), cityFile(cityElement("a", "A")));
    CityIndexList list(text("_new"));
    list.setPathSuffix(text("_other"));
    QCOMPARE(list.count(), 0);

    list.resetInstanceWithPathSuffix();

    QCOMPARE(rows(list.getCityIndexList()), QStringList {text("a|A|1.0")});
    QVERIFY(!QFileInfo::exists(m_data->folder("_other")));
}

void CityIndexListTest::initializeUsesTheStoredSuffix()
{
    TestFile::write(m_data->file(), cityFile(cityElement("a", "A")));
    CityIndexList list(text("_new"));
    QSignalSpy count(&list, &CityIndexList::countChanged);

    list.setPathSuffix();
    list.initialize();

    QCOMPARE(list.count(), 1);
    QCOMPARE(count.count(), 1);
}

void CityIndexListTest::theFolderIsMadeWithoutLoading()
{
    CityIndexList list;
    list.addCityIndex(text("a"), text("A"), text("1"));
    QSignalSpy count(&list, &CityIndexList::countChanged);

    list.setPathSuffix(text("_new"));
    list.initFolderStructure();

    QVERIFY(QFileInfo(m_data->folder("_new")).isDir());
    QCOMPARE(count.count(), 0);
    QCOMPARE(list.count(), 1);
}

void CityIndexListTest::loadingReplacesTheListAndAlwaysTells()
{
    CityIndexList list;
    list.addCityIndex(text("a"), text("A"), text("1"));
    QSignalSpy count(&list, &CityIndexList::countChanged);

    TestFile::write(m_data->file(), cityFile(cityElement("b", "B")));
    list.loadList();
    QCOMPARE(count.count(), 1);
    QCOMPARE(rows(list.getCityIndexList()), QStringList {text("b|B|1.0")});

    QVERIFY(QFile::remove(m_data->file()));
    list.loadList();
    QCOMPARE(count.count(), 2);
    QCOMPARE(list.count(), 0);

    list.loadList();
    QCOMPARE(count.count(), 3);
}

void CityIndexListTest::whoHearsThatAnEntryIsGoneFindsTheNewOnes()
{
    CityIndexList list;
    list.addCityIndex(text("a"), text("A"), text("1"));
    TestFile::write(m_data->file(), cityFile(cityElement("b", "B") + cityElement("c", "C")));
    int then = -1;
    connect(list.cityIndex(text("a")), &QObject::destroyed, this, [&] { then = list.count(); });

    list.loadList();

    QCOMPARE(then, 2);
}

void CityIndexListTest::aFolderThatCannotBeMadeGivesAListInMemory()
{
    TestFile::write(m_data->root() + text("/cities"), "a file in the way");
    CityIndexList list;
    QCOMPARE(list.count(), 0);

    list.addCityIndex(text("a"), text("A"), text("1"));

    QCOMPARE(list.count(), 1);
    QCOMPARE(TestFile::read(m_data->root() + text("/cities")), QByteArray("a file in the way"));
}

void CityIndexListTest::aFileThatCannotBeWrittenStaysAsItWas()
{
    // A folder in its place, since the tests may run as a user who may open everything.
    TestFile::write(m_data->file() + text("/inside"), "kept");
    CityIndexList list;
    QCOMPARE(list.count(), 0);

    list.addCityIndex(text("a"), text("A"), text("1"));

    QCOMPARE(list.count(), 1);
    QCOMPARE(TestFile::read(m_data->file() + text("/inside")), QByteArray("kept"));
}

void CityIndexListTest::whatIsAddedIsThereAfterARestart()
{
    {
        CityIndexList list;
        list.addCityIndex(text("ä\n"), text(" \t<Ä>'\"& "), QString());
        list.addCityIndex(QString(), text("no id"), text("1"));
        list.addCityIndex(text("b"), text("B"), text("1"));
        list.addCityIndex(text("b"), text("B"), text("2"));
    }

    CityIndexList list;

    QCOMPARE(rows(list.getCityIndexList()),
             QStringList({text("|no id|1"), text("b|B|2"), text("ä\n| \t<Ä>'\"& |")}));
}

void CityIndexListTest::nothingIsLogged()
{
    const LogCatcher log(4);
    TestFile::write(m_data->file(), "<broken");

    CityIndexList list;
    list.addCityIndex(text("a"), text("A"), text("1"));
    list.cityIndex(text("b"));
    list.resetInstanceWithPathSuffix(text("/a/b"));

    QCOMPARE(log.texts(), QStringList());
}

QTEST_GUILESS_MAIN(CityIndexListTest)
#include "tst_cityindexlist.moc"
