// SPDX-License-Identifier: MIT
// Handlers of the list's and the entries' signals that call back into the list.
#include "cityindex/cityindexlist.h"

#include "cityindex/citydata.h"
#include "cityindex/cityindexlistprocessor.h"
#include <functional>
#include <memory>
#include <QDir>
#include <QSignalSpy>
#include <QTest>
#include <utility>

class CityIndexReentrancyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_data = std::make_unique<CityData>();
        m_list = std::make_unique<CityIndexList>();
        m_list->addCityIndex(text("a"), text("A"), text("1"));
    }
    void cleanup()
    {
        m_list.reset();
        m_data.reset();
    }

    void anAdditionSurvivesAReset_data() { signalsOfAnAddition(); }
    void anAdditionSurvivesAReset();
    void anAdditionSurvivesALoad_data() { signalsOfAnAddition(); }
    void anAdditionSurvivesALoad();
    void anAdditionGoesToTheFolderItWasMeantFor();
    void theListMayBeDeleted_data() { signalsOfAnAddition(); }
    void theListMayBeDeleted();
    void aHandlerMayAddAnother_data() { signalsOfAnAddition(); }
    void aHandlerMayAddAnother();
    void aHandlersUpdateOfTheSameEntryWins();
    void aResetBesideALoadIsCarriedOut();
    void theListMayBeDeletedWhenItHasBeenLoaded();
    void entriesMayBeTakenAwayMeanwhile();

private:
    void signalsOfAnAddition();
    // Does something once, in the signal of the row, while add() runs.
    void duringAddition(const std::function<void()> &action);
    // A new entry for the list's signal, an update for the entries'.
    void add();
    QString addedRow() const;
    QStringList fileRows(const char *suffix = "") const
    {
        QMap<QString, CityIndex> entries;
        CityIndexListProcessor().readCityIndexList(m_data->file(suffix), entries);
        return rows(entries);
    }

    std::unique_ptr<CityData> m_data;
    std::unique_ptr<CityIndexList> m_list;
};

void CityIndexReentrancyTest::signalsOfAnAddition()
{
    QTest::addColumn<QString>("signal");
    for (const char *signal : {"count", "id", "name", "version"})
        QTest::newRow(signal) << text(signal);
}

void CityIndexReentrancyTest::duringAddition(const std::function<void()> &action)
{
    QFETCH(QString, signal);
    // Not a member of the connection: the list may take that with it.
    const auto isFirst = std::make_shared<bool>(true);
    const auto once = [isFirst, action] {
        if (std::exchange(*isFirst, false))
            action();
    };
    const CityIndex *entry = m_list->cityIndex(text("a"));
    if (signal == QLatin1String("count"))
        connect(m_list.get(), &CityIndexList::countChanged, this, once);
    else if (signal == QLatin1String("id"))
        connect(entry, &CityIndex::idChanged, this, once);
    else if (signal == QLatin1String("name"))
        connect(entry, &CityIndex::nameChanged, this, once);
    else
        connect(entry, &CityIndex::versionChanged, this, once);
    add();
    QVERIFY(!*isFirst);
}

void CityIndexReentrancyTest::add()
{
    QFETCH(QString, signal);
    if (signal == QLatin1String("count"))
        m_list->addCityIndex(text("b"), text("B"), text("2"));
    else
        m_list->addCityIndex(text("a"), text("Aa"), text("2"));
}

QString CityIndexReentrancyTest::addedRow() const
{
    QFETCH(QString, signal);
    return signal == QLatin1String("count") ? text("b|B|2") : text("a|Aa|2");
}

void CityIndexReentrancyTest::anAdditionSurvivesAReset()
{
    TestFile::write(m_data->file("_new"), cityFile(cityElement("n", "N")));

    duringAddition([this] { m_list->resetInstanceWithPathSuffix(text("_new")); });

    QVERIFY(fileRows().contains(addedRow()));
    QCOMPARE(fileRows("_new"), QStringList {text("n|N|1.0")});
    QCOMPARE(rows(m_list->getCityIndexList()), QStringList {text("n|N|1.0")});
}

void CityIndexReentrancyTest::anAdditionSurvivesALoad()
{
    QSignalSpy count(m_list.get(), &CityIndexList::countChanged);

    duringAddition([this] { m_list->loadList(); });

    QVERIFY(fileRows().contains(addedRow()));
    QVERIFY(rows(m_list->getCityIndexList()).contains(addedRow()));
    QCOMPARE(count.count(), m_list->count()); // the load's, and the addition's if it was new
}

void CityIndexReentrancyTest::anAdditionGoesToTheFolderItWasMeantFor()
{
    const CityIndex *entry = m_list->cityIndex(text("a"));
    connect(entry, &CityIndex::nameChanged, this, [this] {
        m_list->setPathSuffix(text("_new"));
        m_list->initFolderStructure();
    });

    m_list->addCityIndex(text("a"), text("Aa"), text("2"));

    QCOMPARE(fileRows(), QStringList {text("a|Aa|2")});
    QVERIFY(QDir(m_data->folder("_new")).isEmpty());
}

void CityIndexReentrancyTest::theListMayBeDeleted()
{
    duringAddition([this] { m_list.reset(); });

    QVERIFY(!m_list);
    QCOMPARE(fileRows(), QStringList {text("a|A|1")});
}

void CityIndexReentrancyTest::aHandlerMayAddAnother()
{
    duringAddition([this] { m_list->addCityIndex(text("z"), text("Z"), text("9")); });

    QVERIFY(fileRows().contains(addedRow()));
    QVERIFY(fileRows().contains(text("z|Z|9")));
    QCOMPARE(fileRows(), rows(m_list->getCityIndexList()));
}

void CityIndexReentrancyTest::aHandlersUpdateOfTheSameEntryWins()
{
    bool isFirst = true;
    connect(m_list->cityIndex(text("a")), &CityIndex::idChanged, this, [&] {
        if (std::exchange(isFirst, false))
            m_list->addCityIndex(text("a"), text("newest"), text("3"));
    });

    m_list->addCityIndex(text("a"), text("newer"), text("2"));

    QCOMPARE(fileRows(), QStringList {text("a|newest|3")});
}

void CityIndexReentrancyTest::aResetBesideALoadIsCarriedOut()
{
    TestFile::write(m_data->file("_new"), cityFile(cityElement("n", "N")));
    connect(m_list->cityIndex(text("a")), &CityIndex::idChanged, this, [this] {
        m_list->resetInstanceWithPathSuffix(text("_new"));
        m_list->loadList();
    });

    m_list->addCityIndex(text("a"), text("A"), text("2"));

    QCOMPARE(rows(m_list->getCityIndexList()), QStringList {text("n|N|1.0")});
}

void CityIndexReentrancyTest::theListMayBeDeletedWhenItHasBeenLoaded()
{
    connect(m_list.get(), &CityIndexList::countChanged, this, [this] { m_list.reset(); });

    m_list->resetInstanceWithPathSuffix(text("_new"));

    QVERIFY(!m_list);
}

void CityIndexReentrancyTest::entriesMayBeTakenAwayMeanwhile()
{
    connect(m_list->cityIndex(text("a")), &CityIndex::idChanged, this,
            [this] { m_list->getCityIndexList().clear(); });

    m_list->addCityIndex(text("a"), text("Aa"), text("2"));

    QCOMPARE(m_list->count(), 0);
    QCOMPARE(fileRows(), QStringList());
}

QTEST_GUILESS_MAIN(CityIndexReentrancyTest)
#include "tst_cityindexreentrancy.moc"
