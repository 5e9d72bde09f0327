// SPDX-License-Identifier: MIT
// libFuzzer's side: VEXA_FUZZ_TARGET names the target that gets the inputs.
#include "fuzz/targets.h"
#include "fuzz/workspace.h"
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {
const FuzzTarget *target = nullptr;
}

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    target = findTarget(qgetenv("VEXA_FUZZ_TARGET"));
    if (!target) {
        std::fprintf(stderr, "VEXA_FUZZ_TARGET must be one of:");
        for (const FuzzTarget &known : fuzzTargets())
            std::fprintf(stderr, " %s", known.name);
        std::fprintf(stderr, "\n");
        std::exit(2);
    }
    Workspace::create();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    target->run(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    return 0;
}
