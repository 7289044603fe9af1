#pragma once

#include "models/Expected.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>

namespace ravelinth::platform {

// The command whose JSON document describes the boot volume: system_profiler's storage report
// on macOS, findmnt's report of "/" on Linux.
struct StorageReportCommand {
    QString program;
    QStringList arguments;
};

StorageReportCommand storageReportCommand();

// Runs the storage report and returns its standard output, or the reason there is none: it could
// not be started, or it was still running after `limit` and was killed together with every
// process it had started.
Expected<QByteArray, QString> runStorageReport(std::chrono::milliseconds limit);

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
