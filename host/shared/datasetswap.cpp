// SPDX-License-Identifier: MIT
#include "host/shared/datasetswap.h"

#include "catalog/mapcatalog.h"
#include "host/shared/catalogfiles.h"
#include "host/shared/folderexchange.h"
#include "host/shared/setremoval.h"
#include "host/shared/swapcheck.h"
#include "plugin/dataroot.h"
#include <functional>
#include <QPointer>

namespace {

using Operation = SwapNote::Operation;
using Recovery = DataSetSwap::Recovery;

const QLatin1String Backup("_");
const QLatin1String Voices("/voices");

enum class Outcome { Finished, TakenBack, Stuck };

void addSentence(QString *text, const QString &sentence)
{
    if (!text->isEmpty() && !sentence.isEmpty())
        *text += QLatin1Char(' ');
    *text += sentence;
}

// Whether the catalogue carries out at once what it is told. If a load or a change is under way it
// would remember it, and the folders would move when nobody expects it any more.
bool isDoneAtOnce(MapCatalog *catalog, const std::function<void()> &call)
{
    bool done = false;
    const QPointer<MapCatalog> alive(catalog);
    const auto connection = QObject::connect(catalog, &MapCatalog::mapBaseDirectoryChanged, catalog,
                                             [&done] { done = true; });
    call();
    if (alive)
        QObject::disconnect(connection);
    return alive && done;
}

// By a catalogue that ends here: should it have to wait for others, what it remembers goes with it.
bool moveByLibrary(const QString &suffix)
{
    MapCatalog mover;
    return isDoneAtOnce(&mover, [&] { mover.swapOriginalFoldersWithSuffixed(suffix); });
}

// Backup or prepared set: both are whole only with both folders.
bool setExists(const QString &suffix)
{
    return FolderOps::isFolder(DataRoot::catalogFolder(suffix))
        && FolderOps::isFolder(DataRoot::tileCacheFolder(suffix));
}

} // namespace

/** The steps that the calls and recover() have in common. */
class DataSetSwap::Steps
{
    Q_DECLARE_TR_FUNCTIONS(DataSetSwap)

public:
    static QString asideReport(const QStringList &names)
    {
        return names.isEmpty()
            ? QString()
            : tr("What was in the way is now called %1.").arg(names.join(QLatin1String(", ")));
    }

    static QString removedSuffix(const SwapNote &note)
    {
        return note.operation == Operation::Clear ? QString(Backup) : note.suffix;
    }

    /** Syncs what has moved and takes the note away. */
    static bool conclude(QString *errorString)
    {
        return FolderOps::syncFileSystem(DataRoot::cities(), errorString)
            && SwapJournal::remove(errorString);
    }

    /** Brings an exchange to its end, or back; text gets the reason, or what was set aside. */
    static Outcome settle(const SwapNote &note, QString *text)
    {
        FolderExchange exchange(note);
        QString finishError;
        QString backError;
        Outcome outcome = Outcome::Stuck;
        if (exchange.finish(&finishError) && exchange.isFinished())
            outcome = Outcome::Finished;
        else if (exchange.takeBack(&backError))
            outcome = Outcome::TakenBack;
        addSentence(text, finishError);
        addSentence(text, backError);
        addSentence(text, asideReport(exchange.setAside()));
        QString diskError;
        if (outcome == Outcome::Stuck || conclude(&diskError))
            return outcome;
        addSentence(text, diskError);
        return Outcome::Stuck;
    }

    static Recovery recoverExchange(const SwapNote &note, QString *text)
    {
        const bool isSwap = note.operation == Operation::Swap;
        switch (settle(note, text)) {
        case Outcome::Finished:
            return isSwap ? Recovery::SwapFinished : Recovery::UndoFinished;
        case Outcome::TakenBack:
            return isSwap ? Recovery::SwapUndone : Recovery::UndoAbandoned;
        case Outcome::Stuck:
            break;
        }
        return Recovery::Failed;
    }

    static Recovery recoverRemoval(const SwapNote &note, QString *text)
    {
        SetRemoval removal(removedSuffix(note));
        if (!removal.takeNames(text) || !conclude(text))
            return Recovery::Failed;
        addSentence(text, asideReport(removal.setAside()));
        QString leftover; // costs space and nothing else; the next start tries again
        SetRemoval::removeNameless(&leftover);
        addSentence(text, leftover);
        return Recovery::ClearFinished;
    }

    /** What a removal of all map data that was cut short has parked. */
    static bool putVoicesBack()
    {
        const QString parked = DataRoot::cities() + Voices;
        const QString place = DataRoot::tileCacheFolder() + Voices;
        return FolderOps::isFolder(parked) && FolderOps::isFolder(DataRoot::tileCacheFolder())
            && (!FolderOps::exists(place) || FolderOps::removeEmptyTree(place))
            && FolderOps::rename(parked, place, nullptr)
            && FolderOps::syncFileSystem(DataRoot::cities(), nullptr);
    }
};

DataSetSwap::DataSetSwap(const QString &suffix)
    : m_suffix(suffix)
{ }

bool DataSetSwap::check()
{
    m_errorString = SwapCheck(FolderExchange::noteOf(Operation::Swap, m_suffix)).objection();
    return m_errorString.isEmpty();
}

bool DataSetSwap::swap(MapCatalog *main)
{
    return check() && exchange(int(Operation::Swap), main);
}

bool DataSetSwap::checkUndo()
{
    m_errorString = SwapCheck(FolderExchange::noteOf(Operation::Undo, m_suffix)).objection();
    return m_errorString.isEmpty();
}

