// SPDX-License-Identifier: MIT
#include "plugin/logger.h"
#include "plugin/vexa.h"
#include "testutils/childprogram.h"
#include "testutils/logcatcher.h"
#include <cstdio>
#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

/** Real catalogues, and children with a locale of their own: Qt reads the system's only once. */
class TranslationsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void triesTheNamesInOrder_data();
    void triesTheNamesInOrder();
    void warnsOnceWhenThereIsNone_data();
    void warnsOnceWhenThereIsNone();
    void installsOneMoreAtEachInitialisation();
    void installsAFileThatLoads_data();
    void installsAFileThatLoads();
    void leavesAFileThatDoesNotLoad_data();
    void leavesAFileThatDoesNotLoad();
    void tracesOnlyAtLevelFour();
    void installsACatalogueWithoutTexts();

private:
    void put(const QString &name, const QTemporaryDir &folder) const;

    QTemporaryDir m_catalogues;
};

namespace {

const char Context[] = "Map";
const char Text[] = "where from";

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

/** Compiles a catalogue that translates Text into its own name; without texts for "empty". */
void compile(const QString &target, const QString &translation)
{
    const QString source = target + QStringLiteral(".ts");
    QFile file(source);
    QByteArray text = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n"
                      "<TS version=\"2.1\" language=\"de\">";
    if (translation != QLatin1String("empty"))
        text += QByteArray("<context><name>") + Context + "</name><message><source>" + Text
            + "</source><translation>" + translation.toUtf8()
            + "</translation></message></context>";
    text += "</TS>\n";
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("%s cannot be written", qPrintable(source));
    file.close();
    QProcess lrelease;
    lrelease.start(QStringLiteral(VEXA_LRELEASE),
                   {QStringLiteral("-silent"), source, QStringLiteral("-qm"), target});
    if (!lrelease.waitForFinished() || lrelease.exitCode() != 0 || !QFile::exists(target))
        qFatal("lrelease: %s", lrelease.readAllStandardError().constData());
}

struct Outcome
{
    int status = -1;
    QStringList log;
    QString locale;
    QString translation;
    int languageChanges = 0;
};

/** Runs installTranslators() in a child whose system locale is the given one. */
Outcome install(const QTemporaryDir &folder, const char *locale, int level, int times = 1)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"LANGUAGE", "LC_MESSAGES", "LANG"})
        environment.remove(latin1(name));
    environment.insert(QStringLiteral("LC_ALL"), latin1(locale));
    ChildProgram child(QCoreApplication::applicationFilePath(),
                       {QStringLiteral("--install"), folder.path() + QLatin1Char('/'),
                        QString::number(level), QString::number(times)},
                       environment);
    Outcome outcome;
    outcome.status = child.waitForFinished();
    const QList<QByteArray> lines = child.output().split('\n');
    for (const QByteArray &line : lines) {
        const QString value = QString::fromUtf8(line.mid(2));
        if (line.startsWith("L "))
            outcome.log.append(value);
        else if (line.startsWith("N "))
            outcome.locale = value;
        else if (line.startsWith("T "))
            outcome.translation = value;
        else if (line.startsWith("C "))
            outcome.languageChanges = value.toInt();
    }
    return outcome;
}

QString loadedLine(const QTemporaryDir &folder, const QString &path)
{
    return QStringLiteral("[TRACE] Loaded translation from ") + folder.path()
        + QStringLiteral("/i18n/") + path;
}

} // namespace

void TranslationsTest::initTestCase()
{
    QVERIFY(m_catalogues.isValid());
    for (const char *suffix : {"_de_AT", "_de_DE", "_de", "_en_GB", "_en_DEV", "_en", "_C", ""}) {
        const QString name = QStringLiteral("vexa") + latin1(suffix);
        compile(m_catalogues.filePath(name + QStringLiteral(".qm")), name);
    }
    compile(m_catalogues.filePath(QStringLiteral("empty.qm")), QStringLiteral("empty"));
}

