#pragma once

#include <QByteArray>

#include <optional>

namespace ravelinth::platform {

// `path` made absolute against the working folder; an absolute or empty path comes back as it is.
// Leading "." and ".." are applied to the working folder's own name, which the kernel gives
// without links, so they mean what they would mean to the kernel; "." and empty components are
// dropped everywhere, and a ".." after a name is kept as typed, since that name may be a link.
// nullopt when the working folder has no name (it was deleted, or lies deeper than PATH_MAX).
std::optional<QByteArray> absolutePath(const QByteArray &path);

} // namespace ravelinth::platform
