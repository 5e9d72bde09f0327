// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintreport.h"
#include "host/cli/lintsource.h"
#include "plugin/xmlfilereader_p.h"
#include <initializer_list>
#include <optional>
#include <QCoreApplication>
#include <QString>

/**
 * One pass over an XML file with the library's own reader, which decides what devices see, and
 * with the places of its elements and attributes. What is wrong with the file as XML goes into the
 * report by itself; what its elements mean is the caller's.
 */
class LintXml
{
    Q_DECLARE_TR_FUNCTIONS(LintXml)

public:
    /** The report is not owned. */
    LintXml(const QString &folder, const QString &file, XmlFileReader::Encoding encoding,
            LintReport *report);

    /** False if there is nothing to read; the report says why. */
    bool open();
    /** Goes on; at the end the report gets what is wrong with the XML. */
    XmlFileReader::Step next();
    /**
     * Goes on to the next element below the outermost one; false at the end. The text is reported
     * if the outermost has the name of those that are meant: the library never takes it for one.
     */
    bool nextBelowRoot(QLatin1String meant, const QString &rootText);

    int depth() const { return m_reader.depth(); }
    bool is(QLatin1String name) const { return m_reader.is(name); }
    bool has(QLatin1String attribute) const { return m_reader.has(attribute); }
    QString value(QLatin1String attribute) const { return m_reader.value(attribute); }
    /** As it is written; empty if that cannot be told. */
    QString name() const;
    /** Whether the whole file was read without an error, after the end. */
    bool wellFormed() const { return m_reader.wellFormed(); }

    /** Where the element that has just begun stands. */
    LintPlace place() const;
    /** Where its attribute stands; the element's place if it has none. */
    LintPlace place(QLatin1String attribute) const;

    /** Reports about the file that is read. */
    void add(LintPlace place, const char *kind, const QString &text);
    /** Reports the element's attributes that nobody reads. */
    void checkAttributes(std::initializer_list<QLatin1String> known);
    /** Reports, in one go, which of these attributes the element lacks; tells whether it has all.
     */
    bool requireAttributes(std::initializer_list<QLatin1String> needed, const QString &consequence);
    /** "; did you mean "File"?" if it is that but for the case of its letters; else empty. */
    static QString hint(const QString &name, std::initializer_list<QLatin1String> known);

private:
    void finish();
    void checkEncoding();
    const SourceTag *tag() const;

    const QString m_path;
    const QString m_file;
    const XmlFileReader::Encoding m_encoding;
    LintReport *const m_report;
    XmlFileReader m_reader;
    std::optional<LintSource> m_source;
    size_t m_begun = 0; // elements
    bool m_isDone = false;
};
