// SPDX-License-Identifier: MIT
#include "download/stepengine.h"
#include "plugin/vexasettings.h"
#include "testutils/archivebuilder.h"
#include "testutils/fakesystem.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString Url = QStringLiteral("http://server/map5/FI.zip");
const QString OtherUrl = QStringLiteral("http://server/map5/SE.zip");

const QString Started = QStringLiteral("progress(4, http://server/map5/FI.zip, FI, 0, 0, 0)");
const QString Finished = QStringLiteral("finished(4, http://server/map5/FI.zip, FI)");
const QString Failed = QStringLiteral("error(4, FI, 3, http://server/map5/FI.zip)");
const QString Dequeued = QStringLiteral("dequeued");

// The lines of a step without those that the loop around it writes.
QStringList stepLines(const LogCatcher &log)
{
    QStringList lines = log.texts();
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                               [](const QString &line) {
                                   return line.startsWith(QLatin1String("[INFO] Settings file: "))
                                       || line == QLatin1String("[INFO] Vexa thread exit");
                               }),
                lines.end());
    return lines;
}

QString inSettings(const char *key)
{
    const VexaSettings::Locker settings;
    return settings->value(QLatin1String(key)).toString();
}

QString commandLine(const QString &command, int result)
{
    return QStringLiteral("[INFO] Command ") + command
        + QStringLiteral(" returned: %1").arg(result);
}

} // namespace

class MoveTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aFoldersContentsGoToTheDestination();
    void aFolderMoveWritesItsLinesInOrder();
    void quotesPathsWhereTheShellNeedsIt_data();
    void quotesPathsWhereTheShellNeedsIt();
    void aLinkedSourceIsEmptiedBehindTheLink();
    void makesTheParentOfTheDestination();
    void saysSoIfTheParentCannotBeMade();
    void withoutAShellAFolderStaysUntouched();
    void aFailedCopyStillEmptiesTheSource();
    void aFailedRemovalIsAnError();
    void aFailedCopyAndRemovalAreTwoErrors();
    void leavesTheQueueBeforeTheSourceIsEmptied();
    void aFolderMoveCutShortIsDoneAgain();
    void aFolderReplacesOlderFilesWhole();

    void aDamagedRequestEmptiesNothing_data();
    void aDamagedRequestEmptiesNothing();

    void aFileGoesToTheDestination();
    void aFileMoveWritesItsLinesInOrder();
    void aFileReplacesAnOlderOne();
    void aDestinationWithASlashTakesTheFileUnderItsOwnName();
    void aFileMovesWithoutAShell();
    void aMissingFileIsAnErrorAndCostsNothing();
    void aSuspensionHidesNoFailure();
    void aFileDoesNotReplaceAFolder();
    void aFileWithoutADestinationStays();
    void aFileGoesToAnotherFileSystem_data();
    void aFileGoesToAnotherFileSystem();
    void noHalfFileHasTheFinalName();
    void aCopyThatFailsCostsNothing();
    void aCopyThatCannotBeRenamedCostsNothing();
    void aFileMoveCutShortBehindTheRenameIsDone();
    void aFileThatNeverCameIsNotTakenForDone();

    void aRequestOfAnEarlierRunClearsTheSavedFlag();
    void cancelDoesNotRemoveAnotherRegionsRequest();

private:
    QString path(const char *name) const;
    void write(const char *name, const QByteArray &bytes) const;
    QByteArray read(const char *name) const;
    void move(StepEngine &engine, const QString &source, const QString &destination);

    std::unique_ptr<TemporaryHome> m_home;
};

void MoveTest::init()
{
    m_home = std::make_unique<TemporaryHome>();
}

void MoveTest::cleanup()
{
    m_home.reset();
}

QString MoveTest::path(const char *name) const
{
    return m_home->myDocs() + QLatin1Char('/') + QLatin1String(name);
}

void MoveTest::write(const char *name, const QByteArray &bytes) const
{
    TestFile::write(path(name), bytes);
}

QByteArray MoveTest::read(const char *name) const
{
    return TestFile::read(path(name));
}

