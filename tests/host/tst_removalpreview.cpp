// SPDX-License-Identifier: MIT
// What a dialog is told before a region is removed.
#include "host/shared/removalpreview.h"
#include "regionworld.h"
#include <memory>
#include <QtTest>

class RemovalPreviewTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFilesAreCountedInTheBackground();
    void whatIsNotInstalledFreesNothing();
    void anotherRegionHasOtherFigures();
    void afterALoadItIsCountedAnew();
    void duringALoadItWaitsForTheEnd();
    void theModelMayGoFirst();
};

namespace {

struct Rig : RegionWorld
{
    Rig()
    {
        regions = {{"FI", "Finland"}, {"SE", "Sweden"}, {"NO", "Norway"}};
        installed = {{"FI", {"0/1/a.cdt", "0/1/b.cdt"}}, {"SE", {"0/1/b.cdt"}}};
        writeFile(data.tileFolder() + text("/0/1/a.cdt"), QByteArray(100, 'a'));
        writeFile(data.tileFolder() + text("/0/1/b.cdt"), QByteArray(23, 'b'));
        load();
        model = std::make_unique<RegionModel>(catalog.get(), nullptr);
        settle(*model);
        preview.setRegions(model.get());
    }

    /** The figures, once they are there. */
    QString figures()
    {
        if (!QTest::qWaitFor([this] { return preview.ready(); }))
            return text("never ready");
        return text("%1 files, %2 bytes go; %3 files, %4 bytes stay for %5")
            .arg(preview.freedFiles())
            .arg(preview.freedBytes())
            .arg(preview.keptFiles())
            .arg(preview.keptBytes())
            .arg(preview.neededBy().join(QLatin1Char(' ')));
    }

    std::unique_ptr<RegionModel> model;
    RemovalPreview preview;
};

const char Nothing[] = "0 files, 0 bytes go; 0 files, 0 bytes stay for ";

} // namespace

void RemovalPreviewTest::theFilesAreCountedInTheBackground()
{
    Rig rig;
    QSignalSpy changed(&rig.preview, &RemovalPreview::changed);

    rig.preview.setRegionId(text("FI"));

    QVERIFY(!rig.preview.ready()); // The event loop must turn first.
    QCOMPARE(rig.preview.freedFiles(), 0);
    QCOMPARE(rig.figures(), text("1 files, 100 bytes go; 1 files, 23 bytes stay for SE"));
    QCOMPARE(changed.count(), 1);
}

void RemovalPreviewTest::whatIsNotInstalledFreesNothing()
{
    Rig rig;

    rig.preview.setRegionId(text("NO"));
    QCOMPARE(rig.figures(), text(Nothing));
    rig.preview.setRegionId(text("XX"));
    QCOMPARE(rig.figures(), text(Nothing));
    rig.preview.setRegionId(QString());
    QVERIFY(!rig.preview.ready());
}

void RemovalPreviewTest::anotherRegionHasOtherFigures()
{
    Rig rig;
    rig.preview.setRegionId(text("FI"));

    rig.preview.setRegionId(text("SE")); // while the first is being counted
    QCOMPARE(rig.figures(), text("0 files, 0 bytes go; 1 files, 23 bytes stay for FI"));
    rig.preview.setRegionId(text("FI"));

    QVERIFY(!rig.preview.ready()); // Those of the last one are not shown for this one.
    QCOMPARE(rig.preview.keptFiles(), 0);
    QCOMPARE(rig.figures(), text("1 files, 100 bytes go; 1 files, 23 bytes stay for SE"));
}

void RemovalPreviewTest::afterALoadItIsCountedAnew()
{
    Rig rig;
    rig.preview.setRegionId(text("FI"));
    rig.figures();

    rig.catalog->deleteInstalledRegion(text("SE"));
    rig.catalog->updateCatalog();
    settle(*rig.model);

    QTRY_COMPARE(rig.figures(), text("2 files, 123 bytes go; 0 files, 0 bytes stay for "));
}

void RemovalPreviewTest::duringALoadItWaitsForTheEnd()
{
    Rig rig;
    rig.catalog->updateCatalog();
    QVERIFY(rig.model->loading());

    rig.preview.setRegionId(text("FI"));
    QVERIFY(!rig.preview.ready());

    QCOMPARE(rig.figures(), text("1 files, 100 bytes go; 1 files, 23 bytes stay for SE"));
}

void RemovalPreviewTest::theModelMayGoFirst()
{
    Rig rig;
    rig.preview.setRegionId(text("FI"));

    rig.model.reset();
    rig.preview.setRegionId(text("SE"));
    QCoreApplication::processEvents();

    QVERIFY(!rig.preview.regions());
    QVERIFY(!rig.preview.ready());
}

QTEST_GUILESS_MAIN(RemovalPreviewTest)
#include "tst_removalpreview.moc"
