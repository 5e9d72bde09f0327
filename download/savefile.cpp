// SPDX-License-Identifier: MIT
#include "download/savefile_p.h"

namespace {

// Small enough to stay in the processor's cache between the two copies, large enough that the
// calls do not count.
constexpr int BlockSize = 256 * 1024;

} // namespace

bool SaveFile::open(const QString &path)
{
    m_file.close();
    m_file.setFileName(path);
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        m_block.resize(BlockSize);
        return true;
    }
    m_errorString = m_file.errorString();
    return false;
}

void SaveFile::close()
{
    m_file.close();
    m_block.clear();
}

bool SaveFile::cutTo(qint64 size)
{
    if (m_file.size() <= size || m_file.resize(size))
        return true;
    m_errorString = m_file.errorString();
    return false;
}

qint64 SaveFile::append(QIODevice &source)
{
    const qint64 before = m_file.size();
    qint64 appended = 0;
    for (;;) {
        const qint64 length = source.read(m_block.data(), m_block.size());
        if (length <= 0)
            return appended;
        if (m_file.write(m_block.constData(), length) != length)
            break;
        appended += length;
    }
    m_errorString = m_file.errorString();
    close();
    // If the cut fails too, the next attempt makes it before it asks the server.
    QFile::resize(m_file.fileName(), before);
    return -1;
}
