// SPDX-License-Identifier: MIT
#include "fuzz/workspace.h"

#include "fuzz/targets.h"
#include "plugin/logger.h"
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

namespace {

QString *root = nullptr;

void swallow(QtMsgType, const QMessageLogContext &, const QString &)
{ }

} // namespace

void Workspace::create()
{
    static QTemporaryDir dir;
    require(dir.isValid(), "there is a temporary folder");
    static QString resolved = QFileInfo(dir.path()).canonicalFilePath();
    root = &resolved;
    for (const QString &folder : {home(), myDocs(), path(QStringLiteral("settings"))})
        QDir().mkpath(folder);
    qputenv("HOME", QFile::encodeName(home()));
    qputenv("VEXA_MYDOCS", QFile::encodeName(myDocs()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(path(QStringLiteral("settings"))));
    QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope,
                       path(QStringLiteral("system")));

    qInstallMessageHandler(swallow);
    L::og()->setLogLevel(L::Error);
    static int argc = 1;
    static char name[] = "vexa-fuzz";
    static char *argv[] = {name, nullptr};
    static QCoreApplication application(argc, argv);
}

QString Workspace::path()
{
    return *root;
}

QString Workspace::path(const QString &name)
{
    return *root + QLatin1Char('/') + name;
}

QString Workspace::home()
{
    return path(QStringLiteral("home"));
}

QString Workspace::myDocs()
{
    return path(QStringLiteral("MyDocs"));
}

QString Workspace::file(const QString &name, const QByteArray &bytes)
{
    const QString filePath = path(name);
    QFile file(filePath);
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate)
                && file.write(bytes) == bytes.size(),
            "the workspace can be written");
    return filePath;
}

QByteArray Workspace::readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
