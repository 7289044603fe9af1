#include "TextFormat.h"

#include "models/ByteCountFormatter.h"

namespace ravelinth::views {

QString TextFormat::byteCount(double bytes) const {
    return formatByteCount(qint64(bytes));
}

QString TextFormat::oneDecimal(double value) const {
    return formatOneDecimal(value);
}

} // namespace ravelinth::views
