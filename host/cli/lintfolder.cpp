// SPDX-License-Identifier: MIT
#include "host/cli/lintfolder.h"

#include "host/cli/lintarchives.h"
#include "host/cli/lintcatalogue.h"
#include "host/cli/lintcities.h"
#include "host/cli/lintcontent.h"
#include "host/cli/lintnames.h"
#include "host/cli/lintsums.h"
#include "host/shared/catalogfiles.h"
#include "host/shared/mapsversion.h"
#include <QDir>
#include <QFile>
#include <QRegularExpression>

using CatalogFiles::configName;
using CatalogFiles::contentName;
using CatalogFiles::versionName;

namespace {

constexpr LintPlace Start {1, 1};
constexpr int MaxCodes = 5; // that are listed

} // namespace

LintFolder::LintFolder(const QString &folder, const QUrl &baseUri, LintReport *report)
    : m_folder(folder)
    , m_baseUri(baseUri)
    , m_report(report)
{ }

void LintFolder::check()
{
    // With a list of what is installed and no version of its own it is a data set as it lies on a
    // device: there are no archives, and no version to go over to.
    const bool isDataSet = exists(contentName()) && !exists(versionName());
    if (!isDataSet) {
        checkVersion();
        checkLanguages();
    }
    checkFileNames();

    LintArchives archives(m_folder, m_baseUri, m_report);
    archives.onArchive = onFile;
    QSet<QString> ids;
    bool isWhole = true;
    const QStringList catalogues = files("catalog-*.xml");
    for (const QString &file : catalogues) {
        LintCatalogue catalogue(m_folder, file, m_report);
        catalogue.check();
        ++m_report->catalogues;
        m_report->regions += int(catalogue.regions().size());
        for (const LintRegion &region : catalogue.regions())
            ids.insert(region.id);
        ids += catalogue.unlistedIds();
        isWhole = isWhole && catalogue.isWhole();
        if (!isDataSet)
            archives.check(catalogue);
    }
    // Else one finding would make a hundred more.
    if (isWhole)
        archives.checkUnnamed();
    else
        ids.clear();

    const QStringList nameFiles = files("regionname-lang-*.xml");
    for (const QString &file : nameFiles)
        LintNames(m_folder, file, ids, m_report).check();
    m_report->nameFiles = int(nameFiles.size());
    LintContent content(m_folder, ids, m_report);
    if (exists(contentName()))
        content.checkContent();
    if (exists(configName()))
        content.checkConfig();
    if (exists(LintCities::fileName()))
        LintCities(m_folder, m_report).check();
    if (exists(LintSums::fileName()))
        checkSums(catalogues + nameFiles + archives.named() + QStringList {versionName()});
}

void LintFolder::checkVersion()
{
    const QString fallback = CatalogFiles::namesName(CatalogFiles::fallbackCode());
    if (!exists(fallback))
        m_report->add(fallback, {}, "missing-file",
                      tr("it is not there; devices whose language has no file take this one"));
    QFile file(m_folder + QLatin1Char('/') + versionName());
    if (!file.open(QIODevice::ReadOnly)) {
        m_report->add(versionName(), {}, "missing-file",
                      tr("it cannot be read: no device finds a catalogue"));
        return;
    }
    const QByteArray bytes = file.read(MapsVersion::MaxFileSize + 1);
    const QString version = MapsVersion::parse(bytes);
    if (version.isEmpty()) {
        m_report->add(versionName(), Start, "version",
                      tr("%1 names no version, in one line, and nothing else")
                          .arg(LintReport::quoted(QString::fromUtf8(bytes))));
        return;
    }
    const QString catalogue = CatalogFiles::catalogName(version);
    if (!exists(catalogue))
        m_report->add(versionName(), Start, "missing-file",
                      tr("there is no %1").arg(LintReport::quoted(catalogue)));
    const QString installed = MapsVersion::asInstalled(version);
    static const QRegularExpression form(QStringLiteral("\\A\\d\\d(\\.\\d\\d){3}\\z"));
    if (installed != version)
        m_report->add(versionName(), Start, "version",
                      tr("devices read %1 as %2")
                          .arg(LintReport::quoted(version), LintReport::quoted(installed)));
    else if (!form.match(version).hasMatch())
        m_report->add(versionName(), Start, "version",
                      tr("%1 is not four parts of two digits").arg(LintReport::quoted(version)));
}

// To the library, a catalogue is incomplete without the names for the device's language.
void LintFolder::checkLanguages()
{
    QStringList missing;
    for (const QString &code : LintNames::codesOfDevices()) {
        if (code != CatalogFiles::fallbackCode() && !exists(CatalogFiles::namesName(code)))
            missing.append(code);
    }
    if (missing.isEmpty())
        return;
    missing.sort();
    const QString first = CatalogFiles::namesName(missing.first());
    const int count = int(missing.size());
    if (count > MaxCodes) {
        missing = missing.mid(0, MaxCodes);
        missing.append(QChar(0x2026));
    }
    m_report->add(
        first, {}, "missing-names",
        tr("languages without a file of names: %1 (%2); some hosts show no regions on their "
           "devices, and a file without entries is enough")
            .arg(QString::number(count), missing.join(QLatin1String(", "))));
}

void LintFolder::checkSums(const QStringList &published)
{
    LintSums sums(m_folder, m_report);
    sums.onFile = onFile;
    sums.check(published);
}

// Files whose author took another name for the right one.
void LintFolder::checkFileNames()
{
    static const QRegularExpression catalogue(QStringLiteral("\\Acatalog-.+\\.xml\\z"));
    static const QRegularExpression names(QStringLiteral("\\Aregionname-lang-\\d{3}\\.xml\\z"));
    static const QRegularExpression meant(
        QStringLiteral(
            "\\A(catalog|regionname|region-name|cityindex|content\\.|config\\.|version\\.).*"),
        QRegularExpression::CaseInsensitiveOption);
    const QStringList all = QDir(m_folder).entryList(QDir::Files);
    for (const QString &file : all) {
        const bool isKnown = catalogue.match(file).hasMatch() || names.match(file).hasMatch()
            || file == versionName() || file == contentName() || file == configName()
            || file == LintCities::fileName();
        // A name file of a wrong language code is told of by its own checker.
        const bool isChecked = file.startsWith(QLatin1String("regionname-lang-"))
            && file.endsWith(QLatin1String(".xml"));
        if (!isKnown && !isChecked && meant.match(file).hasMatch())
            m_report->add(file, {}, "file-name", tr("nobody reads a file of this name"));
    }
}

bool LintFolder::exists(const QString &file) const
{
    return QFileInfo::exists(m_folder + QLatin1Char('/') + file);
}

QStringList LintFolder::files(const char *pattern) const
{
    return QDir(m_folder).entryList({QLatin1String(pattern)}, QDir::Files | QDir::CaseSensitive,
                                    QDir::Name);
}
