// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintxml.h"
#include <QCoreApplication>
#include <QSet>
#include <QString>

/**
 * Looks through the files of a data set that is published ready for use: "content.xml", which says
 * what is installed, and the header of "config.cfg".
 */
class LintContent
{
    Q_DECLARE_TR_FUNCTIONS(LintContent)

public:
    /** The ids are those of all catalogues; with none of them, unknown ids are not reported. */
    LintContent(const QString &folder, const QSet<QString> &ids, LintReport *report);

    void checkContent();
    void checkConfig();

private:
    enum class Section { None, Tiles, Regions, Other };

    void beginElement();
    void checkRoot();
    void beginSection();
    void checkTile();
    void checkRegion();
    void checkRegionTile();
    void checkPath(const QString &path);

    const QString m_folder;
    const QSet<QString> &m_ids;
    LintReport *const m_report; // not owned
    LintXml m_xml;
    Section m_section = Section::None;
    bool m_isRegion = false; // the element of the third level is one
    FirstLines m_idLines; // of regions
    FirstLines m_tileLines; // by path, of "diskcache"
};
