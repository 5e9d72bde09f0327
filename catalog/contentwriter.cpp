// SPDX-License-Identifier: MIT
// The writing half of contentfile_p.h.
#include "catalog/contentfile_p.h"

#include "catalog/tilefile_p.h"
#include "plugin/xmlfilewriter_p.h"
#include <algorithm>
#include <QCoreApplication>
#include <QStringView>

namespace {

const QLatin1Char Slash('/');

// What can stand in an attribute as it is, a byte for a character.
bool isPlain(QChar character)
{
    const ushort c = character.unicode();
    return c >= 0x20 && c < 0x7f && c != '"' && c != '&' && c != '<' && c != '>';
}

QByteArray escaped(const QString &text)
{
    QByteArray bytes = XmlFileWriter::writable(text).toHtmlEscaped().toUtf8();
    // A reader would take them for blanks.
    bytes.replace('\t', "&#9;").replace('\n', "&#10;").replace('\r', "&#13;");
    return bytes;
}

/**
 * The bytes of a content file while they grow. They are put together by hand: Qt's stream writer
 * takes three times as long for a large file as all the rest, the tiles' scan and the saving.
 */
class ContentBytes
{
public:
    template <int Size> ContentBytes &operator<<(const char (&markup)[Size])
    {
        std::copy_n(markup, Size - 1, room(Size - 1));
        return *this;
    }

    // An attribute's value.
    ContentBytes &operator<<(QStringView text)
    {
        if (std::all_of(text.cbegin(), text.cend(), isPlain)) {
            std::transform(text.cbegin(), text.cend(), room(int(text.size())),
                           [](QChar character) { return char(character.unicode()); });
        } else {
            const QByteArray bytes = escaped(text.toString());
            std::copy(bytes.cbegin(), bytes.cend(), room(int(bytes.size())));
        }
        return *this;
    }

    QByteArray take()
    {
        m_bytes.truncate(m_size);
        return std::move(m_bytes);
    }

private:
    // Where so many bytes more can be put.
    char *room(int size)
    {
        const int begin = m_size;
        m_size += size;
        if (m_size > m_bytes.size())
            m_bytes.resize(qMax(m_size, 2 * int(m_bytes.size())));
        return m_bytes.data() + begin;
    }

    QByteArray m_bytes;
    int m_size = 0; // of what is used of them
};

QStringView baseName(const QString &fileName)
{
    const auto dot = fileName.indexOf(QLatin1Char('.'));
    return dot < 0 ? QStringView(fileName) : QStringView(fileName).left(dot);
}

void writeFolder(const TileTree::Folder &folder, ContentBytes *bytes)
{
    const QString path = TileFile::contentPath(folder.path + Slash);
    for (const QString &tile : folder.tiles) {
        *bytes << "  <TI name=\"" << baseName(tile) << "\" path=\"" << path << tile << "\"/>\n";
        QCoreApplication::processEvents();
    }
}

void writeRegion(const ContentFile::Region &region, ContentBytes *bytes)
{
    *bytes << "  <region id=\"1" << region.id << "\" name=\"" << region.name;
    if (region.fileList.isEmpty()) {
        *bytes << "\"/>\n";
        return;
    }
    *bytes << "\">\n";
    for (const QString &entry : region.fileList) {
        // The name is but a character; only the path tells the next start which file.
        *bytes << "   <TI name=\"" << TileFile::key(entry) << "\" path=\""
               << TileFile::contentPath(entry) << "\"/>\n";
    }
    *bytes << "  </region>\n";
}

} // namespace

QByteArray ContentFile::write(const QString &mapVersion, QList<TileTree::Folder> folders,
                              QList<Region> regions)
{
    // What is written is given back at once: all of it together would take longer than a frame.
    ContentBytes bytes;
    bytes << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<directory map-version=\"" << mapVersion
          << "\">\n";
    if (folders.isEmpty()) {
        bytes << " <diskcache/>\n";
    } else {
        bytes << " <diskcache>\n";
        for (TileTree::Folder &folder : folders) {
            writeFolder(folder, &bytes);
            folder = {};
        }
        bytes << " </diskcache>\n";
    }
    if (regions.isEmpty()) {
        bytes << " <regions/>\n";
    } else {
        bytes << " <regions>\n";
        for (Region &region : regions) {
            writeRegion(region, &bytes);
            region = {};
            QCoreApplication::processEvents();
        }
        bytes << " </regions>\n";
    }
    bytes << "</directory>\n";
    return bytes.take();
}

QByteArray ContentFile::writeEmpty(const QString &mapVersion)
{
    const QString text =
        QLatin1String("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<directory map-version=\"")
        + XmlFileWriter::writable(mapVersion).toHtmlEscaped()
        + QLatin1String("\">\n<diskcache/>\n<regions/>\n</directory>");
    return text.toUtf8();
}
