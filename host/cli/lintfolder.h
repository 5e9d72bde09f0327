// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintreport.h"
#include <functional>
#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QUrl>

/**
 * Looks through the folder that a content server publishes: which files are there, whether they
 * belong together, and each of them with its own checker. Writes nothing.
 */
class LintFolder
{
    Q_DECLARE_TR_FUNCTIONS(LintFolder)

public:
    /** The address is the one that the folder is published at; the report is not owned. */
    LintFolder(const QString &folder, const QUrl &baseUri, LintReport *report);

    /** Is called ahead of each file that may take a while, with its name. */
    std::function<void(const QString &file)> onFile;

    void check();

private:
    void checkVersion();
    void checkLanguages();
    void checkFileNames();
    void checkSums(const QStringList &published);
    bool exists(const QString &file) const;
    QStringList files(const char *pattern) const;

    const QString m_folder;
    const QUrl m_baseUri;
    LintReport *const m_report;
};