void MoveTest::move(StepEngine &engine, const QString &source, const QString &destination)
{
    engine.queue.enqueue(Step::move(QStringLiteral("FI"), source, destination, Url));
    engine.run();
}

void MoveTest::aFoldersContentsGoToTheDestination()
{
    write("from/a/3/3fa9.cdt", "new");
    write("from/b.cdt", "b");
    QVERIFY(QDir().mkpath(path("from/empty")));
    write("to/a/3/3fa9.cdt", "old");
    write("to/a/4/4.cdt", "another region's");
    StepEngine engine;

    move(engine, path("from"), path("to"));

    QCOMPARE(
        Step::found(path("to")),
        QStringList({QStringLiteral("a/"), QStringLiteral("a/3/"), QStringLiteral("a/3/3fa9.cdt"),
                     QStringLiteral("a/4/"), QStringLiteral("a/4/4.cdt"), QStringLiteral("b.cdt"),
                     QStringLiteral("empty/")}));
    QCOMPARE(read("to/a/3/3fa9.cdt"), QByteArray("new"));
    QCOMPARE(read("to/a/4/4.cdt"), QByteArray("another region's"));
    QVERIFY(QFileInfo(path("from")).isDir());
    QCOMPARE(Step::found(path("from")), QStringList());
    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(inSettings("requests/size"), QStringLiteral("0"));
}

void MoveTest::aFolderMoveWritesItsLinesInOrder()
{
    write("from/a.cdt", "a");
    QVERIFY(QDir().mkpath(path("to")));
    StepEngine engine;
    const LogCatcher log(L::Info);

    move(engine, path("from"), path("to"));

    QCOMPARE(
        stepLines(log),
        QStringList({QStringLiteral("[INFO] Moving: %1 to %2 at int DownloadManager::doMove()")
                         .arg(path("from"), path("to")),
                     QStringLiteral("[INFO] Shell is available"),
                     commandLine(QStringLiteral("cp -a %1/* %2").arg(path("from"), path("to")), 0),
                     commandLine(QStringLiteral("rm -rf %1/*").arg(path("from")), 0)}));
}

