#pragma once

#include "services/FileScannerService.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <string>

// Scans run and checked the way the scanner's stress tests need them.
namespace ravelinth::test {

inline constexpr qint64 MiB = 1024 * 1024;

struct Scan {
    ScanOutcome outcome;
    qint64 filesScanned = 0;
    qint64 bytesScanned = 0;
    // At each progress report: the files and bytes counted so far, and the path reached.
    struct Progress {
        qint64 files;
        qint64 bytes;
        QString path;
    };
    QList<Progress> progress;
};

// With the system folders skipped and links not followed.
Scan scan(const QByteArray &path, qint64 minimum, bool hidden = true);
// A scan that must succeed, with `walkers` walking threads (0: as many as the service chooses).
Scan scan(const QByteArray &path, const ScanConfiguration &configuration, int walkers = 0);

// Every kept file lies under the root, appears once, and they come largest first and sum to
// the total. Reports through QtTest.
void checkResultIsConsistent(const ScanResult &result, const QByteArray &root);

bool isRoot();

// The mount points of the pseudo file systems on this machine, from the kernel's own table.
QList<QByteArray> pseudoMountPoints();

// A sparse 2 MiB file where the folder allows it. Failing is silent on purpose: the churn
// cases make files in folders that another thread moves and removes meanwhile.
void makeSizedFile(const std::string &path);

} // namespace ravelinth::test
