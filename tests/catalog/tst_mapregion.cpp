// SPDX-License-Identifier: MIT
#include "catalog/mapregion.h"

#include <memory>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

class MapRegionTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsEmptyButForItsId();
    void hasItsPropertiesInOrder();
    void hasItsSignalsInOrderAndNoOtherMethods();
    void settersReplaceAndTell();
    void settersTellAlsoWhenNothingChanges();
    void sizesParentFlagAndAddressAreSetSilently();
    void keepsOnlyEntriesWithTheTileExtension_data();
    void keepsOnlyEntriesWithTheTileExtension();
    void aNewFileListReplacesTheOld();
    void deletesNoChildren();
    void listViewsFollowTheirList();
    void listViewsCannotChangeTheirList();
    void anIndexOutsideOfTheListGivesNull();
    void makingAListRunsTheEventLoopFirst();
    void makingARegionRunsTheEventLoop();
    void scriptsReadAllProperties();
    void scriptsFollowTheChangeSignals();
    void scriptsCannotWriteProperties();
    void appendingFromAScriptDoesNothing();
    void aBindingToTheDownloadSizeIsNotUpdated();
};

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/** A QML object whose document sees the region as "region". */
class Script
{
public:
    Script(MapRegion *region, const char *body)
    {
        m_engine.rootContext()->setContextProperty(text("region"), region);
        QQmlComponent component(&m_engine);
        component.setData(QByteArray("import QtQml 2.0\nQtObject {\n") + body + "\n}", QUrl());
        m_object.reset(component.create());
        if (!m_object)
            qWarning("%s", qPrintable(component.errorString()));
    }
    QObject *object() const { return m_object.get(); }
    QVariant value(const char *property) const { return m_object->property(property); }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_object;
};

} // namespace

void MapRegionTest::startsEmptyButForItsId()
{
    const MapRegion region(text("42"));

    QCOMPARE(region.id(), text("42"));
    QCOMPARE(region.name(), QString());
    QCOMPARE(region.localizedName(), QString());
    QCOMPARE(region.fileList(), QStringList());
    QCOMPARE(region.installed(), false);
    QCOMPARE(region.downloadSize(), qint64(0));
    QCOMPARE(region.installationSize(), qint64(0));
    QCOMPARE(region.downloadUrl(), QString());
    QCOMPARE(region.hasParent(), false);
    auto children = region.children();
    QCOMPARE(int(children.count(&children)), 0);
    QCOMPARE(children.object, &region);
    QCOMPARE(region.parent(), nullptr);
}

void MapRegionTest::hasItsPropertiesInOrder()
{
    const QMetaObject &meta = MapRegion::staticMetaObject;
    QStringList found;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        QVERIFY2(!property.isWritable(), property.name());
        found.append(text(property.typeName()) + QLatin1Char(' ') + text(property.name())
                     + QLatin1Char(' ') + text(property.notifySignal().methodSignature()));
    }

    const QStringList expected {
        text("QString id idChanged()"),
        text("QString name nameChanged()"),
        text("QStringList fileList fileListChanged()"),
        text("QString localizedName localizedNameChanged()"),
        text("bool installed installedChanged()"),
        text("QQmlListProperty<MapRegion> children childrenChanged()"),
        text("bool hasParent hasParentChanged()"),
        text("qlonglong downloadSize downloadSizeChanged()"),
        text("QString downloadUrl downloadUrlChanged()"),
    };
    QCOMPARE(found, expected);
}

void MapRegionTest::hasItsSignalsInOrderAndNoOtherMethods()
{
    const QMetaObject &meta = MapRegion::staticMetaObject;
    QStringList found;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Signal);
        found.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }

    const QStringList expected {
        text("idChanged()"),        text("localizedNameChanged()"), text("nameChanged()"),
        text("fileListChanged()"),  text("installedChanged()"),     text("childrenChanged()"),
        text("hasParentChanged()"), text("downloadSizeChanged()"),  text("downloadUrlChanged()"),
    };
    QCOMPARE(found, expected);
}

void MapRegionTest::settersReplaceAndTell()
{
    MapRegion region(text("42"));
    MapRegion child(text("43"));
    QSignalSpy name(&region, &MapRegion::nameChanged);
    QSignalSpy localizedName(&region, &MapRegion::localizedNameChanged);
    QSignalSpy installed(&region, &MapRegion::installedChanged);
    QSignalSpy fileList(&region, &MapRegion::fileListChanged);
    QSignalSpy children(&region, &MapRegion::childrenChanged);

    region.setName(text("Alpha"));
    region.setLocalizedName(text("Alfa"));
    region.setInstalled(true);
    region.setFileList({text("a/3/x.cdt")});
    region.addChild(&child);

    QCOMPARE(region.name(), text("Alpha"));
    QCOMPARE(region.localizedName(), text("Alfa"));
    QCOMPARE(region.installed(), true);
    QCOMPARE(region.fileList(), QStringList {text("a/3/x.cdt")});
    QCOMPARE(name.count(), 1);
    QCOMPARE(localizedName.count(), 1);
    QCOMPARE(installed.count(), 1);
    QCOMPARE(fileList.count(), 1);
    QCOMPARE(children.count(), 1);
}

