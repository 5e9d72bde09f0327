// SPDX-License-Identifier: MIT
/*
 * Downloads through the worker and its interface, as a host makes them, against a program that does
 * nothing else. What is downloaded lies in memory on both sides, so that it is not the disk that is
 * measured; the settings with the resume point, which only our side has, lie on the disk.
 */
#include "benchmarks/benchmarkrows.h"
#include "benchmarks/measure.h"
#include "benchmarks/pacedsender.h"
#include "download/download.h"
#include "download/runningworker.h"
#include "testutils/nginxserver.h"

#include <algorithm>
#include <atomic>
#include <fcntl.h>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

namespace {

constexpr qint64 MiB = 1024 * 1024;
constexpr qint64 GiB = 1024 * MiB;

std::atomic<int> settingsWrites {0};

} // namespace

// In place of the C library's, also for Qt: each sync of settings that were changed ends with it.
extern "C" int rename(const char *from, const char *to) noexcept
{
    if (QByteArray::fromRawData(to, int(qstrlen(to))).endsWith("/vexa.conf"))
        ++settingsWrites;
    return int(syscall(SYS_renameat, AT_FDCWD, from, AT_FDCWD, to));
}

namespace {

[[noreturn]] void giveUp(const QString &why)
{
    std::fprintf(stderr, "%s\n", qPrintable(why));
    std::exit(1);
}

/** Where one run on either side finds and leaves its files; gone with it. */
class Place
{
public:
    Place()
        : m_memory(QDir(QStringLiteral("/dev/shm")).exists()
                       ? QStringLiteral("/dev/shm/vexa-XXXXXX")
                       : QDir::tempPath() + QStringLiteral("/vexa-XXXXXX"))
    {
        if (!m_memory.isValid() || !m_disk.isValid() || !QDir().mkpath(QFileInfo(saveFile()).path())
            || !QDir().mkpath(QFileInfo(settings()).path()))
            giveUp(QStringLiteral("no temporary folder"));
    }

    QString home() const { return m_memory.path(); }
    QString settingsFolder() const { return m_disk.path(); }
    QString settings() const { return m_disk.filePath(QStringLiteral("vexa/vexa.conf")); }
    /** Where our side lets the file grow, and the peer too. */
    QString saveFile() const
    {
        return m_memory.filePath(QStringLiteral("MyDocs/.vexa/tmp/FI.zip"));
    }
    /** Where our side moves it in the end. */
    QString target() const { return m_memory.filePath(QStringLiteral("maps/FI.zip")); }

private:
    QTemporaryDir m_memory;
    QTemporaryDir m_disk;
};

/** What is to be fetched, and how much of it was there before. */
struct Job
{
    QString url;
    qint64 size = 0;
    qint64 saved = 0;
    QString original; ///< the file that is served; empty if it is all the same byte
};

// Our side's child: all that the settings or the arguments ask for.
void download(const QStringList &arguments)
{
    const QString home = arguments.value(0);
    qputenv("HOME", QFile::encodeName(home));
    qputenv("VEXA_MYDOCS", QFile::encodeName(home + QStringLiteral("/MyDocs")));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, arguments.value(1));
    RunningWorker worker;
    QEventLoop loop;
    QElapsedTimer clock;
    double seconds = 0;
    QObject::connect(&worker.iface(), &DownloadManagerIface::finished, &loop, [&](int operation) {
        if (operation == DownloadRequest)
            seconds = double(clock.nsecsElapsed()) / 1e9;
        else
            loop.quit(); // moved
    });
    QObject::connect(&worker.iface(), &DownloadManagerIface::error, &loop,
                     [] { giveUp(QStringLiteral("the download failed")); });
    clock.start();
    worker.goOnline();
    if (!worker.iface().isInQueue(QStringLiteral("FI")))
        worker.iface().download(QStringLiteral("FI"), arguments.value(2),
                                home + QStringLiteral("/maps/"), false);
    loop.exec();
    worker.stop();
    tell({{QStringLiteral("settingsWrites"), int(settingsWrites)},
          {QStringLiteral("seconds"), seconds}});
}

void writeSaved(const Job &job, const QString &path)
{
    QFile source(job.original);
    QFile saved(path);
    if (!source.open(QFile::ReadOnly) || !saved.open(QFile::WriteOnly))
        giveUp(QStringLiteral("no saved part"));
    while (saved.size() < job.saved)
        saved.write(source.read(std::min(MiB, job.saved - saved.pos()))) && saved.flush();
}

