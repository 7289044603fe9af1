#pragma once

#include <QtGlobal>

namespace ravelinth {

// Binary megabytes to bytes, truncated toward zero. A value that is not finite or does not fit
// a signed 64-bit count is a programming error and stops the program: the interface offers
// only small thresholds.
qint64 thresholdBytes(double megabytes);

} // namespace ravelinth
