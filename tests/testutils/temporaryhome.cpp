// SPDX-License-Identifier: MIT
#include "testutils/temporaryhome.h"

#include "plugin/vexasettings.h"
#include <QDir>
#include <QFile>
#include <QSettings>

TemporaryHome::TemporaryHome()
    : m_oldHome(qgetenv("HOME"))
    , m_oldMyDocs(qgetenv("VEXA_MYDOCS"))
{
    if (!m_dir.isValid())
        qFatal("no temporary folder: %s", qPrintable(m_dir.errorString()));
    QDir().mkpath(path());
    QDir().mkpath(myDocs());
    QDir().mkpath(settingsFolder());
    qputenv("HOME", QFile::encodeName(path()));
    qputenv("VEXA_MYDOCS", QFile::encodeName(myDocs()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settingsFolder());
    QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope,
                       m_dir.filePath(QStringLiteral("system")));
    VexaSettings::destroy();
}

TemporaryHome::~TemporaryHome()
{
    VexaSettings::destroy();
    qputenv("HOME", m_oldHome);
    if (m_oldMyDocs.isNull())
        qunsetenv("VEXA_MYDOCS");
    else
        qputenv("VEXA_MYDOCS", m_oldMyDocs);
}

QString TemporaryHome::path() const
{
    return m_dir.filePath(QStringLiteral("home"));
}

QString TemporaryHome::myDocs() const
{
    return m_dir.filePath(QStringLiteral("MyDocs"));
}

QString TemporaryHome::settingsFolder() const
{
    return m_dir.filePath(QStringLiteral("settings"));
}

QString TemporaryHome::downloadFolder() const
{
    return path() + QLatin1String("/MyDocs/.vexa/tmp/");
}
