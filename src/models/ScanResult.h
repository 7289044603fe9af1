#pragma once

#include "models/CategoryStats.h"
#include "models/FileItem.h"
#include "models/ScanExclusions.h"
#include "models/SkippedMount.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>

#include <array>

namespace ravelinth {

// Statistics for all nine categories, indexed by `ScanCategory::index()`.
using CategoryStatsTable = std::array<CategoryStats, ScanCategory::count>;

CategoryStatsTable makeEmptyCategoryStatsTable();

struct ScanResult {
    QList<FileItem> files; // largest first; equal sizes keep walk order
    CategoryStatsTable categoryStats;
    qint64 totalSize = 0; // each hard-linked file's data once
    // Folders the walk met but could not open or list, and the first of them in walk order.
    qint64 unreadableFolders = 0;
    QList<QByteArray> unreadablePaths;
    static constexpr qsizetype unreadablePathsKept = 1000;
    QList<SkippedMount> skippedMounts;
    double duration = 0;    // seconds
    QByteArray scannedPath; // exactly as the caller passed it
    QDateTime timestamp;
};

struct ScanConfiguration {
    qint64 minFileSizeBytes = 0;
    bool includeHiddenFiles = false;
    bool skipSystemDirectories = false;
    bool followSymlinks = false; // carried, never consulted: links are not followed
    ScanExclusions exclusions{};
    bool stayOnOneFileSystem = false;
    bool scanNetworkDrives = false;
};

} // namespace ravelinth
