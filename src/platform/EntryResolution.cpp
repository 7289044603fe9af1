#include "platform/EntryResolution.h"

#include "models/PathText.h"
#include "platform/WorkingFolder.h"

#include <QFile>
#include <QtGlobal>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace ravelinth::platform {

namespace {

EntryIdentity identityOf(const struct stat &info) {
    return {info.st_dev, info.st_ino};
}

QString systemError(int error) {
    return QString::fromLocal8Bit(std::strerror(error));
}

EntryResolution refused(const QString &reason) {
    return {std::nullopt, reason};
}

// The folder's own path with every link resolved and every ".." applied to what the kernel
// reached, or the reason there is none.
std::optional<QByteArray> canonicalFolder(const QByteArray &folder, QString &error) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(
        ::realpath(folder.constData(), nullptr), &std::free);
    if (!resolved) {
        error = systemError(errno);
        return std::nullopt;
    }
    struct stat info {};
    if (::stat(resolved.get(), &info) != 0) {
        error = systemError(errno);
        return std::nullopt;
    }
    if (!S_ISDIR(info.st_mode)) {
        error = systemError(ENOTDIR);
        return std::nullopt;
    }
    return QByteArray(resolved.get());
}

#ifdef Q_OS_LINUX
// Mount points as the kernel lists them, with its octal escapes ("\040" for a space) undone.
bool isListedMountPoint(const QByteArray &path) {
    QFile mountInfo(u"/proc/self/mountinfo"_qs);
    if (!mountInfo.open(QIODevice::ReadOnly))
        return false;
    const QByteArray contents = mountInfo.readAll();
    for (const QByteArray &line : contents.split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() < 5)
            continue;
        const QByteArray &escaped = fields[4];
        QByteArray mountPoint;
        mountPoint.reserve(escaped.size());
        for (qsizetype i = 0; i < escaped.size(); ++i) {
            if (escaped[i] == '\\' && i + 3 < escaped.size()) {
                bool ok = false;
                const int byte = escaped.mid(i + 1, 3).toInt(&ok, 8);
                if (ok) {
                    mountPoint.append(char(byte));
                    i += 3;
                    continue;
                }
            }
            mountPoint.append(escaped[i]);
        }
        if (mountPoint == path)
            return true;
    }
    return false;
}
#else
bool isListedMountPoint(const QByteArray &) {
    return false;
}
#endif

} // namespace

std::optional<EntryIdentity> entryIdentity(const QByteArray &path) {
    struct stat info {};
    if (path.isEmpty() || ::lstat(path.constData(), &info) != 0)
        return std::nullopt;
    return identityOf(info);
}

std::optional<QByteArray> placeOf(const QByteArray &path) {
    // Judged on the path as given: making it absolute applies "." and ".." and drops a trailing
    // slash, which would turn "." into the working folder and "file/" into "file".
    const QByteArray given = path.mid(path.lastIndexOf('/') + 1);
    if (given.isEmpty() || given == "." || given == "..")
        return std::nullopt;
    const std::optional<QByteArray> absolute = absolutePath(path);
    if (!absolute || absolute->isEmpty())
        return std::nullopt;
    const QList<QByteArray> parts = absolute->split('/');
    const QByteArray &name = parts.last();
    const auto joined = [](const QByteArray &folder, const QByteArray &part) {
        return folder == "/" ? '/' + part : folder + '/' + part;
    };
    QByteArray folder = "/";
    bool existing = true; // every folder so far exists and is spelt as the kernel spells it
    for (qsizetype i = 1; i + 1 < parts.size(); ++i) {
        const QByteArray &part = parts[i];
        if (part.isEmpty() || part == ".")
            continue;
        if (part == "..") {
            const qsizetype slash = folder.lastIndexOf('/');
            folder = slash <= 0 ? QByteArray("/") : folder.left(slash);
            continue;
        }
        const QByteArray next = joined(folder, part);
        if (existing) {
            char resolved[PATH_MAX];
            if (::realpath(next.constData(), resolved)) {
                folder = resolved;
                continue;
            }
            existing = false;
        }
        folder = next;
    }
    return joined(folder, name);
}

std::optional<qint64> entrySize(const QByteArray &path) {
    struct stat info {};
    if (path.isEmpty() || ::lstat(path.constData(), &info) != 0)
        return std::nullopt;
    return qint64(info.st_size);
}

std::optional<RegularFileAttributes> regularFileAttributes(const QByteArray &path) {
    struct stat info {};
    if (path.isEmpty() || ::lstat(path.constData(), &info) != 0 || !S_ISREG(info.st_mode))
        return std::nullopt;
    return RegularFileAttributes{qint64(info.st_size),
                                 qint64(info.st_mtim.tv_sec) * 1000 +
                                     qint64(info.st_mtim.tv_nsec / 1000000),
                                 std::uint32_t(info.st_nlink)};
}

std::optional<EntryIdentity> targetIdentity(const QByteArray &path) {
    struct stat info {};
    if (path.isEmpty() || ::stat(path.constData(), &info) != 0)
        return std::nullopt;
    return identityOf(info);
}

EntryResolution resolveEntry(const QByteArray &path) {
    if (path.isEmpty())
        return refused(u"The path is empty"_qs);
    if (path.contains('\0'))
        return refused(systemError(EINVAL));
    const QByteArray trimmed = withoutTrailingSlashes(path);
    const bool trailingSlash = trimmed.size() < path.size();

    ResolvedEntry entry;
    if (trimmed == "/") {
        entry.path = entry.folder = "/";
    } else {
        const qsizetype slash = trimmed.lastIndexOf('/');
        entry.name = trimmed.mid(slash + 1);
        if (entry.name == "." || entry.name == "..")
            return refused(u"A path ending in '.' or '..' names no single item"_qs);
        if (!path.startsWith('/')) {
            // Without a working folder that can be spelt out, the kernel would resolve against
            // something the report could not name, and the Trash would record the wrong place.
            char buffer[PATH_MAX];
            if (!::getcwd(buffer, sizeof buffer))
                return refused(u"The current folder cannot be resolved"_qs);
        }
        const QByteArray folderPart = slash < 0    ? QByteArray(".")
                                      : slash == 0 ? QByteArray("/")
                                                   : trimmed.left(slash);
        QString error;
        const std::optional<QByteArray> folder = canonicalFolder(folderPart, error);
        if (!folder)
            return refused(error);
        entry.folder = *folder;
        entry.path = (entry.folder == "/" ? QByteArray() : entry.folder) + '/' + entry.name;
    }

    struct stat info {};
    if (::lstat(entry.path.constData(), &info) != 0)
        return {entry, systemError(errno)};
    if (trailingSlash && !S_ISDIR(info.st_mode))
        return refused(systemError(ENOTDIR));
    entry.identity = identityOf(info);
    entry.isFolder = S_ISDIR(info.st_mode);
    if (entry.isFolder) {
        struct stat folderInfo {};
        const bool otherDevice =
            entry.path == "/" || (::stat(entry.folder.constData(), &folderInfo) == 0 &&
                                  folderInfo.st_dev != info.st_dev);
        entry.isMountRoot = otherDevice || isListedMountPoint(entry.path);
    }
    return {entry, {}};
}

} // namespace ravelinth::platform
