// SPDX-License-Identifier: MIT
#include "catalog/localizationtools.h"

#include "catalog/mapcatalog.h"
#include "testutils/logcatcher.h"
#include "testutils/temporaryhome.h"
#include <cstdio>
#include <QMetaMethod>
#include <QProcess>
#include <QTest>

class LocalizationToolsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKeyOfTheTableHasItsCode_data();
    void everyKeyOfTheTableHasItsCode();
    void aNameThatIsNoKeyFallsBack_data();
    void aNameThatIsNoKeyFallsBack();
    void unassignedCodesBelongToNoKey();
    void fillingTheTableAgainChangesNothing();
    void scriptsSeeNoMembers();
    void theCatalogueTakesTheSystemLocale_data();
    void theCatalogueTakesTheSystemLocale();
};

void LocalizationToolsTest::everyKeyOfTheTableHasItsCode_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("code");
    QTest::newRow("en_GB gives 001") << QStringLiteral("en_GB") << QStringLiteral("001");
    QTest::newRow("fr gives 002") << QStringLiteral("fr") << QStringLiteral("002");
    QTest::newRow("de gives 003") << QStringLiteral("de") << QStringLiteral("003");
    QTest::newRow("es gives 004") << QStringLiteral("es") << QStringLiteral("004");
    QTest::newRow("it gives 005") << QStringLiteral("it") << QStringLiteral("005");
    QTest::newRow("sv gives 006") << QStringLiteral("sv") << QStringLiteral("006");
    QTest::newRow("da gives 007") << QStringLiteral("da") << QStringLiteral("007");
    QTest::newRow("no gives 008") << QStringLiteral("no") << QStringLiteral("008");
    QTest::newRow("nb_NO gives 008") << QStringLiteral("nb_NO") << QStringLiteral("008");
    QTest::newRow("nn_NO gives 008") << QStringLiteral("nn_NO") << QStringLiteral("008");
    QTest::newRow("fi gives 009") << QStringLiteral("fi") << QStringLiteral("009");
    QTest::newRow("en_US gives 010") << QStringLiteral("en_US") << QStringLiteral("010");
    QTest::newRow("fr_CH gives 011") << QStringLiteral("fr_CH") << QStringLiteral("011");
    QTest::newRow("de_CH gives 012") << QStringLiteral("de_CH") << QStringLiteral("012");
    QTest::newRow("pt gives 013") << QStringLiteral("pt") << QStringLiteral("013");
    QTest::newRow("tr gives 014") << QStringLiteral("tr") << QStringLiteral("014");
    QTest::newRow("is gives 015") << QStringLiteral("is") << QStringLiteral("015");
    QTest::newRow("ru gives 016") << QStringLiteral("ru") << QStringLiteral("016");
    QTest::newRow("hu gives 017") << QStringLiteral("hu") << QStringLiteral("017");
    QTest::newRow("nl gives 018") << QStringLiteral("nl") << QStringLiteral("018");
    QTest::newRow("nl_BE gives 019") << QStringLiteral("nl_BE") << QStringLiteral("019");
    QTest::newRow("en_AU gives 020") << QStringLiteral("en_AU") << QStringLiteral("020");
    QTest::newRow("fr_BE gives 021") << QStringLiteral("fr_BE") << QStringLiteral("021");
    QTest::newRow("de_AT gives 022") << QStringLiteral("de_AT") << QStringLiteral("022");
    QTest::newRow("en_NZ gives 023") << QStringLiteral("en_NZ") << QStringLiteral("023");
    QTest::newRow("cs gives 025") << QStringLiteral("cs") << QStringLiteral("025");
    QTest::newRow("sk gives 026") << QStringLiteral("sk") << QStringLiteral("026");
    QTest::newRow("pl gives 027") << QStringLiteral("pl") << QStringLiteral("027");
    QTest::newRow("sl gives 028") << QStringLiteral("sl") << QStringLiteral("028");
    QTest::newRow("zh_TW gives 029") << QStringLiteral("zh_TW") << QStringLiteral("029");
    QTest::newRow("zh_HK gives 030") << QStringLiteral("zh_HK") << QStringLiteral("030");
    QTest::newRow("zh_CN gives 031") << QStringLiteral("zh_CN") << QStringLiteral("031");
    QTest::newRow("ja gives 032") << QStringLiteral("ja") << QStringLiteral("032");
    QTest::newRow("th gives 033") << QStringLiteral("th") << QStringLiteral("033");
    QTest::newRow("af gives 034") << QStringLiteral("af") << QStringLiteral("034");
    QTest::newRow("sq gives 035") << QStringLiteral("sq") << QStringLiteral("035");
    QTest::newRow("am gives 036") << QStringLiteral("am") << QStringLiteral("036");
    QTest::newRow("ar gives 037") << QStringLiteral("ar") << QStringLiteral("037");
    QTest::newRow("hy gives 038") << QStringLiteral("hy") << QStringLiteral("038");
    QTest::newRow("be gives 040") << QStringLiteral("be") << QStringLiteral("040");
    QTest::newRow("bn gives 041") << QStringLiteral("bn") << QStringLiteral("041");
    QTest::newRow("bg gives 042") << QStringLiteral("bg") << QStringLiteral("042");
    QTest::newRow("my gives 043") << QStringLiteral("my") << QStringLiteral("043");
    QTest::newRow("ca gives 044") << QStringLiteral("ca") << QStringLiteral("044");
    QTest::newRow("ht gives 046") << QStringLiteral("ht") << QStringLiteral("046");
    QTest::newRow("en_CA gives 049") << QStringLiteral("en_CA") << QStringLiteral("049");
    QTest::newRow("fa gives 050") << QStringLiteral("fa") << QStringLiteral("050");
    QTest::newRow("fr_CA gives 051") << QStringLiteral("fr_CA") << QStringLiteral("051");
    QTest::newRow("gd gives 052") << QStringLiteral("gd") << QStringLiteral("052");
    QTest::newRow("ka gives 053") << QStringLiteral("ka") << QStringLiteral("053");
    QTest::newRow("el gives 054") << QStringLiteral("el") << QStringLiteral("054");
    QTest::newRow("gu gives 056") << QStringLiteral("gu") << QStringLiteral("056");
    QTest::newRow("he gives 057") << QStringLiteral("he") << QStringLiteral("057");
    QTest::newRow("hi gives 058") << QStringLiteral("hi") << QStringLiteral("058");
    QTest::newRow("id gives 059") << QStringLiteral("id") << QStringLiteral("059");
    QTest::newRow("it_CH gives 061") << QStringLiteral("it_CH") << QStringLiteral("061");
    QTest::newRow("kn gives 062") << QStringLiteral("kn") << QStringLiteral("062");
    QTest::newRow("kk gives 063") << QStringLiteral("kk") << QStringLiteral("063");
    QTest::newRow("km gives 064") << QStringLiteral("km") << QStringLiteral("064");
    QTest::newRow("ko gives 065") << QStringLiteral("ko") << QStringLiteral("065");
    QTest::newRow("lo gives 066") << QStringLiteral("lo") << QStringLiteral("066");
    QTest::newRow("lv gives 067") << QStringLiteral("lv") << QStringLiteral("067");
    QTest::newRow("lt gives 068") << QStringLiteral("lt") << QStringLiteral("068");
    QTest::newRow("mk gives 069") << QStringLiteral("mk") << QStringLiteral("069");
    QTest::newRow("ms gives 070") << QStringLiteral("ms") << QStringLiteral("070");
    QTest::newRow("ml gives 071") << QStringLiteral("ml") << QStringLiteral("071");
    QTest::newRow("mr gives 072") << QStringLiteral("mr") << QStringLiteral("072");
    QTest::newRow("mo gives 073") << QStringLiteral("mo") << QStringLiteral("073");
    QTest::newRow("mn gives 074") << QStringLiteral("mn") << QStringLiteral("074");
    QTest::newRow("pt_BR gives 076") << QStringLiteral("pt_BR") << QStringLiteral("076");
    QTest::newRow("pa gives 077") << QStringLiteral("pa") << QStringLiteral("077");
    QTest::newRow("ro gives 078") << QStringLiteral("ro") << QStringLiteral("078");
    QTest::newRow("sr gives 079") << QStringLiteral("sr") << QStringLiteral("079");
    QTest::newRow("si gives 080") << QStringLiteral("si") << QStringLiteral("080");
    QTest::newRow("so gives 081") << QStringLiteral("so") << QStringLiteral("081");
    QTest::newRow("es_MX gives 083") << QStringLiteral("es_MX") << QStringLiteral("083");
    QTest::newRow("sw gives 084") << QStringLiteral("sw") << QStringLiteral("084");
    QTest::newRow("sv_FI gives 085") << QStringLiteral("sv_FI") << QStringLiteral("085");
    QTest::newRow("tg gives 086") << QStringLiteral("tg") << QStringLiteral("086");
    QTest::newRow("ta gives 087") << QStringLiteral("ta") << QStringLiteral("087");
    QTest::newRow("te gives 088") << QStringLiteral("te") << QStringLiteral("088");
    QTest::newRow("bo gives 089") << QStringLiteral("bo") << QStringLiteral("089");
    QTest::newRow("ti gives 090") << QStringLiteral("ti") << QStringLiteral("090");
    QTest::newRow("tk gives 092") << QStringLiteral("tk") << QStringLiteral("092");
    QTest::newRow("uk gives 093") << QStringLiteral("uk") << QStringLiteral("093");
    QTest::newRow("ur gives 094") << QStringLiteral("ur") << QStringLiteral("094");
    QTest::newRow("uz gives 095") << QStringLiteral("uz") << QStringLiteral("095");
    QTest::newRow("vi gives 096") << QStringLiteral("vi") << QStringLiteral("096");
    QTest::newRow("cy gives 097") << QStringLiteral("cy") << QStringLiteral("097");
    QTest::newRow("zu gives 098") << QStringLiteral("zu") << QStringLiteral("098");
    QTest::newRow("?? gives 099") << QStringLiteral("??") << QStringLiteral("099");
    QTest::newRow("eu gives 102") << QStringLiteral("eu") << QStringLiteral("102");
    QTest::newRow("ga gives 103") << QStringLiteral("ga") << QStringLiteral("103");
}

