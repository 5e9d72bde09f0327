// SPDX-License-Identifier: MIT
#include "host/shared/mapsversion.h"

#include "catalog/mapcatalogprocessor.h"
#include "host/shared/catalogfiles.h"
#include <QRegularExpression>
#include <QTemporaryDir>

QString MapsVersion::parse(const QByteArray &bytes)
{
    if (bytes.size() > MaxFileSize)
        return QString();
    const QString version = QString::fromUtf8(bytes).trimmed();
    static const QRegularExpression form(QStringLiteral("\\A[0-9A-Za-z][0-9A-Za-z._-]{0,63}\\z"));
    return form.match(version).hasMatch() ? version : QString();
}

// The file's own writer and reader decide.
QString MapsVersion::asInstalled(const QString &version)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(CatalogFiles::contentName());
    const MapCatalogProcessor processor;
    processor.updateLocalContent(path, version, {}, folder.filePath(QStringLiteral("none")));
    const QString result = processor.readLocalMapVersion(path);
    return result.isEmpty() ? version : result;
}