void MapRegionTest::settersTellAlsoWhenNothingChanges()
{
    MapRegion region(text("42"));
    region.setName(text("Alpha"));
    region.setInstalled(true);
    QSignalSpy name(&region, &MapRegion::nameChanged);
    QSignalSpy localizedName(&region, &MapRegion::localizedNameChanged);
    QSignalSpy installed(&region, &MapRegion::installedChanged);
    QSignalSpy fileList(&region, &MapRegion::fileListChanged);

    region.setName(text("Alpha"));
    region.setLocalizedName(QString());
    region.setInstalled(true);
    region.setFileList({});

    QCOMPARE(name.count(), 1);
    QCOMPARE(localizedName.count(), 1);
    QCOMPARE(installed.count(), 1);
    QCOMPARE(fileList.count(), 1);
}

void MapRegionTest::sizesParentFlagAndAddressAreSetSilently()
{
    MapRegion region(text("42"));
    QSignalSpy size(&region, &MapRegion::downloadSizeChanged);
    QSignalSpy hasParent(&region, &MapRegion::hasParentChanged);
    QSignalSpy url(&region, &MapRegion::downloadUrlChanged);

    region.setSize(5LL * 1024 * 1024 * 1024, 7LL * 1024 * 1024 * 1024);
    region.setHasParent(true);
    region.setDownloadUrl(text("http://localhost/a.zip"));

    QCOMPARE(region.downloadSize(), 5368709120LL);
    QCOMPARE(region.installationSize(), 7516192768LL);
    QCOMPARE(region.hasParent(), true);
    QCOMPARE(region.downloadUrl(), text("http://localhost/a.zip"));
    region.setDownloadUrl(text("\xc3\x85land/\xf0\x9f\x97\xba.zip"));
    QCOMPARE(region.downloadUrl(), text("\xc3\x85land/\xf0\x9f\x97\xba.zip"));
    QCOMPARE(size.count() + hasParent.count() + url.count(), 0);
}

void MapRegionTest::keepsOnlyEntriesWithTheTileExtension_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("kept");
    QTest::newRow("at the end") << text("a/3/x.cdt") << true;
    QTest::newRow("in the middle") << text("a/3/x.cdt.bak") << true;
    QTest::newRow("in a folder's name") << text("a.cdt/readme") << true;
    QTest::newRow("nothing else") << text(".cdt") << true;
    QTest::newRow("with backslashes") << text("\\a\\3\\x.cdt") << true;
    QTest::newRow("in capitals") << text("a/3/x.CDT") << false;
    QTest::newRow("without the dot") << text("a/3/xcdt") << false;
    QTest::newRow("another one") << text("a/3/x.txt") << false;
    QTest::newRow("empty") << QString() << false;
}

void MapRegionTest::keepsOnlyEntriesWithTheTileExtension()
{
    QFETCH(QString, entry);
    QFETCH(bool, kept);
    MapRegion region(text("42"));
    QSignalSpy changed(&region, &MapRegion::fileListChanged);

    region.setFileList({entry});

    QCOMPARE(region.fileList(), kept ? QStringList {entry} : QStringList());
    QCOMPARE(changed.count(), 1);
}

void MapRegionTest::aNewFileListReplacesTheOld()
{
    MapRegion region(text("42"));
    region.setFileList({text("old.cdt")});

    region.setFileList({text("b.cdt"), text("c.txt"), text("a.cdt"), text("b.cdt")});

    QCOMPARE(region.fileList(), QStringList({text("b.cdt"), text("a.cdt"), text("b.cdt")}));
}

void MapRegionTest::deletesNoChildren()
{
    MapRegion child(text("43"));
    {
        MapRegion region(text("42"));
        region.addChild(&child);
    }

    QCOMPARE(child.id(), text("43"));
}

void MapRegionTest::listViewsFollowTheirList()
{
    MapRegion a(text("a"));
    MapRegion b(text("b"));
    QList<MapRegion *> list {&a};
    auto view = MapRegion::createDeclarativeList(this, &list);

    list.append(&b);

    QCOMPARE(view.object, this);
    QCOMPARE(int(view.count(&view)), 2);
    QCOMPARE(view.at(&view, 0), &a);
    QCOMPARE(view.at(&view, 1), &b);
}

