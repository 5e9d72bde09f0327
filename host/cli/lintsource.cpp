// SPDX-License-Identifier: MIT
#include "host/cli/lintsource.h"

#include "plugin/qtcompat.h"
#include "plugin/xmlfilereader_p.h"
#include <algorithm>
#include <QRegularExpression>

namespace {

const QLatin1String Declaration("<?xml");

bool endsName(QChar c)
{
    return c.isSpace() || c == QLatin1Char('=') || c == QLatin1Char('/') || c == QLatin1Char('>');
}

bool hasMark(const QByteArray &bytes)
{
    return bytes.startsWith("\xef\xbb\xbf") || bytes.startsWith("\xfe\xff")
        || bytes.startsWith("\xff\xfe") || bytes.startsWith(QByteArray("\0\0\xfe\xff", 4));
}

} // namespace

LintSource::LintSource(const QByteArray &bytes)
    : m_hasMark(hasMark(bytes))
{
    VexaCompat::TextDecoder decoder(bytes, XmlFileReader::declaredEncoding(bytes));
    m_text = decoder.decode(bytes);
    if (m_text.startsWith(QChar(QChar::ByteOrderMark)))
        m_text.remove(0, 1);
    findLines();
    readDeclaration();
    scan();
}

std::vector<int> LintSource::damagedCharacters() const
{
    std::vector<int> offsets;
    int at = int(m_text.indexOf(QChar(QChar::ReplacementCharacter)));
    while (at >= 0) {
        offsets.push_back(at);
        const int next = int(m_text.indexOf(QLatin1Char('\n'), at));
        at = next < 0 ? -1 : int(m_text.indexOf(QChar(QChar::ReplacementCharacter), next));
    }
    return offsets;
}

LintPlace LintSource::placeOfEncoding() const
{
    return place(m_encodingOffset);
}

LintPlace LintSource::place(int offset) const
{
    const auto line = std::upper_bound(m_lines.begin(), m_lines.end(), offset) - 1;
    int column = 1;
    for (int at = *line; at < offset; ++at)
        column += m_text.at(at).isLowSurrogate() ? 0 : 1;
    return {int(line - m_lines.begin()) + 1, column};
}

LintPlace LintSource::placeBehindDeclaration(int line, int column) const
{
    const LintPlace start = place(m_declarationEnd);
    return {start.line + line - 1, line == 1 ? start.column + column : column + 1};
}

void LintSource::findLines()
{
    m_lines.push_back(0);
    for (int at = 0; at < m_text.size(); ++at) {
        if (m_text.at(at) == QLatin1Char('\n'))
            m_lines.push_back(at + 1);
    }
}

void LintSource::readDeclaration()
{
    if (!m_text.startsWith(Declaration))
        return;
    const int end = int(m_text.indexOf(QLatin1String("?>")));
    if (end < 0)
        return;
    m_declarationEnd = end + 2;
    static const QRegularExpression pattern(
        QStringLiteral("\\sencoding\\s*=\\s*[\"']([^\"']*)[\"']"));
    const auto match = pattern.match(m_text.left(end));
    if (!match.hasMatch())
        return;
    m_declaredEncoding = match.captured(1);
    m_encodingOffset = int(match.capturedStart(1));
}

void LintSource::scan()
{
    int at = 0;
    while (at >= 0 && at < m_text.size()) {
        const int tag = int(m_text.indexOf(QLatin1Char('<'), at));
        noteText(at, tag < 0 ? int(m_text.size()) : tag);
        at = tag < 0 ? -1 : passTag(tag);
    }
}

// The offset behind what begins with this "<"; -1 if it has no end.
int LintSource::passTag(int offset)
{
    const auto begins = [&](const char *text) {
        const QLatin1String expected(text);
        return m_text.size() - offset >= expected.size()
            && std::equal(expected.begin(), expected.end(), m_text.constData() + offset,
                          [](char a, QChar b) { return QLatin1Char(a) == b; });
    };
    if (begins("<!--"))
        return behind("-->", offset + 4);
    if (begins("<![CDATA[")) {
        const int end = behind("]]>", offset + 9);
        noteText(offset + 9, end < 0 ? int(m_text.size()) : end - 3);
        return end;
    }
    if (begins("<!"))
        return passDocumentType(offset);
    if (begins("<?"))
        return behind("?>", offset);
    if (begins("</"))
        return behind(">", offset);

    SourceTag tag;
    tag.offset = offset;
    int at = offset + 1;
    while (at < m_text.size() && !endsName(m_text.at(at)))
        ++at;
    tag.name = m_text.mid(offset + 1, at - offset - 1);
    const bool isWhole = passAttributes(&at, &tag);
    m_tags.push_back(std::move(tag));
    return isWhole ? at : -1;
}

bool LintSource::passAttributes(int *offset, SourceTag *tag) const
{
    int &at = *offset;
    const int end = int(m_text.size());
    while (at < end) {
        const QChar c = m_text.at(at);
        if (c == QLatin1Char('>')) {
            ++at;
            return true;
        }
        if (endsName(c)) {
            ++at;
            continue;
        }
        const int name = at;
        while (at < end && !endsName(m_text.at(at)))
            ++at;
        tag->attributes.push_back({m_text.mid(name, at - name), name});
        while (at < end && (m_text.at(at).isSpace() || m_text.at(at) == QLatin1Char('=')))
            ++at;
        const bool isQuoted =
            at < end && (m_text.at(at) == QLatin1Char('"') || m_text.at(at) == QLatin1Char('\''));
        const int close = isQuoted ? int(m_text.indexOf(m_text.at(at), at + 1)) : -1;
        if (close < 0)
            return false;
        at = close + 1;
    }
    return false;
}

// A document type may hold declarations in brackets, and ">" in their quotes.
int LintSource::passDocumentType(int offset) const
{
    int depth = 0;
    for (int at = offset; at < m_text.size(); ++at) {
        const QChar c = m_text.at(at);
        if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            at = int(m_text.indexOf(c, at + 1));
            if (at < 0)
                return -1;
        } else if (c == QLatin1Char('<')) {
            ++depth;
        } else if (c == QLatin1Char('>') && --depth == 0) {
            return at + 1;
        }
    }
    return -1;
}

int LintSource::behind(const char *end, int offset) const
{
    const QLatin1String text(end);
    const int at = int(m_text.indexOf(text, offset));
    return at < 0 ? -1 : at + int(text.size());
}

void LintSource::noteText(int from, int to)
{
    while (from < to && m_text.at(from).isSpace())
        ++from;
    if (from < to)
        m_strayTexts.push_back(from);
}
