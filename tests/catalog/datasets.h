// SPDX-License-Identifier: MIT
#pragma once

#include "catalog/mapcatalog.h"
#include "catalog/mapdata.h"
#include "testutils/fakesystem.h"
#include <memory>
#include <QCryptographicHash>
#include <QDirIterator>
#include <QMap>
#include <QMetaMethod>
#include <QSignalSpy>
#include <vector>

using Commands = QList<QByteArray>;

inline QString ids(QQmlListProperty<MapRegion> list)
{
    QStringList ids;
    for (int i = 0; i < int(list.count(&list)); ++i)
        ids.append(list.at(&list, i)->id());
    return ids.join(QLatin1Char(' '));
}

/** The version's bytes in config.cfg, for "first.0.0.0". */
inline QByteArray mosHeader(char first)
{
    return QByteArray(1, first) + QByteArray(15, '\0');
}

/**
 * All below a folder, by path: the content of the files, and nothing for the folders that are
 * empty, whose paths end with a slash. Hidden files are there too.
 */
inline QMap<QString, QByteArray> contentsOf(const QString &folder)
{
    const auto all = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    QMap<QString, QByteArray> contents;
    QDirIterator it(folder, all, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        const QString path = it.filePath().mid(folder.size() + 1);
        if (!it.fileInfo().isDir())
            contents.insert(path, readFile(it.filePath()));
        else if (QDir(it.filePath()).isEmpty(all))
            contents.insert(path + QLatin1Char('/'), QByteArray());
    }
    return contents;
}

/** As contentsOf(), with size and hash in place of the content: for big trees. */
inline QMap<QString, QByteArray> snapshotOf(const QString &folder)
{
    QMap<QString, QByteArray> snapshot = contentsOf(folder);
    for (QByteArray &content : snapshot)
        content = QByteArray::number(content.size()) + ' '
            + QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex();
    return snapshot;
}

/** As contentsOf(), for small trees: "path=content" and "path/", sorted. */
inline QStringList treeOf(const QString &folder)
{
    QStringList tree;
    const QMap<QString, QByteArray> contents = contentsOf(folder);
    for (auto it = contents.cbegin(); it != contents.cend(); ++it) {
        const bool isFolder = it.key().endsWith(QLatin1Char('/'));
        tree.append(isFolder ? it.key() : it.key() + QLatin1Char('=') + QString::fromUtf8(*it));
    }
    return tree;
}

/** How often any signal of the catalogue was emitted. */
class SignalSpies
{
public:
    explicit SignalSpies(MapCatalog *catalog)
    {
        const QMetaObject &meta = MapCatalog::staticMetaObject;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Signal)
                m_spies.push_back(std::make_unique<QSignalSpy>(catalog, meta.method(i)));
        }
        if (m_spies.size() != 8)
            qFatal("not all signals are followed");
    }
    int count() const
    {
        int count = 0;
        for (const auto &spy : m_spies)
            count += int(spy->count());
        return count;
    }

private:
    std::vector<std::unique_ptr<QSignalSpy>> m_spies;
};

/** The folders of all data sets below a temporary home, and the commands that run on them. */
class DataSets : public MapData
{
public:
    /** A path below the folder of all data. */
    QString path(const char *name) const { return citiesFolder() + QLatin1Char('/') + text(name); }
    /** What is below that folder, as treeOf() has it. */
    QStringList tree() const { return treeOf(citiesFolder()); }
    /** The commands so far, with that folder shortened to "C". */
    Commands commands() const
    {
        Commands commands = system.commands();
        for (QByteArray &command : commands)
            command.replace(citiesFolder().toUtf8(), "C");
        return commands;
    }
    /** Makes a small data set with a file in each of its two folders. */
    void makeSet(const char *suffix, const char *content) const
    {
        for (const char *name : {"Tessarin%1/catalog-1.2.xml", "diskcache%1/a/3/x.cdt"})
            writeFile(path(name).arg(text(suffix)), content);
    }

    FakeSystem system;
};
