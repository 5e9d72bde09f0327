// SPDX-License-Identifier: MIT
#include "host/shared/installjournal.h"

#include "plugin/logger.h"
#include <algorithm>
#include <iterator>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMutexLocker>
#include <QSaveFile>

namespace {

const char *const PhaseNames[] = {"waiting", "engine", "moving", "moved"};

QString phaseName(PendingInstall::Phase phase)
{
    return QLatin1String(PhaseNames[int(phase)]);
}

PendingInstall::Phase phaseOf(const QString &name)
{
    for (int i = 0; i < int(std::size(PhaseNames)); ++i) {
        if (name == QLatin1String(PhaseNames[i]))
            return PendingInstall::Phase(i);
    }
    return PendingInstall::Phase::Waiting;
}

QJsonObject toJson(const PendingInstall &entry)
{
    return {{QStringLiteral("id"), entry.id},
            {QStringLiteral("url"), entry.url},
            {QStringLiteral("attempt"), entry.attempt},
            {QStringLiteral("retries"), entry.retries},
            {QStringLiteral("phase"), phaseName(entry.phase)},
            {QStringLiteral("files"), QJsonArray::fromStringList(entry.files)}};
}

PendingInstall fromJson(const QJsonObject &object)
{
    PendingInstall entry;
    entry.id = object.value(QLatin1String("id")).toString();
    entry.url = object.value(QLatin1String("url")).toString();
    entry.attempt = object.value(QLatin1String("attempt")).toInt();
    entry.retries = object.value(QLatin1String("retries")).toInt();
    entry.phase = phaseOf(object.value(QLatin1String("phase")).toString());
    const QJsonArray files = object.value(QLatin1String("files")).toArray();
    for (const QJsonValue &file : files)
        entry.files.append(file.toString());
    return entry;
}

template <typename List> auto findIn(List &entries, const QString &id)
{
    return std::find_if(entries.begin(), entries.end(),
                        [&id](const PendingInstall &entry) { return entry.id == id; });
}

} // namespace

InstallJournal::InstallJournal(const QString &filePath)
    : m_filePath(filePath)
{
    read();
}

QString InstallJournal::defaultPath(const QString &pathSuffix)
{
    return QDir::homePath() + QLatin1String("/MyDocs/.vexa/installs") + pathSuffix
        + QLatin1String(".json");
}

QList<PendingInstall> InstallJournal::entries() const
{
    const QMutexLocker lock(&m_mutex);
    return m_entries;
}

QStringList InstallJournal::ids() const
{
    const QMutexLocker lock(&m_mutex);
    QStringList ids;
    for (const PendingInstall &entry : m_entries)
        ids.append(entry.id);
    return ids;
}

std::optional<PendingInstall> InstallJournal::find(const QString &id) const
{
    const QMutexLocker lock(&m_mutex);
    const auto found = findIn(m_entries, id);
    if (found == m_entries.end())
        return std::nullopt;
    return *found;
}

bool InstallJournal::put(const PendingInstall &entry)
{
    const QMutexLocker lock(&m_mutex);
    const auto found = findIn(m_entries, entry.id);
    if (found == m_entries.end())
        m_entries.append(entry);
    else
        *found = entry;
    m_lastAttempt = std::max(m_lastAttempt, entry.attempt);
    return write();
}

bool InstallJournal::remove(const QString &id)
{
    const QMutexLocker lock(&m_mutex);
    const auto found = findIn(m_entries, id);
    if (found == m_entries.end())
        return true;
    m_entries.erase(found);
    return write();
}

bool InstallJournal::noteUnpacked(const QString &id, int attempt, const QStringList &files)
{
    const QMutexLocker lock(&m_mutex);
    const auto found = findIn(m_entries, id);
    if (found == m_entries.end() || found->attempt != attempt
        || found->phase != PendingInstall::Phase::Engine)
        return true;
    found->phase = PendingInstall::Phase::Moving;
    found->files = files;
    return write();
}

int InstallJournal::nextAttempt()
{
    const QMutexLocker lock(&m_mutex);
    return ++m_lastAttempt; // Written with the entry that gets it.
}

void InstallJournal::read()
{
    QFile file(m_filePath);
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    m_lastAttempt = root.value(QLatin1String("lastAttempt")).toInt();
    const QJsonArray installs = root.value(QLatin1String("installs")).toArray();
    for (const QJsonValue &value : installs) {
        const PendingInstall entry = fromJson(value.toObject());
        if (entry.id.isEmpty() || findIn(m_entries, entry.id) != m_entries.end())
            continue;
        m_entries.append(entry);
        m_lastAttempt = std::max(m_lastAttempt, entry.attempt);
    }
}

// Under the lock.
bool InstallJournal::write()
{
    QJsonArray installs;
    for (const PendingInstall &entry : std::as_const(m_entries))
        installs.append(toJson(entry));
    const QJsonObject root {{QStringLiteral("version"), 1},
                            {QStringLiteral("lastAttempt"), m_lastAttempt},
                            {QStringLiteral("installs"), installs}};

    QDir().mkpath(QFileInfo(m_filePath).path()); // If it fails, the open tells.
    QSaveFile file(m_filePath);
    const QByteArray text = QJsonDocument(root).toJson(QJsonDocument::Compact);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return true;
    L::og()->error(QLatin1String("Could not write the list of pending installs ") + m_filePath
                   + QLatin1String(": ") + file.errorString());
    return false;
}
