// SPDX-License-Identifier: MIT
#include "download/downloadmanager.h"
#include "download/httpanswer_p.h"
#include "download/request.h"
#include "download/requestqueue.h"
#include "fuzz/targets.h"
#include "fuzz/workspace.h"
#include "fuzz/writeguard.h"
#include "host/shared/savedqueue.h"
#include "plugin/vexaconstants.h"
#include "plugin/vexasettings.h"
#include <filesystem>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QUrl>

namespace {

/**
 * A folder for the settings, another one each time: QSettings remembers some files that it has
 * closed, and takes one that is as long and as old for the same.
 */
class SettingsFolder
{
public:
    explicit SettingsFolder(const QByteArray &bytes)
    {
        static int number = 0;
        constexpr int Remembered = 100; // more than QSettings does
        const QString name = QStringLiteral("settings/%1").arg(number++ % Remembered);
        m_path = Workspace::path(name);
        QDir(m_path).removeRecursively();
        QDir().mkpath(m_path + QLatin1String("/vexa"));
        Workspace::file(name + QLatin1String("/vexa/vexa.conf"), bytes);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_path);
        VexaSettings::destroy();
    }
    ~SettingsFolder() { VexaSettings::destroy(); }
    Q_DISABLE_COPY(SettingsFolder)

    QByteArray path() const { return m_path.toUtf8(); }

private:
    QString m_path;
};

// Half a character (a lone surrogate) has no form in UTF-8, and so none in the file.
QString asStored(const QString &text)
{
    return QString::fromUtf8(text.toUtf8());
}

QStringList described(const QList<Request> &requests)
{
    QStringList lines;
    for (const Request &request : requests) {
        lines << asStored(request.id) << QString::number(request.type)
              << QString::number(request.state) << asStored(request.url)
              << asStored(request.payload.toString());
        const QStringList paths = request.payload.toStringList();
        for (const QString &path : paths)
            lines << asStored(path);
    }
    return lines;
}

/** What an engine finds at its start. */
struct Restored
{
    QStringList requests;
    bool suspended;
};

Restored restored()
{
    RequestQueue<Request> queue(nullptr);
    DownloadManager manager(&queue, nullptr);
    manager.saveState();
    return {described(queue.snapshot()), manager.suspended()};
}

} // namespace

void fuzzSettings(const QByteArray &input)
{
    const SettingsFolder folder(input);
    const WriteGuard guard(folder.path());
    const QStringList saved = described(SavedQueue::read());
    const Restored first = restored();
    require(first.requests == saved, "the engine and its host find the same requests");
    VexaSettings::destroy(); // the next one reads the file
    const Restored second = restored();
    require(second.requests == first.requests, "the requests survive a second start");
    require(second.suspended == first.suspended, "a suspension survives a second start");
    require(!guard.hasRefused(), "nothing but the settings is written at the start");
}

void fuzzContentRange(const QByteArray &input)
{
    const QString value = QString::fromLatin1(input);
    const ContentRange range = ContentRange::parse(value);
    require(range.first >= -1 && range.total >= -1, "what is no number is -1");
    if (range.first >= 0 && range.total >= 0) {
        const ContentRange again =
            ContentRange::parse(QStringLiteral("bytes %1-%1/%2").arg(range.first).arg(range.total));
        require(again.first == range.first && again.total == range.total,
                "numbers are read as they are written");
    }

    static RequestQueue<Request> queue(nullptr);
    static const DownloadManager manager(&queue, nullptr);
    const qint64 told = manager.bytesTotalFromContentRange(value);
    require(range.total < 0 || told == range.total, "both readers find the same size");
    for (const int status : {200, 206, 302, 416}) {
        for (const qint64 start : {qint64(0), qint64(100)}) {
            const BodyUse use = judgeBody(status, range, start, 2000);
            const bool fits = status != 206 || range.first < 0 || range.first == start;
            require(use != BodyUse::Append || fits, "only what fits is appended");
        }
    }
}

void fuzzUrl(const QByteArray &input)
{
    const QString path = DownloadManager::fileNameFromUrl(QUrl::fromEncoded(input));
    const QString folder = QDir::homePath() + TMP_DIR_PATH;
    require(path.startsWith(folder), "a save file lies in the download folder");
    const QString name = path.mid(folder.size());
    require(!name.contains(QLatin1Char('/')), "a save file lies in no other folder");

    const WriteGuard guard(QFile::encodeName(folder.chopped(1)));
    QFile file(path);
    require(file.open(QIODevice::WriteOnly | QIODevice::Append), "a save file can be made");
    require(file.remove(), "a save file can be removed");
}
