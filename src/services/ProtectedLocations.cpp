#include "services/ProtectedLocations.h"

#include "platform/StandardLocations.h"

#include <QFile>
#include <QList>

#include <algorithm>
#include <sys/stat.h>

namespace ravelinth {

namespace {

using platform::EntryIdentity;
using platform::ResolvedEntry;

const QList<QByteArray> &systemFolders() {
    static const QList<QByteArray> folders{"/usr",    "/bin", "/sbin", "/lib", "/lib32", "/lib64",
                                           "/libx32", "/etc", "/boot", "/dev", "/proc",  "/sys"};
    return folders;
}

bool isUnder(const QByteArray &path, const QByteArray &folder) {
    return path == folder || (path.startsWith(folder) && path.at(folder.size()) == '/');
}

QByteArray parentOf(const QByteArray &path) {
    const qsizetype slash = path.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : path.left(slash);
}

// The identities of the folders, as far as they exist; links to them are followed.
QList<EntryIdentity> identitiesOf(const QList<QByteArray> &folders) {
    QList<EntryIdentity> identities;
    for (const QByteArray &folder : folders) {
        if (const auto identity = platform::targetIdentity(folder))
            identities.append(*identity);
    }
    return identities;
}

// True when the entry itself (a folder) or one of the folders it lies in is one of `folders`.
bool isAtOrUnder(const ResolvedEntry &entry, const QList<EntryIdentity> &folders) {
    if (folders.isEmpty())
        return false;
    if (entry.isFolder && entry.identity && folders.contains(*entry.identity))
        return true;
    for (QByteArray folder = entry.folder;; folder = parentOf(folder)) {
        const auto identity = platform::targetIdentity(folder);
        if (identity && folders.contains(*identity))
            return true;
        if (folder == "/")
            return false;
    }
}

bool isRegularFile(const QByteArray &path) {
    struct stat info {};
    return ::lstat(path.constData(), &info) == 0 && S_ISREG(info.st_mode);
}

bool isSharedStickyFolder(const QByteArray &path) {
    struct stat info {};
    return ::lstat(path.constData(), &info) == 0 && (info.st_mode & S_ISVTX) &&
           (info.st_mode & S_IWOTH);
}

bool isTrashFolderName(const QByteArray &name) {
    if (name == ".Trash")
        return true;
    if (!name.startsWith(".Trash-") || name.size() == 7)
        return false;
    return std::all_of(name.begin() + 7, name.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

bool isProtectedLocation(const ResolvedEntry &entry) {
    if (entry.path == "/" || entry.isMountRoot)
        return true;
    // Folders and links directly under the root hold the system's layout (/home, /var, /lib
    // on a merged /usr); what lies inside them is the user's to judge.
    if (entry.folder == "/" && entry.identity && !isRegularFile(entry.path))
        return true;
    for (const QByteArray &folder : systemFolders()) {
        if (isUnder(entry.path, folder))
            return true;
    }
    // A folder every user may write into, with the sticky bit (/var/tmp, a shared drop folder),
    // holds other users' files: they may each remove their own, never the folder.
    if (entry.isFolder && isSharedStickyFolder(entry.path))
        return true;
    QList<QByteArray> userFolders{QFile::encodeName(platform::homeDirectory())};
    for (const QString &folder : platform::standardUserFolders())
        userFolders.append(QFile::encodeName(folder));
    if (entry.isFolder && entry.identity && identitiesOf(userFolders).contains(*entry.identity))
        return true;
    // A bind mount or a second name of a system folder is found by identity.
    return isAtOrUnder(entry, identitiesOf(systemFolders()));
}

bool isProtectedLocation(const QByteArray &path) {
    const platform::EntryResolution resolution = platform::resolveEntry(path);
    return resolution.entry && isProtectedLocation(*resolution.entry);
}

bool isInsideTrash(const ResolvedEntry &entry) {
    const QList<QByteArray> names = entry.path.split('/');
    if (std::any_of(names.begin(), names.end(), isTrashFolderName))
        return true;
    return isAtOrUnder(entry, identitiesOf({QFile::encodeName(platform::homeTrashDirectory())}));
}

std::optional<QString> trashRefusal(const ResolvedEntry &entry) {
    if (isProtectedLocation(entry))
        return u"Protected system location"_qs;
    if (isInsideTrash(entry))
        return u"Part of the Trash"_qs;
    return std::nullopt;
}

} // namespace ravelinth
