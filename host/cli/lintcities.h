// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintxml.h"
#include <QCoreApplication>
#include <QString>

/** Looks through the list of city packages, by the same steps by which the library reads it. */
class LintCities
{
    Q_DECLARE_TR_FUNCTIONS(LintCities)

public:
    /** The report is not owned. */
    LintCities(const QString &folder, LintReport *report);

    static QString fileName();

    void check();

private:
    void checkElement();
    void checkId();

    LintXml m_xml;
    FirstLines m_idLines;
};
