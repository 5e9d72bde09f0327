// SPDX-License-Identifier: MIT
#include "archive/unpacking.h"
#include "testutils/archivebuilder.h"
#include <QtTest>

namespace {

constexpr int Block = 400960;

} // namespace

class ArchiveContainedTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void namesAreUsedAsGivenUnlessContained();
    void absoluteNameIsUsedAsGivenUnlessContained();
    void linkIsFollowedUnlessContained();
    void entryThatLandsOutsideEndsAContainedUnpack_data();
    void entryThatLandsOutsideEndsAContainedUnpack();
    void linkThatLeadsOutEndsAContainedUnpack_data();
    void linkThatLeadsOutEndsAContainedUnpack();
    void linkToNowhereIsNotWrittenThrough_data();
    void linkToNowhereIsNotWrittenThrough();
    void linkThatStaysInsideMayBePassed();
    void linkFromTheSameArchiveIsNotMade();
    void destinationItselfMayBeALink();
    void namesThatStayInsideAreResolved();
    void deepFoldersAreUnpacked();
    void linkIsFoundWhateverWasLookedAtBefore();
    void skippedEntryMayHaveAnyName();
    void purgeOfAContainedUnpackDoesNotFollowLinksOut();
    void purgeOfADestinationThatIsGoneDoesNothing();
    void linksInACircleAreNotFollowed();
    void emptyNameIsAWriteError_data();
    void emptyNameIsAWriteError();
    void settingHoldsFromTheNextUnpackOn();

private:
    QString tar(const RawTar &tar)
    {
        return m_builder->write(QStringLiteral("a.tar"), tar.bytes());
    }

    std::unique_ptr<ArchiveBuilder> m_builder;
};

void ArchiveContainedTest::init()
{
    m_builder = std::make_unique<ArchiveBuilder>();
}

void ArchiveContainedTest::namesAreUsedAsGivenUnlessContained()
{
    Unpacking unpacking(
        tar(RawTar().add("../beside/f", "data").add("../d/", "", RawTar::Folder).add("g", "data")));

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.foundOutside(),
             (QStringList {QStringLiteral("beside/"), QStringLiteral("beside/f"),
                           QStringLiteral("d/")}));
    QCOMPARE(unpacking.archive.getUnpackedFileList().first(), QStringLiteral("../beside/f"));
    unpacking.archive.purge();
    QCOMPARE(unpacking.foundOutside(), QStringList());
}

void ArchiveContainedTest::absoluteNameIsUsedAsGivenUnlessContained()
{
    const QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(QStringLiteral("d/f"));
    Unpacking unpacking(tar(RawTar().add(target.toUtf8(), "data")));

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    QCOMPARE(TestFile::read(target), QByteArray("data"));
    QCOMPARE(unpacking.found(), QStringList());
    QCOMPARE(unpacking.archive.getUnpackedFileList(), QStringList {target});
}

void ArchiveContainedTest::linkIsFollowedUnlessContained()
{
    const QTemporaryDir elsewhere;
    Unpacking unpacking(tar(RawTar().add("link/f", "data")));
    QVERIFY(QDir().mkpath(unpacking.folder()));
    QVERIFY(QFile::link(elsewhere.path(), unpacking.path(QStringLiteral("link"))));

    QVERIFY(unpacking.run());

    QCOMPARE(TestFile::read(elsewhere.filePath(QStringLiteral("f"))), QByteArray("data"));
}

void ArchiveContainedTest::entryThatLandsOutsideEndsAContainedUnpack_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("folder");
    const QList<QByteArray> names = {
        "/vexa-test-absolute/f", "../f", "../out/f", "a/../../f", "./../f", "..",
        "a/b/../../../c/d",      "//f"};
    for (const QByteArray &name : names) {
        QTest::newRow(QByteArray("file " + name).constData()) << name << false;
        QTest::newRow(QByteArray("folder " + name).constData()) << name + '/' << true;
    }
}

void ArchiveContainedTest::entryThatLandsOutsideEndsAContainedUnpack()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, folder);
    Unpacking unpacking(
        tar(RawTar()
                .add("first", "data")
                .add(name, folder ? "" : "data", folder ? RawTar::Folder : RawTar::File)
                .add("last", "data")));
    unpacking.archive.setContained(true);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QCOMPARE(unpacking.archive.errorString(),
             QStringLiteral("Entry leads out of the destination: ") + QString::fromUtf8(name));
    QCOMPARE(unpacking.archive.getUnpackedFileList(), QStringList {QStringLiteral("first")});
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("first")});
    QCOMPARE(unpacking.foundOutside(), QStringList());
    QVERIFY(!QFileInfo::exists(QStringLiteral("/vexa-test-absolute")));
    QCOMPARE(unpacking.steps().size(), 1); // not even read
}

