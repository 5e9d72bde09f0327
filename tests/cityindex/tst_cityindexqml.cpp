// SPDX-License-Identifier: MIT
// The city index as scripts see it.
#include "cityindex/citydata.h"
#include "cityindex/cityindexlist.h"
#include <memory>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QTest>

class CityIndexQmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void entriesAreReadById();
    void anUnknownIdIsNull();
    void theCountIsFollowed();
    void anEntrysTextsAreFollowed();
    void scriptsAddAndUpdateEntries();
    void scriptsGoOverToAnotherFolder();
    void suffixesMayBeLeftOut();
    void propertiesCannotBeWritten();
    void entriesAreNotTheGarbageCollectors();
    void aHeldEntryStaysTheSameObject();
    void anEntryHeldAcrossALoadBecomesNull();
    void theModuleCanBeImportedBesideTheList();

private:
    QVariant evaluate(const char *script);
    // A document with these members.
    std::unique_ptr<QObject> create(const char *body, const char *import = "QtQml 2.0");
    void collectGarbage();

    std::unique_ptr<CityData> m_data;
    std::unique_ptr<CityIndexList> m_list;
    std::unique_ptr<QQmlEngine> m_engine;
    QString m_error;
};

void CityIndexQmlTest::init()
{
    m_data = std::make_unique<CityData>();
    m_list = std::make_unique<CityIndexList>();
    m_list->addCityIndex(text("a"), text("Århus"), text("1.0"));
    m_engine = std::make_unique<QQmlEngine>();
    m_engine->rootContext()->setContextProperty(text("cities"), m_list.get());
    m_error.clear();
}

void CityIndexQmlTest::cleanup()
{
    m_engine.reset();
    m_list.reset();
    m_data.reset();
}

QVariant CityIndexQmlTest::evaluate(const char *script)
{
    QQmlExpression expression(m_engine->rootContext(), nullptr, text(script));
    const QVariant value = expression.evaluate();
    m_error = expression.hasError() ? expression.error().description() : QString();
    return value;
}

std::unique_ptr<QObject> CityIndexQmlTest::create(const char *body, const char *import)
{
    QQmlComponent component(m_engine.get());
    component.setData(QByteArray("import ") + import + "\nQtObject {\n" + body + "\n}", QUrl());
    std::unique_ptr<QObject> object(component.create());
    if (!object)
        qWarning("%s", qPrintable(component.errorString()));
    return object;
}

void CityIndexQmlTest::collectGarbage()
{
    for (int i = 0; i < 3; ++i) {
        evaluate("gc()");
        m_engine->collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }
}

void CityIndexQmlTest::entriesAreReadById()
{
    QCOMPARE(evaluate("cities.cityIndex('a').id").toString(), text("a"));
    QCOMPARE(evaluate("cities.cityIndex('a').name").toString(), text("Århus"));
    QCOMPARE(evaluate("cities.cityIndex('a').version").toString(), text("1.0"));
    QCOMPARE(m_error, QString());
}

void CityIndexQmlTest::anUnknownIdIsNull()
{
    QCOMPARE(evaluate("cities.cityIndex('x') === null").toBool(), true);
    QCOMPARE(evaluate("cities.cityIndex('a') !== null").toBool(), true);
}

void CityIndexQmlTest::theCountIsFollowed()
{
    const auto object = create("property int count: cities.count");
    QVERIFY(object);
    QCOMPARE(object->property("count").toInt(), 1);

    m_list->addCityIndex(text("b"), text("B"), text("1"));

    QCOMPARE(object->property("count").toInt(), 2);
}

void CityIndexQmlTest::anEntrysTextsAreFollowed()
{
    const auto object = create("property QtObject entry: cities.cityIndex('a')\n"
                               "property string all: entry.id + entry.name + entry.version");
    QVERIFY(object);
    QCOMPARE(object->property("all").toString(), text("aÅrhus1.0"));

    m_list->addCityIndex(text("a"), text("Aarhus"), text("2.0"));

    QCOMPARE(object->property("all").toString(), text("aAarhus2.0"));
}

