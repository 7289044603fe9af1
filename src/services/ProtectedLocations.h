#pragma once

#include "platform/EntryResolution.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace ravelinth {

// True for what the program must never move to the Trash, whoever runs it: the root folder and
// every folder or link directly under it, the home folder itself, the user's standard folders
// themselves (Documents, Downloads, ...), the top folder of any mounted file system, folders
// shared by every user (world-writable with the sticky bit, such as /var/tmp), and
// everything under the system folders (/usr, /bin, /sbin, /lib*, /etc, /boot, /dev, /proc,
// /sys). The entry is judged by where the kernel put it, and folders are also recognised by
// identity, so a link or a bind mount that reaches one from elsewhere is no way around it.
bool isProtectedLocation(const platform::ResolvedEntry &entry);
// The same for a path, resolved once; a path that names no entry is not protected (nothing
// would be moved).
bool isProtectedLocation(const QByteArray &path);

// True for a trash folder (the user's home trash, a volume's .Trash-<uid> or .Trash/<uid>) and
// everything inside one: moving an info file out would orphan the item it describes.
bool isInsideTrash(const platform::ResolvedEntry &entry);

// Why `entry` must stay where it is, or nothing when it may be moved.
std::optional<QString> trashRefusal(const platform::ResolvedEntry &entry);

} // namespace ravelinth
