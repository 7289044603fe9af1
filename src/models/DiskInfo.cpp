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

} // namespace ravelinth
