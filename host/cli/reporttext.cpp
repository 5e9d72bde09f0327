// SPDX-License-Identifier: MIT
#include "host/cli/reporttext.h"

#include "catalog/localizationtools.h"
#include "catalog/mapcatalogprocessor.h"
#include "host/cli/inifile.h"
#include "host/shared/catalogfiles.h"
#include "host/shared/datasetlock.h"
#include "host/shared/installjournal.h"
#include "host/shared/loglines.h"
#include "host/shared/regionremoval.h"
#include "host/shared/regionstatus.h"
#include "host/shared/swapjournal.h"
#include "host/shared/updatestate.h"
#include "plugin/dataroot.h"
#include "plugin/vexaconstants.h"
#include <algorithm>
#include <archive.h>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QStandardPaths>
#include <QStorageInfo>
#include <QSysInfo>

namespace {

constexpr int LabelWidth = 20;
constexpr int MaxEntries = 200; // of a list
constexpr int MaxLogLines = 100;
constexpr qint64 MaxSettings = 1024 * 1024; // bytes

// "folder", "missing", "broken link" and so on.
QString stateOf(const QString &path)
{
    const QFileInfo info(path);
    const QString link = info.isSymLink() ? QStringLiteral("link to a ") : QString();
    if (!info.exists())
        return info.isSymLink() ? QStringLiteral("broken link") : QStringLiteral("missing");
    const QString kind = info.isDir() ? QStringLiteral("folder")
        : info.isFile()               ? QStringLiteral("file")
                                      : QStringLiteral("special file");
    QString rights = info.isReadable() ? QString() : QStringLiteral(", not readable");
    if (!info.isWritable())
        rights += QLatin1String(", not writable");
    return link + kind + rights;
}

QString existingParent(QString path)
{
    while (!path.isEmpty() && !QFileInfo::exists(path))
        path = path.section(QLatin1Char('/'), 0, -2);
    return path.isEmpty() ? QStringLiteral("/") : path;
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(MaxSettings) : QByteArray();
}

QString settingsFile(const char *organization, const char *application)
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + QLatin1Char('/') + QLatin1String(organization) + QLatin1Char('/')
        + QLatin1String(application) + QLatin1String(".conf");
}

