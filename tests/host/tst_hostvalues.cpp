// SPDX-License-Identifier: MIT
// The values that the programs show and compare.
#include "host/shared/attempttag.h"
#include "host/shared/enginesession.h"
#include "host/shared/regionstatus.h"
#include "host/shared/tilelist.h"
#include "host/shared/transfermeter.h"
#include "plugin/vexa.h"
#include "testutils/archivebuilder.h"
#include "testutils/temporaryhome.h"
#include <QDir>
#include <QSettings>
#include <QtTest>

class HostValuesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { home = std::make_unique<TemporaryHome>(); }
    void cleanup() { home.reset(); }

    void tagsTellAttemptsApart();
    void tilesAreCleanedOfFoldersDotsAndRepetitions();
    void contentPathsBecomeArchivePaths();
    void emptyingAFolderKeepsTheFolderAndLinkTargets();
    void theMeterTellsSpeedAndTime();
    void theMeterStartsAnewWhenBytesGoBack();
    void sentencesSayWhereARegionStands_data();
    void sentencesSayWhereARegionStands();
    void namesOfStatesAreFixed();
    void baseAddressesAreCheckedAndEndInASlash();
    void theConfiguredServerIsTheApplicationsOne();

private:
    std::unique_ptr<TemporaryHome> home;
};

void HostValuesTest::tagsTellAttemptsApart()
{
    const QString tagged = AttemptTag::tagged(QStringLiteral("http://h/a b.zip?x=1"), 12);

    QCOMPARE(tagged, QStringLiteral("http://h/a%20b.zip?x=1#12"));
    QCOMPARE(AttemptTag::of(tagged), 12);
    QCOMPARE(AttemptTag::of(QUrl(tagged).toString()), 12); // as the engine's signals have it
    QCOMPARE(AttemptTag::untagged(tagged), QStringLiteral("http://h/a%20b.zip?x=1"));
    QCOMPARE(AttemptTag::of(QStringLiteral("http://h/a.zip")), 0);
    QCOMPARE(AttemptTag::of(QString()), 0);
}

void HostValuesTest::tilesAreCleanedOfFoldersDotsAndRepetitions()
{
    const QStringList entries {QStringLiteral("./"),          QStringLiteral("a/"),
                               QStringLiteral("./a/3/x.cdt"), QStringLiteral("a/3/x.cdt"),
                               QStringLiteral("README"),      QStringLiteral("b/odd.cdt/"),
                               QStringLiteral("a//3/y.cdt")};

    QCOMPARE(TileList::tiles(entries),
             QStringList({QStringLiteral("a/3/x.cdt"), QStringLiteral("a/3/y.cdt")}));
}

void HostValuesTest::contentPathsBecomeArchivePaths()
{
    QCOMPARE(TileList::plain(QStringLiteral("\\a\\3\\x.cdt")), QStringLiteral("a/3/x.cdt"));
    QCOMPARE(TileList::plain(QStringLiteral("a/3/x.cdt")), QStringLiteral("a/3/x.cdt"));
    QCOMPARE(TileList::plain(QStringLiteral("/a/./3//x.cdt")), QStringLiteral("a/3/x.cdt"));
    QCOMPARE(TileList::plain(QString()), QString());
}

