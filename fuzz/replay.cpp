// SPDX-License-Identifier: MIT
// Reads the kept inputs again: vexa-fuzz-replay CORPUS, a folder with a folder for each target; or
// vexa-fuzz-replay TARGET FILE...
#include "fuzz/targets.h"
#include "fuzz/workspace.h"
#include <cstdio>
#include <QDir>
#include <QFile>

namespace {

void replay(const FuzzTarget &target, const QString &path)
{
    QFile file(path);
    require(file.open(QIODevice::ReadOnly), "the input can be read");
    // Ahead of it, for whoever looks at a crash.
    std::printf("%s %s\n", target.name, qPrintable(path));
    std::fflush(stdout);
    target.run(file.readAll());
}

int replayCorpus(const QDir &corpus)
{
    for (const FuzzTarget &target : fuzzTargets()) {
        const QDir folder(corpus.filePath(QLatin1String(target.name)));
        const QStringList names = folder.entryList(QDir::Files, QDir::Name);
        if (names.isEmpty()) {
            std::fprintf(stderr, "There is nothing in %s\n", qPrintable(folder.path()));
            return 1;
        }
        for (const QString &name : names)
            replay(target, folder.filePath(name));
    }
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const FuzzTarget *const target = argc > 2 ? findTarget(argv[1]) : nullptr;
    if (argc != 2 && !target) {
        std::fprintf(stderr, "Usage: vexa-fuzz-replay CORPUS | TARGET FILE...\n");
        return 2;
    }
    Workspace::create();
    if (argc == 2)
        return replayCorpus(QDir(QFile::decodeName(argv[1])));
    for (int i = 2; i < argc; ++i)
        replay(*target, QFile::decodeName(argv[i]));
    return 0;
}
