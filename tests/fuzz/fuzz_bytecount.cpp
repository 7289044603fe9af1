#include "models/ByteCountFormatter.h"

#include <QRegularExpression>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace {

[[noreturn]] void fail(const char *what, qint64 bytes, const QString &text) {
    std::fprintf(stderr, "fuzz check failed for %lld (\"%s\"): %s\n", static_cast<long long>(bytes),
                 qPrintable(text), what);
    std::abort();
}

// What the text claims, checked against the count: the right shape, a number below 1000 in its
// unit (but for the largest), and no further from the count than the rounding of its digits.
void check(qint64 bytes) {
    const QString text = ravelinth::formatByteCount(bytes);
    if (bytes == 0) {
        if (text != u"Zero KB")
            fail("zero", bytes, text);
        return;
    }
    const bool negative = bytes < 0;
    const double magnitude = negative ? -static_cast<double>(bytes) : static_cast<double>(bytes);
    if (negative != text.startsWith(u'-'))
        fail("sign", bytes, text);
    if (negative && bytes != std::numeric_limits<qint64>::min() &&
        text != u"-"_qs + ravelinth::formatByteCount(-bytes))
        fail("a negative count is not its magnitude with a minus", bytes, text);
    if (magnitude < 1000) {
        const QString expected =
            magnitude == 1 ? u"1 byte"_qs : QString::number(qint64(magnitude)) + u" bytes"_qs;
        if (text.mid(negative ? 1 : 0) != expected)
            fail("small counts are written in bytes", bytes, text);
        return;
    }
    static const QRegularExpression shape(u"^-?(\\d+)(?:\\.(\\d+))? (KB|MB|GB|TB|PB|EB)$"_qs);
    const QRegularExpressionMatch match = shape.match(text);
    if (!match.hasMatch())
        fail("shape", bytes, text);
    static const QStringList units{u"KB"_qs, u"MB"_qs, u"GB"_qs, u"TB"_qs, u"PB"_qs, u"EB"_qs};
    const qsizetype unit = units.indexOf(match.captured(3));
    const qsizetype decimals = match.captured(2).size();
    const qsizetype allowedDecimals = unit == 0 ? 0 : unit == 1 ? 1 : 2;
    if (decimals > allowedDecimals || match.captured(2).endsWith(u'0'))
        fail("decimals", bytes, text);
    const double shown = (match.captured(1) + u'.' + match.captured(2) + u'0').toDouble();
    if (shown >= 1000 && unit + 1 < units.size())
        fail("a unit that reaches 1000 is promoted", bytes, text);
    const double inUnit = magnitude / std::pow(1000.0, double(unit + 1));
    const double halfStep = 0.5 * std::pow(10.0, -double(allowedDecimals));
    if (std::fabs(inUnit - shown) > halfStep * (1 + 1e-9) + 1e-12)
        fail("the number is not the count rounded to its digits", bytes, text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    // Every 8 bytes are one count, so a mutated input tries many counts at once.
    for (std::size_t offset = 0; offset + sizeof(qint64) <= size; offset += sizeof(qint64)) {
        qint64 bytes = 0;
        std::memcpy(&bytes, data + offset, sizeof bytes);
        check(bytes);
    }
    return 0;
}
