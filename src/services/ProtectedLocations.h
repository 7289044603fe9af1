#pragma once

#include <QByteArray>

namespace ravelinth {

// True for what the program must never move to the Trash, whoever runs it: the root folder,
// the home folder itself, and everything under the system folders. The path is judged both as
// written (made absolute and cleaned of "." and "..") and with its folder's links resolved, so
// neither "/tmp/../etc/x" nor a link to /usr in the middle of a path slips through. /run is
// not protected: removable drives are mounted below it.
bool isProtectedLocation(const QByteArray &path);

// `path` made absolute against the working folder, otherwise untouched.
QByteArray absolutePath(const QByteArray &path);
// The absolute form with "." and ".." removed as text (links not consulted).
QByteArray cleanPath(const QByteArray &path);

} // namespace ravelinth
