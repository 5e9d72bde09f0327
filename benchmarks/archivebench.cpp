// SPDX-License-Identifier: MIT
/*
 * Unpacking, on a file system in memory, so that no disk blurs the figures. The tiles are made of
 * real lines (benchmarks/maketiles) and packed by the tools that servers use.
 */
#include "archive/vexaarchive.h"
#include "benchmarks/benchmarkrows.h"
#include "benchmarks/measure.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <future>
#include <iterator>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLocale>
#include <QTemporaryDir>
#include <QThread>
#include <vector>

namespace {

constexpr int Pause = 30;
constexpr double MiB = 1024 * 1024;

struct Format
{
    const char *suffix;
    double time; // as a multiple of the peer's
    double memory; // MiB
};

constexpr Format Formats[] = {{"zip", 1.1, 20}, {"7z", 1.1, 64}, {"tar.gz", 2.0, 20}};

// The folder for everything, in memory.
class Room
{
public:
    Room()
        : m_dir(QStringLiteral("/dev/shm/vexa-archivebench-XXXXXX"))
    { }

    QString path(const QString &name) const { return m_dir.filePath(name); }

    /** Makes all archives at once, "100.zip" of 100 tiles: reading the lines takes a while. */
    QStringList pack(const QStringList &names) const
    {
        QStringList archives;
        for (const QString &name : names)
            archives += path(name);
        measureProgram(QStringLiteral(VEXA_BENCHMARKS_DIR "/maketiles"), archives);
        return archives;
    }

