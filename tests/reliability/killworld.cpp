// SPDX-License-Identifier: MIT
#include "killworld.h"

#include <algorithm>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>

namespace {

const QString Fi = QStringLiteral("FI");
const QString Se = QStringLiteral("SE");
const QString No = QStringLiteral("NO");

void copyFolder(const QString &from, const QString &to)
{
    QDir(to).removeRecursively();
    if (QProcess::execute(QStringLiteral("cp"), {QStringLiteral("-a"), from, to}) != 0)
        qFatal("no copy of %s", qPrintable(from));
}

QStringList filesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator entries(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext())
        files.append(QDir(folder).relativeFilePath(entries.next()));
    files.sort();
    return files;
}

} // namespace

KillWorld::KillWorld()
    : m_orders(scratchPath(QString()))
{
    // What a newer archive lacks and brings is Finland's own: an update in place does not ask
    // others. By the length of its names it has the size that the catalogue gives.
    const Tiles newer =
        tilesOf({"0/1/a.cdt", "0/5/more.cdt"}, "newer") + tilesOf({"5/5/border.cdt"});
    Tiles large = tilesOf({"b/b/no.cdt", "5/5/border.cdt"});
    large.insert(QStringLiteral("b/c/large.cdt"),
                 TestContent::tile(QStringLiteral("large"), 2000000));
    content.addRegion(No, QStringLiteral("Norway"), large, QStringLiteral("NO.7z"));
    content.publish(oldVersion);
    for (const QString &id : ids())
        m_versions.insert(id, {content.tiles(id), next.tiles(id)});
    m_versions[Fi].append(newer);
}

void KillWorld::useMemory()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    if (memory.isDir() && memory.isWritable())
        qputenv("TMPDIR", QFile::encodeName(memory.filePath()));
}

QStringList KillWorld::ids()
{
    return {Fi, Se, No};
}

void KillWorld::keep(const char *state)
{
    copyFolder(dataFolder(), scratchPath(QLatin1String(state)));
}

void KillWorld::restore(const char *state)
{
    copyFolder(scratchPath(QLatin1String(state)), dataFolder());
}

void KillWorld::serveNewerFinland(bool newer)
{
    content.setTiles(Fi, newer ? m_versions.value(Fi).last() : m_versions.value(Fi).first());
}

ProgramRun KillWorld::runUntil(const KillPoint &point, const QStringList &command)
{
    return runWith(environment(), point, command);
}

ProgramRun KillWorld::runWith(QProcessEnvironment environment, const KillPoint &point,
                              const QStringList &command)
{
    KillOrders::preload(&environment, QStringLiteral(VEXA_KILLPOINTS));
    m_orders.give(&environment, point);
    ChildProgram child(QStringLiteral(VEXA_MAPS_PROGRAM), arguments(command), environment);
    ProgramRun run;
    run.code = child.waitForFinished();
    run.out = child.output();
    run.err = child.errorOutput();
    return run;
}

QList<KillPoint> KillWorld::pointsOf(const QStringList &command)
{
    const ProgramRun run = runUntil({}, command);
    if (run.code != 0)
        qFatal("%s failed: %s", qPrintable(command.join(QLatin1Char(' '))), run.err.constData());
    return m_orders.points();
}

QList<QByteArray> KillWorld::callsOf(const QStringList &command)
{
    QProcessEnvironment environment = this->environment();
    KillOrders::withSyncs(&environment);
    const ProgramRun run = runWith(environment, {}, command);
    if (run.code != 0)
        qFatal("%s failed: %s", qPrintable(command.join(QLatin1Char(' '))), run.err.constData());
    return m_orders.names();
}

QMap<QString, QStringList> KillWorld::listed() const
{
    QMap<QString, QStringList> regions;
    QString id;
    QXmlStreamReader xml(TestFile::read(catalogFolder() + QLatin1String("/content.xml")));
    while (!xml.atEnd()) {
        xml.readNext();
        const QString name = xml.name().toString();
        if (xml.isStartElement() && name == QLatin1String("region")) {
            id = xml.attributes().value(QLatin1String("id")).toString().mid(1);
            regions.insert(id, {});
        } else if (xml.isStartElement() && name == QLatin1String("TI") && !id.isEmpty()) {
            QString path = xml.attributes().value(QLatin1String("path")).toString().mid(1);
            regions[id].append(path.replace(QLatin1Char('\\'), QLatin1Char('/')));
        } else if (xml.isEndElement() && name == QLatin1String("region")) {
            id.clear();
        }
    }
    return regions;
}

QStringList KillWorld::pendingIds() const
{
    QStringList ids;
    const QJsonObject status = this->status();
    for (const QJsonValue &pending : status.value(QLatin1String("pending")).toArray())
        ids.append(pending.toObject().value(QLatin1String("id")).toString());
    return ids;
}

