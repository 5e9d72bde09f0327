// SPDX-License-Identifier: MIT
#ifndef VEXA_GZIPSOURCE_P_H
#define VEXA_GZIPSOURCE_P_H

#include <cstdio>
#include <memory>
#include <QString>
#include <sys/types.h>
#include <vector>
#include <zlib.h>

struct archive;

/**
 * A file that was packed with gzip, and what libarchive reads of it: the plain data.
 *
 * libarchive could unpack it itself but passes over the check sum and the size behind the data, and
 * nothing else in a tar would tell a tile with a wrong byte. Here both are checked on the way.
 * Unpacking is nearly all the time that reading such an archive takes, so a pass of its own for
 * them would cost half as much again.
 *
 * A file can be several packed ones behind each other, and anything may follow them: some tools
 * fill up their blocks.
 */
class GzipSource
{
public:
    /** Null if the file is not packed so or cannot be opened; then it is libarchive's to read. */
    static std::unique_ptr<GzipSource> open(const QString &path);
    ~GzipSource();
    Q_DISABLE_COPY(GzipSource)

    /** Opens a new handle and returns libarchive's result. The handle must be freed before this. */
    int openArchive(archive *handle);
    /**
     * Reads on from where libarchive has stopped, and returns whether the file is whole and all its
     * check sums and sizes are right. A tar ends before its file does.
     */
    bool isSoundToTheEnd();
    /** Saves the work of checking from here on, for a file that was found sound. */
    void trustCheckSums();

private:
    enum class State { Unpacking, AtEnd, Damaged, CutOff, Unreadable };
    struct Closer
    {
        void operator()(std::FILE *file) const { std::fclose(file); } // nothing was written
    };

    explicit GzipSource(std::FILE *file);

    static ssize_t read(archive *handle, void *source, const void **data);
    size_t unpackMore();
    bool fill();
    bool isPackedHere() const;
    void goOnBehindEnd();
    const char *failure() const;

    std::unique_ptr<std::FILE, Closer> m_file;
    std::vector<unsigned char> m_packed;
    std::vector<unsigned char> m_plain;
    z_stream m_stream = {};
    State m_state = State::Unpacking;
};

#endif
