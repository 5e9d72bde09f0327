// SPDX-License-Identifier: MIT
#include "host/cli/lintnames.h"

#include "catalog/localizationtools.h"
#include "catalog/xmlnames_p.h"
#include "host/shared/catalogfiles.h"
#include <QLocale>

using namespace RegionNameXml;

namespace {

// Some languages are known to the map data and not to every Qt.
QSet<QString> allCodes()
{
    const LocalizationTools tools;
    QSet<QString> codes;
    const QList<QLocale> locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    for (const QLocale &locale : locales)
        codes.insert(tools.charCodeToDigitCode(locale.name()));
    for (char first = 'a'; first <= 'z'; ++first) {
        for (char second = 'a'; second <= 'z'; ++second)
            codes.insert(
                tools.charCodeToDigitCode(QString(QLatin1Char(first)) + QLatin1Char(second)));
    }
    codes.insert(tools.charCodeToDigitCode(QStringLiteral("??")));
    return codes;
}

} // namespace

LintNames::LintNames(const QString &folder, const QString &file, const QSet<QString> &ids,
                     LintReport *report)
    : m_file(file)
    , m_ids(ids)
    , m_xml(folder, file, XmlFileReader::Tolerant, report)
{ }

const QSet<QString> &LintNames::codesOfDevices()
{
    static const QSet<QString> codes = allCodes();
    return codes;
}

void LintNames::check()
{
    checkCode();
    if (!m_xml.open())
        return;
    while (m_xml.nextBelowRoot(RegionElement, tr("the outermost element is never a name")))
        checkElement();
}

void LintNames::checkCode()
{
    for (const QString &code : codesOfDevices()) {
        if (CatalogFiles::namesName(code) == m_file)
            return;
    }
    m_xml.add({}, "language", tr("no device asks for the names of this language code"));
}

void LintNames::checkElement()
{
    if (m_xml.is(RegionElement)) {
        checkRegion();
        return;
    }
    m_xml.add(
        m_xml.place(), "unknown-element",
        tr("nobody reads %1%2")
            .arg(LintReport::quoted(m_xml.name()), LintXml::hint(m_xml.name(), {RegionElement})));
}

void LintNames::checkRegion()
{
    m_xml.checkAttributes({Id, Name});
    if (!m_xml.requireAttributes({Id, Name}, tr("the name is not used")))
        return;
    const QString id = m_xml.value(Id);
    const LintPlace place = m_xml.place(Id);
    if (!m_ids.isEmpty() && !m_ids.contains(id))
        m_xml.add(place, "unknown-region",
                  tr("no catalogue has a region %1").arg(LintReport::quoted(id)));
    else if (id == NamedByEdition)
        m_xml.add(place, "fixed-name", tr("devices show a name of their own for the region 411"));
    if (m_xml.value(Name).trimmed().isEmpty())
        m_xml.add(m_xml.place(Name), "empty-value",
                  tr("the name is empty; leave the element out to show the catalogue's"));
    if (const int first = m_idLines.before(id, place.line))
        m_xml.add(place, "duplicate-id",
                  tr("the id %1 stands in line %2 already; the last name counts")
                      .arg(LintReport::quoted(id), QString::number(first)));
}