void LocalizationToolsTest::everyKeyOfTheTableHasItsCode()
{
    QFETCH(QString, name);
    QFETCH(QString, code);

    QCOMPARE(LocalizationTools().charCodeToDigitCode(name), code);
}

void LocalizationToolsTest::aNameThatIsNoKeyFallsBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("code");
    const auto row = [](const char *name, const char *code) {
        QTest::addRow("%s gives %s", name, code)
            << QString::fromLatin1(name) << QString::fromLatin1(code);
    };
    row("pt_PT", "013"); // the language
    row("fi_FI", "009");
    row("sv_SE", "006");
    row("it_IT", "005");
    row("no_NO", "008");
    row("ga_IE", "103");
    row("ht_HT", "046");
    row("ta_IN", "087");
    row("de_AT_1901", "003");
    row("xx_fr", "002"); // the second part
    row("xx_fi_de", "009");
    row("_de", "003");
    row("en_IE", "001"); // nothing
    row("en", "001");
    row("xx_YY", "001");
    row("xx_YY_de", "001"); // a third part is not asked
    row("C", "001");
    row("", "001");
    row("_", "001");
    row("__", "001");
    row("EN_gb", "001"); // case counts
    row("DE", "001");
    row("PT_BR", "001");
    row("??_XX", "099"); // an ordinary key
    row("?", "001");
    row("en_GB ", "001");
}

