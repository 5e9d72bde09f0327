// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/**
 * Makes real archives with the real tools (bsdtar, zip, 7z) in a temporary folder that goes with
 * it: add files and folders, then make() as many archives of them as you like. A tool that fails
 * ends the test program.
 */
class ArchiveBuilder
{
public:
    ArchiveBuilder();
    Q_DISABLE_COPY(ArchiveBuilder)

    /** Adds a file, with the folders above it. */
    void addFile(const QString &name, const QByteArray &data);
    /** Adds an empty folder. */
    void addFolder(const QString &name);
    /** Adds a symbolic link. */
    void addLink(const QString &name, const QString &target);
    /** Adds a file of that many bytes that takes no room on the disk. */
    void addSparseFile(const QString &name, qint64 size);
    /** Overwrites bytes of a file that was added. */
    void patchFile(const QString &name, qint64 offset, const QByteArray &bytes);

    /**
     * Packs all that was added into an archive and returns its path. The end of the name decides
     * tool and format: .tar, .tar.gz, .tar.bz2, .tar.xz, .tar.zst, .tar.lz4, .pax, .cpio, .iso,
     * .zip, .stored.zip, .encrypted.zip, .7z, .encrypted.7z, .zip.gz (all
     * files as one entry "-" of a zip that was streamed into gzip: it has no size). Nothing added
     * makes an empty archive.
     */
    QString make(const QString &name);
    /** Stores the bytes as a file beside the archives and returns its path. */
    QString write(const QString &name, const QByteArray &bytes);

    /** Bytes that no compression makes much shorter, the same for the same seed. */
    static QByteArray noise(int size, quint32 seed = 1);

private:
    void run(const QString &shellCommand);

    QTemporaryDir m_dir;
    QString m_content;
};

/**
 * One tar archive byte by byte, for what no tool would write: names that climb out or are no
 * UTF-8, devices, the same name twice.
 */
class RawTar
{
public:
    enum Type : char {
        File = '0',
        HardLink = '1',
        SymLink = '2',
        CharacterDevice = '3',
        BlockDevice = '4',
        Folder = '5',
        Fifo = '6',
        ExtendedHeader = 'x',
    };

    /**
     * Adds an entry. The name may have any bytes; one of more than 100 goes into an extended header
     * before it, as does one with a NUL.
     */
    RawTar &add(const QByteArray &name, const QByteArray &data = QByteArray(), Type type = File,
                const QByteArray &target = QByteArray(), int mode = 0644);
    /** The archive so far, with its end. */
    QByteArray bytes() const;

private:
    QByteArray m_bytes;
};

/**
 * One zip archive byte by byte, for what no tool would write: entries whose two headers contradict
 * each other, false sizes and check sums, any file type, any bytes in a name. Data is stored as it
 * is unless it comes deflated.
 */
class RawZip
{
public:
    struct Entry
    {
        QByteArray name;
        QByteArray data; ///< as it lies in the archive
        int mode = 0100644; ///< file type and permissions, as stat() has them
        QByteArray centralName = {}; ///< in the list at the end; the name if null
        qint64 size = -1; ///< unpacked, in bytes; that of the data if negative
        qint64 packedSize = -1; ///< in the headers; that of the data if negative
        qint64 checkSum = -1; ///< that of the data if negative
        bool deflated = false;
    };

    RawZip &add(const Entry &entry);
    /** The archive so far, with its list. */
    QByteArray bytes() const;
    /** The CRC-32 of zip and gzip. */
    static quint32 checkSum(const QByteArray &data);

private:
    QByteArray m_bytes;
    QByteArray m_list;
    int m_count = 0;
};

namespace TestFile {

/** The whole file; a test fails on its content if it cannot be read. */
QByteArray read(const QString &path);
/** Makes the file with its parents. */
void write(const QString &path, const QByteArray &bytes);
/** Overwrites some bytes in the middle of the file. */
void patch(const QString &path, qint64 offset, const QByteArray &bytes);
/** Drops the end of the file. */
void cut(const QString &path, qint64 size);

} // namespace TestFile
