// SPDX-License-Identifier: MIT
#include "cityindex/cityindexlistprocessor.h"

#include "plugin/xmlfilereader_p.h"
#include "plugin/xmlfilewriter_p.h"
#include <QByteArray>
#include <QLatin1String>
#include <QXmlStreamWriter>

namespace {

const QLatin1String ListElement("cityindexlist");
const QLatin1String EntryElement("cityindex");
const QLatin1String Id("id");
const QLatin1String Name("name");
const QLatin1String Version("version");

// No character takes more than the six bytes of "&quot;".
static_assert(CityIndexListProcessor::MaxEntryCharacters * 6 < XmlFileReader::MaxItemBytes,
              "what is written must be read again");

bool isReadable(const CityIndex &entry)
{
    const auto length = entry.id().size() + entry.name().size() + entry.version().size();
    return length <= CityIndexListProcessor::MaxEntryCharacters;
}

} // namespace

void CityIndexListProcessor::readCityIndexList(const QString &path,
                                               QMap<QString, CityIndex> &entries) const
{
    XmlFileReader xml(path, XmlFileReader::Tolerant);
    if (!xml.open())
        return;
    for (auto step = xml.next(); step != XmlFileReader::Done; step = xml.next()) {
        // The document element itself is the list, whatever its name.
        const bool isEntry = step == XmlFileReader::Start && xml.depth() > 1 && xml.is(EntryElement)
            && xml.has(Id) && xml.has(Name) && xml.has(Version);
        if (!isEntry)
            continue;
        const QString id = xml.value(Id);
        entries.insert(id, CityIndex(id, xml.value(Name), xml.value(Version)));
    }
}

void CityIndexListProcessor::updateCityIndexListContent(
    const QString &path, const QMap<QString, CityIndex> &entries) const
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);

    xml.writeStartElement(ListElement);
    for (const CityIndex &entry : entries) {
        if (!isReadable(entry))
            continue;
        xml.writeEmptyElement(EntryElement);
        xml.writeAttribute(Id, XmlFileWriter::writable(entry.id()));
        xml.writeAttribute(Name, XmlFileWriter::writable(entry.name()));
        xml.writeAttribute(Version, XmlFileWriter::writable(entry.version()));
    }
    xml.writeEndElement();
    xml.writeEndDocument();
    // The writer has begun with a line feed of its own.
    XmlFileWriter::replace(path, "<?xml version=\"1.0\" encoding=\"ANSI\"?>" + bytes);
}
