#pragma once

#include "models/DiskInfo.h"
#include "models/Expected.h"

#include <QFuture>
#include <QObject>

namespace ravelinth {

class DiskInfoError {
public:
    enum Code {
        parseError,         // "Failed to parse disk information"
        noBootVolume,       // "Could not find boot volume"
        attributesNotFound, // "File system attributes not available"
        platform,           // the platform's own error (launch failure, not JSON, statvfs failed)
    };

    DiskInfoError(Code code, QString platformDescription = {})
        : m_code(code), m_platformDescription(std::move(platformDescription)) {}

    Code code() const { return m_code; }
    QString description() const;

private:
    Code m_code;
    QString m_platformDescription;
};

using DiskInfoOutcome = Expected<DiskInfo, DiskInfoError>;

// Reads the boot volume's capacity on a worker thread of its own; one query at a time.
// Both operations return at once; continue their futures on the main thread with
// `whenFinished(future, context, ...)`. A report command still running after five seconds is killed
// and its query ends with a platform error, so the caller moves on to the file-system attributes.
class DiskInfoService : public QObject {
    Q_OBJECT

public:
    explicit DiskInfoService(QObject *parent = nullptr);
    ~DiskInfoService() override;

    // The storage report: system_profiler's document on macOS, findmnt's on Linux.
    QFuture<DiskInfoOutcome> getSystemProfilerDiskInfo();
    // The file-system attributes of the home folder (statvfs).
    QFuture<DiskInfoOutcome> getFileManagerDiskInfo();

    // The document readers, exposed so that fixtures can test them on every platform. A boot
    // volume whose used figure would overflow is a parse error; so, in findmnt's document, is a
    // negative figure or more space available than the volume holds.
    static DiskInfoOutcome parseSystemProfilerReport(const QByteArray &json);
    static DiskInfoOutcome parseFindmntReport(const QByteArray &json);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ravelinth
