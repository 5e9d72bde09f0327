// SPDX-License-Identifier: MIT
#include "host/shared/datafolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>

bool DataFolder::use(const QString &folder)
{
    const QString path = QFileInfo(folder).absoluteFilePath();
    const QString home = path + QLatin1String("/.vexa-home");
    if (folder.isEmpty() || !QDir().mkpath(home))
        return false;
    const QString settings = home + QLatin1String("/.config");
    qputenv("VEXA_MYDOCS", QFile::encodeName(QDir::cleanPath(path)));
    qputenv("HOME", QFile::encodeName(QDir::cleanPath(home)));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings);
    return true;
}
