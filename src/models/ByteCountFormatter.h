#pragma once

#include <QString>

namespace ravelinth {

// Decimal units count in thousands (KB, MB, ...); binary ones in 1024s (KiB, MiB, ...), for
// people who want the figures their other tools print.
enum class ByteUnits { decimal, binary };

// The one byte-count text of the program. In decimal units: "Zero KB" for 0, "1 byte", "<n>
// bytes" below 1000, then KB with no decimals, MB with up to one, GB and above with up to two,
// trailing zeros dropped, halves rounded up, and a unit that would round to 1000 promoted to the
// next one. Binary units read the same with 1024 in place of 1000 and KiB, MiB, ... as names.
QString formatByteCount(qint64 bytes, ByteUnits units);

// In the process's units: decimal unless the user asked for binary ones (a preference in the
// window, `--binary` on the command line). Set from the main thread before texts are made.
QString formatByteCount(qint64 bytes);
void setDefaultByteUnits(ByteUnits units);
ByteUnits defaultByteUnits();

// "%.1f" as C's printf writes it in the C locale (exact binary value, ties to even, and a point
// whatever the user's locale), which Qt's formatters do not.
QString formatOneDecimal(double value);

// An integer with the current locale's digit grouping.
QString formatGroupedInteger(qint64 value);

} // namespace ravelinth
