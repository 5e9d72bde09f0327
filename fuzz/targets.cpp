// SPDX-License-Identifier: MIT
#include "fuzz/targets.h"

#include <cstdio>
#include <cstdlib>

const std::vector<FuzzTarget> &fuzzTargets()
{
    static const std::vector<FuzzTarget> targets {
        {"archive", fuzzArchive},           {"entrynames", fuzzEntryNames},
        {"catalog", fuzzCatalog},           {"regionnames", fuzzRegionNames},
        {"content", fuzzContent},           {"config", fuzzConfig},
        {"cityindex", fuzzCityIndex},       {"settings", fuzzSettings},
        {"contentrange", fuzzContentRange}, {"url", fuzzUrl},
        {"zipdirectory", fuzzZipDirectory}, {"swapjournal", fuzzSwapJournal},
    };
    return targets;
}

const FuzzTarget *findTarget(const QByteArray &name)
{
    for (const FuzzTarget &target : fuzzTargets()) {
        if (name == target.name)
            return &target;
    }
    return nullptr;
}

void require(bool kept, const char *promise)
{
    if (kept)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort(); // the one end that every fuzzer and ctest take for a finding
}
