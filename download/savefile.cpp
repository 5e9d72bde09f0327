// SPDX-License-Identifier: MIT
#include "download/savefile_p.h"

bool SaveFile::open(const QString &path)
{
    m_file.close();
    m_file.setFileName(path);
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Append))
        return true;
    m_errorString = m_file.errorString();
    return false;
}

bool SaveFile::cutTo(qint64 size)
{
    if (m_file.size() <= size || m_file.resize(size))
        return true;
    m_errorString = m_file.errorString();
    return false;
}

bool SaveFile::append(const QByteArray &chunk)
{
    const qint64 before = m_file.size();
    // On a full disk a small write succeeds into the buffer and only the flush fails.
    if (m_file.write(chunk) == chunk.size() && m_file.flush())
        return true;
    m_errorString = m_file.errorString();
    // Closed, so that what is stuck in the buffer cannot come out with a later chunk.
    m_file.close();
    // If the cut fails too, the next attempt makes it before it asks the server.
    QFile::resize(m_file.fileName(), before);
    return false;
}
