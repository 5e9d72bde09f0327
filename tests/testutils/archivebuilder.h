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

    /** Adds an entry; the name may have up to 100 bytes, of any kind. */
    RawTar &add(const QByteArray &name, const QByteArray &data = QByteArray(), Type type = File,
                const QByteArray &target = QByteArray());
    /** The archive so far, with its end. */
    QByteArray bytes() const;

private:
    QByteArray m_bytes;
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
