// SPDX-License-Identifier: MIT
// The app's small parts: command line, icons, and the inspector that the self-test relies on.
#include "host/shared/hosttypes.h"
#include "host/ui/iconprovider.h"
#include "host/ui/pageinspector.h"
#include "host/ui/uiengine.h"
#include "host/ui/uioptions.h"
#include <algorithm>
#include <QDirIterator>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScopeGuard>
#include <QtTest>

class UiPartsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerHostTypes("VexaHost"); }
    void aCommandLineIsUnderstood();
    void aWrongCommandLineIsRefused_data();
    void aWrongCommandLineIsRefused();
    void everyIconIsDrawnInTheColourAskedFor();
    void anUnknownIconOrColourGivesNoPicture();
    void theInspectorFindsNothingOnAGoodPage();
    void theInspectorFindsWhatIsWrong_data();
    void theInspectorFindsWhatIsWrong();
    void aListHeaderThatGrowsStaysInSight();
    void aListThatIsScrolledStaysThereWhenItsHeaderGrows();
    void aBadgeIsWrittenInTheDigitsOfTheLanguage_data();
    void aBadgeIsWrittenInTheDigitsOfTheLanguage();
};

namespace {

std::unique_ptr<QQuickWindow> windowWith(QQmlEngine *engine, const QByteArray &item,
                                         const QByteArray &import = QByteArray())
{
    QQmlComponent component(engine);
    component.setData("import QtQuick 2.15\nimport QtQuick.Controls 2.15\n" + import
                          + "\nApplicationWindow { width: 200; height: 200; visible: true\n" + item
                          + "}",
                      QUrl());
    std::unique_ptr<QQuickWindow> window(qobject_cast<QQuickWindow *>(component.create()));
    if (!window)
        qFatal("%s", qPrintable(component.errorString()));
    window->grabWindow();
    QCoreApplication::processEvents(); // What is called later has been called.
    return window;
}

// An engine with the app's own controls.
class PartsEngine : public QQmlEngine
{
public:
    PartsEngine()
    {
        UiEngine::prepareEngine(this, nullptr);
        rootContext()->setContextProperty(
            QStringLiteral("session"),
            QVariantMap {{QStringLiteral("regions"), QVariant::fromValue<QObject *>(nullptr)}});
    }
};

const char ListWithHeader[] = "id: window\n"
                              "property int headerHeight: 40\n"
                              "RegionList {\n"
                              "    objectName: 'list'; anchors.fill: parent\n"
                              "    model: 50\n"
                              "    header: Item { implicitHeight: window.headerHeight }\n"
                              "    delegate: Item { width: 200; height: 20 }\n"
                              "}\n";

bool shows(const QQuickItem *item, const QString &text)
{
    const QList<QQuickItem *> children = item->childItems();
    return item->property("text").toString() == text
        || std::any_of(children.begin(), children.end(),
                       [&text](const QQuickItem *child) { return shows(child, text); });
}

} // namespace

void UiPartsTest::aCommandLineIsUnderstood()
{
    const UiOptions options = UiOptions::parse(
        {QStringLiteral("vexa-maps-ui"), QStringLiteral("--data-dir"), QStringLiteral("/tmp/x"),
         QStringLiteral("--base-uri"), QStringLiteral("http://host/map5"),
         QStringLiteral("--style=dark"), QStringLiteral("--size"), QStringLiteral("360x640"),
         QStringLiteral("--locale"), QStringLiteral("ar_EG")});

    QCOMPARE(options.errorString, QString());
    QCOMPARE(options.output, QString());
    QCOMPARE(options.dataFolder, QStringLiteral("/tmp/x"));
    QCOMPARE(options.baseUri, QStringLiteral("http://host/map5/"));
    QCOMPARE(options.style, QStringLiteral("dark"));
    QCOMPARE(options.size, QSize(360, 640));
    QCOMPARE(options.locale, QStringLiteral("ar_EG"));
    QVERIFY(!options.selfTest);
}

void UiPartsTest::aWrongCommandLineIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("an unknown option") << QStringList {QStringLiteral("--colour")};
    QTest::newRow("an argument") << QStringList {QStringLiteral("FI")};
    QTest::newRow("no http address") << QStringList {QStringLiteral("--base-uri=ftp://host/")};
    QTest::newRow("an empty address") << QStringList {QStringLiteral("--base-uri=")};
    QTest::newRow("no size") << QStringList {QStringLiteral("--size=large")};
    QTest::newRow("no style") << QStringList {QStringLiteral("--style=pink")};
}

void UiPartsTest::aWrongCommandLineIsRefused()
{
    QFETCH(QStringList, arguments);

    QVERIFY(!UiOptions::parse(QStringList {QStringLiteral("vexa-maps-ui")} + arguments)
                 .errorString.isEmpty());
}

