// SPDX-License-Identifier: MIT
#include "host/shared/leftovers.h"

#include "download/download.h"
#include "host/shared/savedqueue.h"
#include "host/shared/tilelist.h"
#include "plugin/dataroot.h"
#include "plugin/vexaconstants.h"
#include "plugin/vexasettings.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

constexpr QDir::Filters AllFiles = QDir::Files | QDir::Hidden | QDir::System;

// Six letters behind the whole name are what Qt gives a file that is to replace another.
bool isUnnamed(const QString &name)
{
    static const QRegularExpression form(
        QStringLiteral("^(content\\.xml|cityindex\\.xml|vexa\\.conf|[a-z]+(_[a-z]*)?\\.json)"
                       "\\.[A-Za-z]{6}$"));
    // Somebody may have put a copy away.
    return form.match(name).hasMatch() && !name.endsWith(QLatin1String(".backup"));
}

void removeUnnamedFiles(const QString &folder)
{
    const QDir dir(folder);
    const QStringList names = dir.entryList(AllFiles);
    for (const QString &name : names) {
        if (isUnnamed(name))
            QFile::remove(dir.filePath(name));
    }
}

QString settingsFolder()
{
    const VexaSettings::Locker settings;
    return QFileInfo(settings->fileName()).path();
}

// The files that the engine's queue still needs.
QStringList filesInUse()
{
    QStringList files;
    const QList<Request> requests = SavedQueue::read();
    for (const Request &request : requests)
        files += request.payload.toStringList(); // one, or what is moved and where to
    Download transfer;
    const VexaSettings::Locker settings;
    transfer.deSerialize(*settings);
    files.append(transfer.fileName);
    for (QString &file : files)
        file = QDir::cleanPath(file);
    return files;
}

void removeForgottenArchives()
{
    const QDir dir(QDir::homePath() + TMP_DIR_PATH);
    const QStringList names = dir.entryList(AllFiles);
    if (names.isEmpty())
        return;
    const QStringList inUse = filesInUse();
    for (const QString &name : names) {
        const QString path = QDir::cleanPath(dir.filePath(name));
        if (!inUse.contains(path))
            QFile::remove(path);
    }
}

} // namespace

void Leftovers::remove()
{
    const QStringList catalogs =
        QDir(DataRoot::cities())
            .entryList({QStringLiteral("Tessarin*")}, QDir::Dirs | QDir::NoSymLinks);
    for (const QString &catalog : catalogs)
        removeUnnamedFiles(DataRoot::cities() + QLatin1Char('/') + catalog);
    removeUnnamedFiles(QDir::homePath() + QLatin1String("/MyDocs/.vexa"));
    removeUnnamedFiles(settingsFolder());
    removeForgottenArchives();
    if (SavedQueue::read().isEmpty())
        TileList::empty(QDir::homePath() + TMP_DIR_PATH_UNZIPPED_ARCHIVE);
}
