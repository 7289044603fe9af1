#include "models/ScanResult.h"

namespace ravelinth {

CategoryStatsTable makeEmptyCategoryStatsTable() {
    CategoryStatsTable table;
    for (ScanCategory category : ScanCategory::allCases())
        table[category.index()] = CategoryStats::make(category);
    return table;
}

} // namespace ravelinth
