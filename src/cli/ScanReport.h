#pragma once

#include "models/ScanResult.h"

#include <cstdio>

namespace ravelinth::cli {

// The readable table: size, category, "Safe"/"Review" and path per file, then the status line.
void writeTableReport(FILE *stream, const ScanResult &result);

// "Not entered: PATH (TYPE: why)" for each mount the walk passed over.
void writeSkippedMountLines(FILE *stream, const ScanResult &result);

// "N folders could not be read", when any could not.
void writeUnreadableLine(FILE *stream, const ScanResult &result);

// The kept files as CSV, the same table the window exports.
void writeCsvReport(FILE *stream, const ScanResult &result);

// One JSON object with the walk's counters, the kept files, all nine category totals and the
// folders that could not be read and the mounts that were not entered.
void writeJsonReport(FILE *stream, const ScanResult &result, qint64 filesScanned,
                     qint64 bytesScanned);

} // namespace ravelinth::cli
