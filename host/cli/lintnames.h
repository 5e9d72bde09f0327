// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintxml.h"
#include <QCoreApplication>
#include <QSet>
#include <QString>

/** Looks through one region-name file, by the same steps by which the library reads it. */
class LintNames
{
    Q_DECLARE_TR_FUNCTIONS(LintNames)

public:
    /** The ids are those of all catalogues; with none of them, unknown ids are not reported. */
    LintNames(const QString &folder, const QString &file, const QSet<QString> &ids,
              LintReport *report);

    void check();

    /** Of all languages that a device may have. */
    static const QSet<QString> &codesOfDevices();

private:
    void checkCode();
    void checkElement();
    void checkRegion();

    const QString m_file;
    const QSet<QString> &m_ids;
    LintXml m_xml;
    FirstLines m_idLines;
};
