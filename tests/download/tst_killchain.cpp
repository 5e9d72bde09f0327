// SPDX-License-Identifier: MIT
/*
 * A program that installs several regions is killed ahead of a call that changes a file, and
 * started again until its queue is empty. Then every region must be there, whole, and nothing else.
 *
 * A first run without a kill counts the calls and gives each a name; each row of the test is one of
 * them. By default about forty rows are made: one of every kind of call, the others spread evenly.
 * The long form takes every one (some minutes):
 *
 *     VEXA_LONG=1 build/dev/tests/tst_killchain
 *
 * and VEXA_KILL_POINTS=100 makes that many rows. A single row runs by its name:
 *
 *     VEXA_LONG=1 build/dev/tests/tst_killchain 'survivesAKillAheadOf:alone cp, 2'
 */
#include "download/stepengine.h"
#include "testutils/archivebuilder.h"
#include "testutils/childprogram.h"
#include "testutils/httptestserver.h"
#include "testutils/reporttable.h"

#include <algorithm>
#include <map>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>
#include <set>

namespace {

constexpr int DefaultRows = 40;
constexpr int LogShown = 4000; // bytes of the program's log that a failure shows
constexpr int SecondKillEvery = 4; // rows

using Files = std::map<QString, QByteArray>;

struct Region
{
    QString id;
    QString archive;
    QString destination; // below the user's documents
    bool unzip;
};

/** Where one chain of runs lives: home, documents, settings, all empty at first. */
class Place
{
public:
    Place()
    {
        QDir().mkpath(home());
        TestFile::write(docs() + QLatin1String("/cities/Tessarin/catalog-1.xml"), "old");
        TestFile::write(docs() + QLatin1String("/cities/diskcache/a/3/border.cdt"), "old");
    }

    QString home() const { return m_dir.filePath(QStringLiteral("home")); }
    QString docs() const { return m_dir.filePath(QStringLiteral("docs")); }
    QString file(const char *name) const { return m_dir.filePath(QLatin1String(name)); }

    QProcessEnvironment environment(const QString &killName, int killAt) const
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), home());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), file("config"));
        environment.insert(QStringLiteral("VEXA_MYDOCS"), docs());
        environment.insert(QStringLiteral("VEXA_KILL_NAME"), killName);
        environment.insert(QStringLiteral("VEXA_KILL_AT"), QString::number(killAt));
        // Races are other tests' business, which do not trip over what the checker cannot see.
        environment.insert(QStringLiteral("TSAN_OPTIONS"), QStringLiteral("report_bugs=0"));
        environment.insert(QStringLiteral("VEXA_KILL_STATE"), file("count"));
        environment.insert(QStringLiteral("VEXA_KILL_LOG"), file("log"));
        return environment;
    }

private:
    QTemporaryDir m_dir;
};

struct Point
{
    QString name; // call and file
    int number = 0; // of the points with this name, from 1
    QString kind; // points of one kind stand for each other
};

// One file of a region stands for the others; a command that is left alone stands for itself.
QString kindOf(const QString &name, int number)
{
    const QString call = name.section(QLatin1Char(' '), 0, 0);
    if (call == QLatin1String("alone"))
        return name + QString::number(number);
    if (call.startsWith(QLatin1String("command-")) || call == QLatin1String("mkdir")
        || name.endsWith(QLatin1String(".cdt")))
        return call;
    for (const char *archive : {".zip", ".xz", ".7z"}) {
        if (name.endsWith(QLatin1String(archive)))
            return call + QLatin1String(" archive");
    }
    return name;
}

QList<Point> pointsIn(const QString &logFile)
{
    QList<Point> points;
    std::map<QString, int> numbers;
    const QList<QByteArray> lines = TestFile::read(logFile).split('\n');
    for (const QByteArray &line : lines) {
        const QString name = QString::fromUtf8(line);
        if (name.isEmpty())
            continue;
        const int number = ++numbers[name];
        points.append({name, number, kindOf(name, number)});
    }
    return points;
}

