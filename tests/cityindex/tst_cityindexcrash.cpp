// SPDX-License-Identifier: MIT
// A process that is killed while it writes the city index, again and again.
#include "cityindex/citydata.h"
#include "cityindex/cityindexlist.h"
#include "cityindex/cityindexlistprocessor.h"
#include "testutils/childprogram.h"
#include <cstdio>
#include <memory>
#include <QCoreApplication>
#include <QDir>
#include <QTest>

class CityIndexCrashTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_data = std::make_unique<CityData>(); }
    void cleanup() { m_data.reset(); }

    void theFileIsTheOldOrTheNewOne();
    void noAdditionThatHasReturnedIsLost();

private:
    // Kills the writer a little later each time; what it has told by then.
    QByteArray runAndKill(const char *mode, int round) const;

    std::unique_ptr<CityData> m_data;
};

namespace {

constexpr int Entries = 2000;
constexpr int Rounds = 25;

QString filePath()
{
    return QString::fromUtf8(qgetenv("VEXA_MYDOCS")) + text("/cities/Tessarin/cityindex.xml");
}

void tell(int number)
{
    printf("%d\n", number);
    fflush(stdout);
}

// Writes the whole list with one version after the other.
int writeForEver()
{
    QMap<QString, CityIndex> entries;
    for (int i = 0; i < Entries; ++i) {
        const QString id = QString::number(i);
        entries.insert(id, CityIndex(id, text("a name that takes its time to be written"), {}));
    }
    for (int version = 0;; ++version) {
        for (CityIndex &entry : entries)
            entry.setVersion(QString::number(version));
        CityIndexListProcessor().updateCityIndexListContent(filePath(), entries);
        tell(version);
    }
}

int addForEver()
{
    CityIndexList list;
    for (int i = list.count();; ++i) {
        list.addCityIndex(QString::number(i), text("name"), text("1"));
        tell(i);
    }
}

} // namespace

QByteArray CityIndexCrashTest::runAndKill(const char *mode, int round) const
{
    ChildProgram child(QCoreApplication::applicationFilePath(), {text(mode)});
    if (!child.waitForLine("\n"))
        return QByteArray();
    // At another moment of the next write each time, in steps of a few microseconds.
    for (int spin = 0; spin < round * 37 % 101; ++spin)
        QFile::exists(m_data->file());
    child.kill();
    return child.output();
}

void CityIndexCrashTest::theFileIsTheOldOrTheNewOne()
{
    QVERIFY(QDir().mkpath(m_data->folder()));
    for (int round = 0; round < Rounds; ++round) {
        const QList<QByteArray> told = runAndKill("--write", round).trimmed().split('\n');
        QVERIFY(!told.last().isEmpty());

        QMap<QString, CityIndex> entries;
        CityIndexListProcessor().readCityIndexList(m_data->file(), entries);
        QCOMPARE(int(entries.size()), Entries);
        const QString version = entries.first().version();
        QVERIFY(version.toInt() >= told.last().toInt());
        for (const CityIndex &entry : entries)
            QCOMPARE(entry.version(), version);
    }
}

void CityIndexCrashTest::noAdditionThatHasReturnedIsLost()
{
    for (int round = 0; round < Rounds; ++round) {
        const QList<QByteArray> told = runAndKill("--add", round).trimmed().split('\n');
        QVERIFY(!told.last().isEmpty());

        CityIndexList list;
        for (int i = 0; i <= told.last().toInt(); ++i)
            QVERIFY2(list.cityIndex(QString::number(i)), qPrintable(QString::number(i)));
    }
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QString mode = app.arguments().value(1);
    if (mode == QLatin1String("--write"))
        return writeForEver();
    if (mode == QLatin1String("--add"))
        return addForEver();
    CityIndexCrashTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_cityindexcrash.moc"
