#pragma once

#include "services/FileScannerService.h"

#include <QByteArray>
#include <QList>

#include <string>

// Scans run and checked the way the scanner's stress tests need them.
namespace ravelinth::test {

inline constexpr qint64 MiB = 1024 * 1024;

struct Scan {
    ScanOutcome outcome;
    qint64 filesScanned = 0;
};

// With the system folders skipped and links not followed.
Scan scan(const QByteArray &path, qint64 minimum, bool hidden = true);

// Every kept file lies under the root, appears once, and they come largest first and sum to
// the total. Reports through QtTest.
void checkResultIsConsistent(const ScanResult &result, const QByteArray &root);

bool isRoot();

// The mount points of the pseudo file systems on this machine, from the kernel's own table.
QList<QByteArray> pseudoMountPoints();

// A sparse 2 MiB file.
void makeSizedFile(const std::string &path);

} // namespace ravelinth::test
