// SPDX-License-Identifier: MIT
#pragma once

#include "host/cli/lintreport.h"
#include <QByteArray>
#include <QString>
#include <vector>

/** One attribute of a tag, where it stands in the text. */
struct SourceAttribute
{
    QString name; ///< with its prefix
    int offset = 0; ///< of the name
};

/** One start tag, where it stands in the text. */
struct SourceTag
{
    QString name; ///< with its prefix
    int offset = 0; ///< of the "<"
    std::vector<SourceAttribute> attributes;
};

/**
 * The text of an XML file with the places of what stands in it, which the stream reader does not
 * tell: it knows where a tag ends, and a finding is to name where an attribute begins.
 *
 * It looks at no more than brackets and quotes, and stops where they do not fit; what the elements
 * mean, and what is an error, the library's own reader says.
 */
class LintSource
{
public:
    /** The bytes of the whole file; nothing is kept of them. */
    explicit LintSource(const QByteArray &bytes);

    /** Start tags in the file's order; the n-th is the n-th element that begins. */
    const std::vector<SourceTag> &tags() const { return m_tags; }
    /** Where text stands that is not blank, up to the next tag. */
    const std::vector<int> &strayTexts() const { return m_strayTexts; }
    /** Where bytes were wrong in the file's encoding; one a line. */
    std::vector<int> damagedCharacters() const;

    /** The encoding that the declaration names; empty if there is none. */
    QString declaredEncoding() const { return m_declaredEncoding; }
    bool hasByteOrderMark() const { return m_hasMark; }
    LintPlace placeOfEncoding() const;

    LintPlace place(int offset) const;
    /** The place of a point that a reader counts from behind the declaration, as Tolerant ones do.
     */
    LintPlace placeBehindDeclaration(int line, int column) const;

private:
    void findLines();
    void readDeclaration();
    void scan();
    int passTag(int offset);
    bool passAttributes(int *offset, SourceTag *tag) const;
    int passDocumentType(int offset) const;
    int behind(const char *end, int offset) const;
    void noteText(int from, int to);

    QString m_text;
    bool m_hasMark = false;
    QString m_declaredEncoding;
    int m_encodingOffset = 0;
    int m_declarationEnd = 0;
    std::vector<int> m_lines; // offsets of their first characters
    std::vector<SourceTag> m_tags;
    std::vector<int> m_strayTexts;
};
