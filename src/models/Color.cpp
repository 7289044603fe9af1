#include "models/Color.h"

#include <algorithm>
#include <cmath>

namespace ravelinth {

namespace {

QStringView trimNonAlphanumeric(QStringView text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && !text[begin].isLetterOrNumber())
        ++begin;
    while (end > begin && !text[end - 1].isLetterOrNumber())
        --end;
    return text.mid(begin, end - begin);
}

int hexDigit(char16_t c) {
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    if (c >= u'A' && c <= u'F')
        return c - u'A' + 10;
    return -1;
}

// Reads leading hexadecimal digits and stops at the first other character, like a scanner would.
quint64 scanHex(QStringView text) {
    quint64 value = 0;
    for (QChar c : text) {
        const int digit = hexDigit(c.unicode());
        if (digit < 0)
            break;
        value = (value << 4) | quint64(digit);
    }
    return value;
}

int component(quint64 value, int shift) {
    return int((value >> shift) & 0xff);
}

} // namespace

Color::Color(QStringView hex) {
    const QStringView trimmed = trimNonAlphanumeric(hex);
    const quint64 value = scanHex(trimmed);
    int a = 255, r = 0, g = 0, b = 0;
    switch (trimmed.size()) {
    case 3:
        r = int((value >> 8) & 0xf) * 17;
        g = int((value >> 4) & 0xf) * 17;
        b = int(value & 0xf) * 17;
        break;
    case 6:
        r = component(value, 16);
        g = component(value, 8);
        b = component(value, 0);
        break;
    case 8:
        a = component(value, 24);
        r = component(value, 16);
        g = component(value, 8);
        b = component(value, 0);
        break;
    default:
        break;
    }
    red = r / 255.0;
    green = g / 255.0;
    blue = b / 255.0;
    alpha = a / 255.0;
}

QString Color::name() const {
    auto byte = [](double v) { return int(std::lround(std::clamp(v, 0.0, 1.0) * 255)); };
    return QString::asprintf("#%02x%02x%02x%02x", byte(alpha), byte(red), byte(green), byte(blue));
}

#define RAVELINTH_NAMED_COLOR(function, hex)                                                       \
    const Color &Color::function() {                                                               \
        static const Color color{QStringView(u"" hex)};                                            \
        return color;                                                                              \
    }

RAVELINTH_NAMED_COLOR(accentGradientStart, "667eea")
RAVELINTH_NAMED_COLOR(accentGradientEnd, "764ba2")
RAVELINTH_NAMED_COLOR(diskGreen, "10b981")
RAVELINTH_NAMED_COLOR(diskYellow, "f59e0b")
RAVELINTH_NAMED_COLOR(diskRed, "ef4444")
RAVELINTH_NAMED_COLOR(categoryInstaller, "8b5cf6")
RAVELINTH_NAMED_COLOR(categoryArchive, "06b6d4")
RAVELINTH_NAMED_COLOR(categoryVideo, "f43f5e")
RAVELINTH_NAMED_COLOR(categoryImage, "10b981")
RAVELINTH_NAMED_COLOR(categoryDocument, "3b82f6")
RAVELINTH_NAMED_COLOR(categoryAudio, "f59e0b")
RAVELINTH_NAMED_COLOR(categoryApplication, "ec4899")
RAVELINTH_NAMED_COLOR(categoryCache, "6b7280")
RAVELINTH_NAMED_COLOR(categoryOther, "94a3b8")
RAVELINTH_NAMED_COLOR(systemBlue, "007AFF")
RAVELINTH_NAMED_COLOR(systemGreen, "34C759")
RAVELINTH_NAMED_COLOR(systemPurple, "AF52DE")
RAVELINTH_NAMED_COLOR(systemOrange, "FF9500")
RAVELINTH_NAMED_COLOR(systemPink, "FF2D55")
RAVELINTH_NAMED_COLOR(systemIndigo, "5856D6")
RAVELINTH_NAMED_COLOR(systemRed, "FF3B30")
RAVELINTH_NAMED_COLOR(systemYellow, "FFCC00")
RAVELINTH_NAMED_COLOR(systemGray, "8E8E93")

#undef RAVELINTH_NAMED_COLOR

} // namespace ravelinth