void MoveTest::quotesPathsWhereTheShellNeedsIt_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"two words", "it's", "$HOME", "*", "a;b", "`id`", "(1)", "Åland", "a\nb"})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void MoveTest::quotesPathsWhereTheShellNeedsIt()
{
    QFETCH(QString, name);
    const QString source = path("from ") + name;
    const QString destination = path("to ") + name;
    TestFile::write(source + QLatin1String("/a/-f.cdt"), "1");
    TestFile::write(source + QLatin1String("/-rf"), "2");
    QVERIFY(QDir().mkpath(destination));
    StepEngine engine;

    move(engine, source, destination);

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(
        Step::found(destination),
        QStringList({QStringLiteral("-rf"), QStringLiteral("a/"), QStringLiteral("a/-f.cdt")}));
    QCOMPARE(Step::found(source), QStringList());
    QCOMPARE(QDir(m_home->myDocs()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 2);
}

void MoveTest::aLinkedSourceIsEmptiedBehindTheLink()
{
    write("real/a.cdt", "a");
    QVERIFY(QFile::link(path("real"), path("from")));
    QVERIFY(QDir().mkpath(path("to")));
    StepEngine engine;

    move(engine, path("from"), path("to"));

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(read("to/a.cdt"), QByteArray("a"));
    QVERIFY(QFileInfo(path("from")).isSymLink());
    QCOMPARE(Step::found(path("real")), QStringList());
}

void MoveTest::makesTheParentOfTheDestination()
{
    write("from/a.cdt", "a");
    write("from/b.cdt", "b");
    StepEngine engine;
    const LogCatcher log(L::Info);

    move(engine, path("from"), path("new/deep/to/"));

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(read("new/deep/to/a.cdt"), QByteArray("a"));
    QVERIFY(!log.contains(QStringLiteral("Couldn't create directory")));
}

void MoveTest::saysSoIfTheParentCannotBeMade()
{
    write("from.cdt", "a");
    write("file", "in the way");
    StepEngine engine;
    const LogCatcher log(L::Info);

    move(engine, path("from.cdt"), path("file/deep/to.cdt"));

    QCOMPARE(log.count(QStringLiteral("[WARNING] Couldn't create directory: ") + path("file/deep")),
             1);
    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
    QCOMPARE(read("from.cdt"), QByteArray("a"));
    QCOMPARE(read("file"), QByteArray("in the way"));
}

void MoveTest::withoutAShellAFolderStaysUntouched()
{
    write("from/a.cdt", "a");
    write("to/a.cdt", "old");
    FakeSystem system;
    system.takeShellAway();
    StepEngine engine;
    const LogCatcher log(L::Info);

    move(engine, path("from"), path("to"));

    QCOMPARE(stepLines(log),
             QStringList({QStringLiteral("[INFO] Moving: %1 to %2 at int DownloadManager::doMove()")
                              .arg(path("from"), path("to")),
                          QStringLiteral("[WARNING] Shell is NOT available"),
                          QStringLiteral("[ERROR] Failed to move directories")}));
    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
    QCOMPARE(system.commands().size(), 0);
    QCOMPARE(read("from/a.cdt"), QByteArray("a"));
    QCOMPARE(read("to/a.cdt"), QByteArray("old"));
}

void MoveTest::aFailedCopyStillEmptiesTheSource()
{
    write("from/a.cdt", "a");
    write("from/b.cdt", "b");
    write("to", "a file where the folder should be");
    StepEngine engine;
    const LogCatcher log(L::Info);

    move(engine, path("from"), path("to"));

    // Meant so: the removal alone decides how the step ends.
    QCOMPARE(Step::found(path("from")), QStringList());
    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
    const QStringList lines = stepLines(log);
    QCOMPARE(lines.size(), 5);
    QVERIFY(lines.at(2).startsWith(QLatin1String("[INFO] Command cp -a ")));
    QVERIFY(!lines.at(2).endsWith(QLatin1String(" returned: 0")));
    QCOMPARE(lines.at(3), QStringLiteral("[ERROR] Move failed"));
    QCOMPARE(lines.at(4), commandLine(QStringLiteral("rm -rf %1/*").arg(path("from")), 0));
}

void MoveTest::aFailedRemovalIsAnError()
{
    write("from/a.cdt", "a");
    QVERIFY(QDir().mkpath(path("to")));
    FakeSystem system;
    system.answer("rm -rf ", 256);
    StepEngine engine;
    const LogCatcher log(L::Info);

    move(engine, path("from"), path("to"));

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Failed, Finished}));
    QCOMPARE(stepLines(log).mid(3),
             QStringList({commandLine(QStringLiteral("rm -rf %1/*").arg(path("from")), 256),
                          QStringLiteral("[ERROR] Remove failed")}));
    QCOMPARE(read("to/a.cdt"), QByteArray("a"));
}

void MoveTest::aFailedCopyAndRemovalAreTwoErrors()
{
    write("from/a.cdt", "a");
    FakeSystem system;
    system.answer("cp -a ", 256);
    system.answer("rm -rf ", 256);
    StepEngine engine;

    move(engine, path("from"), path("to"));

    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Failed, Finished}));
}

void MoveTest::leavesTheQueueBeforeTheSourceIsEmptied()
{
    write("from/a.cdt", "a");
    QVERIFY(QDir().mkpath(path("to")));
    FakeSystem system;
    StepEngine engine;
    QStringList queuedAtCommand;
    system.beforeCommand([&](const QByteArray &command) {
        queuedAtCommand.append(QString::fromLatin1(command.left(2)) + QLatin1Char(' ')
                               + inSettings("requests/size"));
    });

    move(engine, path("from"), path("to"));

    QCOMPARE(queuedAtCommand, QStringList({QStringLiteral("cp 1"), QStringLiteral("rm 0")}));
}

