#pragma once

#include "platform/DirectoryWalker.h"

namespace ravelinth {

// Sets up `options` so that a scan never walks into the names it skips and, when system folders
// are skipped, into the trash folders: the per-device ".Trash-<uid>" by name, and the home trash
// by what it is, wherever the walk meets it.
void addScanPruning(platform::WalkOptions &options, bool skipSystemDirectories);

} // namespace ravelinth
