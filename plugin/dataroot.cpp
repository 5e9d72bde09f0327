// SPDX-License-Identifier: MIT
#include "plugin/dataroot.h"

#include <QDir>
#include <QFile>

QString DataRoot::myDocs()
{
    const QByteArray replacement = qgetenv("VEXA_MYDOCS");
    if (replacement.isEmpty())
        return QStringLiteral("/home/user/MyDocs");
    const QString folder = QDir::cleanPath(QFile::decodeName(replacement));
    // What is put behind it begins with a slash.
    return folder == QLatin1String("/") ? QString() : folder;
}

QString DataRoot::cities()
{
    return myDocs() + QLatin1String("/cities");
}

QString DataRoot::catalogFolder(const QString &pathSuffix)
{
    return cities() + QLatin1String("/Tessarin") + pathSuffix;
}

QString DataRoot::tileCacheFolder(const QString &pathSuffix)
{
    return cities() + QLatin1String("/diskcache") + pathSuffix;
}

QString DataRoot::mountPoint()
{
    return myDocs() + QLatin1String("/.");
}
