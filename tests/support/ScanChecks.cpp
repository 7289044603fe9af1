#include "ScanChecks.h"

#include "Programs.h"

#include <QFile>
#include <QSet>
#include <QtTest>

#include <fcntl.h>
#include <optional>
#include <unistd.h>

namespace ravelinth::test {

namespace {

Scan scanWith(FileScannerService &service, const QByteArray &path,
              const ScanConfiguration &configuration) {
    QList<Scan::Progress> progress;
    ScanOutcome outcome = waitForScan(service.scan(
        path, configuration, [&progress](qint64 files, qint64 bytes, const QString &at) {
            progress.append({files, bytes, at});
        }));
    return {std::move(outcome), service.filesScanned(), service.bytesScanned(),
            std::move(progress)};
}

} // namespace

Scan scan(const QByteArray &path, qint64 minimum, bool hidden) {
    FileScannerService service;
    return scanWith(service, path, {minimum, hidden, true});
}

Scan scan(const QByteArray &path, const ScanConfiguration &configuration, int walkers) {
    std::optional<FileScannerService> service;
    if (walkers > 0)
        service.emplace(walkers);
    else
        service.emplace();
    Scan done = scanWith(*service, path, configuration);
    if (!done.outcome)
        qFatal("scan failed: %s", qPrintable(done.outcome.error().description()));
    return done;
}

void checkResultIsConsistent(const ScanResult &result, const QByteArray &root) {
    qint64 total = 0;
    QSet<QByteArray> seen;
    for (qsizetype i = 0; i < result.files.size(); ++i) {
        const FileItem &file = result.files[i];
        QVERIFY2(file.path.startsWith(root + '/'), file.path.constData());
        QVERIFY2(!seen.contains(file.path), file.path.constData());
        seen.insert(file.path);
        QVERIFY(i == 0 || result.files[i - 1].size >= file.size);
        total += file.countedSize();
    }
    QCOMPARE(result.totalSize, total);
}

bool isRoot() {
    return ::geteuid() == 0;
}

QList<QByteArray> pseudoMountPoints() {
    static const QSet<QByteArray> pseudoTypes{
        "proc",        "sysfs",    "devpts",    "cgroup",   "cgroup2", "debugfs", "tracefs",
        "securityfs",  "pstore",   "bpf",       "configfs", "fusectl", "mqueue",  "hugetlbfs",
        "binfmt_misc", "efivarfs", "selinuxfs", "nsfs",     "autofs",  "devtmpfs"};
    QFile mounts(u"/proc/self/mounts"_qs);
    if (!mounts.open(QIODevice::ReadOnly))
        qFatal("cannot read /proc/self/mounts");
    QList<QByteArray> points;
    for (const QByteArray &line : mounts.readAll().split('\n')) {
        // "source mount-point type options ...", with spaces and the like escaped as octal.
        QList<QByteArray> fields = line.split(' ');
        if (fields.size() > 2 && pseudoTypes.contains(fields[2]))
            points.append(
                fields[1].replace("\\040", " ").replace("\\011", "\t").replace("\\012", "\n"));
    }
    return points;
}

void makeSizedFile(const std::string &path) {
    if (const int fd = ::open(path.c_str(), O_CREAT | O_WRONLY, 0644); fd >= 0) {
        [[maybe_unused]] const int sized = ::ftruncate(fd, 2 * MiB);
        ::close(fd);
    }
}

} // namespace ravelinth::test
