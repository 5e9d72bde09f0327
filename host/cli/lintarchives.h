// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintarchive.h"
#include "host/cli/lintcatalogue.h"
#include <functional>
#include <QCoreApplication>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QUrl>
#include <vector>

/**
 * Looks for the archives that catalogues name, looks through each once, and compares what the
 * archives of one catalogue hold: devices keep the tiles of all regions in one folder.
 */
class LintArchives
{
    Q_DECLARE_TR_FUNCTIONS(LintArchives)

public:
    /** What is published below the address lies in the folder. The report is not owned. */
    LintArchives(const QString &folder, const QUrl &baseUri, LintReport *report);

    /** Is called ahead of each archive, with its name. */
    std::function<void(const QString &file)> onArchive;

    void check(const LintCatalogue &catalogue);
    /** Reports the files beside the archives that no catalogue names; last. */
    void checkUnnamed();

    /** The files below the folder that catalogues name, whether they are there or not. */
    QStringList named() const { return {m_named.begin(), m_named.end()}; }

private:
    /** One archive's tiles, by their numbers in m_tiles, ascending. */
    struct Content
    {
        std::vector<int> tiles;
        std::vector<qint64> sizes; ///< of the same
        bool isWhole = false;
    };
    /** What the archives of one catalogue have come to so far. */
    struct Sum;

    QString checkRegion(const LintCatalogue &catalogue, const LintRegion &region,
                        FirstLines *lines);
    QString localFile(const LintCatalogue &catalogue, const LintRegion &region);
    bool checkFile(const LintCatalogue &catalogue, const LintRegion &region, const QString &file);
    const Content &contentOf(const QString &file);
    int numberOf(const QString &tile);
    void addToSum(const QString &file, const Content &content, Sum *sum);
    void checkParents(const LintCatalogue &catalogue, const std::vector<QString> &files);

    const QString m_folder;
    const QUrl m_baseUri;
    LintReport *const m_report;
    QHash<QString, Content> m_contents; // by file
    QHash<QString, int> m_numbers; // of tiles
    std::vector<QString> m_tiles;
    QSet<QString> m_named; // files that a catalogue names
};