void ArchiveContainedTest::linkThatLeadsOutEndsAContainedUnpack_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("folder");
    QTest::newRow("file behind it") << QByteArray("link/f") << false;
    QTest::newRow("file in a new folder behind it") << QByteArray("link/new/f") << false;
    QTest::newRow("folder behind it") << QByteArray("link/new/") << true;
    QTest::newRow("folder of its name") << QByteArray("link/") << true;
    QTest::newRow("file of its name") << QByteArray("link") << false;
    QTest::newRow("file behind it by a detour") << QByteArray("./x/../link/f") << false;
}

void ArchiveContainedTest::linkThatLeadsOutEndsAContainedUnpack()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, folder);
    const QTemporaryDir elsewhere;
    Unpacking unpacking(
        tar(RawTar().add(name, folder ? "" : "data", folder ? RawTar::Folder : RawTar::File)));
    unpacking.archive.setContained(true);
    QVERIFY(QDir().mkpath(unpacking.folder()));
    QVERIFY(QFile::link(elsewhere.path(), unpacking.path(QStringLiteral("link"))));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QVERIFY(QDir(elsewhere.path()).isEmpty());
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("link")});
}

void ArchiveContainedTest::linkToNowhereIsNotWrittenThrough_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("folder");
    QTest::newRow("file behind it") << QByteArray("link/f") << false;
    QTest::newRow("file of its name") << QByteArray("link") << false;
    QTest::newRow("folder of its name") << QByteArray("link/") << true;
}

void ArchiveContainedTest::linkToNowhereIsNotWrittenThrough()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, folder);
    const QTemporaryDir elsewhere;
    Unpacking unpacking(
        tar(RawTar().add(name, folder ? "" : "data", folder ? RawTar::Folder : RawTar::File)));
    unpacking.archive.setContained(true);
    QVERIFY(QDir().mkpath(unpacking.folder()));
    QVERIFY(QFile::link(elsewhere.filePath(QStringLiteral("missing")),
                        unpacking.path(QStringLiteral("link"))));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QVERIFY(QDir(elsewhere.path()).isEmpty());
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("link")});
}

void ArchiveContainedTest::linkThatStaysInsideMayBePassed()
{
    Unpacking unpacking(tar(RawTar().add("link/f", "data")));
    unpacking.archive.setContained(true);
    QVERIFY(QDir().mkpath(unpacking.path(QStringLiteral("real"))));
    QVERIFY(QFile::link(QStringLiteral("real"), unpacking.path(QStringLiteral("link"))));

    QVERIFY(unpacking.run());

    QCOMPARE(TestFile::read(unpacking.path(QStringLiteral("real/f"))), QByteArray("data"));
}

void ArchiveContainedTest::linkFromTheSameArchiveIsNotMade()
{
    // The usual trick: first a link that leads out, then a file behind it.
    const QTemporaryDir elsewhere;
    Unpacking unpacking(tar(RawTar()
                                .add("link", "", RawTar::SymLink, elsewhere.path().toUtf8())
                                .add("link/f", "data")));
    unpacking.archive.setContained(true);

    QVERIFY(unpacking.run());

    QVERIFY(QDir(elsewhere.path()).isEmpty());
    QCOMPARE(unpacking.found(), (QStringList {QStringLiteral("link/"), QStringLiteral("link/f")}));
}

void ArchiveContainedTest::destinationItselfMayBeALink()
{
    const QTemporaryDir elsewhere;
    Unpacking unpacking(tar(RawTar().add("d/f", "data")));
    unpacking.archive.setContained(true);
    QVERIFY(QFile::link(elsewhere.path(), unpacking.folder()));

    QVERIFY(unpacking.run());

    QCOMPARE(TestFile::read(elsewhere.filePath(QStringLiteral("d/f"))), QByteArray("data"));
    unpacking.archive.purge();
    QVERIFY(QDir(elsewhere.path()).isEmpty());
}

