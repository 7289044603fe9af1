#pragma once

#include "platform/EntryResolution.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

namespace ravelinth::platform {

// One item in a trash folder: its data, the record beside it (absent on macOS, whose Trash keeps
// none that a program can read) and the place it was moved from.
struct TrashedItem {
    QByteArray filesPath;
    QByteArray infoPath;
    QByteArray originalPath;
    QDateTime deletionDate; // as recorded, in local time; invalid when unknown
};

// The record file of an item in a freedesktop trash folder: <trash>/info/<name>.trashinfo for
// <trash>/files/<name>.
QByteArray trashInfoPathFor(const QByteArray &filesPath);

// The newest item of the user's trash folders whose original path is `originalPath` (absolute,
// exact bytes): the home trash, and the trash folders of the volume that holds the path (or the
// nearest folder above it that still exists). Items moved there by any program count.
std::optional<TrashedItem> findNewestTrashedItem(const QByteArray &originalPath);

struct RestoreAttempt {
    bool restored = false;
    QString error; // why not, when not
};

// Puts the item back at its original path. Never replaces anything: a path that is taken again
// fails with "A file already exists at <path>". Missing folders above it are made again. When
// `expected` is given, the item in the trash must still be that object. The data is moved back
// first and the trash record removed only once it is in place; between file systems the data is
// copied (mode, times and links kept) and the trash copy removed after the copy is complete.
RestoreAttempt restoreFromTrash(const TrashedItem &item,
                                const std::optional<EntryIdentity> &expected);

} // namespace ravelinth::platform
