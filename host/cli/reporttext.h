// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/redaction.h"
#include <QCoreApplication>
#include <QString>
#include <QStringList>

/**
 * What support asks for first, in one text: versions, map data, queue, transfer, journals, locks,
 * disk, log lines. Nothing personal is in it; see Redaction.
 *
 * It only looks: at files as they are, without a catalogue object (which makes folders), without
 * the settings object (which puts damaged files aside) and without a lock. Whatever is missing or
 * damaged is told and does not stop it.
 */
class ReportText
{
    Q_DECLARE_TR_FUNCTIONS(ReportText)

public:
    /** The address of the content server is the one that programs would use now. */
    explicit ReportText(const QString &baseUri);

    QString text();

private:
    void addVersions();
    void addMapData();
    void addDataSet(const QString &suffix);
    void addSpace();
    void addPending();
    void addEngine();
    void addNetwork();
    void addLocks();
    void addFiles();
    void addLog();

    void section(const QString &title);
    void line(const QString &label, const QString &value);
    void plain(const QString &text);
    void listFolder(const QString &folder);

    const QString m_baseUri;
    const Redaction m_redaction;
    QStringList m_lines;
};
