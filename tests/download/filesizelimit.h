// SPDX-License-Identifier: MIT
#pragma once

#include <signal.h>
#include <sys/resource.h>

/**
 * Lets this process write no file beyond a size while it lives: writes past it fail, as on a full
 * disk.
 */
class FileSizeLimit
{
public:
    explicit FileSizeLimit(unsigned long bytes)
    {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { lift(); }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

    void lift() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before;
};
