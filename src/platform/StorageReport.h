#pragma once

#include <QString>
#include <QStringList>

namespace ravelinth::platform {

// The command whose JSON document describes the boot volume: system_profiler's storage report
// on macOS, findmnt's report of "/" on Linux.
struct StorageReportCommand {
    QString program;
    QStringList arguments;
};

StorageReportCommand storageReportCommand();

// The capacity of the file system holding `path` (statvfs), or the system's error text.
struct FileSystemCapacity {
    bool ok = false;
    bool complete = false; // false when the figures cannot be expressed in bytes
    qint64 totalBytes = 0;
    qint64 freeBytes = 0;
    QString error;
};

FileSystemCapacity fileSystemCapacity(const QByteArray &path);

// The fixed name the fallback gives the boot volume.
QString fallbackVolumeName();

} // namespace ravelinth::platform
