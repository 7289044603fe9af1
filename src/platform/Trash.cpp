#include "platform/Trash.h"

#include "platform/StandardLocations.h"
#include "platform/TrashFolders.h"

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

#include <sys/stat.h>
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

// GIO does not say where it put the item. Its info file is named after the item and records
// the original path: the newest such file is the one just made. On a clash GIO puts a number
// after the part of the name before its first dot ("same.bin" becomes "same.2.bin"), so only
// that part is sure to be there.
std::optional<QByteArray> findTrashedItem(const QByteArray &trashDirectory,
                                          const QByteArray &recordedPath, const QByteArray &name) {
    const qsizetype dot = name.indexOf('.');
    const QByteArray stem = dot < 0 ? name : name.left(dot);
    std::optional<QByteArray> found;
    timespec newest{0, 0};
    for (const QByteArray &infoName : trashInfoNames(trashDirectory)) {
        if (!infoName.startsWith(stem))
            continue;
        const QByteArray infoPath = trashDirectory + "/info/" + infoName;
        const std::optional<TrashInfo> info = readTrashInfo(infoPath);
        if (!info || info->path != recordedPath)
            continue;
        struct stat infoStat {};
        if (::stat(infoPath.constData(), &infoStat) != 0)
            continue;
        const timespec modified = infoStat.st_mtim;
        if (!found || modified.tv_sec > newest.tv_sec ||
            (modified.tv_sec == newest.tv_sec && modified.tv_nsec >= newest.tv_nsec)) {
            newest = modified;
            found = trashDirectory + "/files/" + infoName.chopped(int(qstrlen(".trashinfo")));
        }
    }
    return found;
}

std::optional<QByteArray> locateTrashedItem(const QByteArray &path,
                                            const QByteArray &topDirectory) {
    const QByteArray name = path.mid(path.lastIndexOf('/') + 1);
    if (auto home = findTrashedItem(QFile::encodeName(homeTrashDirectory()), path, name))
        return home;
    if (topDirectory.isEmpty())
        return std::nullopt;
    const QByteArray relative = path.mid(topDirectory == "/" ? 1 : topDirectory.size() + 1);
    for (const QByteArray &candidate : volumeTrashDirectories(topDirectory)) {
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
    const QByteArray topDirectory = volumeTopOf(absolutePath);
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