void ArchiveContainedTest::namesThatStayInsideAreResolved()
{
    Unpacking unpacking(tar(RawTar()
                                .add("./", "", RawTar::Folder)
                                .add("./a", "1")
                                .add("no/../b", "2")
                                .add("c/./d//e", "3")
                                .add("x/y/../", "", RawTar::Folder)
                                .add("...", "4")
                                .add("..f", "5")
                                .add(":/g", "6")));
    unpacking.archive.setContained(true);

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    QCOMPARE(unpacking.found(),
             (QStringList {QStringLiteral("..."), QStringLiteral("..f"), QStringLiteral(":/"),
                           QStringLiteral(":/g"), QStringLiteral("a"), QStringLiteral("b"),
                           QStringLiteral("c/"), QStringLiteral("c/d/"), QStringLiteral("c/d/e"),
                           QStringLiteral("x/")}));
    QCOMPARE(unpacking.archive.getUnpackedFileList().at(2), QStringLiteral("no/../b"));
    unpacking.archive.purge();
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveContainedTest::deepFoldersAreUnpacked()
{
    const QString deep = QStringLiteral("folder/").repeated(300);
    m_builder->addFile(deep + QLatin1Char('f'), "data");
    Unpacking unpacking(m_builder->make(QStringLiteral("a.pax")));
    unpacking.archive.setContained(true);

    QVERIFY2(unpacking.run(), qPrintable(unpacking.archive.errorString()));

    QCOMPARE(TestFile::read(unpacking.path(deep + QLatin1Char('f'))), QByteArray("data"));
    unpacking.archive.purge();
    QCOMPARE(unpacking.found(), QStringList());
}

void ArchiveContainedTest::linkIsFoundWhateverWasLookedAtBefore()
{
    // Names that begin alike, so that a part of them is known already when the link comes.
    const QTemporaryDir elsewhere;
    for (const char *before : {"abc/f", "a/f", "ab.d/f", "x"}) {
        Unpacking unpacking(tar(RawTar().add(before, "data").add("ab/f", "data")));
        unpacking.archive.setContained(true);
        QVERIFY(QDir().mkpath(unpacking.folder()));
        QVERIFY(QFile::link(elsewhere.path(), unpacking.path(QStringLiteral("ab"))));

        QVERIFY(!unpacking.run());

        QCOMPARE(unpacking.archive.getUnpackedFileList(),
                 QStringList {QString::fromLatin1(before)});
        QVERIFY(QDir(elsewhere.path()).isEmpty());
    }
}

void ArchiveContainedTest::skippedEntryMayHaveAnyName()
{
    Unpacking unpacking(tar(RawTar().add("../link", "", RawTar::SymLink, "/etc").add("f", "data")));
    unpacking.archive.setContained(true);

    QVERIFY(unpacking.run());

    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("f")});
    QCOMPARE(unpacking.foundOutside(), QStringList());
}

void ArchiveContainedTest::purgeOfAContainedUnpackDoesNotFollowLinksOut()
{
    const QTemporaryDir elsewhere;
    TestFile::write(elsewhere.filePath(QStringLiteral("f")), "not ours");
    QVERIFY(QDir(elsewhere.path()).mkdir(QStringLiteral("e")));
    Unpacking unpacking(tar(RawTar().add("d/f", "data").add("d/e/", "", RawTar::Folder)));
    unpacking.archive.setContained(true);
    QVERIFY(unpacking.run());
    QVERIFY(QDir(unpacking.path(QStringLiteral("d"))).removeRecursively());
    QVERIFY(QFile::link(elsewhere.path(), unpacking.path(QStringLiteral("d"))));

    unpacking.archive.purge();

    QCOMPARE(TestFile::read(elsewhere.filePath(QStringLiteral("f"))), QByteArray("not ours"));
    QVERIFY(QFileInfo::exists(elsewhere.filePath(QStringLiteral("e"))));
}

void ArchiveContainedTest::purgeOfADestinationThatIsGoneDoesNothing()
{
    Unpacking unpacking(tar(RawTar().add("d/f", "data")));
    unpacking.archive.setContained(true);
    QVERIFY(unpacking.run());
    const QString moved = unpacking.folder() + QLatin1String("-moved");
    QVERIFY(QDir().rename(unpacking.folder(), moved));

    unpacking.archive.purge();

    QCOMPARE(TestFile::read(moved + QLatin1String("/d/f")), QByteArray("data"));
}

void ArchiveContainedTest::linksInACircleAreNotFollowed()
{
    Unpacking unpacking(tar(RawTar().add("one/f", "data")));
    unpacking.archive.setContained(true);
    QVERIFY(QDir().mkpath(unpacking.folder()));
    QVERIFY(QFile::link(QStringLiteral("two"), unpacking.path(QStringLiteral("one"))));
    QVERIFY(QFile::link(QStringLiteral("one"), unpacking.path(QStringLiteral("two"))));

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
}

void ArchiveContainedTest::emptyNameIsAWriteError_data()
{
    QTest::addColumn<bool>("contained");
    QTest::newRow("contained") << true;
    QTest::newRow("not contained") << false;
}

void ArchiveContainedTest::emptyNameIsAWriteError()
{
    QFETCH(bool, contained);
    Unpacking unpacking(tar(RawTar().add("first", "data").add(".", "data")));
    unpacking.archive.setContained(contained);

    QVERIFY(!unpacking.run());

    QCOMPARE(unpacking.results(), QList<int> {4});
    QCOMPARE(unpacking.found(), QStringList {QStringLiteral("first")});
}

void ArchiveContainedTest::settingHoldsFromTheNextUnpackOn()
{
    Unpacking unpacking(tar(RawTar().add("1", QByteArray(2 * Block, 'x')).add("../2", "data")));
    connect(&unpacking.archive, &VexaArchive::progress, &unpacking.archive,
            [&unpacking] { unpacking.archive.setContained(true); });

    QVERIFY(unpacking.run());

    QVERIFY(unpacking.archive.isContained());
    unpacking.archive.purge();
    QVERIFY(!unpacking.run());
    QCOMPARE(unpacking.results(), (QList<int> {0, 4}));
}

QTEST_GUILESS_MAIN(ArchiveContainedTest)
#include "tst_archivecontained.moc"
