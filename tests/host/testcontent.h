// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <QByteArray>
#include <QList>
#include <QMap>
#include <QString>

class QDir;

/** Tiles by their path, as "a/3/3fa9.cdt". */
using Tiles = QMap<QString, QByteArray>;

/**
 * A content server's folder with real archives, made with the real tools: add regions, then
 * publish().
 */
class TestContent
{
public:
    /** The folder that a web server shows as "map5/"; it is made. */
    explicit TestContent(const QString &folder);

    /** A region with an archive; the end of the archive's name chooses the format. */
    void addRegion(const QString &id, const QString &name, const Tiles &tiles,
                   const QString &archive = QString(), const QString &parent = QString());
    /** A region whose catalogue entry has this link, and no archive. */
    void addLink(const QString &id, const QString &name, const QString &link,
                 const QString &parent = QString());
    /** Replaces a region's archive with one of these tiles. */
    void setTiles(const QString &id, const Tiles &tiles);
    /** Path of the region's archive on disk. */
    QString archivePath(const QString &id) const;
    Tiles tiles(const QString &id) const;

    /** Writes version.txt, the catalogue and names for the language codes. */
    void publish(const QString &version, const QList<QByteArray> &codes = {"001"}) const;
    /** Writes any file below the folder. */
    void write(const QString &name, const QByteArray &bytes) const;

    /** As much noise as that, another one for each name. */
    static QByteArray tile(const QString &name, int size = 20000);

private:
    struct Region
    {
        QString id;
        QString name;
        QString link;
        QString parent;
        Tiles tiles;
    };

    void pack(const Region &region) const;
    QByteArray entries(const QString &parent) const;

    QString m_folder;
    QList<Region> m_regions;
};

/** Tiles of noise; the version makes other bytes of the same names. */
Tiles tilesOf(std::initializer_list<const char *> names, const char *version = "");

/** Empty if the folder holds exactly these tiles, else what differs. */
QString differenceOf(const QString &folder, const Tiles &tiles);

/** The tiles of both. */
Tiles operator+(Tiles a, const Tiles &b);