void LocalizationToolsTest::aNameThatIsNoKeyFallsBack()
{
    QFETCH(QString, name);
    QFETCH(QString, code);

    QCOMPARE(LocalizationTools().charCodeToDigitCode(name), code);
}

void LocalizationToolsTest::unassignedCodesBelongToNoKey()
{
    const LocalizationTools tools;

    // All names that could be keys: two small letters, alone or with a country.
    QStringList names {QStringLiteral("??")};
    for (char a = 'a'; a <= 'z'; ++a) {
        for (char b = 'a'; b <= 'z'; ++b) {
            const QString language = QString(QLatin1Char(a)) + QLatin1Char(b);
            names.append(language);
            for (char c = 'A'; c <= 'Z'; ++c) {
                for (char d = 'A'; d <= 'Z'; ++d)
                    names.append(language + QLatin1Char('_') + QLatin1Char(c) + QLatin1Char(d));
            }
        }
    }
    QSet<QString> codes;
    for (const QString &name : std::as_const(names))
        codes.insert(tools.charCodeToDigitCode(name));

    QCOMPARE(int(codes.size()), 103 - 9 - 3); // nine unassigned, three overwritten
    for (const char *code :
         {"024", "047", "048", "055", "075", "082", "091", "100", "101", "039", "045", "060"})
        QVERIFY2(!codes.contains(QLatin1String(code)), code);
}

