// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <vector>

/** One thing that reads what others wrote, to be fed with one input after the other. */
struct FuzzTarget
{
    const char *name; ///< also that of its folder in fuzz/corpus
    /** Reads the input and checks what came of it; ends the program if that is wrong. */
    void (*run)(const QByteArray &input);
};

const std::vector<FuzzTarget> &fuzzTargets();

/** The target of that name, or null. */
const FuzzTarget *findTarget(const QByteArray &name);

/** Ends the program, as a finding, unless the promise was kept. */
void require(bool kept, const char *promise);

void fuzzArchive(const QByteArray &input);
void fuzzEntryNames(const QByteArray &input);
void fuzzCatalog(const QByteArray &input);
void fuzzRegionNames(const QByteArray &input);
void fuzzContent(const QByteArray &input);
void fuzzConfig(const QByteArray &input);
void fuzzCityIndex(const QByteArray &input);
void fuzzSettings(const QByteArray &input);
void fuzzContentRange(const QByteArray &input);
void fuzzUrl(const QByteArray &input);
void fuzzZipDirectory(const QByteArray &input);
void fuzzSwapJournal(const QByteArray &input);
