// SPDX-License-Identifier: MIT
#include "plugin/logger.h"

#include "testutils/logcatcher.h"
#include <limits>
#include <QMetaMethod>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QtTest>
#include <thread>

namespace {

using Kind = void (L::*)(QString, QString);
using ShortKind = void (L::*)(QString);

struct KindInfo
{
    const char *name;
    int level;
    const char *prefix;
    QtMsgType type;
    ShortKind shortForm;
    Kind longForm;
};

const KindInfo Kinds[] = {
    {"error", 1, "[ERROR] ", QtCriticalMsg, &L::error, &L::error},
    {"warning", 2, "[WARNING] ", QtWarningMsg, &L::warning, &L::warning},
    {"info", 3, "[INFO] ", QtDebugMsg, &L::info, &L::info},
    {"trace", 4, "[TRACE] ", QtDebugMsg, &L::trace, &L::trace},
};

QString latin1(const char *text)
{
    return QString::fromLatin1(text);
}

// What a message handler is told beside the text.
int handlerCalls = 0;
bool handlerHadContext = false;

void noteContext(QtMsgType, const QMessageLogContext &context, const QString &)
{
    ++handlerCalls;
    handlerHadContext = context.category || context.file || context.function || context.line != 0;
}

} // namespace

class LoggerTest : public QObject
{
    Q_OBJECT

public:
    // Before anything can have used the logger.
    LoggerTest()
        : m_instanceAtLoad(L::s_instance)
        , m_levelAtFirst(L::og()->getLogLevel())
    { }

private Q_SLOTS:
    void isMadeAtTheFirstCallAndStaysTheSame();
    void letsWarningsPassAtFirst();
    void listsItsMethodsInOrder();
    void letsAKindPassFromItsLevelOn_data();
    void letsAKindPassFromItsLevelOn();
    void writesTheMessageByteForByte_data();
    void writesTheMessageByteForByte();
    void reducesTheLocationToLatin1_data();
    void reducesTheLocationToLatin1();
    void handsEachLineOverInOneCallWithoutContext();
    void tellsOfLevelsAboveThree_data();
    void tellsOfLevelsAboveThree();
    void readsLevelsWrittenAsText_data();
    void readsLevelsWrittenAsText();
    void printChoosesTheKindByItsNumber_data();
    void printChoosesTheKindByItsNumber();
    void printWithoutANumberInforms();
    void printIsSubjectToTheLevel();
    void takesCallsFromQml_data();
    void takesCallsFromQml();
    void survivesTheGarbageCollectorOfQml();
    void keepsLinesWholeWhenTwoThreadsLog();

private:
    L *m_instanceAtLoad;
    int m_levelAtFirst;
};

void LoggerTest::isMadeAtTheFirstCallAndStaysTheSame()
{
    QVERIFY(!m_instanceAtLoad);
    QVERIFY(L::og());
    QCOMPARE(L::og(), L::s_instance);
    QCOMPARE(L::og(), L::og());
    QVERIFY(!L::og()->parent());
}

void LoggerTest::letsWarningsPassAtFirst()
{
    QCOMPARE(m_levelAtFirst, 2);
}

void LoggerTest::listsItsMethodsInOrder()
{
    const QMetaObject &meta = L::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QCOMPARE(method.methodType(), QMetaMethod::Method);
        QCOMPARE(method.access(), QMetaMethod::Public);
        const QList<QByteArray> names = method.parameterNames();
        methods.append(QString::fromLatin1(method.typeName()) + QLatin1Char(' ')
                       + QString::fromLatin1(method.methodSignature()) + QLatin1Char(' ')
                       + QString::fromLatin1(names.join(',')));
    }

    const QStringList expected {
        latin1("void setLogLevel(int) loglvl"),
        latin1("void setLogLevel(QString) loglvl"),
        latin1("int getLogLevel() "),
        latin1("void print(QString) message"),
        latin1("void print(QString,int) message,lvl"),
        latin1("void trace(QString) message"),
        latin1("void trace(QString,QString) message,location"),
        latin1("void info(QString) message"),
        latin1("void info(QString,QString) message,location"),
        latin1("void warning(QString) message"),
        latin1("void warning(QString,QString) message,location"),
        latin1("void error(QString) message"),
        latin1("void error(QString,QString) message,location"),
    };
    QCOMPARE(methods, expected);
    QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    QCOMPARE(meta.className(), "L");
}

