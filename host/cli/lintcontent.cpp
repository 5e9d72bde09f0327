// SPDX-License-Identifier: MIT
#include "host/cli/lintcontent.h"

#include "catalog/mapcatalogprocessor.h"
#include "catalog/xmlnames_p.h"
#include "host/shared/catalogfiles.h"
#include "host/shared/folderops.h"
#include "host/shared/mapsversion.h"
#include "host/shared/tilelist.h"
#include <algorithm>
#include <QFile>
#include <QFileInfo>

using namespace ContentXml;

namespace {

constexpr int HeaderBytes = 16; // of config.cfg: four numbers

} // namespace

LintContent::LintContent(const QString &folder, const QSet<QString> &ids, LintReport *report)
    : m_folder(folder)
    , m_ids(ids)
    , m_report(report)
    , m_xml(folder, CatalogFiles::contentName(), XmlFileReader::Strict, report)
{ }

void LintContent::checkContent()
{
    if (!m_xml.open())
        return;
    for (auto step = m_xml.next(); step != XmlFileReader::Done; step = m_xml.next()) {
        if (step == XmlFileReader::Start)
            beginElement();
    }
}

void LintContent::beginElement()
{
    switch (m_xml.depth()) {
    case 1:
        checkRoot();
        break;
    case 2:
        beginSection();
        break;
    case 3:
        if (m_section == Section::Tiles)
            checkTile();
        else if (m_section == Section::Regions)
            checkRegion();
        break;
    case 4:
        if (m_section == Section::Regions && m_isRegion)
            checkRegionTile();
        break;
    default:
        break;
    }
}

void LintContent::checkRoot()
{
    if (!m_xml.is(Directory)) {
        m_xml.add(
            m_xml.place(), "root",
            tr("the outermost element is no \"directory\" without a namespace: nothing counts "
               "as installed"));
        return;
    }
    if (!m_xml.requireAttributes({MapVersion}, tr("no catalogue belongs to it")))
        return;
    const QString version = m_xml.value(MapVersion);
    const LintPlace place = m_xml.place(MapVersion);
    const QString read = MapsVersion::asInstalled(version);
    if (version.isEmpty())
        m_xml.add(place, "empty-value", tr("there is no version: no catalogue belongs to it"));
    else if (read != version)
        m_xml.add(
            place, "version",
            tr("%1 is read as %2").arg(LintReport::quoted(version), LintReport::quoted(read)));
    const QString catalogue = CatalogFiles::catalogName(read);
    if (!version.isEmpty() && !QFileInfo::exists(m_folder + QLatin1Char('/') + catalogue))
        m_xml.add(place, "missing-file",
                  tr("there is no %1: no region is shown").arg(LintReport::quoted(catalogue)));
}

void LintContent::beginSection()
{
    m_section = m_xml.is(DiskCache) ? Section::Tiles
        : m_xml.is(Regions)         ? Section::Regions
                                    : Section::Other;
    if (m_section == Section::Other)
        m_xml.add(m_xml.place(), "unknown-element",
                  tr("nobody reads %1 and what is in it%2")
                      .arg(LintReport::quoted(m_xml.name()),
                           LintXml::hint(m_xml.name(), {DiskCache, Regions})));
}

void LintContent::checkTile()
{
    m_xml.checkAttributes({Name, Path});
    if (!m_xml.requireAttributes({Path}, tr("no region finds this tile")))
        return;
    const QString path = TileList::plain(m_xml.value(Path));
    checkPath(path);
    if (const int first = m_tileLines.before(path, m_xml.place().line))
        m_xml.add(m_xml.place(Path), "duplicate-tile",
                  tr("the tile stands in line %1 already").arg(first));
}

void LintContent::checkRegion()
{
    m_isRegion = m_xml.is(RegionElement);
    if (!m_isRegion) {
        m_xml.add(m_xml.place(), "unknown-element",
                  tr("%1 does not count as installed%2")
                      .arg(LintReport::quoted(m_xml.name()),
                           LintXml::hint(m_xml.name(), {RegionElement})));
        return;
    }
    m_xml.checkAttributes({Id, Name});
    if (!m_xml.requireAttributes({Id}, tr("it does not count as installed")))
        return;
    const QString written = m_xml.value(Id);
    const QString id = written.mid(1);
    const LintPlace place = m_xml.place(Id);
    if (!written.startsWith(QLatin1Char('1')) || id.isEmpty())
        m_xml.add(place, "id-without-1",
                  tr("%1 is read as %2: an id has a \"1\" in front")
                      .arg(LintReport::quoted(written), LintReport::quoted(id)));
    else if (!m_ids.isEmpty() && !m_ids.contains(id))
        m_xml.add(place, "unknown-region",
                  tr("no catalogue has a region %1").arg(LintReport::quoted(id)));
    if (const int first = m_idLines.before(id, place.line))
        m_xml.add(place, "duplicate-id",
                  tr("the id %1 stands in line %2 already; their tiles are put together")
                      .arg(LintReport::quoted(id), QString::number(first)));
}

void LintContent::checkRegionTile()
{
    m_xml.checkAttributes({Name, Path});
    // Older writers gave a name only, of which one character is left: it leads to a tile by luck.
    if (!m_xml.requireAttributes({Path}, tr("which tile it is cannot be told")))
        return;
    const QString path = TileList::plain(m_xml.value(Path));
    checkPath(path);
    if (!m_tileLines.isEmpty() && !m_tileLines.contains(path))
        m_xml.add(m_xml.place(Path), "unknown-tile",
                  tr("\"diskcache\" does not list the tile %1").arg(LintReport::quoted(path)));
}

void LintContent::checkPath(const QString &path)
{
    if (FolderOps::leadsOut(path))
        m_xml.add(m_xml.place(Path), "outside",
                  tr("%1 leads out of the tile cache").arg(LintReport::quoted(path)));
    else if (!path.contains(QLatin1String(".cdt")))
        m_xml.add(m_xml.place(Path), "no-tile",
                  tr("%1 is no tile: it is left out").arg(LintReport::quoted(path)));
}

void LintContent::checkConfig()
{
    const auto add = [this](const char *kind, const QString &text) {
        m_report->add(CatalogFiles::configName(), {}, kind, text);
    };
    const QString path = m_folder + QLatin1Char('/') + CatalogFiles::configName();
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        add("unreadable", tr("it is no file that can be read"));
        return;
    }
    const QByteArray header = file.read(HeaderBytes);
    const QString read = MapCatalogProcessor().readLocalMOSVersion(path);
    const bool isText = std::all_of(header.begin(), header.end(), [](char byte) {
        return (byte >= ' ' && byte <= '~') || byte == '\n' || byte == '\r';
    });
    if (header.size() < HeaderBytes)
        add("config",
            tr("it has less than the 16 bytes of the version: read as %1")
                .arg(LintReport::quoted(read)));
    else if (isText)
        add("config",
            tr("it begins with text, and the version is four numbers of 4 bytes each: "
               "read as %1")
                .arg(LintReport::quoted(read)));
    else if (read.contains(QLatin1Char('-')))
        add("config",
            tr("a part of the version is negative: read as %1").arg(LintReport::quoted(read)));
}
