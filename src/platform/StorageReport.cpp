#include "platform/StorageReport.h"

#include <QtGlobal>

#include <cerrno>
#include <cstring>
#include <sys/statvfs.h>

namespace ravelinth::platform {

StorageReportCommand storageReportCommand() {
#ifdef Q_OS_MACOS
    return {u"/usr/sbin/system_profiler"_qs, {u"SPStorageDataType"_qs, u"-json"_qs}};
#else
    return {u"findmnt"_qs,
            {u"--json"_qs, u"--bytes"_qs, u"--output"_qs,
             u"TARGET,SOURCE,FSTYPE,LABEL,SIZE,AVAIL"_qs, u"/"_qs}};
#endif
}

FileSystemCapacity fileSystemCapacity(const QByteArray &path) {
    FileSystemCapacity capacity;
    struct statvfs info {};
    if (::statvfs(path.constData(), &info) != 0) {
        capacity.error = QString::fromLocal8Bit(std::strerror(errno));
        return capacity;
    }
    capacity.ok = true;
    qint64 total = 0;
    qint64 free = 0;
    if (info.f_frsize == 0 ||
        __builtin_mul_overflow(qint64(info.f_blocks), qint64(info.f_frsize), &total) ||
        __builtin_mul_overflow(qint64(info.f_bavail), qint64(info.f_frsize), &free))
        return capacity;
    capacity.complete = true;
    capacity.totalBytes = total;
    capacity.freeBytes = free;
    return capacity;
}

QString fallbackVolumeName() {
#ifdef Q_OS_MACOS
    return u"Macintosh HD"_qs;
#else
    return u"Root"_qs;
#endif
}

} // namespace ravelinth::platform
