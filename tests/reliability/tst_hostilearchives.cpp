// SPDX-License-Identifier: MIT
/*
 * Archives that mean harm, in each format that can say it: what becomes of them as names are used
 * by default, what in contained mode, and what a region comes to whose archive is one of them.
 *
 * Around the folder that is unpacked into lie files that nobody may touch. In contained mode
 * nothing there changes, whatever the archive says.
 */
#include "archive/unpacking.h"
#include "hostilecases.h"
#include "installerrig.h"
#include "testutils/archivebuilder.h"
#include "testutils/reporttable.h"
#include "testutils/smalldisk.h"
#include <QtTest>
#include <sys/stat.h>

using HostileArchive::Format;
using HostileCases::Case;
using HostileCases::Outcome;

namespace {

constexpr qint64 MiB = 1024 * 1024;
const QString Fi = QStringLiteral("FI");

/** What lies beside the folder that is unpacked into: names with types, modes and contents. */
using Surroundings = QMap<QString, QByteArray>;

Surroundings surroundingsOf(const Unpacking &unpacking)
{
    Surroundings all;
    for (const QString &name : unpacking.foundOutside()) {
        const QString path = unpacking.place() + QLatin1Char('/') + name;
        struct stat status = {};
        lstat(QFile::encodeName(path).constData(), &status);
        QByteArray text = QByteArray::number(status.st_mode, 8);
        if (S_ISREG(status.st_mode))
            text += ' ' + QByteArray::number(qint64(status.st_mtim.tv_sec)) + '.'
                + QByteArray::number(qint64(status.st_mtim.tv_nsec)) + ' ' + TestFile::read(path);
        all.insert(name, text);
    }
    return all;
}

/** The names whose entries differ. */
QStringList changed(const Surroundings &before, const Surroundings &after)
{
    QStringList names;
    for (auto entry = after.begin(); entry != after.end(); ++entry) {
        if (!before.contains(entry.key()) || before.value(entry.key()) != entry.value())
            names.append(entry.key());
    }
    for (auto entry = before.begin(); entry != before.end(); ++entry) {
        if (!after.contains(entry.key()))
            names.append(entry.key());
    }
    return names;
}

QString wordsFor(const VexaArchive &archive)
{
    switch (archive.error()) {
    case VexaArchive::NoError:
        return QStringLiteral("unpacked");
    case VexaArchive::OpenError:
        return QStringLiteral("refused: no archive");
    case VexaArchive::IterationError:
        return QStringLiteral("refused: cannot be read");
    case VexaArchive::ReadError:
        return QStringLiteral("refused: damaged data");
    case VexaArchive::CancelledError:
        return QStringLiteral("cancelled");
    case VexaArchive::WriteError:
        break;
    }
    const QString text = archive.errorString();
    const QList<QPair<QString, QString>> words = {
        {QStringLiteral("Entry leads out"), QStringLiteral("refused: leads out")},
        {QStringLiteral("Could not rename"), QStringLiteral("refused: the name cannot be used")},
        {QStringLiteral("Could not create parent"),
         QStringLiteral("refused: its folder cannot be made")},
        {QStringLiteral("Could not create directory"),
         QStringLiteral("refused: the folder cannot be made")},
        {QStringLiteral("Could not write"), QStringLiteral("refused: the disk is full")}};
    for (const auto &word : words) {
        if (text.startsWith(word.first))
            return word.second;
    }
    return text;
}

qint64 zeros()
{
    return ReportTable::longForm() ? 10000000000 : 64000000;
}

/** Everything below the home folder and the documents, apart from folders: empty ones may stay. */
QStringList namesIn(const TemporaryHome &home)
{
    QStringList names;
    for (const QString &folder : {home.path(), home.myDocs()}) {
        QDirIterator entries(folder, QDir::Files | QDir::Hidden | QDir::System,
                             QDirIterator::Subdirectories);
        while (entries.hasNext())
            names.append(entries.next());
    }
    names.sort();
    return names;
}

QByteArray difference(const QStringList &before, const QStringList &after)
{
    QByteArray text;
    for (const QString &name : after) {
        if (!before.contains(name))
            text += " +" + name.toUtf8();
    }
    for (const QString &name : before) {
        if (!after.contains(name))
            text += " -" + name.toUtf8();
    }
    return text;
}

/**
 * Clears the tile folder of what no region owns and no removal takes: files that are no tiles, and
 * folders. False if there is a tile.
 */
bool clearForeignFiles(const QString &tileFolder)
{
    QDirIterator tiles(tileFolder, {QStringLiteral("*.cdt")}, QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    return !tiles.hasNext() && QDir(tileFolder).removeRecursively() && QDir().mkpath(tileFolder);
}

QString listed(QStringList names)
{
    constexpr int Most = 4;
    if (names.isEmpty())
        return QStringLiteral("nothing");
    if (names.size() > Most)
        return QStringLiteral("%1 names").arg(names.size());
    for (QString &name : names) {
        name.replace(QLatin1Char('\n'), QLatin1String("(line end)"));
        if (name.size() > 60)
            name = name.left(10) + QStringLiteral("... of %1 bytes").arg(name.toUtf8().size());
    }
    return names.join(QLatin1String(", "));
}

} // namespace

class HostileArchivesTest : public QObject
{
    Q_OBJECT

public:
    HostileArchivesTest()
        : m_cases(HostileCases::cases())
    { }

private Q_SLOTS:
    void meetsItsEnd_data();
    void meetsItsEnd();
    void zerosFillNoMoreThanTheDisk_data();
    void zerosFillNoMoreThanTheDisk();
    void aRegionIsWholeOrFailsInWords();
    void cleanupTestCase();

private:
    /** What the unpack came to, in the words of the table. */
    QString outcome(const Case &hostile, Format format, bool contained);
    bool installs(InstallerRig &rig);

