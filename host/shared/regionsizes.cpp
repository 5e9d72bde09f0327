// SPDX-License-Identifier: MIT
#include "host/shared/regionsizes.h"

#include "host/shared/tilelist.h"
#include <QFileInfo>
#include <QSet>

namespace {

qint64 sizeOf(const QStringList &files, const QString &folder, const std::atomic<bool> &stop)
{
    qint64 bytes = 0;
    QSet<QString> counted; // an entry may come twice
    for (const QString &file : files) {
        if (stop)
            break;
        const QString tile = TileList::plain(file);
        const int before = int(counted.size());
        counted.insert(tile);
        if (int(counted.size()) > before)
            bytes += QFileInfo(folder + QLatin1Char('/') + tile).size();
    }
    return bytes;
}

} // namespace

RegionSizes::RegionSizes(QObject *parent)
    : QObject(parent)
{
    m_thread.setMaxThreadCount(1); // Two would only fight for the card.
}

RegionSizes::~RegionSizes()
{
    m_stop = true;
    m_thread.clear();
    m_thread.waitForDone();
}

void RegionSizes::ask(const QString &id, const QStringList &files, const QString &folder)
{
    const int question = ++m_lastQuestion;
    m_questions.insert(id, question);
    m_thread.start([this, id, files, folder, question] {
        const qint64 bytes = sizeOf(files, folder, m_stop);
        if (m_stop)
            return;
        QMetaObject::invokeMethod(
            this, [this, id, question, bytes] { onMeasured(id, question, bytes); },
            Qt::QueuedConnection);
    });
}

void RegionSizes::forget(const QString &id)
{
    m_questions.remove(id);
}

void RegionSizes::onMeasured(const QString &id, int question, qint64 bytes)
{
    if (m_questions.value(id) != question)
        return;
    m_questions.remove(id);
    Q_EMIT measured(id, bytes);
}
