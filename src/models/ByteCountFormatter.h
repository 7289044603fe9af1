#pragma once

#include <QString>

namespace ravelinth {

// The one byte-count text of the program: decimal units (1 KB = 1000 bytes), "Zero KB" for 0,
// "1 byte", "<n> bytes" below 1000, then KB with no decimals, MB with up to one, GB and above
// with up to two, trailing zeros dropped, halves rounded up, and a unit that would round to 1000
// promoted to the next one.
QString formatByteCount(qint64 bytes);

// "%.1f" as C's printf writes it in the C locale (exact binary value, ties to even, and a point
// whatever the user's locale), which Qt's formatters do not.
QString formatOneDecimal(double value);

// An integer with the current locale's digit grouping.
QString formatGroupedInteger(qint64 value);

} // namespace ravelinth
