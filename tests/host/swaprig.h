// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/datasetlock.h"
#include "host/shared/datasetswap.h"
#include "plugin/dataroot.h"
#include "testutils/archivebuilder.h"
#include <map>
#include <QByteArray>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QString>

inline QString catalogs(const char *suffix = "")
{
    return DataRoot::catalogFolder(QLatin1String(suffix));
}

inline QString tiles(const char *suffix = "")
{
    return DataRoot::tileCacheFolder(QLatin1String(suffix));
}

/** What lies below a folder: paths relative to it, folders with a slash at the end. */
using Tree = std::map<QString, QByteArray>;

/** A main data set of version 1.2 and a prepared one of 1.3 below the present data root. */
class SwapRig
{
public:
    static constexpr const char *OldVersion = "1.2";
    static constexpr const char *NewVersion = "1.3";

    /** Makes both sets anew, in place of whatever was there. */
    explicit SwapRig(bool withVoices = true)
    {
        if (qEnvironmentVariableIsEmpty("VEXA_MYDOCS"))
            qFatal("a rig would replace the maps of whoever runs the test");
        QDir(DataRoot::cities()).removeRecursively();
        makeSet(QString(), OldVersion);
        makeSet(newSuffix(), NewVersion);
        if (withVoices) {
            write(below(voices(), "en/turnleft.wav"), ArchiveBuilder::noise(5000, 77));
            write(below(voices(), "fi/käänny vasemmalle.wav"), "oikealle");
        }
        m_old = setIn(QString());
        m_new = setIn(newSuffix());
        m_voices = treeOf(voices());
    }

    static QString newSuffix() { return QStringLiteral("_new"); }
    static QString backupSuffix() { return QStringLiteral("_"); }
    static QString voices(const QString &suffix = QString())
    {
        return DataRoot::tileCacheFolder(suffix) + QStringLiteral("/voices");
    }
    static QString journal() { return DataRoot::cities() + QStringLiteral("/.vexa-swap.json"); }
    static bool exists(const QString &path)
    {
        return QFileInfo::exists(path) || QFileInfo(path).isSymLink();
    }
    static QString below(const QString &folder, const QByteArray &name)
    {
        return folder + QLatin1Char('/') + QString::fromUtf8(name);
    }
    static void write(const QString &path, const QByteArray &bytes)
    {
        QDir().mkpath(QFileInfo(path).path());
        TestFile::write(path, bytes);
    }
    static void makeSet(const QString &suffix, const QByteArray &version)
    {
        const QString catalogs = DataRoot::catalogFolder(suffix);
        const QString tiles = DataRoot::tileCacheFolder(suffix);
        write(below(catalogs, "content.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<directory map-version=\"" + version
                  + "\">\n <diskcache/>\n <regions>\n<region id=\"1FI\" name=\"Finland\">"
                    "<TI name=\"t\" path=\"\\a\\3\\t.cdt\"/></region>\n </regions>\n"
                    "</directory>\n");
        write(below(catalogs, "catalog-" + version + ".xml"),
              "<Catalog>\n<File Id=\"FI\" Description=\"Finland\" ZipFileSize=\"1000\" "
              "Link=\"FI.zip\"></File>\n</Catalog>\n");
        write(below(catalogs, "cityindex.xml"), "<cities of=\"" + version + "\"/>");
        write(below(catalogs, "regionname-lang-001.xml"), "<names of=\"" + version + "\"/>");
        write(below(tiles, "config.cfg"), "01000203" + version);
        for (const char *name : {"a/3/t.cdt", "a/4/u.cdt", "f/f/border.cdt"})
            write(below(tiles, name), name + version);
        write(below(tiles, "0/0/only" + version + ".cdt"), version);
        QDir().mkpath(below(tiles, "e/e")); // An empty folder is a part of the set, too.
    }

    static Tree treeOf(const QString &folder)
    {
        Tree tree;
        QDirIterator entries(folder,
                             QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QString path = entries.next();
            const QString name = path.mid(folder.size() + 1);
            if (entries.fileInfo().isDir())
                tree[name + QLatin1Char('/')] = QByteArray();
            else
                tree[name] = TestFile::read(path);
        }
        return tree;
    }
    /** Both folders without the voice data. */
    static Tree setIn(const QString &suffix)
    {
        Tree set;
        for (const auto &entry : treeOf(DataRoot::catalogFolder(suffix)))
            set[QLatin1String("Tessarin/") + entry.first] = entry.second;
        for (const auto &entry : treeOf(DataRoot::tileCacheFolder(suffix))) {
            if (!entry.first.startsWith(QLatin1String("voices/")))
                set[QLatin1String("diskcache/") + entry.first] = entry.second;
        }
        return set;
    }

    /** Whether the main set is the old one, whole, and the new one is still prepared, whole. */
    bool isOld() const
    {
        return setIn(QString()) == m_old && setIn(newSuffix()) == m_new
            && setIn(backupSuffix()).empty() && voicesAreInPlace() && isTidy();
    }
    /** Whether the main set is the new one, whole, and the old one is the backup, whole. */
    bool isNew() const
    {
        return setIn(QString()) == m_new && setIn(backupSuffix()) == m_old
            && setIn(newSuffix()).empty() && voicesAreInPlace() && isTidy();
    }
    bool isOldAlone() const
    {
        return setIn(QString()) == m_old && voicesAreInPlace() && isTidy()
            && namesInCities() == mainNames();
    }
    bool isNewAlone() const
    {
        return setIn(QString()) == m_new && voicesAreInPlace() && isTidy()
            && namesInCities() == mainNames();
    }
    bool voicesAreInPlace() const
    {
        return treeOf(voices()) == m_voices && exists(voices()) == !m_voices.empty()
            && !exists(voices(newSuffix())) && !exists(voices(backupSuffix()));
    }
    /** Whether neither a journal nor anything nameless or set aside is left. */
    static bool isTidy()
    {
        for (const QString &name : namesInCities()) {
            if (!name.startsWith(QLatin1String("Tessarin"))
                && !name.startsWith(QLatin1String("diskcache")))
                return false;
            if (name.contains(QLatin1Char('.')))
                return false;
        }
        return true;
    }
    static QStringList namesInCities()
    {
        return QDir(DataRoot::cities())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDir::Name);
    }
    static QStringList mainNames()
    {
        return {QStringLiteral("Tessarin"), QStringLiteral("diskcache")};
    }
    /** For a failed test: what is where. */
    static QByteArray description()
    {
        QByteArray text = "\n";
        for (const auto &entry : treeOf(DataRoot::cities()))
            text += entry.first.toUtf8() + (entry.second.size() < 20 ? " = " + entry.second : "")
                + '\n';
        return text;
    }

private:
    Tree m_old;
    Tree m_new;
    Tree m_voices;
};

/** Recovers as a program does that starts now: behind the lock, which it gives back. */
inline DataSetSwap::Recovery recoverBehindLock(QString *text = nullptr)
{
    DataSetLock lock;
    if (!lock.tryLock())
        qFatal("no lock: %s", qPrintable(lock.errorString()));
    return DataSetSwap::recover(text);
}
