// SPDX-License-Identifier: MIT
#include "host/shared/folderexchange.h"

#include "catalog/mapcatalogprocessor.h"
#include "host/shared/catalogfiles.h"
#include "plugin/dataroot.h"
#include <algorithm>
#include <QFileInfo>

namespace {

const QLatin1String Backup("_");
const QLatin1String Voices("/voices");

QString versionIn(const QString &catalogFolder)
{
    return MapCatalogProcessor().readLocalMapVersion(catalogFolder + QLatin1Char('/')
                                                     + CatalogFiles::contentName());
}

QString inside(const QString &folder, const QString &path)
{
    return folder + QLatin1Char('/') + QFileInfo(path).fileName();
}

} // namespace

FolderExchange::FolderExchange(const SwapNote &note)
    : m_voices(note.voices)
{
    const QString from = arrivingSuffix(note);
    const QString to = leavingSuffix(note);
    m_catalogs = {DataRoot::catalogFolder(),
                  DataRoot::catalogFolder(from),
                  DataRoot::catalogFolder(to),
                  inside(DataRoot::catalogFolder(), DataRoot::catalogFolder(from)),
                  note.leavingCatalog,
                  note.arrivingCatalog,
                  note.arrivingVersion};
    m_tiles = {DataRoot::tileCacheFolder(),
               DataRoot::tileCacheFolder(from),
               DataRoot::tileCacheFolder(to),
               inside(DataRoot::tileCacheFolder(), DataRoot::tileCacheFolder(from)),
               note.leavingTiles,
               note.arrivingTiles,
               QString()};
}

SwapNote FolderExchange::noteOf(SwapNote::Operation operation, const QString &suffix)
{
    SwapNote note;
    note.operation = operation;
    note.suffix = suffix;
    const QString from = arrivingSuffix(note);
    note.leavingCatalog = FolderOps::identityOf(DataRoot::catalogFolder());
    note.leavingTiles = FolderOps::identityOf(DataRoot::tileCacheFolder());
    note.arrivingCatalog = FolderOps::identityOf(DataRoot::catalogFolder(from));
    note.arrivingTiles = FolderOps::identityOf(DataRoot::tileCacheFolder(from));
    note.voices = FolderOps::identityOf(DataRoot::tileCacheFolder() + Voices);
    note.arrivingVersion = versionIn(DataRoot::catalogFolder(from));
    return note;
}

QString FolderExchange::arrivingSuffix(const SwapNote &note)
{
    return note.operation == SwapNote::Operation::Swap ? note.suffix : QString(Backup);
}

QString FolderExchange::leavingSuffix(const SwapNote &note)
{
    return note.operation == SwapNote::Operation::Swap ? QString(Backup) : note.suffix;
}

bool FolderExchange::isFinished() const
{
    const auto arrived = [](const Chain &chain) {
        const Place place = locate(chain);
        return place.arriving == chain.main
            && (place.leaving.isEmpty() || place.leaving == chain.leavesTo);
    };
    return arrived(m_catalogs) && arrived(m_tiles) && voicesAreIn(m_tiles.main, m_tiles.leavesTo);
}

bool FolderExchange::finish(QString *errorString)
{
    // Before the first step: a set of which a part is lost must not come into use.
    for (const Chain &chain : {m_catalogs, m_tiles}) {
        if (locate(chain).arriving.isEmpty()) {
            *errorString = tr("%1 is missing.").arg(chain.arrivesFrom);
            return false;
        }
    }
    const Place tiles = locate(m_tiles);
    return moveVoices(tiles.leaving, tiles.arriving, errorString) && finish(m_catalogs, errorString)
        && finish(m_tiles, errorString);
}

bool FolderExchange::takeBack(QString *errorString)
{
    for (const Chain &chain : {m_catalogs, m_tiles}) {
        if (locate(chain).leaving.isEmpty()) {
            *errorString = tr("%1 is missing.").arg(chain.leavesTo);
            return false;
        }
    }
    if (!takeBack(m_tiles, errorString) || !takeBack(m_catalogs, errorString))
        return false;
    const Place tiles = locate(m_tiles);
    return moveVoices(tiles.arriving, tiles.leaving, errorString);
}

QStringList FolderExchange::setAside() const
{
    return m_setAside;
}