void LoggerTest::letsAKindPassFromItsLevelOn_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("kinds");

    QTest::newRow("far below off") << std::numeric_limits<int>::min() << 0;
    QTest::newRow("below off") << -1 << 0;
    QTest::newRow("off") << 0 << 0;
    QTest::newRow("error") << 1 << 1;
    QTest::newRow("warning") << 2 << 2;
    QTest::newRow("info") << 3 << 3;
    QTest::newRow("trace") << 4 << 4;
    QTest::newRow("above trace") << 5 << 4;
    QTest::newRow("far above trace") << std::numeric_limits<int>::max() << 4;
}

void LoggerTest::letsAKindPassFromItsLevelOn()
{
    QFETCH(int, level);
    QFETCH(int, kinds);
    LogCatcher log(0);
    L::og()->setLogLevel(level);
    QCOMPARE(L::og()->getLogLevel(), level);

    for (const KindInfo &kind : Kinds) {
        log.clear();
        (L::og()->*kind.shortForm)(latin1("M"));
        (L::og()->*kind.longForm)(latin1("M"), latin1("W"));
        (L::og()->*kind.longForm)(latin1("M"), QString());

        const bool isPassing = kind.level <= kinds;
        QCOMPARE(L::og()->passes(L::Level(kind.level)), isPassing);
        const QList<LogLine> lines = log.lines();
        QCOMPARE(int(lines.size()), isPassing ? 3 : 0);
        if (!isPassing)
            continue;
        const QString plain = latin1("\"") + latin1(kind.prefix) + latin1("M\" ");
        QCOMPARE(lines[0].text, plain);
        QCOMPARE(lines[1].text, latin1("\"") + latin1(kind.prefix) + latin1("M at W\" "));
        QCOMPARE(lines[2].text, plain);
        for (const LogLine &line : lines)
            QCOMPARE(line.type, kind.type);
    }
}

void LoggerTest::writesTheMessageByteForByte_data()
{
    QTest::addColumn<QString>("message");

    QTest::newRow("empty") << QString();
    QTest::newRow("quotes and backslashes") << latin1("say \"no\" to C:\\new");
    QTest::newRow("line breaks and tabs") << latin1("a\nb\r\tc\a");
    QTest::newRow("format signs") << latin1("%1 %s %n %%");
    QTest::newRow("blanks at both ends") << latin1("  x  ");
    QTest::newRow("letters beyond ASCII") << QStringLiteral("\u00e9 \u20ac \u0416 \u6f22");
    QTest::newRow("beyond the first plane") << QString::fromUtf8("\xF0\x9F\x97\xBA map");
    QTest::newRow("a null character") << latin1("before") + QChar(0) + latin1("after");
    QTest::newRow("half a surrogate pair") << latin1("x") + QChar(0xD83D) + latin1("y");
    QTest::newRow("long") << QString(100000, QLatin1Char('m'));
}

void LoggerTest::writesTheMessageByteForByte()
{
    QFETCH(QString, message);

    for (const KindInfo &kind : Kinds) {
        LogCatcher log(4);
        (L::og()->*kind.shortForm)(message);

        QCOMPARE(int(log.lines().size()), 1);
        QCOMPARE(log.lines().at(0).text,
                 QLatin1Char('"') + latin1(kind.prefix) + message + latin1("\" "));
    }
}

void LoggerTest::reducesTheLocationToLatin1_data()
{
    QTest::addColumn<QString>("location");
    QTest::addColumn<QString>("written");

    QTest::newRow("plain") << latin1("virtual void Worker::run()")
                           << latin1(" at virtual void Worker::run()");
    QTest::newRow("none") << QString() << QString();
    QTest::newRow("empty") << latin1("") << QString();
    QTest::newRow("blank") << latin1(" ") << latin1(" at  ");
    QTest::newRow("quotes") << latin1("\"f\\\"") << latin1(" at \"f\\\"");
    QTest::newRow("Latin-1") << QStringLiteral("caf\u00e9 \u00ff")
                             << QStringLiteral(" at caf\u00e9 \u00ff");
    QTest::newRow("not Latin-1") << QStringLiteral("\u20ac\u0416") << latin1(" at ??");
    QTest::newRow("beyond the first plane")
        << QString::fromUtf8("\xF0\x9F\x97\xBA") << latin1(" at ??");
    QTest::newRow("a null character")
        << latin1("a") + QChar(0) + latin1("b") << latin1(" at a") + QChar(0) + latin1("b");
}

void LoggerTest::reducesTheLocationToLatin1()
{
    QFETCH(QString, location);
    QFETCH(QString, written);

    for (const KindInfo &kind : Kinds) {
        LogCatcher log(4);
        (L::og()->*kind.longForm)(QStringLiteral("M\u20ac"), location);

        QCOMPARE(int(log.lines().size()), 1);
        QCOMPARE(log.lines().at(0).text,
                 QLatin1Char('"') + latin1(kind.prefix) + QStringLiteral("M\u20ac") + written
                     + latin1("\" "));
    }
}

