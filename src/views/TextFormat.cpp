#include "TextFormat.h"

#include "models/ByteCountFormatter.h"

#include <array>
#include <cstdio>

namespace ravelinth::views {

QString TextFormat::byteCount(double bytes) const {
    return formatByteCount(qint64(bytes));
}

QString TextFormat::oneDecimal(double value) const {
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.1f", value);
    return QString::fromLatin1(buffer.data());
}

} // namespace ravelinth::views
