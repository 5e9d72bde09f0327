// SPDX-License-Identifier: MIT
// The installer as a page uses it.
#include "installerrig.h"
#include <memory>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QtTest>

class InstallerQmlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPageFollowsAnInstall();
    void aPagePausesResumesCancelsAndRemoves();
    void theCollectorLeavesTheInstallerAlone();
};

namespace {

const char *const Page = R"(
import QtQml 2.0
QtObject {
    id: page
    property var states: []
    property string sentence: ""
    property bool busy: installer.busy
    property bool paused: installer.paused
    property int pendingCount: installer.pending.length
    property double lastProgress: -2
    property var removal: null
    function install() { return installer.install("FI") }
    function refused() { installer.install("XX"); return installer.refusal() }
    function cancel() { return installer.cancel("FI") }
    function remove() { return installer.remove("FI") }
    property Connections c: Connections {
        target: installer
        function onStateChanged(id) {
            if (id !== "FI")
                return;
            page.states.push(installer.state(id));
            page.sentence = installer.sentence(id);
            page.lastProgress = installer.progress(id);
        }
        function onRemoved(id, bytes, files, kept) { page.removal = [id, bytes, files, kept] }
    }
}
)";

QVariant call(QObject *page, const char *function)
{
    QVariant result;
    QMetaObject::invokeMethod(page, function, Q_RETURN_ARG(QVariant, result));
    return result;
}

struct PageRig : InstallerRig
{
    PageRig()
    {
        content.addRegion(QStringLiteral("FI"), QStringLiteral("Finland"),
                          {{QStringLiteral("0/1/a.cdt"), QByteArray(100, 'x')}});
        openSession();
        engine.rootContext()->setContextProperty(QStringLiteral("installer"), &installer());
        QQmlComponent component(&engine);
        component.setData(Page, QUrl());
        page.reset(component.create());
        if (!page)
            qFatal("%s", qPrintable(component.errorString()));
    }

    QQmlEngine engine;
    std::unique_ptr<QObject> page;
};

} // namespace

void InstallerQmlTest::aPageFollowsAnInstall()
{
    PageRig rig;

    QVERIFY(call(rig.page.get(), "install").toBool());
    QCOMPARE(rig.page->property("pendingCount").toInt(), 1);
    QVERIFY(rig.page->property("busy").toBool());

    QTRY_VERIFY_WITH_TIMEOUT(!rig.page->property("busy").toBool(), 30000);
    const QStringList states = rig.page->property("states").toStringList();
    QCOMPARE(states.first(), QStringLiteral("queued"));
    QCOMPARE(states.last(), QStringLiteral("installed"));
    QVERIFY(states.contains(QStringLiteral("moving")));
    QCOMPARE(rig.page->property("sentence").toString(), QStringLiteral("Installed"));
    QCOMPARE(rig.page->property("pendingCount").toInt(), 0);
    QVERIFY(call(rig.page.get(), "refused").toString().contains(QLatin1String("XX")));
}

void InstallerQmlTest::aPagePausesResumesCancelsAndRemoves()
{
    PageRig rig;
    QMetaObject::invokeMethod(&rig.installer(), "pause");
    QVERIFY(rig.page->property("paused").toBool());
    QVERIFY(call(rig.page.get(), "install").toBool());
    QTRY_COMPARE(rig.page->property("sentence").toString(), QStringLiteral("Paused by you"));

    QVERIFY(call(rig.page.get(), "cancel").toBool());
    QCOMPARE(rig.page->property("sentence").toString(), QStringLiteral("Cancelled"));
    QMetaObject::invokeMethod(&rig.installer(), "resume");
    QVERIFY(!rig.page->property("paused").toBool());

    QVERIFY(call(rig.page.get(), "install").toBool());
    QTRY_COMPARE_WITH_TIMEOUT(rig.page->property("sentence").toString(),
                              QStringLiteral("Installed"), 30000);
    QVERIFY(call(rig.page.get(), "remove").toBool());
    QTRY_COMPARE(rig.page->property("removal").toList().size(), 4);
    QCOMPARE(rig.page->property("removal").toList().at(1).toInt(), 100);
}

void InstallerQmlTest::theCollectorLeavesTheInstallerAlone()
{
    PageRig rig;

    rig.engine.collectGarbage();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    QVERIFY(call(rig.page.get(), "install").toBool());
    QTRY_VERIFY_WITH_TIMEOUT(!rig.installer().busy(), 30000);
}

QTEST_GUILESS_MAIN(InstallerQmlTest)
#include "tst_installerqml.moc"
