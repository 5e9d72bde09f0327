// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QLatin1String>
#include <QList>
#include <QString>

/** A place in a text file. */
struct LintPlace
{
    int line = 0; ///< from 1; 0 if it is about the file as a whole
    int column = 0; ///< in characters, from 1
};

/** One thing that devices would not read as its author meant it. */
struct LintFinding
{
    QString file; ///< below the folder that is looked through
    LintPlace place;
    QLatin1String kind; ///< a fixed word for scripts, as "missing-attribute"
    QString text; ///< for people
};

/** Remembers in which line of a file something stood first. */
class FirstLines
{
public:
    bool isEmpty() const { return m_lines.isEmpty(); }
    bool contains(const QString &what) const { return m_lines.contains(what); }
    /** That line; 0 if it comes for the first time, which is noted as this one. */
    int before(const QString &what, int line)
    {
        const auto known = m_lines.constFind(what);
        if (known != m_lines.cend())
            return *known;
        m_lines.insert(what, line);
        return 0;
    }

private:
    QHash<QString, int> m_lines;
};

/** Collects what is found while a publisher's folder is looked through. */
class LintReport
{
public:
    /** The kind must be a literal. */
    void add(const QString &file, LintPlace place, const char *kind, const QString &text);
    /** By file, line and column. */
    QList<LintFinding> findings() const;

    // How much was looked at.
    int catalogues = 0;
    int regions = 0;
    int nameFiles = 0;
    int archives = 0;
    int archivesElsewhere = 0; ///< on other servers; not looked at
    int checkSums = 0;

    /** The text in quotes, in one line and not without end. */
    static QString quoted(const QString &text);

private:
    QList<LintFinding> m_findings;
};