void LoggerTest::handsEachLineOverInOneCallWithoutContext()
{
    const LogCatcher restoresLevelAndHandler(2);
    qInstallMessageHandler(noteContext);
    handlerCalls = 0;

    L::og()->error(latin1("a\nb"), latin1("c"));

    QCOMPARE(handlerCalls, 1);
    QVERIFY(!handlerHadContext);
}

void LoggerTest::tellsOfLevelsAboveThree_data()
{
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("line");

    QTest::newRow("4") << 4 << latin1("Set loglevel to  4 ");
    QTest::newRow("5") << 5 << latin1("Set loglevel to  5 ");
    QTest::newRow("a million") << 1000000 << latin1("Set loglevel to  1000000 ");
    QTest::newRow("3") << 3 << QString();
    QTest::newRow("0") << 0 << QString();
    QTest::newRow("-4") << -4 << QString();
}

void LoggerTest::tellsOfLevelsAboveThree()
{
    QFETCH(int, level);
    QFETCH(QString, line);
    LogCatcher log(2);

    L::og()->setLogLevel(level);
    L::og()->setLogLevel(level);

    QCOMPARE(L::og()->getLogLevel(), level);
    if (line.isEmpty()) {
        QVERIFY(log.lines().isEmpty());
        return;
    }
    QCOMPARE(int(log.lines().size()), 2);
    for (const LogLine &written : log.lines()) {
        QCOMPARE(written.text, line);
        QCOMPARE(written.type, QtDebugMsg);
    }
}

void LoggerTest::readsLevelsWrittenAsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("level");

    QTest::newRow("number") << latin1("3") << 3;
    QTest::newRow("trace") << latin1("4") << 4;
    QTest::newRow("negative") << latin1("-1") << -1;
    QTest::newRow("leading zeros are decimal") << latin1("010") << 10;
    QTest::newRow("word") << latin1("trace") << 0;
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("hexadecimal") << latin1("0x4") << 0;
    QTest::newRow("broken number") << latin1("4.7") << 0;
    QTest::newRow("number and more") << latin1("4 ever") << 0;
    QTest::newRow("too large") << latin1("99999999999") << 0;
}

void LoggerTest::readsLevelsWrittenAsText()
{
    QFETCH(QString, text);
    QFETCH(int, level);
    LogCatcher log(2);

    L::og()->setLogLevel(text);

    QCOMPARE(L::og()->getLogLevel(), level);
    QCOMPARE(int(log.lines().size()), level > 3 ? 1 : 0);
    log.clear();
    L::og()->error(latin1("M"));
    QCOMPARE(int(log.lines().size()), level > 0 ? 1 : 0);
}

void LoggerTest::printChoosesTheKindByItsNumber_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("type");

    QTest::newRow("-3") << -3 << latin1("\"[ERROR] M\" ") << int(QtCriticalMsg);
    // Not "off", as the same number would be for the level.
    QTest::newRow("0") << 0 << latin1("\"[ERROR] M\" ") << int(QtCriticalMsg);
    QTest::newRow("1") << 1 << latin1("\"[ERROR] M\" ") << int(QtCriticalMsg);
    QTest::newRow("2") << 2 << latin1("\"[WARNING] M\" ") << int(QtWarningMsg);
    QTest::newRow("3") << 3 << latin1("\"[INFO] M\" ") << int(QtDebugMsg);
    QTest::newRow("4") << 4 << latin1("\"[TRACE] M\" ") << int(QtDebugMsg);
    QTest::newRow("7") << 7 << latin1("\"[TRACE] M\" ") << int(QtDebugMsg);
}

void LoggerTest::printChoosesTheKindByItsNumber()
{
    QFETCH(int, number);
    QFETCH(QString, line);
    QFETCH(int, type);
    LogCatcher log(4);

    L::og()->print(latin1("M"), number);

    QCOMPARE(int(log.lines().size()), 1);
    QCOMPARE(log.lines().at(0).text, line);
    QCOMPARE(int(log.lines().at(0).type), type);
}

void LoggerTest::printWithoutANumberInforms()
{
    LogCatcher log(3);

    L::og()->print(latin1("M"));

    QCOMPARE(int(log.lines().size()), 1);
    QCOMPARE(log.lines().at(0).text, latin1("\"[INFO] M\" "));
}

void LoggerTest::printIsSubjectToTheLevel()
{
    LogCatcher log(3);
    L::og()->print(latin1("M"), 7);
    QVERIFY(log.lines().isEmpty());

    L::og()->setLogLevel(2);
    L::og()->print(latin1("M"));
    QVERIFY(log.lines().isEmpty());

    L::og()->setLogLevel(0);
    L::og()->print(latin1("M"), 0);
    QVERIFY(log.lines().isEmpty());
}

