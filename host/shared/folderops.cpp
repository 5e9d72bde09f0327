// SPDX-License-Identifier: MIT
#include "host/shared/folderops.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <ftw.h>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int OpenFolders = 32; // descriptors for walking down; deeper trees are walked slower

bool look(const QString &path, struct stat *about)
{
    return ::lstat(QFile::encodeName(path).constData(), about) == 0;
}

bool failed(QString *errorString, const QString &path, int error)
{
    if (errorString)
        *errorString = path + QLatin1String(": ") + QString::fromLocal8Bit(std::strerror(error));
    return false;
}

class Folder
{
public:
    explicit Folder(const QString &path)
        : m_descriptor(
            ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    { }
    ~Folder()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Q_DISABLE_COPY(Folder)

    int descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

int removeOne(const char *path, const struct stat *, int, struct FTW *)
{
    return ::remove(path) == 0 || errno == ENOENT ? 0 : -1;
}

} // namespace

bool FolderOps::leadsOut(const QString &path)
{
    return path == QLatin1String("..") || path.startsWith(QLatin1String("../"));
}

FolderOps::Identity FolderOps::identityOf(const QString &path)
{
    struct statx about = {};
    if (::statx(AT_FDCWD, QFile::encodeName(path).constData(), AT_SYMLINK_NOFOLLOW,
                STATX_INO | STATX_TYPE | STATX_BTIME, &about)
            != 0
        || !S_ISDIR(about.stx_mode))
        return {};
    constexpr qint64 Second = 1000000000;
    const bool bornKnown = (about.stx_mask & STATX_BTIME) != 0;
    return {about.stx_ino,
            bornKnown ? qint64(about.stx_btime.tv_sec) * Second + about.stx_btime.tv_nsec : 0};
}

bool FolderOps::exists(const QString &path)
{
    struct stat about = {};
    return look(path, &about);
}

bool FolderOps::isFolder(const QString &path)
{
    struct stat about = {};
    return look(path, &about) && S_ISDIR(about.st_mode);
}

bool FolderOps::isMountPoint(const QString &path)
{
    // The second question finds a part of the same file system that is shown a second time.
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return !shareFileSystem(path, QFileInfo(path).path() + QLatin1String("/."))
        || QStorageInfo(canonical).rootPath() == canonical;
}

bool FolderOps::shareFileSystem(const QString &a, const QString &b)
{
    struct stat aboutA = {};
    struct stat aboutB = {};
    return look(a, &aboutA) && look(b, &aboutB) && aboutA.st_dev == aboutB.st_dev;
}

bool FolderOps::hasFiles(const QString &folder)
{
    struct stat about = {};
    if (!look(folder, &about))
        return false;
    // What cannot be read may hold anything.
    if (!S_ISDIR(about.st_mode)
        || ::access(QFile::encodeName(folder).constData(), R_OK | X_OK) != 0)
        return true;
    const QFileInfoList entries = QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden
                                                             | QDir::System | QDir::NoDotAndDotDot);
    for (const QFileInfo &entry : entries) {
        if (hasFiles(entry.filePath()))
            return true;
    }
    return false;
}

qint64 FolderOps::bytesBelow(const QString &folder)
{
    qint64 bytes = 0;
    QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        files.next();
        bytes += files.fileInfo().size();
    }
    return bytes;
}

bool FolderOps::rename(const QString &from, const QString &to, QString *errorString)
{
    // rename() would replace a file that stands in the way of a file.
    struct stat about = {};
    if (!isFolder(from) && look(to, &about))
        return failed(errorString, to, EEXIST);
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0
        || failed(errorString, from, errno);
}

bool FolderOps::removeEmptyTree(const QString &folder)
{
    if (!isFolder(folder))
        return false;
    const QStringList names =
        QDir(folder).entryList(QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const QString &name : names)
        removeEmptyTree(folder + QLatin1Char('/') + name); // The last rmdir tells.
    return ::rmdir(QFile::encodeName(folder).constData()) == 0;
}

bool FolderOps::removeTree(const QString &path, QString *errorString)
{
    if (!exists(path))
        return true;
    return ::nftw(QFile::encodeName(path).constData(), removeOne, OpenFolders,
                  FTW_DEPTH | FTW_PHYS | FTW_MOUNT)
        == 0
        || failed(errorString, path, errno);
}

QString FolderOps::setAside(const QString &from, const QString &path)
{
    QString target = path + QLatin1String(".aside");
    for (int number = 2; exists(target); ++number)
        target = path + QLatin1String(".aside-") + QString::number(number);
    return rename(from, target, nullptr) ? target : QString();
}

bool FolderOps::syncFolder(const QString &folder)
{
    const Folder opened(folder);
    return opened.descriptor() >= 0 && ::fsync(opened.descriptor()) == 0;
}

bool FolderOps::syncFileSystem(const QString &folder, QString *errorString)
{
    const Folder opened(folder);
    return (opened.descriptor() >= 0 && ::syncfs(opened.descriptor()) == 0)
        || failed(errorString, folder, errno);
}
