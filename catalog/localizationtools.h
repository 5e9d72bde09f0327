// SPDX-License-Identifier: MIT
#ifndef VEXA_LOCALIZATIONTOOLS_H
#define VEXA_LOCALIZATIONTOOLS_H

#include "vexa_export.h"
#include <QMap>
#include <QObject>
#include <QString>

/**
 * The table that turns the name of a locale ("pt_BR", "fi_FI") into the three-digit language code
 * in the name of a region-name file ("076", "009").
 *
 * Whoever needs a code makes one and drops it again; the table is built each time and never
 * changes afterwards, so an object may be read from any thread. It does not ask which locale the
 * device uses.
 */
class VEXA_EXPORT LocalizationTools : public QObject
{
    Q_OBJECT

public:
    LocalizationTools();

    /**
     * The code of the whole name, else of what stands before its first "_", else of what stands
     * between the first and the second, else that of British English, "001". Case counts.
     */
    QString charCodeToDigitCode(const QString &name) const;

    /** Fills the table; the constructor calls it. */
    void initCharCodeToDigitCodeMap();

private:
    QMap<QString, QString> m_digitCodes;
};

#endif
