// SPDX-License-Identifier: MIT
// The reading half of contentfile_p.h.
#include "catalog/contentfile_p.h"

#include "catalog/textpool_p.h"
#include "catalog/xmlnames_p.h"
#include "plugin/xmlfilereader_p.h"
#include <QFile>
#include <QHash>
#include <QSet>

using namespace ContentXml;

namespace {

// Where the time for a whole pass begins to be felt.
constexpr qint64 LongFileBytes = 256 * 1024;

// Calls the function for every child element of the one that has just begun, until it gives false.
// False then.
template <typename Function> bool forEachChild(XmlFileReader &xml, Function function)
{
    const int level = xml.depth();
    for (auto step = xml.next(); step != XmlFileReader::Done; step = xml.next()) {
        if (xml.depth() < level)
            return true; // the element itself has ended
        if (step == XmlFileReader::Start && xml.depth() == level + 1 && !function())
            return false;
    }
    return true;
}

/** The tables of one content file while it is read. */
class TablesPass
{
public:
    TablesPass(XmlFileReader &xml, const ContentFile::Pause &pause)
        : m_xml(xml)
        , m_pause(pause)
    { }

    // False if the pause has ended it.
    bool run()
    {
        m_isDirectory = m_xml.is(Directory);
        const bool isOver = forEachChild(m_xml, [this] {
            if (m_xml.is(DiskCache))
                return forEachChild(m_xml, [this] { return pause(); });
            return !m_xml.is(Regions) || readRegions();
        });
        // To free so many texts takes longer than a frame.
        return isOver && m_paths.release([this] { return pause(); });
    }

    // Whether there are tiles without a path, for which the file must be read again.
    bool hasNames() const { return !m_names.isEmpty(); }

    // The second reading, from the root's begin on. False if the pause has ended it.
    bool resolveNames(XmlFileReader &xml)
    {
        const bool isOver = forEachChild(xml, [&] {
            return !xml.is(DiskCache) || forEachChild(xml, [&] {
                const auto found = m_pathsByName.find(xml.value(Name));
                if (found != m_pathsByName.end())
                    *found = xml.value(Path);
                return pause();
            });
        });
        for (auto names = m_names.cbegin(); names != m_names.cend(); ++names) {
            QStringList &paths = tables.regionTilePaths[names.key()];
            for (const int place : names.value())
                paths[place] = m_pathsByName.value(paths.at(place));
        }
        return isOver;
    }

    ContentFile::Tables tables;

private:
    bool readRegions()
    {
        return forEachChild(m_xml, [this] {
            const QString id = m_xml.value(Id).mid(1);
            // The list of what is installed asks for the names of elements, too.
            if (m_isDirectory && m_xml.is(RegionElement) && m_xml.has(Id) && !m_ids.contains(id)) {
                m_ids.insert(id);
                tables.ids.append(id);
            }
            return readRegion(id);
        });
    }

    bool readRegion(const QString &id)
    {
        QStringList &paths = tables.regionTilePaths[id];
        return forEachChild(m_xml, [&] {
            // Most tiles are listed by several regions.
            paths.append(m_paths.take(m_xml.view(Path)));
            // Files of older versions have no paths there; the name leads to one only by luck.
            if (paths.constLast().isEmpty()) {
                m_names[id].append(int(paths.size()) - 1);
                paths.last() = m_xml.value(Name);
                m_pathsByName.insert(paths.constLast(), QString());
            }
            return pause();
        });
    }

    bool pause() const { return !m_pause || m_pause(); }

    XmlFileReader &m_xml;
    const ContentFile::Pause &m_pause;
    bool m_isDirectory = false;
    QSet<QString> m_ids; // those in the tables' list
    TextPool m_paths;
    QHash<QString, QList<int>> m_names; // by region id, where its paths have names in their place
    QHash<QString, QString> m_pathsByName; // of those names
};

// Whether the file's end shows that it was not cut.
bool hasItsEnd(QFile &file)
{
    constexpr qint64 TailBytes = 64;
    return file.seek(qMax<qint64>(0, file.size() - TailBytes))
        && file.read(TailBytes).trimmed().endsWith("</directory>");
}

} // namespace

QStringList ContentFile::readIds(const QString &path)
{
    XmlFileReader xml(path, XmlFileReader::Strict);
    if (!xml.open())
        return QStringList();

    QStringList ids;
    QSet<QString> seen;
    if (xml.next() == XmlFileReader::Start && xml.is(Directory)) {
        forEachChild(xml, [&] {
            return !xml.is(Regions) || forEachChild(xml, [&] {
                if (!xml.is(RegionElement) || !xml.has(Id))
                    return true;
                const QString id = xml.value(Id).mid(1);
                if (!seen.contains(id)) {
                    seen.insert(id);
                    ids.append(id);
                }
                return true;
            });
        });
    }
    while (xml.next() != XmlFileReader::Done) { }
    return xml.wellFormed() ? ids : QStringList();
}

QString ContentFile::readMapVersion(const QString &path)
{
    XmlFileReader xml(path, XmlFileReader::Strict);
    if (!xml.open())
        return QString();

    QString version;
    if (xml.next() == XmlFileReader::Start && xml.is(Directory))
        version = xml.value(MapVersion);
    QFile file(path);
    if (file.size() > LongFileBytes && file.open(QFile::ReadOnly) && hasItsEnd(file))
        return version;
    while (xml.next() != XmlFileReader::Done) { }
    return xml.wellFormed() ? version : QString();
}

ContentFile::Tables ContentFile::readTables(const QString &path, const Pause &pause)
{
    XmlFileReader xml(path, XmlFileReader::Strict);
    if (!xml.open() || xml.next() != XmlFileReader::Start)
        return Tables();
    TablesPass pass(xml, pause);
    if (!pass.run())
        return Tables();
    while (xml.next() != XmlFileReader::Done) { }
    if (!xml.wellFormed())
        return Tables();
    if (pass.hasNames()) {
        XmlFileReader again(path, XmlFileReader::Strict);
        if (!again.open() || again.next() != XmlFileReader::Start || !pass.resolveNames(again))
            return Tables();
    }
    return std::move(pass.tables);
}