// One of every kind, from somewhere in the middle, then evenly up to the number.
QList<Point> chosen(const QList<Point> &points, int number)
{
    std::map<QString, QList<int>> kinds;
    for (int i = 0; i < points.size(); ++i)
        kinds[points.at(i).kind].append(i);
    std::set<int> indexes;
    for (const auto &kind : kinds)
        indexes.insert(kind.second.at(kind.second.size() / 2));
    const int left = std::max(0, number - int(indexes.size()));
    for (int i = 0; i < left; ++i)
        indexes.insert(int(qint64(i) * points.size() / left));
    QList<Point> some;
    for (int index : indexes)
        some.append(points.at(index));
    return some;
}

} // namespace

class KillChainTest : public QObject
{
    Q_OBJECT

public:
    KillChainTest(); // and not initTestCase(), so that -datatags has regions too

private Q_SLOTS:
    void survivesAKillAheadOf_data();
    void survivesAKillAheadOf();

private:
    /** The exit status: 0 when the queue was empty, -1 when it was killed. */
    int run(const Place &place, const QString &killName = QString(), int killAt = 0);
    void everythingIsThere(const Place &place);
    void nothingIsHalfThere(const Place &place);
    void pack(const Region &region, const Files &files);

    HttpTestServer m_server;
    QList<Region> m_regions;
    Files m_wanted; // by path below the documents
    QByteArray m_said; // by the last run
    QByteArray m_log;
};

void KillChainTest::pack(const Region &region, const Files &files)
{
    ArchiveBuilder builder;
    for (const auto &file : files) {
        builder.addFile(file.first, file.second);
        m_wanted[region.destination + file.first] = file.second;
    }
    // In pieces that are far enough apart to be saved one by one.
    m_server.add('/' + region.archive.toUtf8(), TestFile::read(builder.make(region.archive)),
                 HttpTestServer::Drip(20000, 25));
    m_regions.append(region);
}

KillChainTest::KillChainTest()
{
    const QString tiles = QStringLiteral("cities/diskcache/");
    const QByteArray border = ArchiveBuilder::noise(3000, 9);
    pack({QStringLiteral("FI"), QStringLiteral("FI.zip"), tiles, true},
         {{QStringLiteral("a/3/3fa9.cdt"), ArchiveBuilder::noise(45000, 1)},
          {QStringLiteral("a/3/border.cdt"), border},
          {QStringLiteral("b/f f.cdt"), "small"}});
    const QByteArray catalogue = "<catalogue>" + ArchiveBuilder::noise(30000, 2).toHex();
    m_server.add("/catalog-1.xml", catalogue, HttpTestServer::Drip(25000, 25));
    m_regions.append({QStringLiteral("catalogue"), QStringLiteral("catalog-1.xml"),
                      QStringLiteral("cities/Tessarin/catalog-1.xml"), false});
    m_wanted[QStringLiteral("cities/Tessarin/catalog-1.xml")] = catalogue;
    pack({QStringLiteral("SE"), QStringLiteral("SE.tar.xz"), tiles, true},
         {{QStringLiteral("a/3/border.cdt"), border},
          {QStringLiteral("b/s.cdt"), ArchiveBuilder::noise(9000, 3)}});
    pack({QStringLiteral("NO"), QStringLiteral("NO.7z"), tiles, true},
         {{QStringLiteral("c/n.cdt"), ArchiveBuilder::noise(9000, 4)}});
}

int KillChainTest::run(const Place &place, const QString &killName, int killAt)
{
    TestFile::write(place.file("count"), QByteArray(8, '\0'));
    QStringList arguments {place.file("ordered")};
    for (const Region &region : std::as_const(m_regions)) {
        arguments << region.id << m_server.url('/' + region.archive.toUtf8())
                  << place.docs() + QLatin1Char('/') + region.destination
                  << (region.unzip ? QStringLiteral("unzip") : QStringLiteral("keep"));
    }
    ChildProgram child(QStringLiteral(VEXA_KILLCHILD), arguments,
                       place.environment(killName, killAt));
    const int status = child.waitForFinished(120000);
    m_said = child.output();
    m_log = child.errorOutput().right(LogShown);
    return status;
}

