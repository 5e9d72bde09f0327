// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintreport.h"
#include <QCoreApplication>
#include <QSet>
#include <QString>
#include <vector>

struct archive;
struct archive_entry;

/** A tile in an archive. */
struct LintTile
{
    QString path; ///< "a/3/x.cdt"
    qint64 size = -1; ///< unpacked, in bytes; -1 if the archive does not tell
};

/**
 * Looks through the list of one archive with the extractor's own means, so that what the report
 * calls damaged is what devices refuse. Unpacks nothing.
 */
class LintArchive
{
    Q_DECLARE_TR_FUNCTIONS(LintArchive)

public:
    /** The file is below the folder; the report is not owned. */
    LintArchive(const QString &folder, const QString &file, LintReport *report);

    void check();
    /** What devices would see of it once it is unpacked. */
    const std::vector<LintTile> &tiles() const { return m_tiles; }
    /** Whether the list was read to its end. */
    bool isWhole() const { return m_isWhole; }

private:
    bool readList();
    bool readEntries(archive *handle);
    void checkEntry(archive_entry *entry);
    bool isUnpacked(archive_entry *entry, const QString &name);
    void checkFile(const QString &name, const QString &path, qint64 size);
    bool checkPlace(const QString &name, const QString &path, bool isFolder);
    bool checkSum();
    void add(const char *kind, const QString &text);

    const QString m_path;
    const QString m_file;
    LintReport *const m_report;
    std::vector<LintTile> m_tiles;
    QSet<QString> m_paths; // of files
    QSet<QString> m_folders; // that files or entries need
    bool m_isEncryptedSaid = false;
    bool m_isWhole = false;
};
