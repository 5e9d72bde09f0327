// SPDX-License-Identifier: MIT
#include "host/cli/lintarchives.h"

#include "host/shared/folderops.h"
#include <algorithm>
#include <QDir>
#include <QFileInfo>
#include <QLocale>

struct LintArchives::Sum
{
    struct Tile
    {
        qint64 size = -1;
        QString file; // the archive that it was seen in first
    };
    QHash<int, Tile> tiles; // by number
    QHash<QString, int> baseNames;
    QSet<QString> files; // that were added
};

LintArchives::LintArchives(const QString &folder, const QUrl &baseUri, LintReport *report)
    : m_folder(folder)
    , m_baseUri(baseUri)
    , m_report(report)
{ }

void LintArchives::check(const LintCatalogue &catalogue)
{
    Sum sum;
    FirstLines lines; // of the regions, by archive
    std::vector<QString> files; // by region; empty where there is none to look into
    for (const LintRegion &region : catalogue.regions()) {
        const QString file = checkRegion(catalogue, region, &lines);
        files.push_back(file);
        if (!file.isEmpty() && !sum.files.contains(file)) {
            sum.files.insert(file);
            addToSum(file, contentOf(file), &sum);
        }
    }
    checkParents(catalogue, files);
    for (const QString &link : catalogue.unlistedLinks())
        m_named.insert(QDir::cleanPath(link));
}

// The archive's path below the folder; empty if there is none to look into.
QString LintArchives::checkRegion(const LintCatalogue &catalogue, const LintRegion &region,
                                  FirstLines *lines)
{
    const QString file = localFile(catalogue, region);
    if (file.isEmpty())
        return QString();
    m_named.insert(file);
    if (const int first = lines->before(file, region.place.line))
        m_report->add(catalogue.file(), region.linkPlace, "same-archive",
                      tr("the region in line %1 has the same archive").arg(first));
    return checkFile(catalogue, region, file) ? file : QString();
}

// The archive's path below the folder; empty if it is not to be looked for there.
QString LintArchives::localFile(const LintCatalogue &catalogue, const LintRegion &region)
{
    const auto refuse = [&](const QString &text) {
        m_report->add(catalogue.file(), region.linkPlace, "link-address", text);
        return QString();
    };
    if (region.link.isEmpty())
        return refuse(tr("the link is empty: the region cannot be installed"));
    const QUrl link(region.link);
    const QUrl url = m_baseUri.resolved(link);
    const bool isHttp =
        url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (!url.isValid() || url.host().isEmpty() || !isHttp)
        return refuse(tr("%1 is no http address: the region cannot be installed")
                          .arg(LintReport::quoted(region.link)));
    if (region.link.trimmed() != region.link)
        return refuse(
            tr("there are blanks around the address %1").arg(LintReport::quoted(region.link)));
    if (url.hasFragment())
        return refuse(
            tr("%1: nobody reads what is behind the \"#\"").arg(LintReport::quoted(region.link)));
    const QString base = m_baseUri.path();
    const bool isOurs = url.scheme() == m_baseUri.scheme() && url.host() == m_baseUri.host()
        && url.port() == m_baseUri.port() && url.path().startsWith(base);
    if (!isOurs && link.scheme().isEmpty())
        return refuse(tr("%1 leads out of what is published").arg(LintReport::quoted(region.link)));
    if (!isOurs) {
        ++m_report->archivesElsewhere;
        return QString();
    }
    const QString file = QUrl::fromPercentEncoding(
        url.path(QUrl::FullyEncoded).mid(m_baseUri.path(QUrl::FullyEncoded).size()).toUtf8());
    if (file.isEmpty() || file.endsWith(QLatin1Char('/')))
        return refuse(tr("%1 names a folder and no archive").arg(LintReport::quoted(region.link)));
    QString path = QDir::cleanPath(file);
    if (FolderOps::leadsOut(path))
        return refuse(tr("%1 leads out of what is published").arg(LintReport::quoted(region.link)));
    return path;
}

bool LintArchives::checkFile(const LintCatalogue &catalogue, const LintRegion &region,
                             const QString &file)
{
    const QFileInfo info(m_folder + QLatin1Char('/') + file);
    if (!info.isFile()) {
        m_report->add(catalogue.file(), region.linkPlace, "missing-archive",
                      tr("there is no archive %1").arg(LintReport::quoted(file)));
        return false;
    }
    if (region.sizeIsSaid && info.size() != region.size)
        m_report->add(catalogue.file(), region.sizePlace, "other-size",
                      tr("the archive %1 has %2 bytes and not %3: devices refuse it")
                          .arg(LintReport::quoted(file), QString::number(info.size()),
                               QString::number(region.size)));
    return true;
}

