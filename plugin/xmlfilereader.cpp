// SPDX-License-Identifier: MIT
#include "plugin/xmlfilereader_p.h"

#include "plugin/qtcompat.h"
#include <cstring>
#include <optional>
#include <QRegularExpression>

namespace {

constexpr int ChunkBytes = 16 * 1024;
// The stream reader compares every attribute of a tag with every other: a hundred thousand of them
// take it half a minute. It shows none before it has them all, so their values are counted.
constexpr int MaxValues = 10 * XmlFileReader::MaxAttributes;
// A reference to an entity takes three bytes, so even a tag full of them stays below 100 MB.
constexpr int MaxEntityCharacters = 128;

// The stream reader refuses encodings that it does not know, but only if it is told.
QString withoutDeclaration(QString text)
{
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    if (text.startsWith(QLatin1String("<?xml")) && text.size() > 5 && text.at(5).isSpace()) {
        const auto end = text.indexOf(QLatin1String("?>"));
        if (end > 0)
            text.remove(0, end + 2);
    }
    return text;
}

} // namespace

/**
 * What the stream reader reads from: the file's bytes, or its text as UTF-8. It ends early when
 * the reader asks for more than one item may take.
 */
class XmlFileReader::Input : public QIODevice
{
public:
    Input(QFile *file, Encoding encoding)
        : m_file(file)
        , m_encoding(encoding)
    {
        open(ReadOnly | Unbuffered);
    }

    bool isSequential() const override { return true; }
    void itemIsOver() { m_itemBytes = 0; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        if (m_itemBytes > MaxItemBytes || m_values > MaxValues)
            return -1;
        if (m_position == m_bytes.size() && !refill())
            return -1;
        const qint64 size = qMin<qint64>(maxSize, m_bytes.size() - m_position);
        memcpy(data, m_bytes.constData() + m_position, size_t(size));
        m_position += int(size);
        m_itemBytes += size;
        countValues(data, size);
        return size;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    // Strict files may be in any encoding, where a quote's byte can be half of a letter: there each
    // one counts. Else the count is exact in start tags, where "<" cannot stand in a value.
    void countValues(const char *data, qint64 size)
    {
        for (const char *end = data + size; data != end; ++data) {
            if (uchar(*data) > '>')
                continue; // a letter, as most are
            const bool isQuote = *data == '"' || *data == '\'';
            if (*data == '<') {
                m_values = 0;
                m_within = '<';
            } else if (isQuote && (m_within == '<' || m_encoding == Strict)) {
                ++m_values;
                m_within = *data;
            } else if (isQuote && m_within == *data) {
                m_within = '<';
            } else if (*data == '>' && m_within == '<') {
                m_within = '>';
            }
        }
    }

    bool refill()
    {
        m_position = 0;
        do {
            m_bytes = m_file->read(ChunkBytes);
            if (m_bytes.isEmpty())
                return false;
            if (m_encoding == Tolerant)
                m_bytes = decoded(m_bytes);
        } while (m_bytes.isEmpty()); // the chunk held only a part of a character
        return true;
    }

    QByteArray decoded(const QByteArray &bytes)
    {
        QString text;
        if (m_decoder) {
            text = m_half + m_decoder->decode(bytes);
        } else {
            m_decoder.emplace(bytes, declaredEncoding(bytes));
            text = withoutDeclaration(m_decoder->decode(bytes));
        }
        // The other half of the pair comes with the next chunk.
        m_half.clear();
        if (!text.isEmpty() && text.at(text.size() - 1).isHighSurrogate()) {
            m_half = text.right(1);
            text.chop(1);
        }
        return text.toUtf8();
    }

    QFile *const m_file; // not owned
    const Encoding m_encoding;
    std::optional<VexaCompat::TextDecoder> m_decoder;
    QString m_half;
    QByteArray m_bytes;
    int m_position = 0;
    qint64 m_itemBytes = 0; // since the last element began or ended
    int m_values = 0; // that have begun since the last "<"
    char m_within = '>'; // '<' in a tag, its quote in a value, '>' between tags
};

XmlFileReader::XmlFileReader(const QString &path, Encoding encoding)
    : m_file(path)
    , m_input(std::make_unique<Input>(&m_file, encoding))
    , m_xml(m_input.get())
{
    m_xml.setNamespaceProcessing(encoding == Strict);
    m_xml.setEntityExpansionLimit(MaxEntityCharacters);
}

XmlFileReader::~XmlFileReader() = default;

bool XmlFileReader::open()
{
    return m_file.exists() && m_file.size() >= 1 && m_file.open(QIODevice::ReadOnly);
}

XmlFileReader::Step XmlFileReader::next()
{
    // What is shared here the stream reader would copy before it changes it.
    m_attributes = QXmlStreamAttributes();
    while (!m_xml.atEnd()) {
        const QXmlStreamReader::TokenType token = m_xml.readNext();
        m_input->itemIsOver();
        if (token == QXmlStreamReader::StartElement) {
            ++m_depth;
            m_attributes = m_xml.attributes();
            if (m_depth > MaxDepth || m_attributes.size() > MaxAttributes)
                m_xml.raiseError();
            else
                return Start;
        } else if (token == QXmlStreamReader::EndElement) {
            --m_depth;
            return End;
        }
    }
    return Done;
}

void XmlFileReader::skip()
{
    const int outside = m_depth - 1;
    while (m_depth > outside && next() != Done) { }
}

bool XmlFileReader::is(QLatin1String name) const
{
    // With namespaces on, a prefixed or otherwise bound name is another name.
    return m_xml.qualifiedName() == name && m_xml.namespaceUri().isEmpty();
}

bool XmlFileReader::has(QLatin1String attribute) const
{
    return m_attributes.hasAttribute(attribute);
}

QString XmlFileReader::value(QLatin1String attribute) const
{
    return m_attributes.value(attribute).toString();
}

QStringView XmlFileReader::view(QLatin1String attribute) const
{
    return m_attributes.value(attribute);
}

bool XmlFileReader::wellFormed() const
{
    return !m_xml.hasError();
}

QString XmlFileReader::errorString() const
{
    return m_xml.errorString();
}

qint64 XmlFileReader::line() const
{
    return m_xml.lineNumber();
}

qint64 XmlFileReader::column() const
{
    return m_xml.columnNumber();
}

QByteArray XmlFileReader::declaredEncoding(const QByteArray &start)
{
    if (!start.startsWith("<?xml"))
        return QByteArray();
    static const QRegularExpression pattern(
        QStringLiteral("encoding\\s*=\\s*[\"']([A-Za-z0-9._-]+)[\"']"));
    const int end = int(start.left(256).indexOf('>')) + 1;
    const QByteArray name =
        pattern.match(QString::fromLatin1(start.left(end))).captured(1).toLatin1();
    // It was read with one byte a character.
    const QByteArray lower = name.toLower();
    return lower.startsWith("utf-16") || lower.startsWith("utf-32") ? QByteArray() : name;
}
