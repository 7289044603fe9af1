#include "models/AsciiText.h"

#include <cstdint>
#include <cstring>

namespace ravelinth {

namespace {
constexpr char asciiLower(char c) {
    return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c;
}

bool restMatches(const char *at, QByteArrayView needle) {
    for (qsizetype i = 1; i < needle.size(); ++i) {
        if (asciiLower(at[i]) != needle[i])
            return false;
    }
    return true;
}
} // namespace

bool asciiContainsIgnoringCase(QByteArrayView haystack, QByteArrayView needle) {
    if (needle.isEmpty())
        return true;
    if (haystack.size() < needle.size())
        return false;
    // The first byte is looked for with memchr, in both cases for a letter; only its hits are
    // compared further.
    const char lower = needle[0];
    const bool isLetter = lower >= 'a' && lower <= 'z';
    const char upper = isLetter ? char(lower - 'a' + 'A') : lower;
    const char *begin = haystack.data();
    const char *end = begin + (haystack.size() - needle.size() + 1);
    auto find = [end](const char *from, char c) {
        return from < end ? static_cast<const char *>(std::memchr(from, c, size_t(end - from)))
                          : nullptr;
    };
    const char *nextLower = find(begin, lower);
    const char *nextUpper = isLetter ? find(begin, upper) : nullptr;
    while (nextLower || nextUpper) {
        const bool takeLower = nextLower && (!nextUpper || nextLower < nextUpper);
        const char *at = takeLower ? nextLower : nextUpper;
        if (restMatches(at, needle))
            return true;
        if (takeLower)
            nextLower = find(at + 1, lower);
        else
            nextUpper = find(at + 1, upper);
    }
    return false;
}

bool isAsciiText(QByteArrayView bytes) {
    const char *p = bytes.data();
    qsizetype left = bytes.size();
    std::uint64_t high = 0;
    for (; left >= 8; left -= 8, p += 8) {
        std::uint64_t word;
        std::memcpy(&word, p, 8);
        high |= word;
    }
    for (; left > 0; --left, ++p)
        high |= std::uint8_t(*p);
    return (high & 0x8080808080808080ULL) == 0;
}

bool isPrintableAscii(QByteArrayView bytes) {
    for (char c : bytes) {
        if (c < ' ' || c > '~')
            return false;
    }
    return true;
}

} // namespace ravelinth