const LintArchives::Content &LintArchives::contentOf(const QString &file)
{
    const auto known = m_contents.constFind(file);
    if (known != m_contents.cend())
        return *known;
    if (onArchive)
        onArchive(file);
    ++m_report->archives;
    LintArchive archive(m_folder, file, m_report);
    archive.check();
    std::vector<std::pair<int, qint64>> tiles;
    tiles.reserve(archive.tiles().size());
    for (const LintTile &tile : archive.tiles())
        tiles.emplace_back(numberOf(tile.path), tile.size);
    std::sort(tiles.begin(), tiles.end());
    Content content;
    content.isWhole = archive.isWhole();
    for (const auto &[number, size] : tiles) {
        content.tiles.push_back(number);
        content.sizes.push_back(size);
    }
    return *m_contents.insert(file, content);
}

int LintArchives::numberOf(const QString &tile)
{
    const auto known = m_numbers.constFind(tile);
    if (known != m_numbers.cend())
        return *known;
    m_numbers.insert(tile, int(m_tiles.size()));
    m_tiles.push_back(tile);
    return int(m_tiles.size()) - 1;
}

void LintArchives::addToSum(const QString &file, const Content &content, Sum *sum)
{
    for (size_t i = 0; i < content.tiles.size(); ++i) {
        const int number = content.tiles[i];
        const qint64 size = content.sizes[i];
        const QString &path = m_tiles[size_t(number)];
        const auto known = sum->tiles.constFind(number);
        if (known == sum->tiles.cend()) {
            sum->tiles.insert(number, {size, file});
        } else if (size >= 0 && known->size >= 0 && size != known->size) {
            m_report->add(file, {}, "other-tile",
                          tr("%1 has another size than in %2: the later install wins")
                              .arg(LintReport::quoted(path), LintReport::quoted(known->file)));
        }
        const QString baseName = path.section(QLatin1Char('/'), -1).section(QLatin1Char('.'), 0, 0);
        const int first = sum->baseNames.value(baseName, number);
        if (first != number)
            m_report->add(
                file, {}, "same-name",
                tr("%1 has the name of %2: names of tiles must differ in front of the "
                   "first dot")
                    .arg(LintReport::quoted(path), LintReport::quoted(m_tiles[size_t(first)])));
        sum->baseNames.insert(baseName, first);
    }
}

// Whoever installs a country expects all of its provinces.
void LintArchives::checkParents(const LintCatalogue &catalogue, const std::vector<QString> &files)
{
    const std::vector<LintRegion> &regions = catalogue.regions();
    for (size_t i = 0; i < regions.size(); ++i) {
        const int parent = regions[i].parent;
        if (parent < 0 || files[i].isEmpty() || files[size_t(parent)].isEmpty())
            continue;
        const Content &outer = m_contents[files[size_t(parent)]];
        const Content &inner = m_contents[files[i]];
        std::vector<int> lacking;
        std::set_difference(inner.tiles.begin(), inner.tiles.end(), outer.tiles.begin(),
                            outer.tiles.end(), std::back_inserter(lacking));
        if (outer.isWhole && inner.isWhole && !lacking.empty())
            m_report->add(catalogue.file(), regions[i].place, "parent-lacks-tiles",
                          tr("%1 lies in %2, whose archive lacks tiles of it, such as %3")
                              .arg(LintReport::quoted(regions[i].id),
                                   LintReport::quoted(regions[size_t(parent)].id),
                                   LintReport::quoted(m_tiles[size_t(lacking.front())])));
    }
}

void LintArchives::checkUnnamed()
{
    QSet<QString> folders;
    for (const QString &file : m_named)
        folders.insert(file.section(QLatin1Char('/'), 0, -2));
    for (const QString &folder : std::as_const(folders)) {
        if (folder.isEmpty())
            continue; // the catalogue's own folder has other files, too
        const QStringList names = QDir(m_folder + QLatin1Char('/') + folder).entryList(QDir::Files);
        for (const QString &name : names) {
            const QString file = folder + QLatin1Char('/') + name;
            // A check sum or a signature has the archive's name and one more ending.
            const QString archive = file.section(QLatin1Char('.'), 0, -2);
            if (!m_named.contains(file) && !m_named.contains(archive))
                m_report->add(file, {}, "unnamed-archive", tr("no catalogue names this file"));
        }
    }
}
