// SPDX-License-Identifier: MIT
#include "host/cli/lintarchive.h"

#include "archive/archivenames_p.h"
#include "archive/vexaarchive.h"
#include "host/shared/folderops.h"
#include <archive.h>
#include <archive_entry.h>
#include <memory>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

using ArchiveNames::Utf8Locale;

namespace {

constexpr size_t ReadBlockSize = 64 * 1024;

struct Closer
{
    void operator()(archive *handle) const { archive_read_free(handle); }
};

bool isTilePath(const QString &path)
{
    static const QRegularExpression form(
        QStringLiteral("\\A[0-9a-f]/[0-9a-f]/[^/.][^/]*\\.cdt\\z"));
    return form.match(path).hasMatch();
}

} // namespace

LintArchive::LintArchive(const QString &folder, const QString &file, LintReport *report)
    : m_path(folder + QLatin1Char('/') + file)
    , m_file(file)
    , m_report(report)
{ }

void LintArchive::check()
{
    m_isWhole = readList() && checkSum();
    if (m_isWhole && m_tiles.empty())
        add("no-tiles", tr("there is no tile in it: it cannot be installed"));
}

bool LintArchive::readList()
{
    const Utf8Locale locale;
    const std::unique_ptr<archive, Closer> handle(archive_read_new());
    if (!handle)
        return false;
    // The same as the extractor's. Both only warn, of formats that need a program.
    archive_read_support_filter_all(handle.get());
    archive_read_support_format_all(handle.get());
    if (archive_read_open_filename(handle.get(), m_path.toUtf8().constData(), ReadBlockSize)
            == ARCHIVE_OK
        && readEntries(handle.get()))
        return true;
    add("damaged",
        tr("it is damaged or no archive: %1")
            .arg(ArchiveNames::decoded(archive_error_string(handle.get()))));
    return false;
}

bool LintArchive::readEntries(archive *handle)
{
    archive_entry *entry = nullptr;
    int result = archive_read_next_header(handle, &entry);
    while (result == ARCHIVE_OK) {
        checkEntry(entry);
        result = archive_read_next_header(handle, &entry);
    }
    return result == ARCHIVE_EOF; // a warning ends the unpacking too
}

void LintArchive::checkEntry(archive_entry *entry)
{
    const QByteArray bytes = archive_entry_pathname(entry);
    const QString name = ArchiveNames::decoded(bytes.constData());
    if (name.isEmpty()) {
        add("no-name", tr("an entry has no usable name: the archive is refused"));
        return;
    }
    if (name.toUtf8() != bytes)
        add("encoding", tr("the name %1 is not UTF-8").arg(LintReport::quoted(name)));
    if (!isUnpacked(entry, name))
        return;
    const bool isFolder = archive_entry_filetype(entry) == AE_IFDIR;
    const QString path = QDir::cleanPath(name);
    if (!checkPlace(name, path, isFolder) || isFolder)
        return;
    checkFile(name, path, archive_entry_size_is_set(entry) ? archive_entry_size(entry) : -1);
}

// Reports why an entry is not. One of an encrypted archive speaks for all.
bool LintArchive::isUnpacked(archive_entry *entry, const QString &name)
{
    const auto type = archive_entry_filetype(entry);
    if (archive_entry_hardlink(entry) || type == AE_IFLNK) {
        add("link", tr("%1 is a link: it is not unpacked").arg(LintReport::quoted(name)));
        return false;
    }
    if (type == AE_IFCHR || type == AE_IFBLK) {
        add("device", tr("%1 is a device: it is not unpacked").arg(LintReport::quoted(name)));
        return false;
    }
    if (type != AE_IFREG && type != AE_IFDIR) {
        add("special-file",
            tr("%1 is no file or folder: it is not unpacked").arg(LintReport::quoted(name)));
        return false;
    }
    if (archive_entry_is_encrypted(entry) && !m_isEncryptedSaid) {
        m_isEncryptedSaid = true;
        add("encrypted",
            tr("%1 is encrypted: the archive is refused").arg(LintReport::quoted(name)));
    }
    return true;
}

// Where the entry would come to lie. The extractor stops at the first that cannot be made.
bool LintArchive::checkPlace(const QString &name, const QString &path, bool isFolder)
{
    if (path.startsWith(QLatin1Char('/')) || FolderOps::leadsOut(path)) {
        add("outside",
            tr("%1 leads out of the destination: the archive is refused")
                .arg(LintReport::quoted(name)));
        return false;
    }
    QString folder = isFolder ? path : path.section(QLatin1Char('/'), 0, -2);
    bool isClash = !isFolder && (m_paths.contains(path) || m_folders.contains(path));
    while (!folder.isEmpty() && folder != QLatin1String(".")) {
        isClash = isClash || m_paths.contains(folder);
        m_folders.insert(folder);
        folder = folder.section(QLatin1Char('/'), 0, -2);
    }
    if (!isFolder)
        m_paths.insert(path);
    if (isClash)
        add("duplicate-entry",
            tr("%1 is in the archive twice, or as file and folder: it is refused")
                .arg(LintReport::quoted(name)));
    return !isClash;
}

void LintArchive::checkFile(const QString &name, const QString &path, qint64 size)
{
    if (isTilePath(path))
        m_tiles.push_back({path, size});
    else if (path.contains(QLatin1String(".cdt"), Qt::CaseInsensitive))
        add("layout",
            tr("no device sees %1: tiles are h1/h2/name.cdt in lower case, with h1 and h2 of 0 to "
               "f")
                .arg(LintReport::quoted(name)));
    else
        add("no-tile",
            tr("%1 is no tile: it stays on the device for ever").arg(LintReport::quoted(name)));
}

// libarchive does not look at gzip's check sum; devices do.
bool LintArchive::checkSum()
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly) || file.read(2) != QByteArray("\x1f\x8b", 2))
        return true;
    file.close();
    VexaArchive archive(m_path);
    quint64 size = 0;
    if (archive.getUncompressedSize(size))
        return true;
    add("damaged", tr("it is damaged: %1").arg(archive.errorString()));
    return false;
}

void LintArchive::add(const char *kind, const QString &text)
{
    m_report->add(m_file, {}, kind, text);
}
