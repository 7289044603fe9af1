#include "platform/Trash.h"

#include "platform/StandardLocations.h"

#include <QDir>
#include <QFile>
#include <QtGlobal>

#ifdef Q_OS_MACOS
#include <QFile>
#else
// GIO uses "signals" as a name, which Qt defines as a keyword.
#pragma push_macro("signals")
#undef signals
#include <gio/gio.h>
#pragma pop_macro("signals")

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace ravelinth::platform {

namespace {
QString changedError() {
    return u"The item was replaced after it was checked"_qs;
}
} // namespace

#ifdef Q_OS_MACOS

TrashAttempt moveToTrash(const QByteArray &absolutePath, const EntryIdentity &expected) {
    QFile file(QFile::decodeName(absolutePath));
    TrashAttempt attempt;
    if (entryIdentity(absolutePath) != expected) {
        attempt.error = changedError();
        return attempt;
    }
    attempt.moved = file.moveToTrash();
    if (attempt.moved)
        attempt.trashPath = QFile::encodeName(file.fileName());
    else
        attempt.error = file.errorString();
    return attempt;
}

#else

namespace {

QByteArray parentOf(const QByteArray &path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : path.left(slash);
}

// The mount point holding `path`: the highest ancestor on the same device.
QByteArray topDirectoryOf(const QByteArray &path) {
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0)
        return {};
    QByteArray current = path;
    while (current != "/") {
        const QByteArray parent = parentOf(current);
        struct stat parentInfo {};
        if (::stat(parent.constData(), &parentInfo) != 0 || parentInfo.st_dev != info.st_dev)
            break;
        current = parent;
    }
    return current;
}

QByteArray readSmallFile(const QByteArray &path) {
    const int fd = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return {};
    QByteArray contents(64 * 1024, Qt::Uninitialized);
    const ssize_t length = ::read(fd, contents.data(), size_t(contents.size()));
    ::close(fd);
    contents.resize(length < 0 ? 0 : length);
    return contents;
}

// GIO does not say where it put the item. Its info file is named after the item and records
// the original path: the newest such file is the one just made. On a clash GIO puts a number
// after the part of the name before its first dot ("same.bin" becomes "same.2.bin"), so only
// that part is sure to be there.
std::optional<QByteArray> findTrashedItem(const QByteArray &trashDirectory,
                                          const QByteArray &recordedPath, const QByteArray &name) {
    const QByteArray infoDirectory = trashDirectory + "/info";
    DIR *directory = ::opendir(infoDirectory.constData());
    if (!directory)
        return std::nullopt;
    const qsizetype dot = name.indexOf('.');
    const QByteArray stem = dot < 0 ? name : name.left(dot);
    std::optional<QByteArray> found;
    timespec newest{0, 0};
    while (dirent *entry = ::readdir(directory)) {
        const QByteArray entryName(entry->d_name);
        if (!entryName.startsWith(stem) || !entryName.endsWith(".trashinfo"))
            continue;
        const QByteArray infoPath = infoDirectory + '/' + entryName;
        const QByteArray contents = readSmallFile(infoPath);
        const qsizetype start = contents.indexOf("\nPath=");
        if (start < 0)
            continue;
        const qsizetype end = contents.indexOf('\n', start + 6);
        const QByteArray encoded = contents.mid(start + 6, end < 0 ? -1 : end - start - 6);
        if (QByteArray::fromPercentEncoding(encoded) != recordedPath)
            continue;
        struct stat infoStat {};
        if (::stat(infoPath.constData(), &infoStat) != 0)
            continue;
        const timespec modified = infoStat.st_mtim;
        if (!found || modified.tv_sec > newest.tv_sec ||
            (modified.tv_sec == newest.tv_sec && modified.tv_nsec >= newest.tv_nsec)) {
            newest = modified;
            found = trashDirectory + "/files/" + entryName.chopped(int(qstrlen(".trashinfo")));
        }
    }
    ::closedir(directory);
    return found;
}

std::optional<QByteArray> locateTrashedItem(const QByteArray &path,
                                            const QByteArray &topDirectory) {
    const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
    if (auto home = findTrashedItem(QFile::encodeName(homeTrashDirectory()), path, name))
        return home;
    if (topDirectory.isEmpty())
        return std::nullopt;
    const QByteArray base = topDirectory == "/" ? QByteArray() : topDirectory;
    const QByteArray relative = path.mid(base.size() + 1);
    const QByteArray uid = QByteArray::number(::getuid());
    for (const QByteArray &candidate : {base + "/.Trash-" + uid, base + "/.Trash/" + uid}) {
        if (auto found = findTrashedItem(candidate, relative, name))
            return found;
        if (auto found = findTrashedItem(candidate, path, name))
            return found;
    }
    return std::nullopt;
}

} // namespace

TrashAttempt moveToTrash(const QByteArray &absolutePath, const EntryIdentity &expected) {
    TrashAttempt attempt;
    const QByteArray topDirectory = topDirectoryOf(absolutePath);
    if (entryIdentity(absolutePath) != expected) {
        attempt.error = changedError();
        return attempt;
    }
    GFile *file = g_file_new_for_path(absolutePath.constData());
    GError *error = nullptr;
    attempt.moved = g_file_trash(file, nullptr, &error);
    g_object_unref(file);
    if (!attempt.moved) {
        attempt.error = error ? QString::fromUtf8(error->message) : u"Unknown error"_qs;
        if (error)
            g_error_free(error);
        return attempt;
    }
    attempt.trashPath = locateTrashedItem(absolutePath, topDirectory);
    return attempt;
}

#endif

} // namespace ravelinth::platform