void HostValuesTest::emptyingAFolderKeepsTheFolderAndLinkTargets()
{
    const QString folder = home->path() + QLatin1String("/full");
    const QString outside = home->path() + QLatin1String("/outside");
    TestFile::write(folder + QLatin1String("/a/b.cdt"), "x");
    TestFile::write(folder + QLatin1String("/.hidden"), "x");
    TestFile::write(outside + QLatin1String("/kept"), "x");
    QVERIFY(QFile::link(outside, folder + QLatin1String("/link")));

    QVERIFY(TileList::empty(folder));

    QVERIFY(QDir(folder).exists());
    QVERIFY(QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
    QVERIFY(QFile::exists(outside + QLatin1String("/kept")));
}

void HostValuesTest::theMeterTellsSpeedAndTime()
{
    TransferMeter meter;
    QCOMPARE(meter.bytesPerSecond(), qint64(0));
    QCOMPARE(meter.remainingMs(1000), qint64(-1));

    meter.addAt(5000, 0); // there from an earlier run: counts for no speed
    QCOMPARE(meter.remainingMs(10000), qint64(-1));
    meter.addAt(6000, 1000);
    meter.addAt(7000, 2000);

    QCOMPARE(meter.bytesPerSecond(), qint64(1000));
    QCOMPARE(meter.remainingMs(10000), qint64(3000));
    QCOMPARE(meter.remainingMs(7000), qint64(0));
    QCOMPARE(meter.remainingMs(0), qint64(-1));

    for (int second = 3; second <= 30; ++second)
        meter.addAt(7000 + (second - 2) * 500, second * 1000);
    QCOMPARE(meter.bytesPerSecond(), qint64(500)); // the start is forgotten
    meter.restart();
    QCOMPARE(meter.bytesPerSecond(), qint64(0));
}

void HostValuesTest::theMeterStartsAnewWhenBytesGoBack()
{
    TransferMeter meter;
    meter.addAt(1000, 0);
    meter.addAt(9000, 1000);

    meter.addAt(100, 2000);

    QCOMPARE(meter.bytesPerSecond(), qint64(0));
}

void HostValuesTest::sentencesSayWhereARegionStands_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("remaining");
    QTest::addColumn<QString>("sentence");
    const auto row = [](const char *name, RegionState state, qint64 bytes, qint64 total,
                        qint64 remaining, const char *sentence) {
        QTest::newRow(name) << int(state) << bytes << total << remaining
                            << QString::fromLatin1(sentence);
    };
    row("not installed", RegionState::NotInstalled, 0, 0, -1, "Not installed");
    row("queued", RegionState::Queued, 0, 0, -1, "Waiting for its turn");
    row("begun", RegionState::Downloading, 0, 0, -1, "Downloading");
    row("no total", RegionState::Downloading, 500, 0, -1, "Downloading, 500 bytes");
    row("no time", RegionState::Downloading, 34, 100, -1, "Downloading 34 %");
    row("time", RegionState::Downloading, 34, 100, 120000, "Downloading 34 %, 2 min left");
    row("seconds", RegionState::Downloading, 34, 100, 3000, "Downloading 34 %, 3 s left");
    row("hours", RegionState::Downloading, 34, 100, 3900000, "Downloading 34 %, 1 h 5 min left");
    row("more than all", RegionState::Downloading, 300, 100, -1, "Downloading 100 %");
    row("unpacking", RegionState::Unpacking, 0, 0, -1, "Unpacking");
    row("unpacking half", RegionState::Unpacking, 1, 2, -1, "Unpacking 50 %");
    row("moving", RegionState::Moving, 0, 0, -1, "Putting the files into place");
    row("recording", RegionState::Recording, 0, 0, -1, "Finishing");
    row("installed", RegionState::Installed, 0, 0, -1, "Installed");
    row("cancelled", RegionState::Cancelled, 0, 0, -1, "Cancelled");
}

void HostValuesTest::sentencesSayWhereARegionStands()
{
    QFETCH(int, state);
    QFETCH(QString, sentence);
    QFETCH(qint64, bytes);
    QFETCH(qint64, total);
    QFETCH(qint64, remaining);
    RegionStatus status;
    status.state = RegionState(state);
    status.bytes = bytes;
    status.total = total;
    status.remainingMs = remaining;

    QCOMPARE(RegionWords::sentence(status), sentence);
}

void HostValuesTest::namesOfStatesAreFixed()
{
    const QStringList expected {QStringLiteral("notInstalled"), QStringLiteral("queued"),
                                QStringLiteral("waiting"),      QStringLiteral("downloading"),
                                QStringLiteral("unpacking"),    QStringLiteral("moving"),
                                QStringLiteral("recording"),    QStringLiteral("installed"),
                                QStringLiteral("failed"),       QStringLiteral("cancelled")};
    QStringList names;
    for (int state = 0; state < int(expected.size()); ++state)
        names.append(RegionWords::name(RegionState(state)));

    QCOMPARE(names, expected);
    QCOMPARE(RegionWords::name(WaitReason::None), QString());
    QVERIFY(RegionWords::reason(WaitReason::None).isEmpty());
    RegionStatus failed;
    failed.state = RegionState::Failed;
    failed.reason = QStringLiteral("It rained.");
    QCOMPARE(RegionWords::sentence(failed), failed.reason);
}

void HostValuesTest::baseAddressesAreCheckedAndEndInASlash()
{
    QCOMPARE(EngineSession::checkedBaseUri(QStringLiteral("http://h/map5")),
             QStringLiteral("http://h/map5/"));
    QCOMPARE(EngineSession::checkedBaseUri(QStringLiteral("https://h/map5/")),
             QStringLiteral("https://h/map5/"));
    for (const char *bad : {"", "h/map5", "ftp://h/", "http:///x", "file:///etc/"})
        QCOMPARE(EngineSession::checkedBaseUri(QLatin1String(bad)), QString());
}

void HostValuesTest::theConfiguredServerIsTheApplicationsOne()
{
    QCOMPARE(EngineSession::configuredBaseUri(), VEXA::defaultBaseUri());
    {
        QSettings settings(QStringLiteral("Orvel"), QStringLiteral("Maps"));
        settings.setValue(QStringLiteral("vexa/vexaBaseURI"), QStringLiteral("http://other/map5"));
    }
    QCOMPARE(EngineSession::configuredBaseUri(), QStringLiteral("http://other/map5/"));
}

QTEST_GUILESS_MAIN(HostValuesTest)
#include "tst_hostvalues.moc"
