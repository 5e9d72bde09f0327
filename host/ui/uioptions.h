// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

/** What the command line of vexa-maps-ui says. */
struct UiOptions
{
    QString dataFolder; ///< empty: the device's own places
    QString baseUri; ///< empty: the settings' address
    QString locale; ///< as "de_DE"; empty: the system's
    QString style; ///< "light", "dark" or empty
    QSize size; ///< of the window in pixels; invalid: a size that suits the screen
    bool selfTest = false;
    QString pictureFolder; ///< where the self-test keeps pictures; empty: nowhere

    QString errorString; ///< what is wrong with the command line; empty if nothing is
    QString output; ///< help or version, if they were asked for: to be shown instead of a window

    /** Needs no application object: the locale must be known before there is one. */
    static UiOptions parse(const QStringList &arguments);

    /** Makes the locale the system's for this process, before there is an application object. */
    void applyLocale() const;
};
