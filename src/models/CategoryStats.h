#pragma once

#include "models/ScanCategory.h"

#include <QUuid>

namespace ravelinth {

struct CategoryStats {
    QUuid id;
    ScanCategory category = ScanCategory::other;
    qint64 fileCount = 0;
    qint64 totalSize = 0;

    static CategoryStats make(ScanCategory category, qint64 fileCount = 0, qint64 totalSize = 0) {
        return CategoryStats{QUuid::createUuid(), category, fileCount, totalSize};
    }
};

} // namespace ravelinth
