// SPDX-License-Identifier: MIT
// The shell's commands as the catalogue offers them.
#include "catalog/mapcatalog.h"

#include "catalog/datasets.h"
#include "testutils/childprogram.h"
#include "testutils/logcatcher.h"
#include <memory>
#include <QTest>
#include <unistd.h>

class MapCatalogCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachOperationIsOneCommand();
    void theyCanBeCalledOnAConstCatalogue();
    void theyDoWhatTheCommandsDo();
    void aFolderIsMadeWithoutItsParents();
    void aFolderIsNotCopied();
    void whatIsNotThereIsRemovedSilently();
    void aBlankSeparatesTwoArguments();
    void aPatternStandsForManyFiles();
    void otherMarksAreTheShellsToo();
    void commandsAreUtf8_data();
    void commandsAreUtf8();
    void aCommandIsOverWhenTheCallReturns();
    void theExitStatusIsIgnored();
    void nothingIsLogged();
    void withoutAShellNothingIsRun();

private:
    QString path(const char *name) const { return m_data->path(name); }

    std::unique_ptr<DataSets> m_data;
    std::unique_ptr<const MapCatalog> m_catalog;
};

void MapCatalogCommandsTest::init()
{
    m_data = std::make_unique<DataSets>();
    m_catalog = std::make_unique<MapCatalog>();
}

void MapCatalogCommandsTest::cleanup()
{
    m_catalog.reset();
    m_data.reset();
}

void MapCatalogCommandsTest::eachOperationIsOneCommand()
{
    for (const char *beginning : {"touch", "rm", "mkdir", "cp", "mv", "any"})
        m_data->system.answer(beginning, 0); // not run

    m_catalog->touchSystem(text("/a/b c*"));
    m_catalog->removeSystem(text("/a/b c*"));
    m_catalog->mkDirSystem(text("/a/b c*"));
    m_catalog->copySystem(text("/a/b c*"), text("/d 'e'"));
    m_catalog->moveSystem(text("/a/b c*"), text("/d 'e'"));
    m_catalog->execSystem(text("any \"$command\" | at all"));
    m_catalog->touchSystem(QString());

    const Commands expected {
        "touch /a/b c*",
        "rm -rf /a/b c*",
        "mkdir /a/b c*",
        "cp /a/b c* /d 'e'",
        "mv /a/b c* /d 'e'",
        "any \"$command\" | at all",
        "touch ",
    };
    QCOMPARE(m_data->system.commands(), expected);
}

void MapCatalogCommandsTest::theyCanBeCalledOnAConstCatalogue()
{
    void (MapCatalog::*const exec)(QString) const = &MapCatalog::execSystem;
    void (MapCatalog::*const touch)(const QString &) const = &MapCatalog::touchSystem;
    void (MapCatalog::*const remove)(const QString &) const = &MapCatalog::removeSystem;
    void (MapCatalog::*const makeFolder)(const QString &) const = &MapCatalog::mkDirSystem;
    void (MapCatalog::*const copy)(const QString &, const QString &) const =
        &MapCatalog::copySystem;
    void (MapCatalog::*const move)(const QString &, const QString &) const =
        &MapCatalog::moveSystem;
    void (MapCatalog::*const removeAll)() const = &MapCatalog::removeAllMapData;

    QVERIFY(exec && touch && remove && makeFolder && copy && move && removeAll);
}

void MapCatalogCommandsTest::theyDoWhatTheCommandsDo()
{
    m_catalog->mkDirSystem(path("box"));
    m_catalog->touchSystem(path("box/file"));
    QCOMPARE(treeOf(path("box")), QStringList {text("file=")});

    writeFile(path("box/file"), "content");
    m_catalog->touchSystem(path("box/file"));
    QCOMPARE(treeOf(path("box")), QStringList {text("file=content")});

    m_catalog->copySystem(path("box/file"), path("box/copy"));
    QCOMPARE(treeOf(path("box")), QStringList({text("copy=content"), text("file=content")}));

    m_catalog->moveSystem(path("box"), path("case"));
    QCOMPARE(treeOf(path("case")), QStringList({text("copy=content"), text("file=content")}));
    QVERIFY(!QFile::exists(path("box")));

    m_catalog->moveSystem(path("case"), path("diskcache"));
    QVERIFY(QFile::exists(path("diskcache/case/file")));

    m_catalog->removeSystem(path("diskcache/case"));
    QCOMPARE(m_data->tree(), QStringList({text("Tessarin/"), text("diskcache/")}));
}

void MapCatalogCommandsTest::aFolderIsMadeWithoutItsParents()
{
    m_catalog->mkDirSystem(path("box/inner"));

    QVERIFY(!QFile::exists(path("box")));
}

void MapCatalogCommandsTest::aFolderIsNotCopied()
{
    writeFile(path("box/file"), "content");

    m_catalog->copySystem(path("box"), path("copy"));

    QVERIFY(!QFile::exists(path("copy")));
}

void MapCatalogCommandsTest::whatIsNotThereIsRemovedSilently()
{
    writeFile(path("diskcache/locked"), "x");
    QVERIFY(QFile::setPermissions(path("diskcache/locked"), QFile::Permissions()));

    m_catalog->removeSystem(path("nothing"));
    m_catalog->removeSystem(path("diskcache/locked")); // nor does it ask

    QVERIFY(!QFile::exists(path("diskcache/locked")));
}

