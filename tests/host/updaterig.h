// SPDX-License-Identifier: MIT
#pragma once

#include "mapsprogram.h"
#include <initializer_list>
#include <QDirIterator>
#include <QSet>

/**
 * The real program on a device that has version 1 of some regions, beside a server whose next
 * version has other tiles for one of them, the same for another, lacks a third, and has a new one.
 */
class UpdateRig : public MapsProgram
{
public:
    const QString oldVersion = QStringLiteral("26.11.21.00");
    const QString newVersion = QStringLiteral("26.12.01.00");

    UpdateRig()
        : next(server.folder() + QLatin1String("/map5"))
    {
        content.addRegion(QStringLiteral("FI"), QStringLiteral("Finland"),
                          tilesOf({"0/1/a.cdt", "0/3/gone.cdt", "5/5/border.cdt"}));
        content.addRegion(QStringLiteral("SE"), QStringLiteral("Sweden"),
                          tilesOf({"0/2/b.cdt", "5/5/border.cdt"}), QStringLiteral("SE.tar.gz"));
        content.addRegion(QStringLiteral("AX"), QStringLiteral("Aland"), tilesOf({"a/a/ax.cdt"}));
        content.publish(oldVersion);
        next.addRegion(QStringLiteral("FI"), QStringLiteral("Finland"),
                       tilesOf({"0/1/a.cdt", "0/4/added.cdt", "5/5/border.cdt"}, "2"),
                       QStringLiteral("2/FI.zip"));
        next.addRegion(QStringLiteral("SE"), QStringLiteral("Sweden"),
                       tilesOf({"0/2/b.cdt"}) + tilesOf({"5/5/border.cdt"}, "2"),
                       QStringLiteral("2/SE.tar.gz"));
        next.addRegion(QStringLiteral("NO"), QStringLiteral("Norway"), tilesOf({"b/b/no.cdt"}),
                       QStringLiteral("2/NO.zip"));
    }

    /** Puts the first version of the regions on the device, with what else lies there. */
    bool install(const QStringList &ids)
    {
        if (run(words("refresh")).code != 0
            || run(QStringList {QStringLiteral("install")} + ids).code != 0)
            return false;
        TestFile::write(tileFolder() + QLatin1String("/voices/en/turn.wav"), "turn left");
        TestFile::write(tileFolder() + QLatin1String("/config.cfg"), configFile());
        TestFile::write(catalogFolder() + QLatin1String("/cityindex.xml"), "<cityindex/>\n");
        return true;
    }

    void publishNext() { next.publish(newVersion); }

    /** All files of the set in use, by paths below the data folder. */
    Tiles mainSet() const { return filesOf("/cities/Tessarin") + filesOf("/cities/diskcache"); }
    /** The tiles alone of a data set. */
    Tiles tilesIn(const char *pathSuffix = "") const
    {
        Tiles tiles;
        const Tiles files = below(tileFolder() + QLatin1String(pathSuffix));
        for (auto file = files.begin(); file != files.end(); ++file) {
            if (file.key().endsWith(QLatin1String(".cdt")))
                tiles.insert(file.key(), file.value());
        }
        return tiles;
    }
    QStringList folders() const
    {
        return QDir(dataFolder() + QLatin1String("/cities"))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    static QStringList mainFolders()
    {
        return {QStringLiteral("Tessarin"), QStringLiteral("diskcache")};
    }
    static QStringList mainAndBackupFolders()
    {
        return {QStringLiteral("Tessarin"), QStringLiteral("Tessarin_"),
                QStringLiteral("diskcache"), QStringLiteral("diskcache_")};
    }
    QJsonObject status() const { return run(words("status --json")).object(); }
    QString version() const { return status().value(QLatin1String("mapsVersion")).toString(); }
    /** Requests for a part of an address that the server has answered. */
    int answers(const char *part) const
    {
        int count = 0;
        const QList<NginxServer::Entry> log = server.accessLog();
        for (const NginxServer::Entry &entry : log)
            count += entry.path.contains(part) ? 1 : 0;
        return count;
    }
    /** Version 1.0.23.7 and what belongs to the map engine. */
    static QByteArray configFile()
    {
        return QByteArray("\x01\0\0\0\0\0\0\0\x17\0\0\0\x07\0\0\0the engine's", 28);
    }

    TestContent next;

private:
    static Tiles below(const QString &folder)
    {
        Tiles files;
        QDirIterator entries(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QString path = entries.next();
            files.insert(QDir(folder).relativeFilePath(path), TestFile::read(path));
        }
        return files;
    }
    Tiles filesOf(const char *folder) const
    {
        const Tiles files = below(dataFolder() + QLatin1String(folder));
        Tiles result;
        for (auto file = files.begin(); file != files.end(); ++file)
            result.insert(QLatin1String(folder) + QLatin1Char('/') + file.key(), file.value());
        return result;
    }
};

inline QString textOf(const ProgramRun &run)
{
    return QString::fromUtf8(run.out + run.err);
}
