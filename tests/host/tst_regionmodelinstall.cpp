// SPDX-License-Identifier: MIT
// The region model while regions are installed from a real web server and removed again.
#include "host/shared/removalpreview.h"
#include "installerrig.h"
#include "regionworld.h"
#include <memory>
#include <QAbstractItemModelTester>
#include <QSet>
#include <QtTest>

class RegionModelInstallTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anInstallChangesItsRowOnly();
    void aRowTellsWhyItWaits();
    void aRowTellsWhyItFailed();
    void aCancelledRegionIsNotPendingAnyMore();
    void aRemovalIsAsItWasForetold();
    void whatWasPendingBeforeTheModelIsSo();
};

namespace {

struct Rig : InstallerRig
{
    Rig()
    {
        content.addRegion(text("FI"), text("Finland"), tilesOf({"0/1/a.cdt", "0/1/b.cdt"}));
        content.addRegion(text("SE"), text("Sweden"), tilesOf({"0/1/b.cdt", "0/1/c.cdt"}));
        content.addLink(text("NO"), text("Norway"), text("gone.zip"));
    }

    RegionModel &open(bool start = true)
    {
        openSession(start);
        model = std::make_unique<RegionModel>(&catalog(), &installer());
        tester = std::make_unique<QAbstractItemModelTester>(
            model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal);
        settle(*model);
        QObject::connect(model.get(), &QAbstractItemModel::dataChanged, model.get(),
                         [this](const QModelIndex &from, const QModelIndex &to) {
                             for (int row = from.row(); row <= to.row(); ++row)
                                 note(model->index(row));
                         });
        return *model;
    }
    ~Rig() { tester.reset(); }

    void note(const QModelIndex &row)
    {
        const QString id = row.data(RegionModel::RegionIdRole).toString();
        const QString state = row.data(RegionModel::StateRole).toString();
        changedIds.insert(id);
        if (rowStates[id].isEmpty() || rowStates[id].last() != state)
            rowStates[id].append(state);
    }
    QVariant value(const char *id, const char *role) const { return valueOf(*model, id, role); }

    std::unique_ptr<RegionModel> model;
    std::unique_ptr<QAbstractItemModelTester> tester;
    QSet<QString> changedIds;
    QHash<QString, QStringList> rowStates;
};

} // namespace

void RegionModelInstallTest::anInstallChangesItsRowOnly()
{
    Rig rig;
    const RegionModel &model = rig.open();
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

    QVERIFY(rig.installer().install(text("FI")));
    QCOMPARE(rig.value("FI", "state").toString(), text("queued"));
    QTRY_VERIFY(rig.rowStates.contains(text("FI")));
    QTRY_VERIFY_WITH_TIMEOUT(!rig.installer().busy(), 30000);
    settle(model);

    QCOMPARE(rig.rowStates.value(text("FI")), rig.states.value(text("FI")));
    QCOMPARE(rig.changedIds, QSet<QString> {text("FI")});
    QCOMPARE(rig.value("FI", "state").toString(), text("installed"));
    QCOMPARE(rig.value("FI", "sentence").toString(), text("Installed"));
    QVERIFY(rig.value("FI", "installed").toBool());
    QVERIFY(!rig.value("FI", "pending").toBool());
    QVERIFY(inserted.isEmpty() && removed.isEmpty() && reset.isEmpty());
    rig.value("FI", "sizeOnDisk");
    QTRY_COMPARE(rig.value("FI", "sizeOnDisk").toLongLong(), 40000);
}

void RegionModelInstallTest::aRowTellsWhyItWaits()
{
    Rig rig;
    rig.open();
    rig.installer().pause();

    QVERIFY(rig.installer().install(text("FI")));

    QTRY_COMPARE(rig.value("FI", "state").toString(), text("waiting"));
    QCOMPARE(rig.value("FI", "waitReason").toString(), text("pausedByUser"));
    QCOMPARE(rig.value("FI", "reason").toString(), text("Paused by you"));
    QCOMPARE(rig.value("FI", "sentence").toString(), text("Paused by you"));
    QTRY_VERIFY(rig.value("FI", "pending").toBool());
    rig.installer().cancelAll();
    QTRY_VERIFY_WITH_TIMEOUT(!rig.installer().busy(), 30000);
}

void RegionModelInstallTest::aRowTellsWhyItFailed()
{
    Rig rig;
    rig.open();

    QVERIFY(rig.installer().install(text("NO")));

    QTRY_COMPARE_WITH_TIMEOUT(rig.value("NO", "state").toString(), text("failed"), 30000);
    QVERIFY(!rig.value("NO", "reason").toString().isEmpty());
    QCOMPARE(rig.value("NO", "reason").toString(), rig.installer().reason(text("NO")));
    QTRY_VERIFY(!rig.value("NO", "pending").toBool());
    QVERIFY(!rig.value("NO", "installed").toBool());
}

void RegionModelInstallTest::aCancelledRegionIsNotPendingAnyMore()
{
    Rig rig;
    rig.open(false);
    QVERIFY(rig.installer().install(text("FI")));
    QTRY_VERIFY(rig.value("FI", "pending").toBool());

    QVERIFY(rig.installer().cancel(text("FI")));

    QCOMPARE(rig.value("FI", "state").toString(), text("cancelled"));
    QTRY_VERIFY(!rig.value("FI", "pending").toBool());
}

void RegionModelInstallTest::aRemovalIsAsItWasForetold()
{
    Rig rig;
    RegionModel &model = rig.open();
    QVERIFY(rig.installer().install(text("FI")));
    QVERIFY(rig.installer().install(text("SE")));
    QTRY_VERIFY_WITH_TIMEOUT(!rig.installer().busy(), 30000);
    settle(model);
    RemovalPreview preview;
    preview.setRegions(&model);
    preview.setRegionId(text("FI"));
    QTRY_VERIFY(preview.ready());
    QCOMPARE(preview.freedFiles(), 1);
    QCOMPARE(preview.keptFiles(), 1);
    const qlonglong foretold = preview.freedBytes();
    QVERIFY(foretold > 0);
    QSignalSpy removed(&rig.installer(), &RegionInstaller::removed);

    QVERIFY(rig.installer().remove(text("FI")));
    QTRY_COMPARE_WITH_TIMEOUT(removed.count(), 1, 30000);
    settle(model);

    QCOMPARE(removed.first().at(1).toLongLong(), foretold);
    QCOMPARE(removed.first().at(2).toInt(), 1);
    QCOMPARE(removed.first().at(3).toInt(), 1);
    QTRY_VERIFY(preview.ready()); // of a region that is gone
    QCOMPARE(preview.freedFiles(), 0);
    QCOMPARE(rig.value("FI", "state").toString(), text("notInstalled"));
    QVERIFY(!rig.value("FI", "installed").toBool());
    QVERIFY(rig.value("SE", "installed").toBool());
}

void RegionModelInstallTest::whatWasPendingBeforeTheModelIsSo()
{
    Rig rig;
    rig.openSession(false);
    QVERIFY(rig.installer().install(text("SE")));

    RegionModel model(&rig.catalog(), &rig.installer());
    settle(model);

    QVERIFY(valueOf(model, "SE", "pending").toBool());
    QCOMPARE(valueOf(model, "SE", "state").toString(), text("queued"));
    QVERIFY(!valueOf(model, "FI", "pending").toBool());
}

QTEST_GUILESS_MAIN(RegionModelInstallTest)
#include "tst_regionmodelinstall.moc"
