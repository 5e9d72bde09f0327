// SPDX-License-Identifier: MIT
#include "host/shared/updatestate.h"

#include "plugin/logger.h"
#include <iterator>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

namespace {

const char *const PhaseNames[] = {"none", "fetching", "installing", "ready", "swapping", "undoing"};

QString filePath()
{
    return QDir::homePath() + QLatin1String("/MyDocs/.vexa/update.json");
}

UpdateState::Phase phaseOf(const QString &name)
{
    for (int i = 0; i < int(std::size(PhaseNames)); ++i) {
        if (name == QLatin1String(PhaseNames[i]))
            return UpdateState::Phase(i);
    }
    return UpdateState::Phase::None;
}

} // namespace

UpdateState UpdateState::read()
{
    UpdateState state;
    QFile file(filePath());
    if (!file.open(QIODevice::ReadOnly))
        return state;
    const QJsonObject root = QJsonDocument::fromJson(file.readAll()).object();
    state.phase = phaseOf(root.value(QLatin1String("phase")).toString());
    state.version = root.value(QLatin1String("version")).toString();
    state.fromVersion = root.value(QLatin1String("fromVersion")).toString();
    return state;
}

bool UpdateState::write() const
{
    const QJsonObject root {{QStringLiteral("phase"), phaseName()},
                            {QStringLiteral("version"), version},
                            {QStringLiteral("fromVersion"), fromVersion}};
    const QString path = filePath();
    QDir().mkpath(QFileInfo(path).path()); // If it fails, the open tells.
    QSaveFile file(path);
    const QByteArray text = QJsonDocument(root).toJson(QJsonDocument::Compact);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.commit())
        return true;
    L::og()->error(QLatin1String("Could not write the state of the update ") + path
                   + QLatin1String(": ") + file.errorString());
    return false;
}

bool UpdateState::remove()
{
    return QFile::remove(filePath()) || !QFile::exists(filePath());
}

bool UpdateState::isUnfinished() const
{
    return phase == Phase::Fetching || phase == Phase::Installing;
}

QString UpdateState::phaseName() const
{
    return QLatin1String(PhaseNames[int(phase)]);
}