void LoggerTest::takesCallsFromQml_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<int>("level");
    const QString setToFour = latin1("Set loglevel to  4 ");

    QTest::newRow("level as text")
        << latin1("log.setLogLevel('4')") << QStringList {setToFour} << 4;
    QTest::newRow("level as number")
        << latin1("log.setLogLevel(4)") << QStringList {setToFour} << 4;
    QTest::newRow("level as broken number")
        << latin1("log.setLogLevel(4.7)") << QStringList {setToFour} << 4;
    QTest::newRow("level as a word") << latin1("log.setLogLevel('much')") << QStringList() << 0;
    QTest::newRow("level read back")
        << latin1("log.setLogLevel(1 + log.getLogLevel())") << QStringList {setToFour} << 4;
    QTest::newRow("print") << latin1("log.print('x')") << QStringList {latin1("\"[INFO] x\" ")}
                           << 3;
    QTest::newRow("print a number")
        << latin1("log.print(5)") << QStringList {latin1("\"[INFO] 5\" ")} << 3;
    QTest::newRow("print with 0") << latin1("log.print('x', 0)")
                                  << QStringList {latin1("\"[ERROR] x\" ")} << 3;
    QTest::newRow("print with 7 below its level")
        << latin1("log.print('x', 7)") << QStringList() << 3;
    QTest::newRow("error") << latin1("log.error('x')") << QStringList {latin1("\"[ERROR] x\" ")}
                           << 3;
    QTest::newRow("error with place") << latin1("log.error('x', 'Page.qml')")
                                      << QStringList {latin1("\"[ERROR] x at Page.qml\" ")} << 3;
    QTest::newRow("warning") << latin1("log.warning('\\u20ac', '\\u20ac')")
                             << QStringList {QStringLiteral("\"[WARNING] \u20ac at ?\" ")} << 3;
    QTest::newRow("info") << latin1("log.info('\"'); log.info('x', 'y')")
                          << QStringList {latin1("\"[INFO] \"\" "), latin1("\"[INFO] x at y\" ")}
                          << 3;
    QTest::newRow("trace") << latin1("log.trace('x'); log.setLogLevel(4); log.trace('x', 'y')")
                           << QStringList {setToFour, latin1("\"[TRACE] x at y\" ")} << 4;
}

void LoggerTest::takesCallsFromQml()
{
    QFETCH(QString, script);
    QFETCH(QStringList, lines);
    QFETCH(int, level);
    QQmlEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("log"), L::og());
    QQmlComponent component(&engine);
    component.setData("import QtQml 2.0\nQtObject { Component.onCompleted: { " + script.toUtf8()
                          + " } }",
                      QUrl());
    LogCatcher log(3);

    const std::unique_ptr<QObject> object(component.create());

    QVERIFY2(object, qPrintable(component.errorString()));
    QStringList texts;
    for (const LogLine &line : log.lines())
        texts.append(line.text);
    QCOMPARE(texts, lines);
    QCOMPARE(L::og()->getLogLevel(), level);
}

void LoggerTest::survivesTheGarbageCollectorOfQml()
{
    bool isDestroyed = false;
    const auto connection =
        connect(L::og(), &QObject::destroyed, this, [&] { isDestroyed = true; });
    {
        QQmlEngine engine;
        engine.rootContext()->setContextProperty(QStringLiteral("log"), L::og());
        QQmlComponent component(&engine);
        component.setData("import QtQml 2.0\nQtObject { property var mine: log; "
                          "Component.onCompleted: { mine = null; gc() } }",
                          QUrl());
        const std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
        engine.collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QVERIFY(!isDestroyed);
    disconnect(connection);
}

void LoggerTest::keepsLinesWholeWhenTwoThreadsLog()
{
    constexpr int Count = 500;
    LogCatcher log(2);

    std::thread other([] {
        for (int i = 0; i < Count; ++i)
            L::og()->warning(latin1("from there"), latin1("there"));
    });
    for (int i = 0; i < Count; ++i) {
        L::og()->error(latin1("from here"), latin1("here"));
        L::og()->setLogLevel(2 + i % 2);
    }
    other.join();

    QCOMPARE(log.count(latin1("[WARNING] from there at there")), Count);
    QCOMPARE(log.count(latin1("[ERROR] from here at here")), Count);
    QCOMPARE(int(log.lines().size()), 2 * Count);
}

QTEST_GUILESS_MAIN(LoggerTest)
#include "tst_logger.moc"
