// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintxml.h"
#include <QCoreApplication>
#include <QSet>
#include <QString>
#include <vector>

/** A region that devices list, as its catalogue gives it. */
struct LintRegion
{
    QString id;
    QString link;
    qint64 size = 0; ///< as devices read it
    bool sizeIsSaid = false; ///< a number that can be the size of a file
    int parent = -1; ///< index; -1 at the top
    LintPlace place;
    LintPlace linkPlace;
    LintPlace sizePlace;
};

/** Looks through one catalogue file, by the same steps by which the library reads it. */
class LintCatalogue
{
    Q_DECLARE_TR_FUNCTIONS(LintCatalogue)

public:
    LintCatalogue(const QString &folder, const QString &file, LintReport *report);

    void check();
    QString file() const { return m_file; }
    /** Those that devices list, ancestors before their descendants. */
    const std::vector<LintRegion> &regions() const { return m_regions; }
    /** Whether all of the file was read: else there may be more regions. */
    bool isWhole() const { return m_xml.wellFormed(); }
    // What belongs to regions that devices do not list is reported with them, and nowhere else.
    const QSet<QString> &unlistedIds() const { return m_unlistedIds; }
    const QSet<QString> &unlistedLinks() const { return m_unlistedLinks; }

private:
    void checkRoot();
    void beginElement();
    void endElement();
    void addRegion();
    void noteUnlisted();
    void checkId(const QString &id);
    void checkName();
    void checkSize(LintRegion *region);
    bool isIgnoring() const { return m_ignoredDepth > 0; }

    const QString m_file;
    LintXml m_xml;
    std::vector<LintRegion> m_regions;
    std::vector<int> m_open; // indexes of the regions around the current element
    FirstLines m_idLines;
    QSet<QString> m_unlistedIds;
    QSet<QString> m_unlistedLinks;
    int m_ignoredDepth = 0; // of the outermost element that devices pass over
};
