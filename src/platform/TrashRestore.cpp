#include "platform/TrashRestore.h"

#include "platform/StandardLocations.h"
#include "platform/TrashFolders.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>
#ifdef Q_OS_LINUX
#include <linux/fs.h>
#include <sys/syscall.h>
#endif

namespace ravelinth::platform {

QByteArray trashInfoPathFor(const QByteArray &filesPath) {
    const QByteArray name = filesPath.mid(filesPath.lastIndexOf('/') + 1);
    return parentPathOf(parentPathOf(filesPath)) + "/info/" + name + ".trashinfo";
}

namespace {

QString systemError(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

bool exists(const QByteArray &path) {
    struct stat info {};
    return ::lstat(path.constData(), &info) == 0 || errno != ENOENT;
}

// The nearest folder at or above `path` that exists, for finding the volume it belongs to.
QByteArray nearestExisting(QByteArray path) {
    while (path != "/" && !exists(path))
        path = parentPathOf(path);
    return path;
}

void considerTrash(const QByteArray &trashDirectory, const QByteArray &volumeTop,
                   const QByteArray &originalPath, std::optional<TrashedItem> &newest) {
    for (const QByteArray &infoName : trashInfoNames(trashDirectory)) {
        const QByteArray infoPath = trashDirectory + "/info/" + infoName;
        const std::optional<TrashInfo> info = readTrashInfo(infoPath);
        if (!info)
            continue;
        // A volume's trash records paths below its top; any trash may record absolute ones.
        QByteArray recorded = info->path;
        if (!recorded.startsWith('/')) {
            if (volumeTop.isEmpty())
                continue;
            recorded = (volumeTop == "/" ? QByteArray() : volumeTop) + '/' + recorded;
        }
        if (recorded != originalPath)
            continue;
        if (newest && newest->deletionDate.isValid() && info->deletionDate < newest->deletionDate)
            continue;
        newest = TrashedItem{trashDirectory + "/files/" + infoName.chopped(10), infoPath,
                             originalPath, info->deletionDate};
    }
}

// Makes the missing folders above `path`, outermost first.
std::optional<QString> makeParents(const QByteArray &path) {
    const QByteArray parent = parentPathOf(path);
    struct stat info {};
    if (::stat(parent.constData(), &info) == 0)
        return S_ISDIR(info.st_mode)
                   ? std::nullopt
                   : std::optional<QString>(u"Not a folder: "_qs + QString::fromUtf8(parent));
    if (errno != ENOENT)
        return systemError(errno);
    if (auto error = makeParents(parent))
        return error;
    if (::mkdir(parent.constData(), 0777) != 0 && errno != EEXIST)
        return systemError(errno);
    return std::nullopt;
}

// rename() that never replaces: fails with EEXIST when `to` is taken.
int renameNoReplace(const QByteArray &from, const QByteArray &to) {
#if defined(Q_OS_LINUX) && defined(SYS_renameat2)
    const long result = ::syscall(SYS_renameat2, AT_FDCWD, from.constData(), AT_FDCWD,
                                  to.constData(), RENAME_NOREPLACE);
    if (result == 0 || (errno != ENOSYS && errno != EINVAL))
        return int(result);
#endif
    // A file system without the flag: the check and the rename are two steps.
    if (exists(to)) {
        errno = EEXIST;
        return -1;
    }
    return ::rename(from.constData(), to.constData());
}

bool keepTimesAndMode(const QByteArray &path, const struct stat &source) {
    const timespec times[2] = {source.st_atim, source.st_mtim};
    if (::utimensat(AT_FDCWD, path.constData(), times, AT_SYMLINK_NOFOLLOW) != 0)
        return false;
    // Ownership only where the user may give it (root); the mode after it, which chown clears.
    if (::geteuid() == 0)
        (void)::lchown(path.constData(), source.st_uid, source.st_gid);
    return S_ISLNK(source.st_mode) || ::chmod(path.constData(), source.st_mode & 07777) == 0;
}

// Copies the tree at `from` to the new path `to`, links as links, with modes and times.
std::optional<QString> copyTree(const QByteArray &from, const QByteArray &to) {
    struct stat info {};
    if (::lstat(from.constData(), &info) != 0)
        return systemError(errno);
    if (S_ISLNK(info.st_mode)) {
        QByteArray target(PATH_MAX, Qt::Uninitialized);
        const ssize_t length = ::readlink(from.constData(), target.data(), size_t(target.size()));
        if (length < 0)
            return systemError(errno);
        target.resize(length);
        if (::symlink(target.constData(), to.constData()) != 0)
            return systemError(errno);
    } else if (S_ISDIR(info.st_mode)) {
        if (::mkdir(to.constData(), 0700) != 0)
            return systemError(errno);
        DIR *directory = ::opendir(from.constData());
        if (!directory)
            return systemError(errno);
        std::optional<QString> failure;
        while (dirent *entry = ::readdir(directory)) {
            const QByteArray name(entry->d_name);
            if (name == "." || name == "..")
                continue;
            if ((failure = copyTree(from + '/' + name, to + '/' + name)))
                break;
        }
        ::closedir(directory);
        if (failure)
            return failure;
    } else if (S_ISREG(info.st_mode)) {
        const int in = ::open(from.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
        if (in < 0)
            return systemError(errno);
        const int out = ::open(to.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (out < 0) {
            const int error = errno;
            ::close(in);
            return systemError(error);
        }
        QByteArray buffer(1 << 20, Qt::Uninitialized);
        ssize_t length = 0;
        while ((length = ::read(in, buffer.data(), size_t(buffer.size()))) > 0) {
            for (ssize_t written = 0; written < length;) {
                const ssize_t step =
                    ::write(out, buffer.constData() + written, size_t(length - written));
                if (step < 0) {
                    length = -1;
                    break;
                }
                written += step;
            }
            if (length < 0)
                break;
        }
        const int error = errno;
        const bool complete = length == 0 && ::fsync(out) == 0;
        ::close(in);
        ::close(out);
        if (!complete)
            return systemError(error);
    } else {
        return u"Only files, folders and links can be copied between file systems"_qs;
    }
    if (!keepTimesAndMode(to, info))
        return systemError(errno);
    return std::nullopt;
}

void removeTree(const QByteArray &path) {
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0)
        return;
    if (S_ISDIR(info.st_mode)) {
        if (DIR *directory = ::opendir(path.constData())) {
            while (dirent *entry = ::readdir(directory)) {
                const QByteArray name(entry->d_name);
                if (name != "." && name != "..")
                    removeTree(path + '/' + name);
            }
            ::closedir(directory);
        }
        ::rmdir(path.constData());
    } else {
        ::unlink(path.constData());
    }
}

// Between file systems: a complete copy under a hidden name beside the destination, renamed
// into place without replacing anything, and only then the trash copy removed.
std::optional<QString> copyBack(const QByteArray &from, const QByteArray &to) {
    const QByteArray name = to.mid(to.lastIndexOf('/') + 1);
    const QByteArray staging = parentPathOf(to) + "/.ravelinth-restore-" +
                               QByteArray::number(::getpid()) + '-' + name.left(64);
    if (auto error = copyTree(from, staging)) {
        removeTree(staging);
        return error;
    }
    if (renameNoReplace(staging, to) != 0) {
        const int error = errno;
        removeTree(staging);
        return error == EEXIST ? u"A file already exists at "_qs + QString::fromUtf8(to)
                               : systemError(error);
    }
    removeTree(from);
    return std::nullopt;
}

} // namespace

std::optional<TrashedItem> findNewestTrashedItem(const QByteArray &originalPath) {
    std::optional<TrashedItem> newest;
    considerTrash(QFile::encodeName(homeTrashDirectory()), {}, originalPath, newest);
    const QByteArray top = volumeTopOf(nearestExisting(parentPathOf(originalPath)));
    if (!top.isEmpty()) {
        for (const QByteArray &trash : volumeTrashDirectories(top))
            considerTrash(trash, top, originalPath, newest);
    }
    return newest;
}

RestoreAttempt restoreFromTrash(const TrashedItem &item,
                                const std::optional<EntryIdentity> &expected) {
    RestoreAttempt attempt;
    const std::optional<EntryIdentity> inTrash = entryIdentity(item.filesPath);
    if (!inTrash) {
        attempt.error = u"It is no longer in the Trash"_qs;
        return attempt;
    }
    if (expected && *inTrash != *expected) {
        attempt.error = u"The item in the Trash is no longer the one that was moved"_qs;
        return attempt;
    }
    if (exists(item.originalPath)) {
        attempt.error = u"A file already exists at "_qs + QString::fromUtf8(item.originalPath);
        return attempt;
    }
    if (auto error = makeParents(item.originalPath)) {
        attempt.error = *error;
        return attempt;
    }
    if (renameNoReplace(item.filesPath, item.originalPath) != 0) {
        const int error = errno;
        if (error == EEXIST) {
            attempt.error = u"A file already exists at "_qs + QString::fromUtf8(item.originalPath);
            return attempt;
        }
        if (error != EXDEV) {
            attempt.error = systemError(error);
            return attempt;
        }
        if (auto failure = copyBack(item.filesPath, item.originalPath)) {
            attempt.error = *failure;
            return attempt;
        }
    }
    // Only now that the data is back: an interruption before this leaves a record that names
    // nothing, never data without its record.
    if (!item.infoPath.isEmpty())
        ::unlink(item.infoPath.constData());
    attempt.restored = true;
    return attempt;
}

} // namespace ravelinth::platform
