// SPDX-License-Identifier: MIT
/*
 * The request queue, every change of which is on the disk when the call returns, against QSettings
 * that writes the same keys as anybody would: drops the array, writes it anew and syncs.
 */
#include "benchmarks/benchmarkrows.h"
#include "benchmarks/measure.h"
#include "download/worker.h"
#include "plugin/qtcompat.h"

#include <cstdio>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QSettings>
#include <QTemporaryDir>

namespace {

constexpr int StepsOfARegion = 3;

[[noreturn]] void giveUp(const QString &why)
{
    std::fprintf(stderr, "%s\n", qPrintable(why));
    std::exit(1);
}

// The i-th of many: each region is downloaded, unpacked and moved.
Request request(int i)
{
    const QString id = QStringLiteral("region-%1").arg(i / StepsOfARegion);
    const QString url = QStringLiteral("http://maps.example.org/map5/%1.zip").arg(id);
    const QString file = QStringLiteral("/home/user/MyDocs/.vexa/tmp/%1.zip").arg(id);
    switch (i % StepsOfARegion) {
    case 0:
        return Request(id, DownloadRequest, file, url);
    case 1:
        return Request(id, UncompressRequest, file, url);
    default:
        return Request(id, MoveRequest,
                       QStringList {QStringLiteral("/home/user/MyDocs/.vexa/tmp/unzipped"),
                                    QStringLiteral("/home/user/MyDocs/cities/diskcache/")},
                       url);
    }
}

QString settingsPath(const QString &folder)
{
    return folder + QStringLiteral("/vexa/vexa.conf");
}

void write(QSettings &settings, const Request &request)
{
    settings.setValue(QStringLiteral("id"), request.id);
    settings.setValue(QStringLiteral("type"), request.type);
    settings.setValue(QStringLiteral("state"), request.state);
    settings.setValue(QStringLiteral("url"), request.url);
    const QStringList paths = request.payload.toStringList();
    switch (request.type) {
    case DownloadRequest:
        settings.setValue(QStringLiteral("filename"), request.payload.toString());
        break;
    case UncompressRequest:
        settings.setValue(QStringLiteral("archiveName"), request.payload.toString());
        break;
    default:
        settings.setValue(QStringLiteral("source"), paths.value(0));
        settings.setValue(QStringLiteral("dest"), paths.value(1));
    }
}

void write(QSettings &settings, const QList<Request> &requests)
{
    settings.beginGroup(QStringLiteral("requests"));
    settings.remove(QString());
    settings.endGroup();
    settings.beginWriteArray(QStringLiteral("requests"));
    for (int i = 0; i < int(requests.size()); ++i) {
        settings.setArrayIndex(i);
        write(settings, requests.at(i));
    }
    settings.endArray();
    settings.sync();
}

// Half of the changes take the oldest out, half put a new one behind the last.
void changeOurs(int size, int changes)
{
    Worker worker;
    RequestQueue<Request> &queue = *worker.getRequestQueue();
    queue.restoreSaved();
    const Stopwatch watch;
    for (int i = 0; i < changes; ++i) {
        if (i % 2 == 0)
            queue.dequeue();
        else
            worker.enqueueRequest(request(size + i / 2));
    }
    tell(watch.figures());
}

void changeBare(const QString &folder, int size, int changes)
{
    QSettings settings(settingsPath(folder), QSettings::IniFormat);
    VexaCompat::useUtf8(settings);
    QList<Request> requests;
    for (int i = 0; i < size; ++i)
        requests.append(request(i));
    write(settings, requests); // the file has been read then, as on the other side
    const Stopwatch watch;
    for (int i = 0; i < changes; ++i) {
        if (i % 2 == 0)
            requests.removeFirst();
        else
            requests.append(request(size + i / 2));
        write(settings, requests);
    }
    tell(watch.figures());
}

void loadOurs(int size)
{
    Worker worker;
    const Stopwatch watch;
    worker.getRequestQueue()->restoreSaved();
    tell(watch.figures());
    if (worker.getRequestQueue()->size() != size)
        giveUp(QStringLiteral("not all were loaded"));
}

void rewriteBare(const QString &folder, int size)
{
    QList<Request> requests;
    for (int i = 0; i < size; ++i)
        requests.append(request(i));
    const Stopwatch watch;
    QSettings settings(settingsPath(folder), QSettings::IniFormat);
    VexaCompat::useUtf8(settings);
    write(settings, requests);
    tell(watch.figures());
}

void work(const QString &what, const QString &folder, int size, int changes)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
    if (what == QLatin1String("change"))
        changeOurs(size, changes);
    else if (what == QLatin1String("change-bare"))
        changeBare(folder, size, changes);
    else if (what == QLatin1String("load"))
        loadOurs(size);
    else
        rewriteBare(folder, size);
}

