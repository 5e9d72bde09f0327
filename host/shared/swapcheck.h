// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/swapjournal.h"
#include <QCoreApplication>
#include <QString>

/**
 * Looks beforehand whether an exchange of data sets can succeed. Changes nothing; the GUI thread
 * only, because it reads the catalogue of the set that is to come into use.
 */
class SwapCheck
{
    Q_DECLARE_TR_FUNCTIONS(SwapCheck)

public:
    /** An exchange of this kind; only its operation and suffix are looked at. */
    explicit SwapCheck(const SwapNote &note);

    /** What stands against it, in a sentence or two; empty if nothing does. */
    QString objection() const;

private:
    QString folders() const;
    QString names() const;
    QString folder(const QString &path) const;
    QString voices() const;
    QString permissions() const;
    QString content() const;

    const bool m_isSwap;
    const QString m_suffix;
    const QString m_from;
    const QString m_to;
};
