// SPDX-License-Identifier: MIT
#include "cityindex/cityindex.h"

#include "cityindex/citydata.h"
#include <memory>
#include <QSignalSpy>
#include <QTest>
#include <type_traits>

class CityIndexTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hasItsPropertiesInOrder();
    void hasItsSignalsInOrderAndNoOtherMethods();
    void startsEmptyWithItsParent();
    void takesItsTextsAndNoParent();
    void aCopyHasTheTextsAndNothingElse();
    void anAssignmentTakesOverTheTextsOnly();
    void anAssignmentToItselfKeepsTheTexts();
    void settersReplaceAndTellAlsoWhenNothingChanges();
    void setTellsOfEachTextWhenItIsThere();
    void aNewerSetFromAHandlerWins();
    void aHandlerMayDeleteTheRecord_data();
    void aHandlerMayDeleteTheRecord();

private:
    // What the signals say, with the texts at that moment.
    static void follow(const CityIndex &entry, QStringList *heard);
};

void CityIndexTest::follow(const CityIndex &entry, QStringList *heard)
{
    const auto hear = [&entry, heard](const char *signal) {
        return [&entry, heard, signal] {
            heard->append(
                text("%1:%2,%3,%4").arg(text(signal), entry.id(), entry.name(), entry.version()));
        };
    };
    connect(&entry, &CityIndex::idChanged, hear("id"));
    connect(&entry, &CityIndex::nameChanged, hear("name"));
    connect(&entry, &CityIndex::versionChanged, hear("version"));
}

void CityIndexTest::hasItsPropertiesInOrder()
{
    QCOMPARE(propertiesOf(CityIndex::staticMetaObject),
             QStringList({text("QString id idChanged()"), text("QString name nameChanged()"),
                          text("QString version versionChanged()")}));
}

void CityIndexTest::hasItsSignalsInOrderAndNoOtherMethods()
{
    QCOMPARE(methodsOf(CityIndex::staticMetaObject),
             QStringList({text("signal void idChanged() ()"), text("signal void nameChanged() ()"),
                          text("signal void versionChanged() ()")}));
}

void CityIndexTest::startsEmptyWithItsParent()
{
    QObject parent;
    auto *const entry = new CityIndex(&parent);

    QCOMPARE(entry->parent(), &parent);
    QCOMPARE(entry->id(), QString());
    QCOMPARE(entry->name(), QString());
    QCOMPARE(entry->version(), QString());
}

void CityIndexTest::takesItsTextsAndNoParent()
{
    const CityIndex entry(text("B-1"), text(" Berlin "), QString());

    QCOMPARE(entry.parent(), nullptr);
    QCOMPARE(entry.id(), text("B-1"));
    QCOMPARE(entry.name(), text(" Berlin "));
    QCOMPARE(entry.version(), QString());
}

void CityIndexTest::aCopyHasTheTextsAndNothingElse()
{
    static_assert(std::is_copy_constructible_v<CityIndex>);
    QObject parent;
    CityIndex entry(&parent);
    entry.setObjectName(text("first"));
    entry.set(text("B"), text("Berlin"), text("2"));
    QSignalSpy told(&entry, &CityIndex::nameChanged);

    CityIndex copy(entry);
    copy.setName(text("Bern"));

    QCOMPARE(copy.id(), text("B"));
    QCOMPARE(copy.version(), text("2"));
    QCOMPARE(copy.parent(), nullptr);
    QCOMPARE(copy.objectName(), QString());
    QCOMPARE(entry.name(), text("Berlin"));
    QCOMPARE(told.count(), 0);
}

void CityIndexTest::anAssignmentTakesOverTheTextsOnly()
{
    QObject parent;
    auto *const entry = new CityIndex(&parent);
    entry->setObjectName(text("mine"));
    QStringList heard;
    follow(*entry, &heard);
    CityIndex other(text("B"), text("Berlin"), text("2"));
    other.setObjectName(text("other"));

    CityIndex &result = *entry = other;

    QCOMPARE(&result, entry);
    QCOMPARE(entry->parent(), &parent);
    QCOMPARE(entry->objectName(), text("mine"));
    QCOMPARE(heard.join(QLatin1Char(' ')), text("id:B,, name:B,Berlin, version:B,Berlin,2"));
}

void CityIndexTest::anAssignmentToItselfKeepsTheTexts()
{
    CityIndex entry(text("B"), text("Berlin"), text("2"));
    const CityIndex &same = entry;

    entry = same;

    QCOMPARE(entry.name(), text("Berlin"));
}

void CityIndexTest::settersReplaceAndTellAlsoWhenNothingChanges()
{
    CityIndex entry;
    QSignalSpy id(&entry, &CityIndex::idChanged);
    QSignalSpy name(&entry, &CityIndex::nameChanged);
    QSignalSpy version(&entry, &CityIndex::versionChanged);

    for (int i = 1; i <= 2; ++i) {
        entry.setId(text("B"));
        QCOMPARE(id.count(), i);
        QCOMPARE(name.count(), i - 1);
        entry.setName(text("Berlin"));
        QCOMPARE(name.count(), i);
        QCOMPARE(version.count(), i - 1);
        entry.setVersion(text("2"));
        QCOMPARE(version.count(), i);
    }

    QCOMPARE(entry.id(), text("B"));
    QCOMPARE(entry.name(), text("Berlin"));
    QCOMPARE(entry.version(), text("2"));
}

void CityIndexTest::setTellsOfEachTextWhenItIsThere()
{
    CityIndex entry(text("a"), text("b"), text("c"));
    QStringList heard;
    follow(entry, &heard);

    entry.set(text("1"), text("2"), text("3"));

    QCOMPARE(heard.join(QLatin1Char(' ')), text("id:1,b,c name:1,2,c version:1,2,3"));
}

void CityIndexTest::aNewerSetFromAHandlerWins()
{
    CityIndex entry(text("a"), text("b"), text("c"));
    bool isFirst = true;
    connect(&entry, &CityIndex::nameChanged, &entry, [&] {
        if (std::exchange(isFirst, false))
            entry.set(text("x"), text("y"), text("z"));
    });
    QSignalSpy version(&entry, &CityIndex::versionChanged);

    entry.set(text("1"), text("2"), text("3"));

    QCOMPARE(entry.id() + entry.name() + entry.version(), text("xyz"));
    QCOMPARE(version.count(), 1);
}

void CityIndexTest::aHandlerMayDeleteTheRecord_data()
{
    QTest::addColumn<int>("at");
    QTest::newRow("at the id") << 0;
    QTest::newRow("at the name") << 1;
    QTest::newRow("at the version") << 2;
}

void CityIndexTest::aHandlerMayDeleteTheRecord()
{
    QFETCH(int, at);
    auto entry = std::make_unique<CityIndex>(text("a"), text("b"), text("c"));
    const auto signal =
        QList<void (CityIndex::*)()> {&CityIndex::idChanged, &CityIndex::nameChanged,
                                      &CityIndex::versionChanged}
            .at(at);
    connect(entry.get(), signal, this, [&entry] { entry.reset(); });

    entry->set(text("1"), text("2"), text("3"));

    QVERIFY(!entry);
}

QTEST_GUILESS_MAIN(CityIndexTest)
#include "tst_cityindex.moc"
