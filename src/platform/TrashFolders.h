#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>

#include <optional>

namespace ravelinth::platform {

// The freedesktop trash layout, shared by moving into a trash folder and taking out of it.

// `path` without its last name; "/" for an entry directly under the root.
QByteArray parentPathOf(const QByteArray &path);

// The mount point holding `path`: the highest ancestor on the same device. Empty when `path`
// cannot be examined.
QByteArray volumeTopOf(const QByteArray &path);

// The user's trash folders on the volume whose top folder is `top`: .Trash-<uid> and
// .Trash/<uid>, whether or not they exist.
QList<QByteArray> volumeTrashDirectories(const QByteArray &top);

// What a .trashinfo file says: the original path as recorded (absolute for the home trash,
// relative to the volume's top for a volume's trash; percent-decoded) and when the item was
// moved.
struct TrashInfo {
    QByteArray path;
    QDateTime deletionDate;
};
std::optional<TrashInfo> readTrashInfo(const QByteArray &infoPath);

// The names of the .trashinfo files in `trashDirectory`/info.
QList<QByteArray> trashInfoNames(const QByteArray &trashDirectory);

} // namespace ravelinth::platform
