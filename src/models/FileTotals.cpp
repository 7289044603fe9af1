#include "models/FileTotals.h"

#include "models/CheckedMath.h"

namespace ravelinth {

bool countsAsSavings(const FileItem &file) {
    return file.category == ScanCategory::installer || file.category == ScanCategory::archive ||
           file.category == ScanCategory::cache || file.isDefinitelySafe();
}

FileTotals sumFileTotals(const QList<FileItem> &files) {
    FileTotals totals;
    for (qsizetype i = 0; i < files.size(); ++i) {
        // The paths lie all over the heap: ask for the next ones early.
        if (i + 8 < files.size())
            __builtin_prefetch(files[i + 8].path.constData());
        const FileItem &file = files[i];
        totals.totalSize = checkedAdd(totals.totalSize, file.countedSize());
        if (countsAsSavings(file)) {
            totals.savings = checkedAdd(totals.savings, file.countedSize());
            ++totals.savingsCount;
        }
    }
    return totals;
}

} // namespace ravelinth
