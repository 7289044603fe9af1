#pragma once

#include "models/ScanExclusions.h"
#include "platform/DirectoryWalker.h"

namespace ravelinth {

// Sets up `options` so that a scan never walks into the names it skips and, when system folders
// are skipped, into the trash folders: the per-device ".Trash-<uid>" by name, and the home trash
// by what it is, wherever the walk meets it.
void addScanPruning(platform::WalkOptions &options, bool skipSystemDirectories);

// Sets up `options` so that the walk of `root` leaves out what `exclusions` names: each excluded
// folder by what it is (so also behind a link or a bind mount), and every entry whose name, or
// path below the root, matches a pattern. A folder that does not exist excludes nothing.
void addScanExclusions(platform::WalkOptions &options, const ScanExclusions &exclusions,
                       const QByteArray &root);

} // namespace ravelinth