void MapRegionTest::listViewsCannotChangeTheirList()
{
    MapRegion a(text("a"));
    MapRegion b(text("b"));
    QList<MapRegion *> list {&a};
    auto view = MapRegion::createDeclarativeList(this, &list);

    view.append(&view, &b);

    QCOMPARE(list.size(), 1);
    QVERIFY(!view.clear);
    QVERIFY(!view.replace);
    QVERIFY(!view.removeLast);
}

void MapRegionTest::anIndexOutsideOfTheListGivesNull()
{
    MapRegion a(text("a"));
    QList<MapRegion *> list {&a};
    auto view = MapRegion::createDeclarativeList(this, &list);

    QCOMPARE(view.at(&view, 1), nullptr);
    QCOMPARE(view.at(&view, -1), nullptr);
    list.clear();
    QCOMPARE(view.at(&view, 0), nullptr);
    QCOMPARE(int(view.count(&view)), 0);
}

void MapRegionTest::makingAListRunsTheEventLoopFirst()
{
    QList<MapRegion *> list;
    bool happened = false;
    QMetaObject::invokeMethod(
        this, [&] { happened = true; }, Qt::QueuedConnection);

    MapRegion::createDeclarativeList(this, &list);

    QVERIFY(happened);
}

void MapRegionTest::makingARegionRunsTheEventLoop()
{
    bool happened = false;
    QMetaObject::invokeMethod(
        this, [&] { happened = true; }, Qt::QueuedConnection);

    const MapRegion region(text("42"));

    QVERIFY(happened);
}

void MapRegionTest::scriptsReadAllProperties()
{
    MapRegion region(text("42"));
    MapRegion child(text("43"));
    region.setName(text("Alpha"));
    region.setLocalizedName(text("Alfa"));
    region.setInstalled(true);
    region.setFileList({text("a.cdt"), text("b.cdt")});
    region.addChild(&child);
    region.setHasParent(true);
    region.setSize(5368709120LL, 0);
    region.setDownloadUrl(text("http://localhost/a.zip"));

    const Script script(&region,
                        "property var all: [region.id, region.name, region.localizedName,"
                        " region.installed, region.fileList.join(), region.children.length,"
                        " region.children[0].id, region.hasParent, region.downloadSize,"
                        " region.downloadUrl].join('|')");

    QCOMPARE(script.value("all").toString(),
             text("42|Alpha|Alfa|true|a.cdt,b.cdt|1|43|true|5368709120|http://localhost/a.zip"));
}

void MapRegionTest::scriptsFollowTheChangeSignals()
{
    MapRegion region(text("42"));
    MapRegion child(text("43"));
    const Script script(&region,
                        "property string shown: region.name + region.localizedName"
                        " + region.installed + region.fileList.length + region.children.length");

    region.setName(text("A"));
    region.setLocalizedName(text("B"));
    region.setInstalled(true);
    region.setFileList({text("a.cdt")});
    region.addChild(&child);

    QCOMPARE(script.value("shown").toString(), text("ABtrue11"));
}

void MapRegionTest::scriptsCannotWriteProperties()
{
    MapRegion region(text("42"));

    const Script script(&region,
                        "property int refused: 0\n"
                        "Component.onCompleted: {"
                        " for (var name of ['id', 'name', 'fileList', 'localizedName', 'installed',"
                        "   'children', 'hasParent', 'downloadSize', 'downloadUrl']) {"
                        "  try { region[name] = region[name] } catch (e) { refused += 1 } } }");

    QCOMPARE(script.value("refused").toInt(), 9);
}

void MapRegionTest::appendingFromAScriptDoesNothing()
{
    MapRegion region(text("42"));
    MapRegion child(text("43"));
    region.addChild(&child);

    const Script script(&region,
                        "property int length: -1\nproperty string error: ''\n"
                        "Component.onCompleted: {"
                        " try { region.children.push(region) } catch (e) { error = '' + e }\n"
                        " length = region.children.length }");

    QCOMPARE(script.value("length").toInt(), 1);
    // Lists had no push() before Qt 6.
    QVERIFY(!script.value("error").toString().contains(text("append")));
    auto children = region.children();
    QCOMPARE(int(children.count(&children)), 1);
}

void MapRegionTest::aBindingToTheDownloadSizeIsNotUpdated()
{
    MapRegion region(text("42"));
    region.setSize(1, 0);
    const Script script(&region, "property double size: region.downloadSize");

    region.setSize(2, 0);

    QCOMPARE(script.value("size").toInt(), 1);
}

QTEST_GUILESS_MAIN(MapRegionTest)

#include "tst_mapregion.moc"
