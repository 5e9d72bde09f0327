// SPDX-License-Identifier: MIT
#pragma once

#include "testcontent.h"
#include "testutils/archivebuilder.h"
#include "testutils/childprogram.h"
#include "testutils/nginxserver.h"
#include <memory>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/** A command line in one string. */
inline QStringList words(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/** What one run of the program came to. */
struct ProgramRun
{
    int code = -1;
    QByteArray out;
    QByteArray err;

    QJsonArray array() const { return QJsonDocument::fromJson(out).array(); }
    QJsonObject object() const { return QJsonDocument::fromJson(out).object(); }
};

/** The real program on a data folder of its own, with a real server that it may ask. */
class MapsProgram
{
public:
    MapsProgram()
        : content(server.folder() + QLatin1String("/map5"))
        , baseUri(server.url("/map5/"))
    { }

    /** Europe with Sweden and Finland, which share a tile, and Åland, whose archive is missing. */
    void addEurope()
    {
        const QString eu = QStringLiteral("EU");
        content.addLink(eu, QStringLiteral("Europe"), QStringLiteral("archives/EU.zip"));
        content.addRegion(QStringLiteral("SE"), QStringLiteral("Sweden"),
                          tilesOf({"0/2/b.cdt", "5/5/border.cdt"}), QStringLiteral("SE.tar.gz"),
                          eu);
        content.addRegion(QStringLiteral("FI"), QStringLiteral("Finland"),
                          tilesOf({"0/1/a.cdt", "5/5/border.cdt"}), QString(), eu);
        content.addLink(QStringLiteral("AX"), QStringLiteral("Åland"),
                        QStringLiteral("archives/AX.zip"), QStringLiteral("FI"));
        content.publish(QStringLiteral("26.11.21.00"));
    }

    /** The command with the shared options in front. */
    QStringList arguments(const QStringList &command) const
    {
        return QStringList {QStringLiteral("--data-dir"), dataFolder(),
                            QStringLiteral("--base-uri"), baseUri}
        + command;
    }
    std::unique_ptr<ChildProgram> start(const QStringList &command) const
    {
        return startRaw(arguments(command));
    }
    std::unique_ptr<ChildProgram> startRaw(const QStringList &arguments) const
    {
        return std::make_unique<ChildProgram>(QStringLiteral(VEXA_MAPS_PROGRAM), arguments,
                                              environment());
    }
    ProgramRun run(const QStringList &command) const { return runRaw(arguments(command)); }
    ProgramRun runRaw(const QStringList &arguments) const
    {
        return resultOf(startRaw(arguments).get());
    }
    /** A run without a server, with its home in this folder. */
    static ProgramRun runIn(const QString &folder, const QStringList &arguments)
    {
        ChildProgram child(QStringLiteral(VEXA_MAPS_PROGRAM), arguments, environmentIn(folder));
        return resultOf(&child);
    }
    QProcessEnvironment environment() const
    {
        QProcessEnvironment result = environmentIn(m_dir.path());
        result.insert(QStringLiteral("PATH"),
                      scratchPath(QStringLiteral("bin")) + QLatin1Char(':')
                          + result.value(QStringLiteral("PATH")));
        return result;
    }

    /** A shell script that the engine finds in place of a tool, as cp. */
    void replaceTool(const QString &name, const QByteArray &script) const
    {
        const QString path = scratchPath(QStringLiteral("bin/")) + name;
        TestFile::write(path, "#!/bin/sh\n" + script);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    QString dataFolder() const { return m_dir.filePath(QStringLiteral("data")); }
    QString homeFolder() const { return dataFolder() + QLatin1String("/.vexa-home"); }
    QString tileFolder() const { return dataFolder() + QLatin1String("/cities/diskcache"); }
    QString catalogFolder() const { return dataFolder() + QLatin1String("/cities/Tessarin"); }
    QString engineFolder() const { return homeFolder() + QLatin1String("/MyDocs/.vexa"); }
    QString downloadFolder() const { return engineFolder() + QLatin1String("/tmp"); }
    QString tileDifference(const Tiles &tiles) const { return differenceOf(tileFolder(), tiles); }
    QString scratchPath(const QString &name) const { return m_dir.filePath(name); }

    /** Ids that the program says are installed. */
    QStringList installedIds() const
    {
        QStringList ids;
        const QJsonArray regions =
            run({QStringLiteral("list"), QStringLiteral("--installed"), QStringLiteral("--json")})
                .array();
        for (const QJsonValue &region : regions)
            ids.append(region.toObject().value(QLatin1String("id")).toString());
        ids.sort();
        return ids;
    }

    NginxServer server;
    TestContent content;
    QString baseUri;

private:
    static ProgramRun resultOf(ChildProgram *child)
    {
        ProgramRun result;
        result.code = child->waitForFinished();
        result.out = child->output();
        result.err = child->errorOutput();
        return result;
    }
    // A home of its own too, so that a run without a data folder touches nobody's.
    static QProcessEnvironment environmentIn(const QString &folder)
    {
        QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
        result.insert(QStringLiteral("HOME"), folder + QLatin1String("/home"));
        result.insert(QStringLiteral("XDG_CONFIG_HOME"), folder + QLatin1String("/home/.config"));
        result.remove(QStringLiteral("VEXA_MYDOCS"));
        // What a killed run leaves there goes with the test.
        result.insert(QStringLiteral("TMPDIR"), folder);
        return result;
    }

    QTemporaryDir m_dir;
};
