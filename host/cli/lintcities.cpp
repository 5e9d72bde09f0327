// SPDX-License-Identifier: MIT
#include "host/cli/lintcities.h"

namespace {

const QLatin1String Entry("cityindex");
const QLatin1String Id("id");
const QLatin1String Name("name");
const QLatin1String Version("version");

} // namespace

LintCities::LintCities(const QString &folder, LintReport *report)
    : m_xml(folder, fileName(), XmlFileReader::Tolerant, report)
{ }

QString LintCities::fileName()
{
    return QStringLiteral("cityindex.xml");
}

void LintCities::check()
{
    if (!m_xml.open())
        return;
    while (m_xml.nextBelowRoot(Entry, tr("the outermost element is never a city")))
        checkElement();
}

void LintCities::checkElement()
{
    if (!m_xml.is(Entry)) {
        m_xml.add(m_xml.place(), "unknown-element",
                  tr("nobody reads %1%2")
                      .arg(LintReport::quoted(m_xml.name()), LintXml::hint(m_xml.name(), {Entry})));
        return;
    }
    m_xml.checkAttributes({Id, Name, Version});
    if (!m_xml.requireAttributes({Id, Name, Version}, tr("it is left out")))
        return;
    checkId();
    if (m_xml.value(Name).trimmed().isEmpty())
        m_xml.add(m_xml.place(Name), "empty-value", tr("the city has no name"));
}

void LintCities::checkId()
{
    const QString id = m_xml.value(Id);
    const LintPlace place = m_xml.place(Id);
    if (id.isEmpty())
        m_xml.add(place, "empty-value", tr("the city has no id"));
    else if (id.trimmed() != id)
        m_xml.add(place, "blanks",
                  tr("the blanks are part of the id %1").arg(LintReport::quoted(id)));
    if (const int first = m_idLines.before(id, place.line))
        m_xml.add(place, "duplicate-id",
                  tr("the id %1 stands in line %2 already; the last entry counts")
                      .arg(LintReport::quoted(id), QString::number(first)));
}
