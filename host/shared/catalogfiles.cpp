// SPDX-License-Identifier: MIT
#include "host/shared/catalogfiles.h"

#include <QXmlStreamReader>

QString CatalogFiles::versionName()
{
    return QStringLiteral("version.txt");
}

QString CatalogFiles::contentName()
{
    return QStringLiteral("content.xml");
}

QString CatalogFiles::configName()
{
    return QStringLiteral("config.cfg");
}

QString CatalogFiles::catalogName(const QString &version)
{
    return QStringLiteral("catalog-%1.xml").arg(version);
}

QString CatalogFiles::namesName(const QString &code)
{
    return QStringLiteral("regionname-lang-%1.xml").arg(code);
}

QString CatalogFiles::fallbackCode()
{
    return QStringLiteral("001");
}

bool CatalogFiles::isCut(QIODevice *xml)
{
    QXmlStreamReader reader(xml);
    reader.setNamespaceProcessing(false);
    while (!reader.atEnd())
        reader.readNext();
    return reader.error() == QXmlStreamReader::PrematureEndOfDocumentError;
}
