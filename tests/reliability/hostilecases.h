// SPDX-License-Identifier: MIT
#pragma once

#include "hostilearchive.h"
#include <functional>
#include <QList>
#include <QMap>
#include <QString>

/** The archives of the test and what becomes of each, in the words of its table. */
namespace HostileCases {

using HostileArchive::Format;

/** The end of an unpack, and the names that are there then beside the one good tile. */
struct Outcome
{
    const char *byDefault;
    const char *contained;
};

/** Writes the archive to the path; false if the format cannot say it. */
using Writer = std::function<bool(const QString &path, Format format, const QString &place)>;

struct Case
{
    const char *name;
    Writer write;
    Outcome outcome;
    QMap<Format, Outcome> otherOutcomes = {};

    /** As it is for most formats, unless one takes it otherwise. */
    Outcome expected(Format format) const { return otherOutcomes.value(format, outcome); }
};

QList<Case> cases();

} // namespace HostileCases