    const QList<Case> m_cases;
    ReportTable m_table {QStringLiteral("hostilearchives"),
                         {QStringLiteral("Archive"), QStringLiteral("Format"),
                          QStringLiteral("By default"), QStringLiteral("In contained mode")}};
    int m_rows = 0;
};

void HostileArchivesTest::meetsItsEnd_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("format");
    const QTemporaryDir scratch;
    for (int i = 0; i < m_cases.size(); ++i) {
        for (Format format : HostileArchive::Formats) {
            if (m_cases.at(i).write(scratch.filePath(QStringLiteral("a")), format, scratch.path()))
                QTest::addRow("%s, %s", m_cases.at(i).name,
                              qPrintable(HostileArchive::nameOf(format)))
                    << i << int(format);
        }
    }
}

QString HostileArchivesTest::outcome(const Case &hostile, Format format, bool contained)
{
    const QTemporaryDir archiveFolder;
    const QString path = archiveFolder.filePath(QStringLiteral("a"));
    Unpacking unpacking(path);
    hostile.write(path, format, unpacking.place());
    TestFile::write(unpacking.place() + QLatin1String("/keep/map.cdt"), "not to be touched");
    TestFile::write(unpacking.place() + QLatin1String("/keep.txt"), "nor this");
    const Surroundings before = surroundingsOf(unpacking);
    unpacking.archive.setContained(contained);

    unpacking.run();

    QString text = wordsFor(unpacking.archive);
    const QStringList outside = changed(before, surroundingsOf(unpacking));
    if (!outside.isEmpty())
        text += QLatin1String("; outside: ") + listed(outside);
    QStringList inside = unpacking.found();
    inside.removeAll(QStringLiteral("0/"));
    if (inside.isEmpty())
        text += QLatin1String("; nothing kept");
    inside.removeAll(QStringLiteral("0/good.cdt"));
    if (!inside.isEmpty())
        text += QLatin1String("; inside: ") + listed(inside);
    else if (text == QLatin1String("unpacked"))
        text = QStringLiteral("skipped");
    for (const QString &name : unpacking.found()) {
        struct stat status = {};
        lstat(QFile::encodeName(unpacking.path(name)).constData(), &status);
        if (!S_ISDIR(status.st_mode) && status.st_mode != (S_IFREG | 0600))
            text += QStringLiteral("; %1 has mode %2").arg(name).arg(status.st_mode, 0, 8);
    }
    if (TestFile::read(unpacking.path(QStringLiteral("0/good.cdt"))) == "bad")
        text += QLatin1String("; the second came in place of the first");
    unpacking.archive.purge();
    if (!unpacking.found().isEmpty() || surroundingsOf(unpacking) != before)
        text += QLatin1String("; cannot be taken back");
    return text;
}

void HostileArchivesTest::meetsItsEnd()
{
    QFETCH(int, number);
    QFETCH(int, format);
    const Case &hostile = m_cases.at(number);
    const Outcome expected = hostile.expected(Format(format));

    const QString byDefault = outcome(hostile, Format(format), false);
    const QString contained = outcome(hostile, Format(format), true);

    m_table.addRow({QString::fromUtf8(hostile.name), HostileArchive::nameOf(Format(format)),
                    byDefault, contained});
    ++m_rows;
    QVERIFY(!contained.contains(QLatin1String("outside")));
    QCOMPARE(byDefault, QString::fromUtf8(expected.byDefault));
    QCOMPARE(contained, QString::fromUtf8(expected.contained));
}

void HostileArchivesTest::zerosFillNoMoreThanTheDisk_data()
{
    QTest::addColumn<int>("format");
    for (Format format : HostileArchive::Formats)
        QTest::newRow(qPrintable(HostileArchive::nameOf(format))) << int(format);
}