    /** What the function costs, given an empty folder that is gone afterwards. */
    template <typename Unpack> Cost measure(const Unpack &unpack) const
    {
        const QTemporaryDir target(path(QStringLiteral("target-XXXXXX")));
        return unpack(target.path());
    }

private:
    QTemporaryDir m_dir;
};

QStringList unpackWords(const QString &archive, const QString &target, int pause)
{
    return {QStringLiteral("unpack"), archive, target, QString::number(pause)};
}

Cost byUs(const Room &room, const QString &archive, int pause)
{
    return room.measure(
        [&](const QString &target) { return measureSelf(unpackWords(archive, target, pause)); });
}

// Without the owners, modes and times, which we do not set either.
Cost byPeer(const Room &room, const QString &archive)
{
    return room.measure([&](const QString &target) {
        QStringList words {QStringLiteral("-x"), QStringLiteral("-m"),
                           QStringLiteral("-o"), QStringLiteral("--no-same-permissions"),
                           QStringLiteral("-f"), archive,
                           QStringLiteral("-C"), target};
        return measureProgram(QStringLiteral("bsdtar"), words);
    });
}

QString archiveName(int tiles, const char *suffix)
{
    return QStringLiteral("%1.%2").arg(tiles).arg(QLatin1String(suffix));
}

// No pair is needed to fill the caches: all lies in memory.
void compareFormat(BenchmarkRows &rows, const Room &room, const QString &archive, int tiles,
                   const Format &format)
{
    const QString work = QStringLiteral("4: unpack %1 tiles, pause 0, %2")
                             .arg(QLocale::c().toString(tiles), QLatin1String(format.suffix));
    const QString peer = QStringLiteral("`bsdtar -x`");
    const Ratios ratios =
        comparePairs([&] { return byUs(room, archive, 0); }, [&] { return byPeer(room, archive); },
                     BenchmarkRows::pairs(), Warmup::None);
    rows.atMost(work, peer, QStringLiteral("wall"), ratios.wall, format.time);
    rows.atMost(work, peer, QStringLiteral("CPU"), ratios.cpu, format.time);
    rows.atMost(work, peer, QStringLiteral("peak memory"), double(ratios.ours.memory) / MiB,
                format.memory, QStringLiteral("MiB"));
}

// All sleep nearly all the time: side by side they meet the same machine, and end in a minute.
void comparePauses(BenchmarkRows &rows, const Room &room, const QString &archive, int tiles)
{
    QList<double> allowed;
    for (int pair = 0; pair < BenchmarkRows::pairs(); ++pair)
        allowed += byUs(room, archive, 0).wall + tiles * 0.001;
    std::vector<std::future<Cost>> paused;
    std::vector<std::future<Cost>> sleeping;
    for (int pair = 0; pair < BenchmarkRows::pairs(); ++pair) {
        paused.push_back(std::async(std::launch::async, byUs, std::cref(room), archive, Pause));
        sleeping.push_back(std::async(std::launch::async, [tiles] {
            return measureSelf({QStringLiteral("sleep"), QString::number(tiles)});
        }));
    }
    QList<double> shares;
    for (int pair = 0; pair < BenchmarkRows::pairs(); ++pair) {
        const auto place = std::size_t(pair);
        shares += (paused[place].get().wall - sleeping[place].get().wall) / allowed.at(pair);
    }
    rows.atMost(
        QStringLiteral("5: unpack %1 tiles, pause 30 ms, zip").arg(QLocale::c().toString(tiles)),
        QStringLiteral("the pauses alone"),
        QStringLiteral("time above them / (time without pauses + 1 ms a block)"), median(shares),
        1);
}

// A cancel is met between two blocks: it waits for the pause and the block that are under way.
void meetCancels(BenchmarkRows &rows, const QString &archive)
{
    const int cancels = BenchmarkRows::quick() ? 5 : 100;
    const Cost cost = measureSelf({QStringLiteral("cancel"), archive, QString::number(cancels)});
    rows.atMost(QStringLiteral("5: cancel, %1 times at any moment").arg(cancels),
                QStringLiteral("a bare pause, as often"), QStringLiteral("longest wait"),
                cost.told.value(QStringLiteral("longest")).toDouble(NAN),
                cost.told.value(QStringLiteral("pause")).toDouble(NAN)
                    + cost.told.value(QStringLiteral("block")).toDouble(NAN),
                QStringLiteral("ms"));
}

void unpack(const QString &archivePath, const QString &target, int pause)
{
    VexaArchive archive(archivePath);
    archive.setBlockPause(pause);
    quint64 done = 0; // somebody listens, as the download manager does
    QObject::connect(&archive, &VexaArchive::progress, [&](quint64 bytes) { done = bytes; });
    if (!archive.unpack(target) || archive.error() != VexaArchive::NoError) {
        std::fprintf(stderr, "%s\n", qPrintable(archive.errorString()));
        std::exit(1);
    }
    tell({{QStringLiteral("bytes"), double(done)}});
}

void sleepBetween(int blocks)
{
    for (int block = 0; block < blocks; ++block)
        QThread::msleep(Pause);
    tell();
}

double milliseconds(const QElapsedTimer &clock)
{
    return double(clock.nsecsElapsed()) / 1e6;
}

QString besideOf(const QString &archive)
{
    return QFileInfo(archive).path() + QStringLiteral("/cancel-XXXXXX");
}

// How long a thread, told to pause, lets another wait.
double barePause()
{
    QElapsedTimer clock;
    clock.start();
    std::async(std::launch::async, [] { QThread::msleep(Pause); }).wait();
    return milliseconds(clock);
}

double blockTime(const QString &archivePath)
{
    const QTemporaryDir target(besideOf(archivePath));
    VexaArchive archive(archivePath);
    archive.setBlockPause(0);
    int blocks = 0;
    QObject::connect(&archive, &VexaArchive::progress, [&] { ++blocks; });
    QElapsedTimer clock;
    clock.start();
    archive.unpack(target.path());
    return milliseconds(clock) / blocks;
}

double waitOfCancel(const QString &archivePath, double afterMs)
{
    const QTemporaryDir target(besideOf(archivePath));
    VexaArchive archive(archivePath);
    std::promise<void> begun;
    QObject::connect(&archive, &VexaArchive::progress, [&, first = true]() mutable {
        if (first)
            begun.set_value();
        first = false;
    });
    auto end = std::async(std::launch::async, [&] { archive.unpack(target.path()); });
    begun.get_future().wait();
    QThread::usleep(static_cast<unsigned long>(1000 * afterMs));
    QElapsedTimer clock;
    clock.start();
    archive.cancel();
    end.wait();
    return milliseconds(clock);
}

// The moments are spread evenly over one pause.
void cancelAtAnyMoment(const QString &archivePath, int times)
{
    double longest = 0;
    double pause = 0;
    for (int i = 0; i < times; ++i) {
        longest = std::max(longest, waitOfCancel(archivePath, double(Pause) * i / times));
        pause = std::max(pause, barePause());
    }
    tell({{QStringLiteral("longest"), longest},
          {QStringLiteral("pause"), pause},
          {QStringLiteral("block"), blockTime(archivePath)}});
}

void work(const QStringList &words)
{
    if (words.at(0) == QLatin1String("unpack"))
        unpack(words.at(1), words.at(2), words.at(3).toInt());
    else if (words.at(0) == QLatin1String("sleep"))
        sleepBetween(words.at(1).toInt());
    else
        cancelAtAnyMoment(words.at(1), words.at(2).toInt());
}

} // namespace

int main(int count, char *words[])
{
    const QCoreApplication application(count, words);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--work")) {
        work(arguments.mid(2));
        return 0;
    }
    BenchmarkRows rows(QStringLiteral("archive"));
    const Room room;
    const int many = BenchmarkRows::quick() ? 100 : 10000;
    const int few = BenchmarkRows::quick() ? 20 : 1000;
    QStringList names;
    for (const Format &format : Formats)
        names += archiveName(many, format.suffix);
    const QStringList archives =
        room.pack(names + QStringList {archiveName(few, Formats[0].suffix)});
    for (std::size_t i = 0; i < std::size(Formats); ++i)
        compareFormat(rows, room, archives.at(int(i)), many, Formats[i]);
    const QString &archive = archives.last();
    comparePauses(rows, room, archive, few);
    meetCancels(rows, archive);
    rows.addNote(QStringLiteral(
        "A tar.gz tells nowhere how large its files are together, which progress() shows from the "
        "beginning. So it is unpacked twice, once for the sum and the check sum; of a bare pass by "
        "`bsdtar` four fifths are zlib's inflate()."));
    return rows.finish();
}
