// SPDX-License-Identifier: MIT
#include "host/shared/swapjournal.h"

#include "plugin/dataroot.h"
#include "plugin/shell_p.h"
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <iterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <unistd.h>

namespace {

constexpr int Version = 1;
constexpr qint64 MaxSize = 65536; // bytes; a longer file is none of ours
const QLatin1String Format("vexa-data-set-swap");
const char *const OperationNames[] = {"swap", "undo", "clear", "discard"};

QString unfinishedPath()
{
    return SwapJournal::path() + QLatin1String(".new");
}

// As text: JSON's numbers are too short for an inode.
QJsonValue toJson(const FolderOps::Identity &identity)
{
    if (identity.isNull())
        return QJsonValue();
    return QJsonObject {{QStringLiteral("inode"), QString::number(identity.inode)},
                        {QStringLiteral("born"), QString::number(identity.born)}};
}

FolderOps::Identity identityFrom(const QJsonValue &value)
{
    const QJsonObject object = value.toObject();
    return {object.value(QLatin1String("inode")).toString().toULongLong(),
            object.value(QLatin1String("born")).toString().toLongLong()};
}

QByteArray textOf(const SwapNote &note)
{
    const QJsonObject root {
        {QStringLiteral("format"), QString(Format)},
        {QStringLiteral("version"), Version},
        {QStringLiteral("operation"), QLatin1String(OperationNames[int(note.operation)])},
        {QStringLiteral("suffix"), note.suffix},
        {QStringLiteral("leavingCatalog"), toJson(note.leavingCatalog)},
        {QStringLiteral("leavingTiles"), toJson(note.leavingTiles)},
        {QStringLiteral("arrivingCatalog"), toJson(note.arrivingCatalog)},
        {QStringLiteral("arrivingTiles"), toJson(note.arrivingTiles)},
        {QStringLiteral("voices"), toJson(note.voices)},
        {QStringLiteral("arrivingVersion"), note.arrivingVersion},
    };
    return QJsonDocument(root).toJson();
}

std::optional<SwapNote::Operation> operationOf(const QString &name)
{
    for (int i = 0; i < int(std::size(OperationNames)); ++i) {
        if (name == QLatin1String(OperationNames[i]))
            return SwapNote::Operation(i);
    }
    return std::nullopt;
}

bool isWhole(const SwapNote &note)
{
    const bool exchange =
        note.operation == SwapNote::Operation::Swap || note.operation == SwapNote::Operation::Undo;
    const bool named = !note.leavingCatalog.isNull() && !note.leavingTiles.isNull()
        && !note.arrivingCatalog.isNull() && !note.arrivingTiles.isNull();
    return SwapJournal::isUsableSuffix(note.suffix) && (!exchange || named);
}

bool writeSynced(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text) == text.size()
        && file.flush() && ::fsync(file.handle()) == 0;
}

} // namespace

QString SwapJournal::path()
{
    return DataRoot::cities() + QLatin1String("/.vexa-swap.json");
}

bool SwapJournal::exists()
{
    return FolderOps::exists(path());
}

bool SwapJournal::write(const SwapNote &note, QString *errorString)
{
    // A rename never replaces a file here: a note that is there tells of something unfinished.
    const bool placed = writeSynced(unfinishedPath(), textOf(note))
        && FolderOps::rename(unfinishedPath(), path(), nullptr);
    if (placed && FolderOps::syncFolder(DataRoot::cities()))
        return true;
    const int error = errno;
    *errorString =
        tr("%1 cannot be written (%2).").arg(path(), QString::fromLocal8Bit(std::strerror(error)));
    removeUnfinished();
    if (placed)
        ::unlink(QFile::encodeName(path()).constData());
    return false;
}

std::optional<SwapNote> SwapJournal::read(QString *errorString)
{
    QFile file(path());
    if (QFileInfo(file).isSymLink() || !file.open(QIODevice::ReadOnly)) {
        *errorString = tr("The note %1 cannot be read.").arg(path());
        return std::nullopt;
    }
    const QJsonObject root =
        file.size() > MaxSize ? QJsonObject() : QJsonDocument::fromJson(file.readAll()).object();
    const int version = root.value(QLatin1String("version")).toInt();
    if (root.value(QLatin1String("format")).toString() != Format || version < 1) {
        *errorString = tr("The note %1 is damaged or was not written by this program.").arg(path());
        return std::nullopt;
    }
    if (version > Version) {
        *errorString =
            tr("The note %1 was written by a later version of this program.").arg(path());
        return std::nullopt;
    }
    const auto operation = operationOf(root.value(QLatin1String("operation")).toString());
    SwapNote note;
    note.operation = operation.value_or(SwapNote::Operation::Swap);
    note.suffix = root.value(QLatin1String("suffix")).toString();
    note.leavingCatalog = identityFrom(root.value(QLatin1String("leavingCatalog")));
    note.leavingTiles = identityFrom(root.value(QLatin1String("leavingTiles")));
    note.arrivingCatalog = identityFrom(root.value(QLatin1String("arrivingCatalog")));
    note.arrivingTiles = identityFrom(root.value(QLatin1String("arrivingTiles")));
    note.voices = identityFrom(root.value(QLatin1String("voices")));
    note.arrivingVersion = root.value(QLatin1String("arrivingVersion")).toString();
    if (!operation || !isWhole(note)) {
        *errorString = tr("The note %1 is damaged.").arg(path());
        return std::nullopt;
    }
    return note;
}

bool SwapJournal::remove(QString *errorString)
{
    if (::unlink(QFile::encodeName(path()).constData()) == 0
        && FolderOps::syncFolder(DataRoot::cities()))
        return true;
    const int error = errno;
    *errorString =
        tr("%1 cannot be removed (%2).").arg(path(), QString::fromLocal8Bit(std::strerror(error)));
    return false;
}

void SwapJournal::removeUnfinished()
{
    ::unlink(QFile::encodeName(unfinishedPath()).constData()); // There is seldom one.
}

bool SwapJournal::isUsableSuffix(const QString &suffix)
{
    return !suffix.isEmpty() && suffix != QLatin1String("_") && !suffix.contains(QLatin1Char('/'))
        && Shell::quoted(QLatin1Char('x') + suffix) == QLatin1Char('x') + suffix;
}
