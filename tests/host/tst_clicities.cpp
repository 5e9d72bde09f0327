// SPDX-License-Identifier: MIT
// The command that lists and records city packages.
#include "host/shared/datasetlock.h"
#include "mapsprogram.h"
#include <memory>
#include <QtTest>

class CliCitiesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { maps = std::make_unique<MapsProgram>(); }
    void cleanup() { maps.reset(); }

    void listingADeviceWithoutCitiesMakesNoFolder();
    void whatIsAddedIsListed();
    void theListIsWrittenAsJson();
    void theFileIsTheLibrarysOwn();
    void anUpdateKeepsWhatIsNotSaid();
    void anEmptyValueIsAValue();
    void aWrongCommandLineIsAUsageError_data();
    void aWrongCommandLineIsAUsageError();
    void aNewPackageNeedsNameAndVersion();
    void anotherProgramAtWorkForbidsAddingOnly();
    void aFileThatCannotBeWrittenIsSaid();

private:
    // "cities --add ID --name NAME --package-version VERSION" and more options
    ProgramRun add(const char *id, const char *name, const char *version,
                   const QStringList &more = {}) const
    {
        return maps->run(QStringList {QStringLiteral("cities"), QStringLiteral("--add"),
                                      QString::fromUtf8(id), QStringLiteral("--name"),
                                      QString::fromUtf8(name), QStringLiteral("--package-version"),
                                      QString::fromUtf8(version)}
                         + more);
    }
    QByteArray listed() const { return maps->run(words("cities")).out; }
    QString file() const { return maps->catalogFolder() + QLatin1String("/cityindex.xml"); }

    std::unique_ptr<MapsProgram> maps;
};

void CliCitiesTest::listingADeviceWithoutCitiesMakesNoFolder()
{
    const ProgramRun run = maps->run(words("cities"));
    QCOMPARE(run.code, 0);
    QCOMPARE(run.out, QByteArray("There are no city packages.\n"));
    QCOMPARE(maps->run(words("cities --quiet")).out, QByteArray());
    QCOMPARE(maps->run(words("cities --json")).out.simplified(), QByteArray("[ ]"));

    QVERIFY(!QFile::exists(maps->dataFolder() + QLatin1String("/cities")));
}

void CliCitiesTest::whatIsAddedIsListed()
{
    const ProgramRun run = add("de.hamburg", "Hamburg", "2");
    QCOMPARE(run.code, 0);
    QCOMPARE(run.out, QByteArray("Added de.hamburg (Hamburg), version 2.\n"));
    QCOMPARE(add("DK", "\xc3\x85rhus & Umland", "26.11").code, 0);

    QCOMPARE(listed(),
             QByteArray("DK          \xc3\x85rhus & Umland  26.11\n"
                        "de.hamburg  Hamburg         2\n"));
}

void CliCitiesTest::theListIsWrittenAsJson()
{
    const ProgramRun run = add("b", "B", "2", {QStringLiteral("--json")});
    add("a", "\xc3\x84", "1");

    const QJsonObject a {{QStringLiteral("id"), QStringLiteral("a")},
                         {QStringLiteral("name"), QString::fromUtf8("\xc3\x84")},
                         {QStringLiteral("version"), QStringLiteral("1")}};
    const QJsonObject b {{QStringLiteral("id"), QStringLiteral("b")},
                         {QStringLiteral("name"), QStringLiteral("B")},
                         {QStringLiteral("version"), QStringLiteral("2")}};
    QCOMPARE(run.object(), b);
    QCOMPARE(maps->run(words("cities --json")).array(), QJsonArray({a, b}));
}

void CliCitiesTest::theFileIsTheLibrarysOwn()
{
    add("a", "A", "1");

    QCOMPARE(TestFile::read(file()),
             QByteArray("<?xml version=\"1.0\" encoding=\"ANSI\"?>\n<cityindexlist>\n"
                        " <cityindex id=\"a\" name=\"A\" version=\"1\"/>\n</cityindexlist>\n"));
}

void CliCitiesTest::anUpdateKeepsWhatIsNotSaid()
{
    add("a", "A", "1");
    add("b", "B", "1");

    const ProgramRun run = maps->run(words("cities --add a --package-version 2"));
    QCOMPARE(run.code, 0);
    QCOMPARE(run.out, QByteArray("Updated a (A), version 2.\n"));
    QCOMPARE(maps->run(words("cities --add b --name Bb")).code, 0);
    QCOMPARE(maps->run(words("cities --add b")).code, 0);

    QCOMPARE(listed(), QByteArray("a  A   2\nb  Bb  1\n"));
}

void CliCitiesTest::anEmptyValueIsAValue()
{
    add("a", "A", "1");

    QCOMPARE(add("a", "", "").code, 0);

    QVERIFY(TestFile::read(file()).contains("<cityindex id=\"a\" name=\"\" version=\"\"/>"));
}

void CliCitiesTest::aWrongCommandLineIsAUsageError_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("an argument") << words("cities Berlin");
    QTest::newRow("no id") << words("cities --name Berlin --package-version 1 --add");
    QTest::newRow("an empty id") << words("cities --name Berlin --package-version 1 --add=");
    QTest::newRow("a name alone") << words("cities --name Berlin");
    QTest::newRow("a version alone") << words("cities --package-version 1");
    QTest::newRow("a control character in the id")
        << words("cities --name B --package-version 1 --add x\x01");
    QTest::newRow("a line end in the name")
        << words("cities --add x --package-version 1 --name B\n");
}

void CliCitiesTest::aWrongCommandLineIsAUsageError()
{
    QFETCH(QStringList, arguments);

    const ProgramRun run = maps->run(arguments);

    QCOMPARE(run.code, 2);
    QVERIFY(run.err.startsWith("vexa-maps: "));
    QVERIFY(run.err.contains("cities --help"));
    QVERIFY(!QFile::exists(maps->dataFolder() + QLatin1String("/cities")));
}

void CliCitiesTest::aNewPackageNeedsNameAndVersion()
{
    for (const char *command :
         {"cities --add a", "cities --add a --name A", "cities --add a --package-version 1"}) {
        const ProgramRun run = maps->run(words(command));
        QCOMPARE(run.code, 2);
        QVERIFY(run.err.contains("a is new"));
    }
    QVERIFY(!QFile::exists(file()));
}

void CliCitiesTest::anotherProgramAtWorkForbidsAddingOnly()
{
    add("a", "A", "1");
    qputenv("VEXA_MYDOCS", QFile::encodeName(maps->dataFolder()));
    qputenv("HOME", QFile::encodeName(maps->homeFolder()));
    DataSetLock lock;
    QVERIFY(lock.tryLock());

    const ProgramRun run = add("b", "B", "1");

    QCOMPARE(run.code, 5);
    QVERIFY(run.err.contains("Another program"));
    QCOMPARE(listed(), QByteArray("a  A  1\n"));
}

void CliCitiesTest::aFileThatCannotBeWrittenIsSaid()
{
    TestFile::write(file() + QLatin1String("/inside"), "a folder in its place");

    const ProgramRun run = add("a", "A", "1");

    QCOMPARE(run.code, 1);
    QVERIFY(run.err.contains("a is not recorded: "));
    QVERIFY(run.err.contains("cityindex.xml cannot be written"));
    QVERIFY(!run.out.contains("Added"));
}

QTEST_GUILESS_MAIN(CliCitiesTest)
#include "tst_clicities.moc"
