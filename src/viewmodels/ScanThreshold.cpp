#include "viewmodels/ScanThreshold.h"

#include <cmath>

namespace ravelinth {

qint64 thresholdBytes(double megabytes) {
    const double bytes = megabytes * 1024.0 * 1024.0;
    if (!std::isfinite(bytes) || bytes >= 9223372036854775808.0 || bytes < -9223372036854775808.0)
        qFatal("size threshold of %f MB cannot be represented in bytes", megabytes);
    return qint64(bytes);
}

} // namespace ravelinth