void MoveTest::aFolderMoveCutShortIsDoneAgain()
{
    write("from/a/1.cdt", "whole");
    write("from/b/2.cdt", "whole too");
    write("to/a/1.cdt", "wh"); // what a killed copy has left
    {
        RequestQueue<Request> earlier(nullptr);
        earlier.enqueue(Step::move(QStringLiteral("FI"), path("from"), path("to"), Url));
    }
    StepEngine engine;

    engine.run();

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(read("to/a/1.cdt"), QByteArray("whole"));
    QCOMPARE(read("to/b/2.cdt"), QByteArray("whole too"));
    QCOMPARE(Step::found(path("from")), QStringList());
}

// And never writes into them: cut short, that would leave half of a file that others use.
void MoveTest::aFolderReplacesOlderFilesWhole()
{
    write("from/5/5/border.cdt", "new");
    write("from/0/1/a.cdt", "a");
    write("from/top.cdt", "top");
    write("to/5/5/border.cdt", "old");
    write("to/top.cdt", "old top");
    QCOMPARE(::link(QFile::encodeName(path("to/5/5/border.cdt")).constData(),
                    QFile::encodeName(path("other name")).constData()),
             0);
    StepEngine engine;

    move(engine, path("from"), path("to"));

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(read("other name"), QByteArray("old"));
    QCOMPARE(read("to/5/5/border.cdt"), QByteArray("new"));
    QCOMPARE(read("to/0/1/a.cdt"), QByteArray("a"));
    QCOMPARE(read("to/top.cdt"), QByteArray("top"));
    QCOMPARE(Step::found(path("from")), QStringList());
    const VexaSettings::Locker settings;
    QVERIFY(!settings->contains(QStringLiteral("moving")));
}

void MoveTest::aDamagedRequestEmptiesNothing_data()
{
    QTest::addColumn<QVariant>("payload");
    QTest::addColumn<bool>("isFolder");

    // Stands for a folder of the test; the real one is made when the row runs.
    const auto request = [](const char *source, const char *destination) {
        return QVariant(QStringList {QLatin1String(source), QLatin1String(destination)});
    };
    QTest::newRow("no payload") << QVariant() << false;
    QTest::newRow("text as payload") << QVariant(QStringLiteral("%docs")) << true;
    QTest::newRow("empty list") << QVariant(QStringList()) << false;
    QTest::newRow("no source") << request("", "%docs/to") << false;
    QTest::newRow("no destination") << request("%docs/from", "") << true;
    QTest::newRow("the root") << request("/", "%docs/to") << true;
    QTest::newRow("the root in disguise") << request("/tmp/..", "%docs/to") << true;
    QTest::newRow("the home folder") << request("%home", "%docs/to") << true;
    QTest::newRow("the home folder with a slash") << request("%home/", "%docs/to") << true;
    QTest::newRow("above the home folder") << request("%home/..", "%docs/to") << true;
    QTest::newRow("the user's documents") << request("%docs", "%docs/to") << true;
    QTest::newRow("above the documents") << request("%docs/..", "%docs/to") << true;
    QTest::newRow("a link to the home folder") << request("%docs/homelink", "%docs/to") << true;
    QTest::newRow("onto itself") << request("%docs/from", "%docs/from") << true;
    QTest::newRow("into itself") << request("%docs/from", "%docs/from/a") << true;
    QTest::newRow("into itself, to be made") << request("%docs/from", "%docs/from/new") << true;
    QTest::newRow("onto a link to itself") << request("%docs/from", "%docs/fromlink") << true;
}

