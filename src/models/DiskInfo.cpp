#include "models/DiskInfo.h"

#include "models/CheckedMath.h"

namespace ravelinth {

DiskInfo DiskInfo::make(QString name, QString mountPoint, qint64 totalBytes, qint64 freeBytes) {
    return DiskInfo{QUuid::createUuid(),
                    std::move(name),
                    std::move(mountPoint),
                    totalBytes,
                    checkedSubtract(totalBytes, freeBytes),
                    freeBytes};
}

double DiskInfo::usagePercent() const {
    return totalBytes > 0 ? double(usedBytes) / double(totalBytes) * 100.0 : 0.0;
}

} // namespace ravelinth
