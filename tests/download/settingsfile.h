// SPDX-License-Identifier: MIT
#pragma once

#include "download/request.h"
#include "plugin/qtcompat.h"
#include "testutils/temporaryhome.h"
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>

/**
 * The download-state settings as they lie on the disk. Settings objects of one file share what
 * none of them has written yet, so this reads a copy of the file under another name.
 */
class SettingsFile
{
private:
    template <typename Reader> auto read(Reader reader) const
    {
        const QTemporaryDir folder;
        const QString copy = folder.filePath(QStringLiteral("copy.conf"));
        QFile::copy(m_path, copy); // without a file there is nothing to read
        QSettings settings(copy, QSettings::IniFormat);
        VexaCompat::useUtf8(settings);
        return reader(settings);
    }

public:
    explicit SettingsFile(const TemporaryHome &home)
        : m_path(home.settingsFolder() + QLatin1String("/vexa/vexa.conf"))
    { }

    QString path() const { return m_path; }
    bool exists() const { return QFileInfo::exists(m_path); }

    QByteArray bytes() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /** Puts the file there, as an earlier run (or a damage) would have left it. */
    void write(const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(m_path).path());
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(m_path));
    }

    /** The array "requests", read as any reader of such an array would. */
    QList<Request> requests() const
    {
        return read([](QSettings &settings) {
            QList<Request> list;
            const int size = settings.beginReadArray(QStringLiteral("requests"));
            for (int i = 0; i < size; ++i) {
                settings.setArrayIndex(i);
                Request request;
                request.deSerialize(settings);
                list.append(request);
            }
            settings.endArray();
            return list;
        });
    }

    /** The requests' ids, oldest first. */
    QStringList ids() const
    {
        QStringList ids;
        const QList<Request> list = requests();
        for (const Request &request : list)
            ids.append(request.id);
        return ids;
    }

    QStringList keys() const
    {
        return read([](QSettings &settings) { return settings.allKeys(); });
    }

    QVariant value(const QString &key) const
    {
        return read([&key](QSettings &settings) { return settings.value(key); });
    }

private:
    QString m_path;
};