void KillChainTest::everythingIsThere(const Place &place)
{
    QVERIFY2(!m_said.contains("error "), m_said.constData());
    QStringList names;
    for (const auto &file : m_wanted) {
        QCOMPARE(TestFile::read(place.docs() + QLatin1Char('/') + file.first), file.second);
        names.append(file.first);
    }
    QStringList found = Step::found(place.docs());
    found.erase(std::remove_if(found.begin(), found.end(),
                               [](const QString &name) { return name.endsWith(QLatin1Char('/')); }),
                found.end());
    std::sort(names.begin(), names.end());
    QCOMPARE(found, names);

    const QString settingsFile = place.file("config") + QLatin1String("/vexa/vexa.conf");
    const QSettings settings(settingsFile, QSettings::IniFormat);
    QVERIFY(QFile::exists(settingsFile));
    QCOMPARE(settings.value(QStringLiteral("requests/size")).toInt(), 0);
    QVERIFY(!settings.contains(QStringLiteral("moving")));

    // A kill may cost a leftover file where downloads grow, and nowhere else.
    for (const QString &name : Step::found(place.home())) {
        QVERIFY2(name.startsWith(QLatin1String("MyDocs/.vexa/tmp/"))
                     || QStringLiteral("MyDocs/.vexa/tmp/").startsWith(name),
                 qPrintable(name));
    }
}

void KillChainTest::nothingIsHalfThere(const Place &place)
{
    for (const auto &file : m_wanted) {
        const QString path = place.docs() + QLatin1Char('/') + file.first;
        if (!QFile::exists(path))
            continue;
        const QByteArray bytes = TestFile::read(path);
        QVERIFY2(bytes == "old" || bytes == file.second, qPrintable(path));
    }
}

void KillChainTest::survivesAKillAheadOf_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("secondName"); // in the run after; empty: none
    QTest::addColumn<int>("secondNumber");

    const Place place;
    QCOMPARE(run(place), 0);
    everythingIsThere(place);
    const QList<Point> points = pointsIn(place.file("log"));
    QVERIFY(points.size() > 100);
    const int wish = qgetenv("VEXA_KILL_POINTS").toInt();
    const int rows = ReportTable::longForm() ? int(points.size()) : wish > 0 ? wish : DefaultRows;
    int row = 0;
    for (const Point &point : chosen(points, rows)) {
        Point second; // some other one, in no order
        if (++row % SecondKillEvery == 0)
            second = points.at(int(qint64(row) * 7919 % points.size()));
        QTest::addRow("%s, %d", qPrintable(point.name), point.number)
            << point.name << point.number << second.name << second.number;
    }
}

void KillChainTest::survivesAKillAheadOf()
{
    QFETCH(QString, name);
    QFETCH(int, number);
    QFETCH(QString, secondName);
    QFETCH(int, secondNumber);
    const Place place;

    // The pieces of a download differ from run to run: the last points may not be reached.
    const int first = run(place, name, number);
    QVERIFY2(first == -1 || first == 0, m_log.constData());
    QVERIFY2(!m_said.contains("error "), m_said.constData());
    // A copy that is cut short itself writes under the final names; it is done again.
    if (!name.startsWith(QLatin1String("command-")) && !name.startsWith(QLatin1String("alone")))
        nothingIsHalfThere(place);
    if (secondNumber > 0) {
        const int second = run(place, secondName, secondNumber);
        QVERIFY2(second == -1 || second == 0, m_log.constData());
        QVERIFY2(!m_said.contains("error "), m_said.constData());
    }
    const int last = run(place);

    QVERIFY2(last == 0, m_log.constData());
    everythingIsThere(place);
}

QTEST_GUILESS_MAIN(KillChainTest)
#include "tst_killchain.moc"
