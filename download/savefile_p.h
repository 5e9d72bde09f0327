// SPDX-License-Identifier: MIT
#ifndef VEXA_SAVEFILE_P_H
#define VEXA_SAVEFILE_P_H

#include <QByteArray>
#include <QFile>
#include <QString>

/**
 * The file in which a download grows.
 *
 * It is only ever appended to, and only whole chunks count: a chunk of which some bytes did not
 * reach the system is cut off again. The download manager owns the one save file and uses it in
 * the worker thread.
 */
class SaveFile
{
public:
    /** Opens the file for appending, making it if there is none. False leaves errorString(). */
    bool open(const QString &path);
    bool isOpen() const { return m_file.isOpen(); }
    void close();

    /** Bytes in the file. */
    qint64 size() const { return m_file.size(); }

    /** Cuts what lies past this many bytes off. False if it could not; errorString() tells why. */
    bool cutTo(qint64 size);

    /**
     * Appends all that the source can give without waiting, as one chunk, and hands it to the
     * system. Returns how many bytes that were. -1 if any of them failed: the file is then closed
     * and as long as it was before.
     */
    qint64 append(QIODevice &source);

    /** Removes a file, open or not. */
    static bool remove(const QString &path) { return QFile::remove(path); }

    /** Why the last open, cut or append failed. */
    QString errorString() const { return m_errorString; }

private:
    QFile m_file; // without a buffer, in which bytes of a failed chunk would be stuck
    QByteArray m_block; // what is on its way from source to file; empty while closed
    QString m_errorString;
};

#endif