FolderExchange::Place FolderExchange::locate(const Chain &chain)
{
    const auto find = [](const FolderOps::Identity &identity, const QStringList &names) {
        const auto found =
            std::find_if(names.begin(), names.end(), [&identity](const QString &name) {
                return FolderOps::identityOf(name).matches(identity);
            });
        return found == names.end() ? QString() : *found;
    };
    Place known = {find(chain.leaving, {chain.main, chain.leavesTo}),
                   find(chain.arriving, {chain.arrivesFrom, chain.main, chain.nested})};
    if (!known.leaving.isEmpty() && !known.arriving.isEmpty())
        return known;
    // One that is known for sure cannot be the other one as well.
    Place guess = locateByName(chain);
    if (!known.leaving.isEmpty()) {
        guess.leaving = known.leaving;
        if (guess.arriving == known.leaving)
            guess.arriving.clear();
    }
    if (!known.arriving.isEmpty()) {
        guess.arriving = known.arriving;
        if (guess.leaving == known.arriving)
            guess.leaving.clear();
    }
    return guess;
}

FolderExchange::Place FolderExchange::locateByName(const Chain &chain)
{
    const auto holdsASet = [](const QString &folder) {
        return FolderOps::isFolder(folder) && FolderOps::hasFiles(folder);
    };
    const auto mayArrive = [&](const QString &folder) {
        return holdsASet(folder) && (chain.version.isNull() || versionIn(folder) == chain.version);
    };
    Place place;
    const bool hasLeft = holdsASet(chain.leavesTo);
    const bool comesFrom = mayArrive(chain.arrivesFrom);
    // With neither other name there, the tiles could be either set's; a catalogue's version tells.
    const bool isAlone = !hasLeft && chain.version.isNull() && !comesFrom;
    if (comesFrom)
        place.arriving = chain.arrivesFrom;
    else if (mayArrive(chain.nested))
        place.arriving = chain.nested;
    else if (!isAlone && mayArrive(chain.main))
        place.arriving = chain.main;
    if (hasLeft)
        place.leaving = chain.leavesTo;
    else if (place.arriving != chain.main && holdsASet(chain.main)
             && (!isAlone || !place.arriving.isEmpty()))
        place.leaving = chain.main;
    return place;
}

bool FolderExchange::finish(const Chain &chain, QString *errorString)
{
    if (!takeOut(chain, errorString))
        return false;
    const Place place = locate(chain);
    if (place.leaving == chain.main
        && !(clearTheWay(chain.leavesTo, chain.leavesTo, errorString)
             && FolderOps::rename(chain.main, chain.leavesTo, errorString)))
        return false;
    return place.arriving == chain.main
        || (clearTheWay(chain.main, chain.main, errorString)
            && FolderOps::rename(place.arriving, chain.main, errorString));
}

bool FolderExchange::takeBack(const Chain &chain, QString *errorString)
{
    if (!takeOut(chain, errorString))
        return false;
    const Place place = locate(chain);
    if (place.arriving == chain.main
        && !(clearTheWay(chain.arrivesFrom, chain.arrivesFrom, errorString)
             && FolderOps::rename(chain.main, chain.arrivesFrom, errorString)))
        return false;
    return place.leaving == chain.main
        || (clearTheWay(chain.main, chain.main, errorString)
            && FolderOps::rename(place.leaving, chain.main, errorString));
}

// mv puts a folder into one that has the name already.
bool FolderExchange::takeOut(const Chain &chain, QString *errorString)
{
    return locate(chain).arriving != chain.nested
        || (clearTheWay(chain.arrivesFrom, chain.arrivesFrom, errorString)
            && FolderOps::rename(chain.nested, chain.arrivesFrom, errorString));
}

bool FolderExchange::moveVoices(const QString &from, const QString &to, QString *errorString)
{
    if (to.isEmpty() || voicesAreIn(to, from))
        return true;
    // The name in the folder of all map data, where nothing takes it for a part of a set.
    return clearTheWay(to + Voices, DataRoot::cities() + Voices, errorString)
        && FolderOps::rename(from + Voices, to + Voices, errorString);
}

// Also true if they are in neither: then there is nothing to move.
bool FolderExchange::voicesAreIn(const QString &folder, const QString &other) const
{
    const QString here = folder + Voices;
    const QString there = other + Voices;
    if (m_voices.isNull() || other.isEmpty() || !FolderOps::isFolder(there)
        || FolderOps::identityOf(here).matches(m_voices))
        return true;
    if (FolderOps::identityOf(there).matches(m_voices))
        return false;
    return FolderOps::hasFiles(here) && !FolderOps::hasFiles(there);
}

bool FolderExchange::clearTheWay(const QString &path, const QString &asideName,
                                 QString *errorString)
{
    if (!FolderOps::exists(path) || FolderOps::removeEmptyTree(path))
        return true;
    const QString aside = FolderOps::setAside(path, asideName);
    if (aside.isEmpty()) {
        *errorString = tr("%1 is in the way and cannot be renamed.").arg(path);
        return false;
    }
    m_setAside.append(aside);
    return true;
}
