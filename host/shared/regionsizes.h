// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QThreadPool>

/**
 * Measures how much room regions take on disk, in a thread of its own: a region has thousands of
 * tiles, and asking a slow card for each would hold up the user interface.
 *
 * Lives in the GUI thread. Its destructor gives up what is being measured and waits for it.
 */
class RegionSizes : public QObject
{
    Q_OBJECT

public:
    explicit RegionSizes(QObject *parent = nullptr);
    ~RegionSizes() override;

    /**
     * Asks for the size of these entries of a region's file list below the folder; measured()
     * follows. A newer question about the same region takes the place of an older one.
     */
    void ask(const QString &id, const QStringList &files, const QString &folder);
    /** Drops what was asked about the region. */
    void forget(const QString &id);

Q_SIGNALS:
    /** The bytes of the files that are there. */
    void measured(const QString &id, qint64 bytes);

private:
    void onMeasured(const QString &id, int question, qint64 bytes);

    QHash<QString, int> m_questions; // by id, the number of the newest
    int m_lastQuestion = 0;
    std::atomic<bool> m_stop {false};
    QThreadPool m_thread;
};
