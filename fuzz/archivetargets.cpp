// SPDX-License-Identifier: MIT
#include "archive/vexaarchive.h"
#include "fuzz/targets.h"
#include "fuzz/workspace.h"
#include "fuzz/writeguard.h"
#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <filesystem>
#include <memory>
#include <QDir>
#include <QFile>
#include <QStringList>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr quint64 MaxUnpacked = 1024 * 1024; // bytes; what is larger is cancelled
constexpr size_t MaxWritten = 256 * 1024; // bytes of an archive that is made here

using Listing = std::vector<std::string>;

// Everything below a folder but what is in "out"; files with their content.
Listing listed(const fs::path &folder)
{
    Listing found;
    for (auto it = fs::recursive_directory_iterator(folder); it != fs::end(it); ++it) {
        std::string line = it->path().native();
        if (it->path() == folder / "out")
            it.disable_recursion_pending();
        else if (it->is_symlink())
            line += " -> " + fs::read_symlink(it->path()).native();
        else if (it->is_regular_file())
            line += ": " + Workspace::readAll(QString::fromStdString(line)).toStdString();
        found.push_back(line);
    }
    std::sort(found.begin(), found.end());
    return found;
}

Listing names(const fs::path &folder)
{
    Listing found;
    for (const fs::directory_entry &entry : fs::recursive_directory_iterator(folder))
        found.push_back(entry.path().native());
    std::sort(found.begin(), found.end());
    return found;
}

/**
 * A destination with things beside it that nobody may touch, and with links in it that lead there:
 * the folder "out" in "world".
 */
class World
{
public:
    World()
        : m_root(Workspace::path(QStringLiteral("world")).toStdString())
    {
        fs::create_directories(m_root / "beside" / "folder");
        Workspace::file(QStringLiteral("world/beside/file"), "kept");
        renew();
        m_outside = listed(m_root);
    }

    /** An empty destination, but for the links. */
    void renew()
    {
        fs::remove_all(m_root / "out");
        // Not empty: of the folders that an archive lists, purge() takes all that are.
        fs::create_directories(m_root / "out" / "a" / "3");
        Workspace::file(QStringLiteral("world/out/a/3/kept"), "kept");
        fs::create_directory_symlink("../beside", m_root / "out" / "link");
        fs::create_directory_symlink("a", m_root / "out" / "inner");
        fs::create_symlink("loop", m_root / "out" / "loop");
        fs::create_symlink("../new", m_root / "out" / "nowhere");
        m_inside = names(m_root / "out");
    }

    QString out() const { return QString::fromStdString((m_root / "out").native()); }
    QByteArray root() const { return QByteArray::fromStdString(m_root.native()); }

    void requireOutsideUntouched() const
    {
        require(listed(m_root) == m_outside, "nothing beside the destination changes");
    }
    void requireEmptyAgain() const
    {
        require(names(m_root / "out") == m_inside, "purge() takes back all that was made");
    }

private:
    const fs::path m_root;
    Listing m_outside;
    Listing m_inside;
};

bool isThere(const QString &path)
{
    return fs::exists(fs::symlink_status(fs::path(path.toStdString())));
}

// Contained, "." and ".." are resolved in the text. Else such names need not lead to a path that is
// still there.
bool isMade(const QString &folder, const QString &name, bool contained)
{
    const QString path = folder + QLatin1Char('/') + name;
    if (contained)
        return isThere(QDir::cleanPath(path));
    const bool isPlain = !name.startsWith(QLatin1Char('/'))
        && !name.split(QLatin1Char('/')).contains(QLatin1String(".."));
    return !isPlain || isThere(path);
}

void requireNoHalfFiles(const QString &folder, const QStringList &unpacked)
{
    const QStringList found =
        QDir(folder).entryList({QStringLiteral("vexa-maps.*")}, QDir::AllEntries | QDir::System);
    for (const QString &name : found) {
        // An archive may well use such a name itself.
        const auto isOwn = [&name](const QString &entry) { return entry.contains(name); };
        require(std::any_of(unpacked.begin(), unpacked.end(), isOwn), "no half file is left");
    }
}

