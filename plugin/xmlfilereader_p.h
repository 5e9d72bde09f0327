// SPDX-License-Identifier: MIT
#ifndef VEXA_XMLFILEREADER_P_H
#define VEXA_XMLFILEREADER_P_H

#include <memory>
#include <QByteArray>
#include <QFile>
#include <QIODevice>
#include <QString>
#include <QStringView>
#include <QXmlStreamReader>

/**
 * One pass over the elements of an XML file on the device, from the first to the last or to the
 * first error. The readers of the catalogue, the content file and the city index make one each
 * time, on the stack.
 *
 * It reads in pieces and keeps no tree, so the memory does not grow with the file. What only a
 * hostile or broken file has ends the pass like an error: more than MaxDepth levels, a single tag,
 * text or comment of more than MaxItemBytes, entities that multiply.
 *
 * The program that looks through a publisher's files reads with it too.
 */
class XmlFileReader
{
public:
    enum Encoding {
        /**
         * A byte order mark decides, else the encoding that the file declares if Qt knows it, else
         * UTF-8. Wrong bytes become U+FFFD, so one bad name does not cost the rest of the file.
         * Names are compared with their prefix, and a prefix need not be declared.
         */
        Tolerant,
        /** By the book: a wrong byte, an unknown encoding or an undeclared prefix is an error. */
        Strict,
    };
    enum Step {
        Start, ///< an element begins; attributes() are its attributes
        End, ///< the element that began last and has not ended yet ends
        Done, ///< the file is over, or an error came
    };

    static constexpr int MaxDepth = 1000000;
    static constexpr qint64 MaxItemBytes = 1024 * 1024;
    static constexpr int MaxAttributes = 1000;

    XmlFileReader(const QString &path, Encoding encoding);
    ~XmlFileReader();
    Q_DISABLE_COPY(XmlFileReader)

    /** Whether there is anything to read: the file exists, is not empty and can be opened. */
    bool open();

    /** Goes on to the next begin or end of an element. After Done it stays Done. */
    Step next();

    /** Passes over the rest of the element that has just begun, its children included. */
    void skip();

    /** The number of elements that have begun and not ended; 1 at the root's begin. */
    int depth() const { return m_depth; }

    /** Whether the element that has just begun has this name. */
    bool is(QLatin1String name) const;
    bool has(QLatin1String attribute) const;
    /** The attribute's value, empty if it is not there. */
    QString value(QLatin1String attribute) const;
    /** The same without a copy; valid until next(). */
    QStringView view(QLatin1String attribute) const;

    /** After Done: whether the whole file was read without an error. */
    bool wellFormed() const;
    /** The error in words, for people; empty if there is none. */
    QString errorString() const;

    /** The line that has been reached, from 1. A Tolerant file's declaration does not count. */
    qint64 line() const;
    /** The characters of that line that have been read. */
    qint64 column() const;

    /**
     * The encoding that a Tolerant file without byte order mark declares in its first bytes, if it
     * can be true; else empty, which means UTF-8.
     */
    static QByteArray declaredEncoding(const QByteArray &start);

private:
    class Input;

    QFile m_file;
    std::unique_ptr<Input> m_input;
    QXmlStreamReader m_xml;
    QXmlStreamAttributes m_attributes;
    int m_depth = 0;
};

#endif
