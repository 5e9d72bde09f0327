// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QString>

class MapCatalog;

/**
 * Puts a prepared data set in the place of the main one, goes back, and clears away what is left,
 * so that a crash or an empty battery at any moment loses nothing.
 *
 * The main set is the folders Tessarin and diskcache below DataRoot::cities(); the prepared set has
 * a path suffix behind both names, the backup of the old one "_". The voice data in
 * diskcache/voices goes with whichever set is in use.
 *
 *     main + prepared -- swap() --> main + backup -- clearBackup() --> main
 *       |      ^                         |
 *       |      +-------- undo() --------+
 *       +-- discardPrepared() --> main
 *
 * Each of these arrows is noted in a journal (SwapJournal) before the first folder moves, and the
 * note goes only when all moves are on the disk. If the program dies in between, recover() at the
 * next start brings the arrow to its end, or back to its beginning where the end cannot be reached:
 * the main set is then wholly the one or wholly the other.
 *
 * Lives in the GUI thread, which waits while the disk is synced. Whoever calls anything here that
 * is not const or a question holds the DataSetLock.
 */
class DataSetSwap
{
    Q_DECLARE_TR_FUNCTIONS(DataSetSwap)

public:
    /** What recover() found and did. */
    enum class Recovery {
        Nothing, ///< nothing was cut short
        SwapFinished, ///< the prepared set is in use, the old one is the backup
        SwapUndone, ///< the old set is in use, the prepared one is still prepared
        UndoFinished, ///< the backup is in use, the newer set is the prepared one
        UndoAbandoned, ///< the newer set is in use, the backup is still a backup
        ClearFinished, ///< the removal of a backup or of a prepared set was brought to its end
        VoicesPutBack, ///< voice data that a removal of all maps had parked is in its place again
        Failed, ///< the data set cannot be used; errorString says why, nothing is lost
    };

    /** The prepared set's path suffix; neither empty nor "_", and one that a shell takes as is. */
    explicit DataSetSwap(const QString &suffix = QStringLiteral("_new"));

    /**
     * Whether swap() can be expected to succeed; false: errorString() says what stands against it.
     * Changes nothing.
     */
    bool check();

    /**
     * Puts the prepared set in use; check() is part of it. The library moves the folders; what it
     * could not move is finished or taken back here at once. True: the new set is in use and on
     * the disk. False: the old one is, or, if journalExists(), recover() must be called. In both
     * cases errorString() is not empty if a move had failed.
     *
     * The catalogue, which is not null, works on the main set afterwards, with its versions but
     * with the lists of before: call updateCatalog(). Refused while it, or another catalogue of the
     * program, is loading or changing.
     */
    bool swap(MapCatalog *main);

    /** Whether undo() can be expected to succeed; as check(). */
    bool checkUndo();
    /**
     * Puts the backup in use again; the newer set becomes the prepared one. As swap(), but only the
     * main catalogue is asked: the caller sees to it that no other one is at work.
     */
    bool undo(MapCatalog *main);

    /**
     * Gives up the backup; it cannot be gone back to from the first moment on. False: see
     * errorString(). True if there is none. Voice data that is only there is put in use first.
     */
    bool clearBackup();
    /** Gives up the prepared set, or what is there of one; as clearBackup(). */
    bool discardPrepared();

    /** Why the last call failed, a sentence or two for the user; or what it had to set aside. */
    QString errorString() const;

    /** Whether there is a whole backup to go back to. */
    static bool backupExists();
    /** The maps version of the backup; empty if there is none. */
    static QString backupVersion();
    /** The size of the backup's files in bytes; 0 if there is none. */
    static qint64 backupBytes();

    /** Whether a swap, undo or removal was cut short, or another program is in the middle of one.
     */
    static bool journalExists();

    /**
     * Ends what an earlier run had begun: the one call at a program's start, behind the lock and
     * ahead of the first MapCatalog (which would make empty folders where some are on their way).
     * May itself be cut short and called again. After Failed neither a MapCatalog nor an engine may
     * be made. errorString gets the reason then, else what was set aside, if anything was.
     */
    static Recovery recover(QString *errorString = nullptr);
    /** A sentence for the user; empty for Nothing. */
    static QString describe(Recovery recovery);

private:
    class Steps;

    bool exchange(int operation, MapCatalog *main);
    bool remove(int operation);
    bool fail(const QString &reason);

    QString m_suffix;
    QString m_errorString;
};