/** "x" puts the catalogue x.qm, "x!" a damaged x.qm, "x/" a folder x.qm, "x:" one without ".qm". */
void TranslationsTest::put(const QString &name, const QTemporaryDir &folder) const
{
    const QString i18n = folder.filePath(QStringLiteral("i18n/"));
    QVERIFY(QDir().mkpath(i18n));
    if (!name.endsWith(QLatin1Char('!')) && !name.endsWith(QLatin1Char('/'))
        && !name.endsWith(QLatin1Char(':'))) {
        const QString file = name + QStringLiteral(".qm");
        QVERIFY(QFile::copy(m_catalogues.filePath(file), i18n + file));
        return;
    }
    const QString bare = name.left(name.size() - 1);
    if (name.endsWith(QLatin1Char('/'))) {
        QVERIFY(QDir().mkpath(i18n + bare + QStringLiteral(".qm")));
    } else if (name.endsWith(QLatin1Char(':'))) {
        QVERIFY(QFile::copy(m_catalogues.filePath(bare + QStringLiteral(".qm")), i18n + bare));
    } else {
        QFile damaged(i18n + bare + QStringLiteral(".qm"));
        QVERIFY(damaged.open(QIODevice::WriteOnly));
        damaged.write("no catalogue");
    }
}

void TranslationsTest::triesTheNamesInOrder_data()
{
    QTest::addColumn<QByteArray>("locale");
    QTest::addColumn<QString>("files");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("catalogue");

    QTest::newRow("1: the full name")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_de_AT vexa_de_DE vexa_de vexa vexa_en_GB")
        << latin1("vexa_de_AT") << latin1("vexa_de_AT");
    QTest::newRow("1: shortened by Qt to the language")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_de vexa_de_DE vexa_en_GB")
        << latin1("vexa_de_AT") << latin1("vexa_de");
    QTest::newRow("1: shortened by Qt to the prefix")
        << QByteArray("de_AT.UTF-8") << latin1("vexa vexa_de_DE vexa_en_GB") << latin1("vexa_de_AT")
        << latin1("vexa");
    QTest::newRow("1: a file without extension")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_de_AT: vexa_de") << latin1("vexa_de_AT")
        << latin1("vexa_de_AT");
    QTest::newRow("1: a folder of that name does not count")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_de_AT/ vexa_de") << latin1("vexa_de_AT")
        << latin1("vexa_de");
    QTest::newRow("2: language and language in upper case")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_de_DE vexa_en_GB vexa_en_DEV")
        << latin1("vexa_de_DE") << latin1("vexa_de_DE");
    QTest::newRow("2: after a damaged file at the first")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_de_AT! vexa_de") << latin1("vexa_de_DE")
        << latin1("vexa_de");
    QTest::newRow("3: the language")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_de_AT! vexa_de_DE! vexa_de")
        << latin1("vexa_de") << latin1("vexa_de");
    QTest::newRow("5: British English")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_en_GB vexa_en_DEV") << latin1("vexa_en_GB")
        << latin1("vexa_en_GB");
    QTest::newRow("5: shortened by Qt to English")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_en vexa_en_DEV") << latin1("vexa_en_GB")
        << latin1("vexa_en");
    QTest::newRow("5: after damaged files of the language")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_de! vexa_en_GB") << latin1("vexa_en_GB")
        << latin1("vexa_en_GB");
    QTest::newRow("6: the last resort") << QByteArray("de_AT.UTF-8") << latin1("vexa_en_DEV")
                                        << latin1("vexa_en_DEV") << latin1("vexa_en_DEV");
    QTest::newRow("6: after a damaged fifth")
        << QByteArray("de_AT.UTF-8") << latin1("vexa_en_GB! vexa_en_DEV") << latin1("vexa_en_DEV")
        << latin1("vexa_en_DEV");
    QTest::newRow("a language without country")
        << QByteArray("de.UTF-8") << latin1("vexa_de_DE vexa_en_GB") << latin1("vexa_de_DE")
        << latin1("vexa_de_DE");
    QTest::newRow("no locale") << QByteArray("C") << latin1("vexa_C vexa_en_GB") << latin1("vexa_C")
                               << latin1("vexa_C");
    QTest::newRow("no locale, British English") << QByteArray("C") << latin1("vexa_de vexa_en_GB")
                                                << latin1("vexa_en_GB") << latin1("vexa_en_GB");
}

void TranslationsTest::triesTheNamesInOrder()
{
    QFETCH(QByteArray, locale);
    QFETCH(QString, files);
    QFETCH(QString, path);
    QFETCH(QString, catalogue);
    const QTemporaryDir folder;
    const QStringList names = files.split(QLatin1Char(' '));
    for (const QString &name : names)
        put(name, folder);

    const Outcome outcome = install(folder, locale.constData(), 4);

    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.log, QStringList {loadedLine(folder, path)});
    QCOMPARE(outcome.translation, catalogue);
    QCOMPARE(outcome.languageChanges, 1);
}