void unpack(World &world, const QString &path, bool contained)
{
    world.renew();
    VexaArchive archive(path);
    archive.setBlockPause(0);
    archive.setContained(contained);
    int ends = 0;
    QObject::connect(&archive, &VexaArchive::finished, [&ends] { ++ends; });
    QObject::connect(&archive, &VexaArchive::progress, [&archive](quint64 bytes, quint64) {
        if (bytes > MaxUnpacked)
            archive.cancel();
    });

    // Contained, nothing may even be tried elsewhere. Not contained, names lead anywhere, on
    // purpose; the guard keeps this machine whole.
    const std::string out = world.out().toStdString();
    const WriteGuard guard(contained ? QByteArray::fromStdString(out) : world.root());
    const bool complete = archive.unpack(world.out());

    require(!contained || !guard.hasRefused(), "a contained unpack writes in its folder only");
    const bool closed = archive.error() == VexaArchive::OpenError;
    require(ends == (closed ? 2 : 1), "finished() comes once, and twice for what does not open");
    require(complete || archive.error() != VexaArchive::NoError, "a failure has a code");
    require((archive.error() == VexaArchive::NoError) == archive.errorString().isEmpty()
                || archive.error() == VexaArchive::ReadError,
            "an error has a text");
    const QStringList unpacked = archive.getUnpackedFileList();
    requireNoHalfFiles(world.out(), unpacked);
    const bool cancelled = archive.error() == VexaArchive::CancelledError;
    for (const QString &name : unpacked) {
        require(cancelled || isMade(world.out(), name, contained), "what is listed was made");
    }

    if (!cancelled)
        archive.purge();
    require(!contained || !guard.hasRefused(), "a contained purge() keeps to its folder");
    if (contained) {
        world.requireOutsideUntouched();
        world.requireEmptyAgain();
    }
}

struct WriterCloser
{
    void operator()(archive *handle) const { archive_write_free(handle); }
};

struct EntryCloser
{
    void operator()(archive_entry *entry) const { archive_entry_free(entry); }
};

void writeEntry(archive *writer, char kind, const QByteArray &name)
{
    const std::unique_ptr<archive_entry, EntryCloser> entry(archive_entry_new());
    archive_entry_set_pathname(entry.get(), name.constData());
    archive_entry_set_perm(entry.get(), 0644);
    archive_entry_set_filetype(entry.get(), AE_IFREG);
    if (kind == 'd')
        archive_entry_set_filetype(entry.get(), AE_IFDIR);
    if (kind == 'l') {
        archive_entry_set_filetype(entry.get(), AE_IFLNK);
        archive_entry_set_symlink(entry.get(), "../beside");
    }
    if (kind == 'h')
        archive_entry_set_hardlink(entry.get(), "../beside/file");
    const bool hasData = kind != 'd' && kind != 'l' && kind != 'h';
    archive_entry_set_size(entry.get(), hasData ? name.size() : 0);
    // A name that the format cannot hold: the rest is worth trying all the same.
    if (archive_write_header(writer, entry.get()) >= ARCHIVE_WARN && hasData)
        archive_write_data(writer, name.constData(), size_t(name.size()));
}

// One entry a line: a letter for the kind, then the name.
QByteArray tarOf(const QByteArray &lines)
{
    std::vector<char> bytes(MaxWritten);
    size_t used = 0;
    const std::unique_ptr<archive, WriterCloser> writer(archive_write_new());
    archive_write_set_format_gnutar(writer.get());
    archive_write_set_bytes_in_last_block(writer.get(), 1);
    archive_write_open_memory(writer.get(), bytes.data(), bytes.size(), &used);
    for (const QByteArray &line : lines.split('\n')) {
        if (line.size() > 1)
            writeEntry(writer.get(), line.at(0), line.mid(1));
    }
    archive_write_close(writer.get());
    return QByteArray(bytes.data(), int(used));
}

void unpackBothWays(const QByteArray &bytes)
{
    static World world;
    const QString path = Workspace::file(QStringLiteral("archive"), bytes);
    unpack(world, path, true);
    unpack(world, path, false);
    fs::remove_all(fs::path(Workspace::path(QStringLiteral("world/new")).toStdString()));
    world.requireOutsideUntouched();
}

} // namespace

void fuzzArchive(const QByteArray &input)
{
    unpackBothWays(input);
}

void fuzzEntryNames(const QByteArray &input)
{
    unpackBothWays(tarOf(input));
}