int tilesBelow(const QString &folder)
{
    int count = 0;
    QDirIterator tiles(folder, {QStringLiteral("*.cdt")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (tiles.hasNext()) {
        tiles.next();
        ++count;
    }
    return count;
}

QString phaseName(PendingInstall::Phase phase)
{
    switch (phase) {
    case PendingInstall::Phase::Waiting:
        return QStringLiteral("waiting");
    case PendingInstall::Phase::Engine:
        return QStringLiteral("engine");
    case PendingInstall::Phase::Moving:
        return QStringLiteral("moving");
    case PendingInstall::Phase::Moved:
        break;
    }
    return QStringLiteral("moved");
}

} // namespace

ReportText::ReportText(const QString &baseUri)
    : m_baseUri(baseUri)
{ }

QString ReportText::text()
{
    m_lines.append(tr("Report of vexa-maps, made at %1")
                       .arg(QDateTime::currentDateTimeUtc().toString(Qt::ISODate)));
    addVersions();
    addMapData();
    addSpace();
    addPending();
    addEngine();
    addNetwork();
    addLocks();
    addFiles();
    addLog();
    section(tr("Placeholders"));
    m_lines.append(Redaction::explanation());
    return m_lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void ReportText::addVersions()
{
    section(tr("Versions"));
    line(tr("Vexa"), QCoreApplication::applicationVersion());
    line(tr("Qt"),
         tr("%1, built with %2").arg(QLatin1String(qVersion()), QLatin1String(QT_VERSION_STR)));
    line(tr("Archives"), QString::fromUtf8(archive_version_details()));
    line(tr("System"), QSysInfo::prettyProductName());
    line(tr("Kernel"),
         QSysInfo::kernelType() + QLatin1Char(' ') + QSysInfo::kernelVersion() + QLatin1String(", ")
             + QSysInfo::currentCpuArchitecture());
    const QString locale = QLocale(QLocale::system().name()).name();
    line(tr("Language"),
         tr("%1, names with code %2").arg(locale, LocalizationTools().charCodeToDigitCode(locale)));
}

void ReportText::addMapData()
{
    section(tr("Map data"));
    line(tr("Map data"), DataRoot::myDocs() + QLatin1String(": ") + stateOf(DataRoot::myDocs()));
    line(tr("Home folder"), QDir::homePath() + QLatin1String(": ") + stateOf(QDir::homePath()));
    line(tr("Server"), m_baseUri);
    // The one in use, the prepared one, and the backup.
    for (const QLatin1String suffix : {QLatin1String(), UpdateSuffix, QLatin1String("_")}) {
        if (suffix.isEmpty() || QFileInfo::exists(DataRoot::catalogFolder(suffix))
            || QFileInfo::exists(DataRoot::tileCacheFolder(suffix)))
            addDataSet(suffix);
    }
}

void ReportText::addDataSet(const QString &suffix)
{
    const QString folder = DataRoot::catalogFolder(suffix) + QLatin1Char('/');
    const QString tiles = DataRoot::tileCacheFolder(suffix);
    const QString content = folder + CatalogFiles::contentName();
    MapCatalogProcessor processor;
    const QString version = processor.readLocalMapVersion(content);
    const QString catalogue = CatalogFiles::catalogName(version);
    const QList<MapRegion *> regions = processor.readCatalog(folder + catalogue);
    const QStringList ids = processor.readLocalContent(content);

    plain(QString());
    line(tr("Data set"), QLatin1String("Tessarin") + suffix);
    line(tr("Catalogue folder"), stateOf(folder));
    line(tr("Tile cache"), tr("%1, tiles %2").arg(stateOf(tiles)).arg(tilesBelow(tiles)));
    line(tr("Maps version"), version);
    line(tr("MOS version"),
         processor.readLocalMOSVersion(tiles + QLatin1Char('/') + CatalogFiles::configName()));
    line(CatalogFiles::contentName(), stateOf(content));
    line(tr("Catalogue"),
         tr("%1: %2, regions %3")
             .arg(catalogue, stateOf(folder + catalogue),
                  QString::number(regions.size() - regions.count(nullptr))));
    line(tr("Installed"), ids.join(QLatin1String(", ")));
}

void ReportText::addSpace()
{
    section(tr("Free space"));
    for (const QString &path : {DataRoot::myDocs(), QDir::homePath()}) {
        const QStorageInfo disk(existingParent(path));
        line(path,
             tr("%1 of %2, %3%4")
                 .arg(RegionWords::size(disk.bytesAvailable()),
                      RegionWords::size(disk.bytesTotal()),
                      QString::fromUtf8(disk.fileSystemType()),
                      disk.isReadOnly() ? tr(", read-only") : QString()));
    }
}

void ReportText::addPending()
{
    section(tr("Pending"));
    for (const QLatin1String suffix : {QLatin1String(), UpdateSuffix}) {
        const QList<PendingInstall> installs =
            InstallJournal(InstallJournal::defaultPath(suffix)).entries();
        for (const PendingInstall &install : installs)
            line(tr("Install"),
                 tr("%1%2: %3, attempt %4, begun again %5, tiles %6, %7")
                     .arg(install.id, suffix, phaseName(install.phase),
                          QString::number(install.attempt), QString::number(install.retries),
                          QString::number(install.files.size()), install.url));
        const QStringList removals = RegionRemoval::unfinished(suffix);
        for (const QString &id : removals)
            line(tr("Removal"), id + suffix);
    }
    const UpdateState update = UpdateState::read();
    line(tr("Update"),
         tr("%1, from \"%2\" to \"%3\"")
             .arg(update.phaseName(), update.fromVersion, update.version));
    QString error;
    const bool isReadable = !SwapJournal::exists() || SwapJournal::read(&error);
    line(tr("Exchange of sets"),
         !SwapJournal::exists() ? QString()
             : isReadable       ? tr("cut short")
                                : error);
}

// The queue, the transfer and the pause, as they lie in the settings.
void ReportText::addEngine()
{
    section(tr("Download engine"));
    const QString path = settingsFile("vexa", "vexa");
    line(tr("Settings"), path + QLatin1String(": ") + stateOf(path));
    const auto entries = IniFile::read(bytesOf(path));
    QString paused = QStringLiteral("false");
    for (const auto &[key, value] : entries) {
        if (key.section(QLatin1Char('/'), -1) == QLatin1String("isSuspended"))
            paused = value;
    }
    // The network's suspension is not kept: whoever runs decides it anew.
    line(tr("Suspension"), paused == QLatin1String("true") ? tr("1, by the user") : tr("0, none"));
    int left = MaxEntries;
    for (const auto &[key, value] : entries) {
        if (left-- > 0)
            line(key, value);
    }
    if (left < 0)
        plain(tr("... and %1 more").arg(-left));
}

void ReportText::addNetwork()
{
    section(tr("Network"));
    const auto entries = IniFile::read(bytesOf(settingsFile("vexa", "maps")));
    line(tr("User's choices"), entries.isEmpty() ? QString() : tr("as follows"));
    for (const auto &[key, value] : entries)
        line(key, value);
    for (const char *name :
         {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY"}) {
        if (qEnvironmentVariableIsSet(name))
            line(QLatin1String(name), Redaction::appliedToProxy(qEnvironmentVariable(name)));
    }
    for (const char *name : {"no_proxy", "NO_PROXY"}) {
        if (qEnvironmentVariableIsSet(name))
            line(QLatin1String(name), QStringLiteral("<proxy>"));
    }
}

void ReportText::addLocks()
{
    section(tr("Locks"));
    const qint64 holder = DataSetLock::holder();
    line(tr("At work"), holder > 0 ? tr("process %1").arg(holder) : tr("no program"));
    const QString settingsLock = settingsFile("vexa", "vexa") + QLatin1String(".lock");
    for (const QString &path :
         {DataSetLock::rootLockPath(), DataSetLock::homeLockPath(), settingsLock})
        line(QFileInfo(path).fileName(), stateOf(path));
}

// Where journals, downloads and what killed programs left would be.
void ReportText::addFiles()
{
    section(tr("Files"));
    listFolder(DataRoot::cities());
    const QStringList sets =
        QDir(DataRoot::cities()).entryList({QStringLiteral("Tessarin*")}, QDir::Dirs);
    for (const QString &set : sets)
        listFolder(DataRoot::cities() + QLatin1Char('/') + set);
    listFolder(QDir::homePath() + QLatin1String("/MyDocs/.vexa"));
    listFolder(QDir::homePath() + TMP_DIR_PATH);
    listFolder(QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE);
    listFolder(QFileInfo(settingsFile("vexa", "vexa")).path());
}

void ReportText::addLog()
{
    section(tr("Last log lines"));
    const QStringList lines = LogLines::kept(MaxLogLines);
    for (const QString &logLine : lines)
        plain(logLine);
    if (lines.isEmpty())
        plain(tr("none"));
}

void ReportText::section(const QString &title)
{
    m_lines.append(QLatin1String("\n[") + title + QLatin1Char(']'));
}

void ReportText::line(const QString &label, const QString &value)
{
    // What is taken out of the label must not move the value.
    const QString left = m_redaction.applied(label) + QLatin1String(": ");
    plain(left.leftJustified(LabelWidth) + (value.isEmpty() ? tr("none") : value));
}

// Everything comes through here, so nothing gets past the redaction.
void ReportText::plain(const QString &text)
{
    QString printable = m_redaction.applied(text);
    for (QChar &c : printable) {
        if (c.category() == QChar::Other_Control)
            c = QLatin1Char('?');
    }
    m_lines.append(printable);
}

void ReportText::listFolder(const QString &folder)
{
    plain(QDir::cleanPath(folder) + QLatin1String(": ") + stateOf(folder));
    const QFileInfoList entries = QDir(folder).entryInfoList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (int i = 0; i < int(entries.size()) && i < MaxEntries; ++i) {
        const QFileInfo &entry = entries.at(i);
        const QString size =
            entry.isDir() ? QStringLiteral("folder") : QString::number(entry.size());
        plain(QLatin1String("  ") + size.rightJustified(12) + QLatin1String("  ")
              + entry.lastModified().toUTC().toString(Qt::ISODate) + QLatin1String("  ")
              + entry.fileName());
    }
    if (entries.size() > MaxEntries)
        plain(tr("  ... and %1 more").arg(entries.size() - MaxEntries));
}
