// SPDX-License-Identifier: MIT
#include "host/shared/datafolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

namespace {

QString homeIn(const QString &folder)
{
    return QFileInfo(folder).absoluteFilePath() + QLatin1String("/.vexa-home");
}

} // namespace

bool DataFolder::use(const QString &folder)
{
    if (folder.isEmpty() || !QDir().mkpath(homeIn(folder)))
        return false;
    lookAt(folder);
    return true;
}

void DataFolder::lookAt(const QString &folder)
{
    const QString path = QFileInfo(folder).absoluteFilePath();
    const QString home = homeIn(folder);
    const QString settings = home + QLatin1String("/.config");
    qputenv("VEXA_MYDOCS", QFile::encodeName(QDir::cleanPath(path)));
    qputenv("HOME", QFile::encodeName(QDir::cleanPath(home)));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings);
}
