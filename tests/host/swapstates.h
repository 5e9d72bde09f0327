// SPDX-License-Identifier: MIT
#pragma once

#include "host/shared/folderexchange.h"
#include "host/shared/swapjournal.h"
#include "swaprig.h"

/** Makes the states that a crash in an exchange of data sets can leave. */
namespace CutShort {

using Operation = SwapNote::Operation;

constexpr int Moves = 5;

inline void move(const QString &from, const QString &to)
{
    if (!QDir().rename(from, to))
        qFatal("no move of %s", qPrintable(from));
}

/** The moves of an exchange up to a number of them. */
inline void moveUpTo(int number, Operation operation)
{
    const char *from = operation == Operation::Swap ? "_new" : "_";
    const char *to = operation == Operation::Swap ? "_" : "_new";
    const QString moves[Moves][2] = {
        {SwapRig::voices(), SwapRig::voices(QLatin1String(from))},
        {catalogs(), catalogs(to)},
        {catalogs(from), catalogs()},
        {tiles(), tiles(to)},
        {tiles(from), tiles()},
    };
    for (int i = 0; i < number; ++i) {
        if (i > 0 || SwapRig::exists(SwapRig::voices()))
            move(moves[i][0], moves[i][1]);
    }
}

/** As if the folders had come out of a backup, or the file system numbered them anew. */
inline void forgetIdentities()
{
    QByteArray text = TestFile::read(SwapRig::journal());
    text.replace("\"inode\": \"", "\"inode\": \"9");
    TestFile::write(SwapRig::journal(), text);
}

inline void note(Operation operation, bool identities = true)
{
    QString error;
    if (!SwapJournal::write(FolderExchange::noteOf(operation, SwapRig::newSuffix()), &error))
        qFatal("%s", qPrintable(error));
    if (!identities)
        forgetIdentities();
}

} // namespace CutShort