void CityIndexQmlTest::scriptsAddAndUpdateEntries()
{
    evaluate("cities.addCityIndex('b', 'Bremen', '1')");
    evaluate("cities.addCityIndex('b', 'Bremen', '2')");

    QCOMPARE(m_error, QString());
    QCOMPARE(rows(m_list->getCityIndexList()),
             QStringList({text("a|Århus|1.0"), text("b|Bremen|2")}));
}

void CityIndexQmlTest::scriptsGoOverToAnotherFolder()
{
    TestFile::write(m_data->file("_new"), cityFile(cityElement("n", "N")));

    QCOMPARE(evaluate("cities.resetInstanceWithPathSuffix('_new'); cities.cityIndex('n').name")
                 .toString(),
             text("N"));
}

void CityIndexQmlTest::suffixesMayBeLeftOut()
{
    evaluate("cities.resetInstanceWithPathSuffix('_new')");
    QCOMPARE(m_list->count(), 0);

    evaluate("cities.setPathSuffix()");
    QCOMPARE(m_error, QString());
    m_list->initialize();
    QCOMPARE(m_list->count(), 1);

    evaluate("cities.setPathSuffix('_new')");
    evaluate("cities.resetInstanceWithPathSuffix()");
    QCOMPARE(m_error, QString());
    QCOMPARE(m_list->count(), 1);
}

void CityIndexQmlTest::propertiesCannotBeWritten()
{
    for (const char *script :
         {"cities.count = 5", "cities.cityIndex('a').id = 'x'", "cities.cityIndex('a').name = 'x'",
          "cities.cityIndex('a').version = 'x'"}) {
        evaluate(script);
        QVERIFY2(m_error.contains(text("read-only")), qPrintable(m_error));
    }
    QCOMPARE(rows(m_list->getCityIndexList()), QStringList {text("a|Århus|1.0")});
}

void CityIndexQmlTest::entriesAreNotTheGarbageCollectors()
{
    const QPointer<CityIndex> entry(m_list->cityIndex(text("a")));
    QVERIFY(evaluate("cities.cityIndex('a').name").isValid());

    collectGarbage();

    QVERIFY(entry);
    QCOMPARE(m_list->cityIndex(text("a")), entry.data());
    QCOMPARE(evaluate("cities.cityIndex('a').name").toString(), text("Århus"));
}

void CityIndexQmlTest::aHeldEntryStaysTheSameObject()
{
    const auto object = create("property var entry: cities.cityIndex('a')\n"
                               "function isSame() { return entry === cities.cityIndex('a') }");
    QVERIFY(object);
    for (int i = 0; i < 200; ++i)
        m_list->addCityIndex(text("b%1").arg(i), text("B"), text("1"));
    collectGarbage();
    m_list->addCityIndex(text("a"), text("Aarhus"), text("2"));

    QVariant isSame;
    QVERIFY(QMetaObject::invokeMethod(object.get(), "isSame", Q_RETURN_ARG(QVariant, isSame)));

    QCOMPARE(isSame.toBool(), true);
    QCOMPARE(object->property("entry").value<QObject *>()->property("name").toString(),
             text("Aarhus"));
}

void CityIndexQmlTest::anEntryHeldAcrossALoadBecomesNull()
{
    const auto object = create("property QtObject entry\n"
                               "Component.onCompleted: entry = cities.cityIndex('a')");
    QVERIFY(object);
    QVERIFY(object->property("entry").value<QObject *>());

    m_list->loadList();
    collectGarbage();

    QVERIFY(!object->property("entry").value<QObject *>());
    QCOMPARE(evaluate("cities.cityIndex('a').name").toString(), text("Århus"));
}

void CityIndexQmlTest::theModuleCanBeImportedBesideTheList()
{
    m_engine->addImportPath(text(VEXA_QML_DIR));

    const auto object =
        create("property string name: cities.cityIndex('a').name\nproperty string uri: vexaBaseURI",
               "Vexa 1.0\nimport QtQml 2.0");

    QVERIFY(object);
    QCOMPARE(object->property("name").toString(), text("Århus"));
    QVERIFY(!object->property("uri").toString().isEmpty());
}

QTEST_GUILESS_MAIN(CityIndexQmlTest)
#include "tst_cityindexqml.moc"
