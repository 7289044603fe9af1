#include "models/ByteCountFormatter.h"

#include <QLocale>

#include <array>
#include <atomic>
#include <charconv>
#include <string>

namespace ravelinth {

namespace {

// Rounds a plain decimal string ("1.05", "999.4999") to `digits` fraction digits, half up, and
// drops trailing zeros. Works on the shortest text of the double, as the reference formatter
// does, so 1.05 rounds to 1.1 although its binary value lies just above 1.05.
std::string roundDecimalHalfUp(std::string text, int digits) {
    const auto dot = text.find('.');
    std::string integer = dot == std::string::npos ? text : text.substr(0, dot);
    std::string fraction = dot == std::string::npos ? std::string() : text.substr(dot + 1);
    const bool roundUp = int(fraction.size()) > digits && fraction[std::size_t(digits)] >= '5';
    fraction.resize(std::size_t(digits), '0');
    std::string digitsText = integer + fraction;
    if (roundUp) {
        int i = int(digitsText.size()) - 1;
        for (; i >= 0; --i) {
            if (digitsText[std::size_t(i)] == '9') {
                digitsText[std::size_t(i)] = '0';
            } else {
                ++digitsText[std::size_t(i)];
                break;
            }
        }
        if (i < 0)
            digitsText.insert(digitsText.begin(), '1');
    }
    integer = digitsText.substr(0, digitsText.size() - std::size_t(digits));
    fraction = digitsText.substr(digitsText.size() - std::size_t(digits));
    while (!fraction.empty() && fraction.back() == '0')
        fraction.pop_back();
    return fraction.empty() ? integer : integer + '.' + fraction;
}

std::string shortestText(double value) {
    std::array<char, 64> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed);
    return std::string(buffer.data(), result.ptr);
}

double integerValue(const std::string &text) {
    return std::stod(text);
}

std::atomic<ByteUnits> processUnits{ByteUnits::decimal};

} // namespace

QString formatByteCount(qint64 bytes) {
    return formatByteCount(bytes, processUnits.load(std::memory_order_relaxed));
}

void setDefaultByteUnits(ByteUnits units) {
    processUnits.store(units, std::memory_order_relaxed);
}

ByteUnits defaultByteUnits() {
    return processUnits.load(std::memory_order_relaxed);
}

QString formatByteCount(qint64 bytes, ByteUnits units) {
    const bool binary = units == ByteUnits::binary;
    const double base = binary ? 1024 : 1000;
    if (bytes == 0)
        return binary ? u"Zero KiB"_qs : u"Zero KB"_qs;
    const bool negative = bytes < 0;
    // Magnitude through unsigned arithmetic so that the most negative value has one too.
    const quint64 magnitude = negative ? quint64(0) - quint64(bytes) : quint64(bytes);
    const QString sign = negative ? u"-"_qs : QString();
    if (magnitude == 1)
        return sign + u"1 byte"_qs;
    if (double(magnitude) < base)
        return sign + QString::number(magnitude) + u" bytes"_qs;

    static constexpr std::array<const char *, 6> decimalNames{"KB", "MB", "GB", "TB", "PB", "EB"};
    static constexpr std::array<const char *, 6> binaryNames{"KiB", "MiB", "GiB",
                                                             "TiB", "PiB", "EiB"};
    const auto &names = binary ? binaryNames : decimalNames;
    double divisor = 1;
    for (std::size_t unit = 0; unit < names.size(); ++unit) {
        divisor *= base;
        const int digits = unit == 0 ? 0 : unit == 1 ? 1 : 2;
        const std::string rounded =
            roundDecimalHalfUp(shortestText(double(magnitude) / divisor), digits);
        if (integerValue(rounded) < base || unit + 1 == names.size())
            return sign + QString::fromStdString(rounded) + u' ' + QLatin1StringView(names[unit]);
    }
    return {};
}

QString formatOneDecimal(double value) {
    // Not snprintf: it writes the C library's locale's decimal separator, "0,5" under de_DE.
    // to_chars rounds the same way and always writes a point.
    std::array<char, 400> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, 1);
    return QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
}

QString formatGroupedInteger(qint64 value) {
    return QLocale().toString(value);
}

} // namespace ravelinth