QString KillWorld::differenceFrom(const Tiles &tiles, const QStringList &listed) const
{
    QStringList names = listed;
    names.sort();
    if (names != tiles.keys())
        return QLatin1String("listed: ") + names.join(QLatin1Char(' '));
    for (auto tile = tiles.begin(); tile != tiles.end(); ++tile) {
        const QString path = tileFolder() + QLatin1Char('/') + tile.key();
        if (!QFileInfo::exists(path))
            return tile.key() + QLatin1String(" is missing");
        if (TestFile::read(path) != tile.value())
            return tile.key() + QLatin1String(" has other bytes");
    }
    return QString();
}

QString KillWorld::damage(const QString &id) const
{
    const QMap<QString, QStringList> regions = listed();
    if (!regions.contains(id))
        return QString();
    QStringList differences;
    for (const Tiles &tiles : m_versions.value(id)) {
        const QString difference = differenceFrom(tiles, regions.value(id));
        if (difference.isEmpty())
            return QString();
        differences.append(difference);
    }
    return id + QLatin1String(": ") + differences.join(QLatin1String("; "));
}

RegionFound KillWorld::find(const QString &id) const
{
    const QMap<QString, QStringList> regions = listed();
    if (!regions.contains(id))
        return RegionFound::NotInstalled;
    const QList<Tiles> versions = m_versions.value(id);
    for (int i = 0; i < versions.size(); ++i) {
        if (differenceFrom(versions.at(i), regions.value(id)).isEmpty())
            return i == 0 ? RegionFound::WholeOld : RegionFound::WholeNew;
    }
    return pendingIds().contains(id) ? RegionFound::Pending : RegionFound::Damaged;
}

QStringList KillWorld::scratchFiles() const
{
    return filesBelow(downloadFolder());
}

QStringList KillWorld::strayTiles() const
{
    QStringList known;
    const QMap<QString, QStringList> regions = listed();
    for (const QStringList &tiles : regions)
        known += tiles;
    QStringList stray;
    const QStringList files = filesBelow(tileFolder());
    for (const QString &file : files) {
        if (file.endsWith(QLatin1String(".cdt")) && !known.contains(file))
            stray.append(file);
    }
    return stray;
}

QString stepOf(const QByteArray &pointName)
{
    const QString name = QString::fromUtf8(pointName);
    const QString call = name.section(QLatin1Char(' '), 0, 0);
    const QString file = name.section(QLatin1Char(' '), 1);
    const bool isCommand = call == QLatin1String("before") || call == QLatin1String("alone")
        || call == QLatin1String("behind");
    const auto has = [&file](const char *part) { return file.contains(QLatin1String(part)); };
    if (isCommand && file == QLatin1String("rm"))
        return QStringLiteral("clearing the scratch folder");
    if (isCommand && file == QLatin1String("mv"))
        return QStringLiteral("swap");
    if (call == QLatin1String("command-rename"))
        return QStringLiteral("swap");
    if (isCommand || call == QLatin1String("command-open") || call == QLatin1String("command-write")
        || call == QLatin1String("command-mkdir") || call == QLatin1String("command-truncate"))
        return QStringLiteral("move");
    if (call.startsWith(QLatin1String("command-")))
        return QStringLiteral("clearing the scratch folder");
    if (has("content.xml"))
        return QStringLiteral("content write");
    if (has("installs"))
        return QStringLiteral("journal of installs");
    if (has("removals.json"))
        return QStringLiteral("note of the removal");
    if (has("update.json"))
        return QStringLiteral("state of the update");
    if (has("vexa-swap.json"))
        return QStringLiteral("note of the swap");
    if (has("cityindex.xml"))
        return QStringLiteral("city index");
    if (has("vexa.conf"))
        return QStringLiteral("queue and transfer");
    if (has(".zip") || has(".7z") || has(".tar.gz"))
        return QStringLiteral("download");
    if (has(".cdt"))
        return call == QLatin1String("unlink") ? QStringLiteral("deleting tiles")
                                               : QStringLiteral("unpack");
    if (has("lock"))
        return QStringLiteral("locks");
    if (has("catalog-") || has("regionname") || has("config.cfg") || has("version.txt"))
        return QStringLiteral("catalogue files");
    return QStringLiteral("folders");
}

QString kindOf(const KillPoint &point)
{
    static const QRegularExpression tile(QStringLiteral("[^ ]+\\.cdt"));
    static const QRegularExpression archive(QStringLiteral("[A-Z]+\\.(zip|7z|tar\\.gz)"));
    QString kind = QString::fromUtf8(point.name);
    kind.replace(tile, QStringLiteral("tile")).replace(archive, QStringLiteral("archive"));
    const QString step = stepOf(point.name);
    const QString call = kind.section(QLatin1Char(' '), 0, 0);
    if (call.endsWith(QLatin1String("mkdir")) || call.endsWith(QLatin1String("rmdir"))
        || step == QLatin1String("folders"))
        return call + QLatin1String(" folder");
    return kind;
}
