#pragma once

#include "models/FileItem.h"

#include <QList>

namespace ravelinth {

// The sums the window shows for a list of files: everything kept, and what could go.
struct FileTotals {
    qint64 totalSize = 0;
    qint64 savings = 0;
    int savingsCount = 0;

    bool operator==(const FileTotals &) const = default;
};

// Installers, archives and caches count as potential savings, and so does whatever is certainly
// safe to delete.
bool countsAsSavings(const FileItem &file);

// One pass; saturates rather than wrapping. Data with several kept names counts once, under the
// name the scan chose.
FileTotals sumFileTotals(const QList<FileItem> &files);

} // namespace ravelinth
