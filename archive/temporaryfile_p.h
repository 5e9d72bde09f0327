// SPDX-License-Identifier: MIT
#ifndef VEXA_TEMPORARYFILE_P_H
#define VEXA_TEMPORARYFILE_P_H

#include <QByteArray>
#include <QFile>
#include <QString>

/**
 * A file that grows under a name of its own beside its final place, and gets its final name only
 * when it is whole. Whatever is not renamed is removed with the object.
 *
 * Not a QTemporaryFile: that one does not really close at close(), so a disk that is found full
 * only then would go unnoticed, and on Qt 5 it writes names in the encoding of the locale. Here
 * every path is UTF-8.
 *
 * The files have mode 0600, whatever the archive says of them.
 */
class TemporaryFile
{
public:
    /** Makes nothing yet; folder must exist when open() is called. */
    explicit TemporaryFile(const QString &folder);
    ~TemporaryFile();
    Q_DISABLE_COPY(TemporaryFile)

    /** Makes the file, "vexa-maps." and six characters, and opens it for reading and writing. */
    bool open();
    /** What is written goes to the disk at once, so a full disk shows in the count of write(). */
    QIODevice &device();
    /** Closes the file; false when the system could not store all that was written. */
    bool close();
    /** Gives the closed file its final path; false when something has that path already. */
    bool renameTo(const QString &path);
    /** The path of the file; the pattern before open(). */
    QString name() const;

private:
    QByteArray m_path;
    QFile m_file;
    bool m_exists = false;
};

#endif
