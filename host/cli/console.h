// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <QJsonDocument>
#include <QString>

/**
 * What the program writes: results to standard output, errors to standard error, and on a terminal
 * one line of progress that is written over and over.
 */
class Console
{
public:
    enum class Level { Quiet, Normal, Verbose };

    explicit Console(Level level = Level::Normal);

    /** Whether progress can be drawn: standard output is a terminal and not quiet. */
    bool isTerminal() const;
    Level level() const;

    /** What was asked for; also when quiet. */
    void result(const QString &line);
    void json(const QJsonDocument &document);
    /** News that a script does not need; not when quiet. */
    void note(const QString &line);
    /** For people who asked for details. */
    void detail(const QString &line);
    void error(const QString &line);

    /** Replaces the progress line, cut to the terminal's width; does nothing on a non-terminal. */
    void progress(const QString &line);
    /** A question, after which the cursor stays; for a terminal. */
    void ask(const QString &question);

    /** A bar for a progress line: how much of it is done, 0 to 1. */
    static QString bar(double fraction);

    /** Takes the progress line away. */
    void clearProgress();

private:
    void write(std::FILE *stream, const QString &line);

    Level m_level;
    bool m_progressShown = false;
};
