#include "platform/StorageReport.h"

#include <QProcess>
#include <QtGlobal>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <sys/statvfs.h>
#include <unistd.h>

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

Expected<QByteArray, QString> runStorageReport(std::chrono::milliseconds limit) {
    const StorageReportCommand command = storageReportCommand();
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    // A group of its own, so that a wrapper script and whatever it started end with it: a
    // survivor would hold the output pipe open and go on running after we gave up on it.
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
    process.start(command.program, command.arguments);
    if (!process.waitForStarted(-1))
        return process.errorString();
    if (!process.waitForFinished(int(limit.count())) && process.state() != QProcess::NotRunning) {
        ::kill(-pid_t(process.processId()), SIGKILL);
        process.kill();
        process.waitForFinished(-1);
        return u"%1 did not finish within %2 seconds"_qs.arg(command.program)
            .arg(std::chrono::duration_cast<std::chrono::seconds>(limit).count());
    }
    return process.readAllStandardOutput();
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