void LocalizationToolsTest::fillingTheTableAgainChangesNothing()
{
    LocalizationTools tools;

    tools.initCharCodeToDigitCodeMap();

    QCOMPARE(tools.charCodeToDigitCode(QStringLiteral("ga")), QStringLiteral("103"));
    QCOMPARE(tools.charCodeToDigitCode(QStringLiteral("en_GB")), QStringLiteral("001"));
}

void LocalizationToolsTest::scriptsSeeNoMembers()
{
    const QMetaObject &meta = LocalizationTools::staticMetaObject;

    QCOMPARE(meta.propertyCount(), QObject::staticMetaObject.propertyCount());
    QCOMPARE(meta.methodCount(), QObject::staticMetaObject.methodCount());
    QCOMPARE(LocalizationTools().parent(), nullptr);
}

void LocalizationToolsTest::theCatalogueTakesTheSystemLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("trace");
    const auto row = [](const char *locale, const char *name, const char *code) {
        QTest::addRow("%s is %s", locale, name)
            << QString::fromLatin1(locale)
            << QStringLiteral("[TRACE] We receive system name() as %1 :: %2")
                   .arg(QLatin1String(name), QLatin1String(code));
    };
    row("en_GB.UTF-8", "en_GB", "001");
    row("pt_BR", "pt_BR", "076");
    row("sv_FI.UTF-8", "sv_FI", "085");
    row("fi", "fi_FI", "009"); // a bare language gets its country
    row("no_NO", "nb_NO", "008"); // and old names their new one
    row("C", "C", "001");
    row("xx_YY", "C", "001");
}

// The system's locale is read once in the life of a process, so each one gets its own.
void LocalizationToolsTest::theCatalogueTakesTheSystemLocale()
{
    QFETCH(QString, locale);
    QFETCH(QString, trace);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), locale);
    environment.remove(QStringLiteral("LANGUAGE"));
    QProcess child;
    child.setProcessEnvironment(environment);

    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--digit-code")});

    QVERIFY(child.waitForFinished());
    const QStringList lines =
        QString::fromUtf8(child.readAllStandardOutput()).split(QLatin1Char('\n'));
    QCOMPARE(lines.value(0), trace);
    QCOMPARE(lines.value(1), trace.right(3));
}

namespace {

int printDigitCode()
{
    const TemporaryHome home;
    const MapCatalog catalog;
    QString code;
    QString trace;
    {
        const LogCatcher log(4);
        code = catalog.getDigitCode();
        trace = log.texts().join(QLatin1Char('|'));
    }
    printf("%s\n%s\n", qPrintable(trace), qPrintable(code));
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (app.arguments().contains(QStringLiteral("--digit-code")))
        return printDigitCode();
    LocalizationToolsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_localizationtools.moc"