void TranslationsTest::warnsOnceWhenThereIsNone_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("level");
    QTest::addColumn<QStringList>("log");
    const QStringList warning {latin1("[WARNING] Warning: no translation file found for vexa")};

    QTest::newRow("no file") << QString() << 4 << warning;
    QTest::newRow("another language") << latin1("vexa_C") << 4 << warning;
    QTest::newRow("a damaged last resort") << latin1("vexa_en_DEV!") << 4 << warning;
    QTest::newRow("warnings pass") << QString() << 2 << warning;
    QTest::newRow("only errors pass") << QString() << 1 << QStringList();
}

void TranslationsTest::warnsOnceWhenThereIsNone()
{
    QFETCH(QString, file);
    QFETCH(int, level);
    QFETCH(QStringList, log);
    const QTemporaryDir folder;
    if (!file.isEmpty())
        put(file, folder);

    const Outcome outcome = install(folder, "de_AT.UTF-8", level);

    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.locale, latin1("de_AT"));
    QCOMPARE(outcome.log, log);
    QCOMPARE(outcome.translation, latin1(Text));
    QCOMPARE(outcome.languageChanges, 0);
}

void TranslationsTest::installsOneMoreAtEachInitialisation()
{
    const QTemporaryDir folder;
    put(latin1("vexa_de"), folder);

    const Outcome outcome = install(folder, "de_AT.UTF-8", 4, 2);

    QCOMPARE(outcome.status, 0);
    const QString line = loadedLine(folder, latin1("vexa_de_AT"));
    QCOMPARE(outcome.log, (QStringList {line, line}));
    QCOMPARE(outcome.languageChanges, 2);
}

void TranslationsTest::installsAFileThatLoads_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("without extension") << latin1("vexa_de_AT");
    QTest::newRow("with extension") << latin1("vexa_de_AT.qm");
    QTest::newRow("a name to shorten") << latin1("vexa_de_XX");
    QTest::newRow("a name to shorten at a dot") << latin1("vexa.x.y");
}

void TranslationsTest::installsAFileThatLoads()
{
    QFETCH(QString, name);
    LogCatcher log(4);
    VEXA plugin;

    QVERIFY(plugin.installTranslator(m_catalogues.filePath(name)));

    QCOMPARE(log.texts(),
             QStringList {QStringLiteral("[TRACE] Loaded translation from ")
                          + m_catalogues.filePath(name)});
}

void TranslationsTest::leavesAFileThatDoesNotLoad_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << m_catalogues.filePath(latin1("other"));
    QTest::newRow("no such folder") << m_catalogues.filePath(latin1("none/vexa"));
    QTest::newRow("a folder") << m_catalogues.path();
    QTest::newRow("not a catalogue") << m_catalogues.filePath(latin1("vexa_de.qm.ts"));
    QTest::newRow("empty path") << QString();
}

void TranslationsTest::leavesAFileThatDoesNotLoad()
{
    QFETCH(QString, path);
    LogCatcher log(4);
    VEXA plugin;

    QVERIFY(!plugin.installTranslator(path));

    QVERIFY2(log.lines().isEmpty(), qPrintable(log.texts().join(QLatin1Char('\n'))));
}

void TranslationsTest::tracesOnlyAtLevelFour()
{
    LogCatcher log(3);
    VEXA plugin;

    QVERIFY(plugin.installTranslator(m_catalogues.filePath(latin1("vexa_de"))));

    QVERIFY(log.lines().isEmpty());
}

void TranslationsTest::installsACatalogueWithoutTexts()
{
    LogCatcher log(4);
    VEXA plugin;

    // Qt itself says no to installing such a one; it counts as loaded all the same.
    QVERIFY(plugin.installTranslator(m_catalogues.filePath(latin1("empty"))));

    QCOMPARE(int(log.lines().size()), 1);
}

namespace {

class LanguageChangeCounter : public QObject
{
public:
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::LanguageChange)
            ++count;
        return false;
    }
};

int installAndTell(QCoreApplication &application)
{
    const QStringList arguments = application.arguments();
    LanguageChangeCounter counter;
    application.installEventFilter(&counter);
    LogCatcher log(arguments[3].toInt());
    VEXA plugin;
    for (int i = 0; i < arguments[4].toInt(); ++i)
        plugin.installTranslators(arguments[2], QStringLiteral("vexa"));

    for (const QString &text : log.texts())
        printf("L %s\n", qPrintable(text));
    printf("N %s\n", qPrintable(QLocale::system().name()));
    printf("T %s\n", qPrintable(QCoreApplication::translate(Context, Text)));
    printf("C %d\n", counter.count);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().value(1) == QLatin1String("--install"))
        return installAndTell(application);
    TranslationsTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_translations.moc"
