// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

/** One message as Qt's message handler received it. */
struct LogLine
{
    QtMsgType type;
    QString text;
};

/**
 * Takes all that goes to Qt's message handler while it lives, from every thread, and optionally
 * sets the logger's level for that time. Only one may live at a time.
 */
class LogCatcher
{
public:
    explicit LogCatcher(int level = -1);
    ~LogCatcher();
    Q_DISABLE_COPY(LogCatcher)

    /** All lines so far, as they came, with quotes and blank. */
    QList<LogLine> lines() const;
    /** The lines without the quotes and the blank at the end. */
    QStringList texts() const;
    /**
     * Those that have this not in them, e.g. what another thread writes meanwhile: where the order
     * counts, that of one thread is meant.
     */
    QStringList textsWithout(const QString &part) const;
    /** How often exactly this text came, e.g. "[INFO] Skipping action...". */
    int count(const QString &text) const;
    /** Whether some line has this part in it. */
    bool contains(const QString &part) const;
    void clear();

private:
    QtMessageHandler m_previousHandler;
    int m_previousLevel;
};
