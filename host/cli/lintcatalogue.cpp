// SPDX-License-Identifier: MIT
#include "host/cli/lintcatalogue.h"

#include "catalog/xmlnames_p.h"
#include "host/shared/catalogfiles.h"

using namespace CatalogXml;

namespace {

const QLatin1String Version("Version"); // which nobody reads

} // namespace

LintCatalogue::LintCatalogue(const QString &folder, const QString &file, LintReport *report)
    : m_file(file)
    , m_xml(folder, file, XmlFileReader::Tolerant, report)
{ }

void LintCatalogue::check()
{
    if (!m_xml.open())
        return;
    for (auto step = m_xml.next(); step != XmlFileReader::Done; step = m_xml.next()) {
        if (step == XmlFileReader::End)
            endElement();
        else if (m_xml.depth() == 1)
            checkRoot();
        else
            beginElement();
    }
    if (m_regions.empty())
        m_xml.add({}, "no-regions", tr("the catalogue lists no region: devices refuse it"));
}

void LintCatalogue::checkRoot()
{
    if (m_xml.is(FileElement))
        m_xml.add(m_xml.place(), "root", tr("the outermost element is never a region"));
    const QString version = m_xml.value(Version);
    if (m_xml.has(Version) && CatalogFiles::catalogName(version) != m_file)
        m_xml.add(m_xml.place(Version), "version",
                  tr("nobody reads the version %1: the one in the file's name counts")
                      .arg(LintReport::quoted(version)));
}

void LintCatalogue::beginElement()
{
    if (isIgnoring()) {
        noteUnlisted();
        return;
    }
    if (!m_xml.is(FileElement)) {
        m_xml.add(
            m_xml.place(), "unknown-element",
            tr("nobody reads %1 and what is in it%2")
                .arg(LintReport::quoted(m_xml.name()), LintXml::hint(m_xml.name(), {FileElement})));
        m_ignoredDepth = m_xml.depth();
        noteUnlisted();
        return;
    }
    m_xml.checkAttributes({Id, Description, ZipFileSize, Link});
    if (m_xml.requireAttributes({Id, Description, ZipFileSize, Link},
                                tr("it and all in it are left out"))) {
        addRegion();
        return;
    }
    m_ignoredDepth = m_xml.depth();
    noteUnlisted();
}

void LintCatalogue::noteUnlisted()
{
    // In whichever case their author wrote them.
    for (const QLatin1String id : {Id, QLatin1String("id"), QLatin1String("ID")})
        m_unlistedIds.insert(m_xml.value(id));
    for (const QLatin1String link : {Link, QLatin1String("link")})
        m_unlistedLinks.insert(m_xml.value(link));
}

void LintCatalogue::endElement()
{
    const int ended = m_xml.depth() + 1;
    if (ended == m_ignoredDepth)
        m_ignoredDepth = 0;
    else if (!isIgnoring() && !m_open.empty())
        m_open.pop_back();
}

void LintCatalogue::addRegion()
{
    LintRegion region;
    region.id = m_xml.value(Id);
    region.link = m_xml.value(Link);
    region.place = m_xml.place();
    region.linkPlace = m_xml.place(Link);
    region.sizePlace = m_xml.place(ZipFileSize);
    region.parent = m_open.empty() ? -1 : m_open.back();
    checkId(region.id);
    checkName();
    checkSize(&region);
    m_open.push_back(int(m_regions.size()));
    m_regions.push_back(region);
}

void LintCatalogue::checkId(const QString &id)
{
    const LintPlace place = m_xml.place(Id);
    if (id.isEmpty())
        m_xml.add(place, "empty-value", tr("the region has no id"));
    else if (id.trimmed() != id)
        m_xml.add(place, "blanks",
                  tr("the blanks are part of the id %1").arg(LintReport::quoted(id)));
    if (const int first = m_idLines.before(id, place.line))
        m_xml.add(place, "duplicate-id",
                  tr("the id %1 stands in line %2 already; only the last one can be installed")
                      .arg(LintReport::quoted(id), QString::number(first)));
}

void LintCatalogue::checkName()
{
    if (m_xml.value(Description).trimmed().isEmpty())
        m_xml.add(m_xml.place(Description), "empty-value", tr("the region has no name"));
}

void LintCatalogue::checkSize(LintRegion *region)
{
    const QString text = m_xml.value(ZipFileSize);
    bool isNumber = false;
    region->size = text.toLongLong(&isNumber);
    region->sizeIsSaid = isNumber && region->size >= 0;
    if (!isNumber)
        m_xml.add(region->sizePlace, "size",
                  tr("%1 is no number of bytes: it is read as 0").arg(LintReport::quoted(text)));
    else if (region->size < 0)
        m_xml.add(region->sizePlace, "size", tr("a size is never negative"));
}