void MoveTest::aDamagedRequestEmptiesNothing()
{
    QFETCH(QVariant, payload);
    QFETCH(bool, isFolder);
    write("from/a/1.cdt", "1");
    TestFile::write(m_home->path() + QLatin1String("/precious"), "p");
    QVERIFY(QFile::link(m_home->path(), path("homelink")));
    QVERIFY(QFile::link(path("from"), path("fromlink")));
    if (payload.canConvert<QStringList>()) {
        QStringList paths = payload.toStringList();
        paths.replaceInStrings(QStringLiteral("%docs"), m_home->myDocs());
        paths.replaceInStrings(QStringLiteral("%home"), m_home->path());
        payload = paths;
    }
    FakeSystem system;
    system.answer("", 0); // no command is carried out, whatever comes
    StepEngine engine;
    engine.queue.enqueue(Request(QStringLiteral("FI"), MoveRequest, payload, Url));
    const LogCatcher log(L::Info);

    engine.run();

    QCOMPARE(system.commands(), QList<QByteArray>());
    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
    const QString line = isFolder ? QStringLiteral("[ERROR] Failed to move directories")
                                  : QStringLiteral("[ERROR] Failed to move: ");
    QVERIFY2(stepLines(log).last().startsWith(line), qPrintable(stepLines(log).last()));
    QCOMPARE(read("from/a/1.cdt"), QByteArray("1"));
}

void MoveTest::aFileGoesToTheDestination()
{
    write("FI.zip", "archive");
    StepEngine engine;

    move(engine, path("FI.zip"), path("new/deep/finland.zip"));

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(read("new/deep/finland.zip"), QByteArray("archive"));
    QVERIFY(!QFile::exists(path("FI.zip")));
    QCOMPARE(inSettings("requests/size"), QStringLiteral("0"));
    QCOMPARE(inSettings("moving"), QString());
}

void MoveTest::aFileMoveWritesItsLinesInOrder()
{
    write("FI.zip", "archive");
    StepEngine engine;
    const LogCatcher log(L::Trace);

    move(engine, path("FI.zip"), path("finland.zip"));

    QStringList lines = stepLines(log);
    QCOMPARE(lines.count(QStringLiteral("[TRACE] int DownloadManager::doMove()")), 1);
    lines.erase(std::remove_if(
                    lines.begin(), lines.end(),
                    [](const QString &line) { return line.startsWith(QLatin1String("[TRACE]")); }),
                lines.end());
    QCOMPARE(
        lines,
        QStringList(
            {QStringLiteral("[INFO] Removing destination: ") + path("finland.zip"),
             QStringLiteral("[INFO] Moving: %1 to %2").arg(path("FI.zip"), path("finland.zip"))}));
}

void MoveTest::aFileReplacesAnOlderOne()
{
    write("FI.zip", "new");
    write("to/FI.zip", "older and longer");
    StepEngine engine;

    move(engine, path("FI.zip"), path("to/FI.zip"));

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(Step::found(path("to")), QStringList {QStringLiteral("FI.zip")});
    QCOMPARE(read("to/FI.zip"), QByteArray("new"));
}

void MoveTest::aDestinationWithASlashTakesTheFileUnderItsOwnName()
{
    write("FI.zip", "archive");
    StepEngine engine;
    const LogCatcher log(L::Info);

    move(engine, path("FI.zip"), path("to/"));

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(read("to/FI.zip"), QByteArray("archive"));
    QCOMPARE(log.count(QStringLiteral("[INFO] Removing destination: ") + path("to//FI.zip")), 1);
}

void MoveTest::aFileMovesWithoutAShell()
{
    write("FI.zip", "archive");
    FakeSystem system;
    system.takeShellAway();
    StepEngine engine;

    move(engine, path("FI.zip"), path("finland.zip"));

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(read("finland.zip"), QByteArray("archive"));
    QCOMPARE(system.commands().size(), 0);
}

// It stops downloads only.
void MoveTest::aSuspensionHidesNoFailure()
{
    StepEngine engine;
    engine.manager.suspend(UserCause);

    move(engine, path("FI.zip"), path("finland.zip"));

    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
}

void MoveTest::aMissingFileIsAnErrorAndCostsNothing()
{
    write("finland.zip", "of an earlier download");
    StepEngine engine;
    const LogCatcher log(L::Info);

    move(engine, path("FI.zip"), path("finland.zip"));

    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
    QCOMPARE(stepLines(log).last(),
             QStringLiteral("[ERROR] Failed to move: %1 to %2")
                 .arg(path("FI.zip"), path("finland.zip")));
    QCOMPARE(read("finland.zip"), QByteArray("of an earlier download"));
}

