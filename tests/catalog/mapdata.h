// SPDX-License-Identifier: MIT
#pragma once

#include "testutils/temporaryhome.h"
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

inline QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

inline void writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** A "File" element of a catalogue; what is nested goes inside. */
inline QByteArray fileElement(const QByteArray &id, const QByteArray &nested = QByteArray())
{
    return "<File Id=\"" + id + "\" Description=\"Region " + id
        + "\" ZipFileSize=\"1000\" Link=\"http://localhost/" + id + ".zip\">" + nested
        + "</File>\n";
}

/** An installed region of a content file: the plain id and its tiles as "a/3/x.cdt". */
using ContentRegion = QPair<QByteArray, QList<QByteArray>>;

/** A content file of version 1.2 as the library writes it. */
inline QByteArray contentXml(const QList<ContentRegion> &regions)
{
    QByteArray bytes("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<directory map-version=\"1.2\">\n"
                     " <diskcache/>\n <regions>\n");
    for (const ContentRegion &region : regions) {
        bytes += "<region id=\"1" + region.first + "\" name=\"Region " + region.first + "\">";
        for (QByteArray tile : region.second)
            bytes += "<TI name=\"x\" path=\"\\" + tile.replace('/', '\\') + "\"/>";
        bytes += "</region>\n";
    }
    return bytes + " </regions>\n</directory>\n";
}

/** The data folders of a main data set of version 1.2, below a temporary home. */
class MapData
{
public:
    MapData()
    {
        QDir().mkpath(catalogFolder());
        QDir().mkpath(tileFolder());
    }

    QString citiesFolder() const { return m_home.myDocs() + QLatin1String("/cities"); }
    QString catalogFolder() const { return citiesFolder() + QLatin1String("/Tessarin"); }
    QString tileFolder() const { return citiesFolder() + QLatin1String("/diskcache"); }
    QString contentFile() const { return catalogFolder() + QLatin1String("/content.xml"); }
    QString configFile() const { return tileFolder() + QLatin1String("/config.cfg"); }
    QString catalogFile(const char *version = "1.2") const
    {
        return catalogFolder() + QLatin1String("/catalog-") + text(version) + QLatin1String(".xml");
    }
    /** The region names for British English, the language of the tests' locale. */
    QString namesFile() const
    {
        return catalogFolder() + QLatin1String("/regionname-lang-001.xml");
    }

    /** Writes a catalogue of these elements. */
    void setCatalog(const QByteArray &elements) const
    {
        writeFile(catalogFile(), "<Catalog>\n" + elements + "</Catalog>\n");
    }
    void setContent(const QList<ContentRegion> &regions) const
    {
        writeFile(contentFile(), contentXml(regions));
    }

    QString tile(const char *path) const { return tileFolder() + QLatin1Char('/') + text(path); }
    void makeTile(const char *path) const { writeFile(tile(path), path); }
    bool hasTile(const char *path) const { return QFile::exists(tile(path)); }

private:
    TemporaryHome m_home;
};
