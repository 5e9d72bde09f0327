// SPDX-License-Identifier: MIT
#include "host/cli/lintxml.h"

#include "host/shared/catalogfiles.h"
#include <algorithm>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

namespace {

constexpr qint64 MaxFileBytes = 256 * 1024 * 1024;

// What every build of the library reads alike. "ANSI", which no codec answers to and which the
// library itself writes into a city index, means UTF-8.
bool isKnownEncoding(const QString &name)
{
    const QString lower = name.toLower();
    return lower == QLatin1String("ansi") || lower == QLatin1String("utf-8")
        || lower == QLatin1String("utf8") || lower == QLatin1String("us-ascii")
        || lower == QLatin1String("iso-8859-1");
}

bool isWide(const QString &name)
{
    return name.startsWith(QLatin1String("utf-16"), Qt::CaseInsensitive)
        || name.startsWith(QLatin1String("utf-32"), Qt::CaseInsensitive);
}

} // namespace

LintXml::LintXml(const QString &folder, const QString &file, XmlFileReader::Encoding encoding,
                 LintReport *report)
    : m_path(folder + QLatin1Char('/') + file)
    , m_file(file)
    , m_encoding(encoding)
    , m_report(report)
    , m_reader(m_path, encoding)
{ }

bool LintXml::open()
{
    const QFileInfo info(m_path);
    QFile bytes(m_path);
    if (!info.isFile() || !bytes.open(QIODevice::ReadOnly)) {
        add({}, "unreadable", tr("it is no file that can be read"));
        return false;
    }
    if (info.size() > MaxFileBytes) {
        add({}, "unreadable", tr("it is larger than 256 MiB"));
        return false;
    }
    if (info.size() == 0) {
        add({}, "empty", tr("the file is empty"));
        return false;
    }
    m_source.emplace(bytes.readAll());
    return m_reader.open();
}

XmlFileReader::Step LintXml::next()
{
    const XmlFileReader::Step step = m_reader.next();
    if (step == XmlFileReader::Start)
        ++m_begun;
    else if (step == XmlFileReader::Done && !m_isDone)
        finish();
    return step;
}

bool LintXml::nextBelowRoot(QLatin1String meant, const QString &rootText)
{
    for (auto step = next(); step != XmlFileReader::Done; step = next()) {
        if (step != XmlFileReader::Start)
            continue;
        if (depth() > 1)
            return true;
        if (is(meant))
            add(place(), "root", rootText);
    }
    return false;
}

QString LintXml::name() const
{
    return tag() ? tag()->name : QString();
}

LintPlace LintXml::place() const
{
    if (const SourceTag *current = tag())
        return m_source->place(current->offset);
    return {int(m_reader.line()), int(m_reader.column())};
}

LintPlace LintXml::place(QLatin1String attribute) const
{
    const SourceTag *current = tag();
    if (!current)
        return place();
    const auto found =
        std::find_if(current->attributes.begin(), current->attributes.end(),
                     [attribute](const SourceAttribute &a) { return a.name == attribute; });
    return found == current->attributes.end() ? place() : m_source->place(found->offset);
}

void LintXml::add(LintPlace place, const char *kind, const QString &text)
{
    m_report->add(m_file, place, kind, text);
}

void LintXml::checkAttributes(std::initializer_list<QLatin1String> known)
{
    if (!tag())
        return;
    for (const SourceAttribute &attribute : tag()->attributes) {
        const bool isKnown = std::any_of(
            known.begin(), known.end(), [&](QLatin1String name) { return attribute.name == name; });
        if (!isKnown)
            add(m_source->place(attribute.offset), "unknown-attribute",
                tr("nobody reads the attribute %1%2")
                    .arg(LintReport::quoted(attribute.name), hint(attribute.name, known)));
    }
}

bool LintXml::requireAttributes(std::initializer_list<QLatin1String> needed,
                                const QString &consequence)
{
    QStringList missing;
    for (const QLatin1String attribute : needed) {
        if (!has(attribute))
            missing.append(LintReport::quoted(attribute));
    }
    if (missing.isEmpty())
        return true;
    add(place(), "missing-attribute",
        tr("%1 lacks %2: %3")
            .arg(LintReport::quoted(name()), missing.join(QLatin1String(", ")), consequence));
    return false;
}

QString LintXml::hint(const QString &name, std::initializer_list<QLatin1String> known)
{
    for (const QLatin1String candidate : known) {
        if (name.compare(candidate, Qt::CaseInsensitive) == 0)
            return tr("; did you mean %1?").arg(LintReport::quoted(candidate));
    }
    return QString();
}

void LintXml::finish()
{
    m_isDone = true;
    checkEncoding();
    for (const int offset : m_source->strayTexts())
        add(m_source->place(offset), "text", tr("nobody reads text between the elements"));
    if (m_reader.wellFormed())
        return;
    const LintPlace at = m_encoding == XmlFileReader::Tolerant
        ? m_source->placeBehindDeclaration(int(m_reader.line()), int(m_reader.column()))
        : LintPlace {int(m_reader.line()), int(m_reader.column()) + 1};
    QFile file(m_path);
    const QString consequence = m_encoding == XmlFileReader::Strict
        ? tr("the whole file counts as empty")
        : file.open(QIODevice::ReadOnly) && CatalogFiles::isCut(&file)
        ? tr("devices refuse a file that is cut")
        : tr("nothing behind this is read");
    const QString reason =
        m_reader.errorString().isEmpty() ? tr("too large") : m_reader.errorString();
    add(at, "broken-xml", tr("broken XML: %1; %2").arg(reason.simplified(), consequence));
}

void LintXml::checkEncoding()
{
    // There a wrong byte, and an encoding that the reader does not know, is an error, but one
    // without a place.
    const bool isStrict = m_encoding == XmlFileReader::Strict;
    if (isStrict && m_reader.wellFormed())
        return;
    const QString declared = m_source->declaredEncoding();
    if (!isStrict && !declared.isEmpty() && !m_source->hasByteOrderMark()) {
        if (isWide(declared))
            add(m_source->placeOfEncoding(), "encoding",
                tr("%1 needs a byte order mark: the file is read as UTF-8")
                    .arg(LintReport::quoted(declared)));
        else if (!isKnownEncoding(declared))
            add(m_source->placeOfEncoding(), "encoding",
                tr("not every device knows %1: write UTF-8").arg(LintReport::quoted(declared)));
    }
    for (const int offset : m_source->damagedCharacters())
        add(m_source->place(offset), "encoding",
            tr("the bytes here are no character in the file's encoding"));
}

// Null where a document type's own entities have brought elements that do not stand in the text.
const SourceTag *LintXml::tag() const
{
    const std::vector<SourceTag> &tags = m_source->tags();
    if (m_begun == 0 || m_begun > tags.size())
        return nullptr;
    const SourceTag &current = tags[m_begun - 1];
    const QByteArray name = current.name.toLatin1();
    const bool isPlain = QLatin1String(name) == current.name && !name.contains(':');
    // With namespaces on, the reader knows an element by another name than its tag's.
    const bool fits = m_encoding == XmlFileReader::Strict || !isPlain
        || m_reader.is(QLatin1String(name.constData()));
    return fits ? &current : nullptr;
}
