#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <sys/types.h>

namespace ravelinth::platform {

// Which object a path reached: two paths that name the same object have the same identity.
struct EntryIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const EntryIdentity &) const = default;
};

// One entry of the file system, found the way the kernel finds it: the folder part of the path
// with its links followed and ".." applied to the folder the kernel reached, the last name taken
// as it is (a link is the link, not what it points at).
struct ResolvedEntry {
    QByteArray path;   // absolute, without links or "." and ".." in it
    QByteArray folder; // `path` without its last name ("/" for an entry directly under the root)
    QByteArray name;   // empty only for the root folder itself
    // Absent when the folder exists but holds nothing of that name.
    std::optional<EntryIdentity> identity;
    bool isFolder = false;    // a real folder, not a link to one
    bool isMountRoot = false; // the top folder of a mounted file system
};

struct EntryResolution {
    std::optional<ResolvedEntry> entry;
    // Why the path names no entry when `entry` is absent, or why nothing is there when its
    // identity is.
    QString error;
};

// Resolves `path` once. Refused, with the reason in `error`: the empty path, a last name of
// "." or "..", a trailing slash after something that is not a folder, a relative path when the
// working folder cannot be named (deleted, or deeper than the system can spell), and a folder
// part that does not lead to a folder.
EntryResolution resolveEntry(const QByteArray &path);

// The identity of whatever is at `path` now, links not followed; absent when nothing is.
std::optional<EntryIdentity> entryIdentity(const QByteArray &path);
// The same, with links followed.
std::optional<EntryIdentity> targetIdentity(const QByteArray &path);
// Where an entry named by `path` would lie, also when the path names nothing now (an item to be
// put back from the Trash): the folders that exist resolved by the kernel, the rest as written
// with "." and ".." applied, the last name taken as it is. nullopt for the empty path, a last name
// of "." or "..", a trailing slash (what is not there cannot be known to be a folder) and an
// unnamed working folder.
std::optional<QByteArray> placeOf(const QByteArray &path);
// The size in bytes of whatever is at `path`, links not followed; absent when nothing is.
std::optional<qint64> entrySize(const QByteArray &path);

struct RegularFileAttributes {
    qint64 size = 0;
    qint64 modifiedMSecs = 0; // content modification time, milliseconds since the epoch
    std::uint32_t linkCount = 1;
};
// The attributes of the regular file at `path`, links not followed; absent for anything else.
std::optional<RegularFileAttributes> regularFileAttributes(const QByteArray &path);

} // namespace ravelinth::platform