// As an earlier run of the worker has left it.
void writeState(const Job &job, const Place &place)
{
    QSettings settings(place.settings(), QSettings::IniFormat);
    Download record;
    record.url = QUrl(job.url);
    record.fileName = place.saveFile();
    record.bytesReceived = job.saved;
    record.bytesTotal = job.size;
    record.downloadType = 1;
    record.serialize(settings);
    const QString id = QStringLiteral("FI");
    settings.beginWriteArray(QStringLiteral("requests"));
    settings.setArrayIndex(0);
    Request(id, DownloadRequest, place.saveFile(), job.url).serialize(settings);
    settings.setArrayIndex(1);
    Request(id, MoveRequest,
            QStringList {place.saveFile(), QFileInfo(place.target()).path() + QLatin1Char('/')},
            job.url)
        .serialize(settings);
    settings.endArray();
}

// A figure for bytes that did not arrive is worth nothing.
void check(const Job &job, const QString &path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly) || file.size() != job.size)
        giveUp(path + QStringLiteral(": not all has come"));
    QFile original(job.original);
    if (job.original.isEmpty())
        return;
    if (!original.open(QFile::ReadOnly))
        giveUp(job.original);
    while (!file.atEnd()) {
        if (file.read(MiB) != original.read(MiB))
            giveUp(path + QStringLiteral(": other bytes have come"));
    }
}

Cost ours(const Job &job)
{
    const Place place;
    if (job.saved > 0) {
        writeSaved(job, place.saveFile());
        writeState(job, place);
    }
    Cost cost =
        measureSelf({QStringLiteral("download"), place.home(), place.settingsFolder(), job.url});
    cost.wall = cost.told.value(QStringLiteral("seconds")).toDouble();
    check(job, place.target());
    return cost;
}

Cost curls(const Job &job)
{
    const Place place;
    if (job.saved > 0)
        writeSaved(job, place.saveFile());
    const Cost cost =
        measureProgram(QStringLiteral("curl"),
                       {QStringLiteral("-sS"), QStringLiteral("-f"), QStringLiteral("-C"),
                        QStringLiteral("-"), QStringLiteral("-o"), place.saveFile(), job.url});
    check(job, place.saveFile());
    return cost;
}

QString sizeText(qint64 bytes)
{
    return bytes % GiB == 0 ? QStringLiteral("%1 GiB").arg(bytes / GiB)
                            : QStringLiteral("%1 MiB").arg(bytes / MiB);
}

/** The rows of this program and what they share. */
class Measurement
{
public:
    int run();

private:
    Ratios compare(const Job &job);
    void wholeAndResumed();
    void ofAnySize();
    void atFiftyMegabytes();
    void trickle();
    qint64 sentByNginx() const;
    void serveFile(qint64 size, bool isSparse);

    BenchmarkRows m_rows {QStringLiteral("download")};
    NginxServer m_nginx;
    const QString m_peer {QStringLiteral("curl -C -")};
    double m_peak = 0; // bytes, of all runs of our side since the last compare() began
    double m_writesPerSecond = 0; // of the settings, the most of them
    qint64 m_sent = 0; // body bytes that nginx sent to our side, in the last run
};

Ratios Measurement::compare(const Job &job)
{
    m_peak = m_writesPerSecond = 0;
    const auto ourRun = [this, &job] {
        const qint64 before = sentByNginx();
        const Cost cost = ours(job);
        m_sent = sentByNginx() - before;
        m_peak = std::max(m_peak, double(cost.memory));
        const double writes = cost.told.value(QStringLiteral("settingsWrites")).toDouble();
        m_writesPerSecond = std::max(m_writesPerSecond, writes / cost.wall);
        return cost;
    };
    return comparePairs(
        ourRun, [&job] { return curls(job); }, BenchmarkRows::pairs());
}

qint64 Measurement::sentByNginx() const
{
    qint64 sent = 0;
    const QList<NginxServer::Entry> entries = m_nginx.accessLog();
    for (const NginxServer::Entry &entry : entries)
        sent += entry.bodyBytesSent;
    return sent;
}