bool DataSetSwap::undo(MapCatalog *main)
{
    return checkUndo() && exchange(int(Operation::Undo), main);
}

bool DataSetSwap::exchange(int operation, MapCatalog *main)
{
    const QString busy =
        tr("The map data is being loaded or changed. Try again when that is done.");
    const QPointer<MapCatalog> catalog(main);
    if (!isDoneAtOnce(main, [main] { main->initFolderStructure(); }))
        return fail(busy);
    const SwapNote note = FolderExchange::noteOf(Operation(operation), m_suffix);
    // First the prepared files: the note must never be on the disk without them.
    if (!FolderOps::syncFileSystem(DataRoot::cities(), &m_errorString)
        || !SwapJournal::write(note, &m_errorString))
        return false;
    bool moved = true;
    if (note.operation == Operation::Swap) {
        if (!moveByLibrary(m_suffix)) // Another catalogue is at work; nothing has moved.
            return SwapJournal::remove(&m_errorString) && fail(busy);
        moved = FolderExchange(note).isFinished();
    }
    const Outcome outcome = Steps::settle(note, &m_errorString);
    if (outcome == Outcome::Stuck) // The catalogue must not make folders now.
        return fail(tr("The exchange of the map data could not be brought to an end: %1")
                        .arg(m_errorString));
    if (catalog)
        catalog->resetInstanceWithPathSuffix();
    if (outcome == Outcome::TakenBack)
        return fail(tr("The map data could not be exchanged, and is as it was before: %1")
                        .arg(m_errorString));
    if (!moved)
        addSentence(&m_errorString,
                    tr("The shell did not move every folder; the rest was moved without it."));
    return true;
}

bool DataSetSwap::clearBackup()
{
    return remove(int(Operation::Clear));
}

bool DataSetSwap::discardPrepared()
{
    if (!SwapJournal::isUsableSuffix(m_suffix)) // Above all the empty one: the main set's.
        return fail(tr("\"%1\" cannot stand behind the name of a data set.").arg(m_suffix));
    return remove(int(Operation::Discard));
}

bool DataSetSwap::remove(int operation)
{
    m_errorString.clear();
    if (SwapJournal::exists())
        return fail(
            tr("An exchange of the map data was cut short. Start the program again first."));
    SwapNote note;
    note.operation = Operation(operation);
    note.suffix = m_suffix;
    SetRemoval removal(Steps::removedSuffix(note));
    if (removal.isNeeded()) {
        const QString objection = removal.objection();
        if (!objection.isEmpty())
            return fail(objection);
        if (!SwapJournal::write(note, &m_errorString))
            return false;
        if (!removal.takeNames(&m_errorString) || !Steps::conclude(&m_errorString))
            return false;
    }
    addSentence(&m_errorString, Steps::asideReport(removal.setAside()));
    return SetRemoval::removeNameless(&m_errorString);
}

QString DataSetSwap::errorString() const
{
    return m_errorString;
}

bool DataSetSwap::backupExists()
{
    // While a swap or a removal is not over, there is none to be relied on.
    return !journalExists() && setExists(Backup);
}

QString DataSetSwap::backupVersion()
{
    if (!backupExists())
        return QString();
    return MapCatalogProcessor().readLocalMapVersion(
        DataRoot::catalogFolder(Backup) + QLatin1Char('/') + CatalogFiles::contentName());
}

qint64 DataSetSwap::backupBytes()
{
    if (!backupExists())
        return 0;
    return FolderOps::bytesBelow(DataRoot::catalogFolder(Backup))
        + FolderOps::bytesBelow(DataRoot::tileCacheFolder(Backup));
}

bool DataSetSwap::journalExists()
{
    return SwapJournal::exists();
}

DataSetSwap::Recovery DataSetSwap::recover(QString *errorString)
{
    QString unheard;
    QString *text = errorString ? errorString : &unheard;
    text->clear();
    SwapJournal::removeUnfinished();
    Recovery recovery = Recovery::Nothing;
    if (SwapJournal::exists()) {
        const auto note = SwapJournal::read(text);
        if (!note)
            return Recovery::Failed;
        const bool isRemoval =
            note->operation == Operation::Clear || note->operation == Operation::Discard;
        recovery =
            isRemoval ? Steps::recoverRemoval(*note, text) : Steps::recoverExchange(*note, text);
    } else if (SetRemoval::hasNameless() && SetRemoval::removeNameless(nullptr)) {
        recovery = Recovery::ClearFinished;
    } // What cannot be removed costs space and nothing else; clearBackup() would tell.
    if (recovery != Recovery::Failed && Steps::putVoicesBack() && recovery == Recovery::Nothing)
        recovery = Recovery::VoicesPutBack;
    return recovery;
}

QString DataSetSwap::describe(Recovery recovery)
{
    switch (recovery) {
    case Recovery::Nothing:
        break;
    case Recovery::SwapFinished:
        return tr("An update that was cut short was finished: the new maps are in use.");
    case Recovery::SwapUndone:
        return tr("An update that was cut short could not be finished: the old maps are in use.");
    case Recovery::UndoFinished:
        return tr("Going back to the old maps was cut short and is finished now.");
    case Recovery::UndoAbandoned:
        return tr("Going back to the old maps could not be finished: the new maps are in use.");
    case Recovery::ClearFinished:
        return tr("A removal that was cut short was finished.");
    case Recovery::VoicesPutBack:
        return tr("Voice data that a removal had set aside is in its place again.");
    case Recovery::Failed:
        return tr("An exchange of the map data was cut short and cannot be brought to an end.");
    }
    return QString();
}

bool DataSetSwap::fail(const QString &reason)
{
    m_errorString = reason;
    return false;
}