void HostileArchivesTest::zerosFillNoMoreThanTheDisk()
{
    QFETCH(int, format);
    const QTemporaryDir archiveFolder;
    const QString path = archiveFolder.filePath(QStringLiteral("a"));
    HostileArchive::writeZeros(path, Format(format), zeros());
    QVERIFY(QFileInfo(path).size() < zeros() / 500);
    QStringList outcomes;
    for (bool contained : {false, true}) {
        const SmallDisk disk(8 * MiB);
        const qint64 freeBefore = disk.freeBytes();
        Unpacking unpacking(path, disk.path());
        unpacking.archive.setContained(contained);

        QVERIFY(!unpacking.run());

        QCOMPARE(unpacking.found(), QStringList());
        QCOMPARE(disk.freeBytes(), freeBefore);
        outcomes.append(wordsFor(unpacking.archive));
        QCOMPARE(outcomes.last(), QStringLiteral("refused: the disk is full"));
    }
    m_table.addRow({QStringLiteral("%1 MB of zeros in %2 KB")
                        .arg(zeros() / 1000000)
                        .arg(QFileInfo(path).size() / 1000),
                    HostileArchive::nameOf(Format(format)), outcomes.at(0), outcomes.at(1)});
    ++m_rows;
}

bool HostileArchivesTest::installs(InstallerRig &rig)
{
    if (!rig.installer().install(Fi))
        qFatal("%s", qPrintable(rig.installer().refusal()));
    QString state;
    const bool ended = QTest::qWaitFor(
        [&] {
            state = rig.state(Fi);
            return !rig.installer().busy()
                && (state == QLatin1String("installed") || state == QLatin1String("failed"));
        },
        60000);
    if (!ended)
        qFatal("the installation does not end: %s", qPrintable(state));
    return state == QLatin1String("installed");
}

void HostileArchivesTest::aRegionIsWholeOrFailsInWords()
{
    InstallerRig rig;
    rig.content.addRegion(Fi, QStringLiteral("Finland"), tilesOf({"0/good.cdt"}));
    rig.openSession().worker()->setUnpackPause(0);
    const auto remove = [&rig] {
        return rig.installer().remove(Fi)
            && QTest::qWaitFor([&rig] { return !rig.installer().busy(); }, 60000);
    };
    QVERIFY(installs(rig));
    QVERIFY(remove());
    const QStringList before = namesIn(rig.home);
    int installed = 0;
    int failed = 0;
    for (const Case &hostile : m_cases) {
        for (Format format : HostileArchive::Formats) {
            if (!hostile.write(rig.content.archivePath(Fi), format, rig.home.path()))
                continue;
            const QByteArray where =
                QByteArray(hostile.name) + ", " + HostileArchive::nameOf(format).toUtf8() + ": ";
            const bool harmless =
                !QByteArray(hostile.expected(format).contained).startsWith("refused");

            rig.refresh(); // An archive has to have the size that the catalogue gives.
            const bool whole = installs(rig);

            QVERIFY2(whole == harmless,
                     (where + rig.installer().sentence(Fi).toUtf8()).constData());
            QTRY_VERIFY(rig.session->downloads()->getRequests().isEmpty());
            if (whole) {
                QVERIFY(rig.isInstalled(Fi));
                ++installed;
                QVERIFY(remove());
                QVERIFY(clearForeignFiles(rig.tileFolder()));
            } else {
                const QString reason = rig.installer().reason(Fi);
                QVERIFY2(reason.contains(QLatin1String("could not be unpacked")),
                         (where + reason.toUtf8()).constData());
                QVERIFY(InstallerRig::recordedIds().isEmpty());
                ++failed;
            }
            const QStringList after = namesIn(rig.home);
            QVERIFY2(after == before, (where + difference(before, after)).constData());
        }
    }
    m_table.addNote(QStringLiteral("As the archive of a region, %1 of them end as a failed region "
                                   "that has left nothing, and %2 as an installed one, whose files "
                                   "that are no tiles stay when it is removed.")
                        .arg(failed)
                        .arg(installed));
    QVERIFY(failed > 20 && installed > 10);
}

void HostileArchivesTest::cleanupTestCase()
{
    // Not from a run of single rows.
    if (m_rows > m_cases.size())
        QVERIFY(m_table.save());
}

int main(int argc, char **argv)
{
    SmallDisk::allow();
    QCoreApplication application(argc, argv);
    // Thousands of small files, and nothing of them is to last.
    const SmallDisk memory(1024 * MiB);
    qputenv("TMPDIR", QFile::encodeName(memory.path()));
    HostileArchivesTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hostilearchives.moc"