void Measurement::serveFile(qint64 size, bool isSparse)
{
    QFile file(m_nginx.folder() + QStringLiteral("/FI.zip"));
    if (!file.open(QFile::WriteOnly))
        giveUp(file.fileName());
    quint64 number = 1;
    QByteArray piece(int(MiB), Qt::Uninitialized);
    for (qint64 at = 0; at < size && !isSparse; at += MiB) {
        auto *words = reinterpret_cast<quint64 *>(piece.data());
        for (int i = 0; i < int(MiB / 8); ++i)
            words[i] = number = number * 6364136223846793005u + 1442695040888963407u;
        if (file.write(piece) != MiB)
            giveUp(file.fileName());
    }
    if (isSparse && !file.resize(size))
        giveUp(file.fileName());
}

void Measurement::wholeAndResumed()
{
    const qint64 size = BenchmarkRows::quick() ? 8 * MiB : GiB;
    serveFile(size, false);
    Job job {m_nginx.url("/FI.zip"), size, 0, m_nginx.folder() + QStringLiteral("/FI.zip")};
    const QString whole = QStringLiteral("1: download %1").arg(sizeText(size));
    Ratios ratios = compare(job);
    m_rows.atMost(whole, m_peer, QStringLiteral("wall"), ratios.wall, 1.1);
    m_rows.atMost(whole, m_peer, QStringLiteral("CPU"), ratios.cpu, 1.25);
    m_rows.atMost(whole, QStringLiteral("-"), QStringLiteral("peak memory"), m_peak / MiB, 48,
                  QStringLiteral("MiB"));

    job.saved = size / 2;
    const QString resumed = QStringLiteral("2: the same, resumed from the middle");
    ratios = compare(job);
    m_rows.atMost(resumed, m_peer, QStringLiteral("wall"), ratios.wall, 1.0);
    m_rows.atMost(resumed, QStringLiteral("-"), QStringLiteral("bytes sent / bytes missing"),
                  double(m_sent) / double(size - job.saved), 1.0);
}

void Measurement::ofAnySize()
{
    const qint64 size = BenchmarkRows::quick() ? 16 * MiB : 3 * GiB;
    serveFile(size, true);
    const Cost cost = ours({m_nginx.url("/FI.zip"), size, 0, QString()});
    m_rows.atMost(QStringLiteral("1: download %1").arg(sizeText(size)), QStringLiteral("-"),
                  QStringLiteral("peak memory"), double(cost.memory) / MiB, 48,
                  QStringLiteral("MiB"));
    serveFile(0, true);
}

void Measurement::atFiftyMegabytes()
{
    const qint64 size = BenchmarkRows::quick() ? 10 * MiB : 200 * MiB;
    const PacedSender sender(size, 50'000'000);
    const QString work = QStringLiteral("3: %1 at 50 MB/s").arg(sizeText(size));
    const Ratios ratios = compare({sender.url(), size, 0, QString()});
    m_rows.atMost(work, m_peer, QStringLiteral("wall"), ratios.wall, 1.02);
    m_rows.atMost(work, m_peer, QStringLiteral("CPU"), ratios.cpu, 1.6);
}

void Measurement::trickle()
{
    const int seconds = BenchmarkRows::quick() ? 1 : 5;
    const qint64 size = 3'000'000 * seconds;
    const PacedSender sender(size, 3'000'000);
    const QString work = QStringLiteral("3: %1 s at 3 MB/s").arg(seconds);
    const Ratios ratios = compare({sender.url(), size, 0, QString()});
    m_rows.atMost(work, m_peer, QStringLiteral("CPU"), ratios.cpu, 4);
    m_rows.atMost(work, QStringLiteral("-"), QStringLiteral("settings synced, a second"),
                  m_writesPerSecond, 50);
}

int Measurement::run()
{
    wholeAndResumed();
    ofAnySize();
    atFiftyMegabytes();
    trickle();
    m_rows.addNote(QStringLiteral("Downloads: both sides write to memory, the settings with the "
                                  "resume point lie on the disk. Bytes sent are those that "
                                  "nginx logged. A host runs when it downloads, so our time "
                                  "is that from the call to the signal that all is there; CPU "
                                  "and memory are those of the whole program."));
    return m_rows.finish();
}

} // namespace

int main(int count, char *words[])
{
    const QCoreApplication application(count, words);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--work")) {
        download(arguments.mid(3));
        return 0;
    }
    return Measurement().run();
}
