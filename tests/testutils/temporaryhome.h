// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QTemporaryDir>

/**
 * A home folder, a data root and a settings folder of the test's own, gone when it is destroyed.
 * HOME, VEXA_MYDOCS and QSettings' user path point into it while it lives, and the download-state
 * settings start empty. Make it before anything of the library; one at a time.
 */
class TemporaryHome
{
public:
    TemporaryHome();
    ~TemporaryHome();
    Q_DISABLE_COPY(TemporaryHome)

    /** The home folder, what QDir::homePath() gives. */
    QString path() const;
    /** The data root, what stands for /home/user/MyDocs; it exists. */
    QString myDocs() const;
    /** The folder of the settings files; vexa/vexa.conf is below it. */
    QString settingsFolder() const;
    /** Where downloads grow, with a slash at the end. Not made. */
    QString downloadFolder() const;

private:
    QTemporaryDir m_dir;
    QByteArray m_oldHome;
    QByteArray m_oldMyDocs;
};
