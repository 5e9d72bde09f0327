// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/httpfile.h"
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <QUrl>

class QNetworkAccessManager;
struct archive_entry;

/** A file that an archive would unpack to. */
struct ArchiveFile
{
    QString path; ///< relative, with "/", without "." and ".."
    qint64 size = 0; ///< unpacked, in bytes
};

inline bool operator==(const ArchiveFile &a, const ArchiveFile &b)
{
    return a.path == b.path && a.size == b.size;
}

/**
 * Tells what an archive on a web server holds, before it is downloaded and without storing it.
 *
 * Formats that keep a list (zip, 7z) cost some kilobytes where the server knows ranges. Others
 * (tar.gz), and all where it does not, are read through once. The answer is what unpacking would
 * make: an archive that the extractor refuses for its list (damaged, with names that lead out) is
 * refused here too, while what only shows in the files' bytes is not seen.
 *
 * list() waits in an event loop of its own; the object must not be deleted meanwhile.
 */
class RemoteArchive : public QObject
{
    Q_OBJECT

public:
    enum class Failure {
        None,
        Network, ///< the server does not deliver anything; the next file is not worth a try
        Refused, ///< the server does not deliver this file
        Archive, ///< it is no archive, or one that is not to be unpacked
        Aborted,
    };

    /** The network is not owned; patience in ms, see HttpFile. */
    RemoteArchive(QNetworkAccessManager *network, const QUrl &url, int patience,
                  QObject *parent = nullptr);

    /** Once; tells whether the list is whole. */
    bool list();
    void abort();

    /** Sorted by path. */
    QList<ArchiveFile> files() const;
    /** Bytes of the archive; -1 if the server did not tell. */
    qint64 size() const;
    Failure failure() const;
    QString errorString() const;
    /** What the list has cost. */
    qint64 bytesReceived() const;

private:
    class Source;

    class RangedSource;
    class StreamedSource;
    class WindowSource;
    enum class Listing { Listed, Failed, Unusual };

    bool listFrom(Source &source, bool isZip);
    Listing listByDirectory(Source &source);
    bool listByLibrary(Source &source);
    bool addEntry(archive_entry *entry);
    bool add(const QString &name, qint64 size, bool isFile);
    bool fail(Failure failure, const QString &text);
    bool failByNetwork();

    HttpFile m_file;
    QString m_name; // for texts
    QMap<QString, qint64> m_files;
    Failure m_failure = Failure::None;
    QString m_errorString;
};