// Deliberate: the arguments are not quoted.
void MapCatalogCommandsTest::aBlankSeparatesTwoArguments()
{
    m_catalog->mkDirSystem(path("one ") + path("two"));
    m_catalog->touchSystem(path("one/a ") + path("two/b"));
    writeFile(path("two words"), "kept");
    m_catalog->removeSystem(path("two words"));

    // The second word of the last command names nothing; the first is the folder.
    QCOMPARE(m_data->tree(),
             QStringList(
                 {text("Tessarin/"), text("diskcache/"), text("one/a="), text("two words=kept")}));
}

void MapCatalogCommandsTest::aPatternStandsForManyFiles()
{
    for (const char *name : {"box/catalog-1.xml", "box/catalog-2.xml", "box/other", "box/.catalog"})
        writeFile(path(name), "x");

    m_catalog->copySystem(path("box/catalog*"), path("Tessarin/"));
    m_catalog->removeSystem(path("box/*"));

    QCOMPARE(m_data->tree(),
             QStringList({text("Tessarin/catalog-1.xml=x"), text("Tessarin/catalog-2.xml=x"),
                          text("box/.catalog=x"), text("diskcache/")}));
}

void MapCatalogCommandsTest::otherMarksAreTheShellsToo()
{
    m_catalog->execSystem(text("cd ") + m_data->citiesFolder()
                          + text(" && printf '%s' \"a b\" > box; printf more >> box"));

    QCOMPARE(readFile(path("box")), QByteArray("a bmore"));
}

void MapCatalogCommandsTest::commandsAreUtf8_data()
{
    QTest::addColumn<QString>("locale");
    for (const char *locale : {"C", "C.UTF-8", "POSIX"})
        QTest::newRow(locale) << text(locale);
}

// In a program of its own, because a program takes its locale once.
void MapCatalogCommandsTest::commandsAreUtf8()
{
    QFETCH(QString, locale);
    if (qEnvironmentVariableIsSet("VEXA_TEST_NAMES")) {
        const QString folder = QString::fromLatin1(qgetenv("VEXA_TEST_NAMES"));
        m_catalog->mkDirSystem(folder + QLatin1Char('/') + QString::fromUtf8("Åland"));
        m_catalog->touchSystem(folder + QLatin1Char('/')
                               + QString::fromUtf8("Åland/日本\U0001F5FA"));
        return;
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(text("LC_ALL"), locale);
    environment.insert(text("VEXA_TEST_NAMES"), m_data->citiesFolder());

    ChildProgram child(QCoreApplication::applicationFilePath(), {text("commandsAreUtf8:C")},
                       environment);
    QCOMPARE(child.waitForFinished(), 0);

    // Asked of the system itself, so that no encoding of Qt's comes in between.
    const QByteArray file = m_data->citiesFolder().toUtf8() + "/Åland/日本\xf0\x9f\x97\xba";
    QCOMPARE(::access(file.constData(), F_OK), 0);
}

void MapCatalogCommandsTest::aCommandIsOverWhenTheCallReturns()
{
    // Long enough that a call which did not wait would be first for certain.
    const QString file = path("numbers");

    m_catalog->execSystem(text("i=0; while [ $i -lt 20000 ]; do i=$((i+1)); done; echo $i > ")
                          + file);

    QCOMPARE(readFile(file), QByteArray("20000\n"));
}

void MapCatalogCommandsTest::theExitStatusIsIgnored()
{
    m_catalog->execSystem(text("exit 3"));
    m_catalog->execSystem(text("kill -KILL $$"));
    m_catalog->execSystem(text("no-such-command-anywhere"));
    m_catalog->moveSystem(path("nothing"), path("nowhere"));
    m_catalog->execSystem(text("echo still > ") + path("file"));

    QCOMPARE(readFile(path("file")), QByteArray("still\n"));
}

void MapCatalogCommandsTest::nothingIsLogged()
{
    const LogCatcher log(4);

    m_catalog->touchSystem(path("file"));
    m_catalog->mkDirSystem(path("no/parent"));
    m_catalog->copySystem(path("file"), path("no/parent"));
    m_catalog->moveSystem(path("file"), path("moved"));
    m_catalog->removeSystem(path("moved"));
    m_catalog->execSystem(text("exit 1"));

    QCOMPARE(log.texts(), QStringList());
}

void MapCatalogCommandsTest::withoutAShellNothingIsRun()
{
    writeFile(path("file"), "x");
    const QStringList before = m_data->tree();
    m_data->system.takeShellAway();
    const LogCatcher log(4);

    m_catalog->touchSystem(path("new"));
    m_catalog->mkDirSystem(path("box"));
    m_catalog->copySystem(path("file"), path("copy"));
    m_catalog->moveSystem(path("file"), path("moved"));
    m_catalog->removeSystem(path("file"));
    m_catalog->execSystem(text("echo any"));

    QCOMPARE(m_data->system.commands(), Commands());
    QCOMPARE(m_data->tree(), before);
    QCOMPARE(log.texts(), QStringList());
}

QTEST_GUILESS_MAIN(MapCatalogCommandsTest)

#include "tst_mapcatalogcommands.moc"
