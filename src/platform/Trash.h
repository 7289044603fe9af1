#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace ravelinth::platform {

struct TrashAttempt {
    bool moved = false;
    QString error;                       // the platform's reason when not moved
    std::optional<QByteArray> trashPath; // where the item now lies, when it could be found
};

// Moves the item at the exact byte path (a link itself, never its target) into the user's
// trash: the freedesktop.org Trash through GIO on Linux, the system Trash on macOS.
TrashAttempt moveToTrash(const QByteArray &absolutePath);

} // namespace ravelinth::platform