void MoveTest::aFileDoesNotReplaceAFolder()
{
    write("FI.zip", "archive");
    write("to/a.cdt", "a");
    StepEngine engine;

    move(engine, path("FI.zip"), path("to"));

    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
    QCOMPARE(read("FI.zip"), QByteArray("archive"));
    QCOMPARE(read("to/a.cdt"), QByteArray("a"));
}

void MoveTest::aFileWithoutADestinationStays()
{
    write("FI-without-destination.zip", "archive");
    StepEngine engine;

    move(engine, path("FI-without-destination.zip"), QString());

    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
    QCOMPARE(read("FI-without-destination.zip"), QByteArray("archive"));
}

void MoveTest::aFileGoesToAnotherFileSystem_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("isReal");

    // Where there is only one file system the first row is the second once more.
    struct stat home = {};
    struct stat memory = {};
    const bool separate = ::stat(qPrintable(QDir::tempPath()), &home) == 0
        && ::stat("/dev/shm", &memory) == 0 && home.st_dev != memory.st_dev;
    QTest::newRow("a real one") << (separate ? QStringLiteral("/dev/shm") : QString()) << separate;
    QTest::newRow("a rename that says so") << QString() << false;
}

void MoveTest::aFileGoesToAnotherFileSystem()
{
    QFETCH(QString, folder);
    QFETCH(bool, isReal);
    const QTemporaryDir there(folder.isEmpty() ? path("vexa-XXXXXX")
                                               : folder + QLatin1String("/vexa-XXXXXX"));
    QVERIFY(there.isValid());
    const QByteArray bytes = ArchiveBuilder::noise(3000000);
    write("FI.zip", bytes);
    QVERIFY(QFile::setPermissions(path("FI.zip"), QFile::ReadOwner | QFile::WriteOwner));
    const QString target = there.filePath(QStringLiteral("FI.zip"));
    TestFile::write(target, "old");
    TestFile::write(target + QLatin1String(".vexa-part"), bytes + bytes); // of a killed run
    FakeSystem system;
    if (!isReal)
        system.separate(QFile::encodeName(path("FI.zip")));
    StepEngine engine;

    move(engine, path("FI.zip"), target);

    QCOMPARE(engine.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(TestFile::read(target), bytes);
    QCOMPARE(Step::found(there.path()), QStringList {QStringLiteral("FI.zip")});
    QVERIFY(!QFile::exists(path("FI.zip")));
    QVERIFY(!(QFile::permissions(target) & (QFile::ReadGroup | QFile::ReadOther)));
}

void MoveTest::noHalfFileHasTheFinalName()
{
    const QByteArray bytes = ArchiveBuilder::noise(3000000);
    write("FI.zip", bytes);
    write("to/FI.zip", "old");
    FakeSystem system;
    system.separate(QFile::encodeName(path("FI.zip")));
    QByteArray targetBefore;
    QByteArray partBefore;
    bool sourceThere = false;
    system.beforeRename([&](const QByteArray &from, const QByteArray &to) {
        if (to != QFile::encodeName(path("to/FI.zip")))
            return;
        targetBefore = read("to/FI.zip");
        partBefore = TestFile::read(QFile::decodeName(from));
        sourceThere = QFile::exists(path("FI.zip"));
    });
    StepEngine engine;

    move(engine, path("FI.zip"), path("to/FI.zip"));

    QCOMPARE(targetBefore, QByteArray("old"));
    QCOMPARE(partBefore, bytes);
    QVERIFY(sourceThere);
    QCOMPARE(read("to/FI.zip"), bytes);
}

void MoveTest::aCopyThatFailsCostsNothing()
{
    write("FI.zip", "archive");
    write("to/FI.zip", "old");
    write("to/FI.zip.vexa-part/in-the-way", "x");
    FakeSystem system;
    system.separate(QFile::encodeName(path("FI.zip")));
    StepEngine engine;

    move(engine, path("FI.zip"), path("to/FI.zip"));

    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
    QCOMPARE(read("FI.zip"), QByteArray("archive"));
    QCOMPARE(read("to/FI.zip"), QByteArray("old"));
}

void MoveTest::aCopyThatCannotBeRenamedCostsNothing()
{
    write("FI.zip", "archive");
    write("to/FI.zip", "old");
    FakeSystem system;
    system.separate(QFile::encodeName(path("FI.zip")));
    system.separate(QFile::encodeName(path("to/FI.zip.vexa-part")));
    StepEngine engine;

    move(engine, path("FI.zip"), path("to/FI.zip"));

    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
    QCOMPARE(read("FI.zip"), QByteArray("archive"));
    QCOMPARE(Step::found(path("to")), QStringList {QStringLiteral("FI.zip")});
    QCOMPARE(read("to/FI.zip"), QByteArray("old"));
}

void MoveTest::aFileMoveCutShortBehindTheRenameIsDone()
{
    write("FI.zip", "archive");
    {
        // A run that is killed between the rename and its entry in the settings: they are put
        // back as they were then.
        FakeSystem system;
        StepEngine engine;
        QByteArray settingsThen;
        const QString settingsFile = m_home->settingsFolder() + QLatin1String("/vexa/vexa.conf");
        system.beforeRename([&](const QByteArray &from, const QByteArray &) {
            if (from == QFile::encodeName(path("FI.zip")))
                settingsThen = TestFile::read(settingsFile);
        });
        move(engine, path("FI.zip"), path("finland.zip"));
        VexaSettings::destroy();
        TestFile::write(settingsFile, settingsThen);
    }
    QCOMPARE(inSettings("requests/size"), QStringLiteral("1"));
    StepEngine next;

    next.run();

    QCOMPARE(next.events, QStringList({Started, Dequeued, Finished}));
    QCOMPARE(read("finland.zip"), QByteArray("archive"));
    QCOMPARE(inSettings("moving"), QString());
}

void MoveTest::aFileThatNeverCameIsNotTakenForDone()
{
    // A download that failed leaves its move queued; the older file at the destination is not it.
    write("finland.zip", "of an earlier download");
    {
        RequestQueue<Request> earlier(nullptr);
        earlier.enqueue(Step::move(QStringLiteral("FI"), path("FI.zip"), path("finland.zip"), Url));
    }
    StepEngine engine;

    engine.run();

    QCOMPARE(engine.events, QStringList({Started, Failed, Dequeued, Finished}));
}

void MoveTest::aRequestOfAnEarlierRunClearsTheSavedFlag()
{
    write("FI.zip", "archive");
    {
        RequestQueue<Request> earlier(nullptr);
        earlier.enqueue(Step::move(QStringLiteral("FI"), path("FI.zip"), path("finland.zip"), Url));
    }
    StepEngine engine;
    QVERIFY(engine.queue.hasSavedTransfer);
    QList<bool> flags;
    engine.onEvent = [&](const QString &) { flags.append(engine.queue.hasSavedTransfer); };

    engine.run();

    QCOMPARE(flags.size(), 3);
    QVERIFY(!flags.contains(true));
}

void MoveTest::cancelDoesNotRemoveAnotherRegionsRequest()
{
    write("from/a.cdt", "finland");
    write("SE.zip", "sweden");
    QVERIFY(QDir().mkpath(path("to")));
    StepEngine engine;
    engine.queue.enqueue(Step::move(QStringLiteral("FI"), path("from"), path("to"), Url));
    engine.queue.enqueue(
        Step::move(QStringLiteral("SE"), path("SE.zip"), path("sweden.zip"), OtherUrl));
    engine.onEvent = [&](const QString &event) {
        if (event == Started)
            engine.manager.cancel(Url);
    };

    engine.run();

    QCOMPARE(read("sweden.zip"), QByteArray("sweden"));
    QCOMPARE(engine.eventsLike(QStringLiteral("finished(4, http://server/map5/SE")).size(), 1);
    QCOMPARE(engine.eventsLike(QStringLiteral("error")), QStringList());
    QCOMPARE(inSettings("requests/size"), QStringLiteral("0"));
}

QTEST_GUILESS_MAIN(MoveTest)
#include "tst_move.moc"
