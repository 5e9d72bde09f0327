// SPDX-License-Identifier: MIT
#include "plugin/disksync_p.h"

#include <fcntl.h>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <unistd.h>

namespace {

constexpr int FewFiles = 64; // above that, one wait for everything is shorter than one for each

class Descriptor
{
public:
    explicit Descriptor(const QString &path)
        : m_descriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC))
    { }
    ~Descriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Q_DISABLE_COPY(Descriptor)

    bool isOpen() const { return m_descriptor >= 0; }
    int number() const { return m_descriptor; }

private:
    int m_descriptor;
};

} // namespace

bool DiskSync::file(const QString &path)
{
    const Descriptor file(path);
    return file.isOpen() && ::fsync(file.number()) == 0;
}

// A file that may not even be read can still be waited for together with all others.
bool DiskSync::files(const QString &folder, const QStringList &names)
{
    bool oneByOne = names.size() <= FewFiles;
    for (int i = 0; oneByOne && i < int(names.size()); ++i) {
        const Descriptor file(folder + QLatin1Char('/') + names.at(i));
        if (file.isOpen() && ::fsync(file.number()) != 0)
            return false;
        oneByOne = file.isOpen();
    }
    if (oneByOne)
        return true;
    const Descriptor root(folder);
    return root.isOpen() && ::syncfs(root.number()) == 0;
}

QStringList DiskSync::filesBelow(const QString &folder)
{
    QStringList names;
    const QDir root(folder);
    QDirIterator entries(folder, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        names.append(root.relativeFilePath(entries.next()));
    return names;
}