QMap<QString, QString> content(const QString &path)
{
    const QSettings settings(path, QSettings::IniFormat);
    QMap<QString, QString> values;
    const QStringList keys = settings.allKeys();
    for (const QString &key : keys)
        values.insert(key, settings.value(key).toString());
    return values;
}

/** Both sides of one row. */
class Comparison
{
public:
    Comparison(int size, int changes)
        : m_size(size)
        , m_changes(changes)
    { }

    Ratios run(const QString &ours, const QString &bare)
    {
        return comparePairs([&] { return side(ours, &m_ours); },
                            [&] { return side(bare, &m_bare); }, BenchmarkRows::pairs());
    }

private:
    Cost side(const QString &what, QMap<QString, QString> *left)
    {
        const QTemporaryDir folder;
        const QString path = settingsPath(folder.path());
        {
            QSettings settings(path, QSettings::IniFormat);
            QList<Request> requests;
            for (int i = 0; i < m_size; ++i)
                requests.append(request(i));
            write(settings, requests);
        }
        const Cost cost =
            measureSelf({what, folder.path(), QString::number(m_size), QString::number(m_changes)});
        *left = content(path);
        // The same work leaves the same keys.
        if (!m_ours.isEmpty() && !m_bare.isEmpty() && m_ours != m_bare)
            giveUp(QStringLiteral("the two sides have left different settings"));
        return cost;
    }

    const int m_size;
    const int m_changes;
    QMap<QString, QString> m_ours;
    QMap<QString, QString> m_bare;
};

} // namespace

int main(int count, char *words[])
{
    const QCoreApplication application(count, words);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--work")) {
        work(arguments.value(2), arguments.value(3), arguments.value(4).toInt(),
             arguments.value(5).toInt());
        return 0;
    }
    BenchmarkRows rows(QStringLiteral("queue"));
    const QString peer = QStringLiteral("bare QSettings");
    struct Row
    {
        int size;
        int changes;
        double limit;
    };
    for (const Row &row : {Row {3, 100, 1.05}, Row {100, 50, 1.0}, Row {1000, 20, 0.8}}) {
        Comparison comparison(row.size, BenchmarkRows::quick() ? 2 : row.changes);
        const Ratios ratios =
            comparison.run(QStringLiteral("change"), QStringLiteral("change-bare"));
        const QString what = QStringLiteral("11: change of %1 queued requests").arg(row.size);
        rows.atMost(what, peer, QStringLiteral("wall"), ratios.wall, row.limit);
        rows.atMost(what, peer, QStringLiteral("CPU"), ratios.cpu, row.limit);
    }
    const int many = BenchmarkRows::quick() ? 100 : 1000;
    const Ratios ratios =
        Comparison(many, 0).run(QStringLiteral("load"), QStringLiteral("rewrite-bare"));
    const QString what = QStringLiteral("11: load %1 saved requests").arg(many);
    rows.atMost(what, peer, QStringLiteral("wall"), ratios.wall, 2);
    rows.atMost(what, peer, QStringLiteral("CPU"), ratios.cpu, 2);
    return rows.finish();
}
