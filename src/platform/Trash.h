#pragma once

#include "platform/EntryResolution.h"

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
// trash: the freedesktop.org Trash through GIO on Linux, the system Trash on macOS. The path must
// be absolute and free of links in its folders; the item is left where it is when it is no
// longer the object `expected` names (replaced since it was checked).
TrashAttempt moveToTrash(const QByteArray &absolutePath, const EntryIdentity &expected);

} // namespace ravelinth::platform
