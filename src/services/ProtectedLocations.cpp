#include "services/ProtectedLocations.h"

#include "platform/StandardLocations.h"

#include <QFile>
#include <QList>

#include <climits>
#include <cstdlib>
#include <unistd.h>

namespace ravelinth {

namespace {

const QList<QByteArray> &systemFolders() {
    static const QList<QByteArray> folders{"/usr",    "/bin", "/sbin", "/lib", "/lib32", "/lib64",
                                           "/libx32", "/etc", "/boot", "/dev", "/proc",  "/sys"};
    return folders;
}

bool isUnder(const QByteArray &path, const QByteArray &folder) {
    return path == folder || (path.startsWith(folder) && path.at(folder.size()) == '/');
}

QByteArray realPath(const QByteArray &path) {
    char buffer[PATH_MAX];
    return ::realpath(path.constData(), buffer) ? QByteArray(buffer) : QByteArray();
}

// The path as the kernel will reach it: its folder's links resolved, the item itself not (a
// link is trashed as a link). A trailing slash names what a link points at, so then the whole
// path is resolved.
QByteArray resolvedPath(const QByteArray &absolute) {
    if (absolute.size() > 1 && absolute.endsWith('/'))
        return realPath(absolute);
    QByteArray trimmed = absolute;
    while (trimmed.size() > 1 && trimmed.endsWith('/'))
        trimmed.chop(1);
    const qsizetype slash = trimmed.lastIndexOf('/');
    const QByteArray name = trimmed.mid(slash + 1);
    if (name.isEmpty() || name == "." || name == "..")
        return realPath(trimmed);
    const QByteArray folder = realPath(slash <= 0 ? QByteArray("/") : trimmed.left(slash));
    if (folder.isEmpty())
        return {};
    return folder == "/" ? "/" + name : folder + '/' + name;
}

bool isProtectedClean(const QByteArray &path, const QList<QByteArray> &homes) {
    if (path == "/" || homes.contains(path))
        return true;
    for (const QByteArray &folder : systemFolders()) {
        if (isUnder(path, folder))
            return true;
    }
    return false;
}

} // namespace

QByteArray absolutePath(const QByteArray &path) {
    if (path.startsWith('/'))
        return path;
    char buffer[PATH_MAX];
    return QByteArray(::getcwd(buffer, sizeof buffer) ? buffer : "/") + '/' + path;
}

QByteArray cleanPath(const QByteArray &path) {
    const QByteArray absolute = absolutePath(path);
    QList<QByteArray> parts;
    for (const QByteArray &part : absolute.split('/')) {
        if (part.isEmpty() || part == ".")
            continue;
        if (part == "..") {
            if (!parts.isEmpty())
                parts.removeLast();
            continue;
        }
        parts.append(part);
    }
    return "/" + parts.join('/');
}

bool isProtectedLocation(const QByteArray &path) {
    const QByteArray home = QFile::encodeName(platform::homeDirectory());
    const QList<QByteArray> homes{cleanPath(home), realPath(home)};
    if (isProtectedClean(cleanPath(path), homes))
        return true;
    const QByteArray resolved = resolvedPath(absolutePath(path));
    return !resolved.isEmpty() && isProtectedClean(resolved, homes);
}

} // namespace ravelinth
