// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintreport.h"
#include <functional>
#include <QByteArray>
#include <QCoreApplication>
#include <QSet>
#include <QString>
#include <QStringList>

/**
 * Looks through the list of check sums, line by line as sha256sum reads it, and compares the files
 * that it names. No device reads it: it is for whoever copies the folder to another server.
 */
class LintSums
{
    Q_DECLARE_TR_FUNCTIONS(LintSums)

public:
    /** The report is not owned. */
    LintSums(const QString &folder, LintReport *report);

    /** Is called ahead of each file that is compared, with its name. */
    std::function<void(const QString &file)> onFile;

    static QString fileName();

    /** The published files are those that devices fetch: each is to have a check sum. */
    void check(const QStringList &published);

private:
    void checkLine(const QString &text);
    void checkFile(const QString &file, const QByteArray &sum, int column);
    void checkPublished(QStringList published);
    void add(int column, const char *kind, const QString &text);

    const QString m_folder;
    LintReport *const m_report;
    int m_line = 0;
    QSet<QString> m_listed; // files
};
