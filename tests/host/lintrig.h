// SPDX-License-Identifier: MIT
#pragma once

#include "catalog/mapcatalogprocessor.h"
#include "mapsprogram.h"
#include "testutils/archivebuilder.h"
#include <QByteArray>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

/** Files below the folder by their names; one that is null is not there. */
using Files = QMap<QString, QByteArray>;

inline const QString CatalogueFile = QStringLiteral("catalog-26.11.21.00.xml");
inline const QString NamesFile = QStringLiteral("regionname-lang-001.xml");

/** A folder for a content server in which there is nothing to find, and what is found there. */
class LintRig
{
public:
    LintRig()
        : m_folder(m_dir.filePath(QStringLiteral("map5")))
    {
        write({{QStringLiteral("version.txt"), "26.11.21.00\n"},
               {NamesFile, names("<region id=\"FI\" name=\"Suomi\"/>")},
               {QStringLiteral("archives/EU.tar"),
                RawTar().add("0/1/a.cdt", "a").add("5/5/b.cdt", "b").bytes()}});
        for (int code = 2; code <= 103; ++code) {
            if (!isOfNoLanguage(code))
                write({{namesFile(code), names("")}});
        }
        setArchive(RawTar().add("0/1/a.cdt", "a").bytes());
    }

    static QString namesFile(int code)
    {
        return QStringLiteral("regionname-lang-%1.xml").arg(code, 3, 10, QLatin1Char('0'));
    }

    /** Europe with Finland in it, whose tag begins in line 3. */
    static QByteArray catalogue(qint64 size = 2048)
    {
        return catalogue("  <File Id=\"FI\" Description=\"Finland\" ZipFileSize=\""
                         + QByteArray::number(size) + "\" Link=\"archives/FI.tar\"/>\n");
    }
    /** Europe with these lines in it, from line 3 on. */
    static QByteArray catalogue(const QByteArray &lines)
    {
        return "<Catalog Version=\"26.11.21.00\">\n"
               " <File Id=\"EU\" Description=\"Europe\" ZipFileSize=\"3072\" "
               "Link=\"archives/EU.tar\">\n"
            + lines + " </File>\n</Catalog>\n";
    }
    /** These elements, in line 2. */
    static QByteArray names(const QByteArray &elements)
    {
        return "<regions language=\"en_GB\">\n " + elements + "\n</regions>\n";
    }

    void write(const Files &files) const
    {
        for (auto file = files.begin(); file != files.end(); ++file) {
            if (file->isNull())
                QFile::remove(path(file.key()));
            else
                TestFile::write(path(file.key()), *file);
        }
    }
    /** Finland's, and a catalogue that tells its size. */
    void setArchive(const QByteArray &bytes) const
    {
        write(
            {{QStringLiteral("archives/FI.tar"), bytes}, {CatalogueFile, catalogue(bytes.size())}});
    }

    ProgramRun run(const QStringList &options = {}) const
    {
        return MapsProgram::runIn(m_dir.path(),
                                  options + QStringList {QStringLiteral("lint"), m_folder});
    }
    /** The same as whoever has gone into the folder. */
    QByteArray outputFromInside() const
    {
        ChildProgram shell(QStringLiteral("/bin/sh"),
                           {QStringLiteral("-c"), QStringLiteral("cd \"$0\" && \"$1\" lint ."),
                            m_folder, QStringLiteral(VEXA_MAPS_PROGRAM)});
        shell.waitForFinished();
        return shell.output();
    }
    QStringList findings(const QStringList &options = {}) const
    {
        return findingsIn(run(QStringList {QStringLiteral("--json")} + options));
    }
    /** Each as "file:line:column kind", or "file kind". */
    static QStringList findingsIn(const ProgramRun &run)
    {
        QStringList result;
        const QJsonArray found = run.object().value(QLatin1String("findings")).toArray();
        for (const QJsonValue &value : found) {
            const QJsonObject finding = value.toObject();
            QString line = finding.value(QLatin1String("file")).toString();
            if (const int number = finding.value(QLatin1String("line")).toInt())
                line += QStringLiteral(":%1:%2").arg(number).arg(
                    finding.value(QLatin1String("column")).toInt());
            result.append(line + QLatin1Char(' ')
                          + finding.value(QLatin1String("kind")).toString());
        }
        return result;
    }
    /** How many regions the library's own reader lists. */
    int regionsOfTheLibrary() const
    {
        MapCatalogProcessor processor;
        const QList<MapRegion *> regions = processor.readCatalog(path(CatalogueFile));
        return int(regions.size() - regions.count(nullptr));
    }

    QString folder() const { return m_folder; }
    QString path(const QString &file) const { return m_folder + QLatin1Char('/') + file; }

private:
    // What the map data leaves out, or gave to a language that has a later one.
    static bool isOfNoLanguage(int code)
    {
        static const QSet<int> codes {24, 39, 45, 47, 48, 55, 60, 75, 82, 91, 100, 101};
        return codes.contains(code);
    }

    QTemporaryDir m_dir;
    const QString m_folder;
};
