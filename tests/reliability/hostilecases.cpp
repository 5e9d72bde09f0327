// SPDX-License-Identifier: MIT
#include "hostilecases.h"

#include "testutils/archivebuilder.h"
#include "testutils/reporttable.h"

using namespace HostileCases;
using HostileArchive::Entry;
using HostileArchive::Type;

namespace {

/** The entries behind one good tile; "@" in a name or target stands for the place around. */
Writer entries(const QList<Entry> &bad)
{
    return [bad](const QString &path, Format format, const QString &place) {
        QList<Entry> all {{"0/good.cdt", "good"}};
        for (Entry entry : bad) {
            entry.name.replace('@', place.toUtf8());
            entry.target.replace('@', place.toUtf8());
            all.append(entry);
        }
        return HostileArchive::write(path, format, all);
    };
}

/** The entry behind one good tile, in a zip alone. */
Writer zipEntry(const RawZip::Entry &bad)
{
    return [bad](const QString &path, Format format, const QString &) {
        if (format != Format::Zip)
            return false;
        TestFile::write(path, RawZip().add({"0/good.cdt", "good"}).add(bad).bytes());
        return true;
    };
}

/** A whole archive, harmed behind its making. */
Writer harmed(const std::function<void(const QString &path)> &harm)
{
    return [harm](const QString &path, Format format, const QString &) {
        const bool written = HostileArchive::write(
            path, format,
            {{"0/good.cdt", "good"}, {"0/find me.cdt", ArchiveBuilder::noise(20000)}});
        harm(path);
        return written;
    };
}

void flipAByte(const QString &path)
{
    const QByteArray noise = ArchiveBuilder::noise(20000);
    QByteArray bytes = TestFile::read(path);
    const auto at = bytes.indexOf(noise.mid(1000, 16));
    if (at >= 0) {
        bytes[at] = char(~bytes.at(at));
        TestFile::write(path, bytes);
        return;
    }
    // Packed: the check sum at the very end.
    bytes[bytes.size() - 8] = char(~bytes.at(bytes.size() - 8));
    TestFile::write(path, bytes);
}

bool writeEncrypted(const QString &path, Format format, const QString &)
{
    if (format == Format::TarGz)
        return false;
    ArchiveBuilder builder;
    builder.addFile(QStringLiteral("0/secret.cdt"), "secret");
    const QString name = QStringLiteral("a.encrypted.") + HostileArchive::nameOf(format);
    TestFile::write(path, TestFile::read(builder.make(name)));
    return true;
}

bool writeMany(const QString &path, Format format, const QString &)
{
    // The most that a zip of the old kind can count.
    const int number = ReportTable::longForm() ? 65535 : 1023;
    QList<Entry> all;
    for (int i = 0; i < number; ++i)
        all.append({"0/t" + QByteArray::number(i, 16) + ".cdt", "tile"});
    return HostileArchive::write(path, format, all);
}

QByteArray deep(int length)
{
    QByteArray name;
    while (name.size() < length - 101)
        name += QByteArray(100, 'd') + '/';
    return name.leftJustified(length, 'f');
}

// A tar whose last header promises more than there is.
bool writeTooShort(const QString &path, Format format, const QString &)
{
    if (format != Format::TarGz)
        return false;
    const QByteArray tar =
        RawTar().add("0/good.cdt", "good").add("lie", QByteArray(20000, 'x')).bytes();
    TestFile::write(path, HostileArchive::gzipped(tar.left(5000)));
    return true;
}

constexpr const char *LeadsOut = "refused: leads out";
constexpr const char *BadName = "refused: the name cannot be used";
constexpr const char *NoFolder = "refused: its folder cannot be made";
constexpr const char *Damaged = "refused: damaged data";
constexpr const char *Unreadable = "refused: cannot be read; nothing kept";
constexpr const char *Skipped = "skipped";

Outcome both(const char *outcome)
{
    return {outcome, outcome};
}

QList<Case> namesThatLeadOut()
{
    const Outcome escapes {"unpacked; outside: escape", LeadsOut};
    // Only zip has archives from systems where a backslash parts folders.
    const Outcome justAName = both("unpacked; inside: ..\\escape");
    return {
        {"\"..\" in front", entries({{"../escape", "bad"}}), escapes},
        // The folder in front of the ".." is not there.
        {"\"..\" in the middle", entries({{"a/../../escape", "bad"}}), {BadName, LeadsOut}},
        {"a folder outside",
         entries({{"../escape/", "", Type::Folder}}),
         {"unpacked; outside: escape/", LeadsOut}},
        {"an absolute name",
         entries({{"@/absolute/f", "bad"}}),
         {"unpacked; outside: absolute/, absolute/f", LeadsOut}},
        {"backslashes",
         entries({{"..\\escape", "bad"}}),
         escapes,
         {{Format::SevenZip, justAName}, {Format::TarGz, justAName}}},
        {"a list that names another file than the entry",
         zipEntry({"harmless", "bad", 0100644, "../escape"}), both("unpacked; inside: harmless")},
        {"an entry that names another file than the list",
         zipEntry({"../escape", "bad", 0100644, "harmless"}), escapes},
    };
}

QList<Case> linksAndDevices()
{
    return {
        {"a symbolic link out, then a file through it",
         entries({{"link", "", Type::SymLink, "../keep"}, {"link/map.cdt", "bad"}}),
         both("unpacked; inside: link/, link/map.cdt")},
        {"an absolute link out, then a file in its place",
         entries({{"link", "", Type::SymLink, "@/keep/map.cdt"}, {"link", "bad"}}),
         both("unpacked; inside: link")},
        {"a hard link out, then a file in its place",
         entries({{"hard", "", Type::HardLink, "../keep/map.cdt"}, {"hard", "bad"}}),
         both("unpacked; inside: hard")},
        {"device nodes",
         entries({{"null", "", Type::CharacterDevice}, {"disk", "", Type::BlockDevice}}),
         both(Skipped)},
        // libarchive takes it for a file in a zip: some packers mark files so.
        {"a fifo",
         entries({{"fifo", "", Type::Fifo}}),
         both(Skipped),
         {{Format::Zip, both("unpacked; inside: fifo")}}},
        {"a socket", entries({{"socket", "", Type::Socket}}), both(Skipped)},
        {"setuid, setgid and sticky bits", entries({{"tool", "bad", Type::File, "", 07755}}),
         both("unpacked; inside: tool")},
    };
}

QList<Case> oddNames()
{
    return {
        {"the same name twice", entries({{"0/good.cdt", "bad"}}), both(BadName)},
        {"a file where a folder stands", entries({{"0", "bad"}}), both(BadName)},
        {"a folder where a file stands", entries({{"0/good.cdt/", "", Type::Folder}}),
         both("refused: the folder cannot be made")},
        {"a file below a file", entries({{"0/good.cdt/f", "bad"}}), both(NoFolder)},
        {"a name of dots", entries({{".", "bad"}}), both(BadName)},
        {"a name of 4,000 bytes", entries({{QByteArray(4000, 'n'), "bad"}}), both(BadName)},
        {"folders of 4,000 bytes", entries({{deep(4000), "bad"}}),
         both("unpacked; inside: 40 names")},
        {"folders of 5,000 bytes", entries({{deep(5000), "bad"}}), both(NoFolder)},
        // The name ends there.
        {"a NUL in a name", entries({{QByteArray("nul\0/../../escape", 17), "bad"}}),
         both("unpacked; inside: nul")},
        {"a line end in a name", entries({{"new\nline", "bad"}}),
         both("unpacked; inside: new(line end)line")},
        // Taken for Latin-1. 7z has no bytes in its names.
        {"a name that is no UTF-8", entries({{"caf\xe9\xff", "bad"}}),
         both("unpacked; inside: caféÿ")},
        {ReportTable::longForm() ? "65,535 entries" : "1,023 entries", writeMany,
         both(ReportTable::longForm() ? "unpacked; inside: 65535 names"
                                      : "unpacked; inside: 1023 names")},
    };
}

QList<Case> damage()
{
    return {
        {"encrypted", writeEncrypted, both("refused: damaged data; nothing kept")},
        {"cut off",
         harmed([](const QString &path) { TestFile::cut(path, 15000); }),
         both(Unreadable),
         {{Format::TarGz, both("refused: no archive; nothing kept")}}},
        {"a wrong check sum",
         harmed(flipAByte),
         both(Damaged),
         {{Format::TarGz, both(Unreadable)}}},
        {"a size that is too large", zipEntry({"lie", "short", 0100644, {}, 5000}), both(Damaged)},
        {"a size that is too small", zipEntry({"lie", "much longer", 0100644, {}, 2}),
         both(Damaged)},
        {"a packed size beyond the end", zipEntry({"lie", "short", 0100644, {}, 5, 900000}),
         both(Damaged)},
        {"a size beyond the end", writeTooShort, both(Unreadable)},
    };
}

} // namespace

QList<Case> HostileCases::cases()
{
    return namesThatLeadOut() + linksAndDevices() + oddNames() + damage();
}
