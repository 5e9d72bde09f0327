// SPDX-License-Identifier: MIT
#include "testcontent.h"

#include "testutils/archivebuilder.h"
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

TestContent::TestContent(const QString &folder)
    : m_folder(folder)
{
    QDir().mkpath(folder);
}

void TestContent::addRegion(const QString &id, const QString &name, const Tiles &tiles,
                            const QString &archive, const QString &parent)
{
    const QString link =
        QLatin1String("archives/") + (archive.isEmpty() ? id + QLatin1String(".zip") : archive);
    m_regions.append({id, name, link, parent, tiles});
    pack(m_regions.last());
}

void TestContent::addLink(const QString &id, const QString &name, const QString &link,
                          const QString &parent)
{
    m_regions.append({id, name, link, parent, {}});
}

void TestContent::setTiles(const QString &id, const Tiles &tiles)
{
    for (Region &region : m_regions) {
        if (region.id != id)
            continue;
        region.tiles = tiles;
        pack(region);
    }
}

QString TestContent::archivePath(const QString &id) const
{
    for (const Region &region : m_regions) {
        if (region.id == id)
            return m_folder + QLatin1Char('/') + region.link;
    }
    return QString();
}

Tiles TestContent::tiles(const QString &id) const
{
    for (const Region &region : m_regions) {
        if (region.id == id)
            return region.tiles;
    }
    return Tiles();
}

void TestContent::publish(const QString &version, const QList<QByteArray> &codes) const
{
    write(QStringLiteral("catalog-%1.xml").arg(version),
          "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Catalog>\n" + entries(QString())
              + "</Catalog>\n");
    for (const QByteArray &code : codes) {
        QByteArray names = "<regions>\n";
        for (const Region &region : m_regions)
            names += "<region id=\"" + region.id.toUtf8() + "\" name=\"" + region.name.toUtf8()
                + " in " + code + "\"/>\n";
        write(QStringLiteral("regionname-lang-%1.xml").arg(QLatin1String(code)),
              names + "</regions>\n");
    }
    write(QStringLiteral("version.txt"), version.toUtf8() + '\n');
}

void TestContent::write(const QString &name, const QByteArray &bytes) const
{
    TestFile::write(m_folder + QLatin1Char('/') + name, bytes);
}

QByteArray TestContent::tile(const QString &name, int size)
{
    return ArchiveBuilder::noise(size, quint32(qHash(name, 1)) | 1u);
}

void TestContent::pack(const Region &region) const
{
    ArchiveBuilder builder;
    for (auto tile = region.tiles.begin(); tile != region.tiles.end(); ++tile)
        builder.addFile(tile.key(), tile.value());
    const QString target = m_folder + QLatin1Char('/') + region.link;
    QDir().mkpath(QFileInfo(target).path());
    QFile::remove(target);
    QFile::copy(builder.make(QFileInfo(region.link).fileName()), target);
}

QByteArray TestContent::entries(const QString &parent) const
{
    QByteArray xml;
    for (const Region &region : m_regions) {
        if (region.parent != parent || (parent.isEmpty() && !region.parent.isEmpty()))
            continue;
        const qint64 size = QFileInfo(m_folder + QLatin1Char('/') + region.link).size();
        xml += "<File Id=\"" + region.id.toUtf8() + "\" Description=\"" + region.name.toUtf8()
            + "\" ZipFileSize=\"" + QByteArray::number(size) + "\" Link=\"" + region.link.toUtf8()
            + "\">\n" + entries(region.id) + "</File>\n";
    }
    return xml;
}

Tiles tilesOf(std::initializer_list<const char *> names, const char *version)
{
    Tiles tiles;
    for (const char *name : names) {
        const QString path = QLatin1String(name);
        tiles.insert(path, TestContent::tile(path + QLatin1String(version)));
    }
    return tiles;
}

QString differenceOf(const QString &folder, const Tiles &tiles)
{
    Tiles found;
    QDirIterator files(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        found.insert(QDir(folder).relativeFilePath(path), TestFile::read(path));
    }
    for (auto tile = tiles.begin(); tile != tiles.end(); ++tile) {
        if (!found.contains(tile.key()))
            return QLatin1String("missing: ") + tile.key();
        if (found.value(tile.key()) != tile.value())
            return QLatin1String("other bytes: ") + tile.key();
    }
    for (auto file = found.begin(); file != found.end(); ++file) {
        if (!tiles.contains(file.key()))
            return QLatin1String("too much: ") + file.key();
    }
    return QString();
}

Tiles operator+(Tiles a, const Tiles &b)
{
    for (auto tile = b.begin(); tile != b.end(); ++tile)
        a.insert(tile.key(), tile.value());
    return a;
}