void UiPartsTest::everyIconIsDrawnInTheColourAskedFor()
{
    IconProvider provider;
    int count = 0;
    for (QDirIterator icons(QStringLiteral(":/icons")); icons.hasNext(); ++count) {
        icons.next();
        const QString name = icons.fileInfo().completeBaseName();
        QSize size;
        const QImage image =
            provider.requestImage(name + QLatin1String("/ff0000"), &size, QSize(48, 48));
        QCOMPARE(size, QSize(48, 48));
        int painted = 0;
        for (int y = 0; y < 48; ++y) {
            for (int x = 0; x < 48; ++x)
                painted += qAlpha(image.pixel(x, y)) > 128 ? 1 : 0;
        }
        QVERIFY2(painted > 40, qPrintable(name));
        const bool isOwnColours = name == QLatin1String("vexa-maps-ui");
        for (int i = 0; i < 48 * 48 && !isOwnColours; ++i)
            QVERIFY2(qGreen(image.pixel(i % 48, i / 48)) == 0, qPrintable(name));
    }
    QVERIFY(count > 15);
}

void UiPartsTest::anUnknownIconOrColourGivesNoPicture()
{
    IconProvider provider;
    QSize size;

    QVERIFY(provider.requestImage(QStringLiteral("nothing/ff0000"), &size, QSize()).isNull());
    QVERIFY(provider.requestImage(QStringLiteral("map/reddish"), &size, QSize()).isNull());
    QCOMPARE(provider.requestImage(QStringLiteral("map/ff0000"), &size, QSize()).width(),
             IconProvider::DefaultSide);
}

void UiPartsTest::theInspectorFindsNothingOnAGoodPage()
{
    QQmlEngine engine;
    const auto window = windowWith(&engine,
                                   "Text { text: 'short' }\n"
                                   "Button { y: 40; Accessible.name: 'Press'; height: 44 }");

    QCOMPARE(PageInspector::faults(window.get()), QStringList());
    QVERIFY(PageInspector::findNamed(window.get(), QStringLiteral("Press")));
    QVERIFY(!PageInspector::findNamed(window.get(), QStringLiteral("short")));
}

void UiPartsTest::theInspectorFindsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<QString>("fault");
    QTest::newRow("text that is elided")
        << QByteArray("Text { width: 40; elide: Text.ElideRight; text: 'much too long' }")
        << QStringLiteral("is cut off");
    QTest::newRow("text that is wider than its place")
        << QByteArray("Text { width: 40; text: 'much too long' }") << QStringLiteral("too wide");
    QTest::newRow("text beyond the window") << QByteArray("Text { x: 180; text: 'much too long' }")
                                            << QStringLiteral("leaves the window");
    QTest::newRow("a control without a name")
        << QByteArray("Button { width: 50; height: 50 }") << QStringLiteral("no spoken name");
    QTest::newRow("a control that is too small")
        << QByteArray("Button { Accessible.name: 'Press'; height: 20; hoverEnabled: true }")
        << QStringLiteral("x 20 pixels");
}

void UiPartsTest::theInspectorFindsWhatIsWrong()
{
    QFETCH(QByteArray, item);
    QFETCH(QString, fault);
    QQmlEngine engine;
    const auto window = windowWith(&engine, item);

    const QStringList faults = PageInspector::faults(window.get());

    QCOMPARE(faults.size(), 1);
    QVERIFY2(faults.first().contains(fault), qPrintable(faults.first()));
}

void UiPartsTest::aListHeaderThatGrowsStaysInSight()
{
    PartsEngine engine;
    const auto window = windowWith(&engine, ListWithHeader, "import VexaMaps 1.0");
    auto *list = window->findChild<QQuickItem *>(QStringLiteral("list"));
    QCOMPARE(list->property("contentY").toReal(), -40.0);

    window->setProperty("headerHeight", 70);

    QTRY_COMPARE(list->property("contentY").toReal(), -70.0);
}

void UiPartsTest::aListThatIsScrolledStaysThereWhenItsHeaderGrows()
{
    PartsEngine engine;
    const auto window = windowWith(&engine, ListWithHeader, "import VexaMaps 1.0");
    auto *list = window->findChild<QQuickItem *>(QStringLiteral("list"));
    list->setProperty("contentY", 300);

    window->setProperty("headerHeight", 70);
    QTRY_COMPARE(list->property("originY").toReal(), -70.0);
    QCoreApplication::processEvents(); // What is called later has been called.

    QCOMPARE(list->property("contentY").toReal(), 300.0);
}

void UiPartsTest::aBadgeIsWrittenInTheDigitsOfTheLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("digits");
    QTest::newRow("English") << QStringLiteral("en_GB") << QStringLiteral("12");
    QTest::newRow("Arabic of Egypt")
        << QStringLiteral("ar_EG") << QString::fromUtf8("\u0661\u0662");
}

void UiPartsTest::aBadgeIsWrittenInTheDigitsOfTheLanguage()
{
    QFETCH(QString, locale);
    QFETCH(QString, digits);
    const QLocale before;
    const auto restored = qScopeGuard([&before] { QLocale::setDefault(before); });
    QLocale::setDefault(QLocale(locale));
    PartsEngine engine;

    const auto window = windowWith(
        &engine, "NavButton { objectName: 'button'; width: 90; text: 'Maps'; badge: 12 }",
        "import VexaMaps 1.0");

    QVERIFY(shows(window->findChild<QQuickItem *>(QStringLiteral("button")), digits));
}

QTEST_MAIN(UiPartsTest)
#include "tst_uiparts.moc"
