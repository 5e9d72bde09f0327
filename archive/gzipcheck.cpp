// SPDX-License-Identifier: MIT
#include "archive/gzipcheck_p.h"

#include <memory>
#include <vector>
#include <zlib.h>

namespace {

constexpr unsigned BufferSize = 128 * 1024;

struct Closer
{
    void operator()(gzFile_s *file) const { gzclose(file); } // nothing was written
};

} // namespace

bool GzipCheck::isSound(const QString &path)
{
    const std::unique_ptr<gzFile_s, Closer> file(gzopen(path.toUtf8().constData(), "rbe"));
    if (!file)
        return false;
    gzbuffer(file.get(), BufferSize); // if it cannot be had, the small one does
    if (gzdirect(file.get()))
        return true;
    std::vector<char> data(BufferSize);
    int count = 0;
    do
        count = gzread(file.get(), data.data(), BufferSize);
    while (count > 0);
    int error = Z_OK;
    gzerror(file.get(), &error); // a file that is cut off shows here, and not in the count
    return count == 0 && error == Z_OK;
}
