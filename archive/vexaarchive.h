// SPDX-License-Identifier: MIT
#ifndef VEXA_VEXAARCHIVE_H
#define VEXA_VEXAARCHIVE_H

#include "vexa_export.h"
#include <atomic>
#include <memory>
#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

class GzipSource;
class QIODevice;
class UnpackFolder;
struct archive;
struct archive_entry;

/**
 * One archive file that can be unpacked into a folder, in every format and compression that
 * libarchive reads.
 *
 * The download manager makes one for each uncompress request and unpacks it in the worker thread;
 * a program may use one by itself. It has no parent and belongs to whoever made it. Everything
 * must be called in the thread that unpacks; cancel() alone may come from any thread.
 *
 * unpack() blocks. It reads the archive twice, first for the sum of the sizes (and for the check
 * sum of one packed with gzip, which libarchive would not look at) and then for the data:
 *
 *   closed -- startRead() --> open -- headers and data --> open -- finishRead() --> closed
 *
 * A file is written as "vexa-maps.XXXXXX" in the destination and renamed when all its bytes are
 * there, so half a file never has its final name. A path that is taken is an error and not
 * overwritten. Files get mode 0600; owners, times and modes of the archive are not used, and links
 * and devices are skipped without a message.
 *
 * The names of entries are read as UTF-8 and written as UTF-8, whatever the locale of the process.
 * A name that is not UTF-8 is taken for Latin-1, which loses nothing: its files have the UTF-8 form
 * of that name on the disk. An entry whose name cannot be read at all ends the unpack with
 * IterationError. A header that libarchive only warns about is an error too.
 *
 * Signals come from within the calls, directly. A slot may call cancel() but nothing else that
 * works on the archive.
 */
class VEXA_EXPORT VexaArchive : public QObject
{
    Q_OBJECT

public:
    /** Results. The numbers are fixed: they are logged and go through signals. */
    enum ArchiveError : int {
        NoError = 0, ///< success
        OpenError = 1, ///< the archive could not be opened
        IterationError = 2, ///< libarchive failed while it read headers or data
        ReadError = 3, ///< an entry's data was damaged, or not as long as the header promised
        WriteError = 4, ///< a file or folder could not be made, written or renamed
        CancelledError = 6, ///< stopped from outside; 5 is unused
    };
    Q_ENUM(ArchiveError)

    /** Touches nothing yet; the path is opened by startRead(). */
    explicit VexaArchive(const QString &archivePath);
    /** Closes the archive if it is open. */
    ~VexaArchive() override;

    /** The result of the last operation; NoError at the beginning. */
    ArchiveError error() const;
    /** The text of the last error, empty when there was none. Parts of it come from libarchive. */
    QString errorString() const;
    /** Back to NoError and an empty text. */
    void resetError();

    /**
     * Unpacks everything into the destination, which is made with its parents if it is missing.
     *
     * Returns false when it had to stop. A damaged header ends it like the end of the archive does,
     * so true alone is not success: error() says NoError then. finished() is emitted once, and once
     * more before that when the archive cannot be opened.
     *
     * What was unpacked before an error stays; after a cancellation it is removed.
     */
    bool unpack(QString destination);
    /**
     * Takes back what the last unpack() made: its files, then its folders as far as they are empty
     * now; the destination itself stays. A path that cannot be removed is left without a message,
     * and getUnpackedFileList() keeps its names. Does nothing the second time.
     */
    void purge();
    /**
     * The names of the files and folders that the last unpack() made, in the order of the archive
     * and as they are stored there: relative to the destination, folders mostly with a slash at
     * the end. Parents that the archive does not list are not in it.
     */
    QStringList getUnpackedFileList() const;

    /**
     * Adds up the sizes of all entries, in bytes, by reading the archive once to its end. Folders
     * can have a size too (in ISO images), so that progress() may end below the sum. On failure,
     * also if data packed with gzip has another check sum, returns false and leaves size alone;
     * when the archive cannot be opened, finished() is emitted as well.
     */
    bool getUncompressedSize(quint64 &size);
    /** Opens the archive at its first entry and forgets an earlier cancel(). */
    bool startRead();
    /** Closes the archive; does nothing when it is closed. */
    void finishRead();
    /**
     * Copies the data of the current entry into a device that is open for writing, and returns how
     * many bytes it took from the archive. bytesDone is counted up by them; it and total are what
     * progress() tells. The caller must look at error(): also a failure returns a count.
     */
    quint64 extract(QIODevice &device, quint64 &bytesDone, quint64 total);

    /**
     * Asks the unpacking to stop, which it does before the next block of data or the next entry.
     * Thread-safe.
     *
     * startRead() forgets the wish, and unpack() calls it twice. Who must not be missed asks again
     * when progress() comes. After the last block there is nothing left to stop: the unpack
     * succeeds.
     */
    void cancel();

    /** The sleep after each block of data (400960 bytes), in ms; 30 unless set. */
    int blockPause() const;
    /** Sets that sleep; 0, and anything below, for none. It leaves a slow device some air. */
    void setBlockPause(int ms);

    /** Whether entries are kept inside the destination; false unless set. */
    bool isContained() const;
    /**
     * Decides over names that lead out of the destination, from the next unpack() on.
     *
     * Not contained, names are used as given: absolute ones and ".." are followed. Contained, an
     * entry that would land outside (an absolute name, a "..", a link in the destination that
     * points elsewhere) ends the unpack with WriteError, and nothing is written outside. "." and
     * ".." that stay inside are resolved first: "./a" is "a" and "a/../b" is "b", without making
     * an "a". purge() keeps to the same border.
     */
    void setContained(bool contained);

Q_SIGNALS:
    /**
     * A block of data was read and is about to be written: bytes of total so far, over the whole
     * archive.
     */
    void progress(quint64 bytes, quint64 total);
    /** The unpack is over, and the archive closed. See unpack() for when this comes twice. */
    void finished(VexaArchive::ArchiveError success);

private:
    struct Closer
    {
        void operator()(archive *handle) const;
    };

    bool unpackEntries(quint64 total);
    bool unpackEntry(archive_entry *entry, quint64 &bytesDone, quint64 total);
    bool unpackFile(const QString &name, quint64 size, quint64 &bytesDone, quint64 total);
    bool unpackFolder(const QString &name);
    bool extractWhole(QIODevice &device, quint64 size, quint64 &bytesDone, quint64 total);
    bool fail(ArchiveError error, const QString &text);
    bool failByLibrary(ArchiveError error, const QString &text);

    ArchiveError m_error = NoError;
    QString m_errorString;
    QStringList m_unpackedFiles;
    std::unique_ptr<GzipSource> m_gzip; // what the handle reads of, if the archive is packed so
    std::unique_ptr<archive, Closer> m_handle; // open while it is set
    std::atomic<bool> m_cancelled {false};
    QString m_archivePath;
    int m_blockPause = 30;
    bool m_contained = false;
    std::unique_ptr<UnpackFolder> m_folder; // of the last unpack
    QByteArray m_buffer;
};

#endif
