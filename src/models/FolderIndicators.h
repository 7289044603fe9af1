#pragma once

#include <QByteArrayView>
#include <QStringView>

namespace ravelinth {

// Whether a path lies in a folder that holds throwaway files, judged by the names of its folders
// only: every component but the last, so a file's own name ("temp-report.pdf") never counts.
//
// Fragments match anywhere in a folder name ("GPUCache", "tmp.X3kd", ".Trash-1000"). Words match
// only as a whole word of a folder name, bounded by the name's start or end, a character that is
// not a letter, or a change from lower to upper case: "temp" is in "Temp", "temp_files", "temp1"
// and "MyTemp", but not in "Templates", "contemporary" or "tempest"; "logs" is in "app-logs" and
// "CrashLogs", not in "blogs" or "catalogs". Matching ignores ASCII case; bytes outside ASCII
// count as letters, so a name in another script is never split into a false word.
enum class FolderIndicators {
    cache, // fragments cache, caches, tmp; words temp, logs
    safe,  // fragments downloads, cache, caches, tmp, .trash; word temp
};

bool isInIndicatedFolder(QByteArrayView path, FolderIndicators indicators);
bool isInIndicatedFolder(QStringView path, FolderIndicators indicators);

} // namespace ravelinth
